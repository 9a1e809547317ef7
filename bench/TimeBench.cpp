// Time conversions against their peers: the calendar to MJD and back against ERFA
// (eraCal2jd / eraJd2cal, loaded at run time from liberfa), and CZelTime::Format
// against a bare localtime_r + strftime of the same time.
#include <Zel260/platform/COleDateTime.h>
#include <Zel260/time/CZelTime.h>
#include <Zel260/time/CZelTimeHelper.h>

#include <benchmark/benchmark.h>

#include <dlfcn.h>

#include <ctime>
#include <vector>

namespace {

using Cal2jd = int (*)(int, int, int, double*, double*);
using Jd2cal = int (*)(double, double, int*, int*, int*, double*);

struct Erfa {
    Cal2jd cal2jd = nullptr;
    Jd2cal jd2cal = nullptr;
    Erfa()
    {
        void* lib = dlopen("liberfa.so.1", RTLD_NOW);
        if (!lib)
            lib = dlopen("liberfa.so", RTLD_NOW);
        if (lib) {
            cal2jd = reinterpret_cast<Cal2jd>(dlsym(lib, "eraCal2jd"));
            jd2cal = reinterpret_cast<Jd2cal>(dlsym(lib, "eraJd2cal"));
        }
    }
    bool ok() const { return cal2jd && jd2cal; }
};

const Erfa& erfa()
{
    static const Erfa e;
    return e;
}

struct Date {
    int y, m, d;
};

// Every day of the CTime range, 1970-01-02 to 2030-01-18.
const std::vector<Date>& dates()
{
    static const std::vector<Date> all = [] {
        std::vector<Date> v;
        for (int mjd = 40588; mjd <= 62154; ++mjd) {
            long y, mo, d, h, mi, s;
            double f;
            CZelTimeHelper::Mjd2Ymd(mjd, y, mo, d, h, mi, s, f);
            v.push_back({static_cast<int>(y), static_cast<int>(mo), static_cast<int>(d)});
        }
        return v;
    }();
    return all;
}

const std::vector<COleDateTime>& oleDates()
{
    static const std::vector<COleDateTime> all = [] {
        std::vector<COleDateTime> v;
        for (const auto& d : dates())
            v.emplace_back(d.y, d.m, d.d, 0, 0, 0);
        return v;
    }();
    return all;
}

void BM_GetMjd_OleDateTime(benchmark::State& state)
{
    const auto& v = oleDates();
    for (auto _ : state)
        for (const auto& t : v)
            benchmark::DoNotOptimize(CZelTimeHelper::GetMjd(t));
    state.SetItemsProcessed(state.iterations() * static_cast<long>(v.size()));
}
BENCHMARK(BM_GetMjd_OleDateTime);

void BM_StaticMjd(benchmark::State& state)
{
    const auto& v = dates();
    for (auto _ : state)
        for (const auto& d : v)
            benchmark::DoNotOptimize(CZelTime::Mjd(d.y, d.m, d.d, 0, 0, 0.0));
    state.SetItemsProcessed(state.iterations() * static_cast<long>(v.size()));
}
BENCHMARK(BM_StaticMjd);

void BM_Peer_eraCal2jd(benchmark::State& state)
{
    if (!erfa().ok()) {
        state.SkipWithError("liberfa not found");
        return;
    }
    const auto& v = dates();
    for (auto _ : state)
        for (const auto& d : v) {
            double djm0, djm;
            benchmark::DoNotOptimize(erfa().cal2jd(d.y, d.m, d.d, &djm0, &djm));
            benchmark::DoNotOptimize(djm);
        }
    state.SetItemsProcessed(state.iterations() * static_cast<long>(v.size()));
}
BENCHMARK(BM_Peer_eraCal2jd);

void BM_Mjd2Ymd(benchmark::State& state)
{
    const long n = 62154 - 40588 + 1;
    for (auto _ : state)
        for (long i = 0; i < n; ++i) {
            long y, mo, d, h, mi, s;
            double f;
            CZelTimeHelper::Mjd2Ymd(40588.0 + i, y, mo, d, h, mi, s, f);
            benchmark::DoNotOptimize(d);
        }
    state.SetItemsProcessed(state.iterations() * n);
}
BENCHMARK(BM_Mjd2Ymd);

void BM_Peer_eraJd2cal(benchmark::State& state)
{
    if (!erfa().ok()) {
        state.SkipWithError("liberfa not found");
        return;
    }
    const long n = 62154 - 40588 + 1;
    for (auto _ : state)
        for (long i = 0; i < n; ++i) {
            int y, m, d;
            double f;
            benchmark::DoNotOptimize(erfa().jd2cal(2400000.5, 40588.0 + i, &y, &m, &d, &f));
            benchmark::DoNotOptimize(d);
        }
    state.SetItemsProcessed(state.iterations() * n);
}
BENCHMARK(BM_Peer_eraJd2cal);

void BM_CZelTimeFormat(benchmark::State& state)
{
    CZelTime::StoreCurrentTimeFormat(17);
    const CZelTime t(2007, 3, 2, 13, 45, 10, -1);
    for (auto _ : state)
        benchmark::DoNotOptimize(t.Format(0));
}
BENCHMARK(BM_CZelTimeFormat);

void BM_Peer_strftime(benchmark::State& state)
{
    const CZelTime t(2007, 3, 2, 13, 45, 10, -1);
    const time_t secs = t.GetTime();
    for (auto _ : state) {
        struct tm tm;
        char buf[128];
        localtime_r(&secs, &tm);
        benchmark::DoNotOptimize(strftime(buf, sizeof buf, "%d.%m.%Y %H:%M:%S", &tm));
        benchmark::DoNotOptimize(buf);
    }
}
BENCHMARK(BM_Peer_strftime);

} // namespace

BENCHMARK_MAIN();
