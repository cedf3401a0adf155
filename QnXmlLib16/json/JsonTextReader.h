#pragma once

#include "QnXmlLib16/json/JsonReaderHandler.h"
#include "QnXmlLib16/support/Export.h"
#include "QnXmlLib16/support/InstanceMonitor.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace QnXmlLib16 {

class CBinaryData;
class CSerializationContext;

// Reads one JSON text in memory and reports it as events. The dialect is close to RFC 8259;
// comments ("//" to the line feed, "/*" to "*/") are an option.
//
// Where it departs from the RFC:
// - what stands behind the first value is not looked at;
// - line feeds are passed over wherever a character is taken, inside strings and numbers too;
// - control characters may stand in strings unescaped;
// - "\uxxxx" gives one byte, the upper hexadecimal digit of the first of the four characters, and
//   these may be any; "\u0041" reads as "3";
// - strings and names end at their first zero byte.
//
// Values nest 100 deep, plain ones counted. Each failure is a CQnValidationException with the
// line, the position in it (from 1, in bytes) and the path.
class QNXML_API CJsonTextReader : public CInstanceMonitor
{
public:
    // The text stays the caller's and must outlive the reader. Comments are allowed.
    explicit CJsonTextReader(const std::string& strText);
    ~CJsonTextReader() override;

    // The handler stays the caller's. Null, as at the start: the text is checked only.
    void SetJsonReaderHandler(IJsonReaderHandler* pHandler);

    // The location of the reading; valid as long as the reader.
    IErrorPathProvider& GetErrorPathProvider();

    // Reads the whole text; can be run again. CQnException for a text of 2 GiB or more.
    void Read();

    // JSON text as XML text in UTF-8, with the JSON settings of the context and the mapping of
    // CJsonReaderToXmlHandler. CQnException "An Element has not been closed." where the mapping
    // leaves one open, and for an XML text of 2 GiB or more.
    static CBinaryData ConvertJsonToXml(const std::string& strText,
                                        const CSerializationContext& context);
    static CBinaryData ConvertJsonToXml(const char* pText, std::size_t nLength,
                                        const CSerializationContext& context);

private:
    CJsonTextReader(const char* pText, std::size_t nLength);

    static CBinaryData Convert(CJsonTextReader& reader, const CSerializationContext& context);

    bool ReadNextChar(bool bSkipSpace);
    bool ReadNextChars(char* pBuffer, int iCount);
    bool SkipComments();
    void ReadValue(int iDepth);
    void ReadObject(int iDepth);
    void ReadArray(int iDepth);
    void ReadString();
    void ReadNumber();
    void ReadNull();
    void ReadTrue();
    void ReadFalse();

    void ReadEscape();
    void ReadDigits();
    void ReadWord(const char* pszRest, const char* pszWrong, const char* pszEnd);
    [[noreturn]] void Fail(const char* pszFormat) const;
    [[noreturn]] void FailFound(const char* pszFormat) const;

    std::unique_ptr<CJsonReaderDefaultHandler> m_pHandler;
    int m_iMaxDepth;
    bool m_bAllowComments;
    std::string m_strRootElementName;
    const std::string* m_pText; // not owned; null if m_text is all there is
    std::string_view m_text;    // what is read
    int m_iPos;                 // of the next character
    char m_chCurrent;           // the last character read; no news once m_bEof is set
    bool m_bEof;
    int m_iLine;
    int m_iColumn;
    std::string m_strToken; // the string or number under reading
};

} // namespace QnXmlLib16
