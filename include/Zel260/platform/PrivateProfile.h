// Initialisation files ("private profiles"): the three Win32 operations the library
// keeps its settings with, and the folder that stands in for the Windows folder.
//
// File format: sections in square brackets, "key=value" lines. Section and key names
// compare without regard to ASCII case; white space around names and values is
// ignored; a value enclosed in a matching pair of double or single quotes loses the
// quotes. Lines starting with ';' are comments. Lines before the first section and
// lines that are neither header, key nor comment are ignored when reading and kept
// as they are when writing. CRLF and LF line ends both read; a UTF-8 byte order mark
// is skipped. The first of duplicate sections or keys is the one that counts.
//
// Files that are missing, unreadable, not regular files (directories, pipes,
// devices), empty, binary or nonsense read as if the key were absent: the caller's
// default. Reading never blocks on a pipe and never reads past the data.
//
// File names: a name without any '/' or '\\' is taken from GetWindowsDirectory(), as
// Windows takes such names from its Windows folder. Anything else is used as it
// stands (relative to the working directory when relative).
#pragma once

#include <Zel260/platform/Win32Types.h>

// The user's configuration folder: $XDG_CONFIG_HOME when it is set to an absolute
// path, otherwise $HOME/.config (the home folder from the password database when
// $HOME is unset). No trailing '/'. The folder is not created.
//
// Win32 rules: when the text and its terminator fit into `size` bytes, copies it and
// returns its length; otherwise copies nothing (buffer[0] = 0 when size > 0) and
// returns the size needed, terminator included. A null buffer returns the size
// needed.
UINT GetWindowsDirectory(char* buffer, UINT size);

// Reads `key` of `section` as an integer.
//
// A missing file, section or key, or an empty value, gives `defaultValue` (as an
// unsigned number: -1 comes back as 0xFFFFFFFF). Otherwise the value is parsed as
// Windows does: leading white space, an optional '+' or '-', then decimal digits up
// to the first character that isn't one ("12abc" is 12, "abc" and "0x10" are 0).
// The digits accumulate modulo 2^32 and the sign is applied modulo 2^32, so
// "4294967297" reads as 1 and "-1" as 0xFFFFFFFF: compare the result with (UINT)-1.
// A null section or key gives the default.
UINT GetPrivateProfileInt(const char* section, const char* key, int defaultValue, const char* fileName);

// Reads `key` of `section` into `buffer` of `size` bytes (terminator included).
//
// - Both given: the value, or `defaultValue` when the file, section or key is missing
//   (null counts as ""; trailing blanks of the default are dropped). A text that
//   doesn't fit is cut to size - 1 bytes; the result is the number of bytes copied
//   without the terminator, so a cut text returns size - 1.
// - `key` null: the names of all keys of the section, each ended by a zero byte, the
//   list ended by one more zero byte. `section` null: the names of all sections, in
//   the same form (each name once). A list that doesn't fit is cut and ended by two
//   zero bytes; the result is then size - 2. An empty list returns 0 with
//   buffer[0] = buffer[1] = 0 where there is room.
// - A null buffer or a size of 0 returns 0 and writes nothing.
DWORD GetPrivateProfileString(const char* section, const char* key, const char* defaultValue, char* buffer,
                              DWORD size, const char* fileName);

// Writes `key=value` into `section`, creating the file and the section as needed.
//
// - Replaces the first matching key of the first matching section (keeping the
//   key's spelling in the file), or adds the key behind the section's last key.
//   A new section is added at the end of the file, behind a blank line.
// - `value` null deletes every matching key of that section; `key` null deletes
//   every matching section with all its lines. Deleting what isn't there succeeds
//   and doesn't create the file.
// - Every other line, comment and blank line stays as it was. The file's line end
//   (CRLF or LF, by its first line) is kept; a new file gets LF.
// - The new content goes to a temporary file in the same folder that then replaces
//   the file in one rename, so a crash leaves either the old or the new file. The
//   file's permission bits are kept; a symbolic link is written through.
//
// Returns TRUE on success. On failure returns FALSE and sets the last error:
// ERROR_PATH_NOT_FOUND when the folder doesn't exist, ERROR_ACCESS_DENIED when the
// file or folder can't be written, ERROR_INVALID_PARAMETER for a null section or
// file name, or the mapped errno of a failed write. All three names null is Windows'
// "flush the cache" call: it does nothing and returns TRUE. Neither values nor keys
// are checked for line breaks or '=': the caller keeps them to one line.
BOOL WritePrivateProfileString(const char* section, const char* key, const char* value, const char* fileName);
