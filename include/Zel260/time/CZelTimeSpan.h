// CZelTimeSpan: a length of time of whole seconds (its CTimeSpan base) and a
// fraction of a second. Its numeric form is a count of days (Mjd); its GPS form a
// pair of weeks and seconds, without an epoch.
#pragma once

#include <Zel260/platform/CObject.h>
#include <Zel260/platform/CString.h>
#include <Zel260/platform/CTimeSpan.h>
#include <Zel260/platform/Win32Types.h>

class CZelTimeSpan : public CObject, public CTimeSpan {
    DECLARE_DYNAMIC(CZelTimeSpan)

public:
    // Every constructor but the copy sets the fraction to 0 or to what the value
    // gives. None of them tests a range.
    CZelTimeSpan();
    CZelTimeSpan(const CZelTimeSpan& other);
    CZelTimeSpan(const CTimeSpan& span);
    // Whole seconds, any 64-bit count.
    explicit CZelTimeSpan(std::int64_t seconds);
    // ((days * 24 + hours) * 60 + minutes) * 60 + seconds; `days` is taken as a
    // 32-bit count, the fields need not lie in their usual ranges.
    CZelTimeSpan(long days, int hours, int minutes, int seconds);
    // A count of days, split by CZelTimeSpanHelper::Mjd2Hms into whole seconds and
    // the fraction. A negative count gives a negative span (seconds and fraction
    // both <= 0); NaN gives 0 s with a NaN fraction; beyond 2^31 days the day count
    // wraps at 32 bits.
    explicit CZelTimeSpan(double days);
    // weeks * 7 + gpsSeconds / 86400 days, as CZelTimeSpan(double).
    CZelTimeSpan(int gpsWeeks, const double& gpsSeconds);

    CZelTimeSpan& operator=(const CZelTimeSpan& other);

    // Days: seconds / 86400 + fraction / 86400.
    double Mjd() const;
    operator double() const { return Mjd(); }
    // Sets from days when 0 <= days <= 2147483647 (both included; the upper limit
    // is the count of seconds of CTimeSpan taken as days, as it always was);
    // outside, and for NaN, nothing changes and nothing is reported.
    void Mjd(double days);
    // Fraction of the second, 0 <= f < 1 for a span built from a positive count of
    // days (-1 < f <= 0 for a negative one, NaN from NaN days).
    double GetFracSecond() const { return m_fracSecond; }

    // Span text of a rounded copy (CZelTimeSpanHelper::Format): "%D" days, "%H"
    // the hour token (all hours, no leading zero; the hours in the day when the
    // template also holds "%%D"), "%M", "%S" two digits, their "%#" forms without
    // leading zero, "%%". `round` is a CZelTimeSpanHelper::eRoundFlag. An unknown
    // token throws CAtlException(E_INVALIDARG); a null template gives "".
    CString Format(const char* format, int round) const;
    // The same with the template `stringId` of `module`; CAtlException(E_FAIL) if
    // the module has no such text.
    CString Format(HINSTANCE module, unsigned int stringId, int round) const;
    // Rounds in place by a CZelTimeSpanHelper::eRoundFlag (0 second, 1 minute,
    // 2 hour, 3 ms, 4 tenth, 5 hundredth; anything else, bit 128 included, rounds
    // nothing); returns the days afterwards. Where a guard fails the span stays.
    double Round(int round);
    // Sets weeks * 7 + seconds / 86400 days; there is no epoch and no range test.
    void SetGpsTimeSpan(int weeks, const double& seconds);
    // weeks = trunc(days / 7) (clamped to int), seconds = the rest of the days in
    // seconds (0 .. 604800 for a positive span). Always TRUE.
    int GetGpsTimeSpan(int& weeks, double& seconds) const;

private:
    friend class CZelTimeSpanHelper;
    double m_fracSecond;
};
