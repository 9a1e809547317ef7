// The library's small string functions: comparison, trimming, names in a series,
// splitting, and shortening text to a width in pixels.
//
// Null texts count as empty unless a function says otherwise. Widths are device
// pixels of the device context or window that measures them.
#pragma once

#include <Zel260/platform/CString.h>
#include <Zel260/platform/Win32Types.h>

#include <vector>

class CDC;
class CWnd;

// Ordinal byte comparison (bytes as unsigned): < 0, 0 or > 0.
int ZelCompare(const char* a, const char* b);
// ZelStringCompareIS(a, b).
int ZelCompareIS(const char* a, const char* b);
// Natural, case-insensitive order: runs of digits compare by value ("file9" before
// "file10", "a007b" equal to "a7b"), other characters by their lower case, and a
// shorter string first. < 0, 0 or > 0 (a difference of values or of characters).
// Numbers beyond 2147483647 count as 2147483647.
int ZelStringCompareIS(const char* const& a, const char* const& b);

// a - b as a 32-bit subtraction that wraps, read as int: ZelCompare(0u, 4294967295u)
// is 1. Only the low 32 bits of a long take part, as with a 32-bit long.
int ZelCompare(int a, int b);
int ZelCompare(unsigned int a, unsigned int b);
int ZelCompare(long a, long b);
int ZelCompare(unsigned long a, unsigned long b);
// 0 when |a - b| < m * e + e (m the larger magnitude, e = 2.220446049250313e-16),
// else 1 when a > b and -1 otherwise (also when either is NaN).
int ZelCompare(double a, double b);

// Removes trailing zeros behind the locale's decimal separator, keeping one digit
// behind it: "1.500" -> "1.5", "2.000" -> "2.0"; "3." and "10" stay. Exponents are
// not understood: "1.5e+020" -> "1.5e+02".
void ZelTrimTrailingZeros(CString& text);

enum eZelBooleanType {
    eZelBooleanYesNo = 1,
    eZelBooleanTrueFalse = 2,
    eZelBooleanOnOff = 3,
};
// "Yes"/"No", "True"/"False" or "On"/"Off" from the library's string table (read
// once, on the first call), for nonzero and zero `value`; an empty text for any
// other type. The pointer stays valid for the life of the process.
const char* ZelBooleanAsString(int value, eZelBooleanType type);

// The next name of the series "Name", "Name (2)", "Name (3)": a name ending in
// " (n)" with n > 0, the "(" past index 1, counts on from n; anything else gets
// " (2)". The result is at most maxLength - 1 characters (maxLength 0 means 260):
// the name is cut to make room for the suffix. Empty for a null or empty text, or
// when the counter is already 2147483647.
CString ZelIncrementString(const char* text, int maxLength);

// The double-quoted tokens of a line, without the quotes. Text outside quotes, empty
// pairs and an unclosed last token add nothing. `out` is emptied first.
void ZelExtractTokens(const char* text, std::vector<CString>& out);

// Splits at any character of `separators`; entries between two separators may be
// empty, but a separator at the very end adds no empty last entry
// ("a,,b," -> "a", "", "b"). `out` is emptied first; returns its size.
int ZelExtractSubstrings(const char* text, const char* separators, std::vector<CString>& out);

// Shortens a path to fit `width` pixels in the window's font by replacing the
// folders behind its first three characters with " ...", one folder at a time:
// "C:\a\b\c\f.txt" -> "C:\ ...\b\c\f.txt" -> ... -> "C:\ ...f.txt" (the last form
// may still be too wide). "\" and "/" both separate folders. Empty for a null path,
// a path shorter than 4 characters, a null window or one that isn't a window.
CString ZelAdjustPathString(const char* path, CWnd* wnd, unsigned int width);

// The text when it fits in `width`; otherwise its longest head of at least 2
// characters that fits with "..." after it; else "...", "..", "." or an empty text,
// the first that fits. Empty for a null device.
CString ZelAdjustString(const CDC* dc, int width, const char* text);

// How many leading characters of the text fit in `width` (0 at worst, and for a
// null device or text).
int ZelGetMaxStringLen(const CDC* dc, int width, const char* text);

// Embossed text: drawn once in `shade` one pixel up and left of (x, y) when `raised`
// is nonzero (down and right when zero), then in `text` at (x, y). The device's text
// colour is put back afterwards. Without `shade`, raised text is shaded with the
// button shadow colour (system colour 16), sunken text with the button highlight
// (system colour 20). A null device or text draws nothing.
void ZelDraw3dString(CDC* dc, int x, int y, const char* text, int raised, COLORREF textColour, COLORREF shade);
void ZelDraw3dString(CDC* dc, int x, int y, const char* text, int raised, COLORREF textColour);
