// Dates against the C library on the same six fields, and the costs that a hostile text could ask
// for. Compare rows of one run: parse and print should stay far below twice their C row.
#include "QnXmlLib16/values/DateTime.h"
#include "QnXmlLib16/values/DateTimeSpan.h"

#include <benchmark/benchmark.h>
#include <cstdio>

using namespace QnXmlLib16;

namespace {

const char* const kText = "2001-05-09T12:34:56";

void BM_ParseDateTime(benchmark::State& state)
{
    CDateTime value;
    for (auto _ : state) {
        value.ParseXSDDateTime(kText);
        benchmark::DoNotOptimize(value);
    }
}
BENCHMARK(BM_ParseDateTime);

void BM_ParseBySscanf(benchmark::State& state)
{
    int fields[6];
    for (auto _ : state) {
        benchmark::DoNotOptimize(std::sscanf(kText, "%d-%d-%dT%d:%d:%d", &fields[0], &fields[1],
                                             &fields[2], &fields[3], &fields[4], &fields[5]));
        benchmark::DoNotOptimize(fields);
    }
}
BENCHMARK(BM_ParseBySscanf);

void BM_PrintDateTime(benchmark::State& state)
{
    const CDateTime value(kText);
    for (auto _ : state)
        benchmark::DoNotOptimize(value.ToString());
}
BENCHMARK(BM_PrintDateTime);

void BM_PrintBySnprintf(benchmark::State& state)
{
    const int fields[6] = {2001, 5, 9, 12, 34, 56};
    char buffer[64];
    for (auto _ : state) {
        benchmark::DoNotOptimize(fields);
        std::snprintf(buffer, sizeof(buffer), "%04d-%02d-%02dT%02d:%02d:%02d", fields[0], fields[1],
                      fields[2], fields[3], fields[4], fields[5]);
        benchmark::DoNotOptimize(buffer);
    }
}
BENCHMARK(BM_PrintBySnprintf);

void BM_CompareAcrossZones(benchmark::State& state)
{
    const CDateTime a("2001-05-09T12:34:56+02:00");
    const CDateTime b("2001-05-09T12:34:56");
    for (auto _ : state)
        benchmark::DoNotOptimize(a.CompareTo(b));
}
BENCHMARK(BM_CompareAcrossZones);

// One comparison of durations is eight additions.
void BM_CompareDurations(benchmark::State& state, const char* text)
{
    CDateTimeSpan a;
    a.ParseXSDDuration(text);
    const CDateTimeSpan b(1, 2, 3);
    for (auto _ : state)
        benchmark::DoNotOptimize(a.CompareTo(b));
}
BENCHMARK_CAPTURE(BM_CompareDurations, P1Y2M3D, "P1Y2M3D");
BENCHMARK_CAPTURE(BM_CompareDurations, P40000D, "P40000D");
BENCHMARK_CAPTURE(BM_CompareDurations, P2147483000D, "P2147483000D");
BENCHMARK_CAPTURE(BM_CompareDurations, P1000000007M, "P1000000007M");

} // namespace
