#include "tests/json/Rows.h"
#include "tests/model/Failure.h"

#include <gtest/gtest.h>

using namespace QnXmlLib16;

namespace {

void Check(const char* pszRows, JsonRoundTrip eRoundTrip = JsonRoundTrip_Full)
{
    CSerializationContext context;
    context.GetJsonContext().SetSupportRoundtrip(eRoundTrip);
    for (const auto& [strJson, strXml] : Rows(pszRows))
        EXPECT_EQ(XmlLineOf(strJson, context), strXml) << strJson;
}

} // namespace

TEST(JsonToXml, MembersBecomeElementsAttributesAndText)
{
    const char* const pszRows = R"(
 => 
{} => 
{"a":-1.50} => <a>-1.50</a>
{"a":{"b":true,"c":false,"d":null,"e":"","f":{}}} => <a><b>true</b><c>false</c><d/><e/><f/></a>
{"a":{"@k":"<","@l":1,"b":2}} => <a k="&lt;" l="1"><b>2</b></a>
{"a":{"@k":1,"#text":"x&"}} => <a k="1">x&amp;</a>
{"a":[{"b":1},{"b":2},{}]} => <a><b>1</b></a><a><b>2</b></a><a/>
{"r":{"a":[{"@k":1,"b":1},{"#text":"x"}],"c":3}} => <r><a k="1"><b>1</b></a><a>x</a><c>3</c></r>
{"p:r":{"@xmlns:p":"urn:p","a":1}} => <p:r xmlns:p="urn:p"><a>1</a></p:r>
{"a":1,"b":2} => <a>1</a><b>2</b>)";
    Check(pszRows, JsonRoundTrip_Full);
    Check(pszRows, JsonRoundTrip_NoNamespaces);
    Check(R"(
{"a":{"@k":1,"#text":"x"}} => <a><@k>1</@k><#text>x</#text></a>)",
          JsonRoundTrip_None);
}

TEST(JsonToXml, MembersMoveIntoANeighbourInTheseShapes)
{
    // An object that ends with an attribute leaves its element open. Behind "#text" members are
    // the parent's. The first plain item of an array closes its element, the second the one around
    // it. An empty array leaves its element open for what ends next. An attribute without a value
    // is gone.
    Check(R"(
{"r":{"a":{"@k":1},"b":2}} => <r><a k="1"><b>2</b></a></r>
{"a":{"@k":1}} => Exception: An Element has not been closed.
{"r":{"a":{"#text":"x","b":2}}} => <r><a>x</a><b>2</b></r>
{"r":{"a":[1]}} => <r><a>1</a></r>
{"r":{"a":[1,2]}} => <r><a>1</a>2</r>
{"a":[]} => <a/>
{"r":{"a":[],"b":1}} => <r><a><b>1</b></a></r>
{"a":{"@k":null,"b":1}} => <a><b>1</b></a>)");
}

TEST(JsonToXml, RefusesWhatHasNoElementOrName)
{
    Check(R"(
5 => State: Failed to convert value '5' to Element string value in XML.
{"@a":1} => State: Failed to convert value '1' to Attribute string value in XML.
{"#text":1} => State: Failed to convert value '1' to Element string value in XML.
{"a":{"b":1,"@c":"x"}} => State: Failed to convert value 'x' to Attribute string value in XML.
[1] => Validation: JSON Array has no Name.
{"a":[{"b":1},[2]]} => Validation: JSON Array has no Name.)");
    Model::ExpectFailure<CQnValidationException>(
        [] { CJsonTextReader::ConvertJsonToXml("{\"a\":{\"\":1}}", CSerializationContext()); },
        "JSON item has an empty Name.", "$..a");
}

TEST(JsonToXml, TheContextGivesRootNameAndComments)
{
    CSerializationContext context;
    context.GetJsonContext().SetRootElementName("root");
    EXPECT_EQ(XmlLineOf("/* c */{\"a\":1}", context), "<root><a>1</a></root>");
    EXPECT_EQ(XmlLineOf("5", context), "<root>5</root>");
    EXPECT_EQ(XmlLineOf("[{\"a\":1},{}]", context), "<root><a>1</a></root><root/>");
    context.GetJsonContext().SetRootElementName(nullptr);
    EXPECT_EQ(XmlLineOf("{\"a\":1}", context), "<a>1</a>");
    context.GetJsonContext().GetAllowComments(false);
    EXPECT_EQ(XmlLineOf("// c\n{}", context),
              "Validation: Expected Value '{', '[', '\"', '0-9', '-', 'true', 'false' or 'null', "
              "found '/' at line 1, position 1.");
}
