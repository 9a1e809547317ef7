#include <Zel260/time/CZelTimeHelper.h>

#include <Zel260/platform/CAtlException.h>
#include <Zel260/resources/ZelTimeResourceIds.h>
#include <Zel260/services/CZelProfileEntries.h>
#include <Zel260/time/CZelTimeSpan.h>
#include <Zel260/time/CZelTimeSpanHelper.h>

#include "LeapSecondTable.h"
#include "FractionRounding.h"
#include "TimeFields.h"
#include "TimeProfile.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
#include <vector>

using zeltime::Fields;
using zeltime::FieldsOf;

namespace {

const char* LeapSecondsSection() { return CZelProfileEntries::LeapSecondsSection(); }
const char* LeapSecondsEntry() { return CZelProfileEntries::LeapSecondsEntry(); }

struct BuiltInLeapSecond {
    double mjd;
    int count;
};

const BuiltInLeapSecond BuiltInLeapSeconds[] = {
    {44239, 0},  {44786, 1},  {45151, 2},  {45516, 3},  {46247, 4},  {47161, 5},  {47892, 6},  {48257, 7},
    {48804, 8},  {49169, 9},  {49534, 10}, {50083, 11}, {50630, 12}, {51179, 13}, {53736, 14},
};

double readDouble(const std::vector<unsigned char>& bytes, size_t offset)
{
    // Bytes past the buffer read as zero: a short or odd record is taken as it is,
    // without reading beyond what exists.
    unsigned char raw[8] = {};
    for (size_t i = 0; i < 8; ++i)
        if (offset + i < bytes.size())
            raw[i] = bytes[offset + i];
    std::uint64_t bits = 0;
    for (int i = 7; i >= 0; --i)
        bits = (bits << 8) | raw[i];
    double v;
    std::memcpy(&v, &bits, sizeof v);
    return v;
}

void loadLeapSecondTable(std::map<double, double>& table)
{
    table.clear();
    for (const auto& row : BuiltInLeapSeconds)
        table.emplace(row.mjd, row.count / 86400.0);
    const CString stored = zeltime::ReadProfileString(LeapSecondsSection(), LeapSecondsEntry(), "");
    if (stored.IsEmpty())
        return;
    // Decoded in place in a copy of the text, as the stored rows always were.
    std::vector<unsigned char> buffer(stored.GetString(), stored.GetString() + stored.GetLength() + 1);
    const unsigned long size = zeltime::DecodeBase64InPlace(buffer);
    if (size < 8)
        return;
    const unsigned long pairs = (size / 8 - 1) / 2 + 1;
    for (unsigned long i = 0; i < pairs; ++i) {
        const double key = readDouble(buffer, i * 16);
        const double value = readDouble(buffer, i * 16 + 8);
        // A NaN key would break the table's order; such a row can't name a day.
        if (!std::isnan(key))
            table.emplace(key, value);
    }
}

void saveLeapSecondTable(const std::map<double, double>& table)
{
    std::vector<unsigned char> bytes;
    try {
        bytes.reserve(table.size() * 16);
    } catch (const std::bad_alloc&) {
        return;
    }
    auto put = [&bytes](double v) {
        std::uint64_t bits;
        std::memcpy(&bits, &v, sizeof v);
        for (int i = 0; i < 8; ++i)
            bytes.push_back(static_cast<unsigned char>(bits >> (8 * i)));
    };
    for (const auto& [key, value] : table) {
        put(key);
        put(value);
    }
    const CString text = zeltime::EncodeBase64(bytes.data(), static_cast<unsigned long>(bytes.size()));
    zeltime::WriteProfileString(LeapSecondsSection(), LeapSecondsEntry(), text);
}

std::map<double, double>& loadedTable()
{
    auto& table = zeltime::LeapSecondTable();
    if (table.empty())
        loadLeapSecondTable(table);
    return table;
}

bool tmOf(const CTime& t, struct tm& tm) { return t.GetLocalTm(&tm) != nullptr; }
bool tmOf(const COleDateTime& t, struct tm& tm) { return t.GetAsTm(tm); }

} // namespace

namespace {

// Whether rounding by `flag` leaves the clock (all that a template shows) as it is:
// then the text comes from the time itself, without a rounded copy.
bool roundingKeepsClock(const CZelTime& time, int flag)
{
    const int n = flag & ~128;
    const double frac = time.GetFracSecond();
    switch (n) {
    case CZelTimeHelper::eRoundMinute:
    case CZelTimeHelper::eRoundHour: return false;
    case CZelTimeHelper::eRoundSecond: return !(frac >= 0.5);
    // These carry only from a fraction that rounds to a whole second.
    case CZelTimeHelper::eRoundMillisecond:
    case CZelTimeHelper::eRoundTenth:
    case CZelTimeHelper::eRoundHundredth: return frac < 0.9;
    default: return true;
    }
}

// Without a fraction only minutes and hours move the clock.
template <class T>
bool roundingKeepsClock(const T&, int flag)
{
    const int n = flag & ~128;
    return n != CZelTimeHelper::eRoundMinute && n != CZelTimeHelper::eRoundHour;
}

} // namespace

template <class T>
CString FormatRounded(const T& time, const char* format, int flag, size_t bufferSize)
{
    if (!format || !*format)
        return CString();
    struct tm tm;
    if (roundingKeepsClock(time, flag)) {
        if (!tmOf(time, tm))
            return CString();
    } else {
        T copy(time);
        CZelTimeHelper::RoundInPlace(copy, static_cast<CZelTimeHelper::eRoundFlag>(flag));
        if (!tmOf(copy, tm))
            return CString();
    }
    if (!(flag & 128)) {
        char small[256];
        const size_t size = bufferSize < sizeof small ? bufferSize : sizeof small;
        const size_t length = CTime::FormatTm(small, size, format, tm);
        return length ? CString(std::string_view(small, length)) : CString();
    }
    CString templ(format);
    bool cut = false;
    {
        const int n = flag & ~128;
        if (n > 0) {
            cut |= templ.Find("%S") >= 0;
            const int pos = templ.Find("%S");
            if (pos >= 0)
                templ.Delete(pos, 2);
            templ.Trim();
        }
        if (n > 1) {
            cut |= templ.Find("%M") >= 0;
            const int pos = templ.Find("%M");
            if (pos >= 0)
                templ.Delete(pos, 2);
            templ.Trim();
        }
    }
    std::vector<char> buffer(bufferSize);
    if (!CTime::FormatTm(buffer.data(), buffer.size(), templ, tm))
        return CString();
    CString out(buffer.data());
    if (cut && out.GetLength() > 0 && out[out.GetLength() - 1] == ':')
        out.Delete(out.GetLength() - 1);
    return out;
}

namespace {

CString datePartOf(CString format)
{
    int pos = format.Find(" %H");
    if (pos < 0)
        pos = format.Find(" %#I");
    if (pos >= 0)
        format = format.Left(pos);
    format.TrimRight();
    return format;
}

CString timePartOf(CString format)
{
    int pos = format.Find(" %H");
    if (pos < 0)
        pos = format.Find(" %#I");
    if (pos >= 0)
        format = format.Mid(pos + 1);
    format.TrimLeft();
    return format;
}

CString oleStatusText(const COleDateTime& t)
{
    if (t.GetStatus() == COleDateTime::null)
        return CString();
    const CString text = zeltime::LibraryString(IDS_ZEL_TIME_INVALID_DATETIME);
    return text.IsEmpty() ? CString("Invalid DateTime") : text;
}

int cmp3(long a1, long a2, long a3, long b1, long b2, long b3)
{
    if (a1 != b1)
        return a1 < b1 ? -1 : 1;
    if (a2 != b2)
        return a2 < b2 ? -1 : 1;
    if (a3 != b3)
        return a3 < b3 ? -1 : 1;
    return 0;
}

int dateCmp(const Fields& a, const Fields& b) { return cmp3(a.year, a.month, a.day, b.year, b.month, b.day); }
int clockCmp(const Fields& a, const Fields& b) { return cmp3(a.hour, a.minute, a.second, b.hour, b.minute, b.second); }

bool tolerantEqual(double a, double b)
{
    const double e = 2.220446049250313e-16;
    return std::fabs(a - b) <= e * std::max(std::fabs(a), std::fabs(b)) + e;
}

// 32-bit products as the documented arithmetic has them, without signed overflow.
int wrapMul(int n, int k) { return static_cast<int>(static_cast<std::uint32_t>(n) * static_cast<std::uint32_t>(k)); }

// The month arithmetic shared by the three types: the new year, month and day to
// start from, and how many days past the 28th the old day stood.
struct MonthStep {
    long y, m, d, excess;
};

MonthStep monthStep(const Fields& f, int n)
{
    const long years = n / 12;
    MonthStep s;
    s.y = f.year + years;
    s.m = f.month + (n - years * 12);
    s.excess = f.day >= 29 ? f.day - 28 : 0;
    s.d = f.day - s.excess;
    if (s.m > 12) {
        s.y += 1;
        s.m -= 12;
    }
    if (s.m < 1) {
        s.y -= 1;
        s.m += 12;
    }
    return s;
}

bool monthStepInRange(const MonthStep& s, const Fields& lo, const Fields& hi)
{
    if (s.y < lo.year || s.y > hi.year)
        return false;
    if (s.y == lo.year && (s.m < lo.month || (s.m == lo.month && s.d < lo.day)))
        return false;
    if (s.y == hi.year && (s.m > hi.month || (s.m == hi.month && s.d > hi.day)))
        return false;
    return true;
}

} // namespace

namespace zeltime {

std::map<double, double>& LeapSecondTable()
{
    static auto* table = new std::map<double, double>();
    return *table;
}

void ResetLeapSecondTable() { LeapSecondTable().clear(); }

} // namespace zeltime

IMPLEMENT_DYNAMIC(CZelTimeHelper, CObject)

// ---- MJD -------------------------------------------------------------------------

double CZelTimeHelper::GetMjd(const CZelTime& time)
{
    const Fields f = FieldsOf(time);
    return f.ok ? zeltime::MjdOfFields(f, true) : 0.0;
}

double CZelTimeHelper::GetMjd(const CTime& time)
{
    const Fields f = FieldsOf(time);
    return f.ok ? zeltime::MjdOfFields(f, false) : 0.0;
}

double CZelTimeHelper::GetMjd(const COleDateTime& time)
{
    const Fields f = FieldsOf(time);
    return f.ok ? zeltime::MjdOfFields(f, false) : 0.0;
}

void CZelTimeHelper::Mjd2Ymd(const double& mjd, long& year, long& month, long& day, long& hour, long& minute,
                             long& second, double& fracSecond)
{
    zeltime::Mjd2YmdSplit(mjd, year, month, day, hour, minute, second, fracSecond);
}

void CZelTimeHelper::SetMjd(double mjd, CZelTime& time)
{
    if (!(mjd >= MinCTimeAsMjd() && mjd <= MaxCTimeAsMjd()))
        return;
    long y, mo, d, h, mi, s;
    double frac;
    Mjd2Ymd(mjd, y, mo, d, h, mi, s, frac);
    static_cast<CTime&>(time) = CTime(static_cast<int>(y), static_cast<int>(mo), static_cast<int>(d),
                                      static_cast<int>(h), static_cast<int>(mi), static_cast<int>(s), -1);
    time.m_fracSecond = frac;
}

void CZelTimeHelper::SetMjd(double mjd, CTime& time)
{
    if (!(mjd >= MinCTimeAsMjd() && mjd <= MaxCTimeAsMjd()))
        return;
    long y, mo, d, h, mi, s;
    double frac;
    Mjd2Ymd(mjd, y, mo, d, h, mi, s, frac);
    time = CTime(static_cast<int>(y), static_cast<int>(mo), static_cast<int>(d), static_cast<int>(h),
                 static_cast<int>(mi), static_cast<int>(s), -1);
}

void CZelTimeHelper::SetMjd(double mjd, COleDateTime& time)
{
    if (!(mjd >= MinOleDateTimeAsMjd() && mjd <= MaxOleDateTimeAsMjd()))
        return;
    long y, mo, d, h, mi, s;
    double frac;
    Mjd2Ymd(mjd, y, mo, d, h, mi, s, frac);
    time.SetDateTime(static_cast<int>(y), static_cast<int>(mo), static_cast<int>(d), static_cast<int>(h),
                     static_cast<int>(mi), static_cast<int>(s));
}

// ---- Leap seconds ----------------------------------------------------------------

double CZelTimeHelper::GetLeapSeconds(const double& mjd, double* effectiveMjd)
{
    const auto& table = loadedTable();
    auto it = table.upper_bound(mjd);
    if (it == table.begin()) {
        if (effectiveMjd)
            *effectiveMjd = 0.0;
        return 0.0;
    }
    --it;
    if (effectiveMjd)
        *effectiveMjd = it->first;
    return it->second;
}

int CZelTimeHelper::AddLeapSeconds(const double& mjd, unsigned char count)
{
    if (count < 14)
        return TRUE;
    if (count >= 51)
        return FALSE;
    const double day = std::floor(mjd);
    double lo, hi;
    GetPhysicalRange(eRangeCTime, lo, hi);
    if (!(day >= lo && day <= hi))
        return FALSE;
    long y, mo, d, h, mi, s;
    double frac;
    Mjd2Ymd(day, y, mo, d, h, mi, s, frac);
    if (d != 1 || (mo != 1 && mo != 7))
        return FALSE;
    auto& table = loadedTable();
    table.emplace(day, count / 86400.0);
    saveLeapSecondTable(table);
    return TRUE;
}

int CZelTimeHelper::AddLeapSeconds(unsigned short gpsWeek, unsigned char weekNumber, unsigned char dayNumber,
                                   unsigned char count)
{
    if (count < 14)
        return TRUE;
    std::uint16_t w = static_cast<std::uint16_t>((gpsWeek & 0xFF00) | weekNumber);
    const auto diff = static_cast<std::int16_t>(static_cast<std::uint16_t>(w - gpsWeek));
    if (diff >= 128)
        w = static_cast<std::uint16_t>((w + 65280) & 0xFFFF);
    else if (diff < -127)
        w = static_cast<std::uint16_t>((w + 256) & 0xFFFF);
    const double mjd = CZelTime::GpsTime(w, 0.0) + dayNumber;
    return AddLeapSeconds(mjd, count);
}

// ---- Part comparisons ------------------------------------------------------------

int CZelTimeHelper::DatePartEqual(const CZelTime& a, const CZelTime& b) { return dateCmp(FieldsOf(a), FieldsOf(b)) == 0; }
int CZelTimeHelper::DatePartLess(const CZelTime& a, const CZelTime& b) { return dateCmp(FieldsOf(a), FieldsOf(b)) < 0; }
// Compares the clock, not the date: callers depend on it.
int CZelTimeHelper::DatePartGreater(const CZelTime& a, const CZelTime& b) { return clockCmp(FieldsOf(a), FieldsOf(b)) > 0; }

int CZelTimeHelper::TimePartEqual(const CZelTime& a, const CZelTime& b)
{
    const Fields fa = FieldsOf(a), fb = FieldsOf(b);
    return clockCmp(fa, fb) == 0 && tolerantEqual(fa.frac, fb.frac);
}

int CZelTimeHelper::TimePartLess(const CZelTime& a, const CZelTime& b)
{
    const Fields fa = FieldsOf(a), fb = FieldsOf(b);
    const int c = clockCmp(fa, fb);
    return c != 0 ? c < 0 : fa.frac < fb.frac;
}

int CZelTimeHelper::TimePartGreater(const CZelTime& a, const CZelTime& b)
{
    const Fields fa = FieldsOf(a), fb = FieldsOf(b);
    const int c = clockCmp(fa, fb);
    return c != 0 ? c > 0 : fa.frac > fb.frac;
}

int CZelTimeHelper::DatePartEqual(const CTime& a, const CTime& b) { return dateCmp(FieldsOf(a), FieldsOf(b)) == 0; }
int CZelTimeHelper::DatePartLess(const CTime& a, const CTime& b) { return dateCmp(FieldsOf(a), FieldsOf(b)) < 0; }
int CZelTimeHelper::DatePartGreater(const CTime& a, const CTime& b) { return TimePartGreater(a, b); }
int CZelTimeHelper::TimePartEqual(const CTime& a, const CTime& b) { return clockCmp(FieldsOf(a), FieldsOf(b)) == 0; }
int CZelTimeHelper::TimePartLess(const CTime& a, const CTime& b) { return clockCmp(FieldsOf(a), FieldsOf(b)) < 0; }
int CZelTimeHelper::TimePartGreater(const CTime& a, const CTime& b) { return clockCmp(FieldsOf(a), FieldsOf(b)) > 0; }

int CZelTimeHelper::DatePartEqual(const COleDateTime& a, const COleDateTime& b) { return dateCmp(FieldsOf(a), FieldsOf(b)) == 0; }
int CZelTimeHelper::DatePartLess(const COleDateTime& a, const COleDateTime& b) { return dateCmp(FieldsOf(a), FieldsOf(b)) < 0; }
int CZelTimeHelper::DatePartGreater(const COleDateTime& a, const COleDateTime& b) { return TimePartGreater(a, b); }
int CZelTimeHelper::TimePartEqual(const COleDateTime& a, const COleDateTime& b) { return clockCmp(FieldsOf(a), FieldsOf(b)) == 0; }
int CZelTimeHelper::TimePartLess(const COleDateTime& a, const COleDateTime& b) { return clockCmp(FieldsOf(a), FieldsOf(b)) < 0; }
int CZelTimeHelper::TimePartGreater(const COleDateTime& a, const COleDateTime& b) { return clockCmp(FieldsOf(a), FieldsOf(b)) > 0; }

// ---- Ranges ----------------------------------------------------------------------

const CTime& CZelTimeHelper::MinCTime()
{
    static const CTime t(1970, 1, 2, 0, 0, 0, -1);
    return t;
}
const CTime& CZelTimeHelper::MaxCTime()
{
    static const CTime t(2030, 1, 18, 23, 59, 59, -1);
    return t;
}
double CZelTimeHelper::MinCTimeAsMjd()
{
    static const double v = GetMjd(MinCTime());
    return v;
}
double CZelTimeHelper::MaxCTimeAsMjd()
{
    static const double v = GetMjd(MaxCTime());
    return v;
}
const COleDateTime& CZelTimeHelper::MinCTimeAsOleDateTime()
{
    static const COleDateTime t(1970, 1, 2, 0, 0, 0);
    return t;
}
const COleDateTime& CZelTimeHelper::MaxCTimeAsOleDateTime()
{
    static const COleDateTime t(2030, 1, 18, 23, 59, 59);
    return t;
}
const COleDateTime& CZelTimeHelper::MinOleDateTime()
{
    static const COleDateTime t(100, 1, 1, 0, 0, 0);
    return t;
}
const COleDateTime& CZelTimeHelper::MaxOleDateTime()
{
    static const COleDateTime t(9999, 12, 31, 0, 0, 0);
    return t;
}
double CZelTimeHelper::MinOleDateTimeAsMjd()
{
    static const double v = GetMjd(MinOleDateTime());
    return v;
}
double CZelTimeHelper::MaxOleDateTimeAsMjd()
{
    static const double v = GetMjd(MaxOleDateTime());
    return v;
}
const COleDateTime& CZelTimeHelper::MinDateTimeCtrlAsOleDateTime()
{
    static const COleDateTime t(1601, 1, 1, 0, 0, 0);
    return t;
}
const COleDateTime& CZelTimeHelper::MaxDateTimeCtrlAsOleDateTime()
{
    static const COleDateTime t(9999, 12, 31, 0, 0, 0);
    return t;
}
double CZelTimeHelper::MinDateTimeCtrlAsMjd()
{
    static const double v = GetMjd(MinDateTimeCtrlAsOleDateTime());
    return v;
}
double CZelTimeHelper::MaxDateTimeCtrlAsMjd()
{
    static const double v = GetMjd(MaxDateTimeCtrlAsOleDateTime());
    return v;
}

void CZelTimeHelper::GetPhysicalRange(CTime& min, CTime& max)
{
    min = MinCTime();
    max = MaxCTime();
}

void CZelTimeHelper::GetPhysicalRange(CZelTime& min, CZelTime& max)
{
    min = MinCTime();
    max = MaxCTime();
}

void CZelTimeHelper::GetPhysicalRange(eRangeType type, double& min, double& max)
{
    switch (type) {
    case eRangeOleDateTime:
        min = MinOleDateTimeAsMjd();
        max = MaxOleDateTimeAsMjd();
        break;
    case eRangeDateTimeCtrl:
        min = MinDateTimeCtrlAsMjd();
        max = MaxDateTimeCtrlAsMjd();
        break;
    default:
        min = MinCTimeAsMjd();
        max = MaxCTimeAsMjd();
        break;
    }
}

void CZelTimeHelper::GetPhysicalRange(eRangeType type, COleDateTime& min, COleDateTime& max)
{
    switch (type) {
    case eRangeOleDateTime:
        min = MinOleDateTime();
        max = MaxOleDateTime();
        break;
    case eRangeDateTimeCtrl:
        min = MinDateTimeCtrlAsOleDateTime();
        max = MaxDateTimeCtrlAsOleDateTime();
        break;
    default:
        min = MinCTimeAsOleDateTime();
        max = MaxCTimeAsOleDateTime();
        break;
    }
}

void CZelTimeHelper::GetPhysicalRange(eRangeType type, SYSTEMTIME& min, SYSTEMTIME& max)
{
    COleDateTime lo, hi;
    GetPhysicalRange(type, lo, hi);
    lo.GetAsSystemTime(min);
    hi.GetAsSystemTime(max);
}

// ---- Text ------------------------------------------------------------------------

CString CZelTimeHelper::Format(const CZelTime& time, const char* format, eRoundFlag flag)
{
    return FormatRounded(time, format, flag, 128);
}

CString CZelTimeHelper::Format(const CTime& time, const char* format, eRoundFlag flag)
{
    return FormatRounded(time, format, flag, 128);
}

CString CZelTimeHelper::Format(const COleDateTime& time, const char* format, eRoundFlag flag)
{
    if (time.GetStatus() != COleDateTime::valid)
        return oleStatusText(time);
    return FormatRounded(time, format, flag, 256);
}

CString CZelTimeHelper::Format(const CZelTime& time, eRoundFlag flag) { return Format(time, CZelTime::CurrentTimeFormatText(), flag); }
CString CZelTimeHelper::Format(const CTime& time, eRoundFlag flag) { return Format(time, CZelTime::CurrentTimeFormat(), flag); }
CString CZelTimeHelper::Format(const COleDateTime& time, eRoundFlag flag) { return Format(time, CZelTime::CurrentTimeFormat(), flag); }

CString CZelTimeHelper::FormatDate(const CZelTime& time, eRoundFlag flag) { return Format(time, datePartOf(CZelTime::CurrentTimeFormat()), flag); }
CString CZelTimeHelper::FormatDate(const CTime& time, eRoundFlag flag) { return Format(time, datePartOf(CZelTime::CurrentTimeFormat()), flag); }
CString CZelTimeHelper::FormatDate(const COleDateTime& time, eRoundFlag flag) { return Format(time, datePartOf(CZelTime::CurrentTimeFormat()), flag); }
CString CZelTimeHelper::FormatTime(const CZelTime& time, eRoundFlag flag) { return Format(time, timePartOf(CZelTime::CurrentTimeFormat()), flag); }
CString CZelTimeHelper::FormatTime(const CTime& time, eRoundFlag flag) { return Format(time, timePartOf(CZelTime::CurrentTimeFormat()), flag); }
CString CZelTimeHelper::FormatTime(const COleDateTime& time, eRoundFlag flag) { return Format(time, timePartOf(CZelTime::CurrentTimeFormat()), flag); }

void CZelTimeHelper::CutString(const char* token, CString& format)
{
    const int pos = token ? format.Find(token) : -1;
    if (pos >= 0)
        format.Delete(pos, static_cast<int>(std::strlen(token)));
    format.Trim();
}

CString CZelTimeHelper::GetZelTimeFormat(eType type)
{
    CString format = CZelTime::CurrentTimeFormat();
    if (format.IsEmpty())
        return CString();
    int pos = format.Find("%y");
    if (pos < 0)
        pos = format.Find("%Y");
    if (pos < 0)
        return CString();
    if (type == eDate)
        format = format.Left(pos + 2);
    else if (type != eDateTime)
        format = format.Mid(pos + 3);
    ConvertZelTimeFormatToDateTimeCtrl(format);
    format.Trim();
    return format;
}

void CZelTimeHelper::ConvertZelTimeFormatToDateTimeCtrl(CString& format)
{
    static const char* const removed[] = {"%a", "%#a", "%A", "%#A", "%j", "%#j", "%U", "%#U", "%w",
                                          "%#w", "%W", "%#W", "%z", "%#z", "%Z", "%#Z", "%%", "%p"};
    for (const char* token : removed)
        format.Replace(token, "");
    static const char* const replaced[][2] = {
        {"%d", "dd"},   {"%#d", "dd"},   {"%m", "MM"},    {"%#m", "MM"},    {"%b", "MMM"},  {"%#b", "MMM"},
        {"%B", "MMMM"}, {"%#B", "MMMM"}, {"%y", "yyyy"},  {"%#y", "yyyy"},  {"%Y", "yyyy"}, {"%#Y", "yyyy"},
        {"%I", "tt hh"}, {"%#I", "tt hh"}, {"%H", "HH"}, {"%#H", "HH"},    {"%M", "mm"},   {"%#M", "mm"},
        {"%S", "ss"},   {"%#S", "ss"},
    };
    for (const auto& r : replaced)
        format.Replace(r[0], r[1]);
}

// ---- Rounding --------------------------------------------------------------------

namespace {

// Minute and hour rounding shared by CTime and CZelTime; true when it acted. Gives
// up where the rounded time would leave [lo, hi].
bool roundWholeTime(CTime& time, int n, __time64_t lo, __time64_t hi)
{
    const __time64_t t = time.GetTime();
    if (n == CZelTimeHelper::eRoundMinute) {
        const int sec = time.GetSecond();
        if (!(t <= hi - 60 && t >= lo + sec))
            return false;
        if (sec >= 30)
            time += CTimeSpan(60);
        time -= CTimeSpan(sec);
        return true;
    }
    if (n == CZelTimeHelper::eRoundHour) {
        const int part = time.GetMinute() * 60 + time.GetSecond();
        if (!(t <= hi - 3600 && t >= lo + part))
            return false;
        if (time.GetMinute() >= 30)
            time += CTimeSpan(3600);
        time -= CTimeSpan(part);
        return true;
    }
    return false;
}

} // namespace

double CZelTimeHelper::Round(CZelTime& time, eRoundFlag flag)
{
    RoundInPlace(time, flag);
    return GetMjd(time);
}

void CZelTimeHelper::RoundInPlace(CZelTime& time, eRoundFlag flag)
{
    const int n = flag & ~128;
    const __time64_t t = time.GetTime();
    const __time64_t lo = MinCTime().GetTime();
    const __time64_t hi = MaxCTime().GetTime();
    CTime& base = time;
    if (n == eRoundMinute || n == eRoundHour) {
        if (roundWholeTime(base, n, lo, hi))
            time.m_fracSecond = 0.0;
    } else {
        zeltime::RoundFraction(base, time.m_fracSecond, n, t, lo, hi);
    }
}

double CZelTimeHelper::Round(CTime& time, eRoundFlag flag)
{
    RoundInPlace(time, flag);
    return GetMjd(time);
}

void CZelTimeHelper::RoundInPlace(CTime& time, eRoundFlag flag)
{
    const int n = flag & ~128;
    roundWholeTime(time, n, MinCTime().GetTime(), MaxCTime().GetTime());
}

double CZelTimeHelper::Round(COleDateTime& time, eRoundFlag flag)
{
    RoundInPlace(time, flag);
    return GetMjd(time);
}

void CZelTimeHelper::RoundInPlace(COleDateTime& time, eRoundFlag flag)
{
    const int n = flag & ~128;
    const COleDateTime& lo = MinOleDateTime();
    const COleDateTime& hi = MaxOleDateTime();
    if (n == eRoundMinute) {
        const int sec = time.GetSecond();
        if (time <= hi - COleDateTimeSpan(0, 0, 1, 0) && time >= lo + COleDateTimeSpan(0, 0, 0, sec)) {
            if (sec >= 30)
                time += COleDateTimeSpan(0, 0, 1, 0);
            time -= COleDateTimeSpan(0, 0, 0, sec);
        }
    } else if (n == eRoundHour) {
        const int minute = time.GetMinute();
        const int sec = time.GetSecond();
        if (time <= hi - COleDateTimeSpan(0, 1, 0, 0) && time >= lo + COleDateTimeSpan(0, 0, minute, sec)) {
            if (minute >= 30)
                time += COleDateTimeSpan(0, 1, 0, 0);
            time -= COleDateTimeSpan(0, 0, minute, sec);
        }
    }

}

// ---- Calendar arithmetic ---------------------------------------------------------

int CZelTimeHelper::AddTimeSpan(CTime& time, const CTimeSpan& span)
{
    if (MaxCTime() - span < time)
        return FALSE;
    time += span;
    return TRUE;
}

int CZelTimeHelper::SubtractTimeSpan(CTime& time, const CTimeSpan& span)
{
    if (MinCTime() + span > time)
        return FALSE;
    time -= span;
    return TRUE;
}

int CZelTimeHelper::AddTimeSpan(CZelTime& time, const CZelTimeSpan& span)
{
    return AddTimeSpan(static_cast<CTime&>(time), CTimeSpan(span.GetTimeSpan()));
}

int CZelTimeHelper::SubtractTimeSpan(CZelTime& time, const CZelTimeSpan& span)
{
    return SubtractTimeSpan(static_cast<CTime&>(time), CTimeSpan(span.GetTimeSpan()));
}

int CZelTimeHelper::AddTimeSpan(COleDateTime& time, const COleDateTimeSpan& span, eRangeType range)
{
    COleDateTime lo, hi;
    GetPhysicalRange(range, lo, hi);
    if (hi - span < time)
        return FALSE;
    time += span;
    return TRUE;
}

int CZelTimeHelper::SubtractTimeSpan(COleDateTime& time, const COleDateTimeSpan& span, eRangeType range)
{
    COleDateTime lo, hi;
    GetPhysicalRange(range, lo, hi);
    if (lo + span > time)
        return FALSE;
    time -= span;
    return TRUE;
}

namespace {

template <class T>
int addUnits(T& time, int n, std::int64_t unitSeconds)
{
    if (n == 0)
        return TRUE;
    const std::int64_t magnitude = n > 0 ? static_cast<std::int64_t>(n) : -static_cast<std::int64_t>(n);
    const CTimeSpan span(magnitude * unitSeconds);
    return n > 0 ? CZelTimeHelper::AddTimeSpan(time, span) : CZelTimeHelper::SubtractTimeSpan(time, span);
}

int addOleUnits(COleDateTime& time, int n, double unitDays, CZelTimeHelper::eRangeType range)
{
    if (n == 0)
        return TRUE;
    const double magnitude = n > 0 ? static_cast<double>(n) : -static_cast<double>(n);
    const COleDateTimeSpan span(magnitude * unitDays);
    return n > 0 ? CZelTimeHelper::AddTimeSpan(time, span, range) : CZelTimeHelper::SubtractTimeSpan(time, span, range);
}

int addZelUnits(CZelTime& time, int n, std::int64_t unitSeconds)
{
    return addUnits(static_cast<CTime&>(time), n, unitSeconds);
}

} // namespace

int CZelTimeHelper::AddSeconds(CTime& time, int n) { return addUnits(time, n, 1); }
int CZelTimeHelper::AddSeconds(CZelTime& time, int n) { return addZelUnits(time, n, 1); }
int CZelTimeHelper::AddSeconds(COleDateTime& time, int n, eRangeType range) { return addOleUnits(time, n, 1.0 / 86400.0, range); }
int CZelTimeHelper::AddMinutes(CTime& time, int n) { return addUnits(time, n, 60); }
int CZelTimeHelper::AddMinutes(CZelTime& time, int n) { return addZelUnits(time, n, 60); }
int CZelTimeHelper::AddMinutes(COleDateTime& time, int n, eRangeType range) { return addOleUnits(time, n, 1.0 / 1440.0, range); }
int CZelTimeHelper::AddHours(CTime& time, int n) { return addUnits(time, n, 3600); }
int CZelTimeHelper::AddHours(CZelTime& time, int n) { return addZelUnits(time, n, 3600); }
int CZelTimeHelper::AddHours(COleDateTime& time, int n, eRangeType range) { return addOleUnits(time, n, 1.0 / 24.0, range); }
int CZelTimeHelper::AddDays(CTime& time, int n) { return addUnits(time, n, 86400); }
int CZelTimeHelper::AddDays(CZelTime& time, int n) { return addZelUnits(time, n, 86400); }
int CZelTimeHelper::AddDays(COleDateTime& time, int n, eRangeType range) { return addOleUnits(time, n, 1.0, range); }
int CZelTimeHelper::AddWeeks(CTime& time, int n) { return AddDays(time, wrapMul(n, 7)); }
int CZelTimeHelper::AddWeeks(CZelTime& time, int n) { return AddDays(time, wrapMul(n, 7)); }
int CZelTimeHelper::AddWeeks(COleDateTime& time, int n, eRangeType range) { return AddDays(time, wrapMul(n, 7), range); }
int CZelTimeHelper::AddYears(CTime& time, int n) { return AddMonths(time, wrapMul(n, 12)); }
int CZelTimeHelper::AddYears(CZelTime& time, int n) { return AddMonths(time, wrapMul(n, 12)); }
int CZelTimeHelper::AddYears(COleDateTime& time, int n, eRangeType range) { return AddMonths(time, wrapMul(n, 12), range); }

int CZelTimeHelper::AddMonths(CTime& time, int n)
{
    if (n == 0)
        return TRUE;
    const Fields f = FieldsOf(time);
    if (!f.ok)
        return FALSE;
    const MonthStep s = monthStep(f, n);
    if (!monthStepInRange(s, FieldsOf(MinCTime()), FieldsOf(MaxCTime())))
        return FALSE;
    CTime result(static_cast<int>(s.y), static_cast<int>(s.m), static_cast<int>(s.d), static_cast<int>(f.hour),
                 static_cast<int>(f.minute), static_cast<int>(f.second), -1);
    const CTimeSpan day(86400);
    for (long k = 0; k < s.excess; ++k) {
        if (MaxCTime() - day < result)
            break;
        const CTime next = result + day;
        if (next.GetMonth() != result.GetMonth())
            break;
        result = next;
    }
    time = result;
    return TRUE;
}

int CZelTimeHelper::AddMonths(CZelTime& time, int n)
{
    CTime t(time.GetTime());
    const int ok = AddMonths(t, n);
    if (ok && n != 0)
        time = t; // as a CTime: the fraction goes
    return ok;
}

int CZelTimeHelper::AddMonths(COleDateTime& time, int n, eRangeType range)
{
    if (n == 0)
        return TRUE;
    const Fields f = FieldsOf(time);
    if (!f.ok)
        return FALSE;
    COleDateTime lo, hi;
    GetPhysicalRange(range, lo, hi);
    const MonthStep s = monthStep(f, n);
    if (!monthStepInRange(s, FieldsOf(lo), FieldsOf(hi)))
        return FALSE;
    COleDateTime result(static_cast<int>(s.y), static_cast<int>(s.m), static_cast<int>(s.d),
                        static_cast<int>(f.hour), static_cast<int>(f.minute), static_cast<int>(f.second));
    const COleDateTimeSpan day(1.0);
    for (long k = 0; k < s.excess; ++k) {
        if (hi - day < result)
            break;
        const COleDateTime next = result + day;
        if (next.GetMonth() != result.GetMonth())
            break;
        result = next;
    }
    time = result;
    return TRUE;
}
