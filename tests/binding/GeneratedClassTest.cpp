#include "tests/model/Entries.h"
#include "tests/model/Ship.h"
#include "tests/support/SmallStack.h"

#include "QnXmlLib16/QnXmlLib16.h"

#include <gtest/gtest.h>

using namespace QnXmlLib16;
using namespace QnXmlLib16Data;
using namespace Model;

namespace {

const CSerializationContext kContext;

constexpr auto kSequence = XmlElementGroupType_Sequence;
constexpr char kXsi[] = "xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance'";

// element with an optional child a of its own kind
const CTables& Nest()
{
    static const CTables tables(kSequence, kReal,
                                {new CElementInfoSeqClsOpt(
                                    "a", "", 0, kReal,
                                    [](int, const char* pszName) -> CSmartPtr<CXmlObjectBase> {
                                        return CSmartPtr<CSheet>(new CSheet(Nest(), pszName));
                                    },
                                    0)});
    return tables;
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
    const CTables tables(kSequence, kPseudo, {});
    const CSmartPtr<CSheet> pGroup(new CSheet(tables, "group"));
    pGroup->FromXmlElement(document.GetDocumentElement(), kContext);
    EXPECT_EQ(pGroup->GetElementName(), "group");
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
    for (const char* const pszTrue : {"TRUE", "1"})
        EXPECT_TRUE(read(pszTrue)) << pszTrue;
    for (const char* const pszFalse : {"False", "0"})
        EXPECT_FALSE(read(pszFalse)) << pszFalse;
    EXPECT_EQ(Failure([&] { read(" true"); }),
              "CQnException: Unexpected Value [ true] for 'nil' Attribute found. @/log/xsi:@nil");
    const CSmartPtr<CShip> pShip(new CShip);
    EXPECT_EQ(Failure([&] {
                  pShip->FromXml(("<ship " + std::string(kXsi) + " xsi:nil='0'/>").c_str(),
                                 kContext);
              }),
              "CQnException: Invalid use of 'nil' attribute in non-nillable element. @/ship");
}

TEST(NillableObject, IsFoundByItsOwnClassAndLeavesTheEndToItsParent)
{
    // Shares the record of its base.
    class CNilSheet : public CSheet, public INillable
    {
    public:
        using CSheet::CSheet;
        bool IsNil() override { return true; }
        void SetNil(bool) override {}
    };
    const CTables tables(
        kSequence, kReal,
        {new CElementInfoSeqClsOpt("g", "", 0, kPseudo, MakeSheet, Span().GetClassId()),
         Prim<CElementInfoSeqPrimOpt>("z", 1)});
    const CSmartPtr<CSheet> pSheet(new CSheet(tables));
    const auto written = [&](CSheet* pGroup) {
        pGroup->m_values[0].SetI4(2);
        pSheet->m_values[0].SetXmlObject(pGroup);
        pSheet->m_values[1].SetString("1");
        return ToText(*pSheet);
    };
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(written(new CSheet(Span())), "<r><from>2</from><z>1</z></r>");
        EXPECT_EQ(written(new CNilSheet(Span())),
                  "<r xmlns:AA=\"http://www.w3.org/2001/XMLSchema-instance\" "
                  "AA:nil=\"true\"><z>1</z></r>");
    }
}

TEST(Attributes, GoToTheFirstEntryThatTakesThem)
{
    CAttributeInfo* const pB =
        new CAttributeInfoEnum("b", "urn:b", 2, true, FinishToText, TextToFinish, nullptr);
    const CTables tables(kSequence, kReal, {},
                         {EnumAttribute("a", 1, true), pB, EnumAttribute("a", 3, true)});
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
    // A class that is not strict takes any.
    const CSmartPtr<CShip> pShip(new CShip);
    EXPECT_EQ(Failure([&] { pShip->FromXml("<ship id='1' x='2'/>", kContext); }),
              "CQnException: Failed to find the required child element [name]. @/ship");
}

TEST(SimpleContent, IsConvertedByItsTypeOrReadAsItStands)
{
    const auto content = [](ItemType type, bool bRaw) {
        return std::make_unique<CTables>(new CParentElementInfo(kSequence, kReal, "SheetType", "",
                                                                true, false, 4, type, nullptr,
                                                                bRaw),
                                         std::vector<CElementInfo*>());
    };
    for (const bool bRaw : {false, true}) {
        const auto pTables = content(it_i4, bRaw);
        const CSmartPtr<CSheet> pSheet(new CSheet(*pTables));
        pSheet->FromXml("<r>12</r>", kContext);
        EXPECT_EQ(pSheet->m_values[4].GetItemType(), bRaw ? it_string : it_i4);
        EXPECT_EQ(ToText(*pSheet), "<r>12</r>");
        pSheet->m_values[4].SetNil();
        EXPECT_NE(ToText(*pSheet).find(":nil=\"true\"/>"), std::string::npos);
    }
    // Without a type, the property is not touched.
    const auto pTables = content(it_none, false);
    const CSmartPtr<CSheet> pSheet(new CSheet(*pTables));
    pSheet->m_before = [](int, bool) { ADD_FAILURE(); };
    pSheet->FromXml("<r>12</r>", kContext);
    EXPECT_EQ(ToText(*pSheet), "<r/>");
}

TEST(ElementTable, IsCountedAndSearchedByName)
{
    CXmlDocument document;
    document.LoadXml("<r><a/><b/></r>");
    CXmlElement* const pFirst = document.GetDocumentElement()->GetFirstElement();
    const CSmartPtr<CSheet> pSheet(new CSheet(Nest()));
    EXPECT_EQ(pSheet->GetClassElementInfoCount(), 1);
    EXPECT_TRUE(pSheet->IsElementInList(kContext, pFirst));
    EXPECT_FALSE(pSheet->IsElementInList(kContext, pFirst->GetNextSiblingElement()));
}

TEST(GroupType, OutOfRangeIsToldInDifferentWordsOnBothSides)
{
    const CTables tables(static_cast<XmlElementGroupType>(3), kReal, {});
    EXPECT_EQ(WriteChildren(*CSmartPtr<CSheet>(new CSheet(tables))),
              "CQnValidationException: Failed to convert the element [r] to XML < "
              "CQnException: Unknown XML Group Type");
    EXPECT_EQ(Read(tables, ""), "CQnValidationException: Failed to process the element. @/r < "
                                "CQnException: Unknown Group Type");
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
        const CSmartPtr<CSheet> pSheet(new CSheet(Nest(), "a"));
        const auto read = [&](int nDepth) {
            std::string strStart;
            std::string strEnd;
            for (int i = 0; i < nDepth; ++i) {
                strStart += "<a>";
                strEnd += "</a>";
            }
            pSheet->FromXml((strStart + strEnd).c_str(), kContext);
        };
        read(20);
        EXPECT_NE(Failure([&] { read(20000); })
                      .find("CQnValidationException: The elements are nested too deep for the "
                            "stack."),
                  std::string::npos);
        read(20);
    });
}
