#include "QnXmlLib16/values/DateTime.h"

#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/support/Functions.h"
#include "QnXmlLib16/values/DateTimeSpan.h"
#include "tests/values/DateFailure.h"

#include <climits>
#include <cstdlib>
#include <ctime>
#include <gtest/gtest.h>
#include <string>
#include <vector>

using namespace QnXmlLib16;

namespace {

using Parser = void (CDateTime::*)(const char*);
constexpr Parser kDate = &CDateTime::ParseXSDDate;
constexpr Parser kTime = &CDateTime::ParseXSDTime;
constexpr Parser kDateTime = &CDateTime::ParseXSDDateTime;

CDateTime Parsed(Parser parser, const char* text)
{
    CDateTime value(dt_gMonthDay);
    (value.*parser)(text);
    return value;
}

// A date, time or dateTime, whichever the text is.
CDateTime Any(const std::string& text)
{
    if (text.find('T') != std::string::npos)
        return Parsed(kDateTime, text.c_str());
    return Parsed(text.size() > 2 && text[2] == ':' ? kTime : kDate, text.c_str());
}

const std::string kBadDate = "] expected CCYY-MM-DD[Z|[+|-]hh:mm]";

} // namespace

TEST(DateParsing, TheShapeOfTheTextDecidesTheKind)
{
    struct Row
    {
        Parser parser;
        const char* text;
        DTType kind;
        const char* printed;
    };
    const Row rows[] = {
        {kDate, "2001-05-09", dt_date, "2001-05-09"},
        {kDate, "-2001-05-09", dt_date, "-2001-05-09"},
        {kDate, "2000-02-29", dt_date, "2000-02-29"},
        {kDate, "-0004-02-29", dt_date, "-0004-02-29"},
        {kDate, "2001-05", dt_gYearMonth, "2001-05"},
        {kDate, "-0044-03", dt_gYearMonth, "-0044-03"},
        {kDate, "2001", dt_gYear, "2001"},
        {kDate, "-0001", dt_gYear, "-0001"},
        {kDate, "2001:01-01", dt_gYear, "2001"},
        {kDate, "--05", dt_gMonth, "--05"},
        {kDate, "--05--", dt_gMonth, "--05"},
        {kDate, "--05xx", dt_gMonth, "--05"},
        {kDate, "--02-29", dt_gMonthDay, "--02-29"},
        {kDate, "---45", dt_gDay, "---45"},
        {kTime, "23:59:59", dt_time, "23:59:59"},
        {kTime, "00:00:00", dt_time, "00:00:00"},
        {kTime, "12:00:00.", dt_time, "12:00:00"},
        {kTime, "12:00:00.500", dt_time, "12:00:00.5"},
        {kTime, "12:00:00.000050", dt_time, "12:00:00.00005"},
        {kTime, "12:00:00.123456789", dt_time, "12:00:00.123456789"},
        {kTime, "12:00:00.1Z", dt_time, "12:00:00.1Z"},
        {kDateTime, "2001-01-01T00:00:00", dt_dateTime, "2001-01-01T00:00:00"},
        {kDateTime, "-9999-12-31T23:59:59.001", dt_dateTime, "-9999-12-31T23:59:59.001"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        const CDateTime value = Parsed(row.parser, row.text);
        EXPECT_EQ(value.GetType(), row.kind);
        EXPECT_EQ(value.ToString(), row.printed);
    }
}

TEST(DateParsing, TakesAZoneOnEitherSide)
{
    struct Row
    {
        const char* text;
        const char* printed;
    };
    const Row rows[] = {
        {"2001-05-09Z", "2001-05-09Z"},
        {"2001-05-09+01:00", "2001-05-09+01:00"},
        {"2001-05-09-23:59", "2001-05-09-23:59"},
        {"2001-05-09x01:00", "2001-05-09"},
        {"--05-09Z", "--05-09Z"},
        {"---09-05:00", "---09-05:00"},
        {"12:00:00+24:00", "12:00:00+00:00"},
        {"12:00:00-00:30", "12:00:00+00:30"},
        {"12:00:00.Z", "12:00:00Z"},
        {"12:00:00.+02:00", "12:00:00+02:00"},
        {"2001-05-09ZT12:00:00", "2001-05-09T12:00:00Z"},
        {"2001-05-09ZT12:00:00+02:00", "2001-05-09T12:00:00+02:00"},
        {"2001-05-09+02:00T12:00:00Z", "2001-05-09T12:00:00Z"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(Any(row.text).ToString(), row.printed);
    }
    EXPECT_TRUE(Any("12:00:00+01:00").IsUTC());
    EXPECT_FALSE(Any("12:00:00Z").HasTimeZone());
    EXPECT_EQ(Any("12:00:00-05:30").GetZoneHour(), -5);
    EXPECT_EQ(Any("12:00:00-05:30").GetZoneMinute(), 30);
}

TEST(DateParsing, IgnoresWhatStartsNoZone)
{
    EXPECT_EQ(Any("12:00:00abc").ToString(), "12:00:00");
    EXPECT_EQ(Any("12:00:00.25 +01:00").ToString(), "12:00:00.25");
    EXPECT_EQ(Any("12:00:00Zjunk").ToString(), "12:00:00Z");
}

TEST(DateParsing, RefusesWithTheWordsOfTheStepThatFailed)
{
    struct Row
    {
        Parser parser;
        const char* text;
        std::string message;
    };
    const auto badDate = [](const char* text) {
        return Row{kDate, text, std::string("Invalid XSD Date [") + text + kBadDate};
    };
    const auto badTime = [](const char* text) {
        return Row{kTime, text,
                   std::string("Invalid XSD Time [") + text + "] expected hh:mm:ss[.ff]"};
    };
    const auto badZone = [](const char* text, const char* zone) {
        return Row{kTime, text, std::string("Invalid XSD Time Zone [") + zone + "]."};
    };
    const Row rows[] = {
        {kDate, nullptr, "Invalid Date (Null String)"},
        {kDate, "", "Invalid Date (Empty String)"},
        {kDate, "2001-01-01T00:00:00", "Invalid Date ('T' not allowed)"},
        {kDate, "2001-01-01+01:00Z", "Invalid Date (Bad Zone value)"},
        badDate("12001-01-01"),
        badDate("2001-1-01"),
        badDate("2001/01/01"),
        badDate("20a1"),
        badDate("+2001"),
        badDate("-"),
        badDate("--"),
        badDate("--5"),
        badDate("--0a-01"),
        badDate("--a5"),
        badDate("--a5--"),
        badDate("-- -05"),
        badDate("--1-05"),
        badDate("Z"),
        badDate("-:"),
        badDate("--2:00"),
        badDate("-12:00"),
        {kDate, "2001-01-01+1:000", "Invalid XSD Time Zone [+1:000]."},
        {kDate, "2001-01-01+25:00", "Invalid TimeZone [25:0]"},
        {kDate, "2001-01-01-12:60", "Invalid TimeZone [-12:60]"},
        {kTime, nullptr, "Invalid Time (Null String)"},
        {kTime, "", "Invalid XSD Time (Empty String)"},
        badTime("12"),
        badTime("12:00:0"),
        badTime("12-00:00"),
        badTime("24:00:00"),
        badTime("12:60:00"),
        badTime("12:00:60"),
        {kTime, "12:00:00.1234567890",
         "Invalid XSD Time [12:00:00.1234567890] Fraction part too long"},
        badZone("12:00:00+1:00", "+1:00"),
        badZone("12:00:00+01:00 ", "+01:00 "),
        badZone("12:00:00.5-01x00", "-01x00"),
        {kDateTime, nullptr, "Invalid DateTime (Null String)"},
        {kDateTime, "", "Invalid XSD DateTime []."},
        {kDateTime, "2001-01-01", "Invalid XSD DateTime [2001-01-01]."},
        {kDateTime, "T12:00:00", "Invalid Date (Empty String)"},
        {kDateTime, "2001-01-01T", "Invalid XSD Time (Empty String)"},
        {kDateTime, "2001-1-01T12:00:00", "Invalid XSD Date [2001-1-01" + kBadDate},
        {kDateTime, "2001-01T12:00:00",
         "Invalid XSD DateTime [2001-01T12:00:00] expected CCYY-MM-DDThh:mm:ss[.ff]"},
        {kDateTime, "2001-01-01T24:00:00", "Invalid XSD Time [24:00:00] expected hh:mm:ss[.ff]"},
        {kDate, "2001-02-29", "Invalid Day [29] (1 <= day <= days in month"},
        {kDate, "0000-01-01", "Invalid Year [0] (9999 <= year <= -9999 && year != 0)"},
        {kDateTime, "1900-02-29T00:00:00", "Invalid Day [29] (1 <= day <= days in month"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text == nullptr ? "null" : row.text);
        EXPECT_EQ(FailureOf<CQnInvalidValueException>([&] { Parsed(row.parser, row.text); }),
                  row.message);
    }
}

TEST(DateParsing, KeepsWhatTheStepsHaveSetWhenItFails)
{
    CDateTime value(2001, 1, 1);
    EXPECT_THROW(value.ParseXSDDateTime("2005-06-07T08:09:10.1234567890"),
                 CQnInvalidValueException);
    EXPECT_EQ(value.ToString(), "2005-06-07");
    EXPECT_THROW(value.ParseXSDDate("2005-13-01"), CQnInvalidValueException);
    EXPECT_EQ(value.GetMonth(), 13);
    EXPECT_THROW(value.ParseXSDDateTime("no separator"), CQnInvalidValueException);
    EXPECT_EQ(value.GetMonth(), 13);
    EXPECT_THROW(value.ParseXSDDate("junk"), CQnInvalidValueException);
    EXPECT_EQ(value.GetType(), dt_yearZero);
}

TEST(DateParsing, EveryTruncationOfAValidTextIsAnAnswerOrAFailure)
{
    const char* const texts[] = {"-2001-05-09T12:34:56.123456789-10:30", "12:34:56.123+01:00",
                                 "--05-09+01:00", "---09Z", "-2001-05-09+01:00"};
    int answers = 0;
    for (const std::string text : texts) {
        for (std::size_t length = 0; length <= text.size(); ++length) {
            for (const Parser parser : {kDate, kTime, kDateTime}) {
                // A buffer of the exact size, so that a sanitizer sees a read beyond the end.
                const std::string cut(text, 0, length);
                const std::vector<char> exact(cut.c_str(), cut.c_str() + length + 1);
                try {
                    const CDateTime value = Parsed(parser, exact.data());
                    EXPECT_NO_THROW(value.Validate());
                    ++answers;
                }
                catch (const CQnInvalidValueException&) {
                }
            }
        }
    }
    // As dateTime 12 (whole seconds, the point, nine digits, the zone) and 3 as date; as time 6; the
    // gMonthDay 5, since "--05-0" and its zone cut by one are May; 2; 4.
    EXPECT_EQ(answers, 32);
}

TEST(DatePrinting, TheFormatIsTheLexicalFormOrNothing)
{
    const CDateTime date(2001, 5, 9);
    EXPECT_EQ(date.ToString("s"), "2001-05-09");
    EXPECT_EQ(date.ToString("G"), "");
    EXPECT_EQ(date.ToString(nullptr), "");
    EXPECT_EQ(date.ToString(""), "Unknown Format: ");
    EXPECT_EQ(date.ToString("yyyy"), "Unknown Format: yyyy");

    EXPECT_EQ(CDateTime().ToString("G"), "Error: Date Not Set");
    EXPECT_EQ(CDateTime(dt_date).ToString("x"), "Error: Date Not Set");
    EXPECT_EQ(CDateTime(dt_dateTime).ToString(), "Error: Date Not Set");
    EXPECT_EQ(CDateTime(dt_time).ToString(), "00:00:00");
}

TEST(DatePrinting, WritesFieldsOutOfRangeInFull)
{
    CDateTime value(dt_dateTime);
    value.SetYear(-32768);
    value.SetMonth(255);
    value.SetDay(200);
    value.SetHour(100);
    value.SetMinute(255);
    value.SetSecond(255);
    value.SetMilliSecond(65535);
    value.SetMicroSecond(65535);
    value.SetNanoSecond(65530);
    value.SetTimeZone(-23, 59);
    EXPECT_EQ(value.ToString(), "-32768-255-200T100:255:255.65535655356553-23:59");
}

TEST(DateConstruction, AnImpossibleDateIsUnset)
{
    EXPECT_EQ(CDateTime(2001, 13, 1).GetType(), dt_yearZero);
    EXPECT_EQ(CDateTime(2001, 2, 28).ToString(), "2001-02-28");
    EXPECT_EQ(CDateTime(2001, 1, 1, 24, 0, 0).GetType(), dt_yearZero);
    EXPECT_EQ(CDateTime(2001, 1, 1, 1, 2, 3).ToString(), "2001-01-01T01:02:03");
    EXPECT_EQ(CDateTime(2001, 1, 1, 1, 2, 3, 4, 5, 1000).GetType(), dt_yearZero);
    EXPECT_EQ(CDateTime(2001, 1, 1, 1, 2, 3, 4, 5, 6).ToString(), "2001-01-01T01:02:03.004005006");
    EXPECT_EQ(CDateTime("2001-01-01T01:02:03Z").ToString(), "2001-01-01T01:02:03Z");
    EXPECT_THROW(CDateTime("2001-01-01"), CQnInvalidValueException);
}

TEST(DateConstruction, ATimeBecomesADateTimeInUtc)
{
    EXPECT_EQ(CDateTime(951782400L).ToString(), "2000-02-29T00:00:00");
    EXPECT_EQ(CDateTime(-1L).ToString(), "1969-12-31T23:59:59");

    struct Row
    {
        long time;
        const char* message;
    };
    const Row rows[] = {
        {LONG_MAX, "Invalid Year [0] (9999 <= year <= -9999 && year != 0)"},
        {253402300800L, "Invalid Year [10000] (9999 <= year <= -9999 && year != 0)"},
        {2000000000000L, "Invalid Year [65347] (9999 <= year <= -9999 && year != 0)"},
        {-62167219200L, "Invalid Year [0] (9999 <= year <= -9999 && year != 0)"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.time);
        EXPECT_EQ(CDateTime(row.time).GetType(), dt_yearZero);
        CDateTime value;
        EXPECT_EQ(FailureOf<CQnInvalidValueException>([&] { value = row.time; }), row.message);
    }

    CDateTime date(2001, 1, 1);
    EXPECT_EQ(FailureOf<CQnInvalidValueException>([&] { date = 0L; }),
              "Failed to copy CDateTime. Invalid Date Type: dateTime, expected: date.");
    EXPECT_EQ(date.ToString(), "2001-01-01");

    const long before = std::time(nullptr);
    const long now = CDateTime::GetCurrentTime().GetTime();
    EXPECT_GE(now, before);
    EXPECT_LE(now, std::time(nullptr));
}

TEST(DateConstruction, SettersGiveTheKindAndRefuseAnotherOne)
{
    struct Row
    {
        void (*set)(CDateTime&);
        DTType kind;
        const char* printed;
    };
    const Row rows[] = {
        {[](CDateTime& v) { v.SetDateTime(1, 2, 3, 4, 5, 6); }, dt_dateTime, "0001-02-03T04:05:06"},
        {[](CDateTime& v) { v.SetDateTime(1, 2, 3, 4, 5, 6, 7, 0, 0); }, dt_dateTime,
         "0001-02-03T04:05:06.007"},
        {[](CDateTime& v) { v.SetDate(1, 2, 3); }, dt_date, "0001-02-03"},
        {[](CDateTime& v) { v.SetGYearMonth(1, 2); }, dt_gYearMonth, "0001-02"},
        {[](CDateTime& v) { v.SetGYear(1); }, dt_gYear, "0001"},
        {[](CDateTime& v) { v.SetGMonth(2); }, dt_gMonth, "--02"},
        {[](CDateTime& v) { v.SetGMonthDay(2, 29); }, dt_gMonthDay, "--02-29"},
        {[](CDateTime& v) { v.SetGDay(32); }, dt_gDay, "---32"},
        {[](CDateTime& v) { v.SetTime(4, 5, 6); }, dt_time, "04:05:06"},
        {[](CDateTime& v) { v.SetTime(4, 5, 6, 0, 0, 7); }, dt_time, "04:05:06.000000007"},
        {[](CDateTime& v) { v.SetFracTime(0, 70, 0); }, dt_time, "00:00:00.00007"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.printed);
        CDateTime value(row.kind);
        value.SetUTC();
        row.set(value);
        EXPECT_EQ(value.GetType(), row.kind);
        EXPECT_EQ(value.ToString(), row.printed);

        CDateTime other(row.kind == dt_gYear ? dt_gDay : dt_gYear);
        EXPECT_EQ(FailureOf<CQnInvalidValueException>([&] { row.set(other); }),
                  "Failed to copy CDateTime. Invalid Date Type: " + value.GetTypeAsString() +
                      ", expected: " + other.GetTypeAsString() + ".");
    }
    CDateTime refused;
    EXPECT_THROW(refused.SetDate(2001, 2, 30), CQnInvalidValueException);
    EXPECT_EQ(refused.ToString(), "2001-02-30");
    refused.Clear();
    EXPECT_EQ(refused.GetType(), dt_yearZero);
}

TEST(DateConversion, NeedsEveryFieldOfTheNewKind)
{
    // Rows: from; columns: to, by number.
    const char* const allowed[9] = {
        "+--------", "+++++++++", "+-+++-+++", "+--++--+-", "+---+----",
        "+----+---", "+-----+--", "+------+-", "+-----+++",
    };
    for (int from = 0; from <= 8; ++from) {
        for (int to = 0; to <= 8; ++to) {
            SCOPED_TRACE(std::to_string(from) + " to " + std::to_string(to));
            const CDateTime source(static_cast<DTType>(from));
            const DTType kind = static_cast<DTType>(to);
            CDateTime target(2001, 1, 1);
            const std::string failure =
                FailureOf<CQnInvalidValueException>([&] { target.SetDateTime(source, kind); });
            if (allowed[from][to] == '+') {
                EXPECT_EQ(failure, "no failure");
                EXPECT_EQ(target.GetType(), kind);
            }
            else {
                EXPECT_EQ(failure, "Attempting to set a CDateTime of type " +
                                       CDateTime::GetTypeAsString(kind) +
                                       " using an XmlDateTime of type " + source.GetTypeAsString() +
                                       ". The source CDateTime does not contian enough data to "
                                       "allow the conversion.");
                EXPECT_EQ(target.ToString(), "2001-01-01");
            }
        }
    }
    CDateTime target;
    EXPECT_EQ(FailureOf<CQnInvalidValueException>(
                  [&] { target.SetDateTime(CDateTime(static_cast<DTType>(9)), dt_date); }),
              "Unknown date type 9.");
}

TEST(DateConversion, KeepsTheFieldsThatTheKindLacks)
{
    CDateTime date;
    date.SetDateTime(CDateTime("2001-05-09T12:00:00+01:00"), dt_date);
    EXPECT_EQ(date.ToString(), "2001-05-09+01:00");
    EXPECT_EQ(FailureOf<CQnInvalidValueException>([&] { date.Validate(); }),
              "Invalid Hour [12] for type date");
}

TEST(DateFields, BelongToTheirKindsOnly)
{
    struct Row
    {
        const char* field;
        const char* kinds; // '+' by number of the kind
        void (*get)(CDateTime&);
        void (*set)(CDateTime&);
    };
    const Row rows[] = {
        {"Year", "-++++----", [](CDateTime& v) { EXPECT_EQ(v.GetYear(), -7); },
         [](CDateTime& v) { v.SetYear(-7); }},
        {"Month", "-+++---++", [](CDateTime& v) { EXPECT_EQ(v.GetMonth(), 99); },
         [](CDateTime& v) { v.SetMonth(99); }},
        {"Day", "-++---+-+", [](CDateTime& v) { EXPECT_EQ(v.GetDay(), 98); },
         [](CDateTime& v) { v.SetDay(98); }},
        {"Hour", "-+---+---", [](CDateTime& v) { EXPECT_EQ(v.GetHour(), 97); },
         [](CDateTime& v) { v.SetHour(97); }},
        {"Minute", "-+---+---", [](CDateTime& v) { EXPECT_EQ(v.GetMinute(), 96); },
         [](CDateTime& v) { v.SetMinute(96); }},
        {"Second", "-+---+---", [](CDateTime& v) { EXPECT_EQ(v.GetSecond(), 95); },
         [](CDateTime& v) { v.SetSecond(95); }},
        {"MilliSecond", "-+---+---", [](CDateTime& v) { EXPECT_EQ(v.GetMilliSecond(), 1001); },
         [](CDateTime& v) { v.SetMilliSecond(1001); }},
        {"MicroSecond", "-+---+---", [](CDateTime& v) { EXPECT_EQ(v.GetMicroSecond(), 1002); },
         [](CDateTime& v) { v.SetMicroSecond(1002); }},
        {"NanoSecond", "-+---+---", [](CDateTime& v) { EXPECT_EQ(v.GetNanoSecond(), 1003); },
         [](CDateTime& v) { v.SetNanoSecond(1003); }},
    };
    for (const Row& row : rows) {
        for (int kind = 0; kind <= 8; ++kind) {
            CDateTime value(static_cast<DTType>(kind));
            SCOPED_TRACE(row.field + (" of " + value.GetTypeAsString()));
            if (row.kinds[kind] == '+') {
                row.set(value);
                row.get(value);
                continue;
            }
            const std::string message = std::string("Failed to Get") + row.field +
                                        ". Invalid Date Type: " + value.GetTypeAsString() + ".";
            EXPECT_EQ(FailureOf<CQnInvalidStateException>([&] { row.set(value); }), message);
            EXPECT_EQ(FailureOf<CQnInvalidStateException>([&] { row.get(value); }), message);
        }
    }
    EXPECT_EQ(CDateTime::GetTypeAsString(static_cast<DTType>(9)), "");
    EXPECT_DOUBLE_EQ(Any("12:00:01.002003004").GetRealSecond(), 1.002003004);
    EXPECT_EQ(FailureOf<CQnInvalidStateException>([] { CDateTime(dt_date).GetRealSecond(); }),
              "Failed to GetRealSecond. Invalid Date Type: date.");
}

TEST(DateFields, AZoneIsAskedForOnlyWhenItIsAnOffset)
{
    CDateTime value(dt_time);
    EXPECT_EQ(FailureOf<CQnInvalidStateException>([&] { value.GetZoneHour(); }),
              "TimeZone is not been used");
    value.SetTimeZone(-23, 59);
    for (const short hour : {-24, 24}) {
        EXPECT_EQ(FailureOf<CQnInvalidValueException>([&] { value.SetTimeZone(hour, 7); }),
                  "Invalid TimeZone [" + std::to_string(hour) + ":7]");
    }
    EXPECT_EQ(FailureOf<CQnInvalidValueException>([&] { value.SetTimeZone(23, 60); }),
              "Invalid TimeZone [23:60]");
    EXPECT_EQ(value.GetZoneHour(), -23);
    value.SetUTC();
    EXPECT_EQ(FailureOf<CQnInvalidStateException>([&] { value.GetZoneMinute(); }),
              "TimeZone is not been used");
    EXPECT_TRUE(value.IsUTC());
}

TEST(DateFields, DayOfYearCountsTheLeapDayEarly)
{
    struct Row
    {
        const char* text;
        int day;
    };
    const Row rows[] = {{"2000-01-01", 2},  {"2000-02-29", 61},           {"2000-03-01", 60},
                        {"2001-03-01", 60}, {"2001-12-31T00:00:00", 365}, {"2000-12-31", 365}};
    for (const Row& row : rows)
        EXPECT_EQ(Any(row.text).GetDayOfYear(), row.day) << row.text;

    CDateTime date(2001, 1, 5);
    date.SetMonth(13);
    EXPECT_EQ(date.GetDayOfYear(), 370);
    for (const int month : {0, 14, 255}) {
        date.SetMonth(static_cast<unsigned char>(month));
        EXPECT_EQ(FailureOf<CQnInvalidValueException>([&] { date.GetDayOfYear(); }),
                  "Invalid Month [" + std::to_string(month) + "] (1 <= month <= 12)");
    }
    EXPECT_EQ(FailureOf<CQnInvalidStateException>([] { CDateTime(dt_time).GetDayOfYear(); }),
              "Failed to GetDayOfYear. Invalid Date Type: time.");
}

TEST(DateFields, TimeAndWeekdayGoByTheLocalZoneOfTheMachine)
{
    const char* const saved = std::getenv("TZ");
    const std::string savedZone = saved == nullptr ? "" : saved;
    // Without daylight saving, so that the distance from UTC is one number.
    for (const char* const zone : {"UTC0", "XXX5", "XXX-9:30"}) {
        SCOPED_TRACE(zone);
        setenv("TZ", zone, 1);
        EXPECT_EQ(CDateTime("2000-02-29T00:00:00").GetTime(), 951782400);
        EXPECT_EQ(CDateTime("2000-02-29T02:00:00+02:00").GetTime(), 951782400);
        EXPECT_EQ(Any("2000-02-29").GetTime(), 951782400);
        EXPECT_EQ(Any("1969-12-31").GetTime(), -86400);
        // A Tuesday; five hours west of UTC it still is Monday.
        EXPECT_EQ(Any("2000-02-29").GetDayOfWeek(), zone[3] == '5' ? 2 : 3);
    }
    if (saved == nullptr)
        unsetenv("TZ");
    else
        setenv("TZ", savedZone.c_str(), 1);
    tzset();
    EXPECT_EQ(FailureOf<CQnInvalidStateException>([] { CDateTime(dt_gYear).GetTime(); }),
              "Failed to GetTime, Date Status must be dateTime or date. Invalid Date Type: gYear.");
    EXPECT_EQ(FailureOf<CQnInvalidStateException>([] { CDateTime(dt_gDay).GetDayOfWeek(); }),
              "Failed to GetDayOfWeek. Invalid Date Type: gDay.");
}

TEST(DateValidation, NamesTheFirstFieldThatIsOutOfRange)
{
    struct Row
    {
        void (*change)(CDateTime&);
        const char* message;
    };
    const Row dateTimeRows[] = {
        {[](CDateTime&) {}, "no failure"},
        {[](CDateTime& v) { v.SetMonth(0), v.SetYear(0); }, "Invalid Month [0] (1 <= month <= 12)"},
        {[](CDateTime& v) { v.SetMonth(13); }, "Invalid Month [13] (1 <= month <= 12)"},
        {[](CDateTime& v) { v.SetYear(0), v.SetDay(0); },
         "Invalid Year [0] (9999 <= year <= -9999 && year != 0)"},
        {[](CDateTime& v) { v.SetYear(10000); },
         "Invalid Year [10000] (9999 <= year <= -9999 && year != 0)"},
        {[](CDateTime& v) { v.SetYear(-9999); }, "no failure"},
        {[](CDateTime& v) { v.SetYear(-10000); },
         "Invalid Year [-10000] (9999 <= year <= -9999 && year != 0)"},
        {[](CDateTime& v) { v.SetDay(0); }, "Invalid Day [0] (1 <= day <= days in month"},
        {[](CDateTime& v) { v.SetMonth(4), v.SetDay(31); },
         "Invalid Day [31] (1 <= day <= days in month"},
        {[](CDateTime& v) { v.SetDay(32), v.SetHour(24); },
         "Invalid Day [32] (1 <= day <= days in month"},
        {[](CDateTime& v) { v.SetHour(24), v.SetMinute(60); },
         "Invalid Hour [24] (0 <= hour <= 23)"},
        {[](CDateTime& v) { v.SetMinute(60), v.SetSecond(60); },
         "Invalid Minute [60] (0 <= minute <= 59)"},
        {[](CDateTime& v) { v.SetSecond(60), v.SetMilliSecond(1000); },
         "Invalid Second [60] (0 <= second <= 59)"},
        {[](CDateTime& v) { v.SetMilliSecond(1000), v.SetMicroSecond(1000); },
         "Invalid Milli-Second [1000] (0 <= milli <= 999)"},
        {[](CDateTime& v) { v.SetMicroSecond(1000), v.SetNanoSecond(1000); },
         "Invalid Micro-Second [1000] (0 <= micro <= 999)"},
        {[](CDateTime& v) { v.SetNanoSecond(1000); },
         "Invalid Nano-Second [1000] (0 <= nano <= 999)"},
    };
    for (const Row& row : dateTimeRows) {
        SCOPED_TRACE(row.message);
        CDateTime value(2001, 1, 31, 23, 59, 59, 999, 999, 999);
        row.change(value);
        EXPECT_EQ(FailureOf<CQnInvalidValueException>([&] { value.Validate(); }), row.message);
    }

    const Row otherRows[] = {
        {[](CDateTime&) {}, "Invalid Year Zero"},
        {[](CDateTime& v) { v.SetGMonthDay(2, 30); },
         "Invalid Day [30] (1 <= day <= days in month)"},
        {[](CDateTime& v) { v.SetGDay(0); }, "Invalid Day [0] (1 <= day <= 31)"},
        {[](CDateTime& v) { v.SetGDay(255); }, "no failure"},
        {[](CDateTime& v) { v.SetGMonth(13); }, "Invalid Month [13] (1 <= month <= 12)"},
    };
    for (const Row& row : otherRows) {
        CDateTime value;
        EXPECT_EQ(FailureOf<CQnInvalidValueException>([&] {
                      row.change(value);
                      value.Validate();
                  }),
                  row.message);
    }
}

TEST(DateValidation, FieldsThatTheKindLacksMustBeZero)
{
    struct Row
    {
        const char* source;
        DTType kind;
        const char* message;
    };
    const Row rows[] = {
        {"2001-05-09T01:02:03.004005006", dt_gYear, "Invalid Month [5] for type gYear"},
        {"2001-05-09T01:02:03.004005006", dt_gMonth, "Invalid Year [2001] for type gMonth"},
        {"2001-05-09T01:02:03.004005006", dt_gYearMonth, "Invalid Day [9] for type gYearMonth"},
        {"2001-05-09T01:02:03.004005006", dt_date, "Invalid Hour [1] for type date"},
        {"2001-05-09T00:02:03.004005006", dt_date, "Invalid Minute [2] for type date"},
        {"2001-05-09T00:00:03.004005006", dt_date, "Invalid Second [3] for type date"},
        {"2001-05-09T00:00:00.004005006", dt_date, "Invalid Milli-Second [4] for type date"},
        {"2001-05-09T00:00:00.000005006", dt_date, "Invalid Micro-Second [5] for type date"},
        {"2001-05-09T00:00:00.000000006", dt_date, "Invalid Nano-Second [6] for type date"},
        {"2001-05-09T00:00:00", dt_date, "no failure"},
    };
    for (const Row& row : rows) {
        CDateTime value;
        value.SetDateTime(CDateTime(row.source), row.kind);
        EXPECT_EQ(FailureOf<CQnInvalidValueException>([&] { value.Validate(); }), row.message);
    }
}

TEST(DateOrder, GoesByFieldsFromTheYearDown)
{
    struct Row
    {
        const char* a;
        const char* b;
        int order;
    };
    const Row rows[] = {
        {"2001-01-01T00:00:00", "2001-01-01T00:00:00", 0},
        {"2001-01-01T00:00:00", "2001-01-01T00:00:00.000000001", 1},
        {"2001-01-01T00:00:01", "2001-01-01T00:00:00.999999999", 2},
        {"2001-01-01T00:01:00", "2001-01-01T00:00:59", 2},
        {"2001-01-01T01:00:00", "2001-01-01T02:00:00", 1},
        {"2001-02-01", "2001-01-31", 2},
        {"2001-12-31", "2002-01-01", 1},
        {"-2001-01-01", "-2000-01-01", 1},
        {"-0001-12-31", "0001-01-01", 3},
        {"12:00:00", "13:00:00", 1},
        {"--02-28", "--02-29", 1},
        {"--03", "--03", 0},
        {"---09", "---10", 1},
        // Kinds of unlike fields: a missing year counts as -1, a missing smaller field leaves the
        // pair open unless the other side's is 0.
        {"2001", "--03", 3},
        {"-0005", "--03", 1},
        {"--03", "-0005", 2},
        {"-0001", "--03", 3},
        {"2001", "2001-03", 3},
        {"2001", "2002-03", 1},
        {"2001-01-01", "2001-01-01T00:00:00", 1},
        {"2001-01-01T00:00:00", "2001-01-01", 2},
        {"2001-01-01T01:00:00", "2001-01-01", 3},
        {"2001-01-01", "2001-01-01T01:00:00", 3},
        {"--03", "---03", 3},
        // Zones on both sides.
        {"2001-01-01T12:00:00+02:00", "2001-01-01T10:00:00Z", 0},
        {"2001-01-01T00:30:00+01:00", "2000-12-31T23:30:00Z", 0},
        {"2001-01-01T22:00:00-05:30", "2001-01-02T03:30:00Z", 0},
        {"2001-01-01T12:00:00+02:00", "2001-01-01T11:00:00Z", 1},
        {"13:00:00+01:00", "12:00:00Z", 0},
        {"2001-01-01+01:00", "2001-01-01Z", 1},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.a + std::string(" : ") + row.b);
        const CDateTime a = Any(row.a);
        const CDateTime b = Any(row.b);
        EXPECT_EQ(a.CompareTo(b), row.order);
        EXPECT_EQ(a == b, row.order == 0);
        EXPECT_EQ(a != b, row.order != 0);
        EXPECT_EQ(a < b, row.order == 1);
        EXPECT_EQ(a <= b, row.order == 0 || row.order == 1);
        EXPECT_EQ(a > b, row.order == 2);
        EXPECT_EQ(a >= b, row.order == 0 || row.order == 2);
    }
    // The free function does not look at zones.
    EXPECT_EQ(Compare(Any("12:00:00+02:00"), Any("10:00:00Z")), 2);
    // A month of 0 is all that makes a missing one fall behind.
    CDateTime zeroMonth(dt_gYearMonth);
    zeroMonth.SetYear(2001);
    EXPECT_EQ(Compare(zeroMonth, Any("2001")), 2);
    EXPECT_EQ(Compare(Any("2001"), zeroMonth), 1);
}

TEST(DateOrder, AZoneOnOneSideLeavesFourteenHoursOpen)
{
    struct Row
    {
        const char* zoned;
        int order; // against 2001-01-02T00:00:00
        int mirrored;
    };
    const Row rows[] = {
        {"2001-01-01T09:59:59Z", 1, 2},      {"2001-01-01T10:00:00Z", 3, 3},
        {"2001-01-02T00:00:00Z", 3, 3},      {"2001-01-02T00:00:01Z", 2, 1},
        {"2001-01-02T10:00:00Z", 2, 1},      {"2001-01-02T14:00:01Z", 2, 1},
        {"2001-01-01T12:00:00+02:30", 1, 2}, {"2001-01-02T00:00:00-01:00", 2, 1},
    };
    const CDateTime unzoned("2001-01-02T00:00:00");
    for (const Row& row : rows) {
        SCOPED_TRACE(row.zoned);
        const CDateTime zoned(row.zoned);
        EXPECT_EQ(zoned.CompareTo(unzoned), row.order);
        EXPECT_EQ(unzoned.CompareTo(zoned), row.mirrored);
    }
}
