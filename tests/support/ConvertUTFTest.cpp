#include "QnXmlLib16/support/ConvertUTF.h"
#include "QnXmlLib16/support/UTFFunctions.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

using namespace QnXmlLib16;

namespace {

template <class TTarget, class TSource>
std::vector<TTarget> Converted(unsigned long (*pfn)(const TSource*, const TSource*, TTarget*,
                                                    TTarget*),
                               const std::vector<TSource>& vecSource, std::size_t uRoom = 100)
{
    std::vector<TTarget> vecTarget(uRoom + 1);
    vecTarget.resize(pfn(vecSource.data(), vecSource.data() + vecSource.size(), vecTarget.data(),
                         vecTarget.data() + uRoom));
    return vecTarget;
}

template <class TTarget, class TSource>
unsigned long Count(unsigned long (*pfn)(const TSource*, const TSource*, TTarget*, TTarget*),
                    const std::vector<TSource>& vecSource)
{
    return pfn(vecSource.data(), vecSource.data() + vecSource.size(), nullptr, nullptr);
}

using U8 = std::vector<unsigned char>;
using U16 = std::vector<unsigned short>;
using U32 = std::vector<unsigned int>;

} // namespace

TEST(UtfConversion, GoesBothWaysAtEveryLengthBorder)
{
    struct Row
    {
        unsigned int codePoint;
        U16 utf16;
        U8 utf8;
    };
    const Row rows[] = {
        {0x00, {0x00}, {0x00}},
        {0x7F, {0x7F}, {0x7F}},
        {0x80, {0x80}, {0xC2, 0x80}},
        {0x7FF, {0x7FF}, {0xDF, 0xBF}},
        {0x800, {0x800}, {0xE0, 0xA0, 0x80}},
        {0xD7FF, {0xD7FF}, {0xED, 0x9F, 0xBF}},
        {0xE000, {0xE000}, {0xEE, 0x80, 0x80}},
        {0xFFFF, {0xFFFF}, {0xEF, 0xBF, 0xBF}},
        {0x10000, {0xD800, 0xDC00}, {0xF0, 0x90, 0x80, 0x80}},
        {0x1F600, {0xD83D, 0xDE00}, {0xF0, 0x9F, 0x98, 0x80}},
        {0x10FFFF, {0xDBFF, 0xDFFF}, {0xF4, 0x8F, 0xBF, 0xBF}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.codePoint);
        const U32 utf32{row.codePoint};
        EXPECT_EQ(Converted(ConvertUTF32toUTF8, utf32), row.utf8);
        EXPECT_EQ(Converted(ConvertUTF32toUTF16, utf32), row.utf16);
        EXPECT_EQ(Converted(ConvertUTF16toUTF32, row.utf16), utf32);
        EXPECT_EQ(Converted(ConvertUTF16toUTF8, row.utf16), row.utf8);
        EXPECT_EQ(Converted(ConvertUTF8toUTF32, row.utf8), utf32);
        EXPECT_EQ(Converted(ConvertUTF8toUTF16, row.utf8), row.utf16);
        EXPECT_EQ(Count(ConvertUTF32toUTF8, utf32), row.utf8.size());
        EXPECT_EQ(Count(ConvertUTF8toUTF16, row.utf8), row.utf16.size());
        EXPECT_TRUE(IsLegalUTF8(row.utf8.data(), static_cast<int>(row.utf8.size())));
        // One unit short: the character is not written in part.
        EXPECT_TRUE(Converted(ConvertUTF32toUTF8, utf32, row.utf8.size() - 1).empty());
        EXPECT_TRUE(Converted(ConvertUTF32toUTF16, utf32, row.utf16.size() - 1).empty());
    }
}

TEST(UtfConversion, EndsAtMalformedInputAndCountsItAsNothing)
{
    const U8 rows[] = {
        {0x80},                   // continuation byte
        {0xC0, 0x80},             // overlong
        {0xC1, 0xBF},             //
        {0xE0, 0x9F, 0xBF},       //
        {0xF0, 0x8F, 0xBF, 0xBF}, //
        {0xED, 0xA0, 0x80},       // surrogate
        {0xF4, 0x90, 0x80, 0x80}, // above U+10FFFF
        {0xF5, 0x80, 0x80, 0x80},
        {0xFF},
        {0xC3},             // cut off
        {0xE2, 0x82},       //
        {0xF0, 0x9F, 0x98}, //
        {0xC3, 0x41},       // no continuation
        {0xF0, 0x9F, 0x98, 0xC0},
    };
    for (const U8& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row));
        EXPECT_FALSE(IsLegalUTF8(row.data(), static_cast<int>(row.size())));
        EXPECT_FALSE(IsLegalUTF8Sequence(row.data(), row.data() + row.size()));
        U8 text{'a'};
        text.insert(text.end(), row.begin(), row.end());
        EXPECT_EQ(Converted(ConvertUTF8toUTF32, text), U32{'a'});
        EXPECT_EQ(Converted(ConvertUTF8toUTF16, text), U16{'a'});
        EXPECT_EQ(Count(ConvertUTF8toUTF32, text), 0u);
    }
    for (const U16& row : {U16{'a', 0xD800}, U16{'a', 0xD800, 'b'}, U16{'a', 0xDC00, 'b'}}) {
        EXPECT_EQ(Converted(ConvertUTF16toUTF8, row), U8{'a'});
        EXPECT_EQ(Converted(ConvertUTF16toUTF32, row), U32{'a'});
        EXPECT_EQ(Count(ConvertUTF16toUTF8, row), 0u);
    }
    for (const unsigned int u : {0xD800u, 0xDFFFu}) {
        EXPECT_EQ(Converted(ConvertUTF32toUTF8, U32{'a', u, 'b'}), U8{'a'});
        EXPECT_EQ(Count(ConvertUTF32toUTF16, U32{'a', u}), 0u);
    }
}

TEST(UtfConversion, ReplacesCodePointsBeyondTheLastOne)
{
    for (const unsigned int u : {0x110000u, 0xFFFFFFFFu}) {
        EXPECT_EQ(Converted(ConvertUTF32toUTF8, U32{u}), (U8{0xEF, 0xBF, 0xBD}));
        EXPECT_EQ(Converted(ConvertUTF32toUTF16, U32{u}), U16{0xFFFD});
        EXPECT_EQ(Count(ConvertUTF32toUTF8, U32{u}), 3u);
    }
}

TEST(LegalUtf8, LooksAtTheFirstSequenceOfARangeOnly)
{
    const unsigned char acText[] = {0xC3, 0xA9, 0xFF};
    EXPECT_TRUE(IsLegalUTF8Sequence(acText, acText + 3));
    EXPECT_FALSE(IsLegalUTF8Sequence(acText, acText));
    for (const int iLength : {-1, 0, 1, 3, 5})
        EXPECT_FALSE(IsLegalUTF8(acText, iLength)) << iLength;
}

TEST(WideConversion, TakesLengths)
{
    const wchar_t acWide[] = L"a\u20ac\U0001F600";
    unsigned char acBytes[8];
    unsigned short auUnits[4];
    wchar_t acBack[3];
    ASSERT_EQ(UnicodeToUTF8(acWide, 3, nullptr, 0), 8u);
    ASSERT_EQ(UnicodeToUTF8(acWide, 3, acBytes, 8), 8u);
    ASSERT_EQ(UTF8ToUnicode(acBytes, 8, acBack, 3), 3u);
    EXPECT_EQ(std::wstring(acBack, 3), acWide);
    ASSERT_EQ(UnicodeToUTF16(acWide, 3, auUnits, 4), 4u);
    ASSERT_EQ(UTF16ToUnicode(auUnits, 4, acBack, 2), 2u); // no room for the third
    EXPECT_EQ(std::wstring(acBack, 2), L"a\u20ac");
    EXPECT_EQ(UnicodeToUTF8(nullptr, 0, nullptr, 0), 0u);
}

TEST(LargeCharacters, AreFoundAtAnyPlace)
{
    for (std::size_t uPlace = 0; uPlace < 20; ++uPlace) {
        std::string strText(20, '\x7f');
        std::wstring wstrText(20, L'\x7f');
        const auto* pBytes = reinterpret_cast<const unsigned char*>(strText.data());
        EXPECT_FALSE(DoesUTF8StrContainAnyCharsLargerThanOneByte(pBytes, 20));
        EXPECT_FALSE(DoesUnicodeStrContainAnyUTF8CharsLargerThanOneByte(wstrText.data(), 20));
        strText[uPlace] = '\x80';
        wstrText[uPlace] = L'\x80';
        EXPECT_TRUE(DoesUTF8StrContainAnyCharsLargerThanOneByte(pBytes, 20));
        EXPECT_FALSE(DoesUTF8StrContainAnyCharsLargerThanOneByte(pBytes, uPlace));
        EXPECT_TRUE(DoesUnicodeStrContainAnyUTF8CharsLargerThanOneByte(wstrText.data(), 20));
    }
    EXPECT_FALSE(DoesUnicodeStrContainAnyUTF8CharsLargerThanOneByte(L"", -1));
}
