#include "QnXmlLib16/binding/ElementInfo.h"

#include "tests/model/Failure.h"
#include "tests/model/Probe.h"
#include "tests/model/Ship.h"
#include "tests/model/SpineInfo.h"

#include "QnXmlLib16/binding/SerializationContext.h"
#include "QnXmlLib16/collections/stringCol.h"
#include "QnXmlLib16/support/TextStream.h"
#include "QnXmlLib16/xml/XmlDocument.h"
#include "QnXmlLib16/xml/XmlElement.h"
#include "QnXmlLib16/xml/XmlTextWriter.h"

#include <cstring>
#include <gtest/gtest.h>

using namespace QnXmlLib16;
using Model::CProbe;
using Model::CValueInfo;
using Model::ExpectFailure;

namespace {

const char* ColourToText(int nColour)
{
    return nColour == 0 ? "red" : nColour == 1 ? "blue" : nullptr;
}

int TextToColour(const char* pszText)
{
    return std::strcmp(pszText, "red") == 0 ? 0 : 1;
}

// Opens the shared steps to the tests.
class CSteps : public CValueInfo
{
public:
    using CElementInfo::CheckRestriction;
    using CElementInfo::GetAnyDefaultNamespace;
    using CValueInfo::CValueInfo;
};

class CEnumInfo : public QnXmlLib16Data::CElementInfo
{
public:
    CEnumInfo(const char* pszName, bool bNillable, const char* pszDefault)
        : CElementInfo(pszName, "", 1, bNillable, ColourToText, TextToColour, pszDefault)
    {}
    bool ElementToXml(const CSerializationContext& context, const CXmlGeneratedClass* pObject,
                      CXmlWriter* pWriter) const override
    {
        return ElementToXmlEnum(context, pObject, pWriter, m_fnEnumToString);
    }
    bool ElementFromXml(const CSerializationContext& context, CXmlGeneratedClass* pObject,
                        CXmlElement*, CXmlElement** ppCursor, const char*, XmlElementType) override
    {
        ElementFromXmlEnum(context, pObject, ppCursor);
        return true;
    }
};

class CCollectionInfo : public QnXmlLib16Data::CElementInfo
{
public:
    CCollectionInfo() : CElementInfo("s", "", 1) {}
    using CElementInfo::CheckRestriction;
    bool ElementToXml(const CSerializationContext& context, const CXmlGeneratedClass* pObject,
                      CXmlWriter* pWriter) const override
    {
        return ElementToXmlCol(context, pObject, pWriter);
    }
    bool ElementFromXml(const CSerializationContext&, CXmlGeneratedClass*, CXmlElement*,
                        CXmlElement**, const char*, XmlElementType) override
    {
        return false;
    }
};

// A class with one property, 1, and text of what an entry writes or reads for it.
class COwner : public CProbe
{
public:
    COwner() : CProbe(XmlElementGroupType_Sequence)
    {
        m_access = [this](int, bool bRead, QnVariant& value) {
            if (bRead)
                value = m_value;
            else
                m_value = value;
        };
    }

    std::string Written(const QnXmlLib16Data::CElementInfo& entry, bool bWriteDefaults = false)
    {
        CTextStream stream;
        CXmlTextWriter writer(stream);
        writer.SetFormat(false);
        writer.SetWriteDefaultElementValues(bWriteDefaults);
        writer.AddNamespace("xsi", "http://www.w3.org/2001/XMLSchema-instance");
        writer.WriteStartElement("r", "");
        m_bWritten = entry.ElementToXml(m_context, this, &writer);
        writer.WriteEndElement();
        const std::string strText = stream.GetText();
        return strText.substr(strText.find("-instance\"") + 10);
    }

    void Read(QnXmlLib16Data::CElementInfo& entry, const char* pszXml)
    {
        CXmlDocument document;
        document.LoadXml(pszXml);
        CXmlElement* pCursor = document.GetDocumentElement();
        entry.ElementFromXml(m_context, this, nullptr, &pCursor, "", XmlElementType_Element);
        EXPECT_EQ(pCursor, nullptr);
    }

    CSerializationContext m_context;
    QnVariant m_value;
    bool m_bWritten = false;
};

constexpr char kNilA[] = "<a xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:nil='";

} // namespace

TEST(PrimitiveElement, WritesItsValueNilOrNothing)
{
    COwner owner;
    const CValueInfo entry("a", "", 1, it_i4, false);
    EXPECT_EQ(owner.Written(entry), "/>");
    EXPECT_FALSE(owner.m_bWritten);
    owner.m_value.SetI4(5);
    EXPECT_EQ(owner.Written(entry), "><a>5</a></r>");
    EXPECT_TRUE(owner.m_bWritten);
    owner.m_value.SetNil();
    EXPECT_EQ(owner.Written(entry), "><a xsi:nil=\"true\"/></r>");
    EXPECT_TRUE(owner.m_bWritten);
}

TEST(PrimitiveElement, AValueEqualToTheDefaultIsNotChecked)
{
    COwner owner;
    const CValueInfo entry(
        "a", "", 1, it_i4, false, false, "100",
        CPrimitiveRestrictions(nullptr, -1, -1, "500", nullptr, nullptr, nullptr, -1, -1, -1));
    owner.m_value.SetI4(100);
    EXPECT_EQ(owner.Written(entry), "><a/></r>");
    EXPECT_EQ(owner.Written(entry, true), "><a>100</a></r>");
    owner.m_value.SetI4(500);
    EXPECT_EQ(owner.Written(entry), "><a>500</a></r>");
    owner.m_value.SetI4(101);
    EXPECT_THROW(owner.Written(entry), CQnException);
}

TEST(PrimitiveElement, ReadsItsDefaultFromAnEmptyElement)
{
    COwner owner;
    CValueInfo withDefault("a", "", 1, it_i4, false, false, "100");
    owner.Read(withDefault, "<a/>");
    EXPECT_EQ(owner.m_value.GetI4(), 100);
    owner.Read(withDefault, "<a> 7 </a>");
    EXPECT_EQ(owner.m_value.GetI4(), 7);
    CValueInfo without("a", "", 1, it_i4, false);
    EXPECT_THROW(owner.Read(without, "<a/>"), CQnInvalidValueException);
    EXPECT_EQ(owner.m_value.GetI4(), 7);
}

TEST(PrimitiveElement, ANilElementLeavesThePropertyAsItIs)
{
    struct Row
    {
        const char* value;
        long result; // of a property that was 5, from an element that holds 7
    };
    for (const Row& row :
         {Row{"true", 5}, Row{"1", 5}, Row{"True", 5}, Row{"FALSE", 7}, Row{"0", 7}}) {
        SCOPED_TRACE(row.value);
        COwner owner;
        owner.m_value.SetI4(5);
        CValueInfo entry("a", "", 1, it_i4, false, true);
        owner.Read(entry, (kNilA + std::string(row.value) + "'>7</a>").c_str());
        EXPECT_EQ(owner.m_value.GetI4(), row.result);
        EXPECT_FALSE(owner.m_value.IsNil());
    }
}

TEST(PrimitiveElement, TakesNoAttributeButNil)
{
    COwner owner;
    CValueInfo nillable("a", "", 1, it_i4, false, true);
    CValueInfo plain("a", "", 1, it_i4, false, false);
    struct Row
    {
        CValueInfo& entry;
        std::string xml;
        const char* message; // null: accepted
        const char* path;
    };
    const std::string strNil = kNilA;
    const Row rows[] = {
        {plain, strNil + "false'>7</a>", nullptr, nullptr},
        {plain, strNil + "true'>7</a>", "Invalid use of 'nil' attribute in non-nillable element.",
         "/a"},
        {plain, strNil + "x'>7</a>", "Invalid use of 'nil' attribute in non-nillable element.",
         "/a"},
        {nillable, strNil + "x'>7</a>", "Unexpected Value [x] for 'nil' Attribute found.",
         "/a/xsi:@nil"},
        {plain, "<a b='1'>7</a>", "Unexpected Attribute found.", "/a/@b"},
        {plain, strNil + "false' xsi:type='x'>7</a>", "Unexpected Attribute found.",
         "/a/xsi:@type"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.xml);
        const auto read = [&] { owner.Read(row.entry, row.xml.c_str()); };
        if (row.message)
            ExpectFailure<CQnValidationException>(read, row.message, row.path);
        else
            read();
    }
    owner.m_context.SetIgnoreUnknownAttributes(true);
    owner.m_value.SetI4(0);
    owner.Read(plain, "<a b='1'>7</a>");
    EXPECT_EQ(owner.m_value.GetI4(), 7);
}

TEST(EnumElement, GoesThroughItsTwoFunctions)
{
    COwner owner;
    CEnumInfo entry("a", true, "blue");
    EXPECT_EQ(owner.Written(entry), "/>");
    owner.Read(entry, "<a>red</a>");
    EXPECT_EQ(owner.m_value.GetI4(), 0);
    EXPECT_EQ(owner.Written(entry), "><a>red</a></r>");
    owner.Read(entry, "<a/>");
    EXPECT_EQ(owner.m_value.GetI4(), 1);
    EXPECT_EQ(owner.Written(entry), "><a/></r>"); // the default
    owner.Read(entry, (kNilA + std::string("1'>red</a>")).c_str());
    EXPECT_EQ(owner.m_value.GetI4(), 1);
    owner.m_value.SetI4(2); // no text for it
    EXPECT_EQ(owner.Written(entry, true), "><a/></r>");
    EXPECT_TRUE(owner.m_bWritten);
    owner.m_value.SetNil();
    EXPECT_EQ(owner.Written(entry), "><a xsi:nil=\"true\"/></r>");
}

TEST(CollectionElement, IsWrittenIfItHoldsItems)
{
    COwner owner;
    const CCollectionInfo entry;
    owner.m_value.SetXmlCollection(nullptr);
    EXPECT_EQ(owner.Written(entry), "/>");
    EXPECT_FALSE(owner.m_bWritten);
    const CSmartPtr<CstringCol> pStrings(
        new CstringCol("s", "", 0, -1, nullptr, -1, -1, nullptr, nullptr, nullptr, nullptr, -1, -1,
                       -1, CWhitespaceUtils::WhitespaceRule_None, nullptr));
    owner.m_value.SetXmlCollection(pStrings.GetPtr());
    EXPECT_EQ(owner.Written(entry), "/>");
    EXPECT_FALSE(owner.m_bWritten);
    pStrings->Add("1");
    pStrings->Add("2");
    EXPECT_EQ(owner.Written(entry), "><s>1</s><s>2</s></r>");
    EXPECT_TRUE(owner.m_bWritten);
}

TEST(PropertyAccess, IsWrappedWithTheNameOrThePlace)
{
    COwner owner;
    owner.m_access = [](int, bool, QnVariant&) { throw CQnInvalidStateException("closed"); };
    CValueInfo entry("a", "", 1, it_i4, false);
    EXPECT_EQ(ExpectFailure<CQnValidationException>([&] { owner.Written(entry); },
                                                    "Failed to get the property value for [a]."),
              "Failed to get the property value for [a].\nclosed");
    EXPECT_EQ(ExpectFailure<CQnValidationException>([&] { owner.Read(entry, "<a>1</a>"); },
                                                    "Failed to set the property value.", "/a"),
              "Failed to set the property value.\nPath: /a\nclosed");
}

TEST(Restrictions, AreKnownForPrimitivesOnly)
{
    QnVariant value;
    value.SetString("too long");
    const CSteps primitive(
        "a", "", 1, it_string, false, false, nullptr,
        CPrimitiveRestrictions(nullptr, -1, 3, nullptr, nullptr, nullptr, nullptr, -1, -1, -1));
    EXPECT_THROW(primitive.CheckRestriction(value), CQnException);
    ExpectFailure<CQnException>([&] { CCollectionInfo().CheckRestriction(value); },
                                "Cannot CheckRestriction for type: string");
}

TEST(WildcardNamespace, GoesByTheFirstTokenIfThatIsAKeyword)
{
    struct Row
    {
        const char* namespaces;
        const char* ns;
        const char* result;
    };
    const Row rows[] = {
        {"##any", "urn:n", "urn:n"},
        {"##any", "", ""},
        {"##other", "", "DefaultNamespace"},
        {"##other", nullptr, "DefaultNamespace"},
        {"##other", "urn:n", ""},
        {"##local", "urn:n", ""},
        {"##targetNamespace", "urn:n", "urn:t"},
        {"##targetNamespace ##any", "urn:n", "urn:t"},
        {"##any urn:x", "urn:n", "urn:n"},
        {"##local ##any", "urn:n", ""},
        {"## ##any", "urn:n", ""},
        {"urn:x ##any", "urn:n", ""},
        {"urn:x", "urn:n", ""},
        {"", "urn:n", ""},
        {nullptr, "urn:n", ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.namespaces ? row.namespaces : "null");
        EXPECT_EQ(CSteps::GetAnyDefaultNamespace(row.namespaces, row.ns, "urn:t"), row.result);
    }
}
