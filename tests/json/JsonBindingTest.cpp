// Bound objects through JSON: the GPX model on whole documents, and what becomes of each shape that
// the mapping loses.

#include "QnXmlLib16/QnXmlLib16.h"
#include "QnXmlLib16/json/JsonTextReader.h"
#include "examples/gpx/model/GpxType.h"
#include "tests/model/Sheet.h"
#include "tests/model/Ship.h"
#include "tests/support/Text.h"

#include <filesystem>
#include <gtest/gtest.h>

using namespace QnXmlLib16;
using namespace Gpx;

namespace {

// Names below the root need the prefix of their namespace with JsonRoundTrip_Full.
CSerializationContext MakeJsonContext(JsonRoundTrip eRoundTrip)
{
    CSerializationContext context;
    context.GetJsonContext().SetSupportRoundtrip(eRoundTrip);
    context.GetNamespaceAliases().Add("xsi", "http://www.w3.org/2001/XMLSchema-instance");
    context.GetNamespaceAliases().Add("eq", "urn:example:equipment");
    return context;
}

std::string Write(const CXmlObjectBase& object)
{
    return object.ToXml(true, false, EOLType_LF, CSerializationContext::m_defaultContext);
}

// A document with this content, in which <wpt> stands for a point with its coordinates.
CSmartPtr<CGpxType> Parse(std::string strContent)
{
    for (std::size_t n; (n = strContent.find("<wpt>")) != std::string::npos;)
        strContent.replace(n, 5, "<wpt lat='1' lon='2'>");
    const CSmartPtr<CGpxType> pDocument = new CGpxType;
    pDocument->FromXml(("<gpx xmlns='http://www.topografix.com/GPX/1/1'"
                        " xmlns:eq='urn:example:equipment' version='1.1' creator='test'>" +
                        strContent + "</gpx>")
                           .c_str(),
                       CSerializationContext::m_defaultContext);
    return pDocument;
}

// Through JSON into the copy. What comes out is its XML, or the failure: the words without the
// place and without the XML text that a failure to bind shows.
std::string ThroughJson(const CXmlObjectBase& object, CXmlObjectBase& copy,
                        JsonRoundTrip eRoundTrip)
{
    const CSerializationContext context = MakeJsonContext(eRoundTrip);
    try {
        const std::string strJson = object.ToJson(true, EOLType_LF, context);
        copy.FromJson(strJson.c_str(), context);
        return Write(copy);
    }
    catch (const CQnException& e) {
        const CQnException* pLast = &e;
        while (pLast->GetInnerException())
            pLast = pLast->GetInnerException();
        const std::string strWords = pLast->GetMessage();
        return strWords.substr(0, std::min(strWords.find(" at line "), strWords.find('\n')));
    }
}

std::string ThroughJson(const CGpxType& document, JsonRoundTrip eRoundTrip)
{
    const CSmartPtr<CGpxType> pCopy = new CGpxType;
    return ThroughJson(document, *pCopy, eRoundTrip);
}

const char* const kMemberInArray = "Expected Array separator character ',', found ':'";
} // namespace

TEST(JsonBinding, ARealDocumentWithoutTheLosingShapesComesBack)
{
    // Just what JSON keeps: metadata, and points with their times in a single track behind it.
    const std::string strPath = QNXML_SHARED_DATA "/gpx/strava_ride_plain.gpx";
    if (!std::filesystem::exists(strPath))
        GTEST_SKIP() << "missing: " << strPath;
    const CSmartPtr<CGpxType> pDocument = new CGpxType;
    pDocument->FromXmlFile(strPath.c_str(), CSerializationContext::m_defaultContext);
    for (const JsonRoundTrip eRoundTrip : {JsonRoundTrip_NoNamespaces, JsonRoundTrip_Full})
        EXPECT_EQ(ThroughJson(*pDocument, eRoundTrip), Write(*pDocument));
}

TEST(JsonBinding, EachShapeComesBackAsTheMappingHasIt)
{
    // Content of gpx, and what comes back with the values 1 and 2: content, nothing if it is the
    // same, or a failure. <wpt> stands for a point with its coordinates.
    const std::string rows[][3] = {
        {"<trk><name>t</name><trkseg><trkpt lat='-1' lon='2'><ele>1.5</ele>"
         "<time>2026-05-09T06:31:00.25Z</time><fix>3d</fix><sat>4</sat></trkpt></trkseg></trk>"},
        {"<wpt><name/><desc>a\tb &amp; &lt; /* c */ \x7F</desc></wpt>"},
        // An object that ends with an attribute leaves its element open.
        {"<wpt></wpt>", "An Element has not been closed.", "An Element has not been closed."},
        // Content of other schemas writes its text even if it is empty, which ends the element. It
        // has no namespace with the value 1.
        {"<wpt><extensions><eq:a><eq:b>x</eq:b></eq:a></extensions></wpt>",
         "<wpt><extensions><a xmlns=''><b>x</b>\n\t\t\t\t\n\t\t\t</a></extensions></wpt>",
         "<wpt><extensions><eq:a><eq:b>x</eq:b>\n\t\t\t\t\n\t\t\t</eq:a></extensions></wpt>"},
        // The bracket of a collection closes at the end of the parent.
        {"<wpt><name>n</name></wpt><trk><name>t</name></trk>", kMemberInArray, kMemberInArray},
        // Quotation marks and backslashes go unescaped.
        {"<wpt><desc>a\", \"sym\": \"b</desc></wpt>", "<wpt><desc>a</desc><sym>b</sym></wpt>",
         "Failed read all the elements held within the element [wpt]. The unexpected element [sym] "
         "remains un processed"},
        {"<wpt><desc>C:\\temp</desc></wpt>", "<wpt><desc>C:\temp</desc></wpt>",
         "<wpt><desc>C:\temp</desc></wpt>"},
        // The reader passes over line feeds.
        {"<wpt><desc>a\nb</desc></wpt>", "<wpt><desc>ab</desc></wpt>",
         "<wpt><desc>ab</desc></wpt>"},
        // Only the first item of an array has a name, which all others take.
        {"<wpt><extensions><eq:a k='1'>x</eq:a><eq:b k='2'>y</eq:b></extensions></wpt>",
         "<wpt><extensions><a xmlns='' k='1'>x</a><a xmlns='' k='2'>y</a></extensions></wpt>",
         "<wpt><extensions><eq:a k='1'>x</eq:a><eq:a k='2'>y</eq:a></extensions></wpt>"},
    };
    for (const auto& row : rows) {
        const CSmartPtr<CGpxType> pDocument = Parse(row[0]);
        const auto Expected = [&](const std::string& str) {
            return str.empty() ? Write(*pDocument) : str[0] == '<' ? Write(*Parse(str)) : str;
        };
        EXPECT_EQ(ThroughJson(*pDocument, JsonRoundTrip_NoNamespaces), Expected(row[1])) << row[0];
        EXPECT_EQ(ThroughJson(*pDocument, JsonRoundTrip_Full), Expected(row[2])) << row[0];
    }
}

TEST(JsonBinding, TypesComeBackAndNilObjectsAndPlainCollectionsDoNot)
{
    const CSmartPtr<Model::CShip> pShip = Model::MakeShip();
    const CSmartPtr<Model::CShip> pShipCopy = new Model::CShip;
    const Model::CTables tables(XmlElementGroupType_Sequence, Model::kReal,
                                {new QnXmlLib16Data::CElementInfoSeqPrimCol("note", "", 0)}, {},
                                {Model::HeldItems(0, [] { return Model::MakeTexts("note"); })});
    const CSmartPtr<Model::CSheet> pSheet = new Model::CSheet(tables);
    const CSmartPtr<Model::CSheet> pSheetCopy = new Model::CSheet(tables);
    static_cast<CstringCol*>(pSheet->m_values[0].PeekXmlCollection())->Add("x");
    for (const JsonRoundTrip eRoundTrip : {JsonRoundTrip_NoNamespaces, JsonRoundTrip_Full}) {
        SCOPED_TRACE(eRoundTrip);
        pShip->m_log->SetNil(false);
        EXPECT_EQ(ThroughJson(*pShip, *pShipCopy, eRoundTrip), Write(*pShip));
        pShip->m_log->SetNil(true);
        EXPECT_EQ(ThroughJson(*pShip, *pShipCopy, eRoundTrip), "An Element has not been closed.");
        EXPECT_EQ(ThroughJson(*pSheet, *pSheetCopy, eRoundTrip),
                  "Expected Object separator character ',', found ']'");
    }
}

TEST(JsonBinding, AFailureToBindShowsTheWholeXml)
{
    const CSerializationContext context = MakeJsonContext(JsonRoundTrip_NoNamespaces);
    const std::string strJson = "{\"gpx\": {\"wpt\": \"\"}}"; // without its attributes
    const CSmartPtr<CGpxType> pCopy = new CGpxType;
    try {
        pCopy->FromJson(strJson.c_str(), context);
        ADD_FAILURE() << "nothing was thrown";
    }
    catch (const CQnException& e) {
        EXPECT_EQ(e.GetMessage(), "Error converting JSON to XML:\n" +
                                      ToText(CJsonTextReader::ConvertJsonToXml(strJson, context)));
        ASSERT_TRUE(e.GetInnerException());
        EXPECT_EQ(e.GetInnerException()->GetPath(), "/gpx");
    }
}
