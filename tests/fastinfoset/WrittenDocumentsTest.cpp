// Documents octet by octet, and the borders between the forms of lengths and indexes where they
// stand in a document.

#include "tests/fastinfoset/FiTools.h"

#include <gtest/gtest.h>

using namespace Fi;

namespace {

// The octets of the steps inside a root "r" whose start tag is still open.
std::string InRoot(const Steps& steps)
{
    std::string strFailure;
    const std::string strOctets = Written(
        [&](CFastInfosetWriter& w) {
            w.WriteStartElement("r", "");
            steps(w);
        },
        CFastInfosetContext(), strFailure);
    EXPECT_EQ(strFailure, "");
    return strOctets;
}

// What the octets have ahead of a tail of so many octets.
std::string HexAhead(const std::string& strOctets, std::size_t nTail, std::size_t nCount)
{
    return Hex(strOctets.substr(strOctets.size() - nTail - nCount, nCount));
}

void Leaf(CFastInfosetWriter& w, const std::string& strName)
{
    w.WriteStartElement(strName, "");
    w.WriteEndElement();
}

} // namespace

TEST(WrittenDocuments, EveryOctetHasItsReason)
{
    CFastInfosetContext context;
    context.SetEncoding(it_i4, {2, 4});
    context.SetEncoding(it_decimal, {1, 1});
    std::string strFailure;
    const std::string strOctets = Written(
        [](CFastInfosetWriter& w) {
            w.SetDefaultNamespace("urn:d");
            w.AddNamespace("p", "urn:p");
            w.WriteStartDocument(FInfoDecl_FinfStandaloneYes);
            w.WriteStartElement("r", "urn:d");
            w.WriteAttributeString("id", "", "7", it_string);
            w.WriteStartElement("e", "urn:p");
            w.WriteAttributeString("id", "", "7", it_string);
            w.WriteString("hello", it_string, false);
            w.WriteEndElement();
            w.WriteStartElement("e", "urn:p");
            w.WriteAttributeString("id", "", "", it_string);
            w.WriteEndElement();
            w.WriteStartElement("n", "");
            w.WriteString("1", it_i4, false);
            w.WriteEndElement();
            w.WriteStartElement("n", "");
            w.WriteString("1.5", it_decimal, false);
            w.WriteEndElement();
            w.WriteEndElement();
            w.WriteEndDocument();
        },
        context, strFailure);
    const char* const apszReasons[][2] = {
        {"'<?xml encoding='", "declaration, in UTF-8"},
        {"27 'finf' 27 ' standalone=' 27 'yes' 27 '?>'", "the same, with its quotes"},
        {"E0 00 00 01", "identification and version"},
        {"00", "no optional component"},
        {"78", "element: attributes (40), namespaces (38)"},
        {"CD 04 'urn:d'", "default namespace of 5 octets; namespace 2"},
        {"CF 00 'p' 04 'urn:p'", "prefix of 1 octet, namespace of 5; prefix 2, namespace 3"},
        {"F0", "end of the namespaces"},
        {"3D 81 00 'r'", "name with namespace 2 and a local name of 1 octet; name 1, local name 1"},
        {"78 01 'id'", "attribute: local name of 2 octets; attribute name 1, local name 2"},
        {"40 '7'", "value of 1 octet for the table; value 1"},
        {"F0", "end of the attributes"},
        {"7F 81 82 00 'e'", "attributes; prefix 2, namespace 3, new local name; name 2"},
        {"00 80 F0", "attribute name 1, value 1, end of the attributes"},
        {"92 02 'hello'", "chunk for the table, of 3 octets and 2 more; chunk 1"},
        {"F0", "end of e: another element follows"},
        {"41", "name 2, attributes"},
        {"00 FF F0", "attribute name 1, the empty value, end of the attributes"},
        {"F0", "end of e"},
        {"3C 00 'n'", "name of a local name only; name 3"},
        {"9C 0E 01 00 00 00 01", "chunk for the table in algorithm 4, 4 octets; chunk 2"},
        {"F0", "end of n"},
        {"02", "name 3, no attributes"},
        {"98 01 1C 5F", "chunk for the table in alphabet 1, of 2 octets, the last half filled"},
        {"FF", "ends of n and r"},
        {"F0", "end of the document"},
    };
    std::size_t nAt = 0;
    for (const auto& [pszOctets, pszReason] : apszReasons) {
        const std::string strExpected = Bytes(pszOctets);
        EXPECT_EQ(Hex(strOctets.substr(nAt, strExpected.size())), Hex(strExpected)) << pszReason;
        nAt += strExpected.size();
    }
    EXPECT_EQ(strOctets.size(), nAt);
    EXPECT_EQ(strFailure, "");
    EXPECT_EQ(Read(strOctets), "{urn:d}r[id='7'] ({urn:p}e[id='7'] 'hello' {urn:p}e[id=''] n '1' "
                               "n '1.5')");
}

TEST(WrittenDocuments, LengthsChangeTheirFormInPlace)
{
    struct Row
    {
        std::size_t nLength;
        const char* pszOctets;
    };
    for (const Row& row :
         {Row{64, "7C 3F"}, Row{65, "40 00"}, Row{320, "40 FF"}, Row{321, "60 00 00 00 00"}}) {
        const std::string strOctets = InRoot([&](auto& w) {
            w.WriteStartElement(std::string(row.nLength, 'n'), "");
            w.WriteAttributeString("a", "", "", it_string);
        });
        // Behind the name: attribute name and empty value.
        const std::size_t nCount = Bytes(row.pszOctets).size();
        EXPECT_EQ(HexAhead(strOctets, row.nLength + 4, nCount), row.pszOctets) << "names";
    }
    for (const Row& row :
         {Row{8, "07"}, Row{9, "08 00"}, Row{264, "08 FF"}, Row{265, "0C 00 00 00 00"}}) {
        const std::string strOctets = InRoot([&](auto& w) {
            w.WriteAttributeString("a", "", std::string(row.nLength, 'v'), it_string);
        });
        EXPECT_EQ(HexAhead(strOctets, row.nLength, Bytes(row.pszOctets).size()), row.pszOctets)
            << "values";
    }
    for (const Row& row :
         {Row{2, "91"}, Row{3, "92 00"}, Row{258, "82 FF"}, Row{259, "83 00 00 00 00"}}) {
        const std::string strOctets = InRoot(
            [&](auto& w) { w.WriteString(std::string(row.nLength, 't'), it_string, false); });
        EXPECT_EQ(HexAhead(strOctets, row.nLength, Bytes(row.pszOctets).size()), row.pszOctets)
            << "chunks";
    }
}

TEST(WrittenDocuments, IndexesChangeTheirFormInPlace)
{
    // The root has element name 1 and local name 1, so name i of the loop has number i + 2.
    const std::string strElements = InRoot([](auto& w) {
        for (int i = 0; i < 2080; ++i)
            Leaf(w, 'n' + std::to_string(i));
        for (const int i : {30, 31, 2078, 2079})
            Leaf(w, 'n' + std::to_string(i));
    });
    // Each behind the end of the one before.
    EXPECT_EQ(HexAhead(strElements, 0, 12), "F0 1F F0 20 00 F0 27 FF F0 28 00 00");

    const std::string strAttributes = InRoot([](auto& w) {
        for (int i = 0; i < 8257; ++i)
            w.WriteAttributeString('n' + std::to_string(i), "", std::to_string(i), it_string);
        for (const int i : {63, 64, 8255, 8256})
            w.WriteAttributeString('n' + std::to_string(i), "", std::to_string(i), it_string);
    });
    // Name and value: 64, 65, 8256, 8257.
    EXPECT_EQ(HexAhead(strAttributes, 0, 16), "3F BF 40 00 C0 00 5F FF DF FF 60 00 00 E0 00 00");

    // Local names, as parts of names of the other kind: number 64 is n62.
    const std::string strParts = InRoot([](auto& w) {
        for (int i = 0; i < 64; ++i)
            Leaf(w, 'n' + std::to_string(i));
        w.WriteStartElement("x", "");
        w.WriteAttributeString("n62", "", "", it_string);
        w.WriteAttributeString("n63", "", "", it_string);
    });
    EXPECT_EQ(HexAhead(strParts, 0, 7), "78 BF FF 78 C0 00 FF");
}
