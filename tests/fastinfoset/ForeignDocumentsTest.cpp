// Documents of other encoders, octet by octet: what is read, what is dropped, what is refused.

#include "tests/fastinfoset/FiTools.h"

using namespace Fi;

namespace {

// Rows of octets, behind the header where one is given, and of the tree or the failure: "!" stands
// for the words that most failures begin with.
void ExpectTrees(const char* pszTable, const char* pszHeader = "E0 00 00 01 00 ",
                 const CFastInfosetContext& context = {})
{
    for (const auto& [strOctets, strCell] : Table<2>(pszTable)) {
        const std::string strTree =
            strCell[0] != '!' ? strCell
                              : "<Failed to parse FastInfoset. " + strCell.substr(1) + '>';
        EXPECT_EQ(Read(Bytes(pszHeader + strOctets), context), strTree) << strOctets;
    }
}

} // namespace

// ---- What is read ----

TEST(ForeignDocuments, ElementsAttributesAndTextAreRead)
{
    ExpectTrees(R"(
        // The prefix of a name is dropped.
        3F 00 'p' 00 'u' 00 'a' F0 | {u}a
        // Attributes in a namespace: prefix 1 and namespace 1 are built in.
        7C 00 'a' 7B 80 80 03 'lang' 01 'de' 79 00 'u' 00 'b' 00 '1' F0 F0
        | a[{http://www.w3.org/XML/1998/namespace}lang='de'][{u}b='1']
        // Text in chunks, around what is dropped and around a child.
        3C 00 'a' 80 't' E2 40 'x' 81 'ex' E1 00 'p' 00 'x' 3C 00 'b' F0 80 't' F0 | a 'text' (b)
        // What enters no table: a chunk or a value without the add bit, an index, an empty value.
        3C 00 'a' 80 't' A0 F0                                | !Index out of range.
        7C 00 'a' 78 00 'b' 00 't' 78 00 'c' 80 F0 F0         | !Index out of range.
        3C 00 'a' 90 't' A0 A0 91 'uv' A1 A2 F0               | !Index out of range.
        7C 00 'a' 78 00 'b' FF 78 00 'c' 40 't' 78 00 'd' 80 F0 F0 | a[b=''][c='t'][d='t']
        // Tables of their own: chunks and values, names of elements and of attributes.
        7C 00 'a' 78 00 'b' 40 't' F0 A0 F0                   | !Index out of range.
        7C 00 'a' 00 40 't' F0 F0                             | !Index out of range.
        // Characters that the code page lacks, in a literal and in an entry.
        3C 00 'a' 90 'x' 92 00 E2 82 AC A1 F0                 | a 'x??'
        // Values with ones in the low half, and as entries.
        7C 00 'a' 78 00 'b' 20 01 1F 23 FF                    | a[b='1']
        3C 00 'a' 98 06 00 12 B0 0F A0 F0                     | a '12:0012:00'
        // A zero octet ends a text in the tree.
        7C 00 'a' 78 00 'b' 02 'x' 00 'y' F0 82 00 'x' 00 'y' 80 'z' F0 | a[b='x'] 'xz'
    )");
    // Carriage returns are dropped from chunks and kept in values.
    EXPECT_EQ(Read(Bytes("E0 00 00 01 00 7C 00 'a' 78 00 'b' 02 'x' 0D 'y' F0 90 0D 82 00 'x' 0D "
                         "'y' A0 F0")),
              "a[b='x\ry'] 'xy'");
}

TEST(ForeignDocuments, NamespaceAttributesOfAnyElementEnterTheTableOfPrefixes)
{
    // In the third element "p" is prefix 2 again; then "q" is undeclared and "r" is namespace 3.
    CDocument document(Bytes("E0 00 00 01 00 38 CD 04 'urn:d' CF 00 'p' 04 'urn:1' F0 3C 00 'a'"
                             "38 CF 81 04 'urn:2' F0 3C 00 'b' 38 CE 00 'q' CF 00 'r' 82 F0 00"
                             "FF F0"));
    ASSERT_TRUE(CFastInfosetReader(CFastInfosetContext(), document).Parse());
    EXPECT_EQ(TreeLine(*document.GetDocumentElement()), "a (b (a))");
    const char* const apszAliases[][2] = {{"", "urn:d"}, {"p", "urn:2"}, {"q", ""}, {"r", "urn:1"}};
    for (const auto& [pszPrefix, pszUri] : apszAliases)
        EXPECT_EQ(document.LookupNamespaceFromAlias(pszPrefix), pszUri);
    ExpectTrees(R"(
        // The default undeclared; any octet ends the namespaces.
        38 CC 00 3C 00 'a' F0    | a
        // A prefix and a namespace past their tables.
        38 CE 81 F0 3C 00 'a' F0 | !Index out of range.
        38 CD 81 F0 3C 00 'a' F0 | !Index out of range.
    )");
}

TEST(ForeignDocuments, EncodingsThatTheLibraryLacksAreRefused)
{
    ExpectTrees(R"(
        // UTF-16.
        7C 00 'a' 78 00 'b' 11 00 'A' FF   | <logic_error basic_string::_M_construct null not valid>
        3C 00 'a' 85 00 'A' F0             | <logic_error basic_string::_M_construct null not valid>
        // Alphabet 3, and ones in a high half.
        7C 00 'a' 78 00 'b' 20 20 00 FF    | !Index out of range.
        3C 00 'a' 88 08 00 F0              | !Index out of range.
        7C 00 'a' 78 00 'b' 20 00 F1 FF    | !Index out of range.
        // Algorithms 11 and 32.
        7C 00 'a' 78 00 'b' 30 A0 00 FF    | <Unknown byte encoding.>
        3C 00 'a' 8C 7C 00 F0              | <Unknown byte encoding.>
    )");
}

// ---- What is dropped ----

TEST(ForeignDocuments, WhatIsNoElementAttributeOrTextIsDropped)
{
    ExpectTrees(R"(
        // Ahead of the root: comments, one empty and one that looks like an end; instructions.
        E2 FF E2 01 FF F0 E1 02 'pi2' 40 'x' E1 00 'p' FF 3C 00 'a' F0 | a
        // In an element; references with each set of names.
        3C 00 'a' E1 00 'p' 00 'x' E2 00 'x' 3C 00 'b' FF              | a (b)
        3C 00 'a' C8 00 'n' C9 00 'n' 00 'p' CA 00 'n' 00 's' CB 00 'n' 00 's' 00 'p' F0 | a
        // By indexes, which nothing checks.
        E1 BF BF E2 EF DF BF 3C 00 'a' C8 C0 00 F0                     | a
        // Comments and targets enter no table.
        3C 00 'a' E2 40 'x' A0 F0                                      | !Index out of range.
        // Document types, with identifiers and instructions.
        C4 F0 3C 00 'a' F0                                             | a
        C7 02 'sys' 02 'pub' E1 00 'p' 00 'x' E1 00 'q' FF F0 3C 00 'a' F0 | a
        // Bytes behind the root.
        3C 00 'a' F0 F0 'more' FF 3C                                   | a
    )");
}

TEST(ForeignDocuments, ComponentsOfTheHeaderAreDropped)
{
    ExpectTrees(R"(
        // Encoding scheme, standalone and version.
        04 04 'UTF-8' 3C 00 'a' F0                                     | a
        02 01 3C 00 'a' F0                                             | a
        01 02 '1.0' 3C 00 'a' F0                                       | a
        // Notations and unparsed entities.
        10 C3 00 'n' 00 's' 00 'p' C0 00 'm' F0 3C 00 'a' F0           | a
        08 D1 00 'e' 00 's' 00 'p' 00 'n' D0 00 'f' 00 's' 80 F0 3C 00 'a' F0 | a
        // All of these, in the order of their bits; the top bit says nothing.
        BF 10 00 04 'urn:v' C0 00 'm' F0 D0 00 'f' 00 's' 80 F0 04 'UTF-8' 00 FF 3C 00 'a' F0 | a
    )",
                "E0 00 00 01 ");
}

// What a document carries in a sequence is misread, unless the lengths happen to fit.
TEST(FastInfosetHeader, SequencesReadALengthAheadOfEachItem)
{
    ExpectTrees(R"(
        // Two prefixes, and the length ahead of what would be a third.
        20 02 00 01 00 'p' 01 00 'q' 01 3C 00 'a' F0          | a
        // A smaller length ends them sooner.
        20 02 00 8F FF 7F 00 'p' 00 3C 00 'a' F0              | a
        // One prefix as the standard has it.
        20 02 00 00 00 'p' 3C 00 'a' F0                       | !Unexpected End of File.
        // Additional data takes a length from the octet at hand, and as the standard has it.
        40 00 02 'abc' 00 3C 00 'a' F0                        | a
        40 00 02 'uri' 01 'd1' 3C 00 'a' F0
        | !Invalid NonEmptyOctetString type  on the second bit of an octet.
        // Values do so too, names do not.
        20 00 10 00 'v' 00 3C 00 'a' F0                       | a
        20 00 02 00 80 00 3C 00 'a' F0                        | a
        // Each part of a vocabulary, in the order of its bits: name, alphabets, algorithms,
        // prefixes, namespaces, local names, other names and URIs, values, chunks, other strings,
        // names of elements and of attributes.
        20 1F FF 00 'u' 00 00 'x' 00 00 00 'x' 00 00 00 'x' 00 00 00 'x' 00 00 00 'x' 00 00 00 'x'
        +   00 00 00 'x' 00 00 'v' 00 00 'v' 00 00 'v' 00 00 80 00 00 40 'n' 00 3C 00 'a' F0 | a
        // A prefix and a value that were read over have no index.
        20 02 00 00 00 'p' 00 3F 81 80 00 'a' F0              | !Index out of range.
        20 00 10 00 'v' 00 7C 00 'a' 78 00 'b' 80 FF          | !Index out of range.
    )",
                "E0 00 00 01 ");
}

// ---- Ends ----

TEST(ForeignDocuments, TwoEndsShareAnOctet)
{
    ExpectTrees(R"(
        // Ends of children, root and document.
        3C 00 'a' 3C 00 'b' 3C 00 'c' FF 3C 00 'd' FF           | a (b (c) d)
        3C 00 'a' 3C 00 'b' 3C 00 'c' 3C 00 'd' FF F0 F0        | a (b (c (d)))
        // Ends of attributes and of what bears them.
        7C 00 'a' 78 00 'x' FF FF                               | a[x='']
        3C 00 'a' 3C 00 'b' 7C 00 'c' 78 00 'x' FF FF FF        | a (b (c[x='']))
        // No attributes where some are announced; no end shared.
        7C 00 'a' FF                                            | a
        7C 00 'a' 78 00 'x' FF F0 3C 00 'b' F0 3C 00 'c' F0 F0  | a[x=''] (b c)
        // Text behind a shared end belongs to the grandparent.
        3C 00 'a' 3C 00 'b' 3C 00 'c' FF 80 't' F0              | a 't' (b (c))
        // No root.
        F0                                                      | !No element found.
        E2 FF FF                                                | !No element found.
    )");
}

TEST(FastInfosetReader, AnUnknownOctetIsSkippedInTheDocumentAndRefusedInAnElement)
{
    for (const char* const pszOctet : {"C0", "CC", "D0", "E0", "E3", "FE"}) {
        const std::string strOctet = pszOctet;
        ExpectTrees((strOctet + " 3C 00 'a' F0 | a").c_str());
        ExpectTrees(("3C 00 'a' " + strOctet + " F0 | !Invalid Encoding of Element type.").c_str());
    }
}

TEST(ForeignDocuments, TheFirstBytesTellFastInfoset)
{
    std::vector<std::string> vecDeclarations = {""};
    for (const std::string strVersion : {"", " version='1.0'", " version='1.1'"})
        for (const std::string strAlone : {"", " standalone='yes'", " standalone='no'"})
            vecDeclarations.push_back("<?xml" + strVersion + " encoding='finf'" + strAlone + "?>");
    const std::string strBody = Bytes("E0 00 00 01 00 38 F0 3C 00 'a' FF");
    for (int i = -1; i <= 10; ++i) { // the first and the last number are no declarations
        const std::string strDeclaration = vecDeclarations[i < 0 || i > 9 ? 0 : i];
        const Output output = Written([i](auto& w) {
            w.WriteStartDocument(static_cast<FInfoDecl>(i));
            RunScript(w, "<a >");
            w.WriteEndDocument();
        });
        EXPECT_EQ(output.strOctets, strDeclaration + strBody);
        EXPECT_EQ(Read(output.strOctets), "a");
        EXPECT_EQ(Read(strDeclaration + strBody.substr(0, 4)), "no Fast Infoset");
    }
    for (const char* const pszAhead :
         {"<?xml encoding=\"finf\"?>", "<?xml version='1.2' encoding='finf'?>",
          "<?xml version='1.0' encoding='finf'?>\n",
          "<?xml encoding='finf'?><?xml encoding='finf'?>", "\xEF\xBB\xBF", " "})
        EXPECT_EQ(Read(pszAhead + strBody), "no Fast Infoset") << pszAhead;
    for (const char* const pszOctets :
         {"", "E0", "E0 00 00 01", "E0 00 00 02 00 F0", "E0 00 01 00 00 F0", "E1 00 00 01 00 F0"})
        EXPECT_EQ(Read(Bytes(pszOctets)), "no Fast Infoset") << pszOctets;
}

// ---- Forms that X.891 doesn't have ----

TEST(FastInfosetReader, EveryOtherPatternOfALengthOrAnIndexIsRefused)
{
    // What stands ahead; octets, the first and the last of each range among them; what becomes of
    // them with three zero octets behind.
    for (const auto& [strAhead, strOctets, strReason] : Table<3>(R"(
        3C                  | 00 3F 40 60       | Unexpected End of File.
        3C                  | 41 5F 61 7F
        | Invalid NonEmptyOctetString type  on the second bit of an octet.
        7C 00 'a' 78 00 'b' | 08 0C             | Unexpected End of File.
        7C 00 'a' 78 00 'b' | 09 0A 0B 0D 0E 0F
        | Invalid NonEmptyOctetString type  on the fifth bit of an octet.
        3C                  | 80 EF             | Index out of range.
        3C                  | F0 FF
        | Invalid Encoding of integers 1 To 2^20 type  on the second bit of an octet.
        7C 00 'a'           | 00 6F             | Index out of range.
        7C 00 'a'           | 70 77
        | Invalid Encoding of integers 1 To 2^20 type  on the second bit of an octet.
        7C 00 'a' 78 00 'b' | 80 EF             | Index out of range.
        7C 00 'a' 78 00 'b' | F0 FE
        | Invalid Encoding of integers 0 To 2^20 type  on the second bit of an octet.
        38 F0               | 01 30             | Index out of range.
        38 F0               | 31 37 39 3B
        | Invalid Encoding of integers 1 To 2^20 type  on the third bit of an octet.
        3C 00 'a'           | A0 B8             | Index out of range.
        3C 00 'a'           | B9 BF
        | Invalid Encoding of integers 1 To 2^20 type  on the fourth bit of an octet.
    )"))
        for (const char cOctet : Bytes(strOctets))
            EXPECT_EQ(Read(Bytes("E0 00 00 01 00 " + strAhead) + cOctet + std::string(3, '\0')),
                      "<Failed to parse FastInfoset. " + strReason + '>')
                << strAhead << ' ' << static_cast<int>(cOctet);
}

TEST(FastInfosetReader, TheForbiddenFormsOfNamesAndLongIndexesAreRefused)
{
    ExpectTrees(R"(
        // A prefix without a namespace.
        3E 00 'p' 00 'a' F0                 | !Invalid QName type Prefix without Namespace.
        7C 00 'a' 7A 00 'p' 00 'b' FF FF    | !Invalid QName type Prefix without Namespace.
        // More than 20 bits.
        30 10 00 00
        | !Invalid Encoding of integers 1 To 2^20 type  on the third bit of an octet.
        3C 00 'a' B8 10 00 00
        | !Invalid Encoding of integers 1 To 2^20 type  on the fourth bit of an octet.
    )");
}
