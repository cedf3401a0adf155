#include "QnXmlLib16/support/Encoder.h"

#include "tests/support/Scoped.h"
#include "tests/support/Text.h"

#include <cstring>
#include <gtest/gtest.h>
#include <stdexcept>

using namespace QnXmlLib16;

namespace {

std::wstring ToWide(const CBinaryData& data)
{
    std::wstring wstrResult(data.GetLength() / sizeof(wchar_t), L'\0');
    std::memcpy(&wstrResult[0], data.GetData(), data.GetLength());
    return wstrResult;
}

std::string FromUtf8(const std::string& strText)
{
    return CEncoder::Utf8ToLocalCodePage(reinterpret_cast<const unsigned char*>(strText.data()),
                                         static_cast<int>(strText.size()), nullptr, 0, nullptr, 0);
}

} // namespace

TEST(Encoder, ReadsUtf8AsTheLocaleHasIt)
{
    struct Row
    {
        std::string text;
        const char *inC, *inUtf8;
    };
    const Row rows[] = {
        {"", "", ""},
        {"\u20ac\U0001F600 and plain text of some length \u00e9!",
         "?? and plain text of some length ?!",
         "\u20ac\U0001F600 and plain text of some length \u00e9!"},
        // Ends at the first zero character and ahead of malformed input.
        {std::string("a\0b", 3), "a", "a"},
        {std::string("\u00e9\0b", 4), "?", "\u00e9"},
        {"a\u00e9\xff ", "a?", "a\u00e9"},
        {"\xc0\x80", "", ""},
    };
    for (const char* pszLocale : {"C", "C.UTF-8"}) {
        const Scoped::Locale locale(LC_CTYPE, pszLocale);
        ASSERT_TRUE(locale.IsSet());
        for (const Row& row : rows) {
            SCOPED_TRACE(row.text);
            const std::string strExpected = pszLocale[1] ? row.inUtf8 : row.inC;
            EXPECT_EQ(FromUtf8(row.text), strExpected);
            EXPECT_EQ(CEncoder::Utf8ToLocalCodePage(row.text.c_str(), nullptr, 0, nullptr, 0),
                      strExpected);
            std::string strTarget = "before";
            CEncoder::AssignUtf8(strTarget, row.text.data(), row.text.size());
            EXPECT_EQ(strTarget, strExpected);
        }
    }
    for (std::size_t uPlace = 0; uPlace < 40; ++uPlace) { // at any place of a machine word
        std::string strText(40, '\x7f');
        for (const char c : {'\0', '\x80'}) {
            strText[uPlace] = c;
            EXPECT_EQ(FromUtf8(strText), std::string(uPlace, '\x7f'));
        }
        strText[uPlace] = '\x01';
        EXPECT_EQ(FromUtf8(strText), strText);
    }
}

TEST(Encoder, CountsNoTextAsEmpty)
{
    EXPECT_EQ(CEncoder::Utf8ToLocalCodePage(nullptr), "");
    EXPECT_EQ(CEncoder::Utf8ToLocalCodePage(reinterpret_cast<const unsigned char*>("abc"), -1), "");
    EXPECT_EQ(CEncoder::LocalCodePageToUtf8Binary(nullptr), CBinaryData());
    EXPECT_EQ(CEncoder::LocalCodePageToUnicodeBinary(nullptr), CBinaryData());
    EXPECT_EQ(CEncoder::UnicodeToUtf8Binary(nullptr), CBinaryData());
}

TEST(Encoder, WritesWhatTheLocaleRejectsAsQuestionMarks)
{
    struct Row
    {
        const char* text;
        std::wstring inC, inUtf8;
    };
    const Row rows[] = {
        {"caf\xc3\xa9 \xe2\x82\xac", L"caf?? ???", L"caf\u00e9 \u20ac"},
        {"a\xff z", L"a? z", L"a? z"},
        {"a\xe2\x82", L"a??", L"a??"}, // cut off
        {"a\xe2\x82z", L"a??z", L"a??z"},
    };
    for (const char* pszLocale : {"C", "C.UTF-8"}) {
        const Scoped::Locale locale(LC_CTYPE, pszLocale);
        ASSERT_TRUE(locale.IsSet());
        for (const Row& row : rows) {
            SCOPED_TRACE(row.text);
            const std::wstring& wstrExpected = pszLocale[1] ? row.inUtf8 : row.inC;
            EXPECT_EQ(ToWide(CEncoder::LocalCodePageToUnicodeBinary(row.text)), wstrExpected);
            const CBinaryData utf8 = CEncoder::LocalCodePageToUtf8Binary(row.text);
            EXPECT_EQ(utf8, CEncoder::UnicodeToUtf8Binary(wstrExpected.c_str()));
            EXPECT_EQ(utf8.GetData()[utf8.GetLength()], 0); // a terminator behind the bytes
        }
    }
    const wchar_t acBeyond[] = {L'a', 0x20AC, 0x110000, 0};
    EXPECT_EQ(ToText(CEncoder::UnicodeToUtf8Binary(acBeyond)), "a\u20ac\uFFFD");
    const wchar_t acSurrogate[] = {L'a', static_cast<wchar_t>(0xD800), 0};
    EXPECT_EQ(CEncoder::UnicodeToUtf8Binary(acSurrogate), CBinaryData());
}

TEST(Encoder, PassesBytesUnchangedInAsciiOnlyModeSaveToWideText)
{
    const Scoped::AsciiOnly mode;
    const std::string strBytes("a\xff\x80\xc3\xa9\0b", 7);
    EXPECT_EQ(FromUtf8(strBytes), strBytes);
    EXPECT_EQ(ToText(CEncoder::LocalCodePageToUtf8Binary(strBytes.c_str())), strBytes.substr(0, 5));
    EXPECT_EQ(ToWide(CEncoder::LocalCodePageToUnicodeBinary("a\xff")), L"a?");
}

TEST(Encoder, Utf16IsRefused)
{
    try {
        CEncoder::Utf16ToLocalCodePage(nullptr, 0);
        ADD_FAILURE();
    }
    catch (const std::logic_error& e) {
        EXPECT_STREQ(e.what(), "basic_string::_M_construct null not valid");
    }
}
