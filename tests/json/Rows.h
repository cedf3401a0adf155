#pragma once

#include "QnXmlLib16/QnXmlLib16.h"
#include "QnXmlLib16/json/JsonTextReader.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <utility>
#include <vector>

// The rows of a table, each a line "left => right". The table starts with a line feed.
inline std::vector<std::pair<std::string, std::string>> Rows(const char* pszTable)
{
    std::vector<std::pair<std::string, std::string>> vecRows;
    std::istringstream lines(pszTable + 1);
    for (std::string strLine; std::getline(lines, strLine);) {
        const std::size_t nArrow = strLine.find(" => ");
        vecRows.emplace_back(strLine.substr(0, nArrow), strLine.substr(nArrow + 4));
    }
    return vecRows;
}

// The XML that a JSON text converts to, on one line, without declaration and indentation; "Class:
// message" for a failure, without its path.
inline std::string XmlLineOf(const std::string& strJson,
                             const QnXmlLib16::CSerializationContext& context = {})
{
    using namespace QnXmlLib16;
    try {
        const CBinaryData xml = CJsonTextReader::ConvertJsonToXml(strJson, context);
        std::string strXml(reinterpret_cast<const char*>(xml.GetData()), xml.GetLength());
        const std::string strDeclaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
        EXPECT_EQ(strXml.compare(0, strDeclaration.size(), strDeclaration), 0);
        std::string strLine;
        for (const char c : strXml.substr(strDeclaration.size())) {
            if (c != '\n' && c != '\t')
                strLine += c;
        }
        return strLine;
    }
    catch (const CQnException& e) {
        const std::string strClass = typeid(e) == typeid(CQnInvalidStateException) ? "State: "
                                     : typeid(e) == typeid(CQnValidationException) ? "Validation: "
                                                                                   : "Exception: ";
        return strClass + e.GetMessage().substr(0, e.GetMessage().find("\nPath: " + e.GetPath()));
    }
}
