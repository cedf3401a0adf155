#include "QnXmlLib16/fastinfoset/FastInfosetBinaryData.h"

#include "QnXmlLib16/fastinfoset/internal/RestrictedAlphabet.h"
#include "tests/fastinfoset/FiTools.h"
#include "tests/model/Failure.h"

using namespace Fi;

namespace {

CFastInfosetBinaryData Data(const std::string& strOctets)
{
    return CFastInfosetBinaryData(ToData(Bytes(strOctets)));
}

} // namespace

TEST(EncodedData, AValueHasTheOctetsOfItsAlgorithm)
{
    // The algorithm; the text, if it is written; its octets; what is read of them, if another text.
    for (const auto& [strAlgorithm, strText, strOctets, strRead] : Table<4>(R"(
        1 | 01ab        | 01 AB                    | 01AB
        2 | AQI=        | 01 02
        2 | !           |
        3 | -32768      | 80 00
        3 |             | FF FF 01 02              | -1 258
        // The low 32 bits are sent, and read without their sign.
        4 | 4294967297  | 00 00 00 01              | 1
        4 | -1          | FF FF FF FF              | 4294967295
        5 | -2          | 7*FF FE
        5 |             | 7*00 01 8*FF             | 1 -1
        // The booleans of one octet stand side by side; up to all of the last one are left out.
        6 | 0           | 30                       | false
        6 |             | 0F                       | truetruetruetrue
        6 |             | 7B 00                    | truefalsetruetrue false
        6 |             | 8F FF                    | truetruetruetrue
        6 |             | 7F 00 80
        | truetruetruetrue falsefalsefalsefalsefalsefalsefalsefalse true
        6 |             | 40
        6 |             | 9F FF
        7 | -INF        | FF 80 00 00
        7 |             | 3F C0 00 00 40 00 00 00  | 1.5 2
        8 | 1.5         | 3F F8 6*00
        9 | f81d4fae7dec11d0a76500a0c91e6bf6 | F8 1D 4F AE 7D EC 11 D0 A7 65 00 A0 C9 1E 6B F6
                                                   | F81D4FAE7DEC11D0A76500A0C91E6BF6
        9 |             | 16*01 16*FF
        | 01010101010101010101010101010101 FFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF
    )")) {
        SCOPED_TRACE(strOctets);
        const unsigned long iAlgorithm = std::stoul(strAlgorithm);
        if (!strText.empty()) {
            CFastInfosetBinaryData data("what was there before");
            data.SetAsEncodedString(iAlgorithm, strText.c_str());
            EXPECT_EQ(ToText(data), Bytes(strOctets));
        }
        if (!strOctets.empty()) {
            EXPECT_EQ(Data(strOctets).GetAsString(iAlgorithm), strRead.empty() ? strText : strRead);
        }
        EXPECT_EQ(CFastInfosetBinaryData().GetAsString(iAlgorithm), "");
    }
}

TEST(EncodedData, WhatNoAlgorithmTakesFailsAndLeavesNothing)
{
    for (const auto& row : Table<3>(R"(
        0  | 00    | Unknown byte encoding.
        3  | 3*00  | Invalid value for SHORT byte encoding.
        4  | 3*00  | Invalid value for INT byte encoding.
        5  | 4*00  | Invalid value for LONG byte encoding.
        7  | 5*00  | Invalid value for FLOAT byte encoding.
        8  | 4*00  | Invalid value for DOUBLE byte encoding.
        9  | 17*00 | Invalid value for UUID byte encoding.
        11 | 00    | Unknown byte encoding.
    )"))
        Model::ExpectFailure<CQnException>([&] { Data(row[1]).GetAsString(std::stoul(row[0])); },
                                           row[2]);
    CFastInfosetBinaryData data("x");
    Model::ExpectFailure<CQnInvalidValueException>([&] { data.SetAsEncodedString(3, "32768"); },
                                                   "The value [32768] is to large to fit in a i2");
    EXPECT_EQ(data.GetLength(), 0u);
    for (const auto& row : Table<3>(R"(
        0  | 1          | Unknown byte encoding.
        11 | 1          | Unknown byte encoding.
        9  | f81d4fae-7 | Invalid char in hex string [-]
    )")) {
        data.SetBuffer("x");
        Model::ExpectFailure<CQnException>(
            [&] { data.SetAsEncodedString(std::stoul(row[0]), row[1].c_str()); }, row[2]);
        EXPECT_EQ(data.GetLength(), 0u);
    }
}

TEST(RestrictedAlphabets, PositionsTakeTheBitsThatTheSizeAsksFor)
{
    // The alphabet; the text, empty where the octets are refused; the octets; "read" where the
    // writer lacks the width.
    for (const auto& [strCell, strText, strOctets, strRoad] : Table<4>(R"(
        '0123456789-+.e ' | 1e2 | 1D 2F
        // Ones in a high half, and in a low half, where they end the text.
        '0123456789-+.e ' |     | 12 F3
        '0123456789-+.e ' | 1   | 1F 23 | read
        '01234567'        |     | 18
        // Whole octets, in which nothing is filled up.
        130*'y' 'z'       | yz  | 00 82
        // 00 01 00 11; 011 000 001 111 111 1; position 5 of 0 to 4; 9 bits.
        'ab'              | aba | 13    | read
        'abcd'            | dab | 60 FF | read
        'abcde'           |     | A0
        256*'y' 'z'       | z   | 80 7F | read
    )")) {
        SCOPED_TRACE(strOctets);
        const std::string strAlphabet = Bytes(strCell);
        const std::string strBytes = Bytes(strOctets);
        std::string strPacked = strBytes;
        if (!strText.empty() && strRoad.empty())
            CAlphabetPacker(strAlphabet).Pack(strText, strPacked);
        EXPECT_EQ(strPacked, strBytes);
        std::string strRead;
        EXPECT_EQ(UnpackText(strAlphabet, reinterpret_cast<const unsigned char*>(strBytes.data()),
                             strBytes.size(), strRead),
                  !strText.empty());
        EXPECT_EQ(strText.empty() ? "" : strRead, strText);
    }
}

TEST(RestrictedAlphabets, WhatIsNoneOrHasNoFormIsRefused)
{
    std::string str;
    for (const std::size_t nSize : {1, 1048577}) {
        const std::string strAlphabet(nSize, 'y');
        Model::ExpectFailure<CQnException>(
            [&] { CAlphabetPacker packer(strAlphabet); },
            "Failed to write FastInfoset. Invalid Restricted Alphabet. Alphabet must contain "
            "between 2 and 2^20 characters.");
        Model::ExpectFailure<CQnException>(
            [&] { UnpackText(strAlphabet, nullptr, 0, str); },
            "Failed to parse FastInfoset. Invalid Encoding of Restricted Alphabet. Alphabet must "
            "contain between 2 and 2^20 characters.");
    }
    for (const std::size_t nSize : {2, 7, 16, 127, 256})
        Model::ExpectFailure<CQnException>(
            [&] { CAlphabetPacker packer(std::string(nSize, 'y')); },
            "Failed to write FastInfoset. Unsupported Feature in AppendRestrictedAlphabetString.");
    Model::ExpectFailure<CQnException>(
        [&] { CAlphabetPacker(std::string(200, 'y')).Pack("yx", str); },
        "Failed to write FastInfoset. Invalid character not found for Restricted Alphabet.");
}
