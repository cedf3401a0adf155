#include "QnXmlLib16/values/BigInteger.h"

#include "QnXmlLib16/values/Decimal.h"
#include "tests/values/ValueTools.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <map>
#include <utility>

using namespace QnXmlLib16;

namespace {

using Int = CBigInteger;

// Built before every object of ordinary priority, as if in a library that is loaded first.
__attribute__((init_priority(102))) const std::string g_strEarly =
    Int::MAX_LONGLONG.ToString() + Int::MIN_LONGLONG.ToString() + Int::MAX_LONG.ToString() +
    Int::MIN_LONG.ToString() + CDecimal(Int::MAX_DOUBLE + Int::MIN_DOUBLE).ToString();

// As ToString, but a negative zero is "-0": that sign shows in comparisons only.
std::string Print(const Int& value)
{
    return value == Int() && value < Int() ? "-0" : value.ToString();
}

std::string Parse(const char* pszText)
{
    return Print(Int(pszText));
}

std::string FromDouble(const char* pszText)
{
    return Print(Int(std::strtod(pszText, nullptr)));
}

// Of "left op right". A refusal leaves the operand.
std::string Calculate(const char* pszText)
{
    static const std::map<std::string, std::string (*)(Int&, const Int&)> operators = {
        {"+", [](Int& a, const Int& b) { return Print(a + b); }},
        {"-", [](Int& a, const Int& b) { return Print(a - b); }},
        {"*", [](Int& a, const Int& b) { return Print(a * b); }},
        {"/", [](Int& a, const Int& b) { return Print(a / b); }},
        {"%", [](Int& a, const Int& b) { return Print(a % b); }},
        {"/=", [](Int& a, const Int& b) { return Print(a /= b); }},
        {"%=", [](Int& a, const Int& b) { return Print(a %= b); }},
    };
    const std::vector<std::string> words = Words(pszText);
    Int left(words[0].c_str());
    try {
        return operators.at(words[1])(left, Int(words[2].c_str()));
    }
    catch (const CQnException&) {
        EXPECT_EQ(Print(left), words[0]);
        throw;
    }
}

} // namespace

TEST(BigIntegerText, TheDigitsAtTheEndAreTheValue)
{
    EXPECT_EQ(Parse(nullptr), "0");
    ExpectEach(Parse, {" -> 0", "  -12   -> -12", "+12 -> 12", "00120 -> 120", "12 34 -> 34",
                       "1-2 -> 2", "-1 2 -> -2", "1\t-\n5 -> 5", "+-5 -> 5", "\n-5 -> 5", "- -> -0",
                       "12\n -> 0", "-12+  -> -0"});
    // Any other character makes the text a decimal, which is rounded.
    ExpectEach(Parse, {"12.5 -> 12", "-12.6 -> -13", "1e3 -> 1000", "1-2.0 -> -12"});
    Int value(42);
    EXPECT_EQ(FailureOf([&] { value.Parse("1e100001"); }),
              "The exponent of the Decimal is to large [1e100001].");
    EXPECT_EQ(value.ToString(), "42");
}

TEST(BigIntegerText, ConstantsAreReadyForEveryInitialiser)
{
    EXPECT_EQ(g_strEarly, "9223372036854775807-92233720368547758082147483647-21474836480");
    EXPECT_EQ(Int::MAX_DOUBLE, Int("17") * Int::Pow10(307));
}

TEST(BigIntegerBuilding, CutsLongsAndRoundsDoubles)
{
    EXPECT_EQ(Print(Int(4294967297L)), "1");
    EXPECT_EQ(Print(Int(LONG_MIN)), "-0");
    EXPECT_EQ(Print(Int(ULONG_MAX)), "4294967295");
    EXPECT_EQ(Print(Int(LLONG_MIN)), "-9223372036854775808");
    EXPECT_EQ(Print(Int(ULLONG_MAX)), "18446744073709551615");

    // Ties go towards zero. 1e23 is 99999999999999991611392 exactly; the quotients by ten are
    // rounded on the way.
    ExpectEach(FromDouble,
               {"2.5 -> 2", "-2.5 -> -2", "-2.6 -> -3", "-0.4 -> -0", "5e-324 -> 0", "nan -> 0",
                "-inf -> ERROR: Infinite value.", "4503599627370497 -> 4503599627370496",
                "9007199254740991 -> 9007199254740990", "1e23 -> 100000000000000000000002"});
}

TEST(BigIntegerBuilding, CopiesAndMovesShareNothingAtEveryLength)
{
    // Numbers of up to 14 digits lie in the object, longer ones in a block of their own.
    const char* const texts[] = {"99999999999999", "-100000000000000"};
    for (const char* pszFrom : texts) {
        for (const char* pszTo : texts) {
            SCOPED_TRACE(std::string(pszTo) + " = " + pszFrom);
            const Int source(pszFrom);
            Int copied(pszTo), moved(pszTo);
            copied = source;
            moved = Int(source);
            const Int taken(std::move(moved));
            const Int& same = copied;
            copied = same;
            EXPECT_EQ(Print(copied), pszFrom);
            copied += Int(1);
            EXPECT_EQ(Print(source), pszFrom);
            EXPECT_EQ(Print(taken), pszFrom);
        }
    }
}

TEST(BigIntegerSigns, NegativeZeroIsEqualToZeroAndBelowIt)
{
    const Int zero(0), negativeZero("-0");
    EXPECT_EQ(negativeZero.ToString(), "0");
    EXPECT_TRUE(negativeZero == zero && negativeZero < zero && zero > negativeZero);
    EXPECT_FALSE(negativeZero != zero || negativeZero >= zero || zero <= negativeZero);

    // Which results are negative zeros.
    ExpectEach(Calculate, {"-5 + 5 -> 0", "-0 + -0 -> -0", "-0 - 0 -> -0", "0 - -0 -> 0",
                           "0 * -5 -> -0", "-0 * -5 -> 0", "1 / -2 -> -0", "-1 /= 2 -> -0",
                           "0 / -2 -> 0", "-0 /= 2 -> 0", "-4 % 2 -> -0", "4 %= 2 -> 0"});

    // The unary minus flips its operand.
    Int value(5);
    EXPECT_EQ(value.GetNegative().GetNegative().GetNegative().ToString(), "-5");
    EXPECT_EQ(&-value, &value);
    EXPECT_EQ(value.GetAbs().ToString() + value.ToString(), "5-5");
}

TEST(BigIntegerDivision, OnlyTheSlashTakesNegativeDivisors)
{
    ExpectEach(Calculate, {"5 / -2 -> -2", "-17 /= 5 -> -3", "-17 %= 5 -> -2"});
    // The divisor is refused before a zero dividend is seen.
    const std::string strRefused = " -> ERROR: Overflow in operator";
    ExpectEach(Calculate, {"0 / -0" + strRefused + "/.", "5 % -2" + strRefused + "%.",
                           "0 % 0" + strRefused + "%.", "5 /= -2" + strRefused + " /=.",
                           "0 /= 0" + strRefused + " /=.", "5 %= -2" + strRefused + "%=."});

    // The root is the whole part; that of zero fails in a division.
    ExpectEach([](const char* pszText) { return Int(pszText).SquareRoot().ToString(); },
               {"-0 -> ERROR: Negative Number in function SquareRoot().",
                "0 -> ERROR: Overflow in operator/."});
}

TEST(BigIntegerDivision, AnOperandMayBeTheObjectItself)
{
    Int value("123456789012345678901234567890");
    const Int& same = value;
    EXPECT_EQ((value *= same).ToString(),
              "15241578753238836750495351562536198787501905199875019052100");
    EXPECT_EQ((value += same).ToString(),
              "30483157506477673500990703125072397575003810399750038104200");
    EXPECT_EQ((value /= same).ToString(), "1");
    EXPECT_EQ((value %= same).ToString(), "0");
    EXPECT_EQ((value -= same).ToString(), "0");
}

TEST(BigIntegerConversions, AreCheckedAgainstBothBounds)
{
    const auto to = [](auto number) {
        return [](const char* psz) { return std::to_string(decltype(number)(Int(psz))); };
    };
    const std::string strRefused = " -> ERROR: Value out of bound of ";
    ExpectEach(to(0), {"2147483647 -> 2147483647", "-2147483648 -> -2147483648",
                       "2147483648" + strRefused + "int.", "-2147483649" + strRefused + "int."});
    ExpectEach(to(0LL), {"9223372036854775807 -> 9223372036854775807",
                         "-9223372036854775808 -> -9223372036854775808",
                         "9223372036854775808" + strRefused + "LONGLONG.",
                         "-9223372036854775809" + strRefused + "LONGLONG.",
                         "10000000000000000000" + strRefused + "LONGLONG."});
}

TEST(BigIntegerWorkers, TakeMagnitudesLeastSignificantFirst)
{
    using Digits = Int::Digits;
    Digits out, rest;
    Int::Add({9, 9}, {1}, out);
    Int::Multiply(out, static_cast<char>(8), out);
    Int::Subtract(out, {1}, out);
    Int::ShiftLeft(out, 1);
    Int::ShiftLeft(out, -1); // changes nothing
    EXPECT_EQ(out, Digits({0, 9, 9, 7}));
    Int::Multiply(out, {0, 1}, out);
    EXPECT_EQ(FailureOf([&] { Int::Divide(out, {0}, out, rest); }),
              "ERROR: Overflow in operator/.");
    Int::Divide(out, {0, 0, 1}, out, rest);
    EXPECT_EQ(out, Digits({9, 9, 7}));
    Int::Build("x0120", out);
    EXPECT_EQ(out, Digits({0, 2, 1, 0}));
    EXPECT_EQ(Int::Position({}), 1u);
    EXPECT_EQ(Int::Compare({1, 2}, {2, 1}), 1);
}

// A bound with room for a sanitizer; a quadratic reading of a million digits takes minutes.
TEST(BigIntegerCost, LongTextsAndOperandsAreBounded)
{
    const std::string strDigits(1000000, '7');
    const Int dividend(std::string(6000, '9').c_str());
    const Int divisor(std::string(3000, '7').c_str());
    EXPECT_LT(MillisecondsOf([&] {
                  EXPECT_EQ(Parse(strDigits.c_str()), strDigits);
                  EXPECT_EQ(Parse(std::string(1000000, ' ').c_str()), "0");
                  EXPECT_EQ(Int((strDigits + "e100000").c_str()).GetDigitCount(), 1100000u);
                  EXPECT_EQ(dividend / divisor * divisor + dividend % divisor, dividend);
                  EXPECT_EQ(dividend.SquareRoot().ToString(), std::string(3000, '9'));
              }),
              3000);
}
