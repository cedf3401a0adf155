#include "QnXmlLib16/support/BinaryStream.h"

#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/support/Functions.h"
#include "QnXmlLib16/support/internal/FileHandle.h"

namespace QnXmlLib16 {

CBinaryStream::CBinaryStream() : CBinaryStream("CBinaryStream") {}

CBinaryStream::CBinaryStream(const char* pszMonitorName) : CInstanceMonitor(pszMonitorName) {}

CBinaryStream::CBinaryStream(CBinaryData& data) : CBinaryStream("CBinaryStream", data) {}

CBinaryStream::CBinaryStream(const char* pszMonitorName, CBinaryData& data)
    : CInstanceMonitor(pszMonitorName), m_binaryData(data)
{}

CBinaryStream::~CBinaryStream() = default;

CFileBinaryStream::CFileBinaryStream(const char* pszFileName, XmlEncoding eEncoding)
    : CBinaryStream("CFileBinaryStream"),
      m_strFileName(pszFileName ? pszFileName : ""),
      m_eEncoding(eEncoding)
{}

CFileBinaryStream::CFileBinaryStream(const char* pszFileName, XmlEncoding eEncoding,
                                     CBinaryData& data)
    : CBinaryStream("CFileBinaryStream", data),
      m_strFileName(pszFileName ? pszFileName : ""),
      m_eEncoding(eEncoding)
{}

CFileBinaryStream::~CFileBinaryStream() = default;

void CFileBinaryStream::ToFile()
{
    const unsigned long ulLength = m_binaryData.GetLength();
    FileHandle file(std::fopen(m_strFileName.c_str(), "wt"));
    const bool bWritten = file && WriteByteOrderMark(file.get(), m_eEncoding) && ulLength != 0 &&
                          std::fwrite(m_binaryData.GetData(), 1, ulLength, file.get()) == ulLength;
    const bool bClosed = file && std::fclose(file.release()) == 0;
    // Deliberate: data without a byte is a failure too; the file is there then, without content.
    // Pinned by FileBinaryStream.WritesItsMarkAndItsBytes.
    if (!bWritten || !bClosed)
        throw CQnException(
            FormatString("Failed to write data to the file [%s].", m_strFileName.c_str()));
}

} // namespace QnXmlLib16
