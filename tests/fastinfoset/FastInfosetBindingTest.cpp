// Bound objects through Fast Infoset: what comes back writes the same XML text, but for what the
// form can't hold.

#include "tests/fastinfoset/FiTools.h"

#include "QnXmlLib16/binding/AttributeInfo.h"
#include "QnXmlLib16/binding/ElementInfoSeq.h"
#include "QnXmlLib16/binding/SerializationContext.h"
#include "QnXmlLib16/collections/Element.h"
#include "examples/gpx/model/GpxType.h"
#include "tests/model/Entries.h"
#include "tests/model/Failure.h"
#include "tests/model/Ship.h"

#include <cstring>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <vector>

using namespace QnXmlLib16;
using namespace QnXmlLib16Data;
using namespace Model;

namespace {

enum Encodings
{
    kTexts,           // as a context starts
    kSuggested,       // SetSuggestedValues
    kSuggestedNoTimes // the same, with dates and times as texts
};

void Set(const CSerializationContext& context, Encodings encodings)
{
    CFastInfosetContext& fi = context.GetFIContext();
    if (encodings != kTexts)
        fi.SetSuggestedValues();
    if (encodings == kSuggestedNoTimes) {
        for (const ItemType eType : {it_datetime, it_time, it_date})
            fi.SetEncoding(static_cast<unsigned long>(eType), {0, 0});
    }
}

std::string Xml(const CXmlObjectBase& object)
{
    return object.ToXml(false, false, EOLType_LF, CSerializationContext::m_defaultContext);
}

// Reads the XML text, sends the object through Fast Infoset into the copy, and gives what the
// object and the copy write.
struct Trip
{
    std::string strXml;
    std::string strBack;
};

Trip Send(CXmlObjectBase& object, CXmlObjectBase& copy, Encodings encodings,
          const char* pszDefaultNamespace = "")
{
    CSerializationContext context;
    context.SetDefaultNamespaceURI(pszDefaultNamespace);
    Set(context, encodings);
    copy.FromXmlStream(object.ToFastInfosetStream(FInfoDecl_None, context, CompressionType_None),
                       context);
    return {Xml(object), Xml(copy)};
}

template <class TObject, class... TArguments>
Trip SendXml(const std::string& strXml, Encodings encodings, const TArguments&... arguments)
{
    const CSmartPtr<TObject> pObject(new TObject(arguments...));
    const CSmartPtr<TObject> pCopy(new TObject(arguments...));
    pObject->FromXml(strXml.c_str(), CSerializationContext::m_defaultContext);
    return Send(*pObject, *pCopy, encodings);
}

// A value of each type, as XML text has it after one reading.
struct Value
{
    ItemType eType;
    const char* pszText;
};

const Value kValues[] = {
    {it_hexBinary, "00ABFF"},
    {it_base64Binary, "AQIDBA=="},
    {it_i1, "-128"},
    {it_i2, "-32768"},
    {it_i4, "2147483647"},
    {it_i8, "-9223372036854775808"},
    {it_ui1, "255"},
    {it_ui2, "65535"},
    {it_ui4, "4294967295"},
    {it_ui8, "9223372036854775807"},
    {it_r4, "-1.5"},
    {it_r8, "0.125"},
    {it_duration, "P1Y2M3DT4H5M6S"},
    {it_yearMonth, "2026-05"},
    {it_monthDay, "--05-09"},
    {it_year, "2026"},
    {it_month, "--05"},
    {it_day, "---09"},
    {it_date, "2026-05-09"},
    {it_datetime, "2026-05-09T06:30:00Z"},
    {it_time, "06:30:00Z"},
    {it_string, "a text of some length & <signs>"},
    {it_boolean, "true"},
    {it_decimal, "-12.5"},
    {it_integer, "123456789012345678901234567890"},
};

CAttributeInfo* Attribute(const char* pszName, int nProperty, ItemType eType)
{
    return new CAttributeInfoPrimitive(pszName, "", nProperty, true, eType, nullptr,
                                       CWhitespaceUtils::WhitespaceRule_Collapse, {}, nullptr);
}

// An element and an attribute of one type.
std::unique_ptr<CTables> OneType(ItemType eType)
{
    return std::make_unique<CTables>(
        XmlElementGroupType_Sequence, kReal,
        std::vector<CElementInfo*>{Prim<CElementInfoSeqPrimOpt>("e", 0, eType)},
        std::vector<CAttributeInfo*>{Attribute("a", 1, eType)});
}

std::string OneXml(const std::string& strText)
{
    std::string strEscaped;
    for (const char c : strText)
        strEscaped += c == '&' ? "&amp;" : c == '<' ? "&lt;" : std::string(1, c);
    return "<r a=\"" + strEscaped + "\"><e>" + strEscaped + "</e></r>";
}

// Children of several kinds, and a collection of any element.
const CTables& Store()
{
    static const CTables tables(
        XmlElementGroupType_Sequence, kReal,
        {Prim<CElementInfoSeqPrimOpt>("name", 0), Enum<CElementInfoSeqEnumOpt>("finish", 1),
         new CElementInfoSeqClsOpt("spare", "", 2, kReal, MakeSheet, Vice().GetClassId()),
         new CElementInfoSeqAbsClsOpt("tool", "", 3, kReal, MakeTool),
         new CElementInfoSeqClsCol("clamp", "", 4, kReal),
         new CElementInfoSeqUntpdCol("AnyElement", "", 5)},
        {}, {HeldItems(4, [] { return MakeVices("clamp"); }), HeldItems(5, MakeWildcards)});
    return tables;
}

std::string StoreXml(const std::string& strAny)
{
    return "<r><name>oak</name><finish>oiled</finish><spare no=\"7\"><jaw>9</jaw></spare>" +
           ToolXml("tool", "Hammer", "<weight>1.5</weight>") +
           "<clamp no=\"3\"><jaw>3</jaw></clamp><clamp><jaw>3</jaw></clamp>" + strAny + "</r>";
}

const std::string kEveryFeature = QNXML_EXAMPLES "/gpx/every-feature.gpx";

// The file without the blanks between tags: those of elements without a type stand behind a child,
// see WhatTheFormCanNotHoldComesBackChanged.
std::string ReadWithoutLayout(const std::string& strPath)
{
    std::ifstream file(strPath, std::ios::binary);
    std::string str;
    std::size_t nBlanks = 0; // at the end of str, behind a tag
    bool bBehindTag = false;
    for (std::istreambuf_iterator<char> it(file), end; it != end; ++it) {
        const bool bBlank = std::strchr(" \t\r\n", *it) != nullptr;
        if (*it == '<' && bBehindTag)
            str.resize(str.size() - nBlanks);
        str += *it;
        nBlanks = bBlank ? nBlanks + 1 : 0;
        bBehindTag = *it == '>' || (bBehindTag && bBlank);
    }
    return str;
}

Trip SendFile(const std::string& strPath, Encodings encodings)
{
    const std::string strXml = ReadWithoutLayout(strPath);
    CBinaryData data;
    data.SetBuffer(reinterpret_cast<const unsigned char*>(strXml.data()), strXml.size());
    const CSmartPtr<Gpx::CGpxType> pObject(new Gpx::CGpxType);
    const CSmartPtr<Gpx::CGpxType> pCopy(new Gpx::CGpxType);
    pObject->FromXmlStream(data, CSerializationContext::m_defaultContext);
    return Send(*pObject, *pCopy, encodings);
}

} // namespace

TEST(FastInfosetBinding, EveryTypeComesBackAsItWas)
{
    for (const Value& value : kValues) {
        const std::unique_ptr<CTables> pTables = OneType(value.eType);
        for (const Encodings encodings : {kTexts, kSuggested}) {
            SCOPED_TRACE(std::string(value.pszText) + (encodings == kTexts ? "" : ", suggested"));
            const Trip trip = SendXml<CSheet>(OneXml(value.pszText), encodings, *pTables);
            EXPECT_NE(trip.strXml.find("<e>"), std::string::npos);
            EXPECT_EQ(trip.strBack, trip.strXml);
        }
    }
}

TEST(FastInfosetBinding, ChildrenCollectionsTypesAndNilComeBackAsTheyWere)
{
    const std::string strStore = StoreXml("<x a=\"1\">any</x><y><z b=\"2\"/></y>");
    for (const Encodings encodings : {kTexts, kSuggested}) {
        // Without a default namespace the names have a prefix that no declaration bears.
        for (const char* pszDefaultNamespace : {"", kShipNamespace}) {
            for (const bool bNil : {false, true}) {
                const CSmartPtr<CShip> pShip = MakeShip();
                pShip->m_log->SetNil(bNil);
                const CSmartPtr<CShip> pCopy(new CShip);
                const Trip ship = Send(*pShip, *pCopy, encodings, pszDefaultNamespace);
                EXPECT_EQ(ship.strXml.find("nil") != std::string::npos, bNil);
                EXPECT_EQ(ship.strBack, ship.strXml);
            }
        }
        const Trip store = SendXml<CSheet>(strStore, encodings, Store());
        EXPECT_EQ(store.strXml, strStore);
        EXPECT_EQ(store.strBack, strStore);
    }
}

TEST(FastInfosetBinding, AGpxDocumentOfEveryElementComesBackAsItWas)
{
    for (const Encodings encodings : {kTexts, kSuggestedNoTimes}) {
        const Trip trip = SendFile(kEveryFeature, encodings);
        EXPECT_NE(trip.strXml.find("currency=\"CHF\""), std::string::npos);
        EXPECT_EQ(trip.strBack, trip.strXml);
    }
}

TEST(FastInfosetBinding, RealGpxDocumentsComeBackAsTheyWere)
{
    const std::string strFolder = QNXML_SHARED_DATA "/gpx";
    std::vector<std::string> vecPaths;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(strFolder, error)) {
        if (entry.path().extension() == ".gpx")
            vecPaths.push_back(entry.path().string());
    }
    if (vecPaths.empty())
        GTEST_SKIP() << "no GPX documents in " << strFolder;
    for (const std::string& strPath : vecPaths) {
        SCOPED_TRACE(strPath);
        for (const Encodings encodings : {kTexts, kSuggestedNoTimes}) {
            const Trip trip = SendFile(strPath, encodings);
            EXPECT_TRUE(trip.strBack == trip.strXml) << "the texts differ";
        }
    }
}

TEST(FastInfosetBinding, WhatTheFormCanNotHoldComesBackChanged)
{
    const auto one = [](ItemType eType, const char* pszText, Encodings encodings) {
        return SendXml<CSheet>(OneXml(pszText), encodings, *OneType(eType)).strBack;
    };
    // Ints are read without their sign.
    EXPECT_EQ(one(it_i4, "-1", kSuggested), OneXml("4294967295"));
    EXPECT_EQ(one(it_i4, "-1", kTexts), OneXml("-1"));
    // 32 bits of an int are sent.
    EXPECT_EQ(one(it_i4, "4294967297", kSuggested), OneXml("1"));

    // An element without a type writes its children first, and the text behind the last child lands
    // in that child.
    const Trip mixed = SendXml<CSheet>(StoreXml("<x>text<y/></x>"), kTexts, Store());
    EXPECT_EQ(mixed.strXml, StoreXml("<x><y/>text</x>"));
    EXPECT_EQ(mixed.strBack, StoreXml("<x><y>text</y></x>"));

    // Carriage returns of a text are dropped on reading, those of attributes stay.
    constexpr auto kNone = CWhitespaceUtils::WhitespaceRule_None;
    const CTables texts(
        XmlElementGroupType_Sequence, kReal,
        {new CElementInfoSeqPrimOpt("e", "", 0, true, it_string, nullptr, kNone, {}, nullptr)},
        {new CAttributeInfoPrimitive("a", "", 1, true, it_string, nullptr, kNone, {}, nullptr)});
    const CSmartPtr<CSheet> pSheet(new CSheet(texts));
    const CSmartPtr<CSheet> pCopy(new CSheet(texts));
    for (const int nProperty : {0, 1})
        pSheet->m_values[nProperty].SetString("a\r\nb");
    Send(*pSheet, *pCopy, kTexts);
    EXPECT_EQ(pCopy->Dump(), "0:a\nb 1:a\r\nb");
}

TEST(FastInfosetBinding, WhatASuggestedEncodingCanNotHoldIsRefused)
{
    constexpr const char* pszAlphabet =
        "Failed to write FastInfoset. Invalid character not found for Restricted Alphabet.";
    struct Row
    {
        ItemType eType;
        const char* pszText;
        const char* pszReason;
    };
    const Row rows[] = {
        // Neither the point nor the plus sign is in the alphabet of dates and times.
        {it_datetime, "2026-05-09T06:30:00.25Z", pszAlphabet},
        {it_datetime, "2026-05-09T06:30:00+02:00", pszAlphabet},
        {it_time, "06:30:00.5", pszAlphabet},
        // Above what 64 bits with a sign hold.
        {it_ui8, "18446744073709551615",
         "The value [18446744073709551615] is to large to fit in a i8"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.pszText);
        const std::unique_ptr<CTables> pTables = OneType(row.eType);
        EXPECT_EQ(SendXml<CSheet>(OneXml(row.pszText), kTexts, *pTables).strBack,
                  OneXml(row.pszText));
        try {
            SendXml<CSheet>(OneXml(row.pszText), kSuggested, *pTables);
            ADD_FAILURE() << "was written";
        }
        catch (const CQnException& e) {
            EXPECT_NE(e.GetFullMessage().find(row.pszReason), std::string::npos)
                << e.GetFullMessage();
        }
    }
}
