#include "tests/model/Failure.h"
#include "tests/model/Probe.h"
#include "tests/model/Ship.h"

#include "QnXmlLib16/binding/SerializationContext.h"
#include "QnXmlLib16/collections/Element.h"
#include "QnXmlLib16/json/JsonContext.h"
#include "QnXmlLib16/support/QnZip.h"
#include "QnXmlLib16/values/BinaryData.h"
#include "QnXmlLib16/xml/XmlDocument.h"
#include "QnXmlLib16/xml/XmlElement.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <iterator>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>

using namespace QnXmlLib16;
using Model::CShip;
using Model::ExpectFailure;

namespace {

const CSerializationContext kContext;

// A path of this test's own, removed when it is done.
class CTempPath
{
public:
    explicit CTempPath(const char* pszName)
        : m_strPath(testing::TempDir() + "qnxml." + std::to_string(getpid()) + "." + pszName)
    {}
    ~CTempPath() { std::remove(m_strPath.c_str()); }

    const char* Get() const { return m_strPath.c_str(); }
    bool Exists() const { return access(Get(), F_OK) == 0; }
    std::string Content() const
    {
        std::ifstream file(m_strPath, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    void Fill(const std::string& strContent) const
    {
        std::ofstream(m_strPath, std::ios::binary) << strContent;
    }

private:
    std::string m_strPath;
};

std::string Write(const CShip& ship)
{
    return ship.ToXml(true, true, EOLType_CRLF, kContext);
}

} // namespace

TEST(BoundObject, ComesBackOverEveryRoad)
{
    const CSmartPtr<CShip> pShip = Model::MakeShip();
    const std::string strXml = Write(*pShip);
    const CTempPath path("ship");
    CXmlDocument document;
    document.LoadXml(strXml.c_str());
    CSerializationContext json;
    json.GetJsonContext().SetSupportRoundtrip(JsonRoundTrip_NoNamespaces);
    const std::string strJson = pShip->ToJson(true, EOLType_LF, json);

    struct Row
    {
        const char* name;
        std::function<void(CShip&)> road;
    };
    const Row rows[] = {
        {"text", [&](CShip& copy) { copy.FromXml(strXml.c_str(), kContext); }},
        {"wide text",
         [&](CShip& copy) {
             copy.FromXml(std::wstring(strXml.begin(), strXml.end()).c_str(), kContext);
         }},
        {"stream",
         [&](CShip& copy) {
             copy.FromXmlStream(pShip->ToXmlStream(true, true, XmlEncoding_UTF8, EOLType_LF,
                                                   kContext, CompressionType_None),
                                kContext);
         }},
        {"file",
         [&](CShip& copy) {
             pShip->ToXmlFile(path.Get(), true, false, XmlEncoding_UTF8, EOLType_LF, kContext,
                              CompressionType_None);
             copy.FromXmlFile(path.Get(), kContext);
         }},
        {"stream, gzip",
         [&](CShip& copy) {
             copy.FromXmlStream(pShip->ToXmlStream(true, true, XmlEncoding_UTF8, EOLType_LF,
                                                   kContext, CompressionType_GZip),
                                kContext);
         }},
        {"file, gzip",
         [&](CShip& copy) {
             pShip->ToXmlFile(path.Get(), true, false, XmlEncoding_UTF8, EOLType_LF, kContext,
                              CompressionType_GZip);
             copy.FromXmlFile(path.Get(), kContext);
         }},
        {"JSON", [&](CShip& copy) { copy.FromJson(strJson.c_str(), json); }},
        {"JSON stream",
         [&](CShip& copy) { copy.FromJsonStream(CBinaryData(strJson.c_str()), json); }},
        {"JSON file",
         [&](CShip& copy) {
             pShip->ToJsonFile(path.Get(), true, XmlEncoding_UTF8, EOLType_LF, json,
                               CompressionType_GZip);
             copy.FromJsonFile(path.Get(), json);
         }},
        {"Fast Infoset stream",
         [&](CShip& copy) {
             copy.FromXmlStream(
                 pShip->ToFastInfosetStream(FInfoDecl_None, kContext, CompressionType_None),
                 kContext);
         }},
        {"Fast Infoset file",
         [&](CShip& copy) {
             pShip->ToFastInfosetFile(path.Get(), FInfoDecl_None, kContext, CompressionType_GZip);
             copy.FromXmlFile(path.Get(), kContext);
         }},
        {"element",
         [&](CShip& copy) { copy.FromXmlElement(document.GetDocumentElement(), kContext); }},
        {"wildcard content",
         [&](CShip& copy) {
             const CSmartPtr<CElement> pElement(new CElement(pShip.GetPtr(), nullptr));
             copy.FromXmlElement(pElement.GetPtr(), kContext);
         }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const CSmartPtr<CShip> pCopy(new CShip);
        row.road(*pCopy);
        EXPECT_EQ(Write(*pCopy), strXml);
    }
}

TEST(WritingXml, CompressesTheBytesOfAStream)
{
    const CSmartPtr<CShip> pShip = Model::MakeShip();
    const auto bytes = [&](CompressionType compression) {
        return pShip->ToXmlStream(true, true, XmlEncoding_UTF8, EOLType_LF, kContext, compression);
    };
    const CBinaryData plain = bytes(CompressionType_None);
    for (const CompressionType compression : {CompressionType_GZip, CompressionType_ZLib}) {
        const CBinaryData data = bytes(compression);
        ASSERT_LT(data.GetLength(), plain.GetLength());
        unsigned long nLength = data.GetLength();
        auto* pBytes = new unsigned char[nLength];
        std::copy_n(data.GetData(), nLength, pBytes);
        CQnZip::Decompress(&pBytes, &nLength);
        EXPECT_EQ(CBinaryData(pBytes, nLength, true), plain);
    }
}

TEST(WritingXml, FollowsItsArguments)
{
    const CSmartPtr<Model::CLog> pLog(new Model::CLog);
    CSerializationContext context;
    context.SetWriteTypeAttribute(false);
    context.SetIndentChars("  ");
    EXPECT_EQ(pLog->ToXml(true, false, EOLType_LF, context),
              "<?xml version=\"1.0\"?>\n<AA:log xmlns:AA=\"urn:ship\">0</AA:log>");
    const CSmartPtr<CShip> pShip = Model::MakeShip();
    EXPECT_NE(pShip->ToXml(false, true, EOLType_CRLF, context).find(">\r\n  <AA:tons>600"),
              std::string::npos);
    pShip->m_tons.SetI4(100); // the default
    EXPECT_NE(pShip->ToXml(false, true, EOLType_LF, context).find("<AA:tons/>"), std::string::npos);
    context.SetWriteDefaultElementValues(true);
    EXPECT_NE(pShip->ToXml(false, true, EOLType_LF, context).find("<AA:tons>100"),
              std::string::npos);
    ExpectFailure<CQnException>(
        [&] { pShip->ToXml(false, true, static_cast<EOLType>(2), context); }, "Invalid EOL type.");
    ExpectFailure<CQnException>(
        [&] {
            pShip->ToXmlStream(false, true, XmlEncoding_None, EOLType_LF, context,
                               CompressionType_None);
        },
        "Unknown Encoding, select UTF-8 (contact our support team)");
}

TEST(WritingJson, GivesTheSameTextOverEveryRoad)
{
    CSerializationContext context;
    context.GetJsonContext().SetSupportRoundtrip(JsonRoundTrip_NoNamespaces);
    context.SetIndentChars(" ");
    const CSmartPtr<Model::CLog> pLog(new Model::CLog);
    pLog->m_by.SetString("x");
    const std::string strJson = pLog->ToJson(true, EOLType_LF, context);
    EXPECT_EQ(strJson, "{\n \"log\": {\n  \"@by\": \"x\",\n  \"#text\": 0\n }\n}");
    EXPECT_EQ(pLog->ToJsonStream(true, XmlEncoding_UTF8, EOLType_LF, context, CompressionType_None),
              CBinaryData(strJson.c_str()));
    const CTempPath path("json");
    pLog->ToJsonFile(path.Get(), true, XmlEncoding_UTF8, EOLType_LF, context, CompressionType_None);
    EXPECT_EQ(path.Content(), strJson);
}

TEST(WritingFastInfoset, GivesTheSameBytesOverEveryRoad)
{
    const CSmartPtr<CShip> pShip = Model::MakeShip();
    const std::string strDeclaration = "<?xml encoding='finf'?>";
    const CBinaryData data =
        pShip->ToFastInfosetStream(FInfoDecl_Finf, kContext, CompressionType_None);
    const std::string strBytes(reinterpret_cast<const char*>(data.GetData()), data.GetLength());
    EXPECT_EQ(strBytes.substr(0, strDeclaration.size() + 5),
              strDeclaration + std::string("\xE0\0\0\1\0", 5));
    const CTempPath path("finf");
    pShip->ToFastInfosetFile(path.Get(), FInfoDecl_Finf, kContext, CompressionType_None);
    EXPECT_EQ(path.Content(), strBytes);
    pShip->ToFastInfosetFile(path.Get(), FInfoDecl_Finf, kContext, CompressionType_GZip);
    EXPECT_EQ(path.Content().substr(0, 2), "\x1f\x8b");
}

TEST(WritingFiles, RefuseZLibAndLeaveNoFile)
{
    const CSmartPtr<CShip> pShip = Model::MakeShip();
    const CTempPath path("zlib");
    for (const bool bDirect : {false, true}) {
        AsyncToXmlFile(bDirect);
        for (const auto& action : {std::function<void()>([&] {
                                       pShip->ToXmlFile(path.Get(), true, true, XmlEncoding_UTF8,
                                                        EOLType_LF, kContext, CompressionType_ZLib);
                                   }),
                                   std::function<void()>([&] {
                                       pShip->ToJsonFile(path.Get(), true, XmlEncoding_UTF8,
                                                         EOLType_LF, kContext,
                                                         CompressionType_ZLib);
                                   }),
                                   std::function<void()>([&] {
                                       pShip->ToFastInfosetFile(path.Get(), FInfoDecl_None,
                                                                kContext, CompressionType_ZLib);
                                   })}) {
            ExpectFailure<CQnException>(action,
                                        "ZLIB Compression only available for To Stream methods.");
            EXPECT_FALSE(path.Exists());
        }
    }
    AsyncToXmlFile(false);
}

TEST(WritingFiles, TakeTheDirectRoadOnlyWithoutCompression)
{
    const CSmartPtr<CShip> pShip = Model::MakeShip();
    const CTempPath path("direct");
    AsyncToXmlFile(true);
    AsyncFromXmlFile(true); // no effect on anything
    EXPECT_THROW(pShip->ToXmlFile(path.Get(), true, true, XmlEncoding_UTF8, EOLType_LF, kContext,
                                  CompressionType_None),
                 CQnException);
    EXPECT_TRUE(path.Exists()); // truncated
    pShip->ToXmlFile(path.Get(), true, true, XmlEncoding_UTF8, EOLType_LF, kContext,
                     CompressionType_GZip);
    AsyncToXmlFile(false);
    EXPECT_EQ(path.Content().substr(0, 2), "\x1f\x8b");
    AsyncFromXmlFile(false);
}

TEST(WritingFiles, AFailureInMemoryLeavesTheFileAsItWas)
{
    const CSmartPtr<CShip> pShip = Model::MakeShip();
    pShip->m_name.SetInvalid();
    const CTempPath path("kept");
    path.Fill("old");
    EXPECT_THROW(pShip->ToXmlFile(path.Get(), true, true, XmlEncoding_UTF8, EOLType_LF, kContext,
                                  CompressionType_None),
                 CQnValidationException);
    EXPECT_EQ(path.Content(), "old");
    ExpectFailure<CQnException>(
        [&] {
            Model::MakeShip()->ToXmlFile("/no/such/folder/x", true, true, XmlEncoding_UTF8,
                                         EOLType_LF, kContext, CompressionType_None);
        },
        "Failed to write data to the file [/no/such/folder/x].");
}

TEST(WritingFiles, OnlyXmlTextGetsTheMarkOfItsEncoding)
{
    const CSmartPtr<Model::CLog> pLog(new Model::CLog);
    const CTempPath path("mark");
    const std::string strMark = "\xff\xfe";
    pLog->ToXmlFile(path.Get(), true, true, XmlEncoding_UTF8, EOLType_LF, kContext,
                    CompressionType_None);
    EXPECT_EQ(path.Content().substr(0, 2), "<?");
    pLog->ToXmlFile(path.Get(), true, true, XmlEncoding_UTF16, EOLType_LF, kContext,
                    CompressionType_None);
    EXPECT_EQ(path.Content().substr(0, 6), strMark + std::string("<\0\0\0", 4));
    CSerializationContext context;
    context.SetWriteTypeAttribute(false);
    pLog->ToJsonFile(path.Get(), true, XmlEncoding_UTF16, EOLType_LF, context,
                     CompressionType_None);
    EXPECT_EQ(path.Content().substr(0, 4), std::string("{\0\0\0", 4));
}

TEST(ReadingFiles, ReportsWhatIsNoDocumentAndCanReadAgain)
{
    const std::string strXml = Write(*Model::MakeShip());
    const CTempPath missing("missing");
    const CTempPath fifo("fifo");
    ASSERT_EQ(mkfifo(fifo.Get(), 0600), 0);
    const CTempPath file("file");
    const CSmartPtr<CShip> pShip(new CShip);
    const auto read = [&](const char* pszPath) {
        return [&pShip, pszPath] { pShip->FromXmlFile(pszPath, kContext); };
    };

    ExpectFailure<CQnException>(read(missing.Get()),
                                "Failed to open the file [" + std::string(missing.Get()) + "].");
    for (const char* const pszPath : {"/", fifo.Get()})
        ExpectFailure<CQnException>(read(pszPath), "Failed to get the size of the file [" +
                                                       std::string(pszPath) + "] Error [0]");
    const std::string contents[] = {
        "",
        "no markup",
        strXml.substr(0, strXml.size() / 2),
        std::string("\0\1\2\3", 4),
        "<ship id='1' flag='\xff\xfe'/>",
    };
    for (const std::string& strContent : contents) {
        SCOPED_TRACE(strContent);
        file.Fill(strContent);
        EXPECT_THROW(read(file.Get())(), CQnException);
        std::string strBytes = strContent;
        EXPECT_THROW(pShip->FromXmlStream(reinterpret_cast<unsigned char*>(&strBytes[0]),
                                          strBytes.size(), kContext),
                     CQnException);
        EXPECT_THROW(pShip->FromXml(strBytes.c_str(), kContext), CQnException);
    }
    EXPECT_THROW(pShip->FromXml(static_cast<const char*>(nullptr), kContext), CQnException);
    EXPECT_THROW(pShip->FromXml(static_cast<const wchar_t*>(nullptr), kContext), CQnException);
    EXPECT_THROW(pShip->FromXmlStream(nullptr, 0, kContext), CQnException);
    EXPECT_THROW(pShip->FromXmlStream(CBinaryData(), kContext), CQnException);
    EXPECT_THROW(pShip->FromXmlFile(nullptr, kContext), CQnException);

    file.Fill(strXml);
    read(file.Get())();
    EXPECT_EQ(Write(*pShip), strXml);
}

TEST(ReadingElements, RefusesNullAndUsesTheDefaultContextForText)
{
    const CSmartPtr<CShip> pShip(new CShip);
    ExpectFailure<CQnInvalidParamException>(
        [&] { pShip->FromXmlElement(static_cast<const CXmlElement*>(nullptr), kContext); },
        "The element may not be NULL");
    ExpectFailure<CQnInvalidParamException>(
        [&] { pShip->FromXmlElement(static_cast<const CElement*>(nullptr), kContext); },
        "The element may not be NULL");

    // The caller's context can't reach the writing of the text: its default namespace would bind
    // the log's elements. Its relaxations reach the reading.
    CSerializationContext context;
    context.SetDefaultNamespaceURI("urn:ship");
    const CSmartPtr<CElement> pElement(new CElement("log"));
    pElement->GetAttributes()->Add("unknown", "1", "");
    pElement->SetText("3");
    const CSmartPtr<Model::CLog> pLog(new Model::CLog);
    EXPECT_THROW(pLog->FromXmlElement(pElement.GetPtr(), context), CQnException);
    context.SetIgnoreUnknownAttributes(true);
    pLog->FromXmlElement(pElement.GetPtr(), context);
    EXPECT_EQ(pLog->m_value.GetI4(), 3);
}

TEST(ReadingJson, IgnoresNamespacesForItsDurationUnlessTheyWereWritten)
{
    struct Row
    {
        JsonRoundTrip roundTrip;
        bool before;
        bool during;
    };
    const Row rows[] = {
        {JsonRoundTrip_None, false, true},        {JsonRoundTrip_NoNamespaces, false, true},
        {JsonRoundTrip_NoNamespaces, true, true}, {JsonRoundTrip_Full, false, false},
        {JsonRoundTrip_Full, true, true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << row.roundTrip << row.before);
        CSerializationContext context;
        context.GetJsonContext().SetSupportRoundtrip(row.roundTrip);
        context.SetIgnoreNamespaces(row.before);
        Model::CProbe probe(XmlElementGroupType_Sequence);
        bool bDuring = false;
        bool bFail = false;
        probe.AddElement(std::make_unique<Model::CScriptInfo>("a")).m_read =
            [&](CXmlElement*& pCursor) {
                bDuring = context.GetIgnoreNamespaces();
                if (bFail)
                    throw std::runtime_error("out of order");
                pCursor = nullptr;
                return true;
            };
        probe.FromJson("{\"probe\": {\"a\": 1}}", context);
        EXPECT_EQ(bDuring, row.during);
        EXPECT_EQ(context.GetIgnoreNamespaces(), row.before);
        bFail = true;
        EXPECT_THROW(probe.FromJson("{\"probe\": {\"a\": 1}}", context), std::runtime_error);
        EXPECT_EQ(context.GetIgnoreNamespaces(), row.before);
    }
}

TEST(ReadingJson, TheFlagStaysWhereTheRoundTripValueChangesMeanwhile)
{
    CSerializationContext context;
    context.GetJsonContext().SetSupportRoundtrip(JsonRoundTrip_NoNamespaces);
    Model::CProbe probe(XmlElementGroupType_Sequence);
    probe.AddElement(std::make_unique<Model::CScriptInfo>("a")).m_read = [&](CXmlElement*&) {
        context.GetJsonContext().SetSupportRoundtrip(JsonRoundTrip_Full);
        return true;
    };
    probe.FromJson("{\"probe\": {}}", context);
    EXPECT_TRUE(context.GetIgnoreNamespaces());
}

TEST(ReadingJson, ShowsTheXmlThatCouldNotBeBound)
{
    const CSmartPtr<Model::CLog> pLog(new Model::CLog);
    CSerializationContext context;
    context.GetJsonContext().SetSupportRoundtrip(JsonRoundTrip_NoNamespaces);
    try {
        pLog->FromJson("{\"log\": {\"@unknown\": \"1\", \"#text\": 7}}", context);
        ADD_FAILURE();
    }
    catch (const CQnException& e) {
        EXPECT_EQ(e.GetMessage(), "Error converting JSON to XML:\n"
                                  "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                  "<log unknown=\"1\">7</log>\n");
        EXPECT_EQ(e.GetPath(), "");
        ASSERT_NE(e.GetInnerException(), nullptr);
        EXPECT_EQ(e.GetInnerException()->GetPath(), "/log/@unknown");
    }
    // What is no JSON fails before there is any XML.
    for (const char* const pszBad : {"", "{", "log", static_cast<const char*>(nullptr)}) {
        try {
            pLog->FromJson(pszBad, context);
            ADD_FAILURE();
        }
        catch (const CQnException& e) {
            EXPECT_EQ(e.GetMessage().find("Error converting JSON to XML"), std::string::npos);
        }
    }
    pLog->FromJson("{\"log\": 7}", context);
    EXPECT_EQ(pLog->m_value.GetI4(), 7);
}
