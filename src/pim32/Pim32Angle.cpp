#include <Zel260/pim32/Pim32Angle.h>

#include <climits>
#include <cmath>
#include <cstdint>

// Every conversion goes through one integer: the magnitude of the angle counted in
// units of the last kept decimal of the seconds (cc). Rounding happens once, when that
// count is made; carries and the circle limit are integer arithmetic on it, and packed
// numbers are made from it by one exact division. That is what keeps the packed and
// the split forms in step.

namespace {

using i64 = std::int64_t;

struct Scale {
    i64 minPerUnit;    // minutes per degree (c per gon)
    i64 secPerMin;     // seconds per minute (cc per c)
    i64 circle;        // degrees (gon) in a full circle
    double radPerUnit; // radians per degree (gon)
};

constexpr Scale kDms{60, 60, 360, 0.017453292519943295};  // pi / 180
constexpr Scale kGon{100, 100, 400, 0.015707963267948967}; // pi / 200

constexpr int kMaxDecimals = 9;
// Counts and packed integers stay well inside the 53 bits of a double's mantissa,
// so that their conversion to double and back is exact.
constexpr double kCountBound = 1e14;
constexpr double kPackedBound = 1e15;
// From here on a magnitude has no room for sub-unit digits worth rounding.
constexpr double kBigUnits = 1e9;

constexpr i64 kPow10[] = {1LL, 10LL, 100LL, 1000LL, 10000LL, 100000LL, 1000000LL, 10000000LL,
                          100000000LL, 1000000000LL, 10000000000LL, 100000000000LL,
                          1000000000000LL, 10000000000000LL};

// The formatter's rule: a precision below 6 stands for its fixed five-decimal form,
// so a value rounded here shows no fewer digits than the formatter writes.
int decimalsOfPrecision(int precision)
{
    if (precision < 0)
        return -1;
    return precision < 6 ? 5 : precision - 5;
}

int clampDecimals(int decimals)
{
    return (decimals < 0 || decimals > kMaxDecimals) ? kMaxDecimals : decimals;
}

// An angle's magnitude as a count of 10^-k seconds, with its sign.
struct Count {
    i64 n = 0;
    int k = 0;
    int sign = 1;
};

i64 secondsPerUnit(const Scale& s) { return s.minPerUnit * s.secPerMin; }

void applyLimit(Count& c, const Scale& s, int limit)
{
    if (limit) {
        const i64 circle = s.circle * secondsPerUnit(s) * kPow10[c.k];
        c.n %= circle;
    }
    if (c.n == 0)
        c.sign = 1;
}

// Largest k <= wanted with magnitude * 10^k below `bound`.
int fitDecimals(double magnitude, int wanted, double bound)
{
    int k = wanted;
    while (k > 0 && magnitude * static_cast<double>(kPow10[k]) >= bound)
        --k;
    return k;
}

// Count from a magnitude in seconds (cc); false when it is too large for one.
bool countFromSeconds(double seconds, int decimals, int sign, Count& out)
{
    if (!(seconds < kBigUnits * 3600.0) || !(seconds >= 0.0))
        return false;
    out.k = fitDecimals(seconds, clampDecimals(decimals), kCountBound);
    out.n = std::llround(seconds * static_cast<double>(kPow10[out.k]));
    out.sign = sign;
    return true;
}

void fieldsOf(const Count& c, const Scale& s, int& sign, int& deg, int& min, double& sec)
{
    const i64 secScale = kPow10[c.k];
    const i64 perUnit = secondsPerUnit(s) * secScale;
    const i64 perMin = s.secPerMin * secScale;
    sign = c.sign;
    deg = static_cast<int>(c.n / perUnit);
    const i64 rest = c.n % perUnit;
    min = static_cast<int>(rest / perMin);
    sec = static_cast<double>(rest % perMin) / static_cast<double>(secScale);
}

double packedOf(const Count& c, const Scale& s)
{
    const i64 secScale = kPow10[c.k];
    const i64 perUnit = secondsPerUnit(s) * secScale;
    const i64 perMin = s.secPerMin * secScale;
    const i64 deg = c.n / perUnit;
    const i64 rest = c.n % perUnit;
    const i64 packed = deg * kPow10[c.k + 4] + (rest / perMin) * kPow10[c.k + 2] + rest % perMin;
    // One division by an exact power of ten gives the double nearest the decimal.
    const double v = static_cast<double>(packed) / static_cast<double>(kPow10[c.k + 4]);
    return c.sign < 0 ? -v : v;
}

// Reads the decimal digits of a packed magnitude, rounded at `decimals` of the last field.
bool countFromPacked(double packed, const Scale& s, int decimals, Count& out)
{
    const double a = std::fabs(packed);
    if (!(a < kBigUnits))
        return false;
    out.sign = packed < 0 ? -1 : 1;
    out.k = fitDecimals(a, clampDecimals(decimals) + 4, kPackedBound) - 4;
    if (out.k < 0)
        return false;
    const i64 p = std::llround(a * static_cast<double>(kPow10[out.k + 4]));
    const i64 deg = p / kPow10[out.k + 4];
    const i64 rest = p % kPow10[out.k + 4];
    // Minute and second digits of 60 (100) and more are carried like any other.
    out.n = (deg * s.minPerUnit + rest / kPow10[out.k + 2]) * s.secPerMin * kPow10[out.k]
            + rest % kPow10[out.k + 2];
    return true;
}

// Magnitudes beyond every rounding: plain floating point, whole units only.
void bigFields(double units, int& sign, int& deg, int& min, double& sec)
{
    sign = units < 0 ? -1 : 1;
    const double a = std::floor(std::fabs(units));
    deg = a >= static_cast<double>(INT_MAX) ? INT_MAX : static_cast<int>(a);
    min = 0;
    sec = 0.0;
}

double bigPacked(double units, const Scale& s)
{
    // Sub-unit digits are below the resolution of the double here.
    return std::trunc(units);
}

void splitPacked(double packed, const Scale& s, int& sign, int& deg, int& min, double& sec,
                 int decimals, int limit)
{
    if (!std::isfinite(packed)) {
        sign = 1;
        deg = min = 0;
        sec = packed;
        return;
    }
    Count c;
    if (!countFromPacked(packed, s, decimals, c)) {
        bigFields(packed, sign, deg, min, sec);
        return;
    }
    applyLimit(c, s, limit);
    fieldsOf(c, s, sign, deg, min, sec);
}

double joinFields(int sign, int deg, int min, double sec, const Scale& s, int precision, int limit)
{
    if (!std::isfinite(sec))
        return sec;
    const int decimals = decimalsOfPrecision(precision);
    const i64 whole = static_cast<i64>(deg) * secondsPerUnit(s) + static_cast<i64>(min) * s.secPerMin;
    int outSign = sign < 0 ? -1 : 1;
    Count c;
    if (whole >= 0 && sec >= 0.0) {
        const double total = static_cast<double>(whole) + sec;
        if (!countFromSeconds(total, decimals, outSign, c))
            return bigPacked(outSign * total / static_cast<double>(secondsPerUnit(s)), s);
        // Whole fields stay exact; only the seconds are rounded.
        c.n = whole * kPow10[c.k] + std::llround(sec * static_cast<double>(kPow10[c.k]));
    } else {
        double total = static_cast<double>(whole) + sec;
        if (total < 0) {
            total = -total;
            outSign = -outSign;
        }
        if (!countFromSeconds(total, decimals, outSign, c))
            return bigPacked(outSign * total / static_cast<double>(secondsPerUnit(s)), s);
    }
    applyLimit(c, s, limit);
    return packedOf(c, s);
}

double packedToRad(double packed, const Scale& s)
{
    if (!std::isfinite(packed))
        return packed;
    Count c;
    if (!countFromPacked(packed, s, -1, c))
        return packed * s.radPerUnit;
    const double units = static_cast<double>(c.n)
                         / static_cast<double>(secondsPerUnit(s) * kPow10[c.k]);
    return (c.sign < 0 ? -units : units) * s.radPerUnit;
}

bool radToCount(double rad, const Scale& s, int decimals, int limit, Count& c)
{
    const double seconds = std::fabs(rad) / s.radPerUnit * static_cast<double>(secondsPerUnit(s));
    if (!countFromSeconds(seconds, decimals, rad < 0 ? -1 : 1, c))
        return false;
    applyLimit(c, s, limit);
    return true;
}

double radToPacked(double rad, const Scale& s, int precision, int limit)
{
    if (!std::isfinite(rad))
        return rad;
    Count c;
    if (!radToCount(rad, s, decimalsOfPrecision(precision), limit, c))
        return bigPacked(rad / s.radPerUnit, s);
    return packedOf(c, s);
}

void radToFields(double rad, const Scale& s, int& sign, int& deg, int& min, double& sec,
                 int decimals, int limit)
{
    if (!std::isfinite(rad)) {
        sign = 1;
        deg = min = 0;
        sec = rad;
        return;
    }
    Count c;
    if (!radToCount(rad, s, decimals, limit, c)) {
        bigFields(rad / s.radPerUnit, sign, deg, min, sec);
        return;
    }
    fieldsOf(c, s, sign, deg, min, sec);
}

} // namespace

double Pim32DMS2Rad(double packed) { return packedToRad(packed, kDms); }
double Pim32GCCC2Rad(double packed) { return packedToRad(packed, kGon); }

double Pim32Rad2DMS(double rad, int precision, int limit) { return radToPacked(rad, kDms, precision, limit); }
double Pim32Rad2GCCC(double rad, int precision, int limit) { return radToPacked(rad, kGon, precision, limit); }

void Pim32Rad2DMS(double rad, int& sign, int& deg, int& min, double& sec, int decimals, int limit)
{
    radToFields(rad, kDms, sign, deg, min, sec, decimals, limit);
}

void Pim32Rad2GCCC(double rad, int& sign, int& gon, int& c, double& cc, int decimals, int limit)
{
    radToFields(rad, kGon, sign, gon, c, cc, decimals, limit);
}

void Pim32DMS2DMS(double packed, int& sign, int& deg, int& min, double& sec, int decimals, int limit)
{
    splitPacked(packed, kDms, sign, deg, min, sec, decimals, limit);
}

double Pim32DMS2DMS(int sign, int deg, int min, double sec, int precision, int limit)
{
    return joinFields(sign, deg, min, sec, kDms, precision, limit);
}

void Pim32GCCC2GCCC(double packed, int& sign, int& gon, int& c, double& cc, int decimals, int limit)
{
    splitPacked(packed, kGon, sign, gon, c, cc, decimals, limit);
}

double Pim32GCCC2GCCC(int sign, int gon, int c, double cc, int precision, int limit)
{
    return joinFields(sign, gon, c, cc, kGon, precision, limit);
}

double Pim32DMS2Deg(int sign, int deg, int min, double sec)
{
    const double v = deg + min / 60.0 + sec / 3600.0;
    return sign < 0 ? -v : v;
}
