#include "QnXmlLib16/values/DateTimeSpan.h"

#include "QnXmlLib16/support/Exceptions.h"
#include "tests/values/DateFailure.h"

#include <chrono>
#include <climits>
#include <gtest/gtest.h>
#include <vector>

using namespace QnXmlLib16;

namespace {

CDateTimeSpan Span(const std::string& text)
{
    CDateTimeSpan span(9, 9, 9, 9, 9, 9, 9, 9, 9);
    span.Negate();
    span.ParseXSDDuration(text.c_str());
    return span;
}

} // namespace

TEST(DurationParsing, ReadsEachFieldAndWritesItBack)
{
    struct Row
    {
        const char* text;
        const char* printed;
    };
    const Row rows[] = {
        {"P1Y2M3DT4H5M6.789S", "P1Y2M3DT4H5M6.789S"},
        {"-P1D", "-P1D"},
        {"P1Y", "P1Y"},
        {"P0Y", "P"},
        {"PT90S", "PT90S"},
        {"PT5M", "PT5M"},
        {"P5M", "P5M"},
        {"PT0.5S", "PT0.5S"},
        {"-PT36H", "-PT36H"},
        // Digits are optional, and those in front of "T" are dropped.
        {"PY", "P"},
        {"PYMDTHMS", "P"},
        {"P5T1H", "PT1H"},
        {"P1D7T1H", "P1DT1H"},
        // "Y" starts the order over.
        {"P1M1Y", "P1Y1M"},
        {"PT1H2Y", "P2YT1H"},
        {"PT1S2Y3D", "P2Y3DT1S"},
        {"PT1.5S2YT3M", "P2YT3M1.5S"},
        {"P1YT1M", "P1YT1M"},
        // Points and fractions.
        {"PT1.", "PT1S"},
        {"PT1.S", "PT1S"},
        {"PT.5S", "PT0.5S"},
        {"PT1.5S", "PT1.5S"},
        {"PT0.123456S", "PT0.123456S"},
        {"PT0.1234567S", "PT0.123456007S"},
        {"PT0.12345678S", "PT0.123456008S"},
        {"PT0.123456789S", "PT0.123456009S"},
        {"PT0.123456780S", "PT0.123456S"},
        // Widths.
        {"P65535Y", "P65535Y"},
        {"P65537Y", "P1Y"},
        {"P18446744073709551615M18446744073709551615D",
         "P18446744073709551615M18446744073709551615D"},
        {"P18446744073709551617M", "P1M"},
        {"PT18446744073709551615H18446744073709551615M18446744073709551615.999999S",
         "PT18446744073709551615H18446744073709551615M18446744073709551615.999999S"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(Span(row.text).ToString(), row.printed);
    }
}

TEST(DurationParsing, AnEmptySpanPrintsWhatTheParserRefuses)
{
    EXPECT_EQ(CDateTimeSpan().ToString(), "P");
    CDateTimeSpan negative;
    negative.Negate();
    EXPECT_EQ(negative.ToString(), "-P");
    EXPECT_THROW(Span("P"), CQnInvalidValueException);
}

TEST(DurationParsing, RefusesWhatIsOutOfOrderOrUnknown)
{
    const std::string texts[] = {
        "P",     "-",      "-P",     "PT",       "P1YT",    "P-1D",  "+P1D",   " P1D",
        "P1D ",  "1D",     "--P1D",  "P1",       "P1Y2",    "P1H",   "P1S",    "P1.5S",
        "PT1D",  "PT1M1H", "PT1S1S", "PT1S1.5S", "PT1S1M",  "P1D1M", "P1D1D",  "P1DT1HT1M",
        "PT1.5", "PT1.5M", "PT1.x",  "PT1.5SS",  "PT1..5S", "p1d",   "PT1,5S", "P1Y\xC3"};
    for (const std::string& text : texts) {
        SCOPED_TRACE(text);
        EXPECT_EQ(FailureOf<CQnInvalidValueException>([&] { Span(text); }),
                  "Invalid XSD Duration [" + text +
                      "] expected [-]P[nY][nM][nD][T[nH][nM][nS.ff]]");
    }
    EXPECT_EQ(FailureOf<CQnInvalidValueException>([] { Span("PT0.1234567890S"); }),
              "Invalid XSD Duration [PT0.1234567890S] Fraction part too long");
    EXPECT_EQ(FailureOf<CQnInvalidValueException>([] { Span(""); }),
              "Invalid XSD Duration (Empty String)");
    EXPECT_EQ(
        FailureOf<CQnInvalidValueException>([] { CDateTimeSpan().ParseXSDDuration(nullptr); }),
        "Invalid XSD Duration (Null String)");
}

TEST(DurationParsing, KeepsWhatWasReadWhenItFails)
{
    struct Row
    {
        const char* text;
        const char* printed;
    };
    const Row rows[] = {{"-P1Y2M3", "-P1Y2M"}, {"PT1.25", "PT1.25S"}, {"junk", "P"}, {"-", "-P"}};
    for (const Row& row : rows) {
        CDateTimeSpan span(1, 2, 3);
        EXPECT_THROW(span.ParseXSDDuration(row.text), CQnInvalidValueException);
        EXPECT_EQ(span.ToString(), row.printed);
    }
}

TEST(DurationParsing, TakesALongTextInItsStride)
{
    std::string text = "P";
    text.append(1000000, '7').append("D");
    // What a million sevens leave of 64 bits.
    unsigned long days = 0;
    for (int i = 0; i < 1000000; ++i)
        days = days * 10 + 7;
    EXPECT_EQ(Span(text).GetDays(), days);

    const std::string valid = "-P1Y2M3DT4H5M6.789123456S";
    int answers = 0;
    for (std::size_t length = 0; length <= valid.size(); ++length) {
        // A buffer of the exact size, so that a sanitizer sees a read beyond the end.
        const std::string cut(valid, 0, length);
        const std::vector<char> exact(cut.c_str(), cut.c_str() + length + 1);
        CDateTimeSpan span;
        try {
            span.ParseXSDDuration(exact.data());
            ++answers;
        }
        catch (const CQnInvalidValueException&) {
        }
    }
    // Behind each designator but "T", behind the point, and the whole.
    EXPECT_EQ(answers, 7);
}

TEST(DurationFields, AreMagnitudesUnderOneSign)
{
    CDateTimeSpan span(1, 2, 3, 4, 5, 6, 7, 8, 9);
    EXPECT_EQ(span.ToString(), "P1Y2M3DT4H5M6.007008009S");
    EXPECT_FALSE(span.IsNegative());
    EXPECT_TRUE(span.GetAsNegative().IsNegative());
    EXPECT_TRUE(span.GetAsNegative().GetAsNegative().IsNegative());
    span.Negate();
    const CDateTimeSpan copy(span);
    EXPECT_EQ(copy.ToString(), "-P1Y2M3DT4H5M6.007008009S");
    span.SetDateTimeSpan(36, 61, 62);
    EXPECT_EQ(span.ToString(), "PT36H61M62S");
    span.Negate();
    span.SetDateTimeSpan(1, 13, 32, 25, 61, 62);
    EXPECT_EQ(span.ToString(), "P1Y13M32DT25H61M62S");

    span.SetYears(11);
    span.SetMonths(12);
    span.SetDays(13);
    span.SetHours(14);
    span.SetMinutes(15);
    span.SetSeconds(16);
    span.SetMilliSeconds(5000);
    span.SetMicroSeconds(0);
    span.SetNanoSeconds(1);
    EXPECT_EQ(span.ToString(), "P11Y12M13DT14H15M16.5000000001S");
    EXPECT_EQ(span.GetMilliSeconds(), 5000);
    span.Negate();
    span.Clear();
    EXPECT_EQ(span.ToString(), "P");
}

TEST(DurationOrder, HoldsOnlyWhereItHoldsFromEveryReferenceDate)
{
    struct Row
    {
        const char* a;
        const char* b;
        int order;
    };
    const Row rows[] = {
        {"P1Y", "P12M", 0},
        {"P1D", "PT24H", 0},
        {"PT1H", "PT60M", 0},
        {"PT1H", "PT3600S", 0},
        {"PT1H", "PT2H", 1},
        {"P1Y", "P364D", 2},
        {"P1Y", "P365D", 3},
        {"P1Y", "P366D", 3},
        {"P1Y", "P367D", 1},
        {"P1M", "P27D", 2},
        {"P1M", "P28D", 3},
        {"P1M", "P30D", 3},
        {"P1M", "P31D", 3},
        {"P1M", "P32D", 1},
        {"P5M", "P149D", 2},
        {"P5M", "P150D", 3},
        {"P5M", "P153D", 3},
        {"P5M", "P154D", 1},
        {"PT0.5S", "PT1S", 1},
        {"-P1D", "P1D", 1},
        {"-P1M", "-P32D", 2},
        {"-P1M", "-P30D", 3},
        {"PY", "-PY", 0},
        {"P1DT1S", "PT24H", 2},
        // The years of the sums lie on either side of 1, or wrap there.
        {"-P1000Y", "-P2000Y", 3},
        {"P40000Y", "P1Y", 3},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.a + std::string(" : ") + row.b);
        const CDateTimeSpan a = Span(row.a);
        const CDateTimeSpan b = Span(row.b);
        EXPECT_EQ(a.CompareTo(b), row.order);
        const int mirrored = row.order == 1 ? 2 : (row.order == 2 ? 1 : row.order);
        EXPECT_EQ(b.CompareTo(a), mirrored);
        EXPECT_EQ(a == b, row.order == 0);
        EXPECT_EQ(a != b, row.order != 0);
        EXPECT_EQ(a < b, row.order == 1);
        EXPECT_EQ(a > b, row.order == 2);
    }
}

TEST(DurationOrder, TakesBoundedTimeForAnyMagnitude)
{
    const char* const texts[] = {
        "P2147483000D", "-P2147483647D",          "P1000000007M",
        "P16777219M",   "P18446744073709551615D", "PT18446744073709551615H18446744073709551615M"};
    const auto start = std::chrono::steady_clock::now();
    for (const char* const text : texts) {
        SCOPED_TRACE(text);
        EXPECT_EQ(Span(text).CompareTo(Span(text)), 0);
    }
    // Month by month this takes more than a second; the limit leaves room for a slow machine.
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(200));
}
