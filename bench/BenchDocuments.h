#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>
#include <vector>

// The documents that the benchmarks run on.

struct CBenchDocument
{
    std::string strName;
    std::string strXml;
};

inline std::string GetDataFolder()
{
    if (const char* pszFolder = std::getenv("QNXML_BENCH_DATA"))
        return pszFolder;
#ifdef QNXML_SHARED_DATA
    return QNXML_SHARED_DATA "/gpx";
#else
    return std::string();
#endif
}

inline void AppendOrder(std::string& strXml, unsigned int uNumber)
{
    static const char* const kNames[] = {"Ada Byron", "Blaise P.", "Carl Friedrich", "Emmy"};
    static const char* const kCurrencies[] = {"EUR", "SEK", "NZD"};
    const std::string strNumber = std::to_string(uNumber);
    strXml += "\t<order id=\"" + strNumber + "\" status=\"open\" x:source=\"web\">\n";
    strXml += "\t\t<customer since=\"2001-05-09\">";
    strXml += kNames[uNumber % 4];
    strXml += "</customer>\n";
    for (unsigned int uItem = 0; uItem <= uNumber % 3; ++uItem) {
        strXml += "\t\t<p:item sku=\"AB-" + strNumber + "-" + std::to_string(uItem) +
                  "\" quantity=\"" + std::to_string(1 + uNumber % 9) + "\">\n";
        strXml += "\t\t\t<p:name>Widget &amp; handle</p:name>\n\t\t\t<p:price currency=\"";
        strXml += kCurrencies[uItem];
        strXml += "\">" + std::to_string(uNumber % 1000) + ".50</p:price>\n\t\t</p:item>\n";
    }
    strXml += "\t\t<x:checked>2024-02-29T12:30:00Z</x:checked>\n\t</order>\n";
}

// About nBytes of orders: attributes, three namespaces, short texts, formatted with line feeds.
inline std::string MakeOrders(std::size_t nBytes)
{
    std::string strXml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                         "<orders xmlns=\"http://example.com/orders/2024\"\n"
                         "\txmlns:p=\"http://example.com/products\"\n"
                         "\txmlns:x=\"urn:example:extension\">\n";
    strXml.reserve(nBytes + 1024);
    for (unsigned int uNumber = 1; strXml.size() < nBytes; ++uNumber)
        AppendOrder(strXml, uNumber);
    return strXml += "</orders>\n";
}

// Orders of about 15 MB, and every GPX file of the folder that the environment variable
// QNXML_BENCH_DATA names, else of the folder that the build knows. A folder that is not there
// adds nothing.
inline const std::vector<CBenchDocument>& GetBenchDocuments()
{
    static const std::vector<CBenchDocument> vecDocuments = [] {
        std::vector<CBenchDocument> vec{{"orders", MakeOrders(15'000'000)}};
        std::error_code error;
        for (const auto& entry : std::filesystem::directory_iterator(GetDataFolder(), error)) {
            if (entry.path().extension() != ".gpx")
                continue;
            std::ifstream file(entry.path(), std::ios::binary);
            vec.push_back({entry.path().stem().string(),
                           std::string(std::istreambuf_iterator<char>(file), {})});
        }
        std::sort(vec.begin() + 1, vec.end(),
                  [](const auto& a, const auto& b) { return a.strName < b.strName; });
        return vec;
    }();
    return vecDocuments;
}
