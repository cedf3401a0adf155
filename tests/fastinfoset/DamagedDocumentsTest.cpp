// Input that is no document any more, announces more than it holds, goes deep or repeats itself:
// each is read or refused in words that are known, in linear time and on a small stack.

#include "QnXmlLib16/support/QnZip.h"
#include "tests/fastinfoset/FiTools.h"
#include "tests/model/Failure.h"
#include "tests/support/SmallStack.h"

#include <set>

using namespace Fi;

namespace {

constexpr char kEndOfFile[] = "<Failed to parse FastInfoset. Unexpected End of File.>";

// Read, or refused in words that are known; Read lets no exception through but these.
void ExpectAnswer(const std::string& strBytes)
{
    static const std::set<std::string> setWords = {
        "no Fast Infoset",
        "<logic_error basic_string::_M_construct null not valid>",
        "<Unknown byte encoding.>",
        "<Invalid value for SHORT byte encoding.>",
        "<Invalid value for INT byte encoding.>",
        "<Invalid value for LONG byte encoding.>",
        "<Invalid value for FLOAT byte encoding.>",
        "<Invalid value for DOUBLE byte encoding.>",
        "<Invalid value for UUID byte encoding.>",
    };
    const std::string strRead = Read(strBytes);
    EXPECT_TRUE(strRead[0] != '<' || strRead.rfind("<Failed to parse FastInfoset. ", 0) == 0 ||
                setWords.count(strRead) != 0)
        << testing::PrintToString(strBytes) << '\n'
        << strRead;
}

const std::vector<std::string>& Corpus()
{
    static const std::vector<std::string> vecDocuments = [] {
        std::vector<std::string> vec;
        for (const auto& row : Table<1>(R"(
            // Namespaces, every table, shared ends.
            00 78 CD 04 'urn:d' CF 00 'p' 04 'urn:p' F0 3D 81 00 'r' 78 01 'id' 40 '7' F0
            +   7F 81 82 00 'e' 00 80 F0 92 02 'hello' F0 41 00 FF FF A0 FF
            // What is dropped, inside and outside, and nesting.
            00 E2 FF E1 02 'pi2' 40 'x' C7 02 'sys' 02 'pub' E1 00 'p' FF F0 3C 00 'a' CB 00 'n'
            +   00 's' 00 'p' E1 00 'p' 00 'x' E2 00 'x' 3C 00 'b' 3C 00 'c' FF 02 3C 00 'd' FF FF
            // The components of the header.
            3F 10 00 04 'urn:v' C3 00 'm' 00 's' 00 'p' F0 D1 00 'f' 00 's' 00 'p' 80 F0 04 'UTF-8'
            +   01 02 '1.0' 3C 00 'a' F0
            // Additional data and every part of a vocabulary.
            60 00 02 'abc' 00 1F FF 00 'u' 00 00 'x' 00 01 00 'x' 01 00 'y' 01 00 00 'x' 00 00 00
            +   'x' 00 00 00 'x' 00 00 00 'x' 00 00 00 'x' 00 00 'v' 00 00 'v' 00 00 'v' 00 00 80
            +   00 00 40 'n' 00 3C 00 'a' F0
            // Values and chunks in every encoding.
            00 7C 00 'a' 78 00 'b' 40 '7' 00 48 00 'ninebytes' 00 60 01 12 3F 00 20 12 12 B0 0F
            +   00 30 01 01 AB 00 30 11 01 02 00 30 23 FF FF 01 02 00 30 33 4*FF 00 30 47 8*FE
            +   00 30 51 7B 00 00 30 63 3F C0 00 00 00 30 77 3F F8 6*00 00 30 88 07 16*AB
            +   00 30 90 'x' F0 88 01 12 3F 98 06 00 12 B0 0F 8C 0E 01 00 00 00 01 9C 14 38 A0
            +   8C 24 'x' 81 C3 A9 82 00 'x' 0D 00 F0
            // Lengths of two and five octets.
            00 3C 40 00 65*'y' 3C 60 00 00 00 00 321*'y' 82 01 'text' 83 00 00 00 00 259*'z' FF
        )"))
            vec.push_back(Bytes("E0 00 00 01 " + row[0]));
        // What the writer puts out for small tracks.
        CFastInfosetContext context;
        context.SetEncoding(it_decimal, {1, 1});
        context.SetEncoding(it_base64Binary, {2, 2});
        context.SetEncoding(it_i4, {2, 4});
        std::string strScript = "=urn:d +xsi=urn:x <{urn:d}gpx @version=1.1 ";
        for (const char* const pszLatitude : {"48.2082", "-48.2083"})
            strScript += "<{urn:d}trkpt @lat=(decimal)" + std::string(pszLatitude) +
                         " <{urn:d}name 'more-than-eight-bytes > <{urn:d}sat '(i4)7 > "
                         "<{urn:d}photo '(base64)AQIDBA== > <{urn:other}link > > ";
        vec.push_back(Written(strScript + "> .", context));
        return vec;
    }();
    return vecDocuments;
}

void Load(CXmlDocument& document, const std::string& strBytes)
{
    document.LoadXmlStream(reinterpret_cast<const unsigned char*>(strBytes.data()),
                           strBytes.size());
}

} // namespace

// All that is cut ahead of the end of the root is refused, all that is cut behind it is read.
TEST(DamagedDocuments, TruncationAtEveryByteIsNoticed)
{
    for (const std::string& strDocument : Corpus()) {
        std::string strExpected = Read(strDocument);
        ASSERT_NE(strExpected[0], '<') << strExpected;
        for (std::size_t n = strDocument.size(); n-- > 0;) {
            const std::string strRead = Read(strDocument.substr(0, n));
            if (strRead != strExpected) {
                strExpected = n > 4 ? kEndOfFile : "no Fast Infoset";
            }
            EXPECT_EQ(strRead, strExpected) << n;
        }
        EXPECT_EQ(strExpected, "no Fast Infoset");
    }
}

TEST(DamagedDocuments, EveryBitMayBeFlippedAndEveryByteReplaced)
{
    for (const std::string& strDocument : Corpus()) {
        for (std::size_t n = 0; n < strDocument.size(); ++n) {
            std::string str = strDocument;
            for (unsigned int uBit = 0; uBit < 8; ++uBit) {
                str[n] = static_cast<char>(static_cast<unsigned char>(strDocument[n]) ^ 1u << uBit);
                ExpectAnswer(str);
            }
            for (const int iOctet : {0x00, 0x30, 0x60, 0x7F, 0x83, 0x8F, 0xF0, 0xFF}) {
                str[n] = static_cast<char>(iOctet);
                ExpectAnswer(str);
            }
        }
    }
}

// No memory is taken for a length that the input doesn't have.
TEST(DamagedDocuments, LengthsBeyondTheInputAreRefused)
{
    const char* const apszAhead[] = {
        // Local name, namespace, prefix of a namespace attribute, target, comment, document type.
        "00 3C 60", "00 3D 60", "00 38 CF 60", "00 E1 60", "00 E2 0C", "00 C6 60",
        // Encoding scheme, version, name and prefixes of a vocabulary, notation, unparsed entity.
        "04 60", "01 0C", "20 10 00 60", "20 02 00 00 60", "10 C0 60", "08 D0 60",
        // Values and chunks: in UTF-8 and UTF-16, in an alphabet, in algorithms.
        "00 7C 00 'a' 78 00 'b' 0C", "00 7C 00 'a' 78 00 'b' 1C", "00 7C 00 'a' 78 00 'b' 20 0C",
        "00 7C 00 'a' 78 00 'b' 30 0C", "00 7C 00 'a' 78 00 'b' 30 9C", "00 3C 00 'a' 83",
        "00 3C 00 'a' 87", "00 3C 00 'a' 88 03", "00 3C 00 'a' 8C 03", "00 3C 00 'a' 8C 27"};
    for (const char* const pszAhead : apszAhead)
        for (const char* const pszLength : {"FF FF FF FF", "FF FF FE BF", "FF FF FE F7",
                                            "FF FF FE FC", "80 00 00 00", "7F FF FF FF"})
            EXPECT_EQ(Read(Bytes("E0 00 00 01 " + std::string(pszAhead) + pszLength + " 40*00")),
                      kEndOfFile)
                << pszAhead << ' ' << pszLength;
}

// Each item has an announcement of nearly a million ahead of it, so that none ends the sequence.
TEST(DamagedDocuments, SequencesThatAnnounceAMillionItemsEndWithTheInput)
{
    // Additional data; alphabets, prefixes, names of attributes; values, which like the additional
    // data begin in the announcement; names of elements.
    for (const auto& [strFlags, strItem] : Table<2>(R"(
        40       | 00 00
        20 08 00 | 00 'x'
        20 02 00 | 00 'x'
        20 00 01 | 00 'x'
        20 00 10 | 'x'
        20 00 02 | 80
    )"))
        EXPECT_EQ(
            Read(Bytes("E0 00 00 01" + strFlags) + Repeated(Bytes("8F 00 FF" + strItem), 200000)),
            kEndOfFile)
            << strFlags;
}

TEST(DamagedDocuments, MuchOfOneKindTakesLinearTime)
{
    const std::string strRoot = Bytes("E0 00 00 01 00 3C 00 'a' 90 't' 38 CD 00 'u' F0 00 F0");
    const char* const apszItems[] = {
        // New names, elements, a prefix again and again, names of attributes, chunks.
        "3C 00 'b' F0", "00 F0", "38 CF 00 'p' 81 F0 00 F0", "7C 80 78 80 FF FF", "A0",
        // Comments, instructions, references, new entries of booleans.
        "E2 FF", "E1 00 'p' FF", "C8 00 'n'", "9C 14 38"};
    for (const char* const pszItem : apszItems)
        EXPECT_EQ(Read(strRoot + Repeated(Bytes(pszItem), 300000) + Bytes("F0"))[0], 'a')
            << pszItem;
    EXPECT_EQ(Read(Bytes("E0 00 00 01 00") + Repeated(Bytes("C4 F0 E2 FF C0"), 300000)),
              kEndOfFile);
}

TEST(DamagedDocuments, AnElementWithManyAttributesMakesNoOtherLarge)
{
    CDocument document(Bytes("E0 00 00 01 00 7C 00 'r' 78 00 'k' FF") +
                       Repeated(Bytes("00 40 'v'"), 300000) + Bytes("F0") +
                       Repeated(Bytes("40 00 FF FF"), 100000) + Bytes("FF"));
    ASSERT_TRUE(CFastInfosetReader(CFastInfosetContext(), document).Parse());
    const CXmlElement* pRoot = document.GetDocumentElement();
    EXPECT_EQ(pRoot->GetAttributes().size(), 300001u);
    EXPECT_LE(pRoot->GetFirstElement()->GetAttributes().capacity(), 16u);
}

// A chunk of a million bytes, and indexes to it in an octet each.
TEST(DamagedDocuments, IndexesStandForBoundedText)
{
    const std::string strChunk =
        Bytes("E0 00 00 01 00 3C 00 'a' 93 00 0F 41 3D") + std::string(1000000, 'y');
    EXPECT_EQ(Read(strChunk + Repeated(Bytes("A0"), 60) + Bytes("F0")).size(), 61000004u);
    const std::string strSmall =
        Bytes("E0 00 00 01 00 3C 00 'a' 93 00 00 03 E5") + std::string(1256, 'y');
    constexpr char kTooMuch[] =
        "<Failed to parse FastInfoset. The indexes stand for too much text.>";
    EXPECT_EQ(Read(strSmall + Repeated(Bytes("A0"), 60000) + Bytes("F0")), kTooMuch);
    // The same in declarations of a namespace, which a tree keeps once for each prefix.
    const std::string strNamespace =
        Bytes("E0 00 00 01 00 38 CD 60 00 00 03 A7") + std::string(1256, 'y');
    EXPECT_EQ(Read(strNamespace + Repeated(Bytes("CD 81"), 60000) + Bytes("F0 3C 00 'a' FF")),
              kTooMuch);
}

TEST(DamagedDocuments, DepthCostsNoStack)
{
    constexpr std::size_t kDepth = 200000;
    const std::string astrStarts[] = {
        Bytes("E0 00 00 01 00 3C 00 'a'") + Repeated(Bytes("00"), kDepth),
        Bytes("E0 00 00 01 00 7C 00 'a' F0") + Repeated(Bytes("78 CC F0 00 F0 80 't'"), kDepth),
    };
    RunOnSmallStack([&] {
        CXmlDocument document;
        for (const std::string& strStart : astrStarts) {
            EXPECT_THROW(Load(document, strStart), CQnException);
            Load(document, strStart + Repeated(Bytes("FF"), kDepth / 2) + Bytes("F0"));
            std::size_t nDepth = 0;
            for (const CXmlElement* p = document.GetDocumentElement(); (p = p->GetFirstElement());)
                ++nDepth;
            EXPECT_EQ(nDepth, kDepth);
        }
    });
}

TEST(DamagedDocuments, ALoadFindsTheFormatFromTheDataAndTriesNoOther)
{
    const auto load = [](const std::string& str) {
        CXmlDocument compressed;
        Load(compressed, str);
        return TreeLine(*compressed.GetDocumentElement());
    };
    const std::string strDocument = Bytes("E0 00 00 01 00 3C 00 'a' 93 00 00 00 F1 500*'y' F0");
    for (const CompressionType eType : {CompressionType_GZip, CompressionType_ZLib}) {
        CBinaryData data = ToData(strDocument);
        CQnZip::CompressData(data, eType);
        const std::string strPacked = ToText(data);
        EXPECT_EQ(load(strPacked + "more"), "a '" + std::string(500, 'y') + "'");
        for (std::size_t n = 0; n < strPacked.size(); ++n)
            EXPECT_THROW(load(strPacked.substr(0, n)), CQnException) << n;
    }
    const std::string strBytes = Bytes("E0 00 00 01 00 '<r/>'");
    CXmlDocument document;
    Model::ExpectFailure<CQnException>([&] { Load(document, strBytes); },
                                       "Failed to parse FastInfoset. Invalid NonEmptyOctetString "
                                       "type  on the second bit of an octet.");
    // A string is XML text, whatever it looks like.
    EXPECT_THROW(document.LoadXml(strBytes.c_str()), CQnException);
}
