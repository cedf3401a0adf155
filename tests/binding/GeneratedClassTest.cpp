#include "QnXmlLib16/binding/XmlGeneratedClass.h"

#include "tests/model/Failure.h"
#include "tests/model/Probe.h"
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
#include <stdexcept>

using namespace QnXmlLib16;
using Model::CLog;
using Model::CProbe;
using Model::CScriptInfo;
using Model::CShip;
using Model::CValueAttributeInfo;
using Model::ExpectFailure;

namespace {

const CSerializationContext kContext;

constexpr char kXsi[] = "xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance'";

std::string Write(const CXmlObjectBase& object, const CSerializationContext& context = kContext)
{
    return object.ToXml(false, false, EOLType_LF, context);
}

// The least document that a ship can be read from, with further attributes and children.
std::string ShipXml(const std::string& strAttributes = "", const std::string& strTons = "",
                    const std::string& strLog = "")
{
    return "<s:ship xmlns:s='urn:ship' " + std::string(kXsi) + " id='1' " + strAttributes +
           "><s:name>n</s:name>" + strTons + "<s:captain>c</s:captain>" + strLog + "</s:ship>";
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

TEST(BoundObject, ReplacesItsContentWhenItIsReadAgain)
{
    const CSmartPtr<CShip> pShip = Model::MakeShip();
    pShip->FromXml(ShipXml("flag='F'").c_str(), kContext);
    CSerializationContext context;
    context.SetWriteTypeAttribute(false);
    EXPECT_EQ(Write(*pShip, context),
              "<AA:ship xmlns:AA=\"urn:ship\" id=\"1\" flag=\"F\"><AA:name>n</AA:name>"
              "<AA:captain>c</AA:captain><AA:log>0</AA:log></AA:ship>");
    EXPECT_FALSE(pShip->m_crew->m_mate.IsValid());
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

TEST(NillableObject, WritesItsAttributesAndNoContent)
{
    CSerializationContext context;
    context.SetWriteTypeAttribute(false);
    context.SetDefaultNamespaceURI("urn:ship");
    context.GetNamespaceAliases().Add("xsi", "http://www.w3.org/2001/XMLSchema-instance");
    const CSmartPtr<CLog> pLog(new CLog);
    pLog->m_by.SetString("x");
    pLog->SetNil(true);
    const std::string strXml = Write(*pLog, context);
    EXPECT_EQ(strXml, "<log xmlns=\"urn:ship\" "
                      "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" by=\"x\" "
                      "xsi:nil=\"true\"/>");

    const CSmartPtr<CLog> pCopy(new CLog);
    pCopy->FromXml(strXml.c_str(), kContext);
    EXPECT_TRUE(pCopy->IsNil());
    EXPECT_EQ(Write(*pCopy, context), strXml);
}

TEST(NillableObject, ReadsTheNilAttributeInAnyCase)
{
    struct Row
    {
        const char* value;
        int nil; // -1: refused
    };
    for (const Row& row :
         {Row{"true", 1}, Row{"TRUE", 1}, Row{"1", 1}, Row{"false", 0}, Row{"False", 0},
          Row{"0", 0}, Row{"", -1}, Row{"yes", -1}, Row{" true", -1}}) {
        SCOPED_TRACE(row.value);
        const CSmartPtr<CLog> pLog(new CLog);
        const std::string strXml =
            "<log " + std::string(kXsi) + " xsi:nil='" + row.value + "'>5</log>";
        if (row.nil < 0) {
            ExpectFailure<CQnException>([&] { pLog->FromXml(strXml.c_str(), kContext); },
                                        "Unexpected Value [" + std::string(row.value) +
                                            "] for 'nil' Attribute found.",
                                        "/log/xsi:@nil");
            continue;
        }
        pLog->FromXml(strXml.c_str(), kContext);
        EXPECT_EQ(pLog->IsNil(), row.nil == 1);
        EXPECT_EQ(pLog->m_value.GetI4(), row.nil == 1 ? 0 : 5);
    }
}

TEST(NillableObject, DropsItsChildrenWithoutAWord)
{
    const CSmartPtr<CLog> pLog(new CLog);
    pLog->FromXml(("<log " + std::string(kXsi) + " xsi:nil='1'><x/>5</log>").c_str(), kContext);
    EXPECT_TRUE(pLog->IsNil());
    ExpectFailure<CQnException>(
        [&] { pLog->FromXml("<log><x/>5</log>", kContext); },
        "Failed read all the elements held within the element [log]. The unexpected element [x] "
        "remains un processed",
        "/log");
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

TEST(NilAttribute, IsRefusedByAClassThatIsNotNillable)
{
    const CSmartPtr<CShip> pShip(new CShip);
    ExpectFailure<CQnException>(
        [&] { pShip->FromXml(ShipXml("xsi:nil='false'").c_str(), kContext); },
        "Invalid use of 'nil' attribute in non-nillable element.", "/s:ship");
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
}

TEST(Attributes, AreMissedAndRefused)
{
    CProbe probe(XmlElementGroupType_Sequence);
    probe.AddAttribute(std::make_unique<CValueAttributeInfo>("a", "", 1, false, it_string));
    ExpectFailure<CQnException>([&] { probe.FromXml("<probe a='1' x='2'/>", kContext); },
                                "Unexpected Attribute found.", "/probe/@x");
    EXPECT_EQ(ExpectFailure<CQnValidationException>([&] { probe.FromXml("<probe/>", kContext); },
                                                    "Failed to process the element.", "/probe"),
              "Failed to process the element.\nPath: /probe\n"
              "Failed to find the required Attribute [a].");

    CSerializationContext context;
    context.SetIgnoreUnknownAttributes(true);
    probe.FromXml("<probe a='1' x='2'/>", context);

    // A class that is not strict needs no relaxation.
    const CSmartPtr<CShip> pShip(new CShip);
    pShip->FromXml(ShipXml("x='2'").c_str(), kContext);
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

TEST(PseudoElement, WritesContentIntoTheElementAroundIt)
{
    // As a nil one it writes the attribute and leaves the end to its parent.
    class CNilProbe : public CProbe, public INillable
    {
    public:
        CNilProbe() : CProbe(XmlElementGroupType_Sequence, XmlElementType_PseudoElement) {}
        bool IsNil() override { return m_bNil; }
        void SetNil(bool bNil) override { m_bNil = bNil; }
        bool m_bNil = false;
    };
    CNilProbe probe;
    probe.AddAttribute(std::make_unique<CValueAttributeInfo>("a", "", 1, false, it_string));
    probe.AddElement(std::make_unique<CScriptInfo>("x")).m_write = [](CXmlWriter& writer) {
        writer.WriteStartElement("x", "");
        writer.WriteEndElement();
        return true;
    };
    for (const bool bNil : {false, true}) {
        probe.SetNil(bNil);
        CTextStream stream;
        CXmlTextWriter writer(stream);
        writer.Open();
        writer.SetFormat(false);
        writer.AddNamespace("xsi", "http://www.w3.org/2001/XMLSchema-instance");
        writer.WriteStartElement("r", "");
        CXmlObjectBase::ToXml_Int(&probe, &writer, false, "urn:unused", kContext, false);
        writer.WriteEndElement();
        writer.Close();
        const std::string strText = stream.GetText();
        EXPECT_EQ(strText.substr(strText.find("-instance\"") + 10),
                  bNil ? " xsi:nil=\"true\"/>" : "><x/></r>");
    }
}

TEST(ChoiceWriting, WritesTheFirstMemberThatHasSomething)
{
    CProbe probe(XmlElementGroupType_Choice);
    bool bSecond = true;
    const auto member = [](const char* pszName, const bool& bSet) {
        return [pszName, &bSet](CXmlWriter& writer) {
            if (bSet) {
                writer.WriteStartElement(pszName, "");
                writer.WriteEndElement();
            }
            return bSet;
        };
    };
    const bool bNever = false;
    probe.AddElement(std::make_unique<CScriptInfo>("a")).m_write = member("a", bNever);
    probe.AddElement(std::make_unique<CScriptInfo>("b")).m_write = member("b", bSecond);
    probe.AddElement(std::make_unique<CScriptInfo>("c")).m_write = member("c", bSecond);
    EXPECT_EQ(Write(probe), "<probe><b/></probe>");

    bSecond = false;
    EXPECT_EQ(ExpectFailure<CQnValidationException>([&] { Write(probe); },
                                                    "Failed to convert the element [probe] to XML"),
              "Failed to convert the element [probe] to XML\n"
              "This element is a choice, and as such must have at one (and only one) valid item, "
              "currently there are none set");

    CSerializationContext lax;
    lax.SetIgnoreMissingChoice(true);
    EXPECT_EQ(Write(probe, lax), "<probe/>");
    CTextStream stream;
    CXmlTextWriter writer(stream);
    CXmlObjectBase::ToXml_Int(&probe, &writer, false, "", kContext, true); // optionalChoice
    EXPECT_STREQ(stream.GetText(), "<probe/>\n");
    probe.AddElement(std::make_unique<CScriptInfo>("d")).MakeChoiceOptional();
    EXPECT_EQ(Write(probe), "<probe/>");
}

TEST(GroupType, OutOfRangeIsToldInDifferentWordsOnBothSides)
{
    CProbe probe(static_cast<XmlElementGroupType>(3));
    EXPECT_EQ(ExpectFailure<CQnValidationException>([&] { Write(probe); },
                                                    "Failed to convert the element [probe] to XML"),
              "Failed to convert the element [probe] to XML\nUnknown XML Group Type");
    EXPECT_EQ(ExpectFailure<CQnValidationException>([&] { probe.FromXml("<probe/>", kContext); },
                                                    "Failed to process the element.", "/probe"),
              "Failed to process the element.\nPath: /probe\nUnknown Group Type");
}

TEST(WriteFailures, AreWrappedAtEachObject)
{
    const CSmartPtr<CShip> pShip = Model::MakeShip();
    const auto write = [&] { Write(*pShip); };
    const std::string strShip = "Failed to convert the element [ship] to XML";

    pShip->m_name.SetInvalid();
    EXPECT_EQ(ExpectFailure<CQnValidationException>(write, strShip),
              strShip + "\nThe Property [name] is mandatory, it may not be NULL");
    pShip->m_name.SetString("n");

    pShip->m_log->m_value.SetInvalid();
    EXPECT_EQ(ExpectFailure<CQnValidationException>(write, strShip),
              strShip + "\nFailed to convert the element [log] to XML\n"
                        "Invalid Type 0 to convert to string");
    pShip->m_log->m_value.SetI4(1);

    // An object in an attribute has no text.
    pShip->m_crew->m_watch.SetXmlObject(nullptr);
    EXPECT_EQ(ExpectFailure<CQnValidationException>(write, strShip),
              strShip + "\nFailed to convert attributes to XML\n"
                        "Failed to convert attributes to XML\n"
                        "Invalid Type 27 to convert to string");
    pShip->m_crew->m_watch.SetInvalid();
    Write(*pShip);
}

TEST(ReadFailures, TellTheInnermostPlaceThatIsKnown)
{
    const CSmartPtr<CShip> pShip(new CShip);
    const auto read = [&](const std::string& strXml) {
        return [&pShip, strXml] { pShip->FromXml(strXml.c_str(), kContext); };
    };

    // Without a path, a value is placed by the object that it belongs to.
    try {
        read(ShipXml("", "<s:tons>many</s:tons>"))();
        ADD_FAILURE();
    }
    catch (const CQnValidationException& e) {
        EXPECT_EQ(e.GetMessage(), "Failed to process the element.\nPath: /s:ship");
        EXPECT_NE(dynamic_cast<const CQnInvalidValueException*>(e.GetInnerException()), nullptr);
    }

    // Two levels: the outer one adds nothing.
    const std::string strBadLog =
        ExpectFailure<CQnException>(read(ShipXml("", "", "<s:log>x</s:log>")),
                                    "Failed to process the element.", "/s:ship/s:log");
    EXPECT_EQ(strBadLog.find("/s:ship\n"), std::string::npos);

    EXPECT_EQ(ExpectFailure<CQnException>(read("<ship id='-1'/>"),
                                          "Failed to set the property value.", "/ship/@id"),
              "Failed to set the property value.\nPath: /ship/@id\nAn id is never negative");
    ExpectFailure<CQnException>(read("<ship id='1'/>"),
                                "Failed to find the required child element [name].", "/ship");

    read(ShipXml())();
    EXPECT_EQ(pShip->m_name.GetString(), "n");
}

TEST(ReadFailures, AnExceptionWithAPathLosesItsClass)
{
    const CSmartPtr<CLog> pLog(new CLog);
    ExpectFailure<CQnException>([&] { pLog->FromXml("<log x='1'/>", kContext); },
                                "Unexpected Attribute found.", "/log/@x");
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
        try {
            read(20000);
            ADD_FAILURE();
        }
        catch (const CQnException& e) {
            ASSERT_NE(e.GetInnerException(), nullptr);
            EXPECT_EQ(e.GetInnerException()->GetMessage(),
                      "The elements are nested too deep for the stack.");
        }
        read(20);
    });
}

TEST(ForeignExceptions, PassThroughBothDirections)
{
    CProbe probe(XmlElementGroupType_Sequence);
    probe.AddAttribute(std::make_unique<CValueAttributeInfo>("a", "", 1, false, it_string));
    probe.m_access = [](int, bool, QnVariant&) { throw std::runtime_error("out of order"); };
    EXPECT_THROW(Write(probe), std::runtime_error);
    EXPECT_THROW(probe.FromXml("<probe a='1'/>", kContext), std::runtime_error);
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
