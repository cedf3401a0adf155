// Each entry operation of a bound object, in every format, on streams and files, and the gate that
// it passes.

#include "tests/model/Entries.h"
#include "tests/model/Ship.h"
#include "tests/support/Scoped.h"
#include "tests/support/Text.h"

#include "QnXmlLib16/QnXmlLib16.h"

#include <functional>
#include <gtest/gtest.h>
#include <stdexcept>

using namespace QnXmlLib16;
using namespace QnXmlLib16Data;
using namespace Model;

namespace {

const CSerializationContext kContext;
constexpr char kNotDirect[] = "CQnException: Failed to write data to the file";

// A context that all formats read back: types have no place in JSON without their namespace.
CSerializationContext ContextForAllFormats()
{
    CSerializationContext context;
    context.SetWriteTypeAttribute(false);
    context.GetJsonContext().SetSupportRoundtrip(JsonRoundTrip_NoNamespaces);
    return context;
}

// Lets a number of operations pass and refuses the next, while it stands.
class CTestGate : public ILicenceGate
{
public:
    explicit CTestGate(int nAllowed) : m_nAllowed(nAllowed) { CLicenceGate::SetGate(this); }
    ~CTestGate() override { CLicenceGate::SetGate(nullptr); }

    void Consult() override
    {
        if (m_nAllowed-- == 0)
            throw CQnException("No licence");
    }
    void FirstObject() override
    {
        ++m_nFirst;
        throw std::runtime_error("Trial version");
    }
    std::string GetHeaderComment() override { return "made by X"; }

    int m_nAllowed;
    int m_nFirst = 0;
};

// Direct roads for XML and JSON files while it stands.
struct DirectRoad
{
    DirectRoad() { AsyncToXmlFile(true); }
    ~DirectRoad() { AsyncToXmlFile(false); }
};

struct Settings
{
    bool header = true;
    bool format = true;
    XmlEncoding encoding = XmlEncoding_UTF8;
    EOLType eol = EOLType_LF;
    CompressionType compression = CompressionType_None;
};

Settings Compressed(int iCompression)
{
    Settings settings;
    settings.compression = static_cast<CompressionType>(iCompression);
    return settings;
}

enum class Format
{
    Xml,
    Json,
    Finf
};
constexpr Format kFormats[] = {Format::Xml, Format::Json, Format::Finf};

CBinaryData ToStream(Format format, const CXmlObjectBase& object, const Settings& s,
                     const CSerializationContext& context = kContext)
{
    if (format == Format::Xml)
        return object.ToXmlStream(s.header, s.format, s.encoding, s.eol, context, s.compression);
    if (format == Format::Json)
        return object.ToJsonStream(s.format, s.encoding, s.eol, context, s.compression);
    return object.ToFastInfosetStream(s.header ? FInfoDecl_Finf : FInfoDecl_None, context,
                                      s.compression);
}

void ToFile(Format format, const CXmlObjectBase& object, const char* pszPath, const Settings& s,
            const CSerializationContext& context = kContext)
{
    if (format == Format::Xml)
        object.ToXmlFile(pszPath, s.header, s.format, s.encoding, s.eol, context, s.compression);
    else if (format == Format::Json)
        object.ToJsonFile(pszPath, s.format, s.encoding, s.eol, context, s.compression);
    else
        object.ToFastInfosetFile(pszPath, s.header ? FInfoDecl_Finf : FInfoDecl_None, context,
                                 s.compression);
}

// Native wide characters of ASCII text.
std::string Widened(const std::string& strText)
{
    const std::wstring strWide(strText.begin(), strText.end());
    return {reinterpret_cast<const char*>(strWide.data()), strWide.size() * sizeof(wchar_t)};
}

bool Exists(const Scoped::File& file)
{
    return access(file.Path(), F_OK) == 0;
}

// With a text that shrinks in every format.
CSmartPtr<CShip> MakeCompressibleShip()
{
    const CSmartPtr<CShip> pShip = MakeShip();
    pShip->m_flag.SetString(std::string(200, 'a'));
    return pShip;
}

} // namespace

TEST(EntryOperations, BringTheObjectBackIfTheGateLetsThem)
{
    const CSerializationContext context = ContextForAllFormats();
    const CSmartPtr<CShip> pShip = MakeCompressibleShip();
    const std::string strXml = pShip->ToXml(true, true, EOLType_LF, context);
    const std::wstring strWide(strXml.begin(), strXml.end());
    const Scoped::File file;
    CXmlDocument document;
    document.LoadXml(strXml.c_str());
    const CSmartPtr<CElement> pElement(new CElement(pShip.GetPtr(), nullptr));
    struct Row
    {
        int consulted; // once by each operation, and by what it calls in turn
        std::function<void(CShip& copy)> road;
    };
    std::vector<Row> rows = {
        {1, [&](CShip& copy) { copy.FromXml(strXml.c_str(), context); }},
        {1, [&](CShip& copy) { copy.FromXml(strWide.c_str(), context); }},
        {3,
         [&](CShip& copy) {
             copy.FromJson(pShip->ToJson(true, EOLType_LF, context).c_str(), context);
         }},
        {1, [&](CShip& copy) { copy.FromXmlElement(document.GetDocumentElement(), context); }},
        {3, // writes it and reads the text
         [&](CShip& copy) { copy.FromXmlElement(pElement.GetPtr(), context); }},
    };
    for (const Format format : kFormats) {
        const bool bJson = format == Format::Json;
        for (const int iCompression : {0, 1, 2}) {
            const Settings settings = Compressed(iCompression);
            rows.push_back(
                {bJson ? 3 : 2, [=, &context](CShip& copy) {
                     const CBinaryData data = ToStream(format, *pShip, settings, context);
                     bJson ? copy.FromJsonStream(data, context) : copy.FromXmlStream(data, context);
                 }});
            if (iCompression == CompressionType_ZLib)
                continue;
            rows.push_back({bJson ? 3 : 2, [=, &context, &file](CShip& copy) {
                                ToFile(format, *pShip, file.Path(), settings, context);
                                bJson ? copy.FromJsonFile(file.Path(), context)
                                      : copy.FromXmlFile(file.Path(), context);
                            }});
        }
    }
    for (const Row& row : rows) {
        SCOPED_TRACE(&row - rows.data());
        const CSmartPtr<CShip> pCopy(new CShip);
        row.road(*pCopy);
        EXPECT_EQ(pCopy->ToXml(true, true, EOLType_LF, context), strXml);
        for (int nAllowed = 0; nAllowed < row.consulted; ++nAllowed) {
            const CTestGate gate(nAllowed);
            const std::string strFailure = Failure([&] { row.road(*pCopy); });
            EXPECT_NE(strFailure.find("CQnException: No licence"), std::string::npos) << strFailure;
        }
        const CTestGate gate(row.consulted);
        row.road(*pCopy);
        EXPECT_EQ(gate.m_nAllowed, 0);
    }
}

TEST(EntryOperations, PassABuiltInGateThatLetsAllPass)
{
    ILicenceGate* const pBuiltIn = CLicenceGate::GetGate();
    pBuiltIn->Consult();
    EXPECT_EQ(pBuiltIn->GetHeaderComment(), "");
    const CSmartPtr<CLog> pLog(new CLog);
    const CSerializationContext context = ContextForAllFormats();
    const std::string strFinf = ToText(ToStream(Format::Finf, *pLog, {}));
    {
        const CTestGate gate(3);
        // Another may ask for a comment ahead of the root.
        EXPECT_EQ(pLog->ToXml(true, false, EOLType_LF, context).find("<!--made by X-->"),
                  std::string("<?xml version=\"1.0\"?>\n").size());
        EXPECT_EQ(pLog->ToJson(false, EOLType_LF, context).find("/* made by X */\n"), 1u);
        // Fast Infoset has no place for it.
        EXPECT_EQ(ToText(ToStream(Format::Finf, *pLog, {})), strFinf);
    }
    EXPECT_EQ(CLicenceGate::GetGate(), pBuiltIn);
}

TEST(LicenceGateDeathTest, HearsOfTheFirstObjectOnlyAndCanNotKeepItFromBeingMade)
{
    // Another process, in which no object has been made yet.
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(
        {
            const CTestGate gate(0);
            const CSmartPtr<CLog> pFirst(new CLog);
            const CSmartPtr<CLog> pSecond(new CLog);
            std::exit(gate.m_nFirst == 1 ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

TEST(WriterSetUp, FollowsTheArgumentsAndTheContextOnStreamsAndFiles)
{
    struct Row
    {
        bool header;
        bool format;
        EOLType eol;
        const char* indent;
        bool defaults;
        JsonRoundTrip roundTrip;
        std::string xml; // behind the declaration
        std::string json;
    };
    const Row rows[] = {
        {true, true, EOLType_LF, " ", true, JsonRoundTrip_None, "<r a=\"raw\">\n <b>7</b>\n</r>\n",
         "{\n \"r\": {\n  \"a\": \"raw\",\n  \"b\": 7\n }\n}"},
        {false, true, EOLType_CRLF, "", false, JsonRoundTrip_NoNamespaces,
         "<r a=\"raw\">\r\n<b/>\r\n</r>\r\n",
         "{\r\n\"r\": {\r\n\"@a\": \"raw\",\r\n\"b\": 7\r\n}\r\n}"},
        {false, false, EOLType_LF, " ", false, JsonRoundTrip_Full, "<r a=\"raw\"><b/></r>",
         "{\"r\": {\"@a\": \"raw\",\"b\": 7}}"},
    };
    const std::string strStart[] = {"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n", "",
                                    "<?xml encoding='finf'?>"};
    const CTables tables(
        XmlElementGroupType_Sequence, kReal, {Prim<CElementInfoSeqPrimOpt>("b", 0, it_i4, "7")},
        {new CAttributeInfoEnum("a", "", 1, true, FinishToText, TextToFinish, nullptr)});
    const CSmartPtr<CSheet> pSheet(new CSheet(tables));
    pSheet->m_values[0].SetI4(7);
    pSheet->m_values[1].SetI4(0);
    const Scoped::File file;
    for (const Row& row : rows) {
        const Settings s = {row.header, row.format, XmlEncoding_UTF8, row.eol};
        CSerializationContext context;
        context.SetIndentChars(row.indent);
        context.SetWriteDefaultElementValues(row.defaults);
        context.GetJsonContext().SetSupportRoundtrip(row.roundTrip);
        EXPECT_EQ(pSheet->ToXml(s.header, s.format, s.eol, context),
                  (s.header ? "<?xml version=\"1.0\"?>\n" : "") + row.xml);
        EXPECT_EQ(pSheet->ToJson(s.format, s.eol, context), row.json);
        for (const Format format : kFormats) {
            const std::string strBytes = ToText(ToStream(format, *pSheet, s, context));
            ToFile(format, *pSheet, file.Path(), s, context);
            EXPECT_EQ(file.Content(), strBytes);
            const std::string strDeclared = s.header ? strStart[static_cast<int>(format)] : "";
            if (format == Format::Finf)
                EXPECT_EQ(strBytes.find(strDeclared + std::string("\xE0\0", 2)), 0u);
            else
                EXPECT_EQ(strBytes, strDeclared + (format == Format::Xml ? row.xml : row.json));
        }
    }
}

TEST(WritingText, EncodesItAndMarksOnlyXmlFiles)
{
    // What the XML declaration says of each encoding; two are refused.
    const char* const declared[] = {nullptr, " encoding=\"UTF-8\"", " encoding=\"UTF-16\"", "",
                                    nullptr};
    const std::string strRefusal =
        "CQnException: Unknown Encoding, select UTF-8 (contact our support team)";
    const CSmartPtr<CLog> pLog(new CLog);
    const CSerializationContext context = ContextForAllFormats();
    for (const int iEncoding : {0, 1, 2, 3, 4}) {
        for (const Format format : {Format::Xml, Format::Json}) {
            SCOPED_TRACE(iEncoding);
            const Scoped::File target;
            std::remove(target.Path());
            Settings settings;
            settings.encoding = static_cast<XmlEncoding>(iEncoding);
            const auto stream = [&] { return ToText(ToStream(format, *pLog, settings, context)); };
            const auto file = [&] { ToFile(format, *pLog, target.Path(), settings, context); };
            const bool bWide = iEncoding == 2 || iEncoding == 3;
            const std::string strMark = bWide ? "\xff\xfe" : "";
            if (!declared[iEncoding]) {
                EXPECT_EQ(Failure(stream), strRefusal);
                EXPECT_EQ(Failure(file), strRefusal);
                EXPECT_FALSE(Exists(target));
            }
            else {
                std::string strText = pLog->ToJson(true, EOLType_LF, context);
                if (format == Format::Xml)
                    strText = std::string("<?xml version=\"1.0\"") + declared[iEncoding] + "?>\n" +
                              pLog->ToXml(false, true, EOLType_LF, context);
                const std::string strBytes = bWide ? Widened(strText) : strText;
                const std::string strFileMark = format == Format::Xml ? strMark : "";
                EXPECT_EQ(stream(), strBytes);
                file();
                EXPECT_EQ(target.Content(), strFileMark + strBytes);
                if (bWide) {
                    // The mark stands ahead of the compressed bytes, which hides them.
                    settings.compression = CompressionType_GZip;
                    file();
                    EXPECT_EQ(target.Content().find(strFileMark + "\x1f\x8b"), 0u);
                    EXPECT_THROW(pLog->FromXmlFile(target.Path(), context), CQnException);
                    settings.compression = CompressionType_None;
                }
            }
            // The direct road asks nothing of the encoding but the mark, in JSON too.
            const DirectRoad direct;
            EXPECT_EQ(Failure(file), kNotDirect);
            EXPECT_TRUE(Exists(target));
            EXPECT_EQ(target.Content(), strMark);
        }
    }
}

TEST(WritingAnyFormat, CompressesWhatShrinksAndRefusesZLibFiles)
{
    const CSmartPtr<CShip> pShip = MakeCompressibleShip();
    const CTables tables(XmlElementGroupType_Sequence, kReal, {});
    const CSmartPtr<CSheet> pShort(new CSheet(tables));
    const CSerializationContext context = ContextForAllFormats();
    const Scoped::File target;
    for (const Format format : kFormats) {
        SCOPED_TRACE(static_cast<int>(format));
        const auto stream = [&](int iCompression) {
            return ToText(ToStream(format, *pShip, Compressed(iCompression), context));
        };
        const auto file = [&](int iCompression) {
            ToFile(format, *pShip, target.Path(), Compressed(iCompression), context);
            return target.Content();
        };
        const std::string strPlain = stream(0);
        const std::string strGZip = stream(1);
        const std::string strZLib = stream(2);
        EXPECT_EQ(strGZip.substr(0, 2), "\x1f\x8b");
        EXPECT_EQ(strZLib.substr(0, 1), "\x78");
        EXPECT_LT(strGZip.size(), strPlain.size());
        EXPECT_LT(strZLib.size(), strPlain.size());
        EXPECT_EQ(stream(3), strPlain); // no compression by that number
        EXPECT_EQ(file(0), strPlain);
        for (const bool bDirect : {false, true}) {
            AsyncToXmlFile(bDirect); // whatever asks for compression goes through memory
            EXPECT_EQ(file(1), strGZip);
            EXPECT_EQ(file(3), strPlain);
            // ZLib is refused ahead of the gate, and no file is touched.
            const CTestGate gate(0);
            EXPECT_EQ(Failure([&] { file(2); }),
                      "CQnException: ZLIB Compression only available for To Stream methods.");
            EXPECT_EQ(target.Content(), strPlain);
        }
        AsyncToXmlFile(false);
        const std::string strFailure = "CQnException: Failed to compress data. [Error Code: ";
        const auto shortStream = [&] { ToStream(format, *pShort, Compressed(1)); };
        const auto shortFile = [&] { ToFile(format, *pShort, target.Path(), Compressed(1)); };
        EXPECT_EQ(Failure(shortStream).find(strFailure), 0u);
        EXPECT_EQ(Failure(shortFile).find(strFailure), 0u);
        EXPECT_EQ(target.Content(), strPlain);
    }
}

TEST(WritingFiles, TheDirectRoadOpensTheFileAheadOfTheSettings)
{
    const CSmartPtr<CShip> pShip = MakeShip();
    const CSerializationContext context = ContextForAllFormats();
    Settings badEol;
    badEol.eol = static_cast<EOLType>(2);
    const Scoped::File target;
    for (const Format format : {Format::Xml, Format::Json}) {
        for (const bool bDirect : {false, true}) {
            const auto file = [&] { ToFile(format, *pShip, target.Path(), badEol); };
            AsyncToXmlFile(bDirect);
            std::ofstream(target.Path()) << "old";
            EXPECT_EQ(Failure(file), "CQnException: Invalid EOL type.");
            EXPECT_EQ(target.Content(), bDirect ? "" : "old");
            EXPECT_EQ(Failure([&] { ToFile(format, *pShip, "/no/such/folder/x", {}, context); }),
                      "CQnException: Failed to write data to the file [/no/such/folder/x].");
            std::remove(target.Path());
            const CTestGate gate(0);
            EXPECT_EQ(Failure(file), "CQnException: No licence");
            EXPECT_FALSE(Exists(target));
        }
    }
    AsyncToXmlFile(false);
}

TEST(Reading, ReportsWhatIsNoDocumentAndCanReadAgain)
{
    const std::string strXml = MakeShip()->ToXml(true, true, EOLType_LF, kContext);
    const Scoped::File file;
    const CSmartPtr<CShip> pShip(new CShip);
    for (std::string strContent :
         {std::string(), strXml.substr(0, strXml.size() / 2), std::string("\0\1\2\3", 4)}) {
        SCOPED_TRACE(strContent);
        std::ofstream(file.Path()) << strContent;
        EXPECT_THROW(pShip->FromXmlFile(file.Path(), kContext), CQnException);
        auto* const pBytes = reinterpret_cast<unsigned char*>(&strContent[0]);
        EXPECT_THROW(pShip->FromXmlStream(pBytes, strContent.size(), kContext), CQnException);
        EXPECT_THROW(pShip->FromXml(strContent.c_str(), kContext), CQnException);
    }
    EXPECT_THROW(pShip->FromXml(static_cast<const char*>(nullptr), kContext), CQnException);
    EXPECT_THROW(pShip->FromXml(static_cast<const wchar_t*>(nullptr), kContext), CQnException);
    EXPECT_THROW(pShip->FromXmlStream(CBinaryData(), kContext), CQnException);
    EXPECT_THROW(pShip->FromXmlFile(nullptr, kContext), CQnException);
    EXPECT_THROW(pShip->FromJson(L"{\"ship\": 1}", kContext), CQnException);
    const CElement* const pNoContent = nullptr;
    const CXmlElement* const pNoElement = nullptr;
    const std::string strNull = "CQnInvalidParamException: The element may not be NULL";
    EXPECT_EQ(Failure([&] { pShip->FromXmlElement(pNoElement, kContext); }), strNull);
    EXPECT_EQ(Failure([&] { pShip->FromXmlElement(pNoContent, kContext); }), strNull);
    pShip->FromXml(strXml.c_str(), kContext);
    EXPECT_EQ(pShip->ToXml(true, true, EOLType_LF, kContext), strXml);
}

TEST(Reading, WritesTheTextOfAWildcardInTheDefaultContext)
{
    // The caller's context can't reach the writing of the text: its default namespace would bind
    // the log's elements. Its relaxations reach the reading.
    CSerializationContext context;
    context.SetDefaultNamespaceURI("urn:ship");
    const CSmartPtr<CElement> pElement(new CElement("log"));
    pElement->GetAttributes()->Add("unknown", "1", "");
    pElement->SetText("3");
    const CSmartPtr<CLog> pLog(new CLog);
    EXPECT_THROW(pLog->FromXmlElement(pElement.GetPtr(), context), CQnException);
    context.SetIgnoreUnknownAttributes(true);
    pLog->FromXmlElement(pElement.GetPtr(), context);
    EXPECT_EQ(pLog->m_value.GetI4(), 3);
}

TEST(ReadingJson, TheFlagStaysWhereTheRoundTripValueChangesMeanwhile)
{
    const CTables tables(XmlElementGroupType_Sequence, kReal,
                         {Prim<CElementInfoSeqPrimOpt>("a", 0)});
    const CSmartPtr<CSheet> pSheet(new CSheet(tables));
    for (const JsonRoundTrip roundTrip :
         {JsonRoundTrip_None, JsonRoundTrip_NoNamespaces, JsonRoundTrip_Full}) {
        CSerializationContext context;
        context.GetJsonContext().SetSupportRoundtrip(roundTrip);
        bool bIgnored = false;
        pSheet->m_before = [&](int, bool) {
            bIgnored = context.GetIgnoreNamespaces();
            context.GetJsonContext().SetSupportRoundtrip(JsonRoundTrip_Full);
        };
        pSheet->FromJson("{\"r\": {\"a\": \"x\"}}", context);
        EXPECT_EQ(bIgnored, roundTrip != JsonRoundTrip_Full);
        EXPECT_EQ(context.GetIgnoreNamespaces(), bIgnored);
    }
    for (const bool bBefore : {false, true}) {
        CSerializationContext context = ContextForAllFormats();
        context.SetIgnoreNamespaces(bBefore);
        pSheet->m_before = [](int, bool) { throw std::runtime_error("out of order"); };
        EXPECT_THROW(pSheet->FromJson("{\"r\": {\"a\": \"x\"}}", context), std::runtime_error);
        EXPECT_EQ(context.GetIgnoreNamespaces(), bBefore);
    }
}
