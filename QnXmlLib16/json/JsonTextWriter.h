#pragma once

#include "QnXmlLib16/json/JsonContext.h"
#include "QnXmlLib16/support/SettingTypes.h"
#include "QnXmlLib16/xml/XmlWriter.h"

#include <string>

namespace QnXmlLib16 {

class CTextStream;

// Writes JSON text into a CTextStream from the events of an XML document, without looking ahead.
// The root element is the only key of one outer object; an element with nothing but text is a
// plain value, any other an object with its attributes and content as members:
//
//     {
//         "root": {
//             "@a": "1",
//             "#text": "x"
//         }
//     }
//
// What comes out is not always well-formed JSON, and doesn't always come back:
// - quotation marks and backslashes in values are not escaped;
// - an empty element is a key with nothing behind it, and so is a nil one;
// - a collection of plain values repeats its key and ends with a "]" that nothing opened; a
//   collection of objects is an array, and members behind it stand before its "]".
//
// An attribute, a type, a string or an end with no element open fails with CQnException
// "Attributes must be added before elements". After a failure the text up to it is in the stream.
class QNXML_API CJsonTextWriter : public CXmlWriter
{
public:
    // The stream stays the caller's and must outlive the writer.
    explicit CJsonTextWriter(CTextStream& stream);
    ~CJsonTextWriter() override;

    void Open() override;

    // Closes the stream, then fails as CXmlWriter::Close does while an element is open.
    void Close() override;

    // A comment "/* ... */", which only a reader that allows comments takes back.
    void WriteComment(const std::string& strText) override;

    // These two and WriteAttributeNil do nothing: JSON has no place for what they carry.
    void WritePI(const std::string& strText) override;
    void WriteInlineSchema(const std::string& strText) override;

    // CQnException "Unknown Namespace: %s." with the element's name, below the root, for a
    // namespace without a prefix.
    void WriteStartElement(const std::string& strName, const std::string& strNamespace) override;

    // Numbers and booleans go out bare, all other types quoted. Default and empty values are
    // written like any other.
    void WriteString(const std::string& strValue, ItemType eType, bool bIsDefault) override;
    void WriteEndElement() override;

    // Allowed behind content too. CQnException "Unknown Namespace: %s." with the attribute's name
    // for a namespace without a prefix.
    void WriteAttributeString(const std::string& strName, const std::string& strNamespace,
                              const std::string& strValue, ItemType eType) override;

    // Written for JsonRoundTrip_Full only. CQnException "Unknown Namespace: %s." with the type's
    // name, or with "type" where the XML Schema instance namespace itself has no prefix.
    void WriteAttributeType(const std::string& strNamespace, const std::string& strTypeName,
                            ItemType eType) override;
    void WriteAttributeNil() override;

    // Indentation and line ends between members; on at the start.
    bool GetFormat() const;
    void SetFormat(bool bFormat);

    // The line end, between members and for each line feed in a value; line feed at the start.
    // CQnException "Invalid EOL type." for anything but the two enumerators, with no change.
    EOLType GetEOLType() const;
    void SetEOLType(EOLType eEOLType);

    // JsonRoundTrip_Full at the start.
    JsonRoundTrip GetSupportRoundtrip() const;
    void SetSupportRoundtrip(JsonRoundTrip eRoundTrip);

    // One level of indentation; a tab at the start.
    const std::string& GetIndentChars() const;
    void SetIndentChars(const char* pszIndentChars);

    // The braces of the outer object.
    void WriteStartDocument();
    void WriteEndDocument();

private:
    CXmlWriterContext& RequireContext() const;
    void WriteLine(long iDepth);
    void PadAndAppend(const std::string& strText);
    void WriteValue(const std::string& strValue, ItemType eType);
    void WriteKey(bool bMarked, const std::string* pPrefix, const std::string& strName);
    void WriteDeclaration(CXmlWriterContext& context, const std::string* pPrefix,
                          const std::string& strNamespace);
    void IncrementIndents(CXmlWriterContext* pContext);
    void DecrementIndents(CXmlWriterContext* pContext);
    void WriteOpenBrackets(CXmlWriterContext& context);
    void FlushWhenDue();

    std::string m_strIndentChars;
    std::string m_strEOL;
    EOLType m_eEOLType;
    JsonRoundTrip m_eRoundTrip;
    bool m_bFormat;
    CTextStream* m_pStream; // not owned
    // A key has been written for the innermost element and nothing behind it: no object is open
    // for this element yet.
    bool m_bValuePending;
    std::string m_strLineRun; // a line end and many levels of indentation
};

} // namespace QnXmlLib16
