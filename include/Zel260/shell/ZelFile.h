// File and directory primitives, and operations over a whole directory.
//
// Error convention: every function here that can fail at the operating system takes,
// last, `DWORD* pError` and `CString* pErrorText`, both optional and independent. On
// failure the Win32 error number goes to *pError and the system's text for it to
// *pErrorText (at most 259 bytes). The primitives leave both untouched on success;
// the directory-wide operations clear them first (0 and empty).
#pragma once

#include <Zel260/pim32/Pim32File.h>
#include <Zel260/platform/CString.h>
#include <Zel260/platform/FindFile.h>
#include <Zel260/platform/Win32Types.h>

// The system's text for `number` into `buffer` (cut to size - 1 bytes); returns its
// length, 0 when the number has no text. Network numbers (2100-2999) have no module
// of their own here and use the same system table.
DWORD ZelFormatSystemError(DWORD number, char* buffer, DWORD size);

// Primitives: each forwards to the base library function of the same stem (see
// Pim32File.h for the exact behaviour) with its result unchanged. Reading uses
// GENERIC_READ, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, share 0; writing a new file
// GENERIC_WRITE, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, share 0.
HANDLE ZelFileCreate(const char* name, DWORD access, DWORD disposition, DWORD attributes, DWORD shareMode,
                     DWORD* pError = nullptr, CString* pErrorText = nullptr);
HANDLE ZelFileOpen(const char* name, DWORD access, DWORD disposition, DWORD attributes, DWORD shareMode,
                   DWORD* pError = nullptr, CString* pErrorText = nullptr);
// Closes a file handle of ZelFileCreate/ZelFileOpen.
BOOL ZelFileClose(HANDLE file, DWORD* pError = nullptr, CString* pErrorText = nullptr);
// Reads exactly `count` bytes; fewer is ERROR_HANDLE_EOF.
BOOL ZelFileRead(HANDLE file, void* buffer, DWORD count, DWORD* pError = nullptr, CString* pErrorText = nullptr);
BOOL ZelFileWrite(HANDLE file, const void* buffer, DWORD count, DWORD* pError = nullptr,
                  CString* pErrorText = nullptr);
// Writes the text without its terminator. A null text writes nothing and is TRUE,
// without touching the error parameters.
BOOL ZelFileWrite(HANDLE file, const char* text, DWORD* pError = nullptr, CString* pErrorText = nullptr);
BOOL ZelFileSeekEnd(HANDLE file, DWORD* pError = nullptr, CString* pErrorText = nullptr);
// Absolute position in bytes from the start; negative fails.
BOOL ZelFileSeek(HANDLE file, LONG position, DWORD* pError = nullptr, CString* pErrorText = nullptr);
// Size in bytes, -1 on failure (also for files of 2 GiB or more).
LONG ZelFileSize(HANDLE file, DWORD* pError = nullptr, CString* pErrorText = nullptr);
LONG ZelFileSize(const char* name, DWORD* pError = nullptr, CString* pErrorText = nullptr);
// TRUE for an existing file that is not a directory.
BOOL ZelFileFind(const char* name, DWORD* pError = nullptr, CString* pErrorText = nullptr);
// Lists the name in its directory's ".hidden" file (see Pim32FileHide).
BOOL ZelFileHide(const char* name, DWORD* pError = nullptr, CString* pErrorText = nullptr);
// Renames; an existing target fails with ERROR_ALREADY_EXISTS.
BOOL ZelFileMove(const char* oldName, const char* newName, DWORD* pError = nullptr, CString* pErrorText = nullptr);
// A find handle on the first matching directory (close it with FindClose), or
// INVALID_HANDLE_VALUE.
HANDLE ZelDirectoryFind(const char* name, WIN32_FIND_DATA* data, DWORD* pError = nullptr,
                        CString* pErrorText = nullptr);
BOOL ZelDirectoryExist(const char* name, DWORD* pError = nullptr, CString* pErrorText = nullptr);
// Creates the directory with any missing parents; an existing one is success.
BOOL ZelDirectoryCreate(const char* name, DWORD* pError = nullptr, CString* pErrorText = nullptr);

// The platform's file operations with their Win32 failures (last error set).
// CopyFile copies data and permission bits; with failIfExists an existing target is
// ERROR_FILE_EXISTS; a target that is the source itself (or a link to it) is
// ERROR_SHARING_VIOLATION and stays whole. DeleteFile refuses directories
// (ERROR_ACCESS_DENIED).
// RemoveDirectory needs an empty directory (ERROR_DIR_NOT_EMPTY). MoveFile is
// Pim32FileMove.
BOOL CopyFile(const char* existing, const char* target, BOOL failIfExists);
BOOL DeleteFile(const char* name);
BOOL RemoveDirectory(const char* name);
BOOL MoveFile(const char* existing, const char* target);

// Directory-wide operations, built on the synchronous file search.

// Number of files (not directories) that `search` ("dir/pattern") finds in its
// directory. A search error goes to the error parameters while the count found so
// far is still returned: read *pError to tell.
unsigned ZelFileCount(const char* search, DWORD* pError = nullptr, CString* pErrorText = nullptr);
// TRUE when one of the files that `search` finds can't be opened for exclusive
// writing (another holder of the library's share lock, no write permission...); the
// error parameters stay clear in that case. A search error is reported and FALSE.
BOOL ZelFileInUse(const char* search, DWORD* pError = nullptr, CString* pErrorText = nullptr);
// Copies the files (not subdirectories) of `source` into `destination`, which is
// created. The first failure stops the copy and is reported; files copied so far stay.
BOOL ZelDirectoryCopy(const char* source, const char* destination, BOOL failIfExists, DWORD* pError = nullptr,
                      CString* pErrorText = nullptr);
// Deletes the files of `directory` and then the directory. A subdirectory makes the
// last step fail (ERROR_DIR_NOT_EMPTY) after the files are gone. A search error is
// ignored for paths of 256 bytes or more, which go on with what was found.
BOOL ZelDirectoryRemove(const char* directory, DWORD* pError = nullptr, CString* pErrorText = nullptr);
// Renames within one file system; otherwise copies the files (failing on existing
// targets) and removes the source. A failed copy leaves the source whole.
BOOL ZelDirectoryMove(const char* source, const char* destination, DWORD* pError = nullptr,
                      CString* pErrorText = nullptr);
