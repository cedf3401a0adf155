#include "QnXmlLib16/binding/XmlGeneratedClass.h"

#include "tests/model/Failure.h"
#include "tests/model/Probe.h"
#include "tests/model/Sheet.h"
#include "tests/model/Ship.h"
#include "tests/model/SpineInfo.h"
#include "tests/support/SmallStack.h"

#include "QnXmlLib16/binding/SerializationContext.h"
#include "QnXmlLib16/collections/AttributeCol.h"
#include "QnXmlLib16/support/TextStream.h"
#include "QnXmlLib16/xml/XmlDocument.h"
#include "QnXmlLib16/xml/XmlElement.h"
#include "QnXmlLib16/xml/XmlTextWriter.h"

#include <gtest/gtest.h>

using namespace QnXmlLib16;
using Model::CLog;
using Model::CProbe;
using Model::CScriptInfo;
using Model::CShip;
using Model::CValueAttributeInfo;
using Model::ExpectFailure;
using Model::Failure;

namespace {

const CSerializationContext kContext;

constexpr char kXsi[] = "xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance'";

std::string Write(const CXmlObjectBase& object, const CSerializationContext& context = kContext)
{
    return object.ToXml(false, false, EOLType_LF, context);
}

// The least document that a ship can be read from, with further attributes.
std::string ShipXml(const std::string& strAttributes)
{
    return "<s:ship xmlns:s='urn:ship' " + std::string(kXsi) + " id='1' " + strAttributes +
           "><s:name>n</s:name><s:captain>c</s:captain></s:ship>";
}

} // namespace

TEST(BoundObject, WritesWhatBelongsToTheRootInItsOrder)
{
    CSerializationContext context;
    context.GetProcessingInstructions() = {"<?first?>", "<?second?>"};
    context.GetNamespaceAliases().Add("z", "urn:a");
    context.GetNamespaceAliases().Add("xsi", "http://www.w3.org/2001/XMLSchema-instance");
    context.GetNamespaceAliases().Add("a", "urn:z");
    context.GetNamespaceAliases().Add("sh", "urn:ship");
    context.SetDefaultNamespaceURI("urn:ship");
    context.GetAdditionalRootAttributes()->Add("extra", "1", "urn:z");
    context.SetInLineSchema("schema=\"inline\"");
    EXPECT_EQ(Model::MakeShip()->ToXml(false, true, EOLType_LF, context),
              "<?first?>\n\n"
              "<?second?>\n\n"
              "<ship xmlns=\"urn:ship\" "
              "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
              "xmlns:z=\"urn:a\" xmlns:sh=\"urn:ship\" xmlns:a=\"urn:z\" "
              "a:extra=\"1\" xsi:type=\"ShipType\" id=\"7\" flag=\"NL\" watch=\"first\" \n"
              "schema=\"inline\"\n>\n"
              "\t<name>Halve Maen</name>\n"
              "\t<tons>600</tons>\n"
              "\t<captain>Hudson</captain>\n"
              "\t<mate>Juet</mate>\n"
              "\t<log xsi:type=\"LogType\" by=\"Juet\">42</log>\n"
              "</ship>\n");
}

TEST(BoundObject, TakesOnTheNameThatItWasReadUnder)
{
    const CSmartPtr<CLog> pLog(new CLog);
    pLog->FromXml("<entry xmlns='urn:elsewhere' by='x'>5</entry>", kContext);
    EXPECT_EQ(pLog->GetElementName(), "entry");
    EXPECT_EQ(pLog->m_value.GetI4(), 5);

    // A pseudo element has no name to take on.
    CXmlDocument document;
    document.LoadXml("<r/>");
    CProbe probe(XmlElementGroupType_Sequence, XmlElementType_PseudoElement);
    probe.FromXmlElement(document.GetDocumentElement(), kContext);
    EXPECT_EQ(probe.GetElementName(), "probe");
}

TEST(BoundObject, WritesItsTypeUnlessTheElementBearsTheTypesName)
{
    const CSmartPtr<CLog> pLog(new CLog);
    EXPECT_NE(Write(*pLog).find(":type=\"AA:LogType\""), std::string::npos);
    pLog->SetElementName("LogType");
    EXPECT_EQ(Write(*pLog), "<AA:LogType xmlns:AA=\"urn:ship\">0</AA:LogType>");
    pLog->SetElementName("log");
    CSerializationContext context;
    context.SetWriteTypeAttribute(false);
    EXPECT_EQ(Write(*pLog, context), "<AA:log xmlns:AA=\"urn:ship\">0</AA:log>");
}

TEST(NillableObject, IsWrittenWithItsAttributesAndReadWithoutContent)
{
    CSerializationContext context;
    context.SetWriteTypeAttribute(false);
    context.SetDefaultNamespaceURI("urn:ship");
    context.GetNamespaceAliases().Add("xsi", "http://www.w3.org/2001/XMLSchema-instance");
    const CSmartPtr<CLog> pLog(new CLog);
    pLog->m_by.SetString("x");
    pLog->SetNil(true);
    EXPECT_EQ(Write(*pLog, context),
              "<log xmlns=\"urn:ship\" xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
              "by=\"x\" xsi:nil=\"true\"/>");

    const auto read = [&](const std::string& strNil) {
        pLog->FromXml(
            ("<log " + std::string(kXsi) + " by='y' xsi:nil='" + strNil + "'>5</log>").c_str(),
            kContext);
        EXPECT_EQ(pLog->m_by.GetString(), "y");
        EXPECT_EQ(pLog->m_value.GetI4(), pLog->IsNil() ? 0 : 5);
        return pLog->IsNil();
    };
    for (const char* const pszTrue : {"true", "TRUE", "1"})
        EXPECT_TRUE(read(pszTrue)) << pszTrue;
    for (const char* const pszFalse : {"false", "False", "0"})
        EXPECT_FALSE(read(pszFalse)) << pszFalse;
    for (const std::string strBad : {"", "yes", " true"}) {
        ExpectFailure<CQnException>([&] { read(strBad); },
                                    "Unexpected Value [" + strBad + "] for 'nil' Attribute found.",
                                    "/log/xsi:@nil");
    }
    // Its children are dropped without a word.
    pLog->FromXml(("<log " + std::string(kXsi) + " xsi:nil='1'><x/>5</log>").c_str(), kContext);
    EXPECT_TRUE(pLog->IsNil());
    ExpectFailure<CQnException>(
        [] { CSmartPtr<CShip>(new CShip)->FromXml(ShipXml("xsi:nil='false'").c_str(), kContext); },
        "Invalid use of 'nil' attribute in non-nillable element.", "/s:ship");
}

TEST(NillableObject, IsFoundByItsOwnClassAndNotByTheRecord)
{
    // Shares the record of its base, which was used by an object that is not nillable before.
    class CNilShip : public CShip, public INillable
    {
    public:
        bool IsNil() override { return true; }
        void SetNil(bool) override {}
    };
    const CSmartPtr<CShip> pShip = Model::MakeShip();
    const CSmartPtr<CNilShip> pNilShip(new CNilShip);
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(Write(*pShip).find(":nil="), std::string::npos);
        EXPECT_NE(Write(*pNilShip).find(":nil=\"true\"/>"), std::string::npos);
    }
}

TEST(Attributes, GoToTheFirstEntryThatTakesThem)
{
    CProbe probe(XmlElementGroupType_Sequence);
    probe.AddAttribute(std::make_unique<CValueAttributeInfo>("a", "", 1, false, it_string));
    probe.AddAttribute(std::make_unique<CValueAttributeInfo>("b", "urn:b", 2, true, it_string));
    probe.AddAttribute(std::make_unique<CValueAttributeInfo>("a", "", 3, true, it_string));
    std::string strSeen;
    probe.m_access = [&](int nProperty, bool, QnVariant& value) {
        strSeen += std::to_string(nProperty) + "=" + value.GetString() + " ";
    };
    CSerializationContext context;
    // Schema locations and types are no data.
    probe.FromXml(("<probe xmlns:p='urn:b' p:b='2' a='1' " + std::string(kXsi) +
                   " xsi:type='t' xsi:schemaLocation='u v' xsi:noNamespaceSchemaLocation='w'/>")
                      .c_str(),
                  context);
    EXPECT_EQ(strSeen, "2=2 1=1 ");

    // An entry is asked again although it has taken one.
    strSeen.clear();
    context.SetIgnoreNamespaces(true);
    probe.FromXml("<probe xmlns:p='urn:b' b='3' a='1' p:b='2'/>", context);
    EXPECT_EQ(strSeen, "2=3 1=1 2=2 ");

    // A class that is not strict needs no relaxation for others.
    ExpectFailure<CQnException>([&] { probe.FromXml("<probe a='1' x='2'/>", kContext); },
                                "Unexpected Attribute found.", "/probe/@x");
    CSmartPtr<CShip>(new CShip)->FromXml(ShipXml("x='2'").c_str(), kContext);
}

TEST(SimpleContent, IsConvertedByItsTypeOrReadAsItStands)
{
    for (const bool bRaw : {false, true}) {
        CProbe probe(XmlElementGroupType_Sequence, XmlElementType_Element, 4, it_i4, bRaw);
        QnVariant content;
        probe.m_access = [&](int nProperty, bool bRead, QnVariant& value) {
            EXPECT_EQ(nProperty, 4);
            if (bRead)
                value = content;
            else
                content = value;
        };
        probe.FromXml("<probe>12</probe>", kContext);
        EXPECT_EQ(content.GetItemType(), bRaw ? it_string : it_i4);
        EXPECT_EQ(Write(probe), "<probe>12</probe>");
        content.SetNil();
        EXPECT_NE(Write(probe).find(":nil=\"true\"/>"), std::string::npos);
    }
    // Without a type, the property is not touched.
    CProbe probe(XmlElementGroupType_Sequence, XmlElementType_Element, 4, it_none);
    probe.m_access = [](int, bool, QnVariant&) { ADD_FAILURE(); };
    probe.FromXml("<probe>12</probe>", kContext);
    EXPECT_EQ(Write(probe), "<probe/>");
}

TEST(PseudoElement, ThatIsNilLeavesTheEndToItsParent)
{
    class CNilProbe : public CProbe, public INillable
    {
    public:
        CNilProbe() : CProbe(XmlElementGroupType_Sequence, XmlElementType_PseudoElement) {}
        bool IsNil() override { return m_bNil; }
        void SetNil(bool bNil) override { m_bNil = bNil; }
        bool m_bNil = false;
    };
    CNilProbe probe;
    probe.SetNil(true);
    CTextStream stream;
    CXmlTextWriter writer(stream);
    writer.SetFormat(false);
    writer.AddNamespace("xsi", "http://www.w3.org/2001/XMLSchema-instance");
    writer.WriteStartElement("r", "");
    CXmlObjectBase::ToXml_Int(&probe, &writer, false, "urn:unused", kContext, false);
    writer.WriteStartElement("x", "");
    writer.WriteEndElement();
    writer.WriteEndElement();
    const std::string strText = stream.GetText();
    EXPECT_EQ(strText.substr(strText.find("-instance\"") + 10), " xsi:nil=\"true\"><x/></r>");
}

TEST(GroupType, OutOfRangeIsToldInDifferentWordsOnBothSides)
{
    CProbe probe(static_cast<XmlElementGroupType>(3));
    EXPECT_EQ(Failure([&] { Write(probe); }),
              "CQnValidationException: Failed to convert the element [probe] to XML < "
              "CQnException: Unknown XML Group Type");
    EXPECT_EQ(Failure([&] { probe.FromXml("<probe/>", kContext); }),
              "CQnValidationException: Failed to process the element. @/probe < "
              "CQnException: Unknown Group Type");
}

TEST(WriteFailures, AreWrappedAtEachObject)
{
    const CSmartPtr<CShip> pShip = Model::MakeShip();
    const std::string strWrap = "CQnValidationException: Failed to convert the element [";
    pShip->m_log->m_value.SetInvalid();
    EXPECT_EQ(Failure([&] { Write(*pShip); }),
              strWrap + "ship] to XML < " + strWrap +
                  "log] to XML < CQnException: Invalid Type 0 to convert to string");
    // An object in an attribute has no text.
    pShip->m_crew->m_watch.SetXmlObject(nullptr);
    EXPECT_EQ(Failure([&] { Write(*pShip); }),
              strWrap + "ship] to XML < CQnException: Failed to convert attributes to XML < "
                        "CQnException: Failed to convert attributes to XML < "
                        "CQnException: Invalid Type 27 to convert to string");
}

TEST(ReadFailures, AnExceptionWithAPathLosesItsClass)
{
    const CSmartPtr<CShip> pShip(new CShip);
    EXPECT_EQ(Failure([&] { pShip->FromXml("<ship id='-1'/>", kContext); }),
              "CQnException: Failed to set the property value. @/ship/@id < "
              "CQnInvalidParamException: An id is never negative");
}

TEST(ReadFailures, NestingAsDeepAsTheStackIsRefused)
{
    RunOnSmallStack([] {
        CProbe probe(XmlElementGroupType_Sequence);
        probe.AddElement(std::make_unique<CScriptInfo>("a")).m_read = [&](CXmlElement*& pCursor) {
            if (pCursor) { // the same object again: only the depth counts
                CXmlObjectBase::FromXml_Int(&probe, pCursor, pCursor->GetFirstElement(), kContext);
                pCursor = nullptr;
            }
            return true;
        };
        const auto read = [&](int nDepth) {
            std::string strXml;
            for (int i = 0; i < nDepth; ++i)
                strXml += "<a>";
            for (int i = 0; i < nDepth; ++i)
                strXml += "</a>";
            probe.FromXml(strXml.c_str(), kContext);
        };
        read(20);
        EXPECT_NE(Failure([&] { read(20000); })
                      .find("CQnValidationException: The elements are nested too deep for the "
                            "stack."),
                  std::string::npos);
        read(20);
    });
}

TEST(MetaData, IsDestroyedEntryByEntry)
{
    class CCleaner : public CProbe
    {
    public:
        using CProbe::CleanMetaData;
    };
    struct CCounted : CScriptInfo
    {
        explicit CCounted(int& n) : CScriptInfo("x"), m_n(n) {}
        ~CCounted() override { ++m_n; }
        int& m_n;
    };
    int nDestroyed = 0;
    auto* pInfo = new QnXmlLib16Data::CParentElementInfo(XmlElementGroupType_All,
                                                         XmlElementType_Element, nullptr, nullptr,
                                                         true, true, -1, it_none, nullptr, false);
    EXPECT_EQ(pInfo->m_strValueFormat, "");
    auto** ppElements = new QnXmlLib16Data::CElementInfo* [3] {
        new CCounted(nDestroyed), new CCounted(nDestroyed), nullptr
    };
    QnXmlLib16Data::CAttributeInfo** ppAttributes = nullptr;
    for (int i = 0; i < 2; ++i) { // the second time on null pointers
        CCleaner::CleanMetaData(pInfo, ppElements, ppAttributes);
        EXPECT_EQ(nDestroyed, 2);
        EXPECT_EQ(pInfo, nullptr);
        EXPECT_EQ(ppElements, nullptr);
    }
}
