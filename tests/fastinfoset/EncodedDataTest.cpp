#include "QnXmlLib16/fastinfoset/FastInfosetBinaryData.h"

#include "QnXmlLib16/fastinfoset/internal/RestrictedAlphabet.h"
#include "QnXmlLib16/support/Exceptions.h"
#include "tests/fastinfoset/FiTools.h"
#include "tests/model/Failure.h"

#include <gtest/gtest.h>

using namespace Fi;

namespace {

CFastInfosetBinaryData Data(const char* pszOctets)
{
    std::string str = Bytes(pszOctets);
    return CFastInfosetBinaryData(reinterpret_cast<unsigned char*>(str.data()), str.size(), false);
}

std::string Encoded(unsigned long iAlgorithm, const char* pszText)
{
    CFastInfosetBinaryData data("what was there before");
    data.SetAsEncodedString(iAlgorithm, pszText);
    return Hex(ToString(data));
}

} // namespace

TEST(EncodedData, AValueHasTheOctetsOfItsAlgorithm)
{
    struct Row
    {
        unsigned long iAlgorithm;
        const char* pszText;
        const char* pszOctets;
        const char* pszBack; // null: as pszText
    };
    const Row rows[] = {
        {1, "01AB", "01 AB", nullptr},
        {1, "01ab", "01 AB", "01AB"},
        {2, "AQI=", "01 02", nullptr},
        {3, "-1", "FF FF", nullptr},
        {3, "258", "01 02", nullptr},
        {3, "-32768", "80 00", nullptr},
        {4, "1", "00 00 00 01", nullptr},
        {4, "4294967297", "00 00 00 01", "1"}, // only the low 32 bits are sent
        {5, "-2", "FF FF FF FF FF FF FF FE", nullptr},
        {6, "true", "38", nullptr},
        {6, "0", "30", "false"},
        {7, "1.5", "3F C0 00 00", nullptr},
        {7, "-INF", "FF 80 00 00", nullptr},
        {8, "1.5", "3F F8 00 00 00 00 00 00", nullptr},
        {9, "f81d4fae7dec11d0a76500a0c91e6bf6", "F8 1D 4F AE 7D EC 11 D0 A7 65 00 A0 C9 1E 6B F6",
         "F81D4FAE7DEC11D0A76500A0C91E6BF6"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.pszText);
        EXPECT_EQ(Encoded(row.iAlgorithm, row.pszText), row.pszOctets);
        EXPECT_EQ(Data(row.pszOctets).GetAsString(row.iAlgorithm),
                  row.pszBack ? row.pszBack : row.pszText);
    }
    EXPECT_EQ(Encoded(10, "a<b"), "61 3C 62");
    EXPECT_EQ(Encoded(2, "!"), ""); // no base 64: nothing is left of it
}

TEST(EncodedData, ANegativeIntComesBackAsALargeNumber)
{
    EXPECT_EQ(Encoded(4, "-1"), "FF FF FF FF");
    EXPECT_EQ(Data("FF FF FF FF").GetAsString(4), "4294967295");
}

TEST(EncodedData, ItemsAreSeparatedByABlank)
{
    EXPECT_EQ(Data("FF FF 01 02").GetAsString(3), "-1 258");
    EXPECT_EQ(Data("7*00 01 8*FF").GetAsString(4), "0 1 4294967295 4294967295");
    EXPECT_EQ(Data("7*00 01 8*FF").GetAsString(5), "1 -1");
    EXPECT_EQ(Data("3F C0 00 00 40 00 00 00").GetAsString(7), "1.5 2");
    EXPECT_EQ(Data("16*01 16*FF").GetAsString(9), "01010101010101010101010101010101 "
                                                  "FFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF");
}

TEST(EncodedData, BooleansOfOneOctetStandSideBySide)
{
    struct Row
    {
        const char* pszOctets;
        const char* pszText;
    };
    const Row rows[] = {
        {"38", "true"},
        {"2C", "truetrue"},
        {"0F", "truetruetruetrue"},
        {"40", ""}, // all four bits of the only octet are left out
        {"50", ""}, // more than there are
        {"7F 80", "truetruetruetrue true"},
        {"7B 00", "truefalsetruetrue false"},
        {"8F FF", "truetruetruetrue"},
        {"9F FF", ""},
        {"7F 00 80", "truetruetruetrue falsefalsefalsefalsefalsefalsefalsefalse true"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.pszOctets);
        EXPECT_EQ(Data(row.pszOctets).GetAsString(6), row.pszText);
    }
}

TEST(EncodedData, WhatNoAlgorithmTakesFailsAndLeavesNothing)
{
    struct Row
    {
        unsigned long iAlgorithm;
        const char* pszOctets;
        const char* pszMessage;
    };
    const Row rows[] = {
        {0, "00", "Unknown byte encoding."},
        {3, "00 00 00", "Invalid value for SHORT byte encoding."},
        {4, "00 00 00", "Invalid value for INT byte encoding."},
        {5, "00 00 00 00", "Invalid value for LONG byte encoding."},
        {7, "5*00", "Invalid value for FLOAT byte encoding."},
        {8, "4*00", "Invalid value for DOUBLE byte encoding."},
        {9, "17*00", "Invalid value for UUID byte encoding."},
        {10, "00", "Unknown byte encoding."},
        {11, "00", "Unknown byte encoding."},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.pszMessage);
        Model::ExpectFailure<CQnException>([&] { Data(row.pszOctets).GetAsString(row.iAlgorithm); },
                                           row.pszMessage);
        EXPECT_EQ(CFastInfosetBinaryData().GetAsString(row.iAlgorithm), "");
    }
    for (const unsigned long iAlgorithm : {0ul, 11ul}) {
        CFastInfosetBinaryData data("x");
        Model::ExpectFailure<CQnException>([&] { data.SetAsEncodedString(iAlgorithm, "1"); },
                                           "Unknown byte encoding.");
        EXPECT_EQ(data.GetLength(), 0u);
    }
    CFastInfosetBinaryData data("x");
    Model::ExpectFailure<CQnException>(
        [&] { data.SetAsEncodedString(9, "f81d4fae-7dec-11d0-a765-00a0c91e6bf6"); },
        "Invalid char in hex string [-]");
    EXPECT_EQ(data.GetLength(), 0u);
    data = CFastInfosetBinaryData("x");
    Model::ExpectFailure<CQnInvalidValueException>([&] { data.SetAsEncodedString(3, "32768"); },
                                                   "The value [32768] is to large to fit in a i2");
    EXPECT_EQ(data.GetLength(), 0u);
}

TEST(RestrictedAlphabets, PositionsTakeTheBitsThatTheSizeAsksFor)
{
    struct Row
    {
        std::string strAlphabet;
        const char* pszText;
        const char* pszOctets; // null: the writer has no such width
        const char* pszRead;   // octets for the reader alone
    };
    const std::string str130(130, 'y');
    const Row rows[] = {
        {"0123456789-+.e ", "123", "12 3F", nullptr},
        {"0123456789-+.e ", "1e2 ", "1D 2E", nullptr},
        {"01234567", "70", "70", nullptr},                    // 8 characters: 4 bits
        {str130 + "z", "yz", "00 82", nullptr},               // 8 bits
        {"ab", "aba", nullptr, "13"},                         // 2 bits: 00 01 00 11
        {"abc", "abcabc", nullptr, "18 6F"},                  // 00 01 10 00 01 10 11 11
        {"abcd", "dab", nullptr, "60 FF"},                    // 3 bits: 011 000 001 111 111 1
        {std::string(15, 'y') + "z", "zy", nullptr, "78 3F"}, // 5 bits: 01111 00000 11111
        {std::string(256, 'y') + "z", "z", nullptr, "80 7F"}, // 9 bits
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.pszText);
        std::string strOctets;
        if (row.pszOctets) {
            CAlphabetPacker(row.strAlphabet).Pack(row.pszText, strOctets);
            EXPECT_EQ(Hex(strOctets), row.pszOctets);
        }
        else {
            Model::ExpectFailure<CQnException>(
                [&] { CAlphabetPacker(row.strAlphabet).Pack(row.pszText, strOctets); },
                "Failed to write FastInfoset. Unsupported Feature in "
                "AppendRestrictedAlphabetString.");
            strOctets = Bytes(row.pszRead);
        }
        std::string strText;
        EXPECT_TRUE(UnpackText(row.strAlphabet,
                               reinterpret_cast<const unsigned char*>(strOctets.data()),
                               strOctets.size(), strText));
        EXPECT_EQ(strText, row.pszText);
    }
}

TEST(RestrictedAlphabets, APositionOutsideOrAllOnesInTheWrongPlaceIsRefused)
{
    struct Row
    {
        const char* pszOctets;
        std::string strAlphabet;
        bool bTaken;
    };
    const Row rows[] = {
        {"12 F3", "0123456789-+.e ", false}, // ones in a high half
        {"1F 23", "0123456789-+.e ", true},  // ones in a low half end the text
        {"18", "01234567", false},
        {"00 FF", std::string(200, 'y'), false},
        {"00 C8", std::string(200, 'y'), false},
        {"00 C7", std::string(200, 'y'), true},
        {"A0", "abcde", false}, // position 5 of 0 to 4
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.pszOctets);
        const std::string strOctets = Bytes(row.pszOctets);
        std::string strText;
        EXPECT_EQ(UnpackText(row.strAlphabet,
                             reinterpret_cast<const unsigned char*>(strOctets.data()),
                             strOctets.size(), strText),
                  row.bTaken);
    }
}

TEST(RestrictedAlphabets, AnAlphabetHasTwoCharactersAtLeast)
{
    for (const std::size_t nSize : {std::size_t{0}, std::size_t{1}, std::size_t{1048577}}) {
        std::string strOut;
        const std::string strAlphabet(nSize, 'y');
        Model::ExpectFailure<CQnException>(
            [&] { CAlphabetPacker packer(strAlphabet); },
            "Failed to write FastInfoset. Invalid Restricted Alphabet. Alphabet must contain "
            "between 2 and 2^20 characters.");
        const unsigned char uOctet = 0;
        Model::ExpectFailure<CQnException>(
            [&] { UnpackText(strAlphabet, &uOctet, 1, strOut); },
            "Failed to parse FastInfoset. Invalid Encoding of Restricted Alphabet. Alphabet must "
            "contain between 2 and 2^20 characters.");
    }
    std::string strOut;
    Model::ExpectFailure<CQnException>(
        [&] { CAlphabetPacker("0123456789-+.e ").Pack("1E2", strOut); },
        "Failed to write FastInfoset. Invalid character not found "
        "for Restricted Alphabet.");
}
