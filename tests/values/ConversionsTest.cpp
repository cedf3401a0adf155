#include "QnXmlLib16/values/Conversions.h"

#include "QnXmlLib16/values/BigInteger.h"
#include "QnXmlLib16/values/BinaryData.h"
#include "QnXmlLib16/values/DateTime.h"
#include "QnXmlLib16/values/DateTimeSpan.h"
#include "QnXmlLib16/values/Decimal.h"
#include "tests/values/DateFailure.h"

#include <gtest/gtest.h>

#include <climits>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <random>

using namespace QnXmlLib16;

namespace {

constexpr auto kNone = CWhitespaceUtils::WhitespaceRule_None;
constexpr auto kCollapse = CWhitespaceUtils::WhitespaceRule_Collapse;
constexpr auto kUnknown = static_cast<CWhitespaceUtils::WhitespaceRule>(4);

using Rule = CWhitespaceUtils::WhitespaceRule;

// What `parse` makes of a text: its own printed form, or the failure's words.
template <class TParse, class TPrint>
std::string RoundTrip(TParse parse, TPrint print, const std::string& text, Rule rule)
{
    std::string result;
    const std::string failure =
        FailureOf<CQnInvalidValueException>([&] { result = print(parse(text, rule)); });
    return failure == "no failure" ? result : failure;
}

using Reader = std::string (*)(const std::string&, Rule);

#define READER(code)                                                                               \
    [](const std::string& given, Rule rule_) {                                                     \
        return RoundTrip(                                                                          \
            CConversions::code##FromString,                                                        \
            [](const auto& value) { return CConversions::code##ToString(value); }, given, rule_);  \
    }

TEST(Conversions, IntegersReadAsTheirCarrier)
{
    const struct
    {
        Reader read;
        const char* text;
        const char* result;
    } rows[] = {
        {READER(i1), "-128", "-128"},
        {READER(i1), "127", "127"},
        {READER(i2), "-32768", "-32768"},
        {READER(i2), "32767", "32767"},
        {READER(ui1), "255", "255"},
        {READER(ui2), "65535", "65535"},
        {READER(i4), "3000000000", "3000000000"},
        {READER(i4), "9223372036854775807", "9223372036854775807"},
        {READER(i4), "-9223372036854775808", "-9223372036854775808"},
        {READER(i8), "-999999999999999999", "-999999999999999999"},
        {READER(i8), "000000000000000000000012", "12"},
        {READER(i8), "+12", "12"},
        {READER(ui4), "18446744073709551615", "18446744073709551615"},
        {READER(ui4), "-1", "18446744073709551615"},
        {READER(ui8), "-18446744073709551615", "1"},
        {READER(ui8), "9999999999999999999", "9999999999999999999"},
        {READER(i4), "  12", "12"}, // skipped by the C function
        {READER(i4), "\v\f12", "12"},
        {READER(i4), "-0", "0"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(row.read(row.text, kNone), row.result);
    }
    EXPECT_EQ(CConversions::i4FromString(" 12 \n", kCollapse), 12);
    EXPECT_EQ(CConversions::i4FromString(std::string("12\0x", 4), kNone), 12);
    EXPECT_EQ(CConversions::i4FromString(std::string(1, '\0'), kNone), 0);
}

TEST(Conversions, IntegersFailInTheWordsOfTheirCode)
{
    const struct
    {
        Reader read;
        const char* text;
        const char* words;
    } rows[] = {
        {READER(i4), "", "The value [] can not be converted to a i4"},
        {READER(i4), "12  ", "The value [12  ] can not be converted to a i4"},
        {READER(i4), "1.5", "The value [1.5] can not be converted to a i4"},
        {READER(i4), "-", "The value [-] can not be converted to a i4"},
        {READER(i4), "--1", "The value [--1] can not be converted to a i4"},
        {READER(i4), "9223372036854775808",
         "The value [9223372036854775808] is to large to fit in a i4"},
        {READER(i8), "-9223372036854775809",
         "The value [-9223372036854775809] is to large to fit in a i8"},
        {READER(i8), "99999999999999999999x",
         "The value [99999999999999999999x] is to large to fit in a i8"},
        {READER(ui4), "18446744073709551616",
         "The value [18446744073709551616] is to large to fit in a ui4"},
        {READER(ui8), "0x10", "The value [0x10] can not be converted to a ui8"},
        {READER(i1), "128", "The value [128] is to large to fit in a i1"},
        {READER(i1), "-129", "The value [-129] is to large to fit in a i1"},
        {READER(i1), "abc", "The value [abc] can not be converted to a i4"},
        {READER(i2), "32768", "The value [32768] is to large to fit in a i2"},
        {READER(ui1), "256", "The value [256] is to large to fit in a ui1"},
        {READER(ui1), "-1", "The value [-1] is to large to fit in a ui1"},
        {READER(ui2), "65536", "The value [65536] is to large to fit in a ui2"},
        {READER(ui2), "\xC3\xA9", "The value [\xC3\xA9] can not be converted to a ui4"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(row.read(row.text, kNone), row.words);
    }
    // The wider function tells the processed text, the range check the one that was given.
    const Reader readI1 = READER(i1);
    EXPECT_EQ(readI1(" a  b ", kCollapse), "The value [a b] can not be converted to a i4");
    EXPECT_EQ(readI1(" 128 ", kCollapse), "The value [ 128 ] is to large to fit in a i1");
    EXPECT_EQ(FailureOf<CQnException>([] { CConversions::i4FromString("1", kUnknown); }),
              "Unknown WhitespaceRule");
    EXPECT_EQ(FailureOf<CQnException>([] { CConversions::r8FromString("1", kUnknown); }),
              "Unknown WhitespaceRule");
}

TEST(Conversions, LongTextsAreRefusedInLinearTime)
{
    const std::string digits(1 << 20, '9');
    const std::string blanks(1 << 20, ' ');
    EXPECT_EQ(READER(i8)(digits, kNone), "The value [" + digits + "] is to large to fit in a i8");
    EXPECT_EQ(READER(i8)(blanks, kCollapse), "The value [] can not be converted to a i8");
    EXPECT_EQ(READER(r8)(blanks, kNone), "The value [" + blanks + "] can not be converted to a r8");
    EXPECT_EQ(CConversions::r8FromString(digits, kNone), HUGE_VAL);
}

TEST(Conversions, FloatingTextIsWhatStrtodReads)
{
    const struct
    {
        const char* text;
        const char* r4;
        const char* r8;
    } rows[] = {
        {"1", "1", "1"},
        {"1.", "1", "1"},
        {".5", "0.5", "0.5"},
        {"-0", "-0", "-0"},
        {"+1.5e3", "1500", "1500"},
        {"0x1p4", "16", "16"},
        {"0.1", "0.1", "0.1"},
        {"1e21", "1e+21", "1e+21"},
        {"1e39", "INF", "9.999999999999999e+38"},
        {"1e400", "INF", "INF"},
        {"-1e400", "-INF", "-INF"},
        {"1e-400", "0", "0"},
        {"1e-60", "0", "1e-60"},
        {"4.9406564584124654e-324", "0", "4.940656458412465e-324"},
        {"INF", "INF", "INF"},
        {"+INF", "INF", "INF"},
        {"inf", "INF", "INF"},
        {"-INF", "-INF", "-INF"},
        {"-infinity", "-INF", "-INF"},
        {"nan", "NaN", "NaN"},
        {"nan(1)", "NaN", "NaN"},
        {"  7", "7", "7"},
        {"1e", "The value [1e] can not be converted to a r4",
         "The value [1e] can not be converted to a r8"},
        {"", "The value [] can not be converted to a r4",
         "The value [] can not be converted to a r8"},
        {"0,5", "The value [0,5] can not be converted to a r4",
         "The value [0,5] can not be converted to a r8"},
        {".", "The value [.] can not be converted to a r4",
         "The value [.] can not be converted to a r8"},
        {"7 ", "The value [7 ] can not be converted to a r4",
         "The value [7 ] can not be converted to a r8"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(READER(r4)(row.text, kNone), row.r4);
        EXPECT_EQ(READER(r8)(row.text, kNone), row.r8);
    }
    for (const char* text : {"NaN", "1.#QNAN", "-NAN"}) {
        SCOPED_TRACE(text);
        const float r4 = CConversions::r4FromString(text, kNone);
        const double r8 = CConversions::r8FromString(text, kNone);
        EXPECT_TRUE(std::isnan(r4) && !std::signbit(r4));
        EXPECT_TRUE(std::isnan(r8) && !std::signbit(r8));
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
    EXPECT_EQ(CConversions::r4ToString(std::numeric_limits<float>::lowest()), "-3.402823e+38");
    EXPECT_EQ(CConversions::r8ToString(std::numeric_limits<double>::max()),
              "1.797693134862316e+308");
    EXPECT_EQ(CConversions::r8ToString(-std::numeric_limits<double>::infinity()), "-INF");
    EXPECT_EQ(CConversions::r8ToString(std::nan(""), "%.2f"), "NaN");
}

TEST(Conversions, AFormatOfTheCallerIsCutAtTheBuffer)
{
    EXPECT_EQ(CConversions::r4ToString(1.5F, "%.3f"), "1.500");
    EXPECT_EQ(CConversions::r8ToString(1e21, "<%g>"), "<1e+21>");
    EXPECT_EQ(CConversions::r4ToString(1, "%.40f"), "1." + std::string(29, '0'));
    EXPECT_EQ(CConversions::r8ToString(1, "%.60f"), "1." + std::string(45, '0'));
}

TEST(Conversions, NumbersBearAPointUnderAnyLocale)
{
    const std::string before = std::setlocale(LC_NUMERIC, nullptr);
    if (std::setlocale(LC_NUMERIC, "de_DE.utf8") == nullptr)
        GTEST_SKIP() << "no locale with a decimal comma";
    EXPECT_EQ(CConversions::r8ToString(0.5), "0.5");
    EXPECT_EQ(CConversions::r4ToString(0.5F, "%.2f"), "0.50");
    EXPECT_EQ(CConversions::r8FromString("0.5", kNone), 0.5);
    EXPECT_EQ(CConversions::r8FromString("+0.5", kNone), 0.5);
    EXPECT_EQ(READER(r8)("0,5", kNone), "The value [0,5] can not be converted to a r8");
    EXPECT_STREQ(std::localeconv()->decimal_point, ","); // the application's choice stands
    std::setlocale(LC_NUMERIC, before.c_str());
}

TEST(Conversions, BooleansAreReadInAnyCase)
{
    for (const char* text : {"true", "1", "TRUE", "True"})
        EXPECT_TRUE(CConversions::booleanFromString(text, kNone)) << text;
    for (const char* text : {"false", "0", "False"})
        EXPECT_FALSE(CConversions::booleanFromString(text, kNone)) << text;
    EXPECT_EQ(READER(boolean)(" true\t", kCollapse), "true");
    for (const auto& text : std::initializer_list<std::string>{"", "yes", " true", "01", " x "}) {
        EXPECT_EQ(READER(boolean)(text, text == " x " ? kCollapse : kNone),
                  "A Boolean Value read from an XML document was invalid [" + text +
                      "]. Valid values are 'true', 'false', '1', or '0'");
    }
}

TEST(Conversions, ACharIsOneByte)
{
    EXPECT_EQ(CConversions::charToString('\0'), "");
    EXPECT_EQ(READER(char)(" a ", kCollapse), "a");
    for (const auto& text : std::initializer_list<std::string>{"", "ab", "\xC3\xA9"}) {
        EXPECT_EQ(READER(char)(text, kNone),
                  "The value [" + text +
                      "] can not be a char as it is either empty of greater than 1 char long");
    }
}

TEST(Conversions, PartsOfADateAreNumbers)
{
    EXPECT_EQ(CConversions::yearToString(33), "33");
    EXPECT_EQ(CConversions::yearToString(65535), "65535");
    EXPECT_EQ(CConversions::monthToString(5), "--05");
    EXPECT_EQ(CConversions::monthToString(255), "--255");
    EXPECT_EQ(CConversions::dayToString(31), "---31");
    EXPECT_EQ(CConversions::yearFromString("0033Z", kNone), 33);
    EXPECT_EQ(CConversions::yearFromString("-0001", kNone), 65535);
    EXPECT_EQ(CConversions::monthFromString("--12--", kNone), 12);
    EXPECT_EQ(CConversions::dayFromString(" ---09 ", kCollapse), 9);
    // Any date with the field will do, since the shape of the text decides.
    EXPECT_EQ(CConversions::monthFromString("2001-05-09", kNone), 5);
    EXPECT_EQ(
        FailureOf<CQnInvalidStateException>([] { CConversions::dayFromString("2001", kNone); }),
        "Failed to GetDay. Invalid Date Type: gYear.");
}

TEST(Conversions, TheKindOfADateDecidesItsForm)
{
    const CDateTime time = CConversions::timeFromString(" 12:00:00Z ", kCollapse);
    for (auto print :
         {CConversions::yearMonthToString, CConversions::monthDayToString,
          CConversions::dateToString, CConversions::datetimeToString, CConversions::timeToString})
        EXPECT_EQ(print(time), "12:00:00Z");

    EXPECT_EQ(CConversions::dateFromString("2001", kNone).GetType(), dt_gYear);
    EXPECT_EQ(CConversions::yearMonthFromString("2001-05", kNone).GetType(), dt_gYearMonth);
    EXPECT_EQ(CConversions::monthDayFromString("--05-09", kNone).GetType(), dt_gMonthDay);
    EXPECT_EQ(CConversions::datetimeFromString("2001-05-09T12:00:00", kNone).GetType(),
              dt_dateTime);
    EXPECT_EQ(READER(datetime)("2001-05-09", kNone), "Invalid XSD DateTime [2001-05-09].");
    EXPECT_EQ(READER(date)("", kNone), "Invalid Date (Empty String)");
    EXPECT_EQ(READER(duration)("\nP1Y ", kCollapse), "P1Y");
}

TEST(Conversions, ExactNumbersBinaryAndText)
{
    EXPECT_EQ(READER(decimal)(" 1.50 ", kCollapse), "1.5");
    const CDecimal decimal("1.25");
    EXPECT_EQ(CConversions::decimalToString(decimal, ""), "1.25");
    EXPECT_EQ(CConversions::decimalToString(decimal, "2"), decimal.ToString(2));
    EXPECT_EQ(CConversions::decimalToString(decimal, "x"), decimal.ToString(0));
    EXPECT_EQ(READER(integer)("-00123456789012345678901234567890", kNone),
              "-123456789012345678901234567890");

    EXPECT_EQ(READER(hexBinary)(" 0aFF ", kCollapse), "0AFF");
    EXPECT_EQ(READER(base64Binary)("AQID", kNone), "AQID");
    EXPECT_EQ(FailureOf<CQnException>([] { CConversions::hexBinaryFromString("0", kNone); }),
              "Invalid length in hex string");
    EXPECT_EQ(CConversions::base64BinaryFromString("*", kNone).GetLength(), 0u);

    const std::string withNul("a\0b", 3);
    EXPECT_EQ(CConversions::stringFromString(withNul, kNone), withNul);
    EXPECT_EQ(CConversions::stringToString(withNul), withNul);
    EXPECT_EQ(CConversions::stringFromString(" a  b ", kCollapse), "a b");
}

} // namespace
