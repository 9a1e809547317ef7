#include <Zel260/shell/ZelPath.h>

#include <Zel260/pim32/Pim32File.h>
#include <Zel260/platform/FindFile.h>
#include <Zel260/platform/Win32Error.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

bool isSep(char c) { return c == '/' || c == '\\'; }

struct Mount {
    std::string dir;
    std::string type;
};

// The mount table decodes blanks and other specials as octal escapes.
std::string unescape(const std::string& s)
{
    std::string out;
    for (size_t i = 0; i < s.size(); ++i) {
        if (s[i] == '\\' && i + 3 < s.size() && std::isdigit(static_cast<unsigned char>(s[i + 1]))) {
            out += static_cast<char>(std::stoi(s.substr(i + 1, 3), nullptr, 8));
            i += 3;
        } else {
            out += s[i];
        }
    }
    return out;
}

bool isPseudo(const std::string& type)
{
    static const char* const kPseudo[] = {"proc",     "sysfs",    "devpts",    "cgroup",      "cgroup2", "securityfs",
                                          "debugfs",  "tracefs",  "pstore",    "bpf",         "mqueue",  "hugetlbfs",
                                          "configfs", "fusectl",  "binfmt_misc", "autofs",    "efivarfs", "rpc_pipefs",
                                          "nsfs",     "selinuxfs", "devtmpfs", "fuse.gvfsd-fuse", "fuse.portal"};
    for (const char* p : kPseudo)
        if (type == p)
            return true;
    return false;
}

UINT typeOf(const Mount& m)
{
    const std::string& t = m.type;
    if (t == "iso9660" || t == "udf")
        return DRIVE_CDROM;
    if (t == "nfs" || t == "nfs4" || t == "cifs" || t == "smb3" || t == "smbfs" || t == "fuse.sshfs" || t == "9p")
        return DRIVE_REMOTE;
    if (t == "tmpfs" || t == "ramfs")
        return DRIVE_RAMDISK;
    if (m.dir.rfind("/media/", 0) == 0 || m.dir.rfind("/run/media/", 0) == 0)
        return DRIVE_REMOVABLE;
    return DRIVE_FIXED;
}

// The mount table, last mount per directory winning (it hides the earlier ones), in
// first-appearance order; pseudo file systems left out.
std::vector<Mount> mounts()
{
    std::vector<Mount> list;
    std::ifstream in("/proc/self/mounts");
    std::string line;
    while (std::getline(in, line)) {
        std::istringstream fields(line);
        std::string dev, dir, type;
        if (!(fields >> dev >> dir >> type))
            continue;
        Mount m{unescape(dir), type};
        auto it = std::find_if(list.begin(), list.end(), [&](const Mount& x) { return x.dir == m.dir; });
        if (it != list.end())
            it->type = m.type;
        else
            list.push_back(m);
    }
    list.erase(std::remove_if(list.begin(), list.end(), [](const Mount& m) { return isPseudo(m.type); }), list.end());
    return list;
}

std::string withSlash(std::string s)
{
    if (s.empty() || s.back() != '/')
        s += '/';
    return s;
}

bool isDriveRoot(const CString& s)
{
    int n = s.GetLength();
    if (n == 1 && isSep(s[0]))
        return true;
    return n == 3 && std::isalpha(static_cast<unsigned char>(s[0])) && s[1] == ':' && isSep(s[2]);
}

bool startsElfOrScript(const char* path)
{
    int fd = open(path, O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return false;
    unsigned char head[4] = {};
    ssize_t n = read(fd, head, sizeof head);
    close(fd);
    if (n >= 4 && head[0] == 0x7F && head[1] == 'E' && head[2] == 'L' && head[3] == 'F')
        return true;
    return n >= 2 && head[0] == '#' && head[1] == '!';
}

} // namespace

UINT GetDriveType(const char* root)
{
    if (!root || !*root)
        return DRIVE_NO_ROOT_DIR;
    std::string p(root);
    for (char& c : p)
        if (c == '\\')
            c = '/';
    p = withSlash(p);
    for (const Mount& m : mounts())
        if (withSlash(m.dir) == p)
            return typeOf(m);
    return DRIVE_NO_ROOT_DIR;
}

std::vector<CString> ZelGetMountPoints()
{
    std::vector<CString> out;
    for (const Mount& m : mounts())
        out.emplace_back(withSlash(m.dir));
    return out;
}

CString ZelTempDirectory()
{
    DWORD size = MAX_PATH;
    for (;;) {
        CString s;
        DWORD n = Pim32TempDirectory(s.GetBuffer(static_cast<int>(size)), size);
        if (n < size) {
            s.ReleaseBuffer();
            return s;
        }
        s.ReleaseBuffer(0);
        size *= 2;
    }
}

CString ZelTempFilename(const char* directory, const char* prefix)
{
    DWORD size = MAX_PATH;
    for (;;) {
        CString s;
        DWORD n = Pim32TempFilename(s.GetBuffer(static_cast<int>(size)), size, directory, prefix);
        if (n < size) {
            s.ReleaseBuffer(n == 0 ? 0 : -1);
            return s;
        }
        s.ReleaseBuffer(0);
        size *= 2;
    }
}

BOOL ZelDriveIsEqual(const char* path1, const char* path2) { return Pim32DriveIsEqual(path1, path2); }

BOOL ZelPathIsValid(const char* path, int flags, int* pPosition)
{
    if (!path || !*path)
        return FALSE;
    return Pim32PathIsValid(path, flags, pPosition);
}

BOOL ZelFilenameIsValid(const char* name)
{
    if (!name || !*name)
        return FALSE;
    return Pim32FilenameIsValid(name);
}

void ZelEnsureTrailingBackslash(CString& path)
{
    if (path.IsEmpty())
        return;
    if (!isSep(path[path.GetLength() - 1]))
        path += ZEL_PATH_SEPARATOR;
}

void ZelRemoveTrailingBackslash(CString& path)
{
    if (path.IsEmpty() || isDriveRoot(path))
        return;
    if (isSep(path[path.GetLength() - 1]))
        path.Delete(path.GetLength() - 1);
}

unsigned ZelReplaceInvalidFilenameCharacters(CString& name, char replacement, unsigned mode)
{
    if (name.IsEmpty())
        return 0;
    unsigned n = Pim32ReplaceInvalidFilenameCharacters(name.GetBuffer(name.GetLength()), replacement, mode);
    name.ReleaseBuffer();
    return n;
}

void ZelSplitPath(const char* path, CString& drive, CString& directory, CString& name, CString& extension)
{
    drive.Empty();
    directory.Empty();
    name.Empty();
    extension.Empty();
    if (!path)
        return;
    const char* p = path;
    if (p[0] && p[1] == ':') {
        drive = CString(p, 2);
        p += 2;
    }
    const char* lastSep = nullptr;
    const char* lastDot = nullptr;
    for (const char* q = p; *q; ++q) {
        if (isSep(*q)) {
            lastSep = q;
            lastDot = nullptr;
        } else if (*q == '.') {
            lastDot = q;
        }
    }
    const char* nameStart = lastSep ? lastSep + 1 : p;
    if (lastSep)
        directory = CString(p, static_cast<int>(std::min<std::ptrdiff_t>(lastSep + 1 - p, 255)));
    const char* end = nameStart + std::strlen(nameStart);
    const char* nameEnd = lastDot ? lastDot : end;
    name = CString(nameStart, static_cast<int>(std::min<std::ptrdiff_t>(nameEnd - nameStart, 255)));
    if (lastDot)
        extension = CString(lastDot, static_cast<int>(std::min<std::ptrdiff_t>(end - lastDot, 255)));
}

CString ZelMakePath(const char* drive, const char* directory, const char* name, const char* extension)
{
    CString out;
    if (drive && *drive) {
        out += drive[0];
        out += ':';
    }
    if (directory && *directory) {
        out += directory;
        if (!isSep(directory[std::strlen(directory) - 1]))
            out += ZEL_PATH_SEPARATOR;
    }
    if (name)
        out += name;
    if (extension && *extension) {
        if (extension[0] != '.')
            out += '.';
        out += extension;
    }
    return out;
}

CString ZelGetDriveString(int drive)
{
    CString s("?:\\");
    s.SetAt(0, static_cast<char>('A' + drive));
    return s;
}

unsigned ZelGetDriveInteger(const char* path)
{
    unsigned char c = path ? static_cast<unsigned char>(path[0]) : 0;
    return static_cast<unsigned>(std::toupper(c)) - static_cast<unsigned>('A');
}

BOOL ZelGetModulePath(HMODULE module, CString& path)
{
    char* buf = path.GetBuffer(MAX_PATH);
    buf[0] = '\0';
    BOOL ok = Pim32GetModulePath(module, buf, MAX_PATH);
    path.ReleaseBuffer(ok ? -1 : 0);
    return ok;
}

void ZelGetAvailableDrives(UINT type, std::vector<CString>& drives)
{
    for (const Mount& m : mounts())
        if (type == static_cast<UINT>(-1) || typeOf(m) == type)
            drives.emplace_back(withSlash(m.dir));
}

BOOL ZelPathExists(const char* path)
{
    if (!path || !*path)
        return FALSE;
    CString copy(path);
    copy.Trim();
    ZelRemoveTrailingBackslash(copy);
    copy.TrimRight();
    if (copy.IsEmpty())
        return FALSE;
    bool root = (copy.GetLength() == 2 && copy[1] == ':') || isDriveRoot(copy);
    if (root) {
        ZelEnsureTrailingBackslash(copy);
        UINT t = GetDriveType(copy);
        return t != DRIVE_UNKNOWN && t != DRIVE_NO_ROOT_DIR;
    }
    WIN32_FIND_DATA fd;
    HANDLE h = FindFirstFile(copy, &fd);
    if (h == INVALID_HANDLE_VALUE)
        return FALSE;
    FindClose(h);
    return (fd.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) ? TRUE : FALSE;
}

BOOL ZelFileIsEXE(CString& name)
{
    if (name.IsEmpty())
        return FALSE;
    name.Replace('\\', '/');
    struct stat st;
    if (stat(name, &st) != 0 || !S_ISREG(st.st_mode) || access(name, X_OK) != 0)
        return FALSE;
    return startsElfOrScript(name) ? TRUE : FALSE;
}

BOOL ZelFileIsDLL(CString& name)
{
    if (name.IsEmpty())
        return FALSE;
    name.Replace('\\', '/');
    CString tail = name.Right(3);
    tail.MakeUpper();
    if (tail != ".SO")
        name += ".so";
    void* handle = dlopen(name, RTLD_LAZY | RTLD_LOCAL);
    if (!handle)
        return FALSE;
    dlclose(handle);
    return TRUE;
}

BOOL ZelFileIsExecutable(CString& name)
{
    CString copy(name);
    if (ZelFileIsEXE(copy)) {
        name = copy;
        return TRUE;
    }
    copy = name;
    if (ZelFileIsDLL(copy)) {
        name = copy;
        return TRUE;
    }
    return FALSE;
}

CString ZelBuildShortPathname(const char* path)
{
    CString drive, dir, name, ext;
    ZelSplitPath(path, drive, dir, name, ext);
    ZelReplaceInvalidFilenameCharacters(name, '_', 2);
    name = name.Left(8);
    ext = ext.Left(4);
    CString newDir;
    int start = 0;
    while (start < dir.GetLength()) {
        int end = start;
        while (end < dir.GetLength() && !isSep(dir[end]))
            ++end;
        CString part = dir.Mid(start, end - start);
        ZelReplaceInvalidFilenameCharacters(part, '_', 2);
        newDir += part.Left(8);
        // The separator as written: a Windows text keeps its backslashes.
        newDir += end < dir.GetLength() ? dir[end] : ZEL_PATH_SEPARATOR;
        start = end + 1;
    }
    return ZelMakePath(drive, newDir, name, ext);
}
