#include "QnXmlLib16/binding/SerializationContext.h"
#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/xml/ExpatReader.h"
#include "QnXmlLib16/xml/XmlDocument.h"
#include "tests/model/Failure.h"
#include "tests/support/Scoped.h"
#include "tests/xml/TreeLine.h"

#include <cstring>
#include <set>
#include <sys/stat.h>

using namespace QnXmlLib16;
using Model::ExpectFailure;

namespace {

std::string Dump(const CXmlDocument& document)
{
    return TreeLine(*document.GetDocumentElement());
}

std::string Load(const std::string& strXml,
                 const CSerializationContext& context = CSerializationContext::m_defaultContext)
{
    CXmlDocument document(context);
    document.LoadXml(strXml.c_str());
    return Dump(document);
}

void LoadStream(CXmlDocument& document, const std::string& strBytes)
{
    document.LoadXmlStream(reinterpret_cast<const unsigned char*>(strBytes.data()),
                           strBytes.size());
}

// Hands the input to the parser in pieces.
class CPieceDocument : public CXmlDocument
{
public:
    void LoadInPieces(const std::string& strXml, std::size_t nPiece)
    {
        Cleanup();
        CExpatReader reader(*this);
        reader.SetPieceSize(nPiece);
        reader.CreateParser();
        Parse(reader, strXml, true);
    }

    void LoadInCalls(std::initializer_list<std::string> parts)
    {
        CExpatReader reader(*this);
        reader.CreateParser();
        for (const std::string& strPart : parts)
            Parse(reader, strPart, &strPart == parts.end() - 1);
    }

private:
    void Parse(CExpatReader& reader, const std::string& strXml, bool bFinal)
    {
        unsigned char* pBytes = new unsigned char[strXml.size()];
        SetBuffer(pBytes, strXml.size());
        std::memcpy(pBytes, strXml.data(), strXml.size());
        reader.Parse(bFinal);
    }
};

const std::string kSample =
    "<?xml version='1.0' encoding='UTF-8'?><!-- c --><?p i?>\n"
    "<a xmlns='urn:d' xmlns:p='urn:p' one='1' p:two='a longer value &lt;&#9;'>text\n"
    "<p:b>more &amp; more</p:b> and\ttail<!-- c --><c xmlns=''/><![CDATA[<x>]]></a>\n";
const char* const kSampleTree =
    "{urn:d}a[one='1'][{urn:p}two='a longer value <\t'] 'text\n and\ttail<x>' "
    "({urn:p}b 'more & more' c)";

} // namespace

TEST(DocumentLoad, BuildsTheSameTreeOnEveryRoad)
{
    CPieceDocument document;
    document.LoadXml(kSample.c_str());
    EXPECT_EQ(Dump(document), kSampleTree);
    LoadStream(document, kSample);
    EXPECT_EQ(Dump(document), kSampleTree);
    EXPECT_EQ(document.GetBufferLength(), kSample.size());
    const Scoped::File file;
    std::ofstream(file.Path(), std::ios::binary) << kSample;
    document.Load(file.Path());
    EXPECT_EQ(Dump(document), kSampleTree);
    std::wstring strWide(kSample.begin(), kSample.end());
    strWide.replace(strWide.find(L"UTF-8"), 5, L"UTF-16");
    document.LoadXml(strWide.c_str());
    EXPECT_EQ(Dump(document), kSampleTree);
    for (const std::size_t nPiece : {0, 1, 2, 3, 7, 64, 100000}) {
        document.LoadInPieces(kSample, nPiece);
        EXPECT_EQ(Dump(document), kSampleTree) << nPiece;
    }
}

TEST(DocumentLoad, TellsWhatExpatFoundAndTheLine)
{
    const struct
    {
        std::string strXml;
        const char* pszMessage;
    } rows[] = {
        {"<a>\n<b>\n</a>", "mismatched tag at line 3"},
        {"<a>\n\xE9</a>", "not well-formed (invalid token) at line 2"},
        {"<a xmlns='u|v'/>", "syntax error at line 1"}, // the bar parts URI and name
        {std::string("<a>\0</a>", 8), "not well-formed (invalid token) at line 1"},
        {"<?xml version='1.0' encoding='x'?><a/>", "unknown encoding at line 1"},
    };
    CPieceDocument document;
    for (const auto& row : rows) {
        ExpectFailure<CQnException>([&] { LoadStream(document, row.strXml); }, row.pszMessage);
        ExpectFailure<CQnException>([&] { document.LoadInPieces(row.strXml, 1); }, row.pszMessage);
    }
    // What was built until the failure stays until the next load.
    ExpectFailure<CQnException>([&] { document.LoadXml("<a xmlns:p='urn:p'><b>text</b><c></a>"); },
                                "mismatched tag at line 1");
    EXPECT_EQ(Dump(document), "a (b 'text' c)");
    EXPECT_EQ(document.LookupNamespaceFromAlias("p"), "urn:p");
    ExpectFailure<CQnException>([&] { document.LoadXmlStream(nullptr, 7); },
                                "XML Stream is empty!");
    EXPECT_EQ(document.GetDocumentElement(), nullptr);
    EXPECT_EQ(document.GetBuffer(), nullptr);
    EXPECT_EQ(document.LookupNamespaceFromAlias("p"), "");
    document.LoadXml(kSample.c_str());
    EXPECT_EQ(Dump(document), kSampleTree);
}

TEST(DocumentLoad, RefusesEntitiesThatGrowBeyondMeasure)
{
    std::string strXml = "<!DOCTYPE a [<!ENTITY e0 'some text to be repeated'>";
    for (int i = 1; i < 10; ++i) {
        strXml += "<!ENTITY e" + std::to_string(i) + " '";
        for (int n = 0; n < 10; ++n)
            strXml += "&e" + std::to_string(i - 1) + ";";
        strXml += "'>";
    }
    CXmlDocument document;
    ExpectFailure<CQnException>(
        [&] { document.LoadXml((strXml + "]><a>&e9;</a>").c_str()); },
        "limit on input amplification factor (from DTD and entities) breached at line 1");
    EXPECT_LT(document.GetDocumentElement()->GetText().size(), 100u << 20);
}

TEST(DocumentLoad, ReadsRegularFilesOnly)
{
    CXmlDocument document;
    const auto Expect = [&](const std::string& strPath, const std::string& strBefore,
                            const std::string& strBehind) {
        ExpectFailure<CQnException>([&] { document.Load(strPath.c_str()); },
                                    strBefore + " the file [" + strPath + "]" + strBehind);
    };
    const Scoped::File file;
    Expect(file.Path(), "Failed to read the contents of", " Error [0]"); // empty
    Expect("/dev/null", "Failed to get the size of", " Error [0]");
    Expect("/tmp", "Failed to get the size of", " Error [0]");
    Expect("", "Failed to open", ".");
    ExpectFailure<CQnException>([&] { document.Load(nullptr); }, "Failed to open the file [].");
    ASSERT_EQ(std::remove(file.Path()), 0);
    Expect(file.Path(), "Failed to open", ".");
    ASSERT_EQ(mkfifo(file.Path(), 0600), 0); // without a writer: must not block
    Expect(file.Path(), "Failed to get the size of", " Error [0]");
}

TEST(DocumentLoad, CarriageReturnsAreDropped)
{
    EXPECT_EQ(Load("<a>1\r\n2\r3&#13;4&#13;&#10;5 and some longer text&#13;</a>"),
              "a '1\n2\n34\n5 and some longer text'");
    EXPECT_EQ(Load("<a b='1&#13;2'/>"), "a[b='1\r2']"); // texts of elements only
}

TEST(DocumentLoad, NamespacesAreResolvedUnlessTheSchemaHasNone)
{
    const char* const pszXml = "<p:a xmlns:p='urn:p' xmlns='urn:d' p:x='1' y='2'>"
                               "<b xmlns=''/><c xmlns:p='urn:q'><p:d xml:lang='en'/></c></p:a>";
    CSerializationContext context;
    for (const SchemaType eType : {SchemaType_Default, SchemaType_Other}) {
        context.SetSchemaType(eType);
        EXPECT_EQ(Load(pszXml, context), "{urn:p}a[{urn:p}x='1'][y='2'] (b {urn:d}c ({urn:q}d"
                                         "[{http://www.w3.org/XML/1998/namespace}lang='en']))");
    }
    context.SetSchemaType(SchemaType_NoNamespaces);
    EXPECT_EQ(Load(pszXml, context),
              "p:a[xmlns:p='urn:p'][xmlns='urn:d'][p:x='1'][y='2'] (b[xmlns=''] "
              "c[xmlns:p='urn:q'] (p:d[xml:lang='en']))");

    // The document takes the schema type when it is made or initialised, not at a load.
    CXmlDocument document(context);
    context.SetSchemaType(SchemaType_Default);
    document.LoadXml("<p:a/>");
    document.Init();
    EXPECT_EQ(document.GetDocumentElement(), nullptr);
    ExpectFailure<CQnException>([&] { document.LoadXml("<p:a/>"); }, "unbound prefix at line 1");
}

TEST(DocumentLoad, PrefixesHoldForTheWholeDocument)
{
    CXmlDocument document;
    document.LoadXml("<p:a xmlns:p='urn:1' xmlns:z='urn:2'><b xmlns:p='urn:2'/>"
                     "<c xmlns='urn:1'/></p:a>");
    for (const char* pszAlias : {"p", "z"})
        EXPECT_EQ(document.LookupNamespaceFromAlias(pszAlias), "urn:2");
    EXPECT_EQ(document.LookupNamespaceFromAlias(nullptr), "urn:1");
    EXPECT_EQ(document.LookupAliasFromNamespace("urn:2"), "p");
    EXPECT_EQ(document.LookupAliasFromNamespace("urn:1"), "");
    EXPECT_EQ(document.GetDocumentElement()->GetXPath(), "/a");
    document.LoadXml("<a xmlns='urn:d'><b xmlns=''/></a>"); // undeclared: the empty URI
    EXPECT_EQ(document.LookupNamespaceFromAlias(""), "");
}

TEST(DocumentLoad, WideTextIsTakenAs16BitUnits)
{
    const Scoped::Locale locale(LC_ALL, "C.UTF-8");
    ASSERT_TRUE(locale.IsSet());
    CXmlDocument document;
    document.LoadXml(L"<a>\x20AC\xD83D\xDE00\x1005A</a>"); // the last is U+005A in the lower half
    EXPECT_EQ(Dump(document), "a '\xE2\x82\xAC\xF0\x9F\x98\x80Z'");
}

TEST(DocumentLoad, FindsEveryOneOfManyNames)
{
    std::string strXml = "<a xmlns:p='urn:p'>";
    std::string strTree;
    for (int i = 0; i < 3000; ++i) {
        const std::string strName =
            "n" + std::string(static_cast<std::size_t>(i % 40), 'x') + std::to_string(i % 1500);
        strXml += "<p:" + strName + " " + strName + "='1'/>";
        strTree += " {urn:p}" + strName + "[" + strName + "='1']";
    }
    EXPECT_EQ(Load(strXml + "</a>"), "a (" + strTree.substr(1) + ")");
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

TEST(DocumentLoad, GoesOnInFurtherCalls)
{
    CPieceDocument document;
    document.LoadInCalls({"<a>1<b>x", "y</b>2", "3</a>"});
    EXPECT_EQ(Dump(document), "a '123' (b 'xy')");
}

TEST(DocumentLoad, CallbacksOutsideAParseActAtOnce)
{
    CXmlDocument document;
    CExpatReader reader(document);
    const char* const apszNone[] = {nullptr};
    CExpatReader::FnStartElement(&reader, "u|a", const_cast<const char**>(apszNone));
    CExpatReader::FnText(&reader, "x\ry", 3);
    document.AddChildElement("", "b");
    CExpatReader::FnStartCDATA(&reader);
    EXPECT_EQ(Dump(document), "{u}a 'xy' (b '<![CDATA[')");
}

TEST(DocumentLoad, NamesShareTheTextOfTheirNamespace)
{
    CXmlDocument document;
    document.LoadXml(("<a xmlns='" + std::string(100000, 'n') + "'><b/><c/></a>").c_str());
    const CXmlElement& root = *document.GetDocumentElement();
    EXPECT_EQ(&root.GetNamespaceURI(), &root.GetFirstElement()->GetNamespaceURI());
    EXPECT_EQ(root.GetNamespaceURI(), std::string(100000, 'n'));
}

TEST(DocumentLoad, TextWithoutAnElementFailsTheParse)
{
    CXmlDocument document;
    CExpatReader reader(document);
    reader.CreateParser();
    CExpatReader::FnStartCDATA(&reader);
    ExpectFailure<CQnInvalidStateException>([&] { reader.Parse(true); }, "No element is open.");
}

TEST(DocumentLoad, TakesInputFromItsOwnTree)
{
    CXmlDocument document;
    document.LoadXml("<a>&lt;b>/no/such/file&lt;/b></a>");
    document.LoadXml(document.GetDocumentElement()->GetText().c_str());
    EXPECT_EQ(Dump(document), "b '/no/such/file'");
    ExpectFailure<CQnException>(
        [&] { document.Load(document.GetDocumentElement()->GetText().c_str()); },
        "Failed to open the file [/no/such/file].");
}

TEST(ElementDone, ShowsElementsInnermostFirstAndRemovesThemOnDemand)
{
    static std::string strSeen;
    CXmlDocument document([](CXmlElement* pElement) {
        strSeen += pElement->GetXPath() + " " +
                   pElement->GetDocument()->GetDocumentElement()->GetText() + " ";
        return pElement->GetLocalName() != "keep"; // the answer for the root is ignored
    });
    document.LoadXml("<a>1<b><c/></b>2<keep><c/>x</keep><b/>3</a>");
    EXPECT_EQ(strSeen, "/a/b/c 1 /a/b 1 /a/keep/c 12 /a/keep 12 /a/b 12 /a 123 ");
    EXPECT_EQ(Dump(document), "a '123' (keep 'x')");
}

TEST(ElementDone, KeepsMemoryBoundedAndTimeLinear)
{
    static std::set<const void*> setAddresses;
    static int iCount = 0;
    CXmlDocument document([](CXmlElement* pElement) {
        setAddresses.insert(pElement);
        setAddresses.insert(pElement->GetAttributes().begin(), pElement->GetAttributes().end());
        return ++iCount % 2 == 0 || pElement->GetText() == "x";
    });
    const auto LoadChildren = [&](const std::string& strChild) {
        std::string strXml = "<a>";
        for (int i = 0; i < 200000; ++i)
            strXml += strChild;
        document.LoadXml((strXml + "</a>").c_str());
    };
    LoadChildren("<b c='1'>x</b>");
    EXPECT_EQ(Dump(document), "a");
    EXPECT_EQ(setAddresses.size(), 3u); // root, one child, its attribute

    // Every second child stays: taking the others off doesn't cost a walk over these.
    LoadChildren("<b/>");
    EXPECT_EQ(Dump(document).size(), 3 + 2 * 100000u); // "a (b b ...)"
}

TEST(ElementDone, ExceptionsLeaveTheLoadAsThemselves)
{
    static int iCalls;
    CXmlDocument document([](CXmlElement* pElement) -> bool {
        ++iCalls;
        if (pElement->GetLocalName() == "foreign")
            throw 42;
        if (pElement->GetLocalName() == "ours")
            throw CQnValidationException("Refused.", pElement->GetXPath());
        return false;
    });
    for (const char* pszXml : {"<a><foreign/><b/></a>", "<a><foreign></foreign>", "<foreign/>"}) {
        iCalls = 0;
        EXPECT_THROW(document.LoadXml(pszXml), int);
        EXPECT_EQ(iCalls, 1) << pszXml;
    }
    ExpectFailure<CQnValidationException>([&] { document.LoadXml("<a><ours/></a>"); }, "Refused.",
                                          "/a/ours");
    document.LoadXml("<a><b/></a>");
    EXPECT_EQ(Dump(document), "a (b)");
}
