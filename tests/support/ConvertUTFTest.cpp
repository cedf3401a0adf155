#include "QnXmlLib16/support/ConvertUTF.h"
#include "QnXmlLib16/support/UTFFunctions.h"

#include <gtest/gtest.h>
#include <string>
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

// The units come out; without a target they are counted, if the source is well-formed to its end.
template <class TTarget, class TSource>
void Expect(unsigned long (*pfnConvert)(const TSource*, const TSource*, TTarget*, TTarget*),
            const std::vector<TSource>& vecSource, const std::vector<TTarget>& vecExpected,
            bool bWhole = true)
{
    SCOPED_TRACE(testing::PrintToString(vecSource));
    std::vector<TTarget> vecTarget(100);
    const TSource* const p = vecSource.data();
    const TSource* const pEnd = p + vecSource.size();
    vecTarget.resize(pfnConvert(p, pEnd, vecTarget.data(), vecTarget.data() + 100));
    EXPECT_EQ(vecTarget, vecExpected);
    EXPECT_EQ(pfnConvert(p, pEnd, nullptr, nullptr), bWhole ? vecExpected.size() : 0);
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
    Expect(ConvertUTF32toUTF8, utf32, utf8);
    Expect(ConvertUTF32toUTF16, utf32, utf16);
    Expect(ConvertUTF16toUTF32, utf16, utf32);
    Expect(ConvertUTF16toUTF8, utf16, utf8);
    Expect(ConvertUTF8toUTF32, utf8, utf32);
    Expect(ConvertUTF8toUTF16, utf8, utf16);
    // Without room no character is written in part.
    for (std::size_t uRoom = 0; uRoom < utf8.size(); ++uRoom) {
        U8 part(utf8.size());
        part.resize(ConvertUTF32toUTF8(utf32.data(), utf32.data() + utf32.size(), part.data(),
                                       part.data() + uRoom));
        EXPECT_EQ(part, U8(utf8.begin(), utf8.begin() + static_cast<long>(part.size())));
        EXPECT_TRUE(utf8[part.size()] < 0x80 || utf8[part.size()] >= 0xC0) << uRoom;
        EXPECT_GT(part.size() + 4, uRoom);
    }
}

TEST(UtfConversion, EndsAtMalformedInputAndCountsItAsNothing)
{
    const char* const apszMalformed[] = {
        // Continuations, overlong forms, a surrogate, above U+10FFFF.
        "\x80", "\xFF", "\xC1\xBF", "\xE0\x9F\xBF", "\xF0\x8F\xBF\xBF", "\xED\xA0\x80",
        "\xF4\x90\x80\x80", "\xF5\x80\x80\x80",
        // Cut off, or without a continuation.
        "\xC3", "\xF0\x9F\x98", "\xC3\x41", "\xF0\x9F\x98\xC0"};
    for (const char* const psz : apszMalformed) {
        const U8 text = Units<U8>(std::string("a") + psz);
        EXPECT_FALSE(IsLegalUTF8(text.data() + 1, static_cast<int>(text.size()) - 1));
        EXPECT_FALSE(IsLegalUTF8Sequence(text.data() + 1, text.data() + text.size()));
        Expect(ConvertUTF8toUTF32, text, U32{'a'}, false);
        Expect(ConvertUTF8toUTF16, text, U16{'a'}, false);
    }
    for (const U16& row : {U16{'a', 0xD800}, U16{'a', 0xD800, 'b'}, U16{'a', 0xDC00, 'b'}})
        Expect(ConvertUTF16toUTF8, row, U8{'a'}, false);
    for (const unsigned int u : {0xD800u, 0xDFFFu})
        Expect(ConvertUTF32toUTF8, U32{'a', u, 'b'}, U8{'a'}, false);
    // Code points beyond the last one are replaced.
    Expect(ConvertUTF32toUTF8, U32{0x110000, 0xFFFFFFFF}, U8{0xEF, 0xBF, 0xBD, 0xEF, 0xBF, 0xBD});
    Expect(ConvertUTF32toUTF16, U32{0x110000}, U16{0xFFFD});
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
    EXPECT_EQ(UnicodeToUTF16(acWide, 3, auUnits, 3), 2u); // no room for half a character
    ASSERT_EQ(UnicodeToUTF16(acWide, 3, auUnits, 4), 4u);
    ASSERT_EQ(UTF16ToUnicode(auUnits, 4, acBack, 2), 2u); // no room for the third
    for (int iPlace = 0; iPlace < 20; ++iPlace) {
        U8 bytes(20, 0x7F);
        bytes[static_cast<std::size_t>(iPlace)] = 0x80;
        const std::wstring wstrText(bytes.begin(), bytes.end());
        for (const int iLength : {iPlace, iPlace + 1, 20}) {
            EXPECT_EQ(DoesUTF8StrContainAnyCharsLargerThanOneByte(bytes.data(), iLength),
                      iLength > iPlace);
            EXPECT_EQ(DoesUnicodeStrContainAnyUTF8CharsLargerThanOneByte(wstrText.data(), iLength),
                      iLength > iPlace);
        }
    }
}
