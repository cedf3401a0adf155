#include "QnXmlLib16/support/Encoder.h"

#include "tests/support/Scoped.h"
#include "tests/support/Text.h"

#include <cstring>
#include <gmock/gmock.h>
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

// By way of each function that reads UTF-8 of a length.
std::string FromUtf8(const std::string& strText)
{
    std::string strTarget = "before";
    CEncoder::AssignUtf8(strTarget, strText.data(), strText.size());
    EXPECT_EQ(CEncoder::Utf8ToLocalCodePage(reinterpret_cast<const unsigned char*>(strText.data()),
                                            static_cast<int>(strText.size()), nullptr, 0, nullptr,
                                            0),
              strTarget);
    return strTarget;
}

} // namespace

TEST(Encoder, WritesWhatTheLocaleLacksOrRejectsAsQuestionMarks)
{
    const std::string strUtf8 = "\u20ac\U0001F600 and plain text of some length \u00e9!";
    const struct
    {
        const char* local;
        std::wstring inC, inUtf8;
    } rows[] = {
        {"caf\xc3\xa9 \xe2\x82\xac", L"caf?? ???", L"caf\u00e9 \u20ac"},
        {"a\xff z", L"a? z", L"a? z"},
        {"a\xe2\x82", L"a??", L"a??"}, // cut off
        {"a\xe2\x82z", L"a??z", L"a??z"},
    };
    for (const bool bUtf8 : {false, true}) {
        const Scoped::Locale locale(LC_CTYPE, bUtf8 ? "C.UTF-8" : "C");
        ASSERT_TRUE(locale.IsSet());
        EXPECT_EQ(FromUtf8(strUtf8), bUtf8 ? strUtf8 : "?? and plain text of some length ?!");
        // Ends at the first zero character and ahead of malformed input.
        const std::string strAccent = bUtf8 ? "\u00e9" : "?";
        EXPECT_EQ(FromUtf8(std::string("\u00e9\0b", 4)), strAccent);
        EXPECT_EQ(FromUtf8("a\u00e9\xff "), "a" + strAccent);
        EXPECT_EQ(CEncoder::Utf8ToLocalCodePage("a\u00e9\xc0\x80", nullptr, 0, nullptr, 0),
                  "a" + strAccent);
        for (const auto& row : rows) {
            SCOPED_TRACE(row.local);
            const std::wstring& wstrExpected = bUtf8 ? row.inUtf8 : row.inC;
            EXPECT_EQ(ToWide(CEncoder::LocalCodePageToUnicodeBinary(row.local)), wstrExpected);
            const CBinaryData utf8 = CEncoder::LocalCodePageToUtf8Binary(row.local);
            EXPECT_EQ(utf8, CEncoder::UnicodeToUtf8Binary(wstrExpected.c_str()));
            EXPECT_EQ(utf8.GetData()[utf8.GetLength()], 0); // a terminator behind the bytes
        }
    }
    const wchar_t acBeyond[] = {L'a', 0x20AC, 0x110000, 0};
    EXPECT_EQ(ToText(CEncoder::UnicodeToUtf8Binary(acBeyond)), "a\u20ac\uFFFD");
    const wchar_t acSurrogate[] = {L'a', static_cast<wchar_t>(0xD800), 0};
    EXPECT_EQ(CEncoder::UnicodeToUtf8Binary(acSurrogate), CBinaryData());
}

TEST(Encoder, CountsNoTextAsEmpty)
{
    EXPECT_EQ(CEncoder::Utf8ToLocalCodePage(nullptr), "");
    EXPECT_EQ(CEncoder::Utf8ToLocalCodePage(reinterpret_cast<const unsigned char*>("abc"), -1), "");
    EXPECT_EQ(CEncoder::LocalCodePageToUtf8Binary(nullptr), CBinaryData());
    EXPECT_EQ(CEncoder::LocalCodePageToUnicodeBinary(nullptr), CBinaryData());
    EXPECT_EQ(CEncoder::UnicodeToUtf8Binary(nullptr), CBinaryData());
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
    EXPECT_THAT(
        [] { CEncoder::Utf16ToLocalCodePage(nullptr, 0); },
        testing::ThrowsMessage<std::logic_error>("basic_string::_M_construct null not valid"));
}
