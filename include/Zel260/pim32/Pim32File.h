// The base library's file and path primitives.
//
// Error triple: every function that can fail at the operating system takes, last,
// `DWORD* pError, char* pText, DWORD nTextSize` (each may be null/0). On failure it
// stores the Win32 error number in *pError and the system's text for it in pText (cut
// to nTextSize - 1 bytes, always terminated when nTextSize > 0); on success both are
// left as they were. The thread's last error is set as well.
//
// Paths: "/" and "\" both separate components ("\" is taken as a separator wherever
// a path is parsed, never as part of a name).
//
// File names on Linux: the kernel refuses only "/" and NUL. The library refuses more,
// so that a name it accepts can be typed, shown and copied to the other systems its
// users exchange files with:
//   - always invalid: "/" and "\" (separators), control characters 0x01-0x1F and 0x7F,
//     the names "." and "..", and names longer than 255 bytes;
//   - `Pim32ReplaceInvalidFilenameCharacters` mode 1 adds the characters that Windows
//     refuses (< > : " | ? *), mode 2 adds, on top, those that don't fit a short name
//     (blank + , ; = [ ]). Mode 0 replaces only the always-invalid characters.
// A valid path is a non-empty text of at most 4095 bytes whose components, between
// separators, are empty (doubled or leading/trailing separators), "." or "..", or valid
// file names; a drive prefix "X:" in front is accepted for texts that come from Windows.
#pragma once

#include <Zel260/platform/FindFile.h>
#include <Zel260/platform/Win32Types.h>

// CreateFile's access rights, dispositions and share modes.
constexpr DWORD GENERIC_READ = 0x80000000u;
constexpr DWORD GENERIC_WRITE = 0x40000000u;
constexpr DWORD CREATE_NEW = 1;
constexpr DWORD CREATE_ALWAYS = 2;
constexpr DWORD OPEN_EXISTING = 3;
constexpr DWORD OPEN_ALWAYS = 4;
constexpr DWORD TRUNCATE_EXISTING = 5;
constexpr DWORD FILE_SHARE_READ = 0x1;
constexpr DWORD FILE_SHARE_WRITE = 0x2;

// Opens or creates a file as CreateFile does: `access` is GENERIC_READ and/or
// GENERIC_WRITE, `disposition` one of CREATE_NEW..TRUNCATE_EXISTING, `attributes`
// FILE_ATTRIBUTE_READONLY makes a new file read-only (others are ignored). The share
// mode is honoured among processes that use this library: 0 takes an exclusive
// advisory lock (flock), FILE_SHARE_READ alone a shared one, FILE_SHARE_WRITE none; a
// conflicting lock fails with ERROR_SHARING_VIOLATION (32). A directory can't be
// opened (ERROR_ACCESS_DENIED). Returns the handle, INVALID_HANDLE_VALUE on failure.
HANDLE Pim32FileCreate(const char* name, DWORD access, DWORD disposition, DWORD attributes, DWORD shareMode,
                       DWORD* pError = nullptr, char* pText = nullptr, DWORD nTextSize = 0);
// The same call; kept as its own name because callers read better with it.
HANDLE Pim32FileOpen(const char* name, DWORD access, DWORD disposition, DWORD attributes, DWORD shareMode,
                     DWORD* pError = nullptr, char* pText = nullptr, DWORD nTextSize = 0);
// Closes a handle of Pim32FileCreate/Open. FALSE (ERROR_INVALID_HANDLE) for a bad one.
BOOL Pim32FileClose(HANDLE file, DWORD* pError = nullptr, char* pText = nullptr, DWORD nTextSize = 0);

// Reads exactly `count` bytes. Fewer bytes at the end of the file are a failure,
// ERROR_HANDLE_EOF (38), with what was there already in the buffer.
BOOL Pim32FileRead(HANDLE file, void* buffer, DWORD count, DWORD* pError = nullptr, char* pText = nullptr,
                   DWORD nTextSize = 0);
// Writes all `count` bytes (retrying short writes).
BOOL Pim32FileWrite(HANDLE file, const void* buffer, DWORD count, DWORD* pError = nullptr, char* pText = nullptr,
                    DWORD nTextSize = 0);
// Moves the file position to the end.
BOOL Pim32FileSeekEnd(HANDLE file, DWORD* pError = nullptr, char* pText = nullptr, DWORD nTextSize = 0);
// Moves the file position to byte `position` from the start; negative is
// ERROR_INVALID_PARAMETER.
BOOL Pim32FileSeek(HANDLE file, LONG position, DWORD* pError = nullptr, char* pText = nullptr, DWORD nTextSize = 0);
// Size in bytes; -1 on failure, and for files of 2 GiB or more (ERROR_FILE_TOO_LARGE),
// which a signed 32-bit size can't carry.
LONG Pim32FileSize(HANDLE file, DWORD* pError = nullptr, char* pText = nullptr, DWORD nTextSize = 0);
LONG Pim32FileSize(const char* name, DWORD* pError = nullptr, char* pText = nullptr, DWORD nTextSize = 0);

// TRUE when `name` is an existing file (following links) that is not a directory.
// A directory is FALSE with ERROR_FILE_NOT_FOUND.
BOOL Pim32FileFind(const char* name, DWORD* pError = nullptr, char* pText = nullptr, DWORD nTextSize = 0);
// Linux has no hidden bit. The desktop file managers hide the names that a
// directory's ".hidden" file lists, one a line, so this adds the file's name there
// (once); a name that starts with "." is hidden already and is left alone. The file
// must exist. FindFirstFile reports HIDDEN only for dot names, not for listed ones.
BOOL Pim32FileHide(const char* name, DWORD* pError = nullptr, char* pText = nullptr, DWORD nTextSize = 0);
// Renames a file or directory as MoveFile does: an existing target is
// ERROR_ALREADY_EXISTS; a file (not a directory) moves across file systems by copy
// and delete; a directory across file systems is ERROR_NOT_SAME_DEVICE.
BOOL Pim32FileMove(const char* oldName, const char* newName, DWORD* pError = nullptr, char* pText = nullptr,
                   DWORD nTextSize = 0);

// A find handle (FindFirstFile's search on `name`, wildcards allowed) positioned on
// the first matching directory, whose record is in *data; FindNextFile continues the
// same search over all entries. INVALID_HANDLE_VALUE when the search fails, or
// ERROR_FILE_NOT_FOUND when nothing that matches is a directory.
HANDLE Pim32DirectoryFind(const char* name, WIN32_FIND_DATA* data, DWORD* pError = nullptr, char* pText = nullptr,
                          DWORD nTextSize = 0);
// TRUE when `name` (a trailing separator allowed) is an existing directory.
BOOL Pim32DirectoryExist(const char* name, DWORD* pError = nullptr, char* pText = nullptr, DWORD nTextSize = 0);
// Creates the directory and any missing parents (mode 0777 less the umask). An
// existing directory is success; an existing file of that name is
// ERROR_ALREADY_EXISTS.
BOOL Pim32DirectoryCreate(const char* name, DWORD* pError = nullptr, char* pText = nullptr, DWORD nTextSize = 0);

// The temporary folder ($TMPDIR if it is an absolute path, else "/tmp") with a
// trailing "/". Writes it into buffer when it fits and returns its length in bytes
// without terminator; a result not below `size` means the buffer was too small (and
// nothing was written).
DWORD Pim32TempDirectory(char* buffer, DWORD size);
// Creates a new, empty file "<directory>/<prefix>XXXXXX" with a unique suffix and
// writes its name into buffer. `directory` null or empty is the temporary folder;
// `prefix` null is "zel". Returns the name's length; a result not below `size` means
// the buffer was too small, and then no file is left behind. 0 when the file can't be
// created (last error set).
DWORD Pim32TempFilename(char* buffer, DWORD size, const char* directory, const char* prefix);

// TRUE when `path` is a valid path as defined above. `flags` and `pPosition` belong
// to the file dialog and are passed through untouched.
BOOL Pim32PathIsValid(const char* path, int flags, int* pPosition);
// TRUE when `name` is a valid file name as defined above.
BOOL Pim32FilenameIsValid(const char* name);
// Replaces, in place, every character that the mode (0, 1, 2 above; larger values
// act as 2) counts as invalid with `replacement`, and returns how many. "." and ".."
// are left alone. Null gives 0.
unsigned Pim32ReplaceInvalidFilenameCharacters(char* name, char replacement, unsigned mode);

// TRUE when both paths lie on one file system. Paths that begin with a drive letter
// ("C:") compare their letters, case ignored; otherwise the device of the nearest
// existing ancestor of each path is compared. Null is FALSE.
BOOL Pim32DriveIsEqual(const char* path1, const char* path2);

// The folder, with a trailing "/", of the file a module comes from: null is the
// running program, the library's own module (ZelLibraryInstance) is the shared
// library, and a module loaded from a file is that file. Returns FALSE
// (ERROR_INVALID_HANDLE) for a module without a file, ERROR_INSUFFICIENT_BUFFER when
// the folder doesn't fit into `size` bytes.
BOOL Pim32GetModulePath(HMODULE module, char* buffer, DWORD size, DWORD* pError = nullptr, char* pText = nullptr,
                        DWORD nTextSize = 0);
