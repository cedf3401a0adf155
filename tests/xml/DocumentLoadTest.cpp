#include "QnXmlLib16/binding/SerializationContext.h"
#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/xml/ExpatReader.h"
#include "QnXmlLib16/xml/XmlAttribute.h"
#include "QnXmlLib16/xml/XmlDocument.h"
#include "QnXmlLib16/xml/XmlElement.h"
#include "tests/model/Failure.h"
#include "tests/support/Scoped.h"
#include "tests/support/SmallStack.h"

#include <cstring>
#include <fstream>
#include <gtest/gtest.h>
#include <set>
#include <sys/stat.h>

using namespace QnXmlLib16;

namespace {

// A tree in one line: {namespace}name, attributes in brackets, text in quotes, children in braces.
std::string Dump(const CXmlElement* pElement)
{
    const auto name = [](const auto& node) {
        const std::string& strNamespace = node.GetNamespaceURI();
        return (strNamespace.empty() ? "" : "{" + strNamespace + "}") + node.GetLocalName();
    };
    std::string str = name(*pElement);
    for (const CXmlAttribute* pAttribute : pElement->GetAttributes())
        str += "[" + name(*pAttribute) + "=" + pAttribute->GetValue() + "]";
    if (!pElement->GetText().empty())
        str += "'" + pElement->GetText() + "'";
    for (const CXmlElement* p = pElement->GetFirstElement(); p; p = p->GetNextSiblingElement())
        str += "(" + Dump(p) + ")";
    return str;
}

std::string Load(const std::string& strXml,
                 const CSerializationContext& context = CSerializationContext::m_defaultContext)
{
    CXmlDocument document(context);
    document.LoadXml(strXml.c_str());
    return Dump(document.GetDocumentElement());
}

void LoadStream(CXmlDocument& document, const std::string& strBytes)
{
    document.LoadXmlStream(reinterpret_cast<const unsigned char*>(strBytes.data()),
                           strBytes.size());
}

void Write(const Scoped::File& file, const std::string& strBytes)
{
    std::ofstream(file.Path(), std::ios::binary) << strBytes;
}

// Hands the input to the parser in pieces.
class CPieceDocument : public CXmlDocument
{
public:
    void LoadInPieces(const std::string& strXml, std::size_t nPiece)
    {
        Cleanup();
        unsigned char* pBytes = new unsigned char[strXml.size()];
        SetBuffer(pBytes, strXml.size());
        std::memcpy(pBytes, strXml.data(), strXml.size());
        CExpatReader reader(*this);
        reader.SetPieceSize(nPiece);
        reader.CreateParser();
        reader.Parse(true);
    }
};

const char* const kSample =
    "<?xml version='1.0' encoding='UTF-8'?><!-- c --><?p i?>\n"
    "<a xmlns='urn:d' xmlns:p='urn:p' one='1' p:two='a longer value &lt;&#9;'>text\n"
    "<p:b>more &amp; more</p:b> and\ttail<!-- c --><c xmlns=''/><![CDATA[<x>]]></a>\n";
const char* const kSampleTree =
    "{urn:d}a[one=1][{urn:p}two=a longer value <\t]'text\n and\ttail<x>'"
    "({urn:p}b'more & more')(c)";

} // namespace

TEST(DocumentLoad, BuildsTheSameTreeOnEveryRoad)
{
    CXmlDocument document;
    EXPECT_EQ(document.GetDocumentElement(), nullptr);
    document.LoadXml(kSample);
    EXPECT_EQ(Dump(document.GetDocumentElement()), kSampleTree);
    LoadStream(document, kSample);
    EXPECT_EQ(Dump(document.GetDocumentElement()), kSampleTree);
    EXPECT_EQ(document.GetBufferLength(), std::strlen(kSample));
    const Scoped::File file;
    Write(file, kSample);
    document.Load(file.Path());
    EXPECT_EQ(Dump(document.GetDocumentElement()), kSampleTree);
    const std::string strXml(kSample);
    std::wstring strWide(strXml.begin(), strXml.end());
    strWide.replace(strWide.find(L"UTF-8"), 5, L"UTF-16");
    document.LoadXml(strWide.c_str());
    EXPECT_EQ(Dump(document.GetDocumentElement()), kSampleTree);

    CPieceDocument pieces;
    for (const std::size_t nPiece : {0, 1, 2, 3, 7, 64, 100000}) {
        pieces.LoadInPieces(kSample, nPiece);
        EXPECT_EQ(Dump(pieces.GetDocumentElement()), kSampleTree) << nPiece;
    }
}

TEST(DocumentLoad, RefusesEmptyInput)
{
    CXmlDocument document;
    const unsigned char byte = 'x';
    for (const char* psz : {"", static_cast<const char*>(nullptr)})
        Model::ExpectFailure<CQnException>([&] { document.LoadXml(psz); }, "XML String is empty!");
    for (const wchar_t* psz : {L"", static_cast<const wchar_t*>(nullptr)})
        Model::ExpectFailure<CQnException>([&] { document.LoadXml(psz); }, "XML String is empty!");
    Model::ExpectFailure<CQnException>([&] { document.LoadXmlStream(&byte, 0); },
                                       "XML Stream is empty!");
    Model::ExpectFailure<CQnException>([&] { document.LoadXmlStream(nullptr, 7); },
                                       "XML Stream is empty!");
}

TEST(DocumentLoad, TellsWhatExpatFoundAndTheLine)
{
    struct Row
    {
        std::string strXml;
        const char* pszMessage;
    };
    const Row rows[] = {
        {"<a>\n<b>\n</a>", "mismatched tag at line 3"},
        {"<a>\n\n", "no element found at line 3"},
        {"not XML", "syntax error at line 1"},
        {" ", "no element found at line 1"},
        {"<a/>\n<b/>", "junk after document element at line 2"},
        {"<a>\n\xE9</a>", "not well-formed (invalid token) at line 2"},
        {"<a>\xED\xA0\x80</a>", "not well-formed (invalid token) at line 1"},
        {"<a>&undefined;</a>", "undefined entity at line 1"},
        {"<p:a/>", "unbound prefix at line 1"},
        {"<a x='1' x='2'/>", "duplicate attribute at line 1"},
        {"<a xmlns='u|v'/>", "syntax error at line 1"}, // the bar parts URI and name
        {std::string("<a>\0</a>", 8), "not well-formed (invalid token) at line 1"},
        {"<?xml version='1.0' encoding='x'?><a/>", "unknown encoding at line 1"},
    };
    CXmlDocument document;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.strXml);
        Model::ExpectFailure<CQnException>([&] { LoadStream(document, row.strXml); },
                                           row.pszMessage);
        const Scoped::File file;
        Write(file, row.strXml);
        Model::ExpectFailure<CQnException>([&] { document.Load(file.Path()); }, row.pszMessage);
        CPieceDocument pieces;
        Model::ExpectFailure<CQnException>([&] { pieces.LoadInPieces(row.strXml, 1); },
                                           row.pszMessage);
    }
    document.LoadXml(kSample);
    EXPECT_EQ(Dump(document.GetDocumentElement()), kSampleTree);
}

TEST(DocumentLoad, KeepsWhatWasBuiltUntilTheFailure)
{
    CXmlDocument document;
    Model::ExpectFailure<CQnException>(
        [&] { document.LoadXml("<a xmlns:p='urn:p'><b>text</b><c></a>"); },
        "mismatched tag at line 1");
    EXPECT_EQ(Dump(document.GetDocumentElement()), "a(b'text')(c)");
    EXPECT_EQ(document.LookupNamespaceFromAlias("p"), "urn:p");
    Model::ExpectFailure<CQnException>([&] { document.LoadXml(""); }, "XML String is empty!");
    EXPECT_EQ(document.GetDocumentElement(), nullptr);
    EXPECT_EQ(document.GetBuffer(), nullptr);
    EXPECT_EQ(document.LookupNamespaceFromAlias("p"), "");
}

TEST(DocumentLoad, RefusesEntitiesThatGrowBeyondMeasure)
{
    std::string strXml = "<!DOCTYPE a [<!ENTITY e0 'some text to be repeated'>";
    for (int i = 1; i < 10; ++i) {
        const std::string strLower = "&e" + std::to_string(i - 1) + ";";
        strXml += "<!ENTITY e" + std::to_string(i) + " '";
        for (int n = 0; n < 10; ++n)
            strXml += strLower;
        strXml += "'>";
    }
    CXmlDocument document;
    Model::ExpectFailure<CQnException>(
        [&] { document.LoadXml((strXml + "]><a>&e9;</a>").c_str()); },
        "limit on input amplification factor (from DTD and entities) breached at line 1");
    EXPECT_LT(document.GetDocumentElement()->GetText().size(), 100u << 20);
}

TEST(DocumentLoad, ReadsRegularFilesOnly)
{
    CXmlDocument document;
    const auto expectFailure = [&](const std::string& strPath, const std::string& strBefore,
                                   const std::string& strBehind) {
        Model::ExpectFailure<CQnException>([&] { document.Load(strPath.c_str()); },
                                           strBefore + "[" + strPath + "]" + strBehind);
    };
    const Scoped::File file;
    const std::string strPath(file.Path());
    expectFailure(strPath, "Failed to read the contents of the file ", " Error [0]"); // empty
    expectFailure("/dev/null", "Failed to get the size of the file ", " Error [0]");
    expectFailure("/tmp", "Failed to get the size of the file ", " Error [0]");
    expectFailure("", "Failed to open the file ", ".");
    Model::ExpectFailure<CQnException>([&] { document.Load(nullptr); },
                                       "Failed to open the file [].");

    ASSERT_EQ(std::remove(file.Path()), 0);
    expectFailure(strPath, "Failed to open the file ", ".");
    ASSERT_EQ(mkfifo(file.Path(), 0600), 0); // without a writer: must not block
    expectFailure(strPath, "Failed to get the size of the file ", " Error [0]");
}

TEST(DocumentLoad, CarriageReturnsAreDropped)
{
    EXPECT_EQ(Load("<a>1\r\n2\r3&#13;4&#13;&#10;5 and some longer text&#13;</a>"),
              "a'1\n2\n34\n5 and some longer text'");
    EXPECT_EQ(Load("<a b='1&#13;2'/>"), "a[b=1\r2]"); // texts of elements only
}

TEST(DocumentLoad, KeepsCdataMarkersUnlessTheContextStripsThem)
{
    const char* const pszXml = "<a>1<![CDATA[x<y]]>2<![CDATA[]]></a>";
    CSerializationContext context;
    EXPECT_EQ(Load(pszXml, context), "a'1x<y2'");
    context.SetStripCDATA(false);
    EXPECT_EQ(Load(pszXml, context), "a'1<![CDATA[x<y]]>2<![CDATA[]]>'");
}

TEST(DocumentLoad, NamespacesAreResolvedUnlessTheSchemaHasNone)
{
    const char* const pszXml = "<p:a xmlns:p='urn:p' xmlns='urn:d' p:x='1' y='2'>"
                               "<b xmlns=''/><c xmlns:p='urn:q'><p:d xml:lang='en'/></c></p:a>";
    CSerializationContext context;
    const std::string strResolved =
        "{urn:p}a[{urn:p}x=1][y=2](b)({urn:d}c({urn:q}d[{http://www.w3.org/XML/1998/namespace}"
        "lang=en]))";
    EXPECT_EQ(Load(pszXml, context), strResolved);
    context.SetSchemaType(SchemaType_Other);
    EXPECT_EQ(Load(pszXml, context), strResolved);
    context.SetSchemaType(SchemaType_NoNamespaces);
    EXPECT_EQ(Load(pszXml, context),
              "p:a[xmlns:p=urn:p][xmlns=urn:d][p:x=1][y=2](b[xmlns=])(c[xmlns:p=urn:q]"
              "(p:d[xml:lang=en]))");

    // The document takes the schema type when it is made or initialised, not at a load.
    CXmlDocument document(context);
    context.SetSchemaType(SchemaType_Default);
    document.LoadXml("<p:a/>");
    document.Init();
    EXPECT_EQ(document.GetDocumentElement(), nullptr);
    Model::ExpectFailure<CQnException>([&] { document.LoadXml("<p:a/>"); },
                                       "unbound prefix at line 1");
}

TEST(DocumentLoad, PrefixesHoldForTheWholeDocument)
{
    CXmlDocument document;
    document.LoadXml("<p:a xmlns:p='urn:1' xmlns:z='urn:2'><b xmlns:p='urn:2'/>"
                     "<c xmlns='urn:1'/></p:a>");
    EXPECT_EQ(document.LookupNamespaceFromAlias("p"), "urn:2");
    EXPECT_EQ(document.LookupNamespaceFromAlias("z"), "urn:2");
    EXPECT_EQ(document.LookupNamespaceFromAlias(nullptr), "urn:1");
    EXPECT_EQ(document.LookupNamespaceFromAlias("q"), "");
    EXPECT_EQ(document.LookupAliasFromNamespace("urn:2"), "p");
    EXPECT_EQ(document.LookupAliasFromNamespace("urn:1"), "");
    EXPECT_EQ(document.LookupAliasFromNamespace(nullptr), "");
    EXPECT_EQ(document.GetDocumentElement()->GetXPath(), "/a");

    document.LoadXml("<a xmlns='urn:d'><b xmlns=''/></a>"); // undeclared: the empty URI
    EXPECT_EQ(document.LookupNamespaceFromAlias(""), "");
}

TEST(DocumentLoad, WideTextIsTakenAs16BitUnits)
{
    const Scoped::Locale locale(LC_ALL, "C.UTF-8");
    ASSERT_TRUE(locale.IsSet());
    CXmlDocument document;
    document.LoadXml(L"<a>\x20AC\xD83D\xDE00</a>");
    EXPECT_EQ(document.GetDocumentElement()->GetText(), "\xE2\x82\xAC\xF0\x9F\x98\x80");
    document.LoadXml(L"<a>\x1005A</a>"); // U+005A once the upper half is gone
    EXPECT_EQ(document.GetDocumentElement()->GetText(), "Z");
}

TEST(DocumentLoad, ConvertsNamesValuesAndTextsToTheCodePage)
{
    const char* const pszXml =
        "<\xC3\xA9 xmlns:p='urn:\xC3\xA9' p:\xC3\xBC='x\xC3\xA9'>\xE2\x82\xAC"
        " some more text&#13;</\xC3\xA9>";
    const std::string strUtf8 =
        "\xC3\xA9[{urn:\xC3\xA9}\xC3\xBC=x\xC3\xA9]'\xE2\x82\xAC some more text'";
    EXPECT_EQ(Load(pszXml), "?[{urn:?}?=x?]'? some more text'");
    {
        const Scoped::AsciiOnly asciiOnly;
        EXPECT_EQ(Load(pszXml), strUtf8);
    }
    const Scoped::Locale locale(LC_ALL, "C.UTF-8");
    ASSERT_TRUE(locale.IsSet());
    CXmlDocument document;
    document.LoadXml(pszXml);
    EXPECT_EQ(Dump(document.GetDocumentElement()), strUtf8);
    EXPECT_EQ(document.LookupAliasFromNamespace("urn:\xC3\xA9"), "p");
}

TEST(DocumentLoad, FindsEveryOneOfManyNames)
{
    std::string strXml = "<a xmlns:p='urn:p'>";
    std::string strTree = "a";
    for (int i = 0; i < 3000; ++i) {
        const std::string strName =
            "n" + std::string(static_cast<std::size_t>(i % 40), 'x') + std::to_string(i % 1500);
        strXml += "<p:" + strName + " " + strName + "='1'/>";
        strTree += "({urn:p}" + strName + "[" + strName + "=1])";
    }
    EXPECT_EQ(Load(strXml + "</a>"), strTree);
}

TEST(DocumentLoad, TakesLargeTokensInLinearTime)
{
    const std::string strLarge(16 << 20, 'v');
    CPieceDocument document;
    document.LoadInPieces("<a b='" + strLarge + "'><!--" + strLarge + "-->" + strLarge + "</a>",
                          1024);
    EXPECT_EQ(document.GetDocumentElement()->GetAttribute("b", ""), strLarge);
    EXPECT_EQ(document.GetDocumentElement()->GetText(), strLarge);
}

TEST(DocumentLoad, TextWithoutAnElementFailsTheParse)
{
    for (const auto fnText : {CExpatReader::FnStartCDATA, CExpatReader::FnEndCDATA}) {
        CXmlDocument document;
        CExpatReader reader(document);
        reader.CreateParser();
        fnText(&reader);
        Model::ExpectFailure<CQnInvalidStateException>([&] { reader.Parse(true); },
                                                       "No element is open.");
    }
}

TEST(DocumentLoad, TakesInputFromItsOwnTree)
{
    CXmlDocument document;
    document.LoadXml("<a>&lt;b>inner&lt;/b></a>");
    document.LoadXml(document.GetDocumentElement()->GetText().c_str());
    EXPECT_EQ(Dump(document.GetDocumentElement()), "b'inner'");
    document.LoadXml("<a>/no/such/file</a>");
    Model::ExpectFailure<CQnException>(
        [&] { document.Load(document.GetDocumentElement()->GetText().c_str()); },
        "Failed to open the file [/no/such/file].");
}

TEST(DocumentLoad, CostsNoStackForDepth)
{
    RunOnSmallStack([] {
        constexpr std::size_t kDepth = 200000;
        std::string strXml = "<p:a xmlns:p='urn:p'>";
        for (std::size_t n = 1; n < kDepth; ++n)
            strXml += "<p:a>";
        for (std::size_t n = 0; n < kDepth; ++n)
            strXml += "</p:a>";
        CXmlDocument document;
        document.LoadXml(strXml.c_str());
        CXmlElement* pElement = document.GetDocumentElement();
        while (pElement->GetFirstElement())
            pElement = pElement->GetFirstElement();
        pElement->AddAttribute("x", "1", "");
        EXPECT_EQ(pElement->GetXPath().size(), kDepth * std::strlen("/p:a"));
        EXPECT_EQ(pElement->GetAttributes()[0]->GetXPath().size(),
                  kDepth * std::strlen("/p:a") + std::strlen("/@x"));
    });
}

TEST(ElementDone, ShowsElementsInnermostFirstAndRemovesThemOnDemand)
{
    static std::string strSeen;
    strSeen.clear();
    CXmlDocument document([](CXmlElement* pElement) {
        strSeen += pElement->GetXPath() + " ";
        return pElement->GetLocalName() != "keep"; // the answer for the root is ignored
    });
    document.LoadXml("<a>1<b><c/></b>2<keep><c/>x</keep><b/>3</a>");
    EXPECT_EQ(strSeen, "/a/b/c /a/b /a/keep/c /a/keep /a/b /a ");
    EXPECT_EQ(Dump(document.GetDocumentElement()), "a'123'(keep'x')");
}

TEST(ElementDone, KeepsMemoryBoundedAndTimeLinear)
{
    static std::set<const void*> setAddresses;
    static int iCount;
    setAddresses.clear();
    iCount = 0;
    CXmlDocument document([](CXmlElement* pElement) {
        setAddresses.insert(pElement);
        setAddresses.insert(pElement->GetAttributes().empty() ? nullptr
                                                              : pElement->GetAttributes()[0]);
        return ++iCount % 2 == 0 || pElement->GetText() == "x";
    });
    std::string strXml = "<a>";
    for (int i = 0; i < 200000; ++i)
        strXml += "<b c='1'>x</b>";
    document.LoadXml((strXml + "</a>").c_str());
    EXPECT_EQ(Dump(document.GetDocumentElement()), "a");
    EXPECT_LE(setAddresses.size(), 4u); // root, one child, its attribute, null

    // Every second child stays: taking the others off doesn't cost a walk over these.
    strXml = "<a>";
    for (int i = 0; i < 200000; ++i)
        strXml += "<b/>";
    document.LoadXml((strXml + "</a>").c_str());
    int iLeft = 0;
    for (const CXmlElement* p = document.GetDocumentElement()->GetFirstElement(); p;
         p = p->GetNextSiblingElement())
        ++iLeft;
    EXPECT_EQ(iLeft, 100000);
}

TEST(ElementDone, ExceptionsLeaveTheLoadAsThemselves)
{
    struct CForeign
    {
        int iValue;
    };
    static int iCalls;
    CXmlDocument document([](CXmlElement* pElement) -> bool {
        ++iCalls;
        if (pElement->GetLocalName() == "foreign")
            throw CForeign{42};
        if (pElement->GetLocalName() == "ours")
            throw CQnValidationException("Refused.", pElement->GetXPath());
        return false;
    });
    for (const char* pszXml : {"<a><foreign/><b/></a>", "<a><foreign></foreign>", "<foreign/>"}) {
        iCalls = 0;
        try {
            document.LoadXml(pszXml);
            ADD_FAILURE() << pszXml;
        }
        catch (const CForeign& foreign) {
            EXPECT_EQ(foreign.iValue, 42);
        }
        EXPECT_EQ(iCalls, 1) << pszXml;
    }
    Model::ExpectFailure<CQnValidationException>([&] { document.LoadXml("<a><ours/></a>"); },
                                                 "Refused.", "/a/ours");
    document.LoadXml("<a><b/></a>");
    EXPECT_EQ(Dump(document.GetDocumentElement()), "a(b)");
}
