#include "QnXmlLib16/xml/XmlDocument.h"

#include "QnXmlLib16/binding/SerializationContext.h"
#include "QnXmlLib16/json/JsonContext.h"
#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/support/QnZip.h"
#include "QnXmlLib16/values/BinaryData.h"
#include "tests/model/Failure.h"
#include "tests/support/Scoped.h"

#include <gtest/gtest.h>

#include <fstream>

using namespace QnXmlLib16;
using Model::ExpectFailure;

namespace {

const char* const kXml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

std::string Text(const CBinaryData& data)
{
    return std::string(reinterpret_cast<const char*>(data.GetData()), data.GetLength());
}

CBinaryData Bytes(const std::string& strText)
{
    CBinaryData data;
    data.SetBuffer(reinterpret_cast<const unsigned char*>(strText.data()), strText.size());
    return data;
}

} // namespace

TEST(JsonLoad, EveryRoadGivesTheSameXmlAndTakesTheTreeAway)
{
    const std::string strJson = "{\"a\": {\"@k\": \"1\", \"#text\": \"caf\xC3\xA9\"}}";
    const std::string strExpected = kXml + std::string("<a k=\"1\">caf\xC3\xA9</a>\n");
    const Scoped::AsciiOnly bytesPass;
    CXmlDocument document;

    document.LoadXml("<x/>");
    EXPECT_EQ(Text(document.LoadJson(strJson.c_str())), strExpected);
    EXPECT_EQ(document.GetDocumentElement(), nullptr);
    CBinaryData zipped = Bytes(strJson + std::string(200, ' '));
    CQnZip::CompressData(zipped, CompressionType_GZip);
    for (const CBinaryData& data : {Bytes(strJson), Bytes("\xEF\xBB\xBF" + strJson), zipped}) {
        document.LoadXml("<x/>");
        EXPECT_EQ(Text(document.LoadJsonStream(data.GetData(), data.GetLength())), strExpected);
        EXPECT_EQ(document.GetDocumentElement(), nullptr);
        const Scoped::File file;
        std::ofstream(file.Path(), std::ios::binary) << Text(data);
        document.LoadXml("<x/>");
        EXPECT_EQ(Text(document.LoadJsonFile(file.Path())), strExpected);
        EXPECT_EQ(document.GetDocumentElement(), nullptr);
    }
}

TEST(JsonLoad, StreamsAreUtf8AndStringsAreInTheCodePage)
{
    const std::string strJson = "{\"a\": \"\xC3\xA9\"}";
    CXmlDocument document;
    const CBinaryData data = Bytes(strJson);
    // The "C" locale has no form for the character: it is lost on the way in.
    EXPECT_EQ(Text(document.LoadJsonStream(data.GetData(), data.GetLength())),
              kXml + std::string("<a>?</a>\n"));
}

TEST(JsonLoad, WideTextIsRefused)
{
    CXmlDocument document;
    // The quoted character is a zero byte, at which the message ends before its path.
    ExpectFailure<CQnValidationException>(
        [&] { document.LoadJson(L"{\"a\": 1}"); },
        "Expected quotation mark character '\"' before Name, found '", "$");
}

TEST(JsonLoad, EmptyInputAndTheContextAreHeeded)
{
    CXmlDocument document;
    ExpectFailure<CQnException>([&] { document.LoadJson(""); }, "JSON String is empty!");
    ExpectFailure<CQnException>([&] { document.LoadJson(L""); }, "JSON String is empty!");
    ExpectFailure<CQnException>([&] { document.LoadJsonStream(nullptr, 0); },
                                "JSON Stream is empty!");
    ExpectFailure<CQnException>([&] { document.LoadJsonFile("no such file"); },
                                "Failed to open the file [no such file].");

    CSerializationContext context;
    context.GetJsonContext().SetRootElementName("root");
    context.GetJsonContext().GetAllowComments(false);
    CXmlDocument strict(context);
    EXPECT_EQ(Text(strict.LoadJson("5")), kXml + std::string("<root>5</root>\n"));
    EXPECT_THROW(strict.LoadJson("/* c */ 5"), CQnValidationException);
}
