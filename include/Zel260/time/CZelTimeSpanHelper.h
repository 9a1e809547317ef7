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

    // Days: seconds / 86400 + fraction / 86400; seconds / 86400; the value.
    static double GetMjd(const CZelTimeSpan& span);
    static double GetMjd(const CTimeSpan& span);
    static double GetMjd(const COleDateTimeSpan& span);
    // Sets from days within 0..2147483647 (limits included); outside, and for NaN,
    // nothing changes and nothing is reported. CTimeSpan takes trunc(days * 86400)
    // as a 32-bit number, so a count beyond 2147483647 seconds wraps (it can turn
    // negative). COleDateTimeSpan takes any value, NaN and infinities included, and
    // becomes valid.
    static void SetMjd(double days, CZelTimeSpan& span);
    static void SetMjd(double days, CTimeSpan& span);
    static void SetMjd(double days, COleDateTimeSpan& span);
    // Splits a count of days into whole days, hours (|hour| < 24), minutes and
    // seconds (|.| < 60), all truncating toward zero and carrying the sign of
    // `days`, and the fraction of the second (|f| < 1, same sign). NaN gives zero
    // fields and a NaN fraction; the day count is clamped to about +-9.2e18.
    static void Mjd2Hms(const double& days, long& day, long& hour, long& minute, long& second,
                        double& fracSecond);

    // Rounds in place and returns the days afterwards; a flag outside 0..5 (bit
    // 128 included) rounds nothing. CZelTimeSpan: 0 second and 4 tenth (when it
    // carries) need 1 s <= span <= 2147483646 s, 1 minute needs span <= max - 60 s
    // and room to go down, 2 hour likewise with 3600 s; 3 ms and 5 hundredth carry
    // without a guard; ties go to even but the second's half goes up. Where a guard
    // fails the span stays as it was. CTimeSpan rounds only by 1 and 2, with the
    // same guards; COleDateTimeSpan only by 1 and 2, without any guard, on its
    // half-second totals.
    static double Round(CZelTimeSpan& span, eRoundFlag flag);
    static double Round(CTimeSpan& span, eRoundFlag flag);
    static double Round(COleDateTimeSpan& span, eRoundFlag flag);

    // Span text of a copy rounded by `flag`. "%H" (or "%h", which wins when both
    // are there) shows the total hours without a leading zero, or the hours in the
    // day when the template also holds "%%D"; a second hour token shows 0 (the
    // high half of the 64-bit count). The COleDateTimeSpan form shows such hours
    // as "0" below 2097152 hours: the count travels as a double and the text reads
    // its low 32 bits. Other tokens as CTimeSpan::Format (for COleDateTimeSpan its
    // own Format); an unknown one throws CAtlException(E_INVALIDARG). A null
    // template gives "".
    static CString Format(const CZelTimeSpan& span, const char* format, eRoundFlag flag);
    static CString Format(const CTimeSpan& span, const char* format, eRoundFlag flag);
    static CString Format(const COleDateTimeSpan& span, const char* format, eRoundFlag flag);

    // TRUE on success; FALSE, with `a` unchanged, when max - b < a (adding) or
    // min + b > a (subtracting), max and min being the range of the type: CTimeSpan
    // and CZelTimeSpan 0..2147483647 s, COleDateTimeSpan that of `range`, where
    // eRangeOleDateTimeSpan tests nothing and always succeeds. A negative `b` is not
    // refused and can take `a` past a limit. CZelTimeSpan adds whole seconds only
    // and keeps the fraction of `a`.
    static int AddTimeSpan(CZelTimeSpan& a, const CZelTimeSpan& b);
    static int AddTimeSpan(CTimeSpan& a, const CTimeSpan& b);
    static int AddTimeSpan(COleDateTimeSpan& a, const COleDateTimeSpan& b, eRangeType range);
    static int SubtractTimeSpan(CZelTimeSpan& a, const CZelTimeSpan& b);
    static int SubtractTimeSpan(CTimeSpan& a, const CTimeSpan& b);
    static int SubtractTimeSpan(COleDateTimeSpan& a, const COleDateTimeSpan& b, eRangeType range);
    // n units (any int): 0 is TRUE at once, even at a limit; n > 0 adds n units and
    // n < 0 subtracts -n units through AddTimeSpan / SubtractTimeSpan, with their
    // result. A COleDateTimeSpan unit is n / 86400, n / 1440, n / 24 or n days.
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

    // 0 and 2147483647 s (fraction 0).
    static void GetPhysicalRange(CTimeSpan& min, CTimeSpan& max);
    static void GetPhysicalRange(CZelTimeSpan& min, CZelTimeSpan& max);
    // In days: 0 .. 1.7976931348623157e308 (type 0), 0 .. 23:59:59 (type 1),
    // 0 .. 2147483647 (type 2: the seconds of CTimeSpan carried as days). Any other
    // type gives type 2's limits.
    static void GetPhysicalRange(eRangeType type, COleDateTimeSpan& min, COleDateTimeSpan& max);
    // In seconds: the half-second totals of the limits above for types 0 and 1
    // (type 0's maximum overflows to +infinity, type 1 gives 0 .. 86399), the raw
    // 0 .. 2147483647 for type 2.
    static void GetPhysicalRange(eRangeType type, double& min, double& max);
    // In days: the limits above for types 0 and 1, 0 .. 2147483647 / 86400 for
    // type 2.
    static void GetPhysicalRangeMjd(eRangeType type, double& min, double& max);

protected:
    // Built once on first use. Kept as they always were although three names
    // promise otherwise: MaxCTimeSpanAsMjd (2147483647.0) and
    // MaxCTimeSpanAsOleDateTimeSpan (2147483647 days) carry the seconds of CTimeSpan
    // as days, and the span control's "Mjd" limits (0.0, 86399.0) are seconds.
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
