#include "QnXmlLib16/values/Decimal.h"

#include "QnXmlLib16/support/Exceptions.h"

#include <gtest/gtest.h>

#include <chrono>
#include <climits>
#include <clocale>
#include <cmath>
#include <string>
#include <typeinfo>
#include <vector>

using namespace QnXmlLib16;

namespace {

// The message of the failure of exactly that class that a step throws.
template <class TException, class TStep>
std::string FailureOf(TStep step)
{
    try {
        step();
    }
    catch (const CQnException& e) {
        EXPECT_EQ(typeid(e), typeid(TException));
        EXPECT_EQ(e.GetPath(), "");
        return e.GetMessage();
    }
    return "no failure";
}

template <class TStep>
double MillisecondsOf(TStep step)
{
    const auto start = std::chrono::steady_clock::now();
    step();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
        .count();
}

std::string Rounded(const char* pszText, int nDivider)
{
    CDecimal value(pszText);
    value.ChangeFractionalDivider(nDivider);
    return value.ToString();
}

class CNumericLocale
{
public:
    explicit CNumericLocale(const char* pszName) : m_bSet(setlocale(LC_NUMERIC, pszName) != nullptr)
    {}
    ~CNumericLocale() { setlocale(LC_NUMERIC, "C"); }
    bool IsSet() const { return m_bSet; }

private:
    bool m_bSet;
};

} // namespace

TEST(DecimalText, Parses)
{
    struct Row
    {
        const char* text;
        const char* printed;
    };
    const Row rows[] = {
        {nullptr, "0"},
        {"", "0"},
        {" \t\r\n", "0"},
        {"-", "0"},
        {".", "0"},
        {"1.50", "1.5"},
        {"1.0", "1"},
        {".5", "0.5"},
        {"-.5", "-0.5"},
        {"1.", "1"},
        {"0.05", "0.05"},
        {"-0.0", "0"},
        {"00012.340", "12.34"},
        {"1e3", "1000"},
        {"1E-2", "0.01"},
        {"1e", "1"},
        {"1e+", "1"},
        {"1e ", "1"},
        {"1e-+2", "100"},
        {"1e+ -2", "0.01"},
        {"1e0", "1"},
        {"1.25e1", "12.5"},
        {"-1.25e-1", "-0.125"},
        {"e5", "0"},
        {"1e00000000000000000000000000000000000002", "100"},
        {"1 2.3 4", "12.34"},
        {"1 000", "1000"},
        {"1-2", "-12"},
        {"-1+2", "12"},
        {"1\t2\n", "12"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text ? row.text : "null");
        EXPECT_EQ(CDecimal(row.text).ToString(), row.printed);
    }
}

TEST(DecimalText, NamesThePlaceOfAnInvalidCharacter)
{
    struct Row
    {
        const char* text;
        int position;
    };
    const Row rows[] = {
        {"12a", 2},   {"a", 0},     {"1,5", 1},  {"1.5.2", 3}, {"1.-5", 2},
        {"1.5x", 3},  {"1ex", 2},   {"1e5 ", 3}, {"1e5-", 3},  {"1e5e", 3},
        {"1e5.0", 3}, {"1e- .", 4}, {"\xA0", 0}, {"1\v", 1},   {"INF", 0},
    };
    CDecimal value("7.5");
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(FailureOf<CQnInvalidValueException>([&] { value.Parse(row.text); }),
                  "The string representing a Decimal, contained an invalid char at position " +
                      std::to_string(row.position) + " [" + row.text + "].");
    }
    EXPECT_EQ(value.ToString(), "7.5");
}

TEST(DecimalText, RefusesAnExponentBeyond100000)
{
    EXPECT_EQ(CDecimal("1e100000").ToString(), "1" + std::string(100000, '0'));
    EXPECT_EQ(CDecimal("1e-100000").ToString(), "0");
    CDecimal value(3);
    for (const char* pszText : {"1e100001", "1e-100001", "0e99999999999999999999"}) {
        EXPECT_EQ(FailureOf<CQnInvalidValueException>([&] { value.Parse(pszText); }),
                  "The exponent of the Decimal is to large [" + std::string(pszText) + "].");
    }
    EXPECT_EQ(value.ToString(), "3");
}

TEST(DecimalText, ATextWithAFractionIsCutAt1023Characters)
{
    const std::string strDigits(1100, '7');
    EXPECT_EQ(CDecimal(strDigits.c_str()).ToString(), strDigits);
    EXPECT_EQ(CDecimal((strDigits + ".5").c_str()).ToString(), strDigits.substr(0, 1023));
    EXPECT_EQ(CDecimal(("-" + strDigits + ".5").c_str()).ToString(),
              "-" + strDigits.substr(0, 1022));
    EXPECT_EQ(CDecimal((strDigits.substr(0, 1020) + ".123").c_str()).ToString(),
              strDigits.substr(0, 1020) + ".12");
    // The parts themselves are whole.
    EXPECT_EQ(CDecimal((strDigits + ".5").c_str()).GetIntegerPart().ToString(), strDigits);
    EXPECT_EQ(CDecimal(0, 5, 2000).ToString(), "0." + std::string(1021, '0'));
}

TEST(DecimalText, FixedDigitsAddAHalfAndCut)
{
    struct Row
    {
        const char* text;
        int digits;
        const char* printed;
    };
    const Row rows[] = {
        {"1.25", 1, "1.7"},      {"1.25", 2, "1.75"},
        {"1.25", 5, "1.75"},     {"1.25", 0, "1."},
        {"1.25", -3, "1."},      {"1.5", 2, "2.0"},
        {"-1.25", 1, "-1.7"},    {"0", 1, "0.5"},
        {"-0", 1, "-0.5"},       {"-0.25", 2, "-0.75"},
        {"0.505", 2, "1.00"},    {"9.75", 1, "10.2"},
        {"1.25", 1021, "1.75"},  {"-1.25", INT_MAX, "-1.75"},
        {"1.25", INT_MIN, "1."},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.text) + " to " + std::to_string(row.digits));
        EXPECT_EQ(CDecimal(row.text).ToString(row.digits), row.printed);
    }
    const std::string strDigits(1100, '7');
    EXPECT_EQ(CDecimal(strDigits.c_str()).ToString(1), strDigits + ".5");
}

TEST(DecimalBuilding, FromNumbers)
{
    EXPECT_EQ(CDecimal().ToString(), "0");
    EXPECT_EQ(CDecimal().GetFractionalDivider(), 1);
    EXPECT_EQ(CDecimal(-7).ToString(), "-7");
    EXPECT_EQ(CDecimal(4294967297L).ToString(), "1"); // 32 bits of a long
    EXPECT_EQ(CDecimal(4294967297LL).ToString(), "4294967297");
    EXPECT_EQ(CDecimal(CBigInteger("123456789012345678901")).ToString(), "123456789012345678901");
    EXPECT_EQ(CDecimal(CBigInteger(1), CBigInteger(5), 3).ToString(), "1.005");
    EXPECT_EQ(CDecimal::m_maxDivider, 30);

    struct Row
    {
        double value;
        const char* printed;
    };
    const Row rows[] = {
        {0.1, "0.1"},           {-2.5, "-2.5"}, {1e21, "1000000000000000000000"},
        {1e-14, "0"},           {-1e-14, "0"},  {1.00000000000006, "1.0000000000001"},
        {123.4375, "123.4375"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.printed);
        EXPECT_EQ(CDecimal(row.value).ToString(), row.printed);
    }
    EXPECT_EQ(CDecimal(1.7e308).ToString().size(), 309u);
}

TEST(DecimalBuilding, ADoubleThatIsNotFiniteFailsAsItsText)
{
    struct Row
    {
        double value;
        const char* words;
    };
    const Row rows[] = {
        {HUGE_VAL, "0 [inf\n]."},
        {-HUGE_VAL, "1 [-inf\n]."},
        {std::nan(""), "0 [nan\n]."},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(FailureOf<CQnInvalidValueException>([&] { CDecimal value(row.value); }),
                  std::string("The string representing a Decimal, contained an invalid char at "
                              "position ") +
                      row.words);
    }
}

TEST(DecimalBuilding, ThePointDoesNotDependOnTheLocale)
{
    const CNumericLocale locale("de_DE.UTF-8");
    if (!locale.IsSet()) {
        GTEST_SKIP() << "no locale with a decimal comma";
    }
    EXPECT_EQ(CDecimal(0.5).ToString(), "0.5");
    EXPECT_EQ(CDecimal("0.5").ToDouble(), 0.5);
}

TEST(DecimalRounding, AHalfGoesTowardsZero)
{
    struct Row
    {
        const char* text;
        int divider;
        const char* printed;
    };
    const Row rows[] = {
        {"0.25", 1, "0.2"},   {"0.35", 1, "0.3"},   {"0.36", 1, "0.4"}, {"-0.35", 1, "-0.3"},
        {"-0.36", 1, "-0.4"}, {"0.2501", 1, "0.3"}, {"0.049", 1, "0"},  {"0.051", 1, "0.1"},
        {"2.5", 0, "2"},      {"2.51", 0, "3"},     {"-2.51", 0, "-3"}, {"-0.6", 0, "-1"},
        {"0.5", 3, "0.500"},  {"1.25", -4, "1"},    {"9.96", 0, "10"},  {"0.0049", 2, "0"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(Rounded(row.text, row.divider), row.printed);
    }
}

TEST(DecimalRounding, ACarryIntoAFullFractionIsNotPassedOn)
{
    EXPECT_EQ(Rounded("0.96", 1), "0.10");
    EXPECT_EQ(Rounded("-3.96", 1), "-3.10");
    const std::string strNines(31, '9');
    CDecimal value(("0." + strNines).c_str());
    EXPECT_EQ(value.ToString(), "0.1" + std::string(30, '0'));
    EXPECT_TRUE(value < CDecimal(1));
    value.Rationalise();
    EXPECT_EQ(value.GetFractionalDivider(), 0);
    EXPECT_EQ(value.ToString(), "0.1");
    // Arithmetic counts a full fraction as the whole that it is.
    EXPECT_EQ((value + CDecimal(1)).ToString(), "2");
    EXPECT_EQ((value * CDecimal(3)).ToString(), "3");
    EXPECT_EQ((value / CDecimal(4)).ToString(), "0.25");
}

TEST(DecimalRounding, PartsOfOppositeSignsAreAlignedWithACarry)
{
    CDecimal positive(CBigInteger(2), CBigInteger(-26), 2);
    positive.ChangeFractionalDivider(1);
    EXPECT_EQ(positive.ToString(), "1.7");
    CDecimal negative(CBigInteger(-2), CBigInteger(26), 2);
    negative.ChangeFractionalDivider(1);
    EXPECT_EQ(negative.ToString(), "-1.7");
}

TEST(DecimalRounding, RationaliseLeavesOneDigit)
{
    struct Row
    {
        int fraction;
        int divider;
        const char* printed;
        int left;
    };
    const Row rows[] = {
        {500, 3, "1.5", 1}, {50, 3, "1.05", 2}, {0, 3, "1", 1}, {5, 1, "1.5", 1}, {0, 0, "1", 0},
    };
    for (const Row& row : rows) {
        CDecimal value(CBigInteger(1), CBigInteger(row.fraction), row.divider);
        value.Rationalise();
        EXPECT_EQ(value.ToString(), row.printed);
        EXPECT_EQ(value.GetFractionalDivider(), row.left);
    }
}

TEST(DecimalRounding, ThirtyFractionDigitsAreKept)
{
    const std::string strThirty = "0.123456789012345678901234567891";
    EXPECT_EQ(CDecimal((strThirty + "49").c_str()).ToString(), strThirty);
    EXPECT_EQ(CDecimal((strThirty + "50").c_str()).ToString(), strThirty);
    EXPECT_EQ(CDecimal((strThirty + "51").c_str()).ToString(), "0.123456789012345678901234567892");
    EXPECT_EQ((CDecimal(strThirty.c_str()) + CDecimal(strThirty.c_str())).ToString(),
              "0.246913578024691357802469135782");
    EXPECT_EQ(CDecimal("1e-30").ToString(), "0." + std::string(29, '0') + "1");
    EXPECT_EQ(CDecimal("5e-31").ToString(), "0");
}

TEST(DecimalArithmetic, OfSignsAndCarries)
{
    struct Row
    {
        const char* left;
        char op;
        const char* right;
        const char* printed;
    };
    const Row rows[] = {
        {"-0.5", '+', "0.5", "0"},
        {"0.5", '-', "1", "-0.5"},
        {"-1.5", '+', "2", "0.5"},
        {"0.75", '+', "0.75", "1.5"},
        {"-0.5", '+', "-0.5", "-1"},
        {"-3", '-', "-5", "2"},
        {"3", '+', "-5", "-2"},
        {"1", '-', "0.001", "0.999"},
        {"-1", '+', "0.25", "-0.75"},
        {"-0.5", '*', "1", "-0.5"},
        {"-0.5", '*', "-0.5", "0.25"},
        {"0.1", '*', "0.1", "0.01"},
        {"1.5", '*', "-2", "-3"},
        {"-0", '*', "5", "0"},
        {"12.5", '*', "0.08", "1"},
        {"2", '/', "3", "0.666666666666666666666666666667"},
        {"1", '/', "3", "0.333333333333333333333333333333"},
        {"-2", '/', "3", "-0.666666666666666666666666666667"},
        {"1", '/', "-8", "-0.125"},
        {"0.6", '/', "0.2", "3"},
        {"0", '/', "-3", "0"},
        {"-7.5", '/', "-2.5", "3"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.left) + row.op + row.right);
        CDecimal left(row.left);
        const CDecimal right(row.right);
        CDecimal inPlace(left);
        switch (row.op) {
        case '+':
            EXPECT_EQ((left + right).ToString(), row.printed);
            inPlace += right;
            break;
        case '-':
            EXPECT_EQ((left - right).ToString(), row.printed);
            inPlace -= right;
            break;
        case '*':
            EXPECT_EQ((left * right).ToString(), row.printed);
            inPlace *= right;
            break;
        default:
            EXPECT_EQ((left / right).ToString(), row.printed);
            inPlace /= right;
        }
        EXPECT_EQ(inPlace.ToString(), row.printed);
        EXPECT_EQ(left.ToString(), row.left[0] == '-' && row.left[1] == '0' && !row.left[2]
                                       ? "0"
                                       : std::string(row.left));
    }
    CDecimal one(1);
    EXPECT_EQ(FailureOf<CQnInvalidValueException>([&] { one /= CDecimal("-0.0"); }),
              "ERROR: Overflow in operator/.");
    EXPECT_EQ(one.ToString(), "1");
}

TEST(DecimalArithmetic, CountsInBothForms)
{
    CDecimal value("-0.5");
    EXPECT_EQ((value++).ToString(), "-0.5");
    EXPECT_EQ(value.ToString(), "0.5");
    EXPECT_EQ((--value).ToString(), "-0.5");
    EXPECT_EQ((value--).ToString(), "-0.5");
    EXPECT_EQ((++value).ToString(), "-0.5");
    EXPECT_EQ(value.GetNegative().ToString(), "0.5");
    EXPECT_EQ(value.ToString(), "-0.5");
    CDecimal other;
    other = value;
    other += CDecimal(1);
    EXPECT_EQ(value.ToString(), "-0.5");
    const CDecimal& same = value;
    value -= same;
    EXPECT_EQ(value.ToString(), "0");
}

TEST(DecimalArithmetic, NormalizeRaisesTheSmallerDivider)
{
    CDecimal a("1.5");
    CDecimal b("2.125");
    EXPECT_EQ(CDecimal::Normalize(a, b), 3);
    EXPECT_EQ(a.GetFractionalDivider(), 3);
    EXPECT_EQ(a.ToString(), "1.500");
    EXPECT_EQ(b.ToString(), "2.125");
}

TEST(DecimalArithmetic, AFractionOfManyWholesIsCarriedAtOnce)
{
    const CBigInteger wholes = CBigInteger::Pow10(1000);
    CDecimal value(CBigInteger(0), wholes, 1);
    EXPECT_EQ((value + CDecimal(1)).ToString(), "1" + std::string(998, '0') + "1");
    value.Negate();
    EXPECT_EQ((value + CDecimal(0)).ToString(), "-1" + std::string(999, '0'));
}

TEST(DecimalComparison, IsThatOfNumbers)
{
    // Ascending; the texts within one entry are equal.
    const std::vector<std::vector<const char*>> ladder = {
        {"-10", "-10.00", "-1e1"},
        {"-3.5"},
        {"-3", "-3.0"},
        {"-0.05"},
        {"-0.0005"},
        {"0", "-0", "-0.0", "+0.00", "0e5"},
        {"0.05"},
        {"0.5", "5e-1"},
        {"0.55"},
        {"3"},
        {"3.000001"},
        {"10"},
    };
    for (std::size_t i = 0; i < ladder.size(); ++i) {
        for (std::size_t j = 0; j < ladder.size(); ++j) {
            for (const char* pszLeft : ladder[i]) {
                for (const char* pszRight : ladder[j]) {
                    SCOPED_TRACE(std::string(pszLeft) + " and " + pszRight);
                    const CDecimal left(pszLeft);
                    const CDecimal right(pszRight);
                    EXPECT_EQ(left == right, i == j);
                    EXPECT_EQ(left != right, i != j);
                    EXPECT_EQ(left < right, i < j);
                    EXPECT_EQ(left > right, i > j);
                    EXPECT_EQ(left <= right, i <= j);
                    EXPECT_EQ(left >= right, i >= j);
                }
            }
        }
    }
}

TEST(DecimalConversions, LongLongCutsWhereLongRounds)
{
    struct Row
    {
        const char* text;
        long rounded;
        long long cut;
    };
    const Row rows[] = {
        {"1.96", 2, 1},
        {"1.7", 2, 1},
        {"1.5", 1, 1},
        {"-1.96", -2, -1},
        {"-0.6", -1, 0},
        {"0", 0, 0},
        {"-0", 0, 0},
        {"2147483647.4", INT_MAX, INT_MAX},
        {"-2147483648.4", INT_MIN, INT_MIN},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(CDecimal(row.text).ToLong(), row.rounded);
        EXPECT_EQ(static_cast<int>(CDecimal(row.text).ToBigInteger()), row.rounded);
        EXPECT_EQ(CDecimal(row.text).ToLongLong(), row.cut);
    }
    EXPECT_EQ(CDecimal("9223372036854775807.9").ToLongLong(), LLONG_MAX);
    EXPECT_EQ(CDecimal("-9223372036854775808.9").ToLongLong(), LLONG_MIN);
}

TEST(DecimalConversions, FailOutsideTheirBounds)
{
    for (const char* pszText : {"2147483647.6", "2147483648", "-2147483648.6", "1e400"}) {
        SCOPED_TRACE(pszText);
        EXPECT_EQ(FailureOf<CQnOverFlowException>([&] { CDecimal(pszText).ToLong(); }),
                  "The Decimal value if to large to fit into a LONG");
    }
    for (const char* pszText : {"9223372036854775808", "-9223372036854775809", "1e400"}) {
        SCOPED_TRACE(pszText);
        EXPECT_EQ(FailureOf<CQnOverFlowException>([&] { CDecimal(pszText).ToLongLong(); }),
                  "The Decimal value if to large to fit into a LONGLONG");
    }
    for (const char* pszText : {"1.70000001e308", "-1.71e308", "1e309"}) {
        SCOPED_TRACE(pszText);
        EXPECT_EQ(FailureOf<CQnOverFlowException>([&] { CDecimal(pszText).ToDouble(); }),
                  "The Decimal value if to large to fit into a Double");
    }
}

TEST(DecimalConversions, ToDouble)
{
    struct Row
    {
        const char* text;
        double value;
    };
    const Row rows[] = {
        {"0", 0},
        {"-0.5", -0.5},
        {"0.1", 0.1},
        {"1.7e308", 1.7e308},
        {"-1.7e308", -1.7e308},
        {"123456789.125", 123456789.125},
        {"1e-30", 1e-30},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(CDecimal(row.text).ToDouble(), row.value);
    }
    EXPECT_EQ(CDecimal(CBigInteger(0), CBigInteger(1), 400).ToDouble(), 0);
}

// Bounds with room for a sanitizer; digit by digit these took seconds to minutes.
TEST(DecimalCost, IsBoundedForEveryText)
{
    const std::string nines250(250, '9');
    const std::string texts[] = {
        std::string(255, '1') + "." + std::string(255, '7'),
        "0." + std::string(509, '0') + "1",
        nines250 + "." + nines250 + "e-99999",
        nines250 + "." + nines250 + "e100000",
        nines250 + "." + nines250 + "e-100000",
        "1e100000",
        "." + std::string(1000000, '3'),
        "." + std::string(1000000, '0') + "e1",
        std::string(1000000, '9') + "e-100000",
        std::string(1000000, ' '),
        "1." + std::string(1000000, ' ') + "e" + std::string(100, '0') + "1",
    };
    for (const std::string& strText : texts) {
        SCOPED_TRACE(strText.substr(0, 20));
        EXPECT_LT(MillisecondsOf([&] { CDecimal(strText.c_str()).ToString(); }), 1000);
    }
    CDecimal left(texts[0].c_str());
    const CDecimal right(texts[1].c_str());
    EXPECT_LT(MillisecondsOf([&] {
                  left += right;
                  left *= left;
                  left /= CDecimal("3.7");
              }),
              1000);
}

TEST(DecimalCost, EveryTruncationAnswersOrFails)
{
    const std::string strText = " -12 3.45 6E+ -0078x";
    for (std::size_t n = 0; n <= strText.size(); ++n) {
        const std::string strPart = strText.substr(0, n);
        SCOPED_TRACE(strPart);
        CDecimal value;
        if (n == strText.size()) {
            EXPECT_THROW(value.Parse(strPart.c_str()), CQnInvalidValueException);
        }
        else {
            EXPECT_NO_THROW(value.Parse(strPart.c_str()));
        }
    }
}
