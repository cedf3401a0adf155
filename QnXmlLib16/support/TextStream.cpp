#include "QnXmlLib16/support/TextStream.h"

#include "QnXmlLib16/support/Encoder.h"
#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/support/Functions.h"
#include "QnXmlLib16/support/internal/FileHandle.h"

#include <utility>

namespace QnXmlLib16 {

namespace {

[[noreturn]] void ThrowWriteFailed()
{
    throw CQnException("Failed to write data to the file");
}

} // namespace

CTextStream::CTextStream() : CTextStream(XmlEncoding_None) {}

CTextStream::CTextStream(XmlEncoding eEncoding) : CTextStream("CTextStream", eEncoding) {}

CTextStream::CTextStream(const char* pszMonitorName, XmlEncoding eEncoding)
    : CInstanceMonitor(pszMonitorName), m_eEncoding(eEncoding)
{}

CTextStream::~CTextStream() = default;

void CTextStream::Open()
{
    m_buffer.Empty();
}

void CTextStream::Close() {}

void CTextStream::Flush() {}

CBinaryData CTextStream::GetEncodedStream() const
{
    switch (m_eEncoding) {
    case XmlEncoding_UTF8:
        return CEncoder::LocalCodePageToUtf8Binary(GetText());
    case XmlEncoding_UTF16:
    case XmlEncoding_Wide:
        return CEncoder::LocalCodePageToUnicodeBinary(GetText());
    default:
        throw CQnException("Unknown Encoding, select UTF-8 (contact our support team)");
    }
}

CFileTextStream::CFileTextStream(const char* pszFileName, XmlEncoding eEncoding)
    : CTextStream("CFileTextStream", eEncoding), m_strFileName(pszFileName ? pszFileName : "")
{}

CFileTextStream::~CFileTextStream()
{
    CloseFile();
}

void CFileTextStream::Open()
{
    CTextStream::Open();
    const bool bFirstClosed = CloseFile();
    FileHandle file(bFirstClosed ? std::fopen(m_strFileName.c_str(), "wt") : nullptr);
    if (!file || !WriteByteOrderMark(file.get(), m_eEncoding))
        throw CQnException(
            FormatString("Failed to write data to the file [%s].", m_strFileName.c_str()));
    m_pFile = file.release();
}

void CFileTextStream::Close()
{
    Flush();
    if (!CloseFile())
        ThrowWriteFailed();
    CTextStream::Close();
}

void CFileTextStream::Flush()
{
    if (GetLength() == 0)
        return;
    const unsigned long ulLength = m_binaryData.GetLength();
    const bool bWritten = m_pFile && ulLength != 0 &&
                          std::fwrite(m_binaryData.GetData(), 1, ulLength, m_pFile) == ulLength;
    m_buffer.Empty();
    if (!bWritten) {
        CloseFile();
        ThrowWriteFailed();
    }
}

// False if what was written did not reach the file; true also when none is open.
bool CFileTextStream::CloseFile()
{
    FILE* pFile = std::exchange(m_pFile, nullptr);
    return !pFile || std::fclose(pFile) == 0;
}

} // namespace QnXmlLib16
