#include "tests/json/Rows.h"
#include "tests/xml/WriterScript.h"

#include <gtest/gtest.h>

using namespace QnXmlLib16;

namespace {

// What the steps put out between the braces of the document.
std::string Written(const std::function<void(CJsonTextWriter&)>& steps, int iRoundTrip = 2,
                    bool bFormat = false)
{
    return WrittenBy<CJsonTextWriter>([&](CJsonTextWriter& w) {
        w.SetFormat(bFormat);
        w.SetSupportRoundtrip(static_cast<JsonRoundTrip>(iRoundTrip));
        w.WriteStartDocument();
        steps(w);
        w.WriteEndDocument();
    });
}

std::string Written(const std::string& strScript, int iRoundTrip = 2, bool bFormat = false)
{
    return Written([&](CJsonTextWriter& w) { RunScript(w, strScript); }, iRoundTrip, bFormat);
}

// Each row is a script and what it writes.
void Check(const char* pszRows)
{
    for (const auto& [strScript, strJson] : Rows(pszRows))
        EXPECT_EQ(Written(strScript), strJson) << strScript;
}

const std::string kXsi = "http://www.w3.org/2001/XMLSchema-instance";

} // namespace

TEST(JsonWriterElements, ContentDecidesBetweenAValueAndAnObject)
{
    Check(R"(
 => {}
<a 'x > => {"a": "x"}
<a ' > => {"a": ""}
<r <a 'x > <b 'y > > => {"r": {"a": "x","b": "y"}}
<r @k=v @l=v '(i4)5 > => {"r": {"@k": "v","@l": "v","#text": 5}}
<r <a 'x > @k=v > => {"r": {"a": "x","@k": "v"}}
<r ?<?p?> $s 'x > => {"r": "x"}
<r <a [ <i @k=v > ] > <b <c 'x > > > => {"r": {"a": {"i": [{"@k": "v"}]},"b": {"c": "x"}}}
<a '1 > <b '2 > => {"a": "1""b": "2"})");
    EXPECT_EQ(Written("!a\"*\x01"), "{/* a\"*\\u0001 */\n}");
    // An empty element is a key without a value.
    EXPECT_EQ(Written("<r <a > <b @nil > <c 'x > >"), "{\"r\": {\"a\": ,\"b\": ,\"c\": \"x\"}}");
}

TEST(JsonWriterElements, TheTypeDecidesAboutQuotes)
{
    for (int i = it_none; i <= it_xmlCollection; ++i) {
        const bool bBare = (i >= 3 && i <= 12) || (i >= 24 && i <= 26);
        EXPECT_EQ(Written([&](CJsonTextWriter& w) {
                      w.WriteStartElement("a", "");
                      w.WriteString("5", static_cast<ItemType>(i), false);
                      w.WriteEndElement();
                  }),
                  bBare ? "{\"a\": 5}" : "{\"a\": \"5\"}")
            << i;
    }
}

TEST(JsonWriterFormat, LinesAndIndentsSurroundMembers)
{
    EXPECT_EQ(Written("<root @a=v <b <c 'x > > [ <i <a 'x > > <i <a 'x > > ] >", 2, true), R"({
	"root": {
		"@a": "v",
		"b": {
			"c": "x"
		},
		"i": [
			{
				"a": "x"
			},
			{
				"a": "x"
			}
		]
	}
})");
    EXPECT_EQ(Written([](CJsonTextWriter& w) { w.SetEOLType(static_cast<EOLType>(2)); }),
              "{<Invalid EOL type.>");
}

TEST(JsonWriterRoundTrip, ChoosesKeysAndNamespaces)
{
    const std::string strScript =
        "=urn:d +p=urn:p +xsi=" + kXsi + " <{urn:d}r :{urn:p}T @{urn:p}a=v <{urn:p}a 'x > 'y >";
    EXPECT_EQ(Written(strScript, 0), "{\"r\": {\"a\": \"v\",\"a\": \"x\",\"\": \"y\"}}");
    EXPECT_EQ(Written(strScript, 1), "{\"r\": {\"@a\": \"v\",\"a\": \"x\",\"#text\": \"y\"}}");
    EXPECT_EQ(Written(strScript, 2), "{\"r\": {\"@xmlns\": \"urn:d\",\"@xmlns:xsi\": \"" + kXsi +
                                         "\",\"@xmlns:p\": \"urn:p\",\"@xsi:type\": \"p:T\","
                                         "\"@p:a\": \"v\",\"p:a\": \"x\",\"#text\": \"y\"}}");
}

TEST(JsonWriterNamespaces, NeedAPrefixBelowTheRoot)
{
    Check(R"(
<{urn:r}r <{urn:r}a @{urn:r}k=v > > => {"AA:r": {"@xmlns:AA": "urn:r","AA:a": {"@AA:k": "v"}}}
<r <{urn:a}a => {"r": {<Unknown Namespace: a.>
<r @{urn:a}k=v => {"r": {<Unknown Namespace: k.>
<r :{urn:a}T => {"r": <Unknown Namespace: T.>
<r :T => {"r": {<Unknown Namespace: type.>)");
    // A type of the default namespace has no prefix.
    EXPECT_EQ(Written("+xsi=" + kXsi + " =urn:d <{urn:d}r :{urn:d}T >"),
              "{\"r\": {\"@xmlns\": \"urn:d\",\"@xmlns:xsi\": \"" + kXsi +
                  "\",\"@xsi:type\": \"T\"}}");
}

TEST(JsonWriterEscapes, OnlyControlCharactersChange)
{
    const std::pair<std::string, std::string> rows[] = {
        {"\"\\/", "\"\\/"},
        {"\b\t\f", "\b\t\f"},
        {"\x01\x0B\x0E\x1F\x7F", "\\u0001\\u000B\\u000E\\u001F\x7F"},
        {"a long text with a\rreturn, a\tttab, a \nline and an \x1B escape",
         "a long text with areturn, a\tttab, a \nline and an \\u001B escape"},
        {"\xC3\xA9\x80\xFF", "\xC3\xA9\x80\xFF"},
        {std::string("ab\0cd", 5), "ab"},
    };
    for (const auto& [strValue, strWritten] : rows)
        EXPECT_EQ(Written([&, &strText = strValue](CJsonTextWriter& w) {
                      w.WriteStartElement("a", "");
                      w.WriteString(strText, it_string, false);
                      w.WriteEndElement();
                  }),
                  "{\"a\": \"" + strWritten + "\"}");
}

TEST(JsonWriterCollections, TheBracketClosesWithTheElementAround)
{
    // Items that are plain values repeat the key; a member behind the items stands in the array.
    Check(R"(
<r [ <i 'x > <i 'x > ] > => {"r": {"i": "x","i": "x"]}}
<r [ <i @k=v > <i @k=v > ] <b 'y > > => {"r": {"i": [{"@k": "v"},{"@k": "v"},"b": "y"]}}
<r [ <i [ <j @k=v > ] > <i @k=v > ] > => {"r": {"i": [{"j": [{"@k": "v"}]},{"@k": "v"}]}})");
}

TEST(JsonWriterFailures, ContentNeedsAnElement)
{
    for (const char* pszCall : {"@k=v", ":T", "'x", ">"})
        EXPECT_EQ(Written(pszCall), "{<Attributes must be added before elements>");
    EXPECT_EQ(Written("<a"), "{\"a\": }<An Element has not been closed.>");
}
