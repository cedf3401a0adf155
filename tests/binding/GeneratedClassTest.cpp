#include "tests/model/Entries.h"
#include "tests/model/Probe.h"
#include "tests/model/Ship.h"
#include "tests/support/SmallStack.h"

#include "QnXmlLib16/QnXmlLib16.h"

#include <gtest/gtest.h>

using namespace QnXmlLib16;
using namespace QnXmlLib16Data;
using namespace Model;

namespace {

const CSerializationContext kContext;

constexpr char kXsi[] = "xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance'";

std::string ToText(const CXmlObjectBase& object, const CSerializationContext& context = kContext)
{
    return object.ToXml(false, false, EOLType_LF, context);
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
    EXPECT_EQ(MakeShip()->ToXml(false, true, EOLType_LF, context),
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

TEST(BoundObject, TakesOnTheNameThatItWasReadUnderAndTellsItsTypeUnlessThatIsItsName)
{
    const CSmartPtr<CLog> pLog(new CLog);
    pLog->FromXml("<entry xmlns='urn:elsewhere' by='x'>5</entry>", kContext);
    EXPECT_EQ(ToText(*pLog).find("<AA:entry "), 0u);
    EXPECT_NE(ToText(*pLog).find(":type=\"AA:LogType\""), std::string::npos);
    pLog->SetElementName("LogType");
    EXPECT_EQ(ToText(*pLog), "<AA:LogType xmlns:AA=\"urn:ship\" by=\"x\">5</AA:LogType>");

    // A pseudo element has no name to take on.
    CXmlDocument document;
    document.LoadXml("<r/>");
    CProbe probe(XmlElementGroupType_Sequence, XmlElementType_PseudoElement);
    probe.FromXmlElement(document.GetDocumentElement(), kContext);
    EXPECT_EQ(probe.GetElementName(), "probe");
}

TEST(NillableObject, IsWrittenWithItsAttributesAndReadWithoutContent)
{
    CSerializationContext context;
    context.SetWriteTypeAttribute(false);
    context.SetDefaultNamespaceURI("urn:ship");
    const CSmartPtr<CLog> pLog(new CLog);
    pLog->m_by.SetString("x");
    pLog->SetNil(true);
    EXPECT_EQ(ToText(*pLog, context),
              "<log xmlns=\"urn:ship\" by=\"x\" "
              "xmlns:AA=\"http://www.w3.org/2001/XMLSchema-instance\" AA:nil=\"true\"/>");

    const auto read = [&](const std::string& strNil) {
        const std::string strXml =
            "<log " + std::string(kXsi) + " by='y' xsi:nil='" + strNil + "'>";
        pLog->FromXml((strXml + "5</log>").c_str(), kContext);
        EXPECT_EQ(pLog->m_by.GetString(), "y");
        EXPECT_EQ(pLog->m_value.GetI4(), pLog->IsNil() ? 0 : 5);
        if (pLog->IsNil())
            pLog->FromXml((strXml + "<x/></log>").c_str(), kContext); // drops it without a word
        return pLog->IsNil();
    };
    for (const char* const pszTrue : {"true", "TRUE", "1"})
        EXPECT_TRUE(read(pszTrue)) << pszTrue;
    for (const char* const pszFalse : {"false", "False", "0"})
        EXPECT_FALSE(read(pszFalse)) << pszFalse;
    for (const std::string strBad : {"", "yes", " true"}) {
        EXPECT_EQ(Failure([&] { read(strBad); }),
                  "CQnException: Unexpected Value [" + strBad +
                      "] for 'nil' Attribute found. @/log/xsi:@nil");
    }
    const CSmartPtr<CShip> pShip(new CShip);
    EXPECT_EQ(Failure([&] {
                  pShip->FromXml(("<ship " + std::string(kXsi) + " xsi:nil='0'/>").c_str(),
                                 kContext);
              }),
              "CQnException: Invalid use of 'nil' attribute in non-nillable element. @/ship");
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
    const CSmartPtr<CShip> pShip = MakeShip();
    const CSmartPtr<CNilShip> pNilShip(new CNilShip);
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(ToText(*pShip).find(":nil="), std::string::npos);
        EXPECT_NE(ToText(*pNilShip).find(":nil=\"true\"/>"), std::string::npos);
    }
}

TEST(Attributes, GoToTheFirstEntryThatTakesThem)
{
    const auto entry = [](const char* pszName, const char* pszNamespace, int nProperty) {
        return new CAttributeInfoEnum(pszName, pszNamespace, nProperty, true, FinishToText,
                                      TextToFinish, nullptr);
    };
    const CTables tables(XmlElementGroupType_Sequence, kReal, {},
                         {entry("a", "", 1), entry("b", "urn:b", 2), entry("a", "", 3)});
    const CSmartPtr<CSheet> pSheet(new CSheet(tables));
    std::string strSeen;
    pSheet->m_before = [&](int nProperty, bool) { strSeen += std::to_string(nProperty); };
    // Schema locations and types are no data.
    const std::string strStart = "<r xmlns:p='urn:b' " + std::string(kXsi);
    pSheet->FromXml((strStart + " p:b='raw' a='raw' xsi:type='t' xsi:schemaLocation='u v' "
                                "xsi:noNamespaceSchemaLocation='w'/>")
                        .c_str(),
                    kContext);
    EXPECT_EQ(strSeen, "21");
    // An entry is asked again although it has taken one.
    pSheet->FromXml((strStart + " b='raw' a='raw' p:b='raw'/>").c_str(), MakeContext("n"));
    EXPECT_EQ(strSeen, "21212");
    EXPECT_EQ(Failure([&] { pSheet->FromXml("<r x='2'/>", kContext); }),
              "CQnException: Unexpected Attribute found. @/r/@x");
    // A class that is not strict takes any.
    const CSmartPtr<CShip> pShip(new CShip);
    EXPECT_EQ(Failure([&] { pShip->FromXml("<ship id='1' x='2'/>", kContext); }),
              "CQnException: Failed to find the required child element [name]. @/ship");
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
        EXPECT_EQ(ToText(probe), "<probe>12</probe>");
        content.SetNil();
        EXPECT_NE(ToText(probe).find(":nil=\"true\"/>"), std::string::npos);
    }
    // Without a type, the property is not touched.
    CProbe probe(XmlElementGroupType_Sequence, XmlElementType_Element, 4, it_none);
    probe.m_access = [](int, bool, QnVariant&) { ADD_FAILURE(); };
    probe.FromXml("<probe>12</probe>", kContext);
    EXPECT_EQ(ToText(probe), "<probe/>");
}

TEST(PseudoElement, ThatIsNilLeavesTheEndToItsParent)
{
    class CNilSheet : public CSheet, public INillable
    {
    public:
        using CSheet::CSheet;
        bool IsNil() override { return true; }
        void SetNil(bool) override {}
    };
    const CTables tables(
        XmlElementGroupType_Sequence, kReal,
        {new CElementInfoSeqClsOpt("g", "", 0, kPseudo, MakeSheet, Span().GetClassId()),
         Prim<CElementInfoSeqPrimOpt>("z", 1)});
    const CSmartPtr<CSheet> pSheet(new CSheet(tables));
    pSheet->m_values[0].SetXmlObject(new CNilSheet(Span()));
    pSheet->m_values[1].SetString("1");
    EXPECT_EQ(ToText(*pSheet), "<r xmlns:AA=\"http://www.w3.org/2001/XMLSchema-instance\" "
                               "AA:nil=\"true\"><z>1</z></r>");
}

TEST(GroupType, OutOfRangeIsToldInDifferentWordsOnBothSides)
{
    CProbe probe(static_cast<XmlElementGroupType>(3));
    EXPECT_EQ(Failure([&] { ToText(probe); }),
              "CQnValidationException: Failed to convert the element [probe] to XML < "
              "CQnException: Unknown XML Group Type");
    EXPECT_EQ(Failure([&] { probe.FromXml("<probe/>", kContext); }),
              "CQnValidationException: Failed to process the element. @/probe < "
              "CQnException: Unknown Group Type");
}

TEST(WriteFailures, AreWrappedAtEachObject)
{
    const CSmartPtr<CShip> pShip = MakeShip();
    const std::string strWrap = "CQnValidationException: Failed to convert the element [";
    pShip->m_log->m_value.SetInvalid();
    EXPECT_EQ(Failure([&] { ToText(*pShip); }),
              strWrap + "ship] to XML < " + strWrap +
                  "log] to XML < CQnException: Invalid Type 0 to convert to string");
    // An object in an attribute has no text.
    pShip->m_crew->m_watch.SetXmlObject(nullptr);
    EXPECT_EQ(Failure([&] { ToText(*pShip); }),
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

TEST(MetaData, IsDestroyedOnce)
{
    class CCleaner : public CProbe
    {
    public:
        using CProbe::CleanMetaData;
    };
    auto* pInfo = new CParentElementInfo(XmlElementGroupType_All, kReal, nullptr, nullptr, true,
                                         true, -1, it_none, nullptr, false);
    auto** ppElements = new CElementInfo* [2] { new CScriptInfo("x"), nullptr };
    CAttributeInfo** ppAttributes = nullptr;
    for (int i = 0; i < 2; ++i) { // the second time on null pointers
        CCleaner::CleanMetaData(pInfo, ppElements, ppAttributes);
        EXPECT_EQ(pInfo, nullptr);
        EXPECT_EQ(ppElements, nullptr);
    }
}
