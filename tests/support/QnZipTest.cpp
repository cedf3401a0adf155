#include "QnXmlLib16/support/QnZip.h"

#include "QnXmlLib16/values/BinaryData.h"
#include "tests/model/Failure.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <zlib.h>

using namespace QnXmlLib16;
using Model::ExpectFailure;

namespace {

// Text that compresses, but not to nothing: every line has a number of its own.
std::string MakeText(int iLines)
{
    std::string strResult;
    for (int i = 0; i < iLines; ++i)
        strResult += "<point number=\"" + std::to_string(i * 7919 % 10007) + "\"/>\n";
    return strResult;
}

CBinaryData Compressed(const std::string& strText, CompressionType eType)
{
    CBinaryData data(strText.c_str());
    CQnZip::CompressData(data, eType);
    return data;
}

std::string ToText(const unsigned char* pData, unsigned long ulLength)
{
    return std::string(reinterpret_cast<const char*>(pData), ulLength);
}

std::string Decompressed(const unsigned char* pData, unsigned long ulLength)
{
    auto pBlock = std::make_unique<unsigned char[]>(ulLength);
    std::copy_n(pData, ulLength, pBlock.get());
    unsigned char* pRaw = pBlock.release();
    CQnZip::Decompress(&pRaw, &ulLength);
    pBlock.reset(pRaw);
    return ToText(pRaw, ulLength);
}

} // namespace

TEST(Compression, GoesThereAndBack)
{
    for (const int iLines : {10, 1000, 20000}) { // below and above the work buffer's size
        const std::string strText = MakeText(iLines);
        for (const CompressionType e : {CompressionType_GZip, CompressionType_ZLib}) {
            const CBinaryData data = Compressed(strText, e);
            EXPECT_LT(data.GetLength(), strText.size());
            EXPECT_EQ(data[0], e == CompressionType_GZip ? 0x1F : 0x78);
            EXPECT_EQ(Decompressed(data.GetData(), data.GetLength()), strText);
        }
    }
}

TEST(Compression, LeavesDataAloneForNoType)
{
    for (const int iType : {0, 3, -1}) {
        const std::string strText = MakeText(10);
        CBinaryData data(strText.c_str());
        const unsigned char* pBefore = data.GetData();
        CQnZip::CompressData(data, static_cast<CompressionType>(iType));
        EXPECT_EQ(data.GetData(), pBefore);
        EXPECT_EQ(ToText(data.GetData(), data.GetLength()), strText);
    }
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
    const Row rows[] = {{"a", -5}, {"short", -5}, {"a text of twenty-one.", 0}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
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
    CBinaryData empty;
    CQnZip::CompressData(empty, CompressionType_GZip);
    EXPECT_EQ(empty, CBinaryData());
}

TEST(Decompression, PassesOtherDataThrough)
{
    for (const std::string& strText : {std::string("<?xml version=\"1.0\"?><a/>"), std::string(),
                                       std::string("\x1f\x8b"), std::string("\xe0\0\0\1\0", 5)})
        EXPECT_EQ(
            Decompressed(reinterpret_cast<const unsigned char*>(strText.data()), strText.size()),
            strText);
}

TEST(Decompression, ReadsCompressedEmptinessAndDropsWhatFollows)
{
    const unsigned char acEmpty[] = {0x78, 0x9C, 0x03, 0x00, 0x00, 0x00, 0x00, 0x01};
    EXPECT_EQ(Decompressed(acEmpty, sizeof acEmpty), "");
    const std::string strText = MakeText(50);
    CBinaryData data = Compressed(strText, CompressionType_ZLib);
    data.Append("trailing bytes");
    EXPECT_EQ(Decompressed(data.GetData(), data.GetLength()), strText);
}

// A damaged stream stays as it is. Bits that say nothing about the data (a time stamp, a system
// number) may differ, so the right text is the other good answer.
TEST(Decompression, OfDamagedDataLeavesItAsItIs)
{
    const std::string strText = MakeText(40);
    for (const CompressionType e : {CompressionType_GZip, CompressionType_ZLib}) {
        CBinaryData data = Compressed(strText, e);
        const std::string strWhole = ToText(data.GetData(), data.GetLength());
        for (std::size_t u = 0; u < strWhole.size(); ++u) {
            SCOPED_TRACE(u);
            EXPECT_EQ(Decompressed(data.GetData(), u), strWhole.substr(0, u));
            for (int iBit = 0; iBit < 8; ++iBit) {
                std::string strDamaged = strWhole;
                strDamaged[u] = static_cast<char>(strDamaged[u] ^ (1 << iBit));
                const std::string strResult = Decompressed(
                    reinterpret_cast<const unsigned char*>(strDamaged.data()), strDamaged.size());
                EXPECT_TRUE(strResult == strDamaged || strResult == strText);
            }
        }
    }
}
