// Input that is no document any more, announces more than it holds, goes deep, repeats itself or
// was damaged while it was compressed: each is read or refused in words that are known, in linear
// time and on a small stack.
#include "QnXmlLib16/support/QnZip.h"
#include "QnXmlLib16/values/BinaryData.h"
#include "tests/fastinfoset/FiTools.h"
#include "tests/support/SmallStack.h"

#include <algorithm>
#include <cstddef>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <typeinfo>
#include <vector>

using namespace Fi;

namespace {

constexpr char kEndOfFile[] = "<Failed to parse FastInfoset. Unexpected End of File.>";

constexpr char kNotFastInfoset[] = "no Fast Infoset";

struct Outcome
{
    bool bRead;
    std::string str; // the tree, else what has happened

    bool operator==(const Outcome& other) const { return bRead == other.bRead && str == other.str; }
};

// Lets every exception through that the reader doesn't promise.
Outcome ReadOutcome(const std::string& strBytes)
{
    CDocument document(strBytes);
    const CFastInfosetContext context;
    try {
        if (!CFastInfosetReader(context, document).Parse())
            return {false, kNotFastInfoset};
    }
    catch (const CQnException& e) {
        EXPECT_EQ(typeid(e).name(), typeid(CQnException).name());
        return {false, '<' + e.GetMessage() + '>'};
    }
    catch (const std::logic_error& e) {
        EXPECT_EQ(typeid(e).name(), typeid(std::logic_error).name());
        return {false, e.what()};
    }
    return {true, Tree(*document.GetDocumentElement())};
}

// Read, or refused in words that are known.
void ExpectAnswer(const std::string& strBytes)
{
    static const std::string astrWords[] = {
        kNotFastInfoset,
        "basic_string::_M_construct null not valid",
        "<Unknown byte encoding.>",
        "<Invalid value for SHORT byte encoding.>",
        "<Invalid value for INT byte encoding.>",
        "<Invalid value for LONG byte encoding.>",
        "<Invalid value for FLOAT byte encoding.>",
        "<Invalid value for DOUBLE byte encoding.>",
        "<Invalid value for UUID byte encoding.>",
    };
    const Outcome outcome = ReadOutcome(strBytes);
    EXPECT_TRUE(outcome.bRead || outcome.str.rfind("<Failed to parse FastInfoset. ", 0) == 0 ||
                std::find(std::begin(astrWords), std::end(astrWords), outcome.str) !=
                    std::end(astrWords))
        << Hex(strBytes) << '\n'
        << outcome.str;
}

// A small track: a value of each kind that has an encoding of its own.
void WriteTrack(CFastInfosetWriter& writer)
{
    writer.Open();
    writer.WriteStartDocument(FInfoDecl_Version10);
    writer.SetDefaultNamespace("urn:gpx");
    writer.AddNamespace("xsi", "http://www.w3.org/2001/XMLSchema-instance");
    writer.WriteStartElement("gpx", "urn:gpx");
    writer.WriteAttributeString("version", "", "1.1", it_string);
    for (const char* const pszTime : {"2024-05-06T07:08:09Z", "2024-05-06T07:08:10Z"}) {
        writer.WriteStartElement("trkpt", "urn:gpx");
        writer.WriteAttributeString("lat", "", "48.2082", it_decimal);
        writer.WriteAttributeString("lon", "", "16.3738", it_r8);
        const auto child = [&](const char* pszName, const char* pszText, ItemType eType) {
            writer.WriteStartElement(pszName, "urn:gpx");
            writer.WriteString(pszText, eType, false);
            writer.WriteEndElement();
        };
        child("ele", "171.5", it_r4);
        child("time", pszTime, it_datetime);
        child("name", "a name of more than eight bytes", it_string);
        child("fix", "3d", it_string);
        child("sat", "7", it_ui1);
        child("id", "-70000", it_i8);
        child("seen", "true", it_boolean);
        child("photo", "AQIDBA==", it_base64Binary);
        writer.WriteStartElement("link", "urn:other");
        writer.WriteEndElement();
        writer.WriteEndElement();
    }
    writer.WriteEndElement();
    writer.WriteEndDocument();
    writer.Close();
}

const std::vector<std::string>& Corpus()
{
    static const std::vector<std::string> vecDocuments = [] {
        std::vector<std::string> vec;
        for (const bool bSuggested : {false, true}) {
            CFastInfosetContext context;
            if (bSuggested)
                context.SetSuggestedValues();
            std::string strFailure;
            vec.push_back(Written(WriteTrack, context, strFailure));
            EXPECT_EQ(strFailure, "");
        }
        for (const char* const pszOctets : {
                 // Namespaces, every table, shared ends.
                 "E0 00 00 01 00 78 CD 04 'urn:d' CF 00 'p' 04 'urn:p' F0 3D 81 00 'r' 78 01 'id' "
                 "40 '7' F0 7F 81 82 00 'e' 00 80 F0 92 02 'hello' F0 41 00 FF FF A0 FF",
                 // What is dropped, inside and outside, and nesting.
                 "E0 00 00 01 00 E2 FF E1 02 'pi2' 40 'x' C7 02 'sys' 02 'pub' E1 00 'p' FF F0 "
                 "3C 00 'a' CB 00 'n' 00 's' 00 'p' E1 00 'p' 00 'x' E2 00 'x' 3C 00 'b' 3C 00 "
                 "'c' FF 02 3C 00 'd' FF FF",
                 // The components of the header.
                 "E0 00 00 01 3F 10 00 04 'urn:v' C3 00 'm' 00 's' 00 'p' F0 D1 00 'f' 00 's' 00 "
                 "'p' 80 F0 04 'UTF-8' 01 02 '1.0' 3C 00 'a' F0",
                 // Additional data and every part of a vocabulary.
                 "E0 00 00 01 60 00 02 'abc' 00 1F FF 00 'u' 00 00 'x' 00 01 00 'x' 01 00 'y' 01 "
                 "00 00 'x' 00 00 00 'x' 00 00 00 'x' 00 00 00 'x' 00 00 00 'x' 00 00 'v' 00 "
                 "00 'v' 00 00 'v' 00 00 80 00 00 40 'n' 00 3C 00 'a' F0",
                 // Values and chunks in every encoding.
                 "E0 00 00 01 00 7C 00 'a' 78 00 'b' 40 '7' 00 48 00 'ninebytes' 00 60 01 12 3F "
                 "00 20 12 12 B0 0F 00 30 01 01 AB 00 30 11 01 02 00 30 23 FF FF 01 02 00 30 33 "
                 "4*FF 00 30 47 8*FE 00 30 51 7B 00 00 30 63 3F C0 00 00 00 30 77 3F F8 6*00 00 30 "
                 "88 07 16*AB 00 30 90 'x' F0 88 01 12 3F 98 06 00 12 B0 0F 8C 0E 01 00 00 00 01 "
                 "9C 14 38 A0 8C 24 'x' 81 C3 A9 82 00 'x' 0D 00 F0",
                 // Lengths of two and five octets.
                 "E0 00 00 01 00 3C 40 00 65*'y' 3C 60 00 00 00 00 321*'y' 82 01 'text' 83 00 00 "
                 "00 00 259*'z' FF",
             })
            vec.push_back(Bytes(pszOctets));
        return vec;
    }();
    return vecDocuments;
}

std::string Repeated(const std::string& strBytes, std::size_t nCount)
{
    std::string strAll;
    strAll.reserve(strBytes.size() * nCount);
    for (; nCount > 0; --nCount)
        strAll += strBytes;
    return strAll;
}

void Load(CXmlDocument& document, const std::string& strBytes)
{
    document.LoadXmlStream(reinterpret_cast<const unsigned char*>(strBytes.data()),
                           strBytes.size());
}

// The tree, or an empty text for what the loader refuses; any other failure gets through.
std::string Loaded(const std::string& strBytes)
{
    CXmlDocument document;
    try {
        Load(document, strBytes);
    }
    catch (const CQnException&) {
        return "";
    }
    return Tree(*document.GetDocumentElement());
}

} // namespace

// All that is cut ahead of the end of the root is refused, all that is cut behind it is read.
TEST(DamagedDocuments, TruncationAtEveryByteIsNoticed)
{
    for (const std::string& strDocument : Corpus()) {
        const Outcome whole = ReadOutcome(strDocument);
        ASSERT_TRUE(whole.bRead) << whole.str;
        bool bComplete = true;
        bool bHeader = true;
        for (std::size_t n = strDocument.size(); n-- > 0;) {
            const Outcome outcome = ReadOutcome(strDocument.substr(0, n));
            bComplete = bComplete && outcome.bRead;
            bHeader = bHeader && outcome.str != kNotFastInfoset;
            const Outcome expected =
                bComplete ? whole : Outcome{false, bHeader ? kEndOfFile : kNotFastInfoset};
            EXPECT_EQ(outcome, expected) << n << ' ' << outcome.str;
        }
        EXPECT_FALSE(bComplete);
        EXPECT_FALSE(bHeader);
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
            for (const char* const pszOctet : {"00", "30", "60", "7F", "83", "8F", "F0", "FF"}) {
                str[n] = Bytes(pszOctet)[0];
                ExpectAnswer(str);
            }
        }
    }
}

TEST(DamagedDocuments, PiecesOfDocumentsMayBeJoined)
{
    std::mt19937 random(20240506); // the same pieces in every run
    const auto below = [&](std::size_t n) { return static_cast<std::size_t>(random() % n); };
    const std::vector<std::string>& vecCorpus = Corpus();
    for (int i = 0; i < 6000; ++i) {
        std::string str = vecCorpus[below(vecCorpus.size())];
        for (std::size_t nPieces = 1 + below(4); nPieces > 0; --nPieces) {
            const std::string& strOther = vecCorpus[below(vecCorpus.size())];
            const std::size_t nFrom = below(strOther.size());
            const std::size_t nAt = std::min(str.size(), 5 + below(str.size()));
            str.replace(nAt, below(24), strOther, nFrom, below(48));
        }
        ExpectAnswer(str);
    }
}

// No memory is taken for a length that the input doesn't have.
TEST(DamagedDocuments, LengthsBeyondTheInputAreRefused)
{
    for (const char* const pszAhead : {
             "00 3C 60",                  // local name
             "00 3D 60",                  // namespace
             "00 38 CF 60",               // prefix of a namespace attribute
             "00 E1 60",                  // target
             "00 E2 0C",                  // comment
             "00 C6 60",                  // document type
             "04 60",                     // encoding scheme
             "01 0C",                     // version
             "20 10 00 60",               // name of a vocabulary
             "20 02 00 00 60",            // prefixes of a vocabulary
             "10 C0 60",                  // notation
             "08 D0 60",                  // unparsed entity
             "00 7C 00 'a' 78 00 'b' 0C", // value
             "00 7C 00 'a' 78 00 'b' 1C", // in UTF-16
             "00 7C 00 'a' 78 00 'b' 20 0C",
             "00 7C 00 'a' 78 00 'b' 30 0C",
             "00 7C 00 'a' 78 00 'b' 30 9C",
             "00 3C 00 'a' 83", // chunk
             "00 3C 00 'a' 87",
             "00 3C 00 'a' 88 03",
             "00 3C 00 'a' 8C 03",
             "00 3C 00 'a' 8C 27",
         }) {
        SCOPED_TRACE(pszAhead);
        for (const char* const pszLength : {"FF FF FF FF", "FF FF FE BF", "FF FF FE F7",
                                            "FF FF FE FC", "80 00 00 00", "7F FF FF FF"}) {
            const std::string strDocument =
                Bytes("E0 00 00 01") + Bytes(pszAhead) + Bytes(pszLength) + std::string(40, '\0');
            EXPECT_EQ(Read(strDocument), kEndOfFile);
        }
    }
}

// Each item has an announcement of nearly a million ahead of it, so that none ends the sequence.
TEST(DamagedDocuments, SequencesThatAnnounceAMillionItemsEndWithTheInput)
{
    struct Part
    {
        const char* pszFlags;
        const char* pszItem;
    };
    const Part parts[] = {
        {"40", "00 00"},        // additional data; the first length is the 00 of the announcement
        {"20 08 00", "00 'x'"}, // alphabets
        {"20 04 00", "00 'x'"}, // algorithms
        {"20 02 00", "00 'x'"}, // prefixes
        {"20 01 00", "00 'x'"}, // namespaces
        {"20 00 80", "00 'x'"}, // local names
        {"20 00 40", "00 'x'"}, // other names
        {"20 00 20", "00 'x'"}, // other URIs
        {"20 00 10", "'x'"},    // values, which begin in the announcement too
        {"20 00 08", "'x'"},    // chunks
        {"20 00 04", "'x'"},    // other strings
        {"20 00 02", "80"},     // element names
        {"20 00 01", "00 'x'"}, // attribute names
    };
    for (const Part& part : parts) {
        SCOPED_TRACE(part.pszFlags);
        const std::string strItem = Bytes("8F 00 FF") + Bytes(part.pszItem);
        EXPECT_EQ(Read(Bytes("E0 00 00 01") + Bytes(part.pszFlags) + Repeated(strItem, 200000)),
                  kEndOfFile);
    }
}

TEST(DamagedDocuments, MuchOfOneKindTakesLinearTime)
{
    constexpr std::size_t kMany = 300000;
    const std::string strRoot = Bytes("E0 00 00 01 00 3C 00 'a' 90 't'");
    const std::string strEnd = Bytes("F0");
    for (const char* const pszItem : {
             "3C 00 'b' F0",             // names, each a new entry
             "00 F0",                    // elements
             "38 CF 00 'p' 81 F0 00 F0", // a prefix again and again
             "7C 80 78 80 FF FF",        // names of attributes
             "A0",                       // chunks
             "E2 FF",                    // comments
             "E1 00 'p' FF",             // instructions
             "C8 00 'n'",                // entity references
             "9C 14 38",                 // booleans, each a new entry
         }) {
        SCOPED_TRACE(pszItem);
        CDocument document(strRoot + Bytes("38 CD 00 'u' F0 00 F0") +
                           Repeated(Bytes(pszItem), kMany) + strEnd);
        EXPECT_TRUE(CFastInfosetReader(CFastInfosetContext(), document).Parse());
    }
    CDocument attributes(Bytes("E0 00 00 01 00 7C 00 'a' 78 00 'b' FF") +
                         Repeated(Bytes("00 40 'v'"), kMany) + Bytes("FF"));
    EXPECT_TRUE(CFastInfosetReader(CFastInfosetContext(), attributes).Parse());
    EXPECT_EQ(attributes.GetDocumentElement()->GetAttributes().size(), kMany + 1);
    EXPECT_EQ(Read(Bytes("E0 00 00 01 00") + Repeated(Bytes("C4 F0 E2 FF C0"), kMany)), kEndOfFile);
}

// A chunk of a million bytes, and indexes to it in an octet each.
TEST(DamagedDocuments, IndexesStandForBoundedText)
{
    const std::string strChunk =
        Bytes("E0 00 00 01 00 3C 00 'a' 93 00 0F 41 3D") + std::string(1000000, 'y');
    CDocument document(strChunk + Repeated(Bytes("A0"), 60) + Bytes("F0"));
    ASSERT_TRUE(CFastInfosetReader(CFastInfosetContext(), document).Parse());
    EXPECT_EQ(document.GetDocumentElement()->GetText().size(), 61000000u);

    const std::string strSmall =
        Bytes("E0 00 00 01 00 3C 00 'a' 93 00 00 03 E5") + std::string(1256, 'y');
    EXPECT_EQ(Read(strSmall + Repeated(Bytes("A0"), 60000) + Bytes("F0")),
              "<Failed to parse FastInfoset. The indexes stand for too much text.>");
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

// The checksums leave no other tree than the right one.
TEST(DamagedDocuments, CompressedInputDamagedAnywhereIsRefusedOrReadRight)
{
    const std::string strDocument = Bytes("E0 00 00 01 00 3C 00 'a'") +
                                    Repeated(Bytes("3C 00 'b' 80 't' F0"), 60) + Bytes("F0");
    const std::string strRight = Loaded(strDocument);
    ASSERT_NE(strRight, "");
    for (const CompressionType eType : {CompressionType_GZip, CompressionType_ZLib}) {
        SCOPED_TRACE(eType);
        std::string strCopy = strDocument;
        CBinaryData data(reinterpret_cast<unsigned char*>(strCopy.data()), strCopy.size(), false);
        CQnZip::CompressData(data, eType);
        const std::string strPacked = ToString(data);
        EXPECT_LT(strPacked.size(), strDocument.size());
        EXPECT_EQ(Loaded(strPacked), strRight);
        EXPECT_EQ(Loaded(strPacked + "more"), strRight);
        for (std::size_t n = 0; n < strPacked.size(); ++n) {
            EXPECT_EQ(Loaded(strPacked.substr(0, n)), "") << n;
            for (unsigned int uFlip = 1; uFlip < 0x200; uFlip <<= 1) {
                std::string str = strPacked;
                str[n] = static_cast<char>(static_cast<unsigned char>(str[n]) ^
                                           (uFlip < 0x100 ? uFlip : 0xFFu));
                const std::string strTree = Loaded(str);
                EXPECT_TRUE(strTree.empty() || strTree == strRight) << n << ' ' << strTree;
            }
        }
    }
}
