// Bound objects through Fast Infoset: what comes back writes the same XML text, but for what the
// form can't hold.

#include "tests/fastinfoset/FiTools.h"

#include "QnXmlLib16/binding/AttributeInfo.h"
#include "QnXmlLib16/binding/ElementInfoSeq.h"
#include "QnXmlLib16/binding/SerializationContext.h"
#include "QnXmlLib16/collections/Element.h"
#include "examples/gpx/model/GpxType.h"
#include "tests/model/Entries.h"
#include "tests/model/Ship.h"

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
    if (encodings != kTexts)
        context.GetFIContext().SetSuggestedValues();
    if (encodings == kSuggestedNoTimes)
        for (const ItemType eType : {it_datetime, it_time, it_date})
            context.GetFIContext().SetEncoding(static_cast<unsigned long>(eType), {0, 0});
    copy.FromXmlStream(object.ToFastInfosetStream(FInfoDecl_None, context, CompressionType_None),
                       context);
    return {Xml(object), Xml(copy)};
}

Trip SendXml(const std::string& strXml, Encodings encodings, const CTables& tables)
{
    const CSmartPtr<CSheet> pObject(new CSheet(tables));
    const CSmartPtr<CSheet> pCopy(new CSheet(tables));
    pObject->FromXml(strXml.c_str(), CSerializationContext::m_defaultContext);
    return Send(*pObject, *pCopy, encodings);
}

// A value of each type from it_hexBinary on, as XML text has it after one reading.
constexpr char kValues[] =
    "00ABFF AQIDBA== -128 -32768 2147483647 -9223372036854775808 255 65535 4294967295 "
    "9223372036854775807 -1.5 0.123456789 P1Y2M3DT4H5M6S 2026-05 --05-09 2026 --05 ---09 "
    "2026-05-09 "
    "2026-05-09T06:30:00Z 06:30:00Z of-some-length-&amp;-with-&lt;signs&gt; true -12.5 "
    "123456789012345678901234567890";

// An element and an attribute of one type.
std::unique_ptr<CTables>
OneType(ItemType eType,
        CWhitespaceUtils::WhitespaceRule eRule = CWhitespaceUtils::WhitespaceRule_Collapse)
{
    return std::make_unique<CTables>(XmlElementGroupType_Sequence, kReal,
                                     std::vector<CElementInfo*>{new CElementInfoSeqPrimOpt(
                                         "e", "", 0, true, eType, nullptr, eRule, {}, nullptr)},
                                     std::vector<CAttributeInfo*>{new CAttributeInfoPrimitive(
                                         "a", "", 1, true, eType, nullptr, eRule, {}, nullptr)});
}

std::string OneXml(const std::string& strText)
{
    return "<r a=\"" + strText + "\"><e>" + strText + "</e></r>";
}

// A class of wildcards.
const CTables& Wildcards()
{
    static const CTables tables(XmlElementGroupType_Sequence, kReal,
                                {new CElementInfoSeqUntpdCol("AnyElement", "", 0)}, {},
                                {HeldItems(0, MakeWildcards)});
    return tables;
}

// The file without the blanks between tags: those of elements without a type stand behind a child,
// see WhatTheFormCanNotHoldComesBackChanged.
std::string ReadWithoutLayout(const std::string& strPath)
{
    std::ifstream file(strPath, std::ios::binary);
    std::string strText(std::istreambuf_iterator<char>(file), {});
    for (std::size_t n = 0; (n = strText.find('>', n)) != std::string::npos;) {
        const std::size_t nNext = strText.find_first_not_of(" \t\r\n", ++n);
        if (nNext != std::string::npos && strText[nNext] == '<')
            strText.erase(n, nNext - n);
    }
    return strText;
}

} // namespace

TEST(FastInfosetBinding, EveryTypeComesBackAsItWas)
{
    std::istringstream values(kValues);
    std::string strText;
    for (int iType = it_hexBinary; values >> strText; ++iType) {
        if (iType == it_char)
            ++iType; // properties have no such type
        const std::unique_ptr<CTables> pTables = OneType(static_cast<ItemType>(iType));
        for (const Encodings encodings : {kTexts, kSuggested}) {
            const Trip trip = SendXml(OneXml(strText), encodings, *pTables);
            EXPECT_EQ(trip.strXml, OneXml(strText));
            EXPECT_EQ(trip.strBack, trip.strXml);
        }
    }
}

TEST(FastInfosetBinding, ChildrenTypesNilAndWildcardsComeBackAsTheyWere)
{
    const std::string strAny = "<r><x a=\"1\">any</x><y><z b=\"2\"/></y></r>";
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
        const Trip any = SendXml(strAny, encodings, Wildcards());
        EXPECT_EQ(any.strXml, strAny);
        EXPECT_EQ(any.strBack, strAny);
    }
}

TEST(FastInfosetBinding, GpxDocumentsComeBackAsTheyWere)
{
    std::vector<std::string> vecPaths = {QNXML_EXAMPLES "/gpx/every-feature.gpx"};
    std::error_code error; // the folder of recorded tracks may be missing
    for (const auto& entry : std::filesystem::directory_iterator(QNXML_SHARED_DATA "/gpx", error))
        if (entry.path().extension() == ".gpx")
            vecPaths.push_back(entry.path().string());
    for (const std::string& strPath : vecPaths) {
        SCOPED_TRACE(strPath);
        const std::string strXml = ReadWithoutLayout(strPath);
        for (const Encodings encodings : {kTexts, kSuggestedNoTimes}) {
            const CSmartPtr<Gpx::CGpxType> pObject(new Gpx::CGpxType);
            const CSmartPtr<Gpx::CGpxType> pCopy(new Gpx::CGpxType);
            pObject->FromXml(strXml.c_str(), CSerializationContext::m_defaultContext);
            const Trip trip = Send(*pObject, *pCopy, encodings);
            EXPECT_NE(trip.strXml.find("lat="), std::string::npos);
            EXPECT_TRUE(trip.strBack == trip.strXml) << "the texts differ";
        }
    }
}

TEST(FastInfosetBinding, WhatTheFormCanNotHoldComesBackChanged)
{
    // An element without a type writes its children first, and the text behind the last child lands
    // in that child.
    const Trip mixed = SendXml("<r><x>text<y/></x></r>", kTexts, Wildcards());
    EXPECT_EQ(mixed.strXml, "<r><x><y/>text</x></r>");
    EXPECT_EQ(mixed.strBack, "<r><x><y>text</y></x></r>");

    // Carriage returns of a text are dropped on reading, those of attributes stay.
    const std::unique_ptr<CTables> pTexts =
        OneType(it_string, CWhitespaceUtils::WhitespaceRule_None);
    const CSmartPtr<CSheet> pSheet(new CSheet(*pTexts));
    const CSmartPtr<CSheet> pCopy(new CSheet(*pTexts));
    for (const int nProperty : {0, 1})
        pSheet->m_values[nProperty].SetString("a\r\nb");
    Send(*pSheet, *pCopy, kTexts);
    EXPECT_EQ(pCopy->Dump(), "0:a\nb 1:a\r\nb");
}

TEST(FastInfosetBinding, WhatASuggestedEncodingCanNotHoldIsChangedOrRefused)
{
    constexpr const char* pszAlphabet =
        "Failed to write FastInfoset. Invalid character not found for Restricted Alphabet.";
    struct Row
    {
        ItemType eType;
        const char* pszText;
        const char* pszResult; // what comes back, or the reason of the failure
    };
    const Row rows[] = {
        // Of an int 32 bits are sent, and read without their sign.
        {it_i4, "-1", "4294967295"},
        {it_i4, "4294967297", "1"},
        // Neither the point nor the plus sign is in the alphabet of dates and times.
        {it_datetime, "2026-05-09T06:30:00.25Z", pszAlphabet},
        {it_datetime, "2026-05-09T06:30:00+02:00", pszAlphabet},
        {it_time, "06:30:00.5", pszAlphabet},
        // Above what 64 bits with a sign hold.
        {it_ui8, "18446744073709551615",
         "The value [18446744073709551615] is to large to fit in a i8"},
    };
    for (const Row& row : rows) {
        const std::string strXml = OneXml(row.pszText);
        const std::unique_ptr<CTables> pTables = OneType(row.eType);
        EXPECT_EQ(SendXml(strXml, kTexts, *pTables).strBack, strXml);
        std::string strResult;
        try {
            strResult = SendXml(strXml, kSuggested, *pTables).strBack;
        }
        catch (const CQnException& e) {
            strResult = e.GetFullMessage();
        }
        const bool bSent = row.eType == it_i4;
        EXPECT_NE(strResult.find(bSent ? OneXml(row.pszResult) : row.pszResult), std::string::npos)
            << strResult;
    }
}
