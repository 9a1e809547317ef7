// Time conversions against their peers: the calendar to MJD and back against ERFA
// (eraCal2jd / eraJd2cal, when liberfa is installed), and CZelTime::Format against a
// bare localtime_r + strftime of the same time.
#include <Zel260/platform/COleDateTime.h>
#include <Zel260/time/CZelTime.h>
#include <Zel260/time/CZelTimeHelper.h>

#include <benchmark/benchmark.h>

#if ZEL260_BENCH_ERFA
#include <erfa.h>
#endif

#include <ctime>
#include <vector>

namespace {

#if ZEL260_BENCH_ERFA
constexpr bool HaveErfa = true;
#else
constexpr bool HaveErfa = false;
// Stand-ins so that the program builds without ERFA; the peers then skip.
int eraCal2jd(int, int, int, double*, double*) { return -1; }
int eraJd2cal(double, double, int*, int*, int*, double*) { return -1; }
#endif

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
    if (!HaveErfa) {
        state.SkipWithError("liberfa not found");
        return;
    }
    const auto& v = dates();
    for (auto _ : state)
        for (const auto& d : v) {
            double djm0, djm;
            benchmark::DoNotOptimize(eraCal2jd(d.y, d.m, d.d, &djm0, &djm));
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
    if (!HaveErfa) {
        state.SkipWithError("liberfa not found");
        return;
    }
    const long n = 62154 - 40588 + 1;
    for (auto _ : state)
        for (long i = 0; i < n; ++i) {
            int y, m, d;
            double f;
            benchmark::DoNotOptimize(eraJd2cal(2400000.5, 40588.0 + i, &y, &m, &d, &f));
            benchmark::DoNotOptimize(d);
        }
    state.SetItemsProcessed(state.iterations() * n);
}
BENCHMARK(BM_Peer_eraJd2cal);

// The same with a time of day, where the clock has to be split too.
void BM_Mjd2Ymd_WithTime(benchmark::State& state)
{
    const long n = 62154 - 40588 + 1;
    for (auto _ : state)
        for (long i = 0; i < n; ++i) {
            long y, mo, d, h, mi, s;
            double f;
            CZelTimeHelper::Mjd2Ymd(40588.0 + i + 0.5734, y, mo, d, h, mi, s, f);
            benchmark::DoNotOptimize(s);
        }
    state.SetItemsProcessed(state.iterations() * n);
}
BENCHMARK(BM_Mjd2Ymd_WithTime);

void BM_Peer_eraJd2cal_WithTime(benchmark::State& state)
{
    if (!HaveErfa) {
        state.SkipWithError("liberfa not found");
        return;
    }
    const long n = 62154 - 40588 + 1;
    for (auto _ : state)
        for (long i = 0; i < n; ++i) {
            int y, m, d;
            double f;
            benchmark::DoNotOptimize(eraJd2cal(2400000.5, 40588.0 + i + 0.5734, &y, &m, &d, &f));
            benchmark::DoNotOptimize(f);
        }
    state.SetItemsProcessed(state.iterations() * n);
}
BENCHMARK(BM_Peer_eraJd2cal_WithTime);

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
