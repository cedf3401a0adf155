#include "QnXmlLib16/values/DateTime.h"

#include "QnXmlLib16/values/DateTimeSpan.h"
#include "tests/values/ValueTools.h"

#include <climits>
#include <cstdlib>
#include <ctime>
#include <gtest/gtest.h>

using namespace QnXmlLib16;

namespace {

using StateError = CQnInvalidStateException;

std::string Parse(const char* text)
{
    return DateOf(text).ToString();
}

std::string ParseWithKind(const char* text)
{
    const CDateTime value = DateOf(text);
    return value.GetTypeAsString() + " " + value.ToString();
}

// Each text is "left order right", and holds the other way round as well.
void ExpectOrders(std::initializer_list<std::string> texts)
{
    for (const std::string& text : texts) {
        SCOPED_TRACE(text);
        const std::vector<std::string> words = Words(text);
        const char order = words[1][0];
        const CDateTime a = DateOf(words[0]), b = DateOf(words[2]);
        EXPECT_EQ("=<>?"[a.CompareTo(b)], order);
        EXPECT_EQ("=><?"[b.CompareTo(a)], order);
        EXPECT_TRUE(AreRelated(a, order, b));
    }
}

} // namespace

TEST(DateParsing, TheShapeOfTheTextDecidesTheKind)
{
    ExpectEach(ParseWithKind,
               {"-0004-02-29 -> date -0004-02-29", "-0044-03 -> gYearMonth -0044-03",
                "2001 -> gYear 2001", "2001:01-01 -> gYear 2001", "--05-- -> gMonth --05",
                "--05xx -> gMonth --05", "--02-29 -> gMonthDay --02-29", "---45 -> gDay ---45",
                "23:59:59. -> time 23:59:59", "12:00:00.500 -> time 12:00:00.5",
                "12:00:00.000050 -> time 12:00:00.00005",
                "-9999-12-31T23:59:59.123456789 -> dateTime -9999-12-31T23:59:59.123456789"});
}

TEST(DateParsing, TakesAZoneOnEitherSide)
{
    ExpectEach(Parse, {"2001-05-09-23:59 -> 2001-05-09-23:59", "--05-09Z -> --05-09Z",
                       "12:00:00+24:00 -> 12:00:00+00:00", "12:00:00-00:30 -> 12:00:00+00:30",
                       "12:00:00.Z -> 12:00:00Z", "12:00:00.1+02:00 -> 12:00:00.1+02:00",
                       "2001-05-09ZT12:00:00 -> 2001-05-09T12:00:00Z",
                       "2001-05-09+02:00T12:00:00Z -> 2001-05-09T12:00:00Z"});
    // What starts no zone is ignored, and so is what stands behind a "Z".
    ExpectEach(Parse, {"2001-05-09x01:00 -> 2001-05-09", "12:00:00abc -> 12:00:00",
                       "12:00:00Zjunk -> 12:00:00Z"});
    EXPECT_EQ(DateOf("12:00:00-05:30").GetZoneHour(), -5);
    EXPECT_EQ(DateOf("12:00:00-05:30").GetZoneMinute(), 30);
    EXPECT_TRUE(DateOf("12:00:00+01:00").IsUTC() && !DateOf("12:00:00Z").HasTimeZone());
}

TEST(DateParsing, RefusesWithTheWordsOfTheStepThatFailed)
{
    for (const std::string text :
         {"12001-01-01", "2001/01/01", "20a1", "+2001", "-", "--5", "--0a-01", "--a5", "---a5",
          "--1-05", "Z", "-:", "--2:00", "-12:00"}) {
        EXPECT_EQ(FailureOf([&] { CDateTime().ParseXSDDate(text.c_str()); }),
                  "Invalid XSD Date [" + text + "] expected CCYY-MM-DD[Z|[+|-]hh:mm]");
    }
    for (const std::string text : {"12:00:0", "12-00:00", "24:00:00", "12:60:00", "12:00:60"}) {
        EXPECT_EQ(FailureOf([&] { CDateTime().ParseXSDTime(text.c_str()); }),
                  "Invalid XSD Time [" + text + "] expected hh:mm:ss[.ff]");
    }
    ExpectEach(
        Parse,
        {" -> Invalid Date (Empty String)", "2001-01-01+01:00Z -> Invalid Date (Bad Zone value)",
         "2001-01-01+1:000 -> Invalid XSD Time Zone [+1:000].",
         "2001-01-01+25:00 -> Invalid TimeZone [25:0]",
         "2001-01-01-12:60 -> Invalid TimeZone [-12:60]",
         "12:00:00.1234567890 -> Invalid XSD Time [12:00:00.1234567890] Fraction part too long",
         "12:00:00+1:00 -> Invalid XSD Time Zone [+1:00].",
         "2001-01-01T -> Invalid XSD Time (Empty String)",
         "2001-01T12:00:00 -> Invalid XSD DateTime [2001-01T12:00:00] expected "
         "CCYY-MM-DDThh:mm:ss[.ff]",
         "1900-02-29T00:00:00 -> Invalid Day [29] (1 <= day <= days in month"});
    // A date or a time with the words for the other kinds of text, and no text at all.
    CDateTime value;
    EXPECT_EQ(FailureOf([&] { value.ParseXSDDate("T"); }), "Invalid Date ('T' not allowed)");
    EXPECT_EQ(FailureOf([&] { value.ParseXSDDateTime("2001"); }), "Invalid XSD DateTime [2001].");
    EXPECT_EQ(FailureOf([&] { value.ParseXSDDate(nullptr); }), "Invalid Date (Null String)");
    EXPECT_EQ(FailureOf([&] { value.ParseXSDTime(nullptr); }), "Invalid Time (Null String)");
    EXPECT_EQ(FailureOf([] { CDateTime(nullptr); }), "Invalid DateTime (Null String)");
}

TEST(DateParsing, ADamagedTextIsReadAsFarAsItGoes)
{
    CDateTime value;
    EXPECT_THROW(value.ParseXSDDate("2005-13-01"), CQnInvalidValueException);
    EXPECT_THROW(value.ParseXSDDateTime("no separator"), CQnInvalidValueException);
    EXPECT_EQ(value.GetMonth(), 13);
    EXPECT_THROW(value.ParseXSDDate("junk"), CQnInvalidValueException);
    EXPECT_EQ(value.GetType(), dt_yearZero);
    // Every truncation of a valid text is an answer or a failure.
    const auto date = [](const char* text) { CDateTime().ParseXSDDate(text); };
    const auto time = [](const char* text) { CDateTime().ParseXSDTime(text); };
    const auto dateTime = [](const char* text) { CDateTime().ParseXSDDateTime(text); };
    // Whole seconds, the point, nine digits, the zone.
    EXPECT_EQ(CountBeginningsTaken("-2001-05-09T12:34:56.123456789-10:30", dateTime), 12);
    EXPECT_EQ(CountBeginningsTaken("12:34:56.123+01:00", time), 6);
    // "--05-0" is May, and so is the whole with its zone cut by one.
    EXPECT_EQ(CountBeginningsTaken("--05-09+01:00", date), 5);
    EXPECT_EQ(CountBeginningsTaken("---09Z", date), 2);
}

TEST(DatePrinting, TheFormatIsTheLexicalFormOrNothing)
{
    const CDateTime date(2001, 5, 9);
    EXPECT_EQ(date.ToString("s") + date.ToString("G") + date.ToString(nullptr), "2001-05-09");
    EXPECT_EQ(date.ToString(""), "Unknown Format: ");
    EXPECT_EQ(CDateTime().ToString("G"), "Error: Date Not Set");
    EXPECT_EQ(CDateTime(dt_dateTime).ToString("x"), "Error: Date Not Set");
    EXPECT_EQ(CDateTime(dt_time).ToString(), "00:00:00");
}

TEST(DateConstruction, AnImpossibleDateIsUnset)
{
    EXPECT_EQ(CDateTime(2001, 13, 1).GetType(), dt_yearZero);
    EXPECT_EQ(CDateTime(2001, 1, 1, 1, 2, 3, 4, 5, 6).ToString(), "2001-01-01T01:02:03.004005006");
    EXPECT_EQ(CDateTime(-1L).ToString(), "1969-12-31T23:59:59");
    // A time without a gmtime, one beyond the calendar, beyond 16 bits, and before the year 1.
    const std::pair<long, const char*> times[] = {
        {LONG_MAX, "0"}, {253402300800, "10000"}, {2000000000000, "65347"}, {-62167219200, "0"}};
    for (const auto& [time, year] : times) {
        EXPECT_EQ(CDateTime(time).GetType(), dt_yearZero);
        EXPECT_EQ(FailureOf([time = time] { CDateTime() = time; }),
                  std::string("Invalid Year [") + year + "] (9999 <= year <= -9999 && year != 0)");
    }
    const long before = std::time(nullptr);
    const long now = CDateTime::GetCurrentTime().GetTime();
    EXPECT_TRUE(before <= now && now <= std::time(nullptr));

    EXPECT_EQ(CDateTime(2001, 1, 1, 24, 0, 0).GetType(), dt_yearZero);
    CDateTime part;
    part.SetGYearMonth(1, 2);
    EXPECT_EQ(part.ToString(), "0001-02");
    (part = CDateTime()).SetGYear(1);
    EXPECT_EQ(part.ToString(), "0001");
    (part = CDateTime()).SetGMonth(2);
    EXPECT_EQ(part.ToString(), "--02");
    (part = CDateTime()).SetFracTime(0, 70, 0);
    EXPECT_EQ(part.ToString(), "00:00:00.00007");

    // A setter refuses another kind.
    CDateTime date;
    EXPECT_THROW(date.SetDate(2001, 2, 30), CQnInvalidValueException);
    EXPECT_EQ(FailureOf([&] { date.SetTime(4, 5, 6); }),
              "Failed to copy CDateTime. Invalid Date Type: time, expected: date.");
    EXPECT_EQ(date.ToString(), "2001-02-30");
}

TEST(DateConversion, NeedsTheFieldsOfTheNewKindAndKeepsTheOthers)
{
    CDateTime target(2001, 1, 1);
    const auto convert = [&target](const CDateTime& source, DTType kind) {
        const DTType before = target.GetType();
        const std::string failure = FailureOf([&] { target.SetDateTime(source, kind); });
        EXPECT_EQ(target.GetType(), failure == "no failure" ? kind : before);
        return failure;
    };
    for (int kind = dt_yearZero; kind <= dt_gMonthDay; ++kind) {
        EXPECT_EQ(convert(dt_dateTime, DTType(kind)), "no failure");
        EXPECT_EQ(convert(dt_yearZero, DTType(kind)) == "no failure", kind == dt_yearZero);
        // A date has all fields but those of a time.
        EXPECT_NE(convert(dt_date, DTType(kind)) == "no failure",
                  kind == dt_time || kind == dt_dateTime);
    }
    EXPECT_EQ(convert(dt_gDay, dt_date),
              "Attempting to set a CDateTime of type date using an XmlDateTime of type gDay. The "
              "source CDateTime does not contian enough data to allow the conversion.");
    EXPECT_EQ(convert(DTType(9), dt_date), "Unknown date type 9.");
    EXPECT_EQ(CDateTime::GetTypeAsString(DTType(9)), "");
    EXPECT_EQ(convert("2001-05-09T12:00:00+01:00", dt_date), "no failure");
    EXPECT_EQ(target.ToString(), "2001-05-09+01:00");
    // Validate wants each of them to be 0, and tells the first that isn't.
    const auto validate = [](const char* text, DTType kind) {
        CDateTime value;
        value.SetDateTime(CDateTime(text), kind);
        return FailureOf([&] { value.Validate(); });
    };
    const char* const full = "2001-05-09T01:02:03";
    EXPECT_EQ(validate(full, dt_gYear), "Invalid Month [5] for type gYear");
    EXPECT_EQ(validate(full, dt_gMonth), "Invalid Year [2001] for type gMonth");
    EXPECT_EQ(validate(full, dt_gYearMonth), "Invalid Day [9] for type gYearMonth");
    EXPECT_EQ(validate(full, dt_date), "Invalid Hour [1] for type date");
    EXPECT_EQ(validate("2001-05-09T00:00:00.004005", dt_date),
              "Invalid Milli-Second [4] for type date");
    EXPECT_EQ(validate("2001-05-09T00:00:00", dt_date), "no failure");
}

TEST(DateFields, BelongToTheirKindsOnly)
{
    CDateTime full(dt_dateTime); // will hold the greatest number in each field
    const auto check = [&full](const std::string& field, const char* kinds, auto get, auto set) {
        for (int kind = 0; kind <= 8; ++kind) {
            CDateTime value(static_cast<DTType>(kind));
            const std::string words =
                "Failed to Get" + field + ". Invalid Date Type: " + value.GetTypeAsString() + ".";
            const std::string expected = kinds[kind] == '+' ? "no failure" : words;
            EXPECT_EQ(FailureOf<StateError>([&] { (value.*set)(97); }), expected) << words;
            EXPECT_EQ(FailureOf<StateError>([&] { EXPECT_EQ((value.*get)(), 97); }), expected);
        }
        (full.*set)(static_cast<decltype((full.*get)())>(-1));
    };
    using D = CDateTime;
    check("Year", "-++++----", &D::GetYear, &D::SetYear); // the kinds by number
    check("Month", "-+++---++", &D::GetMonth, &D::SetMonth);
    check("Day", "-++---+-+", &D::GetDay, &D::SetDay);
    check("Hour", "-+---+---", &D::GetHour, &D::SetHour);
    check("Minute", "-+---+---", &D::GetMinute, &D::SetMinute);
    check("Second", "-+---+---", &D::GetSecond, &D::SetSecond);
    check("MilliSecond", "-+---+---", &D::GetMilliSecond, &D::SetMilliSecond);
    check("MicroSecond", "-+---+---", &D::GetMicroSecond, &D::SetMicroSecond);
    check("NanoSecond", "-+---+---", &D::GetNanoSecond, &D::SetNanoSecond);
    full.SetYear(-32768);
    full.SetTimeZone(-23, 59);
    EXPECT_EQ(full.ToString(), "-32768-255-255T255:255:255.655356553565535-23:59");
    EXPECT_DOUBLE_EQ(DateOf("12:00:01.002003004").GetRealSecond(), 1.002003004);

    // A zone is asked for only when it is an offset.
    CDateTime value(dt_time);
    EXPECT_EQ(FailureOf<StateError>([&] { value.GetZoneHour(); }), "TimeZone is not been used");
    value.SetTimeZone(-23, 59);
    EXPECT_EQ(FailureOf([&] { value.SetTimeZone(-24, 7); }), "Invalid TimeZone [-24:7]");
    EXPECT_EQ(value.ToString(), "00:00:00-23:59");
    value.SetUTC();
    EXPECT_EQ(FailureOf<StateError>([&] { value.GetZoneMinute(); }), "TimeZone is not been used");
    EXPECT_TRUE(value.IsUTC());
}

TEST(DateFields, DayOfYearCountsTheLeapDayEarly)
{
    ExpectEach([](const char* text) { return std::to_string(DateOf(text).GetDayOfYear()); },
               {"2000-02-29 -> 61", "2000-03-01 -> 60", "2001-12-31T00:00:00 -> 365"});
    CDateTime date(2001, 1, 5);
    date.SetMonth(13);
    EXPECT_EQ(date.GetDayOfYear(), 370);
    date.SetMonth(0);
    EXPECT_EQ(FailureOf([&] { date.GetDayOfYear(); }), "Invalid Month [0] (1 <= month <= 12)");
    date.SetMonth(14);
    EXPECT_EQ(FailureOf([&] { date.GetDayOfYear(); }), "Invalid Month [14] (1 <= month <= 12)");
}

TEST(DateFields, TimeAndWeekdayGoByTheLocalZoneOfTheMachine)
{
    const char* const saved = std::getenv("TZ");
    const std::string savedZone = saved == nullptr ? "" : saved;
    // Without daylight saving, so that the distance from UTC is one number.
    for (const char* const zone : {"UTC0", "XXX5", "XXX-9:30"}) {
        SCOPED_TRACE(zone);
        setenv("TZ", zone, 1);
        EXPECT_EQ(DateOf("2000-02-29T02:00:00+02:00").GetTime(), 951782400);
        EXPECT_EQ(DateOf("2000-02-29").GetTime(), 951782400);
        EXPECT_EQ(DateOf("1969-12-31").GetTime(), -86400);
        // A Tuesday; five hours west of UTC it still is Monday.
        EXPECT_EQ(DateOf("2000-02-29").GetDayOfWeek(), zone[3] == '5' ? 2 : 3);
    }
    if (saved == nullptr)
        unsetenv("TZ");
    else
        setenv("TZ", savedZone.c_str(), 1);
    tzset();
    EXPECT_EQ(FailureOf<StateError>([] { CDateTime(dt_gYear).GetTime(); }),
              "Failed to GetTime, Date Status must be dateTime or date. Invalid Date Type: gYear.");
}

TEST(DateValidation, NamesTheFirstFieldThatIsOutOfRange)
{
    const auto date = [](short year, unsigned char month, unsigned char day) {
        return FailureOf([=] { CDateTime().SetDate(year, month, day); });
    };
    const auto time = [](auto... fields) {
        return FailureOf([=] { CDateTime().SetTime(fields...); });
    };
    EXPECT_EQ(date(-9999, 1, 31), "no failure");
    EXPECT_EQ(date(0, 0, 1), "Invalid Month [0] (1 <= month <= 12)");
    EXPECT_EQ(date(1, 13, 1), "Invalid Month [13] (1 <= month <= 12)");
    EXPECT_EQ(date(0, 1, 0), "Invalid Year [0] (9999 <= year <= -9999 && year != 0)");
    EXPECT_EQ(date(-10000, 1, 1), "Invalid Year [-10000] (9999 <= year <= -9999 && year != 0)");
    EXPECT_EQ(date(1, 4, 31), "Invalid Day [31] (1 <= day <= days in month");
    EXPECT_EQ(time(24, 60, 0), "Invalid Hour [24] (0 <= hour <= 23)");
    EXPECT_EQ(time(0, 60, 60), "Invalid Minute [60] (0 <= minute <= 59)");
    EXPECT_EQ(time(0, 0, 60, 1000, 0, 0), "Invalid Second [60] (0 <= second <= 59)");
    EXPECT_EQ(time(0, 0, 0, 1000, 1000, 0), "Invalid Milli-Second [1000] (0 <= milli <= 999)");
    EXPECT_EQ(time(0, 0, 0, 0, 1000, 1000), "Invalid Micro-Second [1000] (0 <= micro <= 999)");
    EXPECT_EQ(time(0, 0, 0, 0, 0, 1000), "Invalid Nano-Second [1000] (0 <= nano <= 999)");
    EXPECT_EQ(FailureOf([] { CDateTime().Validate(); }), "Invalid Year Zero");
    EXPECT_EQ(FailureOf([] { CDateTime().SetGMonthDay(2, 30); }),
              "Invalid Day [30] (1 <= day <= days in month)");
    EXPECT_EQ(FailureOf([] { CDateTime().SetGDay(0); }), "Invalid Day [0] (1 <= day <= 31)");
    EXPECT_EQ(FailureOf([] { CDateTime().SetGDay(255); }), "no failure");
}

TEST(DateOrder, GoesByFieldsFromTheYearDown)
{
    ExpectOrders({"2001-01-01T00:00:00 = 2001-01-01T00:00:00", "00:00:00 < 00:00:00.000000001",
                  "00:00:01 > 00:00:00.999999999", "00:01:00 > 00:00:59", "01:00:00 < 02:00:00",
                  "2001-02-01 > 2001-01-31", "2001-12-31 < 2002-01-01", "-0001-12-31 ? 0001-01-01",
                  "--02-28 < --02-29"});
    // Kinds of unlike fields: a missing year counts as -1, a missing smaller field leaves the pair
    // open unless the other side's is 0.
    ExpectOrders({"2001 ? --03", "-0005 < --03", "2001 ? 2001-03", "2001 < 2002-03",
                  "2001-01-01 < 2001-01-01T00:00:00", "2001-01-01T01:00:00 ? 2001-01-01"});
    // Zones on both sides.
    ExpectOrders({"2001-01-01T00:30:00+01:00 = 2000-12-31T23:30:00Z",
                  "2001-12-31T23:30:00-01:30 = 2002-01-01T01:00:00Z", "13:00:00+01:00 = 12:00:00Z",
                  "2001-01-01+01:00 < 2001-01-01Z"});
    // A zone is taken to UTC, except by the free function.
    EXPECT_EQ(DateOf("2001-01-01T00:30:00+01:00").GetNormalized().ToString(),
              "2000-12-31T23:30:00+00:00");
    EXPECT_EQ(Compare(DateOf("12:00:00+02:00"), DateOf("10:00:00Z")), 2);
    // A month of 0 is all that makes a missing one fall behind.
    CDateTime zeroMonth(dt_gYearMonth);
    zeroMonth.SetYear(2001);
    EXPECT_EQ(Compare(zeroMonth, DateOf("2001")), 2);
    EXPECT_EQ(Compare(DateOf("2001"), zeroMonth), 1);

    // A zone on one side only leaves fourteen hours open.
    ExpectOrders(
        {"2001-01-01T09:59:59Z < 2001-01-02T00:00:00", "2001-01-01T10:00:00Z ? 2001-01-02T00:00:00",
         "2001-01-02T00:00:00Z ? 2001-01-02T00:00:00", "2001-01-02T00:00:01Z > 2001-01-02T00:00:00",
         "2001-01-02T00:00:00-01:00 > 2001-01-02T00:00:00"});
}
