#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <ctime>
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

// Processor time of this thread: other work on the machine interrupts the long loads more often
// than the short parses, and would count against them.
class CThreadStopwatch
{
public:
    double Seconds() const { return Now() - m_start; }

private:
    static double Now()
    {
        timespec now{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
        return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
    }

    double m_start = Now();
};

template <class TAction>
double ThreadSeconds(const TAction& action)
{
    const CThreadStopwatch stopwatch;
    action();
    return stopwatch.Seconds();
}

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
