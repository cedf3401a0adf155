// Bound classes for the whole of a published schema, on real documents.

#include "examples/gpx/model/GpxType.h"
#include "examples/gpx/model/WptType.h"
#include "tests/model/Sheet.h"

#include "QnXmlLib16/QnXmlLib16.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

using namespace QnXmlLib16;
using namespace Gpx;
using Model::Failure;

namespace {

const CSerializationContext kContext;

std::string Write(const CXmlObjectBase& object)
{
    return object.ToXml(true, false, EOLType_LF, kContext);
}

// A text in the canonical form of the type that an element or attribute of this name has.
std::string Canonical(const std::string& strName, const std::string& strText)
{
    static const std::set<std::string> decimals = {
        "lat", "lon", "ele", "magvar", "geoidheight", "minlat", "maxlat", "minlon", "maxlon"};
    if (strName == "time")
        return CDateTime(strText.c_str()).ToString();
    if (decimals.count(strName) > 0)
        return CDecimal(strText.c_str()).ToString();
    return strText.find_first_not_of(" \t\r\n") == std::string::npos ? "" : strText;
}

// A line for each element, with its depth, and each attribute; the order of attributes is no matter.
void List(const CXmlElement& element, std::vector<std::string>& lines, int nDepth = 0)
{
    const std::string strName = element.GetLocalName();
    lines.push_back(std::to_string(nDepth) + " " + element.GetNamespaceURI() + " " + strName + "=" +
                    Canonical(strName, element.GetText()));
    std::set<std::string> attributes;
    for (const CXmlAttribute* const p : element.GetAttributes()) {
        if (!p->IsNamespaceAttribute())
            attributes.insert("@" + p->GetNamespaceURI() + " " + p->GetLocalName() + "=" +
                              Canonical(p->GetLocalName(), p->GetValue()));
    }
    lines.insert(lines.end(), attributes.begin(), attributes.end());
    for (const CXmlElement* p = element.GetFirstElement(); p; p = p->GetNextSiblingElement())
        List(*p, lines, nDepth + 1);
}

// Reads a file, writes it, and holds the result against the file as a plain tree; reads it again
// and expects the same text.
void ExpectRoundTrip(const std::string& strPath)
{
    SCOPED_TRACE(strPath);
    const CSmartPtr<CGpxType> pDocument = new CGpxType;
    pDocument->FromXmlFile(strPath.c_str(), kContext);
    const std::string strWritten = Write(*pDocument);
    CXmlDocument source;
    source.Load(strPath.c_str());
    CXmlDocument copy;
    copy.LoadXml(strWritten.c_str());
    std::vector<std::string> sourceLines;
    std::vector<std::string> copyLines;
    List(*source.GetDocumentElement(), sourceLines);
    List(*copy.GetDocumentElement(), copyLines);
    EXPECT_EQ(copyLines, sourceLines);

    const CSmartPtr<CGpxType> pAgain = new CGpxType;
    pAgain->FromXml(strWritten.c_str(), kContext);
    EXPECT_EQ(Write(*pAgain), strWritten);
}

// A document with a waypoint around given children.
std::string WaypointWith(const std::string& strChildren,
                         const std::string& strAttributes = "lat='1' lon='2'")
{
    return "<gpx xmlns='http://www.topografix.com/GPX/1/1' version='1.1' creator='test'><wpt " +
           strAttributes + ">" + strChildren + "</wpt></gpx>";
}

} // namespace

TEST(Gpx, DocumentsComeBackAsTheyWere)
{
    std::error_code error; // the folder of recorded tracks may be missing
    std::vector<std::string> vecPaths = {QNXML_EXAMPLES "/gpx/every-feature.gpx"};
    for (const auto& entry : std::filesystem::directory_iterator(QNXML_SHARED_DATA "/gpx", error)) {
        if (entry.path().extension() == ".gpx")
            vecPaths.push_back(entry.path().string());
    }
    for (const std::string& strPath : vecPaths)
        ExpectRoundTrip(strPath);
}

TEST(Gpx, ADocumentThatBreaksTheSchemaNamesThePlaceAndARelaxationReadsItWhereThereIsOne)
{
    struct Row
    {
        std::string xml;
        const char* path;
        const char* words; // somewhere in the chain
        bool laxReads;
    };
    const Row rows[] = {
        {WaypointWith("<speed>3</speed>"), "/gpx/wpt", "unexpected element [speed]", true},
        {WaypointWith("<ele unit='m'>3</ele>"), "/gpx/wpt/ele/@unit", "Unexpected Attribute", true},
        {"<gpx version='1.1' creator='test'><wpt lat='1' lon='2'/></gpx>", "/gpx",
         "unexpected element [wpt]", true},
        {WaypointWith("<fix>4d</fix>"), "/gpx/wpt", "Invalid Value for fixType [4d].", false},
        {WaypointWith("<ele>high</ele>"), "/gpx/wpt", "an invalid char at position 0 [high].",
         false},
        {WaypointWith("", "lat='1'"), "/gpx/wpt", "find the required Attribute [lon].", false},
        {"<gpx version='1.0' creator='test'/>", "/gpx/@version",
         "The Property [version] is fixed to [1.1], it may not be [1.0].", false},
    };
    CSerializationContext lax;
    lax.SetIgnoreUnknownAttributes(true);
    lax.SetIgnoreUnknownElements(true);
    lax.SetIgnoreNamespaces(true);
    for (const Row& row : rows) {
        SCOPED_TRACE(row.xml);
        const CSmartPtr<CGpxType> pDocument = new CGpxType;
        const std::string strFailure =
            Failure([&] { pDocument->FromXml(row.xml.c_str(), kContext); });
        EXPECT_NE(strFailure.find(row.words), std::string::npos) << strFailure;
        EXPECT_NE((strFailure + " ").find(std::string(" @") + row.path + " "), std::string::npos)
            << strFailure;
        if (!row.laxReads) {
            EXPECT_THROW(pDocument->FromXml(row.xml.c_str(), lax), CQnException);
            continue;
        }
        pDocument->FromXml(row.xml.c_str(), lax);
        EXPECT_EQ(pDocument->GetWpt()->Item(0)->GetLon(), CDecimal(2));
    }
}
