#pragma once

#include "QnXmlLib16/support/InstanceMonitor.h"
#include "QnXmlLib16/support/SettingTypes.h"
#include "QnXmlLib16/support/StringBuffer.h"
#include "QnXmlLib16/values/BinaryData.h"

#include <cstdio>
#include <string>

namespace QnXmlLib16 {

// Collects the text that a writer puts out, in the local code page, and gives it out encoded.
// One thread at a time. A null text counts as empty.
class QNXML_API CTextStream : public CInstanceMonitor
{
public:
    CTextStream(); // XmlEncoding_None: text can be taken out as it is, but not encoded
    explicit CTextStream(XmlEncoding eEncoding);
    CTextStream(const char* pszMonitorName, XmlEncoding eEncoding);

    ~CTextStream() override;
    virtual void Open();  // empties the buffer
    virtual void Close(); // nothing here
    virtual void Flush(); // nothing here; writers call it at 4096 characters

    unsigned long GetLength() const { return m_buffer.GetLength(); }
    XmlEncoding GetEncoding() const { return m_eEncoding; }

    // Never null; valid until the stream grows or is emptied. Ends at the first zero character.
    const char* GetText() const { return m_buffer.GetText(); }
    // The same text as a copy, which for a long one takes less time and room.
    std::string CopyText() const { return m_buffer.CopyText(); }

    // The text as UTF-8, or, for the encodings 2 and 3, as native wide characters of 4 bytes
    // without a byte order mark. Throws CQnException for any other encoding.
    CBinaryData GetEncodedStream() const;

    void Append(char c) { m_buffer.Append(c); }
    // Text up to its first zero byte.
    void Append(const char* pszText) { m_buffer.Append(pszText); }
    void Append(const std::string& strText) { m_buffer.Append(strText); }
    // A counted run, which holds no zero byte.
    void Append(const char* pText, std::size_t uLength) { m_buffer.Append(pText, uLength); }

protected:
    // Mutable: reading the text joins its blocks and changes nothing that a caller can see.
    mutable CStringBuffer m_buffer;
    XmlEncoding m_eEncoding;
};

// A text stream with a file as its target. All failures are CQnException.
class QNXML_API CFileTextStream : public CTextStream
{
public:
    CFileTextStream(const char* pszFileName, XmlEncoding eEncoding);
    ~CFileTextStream() override; // closes a file that is still open

    // Creates or empties the file and puts out the byte order mark of the encodings 2 and 3. A
    // file that is still open is closed first.
    void Open() override;

    // Flushes and closes the file; nothing to do without text and without an open file.
    void Close() override;

    // Deliberate: fails with "Failed to write data to the file" whenever there is text to write,
    // as the text is not encoded into what goes to the file. The file is closed then and the
    // stream can't be used further. Entry operations that collect their text in memory do not
    // take this road. Pinned by FileTextStream.TheFirstFlushWithTextFails.
    void Flush() override;

private:
    bool CloseFile();

    std::string m_strFileName;
    CBinaryData m_binaryData; // what Flush writes
    FILE* m_pFile = nullptr;  // owned; null when closed
};

} // namespace QnXmlLib16
