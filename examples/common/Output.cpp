#include "examples/common/Output.h"

#include <clocale>
#include <cstdio>
#include <cstring>
#include <exception>

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
    else {
        return false;
    }
    return true;
}

CBinaryData COutput::ToBytes(const CXmlObjectBase& object) const
{
    return object.ToXmlStream(m_bHeader, m_bFormat, m_eEncoding, m_eEOL, m_context,
                              CompressionType_None);
}

const char* COutput::Help()
{
    return "  --format, --no-format   pretty printing, which puts its own white space between\n"
           "                          elements, on or off (the default: texts stay as they are)\n"
           "  --indent TEXT           blanks or tabs for one level; a tab by default\n"
           "  --eol crlf|lf           line ends; lf by default\n"
           "  --encoding utf-8|wide   utf-8 by default; wide is one 32-bit unit a character, a\n"
           "                          form for programs on this machine that no XML parser reads\n"
           "  --no-header             leave out the XML declaration\n";
}

void WriteBytes(const std::string& strPath, const CBinaryData& data, XmlEncoding eEncoding)
{
    if (!strPath.empty()) {
        CBinaryData content(data);
        CFileBinaryStream(strPath.c_str(), eEncoding, content).ToFile();
        return;
    }
    if (std::fwrite(data.GetData(), 1, data.GetLength(), stdout) != data.GetLength() ||
        std::fflush(stdout) != 0)
        throw CQnException("Failed to write to standard output");
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
