#include "QnXmlLib16/values/DateTimeSpan.h"

#include "QnXmlLib16/values/DateTime.h"
#include "tests/values/ValueTools.h"

#include <cstdlib>
#include <ctime>
#include <gtest/gtest.h>
#include <random>

using namespace QnXmlLib16;

namespace {

CDateTimeSpan Span(const std::string& text)
{
    CDateTimeSpan span(9, 9, 9, 9, 9, 9, 9, 9, 9);
    span.Negate();
    span.ParseXSDDuration(text.c_str());
    return span;
}

std::string Parse(const char* text)
{
    return Span(text).ToString();
}

// Of "date + span", where the date may be a dateTime.
std::string Sum(const char* text)
{
    const std::vector<std::string> words = Words(text);
    CDateTime value = DateOf(words[0]);
    const CDateTime sum = value + Span(words[2]);
    EXPECT_EQ((value += Span(words[2])).ToString(), sum.ToString());
    return sum.ToString();
}

// Any year is taken.
CDateTime DateTimeOf(const std::tm& time, long long nanos)
{
    CDateTime value(2000, time.tm_mon + 1, time.tm_mday, time.tm_hour, time.tm_min, time.tm_sec,
                    nanos / 1000000, nanos / 1000 % 1000, nanos % 1000);
    value.SetYear(time.tm_year + 1900);
    return value;
}

} // namespace

TEST(DurationParsing, ReadsEachFieldAndWritesItBack)
{
    for (const char* text :
         {"P1Y2M3DT4H5M6.789S", "-P1D", "P5M", "PT5M", "PT0.5S", "PT0.123456S", "P65535Y",
          "P18446744073709551615M18446744073709551615D",
          "PT18446744073709551615H18446744073709551615M18446744073709551615.999999S"})
        EXPECT_EQ(Parse(text), text);
    // Digits are optional, those in front of "T" are dropped, and "Y" starts the order over.
    ExpectEach(Parse, {"P0Y -> P", "PYMDTHMS -> P", "P1D7T1H -> P1DT1H", "P1M1Y -> P1Y1M",
                       "PT1H2Y -> P2YT1H", "PT1.5S2YT3M -> P2YT3M1.5S", "P65537Y -> P1Y",
                       "P18446744073709551617M -> P1M"});
    // Points and fractions, whose last three digits replace each other.
    ExpectEach(Parse, {"PT1. -> PT1S", "PT1.S -> PT1S", "PT.5S -> PT0.5S",
                       "PT0.1234567S -> PT0.123456007S", "PT0.123456780S -> PT0.123456S"});
}

TEST(DurationParsing, RefusesWhatIsOutOfOrderOrUnknown)
{
    for (const std::string text :
         {"-",     "-P",    "PT",     "P1YT",    "P-1D",    "+P1D",   "P1D ",     "1D",     "P1",
          "P1H",   "P1S",   "P1.5S",  "PT1D",    "PT1M1H",  "PT1S1S", "PT1S1.5S", "PT1S1M", "P1D1M",
          "P1D1D", "PT1.5", "PT1.5M", "PT1.5SS", "PT1..5S", "p1d",    "PT1,5S"}) {
        EXPECT_EQ(FailureOf([&] { Span(text); }),
                  "Invalid XSD Duration [" + text +
                      "] expected [-]P[nY][nM][nD][T[nH][nM][nS.ff]]");
    }
    ExpectEach(Parse, {"PT0.1234567890S -> Invalid XSD Duration [PT0.1234567890S] Fraction part "
                       "too long",
                       " -> Invalid XSD Duration (Empty String)"});
    EXPECT_EQ(FailureOf([] { CDateTimeSpan().ParseXSDDuration(nullptr); }),
              "Invalid XSD Duration (Null String)");
    // What a million sevens leave of 64 bits.
    unsigned long days = 0;
    for (int i = 0; i < 1000000; ++i)
        days = days * 10 + 7;
    EXPECT_EQ(Span("P" + std::string(1000000, '7') + "D").GetDays(), days);

    // Taken behind each designator but "T", behind the point, and as a whole.
    EXPECT_EQ(CountBeginningsTaken("-P1Y2M3DT4H5M6.789123456S", Parse), 7);
}

TEST(DurationFields, AreMagnitudesUnderOneSign)
{
    CDateTimeSpan span(1, 13, 32, 25, 61, 62);
    EXPECT_EQ(span.GetAsNegative().GetAsNegative().ToString(), "-P1Y13M32DT25H61M62S");
    span.SetMilliSeconds(5000);
    span.SetNanoSeconds(1);
    EXPECT_EQ(span.ToString(), "P1Y13M32DT25H61M62.5000000001S");
    span.SetDateTimeSpan(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(span.ToString(), "P1Y2M3DT4H5M6S");
    span.SetDateTimeSpan(7, 8, 9);
    EXPECT_EQ(span.ToString(), "PT7H8M9S");
    // An empty one is printed as what the parser refuses.
    EXPECT_EQ(CDateTimeSpan().GetAsNegative().ToString(), "-P");
}

TEST(DurationOrder, HoldsOnlyWhereItHoldsFromEveryReferenceDate)
{
    // The years of the sums of the last two lie on either side of 1, or wrap there.
    for (const std::string text :
         {"P1Y = P12M",        "P1D = PT24H",  "PT1H = PT3600S", "PY = -PY",    "PT0.5S < PT1S",
          "-P1D < P1D",        "P1Y > P364D",  "P1Y ? P365D",    "P1Y ? P366D", "P1Y < P367D",
          "P1M > P27D",        "P1M ? P28D",   "P1M ? P31D",     "P1M < P32D",  "P8M ? P245D",
          "P5M > P149D",       "P5M ? P150D",  "P5M ? P153D",    "P5M < P154D", "-P1M > -P32D",
          "-P1000Y ? -P2000Y", "P40000Y ? P1Y"}) {
        SCOPED_TRACE(text);
        const std::vector<std::string> words = Words(text);
        const char order = words[1][0];
        const CDateTimeSpan a = Span(words[0]), b = Span(words[2]);
        EXPECT_EQ("=<>?"[a.CompareTo(b)], order);
        EXPECT_EQ("=><?"[b.CompareTo(a)], order);
        EXPECT_EQ(a == b, order == '=');
        EXPECT_EQ(a != b, order != '=');
        EXPECT_EQ(a < b, order == '<');
        EXPECT_EQ(a > b, order == '>');
    }
    // Month by month these take more than a second; the limit leaves room for a slow machine.
    EXPECT_LT(MillisecondsOf([] {
                  for (const char* text :
                       {"P2147483000D", "-P2147483647D", "P1000000007M", "P18446744073709551615D",
                        "PT18446744073709551615H18446744073709551615M"})
                      EXPECT_EQ(Span(text).CompareTo(Span(text)), 0) << text;
              }),
              200);
}

// Against the calendar of the C library, on random operands.
TEST(DateArithmetic, AgreesWithTheCivilCalendar)
{
    std::mt19937_64 random(20010509);
    const auto pick = [&random](int low, int high) {
        return std::uniform_int_distribution<int>(low, high)(random);
    };
    // Each sum stays below 2^24, where single precision is exact. The magnitudes are spread over
    // all sizes.
    const auto magnitude = [&pick](int most) {
        return pick(0, 1) == 0 ? 0 : pick(0, most >> pick(0, 23));
    };
    for (int i = 0; i < 120000; ++i) {
        // Where months are added the day stays in the part that every month has; else any day.
        const bool movesMonths = pick(0, 1) == 1;
        std::tm start = {};
        start.tm_year = pick(-9999, 9999) - 1900;
        start.tm_mday = movesMonths ? pick(1, 28) : pick(1, 366);
        start.tm_mon = movesMonths ? pick(0, 11) : 0;
        start.tm_sec = pick(0, 86399);
        timegm(&start); // moves each field into its range
        const int years = movesMonths ? magnitude(10000) : 0;
        const int months = movesMonths ? magnitude(100000) : 0;
        const int days = magnitude(3000000), hours = magnitude(16000000);
        const int minutes = magnitude(16000000), seconds = magnitude(16000000);
        const int millis = magnitude(65535), micros = magnitude(65535), nanos = magnitude(65535);
        const int sign = pick(0, 1) == 1 ? -1 : 1, fraction = pick(0, 999999999);
        CDateTimeSpan span(years, months, days, hours, minutes, seconds, millis, micros, nanos);
        if (sign < 0)
            span.Negate();

        const long long second = 1000000000;
        const long long total = fraction + sign * (millis * 1000000LL + micros * 1000 + nanos);
        const long long rest = (total % second + second) % second;
        std::tm expected = start;
        expected.tm_year += sign * years;
        expected.tm_mon += sign * months;
        expected.tm_mday += sign * days;
        expected.tm_hour += sign * hours;
        expected.tm_min += sign * minutes;
        expected.tm_sec += sign * seconds + static_cast<int>((total - rest) / second);
        timegm(&expected);
        const CDateTime value = DateTimeOf(start, fraction);
        ASSERT_EQ((value + span).ToString(), DateTimeOf(expected, rest).ToString())
            << value.ToString() << " + " << span.ToString();
    }
}

// What a walk over the calendar gives, month after month, where years wrap at 16 bits.
TEST(DateArithmetic, SkipsYearsToTheDayTheMonthWiseWalkReaches)
{
    const struct
    {
        int year, month, day;
        long long days;
        const char* sum;
    } rows[] = {
        {2001, 5, 9, 2147483647, "-16629-12-30"}, {2000, 2, 29, -2147483648LL, "20629-07-08"},
        {32767, 12, 31, 1, "-32768-01-01"},       {-32768, 1, 1, -1, "32767-12-31"},
        {32650, 3, 1, 1500000, "-28779-01-09"},   {-32450, 3, 1, -1000000, "30348-04-03"},
        {32600, 1, 39, 1461, "32604-02-09"},      {-32501, 3, 35, -146097, "32635-04-04"},
        {2001, 1, 1, 146097, "2401-01-01"},       {2001, 1, 1, 146096, "2400-12-31"},
        {2000, 12, 31, -366, "1999-12-31"},       {2001, 3, 1, -366, "2000-02-29"},
    };
    for (const auto& row : rows) {
        CDateTimeSpan span;
        span.SetDays(static_cast<unsigned long>(std::llabs(row.days)));
        CDateTime date(2000, row.month, 1, 0, 0, 0);
        date.SetYear(row.year);
        date.SetDay(row.day);
        EXPECT_EQ((row.days < 0 ? date - span : date + span).ToString(),
                  std::string(row.sum) + "T00:00:00");
    }
}

TEST(DateArithmetic, TakesAnyKindAndValidatesNothing)
{
    ExpectEach(Sum, {"2001-01-31 + P1M -> 2001-02-31", "2001-01-31 + P1M1D -> 2001-03-04",
                     "2001-05-09+01:00 + PT24H -> 2001-05-10+01:00",
                     "0001-01-01 + -P1D -> 0000-12-31", "9999-12-31 + P1D -> 10000-01-01",
                     "2001 + PY -> 2000", "--05 + P8M -> --01", "---05 + -P5D -> ---30"});

    // Minus moves back whatever the sign of the span.
    CDateTime date(2001, 5, 9);
    EXPECT_EQ((date - Span("P1D")).ToString(), "2001-05-08");
    EXPECT_EQ((date -= Span("-P1D")).ToString(), "2001-05-08");
    // The difference of two dates is always empty.
    EXPECT_EQ((date - CDateTime(1999, 1, 1)).ToString(), "P");
}

TEST(DateArithmetic, LargeSpansCarryInSinglePrecision)
{
    // Months outside 1 to 12 count 31 days and lead to January or, going back, to December.
    ExpectEach(Sum, {"2001-01-01T00:00:00 + PT1000000007S -> 2032-09-09T01:47:243",
                     "2001-01-01 + P1000000007M -> -26455-232-01",
                     "2001-01-01 + P1000000007M30D -> -26455-232-31",
                     "2001-01-01 + P1000000007M31D -> -26454-01-01",
                     "2001-01-01 + -P1000000007M1D -> 30457-25-31"});
    // 2^64 - 1 hours are one hour back once the sum has wrapped, and days keep 32 bits.
    ExpectEach(Sum, {"2001-01-01T12:00:00 + PT18446744073709551615H -> 2001-01-01T11:00:00",
                     "2001-01-01 + P4294967299D -> 2001-01-04",
                     "2001-01-01 + P4294967295D -> 2000-12-31"});
}
