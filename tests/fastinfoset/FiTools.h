#pragma once

#include "QnXmlLib16/fastinfoset/FastInfosetContext.h"
#include "QnXmlLib16/fastinfoset/FastInfosetReader.h"
#include "QnXmlLib16/fastinfoset/FastInfosetWriter.h"
#include "QnXmlLib16/support/BinaryStream.h"
#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/xml/XmlAttribute.h"
#include "QnXmlLib16/xml/XmlDocument.h"
#include "QnXmlLib16/xml/XmlElement.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

// Documents as lines of text: octets in hexadecimal on one side, trees on the other.

namespace Fi {

using namespace QnXmlLib16;

// "E0 00 'abc' 4*20": octets, characters, and an octet four times.
inline std::string Bytes(const char* psz)
{
    std::string strBytes;
    while (*psz) {
        if (*psz == ' ') {
            ++psz;
            continue;
        }
        char* pszEnd;
        unsigned long ulCount = std::strtoul(psz, &pszEnd, 10);
        if (*pszEnd == '*')
            psz = pszEnd + 1;
        else
            ulCount = 1;
        std::string strItem;
        if (*psz == '\'') {
            while (*++psz != '\'')
                strItem += *psz;
            ++psz;
        }
        else {
            const char acOctet[] = {psz[0], psz[1], '\0'};
            strItem = static_cast<char>(std::strtoul(acOctet, &pszEnd, 16));
            if (*pszEnd != '\0')
                throw std::invalid_argument(psz); // a slip in a test
            psz += 2;
        }
        for (; ulCount > 0; --ulCount)
            strBytes += strItem;
    }
    return strBytes;
}

// "E0 00": the way back, every octet in hexadecimal.
inline std::string Hex(const std::string& strBytes)
{
    std::string strHex;
    for (const char c : strBytes) {
        char acOctet[4];
        std::snprintf(acOctet, sizeof acOctet, strHex.empty() ? "%02X" : " %02X",
                      static_cast<unsigned int>(static_cast<unsigned char>(c)));
        strHex += acOctet;
    }
    return strHex;
}

inline std::string ToString(const CBinaryData& data)
{
    return std::string(reinterpret_cast<const char*>(data.GetData()), data.GetLength());
}

using Steps = std::function<void(CFastInfosetWriter&)>;

// What the steps put out; the message of a failure stands in strFailure.
inline std::string Written(const Steps& steps, const CFastInfosetContext& context,
                           std::string& strFailure)
{
    CBinaryStream stream;
    strFailure.clear();
    try {
        CFastInfosetWriter writer(context, stream);
        steps(writer);
    }
    catch (const CQnException& e) {
        strFailure = e.GetMessage();
    }
    return ToString(stream.GetBinaryStream());
}

// A document whose input is given to the reader as it is.
class CDocument : public CXmlDocument
{
public:
    explicit CDocument(const std::string& strBytes)
    {
        // No byte of room behind the input: a sanitizer sees a read beyond it.
        std::unique_ptr<unsigned char[]> pBuffer(new unsigned char[strBytes.size()]);
        std::memcpy(pBuffer.get(), strBytes.data(), strBytes.size());
        SetBuffer(pBuffer.release(), strBytes.size());
    }
};

// "{uri}name[{uri}attribute='value'] 'text' (children)", each part as far as it is there.
inline std::string Tree(const CXmlElement& element)
{
    const auto name = [](const std::string& strUri, const std::string& strName) {
        return (strUri.empty() ? "" : '{' + strUri + '}') + strName;
    };
    std::string str = name(element.GetNamespaceURI(), element.GetLocalName());
    for (const CXmlAttribute* pAttribute : element.GetAttributes())
        str += '[' + name(pAttribute->GetNamespaceURI(), pAttribute->GetLocalName()) + "='" +
               pAttribute->GetValue() + "']";
    if (!element.GetText().empty())
        str += " '" + element.GetText() + '\'';
    if (const CXmlElement* pChild = element.GetFirstElement()) {
        str += " (";
        for (; pChild; pChild = pChild->GetNextSiblingElement())
            str += Tree(*pChild) + (pChild->GetNextSiblingElement() ? " " : "");
        str += ')';
    }
    return str;
}

// The tree of the document, "no Fast Infoset", or the message of the failure in angle brackets.
inline std::string Read(const std::string& strBytes,
                        const CFastInfosetContext& context = CFastInfosetContext())
{
    CDocument document(strBytes);
    try {
        if (!CFastInfosetReader(context, document).Parse())
            return "no Fast Infoset";
    }
    catch (const CQnException& e) {
        return '<' + e.GetMessage() + '>';
    }
    catch (const std::logic_error& e) {
        return std::string("<logic_error ") + e.what() + '>';
    }
    return Tree(*document.GetDocumentElement());
}

} // namespace Fi
