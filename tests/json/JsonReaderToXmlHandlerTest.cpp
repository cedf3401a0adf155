#include "QnXmlLib16/binding/SerializationContext.h"
#include "QnXmlLib16/json/JsonContext.h"
#include "QnXmlLib16/json/JsonTextReader.h"
#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/values/BinaryData.h"

#include <gtest/gtest.h>

using namespace QnXmlLib16;

namespace {

std::string Convert(const std::string& strJson, const CSerializationContext& context)
{
    const CBinaryData xml = CJsonTextReader::ConvertJsonToXml(strJson, context);
    return std::string(reinterpret_cast<const char*>(xml.GetData()), xml.GetLength());
}

// The XML text on one line, without declaration and indentation; "Class: message" for a failure.
std::string Convert(const std::string& strJson, int iRoundTrip = 2)
{
    CSerializationContext context;
    context.GetJsonContext().SetSupportRoundtrip(static_cast<JsonRoundTrip>(iRoundTrip));
    try {
        std::string strXml = Convert(strJson, context);
        const std::string strDeclaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
        EXPECT_EQ(strXml.compare(0, strDeclaration.size(), strDeclaration), 0);
        strXml.erase(0, strDeclaration.size());
        std::string strLine;
        for (const char c : strXml) {
            if (c != '\n' && c != '\t')
                strLine += c;
        }
        return strLine;
    }
    catch (const CQnInvalidStateException& e) {
        return "InvalidState: " + e.GetMessage();
    }
    catch (const CQnValidationException& e) {
        return "Validation: " + e.GetMessage();
    }
    catch (const CQnException& e) {
        return "Exception: " + e.GetMessage();
    }
}

struct Row
{
    const char* pszJson;
    const char* pszXml;
};

template <std::size_t N>
void Check(const Row (&rows)[N], int iRoundTrip = 2)
{
    for (const Row& row : rows)
        EXPECT_EQ(Convert(row.pszJson, iRoundTrip), row.pszXml) << row.pszJson;
}

} // namespace

TEST(JsonToXml, MembersBecomeElementsAttributesAndText)
{
    const Row rows[] = {
        {"", ""},
        {"{}", ""},
        {"{\"a\":\"x\"}", "<a>x</a>"},
        {"{\"a\":-1.50}", "<a>-1.50</a>"},
        {"{\"a\":{\"b\":true,\"c\":false,\"d\":null,\"e\":\"\",\"f\":{}}}",
         "<a><b>true</b><c>false</c><d/><e/><f/></a>"},
        {"{\"a\":{\"@k\":\"<\",\"@l\":1,\"b\":2}}", "<a k=\"&lt;\" l=\"1\"><b>2</b></a>"},
        {"{\"a\":{\"@k\":1,\"#text\":\"x&\"}}", "<a k=\"1\">x&amp;</a>"},
        {"{\"a\":[{\"b\":1},{\"b\":2},{}]}", "<a><b>1</b></a><a><b>2</b></a><a/>"},
        {"{\"r\":{\"a\":[{\"@k\":1,\"b\":1},{\"#text\":\"x\"}],\"c\":3}}",
         "<r><a k=\"1\"><b>1</b></a><a>x</a><c>3</c></r>"},
        {"{\"p:r\":{\"@xmlns:p\":\"urn:p\",\"@xmlns\":\"urn:d\",\"@xsi:type\":\"p:T\",\"a\":1}}",
         "<p:r xmlns:p=\"urn:p\" xmlns=\"urn:d\" xsi:type=\"p:T\"><a>1</a></p:r>"},
        {"{\"a\":1,\"b\":2}", "<a>1</a><b>2</b>"},
    };
    Check(rows);
    Check(rows, 1);
}

TEST(JsonToXml, WithoutRoundTripAllNamesAreElements)
{
    const Row rows[] = {
        {"{\"a\":{\"@k\":1,\"#text\":\"x\"}}", "<a><@k>1</@k><#text>x</#text></a>"},
    };
    Check(rows, 0);
}

TEST(JsonToXml, MembersMoveIntoANeighbourInTheseShapes)
{
    const Row rows[] = {
        // An object that ends with an attribute leaves its element open.
        {"{\"r\":{\"a\":{\"@k\":1},\"b\":2}}", "<r><a k=\"1\"><b>2</b></a></r>"},
        {"{\"a\":{\"@k\":1}}", "Exception: An Element has not been closed."},
        {"{\"r\":{\"a\":{\"@k\":1},\"b\":{\"@l\":2}}}",
         "Exception: An Element has not been closed."},
        // "#text" closes the element, and what follows is the parent's.
        {"{\"r\":{\"a\":{\"#text\":\"x\",\"b\":2}}}", "<r><a>x</a><b>2</b></r>"},
        // The first plain item closes the element of the array, the second its parent.
        {"{\"r\":{\"a\":[1]}}", "<r><a>1</a></r>"},
        {"{\"r\":{\"a\":[1,2]}}", "<r><a>1</a>2</r>"},
        // An empty array leaves its element open for what ends next.
        {"{\"a\":[]}", "<a/>"},
        {"{\"r\":{\"a\":[],\"b\":1}}", "<r><a><b>1</b></a></r>"},
        // An attribute without a value is gone.
        {"{\"a\":{\"@k\":null,\"b\":1}}", "<a><b>1</b></a>"},
    };
    Check(rows);
}

TEST(JsonToXml, RefusesWhatHasNoElementOrName)
{
    const Row rows[] = {
        {"5", "InvalidState: Failed to convert value '5' to Element string value in XML."},
        {"\"\"", "InvalidState: Failed to convert value '' to Element string value in XML."},
        {"true", "InvalidState: Failed to convert value 'true' to Element string value in XML."},
        {"{\"@a\":1}",
         "InvalidState: Failed to convert value '1' to Attribute string value in XML."},
        {"{\"#text\":1}",
         "InvalidState: Failed to convert value '1' to Element string value in XML."},
        {"{\"a\":1,\"@b\":2}",
         "InvalidState: Failed to convert value '2' to Attribute string value in XML."},
        {"{\"a\":{\"b\":1,\"@c\":\"x\"}}",
         "InvalidState: Failed to convert value 'x' to Attribute string value in XML."},
        {"[1]", "Validation: JSON Array has no Name.\nPath: $"},
        {"{\"a\":[{\"b\":1},[2]]}", "Validation: JSON Array has no Name.\nPath: $"},
        {"{\"a\":{\"\":1}}", "Validation: JSON item has an empty Name.\nPath: $..a"},
        {"{\"a\":x}", "Validation: Expected Value '{', '[', '\"', '0-9', '-', 'true', 'false' or "
                      "'null', found 'x' at line 1, position 6.\nPath: $.a"},
    };
    Check(rows);
}

TEST(JsonToXml, TheContextGivesRootNameAndComments)
{
    CSerializationContext context;
    context.GetJsonContext().SetRootElementName("root");
    EXPECT_EQ(Convert("/* c */{\"a\":1}", context),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<root>\n\t<a>1</a>\n</root>\n");
    EXPECT_EQ(Convert("5", context),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<root>5</root>\n");
    EXPECT_EQ(Convert("[{\"a\":1},{}]", context), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                                  "<root>\n\t<a>1</a>\n</root>\n<root/>\n");
    context.GetJsonContext().SetRootElementName(nullptr);
    EXPECT_EQ(context.GetJsonContext().GetRootElementName(), "");

    EXPECT_TRUE(context.GetJsonContext().GetAllowComments());
    context.GetJsonContext().GetAllowComments(false);
    try {
        Convert("// c\n{}", context);
        ADD_FAILURE();
    }
    catch (const CQnValidationException& e) {
        EXPECT_EQ(e.GetMessage(),
                  "Expected Value '{', '[', '\"', '0-9', '-', 'true', 'false' or 'null', found "
                  "'/' at line 1, position 1.\nPath: $");
    }
}
