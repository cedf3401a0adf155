// The upper half of CXmlDocument: from text, bytes or a file to the tree.

#include "QnXmlLib16/binding/SerializationContext.h"
#include "QnXmlLib16/fastinfoset/FastInfosetReader.h"
#include "QnXmlLib16/json/JsonTextReader.h"
#include "QnXmlLib16/support/Encoder.h"
#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/support/Functions.h"
#include "QnXmlLib16/support/QnZip.h"
#include "QnXmlLib16/support/internal/CompressedData.h"
#include "QnXmlLib16/support/internal/FileHandle.h"
#include "QnXmlLib16/values/BinaryData.h"
#include "QnXmlLib16/xml/ExpatReader.h"
#include "QnXmlLib16/xml/XmlDocument.h"
#include "QnXmlLib16/xml/internal/HugePages.h"

#include <cstdio>
#include <cstring>
#include <cwchar>
#include <memory>

#include <fcntl.h>
#include <unistd.h>

namespace QnXmlLib16 {

namespace {

using CBytesPtr = std::unique_ptr<unsigned char[]>;

CBytesPtr NewBuffer(unsigned long nLength)
{
    CBytesPtr pBytes(new unsigned char[nLength]);
    PreferHugePages(pBytes.get(), nLength);
    return pBytes;
}

// As fopen in mode "rt", but a FIFO without a writer does not block.
FileHandle OpenForReading(const char* pszPath)
{
    const int iFile = open(pszPath, O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (iFile < 0)
        return nullptr;
    FileHandle pFile(fdopen(iFile, "rt"));
    if (!pFile)
        close(iFile);
    return pFile;
}

// Fails with pszMessage, which has places for the path and for the error indicator of the file.
[[noreturn]] void ThrowFileError(const char* pszMessage, const std::string& strPath, FILE* pFile)
{
    throw CQnException(FormatString(pszMessage, strPath.c_str(), std::ferror(pFile)));
}

// The whole file; the result is never empty.
CBytesPtr ReadFile(const std::string& strPath, unsigned long& nLength)
{
    const FileHandle pFile = OpenForReading(strPath.c_str());
    if (!pFile)
        throw CQnException(FormatString("Failed to open the file [%s].", strPath.c_str()));
    const long iLength = _filelength(pFile.get());
    if (iLength < 0)
        ThrowFileError("Failed to get the size of the file [%s] Error [%d]", strPath, pFile.get());
    nLength = static_cast<unsigned long>(iLength);
    CBytesPtr pBytes = NewBuffer(nLength);
    if (nLength == 0 || std::fread(pBytes.get(), 1, nLength, pFile.get()) != nLength)
        ThrowFileError("Failed to read the contents of the file [%s] Error [%d]", strPath,
                       pFile.get());
    return pBytes;
}

} // namespace

// Lends the document a buffer that somebody else owns, for the time of a parse.
class CXmlDocument::CLentBuffer
{
public:
    CLentBuffer(CXmlDocument& document, const unsigned char* pData, unsigned long nLength)
        : m_document(document)
    {
        m_document.SetBuffer(const_cast<unsigned char*>(pData), nLength); // only read from
        m_document.m_bLentBuffer = true;
    }
    CLentBuffer(const CLentBuffer&) = delete;
    CLentBuffer& operator=(const CLentBuffer&) = delete;
    ~CLentBuffer()
    {
        m_document.m_pBuffer = nullptr;
        m_document.m_iBufferLength = 0;
        m_document.m_bLentBuffer = false;
    }

private:
    CXmlDocument& m_document;
};

void CXmlDocument::Load(const char* pszPath)
{
    StoreFile(pszPath);
    Parse();
}

void CXmlDocument::LoadXml(const char* pszXml)
{
    StoreCopy(pszXml, pszXml ? std::strlen(pszXml) : 0, "XML String is empty!");
    ParseText();
}

void CXmlDocument::LoadXml(const wchar_t* pszXml)
{
    const std::size_t nCount = pszXml ? std::wcslen(pszXml) : 0;
    std::string strImage;
    if (nCount > 0) {
        strImage.reserve(2 * nCount + 2);
        strImage.append("\xFF\xFE"); // byte order mark of UTF-16, low byte first
        for (const wchar_t* p = pszXml; *p; ++p) {
            // Deliberate: the upper 16 bits of a character are dropped, so a caller can't send
            // characters above U+FFFF on this road but as surrogate pairs.
            // Pinned by DocumentLoad.WideTextIsTakenAs16BitUnits.
            strImage += static_cast<char>(*p & 0xFF);
            strImage += static_cast<char>(*p >> 8 & 0xFF);
        }
    }
    StoreCopy(strImage.data(), strImage.size(), "XML String is empty!");
    ParseText();
}

void CXmlDocument::LoadXmlStream(const unsigned char* pData, unsigned long nLength)
{
    StoreCopy(pData, pData ? nLength : 0, "XML Stream is empty!");
    Parse();
}

CBinaryData CXmlDocument::LoadJsonFile(const char* pszPath)
{
    StoreFile(pszPath);
    return ParseJson();
}

// A copy, as the text may lie in this document.
CBinaryData CXmlDocument::LoadJson(const char* pszJson)
{
    return LoadJsonInPlace(std::string(pszJson ? pszJson : "").c_str());
}

// Deliberate: the bytes of the wide characters are taken as they lie in memory, so the reader
// meets a zero byte behind the first character and refuses the text; only the narrow form is a
// working road. Pinned by JsonLoad.WideTextIsRefused.
CBinaryData CXmlDocument::LoadJson(const wchar_t* pszJson)
{
    const wchar_t* const pszText = pszJson ? pszJson : L"";
    const std::string strBytes(reinterpret_cast<const char*>(pszText),
                               std::wcslen(pszText) * sizeof(wchar_t));
    return ConvertJson(strBytes.data(), strBytes.size());
}

CBinaryData CXmlDocument::LoadJsonStream(const unsigned char* pData, unsigned long nLength)
{
    StoreCopy(pData, pData ? nLength : 0, "JSON Stream is empty!");
    return ParseJson();
}

void CXmlDocument::StoreFile(const char* pszPath)
{
    const std::string strPath(pszPath ? pszPath : ""); // the path may lie in this tree
    Cleanup();
    unsigned long nLength = 0;
    CBytesPtr pBytes = ReadFile(strPath, nLength);
    SetBuffer(pBytes.release(), nLength);
}

// The data may lie in this document, so they are copied ahead of Cleanup.
void CXmlDocument::StoreCopy(const void* pData, unsigned long nLength, const char* pszIfEmpty)
{
    CBytesPtr pBytes = NewBuffer(nLength);
    if (nLength > 0)
        std::memcpy(pBytes.get(), pData, nLength);
    Cleanup();
    if (nLength == 0)
        throw CQnException(pszIfEmpty);
    SetBuffer(pBytes.release(), nLength);
}

CBinaryData CXmlDocument::LoadJsonInPlace(const char* pszJson)
{
    return ConvertJson(pszJson, pszJson ? std::strlen(pszJson) : 0);
}

CBinaryData CXmlDocument::ConvertJson(const char* pText, unsigned long nLength)
{
    Cleanup();
    if (nLength == 0)
        throw CQnException("JSON String is empty!");
    return CJsonTextReader::ConvertJsonToXml(pText, nLength, *m_pContext);
}

CBinaryData CXmlDocument::ParseJson()
{
    CQnZip::Decompress(&m_pBuffer, &m_iBufferLength);
    const char* pText = reinterpret_cast<const char*>(m_pBuffer);
    unsigned long nLength = m_iBufferLength;
    if (nLength > 2 && std::memcmp(pText, "\xEF\xBB\xBF", 3) == 0) {
        pText += 3;
        nLength -= 3;
    }
    std::string strJson;
    CEncoder::AssignUtf8(strJson, pText, nLength);
    return CJsonTextReader::ConvertJsonToXml(strJson, *m_pContext);
}

void CXmlDocument::LoadXmlInPlace(const char* pszXml)
{
    const std::size_t nLength = pszXml ? std::strlen(pszXml) : 0;
    if (nLength == 0)
        return LoadXml(pszXml);
    Cleanup();
    const CLentBuffer lent(*this, reinterpret_cast<const unsigned char*>(pszXml), nLength);
    ParseText();
}

void CXmlDocument::LoadXmlStreamInPlace(const unsigned char* pData, unsigned long nLength)
{
    if (!pData || nLength == 0 || MayBeCompressed(pData, nLength))
        return LoadXmlStream(pData, nLength);
    Cleanup();
    const CLentBuffer lent(*this, pData, nLength);
    ParsePlain();
}

// What came as a file or as a stream; the data alone tell its format.
void CXmlDocument::Parse()
{
    CQnZip::Decompress(&m_pBuffer, &m_iBufferLength);
    ParsePlain();
}

void CXmlDocument::ParsePlain()
{
    if (!CFastInfosetReader(m_pContext->GetFIContext(), *this).Parse())
        ParseText();
}

void CXmlDocument::ParseText()
{
    CExpatReader reader(*this);
    reader.CreateParser();
    reader.Parse(true);
}

} // namespace QnXmlLib16
