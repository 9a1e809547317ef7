// Where the library keeps its settings: one process-wide profile path.
//
// The default is "Zel260.INI" in the user's configuration folder (the stand-in for
// the Windows folder, see GetWindowsDirectory): the base name of the library's own
// module and ".INI". Set the path or the prefix at start, on the main thread, before
// anything reads a setting; the path is not locked.
#pragma once

// The profile path becomes `path` as it stands (null counts as ""). An empty path
// makes ZelGetProfilePath build the default again.
void ZelSetProfilePath(const char* path);

// The profile path, building the default first when it is empty. The pointer stays
// valid until the path is next set.
const char* ZelGetProfilePath();

// The path becomes the default one with `prefix` and "." in front of the file name:
// "Survey" gives "<config folder>/Survey.Zel260.INI". Replaces any path set before,
// and a former prefix: prefixes don't add up. A null prefix counts as "" (giving
// ".Zel260.INI"). The default path is taken apart by ZelSplitPath, so a folder of
// more than 255 bytes comes back cut.
void ZelSetProfilePrefix(const char* prefix);
