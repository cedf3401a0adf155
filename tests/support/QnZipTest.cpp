#include "QnXmlLib16/support/QnZip.h"

#include "QnXmlLib16/values/BinaryData.h"
#include "tests/model/Failure.h"
#include "tests/support/Text.h"

#include <algorithm>
#include <gtest/gtest.h>

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
    auto* pBlock = std::copy_n(strBytes.data(), ulLength, new unsigned char[ulLength]) - ulLength;
    CQnZip::Decompress(&pBlock, &ulLength);
    return ToText(CBinaryData(pBlock, ulLength, true));
}

} // namespace

TEST(Compression, GoesThereAndBack)
{
    for (const int iLines : {10, 20000}) { // below and above the work buffer's size
        const std::string strText = MakeText(iLines);
        for (const CompressionType eType : kTypes) {
            const std::string strBytes = Compressed(strText, eType);
            EXPECT_LT(strBytes.size(), strText.size());
            EXPECT_EQ(Decompressed(strBytes + "trailing bytes"), strText);
        }
    }
    EXPECT_EQ(Compressed("", CompressionType_GZip), "");
    EXPECT_EQ(Decompressed(std::string("\x78\x9C\x03\0\0\0\0\x01", 8)), "");
}

// The output buffer is no larger than the input. The code is that of zlib's last call: full before
// the end was asked for (-5), or on the way to it (0).
TEST(Compression, OfDataThatDoesNotShrinkFailsAndKeepsTheData)
{
    for (const std::string strText : {"a", "a text of twenty-one."}) {
        const CBinaryData shared(strText.c_str());
        CBinaryData data(shared);
        ExpectFailure<CQnException>([&] { CQnZip::CompressData(data, CompressionType_GZip); },
                                    strText == "a" ? "Failed to compress data. [Error Code: -5]"
                                                   : "Failed to compress data. [Error Code: 0]");
        EXPECT_EQ(data, shared);
        auto pBlock = std::make_unique<unsigned char[]>(strText.size());
        unsigned char* pRaw = pBlock.get();
        unsigned long ulLength = strText.size();
        EXPECT_THROW(CQnZip::Compress(&pRaw, &ulLength, CompressionType_GZip), CQnException);
        EXPECT_TRUE(pRaw == pBlock.get() && ulLength == strText.size());
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
