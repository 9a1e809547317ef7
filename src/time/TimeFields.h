// Local clock fields of the three time representations, read alike.
#pragma once

#include <Zel260/platform/COleDateTime.h>
#include <Zel260/platform/CTime.h>
#include <Zel260/time/CZelTime.h>

#include <cmath>
#include <ctime>

namespace zeltime {

struct Fields {
    long year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
    double frac = 0.0;
    bool ok = false;
};

inline Fields FromTm(const struct tm& tm)
{
    Fields f;
    f.year = tm.tm_year + 1900L;
    f.month = tm.tm_mon + 1;
    f.day = tm.tm_mday;
    f.hour = tm.tm_hour;
    f.minute = tm.tm_min;
    f.second = tm.tm_sec;
    f.ok = true;
    return f;
}

inline Fields FieldsOf(const CTime& t)
{
    struct tm tm;
    return t.GetLocalTm(&tm) ? FromTm(tm) : Fields{};
}

inline Fields FieldsOf(const CZelTime& t)
{
    Fields f = FieldsOf(static_cast<const CTime&>(t));
    f.frac = t.GetFracSecond();
    return f;
}

inline Fields FieldsOf(const COleDateTime& t)
{
    struct tm tm;
    return t.GetAsTm(tm) ? FromTm(tm) : Fields{};
}

// A double truncated into a long, clamped where it wouldn't fit.
inline long ClampToLong(double v)
{
    if (std::isnan(v))
        return 0;
    if (v >= 9.2e18)
        return 9200000000000000000L;
    if (v <= -9.2e18)
        return -9200000000000000000L;
    return static_cast<long>(v);
}

} // namespace zeltime
