// Win32 scalar types and plain records that the library's interface is written in.
// Sizes follow 32-bit Windows: DWORD, LONG and UINT are 32 bits even though `long`
// is 64 bits on Linux, so arithmetic that relies on 32-bit wrap-around stays exact.
#pragma once

#include <cstdint>
#include <cstddef>

using BOOL = int;
using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using UINT = unsigned int;
using INT = int;
using LONG = std::int32_t;
using ULONG = std::uint32_t;
using SHORT = std::int16_t;
using USHORT = std::uint16_t;
using LONGLONG = std::int64_t;
using ULONGLONG = std::uint64_t;
using __time64_t = std::int64_t;
using CHAR = char;
using UCHAR = unsigned char;
using LPSTR = char*;
using LPCSTR = const char*;
using LPTSTR = char*;
using LPCTSTR = const char*;
using TCHAR = char;
using LPVOID = void*;
using LPCVOID = const void*;
using WPARAM = std::uintptr_t;
using LPARAM = std::intptr_t;
using LRESULT = std::intptr_t;
using UINT_PTR = std::uintptr_t;
using INT_PTR = std::intptr_t;
using DWORD_PTR = std::uintptr_t;
using LONG_PTR = std::intptr_t;
using ULONG_PTR = std::uintptr_t;
using COLORREF = DWORD;
using HRESULT = std::int32_t;

#ifndef TRUE
#define TRUE 1
#endif
#ifndef FALSE
#define FALSE 0
#endif
#ifndef MAX_PATH
#define MAX_PATH 260
#endif

// Opaque handles. HANDLE is a kernel-object stand-in (file descriptors travel in it
// as small integers); HWND is owned by the window-message layer; HINSTANCE by the
// resource-module layer.
using HANDLE = void*;
#define INVALID_HANDLE_VALUE (reinterpret_cast<HANDLE>(static_cast<std::intptr_t>(-1)))
struct HWND__;
using HWND = HWND__*;
struct HINSTANCE__;
using HINSTANCE = HINSTANCE__*;
using HMODULE = HINSTANCE;

constexpr HRESULT S_OK = 0;
constexpr HRESULT S_FALSE = 1;
constexpr HRESULT E_FAIL = static_cast<HRESULT>(0x80004005u);
constexpr HRESULT E_INVALIDARG = static_cast<HRESULT>(0x80070057u);
constexpr HRESULT E_OUTOFMEMORY = static_cast<HRESULT>(0x8007000Eu);

constexpr WORD LOWORD(DWORD_PTR v) { return static_cast<WORD>(v & 0xFFFFu); }
constexpr WORD HIWORD(DWORD_PTR v) { return static_cast<WORD>((v >> 16) & 0xFFFFu); }
constexpr BYTE LOBYTE(DWORD_PTR v) { return static_cast<BYTE>(v & 0xFFu); }
constexpr BYTE HIBYTE(DWORD_PTR v) { return static_cast<BYTE>((v >> 8) & 0xFFu); }
constexpr DWORD MAKELONG(WORD lo, WORD hi) { return static_cast<DWORD>(lo) | (static_cast<DWORD>(hi) << 16); }
constexpr WORD MAKEWORD(BYTE lo, BYTE hi) { return static_cast<WORD>(lo | (hi << 8)); }
constexpr LPARAM MAKELPARAM(WORD lo, WORD hi) { return static_cast<LPARAM>(static_cast<LONG>(MAKELONG(lo, hi))); }
constexpr WPARAM MAKEWPARAM(WORD lo, WORD hi) { return static_cast<WPARAM>(MAKELONG(lo, hi)); }

// Colour references are 0x00BBGGRR.
constexpr COLORREF RGB(BYTE r, BYTE g, BYTE b)
{
    return static_cast<COLORREF>(r) | (static_cast<COLORREF>(g) << 8) | (static_cast<COLORREF>(b) << 16);
}
constexpr BYTE GetRValue(COLORREF c) { return static_cast<BYTE>(c & 0xFFu); }
constexpr BYTE GetGValue(COLORREF c) { return static_cast<BYTE>((c >> 8) & 0xFFu); }
constexpr BYTE GetBValue(COLORREF c) { return static_cast<BYTE>((c >> 16) & 0xFFu); }

struct POINT {
    LONG x;
    LONG y;
};
struct SIZE {
    LONG cx;
    LONG cy;
};
struct RECT {
    LONG left;
    LONG top;
    LONG right;
    LONG bottom;
};
using LPRECT = RECT*;
using LPCRECT = const RECT*;
using LPPOINT = POINT*;

struct SYSTEMTIME {
    WORD wYear;
    WORD wMonth;
    WORD wDayOfWeek;
    WORD wDay;
    WORD wHour;
    WORD wMinute;
    WORD wSecond;
    WORD wMilliseconds;
};

// 100-nanosecond intervals since 1601-01-01, split into two 32-bit halves.
struct FILETIME {
    DWORD dwLowDateTime;
    DWORD dwHighDateTime;
};

constexpr DWORD FILE_ATTRIBUTE_READONLY = 0x1;
constexpr DWORD FILE_ATTRIBUTE_HIDDEN = 0x2;
constexpr DWORD FILE_ATTRIBUTE_SYSTEM = 0x4;
constexpr DWORD FILE_ATTRIBUTE_DIRECTORY = 0x10;
constexpr DWORD FILE_ATTRIBUTE_ARCHIVE = 0x20;
constexpr DWORD FILE_ATTRIBUTE_NORMAL = 0x80;
constexpr DWORD INVALID_FILE_ATTRIBUTES = 0xFFFFFFFFu;

struct WIN32_FIND_DATA {
    DWORD dwFileAttributes;
    FILETIME ftCreationTime;
    FILETIME ftLastAccessTime;
    FILETIME ftLastWriteTime;
    DWORD nFileSizeHigh;
    DWORD nFileSizeLow;
    DWORD dwReserved0;
    DWORD dwReserved1;
    CHAR cFileName[MAX_PATH];
    CHAR cAlternateFileName[14];
};
using WIN32_FIND_DATAA = WIN32_FIND_DATA;
using LPWIN32_FIND_DATA = WIN32_FIND_DATA*;
