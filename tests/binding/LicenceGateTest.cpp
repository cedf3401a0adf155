#include "tests/model/Failure.h"
#include "tests/model/Ship.h"

#include "QnXmlLib16/binding/SerializationContext.h"
#include "QnXmlLib16/collections/Element.h"
#include "QnXmlLib16/json/JsonContext.h"
#include "QnXmlLib16/licensing/LicenceGate.h"
#include "QnXmlLib16/values/BinaryData.h"
#include "QnXmlLib16/xml/XmlDocument.h"

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <gtest/gtest.h>
#include <stdexcept>
#include <unistd.h>

using namespace QnXmlLib16;
using Model::CShip;
using Model::ExpectFailure;

namespace {

class CTestGate : public ILicenceGate
{
public:
    CTestGate() { CLicenceGate::SetGate(this); }
    ~CTestGate() override { CLicenceGate::SetGate(nullptr); }

    void Consult() override
    {
        ++m_nConsulted;
        if (m_bRefuse)
            throw CQnException("No licence");
    }
    void FirstObject() override { throw std::runtime_error("Trial version"); }
    std::string GetHeaderComment() override { return m_strComment; }

    int m_nConsulted = 0;
    bool m_bRefuse = false;
    std::string m_strComment;
};

const CSerializationContext kContext;

} // namespace

TEST(LicenceGate, IsTheBuiltInOneUntilAnotherIsSet)
{
    ILicenceGate* const pBuiltIn = CLicenceGate::GetGate();
    pBuiltIn->Consult();
    pBuiltIn->FirstObject();
    EXPECT_EQ(pBuiltIn->GetHeaderComment(), "");
    {
        const CTestGate gate;
        EXPECT_EQ(CLicenceGate::GetGate(), &gate);
    }
    EXPECT_EQ(CLicenceGate::GetGate(), pBuiltIn);
}

TEST(LicenceGate, IsConsultedByEachEntryOperationAndMayRefuseIt)
{
    const CSmartPtr<CShip> pShip = Model::MakeShip();
    const std::string strXml = pShip->ToXml(true, true, EOLType_LF, kContext);
    const std::wstring strWide(strXml.begin(), strXml.end());
    CBinaryData data(strXml.c_str());
    CXmlDocument document;
    document.LoadXml(strXml.c_str());
    const CSmartPtr<CElement> pElement(new CElement(pShip.GetPtr(), nullptr));
    CSerializationContext json;
    json.GetJsonContext().SetSupportRoundtrip(JsonRoundTrip_NoNamespaces);
    const std::string strPath = testing::TempDir() + "gate." + std::to_string(getpid()) + ".xml";

    const std::string strJsonPath = strPath + ".json";
    const std::string strFinfPath = strPath + ".finf";
    const std::string strJson = pShip->ToJson(true, EOLType_LF, json);
    CBinaryData jsonData(strJson.c_str());

    struct Row
    {
        const char* name;
        int consulted;
        std::function<void()> action;
    };
    const Row rows[] = {
        {"ToXml", 1, [&] { pShip->ToXml(true, true, EOLType_LF, kContext); }},
        {"ToXmlStream", 1,
         [&] {
             pShip->ToXmlStream(true, true, XmlEncoding_UTF8, EOLType_LF, kContext,
                                CompressionType_None);
         }},
        {"ToXmlFile", 1,
         [&] {
             pShip->ToXmlFile(strPath.c_str(), true, true, XmlEncoding_UTF8, EOLType_LF, kContext,
                              CompressionType_None);
         }},
        {"ToJson", 1, [&] { pShip->ToJson(true, EOLType_LF, json); }},
        {"ToJsonStream", 1,
         [&] {
             pShip->ToJsonStream(true, XmlEncoding_UTF8, EOLType_LF, json, CompressionType_None);
         }},
        {"ToJsonFile", 1,
         [&] {
             pShip->ToJsonFile(strJsonPath.c_str(), true, XmlEncoding_UTF8, EOLType_LF, json,
                               CompressionType_None);
         }},
        {"ToFastInfosetStream", 1,
         [&] { pShip->ToFastInfosetStream(FInfoDecl_None, kContext, CompressionType_None); }},
        {"ToFastInfosetFile", 1,
         [&] {
             pShip->ToFastInfosetFile(strFinfPath.c_str(), FInfoDecl_None, kContext,
                                      CompressionType_None);
         }},
        {"FromXmlFile", 1, [&] { pShip->FromXmlFile(strPath.c_str(), kContext); }},
        {"FromXml", 1, [&] { pShip->FromXml(strXml.c_str(), kContext); }},
        {"FromXml, wide", 1, [&] { pShip->FromXml(strWide.c_str(), kContext); }},
        {"FromXmlStream", 1,
         [&] { pShip->FromXmlStream(data.GetData(), data.GetLength(), kContext); }},
        {"FromXmlStream, data", 1, [&] { pShip->FromXmlStream(data, kContext); }},
        // Itself and the XML that the JSON becomes.
        {"FromJson", 2, [&] { pShip->FromJson(strJson.c_str(), json); }},
        {"FromJsonFile", 2, [&] { pShip->FromJsonFile(strJsonPath.c_str(), json); }},
        {"FromJsonStream", 2,
         [&] { pShip->FromJsonStream(jsonData.GetData(), jsonData.GetLength(), json); }},
        {"FromJsonStream, data", 2, [&] { pShip->FromJsonStream(jsonData, json); }},
        {"FromXmlElement", 1,
         [&] { pShip->FromXmlElement(document.GetDocumentElement(), kContext); }},
        // Itself, the writing and the reading.
        {"FromXmlElement, wildcard", 3,
         [&] { pShip->FromXmlElement(pElement.GetPtr(), kContext); }},
    };
    CTestGate gate;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        gate.m_bRefuse = false;
        gate.m_nConsulted = 0;
        row.action();
        EXPECT_EQ(gate.m_nConsulted, row.consulted);
        gate.m_bRefuse = true;
        ExpectFailure<CQnException>(row.action, "No licence");
    }
    std::remove(strPath.c_str());
    std::remove(strJsonPath.c_str());
    std::remove(strFinfPath.c_str());
}

TEST(LicenceGate, ComesAfterTheRefusalOfZLibFiles)
{
    CTestGate gate;
    gate.m_bRefuse = true;
    const CSmartPtr<CShip> pShip = Model::MakeShip();
    ExpectFailure<CQnException>(
        [&] {
            pShip->ToXmlFile("/nowhere/x", true, true, XmlEncoding_UTF8, EOLType_LF, kContext,
                             CompressionType_ZLib);
        },
        "ZLIB Compression only available for To Stream methods.");
    EXPECT_EQ(gate.m_nConsulted, 0);
}

TEST(LicenceGate, IsConsultedOnTheDirectRoadBeforeThereIsAFile)
{
    CTestGate gate;
    gate.m_bRefuse = true;
    const CSmartPtr<CShip> pShip = Model::MakeShip();
    const std::string strPath = testing::TempDir() + "gate.direct." + std::to_string(getpid());
    AsyncToXmlFile(true);
    ExpectFailure<CQnException>(
        [&] {
            pShip->ToXmlFile(strPath.c_str(), true, true, XmlEncoding_UTF8, EOLType_LF, kContext,
                             CompressionType_None);
        },
        "No licence");
    ExpectFailure<CQnException>(
        [&] {
            pShip->ToJsonFile(strPath.c_str(), true, XmlEncoding_UTF8, EOLType_LF, kContext,
                              CompressionType_None);
        },
        "No licence");
    AsyncToXmlFile(false);
    EXPECT_EQ(gate.m_nConsulted, 2);
    EXPECT_NE(access(strPath.c_str(), F_OK), 0);
}

TEST(LicenceGate, MayAskForACommentAheadOfTheRoot)
{
    CTestGate gate;
    gate.m_strComment = "made by X";
    const CSmartPtr<Model::CLog> pLog(new Model::CLog);
    EXPECT_EQ(pLog->ToXml(true, false, EOLType_LF, kContext).find("<!--made by X-->"),
              std::string("<?xml version=\"1.0\"?>\n").size());
    EXPECT_EQ(pLog->ToXml(false, false, EOLType_LF, kContext).find("<!--made by X-->"), 0u);
    CSerializationContext json;
    json.GetJsonContext().SetSupportRoundtrip(JsonRoundTrip_NoNamespaces);
    EXPECT_EQ(pLog->ToJson(false, EOLType_LF, json).find("/* made by X */\n"), 1u); // behind "{"

    // Fast Infoset has no place for it.
    const auto finf = [&] {
        return pLog->ToFastInfosetStream(FInfoDecl_None, kContext, CompressionType_None);
    };
    const CBinaryData withGate = finf();
    CLicenceGate::SetGate(nullptr);
    EXPECT_EQ(withGate, finf());
}

TEST(LicenceGateDeathTest, HearsOfTheFirstObjectOnlyAndCanNotKeepItFromBeingMade)
{
    // Another process, in which no object has been made yet.
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(
        {
            struct CCountingGate : CTestGate
            {
                void FirstObject() override
                {
                    ++m_nFirst;
                    CTestGate::FirstObject();
                }
                int m_nFirst = 0;
            } gate;
            const CSmartPtr<Model::CLog> pFirst(new Model::CLog);
            const CSmartPtr<Model::CLog> pSecond(new Model::CLog);
            std::exit(gate.m_nFirst == 1 ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}
