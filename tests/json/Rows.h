#pragma once

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
