#include "QnXmlLib16/QnXmlLib16.h"
#include "QnXmlLib16/xml/XmlDocument.h"
#include "tests/model/Failure.h"
#include "tests/support/Scoped.h"
#include "tests/support/Text.h"

using namespace QnXmlLib16;
using Model::ExpectFailure;

namespace {

const std::string kXml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

} // namespace

TEST(JsonLoad, EveryRoadGivesTheXmlAndTakesTheTreeAway)
{
    const std::string strJson = "{\"a\": {\"@k\": \"1\", \"#text\": \"caf\xC3\xA9\"}}";
    const Scoped::AsciiOnly bytesPass;
    const CBinaryData data(("\xEF\xBB\xBF" + strJson).c_str());
    const Scoped::File file;
    std::ofstream(file.Path(), std::ios::binary) << ToText(data);
    CXmlDocument document;
    const std::function<CBinaryData()> loads[] = {
        [&] { return document.LoadJson(strJson.c_str()); },
        [&] { return document.LoadJsonStream(data.GetData(), data.GetLength()); },
        [&] { return document.LoadJsonFile(file.Path()); }};
    for (const auto& load : loads) {
        document.LoadXml("<x/>");
        EXPECT_EQ(ToText(load()), kXml + "<a k=\"1\">caf\xC3\xA9</a>\n");
        EXPECT_EQ(document.GetDocumentElement(), nullptr);
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
    EXPECT_EQ(ToText(document.LoadJsonStream(data.GetData(), data.GetLength())),
              kXml + "<root>?</root>\n");
}
