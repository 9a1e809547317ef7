// Angle conversions of the base library: radians, packed DMS and packed gon.
//
// A packed DMS number is ddd.mmss...: degrees plus minutes / 100 plus seconds / 10000,
// with further digits for fractions of a second (45.301550 is 45 deg 30' 15.5").
// A packed gon number ggg.ccCC... has the same layout with gon, c (1/100 gon) and cc
// (1/100 c); it therefore equals the angle in decimal gon. The sign of a packed number
// is the sign of the whole angle.
//
// Precision. Functions that take `precision` count it as the number formatter does,
// five more than the decimals of the seconds (cc):
//   precision < 0      no rounding (the value is still cleaned of binary noise below
//                      about 1e-9 of the last field)
//   0 <= precision < 6 5 decimals of seconds (cc), the formatter's fixed form
//   precision >= 6     precision - 5 decimals of seconds (cc)
// Functions that take `decimals` get the number of decimals of the seconds directly
// (negative means no rounding). More than 9 decimals are read as 9.
//
// Rounding and carry. Every function rounds once, half away from zero, on an integer
// count of the last decimal of the seconds, and carries a second field that rounds
// up to 60 (100 for cc) into the minutes (c) and on into the degrees (gon). Packed
// results are the double nearest to the decimal number they stand for. So a value
// written at a precision and read back at the same precision gives the same fields
// and the same packed number, and a packed number such as 10.2960 (a representation
// of 29' 60") never leaves these functions: it is read as 10.3000.
//
// Limit. A nonzero `limit` keeps the magnitude below one full circle (360 degrees,
// 400 gon) after rounding: a magnitude that reaches the circle is reduced by whole
// circles, so 359 59' 59.9999" rounded to whole seconds becomes 0 00' 00", never
// 360 00' 00". The sign is kept except that a zero result is positive. Without
// `limit` magnitudes of a circle and more pass through unchanged.
//
// Bad input: NaN and infinities pass through the packed forms unchanged; the split
// forms then give sign 1, degree 0, minute 0 and the value itself in `sec`.
// Magnitudes too large to carry the requested decimals in a double keep as many
// decimals as fit; from 1e9 degrees (gon) on nothing is rounded and the split forms
// give the whole degrees (clamped to the int range) with minute and second 0.
#pragma once

// Packed DMS to radians. No rounding.
double Pim32DMS2Rad(double packed);
// Packed gon to radians. No rounding.
double Pim32GCCC2Rad(double packed);

// Radians to packed DMS, rounded at `precision` (see above), limited by `limit`.
double Pim32Rad2DMS(double rad, int precision, int limit);
// Radians to packed gon, rounded at `precision`, limited by `limit`.
double Pim32Rad2GCCC(double rad, int precision, int limit);

// Radians split into sign (1 or -1), whole degrees, whole minutes (0..59) and seconds
// (0 <= sec < 60) rounded to `decimals`.
void Pim32Rad2DMS(double rad, int& sign, int& deg, int& min, double& sec, int decimals, int limit);
// Radians split into sign, whole gon, whole c (0..99) and cc (0 <= cc < 100).
void Pim32Rad2GCCC(double rad, int& sign, int& gon, int& c, double& cc, int decimals, int limit);

// Splits a packed DMS number. `sign` is 1 or -1; the other fields are not negative.
// `sec` is rounded to `decimals`, and a rounding up to 60 carries into `min` and then
// `deg`. Minute or second digits of 60 and above in the packed number are carried too.
void Pim32DMS2DMS(double packed, int& sign, int& deg, int& min, double& sec, int decimals, int limit);
// Joins fields into a packed DMS number rounded at `precision`. The angle is
// s * (deg + min/60 + sec/3600) with s = -1 for a negative `sign` and 1 otherwise;
// fields may exceed their range (70' is 1 deg 10'), and a negative sum flips the sign.
double Pim32DMS2DMS(int sign, int deg, int min, double sec, int precision, int limit);

// The same pair for packed gon, carrying at 100.
void Pim32GCCC2GCCC(double packed, int& sign, int& gon, int& c, double& cc, int decimals, int limit);
double Pim32GCCC2GCCC(int sign, int gon, int c, double cc, int precision, int limit);

// Fields to decimal degrees: sign * (deg + min/60 + sec/3600); a sign below 0 is -1,
// anything else 1.
double Pim32DMS2Deg(int sign, int deg, int min, double sec);
