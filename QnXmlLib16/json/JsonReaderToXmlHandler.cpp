#include "QnXmlLib16/json/JsonReaderToXmlHandler.h"

#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/support/Functions.h"
#include "QnXmlLib16/xml/XmlTextWriter.h"

namespace QnXmlLib16 {

namespace {

const std::string kNoNamespace;
const std::string kTrue = "true";
const std::string kFalse = "false";
const std::string kTextMember = "#text";

} // namespace

CJsonReaderToXmlHandler::CJsonReaderToXmlHandler(CXmlTextWriter& writer, JsonRoundTrip eRoundTrip,
                                                 IErrorPathProvider& errorPath)
    : m_pWriter(&writer), m_eRoundTrip(eRoundTrip), m_pErrorPath(&errorPath)
{}

CJsonReaderToXmlHandler::~CJsonReaderToXmlHandler() = default;

void CJsonReaderToXmlHandler::ReadStartDocument()
{
    m_iElements = 0;
    m_vecArrays.clear();
    m_pWriter->WriteStartDocument();
}

void CJsonReaderToXmlHandler::ReadEndDocument() {}

void CJsonReaderToXmlHandler::ReadName(const std::string& strName)
{
    if (strName.empty())
        throw CQnValidationException("JSON item has an empty Name.", m_pErrorPath->GetPath());
    // Deliberate: the text closes the element around it, so members behind it land in the parent.
    // Pinned by JsonToXml.MembersMoveIntoANeighbourInTheseShapes.
    if (m_eRoundTrip != JsonRoundTrip_None && strName == kTextMember) {
        m_bTextMember = true;
        m_bAttribute = false;
    }
    else if (m_eRoundTrip != JsonRoundTrip_None && strName[0] == '@') {
        StartAttribute(strName);
    }
    else {
        StartElement(strName);
    }
}

void CJsonReaderToXmlHandler::ReadString(const std::string& strValue)
{
    WriteString(strValue);
}

void CJsonReaderToXmlHandler::ReadNumber(const std::string& strNumber)
{
    WriteString(strNumber);
}

void CJsonReaderToXmlHandler::ReadStartObject()
{
    // The first object of an array goes on with the element that the array's name opened.
    if (m_strName.empty() && !m_vecArrays.empty())
        StartElement(m_vecArrays.back());
}

void CJsonReaderToXmlHandler::ReadEndObject()
{
    if (!m_bTextMember)
        EndItem();
    m_bTextMember = false;
}

void CJsonReaderToXmlHandler::ReadStartArray()
{
    if (m_strName.empty())
        throw CQnValidationException("JSON Array has no Name.", m_pErrorPath->GetPath());
    m_vecArrays.push_back(m_strName);
}

void CJsonReaderToXmlHandler::ReadEndArray()
{
    if (!m_vecArrays.empty())
        m_vecArrays.pop_back();
}

void CJsonReaderToXmlHandler::ReadBool(bool bValue)
{
    WriteString(bValue ? kTrue : kFalse);
}

void CJsonReaderToXmlHandler::ReadNull()
{
    EndItem();
}

void CJsonReaderToXmlHandler::StartElement(const std::string& strName)
{
    m_bAttribute = false;
    m_strName = strName;
    ++m_iElements;
    try {
        m_pWriter->WriteStartElement(m_strName, kNoNamespace);
    }
    catch (const CQnException&) {
        throw CQnInvalidStateException(
            FormatString("Failed to convert name '%s' to Element name in XML.", m_strName.c_str()));
    }
}

// strName is the whole name, with its "@".
void CJsonReaderToXmlHandler::StartAttribute(const std::string& strName)
{
    m_bAttribute = true;
    m_strName.assign(strName, 1, std::string::npos);
}

// Deliberate: an attribute ends nothing, and at the end of an object it still stands for the last
// item read. An object that ends with an attribute thus leaves its element open, and the members
// behind it nest in there. Pinned by JsonToXml.MembersMoveIntoANeighbourInTheseShapes.
void CJsonReaderToXmlHandler::EndItem()
{
    m_strName.clear();
    if (m_bAttribute || m_iElements == 0)
        return;
    --m_iElements;
    m_pWriter->WriteEndElement();
}

void CJsonReaderToXmlHandler::WriteString(const std::string& strValue)
{
    const char* pszMessage = m_bAttribute
                                 ? "Failed to convert value '%s' to Attribute string value in XML."
                                 : "Failed to convert value '%s' to Element string value in XML.";
    // The writer takes an empty text without asking for an element.
    bool bRefused = !m_bAttribute && m_iElements == 0;
    if (!bRefused) {
        try {
            if (m_bAttribute)
                m_pWriter->WriteAttributeString(m_strName, kNoNamespace, strValue, it_string);
            else
                m_pWriter->WriteString(strValue, it_string, false);
        }
        catch (const CQnException&) {
            bRefused = true;
        }
    }
    if (bRefused)
        throw CQnInvalidStateException(FormatString(pszMessage, strValue.c_str()));
    EndItem();
}

} // namespace QnXmlLib16
