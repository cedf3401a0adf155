// What the writer puts out, octet by octet, and what it refuses.

#include "tests/fastinfoset/FiTools.h"
#include "tests/support/Scoped.h"

#include <map>

using namespace Fi;

namespace {

// Rows of scripts, of their octets behind the header, and of the tree that is read back
// or the failure; without either the octets are no document.
void Check(const char* pszTable, const CFastInfosetContext& context = {})
{
    for (const auto& row : Table<3>(pszTable)) {
        SCOPED_TRACE(row[0]);
        const Output output = Written([&](auto& w) { WriteDocument(w, row[0]); }, context);
        EXPECT_EQ(output.strOctets, Bytes("E0 00 00 01 00 " + row[1]));
        if (output.strFailure.empty() && !row[2].empty())
            EXPECT_EQ(Read(output.strOctets, context), row[2]);
        else
            EXPECT_EQ(output.strFailure, row[2]);
    }
}

} // namespace

TEST(FastInfosetWriter, AGeneratedVocabularyIsNamedAndUsed)
{
    CFastInfosetContext context;
    context.SetUseGeneratedVocabulary(true);
    context.GetVocabulary()->AddElement("", "", "r");
    context.GetVocabulary()->AddAttribute("", "", "k");
    context.GetVocabulary()->AddAttributeValue("1");
    context.GetVocabulary()->AddElementValue("t");
    // Initial vocabulary (20) that is external (10 00); then indexes for all: name 1, attribute
    // name 1, value 1, chunk 1. What the document adds, namespace and all, is gone afterwards.
    for (const char* pszUri : {"18 'urn:qnxmllib16:vocabulary'", "04 'urn:v'"}) {
        const std::string strOctets = Written("<r @k=1 't <n > > .", context);
        EXPECT_EQ(strOctets, Bytes("E0 00 00 01 20 10 00 " + std::string(pszUri) +
                                   "78 F0 00 00 80 F0 A0 3C 00 'n' FF F0"));
        EXPECT_EQ(Read(strOctets, context), "r[k='1'] 't' (n)");
        context.SetExternalVocabularyURI("urn:v");
    }
    EXPECT_EQ(Read(Bytes("E0 00 00 01 00 3C 80 F0"), context), "r"); // local name 1
    context.GetVocabulary()->AddElement("p", "urn:g", "g");
    EXPECT_EQ(Read(Bytes("E0 00 00 01 00 01 F0"), context), "{urn:g}g"); // element name 2
    context.SetUseGeneratedVocabulary(false);
    EXPECT_EQ(Read(Bytes("E0 00 00 01 00 3C 80 F0"), context),
              "<Failed to parse FastInfoset. Index out of range.>");
}

TEST(FastInfosetWriter, ElementsAndTheirEnds)
{
    Check(R"(
        // Only a root, whose end shares an octet with that of the document. 38: no attributes,
        // namespaces follow; F0 ends them; 3C: literal local name of 1 octet.
        <r > .                          | 38 F0 3C 00 'r' FF                                     | r
        // 7C and 78: literal names of an element and an attribute, with 40 for the attributes;
        // 40: value of 1 octet for the table; F0 ends the attributes, F0 the element.
        <r <b @k=1 > <c > > .
        | 38 F0 3C 00 'r' 7C 00 'b' 78 00 'k' 40 '1' F0 F0 3C 00 'c' FF F0       | r (b[k='1'] c)
        <r <b <c > > > .                | 38 F0 3C 00 'r' 3C 00 'b' 3C 00 'c' FF FF      | r (b (c))
        // Attributes end ahead of text and of a child.
        <r @k= 't <r > > .              | 78 F0 3C 00 'r' 78 00 'k' FF F0 90 't' 00 FF F0
                                                                                 | r[k=''] 't' (r)
        <r ' > .                        | 38 F0 3C 00 'r' FF                                     | r
        // Comments, instructions and schemas leave nothing.
        <r !c $s ?p > .                 | 38 F0 3C 00 'r' FF                                     | r
        // A second root goes the way of the first.
        <r > <r > .                     | 38 F0 3C 00 'r' F0 38 F0 00 FF                         | r
    )");
}

TEST(FastInfosetWriter, TextBehindAChildLandsInTheChild)
{
    Check(R"(
        <r <b > 't > .                  | 38 F0 3C 00 'r' 3C 00 'b' 90 't' FF F0         | r (b 't')
        <r '1 <a '2 > '3 <b '4 > > .
        | 38 F0 3C 00 'r' 90 '1' 3C 00 'a' 90 '2' 90 '3' F0 3C 00 'b' 90 '4' FF F0
        | r '1' (a '23' b '4')
    )");
}

TEST(FastInfosetWriter, NamespacesAreDeclaredOnTheRootAlone)
{
    Check(R"(
        // CD: default namespace; 81: namespace 2, just entered; 3D: namespace and local name.
        =urn:d <{urn:d}r > .        | 38 CD 04 'urn:d' F0 3D 81 00 'r' FF               | {urn:d}r
        // CF: prefix and namespace. Rows go by the order of their namespaces. 3F: all three parts.
        +q=urn:q +p=urn:p <{urn:q}r > .
        | 38 CF 00 'p' 04 'urn:p' CF 00 'q' 04 'urn:q' F0 3F 82 82 00 'r' FF             | {urn:q}r
        // One namespace under both.
        =urn:d +p=urn:d <{urn:d}r ?p | 38 CD 04 'urn:d' CF 00 'p' 81 F0 3D 81 00 'r'
        // An empty prefix, without and with a default namespace beside it.
        +=urn:d <{urn:d}r ?p        | 38 CD 04 'urn:d' F0 3D 81 00 'r'
        =urn:d +=urn:e <r ?p        | 38 CD 04 'urn:d' F0 3C 00 'r'
        // CE: a prefix without a namespace takes its declaration away.
        +p= <r ?p                   | 38 CE 00 'p' F0 3C 00 'r'
        // What begins like the xml namespace isn't declared.
        +p=http://www.w3.org/XML/1998/namespaces <r ?p | 38 F0 3C 00 'r'
        // A namespace that nobody declared: prefix 2 "AA" and namespace 2 inside the name only.
        <{urn:u}r > .               | 38 F0 3F 01 'AA' 04 'urn:u' 00 'r' FF              | {urn:u}r
        // A name has its index by all three parts, and the second one has a prefix of its own.
        <r <{urn:u}a <{urn:u}a > > <{urn:u}a ?p +p=urn:u <{urn:u}a >
        | 38 F0 3C 00 'r' 3F 01 'AA' 04 'urn:u' 00 'a' 01 FF 01 3F 00 'p' 81 81
        // Attributes don't go by the default namespace.
        =urn:d <{urn:d}r @{urn:d}a= > .
        | 78 CD 04 'urn:d' F0 3D 81 00 'r' 7B 01 'AA' 81 00 'a' FF F0 FF | {urn:d}r[{urn:d}a='']
        // The xml prefix is built in.
        <r @{http://www.w3.org/XML/1998/namespace}lang=en > .
        | 78 F0 3C 00 'r' 7B 80 80 03 'lang' 41 'en' F0 FF
        | r[{http://www.w3.org/XML/1998/namespace}lang='en']
    )");
}

TEST(FastInfosetWriter, TheTypeAttributeHasThreeForms)
{
    Check(R"(
        // No namespace, then a value that is known.
        <r :T :T
        | 78 F0 3C 00 'r' 7B 01 'AA' 28 'http://www.w3.org/2001/XMLSchema-instance' 03 'type'
        +   40 'T' 00 80
        // A namespace without a prefix names the attribute, the next one finds the prefix.
        <r :{urn:t}T :{urn:t}T > .
        | 78 F0 3C 00 'r' 7B 01 'AA' 04 'urn:t' 00 'T' 43 'AA:T'
        +   7B 81 28 'http://www.w3.org/2001/XMLSchema-instance' 03 'type' 80 F0 FF
        | r[{urn:t}T='AA:T'][{http://www.w3.org/2001/XMLSchema-instance}type='AA:T']
        // The default namespace.
        =urn:d +xsi=http://www.w3.org/2001/XMLSchema-instance <{urn:d}r :{urn:d}T
        | 78 CD 04 'urn:d' CF 02 'xsi' 28 'http://www.w3.org/2001/XMLSchema-instance' F0
        +   3D 81 00 'r' 7B 81 82 03 'type' 40 'T'
        <r @nil
        | 78 F0 3C 00 'r' 7B 01 'AA' 28 'http://www.w3.org/2001/XMLSchema-instance' 02 'nil'
        +   43 'true'
    )");
}

TEST(FastInfosetWriter, ShortValuesEnterTheTables)
{
    // 44: 5 octets, for the table; 05: 6 octets, not for it; 80 and A0: index 1.
    Check(R"(
        <r @k=12345 @k=123456 @k=12345 @k=123456 '12345 '123456 '(i4)12345
        | 78 F0 3C 00 'r' 78 00 'k' 44 '12345' 00 05 '123456' 00 80 00 05 '123456' F0
        +   92 02 '12345' 82 03 '123456' A0
    )");
    CFastInfosetContext never;
    never.SetAttributeMaxAddLength(0);
    never.SetElementMaxAddLength(0);
    Check("<r @k=1 @k=1 '1 '1 | 78 F0 3C 00 'r' 78 00 'k' 00 '1' 00 00 '1' F0 80 '1' 80 '1'",
          never);
}

// In values the number less one lies in 4 + 4 bits, in chunks in 2 + 6.
TEST(FastInfosetWriter, EncodedValuesNameTheirAlphabetOrAlgorithm)
{
    // The encoding, 1 for alphabets and 2 for algorithms; the text; as a value; as a chunk.
    for (const auto& [strEncoding, strText, strValue, strChunk] : Table<4>(R"(
        1 1  | 42    | 60 00 42             | 98 00 42
        1 1  | 123   | 60 01 12 3F          | 98 01 12 3F
        1 2  | 12:00 | 60 12 12 B0 0F       | 98 06 00 12 B0 0F
        2 1  | AB    | 70 00 AB             | 9C 00 AB
        2 2  | AQI=  | 70 11 01 02          | 9C 05 01 02
        2 4  | 1     | 70 33 00 00 00 01    | 9C 0E 01 00 00 00 01
        2 9  | 01010101010101010101010101010101 | 30 88 07 16*01 | 8C 22 0D 16*01
        2 10 | <a>   | 70 92 '<a>'          | 9C 26 00 '<a>'
    )")) {
        CFastInfosetContext context;
        context.SetEncoding(it_char, {strEncoding[0] - '0', std::stoul(strEncoding.substr(2))});
        const std::string strOctets =
            Written("<r @k=(char)" + strText + " '(char)" + strText + " > .", context);
        EXPECT_EQ(strOctets, Bytes("E0 00 00 01 00 78 F0 3C 00 'r' 78 00 'k' " + strValue + " F0 " +
                                   strChunk + " FF"));
        EXPECT_EQ(Read(strOctets), "r[k='" + strText + "'] '" + strText + "'");
    }
    // A value is entered as its text and found whatever the type.
    CFastInfosetContext context;
    context.SetEncoding(it_char, {2, 6});
    Check("<r @k=(char)true @k=true | 78 F0 3C 00 'r' 78 00 'k' 70 50 38 00 80", context);
}

TEST(FastInfosetWriter, AValueWithoutOctetsIsEmptyOrLeftOutAndAFailingOneLeavesNothing)
{
    CFastInfosetContext context;
    context.SetEncoding(it_base64Binary, {2, 2});
    context.SetEncoding(it_decimal, {1, 1});
    context.SetEncoding(it_i2, {2, 3});
    Check(R"(
        <r @k=^ @k=^ @k=(base64)! @k=(decimal)^ '^x '(base64)! '1^2 > .
        | 78 F0 3C 00 'r' 78 00 'k' FF 00 FF 00 FF 00 FF F0 90 '1' FF
        | r[k=''][k=''][k=''][k=''] '1'
        <r 't '(decimal)1,5 | 38 F0 3C 00 'r' 90 't'
        | <Failed to write FastInfoset. Invalid character not found for Restricted Alphabet.>
        <r 't '(i2)x        | 38 F0 3C 00 'r' 90 't' | <The value [x] can not be converted to a i4>
    )",
          context);
    const Output output = Written(
        [](auto& w) {
            RunScript(w, "<r");
            EXPECT_THROW(RunScript(w, "'(i2)x"), CQnException);
            RunScript(w, "'x"); // no entry of the table
        },
        context);
    EXPECT_EQ(output.strOctets, Bytes("38 F0 3C 00 'r' 90 'x'"));
}

TEST(FastInfosetWriter, WhatComesTooLateOrBearsNoNameIsRefused)
{
    Check(R"(
        <r @k=1 't @k=1 | 78 F0 3C 00 'r' 78 00 'k' 40 '1' F0 90 't'
                                              | <Attributes must be added before elements>
        // Behind an instruction that put the element out, and behind one that came later.
        <r ?p @k=1      | 38 F0 3C 00 'r'     | <Attributes must be added before elements>
        <r @k=1 ?p @k=1 > . | 78 F0 3C 00 'r' 78 00 'k' 40 '1' 00 80 F0 FF | r[k='1'][k='1']
        <r 't :T        | 38 F0 3C 00 'r' 90 't' | <Attributes must be added before elements>
        // Outside the root.
        @k=1            |                     | <Attributes must be added before elements>
        '               |                     | <Attributes must be added before elements>
        >               |                     | <Attributes must be added before elements>
        <               |                     | <Failed to write FastInfoset. Empty name.>
        <r @=1          |                     | <Failed to write FastInfoset. Empty name.>
        <r <{^}a >      | 38 F0 3C 00 'r'     | <Failed to write FastInfoset. Empty name.>
    )");
}

TEST(FastInfosetWriter, SettingsThatNoFormHasAreRefused)
{
    class CWideContext : public CFastInfosetContext
    {
    public:
        CWideContext() { m_uDefaultStringEncoding = 1; }
    };
    // The encoding; what a value fails with; the same of a chunk.
    for (const auto& row : Table<4>(R"(
        1 | 0 | Invalid Restricted Alphabet value [0]  | Invalid Restricted Alphabet value [0]
        1 | 3 | Invalid Restricted Alphabet value [3]  | Invalid Restricted Alphabet value [3]
        2 | 0 | Invalid Encoding Algorithm value [0]   | Invalid Encoding Algorithm value [0]
        2 | 11 | Invalid Encoding Algorithm value [11] | Invalid Encoding Algorithm value [11]
        3 | 1 | Unknown encoding in EncodedCharacterStringBit5.
              | Unknown encoding in EncodedCharacterStringBit7.
        0 | 0 | Unsupported Feature UTF16BE in EncodedCharacterStringBit5.
              | Unsupported Feature UTF16BE in EncodedCharacterStringBit5.
    )")) {
        CWideContext context;
        context.SetEncoding(it_char, {std::stoi(row[0]), std::stoul(row[1])});
        const std::string strFailed = "| <Failed to write FastInfoset. ";
        Check(("<r @k=(char)1 | 78 F0 3C 00 'r' 78 00 'k'" + strFailed + row[2] + '>').c_str(),
              context);
        Check(("<r '(char)1 | 38 F0 3C 00 'r'" + strFailed + row[3] + '>').c_str(), context);
    }
}

TEST(FastInfosetWriter, NamesAndValuesGoByMapsOfACaller)
{
    std::map<std::string, unsigned long> mapNames;
    std::map<std::string, unsigned long> mapValues{{"1", 17}};
    const Output output = Written([&](auto& w) {
        for (int i = 0; i < 2; ++i) {
            w.QualifiedNameOrIndexBit2(0, "p", "urn:p", "a", mapNames);
            w.NonIdentifyingStringOrIndexBit1("1", mapValues, 6, it_string);
            w.QualifiedNameOrIndexBit3(0x40, "", "urn:p", "a", mapNames);
            w.NonIdentifyingStringOrIndexBit3(0x80, "2", mapValues, 6, it_string);
        }
        w.NonIdentifyingStringOrIndexBit1("", mapValues, 6, it_string);
        EXPECT_EQ(w.AppendRestrictedAlphabetString(1, "1e2 "), CBinaryData("\x1D\x2E"));
    });
    // The first time: prefix, namespace and local name; value 17; namespace 2 and local name 1; a
    // chunk for the table. Then indexes.
    EXPECT_EQ(output.strOctets,
              Bytes("7B 00 'p' 04 'urn:p' 00 'a' 90 7D 81 80 90 '2' 00 90 41 A1 FF"));
    EXPECT_EQ(mapNames,
              (std::map<std::string, unsigned long>{{"a\1urn:p\1p", 1}, {"a\1urn:p\1", 2}}));
    EXPECT_EQ(mapValues, (std::map<std::string, unsigned long>{{"1", 17}, {"2", 2}}));
}

TEST(FastInfosetWriter, TextGoesFromTheLocaleToUtf8AndBack)
{
    const std::string strScript = "<\xC3\xA9 @k=\xE2\x82\xAC '\xE2\x82\xAC\xE2\x82\xAC > .";
    // The second text has 6 bytes in the locale and enters no table.
    const std::string strOctets = Bytes("E0 00 00 01 00 78 F0 3C 01 C3 A9 78 00 'k' 42 E2 82 AC F0 "
                                        "82 03 E2 82 AC E2 82 AC FF");
    EXPECT_EQ(Read(strOctets), "?[k='?'] '?"
                               "?'"); // the C locale has no such characters
    EXPECT_EQ(Written(strScript),
              Bytes("E0 00 00 01 00 78 F0 3C 01 2*'?' 78 00 'k' 42 3*'?' F0 82 03 6*'?' FF"));
    const Scoped::Locale locale(LC_CTYPE, "C.UTF-8");
    ASSERT_TRUE(locale.IsSet());
    EXPECT_EQ(Written(strScript), strOctets);
    EXPECT_EQ(Read(strOctets), "\xC3\xA9[k='\xE2\x82\xAC'] '\xE2\x82\xAC\xE2\x82\xAC'");
}
