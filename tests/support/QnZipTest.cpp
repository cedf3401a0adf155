#include "QnXmlLib16/support/QnZip.h"

#include "QnXmlLib16/values/BinaryData.h"
#include "tests/model/Failure.h"
#include "tests/support/Text.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>

using namespace QnXmlLib16;
using Model::ExpectFailure;

namespace {

constexpr CompressionType kTypes[] = {CompressionType_GZip, CompressionType_ZLib};

// Text that compresses, but not to nothing: every line has a number of its own.
std::string MakeText(int iLines)
{
    std::string strResult;
    for (int i = 0; i < iLines; ++i)
        strResult += "<point number=\"" + std::to_string(i * 7919 % 10007) + "\"/>\n";
    return strResult;
}

std::string Compressed(const std::string& strText, CompressionType eType)
{
    CBinaryData data(strText.c_str());
    CQnZip::CompressData(data, eType);
    return ToText(data);
}

std::string Decompressed(const std::string& strBytes)
{
    unsigned long ulLength = strBytes.size();
    auto pBlock = std::make_unique<unsigned char[]>(ulLength);
    std::copy(strBytes.begin(), strBytes.end(), pBlock.get());
    unsigned char* pRaw = pBlock.release();
    CQnZip::Decompress(&pRaw, &ulLength);
    pBlock.reset(pRaw);
    return std::string(reinterpret_cast<const char*>(pRaw), ulLength);
}

} // namespace

TEST(Compression, GoesThereAndBack)
{
    for (const int iLines : {10, 1000, 20000}) { // below and above the work buffer's size
        const std::string strText = MakeText(iLines);
        for (const CompressionType eType : kTypes) {
            const std::string strBytes = Compressed(strText, eType);
            EXPECT_LT(strBytes.size(), strText.size());
            EXPECT_EQ(strBytes[0], eType == CompressionType_GZip ? '\x1F' : '\x78');
            EXPECT_EQ(Decompressed(strBytes + "trailing bytes"), strText);
        }
        for (const int iType : {0, 3, -1}) // no types
            EXPECT_EQ(Compressed(strText, static_cast<CompressionType>(iType)), strText);
    }
    EXPECT_EQ(Compressed("", CompressionType_GZip), "");
    EXPECT_EQ(Decompressed(std::string("\x78\x9C\x03\0\0\0\0\x01", 8)), "");
}

// The output buffer is no larger than the input. The code is that of zlib's last call: full before
// the end was asked for (-5), or on the way to it (0).
TEST(Compression, OfDataThatDoesNotShrinkFailsAndKeepsTheData)
{
    struct Row
    {
        std::string text;
        int code;
    };
    for (const Row& row : {Row{"a", -5}, Row{"a text of twenty-one.", 0}}) {
        const CBinaryData shared(row.text.c_str());
        CBinaryData data(shared);
        ExpectFailure<CQnException>(
            [&] { CQnZip::CompressData(data, CompressionType_GZip); },
            "Failed to compress data. [Error Code: " + std::to_string(row.code) + "]");
        EXPECT_EQ(data, shared);

        auto pBlock = std::make_unique<unsigned char[]>(row.text.size());
        unsigned char* pRaw = pBlock.get();
        unsigned long ulLength = row.text.size();
        EXPECT_THROW(CQnZip::Compress(&pRaw, &ulLength, CompressionType_GZip), CQnException);
        EXPECT_EQ(pRaw, pBlock.get());
        EXPECT_EQ(ulLength, row.text.size());
    }
}

// A damaged stream stays as it is. Bits that say nothing about the data (a time stamp, a system
// number) may differ, so the right text is the other good answer.
TEST(Decompression, OfDamagedDataLeavesItAsItIs)
{
    for (const std::string& strOther : {std::string("<?xml version=\"1.0\"?><a/>"), std::string(),
                                        std::string("\x1f\x8b"), std::string("\xe0\0\0\1\0", 5)})
        EXPECT_EQ(Decompressed(strOther), strOther);
    const std::string strText = MakeText(40);
    for (const CompressionType eType : kTypes) {
        const std::string strWhole = Compressed(strText, eType);
        for (std::size_t u = 0; u < strWhole.size(); ++u) {
            SCOPED_TRACE(u);
            EXPECT_EQ(Decompressed(strWhole.substr(0, u)), strWhole.substr(0, u));
            for (int iBit = 0; iBit < 8; ++iBit) {
                std::string strDamaged = strWhole;
                strDamaged[u] = static_cast<char>(strDamaged[u] ^ (1 << iBit));
                const std::string strResult = Decompressed(strDamaged);
                EXPECT_TRUE(strResult == strDamaged || strResult == strText);
            }
        }
    }
}
