// Directory enumeration with the Win32 find calls, over POSIX directories.
//
// A search names one directory and a pattern: "dir/pattern" (either "/" or "\" may
// separate; a name without a separator searches the current directory). The pattern
// follows the Windows wildcard rules: "*" matches any run of characters, "?" one
// character (one UTF-8 sequence), "*.*" matches every name, a pattern "X.*" also
// matches the bare name "X", and matching ignores case for ASCII letters. "." and ".."
// are among the entries, as on Windows.
//
// Each entry's WIN32_FIND_DATA is filled from stat, following symbolic links:
//   - times are FILETIME (100 ns since 1601-01-01 UTC); the creation time is the
//     file system's birth time where it keeps one, otherwise the status-change time;
//   - the size is split into high and low 32-bit words (0 for directories);
//   - attributes: FILE_ATTRIBUTE_DIRECTORY for directories, READONLY when the owner
//     has no write permission, HIDDEN when the name starts with "." (other than "."
//     and ".."), ARCHIVE for regular files, REPARSE_POINT when the entry itself is a
//     symbolic link, NORMAL when none of these apply;
//   - the alternate (8.3) name is always empty.
// An entry that can't be resolved when it is read (a dangling link, a loop of links,
// a file deleted in the meantime) is left out: nothing could be opened through it.
//
// Failures, through GetLastError: ERROR_INVALID_PARAMETER (null argument, bad
// handle), ERROR_PATH_NOT_FOUND (3: the directory doesn't exist or isn't one),
// ERROR_ACCESS_DENIED (5: the directory can't be read), ERROR_FILE_NOT_FOUND (2: no
// entry matches), ERROR_NO_MORE_FILES (18: the enumeration is at its end), and the
// mapped errno for anything else.
#pragma once

#include <Zel260/platform/Win32Types.h>

#include <string>

// A directory entry that is itself a symbolic link (Windows marks links and
// junctions the same way). A recursive walk doesn't descend through it.
constexpr DWORD FILE_ATTRIBUTE_REPARSE_POINT = 0x400;

// How much a search must report, as FindFirstFileEx's search operation.
enum FINDEX_SEARCH_OPS {
    FindExSearchNameMatch = 0,
    // Only directories are of interest: other entries, symbolic links among them, are
    // left out unexamined, and a directory whose type the directory listing tells
    // gets only its name and attributes (no times), which saves a stat per entry.
    FindExSearchLimitToDirectories = 1,
};

// Opens the search and fills `data` with the first matching entry. Returns a find
// handle for FindNextFile/FindClose, or INVALID_HANDLE_VALUE with the last error set.
HANDLE FindFirstFile(const char* fileName, WIN32_FIND_DATA* data);
// The same with a search operation (the info level of Windows is not needed here).
HANDLE FindFirstFileEx(const char* fileName, WIN32_FIND_DATA* data, FINDEX_SEARCH_OPS op);
// The next matching entry. FALSE with ERROR_NO_MORE_FILES at the end, or with another
// error (ERROR_INVALID_HANDLE for a handle that is not an open search).
BOOL FindNextFile(HANDLE find, WIN32_FIND_DATA* data);
// Ends the search. FALSE with ERROR_INVALID_HANDLE for a handle that is not open.
BOOL FindClose(HANDLE find);

// The Windows wildcard match described above. Null arguments never match.
BOOL ZelWildcardMatch(const char* pattern, const char* name);

// FILETIME from seconds and nanoseconds since 1970-01-01 UTC; times before 1601
// clamp to zero.
FILETIME ZelFileTimeFromUnix(long long seconds, long nanoseconds);

// The entries of one directory that may be files, kept from a directory walk so that
// file patterns can later be matched against them without reading the directory
// again (a recursive file search lists every directory before it searches any).
// Filled by ZelFindFirstDirectories and its FindNextFile calls; usable only once that
// enumeration has reached its end. The listing is trusted later only while the
// directory's identity and status-change time are those seen when it was read, and
// that time was then clearly in the past and finer than a second (a change made in
// the same step of the file system's clock could otherwise keep the time as it was);
// elsewhere the directory is simply read again.
struct ZelDirectoryListing {
    std::string names;  // each name followed by a NUL, in the directory's order
    std::string types;  // one directory-entry type byte per name
    unsigned long long device = 0;
    unsigned long long inode = 0;
    long long changeSeconds = 0;
    long changeNanoseconds = 0;
    bool trustworthy = false; // the time test above held when it was read
    bool complete = false;    // the enumeration reached the end of the directory
};

// The folder above the ones a recursive search is reading, kept open between calls
// (siblings come one after another), so that each folder and its entries are found
// one step below it instead of along their whole path. One per search and thread;
// the folder is closed with the object or when another one takes its place.
class ZelOpenFolders {
public:
    ZelOpenFolders() = default;
    ~ZelOpenFolders();
    ZelOpenFolders(const ZelOpenFolders&) = delete;
    ZelOpenFolders& operator=(const ZelOpenFolders&) = delete;
    // A handle of `folder` (a path without a trailing "/") for lookups only, or -1.
    int Open(const std::string& folder);

private:
    std::string m_folder;
    int m_fd = -1;
};

// FindFirstFileEx(fileName, data, FindExSearchLimitToDirectories), which also keeps
// the entries it leaves out in `listing` (cleared first) when the pattern matches
// every name ("*" or "*.*"). Same results and errors as FindFirstFileEx. With
// `folders`, the directory is opened below its parent held there.
HANDLE ZelFindFirstDirectories(const char* fileName, WIN32_FIND_DATA* data, ZelDirectoryListing* listing,
                               ZelOpenFolders* folders = nullptr);

// FindFirstFile(fileName) for a search whose directory was listed before: while the
// listing is complete and the directory unchanged, the names come from the listing
// and only the matching ones are examined (stat is still made at this moment, so
// the records are as fresh as FindFirstFile's). Entries that the listing knows to be
// directories, "." and "..", are not reported. Otherwise, and for a pattern without
// wildcards, this is FindFirstFile itself. The listing must outlive the handle, and
// so must `folders`, through which the directory is looked up when given.
HANDLE ZelFindFirstListed(const char* fileName, const ZelDirectoryListing& listing, WIN32_FIND_DATA* data,
                          ZelOpenFolders* folders = nullptr);
