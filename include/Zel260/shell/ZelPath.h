// Path text and drives.
//
// The separator the library writes is the platform's, "/"; every function that reads
// a path accepts "\" as well. Pure text operations keep their character-exact
// behaviour, so texts that come from Windows (with a drive letter "C:") split, join and
// shorten as they always did.
//
// A drive is a mount point. Its type comes from the file system type: CD-ROM for
// iso9660 and udf, remote for nfs, cifs, smb and sshfs, RAM disk for tmpfs and ramfs,
// removable for anything mounted under /media or /run/media, fixed for the rest;
// kernel pseudo file systems (proc, sysfs, cgroup, ...) are no drives.
#pragma once

#include <Zel260/platform/CString.h>
#include <Zel260/platform/Win32Types.h>

#include <vector>

// The separator that the library writes into paths.
constexpr char ZEL_PATH_SEPARATOR = '/';

constexpr UINT DRIVE_UNKNOWN = 0;
constexpr UINT DRIVE_NO_ROOT_DIR = 1;
constexpr UINT DRIVE_REMOVABLE = 2;
constexpr UINT DRIVE_FIXED = 3;
constexpr UINT DRIVE_REMOTE = 4;
constexpr UINT DRIVE_CDROM = 5;
constexpr UINT DRIVE_RAMDISK = 6;

// The drive type of a mount point ("/media/usb" or "/media/usb/"; "/" is the root
// file system). A path that is not a mount point, such as "C:\" here, is
// DRIVE_NO_ROOT_DIR; null or empty is DRIVE_NO_ROOT_DIR too.
UINT GetDriveType(const char* root);
// The mount points that are drives, each with a trailing "/", in the order of the
// system's mount table (a mount point mounted over twice is listed once).
std::vector<CString> ZelGetMountPoints();

// The temporary folder with a trailing separator; empty if it can't be had.
CString ZelTempDirectory();
// A new, empty, uniquely named file: `directory` (null or empty: the temporary
// folder) and `prefix` (null: "zel") pass on unchanged. Empty on failure.
CString ZelTempFilename(const char* directory, const char* prefix);

// TRUE when both paths lie on one drive (file system, see Pim32DriveIsEqual); FALSE
// otherwise and when either is null.
BOOL ZelDriveIsEqual(const char* path1, const char* path2);
// FALSE for null or empty; otherwise whether the text is a valid path (see
// Pim32File.h). `flags` and `pPosition` pass through untouched.
BOOL ZelPathIsValid(const char* path, int flags, int* pPosition);
// FALSE for null or empty; otherwise whether the text is a valid file name.
BOOL ZelFilenameIsValid(const char* name);

// Appends the separator unless the text is empty or already ends in "/" or "\".
void ZelEnsureTrailingBackslash(CString& path);
// Removes one trailing "/" or "\", except from a root ("/", "C:\", "C:/"). Empty
// stays empty.
void ZelRemoveTrailingBackslash(CString& path);
// Replaces the characters that `mode` (see Pim32File.h) counts as invalid with
// `replacement`, in place; returns how many. Empty gives 0.
unsigned ZelReplaceInvalidFilenameCharacters(CString& name, char replacement, unsigned mode);

// Splits like the runtime's _splitpath: drive "X:" when the second character is a
// colon; directory up to and including the last separator; name; extension from the
// name's last dot, dot included (".profile" is all extension). Parts are cut to 2,
// 255, 255 and 255 bytes.
void ZelSplitPath(const char* path, CString& drive, CString& directory, CString& name, CString& extension);
// Joins like the runtime's _makepath: the drive's first letter and ":", the
// directory with a separator behind it unless it ends in one, the name, and the
// extension with a dot in front unless it has one. Each part may be null or empty.
CString ZelMakePath(const char* drive, const char* directory, const char* name, const char* extension);

// "A:\" for 0, "B:\" for 1, ...: the Windows form, kept for texts that name drives
// by letter.
CString ZelGetDriveString(int drive);
// The path's first character in upper case minus 'A' ("c:\x" is 2). Unsigned
// arithmetic: a path that doesn't start with a letter gives a large or wrapped value,
// an empty path the value of -'A'.
unsigned ZelGetDriveInteger(const char* path);
// The folder (with a trailing separator) of the file that `module` comes from; see
// Pim32GetModulePath. FALSE, with `path` emptied, when there is none.
BOOL ZelGetModulePath(HMODULE module, CString& path);
// Appends the mount points whose drive type is `type`, each with a trailing "/", to
// `drives` (not cleared first). (UINT)-1 takes every drive. Shows the wait cursor
// while it scans, where the widget library is present.
void ZelGetAvailableDrives(UINT type, std::vector<CString>& drives);

// TRUE when `path` names an existing directory or drive root. White space around
// the text and one trailing separator are ignored. A root ("/", or a text "X:" or
// "X:\") exists when it is a mount point; anything else when it is found and is a
// directory. A file of that name is FALSE; null or empty is FALSE.
BOOL ZelPathExists(const char* path);

// Executables on Linux carry no extension, and shared libraries end in ".so".
// ZelFileIsEXE: FALSE for an empty text; otherwise turns every "\" into "/" and
// tests the file: TRUE for a regular file with execute permission that starts with
// the ELF magic or "#!". ZelFileIsDLL: the same separator change, then appends
// ".so" unless the name ends in it (case ignored), and tries to load the library,
// which it unloads at once (this runs the library's initialisers: use it only on
// names the user chose). ZelFileIsExecutable: ZelFileIsEXE on a copy, else
// ZelFileIsDLL on a fresh copy; the copy that passed is written back, and on failure
// the argument is left as it came.
BOOL ZelFileIsEXE(CString& name);
BOOL ZelFileIsDLL(CString& name);
BOOL ZelFileIsExecutable(CString& name);

// A path with 8.3 parts, formed from the text alone: each directory component and
// the name keep their first 8 characters after the invalid ones (mode 2) became
// "_", the extension its dot and 3 characters; the drive is kept, and so is each
// separator as written ("C:\abcdefghijkl\x" gives "C:\abcdefgh\x"). A dot in a
// directory counts as a character. Null or empty gives "".
CString ZelBuildShortPathname(const char* path);
