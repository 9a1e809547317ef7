#include <Zel260/services/ZelProfilePath.h>
#include <Zel260/platform/PrivateProfile.h>
#include <Zel260/platform/ResourceModule.h>
#include <Zel260/shell/ZelPath.h>

#include <Zel260/frame/ZelModule.h>

#include <string>
#include <vector>

namespace {

std::string& profilePath()
{
    static std::string path;
    return path;
}

// The configuration folder, the base name of the library's module, and ".INI": the
// settings follow the library, whatever host loads it.
CString defaultPath()
{
    CString drive, directory, base, extension;
    ZelSplitPath(ZelResourceModuleName(ZelGetZelResourceHandle()), drive, directory, base, extension);
    // The configuration folder may be longer than a Windows folder ever was: ask
    // again with the size it needs rather than lose the profile.
    std::vector<char> buffer(MAX_PATH);
    UINT n = GetWindowsDirectory(buffer.data(), static_cast<UINT>(buffer.size()));
    if (n >= buffer.size()) {
        buffer.resize(n);
        n = GetWindowsDirectory(buffer.data(), static_cast<UINT>(buffer.size()));
    }
    CString folder(buffer.data(), static_cast<int>(n < buffer.size() ? n : 0));
    ZelEnsureTrailingBackslash(folder);
    return folder + base + ".INI";
}

} // namespace

void ZelSetProfilePath(const char* path) { profilePath() = path ? path : ""; }

const char* ZelGetProfilePath()
{
    if (profilePath().empty())
        profilePath() = defaultPath().str();
    return profilePath().c_str();
}

void ZelSetProfilePrefix(const char* prefix)
{
    CString drive, directory, base, extension;
    ZelSplitPath(defaultPath(), drive, directory, base, extension);
    profilePath() = (drive + directory + (prefix ? prefix : "") + "." + base + extension).str();
}
