#pragma once

#include "QnXmlLib16/json/JsonContext.h"
#include "QnXmlLib16/json/JsonReaderHandler.h"

#include <cstddef>
#include <string>
#include <vector>

namespace QnXmlLib16 {

class CXmlTextWriter;

// Writes the events of a JSON document as XML text: a member becomes an element, and, unless the
// round trip value is 0, a member "@name" an attribute and "#text" the text of the element around
// it. All names are written as they stand, in no namespace, so that prefixes are resolved, and
// bad names refused, when the XML is parsed.
//
// Nothing looks ahead, and the mapping loses data in these shapes:
// - an object that ends with an attribute leaves its element open, and the members behind it
//   nest in there;
// - "#text" closes the element, so members behind it land in the parent;
// - only arrays of objects keep their items apart.
class QNXML_API CJsonReaderToXmlHandler : public IJsonReaderHandler
{
public:
    // Writer and path provider stay the caller's and must outlive the handler.
    CJsonReaderToXmlHandler(CXmlTextWriter& writer, JsonRoundTrip eRoundTrip,
                            IErrorPathProvider& errorPath);
    ~CJsonReaderToXmlHandler() override;

    // Writes the XML declaration.
    void ReadStartDocument() override;
    void ReadEndDocument() override;

    // CQnValidationException "JSON item has an empty Name.", with the path;
    // CQnInvalidStateException "Failed to convert name '%s' to Element name in XML.".
    void ReadName(const std::string& strName) override;

    // CQnInvalidStateException "Failed to convert value '%s' to Attribute string value in XML."
    // or "Failed to convert value '%s' to Element string value in XML." where the writer refuses
    // the value or no element is open. So for ReadNumber and ReadBool.
    void ReadString(const std::string& strValue) override;
    void ReadNumber(const std::string& strNumber) override;
    void ReadStartObject() override;
    void ReadEndObject() override;

    // CQnValidationException "JSON Array has no Name.", with the path.
    void ReadStartArray() override;
    void ReadEndArray() override;
    void ReadBool(bool bValue) override;

    // Ends the element and marks nothing: a null reads back as an empty element.
    void ReadNull() override;

private:
    void StartElement(const std::string& strName);
    void StartAttribute(const std::string& strName);
    void EndItem();
    void WriteString(const std::string& strValue);

    CXmlTextWriter* m_pWriter; // not owned
    JsonRoundTrip m_eRoundTrip;
    IErrorPathProvider* m_pErrorPath;     // not owned
    std::size_t m_iElements = 0;          // open in the output
    std::vector<std::string> m_vecArrays; // names of the arrays being read
    std::string m_strName;                // has been read and awaits its value
    bool m_bAttribute = false;
    bool m_bTextMember = false;
};

} // namespace QnXmlLib16
