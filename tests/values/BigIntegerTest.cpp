#include "QnXmlLib16/values/BigInteger.h"

#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/values/Decimal.h"

#include <gtest/gtest.h>

#include <chrono>
#include <climits>
#include <cmath>
#include <limits>
#include <string>
#include <typeinfo>
#include <utility>

using namespace QnXmlLib16;

namespace {

// The message of the CQnInvalidValueException that a step throws.
template <class TStep>
std::string FailureOf(TStep step)
{
    try {
        step();
    }
    catch (const CQnException& e) {
        EXPECT_EQ(typeid(e), typeid(CQnInvalidValueException));
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

// Built before every object of ordinary priority, as if in a library that is loaded first.
struct CEarlyUser
{
    std::string strMax = CBigInteger::MAX_LONGLONG.ToString();
    std::string strSum = (CDecimal("1.25") + CDecimal("1e2")).ToString();
    long nLong = CDecimal("-2147483648").ToLong();
    double dDouble = CDecimal("1.5").ToDouble();
};
__attribute__((init_priority(102))) const CEarlyUser g_earlyUser;

// The sign that a zero carries shows in a comparison with the other zero only.
bool IsNegativeZero(const CBigInteger& value)
{
    return value == CBigInteger() && value < CBigInteger();
}

} // namespace

TEST(BigIntegerText, TheDigitsAtTheEndAreTheValue)
{
    struct Row
    {
        const char* text;
        const char* printed;
        bool negativeZero;
    };
    const Row rows[] = {
        {nullptr, "0", false},   {"", "0", false},        {"   ", "0", false},
        {"0", "0", false},       {"000", "0", false},     {"-0", "0", true},
        {"7", "7", false},       {"-12", "-12", false},   {"  -12  ", "-12", false},
        {"+12", "12", false},    {"00120", "120", false}, {"1 2", "2", false},
        {"12 34", "34", false},  {"1-2", "2", false},     {"-1 2", "-2", false},
        {"1\t-\n5", "5", false}, {"\t5", "5", false},     {"--5", "-5", false},
        {"+-5", "5", false},     {"\n-5", "5", false},    {"-", "0", true},
        {"+", "0", false},       {"12\n", "0", false},    {"12-", "0", false},
        {"-12\n", "0", true},    {"-12+ ", "0", true},    {"12 \r ", "0", false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text ? row.text : "null");
        const CBigInteger value(row.text);
        EXPECT_EQ(value.ToString(), row.printed);
        EXPECT_EQ(IsNegativeZero(value), row.negativeZero);
    }
}

TEST(BigIntegerText, AnyOtherCharacterMakesItADecimal)
{
    struct Row
    {
        const char* text;
        const char* printed;
    };
    const Row rows[] = {
        {"12.6", "13"},   {"12.5", "12"},   {"-12.6", "-13"}, {"1e3", "1000"},  {"1.", "1"},
        {"1-2.0", "-12"}, {"1.5E+1", "15"}, {"-.4", "0"},     {"1 2e1", "120"}, {"1e-99999", "0"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(CBigInteger(row.text).ToString(), row.printed);
    }
    EXPECT_EQ(CBigInteger("1.7E+308").ToString(), "17" + std::string(307, '0'));
}

TEST(BigIntegerText, ARefusedTextLeavesTheValue)
{
    CBigInteger value(42);
    EXPECT_EQ(FailureOf([&] { value.Parse("12a"); }),
              "The string representing a Decimal, contained an invalid char at position 2 [12a].");
    EXPECT_EQ(FailureOf([&] { value.Parse("\xC3\xA9"); }),
              "The string representing a Decimal, contained an invalid char at position 0 "
              "[\xC3\xA9].");
    EXPECT_EQ(FailureOf([&] { value.Parse("1e100001"); }),
              "The exponent of the Decimal is to large [1e100001].");
    EXPECT_EQ(value.ToString(), "42");
}

TEST(BigIntegerText, ConstantsAreReadyForEveryInitialiser)
{
    EXPECT_EQ(g_earlyUser.strMax, "9223372036854775807");
    EXPECT_EQ(g_earlyUser.strSum, "101.25");
    EXPECT_EQ(g_earlyUser.nLong, INT_MIN);
    EXPECT_EQ(g_earlyUser.dDouble, 1.5);

    EXPECT_EQ(CBigInteger::MAX_LONG.ToString(), "2147483647");
    EXPECT_EQ(CBigInteger::MIN_LONG.ToString(), "-2147483648");
    EXPECT_EQ(CBigInteger::MIN_LONGLONG.ToString(), "-9223372036854775808");
    EXPECT_EQ(CBigInteger::MAX_DOUBLE.ToString(), "17" + std::string(307, '0'));
    EXPECT_EQ(CBigInteger::MIN_DOUBLE.ToString(), "-17" + std::string(307, '0'));
}

TEST(BigIntegerBuilding, FromIntegers)
{
    EXPECT_EQ(CBigInteger().ToString(), "0");
    EXPECT_EQ(CBigInteger(0).ToString(), "0");
    EXPECT_EQ(CBigInteger(INT_MAX).ToString(), "2147483647");
    EXPECT_EQ(CBigInteger(INT_MIN).ToString(), "-2147483648");
    EXPECT_EQ(CBigInteger(LLONG_MAX).ToString(), "9223372036854775807");
    EXPECT_EQ(CBigInteger(LLONG_MIN).ToString(), "-9223372036854775808");
    EXPECT_EQ(CBigInteger(ULLONG_MAX).ToString(), "18446744073709551615");
}

TEST(BigIntegerBuilding, LongIsCutTo32Bits)
{
    EXPECT_EQ(CBigInteger(4294967295L).ToString(), "4294967295");
    EXPECT_EQ(CBigInteger(4294967297L).ToString(), "1");
    EXPECT_EQ(CBigInteger(-4294967297L).ToString(), "-1");
    EXPECT_TRUE(IsNegativeZero(CBigInteger(-4294967296L)));
    EXPECT_TRUE(IsNegativeZero(CBigInteger(LONG_MIN)));
    EXPECT_EQ(CBigInteger(4294967297UL).ToString(), "1");
    EXPECT_EQ(CBigInteger(ULONG_MAX).ToString(), "4294967295");
}

TEST(BigIntegerBuilding, CopiesAndMovesShareNothingAtEveryLength)
{
    // Numbers of up to 14 digits lie in the object, longer ones in a block of their own.
    const char* const texts[] = {
        "-0", "7", "99999999999999", "-100000000000000", "123456789012345678901234567890",
    };
    for (const char* pszFrom : texts) {
        for (const char* pszTo : texts) {
            SCOPED_TRACE(std::string(pszTo) + " = " + pszFrom);
            const CBigInteger source(pszFrom);
            CBigInteger copied(pszTo);
            copied = source;
            CBigInteger moved(pszTo);
            moved = CBigInteger(source);
            EXPECT_TRUE(copied == source && moved == source);
            EXPECT_EQ(IsNegativeZero(copied), IsNegativeZero(source));
            CBigInteger taken(std::move(moved));
            moved = CBigInteger(pszTo);
            const CBigInteger& same = copied;
            copied = same;
            copied += CBigInteger(1);
            EXPECT_EQ(copied.ToString(), (source + CBigInteger(1)).ToString());
            EXPECT_EQ(source.ToString(), CBigInteger(pszFrom).ToString());
            EXPECT_EQ(taken.ToString(), source.ToString());
            EXPECT_EQ(moved.ToString(), CBigInteger(pszTo).ToString());
        }
    }
    CBigInteger value("99999999999999");
    value += CBigInteger(1);
    EXPECT_EQ(value.ToString(), "100000000000000");
    value -= CBigInteger(1);
    EXPECT_EQ(value.ToString(), "99999999999999");
}

TEST(BigIntegerBuilding, DoubleRoundsWithTiesTowardsZero)
{
    struct Row
    {
        double value;
        const char* printed;
    };
    const Row rows[] = {
        {0.0, "0"},
        {-0.0, "0"},
        {0.5, "0"},
        {0.51, "1"},
        {2.5, "2"},
        {2.6, "3"},
        {-2.5, "-2"},
        {-2.6, "-3"},
        {-0.4, "0"},
        {3.5, "3"},
        {1e15, "1000000000000000"},
        {4503599627370495.0, "4503599627370495"},
        {5e-324, "0"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.value);
        EXPECT_EQ(CBigInteger(row.value).ToString(), row.printed);
    }
    EXPECT_EQ(CBigInteger(std::nan("")).ToString(), "0");
    EXPECT_EQ(CBigInteger(std::nan("")), CBigInteger());
    for (const double dInfinite : {HUGE_VAL, -HUGE_VAL}) {
        EXPECT_EQ(FailureOf([&] { CBigInteger value(dInfinite); }), "ERROR: Infinite value.");
    }
}

TEST(BigIntegerBuilding, DoubleBeyondItsPrecision)
{
    EXPECT_EQ(CBigInteger(4503599627370497.0).ToString(), "4503599627370496"); // 2^52 + 1
    EXPECT_EQ(CBigInteger(9007199254740991.0).ToString(), "9007199254740990"); // 2^53 - 1
    // 1e23 is 99999999999999991611392 exactly; the quotients by ten are rounded on the way.
    std::string strExpected;
    for (double d = 1e23; d > 0; d = std::trunc(d / 10)) {
        strExpected.insert(strExpected.begin(), static_cast<char>('0' + std::fmod(d, 10)));
    }
    EXPECT_NE(strExpected, "99999999999999991611392");
    EXPECT_EQ(CBigInteger(1e23).ToString(), strExpected);
    const std::string strMax = CBigInteger(std::numeric_limits<double>::max()).ToString();
    EXPECT_EQ(strMax.size(), 309u);
    EXPECT_EQ(strMax.substr(0, 15), "179769313486231");
}

TEST(BigIntegerSigns, NegativeZeroIsEqualToZeroAndBelowIt)
{
    const CBigInteger zero(0);
    const CBigInteger negativeZero("-0");
    EXPECT_EQ(negativeZero.ToString(), "0");
    EXPECT_TRUE(negativeZero == zero);
    EXPECT_FALSE(negativeZero != zero);
    EXPECT_TRUE(negativeZero < zero);
    EXPECT_TRUE(zero > negativeZero);
    EXPECT_FALSE(negativeZero >= zero);
    EXPECT_FALSE(zero <= negativeZero);
    EXPECT_FALSE(negativeZero < negativeZero);
    EXPECT_TRUE(negativeZero <= negativeZero);
}

TEST(BigIntegerSigns, UnaryMinusFlipsItsOperand)
{
    CBigInteger value(5);
    EXPECT_EQ(value.GetNegative().ToString(), "-5");
    EXPECT_EQ(value.ToString(), "5");
    CBigInteger& result = -value;
    EXPECT_EQ(&result, &value);
    EXPECT_EQ(value.ToString(), "-5");
    EXPECT_EQ(value.GetAbs().ToString(), "5");
    EXPECT_EQ(value.ToString(), "-5");
    value.Abs();
    EXPECT_EQ(value.ToString(), "5");
    value.Negate();
    EXPECT_EQ(value.ToString(), "-5");
}

TEST(BigIntegerSigns, OfZeroResults)
{
    struct Row
    {
        const char* left;
        char op;
        const char* right;
        bool negativeZero;
    };
    const Row rows[] = {
        {"5", '-', "5", false},  {"-5", '+', "5", false},  {"-0", '+', "-0", true},
        {"-0", '-', "0", true},  {"0", '-', "-0", false},  {"0", '+', "-0", false},
        {"0", '*', "-5", true},  {"-0", '*', "-5", false}, {"-0", '*', "5", true},
        {"1", '/', "-2", true},  {"-1", '/', "2", true},   {"-1", '/', "-2", false},
        {"0", '/', "-2", false}, {"-0", '/', "2", false},  {"-4", '%', "2", true},
        {"4", '%', "2", false},  {"-0", '%', "2", false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.left) + row.op + row.right);
        const CBigInteger left(row.left);
        const CBigInteger right(row.right);
        CBigInteger plain;
        CBigInteger inPlace(left);
        switch (row.op) {
        case '+':
            plain = left + right;
            inPlace += right;
            break;
        case '-':
            plain = left - right;
            inPlace -= right;
            break;
        case '*':
            plain = left * right;
            inPlace *= right;
            break;
        case '/':
            plain = left / right;
            inPlace = plain;
            break;
        default:
            plain = left % right;
            inPlace %= right;
        }
        EXPECT_EQ(plain.ToString(), "0");
        EXPECT_EQ(IsNegativeZero(plain), row.negativeZero);
        EXPECT_EQ(IsNegativeZero(inPlace), row.negativeZero);
    }
}

TEST(BigIntegerDivision, OnlyTheSlashTakesNegativeDivisors)
{
    EXPECT_EQ((CBigInteger(5) / CBigInteger(-2)).ToString(), "-2");
    EXPECT_EQ((CBigInteger(-5) / CBigInteger(2)).ToString(), "-2");
    EXPECT_EQ((CBigInteger(-5) % CBigInteger(2)).ToString(), "-1");
    EXPECT_EQ((CBigInteger(0) / CBigInteger(7)).ToString(), "0");

    CBigInteger value(-17);
    value /= CBigInteger(5);
    EXPECT_EQ(value.ToString(), "-3");
    value = CBigInteger(-17);
    value %= CBigInteger(5);
    EXPECT_EQ(value.ToString(), "-2");

    // The divisor is refused before a zero dividend is seen.
    for (const char* pszDividend : {"5", "0"}) {
        for (const char* pszDivisor : {"-2", "0", "-0"}) {
            SCOPED_TRACE(pszDivisor);
            CBigInteger dividend(pszDividend);
            const CBigInteger divisor(pszDivisor);
            EXPECT_EQ(FailureOf([&] { dividend % divisor; }), "ERROR: Overflow in operator%.");
            EXPECT_EQ(FailureOf([&] { dividend /= divisor; }), "ERROR: Overflow in operator /=.");
            EXPECT_EQ(FailureOf([&] { dividend %= divisor; }), "ERROR: Overflow in operator%=.");
            if (divisor == CBigInteger()) {
                EXPECT_EQ(FailureOf([&] { dividend / divisor; }), "ERROR: Overflow in operator/.");
            }
            EXPECT_EQ(dividend.ToString(), pszDividend);
        }
    }
}

TEST(BigIntegerDivision, AGuessedLimbThatIsOneTooLargeIsTakenBack)
{
    // (10^27 * 500000000) / (500000000 * 10^18 + 1): the guess for the first limb fails only when
    // the last limb is subtracted.
    const CBigInteger divisor("500000000000000000000000001");
    const CBigInteger quotient("999999999999999999");
    const CBigInteger rest("500000000000000000000000000");
    const CBigInteger dividend = divisor * quotient + rest;
    EXPECT_EQ((dividend / divisor).ToString(), quotient.ToString());
    EXPECT_EQ((dividend % divisor).ToString(), rest.ToString());
}

TEST(BigIntegerDivision, AnOperandMayBeTheObjectItself)
{
    const char* const pszText = "123456789012345678901234567890";
    CBigInteger value(pszText);
    const CBigInteger& same = value;
    value += same;
    EXPECT_EQ(value.ToString(), "246913578024691357802469135780");
    value /= same;
    EXPECT_EQ(value.ToString(), "1");
    value.Parse(pszText);
    value *= same;
    EXPECT_EQ(value.ToString(), "15241578753238836750495351562536198787501905199875019052100");
    value %= same;
    EXPECT_EQ(value.ToString(), "0");
    value.Parse(pszText);
    value -= same;
    EXPECT_EQ(value.ToString(), "0");
}

TEST(BigIntegerSquareRoot, IsTheWholePart)
{
    struct Row
    {
        const char* value;
        const char* root;
    };
    const Row rows[] = {
        {"1", "1"},
        {"2", "1"},
        {"3", "1"},
        {"4", "2"},
        {"99", "9"},
        {"100", "10"},
        {"1000000", "1000"},
        {"999999999999999999", "999999999"},
        {"99999999999999999999999999999999999999", "9999999999999999999"},
        {"100000000000000000000000000000000000000", "10000000000000000000"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.value);
        EXPECT_EQ(CBigInteger(row.value).SquareRoot().ToString(), row.root);
    }
    for (const char* pszNegative : {"-4", "-0"}) {
        EXPECT_EQ(FailureOf([&] { CBigInteger(pszNegative).SquareRoot(); }),
                  "ERROR: Negative Number in function SquareRoot().");
    }
}

TEST(BigIntegerSquareRoot, OfZeroFailsInTheDivision)
{
    EXPECT_EQ(FailureOf([] { CBigInteger(0).SquareRoot(); }), "ERROR: Overflow in operator/.");
}

TEST(BigIntegerConversions, AreCheckedAgainstBothBounds)
{
    struct Row
    {
        const char* text;
        bool fitsInt;
        bool fitsLongLong;
    };
    const Row rows[] = {
        {"0", true, true},
        {"-0", true, true},
        {"2147483647", true, true},
        {"2147483648", false, true},
        {"-2147483648", true, true},
        {"-2147483649", false, true},
        {"9223372036854775807", false, true},
        {"9223372036854775808", false, false},
        {"-9223372036854775808", false, true},
        {"-9223372036854775809", false, false},
        {"10000000000000000000", false, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        const CBigInteger value(row.text);
        if (row.fitsInt) {
            EXPECT_EQ(static_cast<int>(value), std::stoi(row.text));
        }
        else {
            EXPECT_EQ(FailureOf([&] { static_cast<void>(static_cast<int>(value)); }),
                      "ERROR: Value out of bound of int.");
        }
        if (row.fitsLongLong) {
            EXPECT_EQ(static_cast<long long>(value), std::stoll(row.text));
        }
        else {
            EXPECT_EQ(FailureOf([&] { static_cast<void>(static_cast<long long>(value)); }),
                      "ERROR: Value out of bound of LONGLONG.");
        }
    }
}

TEST(BigIntegerWorkers, TakeMagnitudesLeastSignificantFirst)
{
    using Digits = CBigInteger::Digits;
    Digits out;
    CBigInteger::Add({9, 9}, {1}, out);
    EXPECT_EQ(out, Digits({0, 0, 1}));
    CBigInteger::Subtract({0, 0, 1}, {1}, out);
    EXPECT_EQ(out, Digits({9, 9}));
    CBigInteger::Multiply({5, 2}, static_cast<char>(8), out);
    EXPECT_EQ(out, Digits({0, 0, 2}));
    CBigInteger::Multiply({5, 2}, static_cast<char>(0), out);
    EXPECT_EQ(out, Digits({0}));
    CBigInteger::Pow10(2, out);
    EXPECT_EQ(out, Digits({0, 0, 1}));
    CBigInteger::ShiftLeft(out, 1);
    EXPECT_EQ(out, Digits({0, 0, 0, 1}));
    CBigInteger::ShiftLeft(out, -1);
    EXPECT_EQ(out, Digits({0, 0, 0, 1}));
    CBigInteger::Build("x0120", out);
    EXPECT_EQ(out, Digits({0, 2, 1, 0}));
    CBigInteger::Clean(out);
    EXPECT_EQ(out, Digits({0, 2, 1}));
    EXPECT_EQ(CBigInteger::Position({}), 1u);
    EXPECT_EQ(CBigInteger::Compare({1, 2}, {2, 1}), 1);
    EXPECT_EQ(CBigInteger::Compare({9}, {0, 1}), -1);
    EXPECT_EQ(CBigInteger::Compare({9}, {9}), 0);
    Digits rest;
    EXPECT_EQ(FailureOf([&] { CBigInteger::Divide({1}, {0}, out, rest); }),
              "ERROR: Overflow in operator/.");
    CBigInteger::BuildDouble(std::nan(""), out);
    EXPECT_TRUE(out.empty());
}

// Bounds with room for a sanitizer; a quadratic reading of a million digits takes minutes.
TEST(BigIntegerCost, ALongTextIsReadInLinearTime)
{
    const std::string strDigits(1000000, '7');
    EXPECT_LT(
        MillisecondsOf([&] { EXPECT_EQ(CBigInteger(strDigits.c_str()).ToString(), strDigits); }),
        1000);
    const std::string strBlanks(1000000, ' ');
    EXPECT_EQ(CBigInteger(strBlanks.c_str()).ToString(), "0");
    EXPECT_LT(MillisecondsOf([&] {
                  const CBigInteger value((strDigits + "e100000").c_str());
                  EXPECT_EQ(value.GetDigitCount(), 1100000u);
              }),
              2000);
}

TEST(BigIntegerCost, LongOperandsNeitherRecurseNorRepeat)
{
    const CBigInteger dividend(std::string(6000, '9').c_str());
    const CBigInteger divisor(std::string(3000, '7').c_str());
    EXPECT_LT(MillisecondsOf([&] {
                  const CBigInteger quotient = dividend / divisor;
                  EXPECT_TRUE(quotient * divisor + dividend % divisor == dividend);
                  const CBigInteger root = dividend.SquareRoot();
                  EXPECT_EQ(root.ToString(), std::string(3000, '9'));
              }),
              1000);
}
