// CZelTime: the library's point in time. Whole seconds since 1970 through its CTime
// base (fields read in local time), a fraction of a second in [0, 1) and a time zone
// in hours east of Greenwich. Its common numeric form is the Modified Julian Date
// (MJD, days since 1858-11-17 00:00) of its local clock, held in a double.
//
// All arithmetic on time goes through MJD; CZelTimeHelper holds the static
// operations for CZelTime, CTime and COleDateTime alike.
#pragma once

#include <Zel260/platform/CObject.h>
#include <Zel260/platform/CString.h>
#include <Zel260/platform/CTime.h>
#include <Zel260/platform/Win32Types.h>

class CWnd;

class CZelTime : public CObject, public CTime {
    DECLARE_DYNAMIC(CZelTime)

public:
    // Index of one of the 32 strftime templates; also the value stored in the
    // profile. 0..31 are the table, anything else means "the current format".
    enum eTimeFormat : unsigned int {
        eTimeFormatFirst = 0,
        eTimeFormatLast = 31,
        eTimeFormatCount = 32,
    };

    // The format choice of the Qt layer (a drop-down of the 32 templates).
    class CTimeFormatComboBox;

    // Every constructor sets the fraction to 0, the zone to SystemTimezone(0) and
    // loads the current format if it is not loaded yet.

    // The current time, whole seconds.
    CZelTime();
    CZelTime(const CZelTime& other);
    CZelTime(const CTime& time);
    explicit CZelTime(std::int64_t seconds);
    // As CTime's field form: throws CAtlException(E_FAIL) for a bad field,
    // CAtlException(E_INVALIDARG) for a date the calendar refuses.
    CZelTime(int year, int month, int day, int hour, int minute, int second, int dst);
    CZelTime(unsigned short dosDate, unsigned short dosTime, int dst);
    CZelTime(const SYSTEMTIME& time, int dst);
    CZelTime(const FILETIME& time, int dst);
    // ScanTime(text, format); throws as the field form does.
    CZelTime(CString text, CString format);
    // SetGpsTime(week, seconds); the zero time if out of range.
    CZelTime(int gpsWeek, double gpsSeconds);
    // Mjd(mjd); the zero time if out of range.
    explicit CZelTime(double mjd);

    CZelTime& operator=(const CZelTime& other);
    // Replaces the seconds; the fraction becomes 0, the zone stays.
    CZelTime& operator=(const CTime& time);
    // Mjd(value).
    CZelTime& operator=(const double& mjd);

    // MJD of the local clock, fraction included.
    double Mjd() const;
    operator double() const { return Mjd(); }
    // Sets the time from an MJD; outside the CTime range (1970-01-02 to 2030-01-18
    // local) nothing changes. The zone stays.
    void Mjd(double mjd);
    // Mjd() + Timezone() / 24; 0.0 when the seconds can't be broken down.
    double MjdUTC() const;
    // Mjd(value - Timezone() / 24).
    void MjdUTC(double value);
    double Timezone() const { return m_timezone; }
    void Timezone(double hours) { m_timezone = hours; }
    // The fraction of the second, 0 <= f < 1.
    double GetFracSecond() const { return m_fracSecond; }
    // second * 1000 + fraction * 1000, with second the field 0..59.
    double GetMilliSeconds() const;

    // Sets the time to GPS week and seconds of week (no leap seconds, no zone);
    // returns the MJD, even when it lies out of range and nothing changed.
    double SetGpsTime(int week, double seconds);
    // Both outputs always written; TRUE when week >= 0 and 0 <= seconds < 604800.
    int GetGpsTime(int& week, double& seconds) const;
    // Sets the time from a stamp YYMMDD.hhmmss (years below 71 in 2000..2070, all
    // others plus 1900); returns the stamp's MJD even if nothing changed.
    double SetCduFilestamp(double stamp);

    // week * 7 + 44244 + seconds / 86400.
    static double GpsTime(int week, double seconds);
    // MJD of a calendar date and time, without zone or clock.
    static double Mjd(int year, int month, int day, int hour, int minute, double second);
    // The same, split into the day number (days as a 32-bit unsigned count: a date
    // before 1858-11-17 reads as a large positive number, and so does the result)
    // and the fraction of the day.
    static double Mjd(int year, int month, int day, int hour, int minute, double second,
                      unsigned long& dayNumber, double& dayFraction);
    // MJD of a stamp YYMMDD.hhmmss: a year of 100 or more stands, below 50 is 20yy,
    // 50..99 is 19yy.
    static double CduFilestamp(double stamp);
    // MJD of the clock as local time, whole seconds.
    static double CurrentTime();
    // CurrentTime() - SystemTimezoneMjd(dst).
    static double CurrentTimeUTC(int dst);
    // The system zone in hours east and, in `daylight`, 1.0 when daylight saving
    // time is in force now, else 0.0. A zone less than an hour east of Greenwich
    // comes out with a negative sign.
    static double LocalTimeZone(double& daylight);
    // The zone read once per process, plus the daylight hours when dst != 0 (0 on
    // the very first call of a process: the daylight hours are read first).
    static double SystemTimezone(int dst);
    static double SystemTimezoneMjd(int dst);
    // The stored daylight hours (0.0 or 1.0); 0.0 until the zone was read.
    static double SystemDaylight();
    static double SystemDaylightMjd();

    // Tolerant comparison of MjdUTC(): equal within 2.22e-16 relative plus absolute.
    bool operator==(const CZelTime& other) const;
    bool operator!=(const CZelTime& other) const;
    bool operator<(const CZelTime& other) const;
    bool operator>(const CZelTime& other) const;
    bool operator<=(const CZelTime& other) const;
    bool operator>=(const CZelTime& other) const;

    // Text. `round` is a CZelTimeHelper::eRoundFlag, optionally with bit 128: cut
    // the text at the rounded unit.

    // The current format.
    CString Format(int round) const;
    // A strftime template ("%#" allowed); empty for a null or empty template.
    CString Format(const char* format, int round) const;
    // The table's template for index < 32, else the current format.
    CString Format(eTimeFormat index, int round) const;
    // The template with id `stringId` of resource module `module`. Throws
    // CAtlException(E_FAIL) when it has none.
    CString Format(HINSTANCE module, unsigned int stringId, int round) const;
    // The date part (before " %H" or " %#I") and the time part of the current format.
    CString FormatDate(int round) const;
    CString FormatTime(int round) const;
    // The rounded fraction without its leading 0: ".123" (1 decimal for a round
    // of 4, 2 for 5, 3 for any other).
    CString FormatFracSec(int round) const;
    // The time moved by the zone (Mjd() + zone / 24) in the given format.
    CString FormatUTC(int round) const;
    CString FormatUTC(double zone, int round) const;
    CString FormatUTC(const char* format, int round) const;
    CString FormatUTC(eTimeFormat index, int round) const;
    CString FormatDateUTC(int round) const;
    CString FormatDateUTC(double zone, int round) const;
    CString FormatTimeUTC(int round) const;
    CString FormatTimeUTC(double zone, int round) const;
    // Rounds in place; returns the MJD.
    double Round(int round);
    // Parses `text` by the strftime-like `format` (see CZelTimeHelper docs) and sets
    // this time; returns its MJD. Both arguments are consumed. Throws
    // CAtlException(E_FAIL) for a missing or bad field, E_INVALIDARG for a date the
    // calendar refuses.
    double ScanTime(CString& text, CString& format);
    // 1 when the month stands before the day in the current format, else 0.
    int DateOrder() const;

    // Qt layer (zel260widgets): the format choice.
    unsigned int GetCurrentSelection(const CTimeFormatComboBox& combo) const;
    void InitializeTimeFormatComboBox(CTimeFormatComboBox& combo) const;
    void SaveCurrentSelection(const CTimeFormatComboBox& combo, CWnd* notify) const;

    // The current format's template and index, loaded on first use.
    static CString CurrentTimeFormat();
    static unsigned int CurrentTimeFormatIndex();
    // The character between the date fields of the current format, ' ' if none.
    static char DateSeparator();
    // Makes `index` (< 32) the format unless the profile already holds a valid
    // choice, which then wins; writes the profile only in the first case.
    static void DefaultSettings(eTimeFormat index);
    // Reads the index from the profile (missing, -1 or above 32 give 0).
    static void LoadCurrentTimeFormat();
    // Makes `index` (0..32) current and writes it and its template to the profile.
    static void StoreCurrentTimeFormat(unsigned int index);
    // The template of a table index; empty for 32 and above.
    static const char* TimeFormatTemplate(unsigned int index);

private:
    friend class CZelTimeHelper;
    // The current template without a copy; loads it first if needed.
    static const CString& CurrentTimeFormatText();
    double m_fracSecond;
    double m_timezone;
};

// 0 when equal, -1 when a is less, 1 otherwise. The CZelTime form is the tolerant
// comparison of MjdUTC(); the part forms compare the local date fields (year,
// month, day) or the clock fields (hour, minute, second, and the fraction for
// CZelTime).
int ZelCompare(const CZelTime& a, const CZelTime& b);
int ZelCompareDatePart(const CZelTime& a, const CZelTime& b);
int ZelCompareTimePart(const CZelTime& a, const CZelTime& b);
int ZelCompare(const CTime& a, const CTime& b);
int ZelCompareDatePart(const CTime& a, const CTime& b);
int ZelCompareTimePart(const CTime& a, const CTime& b);
class COleDateTime;
int ZelCompare(const COleDateTime& a, const COleDateTime& b);
int ZelCompareDatePart(const COleDateTime& a, const COleDateTime& b);
int ZelCompareTimePart(const COleDateTime& a, const COleDateTime& b);
