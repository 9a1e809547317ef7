// Static operations on lengths of time, one overload per representation:
// CZelTimeSpan, the platform's CTimeSpan and COleDateTimeSpan. Spans of the
// library are never negative: every range starts at 0.
#pragma once

#include <Zel260/platform/COleDateTimeSpan.h>
#include <Zel260/platform/CObject.h>
#include <Zel260/platform/CString.h>
#include <Zel260/platform/CTimeSpan.h>
#include <Zel260/time/CZelTimeSpan.h>

class CZelTimeSpanHelper : public CObject {
    DECLARE_DYNAMIC(CZelTimeSpanHelper)

public:
    // As CZelTimeHelper::eRoundFlag, but bit 128 has no meaning here: a flag with it
    // rounds nothing.
    enum eRoundFlag : int {
        eRoundSecond = 0,
        eRoundMinute = 1,
        eRoundHour = 2,
        eRoundMillisecond = 3,
        eRoundTenth = 4,
        eRoundHundredth = 5,
    };
    // 0 COleDateTimeSpan (0 .. 1.797e308 days, no test at all when adding), 1 the
    // span control (0 .. 23:59:59), 2 CTimeSpan (0 .. 2147483647 seconds).
    enum eRangeType : int { eRangeOleDateTimeSpan = 0, eRangeDateTimeSpanCtrl = 1, eRangeCTimeSpan = 2 };

    CZelTimeSpanHelper() {}

    // Days.
    static double GetMjd(const CZelTimeSpan& span);
    static double GetMjd(const CTimeSpan& span);
    static double GetMjd(const COleDateTimeSpan& span);
    // Sets from days within 0..2147483647 (limits included), else nothing changes.
    // CTimeSpan takes trunc(days * 86400) as a 32-bit number, so a count beyond
    // 2147483647 seconds wraps. COleDateTimeSpan takes any value.
    static void SetMjd(double days, CZelTimeSpan& span);
    static void SetMjd(double days, CTimeSpan& span);
    static void SetMjd(double days, COleDateTimeSpan& span);
    // Splits a count of days into whole days, hours, minutes, seconds (all
    // truncating) and the fraction of the second.
    static void Mjd2Hms(const double& days, long& day, long& hour, long& minute, long& second,
                        double& fracSecond);

    // Rounds in place and returns the days; see CZelTimeHelper::Round. Second and
    // tenth need a second of room above 0, so a span below 1 s doesn't change.
    // CTimeSpan and COleDateTimeSpan round only to minute and hour (the latter
    // without any guard).
    static double Round(CZelTimeSpan& span, eRoundFlag flag);
    static double Round(CTimeSpan& span, eRoundFlag flag);
    static double Round(COleDateTimeSpan& span, eRoundFlag flag);

    // Span text of a rounded copy. "%H" (or "%h") shows the total hours without a
    // leading zero (the hours in the day when the template also holds "%%D"); the
    // COleDateTimeSpan form shows such hours as "0". Other tokens as
    // CTimeSpan::Format; an unknown one throws CAtlException(E_INVALIDARG).
    static CString Format(const CZelTimeSpan& span, const char* format, eRoundFlag flag);
    static CString Format(const CTimeSpan& span, const char* format, eRoundFlag flag);
    static CString Format(const COleDateTimeSpan& span, const char* format, eRoundFlag flag);

    // TRUE on success; FALSE, with `a` unchanged, when the result would leave the
    // range. CZelTimeSpan adds whole seconds only and keeps its fraction.
    static int AddTimeSpan(CZelTimeSpan& a, const CZelTimeSpan& b);
    static int AddTimeSpan(CTimeSpan& a, const CTimeSpan& b);
    static int AddTimeSpan(COleDateTimeSpan& a, const COleDateTimeSpan& b, eRangeType range);
    static int SubtractTimeSpan(CZelTimeSpan& a, const CZelTimeSpan& b);
    static int SubtractTimeSpan(CTimeSpan& a, const CTimeSpan& b);
    static int SubtractTimeSpan(COleDateTimeSpan& a, const COleDateTimeSpan& b, eRangeType range);
    static int AddSeconds(CZelTimeSpan& span, int n);
    static int AddSeconds(CTimeSpan& span, int n);
    static int AddSeconds(COleDateTimeSpan& span, int n, eRangeType range);
    static int AddMinutes(CZelTimeSpan& span, int n);
    static int AddMinutes(CTimeSpan& span, int n);
    static int AddMinutes(COleDateTimeSpan& span, int n, eRangeType range);
    static int AddHours(CZelTimeSpan& span, int n);
    static int AddHours(CTimeSpan& span, int n);
    static int AddHours(COleDateTimeSpan& span, int n, eRangeType range);
    static int AddDays(CZelTimeSpan& span, int n);
    static int AddDays(CTimeSpan& span, int n);
    static int AddDays(COleDateTimeSpan& span, int n, eRangeType range);

    static void GetPhysicalRange(CTimeSpan& min, CTimeSpan& max);
    static void GetPhysicalRange(CZelTimeSpan& min, CZelTimeSpan& max);
    static void GetPhysicalRange(eRangeType type, COleDateTimeSpan& min, COleDateTimeSpan& max);
    // In seconds: total seconds for types 0 and 1, the raw count for type 2.
    static void GetPhysicalRange(eRangeType type, double& min, double& max);
    // In days: the span's value for types 0 and 1, seconds / 86400 for type 2.
    static void GetPhysicalRangeMjd(eRangeType type, double& min, double& max);

protected:
    // Kept as they always were: MaxCTimeSpanAsMjd and MaxCTimeSpanAsOleDateTimeSpan
    // carry the seconds as days, and the span control's "Mjd" limits are seconds.
    static const CTimeSpan& MinCTimeSpan();
    static const CTimeSpan& MaxCTimeSpan();
    static double MinCTimeSpanAsMjd();
    static double MaxCTimeSpanAsMjd();
    static const COleDateTimeSpan& MinOleDateTimeSpan();
    static const COleDateTimeSpan& MaxOleDateTimeSpan();
    static const COleDateTimeSpan& MinCTimeSpanAsOleDateTimeSpan();
    static const COleDateTimeSpan& MaxCTimeSpanAsOleDateTimeSpan();
    static const COleDateTimeSpan& MinDateTimeSpanCtrlAsOleDateTimeSpan();
    static const COleDateTimeSpan& MaxDateTimeSpanCtrlAsOleDateTimeSpan();
    static double MinDateTimeSpanCtrlAsMjd();
    static double MaxDateTimeSpanCtrlAsMjd();
};
