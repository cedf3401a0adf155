#include "tests/fastinfoset/FiTools.h"
#include "tests/model/Failure.h"

#include <gtest/gtest.h>

#include <clocale>
#include <map>
#include <vector>

using namespace Fi;

namespace {

constexpr const char* kXsi = "http://www.w3.org/2001/XMLSchema-instance";
// The octets of that namespace as a literal.
constexpr const char* kXsiOctets = "28 'http://www.w3.org/2001/XMLSchema-instance'";
// Header, root "r" without attributes and declarations.
const std::string kPlainRoot = "E0 00 00 01 00 38 F0 3C 00 'r' ";
// The same with attributes to follow.
const std::string kRoot = "E0 00 00 01 00 78 F0 3C 00 'r' ";

void Start(CFastInfosetWriter& w, const char* pszName, const char* pszNamespace = "")
{
    w.WriteStartElement(pszName, pszNamespace);
}

void Attribute(CFastInfosetWriter& w, const char* pszName, const std::string& strValue,
               ItemType eType = it_string)
{
    w.WriteAttributeString(pszName, "", strValue, eType);
}

void Text(CFastInfosetWriter& w, const std::string& strValue, ItemType eType = it_string)
{
    w.WriteString(strValue, eType, false);
}

// The root is open when the steps begin; its end and that of the document are theirs.
Steps InRoot(const Steps& steps)
{
    return [steps](CFastInfosetWriter& w) {
        w.WriteStartDocument(FInfoDecl_None);
        Start(w, "r");
        steps(w);
    };
}

void End(CFastInfosetWriter& w)
{
    w.WriteEndElement();
    w.WriteEndDocument();
}

struct Row
{
    const char* pszCase;
    Steps steps;
    std::string strOctets; // in the notation of Bytes
    const char* pszFailure = "";
};

void Check(const std::vector<Row>& rows, const CFastInfosetContext& context = CFastInfosetContext())
{
    for (const Row& row : rows) {
        SCOPED_TRACE(row.pszCase);
        std::string strFailure;
        EXPECT_EQ(Hex(Written(row.steps, context, strFailure)), Hex(Bytes(row.strOctets.c_str())));
        EXPECT_EQ(strFailure, row.pszFailure);
    }
}

constexpr const char* kTooLate = "Attributes must be added before elements";

} // namespace

TEST(FastInfosetWriter, TheHeaderIsIdentificationVersionAndComponents)
{
    const auto header = [](int iDeclaration) {
        return [iDeclaration](CFastInfosetWriter& w) {
            w.WriteStartDocument(static_cast<FInfoDecl>(iDeclaration));
        };
    };
    Check({
        {"no declaration", header(0), "E0 00 00 01 00"},
        {"a number that is none", header(10), "E0 00 00 01 00"},
        {"a negative one", header(-1), "E0 00 00 01 00"},
    });
    const char* const apszDeclarations[] = {
        "<?xml encoding='finf'?>",
        "<?xml encoding='finf' standalone='yes'?>",
        "<?xml encoding='finf' standalone='no'?>",
        "<?xml version='1.0' encoding='finf'?>",
        "<?xml version='1.0' encoding='finf' standalone='yes'?>",
        "<?xml version='1.0' encoding='finf' standalone='no'?>",
        "<?xml version='1.1' encoding='finf'?>",
        "<?xml version='1.1' encoding='finf' standalone='yes'?>",
        "<?xml version='1.1' encoding='finf' standalone='no'?>",
    };
    int iDeclaration = 0;
    for (const char* pszText : apszDeclarations) {
        std::string strFailure;
        EXPECT_EQ(Written(header(++iDeclaration), CFastInfosetContext(), strFailure),
                  pszText + Bytes("E0 00 00 01 00"));
    }
}

TEST(FastInfosetWriter, AGeneratedVocabularyIsNamedAndUsed)
{
    CFastInfosetContext context;
    context.SetUseGeneratedVocabulary(true);
    context.GetVocabulary()->AddElement("", "", "r");
    context.GetVocabulary()->AddAttribute("", "", "k");
    context.GetVocabulary()->AddAttributeValue("1");
    context.GetVocabulary()->AddElementValue("t");
    const Steps steps = InRoot([](auto& w) {
        Attribute(w, "k", "1");
        Text(w, "t");
        End(w);
    });
    // Initial vocabulary (20) that is external (10 00); then indexes for all: name 1, attribute
    // name 1, value 1, chunk 1.
    Check({{"no URI", steps,
            "E0 00 00 01 20 10 00 18 'urn:qnxmllib16:vocabulary'"
            "78 F0 00 00 80 F0 A0 FF"}},
          context);
    context.SetExternalVocabularyURI("urn:v");
    Check({{"URI", steps, "E0 00 00 01 20 10 00 04 'urn:v' 78 F0 00 00 80 F0 A0 FF"}}, context);
    EXPECT_EQ(std::distance(context.GetVocabulary()->GetLocalNamesTable().begin(),
                            context.GetVocabulary()->GetLocalNamesTable().end()),
              2);
}

TEST(FastInfosetWriter, ElementsAndTheirEnds)
{
    Check({
        // 38: no attributes, namespaces follow; F0 ends them; 3C: literal local name of 1 octet.
        {"only a root: its end shares an octet with that of the document", InRoot(End),
         kPlainRoot + "FF"},
        // 7C and 78: literal names of an element and an attribute, with 40 for the attributes;
        // 40: value of 1 octet for the table; F0 ends the attributes, F0 the element.
        {"attributes, then a sibling", InRoot([](auto& w) {
             Start(w, "b");
             Attribute(w, "k", "1");
             w.WriteEndElement();
             Start(w, "c");
             w.WriteEndElement();
             End(w);
         }),
         kPlainRoot + "7C 00 'b' 78 00 'k' 40 '1' F0 F0 3C 00 'c' FF F0"},
        {"three ends", InRoot([](auto& w) {
             Start(w, "b");
             w.WriteEndElement();
             End(w);
         }),
         kPlainRoot + "3C 00 'b' FF F0"},
        {"four ends", InRoot([](auto& w) {
             Start(w, "b");
             Start(w, "c");
             w.WriteEndElement();
             w.WriteEndElement();
             End(w);
         }),
         kPlainRoot + "3C 00 'b' 3C 00 'c' FF FF"},
        {"attributes end ahead of text and of a child", InRoot([](auto& w) {
             Attribute(w, "k", "");
             Text(w, "t");
             Start(w, "r");
             w.WriteEndElement();
             End(w);
         }),
         kRoot + "78 00 'k' FF F0 90 't' 00 FF F0"},
        {"no text, no chunk", InRoot([](auto& w) {
             Text(w, "");
             End(w);
         }),
         kPlainRoot + "FF"},
        {"text behind a child lands ahead of the child's end", InRoot([](auto& w) {
             Start(w, "b");
             w.WriteEndElement();
             Text(w, "t");
             End(w);
         }),
         kPlainRoot + "3C 00 'b' 90 't' FF F0"},
        {"comments, instructions and schemas leave nothing", InRoot([](auto& w) {
             w.WriteComment("c");
             w.WriteInlineSchema("s");
             w.WritePI("<?p i?>");
             End(w);
         }),
         kPlainRoot + "FF"},
        {"a second root goes the way of the first", InRoot([](auto& w) {
             w.WriteEndElement();
             Start(w, "r");
             End(w);
         }),
         kPlainRoot + "F0 38 F0 00 FF"},
    });
}

TEST(FastInfosetWriter, NamespacesAreDeclaredOnTheRootAlone)
{
    const auto document = [](const Steps& declare, const char* pszNamespace) {
        return [declare, pszNamespace](CFastInfosetWriter& w) {
            declare(w);
            Start(w, "r", pszNamespace);
            w.WriteEndElement();
        };
    };
    Check({
        // CD: default namespace; 81: namespace 2, just entered; 3D: namespace and local name.
        {"default", document([](auto& w) { w.SetDefaultNamespace("urn:d"); }, "urn:d"),
         "38 CD 04 'urn:d' F0 3D 81 00 'r'"},
        // CF: prefix and namespace. Rows go by the order of their namespaces. 3F: all three parts.
        {"prefixes",
         document(
             [](auto& w) {
                 w.AddNamespace("q", "urn:q");
                 w.AddNamespace("p", "urn:p");
             },
             "urn:q"),
         "38 CF 00 'p' 04 'urn:p' CF 00 'q' 04 'urn:q' F0 3F 82 82 00 'r'"},
        {"one namespace under both",
         document(
             [](auto& w) {
                 w.SetDefaultNamespace("urn:d");
                 w.AddNamespace("p", "urn:d");
             },
             "urn:d"),
         "38 CD 04 'urn:d' CF 00 'p' 81 F0 3D 81 00 'r'"},
        {"empty prefix", document([](auto& w) { w.AddNamespace("", "urn:d"); }, "urn:d"),
         "38 CD 04 'urn:d' F0 3D 81 00 'r'"},
        {"empty prefix beside a default",
         document(
             [](auto& w) {
                 w.SetDefaultNamespace("urn:d");
                 w.AddNamespace("", "urn:e");
             },
             ""),
         "38 CD 04 'urn:d' F0 3C 00 'r'"},
        // CE: a prefix without a namespace takes its declaration away.
        {"empty namespace", document([](auto& w) { w.AddNamespace("p", ""); }, ""),
         "38 CE 00 'p' F0 3C 00 'r'"},
        {"what begins like the xml namespace",
         document([](auto& w) { w.AddNamespace("p", "http://www.w3.org/XML/1998/namespaces"); },
                  ""),
         "38 F0 3C 00 'r'"},
        // A namespace that nobody declared: prefix 2 "AA" and namespace 2 inside the name only.
        {"undeclared", document([](auto&) {}, "urn:u"), "38 F0 3F 01 'AA' 04 'urn:u' 00 'r'"},
    });
    Check({
        {"each element finds its own prefix, a name has its index by all three parts",
         InRoot([](auto& w) {
             Start(w, "a", "urn:u");
             Start(w, "a", "urn:u");
             w.WriteEndElement();
             w.WriteEndElement();
             Start(w, "a", "urn:u");
             w.WritePI("");
             w.AddNamespace("p", "urn:u"); // of the second one from now on
             Start(w, "a", "urn:u");
             w.WriteEndElement();
         }),
         kPlainRoot + "3F 01 'AA' 04 'urn:u' 00 'a' 01 FF 01 3F 00 'p' 81 81"},
        {"attributes don't go by the default namespace",
         [](auto& w) {
             w.SetDefaultNamespace("urn:d");
             Start(w, "r", "urn:d");
             w.WriteAttributeString("a", "urn:d", "", it_string);
         },
         "78 CD 04 'urn:d' F0 3D 81 00 'r' 7B 01 'AA' 81 00 'a' FF"},
        {"the xml prefix is built in", InRoot([](auto& w) {
             w.WriteAttributeString("lang", CXmlWriter::XML_NAMESPACE, "en", it_string);
         }),
         kRoot + "7B 80 80 03 'lang' 41 'en'"},
    });
}

TEST(FastInfosetWriter, TheTypeAttributeHasThreeForms)
{
    Check({
        {"no namespace, then a known value", InRoot([](auto& w) {
             w.WriteAttributeType("", "T", it_string);
             w.WriteAttributeType("", "T", it_string);
         }),
         kRoot + (std::string("7B 01 'AA' ") + kXsiOctets + " 03 'type' 40 'T' 00 80")},
        {"a namespace without a prefix names the attribute, the next one finds the prefix",
         InRoot([](auto& w) {
             w.WriteAttributeType("urn:t", "T", it_string);
             w.WriteAttributeType("urn:t", "T", it_string);
         }),
         kRoot + (std::string("7B 01 'AA' 04 'urn:t' 00 'T' 43 'AA:T' 7B 81 ") + kXsiOctets +
                  " 03 'type' 80")},
        {"the default namespace",
         [](auto& w) {
             w.SetDefaultNamespace("urn:d");
             w.AddNamespace("xsi", kXsi);
             Start(w, "r", "urn:d");
             w.WriteAttributeType("urn:d", "T", it_string);
         },
         std::string("78 CD 04 'urn:d' CF 02 'xsi' ") + kXsiOctets +
             " F0 3D 81 00 'r' 7B 81 82 03 'type' 40 'T'"},
        {"nil", InRoot([](auto& w) { w.WriteAttributeNil(); }),
         kRoot + (std::string("7B 01 'AA' ") + kXsiOctets + " 02 'nil' 43 'true'")},
    });
}

TEST(FastInfosetWriter, ShortValuesEnterTheTables)
{
    CFastInfosetContext never;
    never.SetAttributeMaxAddLength(0);
    never.SetElementMaxAddLength(0);
    const Steps twice = InRoot([](auto& w) {
        for (const char* pszValue : {"12345", "123456", "12345", "123456"})
            Attribute(w, "k", pszValue);
        for (const char* pszValue : {"12345", "123456", "12345"})
            Text(w, pszValue);
        w.WriteString("12345", it_i4, false);
    });
    // 44: 5 octets, for the table; 05: 6 octets, not for it; 80 and A0: index 1.
    Check({{"up to 5 bytes", twice,
            kRoot + "78 00 'k' 44 '12345' 00 05 '123456' 00 80 00 05 "
                    "'123456' F0 92 02 '12345' 82 03 '123456' A0 A0"}});
    Check({{"none", twice,
            kRoot + "78 00 'k' 04 '12345' 00 05 '123456' 00 04 '12345' 00 05 "
                    "'123456' F0 82 02 '12345' 82 03 '123456' 82 02 '12345' 82 02 "
                    "'12345'"}},
          never);
}

TEST(FastInfosetWriter, EncodedValuesNameTheirAlphabetOrAlgorithm)
{
    struct Case
    {
        int eKind;
        unsigned long iIndex;
        const char* pszValue;
        const char* pszAttribute; // after the name
        const char* pszChunk;
    };
    // In values the number less one lies in 4 + 4 bits, in chunks in 2 + 6.
    const Case cases[] = {
        {1, 1, "42", "60 00 42", "98 00 42"},
        {1, 1, "123", "60 01 12 3F", "98 01 12 3F"},
        {1, 2, "12:00", "60 12 12 B0 0F", "98 06 00 12 B0 0F"},
        {2, 1, "AB", "70 00 AB", "9C 00 AB"},
        {2, 2, "AQI=", "70 11 01 02", "9C 05 01 02"},
        {2, 3, "-1", "70 21 FF FF", "9C 09 FF FF"},
        {2, 4, "1", "70 33 00 00 00 01", "9C 0E 01 00 00 00 01"},
        {2, 5, "-2", "70 47 7*FF FE", "9C 12 05 7*FF FE"},
        {2, 6, "true", "70 50 38", "9C 14 38"},
        {2, 7, "1.5", "70 63 3F C0 00 00", "9C 1A 01 3F C0 00 00"},
        {2, 8, "1.5", "70 77 3F F8 6*00", "9C 1E 05 3F F8 6*00"},
        {2, 9, "0102", "70 81 01 02", "9C 21 01 02"},
        {2, 10, "<a>", "70 92 '<a>'", "9C 26 00 '<a>'"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.pszValue);
        CFastInfosetContext context;
        context.SetEncoding(it_char, {c.eKind, c.iIndex});
        Check({{"", InRoot([&](auto& w) {
                    Attribute(w, "k", c.pszValue, it_char);
                    Attribute(w, "k", c.pszValue, it_string); // an index whatever the type
                    Text(w, c.pszValue, it_char);
                }),
                kRoot + (std::string("78 00 'k' ") + c.pszAttribute + " 00 80 F0 " + c.pszChunk)}},
              context);
    }
}

TEST(FastInfosetWriter, ValuesWithoutOctetsAreEmptyOrLeftOut)
{
    CFastInfosetContext context;
    context.SetEncoding(it_base64Binary, {2, 2});
    context.SetEncoding(it_decimal, {1, 1});
    const std::string strNul(1, '\0');
    Check({{"", InRoot([&](auto& w) {
                for (int i = 0; i < 2; ++i)
                    Attribute(w, "k", strNul);
                Attribute(w, "k", "!", it_base64Binary);
                Attribute(w, "k", strNul, it_decimal);
                Text(w, strNul + "x");
                Text(w, "!", it_base64Binary);
                Text(w, std::string("1\0002", 3));
            }),
            kRoot + "78 00 'k' FF 00 FF 00 FF 00 FF F0 90 '1'"}},
          context);
}

TEST(FastInfosetWriter, AFailingValueLeavesNoOctetAndNoEntry)
{
    CFastInfosetContext context;
    context.SetEncoding(it_decimal, {1, 1});
    context.SetEncoding(it_i2, {2, 3});
    const std::string strBefore = kPlainRoot + "90 't'";
    Check(
        {
            {"not in the alphabet", InRoot([](auto& w) {
                 Text(w, "t");
                 Text(w, "1,5", it_decimal);
             }),
             strBefore,
             "Failed to write FastInfoset. Invalid character not found for Restricted Alphabet."},
            {"no number", InRoot([](auto& w) {
                 Text(w, "t");
                 Text(w, "x", it_i2);
             }),
             strBefore, "The value [x] can not be converted to a i4"},
            {"the text is no entry afterwards", InRoot([](auto& w) {
                 Text(w, "t");
                 EXPECT_THROW(Text(w, "x", it_i2), CQnException);
                 Text(w, "x");
             }),
             strBefore + " 90 'x'"},
        },
        context);
}

TEST(FastInfosetWriter, WhatComesTooLateOrBearsNoNameIsRefused)
{
    constexpr const char* pszNoName = "Failed to write FastInfoset. Empty name.";
    Check({
        {"attribute behind text", InRoot([](auto& w) {
             Attribute(w, "k", "1");
             Text(w, "t");
             Attribute(w, "k", "1");
         }),
         kRoot + "78 00 'k' 40 '1' F0 90 't'", kTooLate},
        {"attribute of an element that an instruction put out", InRoot([](auto& w) {
             w.WritePI("");
             Attribute(w, "k", "1");
         }),
         kPlainRoot, kTooLate},
        {"attribute behind an instruction behind an attribute", InRoot([](auto& w) {
             Attribute(w, "k", "1");
             w.WritePI("");
             Attribute(w, "k", "1");
             End(w);
         }),
         kRoot + "78 00 'k' 40 '1' 00 80 F0 FF"},
        {"type behind text", InRoot([](auto& w) {
             Text(w, "t");
             w.WriteAttributeType("", "T", it_string);
         }),
         kPlainRoot + "90 't'", kTooLate},
        {"nil behind text", InRoot([](auto& w) {
             Text(w, "t");
             w.WriteAttributeNil();
         }),
         kPlainRoot + "90 't'", kTooLate},
        {"attribute outside", [](auto& w) { Attribute(w, "k", "1"); }, "", kTooLate},
        {"text outside", [](auto& w) { Text(w, ""); }, "", kTooLate},
        {"end outside", [](auto& w) { w.WriteEndElement(); }, "", kTooLate},
        {"element without name", [](auto& w) { Start(w, ""); }, "", pszNoName},
        {"attribute without name", InRoot([](auto& w) { Attribute(w, "", "1"); }), "E0 00 00 01 00",
         pszNoName},
        {"namespace without text", InRoot([](auto& w) {
             w.WriteStartElement("a", std::string(1, '\0'));
             w.WriteEndElement();
         }),
         kPlainRoot, pszNoName},
    });
    CBinaryStream stream;
    CFastInfosetContext context;
    CFastInfosetWriter writer(context, stream);
    writer.Open();
    Start(writer, "r");
    Text(writer, "t");
    Model::ExpectFailure<CQnException>([&] { writer.Close(); }, "An Element has not been closed.");
    Start(writer, "pending"); // goes with the writer
}

TEST(FastInfosetWriter, SettingsThatNoFormHasAreRefused)
{
    class CWideContext : public CFastInfosetContext
    {
    public:
        CWideContext() { m_uDefaultStringEncoding = 1; }
    };
    struct Case
    {
        int eKind;
        unsigned long iIndex;
        const char* pszAttribute;
        const char* pszChunk; // null: as for attributes
    };
    const Case cases[] = {
        {1, 0, "Failed to write FastInfoset. Invalid Restricted Alphabet value [0]", nullptr},
        {1, 3, "Failed to write FastInfoset. Invalid Restricted Alphabet value [3]", nullptr},
        {2, 0, "Failed to write FastInfoset. Invalid Encoding Algorithm value [0]", nullptr},
        {2, 11, "Failed to write FastInfoset. Invalid Encoding Algorithm value [11]", nullptr},
        {3, 1, "Failed to write FastInfoset. Unknown encoding in EncodedCharacterStringBit5.",
         "Failed to write FastInfoset. Unknown encoding in EncodedCharacterStringBit7."},
        {0, 0,
         "Failed to write FastInfoset. Unsupported Feature UTF16BE in EncodedCharacterStringBit5.",
         nullptr},
    };
    for (const Case& c : cases) {
        CWideContext context;
        context.SetEncoding(it_char, {c.eKind, c.iIndex});
        Check(
            {
                {"value", InRoot([](auto& w) { Attribute(w, "k", "1", it_char); }),
                 kRoot + "78 00 'k'", c.pszAttribute},
                {"chunk", InRoot([](auto& w) { Text(w, "1", it_char); }), kPlainRoot,
                 c.pszChunk ? c.pszChunk : c.pszAttribute},
            },
            context);
    }
    CBinaryStream stream;
    CFastInfosetContext context;
    CFastInfosetWriter writer(context, stream);
    EXPECT_EQ(Hex(ToString(writer.AppendRestrictedAlphabetString(1, "1e2 "))), "1D 2E");
    EXPECT_EQ(writer.AppendRestrictedAlphabetString(2, nullptr).GetLength(), 0u);
    Model::ExpectFailure<CQnException>(
        [&] { writer.AppendRestrictedAlphabetString(3, "1"); },
        "Failed to write FastInfoset. Invalid Restricted Alphabet value [3]");
}

TEST(FastInfosetWriter, IntegersFollowTheirBands)
{
    using Emit = void (CFastInfosetWriter::*)(unsigned char, unsigned long);
    constexpr Emit kBit2 = &CFastInfosetWriter::Integer1To2pw20Bit2;
    constexpr Emit kZeroBit2 = &CFastInfosetWriter::Integer0To2pw20Bit2;
    constexpr Emit kBit3 = &CFastInfosetWriter::Integer1To2pw20Bit3;
    constexpr Emit kBit4 = &CFastInfosetWriter::Integer1To2pw20Bit4;
    struct Case
    {
        Emit pfnEmit;
        unsigned char uBits;
        unsigned long iValue;
        const char* pszOctets; // empty: refused
    };
    const Case cases[] = {
        {kBit2, 0, 0, ""},
        {kBit2, 0, 1, "00"},
        {kBit2, 0x80, 64, "BF"},
        {kBit2, 0x80, 65, "C0 00"},
        {kBit2, 0, 8256, "5F FF"},
        {kBit2, 0x80, 8257, "E0 00 00"},
        {kBit2, 0, 1048576, "6F DF BF"},
        {kBit2, 0, 1048577, ""},
        {kZeroBit2, 0x80, 0, "FF"},
        {kZeroBit2, 0x80, 1, "80"},
        {kZeroBit2, 0, 1048576, "6F DF BF"},
        {kBit3, 0, 0, ""},
        {kBit3, 0x40, 1, "40"},
        {kBit3, 0, 32, "1F"},
        {kBit3, 0x40, 33, "60 00"},
        {kBit3, 0, 2080, "27 FF"},
        {kBit3, 0, 2081, "28 00 00"},
        {kBit3, 0, 526368, "2F FF FF"},
        {kBit3, 0, 526369, "30 00 00 01"}, // one above what X.891 has
        {kBit3, 0, 1048576, "30 07 F7 E0"},
        {kBit3, 0, 1048577, ""},
        {kBit4, 0xA0, 1, "A0"},
        {kBit4, 0xA0, 16, "AF"},
        {kBit4, 0xA0, 17, "B0 00"},
        {kBit4, 0, 1040, "13 FF"},
        {kBit4, 0xA0, 1041, "B4 00 00"},
        {kBit4, 0, 263184, "17 FF FF"},
        {kBit4, 0xA0, 263185, "B8 00 00 00"},
        {kBit4, 0, 1048576, "18 0B FB EF"},
        {kBit4, 0, 1048577, ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.iValue);
        std::string strFailure;
        EXPECT_EQ(Hex(Written([&](auto& w) { (w.*c.pfnEmit)(c.uBits, c.iValue); },
                              CFastInfosetContext(), strFailure)),
                  c.pszOctets);
        EXPECT_EQ(strFailure,
                  *c.pszOctets ? "" : "Failed to write FastInfoset. Integer out of range.");
    }
}

TEST(FastInfosetWriter, LengthsFollowTheirBands)
{
    using Emit = void (CFastInfosetWriter::*)(unsigned char, const unsigned char*, unsigned long);
    constexpr Emit kBit5 = &CFastInfosetWriter::NonEmptyOctetStringBit5;
    constexpr Emit kBit7 = &CFastInfosetWriter::NonEmptyOctetStringBit7;
    struct Case
    {
        Emit pfnEmit; // null: on bit 2
        unsigned long ulLength;
        const char* pszLength; // with the bits 0x80; empty: refused
    };
    const Case cases[] = {
        {nullptr, 0, ""},
        {nullptr, 1, "80"},
        {nullptr, 64, "BF"},
        {nullptr, 65, "C0 00"},
        {nullptr, 320, "C0 FF"},
        {nullptr, 321, "E0 00 00 00 00"},
        {nullptr, 65536, "E0 00 00 FE BF"},
        {kBit5, 0, ""},
        {kBit5, 8, "87"},
        {kBit5, 9, "88 00"},
        {kBit5, 264, "88 FF"},
        {kBit5, 265, "8C 00 00 00 00"},
        {kBit5, 65536, "8C 00 00 FE F7"},
        {kBit7, 0, ""},
        {kBit7, 2, "81"},
        {kBit7, 3, "82 00"},
        {kBit7, 258, "82 FF"},
        {kBit7, 259, "83 00 00 00 00"},
        {kBit7, 65536, "83 00 00 FE FD"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.ulLength);
        const std::string strText(c.ulLength, 'y');
        std::string strFailure;
        const std::string strOctets = Written(
            [&](auto& w) {
                if (c.pfnEmit)
                    (w.*c.pfnEmit)(0x80, reinterpret_cast<const unsigned char*>(strText.data()),
                                   strText.size());
                else
                    w.NonEmptyOctetUTF8StringBit2(0x80, strText);
            },
            CFastInfosetContext(), strFailure);
        EXPECT_EQ(Hex(strOctets.substr(0, strOctets.size() - strText.size())), c.pszLength);
        EXPECT_EQ(strFailure,
                  *c.pszLength ? ""
                               : "Failed to write FastInfoset. Invalid length of an octet string.");
    }
    const unsigned char uOctet = 0;
    std::string strFailure;
    Written([&](auto& w) { w.NonEmptyOctetStringBit5(0, &uOctet, 0x100000001); },
            CFastInfosetContext(), strFailure);
    EXPECT_EQ(strFailure, "Failed to write FastInfoset. Invalid length of an octet string.");
}

TEST(FastInfosetWriter, IndexesCrossTheirBandsInOrderOfEntry)
{
    const Steps steps = InRoot([](auto& w) {
        w.WritePI("");
        for (int i = 0; i < 1100; ++i)
            Text(w, std::to_string(i));
        for (const int i : {0, 15, 16, 1039, 1040})
            Text(w, std::to_string(i));
    });
    std::string strFailure;
    const std::string strOctets = Written(steps, CFastInfosetContext(), strFailure);
    EXPECT_EQ(Hex(strOctets.substr(strOctets.size() - 10)), "39 A0 AF B0 00 B3 FF B4 00 00");
}

TEST(FastInfosetWriter, NamesAndValuesGoByMapsOfACaller)
{
    std::map<std::string, unsigned long> mapNames;
    std::map<std::string, unsigned long> mapValues{{"1", 17}};
    Check({{"",
            [&](auto& w) {
                for (int i = 0; i < 2; ++i) {
                    w.QualifiedNameOrIndexBit2(0, "p", "urn:p", "a", mapNames);
                    w.NonIdentifyingStringOrIndexBit1("1", mapValues, 6, it_string);
                    w.QualifiedNameOrIndexBit3(0x40, "", "urn:p", "a", mapNames);
                    w.NonIdentifyingStringOrIndexBit3(0x80, "2", mapValues, 6, it_string);
                }
                w.NonIdentifyingStringOrIndexBit1("", mapValues, 6, it_string);
            },
            // The first time: prefix, namespace and local name; value 17; namespace 2 and local
            // name 1; a chunk for the table. Then indexes.
            "7B 00 'p' 04 'urn:p' 00 'a' 90 7D 81 80 90 '2' 00 90 41 A1 FF"}});
    EXPECT_EQ(mapNames,
              (std::map<std::string, unsigned long>{{"a\1urn:p\1p", 1}, {"a\1urn:p\1", 2}}));
    EXPECT_EQ(mapValues, (std::map<std::string, unsigned long>{{"1", 17}, {"2", 2}}));
}

TEST(FastInfosetWriter, TextGoesFromTheLocaleToUtf8)
{
    if (!std::setlocale(LC_CTYPE, "C.UTF-8"))
        GTEST_SKIP();
    const std::vector<Row> rows = {
        {"name, value and chunk", InRoot([](auto& w) {
             Attribute(w, "\xC3\xA9", "\xE2\x82\xAC");
             Text(w, "\xE2\x82\xAC\xE2\x82\xAC");
         }),
         // The second text has 6 bytes in the locale and enters no table.
         kRoot + "78 01 C3 A9 42 E2 82 AC F0 82 03 E2 82 AC E2 82 AC"}};
    Check(rows);
    std::setlocale(LC_CTYPE, "C");
    Check({{"the C locale has no such bytes", rows.front().steps,
            kRoot + "78 01 2*'?' 42 3*'?' F0 82 03 6*'?'"}});
}
