#include "QnXmlLib16/values/Conversions.h"

#include "QnXmlLib16/values/DateTime.h"
#include "QnXmlLib16/values/Decimal.h"
#include "tests/support/Scoped.h"
#include "tests/values/TypedText.h"
#include "tests/values/ValueTools.h"

#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <random>

using namespace QnXmlLib16;

namespace {

constexpr auto kNone = CWhitespaceUtils::WhitespaceRule_None;
constexpr auto kCollapse = CWhitespaceUtils::WhitespaceRule_Collapse;

// Of "type text".
std::string ReprintTyped(const std::string& typed)
{
    return Reprint(typed.substr(0, typed.find(' ')), typed.substr(typed.find(' ') + 1));
}

// Both have the text with white space around it.
std::string ReprintCollapsed(const std::string& typed)
{
    const std::size_t blank = typed.find(' ');
    return Reprint(typed.substr(0, blank), typed.substr(blank) + "\t\n", kCollapse);
}

std::string NotConvertible(const std::string& text, const std::string& code)
{
    return "The value [" + text + "] can not be converted to a " + code;
}

} // namespace

TEST(Conversions, IntegersReadAsTheirCarrier)
{
    ExpectEach(ReprintTyped,
               {"i4 3000000000 -> 3000000000", "i8 -999999999999999999 -> -999999999999999999",
                "i8 000000000000000000000012 -> 12", "i8 +12 -> 12",
                "ui4 -1 -> 18446744073709551615", "ui8 -18446744073709551615 -> 1",
                "i4 \v\f 12 -> 12", "i4 -0 -> 0"});
    EXPECT_EQ(Reprint("i4", std::string("12\0x", 4)), "12");
    EXPECT_EQ(Reprint("i4", std::string(1, '\0')), "0");
}

TEST(Conversions, IntegersFailInTheWordsOfTheirCode)
{
    const std::string longText = "i8 " + std::string(1 << 20, '9'); // is read in linear time
    for (const std::string typed :
         {"i4 9223372036854775808", "i8 -9223372036854775809", "i8 99999999999999999999x",
          "ui4 18446744073709551616", "i1 128", "i1 -129", "i2 32768", "ui1 256", "ui1 -1",
          "ui2 65536", longText.c_str()}) {
        EXPECT_EQ(ResultOf([&] { return ReprintTyped(typed); }),
                  "The value [" + typed.substr(typed.find(' ') + 1) + "] is to large to fit in a " +
                      typed.substr(0, typed.find(' ')));
    }
    ExpectEach(ReprintTyped,
               {"i4  -> " + NotConvertible("", "i4"), "i4 - -> " + NotConvertible("-", "i4"),
                "ui8 0x10 -> " + NotConvertible("0x10", "ui8"),
                "ui2 12   -> " + NotConvertible("12  ", "ui4")});
    // The wider function tells the processed text, the range check the one that was given.
    ExpectEach(ReprintCollapsed,
               {"i1 a  b -> " + NotConvertible("a b", "i4"),
                "i1 128 -> The value [ 128\t\n] is to large to fit in a i1",
                "i8 " + std::string(1 << 20, ' ') + " -> " + NotConvertible("", "i8")});
    for (const char* type : {"i4", "r8"})
        EXPECT_EQ(ResultOf<CQnException>(
                      [=] { return Reprint(type, "1", CWhitespaceUtils::WhitespaceRule(4)); }),
                  "Unknown WhitespaceRule");
}

TEST(Conversions, FloatingTextIsWhatStrtodReads)
{
    const auto both = [](const std::string& text) {
        return Reprint("r4", text) + " " + Reprint("r8", text);
    };
    ExpectEach(both, {"1. -> 1 1", ".5 -> 0.5 0.5", "-0 -> -0 -0", "0x1p4 -> 16 16",
                      "1e39 -> INF 9.999999999999999e+38", "-1e400 -> -INF -INF", "1e-400 -> 0 0",
                      "4.9406564584124654e-324 -> 0 4.940656458412465e-324", "+INF -> INF INF",
                      "-infinity -> -INF -INF", "nan(1) -> NaN NaN", "  7 -> 7 7"});
    EXPECT_EQ(both(std::string(1 << 20, '9')), "INF INF");
    for (const std::string type : {"r4", "r8"}) {
        for (const std::string text : {"1e", "", "7 "})
            EXPECT_EQ(ResultOf([&] { return Reprint(type, text); }), NotConvertible(text, type));
    }
    for (const char* text : {"1.#QNAN", "-NAN"}) {
        const float r4 = CConversions::r4FromString(text, kNone);
        const double r8 = CConversions::r8FromString(text, kNone);
        EXPECT_TRUE(std::isnan(r4) && !std::signbit(r4)) << text;
        EXPECT_TRUE(std::isnan(r8) && !std::signbit(r8)) << text;
    }
    // 2^24 + 1 and a little: rounded to double first, then to float, with the half to even.
    EXPECT_EQ(CConversions::r4FromString("16777217.0000000001", kNone), 16777216.0F);
}

TEST(Conversions, FloatingPrintsAsPrintfDoes)
{
    std::mt19937_64 random(5);
    char expected[64];
    for (int i = 0; i < 300000; ++i) {
        const unsigned long long bits = random();
        double r8 = 0;
        std::memcpy(&r8, &bits, sizeof(r8));
        if (i % 3 == 1)
            r8 = static_cast<double>(static_cast<long long>(bits) >> (bits & 63)) / 1000;
        if (i % 3 == 2)
            r8 = std::ldexp(static_cast<double>(bits >> 40), static_cast<int>(bits & 63) - 40);
        if (!std::isfinite(r8))
            continue;
        std::snprintf(expected, sizeof(expected), "%.16g", r8);
        ASSERT_EQ(CConversions::r8ToString(r8), expected);
        ASSERT_EQ(CConversions::r8FromString(expected, kNone), std::strtod(expected, nullptr));
        const float r4 = static_cast<float>(r8);
        if (!std::isfinite(r4))
            continue;
        std::snprintf(expected, sizeof(expected), "%.7g", static_cast<double>(r4));
        ASSERT_EQ(CConversions::r4ToString(r4), expected);
    }

    // A format of the caller is cut at the buffer.
    EXPECT_EQ(CConversions::r8ToString(1e21, "<%g>"), "<1e+21>");
    EXPECT_EQ(CConversions::r8ToString(std::nan(""), "%.2f"), "NaN");
    EXPECT_EQ(CConversions::r4ToString(1, "%.40f"), "1." + std::string(29, '0'));
    EXPECT_EQ(CConversions::r8ToString(1, "%.60f"), "1." + std::string(45, '0'));
    EXPECT_EQ(CConversions::decimalToString(CDecimal("1.25"), "x"), "1.");
}

TEST(Conversions, NumbersBearAPointUnderAnyLocale)
{
    const Scoped::Locale locale(LC_NUMERIC, "de_DE.utf8");
    if (!locale.IsSet())
        GTEST_SKIP() << "no locale with a decimal comma";
    EXPECT_EQ(Reprint("r8", "+0.5"), "0.5");
    EXPECT_EQ(CConversions::r4ToString(0.5F, "%.2f"), "0.50");
    EXPECT_EQ(CDecimal(0.5).ToString(), "0.5");
    EXPECT_EQ(CDecimal("0.5").ToDouble(), 0.5);
    ExpectEach(ReprintTyped, {"r8 0,5 -> " + NotConvertible("0,5", "r8")});
    EXPECT_STREQ(std::localeconv()->decimal_point, ","); // the application's choice stands
}

TEST(Conversions, BooleansAreReadInAnyCase)
{
    ExpectEach(ReprintTyped,
               {"boolean TRUE -> true", "boolean 0 -> false", "boolean False -> false"});
    for (const std::string text : {"", "01", " true"})
        EXPECT_EQ(ResultOf([&] { return Reprint("boolean", text); }),
                  "A Boolean Value read from an XML document was invalid [" + text +
                      "]. Valid values are 'true', 'false', '1', or '0'");
    // A char is one byte, and a string keeps any.
    EXPECT_EQ(ReprintCollapsed("char a"), "a");
    for (const std::string text : {"", "\xC3\xA9"})
        EXPECT_EQ(ResultOf([&] { return Reprint("char", text); }),
                  "The value [" + text +
                      "] can not be a char as it is either empty of greater than 1 char long");
    EXPECT_EQ(Reprint("string", std::string("a\0b", 3)), std::string("a\0b", 3));
}

TEST(Conversions, PartsOfADateAreNumbers)
{
    ExpectEach(ReprintCollapsed, {"year 0033Z -> 33", "year -0001 -> 65535", "day ---09 -> ---09",
                                  "month 2001-05-09 -> --05"}); // any date with the field will do
    EXPECT_EQ(CConversions::monthToString(255), "--255");
    EXPECT_EQ(ResultOf<CQnInvalidStateException>([] { return Reprint("day", "2001"); }),
              "Failed to GetDay. Invalid Date Type: gYear.");

    // The kind of a date decides its form.
    const CDateTime time = CConversions::timeFromString("12:00:00Z", kNone);
    for (auto print :
         {CConversions::yearMonthToString, CConversions::monthDayToString,
          CConversions::dateToString, CConversions::datetimeToString, CConversions::timeToString})
        EXPECT_EQ(print(time), "12:00:00Z");
}
