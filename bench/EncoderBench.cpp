#include "QnXmlLib16/support/Encoder.h"
#include "QnXmlLib16/support/StringBuffer.h"
#include "QnXmlLib16/values/BinaryData.h"

#include <benchmark/benchmark.h>
#include <clocale>
#include <cstring>
#include <string>

// What text costs at the edges of the library, each row beside a plain copy of the same bytes.
// Argument: the length of one text. 10 is a name or a short value, 1 MiB a whole document.

using namespace QnXmlLib16;

namespace {

std::string MakeText(benchmark::State& state, const char* pszUnit)
{
    std::string strResult;
    while (strResult.size() < static_cast<std::size_t>(state.range(0)))
        strResult += pszUnit;
    return strResult;
}

void SetBytes(benchmark::State& state, const std::string& strText)
{
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * strText.size()));
}

void Copy(benchmark::State& state)
{
    const std::string strText = MakeText(state, "a text of words ");
    std::string strTarget;
    for (auto _ : state) {
        strTarget.assign(strText.data(), strText.size());
        benchmark::DoNotOptimize(strTarget.data());
    }
    SetBytes(state, strText);
}

void Read(benchmark::State& state, const char* pszUnit, const char* pszLocale)
{
    std::setlocale(LC_CTYPE, pszLocale);
    const std::string strText = MakeText(state, pszUnit);
    std::string strTarget;
    for (auto _ : state) {
        CEncoder::AssignUtf8(strTarget, strText.data(), strText.size());
        benchmark::DoNotOptimize(strTarget.data());
    }
    SetBytes(state, strText);
    std::setlocale(LC_CTYPE, "C");
}

void Write(benchmark::State& state, const char* pszUnit, const char* pszLocale)
{
    std::setlocale(LC_CTYPE, pszLocale);
    const std::string strText = MakeText(state, pszUnit);
    for (auto _ : state)
        benchmark::DoNotOptimize(CEncoder::LocalCodePageToUtf8Binary(strText.c_str()).GetData());
    SetBytes(state, strText);
    std::setlocale(LC_CTYPE, "C");
}

void Collect(benchmark::State& state)
{
    const std::string strText = MakeText(state, "a");
    for (auto _ : state) {
        CStringBuffer buffer;
        for (int i = 0; i < 10000; ++i)
            buffer.Append(strText.data(), strText.size());
        benchmark::DoNotOptimize(buffer.GetText());
    }
    state.SetItemsProcessed(state.iterations() * 10000);
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * 10000 * strText.size()));
}

void CollectBytes(benchmark::State& state)
{
    for (auto _ : state) {
        CBinaryData data;
        for (int i = 0; i < 10000; ++i)
            data.Append(static_cast<unsigned char>(i));
        benchmark::DoNotOptimize(data.GetData());
    }
    state.SetItemsProcessed(state.iterations() * 10000);
}

BENCHMARK(Copy)->Arg(10)->Arg(1 << 20);
BENCHMARK_CAPTURE(Read, Ascii, "a text of words ", "C")->Arg(10)->Arg(1 << 20);
BENCHMARK_CAPTURE(Read, CyrillicInUtf8, "слова и слова ", "C.UTF-8")->Arg(10)->Arg(1 << 20);
BENCHMARK_CAPTURE(Read, CyrillicInC, "слова и слова ", "C")->Arg(10)->Arg(1 << 20);
BENCHMARK_CAPTURE(Write, Ascii, "a text of words ", "C")->Arg(10)->Arg(1 << 20);
BENCHMARK_CAPTURE(Write, CyrillicInUtf8, "слова и слова ", "C.UTF-8")->Arg(10)->Arg(1 << 20);
BENCHMARK(Collect)->Arg(1)->Arg(10)->Arg(100);
BENCHMARK(CollectBytes);

} // namespace
