#include "QnXmlLib16/support/ConvertUTF.h"
#include "QnXmlLib16/support/UTFFunctions.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

using namespace QnXmlLib16;

namespace {

using U8 = std::vector<unsigned char>;
using U16 = std::vector<unsigned short>;
using U32 = std::vector<unsigned int>;

template <class TUnits, class TString>
TUnits Units(const TString& str)
{
    return TUnits(str.begin(), str.end());
}

// The units that fit, and what the function counts without a target.
template <class TTarget, class TSource>
std::pair<std::vector<TTarget>, unsigned long>
Converted(unsigned long (*pfn)(const TSource*, const TSource*, TTarget*, TTarget*),
          const std::vector<TSource>& vecSource, std::size_t uRoom = 100)
{
    std::vector<TTarget> vecTarget(uRoom + 1);
    const TSource* const p = vecSource.data();
    const TSource* const pEnd = p + vecSource.size();
    vecTarget.resize(pfn(p, pEnd, vecTarget.data(), vecTarget.data() + uRoom));
    return {vecTarget, pfn(p, pEnd, nullptr, nullptr)};
}

template <class TUnits>
std::pair<TUnits, unsigned long> Whole(const TUnits& units)
{
    return {units, units.size()};
}

template <class TUnits>
std::pair<TUnits, unsigned long> Refused(const TUnits& units)
{
    return {units, 0};
}

} // namespace

// The compiler knows the right forms.
TEST(UtfConversion, GoesBothWaysAtEveryLengthBorder)
{
    using namespace std::string_literals;
    const U32 utf32 =
        Units<U32>(U"\0\u007F\u0080\u07FF\u0800\uD7FF\uE000\uFFFF\U00010000\U0001F600\U0010FFFF"s);
    const U16 utf16 =
        Units<U16>(u"\0\u007F\u0080\u07FF\u0800\uD7FF\uE000\uFFFF\U00010000\U0001F600\U0010FFFF"s);
    const U8 utf8 =
        Units<U8>("\0\u007F\u0080\u07FF\u0800\uD7FF\uE000\uFFFF\U00010000\U0001F600\U0010FFFF"s);
    EXPECT_EQ(Converted(ConvertUTF32toUTF8, utf32), Whole(utf8));
    EXPECT_EQ(Converted(ConvertUTF32toUTF16, utf32), Whole(utf16));
    EXPECT_EQ(Converted(ConvertUTF16toUTF32, utf16), Whole(utf32));
    EXPECT_EQ(Converted(ConvertUTF16toUTF8, utf16), Whole(utf8));
    EXPECT_EQ(Converted(ConvertUTF8toUTF32, utf8), Whole(utf32));
    EXPECT_EQ(Converted(ConvertUTF8toUTF16, utf8), Whole(utf16));
    // Without room no character is written in part.
    for (std::size_t uRoom = 0; uRoom < utf8.size(); ++uRoom) {
        const U8 part = Converted(ConvertUTF32toUTF8, utf32, uRoom).first;
        EXPECT_EQ(part, U8(utf8.begin(), utf8.begin() + static_cast<long>(part.size())));
        EXPECT_TRUE(utf8[part.size()] < 0x80 || utf8[part.size()] >= 0xC0) << uRoom;
        EXPECT_GT(part.size() + 4, uRoom);
    }
    EXPECT_TRUE(Converted(ConvertUTF32toUTF16, U32{0x10000}, 1).first.empty());
}

TEST(UtfConversion, EndsAtMalformedInputAndCountsItAsNothing)
{
    const char* const apszMalformed[] = {
        // Continuations, overlong forms, a surrogate, above U+10FFFF.
        "\x80", "\xFF", "\xC0\x80", "\xC1\xBF", "\xE0\x9F\xBF", "\xF0\x8F\xBF\xBF", "\xED\xA0\x80",
        "\xF4\x90\x80\x80", "\xF5\x80\x80\x80",
        // Cut off, or without a continuation.
        "\xC3", "\xE2\x82", "\xF0\x9F\x98", "\xC3\x41", "\xF0\x9F\x98\xC0"};
    for (const char* const psz : apszMalformed) {
        const U8 text = Units<U8>(std::string("a") + psz);
        SCOPED_TRACE(testing::PrintToString(text));
        EXPECT_FALSE(IsLegalUTF8(text.data() + 1, static_cast<int>(text.size()) - 1));
        EXPECT_FALSE(IsLegalUTF8Sequence(text.data() + 1, text.data() + text.size()));
        EXPECT_EQ(Converted(ConvertUTF8toUTF32, text), Refused(U32{'a'}));
        EXPECT_EQ(Converted(ConvertUTF8toUTF16, text), Refused(U16{'a'}));
    }
    for (const U16& row : {U16{'a', 0xD800}, U16{'a', 0xD800, 'b'}, U16{'a', 0xDC00, 'b'}})
        EXPECT_EQ(Converted(ConvertUTF16toUTF8, row), Refused(U8{'a'}));
    for (const unsigned int u : {0xD800u, 0xDFFFu})
        EXPECT_EQ(Converted(ConvertUTF32toUTF8, U32{'a', u, 'b'}), Refused(U8{'a'}));
    // Code points beyond the last one are replaced.
    EXPECT_EQ(Converted(ConvertUTF32toUTF8, U32{0x110000, 0xFFFFFFFF}),
              Whole(U8{0xEF, 0xBF, 0xBD, 0xEF, 0xBF, 0xBD}));
    EXPECT_EQ(Converted(ConvertUTF32toUTF16, U32{0x110000}), Whole(U16{0xFFFD}));
    // Of a range the first sequence counts, of a length all of it.
    const unsigned char acText[] = {0xC3, 0xA9, 0xFF};
    EXPECT_TRUE(IsLegalUTF8Sequence(acText, acText + 3));
    EXPECT_FALSE(IsLegalUTF8Sequence(acText, acText));
    for (const int iLength : {-1, 0, 1, 2, 3, 5})
        EXPECT_EQ(IsLegalUTF8(acText, iLength), iLength == 2) << iLength;
}

TEST(WideConversion, TakesLengths)
{
    const wchar_t acWide[] = L"a\u20ac\U0001F600";
    unsigned char acBytes[8];
    unsigned short auUnits[4];
    wchar_t acBack[3];
    ASSERT_EQ(UnicodeToUTF8(acWide, 3, acBytes, 8), 8u);
    ASSERT_EQ(UTF8ToUnicode(acBytes, 8, acBack, 3), 3u);
    EXPECT_EQ(std::wstring(acBack, 3), acWide);
    ASSERT_EQ(UnicodeToUTF16(acWide, 3, auUnits, 4), 4u);
    ASSERT_EQ(UTF16ToUnicode(auUnits, 4, acBack, 2), 2u); // no room for the third
    for (int iPlace = 0; iPlace < 20; ++iPlace) {
        U8 bytes(20, 0x7F);
        bytes[static_cast<std::size_t>(iPlace)] = 0x80;
        const std::wstring wstrText(bytes.begin(), bytes.end());
        for (const int iLength : {iPlace, iPlace + 1, 20}) {
            const bool bLarge = iLength > iPlace;
            EXPECT_EQ(DoesUTF8StrContainAnyCharsLargerThanOneByte(
                          bytes.data(), static_cast<unsigned long>(iLength)),
                      bLarge);
            EXPECT_EQ(DoesUnicodeStrContainAnyUTF8CharsLargerThanOneByte(wstrText.data(), iLength),
                      bLarge);
        }
    }
}
