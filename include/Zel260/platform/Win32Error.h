// Win32 error numbers are the library's error vocabulary on every platform. POSIX
// errno values are mapped onto them here and nowhere else; the text for a number is
// the system's own (strerror of the matching errno) where one exists.
#pragma once

#include <Zel260/platform/CString.h>
#include <Zel260/platform/Win32Types.h>

constexpr DWORD ERROR_SUCCESS = 0;
constexpr DWORD ERROR_INVALID_FUNCTION = 1;
constexpr DWORD ERROR_FILE_NOT_FOUND = 2;
constexpr DWORD ERROR_PATH_NOT_FOUND = 3;
constexpr DWORD ERROR_TOO_MANY_OPEN_FILES = 4;
constexpr DWORD ERROR_ACCESS_DENIED = 5;
constexpr DWORD ERROR_INVALID_HANDLE = 6;
constexpr DWORD ERROR_NOT_ENOUGH_MEMORY = 8;
constexpr DWORD ERROR_INVALID_DATA = 13;
constexpr DWORD ERROR_OUTOFMEMORY = 14;
constexpr DWORD ERROR_INVALID_DRIVE = 15;
constexpr DWORD ERROR_CURRENT_DIRECTORY = 16;
constexpr DWORD ERROR_NOT_SAME_DEVICE = 17;
constexpr DWORD ERROR_NO_MORE_FILES = 18;
constexpr DWORD ERROR_WRITE_PROTECT = 19;
constexpr DWORD ERROR_NOT_READY = 21;
constexpr DWORD ERROR_SEEK = 25;
constexpr DWORD ERROR_WRITE_FAULT = 29;
constexpr DWORD ERROR_READ_FAULT = 30;
constexpr DWORD ERROR_GEN_FAILURE = 31;
constexpr DWORD ERROR_SHARING_VIOLATION = 32;
constexpr DWORD ERROR_LOCK_VIOLATION = 33;
constexpr DWORD ERROR_HANDLE_EOF = 38;
constexpr DWORD ERROR_HANDLE_DISK_FULL = 39;
constexpr DWORD ERROR_NOT_SUPPORTED = 50;
constexpr DWORD ERROR_FILE_EXISTS = 80;
constexpr DWORD ERROR_INVALID_PARAMETER = 87;
constexpr DWORD ERROR_BROKEN_PIPE = 109;
constexpr DWORD ERROR_DISK_FULL = 112;
constexpr DWORD ERROR_INSUFFICIENT_BUFFER = 122;
constexpr DWORD ERROR_INVALID_NAME = 123;
constexpr DWORD ERROR_DIR_NOT_EMPTY = 145;
constexpr DWORD ERROR_BUSY = 170;
constexpr DWORD ERROR_ALREADY_EXISTS = 183;
constexpr DWORD ERROR_FILENAME_EXCED_RANGE = 206;
constexpr DWORD ERROR_FILE_TOO_LARGE = 223;
constexpr DWORD ERROR_DIRECTORY = 267;
constexpr DWORD ERROR_CANT_RESOLVE_FILENAME = 1921;
constexpr DWORD ERROR_RESOURCE_NAME_NOT_FOUND = 1814;
constexpr DWORD ERROR_TIMEOUT = 1460;
constexpr DWORD ERROR_INVALID_WINDOW_HANDLE = 1400;

// Thread-local, as on Windows.
DWORD GetLastError();
void SetLastError(DWORD error);

// The Win32 number for an errno value; ERROR_GEN_FAILURE for values without one.
DWORD ZelWin32ErrorFromErrno(int err);
// Sets the last error from errno (or from `err` when given) and returns it.
DWORD ZelSetLastErrorFromErrno();
DWORD ZelSetLastErrorFromErrno(int err);

// The system's text for a Win32 number, without a trailing line break. Unknown
// numbers give an empty text.
CString ZelSystemErrorText(DWORD error);

// FormatMessage with FORMAT_MESSAGE_FROM_SYSTEM: writes the system's text for
// `messageId` into `buffer` (cut to `size` - 1 bytes) and returns its length, 0 when
// the number has no text. Other sources and inserts are not supported.
constexpr DWORD FORMAT_MESSAGE_IGNORE_INSERTS = 0x200;
constexpr DWORD FORMAT_MESSAGE_FROM_SYSTEM = 0x1000;
DWORD FormatMessage(DWORD flags, LPCVOID source, DWORD messageId, DWORD languageId, char* buffer, DWORD size,
                    void* arguments);
