// Documents of other encoders, octet by octet: what is read, what is dropped, what is refused.
#include "QnXmlLib16/fastinfoset/internal/FastInfosetFormat.h"
#include "tests/fastinfoset/FiTools.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <iterator>
#include <string_view>

using namespace Fi;

namespace {

// Identification, version, no optional components.
const std::string& Head()
{
    static const std::string strHead = Bytes("E0 00 00 01 00");
    return strHead;
}

struct Row
{
    const char* pszWhat;
    const char* pszOctets;
    const char* pszTree;
};

// Documents by their octets from the first child of the document on.
template <std::size_t nRows>
void ExpectTrees(const Row (&rows)[nRows], const CFastInfosetContext& context = {})
{
    for (const Row& row : rows) {
        SCOPED_TRACE(row.pszWhat);
        EXPECT_EQ(Read(Head() + Bytes(row.pszOctets), context), row.pszTree);
    }
}

// The same with the header, from the identification on.
template <std::size_t nRows>
void ExpectDocuments(const Row (&rows)[nRows])
{
    for (const Row& row : rows) {
        SCOPED_TRACE(row.pszWhat);
        EXPECT_EQ(Read(Bytes(row.pszOctets)), row.pszTree);
    }
}

std::string Failed(const std::string& strReason)
{
    return "<Failed to parse FastInfoset. " + strReason + '>';
}

constexpr char kIndexFailed[] = "<Failed to parse FastInfoset. Index out of range.>";
constexpr char kEndOfFile[] = "<Failed to parse FastInfoset. Unexpected End of File.>";
constexpr char kBadElement[] = "<Failed to parse FastInfoset. Invalid Encoding of Element type.>";
constexpr char kUtf16Failed[] = "<logic_error basic_string::_M_construct null not valid>";

std::string Repeated(const std::string& strBytes, std::size_t nCount)
{
    std::string strAll;
    strAll.reserve(strBytes.size() * nCount);
    for (; nCount > 0; --nCount)
        strAll += strBytes;
    return strAll;
}

} // namespace

// ---- What is read ----

TEST(ForeignDocuments, ElementsAttributesAndTextAreRead)
{
    const Row rows[] = {
        {"every table in use",
         "78 CD 04 'urn:d' CF 00 'p' 04 'urn:p' F0" // root; default namespace 2, "p" 2 for 3; end
         "3D 81 00 'r'"                             // its name: namespace 2, local name 1
         "78 01 'id' 40 '7' F0"                     // attribute name 1, value 1 "7", end
         "7F 81 82 00 'e'"  // element name 2: prefix 2, namespace 3, local 3
         "00 80 F0"         // attribute name 1, value 1, end
         "92 02 'hello' F0" // chunk 1; end of the child
         "41 00 FF FF"      // name 2; id, empty; end of attributes and child
         "A0 FF",           // chunk 1; end of root and document
         "{urn:d}r[id='7'] 'hello' ({urn:p}e[id='7'] 'hello' {urn:p}e[id=''])"},
        {"the prefix of a name is dropped", "3F 00 'p' 00 'u' 00 'a' F0", "{u}a"},
        {"attributes in a namespace",
         "7C 00 'a'"                  // root
         "7B 80 80 03 'lang' 01 'de'" // prefix 1 and namespace 1, built in
         "79 00 'u' 00 'b' 00 '1'"    // namespace and local name
         "F0 F0",
         "a[{http://www.w3.org/XML/1998/namespace}lang='de'][{u}b='1']"},
        {"text split into chunks around what is dropped",
         "3C 00 'a' 80 't' E2 40 'x' 81 'ex' E1 00 'p' 00 'x' 80 't' F0", "a 'text'"},
        {"text around a child", "3C 00 'a' 80 '1' 3C 00 'b' F0 80 '2' F0", "a '12' (b)"},
        {"an indexed chunk enters nothing", "3C 00 'a' 90 't' A0 A0 91 'uv' A1 A2 F0",
         kIndexFailed},
        {"a chunk without the add bit enters nothing", "3C 00 'a' 80 't' A0 F0", kIndexFailed},
        {"a value without the add bit enters nothing",
         "7C 00 'a' 78 00 'b' 00 't' 78 00 'c' 80 F0 F0", kIndexFailed},
        {"an empty value enters nothing",
         "7C 00 'a' 78 00 'b' FF 78 00 'c' 40 't' 78 00 'd' 80 F0 F0", "a[b=''][c='t'][d='t']"},
        {"chunks and values have tables of their own", "7C 00 'a' 78 00 'b' 40 't' F0 A0 F0",
         kIndexFailed},
        {"element and attribute names have tables of their own", "7C 00 'a' 00 40 't' F0 F0",
         kIndexFailed},
        {"carriage returns of a chunk are dropped", "3C 00 'a' 90 0D 82 00 'x' 0D 'y' A0 F0",
         "a 'xy'"},
        {"carriage returns of a value are kept", "7C 00 'a' 78 00 'b' 02 'x' 0D 'y' F0 F0",
         "a[b='x\ry']"},
        {"a zero octet ends a text in the tree",
         "7C 00 'a' 78 00 'b' 02 'x' 00 'y' F0 82 00 'x' 00 'y' 80 'z' F0", "a[b='x'] 'xz'"},
        {"characters that the code page lacks", "3C 00 'a' 81 C3 A9 F0", "a '?'"},
    };
    ExpectTrees(rows);
}

TEST(ForeignDocuments, NamespaceAttributesOfAnyElementEnterTheTableOfPrefixes)
{
    CDocument document(Head() + Bytes("38 CD 04 'urn:d' CF 00 'p' 04 'urn:1' F0 3C 00 'a'"
                                      "38 CF 81 04 'urn:2' F0 3C 00 'b'" // prefix 2, "p", again
                                      "38 CE 00 'q' CF 00 'r' 82 F0 00"  // undeclared; namespace 3
                                      "FF F0"));
    ASSERT_TRUE(CFastInfosetReader(CFastInfosetContext(), document).Parse());
    EXPECT_EQ(Tree(*document.GetDocumentElement()), "a (b (a))");
    EXPECT_EQ(document.LookupNamespaceFromAlias(""), "urn:d");
    EXPECT_EQ(document.LookupNamespaceFromAlias("p"), "urn:2");
    EXPECT_EQ(document.LookupNamespaceFromAlias("q"), "");
    EXPECT_EQ(document.LookupNamespaceFromAlias("r"), "urn:1");

    const Row rows[] = {
        {"the default undeclared; any octet ends the namespaces", "38 CC 00 3C 00 'a' F0", "a"},
        {"prefix past its table", "38 CE 81 F0 3C 00 'a' F0", kIndexFailed},
        {"namespace past its table", "38 CD 81 F0 3C 00 'a' F0", kIndexFailed},
    };
    ExpectTrees(rows);
}

TEST(ForeignDocuments, ValuesAreReadInEveryEncoding)
{
    const Row values[] = {
        {"UTF-8", "00 '7'", "7"},
        {"alphabet 1, length 1", "20 00 42", "42"},
        {"alphabet 1, filled up, added", "60 01 12 3F", "123"},
        {"alphabet 2", "20 12 12 B0 0F", "12:00"},
        {"ones in a low half end the text", "20 01 1F 23", "1"},
        {"algorithm 1", "30 01 01 AB", "01AB"},
        {"algorithm 2", "30 11 01 02", "AQI="},
        {"algorithm 3", "30 21 FF FF", "-1"},
        {"algorithm 3, two numbers", "30 23 FF FF 01 02", "-1 258"},
        {"algorithm 4", "30 33 00 00 00 01", "1"},
        {"algorithm 4 has no sign", "30 33 4*FF", "4294967295"},
        {"algorithm 5", "30 47 7*FF FE", "-2"},
        {"algorithm 6", "30 50 38", "true"},
        {"algorithm 6, five bits", "30 51 7B 00", "truefalsetruetrue false"},
        {"algorithm 6, more left out than there is", "30 50 5F", ""},
        {"algorithm 7", "30 63 3F C0 00 00", "1.5"},
        {"algorithm 8", "30 77 3F F8 6*00", "1.5"},
        {"algorithm 9, length 16", "30 88 07 8*01 8*AB", "0101010101010101ABABABABABABABAB"},
        {"algorithm 10", "30 92 'a<b'", "a<b"},
    };
    for (const Row& row : values) {
        SCOPED_TRACE(row.pszWhat);
        const std::string strDocument =
            Head() + Bytes("7C 00 'a' 78 00 'b'") + Bytes(row.pszOctets) + Bytes("FF");
        EXPECT_EQ(Read(strDocument), std::string("a[b='") + row.pszTree + "']");
    }
    const Row chunks[] = {
        {"alphabet 1", "3C 00 'a' 88 01 12 3F F0", "a '123'"},
        {"alphabet 2, added", "3C 00 'a' 98 06 00 12 B0 0F A0 F0", "a '12:0012:00'"},
        {"algorithm 4", "3C 00 'a' 8C 0E 01 00 00 00 01 F0", "a '1'"},
        {"algorithm 6, added", "3C 00 'a' 9C 14 38 A0 F0", "a 'truetrue'"},
        {"algorithm 10", "3C 00 'a' 8C 26 00 'a<b' F0", "a 'a<b'"},
    };
    ExpectTrees(chunks);
}

TEST(ForeignDocuments, EncodingsThatTheLibraryLacksAreRefused)
{
    const Row rows[] = {
        {"value in UTF-16", "7C 00 'a' 78 00 'b' 11 00 'A' FF", kUtf16Failed},
        {"chunk in UTF-16", "3C 00 'a' 85 00 'A' F0", kUtf16Failed},
        {"value in alphabet 3", "7C 00 'a' 78 00 'b' 20 20 00 FF", kIndexFailed},
        {"value in alphabet 256", "7C 00 'a' 78 00 'b' 2F F0 00 FF", kIndexFailed},
        {"chunk in alphabet 3", "3C 00 'a' 88 08 00 F0", kIndexFailed},
        {"ones in a high half", "7C 00 'a' 78 00 'b' 20 00 F1 FF", kIndexFailed},
        {"value of algorithm 11", "7C 00 'a' 78 00 'b' 30 A0 00 FF", "<Unknown byte encoding.>"},
        {"value of algorithm 256", "7C 00 'a' 78 00 'b' 3F F0 00 FF", "<Unknown byte encoding.>"},
        {"chunk of algorithm 32", "3C 00 'a' 8C 7C 00 F0", "<Unknown byte encoding.>"},
        {"half a number", "7C 00 'a' 78 00 'b' 30 22 00 00 00 FF",
         "<Invalid value for SHORT byte encoding.>"},
        {"half a uuid", "3C 00 'a' 8C 22 05 8*00 F0", "<Invalid value for UUID byte encoding.>"},
    };
    ExpectTrees(rows);
}

// ---- What is dropped ----

TEST(ForeignDocuments, WhatIsNoElementAttributeOrTextIsDropped)
{
    const Row rows[] = {
        {"an empty comment and one that looks like an end, ahead of the root",
         "E2 FF E2 01 FF F0 3C 00 'a' F0", "a"},
        {"instructions ahead of the root", "E1 02 'pi2' 40 'x' E1 00 'p' FF 3C 00 'a' F0", "a"},
        {"in an element", "3C 00 'a' E1 00 'p' 00 'x' E2 00 'x' 3C 00 'b' FF", "a (b)"},
        {"entity references with each set of names",
         "3C 00 'a' C8 00 'n' C9 00 'n' 00 'p' CA 00 'n' 00 's' CB 00 'n' 00 's' 00 'p' F0", "a"},
        {"an instruction, a comment and a reference by indexes that nothing checks",
         "E1 BF BF E2 EF DF BF 3C 00 'a' C8 C0 00 F0", "a"},
        {"a comment enters no table", "3C 00 'a' E2 40 'x' A0 F0", kIndexFailed},
        {"a target enters no table", "E1 00 'p' 40 'x' 7C 80 F0", kIndexFailed},
        {"a document type", "C4 F0 3C 00 'a' F0", "a"},
        {"a document type with identifiers and instructions",
         "C7 02 'sys' 02 'pub' E1 00 'p' 00 'x' E1 00 'q' FF F0 3C 00 'a' F0", "a"},
        {"one identifier each", "C6 02 'sys' F0 E2 FF C5 02 'pub' F0 3C 00 'a' F0", "a"},
        {"bytes behind the root", "3C 00 'a' F0 F0 'more' FF 3C", "a"},
    };
    ExpectTrees(rows);
}

TEST(ForeignDocuments, ComponentsOfTheHeaderAreDropped)
{
    const Row rows[] = {
        {"encoding scheme", "E0 00 00 01 04 04 'UTF-8' 3C 00 'a' F0", "a"},
        {"standalone", "E0 00 00 01 02 01 3C 00 'a' F0", "a"},
        {"version", "E0 00 00 01 01 02 '1.0' 3C 00 'a' F0", "a"},
        {"notations", "E0 00 00 01 10 C3 00 'n' 00 's' 00 'p' C0 00 'm' F0 3C 00 'a' F0", "a"},
        {"unparsed entities",
         "E0 00 00 01 08 D1 00 'e' 00 's' 00 'p' 00 'n' D0 00 'f' 00 's' 80 F0 3C 00 'a' F0", "a"},
        {"name of a vocabulary", "E0 00 00 01 20 10 00 04 'urn:v' 3C 00 'a' F0", "a"},
        {"all of these, in the order of their bits",
         "E0 00 00 01 3F 10 00 04 'urn:v' C0 00 'm' F0 D0 00 'f' 00 's' 80 F0 04 'UTF-8' 00 FF"
         "3C 00 'a' F0",
         "a"},
        {"notations and entities without any", "E0 00 00 01 18 F0 F0 3C 00 'a' F0", "a"},
        {"the top bit of the components says nothing", "E0 00 00 01 80 3C 00 'a' F0", "a"},
    };
    ExpectDocuments(rows);
}

// What a document carries in a sequence is misread, unless the lengths happen to fit.
TEST(FastInfosetHeader, SequencesReadALengthAheadOfEachItem)
{
    const Row rows[] = {
        {"two prefixes, and the length ahead of what would be a third",
         "E0 00 00 01 20 02 00 01 00 'p' 01 00 'q' 01 3C 00 'a' F0", "a"},
        {"a smaller length ends them sooner",
         "E0 00 00 01 20 02 00 8F FF 7F 00 'p' 00 3C 00 'a' F0", "a"},
        {"three bits of a long length say nothing",
         "E0 00 00 01 20 02 00 F0 00 00 00 'p' 00 3C 00 'a' F0", "a"},
        {"as the standard has one prefix", "E0 00 00 01 20 02 00 00 00 'p' 3C 00 'a' F0",
         kEndOfFile},
        {"additional data takes a length from the octet at hand",
         "E0 00 00 01 40 00 02 'abc' 00 3C 00 'a' F0", "a"},
        {"as the standard has additional data", "E0 00 00 01 40 00 02 'uri' 01 'd1' 3C 00 'a' F0",
         "<Failed to parse FastInfoset. Invalid NonEmptyOctetString type  on the second bit of an "
         "octet.>"},
        {"values do so too", "E0 00 00 01 20 00 10 00 'v' 00 3C 00 'a' F0", "a"},
        {"names do not", "E0 00 00 01 20 00 02 00 80 00 3C 00 'a' F0", "a"},
        {"each part of a vocabulary, in the order of its bits",
         "E0 00 00 01 20 1F FF"
         "00 'u'"                                 // name of the vocabulary
         "00 00 'x' 00 00 00 'x' 00"              // alphabets, algorithms
         "00 00 'x' 00 00 00 'x' 00 00 00 'x' 00" // prefixes, namespaces, local names
         "00 00 'x' 00 00 00 'x' 00"              // other names, other URIs
         "00 'v' 00 00 'v' 00 00 'v' 00"          // values, chunks, other strings
         "00 80 00 00 40 'n' 00"                  // names of elements and attributes
         "3C 00 'a' F0",
         "a"},
        {"a value of the vocabulary in UTF-16", "E0 00 00 01 20 00 10 11 00 00 00 3C 00 'a' F0",
         kUtf16Failed},
        {"a prefix that was read over has no index",
         "E0 00 00 01 20 02 00 00 00 'p' 00 3F 81 80 00 'a' F0", kIndexFailed},
        {"nor has a value", "E0 00 00 01 20 00 10 00 'v' 00 7C 00 'a' 78 00 'b' 80 FF",
         kIndexFailed},
    };
    ExpectDocuments(rows);
}

TEST(ForeignDocuments, IndexesNameWhatTheContextsVocabularyHolds)
{
    CFastInfosetContext context;
    context.SetUseGeneratedVocabulary(true);
    CFIVocabulary& vocabulary = *context.GetVocabulary();
    vocabulary.AddElement("p", "urn:p", "e");
    vocabulary.AddElement("", "", "plain");
    vocabulary.AddAttribute("p", "urn:p", "k");
    vocabulary.AddAttributeValue("value");
    vocabulary.AddElementValue("text");
    const Row rows[] = {
        {"every table", "40 00 80 F0 A0 01 F0 F0", "{urn:p}e[{urn:p}k='value'] 'text' (plain)"},
        {"prefix 2, namespace 2, local name 1", "3F 81 81 80 F0", "{urn:p}e"},
        {"what a document adds comes behind it", "3C 00 'a' 00 02 90 't' A1 F0 FF",
         "a ({urn:p}e (a 'tt'))"},
        {"and is gone for the next one", "3C 80 02 A1 FF", kIndexFailed},
    };
    ExpectTrees(rows, context);
    EXPECT_EQ(std::distance(vocabulary.GetElementNamesTable().begin(),
                            vocabulary.GetElementNamesTable().end()),
              2);
    context.SetUseGeneratedVocabulary(false);
    EXPECT_EQ(Read(Head() + Bytes("00 F0"), context), kIndexFailed);
}

// ---- Ends ----

TEST(ForeignDocuments, TwoEndsShareAnOctet)
{
    const Row rows[] = {
        {"root and document", "3C 00 'a' FF", "a"},
        {"child and root", "3C 00 'a' 3C 00 'b' FF", "a (b)"},
        {"two of three, then a sibling of theirs", "3C 00 'a' 3C 00 'b' 3C 00 'c' FF 3C 00 'd' FF",
         "a (b (c) d)"},
        {"three and the document", "3C 00 'a' 3C 00 'b' 3C 00 'c' FF FF", "a (b (c))"},
        {"three of four, then the root", "3C 00 'a' 3C 00 'b' 3C 00 'c' 3C 00 'd' FF F0 F0",
         "a (b (c (d)))"},
        {"attributes and root", "7C 00 'a' 78 00 'x' FF FF", "a[x='']"},
        {"attributes and child; the root goes on",
         "3C 00 'a' 7C 00 'b' 78 00 'x' FF FF 3C 00 'c' FF", "a (b[x=''] c)"},
        {"attributes and child, then its parent and the root",
         "3C 00 'a' 3C 00 'b' 7C 00 'c' 78 00 'x' FF FF FF", "a (b (c[x='']))"},
        {"no attributes where some are announced", "7C 00 'a' FF", "a"},
        {"none shared", "7C 00 'a' 78 00 'x' FF F0 3C 00 'b' F0 3C 00 'c' F0 F0", "a[x=''] (b c)"},
        {"text behind a shared end belongs to the grandparent",
         "3C 00 'a' 3C 00 'b' 3C 00 'c' FF 80 't' F0", "a 't' (b (c))"},
    };
    ExpectTrees(rows);
}

TEST(FastInfosetReader, AnUnknownOctetIsSkippedInTheDocumentAndRefusedInAnElement)
{
    for (const char* const pszOctet : {"C0", "CC", "D0", "E0", "E3", "F1", "FE"}) {
        SCOPED_TRACE(pszOctet);
        EXPECT_EQ(Read(Head() + Bytes(pszOctet) + Bytes("3C 00 'a' F0")), "a");
        EXPECT_EQ(Read(Head() + Bytes("3C 00 'a'") + Bytes(pszOctet) + Bytes("F0")), kBadElement);
    }
    EXPECT_EQ(Read(Head() + Bytes("80 BF C8 3C 00 'a' F0")), "a");
    EXPECT_EQ(Read(Head() + Bytes("3C 00 'a' C4 F0 F0")), kBadElement); // no document type inside
}

TEST(FastInfosetReader, ADocumentWithoutAnElementIsRefused)
{
    for (const char* const pszOctets : {"F0", "FF", "E2 FF F0", "C4 F0 FF"}) {
        SCOPED_TRACE(pszOctets);
        EXPECT_EQ(Read(Head() + Bytes(pszOctets)), Failed("No element found."));
    }
    EXPECT_EQ(Read(Head()), kEndOfFile);
}

TEST(ForeignDocuments, TheFirstBytesTellFastInfoset)
{
    const std::string strBody = Bytes("E0 00 00 01 00 3C 00 'a' F0");
    for (const std::string_view declaration : FI_DECLARATION_LIST) {
        const std::string strDeclaration(declaration);
        SCOPED_TRACE(strDeclaration);
        EXPECT_EQ(Read(strDeclaration + strBody), "a");
        EXPECT_EQ(Read(strDeclaration), "no Fast Infoset");
        EXPECT_EQ(Read(strDeclaration + strBody.substr(0, 4)), "no Fast Infoset");
        EXPECT_EQ(Read(strDeclaration + strDeclaration + strBody), "no Fast Infoset");
    }
    for (const char* const pszAhead :
         {"<?xml encoding=\"finf\"?>", "<?xml version='1.0'  encoding='finf'?>",
          "<?xml version='1.0' encoding='FINF'?>", "<?xml version='1.2' encoding='finf'?>",
          "<?xml version='1.0' encoding='finf'?>\n", "\xEF\xBB\xBF", " "}) {
        SCOPED_TRACE(pszAhead);
        EXPECT_EQ(Read(pszAhead + strBody), "no Fast Infoset");
    }
    for (const char* const pszOctets :
         {"", "E0", "E0 00 00 01", "E0 00 00 02 00 F0", "E0 00 01 00 00 F0", "E1 00 00 01 00 F0"})
        EXPECT_EQ(Read(Bytes(pszOctets)), "no Fast Infoset");
}

// ---- Borders of the forms ----

TEST(ReadingForms, LengthsFollowTheirBands)
{
    struct Length
    {
        const char* pszOctets;
        std::size_t nLength;
    };
    struct Form
    {
        const char* pszAhead;
        const char* pszEnd;
        const char* pszTreeAhead;
        const char* pszTreeEnd;
        Length lengths[6];
    };
    const Form forms[] = {
        {"3C",
         "F0",
         "",
         "",
         {{"00", 1},
          {"3F", 64},
          {"40 00", 65},
          {"40 FF", 320},
          {"60 00 00 00 00", 321},
          {"60 00 00 FE BF", 65536}}},
        {"7C 00 'a' 78 00 'b'",
         "FF",
         "a[b='",
         "']",
         {{"00", 1},
          {"07", 8},
          {"08 00", 9},
          {"08 FF", 264},
          {"0C 00 00 00 00", 265},
          {"0C 00 00 FE F7", 65536}}},
        {"3C 00 'a'",
         "F0",
         "a '",
         "'",
         {{"80", 1},
          {"81", 2},
          {"82 00", 3},
          {"82 FF", 258},
          {"83 00 00 00 00", 259},
          {"83 00 00 FE FD", 65536}}},
    };
    for (const Form& form : forms) {
        for (const Length& row : form.lengths) {
            SCOPED_TRACE(row.pszOctets);
            const std::string strText(row.nLength, 'x');
            EXPECT_EQ(Read(Head() + Bytes(form.pszAhead) + Bytes(row.pszOctets) + strText +
                           Bytes(form.pszEnd)),
                      form.pszTreeAhead + strText + form.pszTreeEnd);
        }
    }
}

TEST(ReadingForms, EveryOtherPatternOfALengthIsRefused)
{
    for (unsigned int u = 0; u < 0x80; ++u) {
        const std::string strRead = Read(Head() + '\x3C' + static_cast<char>(u));
        EXPECT_EQ(strRead == Failed("Invalid NonEmptyOctetString type  on the second bit of an "
                                    "octet."),
                  (u > 0x40 && u < 0x60) || u > 0x60)
            << u << ' ' << strRead;
    }
    for (unsigned int u = 0; u < 0x10; ++u) {
        const std::string strRead =
            Read(Head() + Bytes("7C 00 'a' 78 00 'b'") + static_cast<char>(u));
        EXPECT_EQ(strRead == Failed("Invalid NonEmptyOctetString type  on the fifth bit of an "
                                    "octet."),
                  (u > 0x08 && u < 0x0C) || u > 0x0C)
            << u << ' ' << strRead;
    }
}

TEST(ReadingForms, EveryOtherPatternOfAnIndexIsRefused)
{
    struct Form
    {
        const char* pszWhat;
        const char* pszAhead;
        unsigned int uFirst; // of the patterns to try
        unsigned int uLast;
        unsigned int uFirstBad;
        const char* pszReason;
    };
    const Form forms[] = {
        {"string", "3C", 0x80, 0xFF, 0xF0,
         "Invalid Encoding of integers 1 To 2^20 type  on the second bit of an octet."},
        {"attribute name", "7C 00 'a'", 0x00, 0x77, 0x70,
         "Invalid Encoding of integers 1 To 2^20 type  on the second bit of an octet."},
        {"attribute value", "7C 00 'a' 78 00 'b'", 0x80, 0xFE, 0xF0,
         "Invalid Encoding of integers 0 To 2^20 type  on the second bit of an octet."},
        {"element name", "38 F0", 0x00, 0x3B, 0x31,
         "Invalid Encoding of integers 1 To 2^20 type  on the third bit of an octet."},
        {"chunk", "3C 00 'a'", 0xA0, 0xBF, 0xB9,
         "Invalid Encoding of integers 1 To 2^20 type  on the fourth bit of an octet."},
    };
    for (const Form& form : forms) {
        SCOPED_TRACE(form.pszWhat);
        for (unsigned int u = form.uFirst; u <= form.uLast; ++u) {
            const std::string strRead =
                Read(Head() + Bytes(form.pszAhead) + static_cast<char>(u) + Bytes("00 00 00"));
            EXPECT_EQ(strRead, u < form.uFirstBad ? kIndexFailed : Failed(form.pszReason)) << u;
        }
    }
}

TEST(ReadingForms, TheForbiddenFormsOfNamesAndLongIndexesAreRefused)
{
    const Row rows[] = {
        {"prefix without namespace", "3E 00 'p' 00 'a' F0",
         "<Failed to parse FastInfoset. Invalid QName type Prefix without Namespace.>"},
        {"the same in an attribute", "7C 00 'a' 7A 00 'p' 00 'b' FF FF",
         "<Failed to parse FastInfoset. Invalid QName type Prefix without Namespace.>"},
        {"prefix past its table", "3F 81 80 00 'a' F0", kIndexFailed},
        {"namespace past its table", "3D 81 00 'a' F0", kIndexFailed},
        {"more than 20 bits on the third bit", "30 10 00 00",
         "<Failed to parse FastInfoset. Invalid Encoding of integers 1 To 2^20 type  on the third "
         "bit of an octet.>"},
        {"more than 20 bits on the fourth bit", "3C 00 'a' B8 10 00 00",
         "<Failed to parse FastInfoset. Invalid Encoding of integers 1 To 2^20 type  on the fourth "
         "bit of an octet.>"},
    };
    ExpectTrees(rows);
}

namespace {

struct Index
{
    std::size_t nIndex;
    const char* pszOctets;
};

// A document whose entries are plain but those with an index, which are marked ones and have the
// index as their name; then an item for every index.
template <std::size_t nRows, class TPlain, class TMarked, class TByIndex>
std::string IndexDocument(const Index (&rows)[nRows], std::size_t nEntries, const TPlain& plain,
                          const TMarked& marked, const TByIndex& byIndex)
{
    std::string strDocument;
    std::size_t nNext = 2; // entry 1 is made by what stands ahead
    for (const Index& row : rows) {
        strDocument += Repeated(plain, row.nIndex - nNext) + marked(std::to_string(row.nIndex));
        nNext = row.nIndex + 1;
    }
    strDocument += Repeated(plain, nEntries + 1 - nNext);
    for (const Index& row : rows)
        strDocument += byIndex(Bytes(row.pszOctets));
    return strDocument;
}

std::string Short(const std::string& strText) // of 1 to 8 bytes, its length ahead
{
    return static_cast<char>(strText.size() - 1) + strText;
}

} // namespace

TEST(ReadingForms, IndexesOnTheSecondBitFollowTheirBands)
{
    const Index rows[] = {{64, "3F"},      {65, "40 00"},      {66, "40 01"},
                          {8256, "5F FF"}, {8257, "60 00 00"}, {8258, "60 00 01"}};
    // Values: attributes without a name of their own.
    const std::string strNamed("\0", 1); // attribute name 1
    std::string strRead =
        Read(Head() + Bytes("7C 00 'a' 78 00 'b' 40 '1'") +
             IndexDocument(
                 rows, 8258, strNamed + "\x40t",
                 [&](const std::string& str) {
                     return strNamed + static_cast<char>(0x40 + str.size() - 1) + str;
                 },
                 [&](std::string str) {
                     str[0] = static_cast<char>(str[0] | 0x80);
                     return strNamed + str;
                 }) +
             Bytes("FF"));
    const std::string strTail = "[b='64'][b='65'][b='66'][b='8256'][b='8257'][b='8258']";
    EXPECT_EQ(strRead.substr(strRead.size() - std::min(strRead.size(), strTail.size())), strTail);

    // Local names and names of attributes.
    strRead = Read(
        Head() + Bytes("7C 00 'a' 78 00 'b' FF") + // local names 1 and 2, attribute name 1
        IndexDocument(
            rows, 8258, Bytes("78 81 FF"),
            [](const std::string& str) { return Bytes("78") + Short('n' + str) + Bytes("FF"); },
            [](const std::string& str) { return str + Bytes("FF"); }) +
        Bytes("FF"));
    const std::string strNames = "[n64=''][n65=''][n66=''][n8256=''][n8257=''][n8258='']";
    EXPECT_EQ(strRead.substr(strRead.size() - std::min(strRead.size(), strNames.size())), strNames);
}

TEST(ReadingForms, IndexesOnTheThirdBitFollowTheirBands)
{
    const Index rows[] = {
        {32, "1F"},
        {33, "20 00"},
        {34, "20 01"},
        {2080, "27 FF"},
        {2081, "28 00 00"},
        {2082, "28 00 01"},
        {526368, "2F FF FF"},
        {526369, "30 00 00 00"},
        {526370, "30 00 00 01"},
        {1048576, "30 07 F7 DF"},
    };
    // A full table: the last name but one is the last that enters.
    const std::string strDocument =
        Head() + Bytes("3C 00 'a'") +
        IndexDocument(
            rows, 1048576, Bytes("3C 80 F0"),
            [](const std::string& str) { return Bytes("3C") + Short('n' + str) + Bytes("F0"); },
            [](const std::string& str) { return str + Bytes("F0"); });
    CDocument document(strDocument + Bytes("3C 05 'behind' 80 't' F0 F0"));
    ASSERT_TRUE(CFastInfosetReader(CFastInfosetContext(), document).Parse());
    std::size_t nElement = 1;
    std::string strNames;
    for (const CXmlElement* p = document.GetDocumentElement()->GetFirstElement(); p;
         p = p->GetNextSiblingElement())
        if (++nElement > 1048576)
            strNames += p->GetLocalName() + p->GetText() + ' ';
    EXPECT_EQ(strNames, "n32 n33 n34 n2080 n2081 n2082 n526368 n526369 n526370 n1048576 behindt ");

    CDocument beyond(strDocument + Bytes("3C 05 'behind' F0 30 07 F7 E0 F0 F0"));
    EXPECT_THROW(CFastInfosetReader(CFastInfosetContext(), beyond).Parse(), CQnException);
}

TEST(ReadingForms, IndexesOnTheFourthBitFollowTheirBands)
{
    const Index rows[] = {
        {16, "AF"},
        {17, "B0 00"},
        {18, "B0 01"},
        {1040, "B3 FF"},
        {1041, "B4 00 00"},
        {1042, "B4 00 01"},
        {263184, "B7 FF FF"},
        {263185, "B8 00 00 00"},
        {263186, "B8 00 00 01"},
        {1048576, "B8 0B FB EF"},
    };
    const std::string strRead =
        Read(Head() + Bytes("3C 00 'a' 90 't'") +
             IndexDocument(
                 rows, 1048576, Bytes("90 't'"),
                 [](const std::string& str) {
                     return str.size() < 3 ? Bytes("91") + str
                                           : Bytes("92") + static_cast<char>(str.size() - 3) + str;
                 },
                 [](const std::string& str) { return Bytes("3C 80") + str + Bytes("F0"); }) +
             Bytes("F0"));
    const std::string strTail = " (a '16' a '17' a '18' a '1040' a '1041' a '1042' a '263184' "
                                "a '263185' a '263186' a '1048576')";
    EXPECT_EQ(strRead.substr(strRead.size() - std::min(strRead.size(), strTail.size())), strTail);
}
