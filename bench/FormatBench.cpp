// CZelFormat::ConvertToString on each of its paths, against a bare snprintf of the
// same number in the same run (goal: at most twice the snprintf time).
#include <Zel260/values/CZelFormat.h>

#include <benchmark/benchmark.h>

#include <cstdio>

namespace {

constexpr double kDecimal = 123.456789012;
constexpr double kPacked = 123.2724408;

void BM_Snprintf(benchmark::State& state)
{
    char buffer[64];
    double v = kDecimal;
    for (auto _ : state) {
        benchmark::DoNotOptimize(v);
        benchmark::DoNotOptimize(std::snprintf(buffer, sizeof buffer, "% .*f", 6, v));
    }
}
BENCHMARK(BM_Snprintf);

void run(benchmark::State& state, CZelFormat& format, double value, long unit)
{
    CString text;
    for (auto _ : state) {
        benchmark::DoNotOptimize(value);
        format.ConvertToString(value, unit, text);
        benchmark::DoNotOptimize(text.GetString());
    }
}

void BM_Decimal(benchmark::State& state)
{
    CZelFormat format(11, 0, 0, nullptr);
    run(state, format, kDecimal, 11);
}
BENCHMARK(BM_Decimal);

void BM_DecimalTrimmed(benchmark::State& state)
{
    CZelFormat format(11, 0, 0, nullptr);
    format.TrimTrailingZeros(1);
    run(state, format, kDecimal, 11);
}
BENCHMARK(BM_DecimalTrimmed);

void BM_Sexagesimal(benchmark::State& state)
{
    CZelFormat format(12, 0, 0, nullptr);
    format.Precision(10);
    run(state, format, kPacked, 12);
}
BENCHMARK(BM_Sexagesimal);

void BM_TemplateDecimal(benchmark::State& state)
{
    CZelFormat format(11, 0, 0, "%[%.*f %U%]%[%degOrG%]%?");
    run(state, format, kDecimal, 11);
}
BENCHMARK(BM_TemplateDecimal);

void BM_TemplateSexagesimal(benchmark::State& state)
{
    CZelFormat format(12, 0, 0, "%[%.*f %U%]%[%degOrG%minOrC%secOrCC%]%?");
    format.Precision(10);
    run(state, format, kPacked, 12);
}
BENCHMARK(BM_TemplateSexagesimal);

} // namespace

BENCHMARK_MAIN();
