// Rounding of the fractional second kept beside a whole-second time or span.
#pragma once

#include <Zel260/platform/CTimeSpan.h>
#include <Zel260/time/CZelTimeHelper.h>

#include <cfenv>
#include <cmath>

// Private to each binary, as TimeFields.h.
#pragma GCC visibility push(hidden)

namespace zeltime {

// Rounds half to even as the processor does by default, whatever mode is set.
inline double NearbyEven(double v)
{
    const int mode = std::fegetround();
    if (mode != FE_TONEAREST)
        std::fesetround(FE_TONEAREST);
    const double r = std::nearbyint(v);
    if (mode != FE_TONEAREST)
        std::fesetround(mode);
    return r;
}

// Rounds `frac` of a value whose whole seconds `whole` read `s` within [lo, hi], for
// the steps below the minute (second, tenth, hundredth, millisecond; the rounding
// flags of times and spans share these numbers). A carry into the next second is
// given up near a limit for the second and the tenth only, as stored values expect.
// Minute and hour steps read clock fields that differ between a time and a span,
// so they stay with the callers; any other step does nothing.
template <class Whole>
void RoundFraction(Whole& whole, double& frac, int step, __time64_t s, __time64_t lo, __time64_t hi)
{
    switch (step) {
    case CZelTimeHelper::eRoundSecond:
        if (s <= hi - 1 && s >= lo + 1) {
            if (frac >= 0.5)
                whole += CTimeSpan(1);
            frac = 0.0;
        }
        break;
    case CZelTimeHelper::eRoundMillisecond:
    case CZelTimeHelper::eRoundHundredth: {
        const double scale = step == CZelTimeHelper::eRoundMillisecond ? 1000.0 : 100.0;
        const double k = NearbyEven(frac * scale);
        if (k == scale) {
            whole += CTimeSpan(1);
            frac = 0.0;
        } else {
            frac = k / scale;
        }
        break;
    }
    case CZelTimeHelper::eRoundTenth: {
        const double k = NearbyEven(frac * 10.0);
        if (k == 10.0) {
            if (s <= hi - 1 && s >= lo + 1) {
                whole += CTimeSpan(1);
                frac = 0.0;
            }
        } else {
            frac = k / 10.0;
        }
        break;
    }
    default:
        break;
    }
}

} // namespace zeltime

#pragma GCC visibility pop
