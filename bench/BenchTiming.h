#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include <expat.h>

// What the benchmarks measure by. Ratios hold on a busy machine if both sides run in turn in
// every iteration and the medians are compared.

class CStopwatch
{
public:
    double Seconds() const
    {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - m_start).count();
    }

private:
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
};

inline double Median(std::vector<double> vec)
{
    const auto middle = vec.begin() + static_cast<std::ptrdiff_t>(vec.size() / 2);
    std::nth_element(vec.begin(), middle, vec.end());
    return *middle;
}

// The measure of all reading and writing: Expat with empty, namespace-aware handlers. False where
// it refuses the text.
inline bool ParseWithEmptyHandlers(const char* pText, std::size_t uLength)
{
    const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> pParser(
        XML_ParserCreateNS(nullptr, '|'), XML_ParserFree);
    XML_Parser parser = pParser.get();
    XML_SetElementHandler(
        parser, [](void*, const char*, const char**) {}, [](void*, const char*) {});
    XML_SetNamespaceDeclHandler(
        parser, [](void*, const char*, const char*) {}, [](void*, const char*) {});
    XML_SetCharacterDataHandler(parser, [](void*, const char*, int) {});
    return XML_Parse(parser, pText, static_cast<int>(uLength), 1) == XML_STATUS_OK;
}
