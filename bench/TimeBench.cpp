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

#include "BenchSupport.h"

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

// One value a day of dates(), made by `make`.
template <class T, class Make>
std::vector<T> perDate(Make make)
{
    std::vector<T> v;
    for (const auto& d : dates())
        v.push_back(make(d));
    return v;
}

const std::vector<COleDateTime>& oleDates()
{
    static const auto all = perDate<COleDateTime>([](const Date& d) { return COleDateTime(d.y, d.m, d.d, 0, 0, 0); });
    return all;
}

// The same days at a time of day, as a caller holds them.
const std::vector<COleDateTime>& oleTimes()
{
    static const auto all =
        perDate<COleDateTime>([](const Date& d) { return COleDateTime(d.y, d.m, d.d, 13, 45, 10); });
    return all;
}

// 12:34:56 local stands clear of every daylight-saving switch.
const std::vector<CTime>& ctimes()
{
    static const auto all = perDate<CTime>([](const Date& d) { return CTime(d.y, d.m, d.d, 12, 34, 56, -1); });
    return all;
}

const std::vector<CZelTime>& zelTimes()
{
    static const auto all =
        perDate<CZelTime>([](const Date& d) { return CZelTime(CZelTime::Mjd(d.y, d.m, d.d, 12, 34, 56.375)); });
    return all;
}

// Runs `f` on every element of `v` in each iteration and counts them as the items.
template <class T, class F>
void forEachItem(benchmark::State& state, const std::vector<T>& v, F f)
{
    for (auto _ : state)
        for (const auto& x : v)
            f(x);
    state.SetItemsProcessed(state.iterations() * static_cast<long>(v.size()));
}

// The MJDs of dates(), as numbers.
constexpr long FirstMjd = 40588, DayCount = 62154 - 40588 + 1;

// Runs `f` on every MJD of dates() plus `dayPart` in each iteration.
template <class F>
void forEachMjd(benchmark::State& state, double dayPart, F f)
{
    for (auto _ : state)
        for (long i = 0; i < DayCount; ++i)
            f(static_cast<double>(FirstMjd) + i + dayPart);
    state.SetItemsProcessed(state.iterations() * DayCount);
}

// True, with the run marked skipped, when the ERFA peers can't run.
bool erfaMissing(benchmark::State& state)
{
    if (HaveErfa)
        return false;
    state.SkipWithError("liberfa not found");
    return true;
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
    forEachItem(state, ctimes(), [](const CTime& t) { benchmark::DoNotOptimize(CZelTimeHelper::GetMjd(t)); });
}
BENCHMARK(BM_GetMjd_CTime);

void BM_Peer_localtime_eraCal2jd_CTime(benchmark::State& state)
{
    if (erfaMissing(state))
        return;
    forEachItem(state, ctimes(), [](const CTime& t) {
        const time_t secs = t.GetTime();
        struct tm tm;
        localtime_r(&secs, &tm);
        benchmark::DoNotOptimize(erfaMjdOfTm(tm, 0.0));
    });
}
BENCHMARK(BM_Peer_localtime_eraCal2jd_CTime);

void BM_GetMjd_CZelTime(benchmark::State& state)
{
    forEachItem(state, zelTimes(), [](const CZelTime& t) { benchmark::DoNotOptimize(CZelTimeHelper::GetMjd(t)); });
}
BENCHMARK(BM_GetMjd_CZelTime);

void BM_Peer_localtime_eraCal2jd_CZelTime(benchmark::State& state)
{
    if (erfaMissing(state))
        return;
    forEachItem(state, zelTimes(), [](const CZelTime& t) {
        const time_t secs = t.GetTime();
        struct tm tm;
        localtime_r(&secs, &tm);
        benchmark::DoNotOptimize(erfaMjdOfTm(tm, t.GetFracSecond()));
    });
}
BENCHMARK(BM_Peer_localtime_eraCal2jd_CZelTime);

void BM_GetMjd_OleDateTime_WithTime(benchmark::State& state)
{
    forEachItem(state, oleTimes(),
                [](const COleDateTime& t) { benchmark::DoNotOptimize(CZelTimeHelper::GetMjd(t)); });
}
BENCHMARK(BM_GetMjd_OleDateTime_WithTime);

// A COleDateTime is a count of days that has to be broken into fields before ERFA
// can take it; GetAsTm is the platform's one call for that.
void BM_Peer_GetAsTm_eraCal2jd_OleDateTime(benchmark::State& state)
{
    if (erfaMissing(state))
        return;
    forEachItem(state, oleTimes(), [](const COleDateTime& t) {
        struct tm tm;
        t.GetAsTm(tm);
        benchmark::DoNotOptimize(erfaMjdOfTm(tm, 0.0));
    });
}
BENCHMARK(BM_Peer_GetAsTm_eraCal2jd_OleDateTime);

// The same with the lean split that GetMjd itself uses, for the fairest comparison
// of the arithmetic after the breakdown.
void BM_Peer_GetAsFields_eraCal2jd_OleDateTime(benchmark::State& state)
{
    if (erfaMissing(state))
        return;
    forEachItem(state, oleTimes(), [](const COleDateTime& t) {
        struct tm tm {};
        t.GetAsFields(tm.tm_year, tm.tm_mon, tm.tm_mday, tm.tm_hour, tm.tm_min, tm.tm_sec);
        tm.tm_year -= 1900;
        tm.tm_mon -= 1;
        benchmark::DoNotOptimize(erfaMjdOfTm(tm, 0.0));
    });
}
BENCHMARK(BM_Peer_GetAsFields_eraCal2jd_OleDateTime);

void BM_GetMjd_OleDateTime(benchmark::State& state)
{
    forEachItem(state, oleDates(),
                [](const COleDateTime& t) { benchmark::DoNotOptimize(CZelTimeHelper::GetMjd(t)); });
}
BENCHMARK(BM_GetMjd_OleDateTime);

void BM_StaticMjd(benchmark::State& state)
{
    forEachItem(state, dates(),
                [](const Date& d) { benchmark::DoNotOptimize(CZelTime::Mjd(d.y, d.m, d.d, 0, 0, 0.0)); });
}
BENCHMARK(BM_StaticMjd);

void BM_Peer_eraCal2jd(benchmark::State& state)
{
    if (erfaMissing(state))
        return;
    forEachItem(state, dates(), [](const Date& d) {
        double djm0, djm;
        benchmark::DoNotOptimize(eraCal2jd(d.y, d.m, d.d, &djm0, &djm));
        benchmark::DoNotOptimize(djm);
    });
}
BENCHMARK(BM_Peer_eraCal2jd);

void BM_StaticMjd_WithTime(benchmark::State& state)
{
    forEachItem(state, dates(),
                [](const Date& d) { benchmark::DoNotOptimize(CZelTime::Mjd(d.y, d.m, d.d, 13, 45, 10.0)); });
}
BENCHMARK(BM_StaticMjd_WithTime);

void BM_Peer_eraCal2jd_eraTf2d(benchmark::State& state)
{
    if (erfaMissing(state))
        return;
    forEachItem(state, dates(), [](const Date& d) {
        double djm0, djm, dayPart;
        eraCal2jd(d.y, d.m, d.d, &djm0, &djm);
        eraTf2d('+', 13, 45, 10.0, &dayPart);
        benchmark::DoNotOptimize(djm + dayPart);
    });
}
BENCHMARK(BM_Peer_eraCal2jd_eraTf2d);

void BM_Mjd2Ymd(benchmark::State& state)
{
    forEachMjd(state, 0.0, [](double mjd) {
        long y, mo, d, h, mi, s;
        double f;
        CZelTimeHelper::Mjd2Ymd(mjd, y, mo, d, h, mi, s, f);
        benchmark::DoNotOptimize(d);
    });
}
BENCHMARK(BM_Mjd2Ymd);

void BM_Peer_eraJd2cal(benchmark::State& state)
{
    if (erfaMissing(state))
        return;
    forEachMjd(state, 0.0, [](double mjd) {
        int y, m, d;
        double f;
        benchmark::DoNotOptimize(eraJd2cal(2400000.5, mjd, &y, &m, &d, &f));
        benchmark::DoNotOptimize(d);
    });
}
BENCHMARK(BM_Peer_eraJd2cal);

// The same with a time of day, where the clock has to be split too.
void BM_Mjd2Ymd_WithTime(benchmark::State& state)
{
    forEachMjd(state, 0.5734, [](double mjd) {
        long y, mo, d, h, mi, s;
        double f;
        CZelTimeHelper::Mjd2Ymd(mjd, y, mo, d, h, mi, s, f);
        benchmark::DoNotOptimize(s);
    });
}
BENCHMARK(BM_Mjd2Ymd_WithTime);

void BM_Peer_eraJd2cal_WithTime(benchmark::State& state)
{
    if (erfaMissing(state))
        return;
    forEachMjd(state, 0.5734, [](double mjd) {
        int y, m, d;
        double f;
        benchmark::DoNotOptimize(eraJd2cal(2400000.5, mjd, &y, &m, &d, &f));
        benchmark::DoNotOptimize(f);
    });
}
BENCHMARK(BM_Peer_eraJd2cal_WithTime);

// CZelTime::Format with the stored time format `format`, which is put back to 17 after.
void formatWith(benchmark::State& state, int format)
{
    CZelTime::StoreCurrentTimeFormat(format);
    const CZelTime t(2007, 3, 2, 13, 45, 10, -1);
    for (auto _ : state)
        benchmark::DoNotOptimize(t.Format(0));
    CZelTime::StoreCurrentTimeFormat(17);
}

// The peer of formatWith: the same time through localtime_r and strftime.
void strftimeWith(benchmark::State& state, const char* pattern)
{
    const CZelTime t(2007, 3, 2, 13, 45, 10, -1);
    const time_t secs = t.GetTime();
    for (auto _ : state) {
        struct tm tm;
        char buf[128];
        localtime_r(&secs, &tm);
        benchmark::DoNotOptimize(strftime(buf, sizeof buf, pattern, &tm));
        benchmark::DoNotOptimize(buf);
    }
}

void BM_CZelTimeFormat(benchmark::State& state) { formatWith(state, 17); }
BENCHMARK(BM_CZelTimeFormat);

void BM_Peer_strftime(benchmark::State& state) { strftimeWith(state, "%d.%m.%Y %H:%M:%S"); }
BENCHMARK(BM_Peer_strftime);

// A template with the locale's AM/PM marker, which strftime itself writes.
void BM_CZelTimeFormat_AmPm(benchmark::State& state) { formatWith(state, 2); }
BENCHMARK(BM_CZelTimeFormat_AmPm);

void BM_Peer_strftime_AmPm(benchmark::State& state) { strftimeWith(state, "%m/%d/%Y %-I:%M:%S %p"); }
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
    return zelbench::runBenchmarks(argc, argv);
}
