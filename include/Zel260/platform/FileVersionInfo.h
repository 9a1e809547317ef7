// The fixed version record of a file, as Win32's VS_FIXEDFILEINFO, and the Linux
// stand-in for reading it (GetFileVersionInfo + VerQueryValue of the root block).
//
// Linux files carry no version resource. A shared library carries its version in
// its real file name (libQt6Widgets.so.6.4.2); that is what is read here. A name
// without a directory is looked up like the dynamic loader would: among the
// objects loaded in the process, then in LD_LIBRARY_PATH and the system library
// folders. Symbolic links are followed to the real file.
#pragma once

#include <Zel260/platform/Win32Types.h>

struct tagVS_FIXEDFILEINFO {
    DWORD dwSignature;        // 0xFEEF04BD
    DWORD dwStrucVersion;     // 0x00010000
    DWORD dwFileVersionMS;    // major << 16 | minor
    DWORD dwFileVersionLS;    // patch << 16 | fourth number
    DWORD dwProductVersionMS; // as dwFileVersionMS
    DWORD dwProductVersionLS; // as dwFileVersionLS
    DWORD dwFileFlagsMask;
    DWORD dwFileFlags;
    DWORD dwFileOS;
    DWORD dwFileType;
    DWORD dwFileSubtype;
    DWORD dwFileDateMS;
    DWORD dwFileDateLS;
};
using VS_FIXEDFILEINFO = tagVS_FIXEDFILEINFO;

constexpr DWORD ERROR_RESOURCE_DATA_NOT_FOUND = 1812;
constexpr DWORD ERROR_RESOURCE_TYPE_NOT_FOUND = 1813;

// Fills `info` (zeroed first) with the version of `file`. FALSE with the last error
// set when the file can't be found (ERROR_FILE_NOT_FOUND, 2), or its name holds no
// version (ERROR_RESOURCE_TYPE_NOT_FOUND, 1813), or `file` is null or empty
// (ERROR_INVALID_PARAMETER, 87). Version numbers above 65535 are cut to 65535.
BOOL ZelGetFileVersion(const char* file, tagVS_FIXEDFILEINFO& info);
