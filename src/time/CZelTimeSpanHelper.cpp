#include <Zel260/time/CZelTimeSpanHelper.h>

#include "TimeFields.h"

#include <cmath>

void CZelTimeSpanHelper::Mjd2Hms(const double& days, long& day, long& hour, long& minute, long& second,
                                 double& fracSecond)
{
    double whole;
    const double f = std::modf(days, &whole);
    day = zeltime::ClampToLong(std::trunc(whole));
    double s;
    fracSecond = std::modf(f * 86400.0, &s);
    const long t = zeltime::ClampToLong(std::trunc(s));
    hour = t / 3600;
    const long rest = t - hour * 3600;
    minute = rest / 60;
    second = rest % 60;
}
