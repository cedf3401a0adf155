#include "QnXmlLib16/support/Functions.h"
#include "QnXmlLib16/values/DateTime.h"
#include "QnXmlLib16/values/DateTimeSpan.h"

#include <gtest/gtest.h>
#include <random>

using namespace QnXmlLib16;

namespace {

CDateTimeSpan Span(const char* text)
{
    CDateTimeSpan span;
    span.ParseXSDDuration(text);
    return span;
}

CDateTime Date(const char* text)
{
    CDateTime date;
    date.ParseXSDDate(text);
    return date;
}

// Days since 0000-03-01 of the Gregorian calendar carried back without end, and its inverse. Years
// are taken to begin in March, so that the leap day is the last one.
long long DayNumber(long long year, int month, long long day)
{
    const long long marchYear = month > 2 ? year : year - 1;
    const long long era = (marchYear >= 0 ? marchYear : marchYear - 399) / 400;
    const long long yearOfEra = marchYear - era * 400;
    const int marchMonth = (month + 9) % 12;
    const long long dayOfYear = (153 * marchMonth + 2) / 5 + day - 1;
    return era * 146097 + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
}

struct Civil
{
    long long year;
    int month;
    int day;
};

Civil CivilOf(long long dayNumber)
{
    const long long era = (dayNumber >= 0 ? dayNumber : dayNumber - 146096) / 146097;
    const long long dayOfEra = dayNumber - era * 146097;
    const long long yearOfEra =
        (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const long long dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const int marchMonth = static_cast<int>((5 * dayOfYear + 2) / 153);
    const int day = static_cast<int>(dayOfYear - (153 * marchMonth + 2) / 5 + 1);
    const int month = marchMonth < 10 ? marchMonth + 3 : marchMonth - 9;
    return {yearOfEra + era * 400 + (month <= 2 ? 1 : 0), month, day};
}

long long FloorDiv(long long value, long long divisor)
{
    return value / divisor - (value % divisor < 0 ? 1 : 0);
}

int LengthOfMonth(long long year, int month)
{
    const long long next = month == 12 ? DayNumber(year + 1, 1, 1) : DayNumber(year, month + 1, 1);
    return static_cast<int>(next - DayNumber(year, month, 1));
}

// The walk over the calendar as it is defined: month after month, whatever that takes.
struct Walker
{
    short year;
    int month;
    long long day;

    int Length() const { return month == 2 ? (IsLeapYear(year) ? 29 : 28) : g_monthMax[month - 1]; }

    void Walk(long long days)
    {
        while (days > 0) {
            if (day + days <= Length()) {
                day += days;
                return;
            }
            days -= Length() + 1 - day;
            day = 1;
            if (++month == 13) {
                month = 1;
                year = static_cast<short>(year + 1);
            }
        }
        while (days < 0) {
            if (day > -days) {
                day += days;
                return;
            }
            days += day;
            if (--month == 0) {
                month = 12;
                year = static_cast<short>(year - 1);
            }
            day = Length();
        }
    }
};

} // namespace

TEST(DateArithmetic, AgreesWithTheCivilCalendar)
{
    std::mt19937_64 random(20010509);
    const auto pick = [&random](long long low, long long high) {
        return std::uniform_int_distribution<long long>(low, high)(random);
    };
    for (int i = 0; i < 120000; ++i) {
        // Where months are added the day stays in the part that every month has; else any day.
        const bool movesMonths = pick(0, 1) == 1;
        const long long year = pick(-9999, 9999);
        const int month = static_cast<int>(pick(1, 12));
        const int day = static_cast<int>(pick(1, movesMonths ? 28 : LengthOfMonth(year, month)));
        const long long time[6] = {pick(0, 23),  pick(0, 59),  pick(0, 59),
                                   pick(0, 999), pick(0, 999), pick(0, 999)};
        // Each sum stays below 2^24, where single precision is exact. The magnitudes are spread
        // over all sizes.
        const auto magnitude = [&pick](long long most) {
            return pick(0, 1) == 0 ? 0 : pick(0, most >> pick(0, 23));
        };
        const long long years = movesMonths ? magnitude(10000) : 0;
        const long long months = movesMonths ? magnitude(100000) : 0;
        const long long days = magnitude(3000000);
        const long long span[6] = {magnitude(16000000), magnitude(16000000), magnitude(16000000),
                                   magnitude(65535),    magnitude(65535),    magnitude(65535)};
        const bool negative = pick(0, 1) == 1;
        const int sign = negative ? -1 : 1;

        CDateTime value(dt_dateTime);
        value.SetYear(static_cast<short>(year));
        value.SetMonth(static_cast<unsigned char>(month));
        value.SetDay(static_cast<unsigned char>(day));
        value.SetHour(static_cast<unsigned char>(time[0]));
        value.SetMinute(static_cast<unsigned char>(time[1]));
        value.SetSecond(static_cast<unsigned char>(time[2]));
        value.SetMilliSecond(static_cast<unsigned short>(time[3]));
        value.SetMicroSecond(static_cast<unsigned short>(time[4]));
        value.SetNanoSecond(static_cast<unsigned short>(time[5]));
        CDateTimeSpan duration(
            static_cast<unsigned short>(years), static_cast<unsigned long>(months),
            static_cast<unsigned long>(days), static_cast<unsigned long>(span[0]),
            static_cast<unsigned long long>(span[1]), static_cast<unsigned long long>(span[2]),
            static_cast<unsigned short>(span[3]), static_cast<unsigned short>(span[4]),
            static_cast<unsigned short>(span[5]));
        if (negative)
            duration.Negate();
        SCOPED_TRACE(value.ToString() + " + " + duration.ToString());

        const long long monthNumber = year * 12 + month - 1 + sign * (years * 12 + months);
        static const __int128 kUnit[6] = {3600000000000, 60000000000, 1000000000, 1000000, 1000, 1};
        __int128 nanos = 0;
        for (int unit = 0; unit < 6; ++unit)
            nanos += (time[unit] + sign * span[unit]) * kUnit[unit];
        __int128 rest = nanos % (24 * kUnit[0]);
        if (rest < 0)
            rest += 24 * kUnit[0];
        const long long carried = static_cast<long long>((nanos - rest) / (24 * kUnit[0]));
        const Civil civil = CivilOf(
            DayNumber(FloorDiv(monthNumber, 12),
                      static_cast<int>(monthNumber - FloorDiv(monthNumber, 12) * 12 + 1), day) +
            sign * days + carried);

        const CDateTime sum = value + duration;
        ASSERT_EQ(sum.GetYear(), civil.year);
        ASSERT_EQ(sum.GetMonth(), civil.month);
        ASSERT_EQ(sum.GetDay(), civil.day);
        const long long fields[6] = {sum.GetHour(),        sum.GetMinute(),
                                     sum.GetSecond(),      sum.GetMilliSecond(),
                                     sum.GetMicroSecond(), sum.GetNanoSecond()};
        for (int unit = 0; unit < 6; ++unit) {
            ASSERT_EQ(fields[unit], static_cast<long long>(rest / kUnit[unit])) << unit;
            rest %= kUnit[unit];
        }
    }
}

TEST(DateArithmetic, SkipsYearsToTheDayTheMonthWiseWalkReaches)
{
    struct Row
    {
        const char* start;
        long long days;
    };
    const Row rows[] = {
        {"2001-05-09", 2147483000},
        {"2001-05-09", 2147483647},
        {"2000-02-29", -2147483648LL},
        {"1904-02-29", -2147483000},
    };
    const auto expectSame = [](const CDateTime& start, long long days) {
        CDateTimeSpan span;
        span.SetDays(static_cast<unsigned long>(days < 0 ? -days : days));
        if (days < 0)
            span.Negate();
        SCOPED_TRACE(start.ToString() + " + " + span.ToString());
        Walker walker = {start.GetYear(), start.GetMonth(), start.GetDay()};
        walker.Walk(days);
        const CDateTime sum = start + span;
        ASSERT_EQ(sum.GetYear(), walker.year);
        ASSERT_EQ(sum.GetMonth(), walker.month);
        ASSERT_EQ(sum.GetDay(), walker.day);
    };
    for (const Row& row : rows)
        expectSame(Date(row.start), row.days);

    // Close to where the years wrap, both ways, with days that fit no month among them; and spans
    // that end on the very day where a cycle or a year ends.
    std::mt19937_64 random(1582);
    for (int i = 0; i < 2000; ++i) {
        CDateTime start(dt_date);
        const int year = static_cast<int>(random() % 2000) + (random() % 2 == 0 ? -32768 : 30768);
        start.SetYear(static_cast<short>(year));
        start.SetMonth(static_cast<unsigned char>(random() % 12 + 1));
        start.SetDay(static_cast<unsigned char>(random() % 40));
        const long long around[] = {static_cast<long long>(random() % 1500000), 146097, 365, 366};
        const long long days = around[random() % 4] + static_cast<long long>(random() % 64) - 32;
        expectSame(start, random() % 2 == 0 ? days : -days);
    }
}

TEST(DateArithmetic, TakesAnyKindAndValidatesNothing)
{
    struct Row
    {
        const char* date;
        const char* span;
        const char* sum;
    };
    const Row rows[] = {
        {"2001-01-31", "P1M", "2001-02-31"},
        {"2001-01-31", "P1M1Y", "2002-02-31"},
        {"2001-01-31", "P1MT24H", "2001-03-04"},
        {"2001-02-28", "P1D", "2001-03-01"},
        {"2000-02-28", "P1D", "2000-02-29"},
        {"2000-03-01", "-P1D", "2000-02-29"},
        {"2001-12-31", "P1D", "2002-01-01"},
        {"2001-01-01", "-P1D", "2000-12-31"},
        {"2001-01-31", "-P1M", "2000-12-31"},
        {"2001-11-15", "P3M", "2002-02-15"},
        {"2001-02-15", "-P14M", "1999-12-15"},
        {"2001-05-09Z", "P1D", "2001-05-10Z"},
        {"2001-05-09+01:00", "PT24H", "2001-05-10+01:00"},
        {"0001-01-01", "-P1D", "0000-12-31"},
        {"9999-12-31", "P1D", "10000-01-01"},
        // The year keeps 16 bits.
        {"0001-01-01", "P32767Y", "-32768-01-01"},
        {"2001", "PY", "2000"},
        {"2001", "P1M", "2001"},
        {"--05", "P8M", "--01"},
        {"---05", "P1D", "---06"},
        {"---05", "-P5D", "---30"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.date + std::string(" + ") + row.span);
        EXPECT_EQ((Date(row.date) + Span(row.span)).ToString(), row.sum);
        CDateTime value = Date(row.date);
        value += Span(row.span);
        EXPECT_EQ(value.ToString(), row.sum);
    }
}

TEST(DateArithmetic, LargeSpansCarryInSinglePrecision)
{
    struct Row
    {
        const char* span;
        const char* sum;
    };
    const Row rows[] = {
        {"PT16777215S", "2001-07-14T04:20:15"},
        {"PT1000000007S", "2032-09-09T01:47:243"},
        // Months outside 1 to 12 count 31 days and lead to January or, going back, to December.
        {"P1000000007M", "-26455-232-01T00:00:00"},
        {"P1000000007M30D", "-26455-232-31T00:00:00"},
        {"P1000000007M31D", "-26454-01-01T00:00:00"},
        {"-P1000000007M1D", "30457-25-31T00:00:00"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.span);
        EXPECT_EQ((CDateTime("2001-01-01T00:00:00") + Span(row.span)).ToString(), row.sum);
    }
}

TEST(DateArithmetic, WrapsAndCutsAnyMagnitude)
{
    // 2^64 - 1 hours are one hour back once the sum has wrapped.
    CDateTimeSpan span;
    span.SetHours(~0UL);
    EXPECT_EQ((CDateTime("2001-01-01T12:00:00") + span).ToString(), "2001-01-01T11:00:00");
    // Days keep 32 bits.
    span.Clear();
    span.SetDays((1UL << 32) + 3);
    EXPECT_EQ((Date("2001-01-01") + span).ToString(), "2001-01-04");
    span.SetDays((1UL << 32) - 1);
    EXPECT_EQ((Date("2001-01-01") + span).ToString(), "2000-12-31");
}

TEST(DateArithmetic, MinusMovesBackWhateverTheSignOfTheSpan)
{
    const CDateTime date(2001, 5, 9);
    EXPECT_EQ((date - Span("P1D")).ToString(), "2001-05-08");
    EXPECT_EQ((date - Span("-P1D")).ToString(), "2001-05-08");
    CDateTime moved(date);
    moved -= Span("-P1M");
    EXPECT_EQ(moved.ToString(), "2001-04-09");
}

TEST(DateArithmetic, TheDifferenceOfTwoDatesIsEmpty)
{
    EXPECT_EQ((CDateTime(2001, 5, 9) - CDateTime(1999, 1, 1)).ToString(), "P");
}

TEST(DateArithmetic, NormalisingMovesAnOffsetToZero)
{
    struct Row
    {
        const char* text;
        const char* normalized;
    };
    const Row rows[] = {
        {"2001-01-01T00:30:00+01:00", "2000-12-31T23:30:00+00:00"},
        {"2001-12-31T23:30:00-00:30", "2001-12-31T23:00:00+00:00"},
        {"2001-12-31T23:30:00-01:30", "2002-01-01T01:00:00+00:00"},
        {"2001-01-01T12:00:00Z", "2001-01-01T12:00:00Z"},
        {"2001-01-01T12:00:00", "2001-01-01T12:00:00"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(CDateTime(row.text).GetNormalized().ToString(), row.normalized) << row.text;
}
