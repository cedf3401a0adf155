// Loading into the element tree against Expat with empty, namespace-aware handlers on the same
// bytes. Both run in turn in every iteration, so that the ratios hold whatever else the machine
// does.

#include "QnXmlLib16/xml/XmlDocument.h"
#include "bench/BenchDocuments.h"
#include "bench/BenchMemory.h"
#include "bench/BenchTiming.h"

#include <optional>

#include <benchmark/benchmark.h>

namespace {

using QnXmlLib16::CXmlDocument;

void Load(CXmlDocument& document, const std::string& strXml)
{
    document.LoadXmlStream(reinterpret_cast<const unsigned char*>(strXml.data()), strXml.size());
}

// The peak of the resident memory that one load adds, input copy and parser included.
double MeasureLoad(const std::string& strXml)
{
    CXmlDocument document;
    return MeasurePeakMemory([&] { Load(document, strXml); });
}

void LoadDocument(benchmark::State& state, const CBenchDocument& input)
{
    const double bytes = static_cast<double>(input.strXml.size());
    const double peak = MeasureLoad(input.strXml);
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
