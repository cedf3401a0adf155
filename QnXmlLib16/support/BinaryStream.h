#pragma once

#include "QnXmlLib16/support/InstanceMonitor.h"
#include "QnXmlLib16/support/SettingTypes.h"
#include "QnXmlLib16/values/BinaryData.h"

#include <string>

namespace QnXmlLib16 {

// Collects the bytes that a writer puts out. One thread at a time.
class QNXML_API CBinaryStream : public CInstanceMonitor
{
public:
    CBinaryStream();
    explicit CBinaryStream(const char* pszMonitorName);
    // These begin with the bytes of data, which they share until the first Append.
    explicit CBinaryStream(CBinaryData& data);
    CBinaryStream(const char* pszMonitorName, CBinaryData& data);

    ~CBinaryStream() override;

    CBinaryData GetBinaryStream() const { return m_binaryData; }

    void Append(unsigned char uByte) { m_binaryData.Append(uByte); }
    void Append(const CBinaryData& data) { m_binaryData.Append(data); }
    void Append(const unsigned char* pData, unsigned long ulLength)
    {
        m_binaryData.Append(pData, ulLength);
    }

protected:
    CBinaryData m_binaryData;
};

// Bytes with a file as their target.
class QNXML_API CFileBinaryStream : public CBinaryStream
{
public:
    // eEncoding decides only whether the file begins with the byte order mark FF FE (2 and 3).
    CFileBinaryStream(const char* pszFileName, XmlEncoding eEncoding);
    CFileBinaryStream(const char* pszFileName, XmlEncoding eEncoding, CBinaryData& data);
    ~CFileBinaryStream() override;

    // Creates or replaces the file with the mark and all bytes. Every failure, and empty data is
    // one, is CQnException "Failed to write data to the file [<path>].".
    void ToFile();

private:
    std::string m_strFileName;
    XmlEncoding m_eEncoding;
};

} // namespace QnXmlLib16
