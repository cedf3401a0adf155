// Documents octet by octet, and the borders between the forms of lengths and indexes, written and
// read back.

#include "tests/fastinfoset/FiTools.h"

using namespace Fi;

namespace {

// The text with another one in place of its percent sign.
std::string Filled(std::string str, const std::string& strText)
{
    return str.replace(str.find('%'), 1, strText);
}

} // namespace

TEST(WrittenDocuments, EveryOctetHasItsReason)
{
    CFastInfosetContext context;
    context.SetEncoding(it_i4, {2, 4});
    context.SetEncoding(it_decimal, {1, 1});
    const Output output = Written(
        [](auto& w) {
            RunScript(w, "=urn:d +p=urn:p");
            w.WriteStartDocument(FInfoDecl_FinfStandaloneYes);
            RunScript(w, "<{urn:d}r @id=7 <{urn:p}e @id=7 'hello > <{urn:p}e @id= > <n '(i4)1 > "
                         "<n '(decimal)1.5 > >");
            w.WriteEndDocument();
        },
        context);
    std::size_t nAt = 0;
    for (const auto& [strOctets, strReason] : Table<2>(R"(
        '<?xml encoding='         | declaration, in UTF-8
        27 'finf' 27 ' standalone=' 27 'yes' 27 '?>' | the same, with its quotes
        E0 00 00 01               | identification and version
        00                        | no optional component
        78                        | element: attributes (40), namespaces (38)
        CD 04 'urn:d'             | default namespace of 5 octets; namespace 2
        CF 00 'p' 04 'urn:p'      | prefix of 1 octet, namespace of 5; prefix 2, namespace 3
        F0                        | end of the namespaces
        3D 81 00 'r'              | name with namespace 2 and a local name; name 1, local name 1
        78 01 'id'                | attribute: local name of 2 octets; attribute name 1
        40 '7'                    | value of 1 octet for the table; value 1
        F0                        | end of the attributes
        7F 81 82 00 'e'           | attributes; prefix 2, namespace 3, new local name; name 2
        00 80 F0                  | attribute name 1, value 1, end of the attributes
        92 02 'hello'             | chunk for the table, of 3 octets and 2 more; chunk 1
        F0                        | end of e: another element follows
        41                        | name 2, attributes
        00 FF F0                  | attribute name 1, the empty value, end of the attributes
        F0                        | end of e
        3C 00 'n'                 | name of a local name only; name 3
        9C 0E 01 00 00 00 01      | chunk for the table in algorithm 4, 4 octets; chunk 2
        F0                        | end of n
        02                        | name 3, no attributes
        98 01 1C 5F               | chunk for the table in alphabet 1, the last octet half filled
        FF                        | ends of n and r
        F0                        | end of the document
    )")) {
        const std::string strExpected = Bytes(strOctets);
        EXPECT_EQ(output.strOctets.substr(nAt, strExpected.size()), strExpected) << strReason;
        nAt += strExpected.size();
    }
    EXPECT_EQ(output.strOctets.size(), nAt);
    EXPECT_EQ(Read(output.strOctets), "{urn:d}r[id='7'] ({urn:p}e[id='7'] 'hello' {urn:p}e[id=''] "
                                      "n '1' n '1.5')");
}

TEST(WrittenDocuments, LengthsFollowTheirBands)
{
    // Script and tree with % for the text; what stands ahead of the length and behind the text;
    // each length with its octets.
    for (const auto& [strScript, strTree, strAhead, strBehind, strLengths] : Table<5>(R"(
        <% > .      | %        | 38 F0 3C                  | FF
        | 1=00 64=3F 65=4000 320=40FF 321=6000000000 65536=600000FEBF
        <r @k=% > . | r[k='%'] | 78 F0 3C 00 'r' 78 00 'k' | F0 FF
        | 1=40 5=44 6=05 8=07 9=0800 264=08FF 265=0C00000000 65536=0C0000FEF7
        <r '% > .   | r '%'    | 38 F0 3C 00 'r'           | FF
        | 1=90 2=91 3=9200 5=9202 6=8203 258=82FF 259=8300000000 65536=830000FEFD
    )")) {
        std::istringstream lengths(strLengths);
        for (std::string strLength; lengths >> strLength;) {
            SCOPED_TRACE(strScript + ' ' + strLength);
            const std::string strText(std::stoul(strLength), 'x');
            const std::string strOctets = Written(Filled(strScript, strText));
            const std::string strHead = Bytes("E0 00 00 01 00 " + strAhead) +
                                        Bytes(strLength.substr(strLength.find('=') + 1));
            EXPECT_EQ(strOctets.substr(0, strHead.size()), strHead);
            EXPECT_TRUE(strOctets.substr(strHead.size()) == strText + Bytes(strBehind));
            EXPECT_TRUE(Read(strOctets) == Filled(strTree, strText));
        }
    }
}

// The name of each entry of a vocabulary is its number, so the trees show which one was meant.
TEST(WrittenDocuments, IndexesFollowTheirBands)
{
    struct Row
    {
        const char* pszScript; // null: octets that no writer puts out
        const char* pszOctets;
        const char* pszTree;
    };
    const auto check = [](unsigned int uEntries, const auto& add, std::initializer_list<Row> rows) {
        CFastInfosetContext context;
        context.SetElementMaxAddLength(8);
        context.SetAttributeMaxAddLength(8);
        context.SetUseGeneratedVocabulary(true);
        for (unsigned int u = 1; u <= uEntries; ++u)
            add(*context.GetVocabulary(), std::to_string(u));
        for (const Row& row : rows) {
            const std::string strOctets =
                Bytes("E0 00 00 01 20 10 00 18 'urn:qnxmllib16:vocabulary'") + Bytes(row.pszOctets);
            if (row.pszScript) {
                EXPECT_EQ(Written(row.pszScript, context), strOctets);
            }
            EXPECT_EQ(Read(strOctets, context), row.pszTree);
        }
    };
    constexpr unsigned int kFull = 1048576;
    check(kFull, [](auto& vocabulary, const auto& str) { vocabulary.AddElement("", "", str); },
          {
              // The writer's last band is read as the next name, as the standard has it.
              {"<32 <33 > <2080 > <2081 > <526368 > <526369 > > .",
               "38 F0 1F 20 00 F0 27 FF F0 28 00 00 F0 2F FF FF F0 30 00 00 01 FF F0",
               "32 (33 2080 2081 526368 526370)"},
              // A full table, which a further name doesn't enter.
              {nullptr, "1F 30 00 00 00 F0 30 07 F7 DF F0 3C 00 'x' F0 30 07 F7 DF FF F0",
               "32 (526369 1048576 x 1048576)"},
              {nullptr, "3C 00 'x' 30 07 F7 E0",
               "<Failed to parse FastInfoset. Index out of range.>"},
          });
    check(8257, [](auto& vocabulary, const auto& str) { vocabulary.AddAttribute("", "", str); },
          {
              {"<r @64= @65= @8256= @8257= > .",
               "78 F0 3C 00 'r' 3F FF 40 00 FF 5F FF FF 60 00 00 FF F0 FF",
               "r[64=''][65=''][8256=''][8257='']"},
              // Local names, as parts of names of the other kind.
              {"<64 <65 > > .", "38 F0 3C BF 3C C0 00 FF F0", "64 (65)"},
          });
    check(kFull, [](auto& vocabulary, const auto& str) { vocabulary.AddAttributeValue(str); },
          {{"<r @k=64 @k=65 @k=8256 @k=8257 @k=1048576 > .",
            "78 F0 3C 00 'r' 78 00 'k' BF 00 C0 00 00 DF FF 00 E0 00 00 00 EF DF BF F0 FF",
            "r[k='64'][k='65'][k='8256'][k='8257'][k='1048576']"}});
    check(kFull, [](auto& vocabulary, const auto& str) { vocabulary.AddElementValue(str); },
          {{"<r <r '16 > <r '17 > <r '1040 > <r '1041 > <r '263184 > <r '263185 > <r '1048576 > "
            "> .",
            "38 F0 3C 00 'r' 00 AF F0 00 B0 00 F0 00 B3 FF F0 00 B4 00 00 F0 00 B7 FF FF F0 "
            "00 B8 00 00 00 F0 00 B8 0B FB EF FF F0",
            "r (r '16' r '17' r '1040' r '1041' r '263184' r '263185' r '1048576')"}});
}

TEST(FastInfosetWriter, IntegersFollowTheirBands)
{
    constexpr const char* pszRange = "<Failed to write FastInfoset. Integer out of range.>";
    constexpr const char* pszLength =
        "<Failed to write FastInfoset. Invalid length of an octet string.>";
    const unsigned char uOctet = 0;
    struct Row
    {
        Steps steps;
        const char* pszOctets;
        const char* pszFailure;
    };
    const Row rows[] = {
        {[](auto& w) { w.Integer0To2pw20Bit2(0, 1048577); }, "", pszRange},
        // One above what X.891 has, and the last one ahead of that.
        {[](auto& w) { w.Integer1To2pw20Bit3(0x40, 526369); }, "70 00 00 01", ""},
        {[](auto& w) { w.Integer1To2pw20Bit3(0x40, 526368); }, "6F FF FF", ""},
        {[](auto& w) { w.Integer1To2pw20Bit4(0xA0, 263185); }, "B8 00 00 00", ""},
        {[](auto& w) { w.Integer1To2pw20Bit4(0, 0); }, "", pszRange},
        {[&](auto& w) { w.NonEmptyOctetStringBit5(0x80, &uOctet, 1); }, "80 00", ""},
        {[&](auto& w) { w.NonEmptyOctetStringBit5(0, &uOctet, 0x100000001); }, "", pszLength},
        {[&](auto& w) { w.NonEmptyOctetStringBit7(0, &uOctet, 0); }, "", pszLength},
        {[](auto& w) { w.EncodedCharacterStringBit5(0, "", it_string); }, "", pszLength},
    };
    for (const Row& row : rows) {
        const Output output = Written(row.steps);
        EXPECT_EQ(output.strOctets, Bytes(row.pszOctets)) << &row - rows;
        EXPECT_EQ(output.strFailure, row.pszFailure) << &row - rows;
    }
}
