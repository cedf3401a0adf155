// What a value costs on its way between text and its carrier, against the C function that the
// same work would take, and what a facet check costs. Compare the times within one run.

#include "QnXmlLib16/binding/XmlObjectHelper.h"
#include "QnXmlLib16/validation/PrimitiveRestrictions.h"
#include "QnXmlLib16/validation/RegEx.h"
#include "QnXmlLib16/values/Conversions.h"
#include "QnXmlLib16/values/DateTime.h"
#include "QnXmlLib16/values/Decimal.h"
#include "QnXmlLib16/values/QnVariant.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <string>

using namespace QnXmlLib16;

namespace {

constexpr auto kCollapse = CWhitespaceUtils::WhitespaceRule_Collapse;

// Every text is read anew in each round, or the compiler would read it once.
const char* const kIntegers[] = {"7", "1024", "-123456", "3000000000", "987654321012345678"};
const char* const kReals[] = {"0.5", "51.481628", "-0.0023", "1e21", "3.141592653589793"};

template <class TRead>
void ReadAll(benchmark::State& state, const char* const (&texts)[5], TRead read)
{
    const std::string given(texts[state.range(0)]);
    for (auto _ : state) {
        benchmark::DoNotOptimize(given.data());
        auto value = read(given);
        benchmark::DoNotOptimize(value);
    }
    state.SetLabel(given);
}

template <class T, class TPrint>
void PrintAll(benchmark::State& state, T value, TPrint print)
{
    for (auto _ : state) {
        benchmark::DoNotOptimize(value);
        std::string text = print(value);
        benchmark::DoNotOptimize(text);
    }
}

#define BENCH_READ(code, texts, call)                                                              \
    void Read_##code(benchmark::State& state)                                                      \
    {                                                                                              \
        ReadAll(state, texts, [](const std::string& text) {                                        \
            return CConversions::code##FromString(text, kCollapse);                                \
        });                                                                                        \
    }                                                                                              \
    BENCHMARK(Read_##code)->DenseRange(0, 4);                                                      \
    void Read_##code##_in_C(benchmark::State& state)                                               \
    {                                                                                              \
        ReadAll(state, texts, [](const std::string& text) { return call; });                       \
    }                                                                                              \
    BENCHMARK(Read_##code##_in_C)->DenseRange(0, 4)

BENCH_READ(i4, kIntegers, std::strtol(text.c_str(), nullptr, 10));
BENCH_READ(i8, kIntegers, std::strtoll(text.c_str(), nullptr, 10));
BENCH_READ(ui8, kIntegers, std::strtoull(text.c_str(), nullptr, 10));
BENCH_READ(r8, kReals, std::strtod(text.c_str(), nullptr));

#define BENCH_PRINT(code, texts, format)                                                           \
    void Print_##code(benchmark::State& state)                                                     \
    {                                                                                              \
        PrintAll(state, CConversions::code##FromString(texts[state.range(0)], kCollapse),          \
                 [](auto value) { return CConversions::code##ToString(value); });                  \
        state.SetLabel(texts[state.range(0)]);                                                     \
    }                                                                                              \
    BENCHMARK(Print_##code)->DenseRange(0, 4);                                                     \
    void Print_##code##_in_C(benchmark::State& state)                                              \
    {                                                                                              \
        PrintAll(state, CConversions::code##FromString(texts[state.range(0)], kCollapse),          \
                 [](auto value) {                                                                  \
                     char buffer[48];                                                              \
                     std::snprintf(buffer, sizeof(buffer), format, value);                         \
                     return std::string(buffer);                                                   \
                 });                                                                               \
        state.SetLabel(texts[state.range(0)]);                                                     \
    }                                                                                              \
    BENCHMARK(Print_##code##_in_C)->DenseRange(0, 4)

BENCH_PRINT(i4, kIntegers, "%ld");
BENCH_PRINT(i8, kIntegers, "%lld");
BENCH_PRINT(ui8, kIntegers, "%llu");
BENCH_PRINT(r8, kReals, "%.16g");

void Collapse_without_change(benchmark::State& state)
{
    const std::string text(static_cast<std::size_t>(state.range(0)), 'x');
    std::string buffer;
    for (auto _ : state) {
        const std::string& result = CWhitespaceUtils::ApplyRule(kCollapse, text, buffer);
        benchmark::DoNotOptimize(result.data());
    }
}
BENCHMARK(Collapse_without_change)->Arg(8)->Arg(1000);

void Check(benchmark::State& state, ItemType type, const char* pszText,
           const CPrimitiveRestrictions& facets)
{
    QnVariant value;
    value.FromString(pszText, type, kCollapse);
    for (auto _ : state)
        CXmlObjectHelper::CheckRestriction("name", value, type, facets);
}

const CPrimitiveRestrictions kNoFacet;
const CPrimitiveRestrictions kOneBound(nullptr, -1, -1, "-123456", nullptr, nullptr, nullptr, -1,
                                       -1, -1);
const CPrimitiveRestrictions kFourBounds(nullptr, -1, -1, "-123456", "123456", "-123457", "123457",
                                         -1, -1, -1);
const CPrimitiveRestrictions kPattern("[A-Z]{2}[0-9]{2}[A-Z0-9]{1,30}", -1, 34, nullptr, nullptr,
                                      nullptr, nullptr, -1, -1, -1);

BENCHMARK_CAPTURE(Check, i4_no_facet, it_i4, "1024", kNoFacet);
BENCHMARK_CAPTURE(Check, string_no_facet, it_string, "a text longer than a short string", kNoFacet);
BENCHMARK_CAPTURE(Check, decimal_no_facet, it_decimal, "1234567890.0987654321", kNoFacet);
BENCHMARK_CAPTURE(Check, datetime_no_facet, it_datetime, "2001-05-09T10:11:12Z", kNoFacet);
BENCHMARK_CAPTURE(Check, i4_one_bound, it_i4, "1024", kOneBound);
BENCHMARK_CAPTURE(Check, i4_four_bounds, it_i4, "1024", kFourBounds);
BENCHMARK_CAPTURE(Check, pattern, it_string, "GB29NWBK60161331926819", kPattern);

void Variant_text_round_trip(benchmark::State& state)
{
    const std::string text("a text longer than a short string");
    for (auto _ : state) {
        QnVariant value;
        value.FromString(text, it_string, kCollapse);
        std::string printed = value.ToString(nullptr);
        benchmark::DoNotOptimize(printed);
    }
}
BENCHMARK(Variant_text_round_trip);

void Pattern_on_a_million_characters(benchmark::State& state)
{
    const std::string value(1000000, 'a');
    for (auto _ : state)
        benchmark::DoNotOptimize(TestRegEx("\\c*", value));
}
BENCHMARK(Pattern_on_a_million_characters)->Unit(benchmark::kMillisecond);

} // namespace
