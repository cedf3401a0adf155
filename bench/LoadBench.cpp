// Loading into the element tree against Expat with empty, namespace-aware handlers on the same
// bytes. Both run in turn in every iteration, so that the ratios hold whatever else the machine
// does.

#include "QnXmlLib16/xml/XmlDocument.h"
#include "bench/BenchDocuments.h"
#include "bench/BenchTiming.h"

#include <cstdio>
#include <ctime>
#include <memory>
#include <optional>

#include <benchmark/benchmark.h>
#include <malloc.h>

namespace {

using QnXmlLib16::CXmlDocument;

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

void Load(CXmlDocument& document, const std::string& strXml)
{
    document.LoadXmlStream(reinterpret_cast<const unsigned char*>(strXml.data()), strXml.size());
}

// A line of /proc/self/status in bytes; 0 where there is none.
double GetMemory(const char* pszFormat)
{
    unsigned long uKilobytes = 0;
    const std::unique_ptr<FILE, int (*)(FILE*)> pFile(std::fopen("/proc/self/status", "r"),
                                                      std::fclose);
    char acLine[256];
    while (pFile && std::fgets(acLine, sizeof acLine, pFile.get()))
        if (std::sscanf(acLine, pszFormat, &uKilobytes) == 1)
            break;
    return static_cast<double>(uKilobytes) * 1024;
}

// The peak of the resident memory that one load adds, input copy and parser included.
double MeasurePeakMemory(const std::string& strXml)
{
    malloc_trim(0);
    if (FILE* pFile = std::fopen("/proc/self/clear_refs", "w")) {
        std::fputs("5", pFile); // the peak becomes the present use
        std::fclose(pFile);
    }
    const double before = GetMemory("VmRSS: %lu");
    CXmlDocument document;
    Load(document, strXml);
    return GetMemory("VmHWM: %lu") - before;
}

void LoadDocument(benchmark::State& state, const CBenchDocument& input)
{
    const double bytes = static_cast<double>(input.strXml.size());
    const double peak = MeasurePeakMemory(input.strXml);
    std::vector<double> vecExpat;
    std::vector<double> vecLoad;
    std::vector<double> vecDestroy;
    for (auto _ : state) {
        const CThreadStopwatch expat;
        if (!ParseWithEmptyHandlers(input.strXml.data(), input.strXml.size()))
            state.SkipWithError("Expat refuses the document");
        vecExpat.push_back(expat.Seconds());

        const CThreadStopwatch load;
        std::optional<CXmlDocument> document(std::in_place);
        Load(*document, input.strXml);
        vecLoad.push_back(load.Seconds());

        const CThreadStopwatch destroy;
        document.reset();
        vecDestroy.push_back(destroy.Seconds());
        state.SetIterationTime(vecLoad.back());
    }
    const double expat = Median(vecExpat);
    const double load = Median(vecLoad);
    state.counters["MB"] = bytes / 1e6;
    state.counters["expat_ms"] = expat * 1e3;
    state.counters["load_to_expat"] = load / expat;
    state.counters["with_destruction"] = (load + Median(vecDestroy)) / expat;
    state.counters["peak_to_bytes"] = peak / bytes;
}

// Registered ahead of main, since the documents are known at run time only.
[[maybe_unused]] const bool kRegistered = [] {
    for (const CBenchDocument& input : GetBenchDocuments())
        benchmark::RegisterBenchmark(("Load/" + input.strName).c_str(), LoadDocument, input)
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond);
    return true;
}();

} // namespace
