#include "QnXmlLib16/QnXmlLib16.h"
#include "QnXmlLib16/support/QnZip.h"
#include "QnXmlLib16/xml/XmlDocument.h"
#include "tests/model/Failure.h"
#include "tests/support/Scoped.h"

using namespace QnXmlLib16;
using Model::ExpectFailure;

namespace {

const std::string kXml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

std::string Text(const CBinaryData& data)
{
    return std::string(reinterpret_cast<const char*>(data.GetData()), data.GetLength());
}

} // namespace

TEST(JsonLoad, EveryRoadGivesTheSameXmlAndTakesTheTreeAway)
{
    const std::string strJson = "{\"a\": {\"@k\": \"1\", \"#text\": \"caf\xC3\xA9\"}}";
    const std::string strExpected = kXml + "<a k=\"1\">caf\xC3\xA9</a>\n";
    const Scoped::AsciiOnly bytesPass;
    CBinaryData zipped((strJson + std::string(200, ' ')).c_str());
    CQnZip::CompressData(zipped, CompressionType_GZip);
    for (const CBinaryData& data :
         {CBinaryData(strJson.c_str()), CBinaryData(("\xEF\xBB\xBF" + strJson).c_str()), zipped}) {
        const Scoped::File file;
        std::ofstream(file.Path(), std::ios::binary) << Text(data);
        CXmlDocument document;
        const std::function<CBinaryData()> loads[] = {
            [&] { return document.LoadJson(strJson.c_str()); },
            [&] { return document.LoadJsonStream(data.GetData(), data.GetLength()); },
            [&] { return document.LoadJsonFile(file.Path()); }};
        for (const auto& load : loads) {
            document.LoadXml("<x/>");
            EXPECT_EQ(Text(load()), strExpected);
            EXPECT_EQ(document.GetDocumentElement(), nullptr);
        }
    }
}

TEST(JsonLoad, WideTextIsRefused)
{
    CXmlDocument document;
    // The quoted character is a zero byte, at which the message ends before its path.
    ExpectFailure<CQnValidationException>(
        [&] { document.LoadJson(L"{\"a\": 1}"); },
        "Expected quotation mark character '\"' before Name, found '", "$");
}

TEST(JsonLoad, EmptyInputTheContextAndTheCodePageAreHeeded)
{
    CSerializationContext context;
    context.GetJsonContext().SetRootElementName("root");
    context.GetJsonContext().GetAllowComments(false);
    CXmlDocument document(context);
    ExpectFailure<CQnException>([&] { document.LoadJson(""); }, "JSON String is empty!");
    ExpectFailure<CQnException>([&] { document.LoadJson(L""); }, "JSON String is empty!");
    ExpectFailure<CQnException>([&] { document.LoadJsonStream(nullptr, 0); },
                                "JSON Stream is empty!");
    ExpectFailure<CQnException>([&] { document.LoadJsonFile("no such file"); },
                                "Failed to open the file [no such file].");
    EXPECT_THROW(document.LoadJson("/* c */ 5"), CQnValidationException);
    // The "C" locale has no form for the character: it is lost on the way in.
    const CBinaryData data("\"\xC3\xA9\"");
    EXPECT_EQ(Text(document.LoadJsonStream(data.GetData(), data.GetLength())),
              kXml + "<root>?</root>\n");
}
