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
    CZelTimeSpan();
    CZelTimeSpan(const CZelTimeSpan& other);
    CZelTimeSpan(const CTimeSpan& span);
    explicit CZelTimeSpan(std::int64_t seconds);
    // ((days * 24 + hours) * 60 + minutes) * 60 + seconds.
    CZelTimeSpan(long days, int hours, int minutes, int seconds);
    // A count of days, split into whole seconds and the fraction; no range test.
    explicit CZelTimeSpan(double days);
    // weeks * 7 + seconds / 86400 days.
    CZelTimeSpan(int gpsWeeks, const double& gpsSeconds);

    CZelTimeSpan& operator=(const CZelTimeSpan& other);

    // seconds / 86400 + fraction / 86400.
    double Mjd() const;
    operator double() const { return Mjd(); }
    // Sets from days when 0 <= days <= 2147483647 (CZelTimeSpanHelper::SetMjd);
    // otherwise nothing changes.
    void Mjd(double days);
    double GetFracSecond() const { return m_fracSecond; }

    // Span text (CZelTimeSpanHelper::Format): %D days, %H hours (the hour token shows
    // all hours, no leading zero), %M, %S, their "%#" forms, %%; `round` is a
    // CZelTimeSpanHelper::eRoundFlag. An unknown token throws CAtlException
    // (E_INVALIDARG).
    CString Format(const char* format, int round) const;
    // The template with id `stringId` of `module`; CAtlException(E_FAIL) if absent.
    CString Format(HINSTANCE module, unsigned int stringId, int round) const;
    // Rounds in place; returns the days.
    double Round(int round);
    void SetGpsTimeSpan(int weeks, const double& seconds);
    // weeks = trunc(days / 7), seconds the rest in seconds; always TRUE.
    int GetGpsTimeSpan(int& weeks, double& seconds) const;

private:
    friend class CZelTimeSpanHelper;
    double m_fracSecond;
};
