#pragma once

#include "QnXmlLib16/support/SettingTypes.h"
#include "QnXmlLib16/xml/XmlWriter.h"

#include <string>

namespace QnXmlLib16 {

class CTextStream;

// Writes XML 1.0 text with Namespaces in XML into a CTextStream, in one forward pass that holds
// back nothing but the ">" of an open start tag.
//
// Whole items are the unit of flushing: once one is written and the stream holds 4096 characters
// or more, its Flush is called. An attribute, a string or an end with no element open fails with
// CQnException "Attributes must be added before elements". After a failure the text up to it is
// in the stream.
class QNXML_API CXmlTextWriter : public CXmlWriter
{
public:
    // The stream stays the caller's and must outlive the writer.
    explicit CXmlTextWriter(CTextStream& stream);
    ~CXmlTextWriter() override;

    void Open() override;

    // Closes the stream, then fails as CXmlWriter::Close does while an element is open.
    void Close() override;

    // Put out as it stands between "<!--" and "-->", escaped like content and not searched for
    // "--". An open start tag stays open.
    void WriteComment(const std::string& strText) override;
    void WritePI(const std::string& strText) override;
    void WriteInlineSchema(const std::string& strText) override;

    // A namespace other than the default one that has no prefix in scope gets a unique one, with
    // its declaration in this start tag; the namespace is put out as it stands. The root also
    // declares what was set for the document.
    void WriteStartElement(const std::string& strName, const std::string& strNamespace) override;

    // An empty value writes nothing and leaves the start tag open, and so does a default value
    // unless SetWriteDefaultElementValues(true). A value that begins with "<![CDATA[" is put out
    // as it stands; any other is escaped, and ends at its first zero byte.
    void WriteString(const std::string& strValue, ItemType eType, bool bIsDefault) override;
    void WriteEndElement() override;

    // A namespace always makes a prefix here, the default one too. CQnException "Attributes must
    // be added before elements" once the element has content.
    void WriteAttributeString(const std::string& strName, const std::string& strNamespace,
                              const std::string& strValue, ItemType eType) override;
    void WriteAttributeType(const std::string& strNamespace, const std::string& strTypeName,
                            ItemType eType) override;
    void WriteAttributeNil() override;

    // Indentation and line ends between tags; on at the start. A declaration, a comment, an
    // instruction and a header directive end their lines either way.
    bool GetFormat() const;
    void SetFormat(bool bFormat);

    // The line end, between tags and for each line feed in content; line feed at the start.
    // CQnException "Invalid EOL type." for anything but the two enumerators, with no change.
    EOLType GetEOLType() const;
    void SetEOLType(EOLType eEOLType);

    // One level of indentation; a tab at the start.
    const std::string& GetIndentChars() const;
    void SetIndentChars(const char* pszIndentChars);

    // Whether WriteString puts out values that are the schema's default; off at the start.
    bool GetWriteDefaultElementValues() const;
    void SetWriteDefaultElementValues(bool bWrite);

    // The XML declaration, with the encoding of the stream where that has a name.
    void WriteStartDocument();

    // A line before the root element, as it stands. CQnException "Headed directives must appear
    // before an Element has been added." while an element is open.
    void WriteHeaderDirective(const std::string& strText);

    // A block of markup as it stands. An open start tag is not finished; CloseParentElm does it.
    void WriteRawElement(const std::string& strText);

    // Makes the innermost element ready for a child: counts it and finishes an open start tag.
    // Nothing when no element is open.
    void CloseParentElm();

private:
    CXmlWriterContext& RequireContext() const;
    CXmlWriterContext& RequireOpenStartTag() const;
    void WriteDeclaration(const std::string& strPrefix, const std::string& strNamespace);
    void WriteIndent(long iDepth);
    void PadAndAppend(const std::string& strText, bool bAttribute);
    void FlushWhenDue();

    bool m_bWriteDefaultElementValues;
    std::string m_strIndentChars;
    std::string m_strEOL;
    EOLType m_eEOLType;
    bool m_bFormat;
    CTextStream* m_pStream;     // not owned
    std::string m_strIndentRun; // many levels of indentation
};

} // namespace QnXmlLib16
