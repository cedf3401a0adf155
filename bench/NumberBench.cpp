#include "QnXmlLib16/values/BigInteger.h"
#include "QnXmlLib16/values/Decimal.h"

#include <benchmark/benchmark.h>

#include <string>

using namespace QnXmlLib16;

namespace {

std::string SomeDigits(std::size_t nLength)
{
    std::string strDigits;
    for (std::size_t i = 0; i < nLength; ++i) {
        strDigits.push_back(static_cast<char>('1' + i * 7 % 9));
    }
    return strDigits;
}

void BigIntegerMultiply1000(benchmark::State& state)
{
    const CBigInteger a(SomeDigits(1000).c_str());
    const CBigInteger b((SomeDigits(999) + "3").c_str());
    for (auto _ : state) {
        benchmark::DoNotOptimize(a * b);
    }
}
BENCHMARK(BigIntegerMultiply1000);

void BigIntegerDivide1000By500(benchmark::State& state)
{
    const CBigInteger a(SomeDigits(1000).c_str());
    const CBigInteger b((SomeDigits(499) + "3").c_str());
    for (auto _ : state) {
        benchmark::DoNotOptimize(a / b);
    }
}
BENCHMARK(BigIntegerDivide1000By500);

void BigIntegerParse20(benchmark::State& state)
{
    for (auto _ : state) {
        benchmark::DoNotOptimize(CBigInteger("12345678901234567890"));
    }
}
BENCHMARK(BigIntegerParse20);

void DecimalParse20(benchmark::State& state)
{
    for (auto _ : state) {
        benchmark::DoNotOptimize(CDecimal("1234567890.1234567891"));
    }
}
BENCHMARK(DecimalParse20);

void DecimalToString20(benchmark::State& state)
{
    const CDecimal value("1234567890.1234567891");
    for (auto _ : state) {
        benchmark::DoNotOptimize(value.ToString());
    }
}
BENCHMARK(DecimalToString20);

void DecimalCompare20(benchmark::State& state)
{
    const CDecimal a("1234567890.1234567891");
    const CDecimal b("1234567890.1234567892");
    for (auto _ : state) {
        benchmark::DoNotOptimize(a <= b);
    }
}
BENCHMARK(DecimalCompare20);

// The greatest exponent: what the worst short text costs.
void DecimalParseGreatestExponent(benchmark::State& state)
{
    const std::string strText = SomeDigits(250) + "." + SomeDigits(250) + "e100000";
    for (auto _ : state) {
        benchmark::DoNotOptimize(CDecimal(strText.c_str()));
    }
}
BENCHMARK(DecimalParseGreatestExponent);

void DecimalParse512(benchmark::State& state)
{
    const std::string strText = SomeDigits(250) + "." + SomeDigits(250) + "e-300";
    for (auto _ : state) {
        benchmark::DoNotOptimize(CDecimal(strText.c_str()));
    }
}
BENCHMARK(DecimalParse512);

} // namespace
