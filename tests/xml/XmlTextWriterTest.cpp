#include "QnXmlLib16/xml/XmlTextWriter.h"

#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/support/TextStream.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>

using namespace QnXmlLib16;

namespace {

using Steps = std::function<void(CXmlTextWriter&)>;

struct Row
{
    const char* pszCase;
    Steps steps;
    const char* pszText;
};

// What the steps put out; "<message>" follows the text where they fail.
std::string Written(const Steps& steps, XmlEncoding eEncoding = XmlEncoding_UTF8)
{
    CTextStream stream(eEncoding);
    CXmlTextWriter writer(stream);
    std::string strFailure;
    try {
        writer.Open();
        writer.SetFormat(false);
        steps(writer);
        writer.Close();
    }
    catch (const CQnException& e) {
        strFailure = "<" + e.GetMessage() + ">";
    }
    return stream.GetText() + strFailure;
}

template <std::size_t N>
void Check(const Row (&rows)[N])
{
    for (const Row& row : rows) {
        SCOPED_TRACE(row.pszCase);
        EXPECT_EQ(Written(row.steps), row.pszText);
    }
}

// An element of the name with a text.
void Leaf(CXmlTextWriter& w, const char* pszName, const char* pszText)
{
    w.WriteStartElement(pszName, "");
    w.WriteString(pszText, it_string, false);
    w.WriteEndElement();
}

void Attribute(CXmlTextWriter& w, const char* pszName, const char* pszNamespace,
               const std::string& strValue)
{
    w.WriteAttributeString(pszName, pszNamespace, strValue, it_string);
}

constexpr const char* kXsi = "http://www.w3.org/2001/XMLSchema-instance";

} // namespace

TEST(TextWriterElements, TagsFollowTheContent)
{
    const Row rows[] = {
        {"no content",
         [](auto& w) {
             w.WriteStartElement("a", "");
             w.WriteEndElement();
         },
         "<a/>"},
        {"empty value", [](auto& w) { Leaf(w, "a", ""); }, "<a/>"},
        {"text", [](auto& w) { Leaf(w, "a", "x"); }, "<a>x</a>"},
        {"nested",
         [](auto& w) {
             w.WriteStartElement("a", "");
             Leaf(w, "b", "x");
             Leaf(w, "c", "");
             w.WriteString("y", it_string, false);
             w.WriteEndElement();
         },
         "<a><b>x</b><c/>y</a>"},
        {"two roots",
         [](auto& w) {
             Leaf(w, "a", "x");
             Leaf(w, "b", "");
         },
         "<a>x</a><b/>"},
        {"a default value is left out",
         [](auto& w) {
             w.WriteStartElement("a", "");
             w.WriteString("x", it_string, true);
             Attribute(w, "k", "", "v");
             w.WriteEndElement();
         },
         "<a k=\"v\"/>"},
        {"a default value is asked for",
         [](auto& w) {
             w.SetWriteDefaultElementValues(true);
             w.WriteStartElement("a", "");
             w.WriteString("x", it_string, true);
             w.WriteEndElement();
         },
         "<a>x</a>"},
        {"raw markup stays clear of the start tag",
         [](auto& w) {
             w.WriteStartElement("a", "");
             w.CloseParentElm();
             w.WriteRawElement("<b>&</b>");
             w.WriteEndElement();
             w.CloseParentElm();
         },
         "<a><b>&</b></a>"},
        {"a comment leaves the start tag open",
         [](auto& w) {
             w.WriteStartElement("a", "");
             w.WriteComment("<\"-->");
             w.WriteEndElement();
         },
         "<a<!--&lt;\"--&gt;-->\n/>"},
    };
    Check(rows);
}

TEST(TextWriterElements, ADeepDocumentCostsWhatAFlatOneDoes)
{
    CTextStream stream;
    CXmlTextWriter writer(stream);
    writer.SetFormat(false);
    writer.SetDefaultNamespace("urn:d");
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < 100000; ++i)
        writer.WriteStartElement("a", "urn:d");
    for (int i = 0; i < 100000; ++i)
        writer.WriteEndElement();
    writer.Close();
    // A fraction of a second in an optimised build; minutes with a look-up through all levels.
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    EXPECT_EQ(stream.GetLength(), 100000u * 7 + 11);
}

TEST(TextWriterFormat, LinesAndIndentsSurroundElementsButNotText)
{
    const Steps steps = [](CXmlTextWriter& w) {
        w.SetFormat(true);
        w.WriteStartElement("a", "");
        Leaf(w, "b", "x");
        w.WriteStartElement("c", "");
        Leaf(w, "d", "");
        w.WriteRawElement("<e/>");
        w.WriteEndElement();
        w.WriteEndElement();
    };
    EXPECT_EQ(Written(steps), "<a>\n\t<b>x</b>\n\t<c>\n\t\t<d/>\n<e/>\n\t</c>\n</a>\n");
    EXPECT_EQ(Written([&](CXmlTextWriter& w) {
                  w.SetIndentChars("--");
                  w.SetEOLType(EOLType_CRLF);
                  steps(w);
              }),
              "<a>\r\n--<b>x</b>\r\n--<c>\r\n----<d/>\r\n<e/>\r\n--</c>\r\n</a>\r\n");
    EXPECT_EQ(Written([&](CXmlTextWriter& w) {
                  w.SetIndentChars(nullptr);
                  steps(w);
              }),
              "<a>\n<b>x</b>\n<c>\n<d/>\n<e/>\n</c>\n</a>\n");
}

TEST(TextWriterFormat, OnlyTheTwoLineEndsAreTaken)
{
    CTextStream stream;
    CXmlTextWriter writer(stream);
    EXPECT_EQ(writer.GetEOLType(), EOLType_LF);
    EXPECT_TRUE(writer.GetFormat());
    EXPECT_EQ(writer.GetIndentChars(), "\t");
    EXPECT_FALSE(writer.GetWriteDefaultElementValues());
    writer.SetEOLType(EOLType_CRLF);
    for (const int iBad : {-1, 2}) {
        try {
            writer.SetEOLType(static_cast<EOLType>(iBad));
            ADD_FAILURE();
        }
        catch (const CQnException& e) {
            EXPECT_EQ(e.GetMessage(), "Invalid EOL type.");
        }
    }
    EXPECT_EQ(writer.GetEOLType(), EOLType_CRLF);
    writer.WriteHeaderDirective("x");
    EXPECT_STREQ(stream.GetText(), "x\r\n");
}

TEST(TextWriterEscapes, DifferBetweenContentAndAttributes)
{
    struct Text
    {
        std::string strValue;
        const char* pszContent;
        const char* pszAttribute;
    };
    const Text texts[] = {
        {"plain", "plain", "plain"},
        {"\"", "\"", "&quot;"},
        {"&<>'", "&amp;&lt;&gt;'", "&amp;&lt;&gt;'"},
        {"a\r\nb\rc\n", "a\nbc\n", "a&#xA;bc&#xA;"},
        {"\t\x01\x0B\x0C\x0E\x1F\x7F", "\t\x01\x0B\x0C\x0E\x1F\x7F", "\t\x01\x0B\x0C\x0E\x1F\x7F"},
        {"\x80\xA2\xBC\xBE\xFF\xC3\xA9", "\x80\xA2\xBC\xBE\xFF\xC3\xA9",
         "\x80\xA2\xBC\xBE\xFF\xC3\xA9"},
        {std::string("ab\0cd", 5), "ab", "ab"},
        {"<![CDATA[<&]]>", "<![CDATA[<&]]>", "&lt;![CDATA[&lt;&amp;]]&gt;"},
        {" <![CDATA[", " &lt;![CDATA[", " &lt;![CDATA["},
    };
    for (const Text& text : texts) {
        SCOPED_TRACE(text.strValue);
        EXPECT_EQ(Written([&](CXmlTextWriter& w) {
                      w.WriteStartElement("a", "");
                      Attribute(w, "k", "", text.strValue);
                      w.WriteString(text.strValue, it_string, false);
                      w.WriteEndElement();
                  }),
                  std::string("<a k=\"") + text.pszAttribute + "\">" + text.pszContent + "</a>");
    }
    EXPECT_EQ(Written([](CXmlTextWriter& w) {
                  w.SetEOLType(EOLType_CRLF);
                  Leaf(w, "a", "x\ny\r\n");
              }),
              "<a>x\r\ny\r\n</a>");
}

TEST(TextWriterEscapes, AreFoundAtEveryPlaceOfALongText)
{
    for (const char cStop : {'&', '<', '>', '\n', '\r', '"', '\0'}) {
        for (std::size_t uPlace = 0; uPlace < 40; ++uPlace) {
            std::string strText(40, 'x');
            strText[uPlace] = cStop;
            std::string strExpected;
            for (const char c : strText) {
                if (c == '\0')
                    break;
                strExpected += c == '&'    ? "&amp;"
                               : c == '<'  ? "&lt;"
                               : c == '>'  ? "&gt;"
                               : c == '"'  ? "&quot;"
                               : c == '\n' ? "&#xA;"
                               : c == '\r' ? std::string()
                                           : std::string(1, c);
            }
            EXPECT_EQ(Written([&](CXmlTextWriter& w) {
                          w.WriteStartElement("a", "");
                          Attribute(w, "k", "", strText);
                          w.WriteEndElement();
                      }),
                      "<a k=\"" + strExpected + "\"/>")
                << int(cStop) << " at " << uPlace;
        }
    }
}

TEST(TextWriterNamespaces, AreDeclaredByTheRootOrWhereAPrefixIsMade)
{
    const Row rows[] = {
        {"of the document, by namespace",
         [](auto& w) {
             w.AddNamespace("z", "urn:a");
             w.AddNamespace("y", "urn:b");
             w.AddNamespace("x", std::string(CXmlWriter::XML_NAMESPACE) + "/sub");
             w.SetDefaultNamespace("urn:d");
             w.WriteStartElement("r", "urn:b");
             w.WriteStartElement("c", "urn:a");
             w.WriteEndElement();
             w.WriteStartElement("d", "urn:d");
             w.WriteString("x", it_string, false);
             w.WriteEndElement();
             w.WriteEndElement();
         },
         "<y:r xmlns=\"urn:d\" xmlns:z=\"urn:a\" xmlns:y=\"urn:b\"><z:c/><d>x</d></y:r>"},
        {"a prefix of the root itself stands first and is declared once",
         [](auto& w) {
             w.SetDefaultNamespace("urn:d");
             w.WriteStartElement("r", "urn:<");
             w.WriteStartElement("c", "urn:<");
             w.WriteString("x", it_string, false);
             w.WriteEndElement();
             w.WriteEndElement();
         },
         "<AA:r xmlns:AA=\"urn:<\" xmlns=\"urn:d\"><AA:c>x</AA:c></AA:r>"},
        {"siblings each declare the same prefix",
         [](auto& w) {
             w.WriteStartElement("r", "");
             for (const char* pszNs : {"urn:a", "urn:b", "urn:a"}) {
                 w.WriteStartElement("c", pszNs);
                 w.WriteStartElement("d", pszNs);
                 w.WriteEndElement();
                 w.WriteEndElement();
             }
             w.WriteEndElement();
         },
         "<r><AA:c xmlns:AA=\"urn:a\"><AA:d/></AA:c><AA:c xmlns:AA=\"urn:b\"><AA:d/></AA:c>"
         "<AA:c xmlns:AA=\"urn:a\"><AA:d/></AA:c></r>"},
        {"a declaration below the root isn't written",
         [](auto& w) {
             w.WriteStartElement("r", "");
             w.AddNamespace("p", "urn:p");
             w.WriteStartElement("c", "urn:p");
             w.WriteEndElement();
             w.WriteEndElement();
         },
         "<r><p:c/></r>"},
        {"the end tag goes by the scope at the end",
         [](auto& w) {
             w.SetDefaultNamespace("urn:d");
             w.WriteStartElement("r", "urn:d");
             w.SetDefaultNamespace("urn:e");
             w.WriteString("x", it_string, false);
             w.WriteEndElement();
         },
         "<r xmlns=\"urn:d\">x</:r>"},
        {"the xml namespace has its prefix without a declaration",
         [](auto& w) {
             w.WriteStartElement("r", "");
             Attribute(w, "lang", CXmlWriter::XML_NAMESPACE, "en");
             w.WriteEndElement();
         },
         "<r xml:lang=\"en\"/>"},
        {"attributes share the prefixes made for their element",
         [](auto& w) {
             w.WriteStartElement("r", "urn:a");
             Attribute(w, "k", "urn:a", "1");
             Attribute(w, "l", "urn:b", "2");
             Attribute(w, "m", "urn:b", "3");
             w.WriteEndElement();
         },
         "<AA:r xmlns:AA=\"urn:a\" AA:k=\"1\" xmlns:AB=\"urn:b\" AB:l=\"2\" AB:m=\"3\"/>"},
    };
    Check(rows);
}

TEST(TextWriterNamespaces, AnAttributeInTheDefaultNamespaceGetsAPrefix)
{
    EXPECT_EQ(Written([](CXmlTextWriter& w) {
                  w.SetDefaultNamespace("urn:d");
                  w.WriteStartElement("r", "urn:d");
                  Attribute(w, "k", "urn:d", "v");
                  w.WriteEndElement();
              }),
              "<r xmlns=\"urn:d\" xmlns:AA=\"urn:d\" AA:k=\"v\"/>");
}

TEST(TextWriterSchemaInstance, TypeAndNilAreAttributesOfItsNamespace)
{
    const Row rows[] = {
        {"nil",
         [](auto& w) {
             w.AddNamespace("xsi", kXsi);
             w.WriteStartElement("r", "");
             w.WriteAttributeNil();
             w.WriteEndElement();
         },
         "<r xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" xsi:nil=\"true\"/>"},
        {"a type of the default namespace, no prefix for the instance",
         [](auto& w) {
             w.SetDefaultNamespace("urn:d");
             w.WriteStartElement("r", "urn:d");
             w.WriteAttributeType("urn:d", "T", it_string);
             w.WriteEndElement();
         },
         "<r xmlns=\"urn:d\" xmlns:AA=\"http://www.w3.org/2001/XMLSchema-instance\" "
         "AA:type=\"T\"/>"},
        {"a type of a new namespace has two blanks behind its declaration",
         [](auto& w) {
             w.AddNamespace("xsi", kXsi);
             w.WriteStartElement("r", "");
             w.WriteAttributeType("", "T", it_string);
             w.WriteAttributeType("urn:t", "U", it_string);
             w.WriteAttributeType("urn:t", "V", it_string);
             w.WriteEndElement();
         },
         "<r xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" xsi:type=\"T\" "
         "xmlns:AA=\"urn:t\"  xsi:type=\"AA:U\" xsi:type=\"AA:V\"/>"},
    };
    Check(rows);
}

TEST(TextWriterHeader, TheDeclarationNamesTheEncodingOfTheStream)
{
    struct Declared
    {
        XmlEncoding eEncoding;
        const char* pszText;
    };
    const Declared rows[] = {
        {XmlEncoding_None, "<?xml version=\"1.0\"?>\n"},
        {XmlEncoding_UTF8, "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"},
        {XmlEncoding_UTF16, "<?xml version=\"1.0\" encoding=\"UTF-16\"?>\n"},
        {XmlEncoding_Wide, "<?xml version=\"1.0\"?>\n"},
    };
    for (const Declared& row : rows)
        EXPECT_EQ(Written([](CXmlTextWriter& w) { w.WriteStartDocument(); }, row.eEncoding),
                  row.pszText);
}

TEST(TextWriterHeader, InstructionsAndSchemasStandAsGiven)
{
    EXPECT_EQ(Written([](CXmlTextWriter& w) {
                  w.WritePI("<?a <b>?>");
                  w.WriteStartElement("r", "");
                  w.WriteInlineSchema("s=\"&\"");
                  w.WriteEndElement();
              }),
              "<?a <b>?>\n\n<r \ns=\"&\"\n/>");
}

TEST(TextWriterHeader, ADirectiveIsRefusedInsideAnElementOnly)
{
    EXPECT_EQ(Written([](CXmlTextWriter& w) {
                  w.WriteHeaderDirective("<!DOCTYPE a>");
                  Leaf(w, "a", "");
                  w.WriteHeaderDirective("late");
                  w.WriteStartElement("b", "");
                  w.WriteHeaderDirective("x");
              }),
              "<!DOCTYPE a>\n<a/>late\n<b"
              "<Headed directives must appear before an Element has been added.>");
}

TEST(TextWriterFailures, AttributesNeedAnOpenStartTagAndTextAnElement)
{
    const std::string strRefused = "<Attributes must be added before elements>";
    const Steps calls[] = {
        [](auto& w) { Attribute(w, "k", "", "v"); },
        [](auto& w) { w.WriteAttributeType("", "T", it_string); },
        [](auto& w) { w.WriteAttributeNil(); },
        [](auto& w) { w.WriteString("x", it_string, false); },
        [](auto& w) { w.WriteEndElement(); },
    };
    for (int i = 0; i < 5; ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(Written(calls[i]), strRefused);
        if (i > 2)
            continue;
        EXPECT_EQ(Written([&](CXmlTextWriter& w) {
                      w.WriteStartElement("a", "");
                      Leaf(w, "b", "");
                      calls[i](w);
                  }),
                  "<a><b/>" + strRefused);
        EXPECT_EQ(Written([&](CXmlTextWriter& w) {
                      w.WriteStartElement("a", "");
                      w.WriteString("x", it_string, false);
                      calls[i](w);
                  }),
                  "<a>x" + strRefused);
    }
    EXPECT_EQ(Written([](CXmlTextWriter& w) { w.WriteStartElement("a", ""); }),
              "<a<An Element has not been closed.>");
}

TEST(TextWriterFailures, AnElementWithoutAPrefixLeftIsFreedAndNotOpened)
{
    const auto fill = [](CXmlTextWriter& w) {
        for (int i = 0; i < (256 - 'A') * 26; ++i)
            w.AddNamespace(CXmlWriter::NsIntToString(i), "urn:" + std::to_string(i));
    };
    EXPECT_EQ(Written([&](CXmlTextWriter& w) {
                  fill(w);
                  w.WriteStartElement("r", "urn:x");
              }),
              "<<No namespace prefix is left.>");
    CTextStream stream;
    CXmlTextWriter writer(stream);
    writer.WriteStartElement("r", "");
    fill(writer);
    EXPECT_THROW(writer.WriteStartElement("c", "urn:x"), CQnException);
    writer.WriteEndElement();
    writer.Close();
}

TEST(TextWriterFlush, HappensBehindWholeItemsFrom4096CharactersOn)
{
    class CCountingStream : public CTextStream
    {
    public:
        void Flush() override { ++m_iFlushes; }
        int m_iFlushes = 0;
    };
    CCountingStream stream;
    CXmlTextWriter writer(stream);
    writer.SetFormat(false);
    writer.WriteStartElement("a", "");
    writer.WriteString(std::string(4092, 'x'), it_string, false);
    EXPECT_EQ(stream.GetLength(), 4095u);
    EXPECT_EQ(stream.m_iFlushes, 0);
    writer.WriteRawElement("y");
    EXPECT_EQ(stream.m_iFlushes, 0);
    writer.WriteEndElement();
    EXPECT_EQ(stream.m_iFlushes, 1);
    writer.WriteStartElement("b", "");
    Attribute(writer, "k", "", "v");
    writer.WriteInlineSchema("s");
    writer.WriteComment("c");
    writer.WriteString("", it_string, false);
    writer.WriteString("x", it_string, false);
    writer.WriteEndElement();
    writer.WritePI("p");
    writer.WriteHeaderDirective("h");
    writer.WriteStartDocument();
    EXPECT_EQ(stream.m_iFlushes, 10);
}
