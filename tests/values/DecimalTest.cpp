#include "QnXmlLib16/values/Decimal.h"

#include "tests/values/ValueTools.h"

#include <gtest/gtest.h>

#include <cstdlib>

using namespace QnXmlLib16;

namespace {

std::string Parse(const char* pszText)
{
    return CDecimal(pszText).ToString();
}

std::string FromDouble(const char* pszText)
{
    return CDecimal(std::strtod(pszText, nullptr)).ToString();
}

// Of "text to digits", where Rounded keeps so many and Fixed prints them.
std::string Rounded(const char* pszText)
{
    const std::vector<std::string> words = Words(pszText);
    CDecimal value(words[0].c_str());
    value.ChangeFractionalDivider(std::stoi(words[2]));
    return value.ToString();
}

std::string Fixed(const char* pszText)
{
    const std::vector<std::string> words = Words(pszText);
    return CDecimal(words[0].c_str()).ToString(std::stoi(words[2]));
}

} // namespace

TEST(DecimalText, Parses)
{
    EXPECT_EQ(Parse(nullptr), "0");
    ExpectEach(Parse, {" -> 0", "- -> 0", "1.50 -> 1.5", "-.5 -> -0.5", "1. -> 1", "-0.0 -> 0",
                       "00012.340 -> 12.34", "1 2.3 4 -> 12.34", "1-2 -> -12", "-1+2 -> 12",
                       "1\t2\n -> 12", "1E-2 -> 0.01", "1e+ -> 1", "1e-+2 -> 100", "1e+ -2 -> 0.01",
                       "-1.25e-1 -> -0.125", "e5 -> 0", "1e000000000002 -> 100"});
}

TEST(DecimalText, ARefusedTextLeavesTheValueAndNamesThePlace)
{
    CDecimal value("7.5");
    const std::pair<const char*, char> cases[] = {
        {"12a", '2'},  {"1,5", '1'},   {"1.5.2", '3'}, {"1.-5", '2'}, {"1ex", '2'}, {"1e5 ", '3'},
        {"1e5-", '3'}, {"1e5.0", '3'}, {"1e- .", '4'}, {"\xA0", '0'}, {"1\v", '1'}, {"INF", '0'}};
    for (const auto& [pszText, cPosition] : cases) {
        EXPECT_EQ(FailureOf([&, psz = pszText] { value.Parse(psz); }),
                  std::string("The string representing a Decimal, contained an invalid char at "
                              "position ") +
                      cPosition + " [" + pszText + "].");
    }
    for (const char* pszText : {"1e100001", "1e-100001", "0e99999999999999999999"}) {
        EXPECT_EQ(FailureOf([&] { value.Parse(pszText); }),
                  "The exponent of the Decimal is to large [" + std::string(pszText) + "].");
    }
    EXPECT_EQ(value.ToString(), "7.5");
    EXPECT_EQ(Parse("1e100000"), "1" + std::string(100000, '0'));
    // Every truncation of a text that goes through all states is read.
    const std::string strText = " -12 3.45 6E+ -0078";
    for (std::size_t n = 0; n <= strText.size(); ++n)
        EXPECT_NO_THROW(value.Parse(strText.substr(0, n).c_str())) << n;
}

TEST(DecimalText, ATextWithAFractionIsCutAt1023Characters)
{
    const std::string strDigits(1100, '7');
    EXPECT_EQ(Parse(strDigits.c_str()), strDigits);
    EXPECT_EQ(Parse(("-" + strDigits + ".5").c_str()), "-" + strDigits.substr(0, 1022));
    EXPECT_EQ(Parse((strDigits.substr(0, 1020) + ".123").c_str()),
              strDigits.substr(0, 1020) + ".12");
    EXPECT_EQ(CDecimal(0, 5, 2000).ToString(), "0." + std::string(1021, '0'));
}

TEST(DecimalText, FixedDigitsAddAHalfAndCut)
{
    ExpectEach(Fixed,
               {"1.25 to 1 -> 1.7", "1.25 to 5 -> 1.75", "1.25 to 0 -> 1.", "1.5 to 2 -> 2.0",
                "-1.25 to 1 -> -1.7", "-0 to 1 -> -0.5", "0.505 to 2 -> 1.00",
                "-1.25 to 2147483647 -> -1.75", "1.25 to -2147483648 -> 1."});
    const std::string strDigits(1100, '7');
    EXPECT_EQ(CDecimal(strDigits.c_str()).ToString(1), strDigits + ".5");
}

TEST(DecimalBuilding, FromNumbers)
{
    EXPECT_EQ(CDecimal(4294967297L).ToString(), "1"); // 32 bits of a long
    EXPECT_EQ(CDecimal(4294967297LL).ToString(), "4294967297");
    EXPECT_EQ(CDecimal(CBigInteger(1), CBigInteger(5), 3).ToString(), "1.005");
    const std::string strInvalid =
        "The string representing a Decimal, contained an invalid char at position ";
    ExpectEach(FromDouble,
               {"-2.5 -> -2.5", "1e21 -> 1000000000000000000000", "-1e-14 -> 0",
                "1.00000000000006 -> 1.0000000000001", "-inf -> " + strInvalid + "1 [-inf\n].",
                "nan -> " + strInvalid + "0 [nan\n]."});
    EXPECT_EQ(FromDouble("1.7e308").size(), 309u);
}

TEST(DecimalRounding, AHalfGoesTowardsZero)
{
    ExpectEach(Rounded, {"0.25 to 1 -> 0.2", "-0.35 to 1 -> -0.3", "-0.36 to 1 -> -0.4",
                         "0.2501 to 1 -> 0.3", "2.5 to 0 -> 2", "2.51 to 0 -> 3",
                         "0.5 to 3 -> 0.500", "1.25 to -4 -> 1", "9.96 to 0 -> 10"});
    // Thirty fraction digits are kept.
    ExpectEach(Parse, {"0.12345678901234567890123456789151 -> 0.123456789012345678901234567892",
                       "1e-30 -> 0.000000000000000000000000000001", "5e-31 -> 0"});
}

TEST(DecimalRounding, ACarryIntoAFullFractionIsNotPassedOn)
{
    ExpectEach(Rounded, {"0.96 to 1 -> 0.10", "-3.96 to 1 -> -3.10"});
    CDecimal value(("0." + std::string(31, '9')).c_str());
    EXPECT_EQ(value.ToString(), "0.1" + std::string(30, '0'));
    EXPECT_TRUE(value < CDecimal(1));
    value.Rationalise();
    EXPECT_EQ(value.GetFractionalDivider(), 0);
    EXPECT_EQ(value.ToString(), "0.1");
    // Arithmetic counts a full fraction as the whole that it is.
    EXPECT_EQ((value + CDecimal(1)).ToString(), "2");
    EXPECT_EQ((value / CDecimal(4)).ToString(), "0.25");
}

TEST(DecimalRounding, PartsAreBroughtIntoOneForm)
{
    // Parts of opposite signs are aligned, with the carry of the rounding.
    CDecimal opposite(CBigInteger(-2), CBigInteger(26), 2);
    opposite.ChangeFractionalDivider(1);
    EXPECT_EQ(opposite.ToString(), "-1.7");
    // Rationalise leaves one digit.
    CDecimal zeros(CBigInteger(1), CBigInteger(50), 3), whole(CBigInteger(1), CBigInteger(0), 3);
    zeros.Rationalise();
    EXPECT_EQ(zeros.ToString() + " " + std::to_string(zeros.GetFractionalDivider()), "1.05 2");
    whole.Rationalise();
    EXPECT_EQ(whole.ToString() + " " + std::to_string(whole.GetFractionalDivider()), "1 1");
    // A fraction of many wholes is carried at once.
    CDecimal wholes(CBigInteger(0), CBigInteger::Pow10(1000), 1);
    EXPECT_EQ((wholes + CDecimal(1)).ToString(), "1" + std::string(998, '0') + "1");
}

TEST(DecimalArithmetic, WorksInPlaceAndComparesAsNumbers)
{
    CDecimal value("-0.5");
    EXPECT_EQ((value++).ToString(), "-0.5");
    EXPECT_EQ((--value).ToString(), "-0.5");
    EXPECT_EQ((value--).ToString(), "-0.5");
    EXPECT_EQ((++value).ToString(), "-0.5");
    EXPECT_EQ((value /= CDecimal("0.2")).ToString(), "-2.5");
    EXPECT_EQ(FailureOf([&] { value /= CDecimal("-0.0"); }), "ERROR: Overflow in operator/.");
    for (const char* pszText : {"-1.75", "123456789012345678.5"}) { // in place and on the heap
        CDecimal source(pszText);
        value = source;
        const CDecimal& same = value;
        EXPECT_EQ((value += same).ToString(), (source * CDecimal(2)).ToString());
        EXPECT_EQ((value -= same).ToString() + source.ToString(), std::string("0") + pszText);
    }

    for (const char* pszZero : {"0", "-0", "-0.0"}) {
        EXPECT_TRUE(AreRelated(CDecimal(pszZero), '=', CDecimal()));
        EXPECT_TRUE(AreRelated(CDecimal("-0.0005"), '<', CDecimal(pszZero))) << pszZero;
        EXPECT_TRUE(AreRelated(CDecimal("0.05"), '>', CDecimal(pszZero))) << pszZero;
    }
}

TEST(DecimalConversions, LongLongCutsWhereLongRounds)
{
    const std::string strRefused = " -> The Decimal value if to large to fit into a ";
    ExpectEach<CQnOverFlowException>(
        [](const char* psz) { return std::to_string(CDecimal(psz).ToLong()); },
        {"1.5 -> 1", "-1.96 -> -2", "-0.6 -> -1", "2147483647.4 -> 2147483647",
         "-2147483648.4 -> -2147483648", "2147483647.6" + strRefused + "LONG",
         "-2147483648.6" + strRefused + "LONG"});
    ExpectEach<CQnOverFlowException>(
        [](const char* psz) { return std::to_string(CDecimal(psz).ToLongLong()); },
        {"-1.96 -> -1", "9223372036854775807.9 -> 9223372036854775807",
         "-9223372036854775808.9 -> -9223372036854775808",
         "9223372036854775808" + strRefused + "LONGLONG",
         "-9223372036854775809" + strRefused + "LONGLONG"});
    for (const char* pszText : {"-0.5", "1.7e308", "1e-30"})
        EXPECT_EQ(CDecimal(pszText).ToDouble(), std::strtod(pszText, nullptr));
    ExpectEach<CQnOverFlowException>(
        [](const char* psz) { return std::to_string(CDecimal(psz).ToDouble()); },
        {"1.70000001e308" + strRefused + "Double", "-1e309" + strRefused + "Double"});
    EXPECT_EQ(CDecimal(CBigInteger(0), CBigInteger(1), 400).ToDouble(), 0);
}

// Bounds with room for a sanitizer; digit by digit these took seconds to minutes.
TEST(DecimalCost, IsBoundedForEveryText)
{
    const std::string nines = std::string(250, '9') + "." + std::string(250, '9');
    const std::string texts[] = {std::string(255, '1') + "." + std::string(255, '1'),
                                 "0." + std::string(509, '0') + "1",
                                 nines + "e100000",
                                 nines + "e-100000",
                                 "." + std::string(1000000, '3'),
                                 "." + std::string(1000000, '0') + "e1",
                                 std::string(1000000, '9') + "e-100000",
                                 "1." + std::string(1000000, ' ') + "e" + std::string(100, '0') +
                                     "1"};
    for (const std::string& strText : texts)
        EXPECT_LT(MillisecondsOf([&] { Parse(strText.c_str()); }), 1000) << strText.substr(0, 20);
    CDecimal value(texts[0].c_str());
    EXPECT_LT(MillisecondsOf([&] {
                  value += CDecimal(texts[1].c_str());
                  value *= value;
                  value /= CDecimal("3.7");
              }),
              1000);
}
