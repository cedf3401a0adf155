#include "QnXmlLib16/support/Functions.h"

#include "tests/support/Scoped.h"

#include <climits>
#include <cwchar>
#include <gtest/gtest.h>

using namespace QnXmlLib16;

namespace {

// Keeps the compiler from checking formats that are odd on purpose.
std::string Print(const char* pszFormat, ...)
{
    va_list args;
    va_start(args, pszFormat);
    std::string strResult = FormatV(pszFormat, args);
    va_end(args);
    return strResult;
}

} // namespace

TEST(FormatString, PrintsEveryConversionWhole)
{
    const std::string strLong(10000, 'x');
    EXPECT_EQ(Print("[%s]", strLong.c_str()), "[" + strLong + "]");
    EXPECT_EQ(Print("%.60f", -1e308).size(), 371u);
    EXPECT_EQ(Print("%e %g %G %Lf", 1.5, 2.5, 1e-10, 1.5L), "1.500000e+00 2.5 1E-10 1.500000");
    EXPECT_EQ(Print("%i %u %x %X %#o", -1, 3u, 255u, 255u, 8u), "-1 3 ff FF 010");
    EXPECT_EQ(Print("%hd %+d % d %05d %lu", 7, 7, 7, 7, ULONG_MAX),
              "7 +7  7 00007 18446744073709551615");
    EXPECT_EQ(Print("%*d|%-*d|%.*d", 5, 1, 5, 2, 3, 3), "    1|2    |003");
    EXPECT_EQ(Print("%c%C%%%ls%S", 'a', 'b', L"c", L"d"), "ab%cd");
    EXPECT_EQ(Print("%.3s|%10s|%-4s|", "abcdef", "x", "y"), "abc|         x|y   |");
    EXPECT_EQ(Print("%s", static_cast<const char*>(nullptr)) + Print(nullptr), "(null)");
    const char acUnterminated[3] = {'a', 'b', 'c'};
    EXPECT_EQ(Print("%.3s", acUnterminated), "abc");
}

// What the walk does not know adds nothing to the size, and nothing is read for it or after it:
// from there on only plain characters count.
TEST(FormatString, CutsWhatTheWalkDoesNotKnow)
{
    EXPECT_EQ(Print("%zu!", static_cast<std::size_t>(12345)), "12");
    EXPECT_EQ(Print("%lld %s", 7LL, "text"), "7 ");
    EXPECT_EQ(Print("%lld %*d %f %#x|", 7LL, 3, 4, 1.0, 9u), "7   4");
    EXPECT_EQ(Print("%y%d%#x..", 1, 2), "%y");
    EXPECT_EQ(Print("100%"), "100");
    EXPECT_EQ(Print("%ls|%s", L"\u00e9", "x"), ""); // no multibyte form: vsnprintf stops
    EXPECT_EQ(Print("%c-%d", '\0', 1), "");         // ends at the first zero character
    EXPECT_EQ(Print("%.*s", -1, "text"), "");       // cut to a negative precision
}

TEST(FormatString, BearsAPointWhateverTheNumericLocaleIs)
{
    const Scoped::Locale locale(LC_ALL, "de_DE.utf8");
    if (!locale.IsSet())
        GTEST_SKIP() << "the machine has no locale with a decimal comma";
    EXPECT_EQ(FormatString("%.2f %g %e", 1.5, 2.5, 3.5), "1.50 2.5 3.500000e+00");
    EXPECT_EQ(Print("%.1f%5ls", 1.5, L"\u00e9"), "1.5   \u00e9");
    char szComma[8];
    std::snprintf(szComma, sizeof szComma, "%.1f", 1.5);
    EXPECT_STREQ(szComma, "1,5"); // the thread's locale is back
}

TEST(FindReplace, TextMadeByAReplacementIsSearchedAgain)
{
    const auto replaced = [](auto text, auto find, auto replacement) {
        FindReplace(text, find, replacement);
        return text;
    };
    using S = std::string;
    EXPECT_EQ(replaced(S("aXbXc"), S("X"), S("-")), "a-b-c");
    EXPECT_EQ(replaced(S("aabbc"), S("ab"), S()), "c");
    EXPECT_EQ(replaced(S("aaaaa"), S("aa"), S("a")), "a");
    EXPECT_EQ(replaced(S("abc"), S(), S("-")), "abc");
    // One pass: the replacement holds the searched text.
    EXPECT_EQ(replaced(S("abab"), S("ab"), S("aab")), "aabaab");
    using W = std::wstring;
    EXPECT_EQ(replaced(W(L"aabbcX"), W(L"ab"), W()), L"cX");
    EXPECT_EQ(replaced(W(L"abab"), W(L"ab"), W(L"aab")), L"aabaab");
}

TEST(NumberText, IsPaddedAndTrimmed)
{
    EXPECT_EQ(PadZero(7, 3), "007");
    EXPECT_EQ(PadZero(-5, 4), "-005");
    EXPECT_EQ(PadZero(INT_MIN, 0), "-2147483648");
    EXPECT_EQ(PadZero(1, 255), std::string(254, '0') + "1");
    EXPECT_EQ(TrimTrainingZeros("000") + TrimTrainingZeros(""), "0");
    EXPECT_EQ(ToFracString(0, 0, 0) + ToFracString(5, 20, 0), ".00502");
    EXPECT_EQ(ToFracString(1, 0, 120), ".00100012");
    char szText[] = "aZ1\xe9";
    EXPECT_STREQ(strupr(szText), "AZ1\xe9");
    EXPECT_EQ(strupr(nullptr), nullptr);
}

TEST(Quotient, RunsInSinglePrecision)
{
    EXPECT_EQ(GetQuotient(-7, 2), -4);
    EXPECT_EQ(GetModulo(-7, 2), 1);
    EXPECT_EQ(GetModulo(7, -2), -1);
    EXPECT_EQ(GetQuotient(16777217, 1), 16777216);
    EXPECT_EQ(GetModulo(1000000007, 60), -13);
    // No int holds these.
    EXPECT_EQ(GetQuotient(3000000000LL, 1), INT_MIN);
    EXPECT_EQ(GetModulo(3000000000LL, 1), 5147483648LL);
    EXPECT_EQ(GetQuotient(0, 0), INT_MIN);
    EXPECT_EQ(GetModulo(LLONG_MIN, 1), LLONG_MIN + 2147483648LL);
}

TEST(UnicodeToMultiByte, WritesAQuestionMarkForWhatTheLocaleLacks)
{
    const wchar_t acText[] = {L'a', L'\u20ac', static_cast<wchar_t>(0xD800), L'b', 0};
    EXPECT_EQ(UnicodeToMultiByte(nullptr), "");
    EXPECT_EQ(UnicodeToMultiByte(acText), "a??b");
    const Scoped::Locale locale(LC_CTYPE, "C.UTF-8");
    ASSERT_TRUE(locale.IsSet());
    EXPECT_EQ(UnicodeToMultiByte(acText), "a\u20ac?b");
}
