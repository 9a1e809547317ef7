// CZelFormat::ConvertToString on each of its paths, against a bare snprintf of the
// same number in the same run (goal: at most twice the snprintf time).
#include <Zel260/values/CZelFormat.h>
#include <Zel260/values/CZelValueAngle.h>

#if defined(ZEL260_BENCH_GEOGRAPHICLIB)
#include <GeographicLib/DMS.hpp>
#endif

#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>

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

// An angle's full text in DMS, and text to radians, through the values against
// GeographicLib's DMS at the same precision. Built where the bench program is linked
// with GeographicLib (ZEL260_BENCH_GEOGRAPHICLIB).
#if defined(ZEL260_BENCH_GEOGRAPHICLIB)

constexpr double kAngleRad = 2.1547274523; // about 123 27' 24.4408"

void BM_ValueAngleDmsText(benchmark::State& state)
{
    CZelUnitSettingsAngle settings(12, nullptr);
    settings.Precision(9); // four decimals of the seconds
    CZelValueAngle angle(&settings);
    angle = kAngleRad;
    CString text;
    for (auto _ : state) {
        angle.ConvertStdTo(text, 12, 4, 0);
        benchmark::DoNotOptimize(text.GetString());
    }
}
BENCHMARK(BM_ValueAngleDmsText);

void BM_GeographicLibDmsEncode(benchmark::State& state)
{
    double deg = kAngleRad / (3.141592653589793 / 180);
    for (auto _ : state) {
        benchmark::DoNotOptimize(deg);
        std::string text = GeographicLib::DMS::Encode(deg, GeographicLib::DMS::SECOND, 4);
        benchmark::DoNotOptimize(text.data());
    }
}
BENCHMARK(BM_GeographicLibDmsEncode);

void BM_ValueAngleFromText(benchmark::State& state)
{
    CZelUnitSettingsAngle settings(12, nullptr);
    CZelValueAngle angle(&settings);
    for (auto _ : state) {
        angle.ConvertToStd("123 27 24.4408", 12, -1, 0);
        benchmark::DoNotOptimize(angle.GetDouble());
    }
}
BENCHMARK(BM_ValueAngleFromText);

void BM_GeographicLibDmsDecode(benchmark::State& state)
{
    const std::string text = "123d27'24.4408\"";
    GeographicLib::DMS::flag ind;
    for (auto _ : state)
        benchmark::DoNotOptimize(GeographicLib::DMS::Decode(text, ind) * (3.141592653589793 / 180));
}
BENCHMARK(BM_GeographicLibDmsDecode);

#endif

} // namespace

BENCHMARK_MAIN();
