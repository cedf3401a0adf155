// Whole documents through CXmlDocument and CElement back to XML text, held against what Expat by
// itself finds in the text on both sides.
#include "QnXmlLib16/QnXmlLib16.h"
#include "QnXmlLib16/xml/XmlDocument.h"
#include "tests/support/Scoped.h"

#include <expat.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <vector>

using namespace QnXmlLib16;

namespace {

// What Expat makes of a text, in one line: name, attributes, children, joined text; namespaces in
// front of the names they belong to. It starts with the failure if there is one.
class CTreeLine
{
public:
    static std::string Of(const std::string& strXml)
    {
        CTreeLine line;
        const std::unique_ptr<XML_ParserStruct, void (*)(XML_Parser)> pParser(
            XML_ParserCreateNS(nullptr, '|'), XML_ParserFree);
        XML_SetUserData(pParser.get(), &line);
        XML_SetElementHandler(pParser.get(), Start, End);
        XML_SetCharacterDataHandler(pParser.get(), Text);
        if (XML_Parse(pParser.get(), strXml.data(), static_cast<int>(strXml.size()), 1) !=
            XML_STATUS_OK)
            line.m_strLine.insert(0, XML_ErrorString(XML_GetErrorCode(pParser.get())));
        return line.m_strLine;
    }

private:
    static void Start(void* pLine, const char* pszName, const char** ppszAttributes)
    {
        CTreeLine& line = *static_cast<CTreeLine*>(pLine);
        line.m_vecTexts.emplace_back();
        line.m_strLine.append("<").append(pszName);
        for (; *ppszAttributes; ppszAttributes += 2)
            line.m_strLine += std::string("[") + ppszAttributes[0] + "=" + ppszAttributes[1] + "]";
    }
    static void End(void* pLine, const char*)
    {
        CTreeLine& line = *static_cast<CTreeLine*>(pLine);
        line.m_strLine += "'" + line.m_vecTexts.back() + "'>";
        line.m_vecTexts.pop_back();
    }
    static void Text(void* pLine, const char* p, int iLength)
    {
        static_cast<CTreeLine*>(pLine)->m_vecTexts.back().append(p, p + iLength);
    }

    std::string m_strLine;
    std::vector<std::string> m_vecTexts; // of the open elements
};

// Each character above U+007F as "?".
std::string InAscii(const std::string& strUtf8)
{
    std::string str;
    for (const char c : strUtf8) {
        if ((c & 0xC0) != 0x80)
            str += (c & 0x80) != 0 ? '?' : c;
    }
    return str;
}

// The text as it comes back from an element.
std::string Rewritten(const std::string& strXml, const CSerializationContext& context = {})
{
    CXmlDocument document(context);
    document.LoadXmlStream(reinterpret_cast<const unsigned char*>(strXml.data()), strXml.size());
    const CSmartPtr<CElement> pElement(new CElement(""));
    pElement->CopyXmlElement(document.GetDocumentElement());
    return pElement->ToXml(false, false, EOLType_LF, context);
}

size_t CountOf(const std::string& strPart, const std::string& strText)
{
    size_t nCount = 0;
    for (size_t n = strText.find(strPart); n != std::string::npos; n = strText.find(strPart, n + 1))
        ++nCount;
    return nCount;
}

// The document comes back under each code page; one that holds ASCII only loses the rest.
void ExpectSameTreeInEveryCodePage(const std::string& strXml)
{
    const std::string strTree = CTreeLine::Of(strXml);
    for (const char* pszLocale : {"C", "C.UTF-8"}) {
        SCOPED_TRACE(pszLocale);
        const Scoped::Locale locale(LC_ALL, pszLocale);
        ASSERT_TRUE(locale.IsSet());
        const std::string strText = Rewritten(strXml);
        EXPECT_TRUE(CTreeLine::Of(strText) == (pszLocale[1] == 0 ? InAscii(strTree) : strTree));
        EXPECT_TRUE(Rewritten(strText) == strText);
    }
    const Scoped::AsciiOnly asciiOnly;
    EXPECT_TRUE(CTreeLine::Of(Rewritten(strXml)) == strTree);
}

} // namespace

TEST(DocumentRoundTrip, RealDocumentsKeepTheirTreeInEveryCodePage)
{
    const std::filesystem::path folder(QNXML_SHARED_DATA "/gpx");
    if (!std::filesystem::exists(folder))
        GTEST_SKIP() << "no documents in " << folder;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() != ".gpx")
            continue;
        SCOPED_TRACE(entry.path());
        std::ifstream file(entry.path(), std::ios::binary);
        const std::string strXml(std::istreambuf_iterator<char>(file), {});
        ExpectSameTreeInEveryCodePage(strXml);

        // With markers the sections stay sections, and the tree is the same.
        CSerializationContext context;
        context.SetStripCDATA(false);
        const Scoped::AsciiOnly asciiOnly;
        const std::string strText = Rewritten(strXml, context);
        EXPECT_TRUE(CTreeLine::Of(strText) == CTreeLine::Of(strXml));
        EXPECT_EQ(CountOf("<![CDATA[", strText), CountOf("<![CDATA[", strXml));
    }
}

TEST(DocumentRoundTrip, CharactersOfEveryLengthKeepToTheCodePage)
{
    const std::string strValue = "a\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x98\x80 e\xCC\x81";
    // Each place of a word, and across the pieces that the parser is given.
    for (const size_t nPadding : {0, 1, 2, 3, 4, 5, 6, 7, 32730, 32750}) {
        const std::string strPadded = std::string(nPadding, '.') + strValue + "&lt;&#xD7FF;";
        ExpectSameTreeInEveryCodePage("<r xmlns='urn:" + strValue + "' x='" + strPadded + "'><c>" +
                                      strPadded + "</c>&#233;<![CDATA[" + strPadded + "]]></r>");
    }

    // Names too; a code page without their characters gives them up, and with them the document.
    const std::string strNames = "<\xC3\xA9t\xC3\xA9 \xE6\x97\xA5='1'/>";
    const Scoped::AsciiOnly asciiOnly;
    EXPECT_EQ(CTreeLine::Of(Rewritten(strNames)), CTreeLine::Of(strNames));
}
