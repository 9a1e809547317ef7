// Static operations on time points, each in one overload per representation:
// CZelTime, the platform's CTime and COleDateTime. MJD is the Modified Julian Date
// of the local clock fields, in days; leap seconds are counted as GPS minus UTC.
#pragma once

#include <Zel260/platform/COleDateTime.h>
#include <Zel260/platform/COleDateTimeSpan.h>
#include <Zel260/platform/CObject.h>
#include <Zel260/platform/CString.h>
#include <Zel260/platform/CTime.h>
#include <Zel260/platform/CTimeSpan.h>
#include <Zel260/time/CZelTime.h>

class CZelTimeSpan;

class CZelTimeHelper : public CObject {
    DECLARE_DYNAMIC(CZelTimeHelper)

public:
    // What Round rounds to. Bit 128 may be added: Round ignores it, Format cuts the
    // text at the rounded unit. Any other value rounds nothing.
    enum eRoundFlag : int {
        eRoundSecond = 0,
        eRoundMinute = 1,
        eRoundHour = 2,
        eRoundMillisecond = 3,
        eRoundTenth = 4,
        eRoundHundredth = 5,
        eRoundCut = 128,
    };
    // Which part of the current format: 0 date and time, 1 date, any other time.
    enum eType : int { eDateTime = 0, eDate = 1, eTime = 2 };
    // Physical ranges: 0 COleDateTime (0100-01-01 .. 9999-12-31 00:00), 1 the date
    // and time control (1601-01-01 .. 9999-12-31 00:00), 2 CTime (1970-01-02 00:00 ..
    // 2030-01-18 23:59:59 local).
    enum eRangeType : int { eRangeOleDateTime = 0, eRangeDateTimeCtrl = 1, eRangeCTime = 2 };

    CZelTimeHelper() {}

    // MJD of the local fields (0.0 when they can't be read).
    static double GetMjd(const CZelTime& time);
    static double GetMjd(const CTime& time);
    static double GetMjd(const COleDateTime& time);
    // Sets the time from an MJD when it lies inside the type's range (limits
    // included); otherwise the target stays as it was. CZelTime keeps its zone.
    static void SetMjd(double mjd, CZelTime& time);
    static void SetMjd(double mjd, CTime& time);
    static void SetMjd(double mjd, COleDateTime& time);
    // Calendar date, clock and fraction of the second of an MJD.
    static void Mjd2Ymd(const double& mjd, long& year, long& month, long& day, long& hour, long& minute,
                        long& second, double& fracSecond);

    // Leap seconds (GPS - UTC) in force on `mjd`, in days (count / 86400); the first
    // day of that count in *effectiveMjd (if not null). 0.0 and 0.0 before 1980.
    static double GetLeapSeconds(const double& mjd, double* effectiveMjd);
    // Records that `count` leap seconds apply from the day of `mjd` on. TRUE at once
    // for count < 14 (already known); FALSE for count >= 51, a day outside the CTime
    // range or a day that is not January 1st or July 1st. A known day keeps its
    // count. The table is written to the profile.
    static int AddLeapSeconds(const double& mjd, unsigned char count);
    // The same from a GPS navigation message: current full week, eight-bit week of
    // the leap second and its day number (the count applies from the next day).
    static int AddLeapSeconds(unsigned short gpsWeek, unsigned char weekNumber, unsigned char dayNumber,
                              unsigned char count);

    // Part comparisons of the local fields; the zone is ignored. DatePartGreater
    // compares the clock (hour, minute, second), as TimePartGreater of CTime and
    // COleDateTime do; callers rely on that.
    static int DatePartEqual(const CZelTime& a, const CZelTime& b);
    static int DatePartLess(const CZelTime& a, const CZelTime& b);
    static int DatePartGreater(const CZelTime& a, const CZelTime& b);
    static int TimePartEqual(const CZelTime& a, const CZelTime& b);
    static int TimePartLess(const CZelTime& a, const CZelTime& b);
    static int TimePartGreater(const CZelTime& a, const CZelTime& b);
    static int DatePartEqual(const CTime& a, const CTime& b);
    static int DatePartLess(const CTime& a, const CTime& b);
    static int DatePartGreater(const CTime& a, const CTime& b);
    static int TimePartEqual(const CTime& a, const CTime& b);
    static int TimePartLess(const CTime& a, const CTime& b);
    static int TimePartGreater(const CTime& a, const CTime& b);
    static int DatePartEqual(const COleDateTime& a, const COleDateTime& b);
    static int DatePartLess(const COleDateTime& a, const COleDateTime& b);
    static int DatePartGreater(const COleDateTime& a, const COleDateTime& b);
    static int TimePartEqual(const COleDateTime& a, const COleDateTime& b);
    static int TimePartLess(const COleDateTime& a, const COleDateTime& b);
    static int TimePartGreater(const COleDateTime& a, const COleDateTime& b);

    static void GetPhysicalRange(CTime& min, CTime& max);
    static void GetPhysicalRange(CZelTime& min, CZelTime& max);
    // In MJD.
    static void GetPhysicalRange(eRangeType type, double& min, double& max);
    static void GetPhysicalRange(eRangeType type, COleDateTime& min, COleDateTime& max);
    static void GetPhysicalRange(eRangeType type, SYSTEMTIME& min, SYSTEMTIME& max);

    // Text. Format rounds a copy by `flag` and runs strftime on it ("%#" is the
    // no-leading-zero flag); empty for a null or empty template, a time that can't
    // be broken down or a text beyond the buffer (127 bytes, 255 for COleDateTime).
    // With bit 128, "%S" (and for a unit above 1, "%M") is cut from the template
    // and a trailing ":" from the text. An invalid COleDateTime gives the text of
    // string 55296 ("Invalid DateTime"), a null one the empty text.
    static CString Format(const CZelTime& time, const char* format, eRoundFlag flag);
    static CString Format(const CTime& time, const char* format, eRoundFlag flag);
    static CString Format(const COleDateTime& time, const char* format, eRoundFlag flag);
    static CString Format(const CZelTime& time, eRoundFlag flag);
    static CString Format(const CTime& time, eRoundFlag flag);
    static CString Format(const COleDateTime& time, eRoundFlag flag);
    static CString FormatDate(const CZelTime& time, eRoundFlag flag);
    static CString FormatDate(const CTime& time, eRoundFlag flag);
    static CString FormatDate(const COleDateTime& time, eRoundFlag flag);
    static CString FormatTime(const CZelTime& time, eRoundFlag flag);
    static CString FormatTime(const CTime& time, eRoundFlag flag);
    static CString FormatTime(const COleDateTime& time, eRoundFlag flag);

    // Rounds in place to the unit of `flag` (bit 128 ignored) and returns the MJD.
    // Second and tenth need a second of room to the range's ends, minute and hour
    // room for the carry and the part taken off; otherwise nothing changes. CTime
    // and COleDateTime have no fraction: only minute and hour act on them.
    // Fractions round to nearest, ties to even; the second's half rounds up.
    static double Round(CZelTime& time, eRoundFlag flag);
    static double Round(CTime& time, eRoundFlag flag);
    static double Round(COleDateTime& time, eRoundFlag flag);

    // The current format as a picture of the date and time control (dd, MM, MMM,
    // MMMM, yyyy, tt hh, HH, mm, ss), whole, date or time part by `type`; empty when
    // the format holds no year.
    static CString GetZelTimeFormat(eType type);
    static void ConvertZelTimeFormatToDateTimeCtrl(CString& format);

    // Calendar arithmetic: TRUE on success; FALSE, with the time unchanged, when the
    // result would leave the range. CZelTime takes only the span's whole seconds
    // and keeps its fraction, except AddMonths and AddYears, which clear it.
    static int AddTimeSpan(CTime& time, const CTimeSpan& span);
    static int AddTimeSpan(CZelTime& time, const CZelTimeSpan& span);
    static int AddTimeSpan(COleDateTime& time, const COleDateTimeSpan& span, eRangeType range);
    static int SubtractTimeSpan(CTime& time, const CTimeSpan& span);
    static int SubtractTimeSpan(CZelTime& time, const CZelTimeSpan& span);
    static int SubtractTimeSpan(COleDateTime& time, const COleDateTimeSpan& span, eRangeType range);
    static int AddSeconds(CTime& time, int n);
    static int AddSeconds(CZelTime& time, int n);
    static int AddSeconds(COleDateTime& time, int n, eRangeType range);
    static int AddMinutes(CTime& time, int n);
    static int AddMinutes(CZelTime& time, int n);
    static int AddMinutes(COleDateTime& time, int n, eRangeType range);
    static int AddHours(CTime& time, int n);
    static int AddHours(CZelTime& time, int n);
    static int AddHours(COleDateTime& time, int n, eRangeType range);
    static int AddDays(CTime& time, int n);
    static int AddDays(CZelTime& time, int n);
    static int AddDays(COleDateTime& time, int n, eRangeType range);
    static int AddWeeks(CTime& time, int n);
    static int AddWeeks(CZelTime& time, int n);
    static int AddWeeks(COleDateTime& time, int n, eRangeType range);
    // Keeps the day of the month where the new month has it, else takes its last day.
    static int AddMonths(CTime& time, int n);
    static int AddMonths(CZelTime& time, int n);
    static int AddMonths(COleDateTime& time, int n, eRangeType range);
    static int AddYears(CTime& time, int n);
    static int AddYears(CZelTime& time, int n);
    static int AddYears(COleDateTime& time, int n, eRangeType range);

protected:
    // Removes the first `token` from `format`, then trims white space at both ends.
    static void CutString(const char* token, CString& format);

    static const CTime& MinCTime();
    static const CTime& MaxCTime();
    static double MinCTimeAsMjd();
    static double MaxCTimeAsMjd();
    static const COleDateTime& MinCTimeAsOleDateTime();
    static const COleDateTime& MaxCTimeAsOleDateTime();
    static const COleDateTime& MinOleDateTime();
    static const COleDateTime& MaxOleDateTime();
    static double MinOleDateTimeAsMjd();
    static double MaxOleDateTimeAsMjd();
    static const COleDateTime& MinDateTimeCtrlAsOleDateTime();
    static const COleDateTime& MaxDateTimeCtrlAsOleDateTime();
    static double MinDateTimeCtrlAsMjd();
    static double MaxDateTimeCtrlAsMjd();

private:
    friend class CZelTime;
    template <class T>
    friend CString FormatRounded(const T&, const char*, int, size_t);
    // Round without the MJD that the public form returns.
    static void RoundInPlace(CZelTime& time, eRoundFlag flag);
    static void RoundInPlace(CTime& time, eRoundFlag flag);
    static void RoundInPlace(COleDateTime& time, eRoundFlag flag);
};
