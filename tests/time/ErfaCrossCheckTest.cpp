// The calendar against ERFA for every day of the CTime range.
#if ZEL_HAVE_ERFA
#include "TimeTestSupport.h"

#include <Zel260/time/CZelTimeHelper.h>

#include <erfa.h>

using zeltimetest::TimeTest;
using H = CZelTimeHelper;

TEST_F(TimeTest, CalendarAndMjdAgreeWithErfaEveryDay)
{
    int failures = 0;
    for (int day = 40588; day <= 62154 && failures < 10; ++day) { // 1970-01-02 .. 2030-01-18
        int ey, em, ed;
        double fd;
        ASSERT_EQ(eraJd2cal(2400000.5, day, &ey, &em, &ed, &fd), 0);
        long y, mo, d, h, mi, s;
        double frac;
        H::Mjd2Ymd(static_cast<double>(day) + 0.5, y, mo, d, h, mi, s, frac);
        double djm0, djm;
        ASSERT_EQ(eraCal2jd(ey, em, ed, &djm0, &djm), 0);
        const double local = H::GetMjd(CTime(ey, em, ed, 12, 0, 0, -1));
        const bool ok = y == ey && mo == em && d == ed && h == 12 && djm == day && local == djm + 0.5 &&
                        CZelTime::Mjd(ey, em, ed, 0, 0, 0) == djm;
        if (!ok) {
            ++failures;
            ADD_FAILURE() << "MJD " << day << ": ERFA " << ey << "-" << em << "-" << ed << ", ours " << y << "-" << mo
                          << "-" << d << " " << h << "h, GetMjd " << local;
        }
    }
}
#endif
