// The few path steps the profile needs: splitting a file name into its folder,
// base name and extension, and a trailing separator on a folder. Either separator
// is accepted when splitting, as everywhere in the library.
#pragma once

#include <string>

namespace zelprofile {

struct SplitName {
    std::string folder;    // up to and including the last separator ("" when none)
    std::string base;      // the name without its extension
    std::string extension; // from the last "." of the name on ("" when none)
};

inline SplitName Split(const std::string& path)
{
    SplitName s;
    size_t sep = path.find_last_of("/\\");
    size_t nameStart = sep == std::string::npos ? 0 : sep + 1;
    s.folder = path.substr(0, nameStart);
    std::string name = path.substr(nameStart);
    size_t dot = name.rfind('.');
    if (dot == std::string::npos) {
        s.base = name;
    } else {
        s.base = name.substr(0, dot);
        s.extension = name.substr(dot);
    }
    return s;
}

// The folder of a path without its trailing separator ("." when there is none).
inline std::string FolderOf(const std::string& path)
{
    size_t sep = path.find_last_of('/');
    if (sep == std::string::npos)
        return ".";
    return sep == 0 ? std::string("/") : path.substr(0, sep);
}

inline std::string WithTrailingSeparator(std::string folder)
{
    if (folder.empty() || (folder.back() != '/' && folder.back() != '\\'))
        folder += '/';
    return folder;
}

} // namespace zelprofile
