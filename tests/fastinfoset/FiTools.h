#pragma once

#include "QnXmlLib16/fastinfoset/FastInfosetContext.h"
#include "QnXmlLib16/fastinfoset/FastInfosetReader.h"
#include "QnXmlLib16/fastinfoset/FastInfosetWriter.h"
#include "QnXmlLib16/support/BinaryStream.h"
#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/xml/XmlDocument.h"
#include "tests/support/Text.h"
#include "tests/xml/TreeLine.h"
#include "tests/xml/WriterScript.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

// Documents as lines of text: octets in hexadecimal, scripts for a writer, and trees.

namespace Fi {

using namespace QnXmlLib16;

// The rows of a table: a line each, '|' between the cells. A line that begins with '|' goes on with
// the row above it, one that begins with '+' with its last cell, and "//" begins a comment.
template <std::size_t nCells>
std::vector<std::array<std::string, nCells>> Table(const char* pszTable)
{
    std::vector<std::array<std::string, nCells>> vecTable;
    std::size_t nCell = 0;
    std::istringstream table(pszTable);
    for (std::string strLine; std::getline(table >> std::ws, strLine);) {
        const std::string strHead = strLine.substr(0, 2);
        if (strHead == "//")
            continue;
        if (strHead == "| ")
            ++nCell;
        else if (strHead != "+ ") {
            vecTable.emplace_back();
            nCell = 0;
        }
        std::istringstream cells(strLine.substr(strHead == "| " || strHead == "+ " ? 1 : 0));
        for (std::string strCell; std::getline(cells, strCell, '|'); ++nCell) {
            const std::size_t nFirst = std::min(strCell.find_first_not_of(' '), strCell.size());
            vecTable.back().at(nCell) +=
                strCell.substr(nFirst, strCell.find_last_not_of(' ') + 1 - nFirst);
        }
        --nCell; // the next line may go on with it
    }
    return vecTable;
}

// "E0 00 00 01 00 'abc' 4*20": octets, characters, and an octet four times.
inline std::string Bytes(const std::string& strOctets)
{
    std::string strBytes;
    for (std::size_t n = 0; n < strOctets.size();) {
        if (strOctets[n] == ' ') {
            ++n;
            continue;
        }
        std::size_t nTimes = 1;
        const std::size_t nStar = strOctets.find_first_not_of("0123456789", n);
        if (nStar != std::string::npos && strOctets[nStar] == '*') {
            nTimes = std::stoul(strOctets.substr(n));
            n = nStar + 1;
        }
        const bool bText = strOctets.at(n) == '\'';
        const std::size_t nEnd = bText ? strOctets.find('\'', n + 1) : n + 2;
        if (nEnd > strOctets.size())
            throw std::invalid_argument(strOctets); // a slip in a test
        const std::string strItem = strOctets.substr(n + bText, nEnd - n - bText);
        strBytes += Repeated(
            bText ? strItem : std::string(1, static_cast<char>(std::stoul(strItem, nullptr, 16))),
            nTimes);
        n = nEnd + bText;
    }
    return strBytes;
}

using Steps = std::function<void(CFastInfosetWriter&)>;

// Runs a script as a document, which ends if the script does so with a full stop.
inline void WriteDocument(CFastInfosetWriter& writer, const std::string& strScript)
{
    writer.WriteStartDocument(FInfoDecl_None);
    RunScript(writer, strScript);
    if (!strScript.empty() && strScript.back() == '.')
        writer.WriteEndDocument();
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

// The octets of a document that has to succeed.
inline std::string Written(const std::string& strScript, const CFastInfosetContext& context = {})
{
    const Output output = Written([&](auto& w) { WriteDocument(w, strScript); }, context);
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
    return TreeLine(*document.GetDocumentElement());
}

} // namespace Fi
