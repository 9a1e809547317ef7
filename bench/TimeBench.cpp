// Time conversions against their peers: the calendar to MJD and back against ERFA
// (eraCal2jd / eraJd2cal, when liberfa is installed), and CZelTime::Format against a
// bare localtime_r + strftime of the same time.
//
// Where our function starts from a time object, its peer starts from the same object
// and does the breakdown a caller of ERFA would need first: localtime_r for a CTime
// or CZelTime, GetAsTm for a COleDateTime, then eraCal2jd + eraTf2d for the date and
// the time of day.
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
int eraTf2d(char, int, int, double, double*) { return -1; }
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

// The same days at a time of day, as a caller holds them.
const std::vector<COleDateTime>& oleTimes()
{
    static const std::vector<COleDateTime> all = [] {
        std::vector<COleDateTime> v;
        for (const auto& d : dates())
            v.emplace_back(d.y, d.m, d.d, 13, 45, 10);
        return v;
    }();
    return all;
}

// 12:34:56 local stands clear of every daylight-saving switch.
const std::vector<CTime>& ctimes()
{
    static const std::vector<CTime> all = [] {
        std::vector<CTime> v;
        for (const auto& d : dates())
            v.emplace_back(d.y, d.m, d.d, 12, 34, 56, -1);
        return v;
    }();
    return all;
}

const std::vector<CZelTime>& zelTimes()
{
    static const std::vector<CZelTime> all = [] {
        std::vector<CZelTime> v;
        for (const auto& d : dates())
            v.emplace_back(CZelTime::Mjd(d.y, d.m, d.d, 12, 34, 56.375));
        return v;
    }();
    return all;
}

// ERFA's MJD of broken-down fields, with the time of day added as ERFA does it.
inline double erfaMjdOfTm(const struct tm& tm, double fraction)
{
    double djm0, djm, dayPart;
    eraCal2jd(tm.tm_year + 1900, tm.tm_mon + 1, tm.tm_mday, &djm0, &djm);
    eraTf2d('+', tm.tm_hour, tm.tm_min, tm.tm_sec + fraction, &dayPart);
    return djm + dayPart;
}

void BM_GetMjd_CTime(benchmark::State& state)
{
    const auto& v = ctimes();
    for (auto _ : state)
        for (const auto& t : v)
            benchmark::DoNotOptimize(CZelTimeHelper::GetMjd(t));
    state.SetItemsProcessed(state.iterations() * static_cast<long>(v.size()));
}
BENCHMARK(BM_GetMjd_CTime);

void BM_Peer_localtime_eraCal2jd_CTime(benchmark::State& state)
{
    if (!HaveErfa) {
        state.SkipWithError("liberfa not found");
        return;
    }
    const auto& v = ctimes();
    for (auto _ : state)
        for (const auto& t : v) {
            const time_t secs = t.GetTime();
            struct tm tm;
            localtime_r(&secs, &tm);
            benchmark::DoNotOptimize(erfaMjdOfTm(tm, 0.0));
        }
    state.SetItemsProcessed(state.iterations() * static_cast<long>(v.size()));
}
BENCHMARK(BM_Peer_localtime_eraCal2jd_CTime);

void BM_GetMjd_CZelTime(benchmark::State& state)
{
    const auto& v = zelTimes();
    for (auto _ : state)
        for (const auto& t : v)
            benchmark::DoNotOptimize(CZelTimeHelper::GetMjd(t));
    state.SetItemsProcessed(state.iterations() * static_cast<long>(v.size()));
}
BENCHMARK(BM_GetMjd_CZelTime);

void BM_Peer_localtime_eraCal2jd_CZelTime(benchmark::State& state)
{
    if (!HaveErfa) {
        state.SkipWithError("liberfa not found");
        return;
    }
    const auto& v = zelTimes();
    for (auto _ : state)
        for (const auto& t : v) {
            const time_t secs = t.GetTime();
            struct tm tm;
            localtime_r(&secs, &tm);
            benchmark::DoNotOptimize(erfaMjdOfTm(tm, t.GetFracSecond()));
        }
    state.SetItemsProcessed(state.iterations() * static_cast<long>(v.size()));
}
BENCHMARK(BM_Peer_localtime_eraCal2jd_CZelTime);

void BM_GetMjd_OleDateTime_WithTime(benchmark::State& state)
{
    const auto& v = oleTimes();
    for (auto _ : state)
        for (const auto& t : v)
            benchmark::DoNotOptimize(CZelTimeHelper::GetMjd(t));
    state.SetItemsProcessed(state.iterations() * static_cast<long>(v.size()));
}
BENCHMARK(BM_GetMjd_OleDateTime_WithTime);

// A COleDateTime is a count of days that has to be broken into fields before ERFA
// can take it; GetAsTm is the platform's one call for that.
void BM_Peer_GetAsTm_eraCal2jd_OleDateTime(benchmark::State& state)
{
    if (!HaveErfa) {
        state.SkipWithError("liberfa not found");
        return;
    }
    const auto& v = oleTimes();
    for (auto _ : state)
        for (const auto& t : v) {
            struct tm tm;
            t.GetAsTm(tm);
            benchmark::DoNotOptimize(erfaMjdOfTm(tm, 0.0));
        }
    state.SetItemsProcessed(state.iterations() * static_cast<long>(v.size()));
}
BENCHMARK(BM_Peer_GetAsTm_eraCal2jd_OleDateTime);

// The same with the lean split that GetMjd itself uses, for the fairest comparison
// of the arithmetic after the breakdown.
void BM_Peer_GetAsFields_eraCal2jd_OleDateTime(benchmark::State& state)
{
    if (!HaveErfa) {
        state.SkipWithError("liberfa not found");
        return;
    }
    const auto& v = oleTimes();
    for (auto _ : state)
        for (const auto& t : v) {
            struct tm tm {};
            t.GetAsFields(tm.tm_year, tm.tm_mon, tm.tm_mday, tm.tm_hour, tm.tm_min, tm.tm_sec);
            tm.tm_year -= 1900;
            tm.tm_mon -= 1;
            benchmark::DoNotOptimize(erfaMjdOfTm(tm, 0.0));
        }
    state.SetItemsProcessed(state.iterations() * static_cast<long>(v.size()));
}
BENCHMARK(BM_Peer_GetAsFields_eraCal2jd_OleDateTime);

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

void BM_StaticMjd_WithTime(benchmark::State& state)
{
    const auto& v = dates();
    for (auto _ : state)
        for (const auto& d : v)
            benchmark::DoNotOptimize(CZelTime::Mjd(d.y, d.m, d.d, 13, 45, 10.0));
    state.SetItemsProcessed(state.iterations() * static_cast<long>(v.size()));
}
BENCHMARK(BM_StaticMjd_WithTime);

void BM_Peer_eraCal2jd_eraTf2d(benchmark::State& state)
{
    if (!HaveErfa) {
        state.SkipWithError("liberfa not found");
        return;
    }
    const auto& v = dates();
    for (auto _ : state)
        for (const auto& d : v) {
            double djm0, djm, dayPart;
            eraCal2jd(d.y, d.m, d.d, &djm0, &djm);
            eraTf2d('+', 13, 45, 10.0, &dayPart);
            benchmark::DoNotOptimize(djm + dayPart);
        }
    state.SetItemsProcessed(state.iterations() * static_cast<long>(v.size()));
}
BENCHMARK(BM_Peer_eraCal2jd_eraTf2d);

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

// A template with the locale's AM/PM marker, which strftime itself writes.
void BM_CZelTimeFormat_AmPm(benchmark::State& state)
{
    CZelTime::StoreCurrentTimeFormat(2);
    const CZelTime t(2007, 3, 2, 13, 45, 10, -1);
    for (auto _ : state)
        benchmark::DoNotOptimize(t.Format(0));
    CZelTime::StoreCurrentTimeFormat(17);
}
BENCHMARK(BM_CZelTimeFormat_AmPm);

void BM_Peer_strftime_AmPm(benchmark::State& state)
{
    const CZelTime t(2007, 3, 2, 13, 45, 10, -1);
    const time_t secs = t.GetTime();
    for (auto _ : state) {
        struct tm tm;
        char buf[128];
        localtime_r(&secs, &tm);
        benchmark::DoNotOptimize(strftime(buf, sizeof buf, "%m/%d/%Y %-I:%M:%S %p", &tm));
        benchmark::DoNotOptimize(buf);
    }
}
BENCHMARK(BM_Peer_strftime_AmPm);

} // namespace

// The date tables are built before any run, so that no benchmark pays for them.
int main(int argc, char** argv)
{
    dates();
    oleDates();
    oleTimes();
    ctimes();
    zelTimes();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
