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
    const CTables tables(XmlElementGroupType_Sequence, kReal,
                         {Prim<CElementInfoSeqPrimOpt>("b", 0, it_i4, "7")},
                         {EnumAttribute("a", 1, true)});
    const CSmartPtr<CSheet> pSheet(new CSheet(tables));
    pSheet->m_values[0].SetI4(7);
    pSheet->m_values[1].SetI4(0);
    CSerializationContext context;
    context.SetIndentChars(" ");
    context.SetWriteDefaultElementValues(true);
    context.GetJsonContext().SetSupportRoundtrip(JsonRoundTrip_NoNamespaces);
    const std::string strXml = "<r a=\"raw\">\r\n <b>7</b>\r\n</r>\r\n";
    const std::string strJson = "{\r\n \"r\": {\r\n  \"@a\": \"raw\",\r\n  \"b\": 7\r\n }\r\n}";
    const std::string strFinf = "<?xml encoding='finf'?>";
    Settings s;
    s.eol = EOLType_CRLF;
    const Scoped::File file;
    for (const bool bHeader : {true, false}) {
        s.header = bHeader;
        EXPECT_EQ(pSheet->ToXml(s.header, s.format, s.eol, context),
                  (bHeader ? "<?xml version=\"1.0\"?>\r\n" : "") + strXml);
        EXPECT_EQ(pSheet->ToJson(s.format, s.eol, context), strJson);
        for (const Format format : kFormats) {
            const std::string strBytes = ToText(ToStream(format, *pSheet, s, context));
            ToFile(format, *pSheet, file.Path(), s, context);
            EXPECT_EQ(file.Content(), strBytes);
            if (format == Format::Finf)
                EXPECT_EQ(strBytes.find(strFinf) == 0, bHeader);
            else if (format == Format::Json)
                EXPECT_EQ(strBytes, strJson);
            else
                EXPECT_EQ(strBytes,
                          (bHeader ? "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n" : "") +
                              strXml);
        }
    }
}

TEST(WritingText, EncodesItAndMarksOnlyXmlFiles)
{
    // What the XML declaration says of each encoding; one is refused.
    const char* const declared[] = {nullptr, " encoding=\"UTF-8\"", " encoding=\"UTF-16\"", ""};
    const std::string strRefusal =
        "CQnException: Unknown Encoding, select UTF-8 (contact our support team)";
    const CSmartPtr<CLog> pLog(new CLog);
    const CSerializationContext context = ContextForAllFormats();
    const Scoped::File target;
    for (const Format format : {Format::Xml, Format::Json}) {
        for (const int iEncoding : {0, 1, 2, 3}) {
            SCOPED_TRACE(iEncoding);
            Settings settings;
            settings.encoding = static_cast<XmlEncoding>(iEncoding);
            const auto stream = [&] { return ToText(ToStream(format, *pLog, settings, context)); };
            const auto file = [&] { ToFile(format, *pLog, target.Path(), settings, context); };
            if (!declared[iEncoding]) {
                std::remove(target.Path());
                EXPECT_EQ(Failure(stream), strRefusal);
                EXPECT_EQ(Failure(file), strRefusal);
                EXPECT_FALSE(Exists(target));
                continue;
            }
            std::string strBytes = format == Format::Json
                                       ? pLog->ToJson(true, EOLType_LF, context)
                                       : std::string("<?xml version=\"1.0\"") +
                                             declared[iEncoding] + "?>\n" +
                                             pLog->ToXml(false, true, EOLType_LF, context);
            std::string strMark;
            if (iEncoding != XmlEncoding_UTF8) { // native wide characters
                const std::wstring strWide(strBytes.begin(), strBytes.end());
                strBytes.assign(reinterpret_cast<const char*>(strWide.data()),
                                strWide.size() * sizeof(wchar_t));
                strMark = format == Format::Xml ? "\xff\xfe" : "";
            }
            EXPECT_EQ(stream(), strBytes);
            file();
            EXPECT_EQ(target.Content(), strMark + strBytes);
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
        };
        EXPECT_EQ(stream(1).substr(0, 2), "\x1f\x8b");
        EXPECT_EQ(stream(2).substr(0, 1), "\x78");
        EXPECT_EQ(stream(3), stream(0)); // no compression by that number
        for (const bool bDirect : {false, true}) {
            AsyncToXmlFile(bDirect); // whatever asks for compression goes through memory
            file(1);
            EXPECT_EQ(target.Content(), stream(1));
            // ZLib is refused ahead of the gate, and no file is touched.
            const CTestGate gate(0);
            EXPECT_EQ(Failure([&] { file(2); }),
                      "CQnException: ZLIB Compression only available for To Stream methods.");
        }
        AsyncToXmlFile(false);
        const auto shortFile = [&] { ToFile(format, *pShort, target.Path(), Compressed(1)); };
        EXPECT_EQ(Failure(shortFile).find("CQnException: Failed to compress data. [Error Code: "),
                  0u);
        EXPECT_EQ(target.Content(), stream(1));
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
        // Its first text fails.
        EXPECT_EQ(Failure([&] { ToFile(format, *pShip, target.Path(), {}, context); }),
                  "CQnException: Failed to write data to the file");
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
}
