#include "examples/common/Output.h"

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string_view>

using namespace QnXmlLib16;

namespace examples {

namespace {

// Finds strValue among the choices of an option.
template <class T, size_t N>
T Choose(const std::string& strName, const char* pszValue,
         const std::pair<const char*, T> (&rows)[N])
{
    std::string strKnown;
    for (const auto& row : rows) {
        if (pszValue && std::strcmp(pszValue, row.first) == 0)
            return row.second;
        strKnown += strKnown.empty() ? "" : "|";
        strKnown += row.first;
    }
    throw CUsageError(strName + " wants " + strKnown);
}

} // namespace

COutput::COutput()
{
    m_context.GetJsonContext().GetAllowComments(false);
}

bool COutput::TakeOption(const std::string& strName, const char* pszValue, bool& rUsed)
{
    rUsed = false;
    if (strName == "--format" || strName == "--no-format") {
        m_bFormat = strName == "--format";
    }
    else if (strName == "--no-header") {
        m_bHeader = false;
    }
    else if (strName == "--indent") {
        if (!pszValue)
            throw CUsageError("--indent wants blanks or tabs");
        try {
            m_context.SetIndentChars(pszValue);
        }
        catch (const CQnInvalidParamException& e) {
            throw CUsageError("--indent: " + e.GetMessage());
        }
        rUsed = true;
    }
    else if (strName == "--eol") {
        m_eEOL = Choose<EOLType>(strName, pszValue, {{"crlf", EOLType_CRLF}, {"lf", EOLType_LF}});
        rUsed = true;
    }
    else if (strName == "--encoding") {
        m_eEncoding = Choose<XmlEncoding>(
            strName, pszValue, {{"utf-8", XmlEncoding_UTF8}, {"wide", XmlEncoding_UTF16}});
        rUsed = true;
    }
    else if (strName == "--to") {
        m_eForm =
            Choose<Form>(strName, pszValue,
                         {{"xml", Form::Xml}, {"json", Form::Json}, {"finf", Form::FastInfoset}});
        rUsed = true;
    }
    else if (strName == "--roundtrip") {
        m_context.GetJsonContext().SetSupportRoundtrip(
            Choose<JsonRoundTrip>(strName, pszValue,
                                  {{"0", JsonRoundTrip_None},
                                   {"1", JsonRoundTrip_NoNamespaces},
                                   {"2", JsonRoundTrip_Full}}));
        rUsed = true;
    }
    else if (strName == "--root") {
        if (!pszValue)
            throw CUsageError("--root wants the name of an element");
        m_context.GetJsonContext().SetRootElementName(pszValue);
        rUsed = true;
    }
    else if (strName == "--comments") {
        m_context.GetJsonContext().GetAllowComments(true);
    }
    else if (strName == "--fi-suggested") {
        m_context.GetFIContext().SetSuggestedValues();
    }
    else if (strName == "--fi-declaration") {
        if (!pszValue || std::strlen(pszValue) != 1 || *pszValue < '0' || *pszValue > '9')
            throw CUsageError("--fi-declaration wants a digit from 0 to 9");
        m_eDeclaration = static_cast<FInfoDecl>(*pszValue - '0');
        rUsed = true;
    }
    else if (strName == "--gzip" || strName == "--zlib") {
        m_eCompression = strName == "--gzip" ? CompressionType_GZip : CompressionType_ZLib;
    }
    else {
        return false;
    }
    return true;
}

CBinaryData COutput::ToBytes(const CXmlObjectBase& object) const
{
    switch (m_eForm) {
    case Form::Json:
        return object.ToJsonStream(m_bFormat, m_eEncoding, m_eEOL, m_context, m_eCompression);
    case Form::FastInfoset:
        return object.ToFastInfosetStream(m_eDeclaration, m_context, m_eCompression);
    case Form::Xml:
        break;
    }
    return object.ToXmlStream(m_bHeader, m_bFormat, m_eEncoding, m_eEOL, m_context, m_eCompression);
}

const char* COutput::Help()
{
    return "  --to xml|json|finf      the form of the output: XML text (the default), JSON, or "
           "Fast\n"
           "                          Infoset; the form of the input is told by its first bytes\n"
           "  --format, --no-format   pretty printing, which puts its own white space between\n"
           "                          elements, on or off (the default: texts stay as they are)\n"
           "  --indent TEXT           blanks or tabs for one level; a tab by default\n"
           "  --eol crlf|lf           line ends; lf by default\n"
           "  --encoding utf-8|wide   utf-8 by default; wide is one 32-bit unit a character, a\n"
           "                          form for programs on this machine that no XML parser reads\n"
           "  --no-header             leave out the XML declaration\n"
           "  --roundtrip 0|1|2       JSON: how much of the XML survives; 2, all of it, by "
           "default\n"
           "  --root NAME             JSON input: the root element around a document without one\n"
           "  --comments              JSON input: allow comments\n"
           "  --fi-suggested          Fast Infoset: typed values as numbers instead of text\n"
           "  --fi-declaration N      Fast Infoset: one of nine XML declarations ahead, 0 for "
           "none\n"
           "  --gzip, --zlib          compress what is written\n";
}

void COutput::Write(const std::string& strPath, const CBinaryData& data) const
{
    if (!strPath.empty()) {
        CBinaryData content(data);
        const bool bMarked = m_eForm == Form::Xml && m_eCompression == CompressionType_None;
        CFileBinaryStream(strPath.c_str(), bMarked ? m_eEncoding : XmlEncoding_None, content)
            .ToFile();
        return;
    }
    if (std::fwrite(data.GetData(), 1, data.GetLength(), stdout) != data.GetLength() ||
        std::fflush(stdout) != 0)
        throw CQnException("Failed to write to standard output");
}

bool HoldsJson(const std::string& strPath)
{
    std::ifstream file;
    if (std::filesystem::is_regular_file(strPath))
        file.open(strPath, std::ios::binary);
    std::string strStart(4096, '\0');
    file.read(&strStart[0], static_cast<std::streamsize>(strStart.size()));
    strStart.resize(static_cast<size_t>(std::max<std::streamsize>(file.gcount(), 0)));
    // The first byte of gzip, and of zlib with the usual window.
    if (!strStart.empty() && (strStart[0] == '\x1F' || strStart[0] == '\x78')) {
        file.clear();
        strStart.append(std::istreambuf_iterator<char>(file), {});
        unsigned long nLength = strStart.size();
        unsigned char* pData = new unsigned char[nLength];
        std::memcpy(pData, strStart.data(), nLength);
        CQnZip::Decompress(&pData, &nLength);
        const CBinaryData plain(pData, nLength, true);
        strStart.assign(reinterpret_cast<const char*>(pData), nLength);
    }
    const size_t iBegin = strStart.compare(0, 3, "\xEF\xBB\xBF") == 0 ? 3 : 0;
    const size_t iFirst = strStart.find_first_not_of(" \t\r\n", iBegin);
    // An object, an array or a comment. What begins otherwise is left to the loader of documents,
    // whose words fit text of no known form best.
    return iFirst != std::string::npos &&
           std::string_view("{[/").find(strStart[iFirst]) != std::string_view::npos;
}

void UseUtf8CodePage()
{
    if (!std::setlocale(LC_CTYPE, "C.UTF-8"))
        ASCIIOnly(true); // bytes then pass as they are
}

int RunProgram(const char* pszName, int (*fnRun)(int, char**), int argc, char** argv)
{
    try {
        UseUtf8CodePage();
        return fnRun(argc, argv);
    }
    catch (const CUsageError& e) {
        std::fprintf(stderr, "%s: %s\nTry '%s --help'.\n", pszName, e.what(), pszName);
        return kExitBadUsage;
    }
    catch (const CQnException& e) {
        std::fprintf(stderr, "%s: %s\n", pszName, e.GetFullMessage().c_str());
        return kExitBadInput;
    }
    catch (const std::exception& e) {
        std::fprintf(stderr, "%s: %s\n", pszName, e.what());
        return kExitBadInput;
    }
}

} // namespace examples
