#include "QnXmlLib16/json/JsonTextWriter.h"

#include "QnXmlLib16/binding/SerializationContext.h"
#include "QnXmlLib16/json/JsonTextReader.h"
#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/support/TextStream.h"
#include "QnXmlLib16/values/BinaryData.h"

#include <gtest/gtest.h>

#include <functional>

using namespace QnXmlLib16;

namespace {

using Steps = std::function<void(CJsonTextWriter&)>;

struct Row
{
    const char* pszCase;
    Steps steps;
    const char* pszText;
};

// What the steps put out between the braces of the document; "<message>" follows where they fail.
std::string Written(const Steps& steps, int iRoundTrip = 2, bool bFormat = false)
{
    CTextStream stream;
    CJsonTextWriter writer(stream);
    std::string strFailure;
    try {
        writer.Open();
        writer.SetFormat(bFormat);
        writer.SetSupportRoundtrip(static_cast<JsonRoundTrip>(iRoundTrip));
        writer.WriteStartDocument();
        steps(writer);
        writer.WriteEndDocument();
        writer.Close();
    }
    catch (const CQnException& e) {
        strFailure = "<" + e.GetMessage() + ">";
    }
    return stream.GetText() + strFailure;
}

template <std::size_t N>
void Check(const Row (&rows)[N], int iRoundTrip = 2)
{
    for (const Row& row : rows) {
        SCOPED_TRACE(row.pszCase);
        EXPECT_EQ(Written(row.steps, iRoundTrip), row.pszText);
    }
}

void Leaf(CJsonTextWriter& w, const char* pszName, const std::string& strText,
          ItemType eType = it_string)
{
    w.WriteStartElement(pszName, "");
    w.WriteString(strText, eType, false);
    w.WriteEndElement();
}

void Attribute(CJsonTextWriter& w, const char* pszName, const char* pszNamespace = "")
{
    w.WriteAttributeString(pszName, pszNamespace, "v", it_string);
}

// An element inside r, so that its surroundings are whole.
Steps InRoot(const Steps& steps)
{
    return [steps](CJsonTextWriter& w) {
        w.WriteStartElement("r", "");
        steps(w);
        w.WriteEndElement();
    };
}

// Two items of a collection, with a state before and behind them.
void Items(CJsonTextWriter& w, const char* pszName, const std::function<void()>& content)
{
    w.SetContextState(CXmlWriter::ContextState_BeforeItems);
    for (int i = 0; i < 2; ++i) {
        w.WriteStartElement(pszName, "");
        content();
        w.WriteEndElement();
    }
    w.SetContextState(CXmlWriter::ContextState_AfterItems);
}

std::string ReadBack(const std::string& strJson)
{
    const CBinaryData xml = CJsonTextReader::ConvertJsonToXml(strJson, CSerializationContext());
    const std::string strXml(reinterpret_cast<const char*>(xml.GetData()), xml.GetLength());
    std::string strLine;
    for (const char c : strXml.substr(strXml.find('\n'))) {
        if (c != '\n' && c != '\t')
            strLine += c;
    }
    return strLine;
}

constexpr const char* kXsi = "http://www.w3.org/2001/XMLSchema-instance";

} // namespace

TEST(JsonWriterElements, ContentDecidesBetweenAValueAndAnObject)
{
    const Row rows[] = {
        {"nothing", [](auto&) {}, "{}"},
        {"a value", [](auto& w) { Leaf(w, "a", "x"); }, "{\"a\": \"x\"}"},
        {"an empty value", [](auto& w) { Leaf(w, "a", ""); }, "{\"a\": \"\"}"},
        {"a default value", InRoot([](auto& w) { w.WriteString("x", it_string, true); }),
         "{\"r\": \"x\"}"},
        {"elements", InRoot([](auto& w) {
             Leaf(w, "a", "x");
             Leaf(w, "b", "y");
         }),
         "{\"r\": {\"a\": \"x\",\"b\": \"y\"}}"},
        {"an attribute", InRoot([](auto& w) { Attribute(w, "k"); }), "{\"r\": {\"@k\": \"v\"}}"},
        {"attributes and text", InRoot([](auto& w) {
             Attribute(w, "k");
             Attribute(w, "l");
             w.WriteString("5", it_i4, false);
         }),
         "{\"r\": {\"@k\": \"v\",\"@l\": \"v\",\"#text\": 5}}"},
        {"an attribute behind content", InRoot([](auto& w) {
             Leaf(w, "a", "x");
             Attribute(w, "k");
         }),
         "{\"r\": {\"a\": \"x\",\"@k\": \"v\"}}"},
        {"what JSON has no place for", InRoot([](auto& w) {
             w.WritePI("<?p?>");
             w.WriteInlineSchema("s");
             w.WriteString("x", it_string, false);
         }),
         "{\"r\": \"x\"}"},
        {"a comment", [](auto& w) { w.WriteComment("a\"*\x01"); }, "{/* a\"*\\u0001 */\n}"},
        {"two roots",
         [](auto& w) {
             Leaf(w, "a", "1");
             Leaf(w, "b", "2");
         },
         "{\"a\": \"1\"\"b\": \"2\"}"},
    };
    Check(rows);
}

TEST(JsonWriterElements, AnEmptyElementIsAKeyWithoutAValue)
{
    EXPECT_EQ(Written(InRoot([](CJsonTextWriter& w) {
                  w.WriteStartElement("a", "");
                  w.WriteEndElement();
                  w.WriteStartElement("b", "");
                  w.WriteAttributeNil();
                  w.WriteEndElement();
                  Leaf(w, "c", "x");
              })),
              "{\"r\": {\"a\": ,\"b\": ,\"c\": \"x\"}}");
}

TEST(JsonWriterElements, TheTypeDecidesAboutQuotes)
{
    for (int i = it_none; i <= it_xmlCollection; ++i) {
        const bool bBare = (i >= 3 && i <= 12) || (i >= 24 && i <= 26);
        EXPECT_EQ(Written([&](CJsonTextWriter& w) { Leaf(w, "a", "5", static_cast<ItemType>(i)); }),
                  bBare ? "{\"a\": 5}" : "{\"a\": \"5\"}")
            << i;
    }
}

TEST(JsonWriterFormat, LinesAndIndentsSurroundMembers)
{
    const Steps steps = [](CJsonTextWriter& w) {
        w.WriteStartElement("root", "");
        Attribute(w, "a");
        w.WriteStartElement("b", "");
        Leaf(w, "c", "x\ny");
        w.WriteEndElement();
        w.WriteString("z", it_string, false);
        w.WriteEndElement();
    };
    EXPECT_EQ(Written(steps, 2, true), "{\n"
                                       "\t\"root\": {\n"
                                       "\t\t\"@a\": \"v\",\n"
                                       "\t\t\"b\": {\n"
                                       "\t\t\t\"c\": \"x\ny\"\n"
                                       "\t\t},\n"
                                       "\t\t\"#text\": \"z\"\n"
                                       "\t}\n"
                                       "}");
    EXPECT_EQ(Written(
                  [](CJsonTextWriter& w) {
                      w.SetIndentChars("-");
                      w.SetEOLType(EOLType_CRLF);
                      w.AddNamespace("p", "urn:p");
                      w.WriteStartElement("a", "urn:p");
                      Leaf(w, "b", "x\r\ny");
                      w.WriteEndElement();
                  },
                  2, true),
              "{\n-\"p:a\": {\r\n--\"@xmlns:p\": \"urn:p\",\r\n--\"b\": \"x\r\ny\"\r\n-}\r\n}");
}

TEST(JsonWriterFormat, SettingsStartAsStatedAndRefuseAnUnknownLineEnd)
{
    CTextStream stream;
    CJsonTextWriter writer(stream);
    EXPECT_TRUE(writer.GetFormat());
    EXPECT_EQ(writer.GetEOLType(), EOLType_LF);
    EXPECT_EQ(writer.GetSupportRoundtrip(), JsonRoundTrip_Full);
    EXPECT_EQ(writer.GetIndentChars(), "\t");
    writer.SetIndentChars(nullptr);
    EXPECT_EQ(writer.GetIndentChars(), "");
    writer.SetEOLType(EOLType_CRLF);
    try {
        writer.SetEOLType(static_cast<EOLType>(2));
        ADD_FAILURE();
    }
    catch (const CQnException& e) {
        EXPECT_EQ(e.GetMessage(), "Invalid EOL type.");
    }
    EXPECT_EQ(writer.GetEOLType(), EOLType_CRLF);
}

TEST(JsonWriterRoundTrip, ChoosesKeysAndNamespaces)
{
    const Steps steps = [](CJsonTextWriter& w) {
        w.SetDefaultNamespace("urn:d");
        w.AddNamespace("p", "urn:p");
        w.AddNamespace("xsi", kXsi);
        w.WriteStartElement("r", "urn:d");
        w.WriteAttributeType("urn:p", "T", it_string);
        Attribute(w, "a", "urn:p");
        w.WriteStartElement("a", "urn:p");
        w.WriteString("x", it_string, false);
        w.WriteEndElement();
        w.WriteString("y", it_string, false);
        w.WriteEndElement();
    };
    EXPECT_EQ(Written(steps, 0), "{\"r\": {\"a\": \"v\",\"a\": \"x\",\"\": \"y\"}}");
    EXPECT_EQ(Written(steps, 1), "{\"r\": {\"@a\": \"v\",\"a\": \"x\",\"#text\": \"y\"}}");
    EXPECT_EQ(Written(steps, 2),
              "{\"r\": {\"@xmlns\": \"urn:d\","
              "\"@xmlns:xsi\": \"http://www.w3.org/2001/XMLSchema-instance\","
              "\"@xmlns:p\": \"urn:p\",\"@xsi:type\": \"p:T\",\"@p:a\": \"v\",\"p:a\": \"x\","
              "\"#text\": \"y\"}}");
}

TEST(JsonWriterNamespaces, NeedAPrefixBelowTheRoot)
{
    const Row rows[] = {
        {"the root gets one",
         [](auto& w) {
             w.WriteStartElement("r", "urn:r");
             w.WriteStartElement("a", "urn:r");
             Attribute(w, "k", "urn:r");
             w.WriteEndElement();
             w.WriteEndElement();
         },
         "{\"AA:r\": {\"@xmlns:AA\": \"urn:r\",\"AA:a\": {\"@AA:k\": \"v\"}}}"},
        {"an element doesn't", InRoot([](auto& w) { w.WriteStartElement("a", "urn:a"); }),
         "{\"r\": {<Unknown Namespace: a.>"},
        {"nor an attribute", InRoot([](auto& w) { Attribute(w, "k", "urn:a"); }),
         "{\"r\": {<Unknown Namespace: k.>"},
        {"nor a type", InRoot([](auto& w) { w.WriteAttributeType("urn:a", "T", it_string); }),
         "{\"r\": <Unknown Namespace: T.>"},
        {"nor the schema instance",
         InRoot([](auto& w) { w.WriteAttributeType("", "T", it_string); }),
         "{\"r\": {<Unknown Namespace: type.>"},
        {"a type of the default namespace has none",
         [](auto& w) {
             w.AddNamespace("xsi", kXsi);
             w.SetDefaultNamespace("urn:d");
             w.WriteStartElement("r", "urn:d");
             w.WriteAttributeType("urn:d", "T", it_string);
             w.WriteEndElement();
         },
         "{\"r\": {\"@xmlns\": \"urn:d\","
         "\"@xmlns:xsi\": \"http://www.w3.org/2001/XMLSchema-instance\",\"@xsi:type\": \"T\"}}"},
    };
    Check(rows);
}

TEST(JsonWriterEscapes, OnlyControlCharactersChange)
{
    struct Text
    {
        std::string strValue;
        const char* pszWritten;
    };
    const Text texts[] = {
        {"\"\\/", "\"\\/"},
        {"\b\t\f", "\b\t\f"},
        {"\x01\x0B\x0E\x1F\x7F", "\\u0001\\u000B\\u000E\\u001F\x7F"},
        {"a\r\nb\n", "a\nb\n"},
        {"a long text with a\rreturn, a\ttab and an \x1B escape",
         "a long text with areturn, a\ttab and an \\u001B escape"},
        {"\xC3\xA9\x80\xFF", "\xC3\xA9\x80\xFF"},
        {std::string("ab\0cd", 5), "ab"},
    };
    for (const Text& text : texts)
        EXPECT_EQ(Written([&](CJsonTextWriter& w) { Leaf(w, "a", text.strValue); }),
                  std::string("{\"a\": \"") + text.pszWritten + "\"}");
}

TEST(JsonWriterCollections, ItemsThatAreObjectsMakeAnArray)
{
    const Steps steps =
        InRoot([](CJsonTextWriter& w) { Items(w, "i", [&] { Leaf(w, "a", "x"); }); });
    for (const int iRoundTrip : {0, 1, 2})
        EXPECT_EQ(Written(steps, iRoundTrip), "{\"r\": {\"i\": [{\"a\": \"x\"},{\"a\": \"x\"}]}}");
    EXPECT_EQ(Written(steps, 2, true), "{\n"
                                       "\t\"r\": {\n"
                                       "\t\t\"i\": [\n"
                                       "\t\t\t{\n"
                                       "\t\t\t\t\"a\": \"x\"\n"
                                       "\t\t\t},\n"
                                       "\t\t\t{\n"
                                       "\t\t\t\t\"a\": \"x\"\n"
                                       "\t\t\t}\n"
                                       "\t\t]\n"
                                       "\t}\n"
                                       "}");
}

TEST(JsonWriterCollections, TheBracketClosesWithTheElementAround)
{
    const Row rows[] = {
        {"items that are plain values repeat the key",
         InRoot([](auto& w) { Items(w, "i", [&] { w.WriteString("x", it_string, false); }); }),
         "{\"r\": {\"i\": \"x\",\"i\": \"x\"]}}"},
        {"a member behind the items stands in the array", InRoot([](auto& w) {
             Items(w, "i", [&] { Attribute(w, "k"); });
             Leaf(w, "b", "y");
         }),
         "{\"r\": {\"i\": [{\"@k\": \"v\"},{\"@k\": \"v\"},\"b\": \"y\"]}}"},
        {"collections in collections",
         InRoot([](auto& w) { Items(w, "i", [&] { Items(w, "j", [&] { Attribute(w, "k"); }); }); }),
         "{\"r\": {\"i\": [{\"j\": [{\"@k\": \"v\"},{\"@k\": \"v\"}]},"
         "{\"j\": [{\"@k\": \"v\"},{\"@k\": \"v\"}]}]}}"},
    };
    Check(rows);
}

TEST(JsonWriterFailures, ContentNeedsAnElement)
{
    const Steps calls[] = {
        [](auto& w) { Attribute(w, "k"); },
        [](auto& w) { w.WriteAttributeType("", "T", it_string); },
        [](auto& w) { w.WriteString("x", it_string, false); },
        [](auto& w) { w.WriteEndElement(); },
    };
    for (const Steps& call : calls)
        EXPECT_EQ(Written(call), "{<Attributes must be added before elements>");
    EXPECT_EQ(Written([](CJsonTextWriter& w) { w.WriteStartElement("a", ""); }),
              "{\"a\": }<An Element has not been closed.>");
}

TEST(JsonWriterFlush, HappensBehindWholeItemsFrom4096CharactersOn)
{
    class CCountingStream : public CTextStream
    {
    public:
        void Flush() override { ++m_iFlushes; }
        int m_iFlushes = 0;
    };
    CCountingStream stream;
    CJsonTextWriter writer(stream);
    writer.WriteStartElement("a", "");
    writer.WriteString(std::string(4000, 'x'), it_string, false);
    EXPECT_EQ(stream.m_iFlushes, 0);
    Attribute(writer, std::string(100, 'k').c_str());
    EXPECT_EQ(stream.m_iFlushes, 1);
    writer.WriteStartElement("b", "");
    writer.WriteString("x", it_string, false);
    writer.WriteEndElement();
    writer.WriteComment("c");
    writer.WriteStartDocument();
    writer.WriteEndDocument();
    EXPECT_EQ(stream.m_iFlushes, 7);
}

TEST(JsonReadBack, ObjectsWithoutTheLosingShapesComeBack)
{
    const Steps steps = [](CJsonTextWriter& w) {
        w.SetDefaultNamespace("urn:d");
        w.AddNamespace("p", "urn:p");
        w.AddNamespace("xsi", kXsi);
        w.WriteStartElement("r", "urn:d");
        w.WriteAttributeType("urn:p", "T", it_string);
        w.WriteStartElement("n", "urn:p");
        w.WriteString("-1.5", it_decimal, false);
        w.WriteEndElement();
        w.WriteStartElement("t", "");
        Attribute(w, "k");
        w.WriteString("x", it_string, false);
        w.WriteEndElement();
        Items(w, "i", [&] { Leaf(w, "a", "true", it_boolean); });
        w.WriteEndElement();
    };
    for (const bool bFormat : {false, true}) {
        EXPECT_EQ(ReadBack(Written(steps, 2, bFormat)),
                  "<r xmlns=\"urn:d\" xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
                  "xmlns:p=\"urn:p\" xsi:type=\"p:T\"><p:n>-1.5</p:n><t k=\"v\">x</t>"
                  "<i><a>true</a></i><i><a>true</a></i></r>");
        EXPECT_EQ(ReadBack(Written(steps, 1, bFormat)),
                  "<r><n>-1.5</n><t k=\"v\">x</t><i><a>true</a></i><i><a>true</a></i></r>");
    }
}

TEST(JsonReadBack, TheLosingShapesAreRefusedOrChanged)
{
    const auto failure = [](const Steps& steps) {
        try {
            return ReadBack(Written(InRoot(steps)));
        }
        catch (const CQnException& e) {
            return e.GetMessage();
        }
    };
    EXPECT_EQ(failure([](auto& w) { Items(w, "i", [&] { w.WriteString("1", it_i4, false); }); }),
              "Expected Object separator character ',', found ']' at line 1, position 21.\n"
              "Path: $.i.r");
    EXPECT_EQ(failure([](auto& w) { Leaf(w, "a", "say \"x\""); }),
              "Expected Object separator character ',', found 'x' at line 1, position 19.\n"
              "Path: $.a.r");
    EXPECT_EQ(failure([](auto& w) { Attribute(w, "k"); }), "An Element has not been closed.");
    EXPECT_EQ(failure([](auto& w) { Leaf(w, "a", "\x01"); }), "<r><a>3</a></r>");
    EXPECT_EQ(failure([](auto& w) {
                  w.WriteComment("c");
                  Leaf(w, "a", "x");
              }),
              "<r><a>x</a></r>");
}
