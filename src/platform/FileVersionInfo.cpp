#include <Zel260/platform/FileVersionInfo.h>
#include <Zel260/platform/Win32Error.h>

#include <link.h>
#include <sys/stat.h>

#include <climits>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

bool isFile(const std::string& path)
{
    struct stat st {};
    return !path.empty() && stat(path.c_str(), &st) == 0 && S_ISREG(st.st_mode);
}

std::string baseName(const std::string& path)
{
    auto slash = path.rfind('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

struct LoadedSearch {
    std::string name;
    std::string found;
};

int matchLoaded(dl_phdr_info* info, size_t, void* data)
{
    auto* s = static_cast<LoadedSearch*>(data);
    if (!info->dlpi_name || !*info->dlpi_name)
        return 0;
    std::string path(info->dlpi_name);
    if (baseName(path) == s->name) {
        s->found = path;
        return 1;
    }
    return 0;
}

std::string locate(const std::string& file)
{
    if (file.find('/') != std::string::npos)
        return isFile(file) ? file : std::string();
    LoadedSearch search{file, {}};
    dl_iterate_phdr(matchLoaded, &search);
    if (isFile(search.found))
        return search.found;
    std::vector<std::string> dirs;
    if (const char* env = std::getenv("LD_LIBRARY_PATH")) {
        std::string all(env);
        for (size_t start = 0; start <= all.size();) {
            size_t colon = all.find(':', start);
            if (colon == std::string::npos)
                colon = all.size();
            if (colon > start)
                dirs.push_back(all.substr(start, colon - start));
            start = colon + 1;
        }
    }
    for (const char* d : {"/lib/x86_64-linux-gnu", "/usr/lib/x86_64-linux-gnu", "/lib64", "/usr/lib64", "/lib",
                          "/usr/lib", "/usr/local/lib"})
        dirs.emplace_back(d);
    for (const auto& d : dirs)
        if (isFile(d + "/" + file))
            return d + "/" + file;
    return {};
}

// The numbers after ".so." in a library's real name: "libx.so.6.4.2" -> 6, 4, 2.
bool versionFromName(const std::string& name, WORD (&parts)[4])
{
    auto so = name.rfind(".so.");
    if (so == std::string::npos)
        return false;
    const char* p = name.c_str() + so + 4;
    int n = 0;
    while (*p && n < 4) {
        if (*p < '0' || *p > '9')
            return false;
        unsigned long v = 0;
        while (*p >= '0' && *p <= '9') {
            if (v < 65535)
                v = v * 10 + static_cast<unsigned long>(*p - '0');
            ++p;
        }
        parts[n++] = static_cast<WORD>(v > 65535 ? 65535 : v);
        if (*p == '.')
            ++p;
        else if (*p)
            return false;
    }
    return n > 0;
}

} // namespace

BOOL ZelGetFileVersion(const char* file, tagVS_FIXEDFILEINFO& info)
{
    std::memset(&info, 0, sizeof info);
    if (!file || !*file) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    std::string path = locate(file);
    if (path.empty()) {
        SetLastError(ERROR_FILE_NOT_FOUND);
        return FALSE;
    }
    char real[PATH_MAX];
    if (realpath(path.c_str(), real))
        path = real;
    WORD v[4] = {0, 0, 0, 0};
    if (!versionFromName(baseName(path), v)) {
        SetLastError(ERROR_RESOURCE_TYPE_NOT_FOUND);
        return FALSE;
    }
    info.dwSignature = 0xFEEF04BDu;
    info.dwStrucVersion = 0x00010000u;
    info.dwFileVersionMS = info.dwProductVersionMS = MAKELONG(v[1], v[0]);
    info.dwFileVersionLS = info.dwProductVersionLS = MAKELONG(v[3], v[2]);
    info.dwFileType = 0x00000002u; // VFT_DLL: only libraries carry a version in their name
    return TRUE;
}
