#include "tests/xml/WriterScript.h"

#include "tests/support/SmallStack.h"

#include <chrono>

using namespace QnXmlLib16;

namespace {

using Steps = std::function<void(CXmlTextWriter&)>;

std::string Written(const Steps& steps)
{
    return WrittenBy(steps);
}

std::string Written(const std::string& strScript)
{
    return Written([&](CXmlTextWriter& w) { RunScript(w, strScript); });
}

using Row = std::pair<const char*, const char*>; // a script and what it writes

void Check(std::initializer_list<Row> rows)
{
    for (const auto& [pszScript, pszText] : rows)
        EXPECT_EQ(Written(pszScript), pszText) << pszScript;
}

const std::string kXsi = "http://www.w3.org/2001/XMLSchema-instance";

} // namespace

TEST(TextWriterElements, TagsFollowTheContent)
{
    Check({
        {"<a >", "<a/>"},
        {"<a ' >", "<a/>"},
        {"<a <b 'x > <c > 'y >", "<a><b>x</b><c/>y</a>"},
        {"<a 'x > <b >", "<a>x</a><b/>"},
        {"<a ~x @k=v >", "<a k=\"v\"/>"}, // a default value is left out
        {"<a !<\"--> >", "<a<!--&lt;\"--&gt;-->\n/>"},
    });
    EXPECT_EQ(Written([](CXmlTextWriter& w) {
                  w.SetWriteDefaultElementValues(true);
                  RunScript(w, "<a <b ~x >");
                  w.CloseParentElm();
                  w.WriteRawElement("<c>&</c>"); // stays clear of the start tag
                  RunScript(w, ">");
                  w.CloseParentElm();
              }),
              "<a><b>x</b><c>&</c></a>");
}

TEST(TextWriterElements, ADeepDocumentCostsWhatAFlatOneDoes)
{
    RunOnSmallStack([] {
        const auto start = std::chrono::steady_clock::now();
        CTextStream stream;
        CXmlTextWriter writer(stream);
        writer.SetFormat(false);
        writer.SetDefaultNamespace("urn:d");
        for (int i = 0; i < 200000; ++i)
            writer.WriteStartElement("a", "urn:d");
        for (int i = 0; i < 100000; ++i) { // the others stay open and are freed
            RunScript(writer, "<{urn:x}b >");
            writer.WriteEndElement();
        }
        // A fraction of a second in an optimised build; minutes with a look-up through all levels.
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
        EXPECT_EQ(stream.GetLength(), 200000u * 3 + 14 + 100000u * (24 + 4));
    });
}

TEST(TextWriterFormat, LinesAndIndentsSurroundElementsButNotText)
{
    const auto Formatted = [](const char* pszIndent, EOLType eEOLType) {
        return Written([&](CXmlTextWriter& w) {
            w.SetFormat(true);
            w.SetIndentChars(pszIndent);
            w.SetEOLType(eEOLType);
            RunScript(w, "<a <b 'x > <c <d >");
            w.WriteRawElement("<e/>");
            RunScript(w, "> >");
        });
    };
    EXPECT_EQ(Formatted("--", EOLType_CRLF),
              "<a>\r\n--<b>x</b>\r\n--<c>\r\n----<d/>\r\n<e/>\r\n--</c>\r\n</a>\r\n");
    EXPECT_EQ(Formatted(nullptr, EOLType_LF), "<a>\n<b>x</b>\n<c>\n<d/>\n<e/>\n</c>\n</a>\n");
}

TEST(TextWriterFormat, OnlyTheTwoLineEndsAreTaken)
{
    EXPECT_EQ(Written([](CXmlTextWriter& w) {
                  w.SetEOLType(EOLType_CRLF);
                  EXPECT_THROW(w.SetEOLType(static_cast<EOLType>(-1)), CQnException);
                  w.WriteHeaderDirective("x");
                  w.SetEOLType(static_cast<EOLType>(2));
              }),
              "x\r\n<Invalid EOL type.>");
}

TEST(TextWriterEscapes, DifferBetweenContentAndAttributes)
{
    const std::string rows[][3] = {
        // value, as content, as an attribute
        {"&<>'\"", "&amp;&lt;&gt;'\"", "&amp;&lt;&gt;'&quot;"},
        {"a\r\nb\rc\n", "a\nbc\n", "a&#xA;bc&#xA;"},
        {"\t\x01\x0B\x0C\x0E\x1F\x7F", "\t\x01\x0B\x0C\x0E\x1F\x7F", "\t\x01\x0B\x0C\x0E\x1F\x7F"},
        {"\x80\xA2\xBC\xBE\xFF", "\x80\xA2\xBC\xBE\xFF", "\x80\xA2\xBC\xBE\xFF"},
        {{"ab\0cd", 5}, "ab", "ab"},
        {"<![CDATA[<&]]>", "<![CDATA[<&]]>", "&lt;![CDATA[&lt;&amp;]]&gt;"},
        {" <![CDATA[", " &lt;![CDATA[", " &lt;![CDATA["},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Written([&](CXmlTextWriter& w) {
                      w.WriteStartElement("a", "");
                      w.WriteAttributeString("k", "", row[0], it_string);
                      w.WriteString(row[0], it_string, false);
                      w.WriteEndElement();
                      w.SetEOLType(EOLType_CRLF);
                      w.WriteStartElement("a", "");
                      w.WriteString("x\ny\r\n", it_string, false);
                      w.WriteEndElement();
                  }),
                  "<a k=\"" + row[2] + "\">" + row[1] + "</a><a>x\r\ny\r\n</a>");
}

TEST(TextWriterEscapes, AreFoundAtEveryPlaceOfALongText)
{
    const std::pair<char, const char*> stops[] = {{'&', "&amp;"},  {'<', "&lt;"},   {'>', "&gt;"},
                                                  {'"', "&quot;"}, {'\n', "&#xA;"}, {'\r', ""}};
    for (const auto& [cStop, pszEscape] : stops) {
        for (std::size_t uPlace = 0; uPlace < 40; ++uPlace) {
            std::string strText(40, 'x');
            strText[uPlace] = cStop;
            std::string strExpected = strText;
            strExpected.replace(uPlace, 1, pszEscape);
            strText += std::string("\0&", 2); // a zero byte ends the text
            EXPECT_EQ(Written([&](CXmlTextWriter& w) {
                          w.WriteStartElement("a", "");
                          w.WriteAttributeString("k", "", strText, it_string);
                          w.WriteEndElement();
                      }),
                      "<a k=\"" + strExpected + "\"/>")
                << int(cStop) << " at " << uPlace;
        }
    }
}

TEST(TextWriterNamespaces, AreDeclaredByTheRootOrWhereAPrefixIsMade)
{
    Check({
        // of the document, by namespace
        {"+z=urn:a +y=urn:b +x=http://www.w3.org/XML/1998/namespace/sub =urn:d "
         "<{urn:b}r <{urn:a}c > <{urn:d}d 'x > >",
         "<y:r xmlns=\"urn:d\" xmlns:z=\"urn:a\" xmlns:y=\"urn:b\"><z:c/><d>x</d></y:r>"},
        // a prefix of the root itself stands first and is declared once
        {"=urn:d <{urn:<}r <{urn:<}c 'x > >",
         "<AA:r xmlns:AA=\"urn:<\" xmlns=\"urn:d\"><AA:c>x</AA:c></AA:r>"},
        // siblings each declare the same prefix
        {"<r <{urn:a}c <{urn:a}d > > <{urn:b}c <{urn:b}d > > >",
         "<r><AA:c xmlns:AA=\"urn:a\"><AA:d/></AA:c><AA:c xmlns:AA=\"urn:b\"><AA:d/></AA:c></r>"},
        // a declaration below the root isn't written
        {"<r +p=urn:p <{urn:p}c > >", "<r><p:c/></r>"},
        // the end tag goes by the scope at the end
        {"=urn:d <{urn:d}r =urn:e 'x >", "<r xmlns=\"urn:d\">x</:r>"},
        // the xml namespace has its prefix without a declaration
        {"<r @{http://www.w3.org/XML/1998/namespace}lang=en >", "<r xml:lang=\"en\"/>"},
        // attributes share the prefixes made for their element
        {"<{urn:a}r @{urn:a}k=1 @{urn:b}l=2 @{urn:b}m=3 >",
         "<AA:r xmlns:AA=\"urn:a\" AA:k=\"1\" xmlns:AB=\"urn:b\" AB:l=\"2\" AB:m=\"3\"/>"},
        // an attribute never goes by the default namespace
        {"=urn:d <{urn:d}r @{urn:d}k=v >", "<r xmlns=\"urn:d\" xmlns:AA=\"urn:d\" AA:k=\"v\"/>"},
    });
}

TEST(TextWriterSchemaInstance, TypeAndNilAreAttributesOfItsNamespace)
{
    EXPECT_EQ(Written("+xsi=" + kXsi + " <r @nil >"),
              "<r xmlns:xsi=\"" + kXsi + "\" xsi:nil=\"true\"/>");
    EXPECT_EQ(Written("=urn:d <{urn:d}r :{urn:d}T >"),
              "<r xmlns=\"urn:d\" xmlns:AA=\"" + kXsi + "\" AA:type=\"T\"/>");
    // A type of a new namespace has two blanks behind its declaration.
    EXPECT_EQ(Written("+xsi=" + kXsi + " <r :T :{urn:t}U :{urn:t}V >"),
              "<r xmlns:xsi=\"" + kXsi +
                  "\" xsi:type=\"T\" xmlns:AA=\"urn:t\"  xsi:type=\"AA:U\" xsi:type=\"AA:V\"/>");
}

TEST(TextWriterHeader, InstructionsAndSchemasStandAsGiven)
{
    EXPECT_EQ(Written("?<?a&?> <r $s=\"&\" >"), "<?a&?>\n\n<r \ns=\"&\"\n/>");
    // A directive is refused inside an element only.
    EXPECT_EQ(Written([](CXmlTextWriter& w) {
                  w.WriteHeaderDirective("<!DOCTYPE a>");
                  RunScript(w, "<a >");
                  w.WriteHeaderDirective("late");
                  RunScript(w, "<b");
                  w.WriteHeaderDirective("x");
              }),
              "<!DOCTYPE a>\n<a/>late\n<b"
              "<Headed directives must appear before an Element has been added.>");
}

TEST(TextWriterFailures, AttributesNeedAnOpenStartTagAndTextAnElement)
{
    const std::string strRefused = "<Attributes must be added before elements>";
    for (const std::string strCall : {"@k=v", ":T", "@nil"}) {
        EXPECT_EQ(Written(strCall), strRefused);
        EXPECT_EQ(Written("<a <b > " + strCall), "<a><b/>" + strRefused);
        EXPECT_EQ(Written("<a 'x " + strCall), "<a>x" + strRefused);
    }
    EXPECT_EQ(Written("'x"), strRefused);
    EXPECT_EQ(Written(">"), strRefused);
    EXPECT_EQ(Written("<a"), "<a<An Element has not been closed.>");
}

TEST(TextWriterFailures, AnElementWithoutAPrefixLeftIsFreedAndNotOpened)
{
    EXPECT_EQ(Written([](CXmlTextWriter& w) {
                  RunScript(w, "<r");
                  for (int i = 0; i < (256 - 'A') * 26; ++i)
                      w.AddNamespace(CXmlWriter::NsIntToString(i), "urn:" + std::to_string(i));
                  EXPECT_THROW(RunScript(w, "<{urn:x}c"), CQnException);
                  RunScript(w, ">");
              }),
              "<r><</r>");
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
    RunScript(writer, "<a '" + std::string(4092, 'x'));
    EXPECT_EQ(stream.GetLength(), 4095u);
    writer.WriteRawElement("y");
    EXPECT_EQ(stream.m_iFlushes, 0);
    RunScript(writer, "> <b @k=v $s !c ' 'x > ?p"); // the empty string alone doesn't flush
    writer.WriteHeaderDirective("h");
    writer.WriteStartDocument();
    EXPECT_EQ(stream.m_iFlushes, 10);
}
