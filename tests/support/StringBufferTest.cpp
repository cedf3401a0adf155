#include "QnXmlLib16/support/StringBuffer.h"

#include <gtest/gtest.h>

using namespace QnXmlLib16;

TEST(StringBuffer, HoldsTextWholeAcrossBlocks)
{
    for (const unsigned long ulBlockSize : {0ul, 1ul, 2ul, 17ul, 4096ul}) {
        SCOPED_TRACE(ulBlockSize);
        CStringBuffer buffer(ulBlockSize);
        std::string strExpected;
        for (int i = 0; i < 300; ++i) {
            const std::string strPiece(i % 41, static_cast<char>('a' + i % 26));
            buffer.Append(strPiece);
            buffer.Append('-');
            buffer.Append(strPiece.c_str());
            buffer.Append(strPiece.data(), strPiece.size());
            strExpected += strPiece + "-" + strPiece + strPiece;
            EXPECT_EQ(buffer.CopyText(), strExpected);
            if (i % 100 == 50) { // joined, and appended to again
                EXPECT_EQ(buffer.GetText(), strExpected);
            }
        }
        EXPECT_EQ(buffer.GetLength(), strExpected.size());
        const char* pszText = buffer.GetText();
        EXPECT_EQ(pszText, strExpected);
        EXPECT_EQ(buffer.GetText(), pszText); // is joined once
    }
}

TEST(StringBuffer, StopsAtAZeroByteSaveForASingleCharacter)
{
    CStringBuffer buffer;
    buffer.Append(std::string("a\0b", 3));
    buffer.Append('\0');
    buffer.Append("c");
    buffer.Append(static_cast<const char*>(nullptr));
    EXPECT_EQ(buffer.GetLength(), 3u);
    EXPECT_EQ(buffer.CopyText(), "a");
    EXPECT_EQ(std::string(buffer.GetText(), 4), std::string("a\0c\0", 4));
}

TEST(StringBuffer, EmptyKeepsAnOnlyBlockZeroed)
{
    CStringBuffer buffer(8);
    buffer.Append("1234");
    const char* pszText = buffer.GetText();
    buffer.Empty();
    EXPECT_EQ(buffer.GetLength(), 0u);
    EXPECT_EQ(buffer.GetText(), pszText);
    EXPECT_STREQ(pszText, "");
}

TEST(StringBuffer, TakesItsOwnTextAsArgument)
{
    CStringBuffer buffer(8);
    buffer.Append("abcdefghij");
    buffer.SetText(buffer.GetText());
    buffer.Append(buffer.GetText() + 5);
    EXPECT_STREQ(buffer.GetText(), "abcdefghijfghij");
    buffer.SetText(buffer.GetText() + 10);
    EXPECT_STREQ(buffer.GetText(), "fghij");
}
