#include "QnXmlLib16/values/Base64.h"

#include "QnXmlLib16/values/BinaryData.h"

#include <cstring>
#include <gtest/gtest.h>

using namespace QnXmlLib16;

namespace {

std::string Encoded(const std::string& strBytes)
{
    return CBase64().Encode(reinterpret_cast<const unsigned char*>(strBytes.data()),
                            static_cast<int>(strBytes.size()));
}

std::string Decoded(const std::string& strText)
{
    std::string strOut(strText.size() + 1, 'x');
    strOut.resize(CBase64().Decode(strText.c_str(), reinterpret_cast<unsigned char*>(&strOut[0])));
    return strOut;
}

} // namespace

// The rows are the test vectors of RFC 4648, section 10, and one of all six-bit groups.
TEST(Base64, GoesThereAndBack)
{
    struct Row
    {
        std::string bytes;
        const char* text;
    };
    const Row rows[] = {
        {"", ""},
        {"f", "Zg=="},
        {"fo", "Zm8="},
        {"foo", "Zm9v"},
        {"foob", "Zm9vYg=="},
        {"fooba", "Zm9vYmE="},
        {"foobar", "Zm9vYmFy"},
        {std::string("\0\x10\x83\x10\x51\x87\x20\x92\x8b\xff\xbf\xfe", 12), "ABCDEFGHIJKL/7/+"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(Encoded(row.bytes), row.text);
        EXPECT_EQ(Decoded(row.text), row.bytes);
    }
    std::string strAll;
    for (int i = 0; i < 1000; ++i)
        strAll += static_cast<char>(i * 31);
    EXPECT_EQ(Decoded(Encoded(strAll)), strAll);
    EXPECT_EQ(CBase64().Encode(nullptr, 5), "");
    EXPECT_EQ(CBase64().Encode(reinterpret_cast<const unsigned char*>("abc"), -1), "");
    EXPECT_EQ(CBase64().Decode("Zm9v", nullptr), 0u);
}

TEST(Base64, DecodesLeniently)
{
    struct Row
    {
        const char *text, *bytes;
    };
    const Row rows[] = {
        {" Zm\r\n9v\tYg = = ", "foob"},
        {"Zg", "f"},           // padding missing
        {"Z=g", "f"},          // padding in the middle
        {"Zm9vZ", "foo"},      // bits left over
        {"\xda\x67\xbd", "f"}, // Z, g and = with the top bit set
        {"Zm9v!", ""},         // a bad character drops everything
        {"Zm9v-", ""},
        {"\xa1", ""},
        {"====", ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(Decoded(row.text), row.bytes);
        CBinaryData data;
        data.SetAsBase64(row.text);
        EXPECT_NE(data.GetData(), nullptr); // bad text too leaves a holder
        EXPECT_EQ(data.GetLength(), std::strlen(row.bytes));
    }
    CBinaryData data("before");
    data.SetAsBase64("");
    EXPECT_EQ(data, CBinaryData());
    EXPECT_EQ(data.GetAsBase64(), "");
}
