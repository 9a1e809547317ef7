#include <Zel260/services/ZelProfilePath.h>
#include <Zel260/platform/PrivateProfile.h>
#include <Zel260/platform/ResourceModule.h>

#include "ProfilePathSteps.h"
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
std::string defaultPath()
{
    std::string module = ZelResourceModuleName(ZelGetZelResourceHandle());
    zelprofile::SplitName name = zelprofile::Split(module);
    std::vector<char> folder(MAX_PATH);
    UINT n = GetWindowsDirectory(folder.data(), static_cast<UINT>(folder.size()));
    if (n >= folder.size()) {
        folder.resize(n);
        n = GetWindowsDirectory(folder.data(), static_cast<UINT>(folder.size()));
    }
    return zelprofile::WithTrailingSeparator(std::string(folder.data(), n)) + name.base + ".INI";
}

} // namespace

void ZelSetProfilePath(const char* path) { profilePath() = path ? path : ""; }

const char* ZelGetProfilePath()
{
    if (profilePath().empty())
        profilePath() = defaultPath();
    return profilePath().c_str();
}

void ZelSetProfilePrefix(const char* prefix)
{
    zelprofile::SplitName parts = zelprofile::Split(defaultPath());
    profilePath() = parts.folder + (prefix ? prefix : "") + "." + parts.base + parts.extension;
}
