// Bound objects of the GPX model: reading a track into them and writing them again, against Expat
// with empty, namespace-aware handlers on the same bytes; and as JSON, against the XML of the same
// objects. All run in turn in every iteration, so that the ratios hold whatever else the machine
// does; times are those of the processor.

#include "QnXmlLib16/binding/SerializationContext.h"
#include "QnXmlLib16/json/JsonTextReader.h"
#include "QnXmlLib16/values/BinaryData.h"
#include "bench/BenchMemory.h"
#include "bench/BenchTiming.h"
#include "bench/BenchTrack.h"

#include <cstdlib>
#include <new>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

namespace {

std::size_t g_nAllocations = 0;

} // namespace

// Counts what the library and the model allocate; Expat and zlib go by malloc and are not seen.
// Out of line: GCC takes one of a pair that it inlines for a mismatch.
[[gnu::noinline]] void* operator new(std::size_t nSize)
{
    ++g_nAllocations;
    if (void* const p = std::malloc(nSize ? nSize : 1))
        return p;
    throw std::bad_alloc();
}

[[gnu::noinline]] void operator delete(void* p) noexcept
{
    std::free(p);
}

[[gnu::noinline]] void operator delete(void* p, std::size_t) noexcept
{
    std::free(p);
}

namespace {

using namespace QnXmlLib16;

std::string Write(const Gpx::CGpxType& document)
{
    return document.ToXml(true, true, EOLType_LF, CSerializationContext::m_defaultContext);
}

void Track(benchmark::State& state)
{
    const int nPoints = static_cast<int>(state.range(0));
    // Elements of the document: trkpt, ele and time of each point and four around them.
    const double elements = 3.0 * nPoints + 4;
    std::string strXml = MakeTrack(nPoints);
    double readAllocations = 0;
    double writeAllocations = 0;
    double readPeak = 0;
    {
        const CSmartPtr<Gpx::CGpxType> pDocument = new Gpx::CGpxType;
        readPeak = MeasurePeakMemory([&] { Read(*pDocument, strXml); });
        std::size_t nBefore = g_nAllocations;
        Read(*pDocument, strXml);
        readAllocations = static_cast<double>(g_nAllocations - nBefore) / elements;
        nBefore = g_nAllocations;
        benchmark::DoNotOptimize(Write(*pDocument));
        writeAllocations = static_cast<double>(g_nAllocations - nBefore) / elements;
    }

    std::vector<double> vecExpat;
    std::vector<double> vecRead;
    std::vector<double> vecWrite;
    std::vector<double> vecDestroy;
    for (auto _ : state) {
        const CThreadStopwatch expat;
        if (!ParseWithEmptyHandlers(strXml.data(), strXml.size()))
            state.SkipWithError("Expat refuses the document");
        vecExpat.push_back(expat.Seconds());

        CSmartPtr<Gpx::CGpxType> pDocument = new Gpx::CGpxType;
        const CThreadStopwatch read;
        Read(*pDocument, strXml);
        vecRead.push_back(read.Seconds());
        if (CountPoints(*pDocument) != nPoints)
            state.SkipWithError("points are missing");

        const CThreadStopwatch write;
        benchmark::DoNotOptimize(Write(*pDocument));
        vecWrite.push_back(write.Seconds());

        const CThreadStopwatch destroy;
        pDocument.Reset();
        vecDestroy.push_back(destroy.Seconds());
        state.SetIterationTime(vecRead.back() + vecWrite.back());
    }
    const double expat = Median(vecExpat);
    const double bytes = static_cast<double>(strXml.size());
    state.counters["MB"] = bytes / 1e6;
    state.counters["expat_ms"] = expat * 1e3;
    state.counters["read_to_expat"] = Median(vecRead) / expat;
    state.counters["write_to_expat"] = Median(vecWrite) / expat;
    state.counters["destroy_to_expat"] = Median(vecDestroy) / expat;
    state.counters["read_ns_a_point"] = Median(vecRead) * 1e9 / nPoints;
    state.counters["write_ns_a_point"] = Median(vecWrite) * 1e9 / nPoints;
    state.counters["peak_to_bytes"] = readPeak / bytes;
    state.counters["allocations_an_element_read"] = readAllocations;
    state.counters["allocations_an_element_written"] = writeAllocations;
}
BENCHMARK(Track)
    ->RangeMultiplier(10)
    ->Range(1000, 1000000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

// The reading of JSON may take what its conversion to XML takes, and a tenth more than the XML
// itself for the objects.
void JsonTrack(benchmark::State& state)
{
    const int nPoints = static_cast<int>(state.range(0));
    const CSerializationContext& context = CSerializationContext::m_defaultContext;
    std::string strTrack = MakeTrack(nPoints);
    const CSmartPtr<Gpx::CGpxType> pSource = new Gpx::CGpxType;
    Read(*pSource, strTrack);
    std::string strJson;
    std::vector<double> vecToXml;
    std::vector<double> vecToJson;
    std::vector<double> vecExpat;
    std::vector<double> vecConvert;
    std::vector<double> vecFromXml;
    std::vector<double> vecFromJson;
    for (auto _ : state) {
        vecToXml.push_back(ThreadSeconds([&] { benchmark::DoNotOptimize(Write(*pSource)); }));
        vecToJson.push_back(
            ThreadSeconds([&] { strJson = pSource->ToJson(true, EOLType_LF, context); }));

        CBinaryData xml;
        vecConvert.push_back(
            ThreadSeconds([&] { xml = CJsonTextReader::ConvertJsonToXml(strJson, context); }));
        vecExpat.push_back(ThreadSeconds([&] {
            if (!ParseWithEmptyHandlers(reinterpret_cast<const char*>(xml.GetData()),
                                        xml.GetLength()))
                state.SkipWithError("Expat refuses the document");
        }));
        // The objects of one reading are gone before the other begins.
        {
            const CSmartPtr<Gpx::CGpxType> pCopy = new Gpx::CGpxType;
            vecFromXml.push_back(ThreadSeconds([&] { pCopy->FromXmlStream(xml, context); }));
        }
        xml = CBinaryData();
        const CSmartPtr<Gpx::CGpxType> pCopy = new Gpx::CGpxType;
        vecFromJson.push_back(ThreadSeconds([&] { pCopy->FromJson(strJson.c_str(), context); }));
        if (CountPoints(*pCopy) != nPoints)
            state.SkipWithError("points are missing");
        state.SetIterationTime(vecToJson.back() + vecFromJson.back());
    }
    state.counters["MB"] = static_cast<double>(strJson.size()) / 1e6;
    state.counters["to_json_ns_a_point"] = Median(vecToJson) * 1e9 / nPoints;
    state.counters["to_json_to_to_xml"] = Median(vecToJson) / Median(vecToXml);
    state.counters["convert_to_expat"] = Median(vecConvert) / Median(vecExpat);
    state.counters["from_json_ns_a_point"] = Median(vecFromJson) * 1e9 / nPoints;
    state.counters["from_json_to_allowed"] =
        Median(vecFromJson) / (Median(vecConvert) + 1.1 * Median(vecFromXml));
}
BENCHMARK(JsonTrack)
    ->RangeMultiplier(10)
    ->Range(1000, 1000000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

} // namespace
