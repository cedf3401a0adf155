// Bound classes for the whole of a published schema, on real documents.

#include "QnXmlLib16/collections/ElementCol.h"
#include "QnXmlLib16/xml/XmlAttribute.h"
#include "QnXmlLib16/xml/XmlDocument.h"
#include "QnXmlLib16/xml/XmlElement.h"
#include "examples/gpx/model/BoundsType.h"
#include "examples/gpx/model/CopyrightType.h"
#include "examples/gpx/model/EmailType.h"
#include "examples/gpx/model/ExtensionsType.h"
#include "examples/gpx/model/GpxType.h"
#include "examples/gpx/model/LinkType.h"
#include "examples/gpx/model/MetadataType.h"
#include "examples/gpx/model/PersonType.h"
#include "examples/gpx/model/PtType.h"
#include "examples/gpx/model/PtsegType.h"
#include "examples/gpx/model/RteType.h"
#include "examples/gpx/model/TrkType.h"
#include "examples/gpx/model/TrksegType.h"
#include "examples/gpx/model/WptType.h"
#include "tests/model/Failure.h"

#include "QnXmlLib16/binding/SerializationContext.h"
#include "QnXmlLib16/support/SettingTypes.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

using namespace QnXmlLib16;
using namespace Gpx;
using Model::ExpectFailure;

namespace {

const std::string kEveryFeature = QNXML_EXAMPLES "/gpx/every-feature.gpx";

CSmartPtr<CGpxType> Read(const std::string& strPath)
{
    const CSmartPtr<CGpxType> pDocument = new CGpxType;
    pDocument->FromXmlFile(strPath.c_str(), CSerializationContext::m_defaultContext);
    return pDocument;
}

std::string Write(const CXmlObjectBase& object)
{
    return object.ToXml(true, false, EOLType_LF, CSerializationContext::m_defaultContext);
}

bool IsBlank(const std::string& strText)
{
    return strText.find_first_not_of(" \t\r\n") == std::string::npos;
}

// Whether two texts stand for the same value of the type that an element or attribute of this name
// has in the schema.
bool IsSameValue(const std::string& strName, const std::string& strA, const std::string& strB)
{
    if (strA == strB)
        return true;
    if (strName == "time")
        return CDateTime(strA.c_str()) == CDateTime(strB.c_str());
    for (const char* pszName :
         {"lat", "lon", "ele", "magvar", "geoidheight", "minlat", "maxlat", "minlon", "maxlon"}) {
        if (strName == pszName)
            return CDecimal(strA.c_str()) == CDecimal(strB.c_str());
    }
    return false;
}

void ExpectSameAttributes(const CXmlElement& source, const CXmlElement& copy)
{
    std::size_t nData = 0;
    for (const CXmlAttribute* pAttribute : source.GetAttributes()) {
        if (pAttribute->IsNamespaceAttribute())
            continue;
        ++nData;
        EXPECT_TRUE(IsSameValue(
            pAttribute->GetLocalName(), pAttribute->GetValue(),
            copy.GetAttribute(pAttribute->GetLocalName(), pAttribute->GetNamespaceURI())))
            << pAttribute->GetXPath();
    }
    EXPECT_EQ(copy.GetAttributes().size(), nData) << source.GetXPath();
}

// Every element and attribute of the source stands in the copy, in the same order with the same
// value, and nothing else does.
void ExpectSameContent(const CXmlElement& source, const CXmlElement& copy)
{
    ASSERT_EQ(source.GetLocalName(), copy.GetLocalName()) << source.GetXPath();
    ASSERT_EQ(source.GetNamespaceURI(), copy.GetNamespaceURI()) << source.GetXPath();
    ExpectSameAttributes(source, copy);
    const bool bBlank = IsBlank(source.GetText()) && IsBlank(copy.GetText());
    EXPECT_TRUE(bBlank || IsSameValue(source.GetLocalName(), source.GetText(), copy.GetText()))
        << source.GetXPath() << ": " << copy.GetText();
    const CXmlElement* pCopy = copy.GetFirstElement();
    for (const CXmlElement* p = source.GetFirstElement(); p; p = p->GetNextSiblingElement()) {
        ASSERT_TRUE(pCopy) << p->GetXPath();
        ExpectSameContent(*p, *pCopy);
        if (testing::Test::HasFatalFailure())
            return;
        pCopy = pCopy->GetNextSiblingElement();
    }
    EXPECT_FALSE(pCopy) << pCopy->GetXPath();
}

// Reads a file, writes it, and holds the result against the file as a plain tree; reads it again
// and expects the same text.
void ExpectRoundTrip(const std::string& strPath)
{
    SCOPED_TRACE(strPath);
    const std::string strWritten = Write(*Read(strPath));
    CXmlDocument source;
    source.Load(strPath.c_str());
    CXmlDocument copy;
    copy.LoadXml(strWritten.c_str());
    ExpectSameContent(*source.GetDocumentElement(), *copy.GetDocumentElement());

    const CSmartPtr<CGpxType> pAgain = new CGpxType;
    pAgain->FromXml(strWritten.c_str(), CSerializationContext::m_defaultContext);
    EXPECT_EQ(Write(*pAgain), strWritten);
}

// The names and coordinates of a waypoint around given children.
std::string WaypointWith(const std::string& strChildren, const std::string& strAttributes = "")
{
    return "<gpx xmlns='http://www.topografix.com/GPX/1/1' version='1.1' creator='test'>"
           "<wpt lat='1' lon='2' " +
           strAttributes + ">" + strChildren + "</wpt></gpx>";
}

} // namespace

TEST(Gpx, RealDocumentsComeBackAsTheyWere)
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
    for (const std::string& strPath : vecPaths)
        ExpectRoundTrip(strPath);
}

TEST(Gpx, EveryElementAndAttributeOfTheSchemaComesBack)
{
    ExpectRoundTrip(kEveryFeature);
}

TEST(Gpx, ValuesArriveInTheTypesOfTheSchema)
{
    const CSmartPtr<CGpxType> pDocument = Read(kEveryFeature);
    EXPECT_EQ(pDocument->GetCreator(), "QnXmlLib16 examples");
    const CSmartPtr<CMetadataType> pMetadata = pDocument->GetMetadata();
    ASSERT_TRUE(pMetadata);
    EXPECT_EQ(pMetadata->GetAuthor()->GetEmail()->GetDomain(), "example.org");
    EXPECT_EQ(pMetadata->GetCopyright()->GetYear(), 2026);
    EXPECT_EQ(pMetadata->GetBounds()->GetMaxlon(), CDecimal("8.0125"));
    EXPECT_EQ(pMetadata->GetLink()->GetCount(), 2);
    EXPECT_FALSE(pMetadata->GetLink()->Item(1)->GetText());

    const CSmartPtr<CWptType> pFull = pDocument->GetWpt()->Item(0);
    EXPECT_EQ(pFull->GetTime()->GetMilliSecond(), 250);
    EXPECT_EQ(pFull->GetFix(), FixType_Dgps);
    EXPECT_EQ(pFull->GetDgpsid(), CBigInteger(1023));
    EXPECT_EQ(pFull->GetLink()->Item(0)->GetHref(), "https://example.org/carpark");
    EXPECT_EQ(pFull->GetExtensions()->GetAnyElement()->Item(0)->GetText(), "5.00");

    const CSmartPtr<CWptType> pBare = pDocument->GetWpt()->Item(1);
    EXPECT_FALSE(pBare->GetName());
    EXPECT_FALSE(pBare->GetExtensions());
    EXPECT_FALSE(pBare->HasLink());
    // Beyond 64 bits.
    EXPECT_EQ(pDocument->GetTrk()->Item(0)->GetNumber(), CBigInteger("123456789012345678901234"));
}

TEST(Gpx, TypesForOtherSchemasCanBeRoots)
{
    const char* const pszXml = "<ptseg xmlns='http://www.topografix.com/GPX/1/1'>"
                               "<pt lat='1' lon='2'/>"
                               "<pt lat='-3.5' lon='4'><ele>5</ele><time>2026-05-09T06:30:00Z"
                               "</time></pt></ptseg>";
    const CSmartPtr<CPtsegType> pSegment = new CPtsegType;
    pSegment->FromXml(pszXml, CSerializationContext::m_defaultContext);
    ASSERT_EQ(pSegment->GetPt()->GetCount(), 2);
    EXPECT_EQ(pSegment->GetPt()->Item(1)->GetEle(), CDecimal(5));

    const CSmartPtr<CPtsegType> pCopy = new CPtsegType;
    pCopy->FromXml(Write(*pSegment).c_str(), CSerializationContext::m_defaultContext);
    EXPECT_EQ(pCopy->GetPt()->Item(0)->GetLat(), CDecimal(1));
    EXPECT_EQ(pCopy->GetPt()->Item(1)->GetTime(), pSegment->GetPt()->Item(1)->GetTime());
}

TEST(Gpx, FacetsHoldOnWriting)
{
    struct Row
    {
        const char* pszMember;
        void (*fnSet)(CWptType&, const char*);
        const char* pszGood;
        const char* pszBad;
    };
    const auto setLat = [](CWptType& point, const char* psz) { point.SetLat(CDecimal(psz)); };
    const auto setLon = [](CWptType& point, const char* psz) { point.SetLon(CDecimal(psz)); };
    const auto setMagvar = [](CWptType& point, const char* psz) { point.SetMagvar(CDecimal(psz)); };
    const auto setSat = [](CWptType& point, const char* psz) { point.SetSat(CBigInteger(psz)); };
    const auto setId = [](CWptType& point, const char* psz) { point.SetDgpsid(CBigInteger(psz)); };
    const Row rows[] = {
        {"lat", setLat, "90", "90.0000001"},
        {"lat", setLat, "-90", "-90.1"},
        {"lon", setLon, "179.9999999", "180"},
        {"lon", setLon, "-180", "-180.5"},
        {"magvar", setMagvar, "0", "-0.1"},
        {"magvar", setMagvar, "359.99", "360"},
        {"sat", setSat, "0", "-1"},
        {"dgpsid", setId, "0", "-1"},
        {"dgpsid", setId, "1023", "1024"},
    };
    const CSmartPtr<CGpxType> pDocument = new CGpxType;
    pDocument->SetCreator("test");
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.pszMember) + " " + row.pszBad);
        pDocument->GetWpt()->Clear();
        const CSmartPtr<CWptType> pPoint = pDocument->GetWpt()->Add();
        row.fnSet(*pPoint, row.pszGood);
        EXPECT_NE(Write(*pDocument).find(row.pszGood), std::string::npos);
        row.fnSet(*pPoint, row.pszBad);
        const std::string strChain = ExpectFailure<CQnValidationException>(
            [&] { Write(*pDocument); }, "Failed to convert the element [gpx] to XML");
        const std::string strEnd =
            std::string("\nInvalid Value for ") + row.pszMember + " [" + row.pszBad + "].";
        EXPECT_EQ(strChain.substr(strChain.size() - std::min(strChain.size(), strEnd.size())),
                  strEnd);
    }
}

TEST(Gpx, ADocumentThatBreaksTheSchemaNamesThePlaceAndARelaxationReadsItWhereThereIsOne)
{
    struct Row
    {
        std::string strXml;
        const char* pszPath;
        const char* pszWords; // the end of the chain
        bool bLaxReads;
    };
    const char* const pszLeftOver = "The unexpected element [speed] remains un processed";
    const Row rows[] = {
        {WaypointWith("<speed>3</speed>"), "/gpx/wpt", pszLeftOver, true},
        {WaypointWith("<time>2026-05-09T06:30:00Z</time><ele>3</ele>"), "/gpx/wpt",
         "The unexpected element [ele] remains un processed", true},
        {WaypointWith("", "speed='3'"), "/gpx/wpt/@speed", "Unexpected Attribute found.", true},
        {WaypointWith("<ele unit='m'>3</ele>"), "/gpx/wpt/ele/@unit", "Unexpected Attribute found.",
         true},
        {"<gpx version='1.1' creator='test'><wpt lat='1' lon='2'/></gpx>", "/gpx",
         "The unexpected element [wpt] remains un processed", true},
        {WaypointWith("<fix>4d</fix>"), "/gpx/wpt", "Invalid Value for fixType [4d].", false},
        {WaypointWith("<ele>high</ele>"), "/gpx/wpt",
         "contained an invalid char at position 0 [high].", false},
        {WaypointWith("<time>2026-13-09T06:30:00Z</time>"), "/gpx/wpt",
         "Invalid Month [13] (1 <= month <= 12)", false},
        {"<gpx xmlns='http://www.topografix.com/GPX/1/1' version='1.1' creator='test'>"
         "<wpt lat='1'/></gpx>",
         "/gpx/wpt", "Failed to find the required Attribute [lon].", false},
        {"<gpx xmlns='http://www.topografix.com/GPX/1/1' version='1.0' creator='test'/>",
         "/gpx/@version", "The Property [version] is fixed to [1.1], it may not be [1.0].", false},
    };
    CSerializationContext lax;
    lax.SetIgnoreUnknownAttributes(true);
    lax.SetIgnoreUnknownElements(true);
    lax.SetIgnoreNamespaces(true);
    for (const Row& row : rows) {
        SCOPED_TRACE(row.strXml);
        const CSmartPtr<CGpxType> pDocument = new CGpxType;
        try {
            pDocument->FromXml(row.strXml.c_str(), CSerializationContext::m_defaultContext);
            ADD_FAILURE() << "nothing was thrown";
        }
        catch (const CQnException& e) {
            EXPECT_EQ(e.GetPath(), row.pszPath);
            EXPECT_NE(e.GetFullMessage().find(row.pszWords), std::string::npos)
                << e.GetFullMessage();
        }
        if (!row.bLaxReads) {
            EXPECT_THROW(pDocument->FromXml(row.strXml.c_str(), lax), CQnException);
            continue;
        }
        pDocument->FromXml(row.strXml.c_str(), lax);
        ASSERT_EQ(pDocument->GetWpt()->GetCount(), 1);
        EXPECT_EQ(pDocument->GetWpt()->Item(0)->GetLon(), CDecimal(2));
    }
}

// Skipping starts behind the last entry of a table, so known elements behind an unknown one go
// with it.
TEST(Gpx, WhatStandsBehindAnUnknownElementIsSkippedWithIt)
{
    CSerializationContext lax;
    lax.SetIgnoreUnknownElements(true);
    const CSmartPtr<CGpxType> pDocument = new CGpxType;
    pDocument->FromXml(WaypointWith("<ele>3</ele><speed>4</speed><name>lost</name>"
                                    "<extensions><x xmlns='urn:x'/></extensions>")
                           .c_str(),
                       lax);
    const CSmartPtr<CWptType> pPoint = pDocument->GetWpt()->Item(0);
    EXPECT_EQ(pPoint->GetEle(), CDecimal(3));
    EXPECT_FALSE(pPoint->GetName());
    EXPECT_TRUE(pPoint->GetExtensions()); // the last entry is asked again
}

TEST(Gpx, AnObjectThatFailedToReadCanBeReadIntoAgain)
{
    const CSmartPtr<CGpxType> pDocument = new CGpxType;
    EXPECT_THROW(pDocument->FromXml(WaypointWith("<name>first</name><fix>4d</fix>").c_str(),
                                    CSerializationContext::m_defaultContext),
                 CQnException);
    pDocument->FromXml(WaypointWith("<cmt>second</cmt>").c_str(),
                       CSerializationContext::m_defaultContext);
    ASSERT_EQ(pDocument->GetWpt()->GetCount(), 1);
    EXPECT_FALSE(pDocument->GetWpt()->Item(0)->GetName());
    EXPECT_EQ(pDocument->GetWpt()->Item(0)->GetCmt(), "second");
}

// The collection of a seldom used member: nothing is kept until it has an item, and neither side
// needs the other to outlive it.
TEST(Gpx, ALinkCollectionIsKeptFromItsFirstItemOn)
{
    CSmartPtr<CWptType> pPoint = new CWptType;
    EXPECT_EQ(pPoint->GetLink()->GetCount(), 0);
    EXPECT_FALSE(pPoint->HasLink());

    const CSmartPtr<CLinkTypeCol> pLinks = pPoint->GetLink();
    EXPECT_EQ(pPoint->GetLink(), pLinks);
    pLinks->Add()->SetHref("https://example.org");
    EXPECT_EQ(pPoint->GetLink(), pLinks);
    EXPECT_EQ(pPoint->GetLink()->Item(0)->GetHref(), "https://example.org");

    pPoint->Init(); // lets go of it
    EXPECT_FALSE(pPoint->HasLink());
    EXPECT_EQ(pLinks->GetCount(), 1);

    const CSmartPtr<CLinkTypeCol> pOrphan = pPoint->GetLink();
    pPoint.Reset();
    pOrphan->Add();
    EXPECT_EQ(pOrphan->GetCount(), 1);
}

TEST(Gpx, ChildrenOfAnotherElementNameAreRefused)
{
    const CSmartPtr<CMetadataType> pMetadata = new CMetadataType;
    const CSmartPtr<CBoundsType> pBounds = new CBoundsType;
    pBounds->SetElementName("box");
    ExpectFailure<CQnInvalidParamException>(
        [&] { pMetadata->SetBounds(pBounds.GetPtr()); },
        "This property requires an element with the name bounds the element being set has the "
        "element name box");
    EXPECT_FALSE(pMetadata->GetBounds());
    const CSmartPtr<CTrksegType> pSegment = new CTrksegType;
    const CSmartPtr<CWptType> pWaypoint = new CWptType; // is called "wpt"
    EXPECT_THROW(pSegment->GetTrkpt()->Add(pWaypoint.GetPtr()), CQnInvalidParamException);
    EXPECT_THROW(pSegment->GetTrkpt()->Add(nullptr), CQnInvalidParamException);
    EXPECT_EQ(pSegment->GetTrkpt()->GetCount(), 0);
}
