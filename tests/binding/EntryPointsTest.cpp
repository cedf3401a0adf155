#include "tests/model/Failure.h"
#include "tests/model/Probe.h"
#include "tests/model/Ship.h"

#include "QnXmlLib16/binding/SerializationContext.h"
#include "QnXmlLib16/collections/Element.h"
#include "QnXmlLib16/fastinfoset/FastInfosetWriter.h"
#include "QnXmlLib16/json/JsonContext.h"
#include "QnXmlLib16/json/JsonTextWriter.h"
#include "QnXmlLib16/support/QnZip.h"
#include "QnXmlLib16/values/BinaryData.h"
#include "QnXmlLib16/xml/XmlDocument.h"
#include "QnXmlLib16/xml/XmlElement.h"
#include "QnXmlLib16/xml/XmlTextWriter.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <iterator>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>

using namespace QnXmlLib16;
using Model::CProbe;
using Model::CShip;
using Model::ExpectFailure;

namespace {

const CSerializationContext kContext;

// A path of this test's own, removed when it is done.
class CTempPath
{
public:
    explicit CTempPath(const char* pszName)
        : m_strPath(testing::TempDir() + "qnxml." + std::to_string(getpid()) + "." + pszName)
    {}
    ~CTempPath() { Remove(); }

    const char* Get() const { return m_strPath.c_str(); }
    void Remove() const { std::remove(m_strPath.c_str()); }
    bool Exists() const { return access(Get(), F_OK) == 0; }
    std::string Content() const
    {
        std::ifstream file(m_strPath, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    void Fill(const std::string& strContent) const
    {
        std::ofstream(m_strPath, std::ios::binary) << strContent;
    }

private:
    std::string m_strPath;
};

std::string Write(const CShip& ship)
{
    return ship.ToXml(true, true, EOLType_CRLF, kContext);
}

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

// A format with its roads to a stream and to a file.
struct Format
{
    const char* name;
    CBinaryData (*stream)(const CXmlObjectBase& object, const Settings& s,
                          const CSerializationContext& context);
    void (*file)(const CXmlObjectBase& object, const char* pszPath, const Settings& s,
                 const CSerializationContext& context);
};

const Format kXml = {
    "XML",
    [](const CXmlObjectBase& object, const Settings& s, const CSerializationContext& context) {
        return object.ToXmlStream(s.header, s.format, s.encoding, s.eol, context, s.compression);
    },
    [](const CXmlObjectBase& object, const char* pszPath, const Settings& s,
       const CSerializationContext& context) {
        object.ToXmlFile(pszPath, s.header, s.format, s.encoding, s.eol, context, s.compression);
    }};
const Format kJson = {
    "JSON",
    [](const CXmlObjectBase& object, const Settings& s, const CSerializationContext& context) {
        return object.ToJsonStream(s.format, s.encoding, s.eol, context, s.compression);
    },
    [](const CXmlObjectBase& object, const char* pszPath, const Settings& s,
       const CSerializationContext& context) {
        object.ToJsonFile(pszPath, s.format, s.encoding, s.eol, context, s.compression);
    }};
const Format kFinf = {
    "Fast Infoset",
    [](const CXmlObjectBase& object, const Settings& s, const CSerializationContext& context) {
        return object.ToFastInfosetStream(FInfoDecl_Finf, context, s.compression);
    },
    [](const CXmlObjectBase& object, const char* pszPath, const Settings& s,
       const CSerializationContext& context) {
        object.ToFastInfosetFile(pszPath, FInfoDecl_Finf, context, s.compression);
    }};

std::string ToText(const CBinaryData& data)
{
    return {reinterpret_cast<const char*>(data.GetData()), data.GetLength()};
}

std::string Decompressed(const std::string& strBytes)
{
    unsigned long nLength = strBytes.size();
    auto* pBytes = new unsigned char[nLength];
    std::copy(strBytes.begin(), strBytes.end(), pBytes);
    CQnZip::Decompress(&pBytes, &nLength);
    return ToText(CBinaryData(pBytes, nLength, true));
}

// Native wide characters of ASCII text.
std::string Widened(const std::string& strText)
{
    const std::wstring strWide(strText.begin(), strText.end());
    return {reinterpret_cast<const char*>(strWide.data()), strWide.size() * sizeof(wchar_t)};
}

// Types have no place in JSON without their namespace.
CSerializationContext ContextForAllFormats()
{
    CSerializationContext context;
    context.SetWriteTypeAttribute(false);
    return context;
}

} // namespace

TEST(BoundObject, ComesBackOverEveryRoad)
{
    const CSmartPtr<CShip> pShip = Model::MakeShip();
    const std::string strXml = Write(*pShip);
    const CTempPath path("ship");
    CXmlDocument document;
    document.LoadXml(strXml.c_str());
    CSerializationContext json;
    json.GetJsonContext().SetSupportRoundtrip(JsonRoundTrip_NoNamespaces);
    const std::string strJson = pShip->ToJson(true, EOLType_LF, json);

    struct Row
    {
        const char* name;
        std::function<void(CShip&)> road;
    };
    const Row rows[] = {
        {"text", [&](CShip& copy) { copy.FromXml(strXml.c_str(), kContext); }},
        {"wide text",
         [&](CShip& copy) {
             copy.FromXml(std::wstring(strXml.begin(), strXml.end()).c_str(), kContext);
         }},
        {"stream",
         [&](CShip& copy) {
             copy.FromXmlStream(pShip->ToXmlStream(true, true, XmlEncoding_UTF8, EOLType_LF,
                                                   kContext, CompressionType_None),
                                kContext);
         }},
        {"file",
         [&](CShip& copy) {
             pShip->ToXmlFile(path.Get(), true, false, XmlEncoding_UTF8, EOLType_LF, kContext,
                              CompressionType_None);
             copy.FromXmlFile(path.Get(), kContext);
         }},
        {"stream, gzip",
         [&](CShip& copy) {
             copy.FromXmlStream(pShip->ToXmlStream(true, true, XmlEncoding_UTF8, EOLType_LF,
                                                   kContext, CompressionType_GZip),
                                kContext);
         }},
        {"file, gzip",
         [&](CShip& copy) {
             pShip->ToXmlFile(path.Get(), true, false, XmlEncoding_UTF8, EOLType_LF, kContext,
                              CompressionType_GZip);
             copy.FromXmlFile(path.Get(), kContext);
         }},
        {"JSON", [&](CShip& copy) { copy.FromJson(strJson.c_str(), json); }},
        {"JSON stream",
         [&](CShip& copy) { copy.FromJsonStream(CBinaryData(strJson.c_str()), json); }},
        {"JSON file",
         [&](CShip& copy) {
             pShip->ToJsonFile(path.Get(), true, XmlEncoding_UTF8, EOLType_LF, json,
                               CompressionType_GZip);
             copy.FromJsonFile(path.Get(), json);
         }},
        {"Fast Infoset stream",
         [&](CShip& copy) {
             copy.FromXmlStream(
                 pShip->ToFastInfosetStream(FInfoDecl_None, kContext, CompressionType_None),
                 kContext);
         }},
        {"Fast Infoset file",
         [&](CShip& copy) {
             pShip->ToFastInfosetFile(path.Get(), FInfoDecl_None, kContext, CompressionType_GZip);
             copy.FromXmlFile(path.Get(), kContext);
         }},
        {"element",
         [&](CShip& copy) { copy.FromXmlElement(document.GetDocumentElement(), kContext); }},
        {"wildcard content",
         [&](CShip& copy) {
             const CSmartPtr<CElement> pElement(new CElement(pShip.GetPtr(), nullptr));
             copy.FromXmlElement(pElement.GetPtr(), kContext);
         }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const CSmartPtr<CShip> pCopy(new CShip);
        row.road(*pCopy);
        EXPECT_EQ(Write(*pCopy), strXml);
    }
}

// Each format takes its settings from its arguments and the context, on the direct road too.
TEST(WriterSetUp, IsTheSameOnEveryRoadOfAFormat)
{
    const CTempPath path("setup");
    CProbe probe(XmlElementGroupType_Sequence);
    CXmlWriter* pSeen = nullptr;
    std::function<void()> check;
    probe.AddElement(std::make_unique<Model::CScriptInfo>("a")).m_write = [&](CXmlWriter& writer) {
        pSeen = &writer;
        check();
        return true;
    };
    for (const bool b : {false, true}) {
        const Settings settings = {b, b, XmlEncoding_UTF8, b ? EOLType_LF : EOLType_CRLF,
                                   CompressionType_None};
        CSerializationContext context;
        context.SetIndentChars(b ? " " : "");
        context.SetWriteDefaultElementValues(b);
        context.GetJsonContext().SetSupportRoundtrip(b ? JsonRoundTrip_None : JsonRoundTrip_Full);
        const auto expectText = [&](const auto* pWriter) {
            ASSERT_NE(pWriter, nullptr);
            EXPECT_EQ(pWriter->GetFormat(), settings.format);
            EXPECT_EQ(pWriter->GetEOLType(), settings.eol);
            EXPECT_EQ(pWriter->GetIndentChars(), context.GetIndentChars());
        };
        const auto expectXml = [&] {
            const auto* const pWriter = dynamic_cast<CXmlTextWriter*>(pSeen);
            expectText(pWriter);
            EXPECT_EQ(pWriter->GetWriteDefaultElementValues(), b);
        };
        const auto expectJson = [&] {
            const auto* const pWriter = dynamic_cast<CJsonTextWriter*>(pSeen);
            expectText(pWriter);
            EXPECT_EQ(pWriter->GetSupportRoundtrip(),
                      context.GetJsonContext().GetSupportRoundtrip());
        };
        const auto expectFinf = [&] {
            EXPECT_NE(dynamic_cast<CFastInfosetWriter*>(pSeen), nullptr);
        };
        int nChecked = 0;
        const auto expectOn = [&](const std::function<void()>& expectation) {
            check = [&nChecked, expectation] {
                ++nChecked;
                expectation();
            };
        };

        expectOn(expectXml);
        const std::string strXml = probe.ToXml(b, b, settings.eol, context);
        EXPECT_EQ(strXml.find("<?xml") == 0, b);
        expectOn(expectJson);
        const std::string strJson = probe.ToJson(b, settings.eol, context);
        EXPECT_EQ(strJson, b ? "{\n \"probe\": \n}" : "{\"probe\": }");
        const std::pair<const Format*, std::function<void()>> formats[] = {
            {&kXml, expectXml}, {&kJson, expectJson}, {&kFinf, expectFinf}};
        for (const auto& [pFormat, expectation] : formats) {
            SCOPED_TRACE(pFormat->name);
            expectOn(expectation);
            const std::string strBytes = ToText(pFormat->stream(probe, settings, context));
            pFormat->file(probe, path.Get(), settings, context);
            EXPECT_EQ(path.Content(), strBytes);
            const std::string strDeclaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";
            EXPECT_EQ(strBytes.substr(0, strDeclaration.size()) == strDeclaration,
                      b && pFormat == &kXml);
            EXPECT_EQ(strBytes == strJson, pFormat == &kJson);

            const DirectRoad direct;
            const auto file = [&, p = pFormat] { p->file(probe, path.Get(), settings, context); };
            if (pFormat == &kFinf) // has none
                file();
            else
                ExpectFailure<CQnException>(file, "Failed to write data to the file");
        }
        EXPECT_EQ(nChecked, 11);
    }
}

TEST(WritingText, EncodesItAndMarksOnlyXmlFiles)
{
    struct Row
    {
        int encoding;
        const char* declared;
        bool wide;
        bool refused;
    };
    const Row rows[] = {{0, "", false, true},
                        {1, " encoding=\"UTF-8\"", false, false},
                        {2, " encoding=\"UTF-16\"", true, false},
                        {3, "", true, false},
                        {4, "", false, true}};
    const CSmartPtr<Model::CLog> pLog(new Model::CLog);
    const CSerializationContext context = ContextForAllFormats();
    const CTempPath path("text");
    for (const Row& row : rows) {
        SCOPED_TRACE(row.encoding);
        Settings settings;
        settings.encoding = static_cast<XmlEncoding>(row.encoding);
        const std::string strMark = row.wide ? "\xff\xfe" : "";
        const std::string strXml = "<?xml version=\"1.0\"" + std::string(row.declared) + "?>\n" +
                                   pLog->ToXml(false, true, EOLType_LF, context);
        const std::string strJson = pLog->ToJson(true, EOLType_LF, context);
        for (const Format* const pFormat : {&kXml, &kJson}) {
            SCOPED_TRACE(pFormat->name);
            const auto stream = [&] { return ToText(pFormat->stream(*pLog, settings, context)); };
            const auto file = [&] { pFormat->file(*pLog, path.Get(), settings, context); };
            settings.compression = CompressionType_None;
            if (row.refused) {
                const char* const pszRefusal =
                    "Unknown Encoding, select UTF-8 (contact our support team)";
                ExpectFailure<CQnException>(stream, pszRefusal);
                ExpectFailure<CQnException>(file, pszRefusal);
                EXPECT_FALSE(path.Exists());
            }
            else {
                const std::string& strText = pFormat == &kXml ? strXml : strJson;
                const std::string strBytes = row.wide ? Widened(strText) : strText;
                EXPECT_EQ(stream(), strBytes);
                const std::string strMemoryMark = pFormat == &kXml ? strMark : "";
                file();
                EXPECT_EQ(path.Content(), strMemoryMark + strBytes);
                if (row.wide) {
                    // The mark stands ahead of the compressed bytes, which hides them.
                    settings.compression = CompressionType_GZip;
                    file();
                    const std::string strFile = path.Content();
                    EXPECT_EQ(strFile.substr(0, strMemoryMark.size()), strMemoryMark);
                    EXPECT_EQ(Decompressed(strFile.substr(strMemoryMark.size())), strBytes);
                    EXPECT_THROW(pLog->FromXmlFile(path.Get(), context), CQnException);
                    settings.compression = CompressionType_None;
                }
            }

            // The direct road asks nothing of the encoding but the mark, in JSON too.
            {
                const DirectRoad direct;
                ExpectFailure<CQnException>(file, "Failed to write data to the file");
                EXPECT_TRUE(path.Exists());
                EXPECT_EQ(path.Content(), strMark);
            }
            path.Remove();
        }
    }
}

TEST(WritingAnyFormat, CompressesStreamsAndFiles)
{
    const CSmartPtr<CShip> pShip = Model::MakeShip();
    pShip->m_flag.SetString(std::string(200, 'a')); // shrinks in every format
    const CSerializationContext context = ContextForAllFormats();
    const CTempPath path("zip");
    for (const Format* const pFormat : {&kXml, &kJson, &kFinf}) {
        SCOPED_TRACE(pFormat->name);
        const auto with = [](int iCompression) {
            Settings settings;
            settings.compression = static_cast<CompressionType>(iCompression);
            return settings;
        };
        const auto stream = [&](int iCompression) {
            return ToText(pFormat->stream(*pShip, with(iCompression), context));
        };
        const auto file = [&](int iCompression) {
            pFormat->file(*pShip, path.Get(), with(iCompression), context);
            return path.Content();
        };
        const std::string strPlain = stream(0);
        const std::string strGZip = stream(1);
        const std::string strZLib = stream(2);
        EXPECT_EQ(strGZip.substr(0, 2), "\x1f\x8b");
        EXPECT_EQ(strZLib.substr(0, 1), "\x78");
        for (const std::string& strBytes : {strGZip, strZLib}) {
            EXPECT_LT(strBytes.size(), strPlain.size());
            EXPECT_EQ(Decompressed(strBytes), strPlain);
        }
        EXPECT_EQ(stream(3), strPlain); // no compression by that number
        EXPECT_EQ(file(0), strPlain);
        EXPECT_EQ(file(1), strGZip);
        EXPECT_EQ(file(3), strPlain);
        // Whatever asks for compression goes through memory.
        const DirectRoad direct;
        EXPECT_EQ(file(1), strGZip);
        EXPECT_EQ(file(3), strPlain);
    }
}

TEST(WritingAnyFormat, FailsWhereCompressionDoesNotShrink)
{
    const CProbe probe(XmlElementGroupType_Sequence);
    const CTempPath path("short");
    path.Fill("old");
    for (const Format* const pFormat : {&kXml, &kJson, &kFinf}) {
        SCOPED_TRACE(pFormat->name);
        Settings settings;
        settings.compression = CompressionType_GZip;
        for (const bool bFile : {false, true}) {
            try {
                if (bFile)
                    pFormat->file(probe, path.Get(), settings, kContext);
                else
                    pFormat->stream(probe, settings, kContext);
                ADD_FAILURE();
            }
            catch (const CQnException& e) {
                EXPECT_EQ(e.GetMessage().find("Failed to compress data. [Error Code: "), 0u);
            }
        }
        EXPECT_EQ(path.Content(), "old");
    }
}

TEST(WritingAnyFormat, PutsIntoAFileWhatItsOwnStreamOperationGives)
{
    class COwnStreams : public CProbe
    {
    public:
        COwnStreams() : CProbe(XmlElementGroupType_Sequence) {}
        CBinaryData ToXmlStream(bool, bool, XmlEncoding, EOLType, const CSerializationContext&,
                                CompressionType) const override
        {
            return CBinaryData("XML");
        }
        CBinaryData ToJsonStream(bool, XmlEncoding, EOLType, const CSerializationContext&,
                                 CompressionType) const override
        {
            return CBinaryData("JSON");
        }
        CBinaryData ToFastInfosetStream(FInfoDecl, const CSerializationContext&,
                                        CompressionType) const override
        {
            return CBinaryData("Fast Infoset");
        }
    };
    const COwnStreams object;
    const CTempPath path("own");
    for (const Format* const pFormat : {&kXml, &kJson, &kFinf}) {
        pFormat->file(object, path.Get(), {}, kContext);
        EXPECT_EQ(path.Content(), pFormat->name);
    }
}

TEST(WritingXml, FollowsItsArguments)
{
    const CSmartPtr<Model::CLog> pLog(new Model::CLog);
    CSerializationContext context;
    context.SetWriteTypeAttribute(false);
    context.SetIndentChars("  ");
    EXPECT_EQ(pLog->ToXml(true, false, EOLType_LF, context),
              "<?xml version=\"1.0\"?>\n<AA:log xmlns:AA=\"urn:ship\">0</AA:log>");
    const CSmartPtr<CShip> pShip = Model::MakeShip();
    EXPECT_NE(pShip->ToXml(false, true, EOLType_CRLF, context).find(">\r\n  <AA:tons>600"),
              std::string::npos);
    pShip->m_tons.SetI4(100); // the default
    EXPECT_NE(pShip->ToXml(false, true, EOLType_LF, context).find("<AA:tons/>"), std::string::npos);
    context.SetWriteDefaultElementValues(true);
    EXPECT_NE(pShip->ToXml(false, true, EOLType_LF, context).find("<AA:tons>100"),
              std::string::npos);
    ExpectFailure<CQnException>(
        [&] { pShip->ToXml(false, true, static_cast<EOLType>(2), context); }, "Invalid EOL type.");
    ExpectFailure<CQnException>(
        [&] {
            pShip->ToXmlStream(false, true, XmlEncoding_None, EOLType_LF, context,
                               CompressionType_None);
        },
        "Unknown Encoding, select UTF-8 (contact our support team)");
}

TEST(WritingFastInfoset, BeginsWithTheDeclarationAskedFor)
{
    const CSmartPtr<CShip> pShip = Model::MakeShip();
    for (const bool bDeclared : {false, true}) {
        const std::string strStart =
            (bDeclared ? "<?xml encoding='finf'?>" : "") + std::string("\xE0\0\0\1\0", 5);
        const std::string strBytes = ToText(pShip->ToFastInfosetStream(
            bDeclared ? FInfoDecl_Finf : FInfoDecl_None, kContext, CompressionType_None));
        EXPECT_EQ(strBytes.substr(0, strStart.size()), strStart);
    }
}

TEST(WritingFiles, RefuseZLibAndLeaveNoFile)
{
    const CSmartPtr<CShip> pShip = Model::MakeShip();
    const CTempPath path("zlib");
    for (const bool bDirect : {false, true}) {
        AsyncToXmlFile(bDirect);
        for (const auto& action : {std::function<void()>([&] {
                                       pShip->ToXmlFile(path.Get(), true, true, XmlEncoding_UTF8,
                                                        EOLType_LF, kContext, CompressionType_ZLib);
                                   }),
                                   std::function<void()>([&] {
                                       pShip->ToJsonFile(path.Get(), true, XmlEncoding_UTF8,
                                                         EOLType_LF, kContext,
                                                         CompressionType_ZLib);
                                   }),
                                   std::function<void()>([&] {
                                       pShip->ToFastInfosetFile(path.Get(), FInfoDecl_None,
                                                                kContext, CompressionType_ZLib);
                                   })}) {
            ExpectFailure<CQnException>(action,
                                        "ZLIB Compression only available for To Stream methods.");
            EXPECT_FALSE(path.Exists());
        }
    }
    AsyncToXmlFile(false);
}

TEST(WritingFiles, TheDirectRoadOpensTheFileAheadOfTheSettings)
{
    const CSmartPtr<CShip> pShip = Model::MakeShip();
    const CTempPath path("direct");
    AsyncFromXmlFile(true); // no effect on anything
    Settings settings;
    settings.eol = static_cast<EOLType>(2);
    for (const Format* const pFormat : {&kXml, &kJson}) {
        SCOPED_TRACE(pFormat->name);
        const auto file = [&] { pFormat->file(*pShip, path.Get(), settings, kContext); };
        ExpectFailure<CQnException>(file, "Invalid EOL type.");
        EXPECT_FALSE(path.Exists());
        {
            const DirectRoad direct;
            ExpectFailure<CQnException>(file, "Invalid EOL type.");
            EXPECT_TRUE(path.Exists());
            ExpectFailure<CQnException>(
                [&] { pFormat->file(*pShip, "/no/such/folder/x", settings, kContext); },
                "Failed to write data to the file [/no/such/folder/x].");
        }
        path.Remove();
    }
    AsyncFromXmlFile(false);
}

TEST(WritingFiles, AFailureInMemoryLeavesTheFileAsItWas)
{
    const CSmartPtr<CShip> pShip = Model::MakeShip();
    pShip->m_name.SetInvalid();
    const CTempPath path("kept");
    path.Fill("old");
    EXPECT_THROW(pShip->ToXmlFile(path.Get(), true, true, XmlEncoding_UTF8, EOLType_LF, kContext,
                                  CompressionType_None),
                 CQnValidationException);
    EXPECT_EQ(path.Content(), "old");
    ExpectFailure<CQnException>(
        [&] {
            Model::MakeShip()->ToXmlFile("/no/such/folder/x", true, true, XmlEncoding_UTF8,
                                         EOLType_LF, kContext, CompressionType_None);
        },
        "Failed to write data to the file [/no/such/folder/x].");
}

TEST(ReadingFiles, ReportsWhatIsNoDocumentAndCanReadAgain)
{
    const std::string strXml = Write(*Model::MakeShip());
    const CTempPath missing("missing");
    const CTempPath fifo("fifo");
    ASSERT_EQ(mkfifo(fifo.Get(), 0600), 0);
    const CTempPath file("file");
    const CSmartPtr<CShip> pShip(new CShip);
    const auto read = [&](const char* pszPath) {
        return [&pShip, pszPath] { pShip->FromXmlFile(pszPath, kContext); };
    };

    ExpectFailure<CQnException>(read(missing.Get()),
                                "Failed to open the file [" + std::string(missing.Get()) + "].");
    for (const char* const pszPath : {"/", fifo.Get()})
        ExpectFailure<CQnException>(read(pszPath), "Failed to get the size of the file [" +
                                                       std::string(pszPath) + "] Error [0]");
    const std::string contents[] = {
        "",
        "no markup",
        strXml.substr(0, strXml.size() / 2),
        std::string("\0\1\2\3", 4),
        "<ship id='1' flag='\xff\xfe'/>",
    };
    for (const std::string& strContent : contents) {
        SCOPED_TRACE(strContent);
        file.Fill(strContent);
        EXPECT_THROW(read(file.Get())(), CQnException);
        std::string strBytes = strContent;
        EXPECT_THROW(pShip->FromXmlStream(reinterpret_cast<unsigned char*>(&strBytes[0]),
                                          strBytes.size(), kContext),
                     CQnException);
        EXPECT_THROW(pShip->FromXml(strBytes.c_str(), kContext), CQnException);
    }
    EXPECT_THROW(pShip->FromXml(static_cast<const char*>(nullptr), kContext), CQnException);
    EXPECT_THROW(pShip->FromXml(static_cast<const wchar_t*>(nullptr), kContext), CQnException);
    EXPECT_THROW(pShip->FromXmlStream(nullptr, 0, kContext), CQnException);
    EXPECT_THROW(pShip->FromXmlStream(CBinaryData(), kContext), CQnException);
    EXPECT_THROW(pShip->FromXmlFile(nullptr, kContext), CQnException);

    file.Fill(strXml);
    read(file.Get())();
    EXPECT_EQ(Write(*pShip), strXml);
}

TEST(ReadingElements, RefusesNullAndUsesTheDefaultContextForText)
{
    const CSmartPtr<CShip> pShip(new CShip);
    ExpectFailure<CQnInvalidParamException>(
        [&] { pShip->FromXmlElement(static_cast<const CXmlElement*>(nullptr), kContext); },
        "The element may not be NULL");
    ExpectFailure<CQnInvalidParamException>(
        [&] { pShip->FromXmlElement(static_cast<const CElement*>(nullptr), kContext); },
        "The element may not be NULL");

    // The caller's context can't reach the writing of the text: its default namespace would bind
    // the log's elements. Its relaxations reach the reading.
    CSerializationContext context;
    context.SetDefaultNamespaceURI("urn:ship");
    const CSmartPtr<CElement> pElement(new CElement("log"));
    pElement->GetAttributes()->Add("unknown", "1", "");
    pElement->SetText("3");
    const CSmartPtr<Model::CLog> pLog(new Model::CLog);
    EXPECT_THROW(pLog->FromXmlElement(pElement.GetPtr(), context), CQnException);
    context.SetIgnoreUnknownAttributes(true);
    pLog->FromXmlElement(pElement.GetPtr(), context);
    EXPECT_EQ(pLog->m_value.GetI4(), 3);
}

TEST(ReadingJson, IgnoresNamespacesForItsDurationUnlessTheyWereWritten)
{
    struct Row
    {
        JsonRoundTrip roundTrip;
        bool before;
        bool during;
    };
    const Row rows[] = {
        {JsonRoundTrip_None, false, true},        {JsonRoundTrip_NoNamespaces, false, true},
        {JsonRoundTrip_NoNamespaces, true, true}, {JsonRoundTrip_Full, false, false},
        {JsonRoundTrip_Full, true, true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << row.roundTrip << row.before);
        CSerializationContext context;
        context.GetJsonContext().SetSupportRoundtrip(row.roundTrip);
        context.SetIgnoreNamespaces(row.before);
        CProbe probe(XmlElementGroupType_Sequence);
        bool bDuring = false;
        bool bFail = false;
        probe.AddElement(std::make_unique<Model::CScriptInfo>("a")).m_read =
            [&](CXmlElement*& pCursor) {
                bDuring = context.GetIgnoreNamespaces();
                if (bFail)
                    throw std::runtime_error("out of order");
                pCursor = nullptr;
                return true;
            };
        probe.FromJson("{\"probe\": {\"a\": 1}}", context);
        EXPECT_EQ(bDuring, row.during);
        EXPECT_EQ(context.GetIgnoreNamespaces(), row.before);
        bFail = true;
        EXPECT_THROW(probe.FromJson("{\"probe\": {\"a\": 1}}", context), std::runtime_error);
        EXPECT_EQ(context.GetIgnoreNamespaces(), row.before);
    }
}

TEST(ReadingJson, TheFlagStaysWhereTheRoundTripValueChangesMeanwhile)
{
    CSerializationContext context;
    context.GetJsonContext().SetSupportRoundtrip(JsonRoundTrip_NoNamespaces);
    CProbe probe(XmlElementGroupType_Sequence);
    probe.AddElement(std::make_unique<Model::CScriptInfo>("a")).m_read = [&](CXmlElement*&) {
        context.GetJsonContext().SetSupportRoundtrip(JsonRoundTrip_Full);
        return true;
    };
    probe.FromJson("{\"probe\": {}}", context);
    EXPECT_TRUE(context.GetIgnoreNamespaces());
}

TEST(ReadingJson, HandsTheXmlToItsOwnStreamOperation)
{
    class COwnRead : public CProbe
    {
    public:
        COwnRead() : CProbe(XmlElementGroupType_Sequence) {}
        using CProbe::FromJsonStream;
        using CProbe::FromXmlStream;
        void FromXmlStream(const CBinaryData& data, const CSerializationContext&) override
        {
            m_strXml = ToText(data);
        }
        void FromJsonStream(unsigned char* pData, unsigned long nLength,
                            const CSerializationContext& context) override
        {
            ++m_nRaw;
            CProbe::FromJsonStream(pData, nLength, context);
        }
        std::string m_strXml;
        int m_nRaw = 0;
    };
    COwnRead object;
    object.FromJsonStream(CBinaryData("{\"a\": 1}"), kContext);
    EXPECT_EQ(object.m_strXml, "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a>1</a>\n");
    EXPECT_EQ(object.m_nRaw, 1);
    EXPECT_THROW(object.FromJson(L"{\"a\": 1}", kContext), CQnException);
}

TEST(ReadingJson, ShowsTheXmlThatCouldNotBeBound)
{
    const CSmartPtr<Model::CLog> pLog(new Model::CLog);
    CSerializationContext context;
    context.GetJsonContext().SetSupportRoundtrip(JsonRoundTrip_NoNamespaces);
    try {
        pLog->FromJson("{\"log\": {\"@unknown\": \"1\", \"#text\": 7}}", context);
        ADD_FAILURE();
    }
    catch (const CQnException& e) {
        EXPECT_EQ(e.GetMessage(), "Error converting JSON to XML:\n"
                                  "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                  "<log unknown=\"1\">7</log>\n");
        EXPECT_EQ(e.GetPath(), "");
        ASSERT_NE(e.GetInnerException(), nullptr);
        EXPECT_EQ(e.GetInnerException()->GetPath(), "/log/@unknown");
    }
    // What is no JSON fails before there is any XML.
    for (const char* const pszBad : {"", "{", "log", static_cast<const char*>(nullptr)}) {
        try {
            pLog->FromJson(pszBad, context);
            ADD_FAILURE();
        }
        catch (const CQnException& e) {
            EXPECT_EQ(e.GetMessage().find("Error converting JSON to XML"), std::string::npos);
        }
    }
    pLog->FromJson("{\"log\": 7}", context);
    EXPECT_EQ(pLog->m_value.GetI4(), 7);
}
