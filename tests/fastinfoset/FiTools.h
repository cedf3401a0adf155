#pragma once

#include "QnXmlLib16/fastinfoset/FastInfosetContext.h"
#include "QnXmlLib16/fastinfoset/FastInfosetReader.h"
#include "QnXmlLib16/fastinfoset/FastInfosetWriter.h"
#include "QnXmlLib16/support/BinaryStream.h"
#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/xml/XmlAttribute.h"
#include "QnXmlLib16/xml/XmlDocument.h"
#include "QnXmlLib16/xml/XmlElement.h"
#include "tests/support/Text.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

// Documents as lines of text: octets in hexadecimal, what a writer does, and trees.

namespace Fi {

using namespace QnXmlLib16;

// The rows of a table: a line each, '|' between the cells. A line that begins with '|' goes on with
// the row above it, one that begins with '+' with its last cell, and "//" begins a comment.
template <std::size_t nCells>
std::vector<std::array<std::string, nCells>> Table(const char* pszTable)
{
    const auto trimmed = [](const std::string& str) {
        const std::size_t nFirst = std::min(str.find_first_not_of(' '), str.size());
        return str.substr(nFirst, str.find_last_not_of(' ') + 1 - nFirst);
    };
    std::vector<std::string> vecRows;
    std::istringstream table(pszTable);
    for (std::string strLine; std::getline(table, strLine);) {
        strLine = trimmed(strLine);
        if (strLine.rfind("+ ", 0) == 0)
            vecRows.back() += strLine.substr(1);
        else if (strLine.rfind("| ", 0) == 0)
            vecRows.back() += strLine;
        else if (!strLine.empty() && strLine.rfind("//", 0) != 0)
            vecRows.push_back(strLine);
    }
    std::vector<std::array<std::string, nCells>> vecTable;
    for (const std::string& strRow : vecRows) {
        vecTable.emplace_back();
        std::istringstream row(strRow);
        std::string strCell;
        for (std::size_t n = 0; std::getline(row, strCell, '|'); ++n)
            vecTable.back().at(n) = trimmed(strCell);
    }
    return vecTable;
}

// "E0 00 'abc' 4*20": octets, characters, and an octet four times.
inline std::string Bytes(const std::string& strOctets)
{
    const char* psz = strOctets.c_str();
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

using Steps = std::function<void(CFastInfosetWriter&)>;

// Makes the writer do what the words say, see the verbs. Behind a verb of one letter may stand
// "{uri}name=(type)text", each part as far as it is there; '~' is a zero byte.
inline void Do(CFastInfosetWriter& writer, const std::string& strSteps)
{
    struct Step
    {
        std::string strUri, strName, strText;
        ItemType eType = it_string;
    };
    using W = CFastInfosetWriter;
    using S = const Step;
    static const std::map<std::string, void (*)(W&, S&)> mapVerbs = {
        {"doc", [](W& w, S&) { w.WriteStartDocument(FInfoDecl_None); }},
        {"end", [](W& w, S&) { w.WriteEndDocument(); }},
        {"default", [](W& w, S&) { w.SetDefaultNamespace("urn:d"); }},
        {"#", [](W& w, S& s) { w.AddNamespace(s.strName, s.strUri); }},
        {"<", [](W& w, S& s) { w.WriteStartElement(s.strName, s.strUri); }},
        {">", [](W& w, S&) { w.WriteEndElement(); }},
        {"@", [](W& w, S& s) { w.WriteAttributeString(s.strName, s.strUri, s.strText, s.eType); }},
        {"!", [](W& w, S& s) { w.WriteAttributeType(s.strUri, s.strName, s.eType); }},
        {"nil", [](W& w, S&) { w.WriteAttributeNil(); }},
        {"'", [](W& w, S& s) { w.WriteString(s.strText, s.eType, false); }},
        {"comment", [](W& w, S&) { w.WriteComment("c"); }},
        {"pi", [](W& w, S&) { w.WritePI("<?p i?>"); }},
        {"schema", [](W& w, S&) { w.WriteInlineSchema("s"); }},
    };
    static const std::map<std::string, ItemType> mapTypes = {
        {"base64", it_base64Binary},
        {"char", it_char},
        {"decimal", it_decimal},
        {"i2", it_i2},
        {"i4", it_i4},
    };
    std::istringstream steps(strSteps);
    for (std::string str; steps >> str;) {
        std::replace(str.begin(), str.end(), '~', '\0');
        Step step;
        if (mapVerbs.count(str) == 0) {
            const std::size_t nText = std::min(str.find_first_of("='"), str.size());
            const std::size_t nName = std::max<std::size_t>(str.rfind('}', nText) + 1, 1);
            const std::size_t nType = str.find(')', nText) + 1;
            if (nName > 1)
                step.strUri = str.substr(2, nName - 3);
            step.strName = str.substr(nName, std::max(nText, nName) - nName);
            if (nType)
                step.eType = mapTypes.at(str.substr(nText + 2, nType - nText - 3));
            if (nText < str.size())
                step.strText = str.substr(nType ? nType : nText + 1);
            str.resize(1);
        }
        mapVerbs.at(str)(writer, step);
    }
}

struct Output
{
    std::string strOctets;
    std::string strFailure; // in angle brackets
};

// What the steps put out, and what they failed with if they did.
inline Output Written(const Steps& steps, const CFastInfosetContext& context = {})
{
    CBinaryStream stream;
    std::string strFailure;
    try {
        CFastInfosetWriter writer(context, stream);
        steps(writer);
    }
    catch (const CQnException& e) {
        strFailure = '<' + e.GetMessage() + '>';
    }
    return {ToText(stream.GetBinaryStream()), strFailure};
}

// The octets of steps that have to succeed.
inline std::string Written(const std::string& strSteps, const CFastInfosetContext& context = {})
{
    const Output output = Written([&](CFastInfosetWriter& w) { Do(w, strSteps); }, context);
    EXPECT_EQ(output.strFailure, "");
    return output.strOctets;
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
inline std::string Read(const std::string& strBytes, const CFastInfosetContext& context = {})
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

// The same, several times.
inline std::string Repeated(const std::string& strBytes, std::size_t nCount)
{
    std::string strAll;
    strAll.reserve(strBytes.size() * nCount);
    for (; nCount > 0; --nCount)
        strAll += strBytes;
    return strAll;
}

} // namespace Fi
