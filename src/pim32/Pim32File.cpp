#include <Zel260/pim32/Pim32File.h>
#include <Zel260/platform/ResourceModule.h>
#include <Zel260/platform/Win32Error.h>

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// Stores the error number and its text in the caller's triple and as the thread's
// last error, and passes the failure value through.
template <class T>
T fail(T result, DWORD error, DWORD* pError, char* pText, DWORD nTextSize)
{
    SetLastError(error);
    if (pError)
        *pError = error;
    if (pText && nTextSize > 0)
        FormatMessage(FORMAT_MESSAGE_FROM_SYSTEM, nullptr, error, 0x400, pText, nTextSize, nullptr);
    return result;
}

template <class T>
T failErrno(T result, DWORD* pError, char* pText, DWORD nTextSize)
{
    return fail(result, ZelWin32ErrorFromErrno(errno), pError, pText, nTextSize);
}

std::string osPath(const char* path)
{
    std::string p(path ? path : "");
    for (char& c : p)
        if (c == '\\')
            c = '/';
    return p;
}

int fdOf(HANDLE h)
{
    auto v = reinterpret_cast<std::intptr_t>(h);
    return (h == INVALID_HANDLE_VALUE || v < 0 || v > INT32_MAX) ? -1 : static_cast<int>(v);
}

HANDLE handleOf(int fd) { return reinterpret_cast<HANDLE>(static_cast<std::intptr_t>(fd)); }

bool isControl(unsigned char c) { return (c >= 1 && c < 0x20) || c == 0x7F; }

bool invalidChar(unsigned char c, unsigned mode)
{
    if (c == '/' || c == '\\' || isControl(c))
        return true;
    if (mode >= 1 && std::strchr("<>:\"|?*", c))
        return true;
    if (mode >= 2 && std::strchr(" +,;=[]", c))
        return true;
    return false;
}

bool validName(const char* s, size_t len)
{
    if (len == 0 || len > 255)
        return false;
    if ((len == 1 && s[0] == '.') || (len == 2 && s[0] == '.' && s[1] == '.'))
        return false;
    for (size_t i = 0; i < len; ++i)
        if (invalidChar(static_cast<unsigned char>(s[i]), 0))
            return false;
    return true;
}

// Device of the path, or of its nearest existing ancestor.
bool deviceOf(const std::string& path, dev_t& dev)
{
    std::string p = path.empty() ? "." : path;
    for (;;) {
        struct stat st;
        if (stat(p.c_str(), &st) == 0) {
            dev = st.st_dev;
            return true;
        }
        while (p.size() > 1 && p.back() == '/')
            p.pop_back();
        size_t slash = p.rfind('/');
        if (slash == std::string::npos)
            p = ".";
        else if (slash == 0)
            p = "/";
        else
            p.resize(slash);
        if (p == "/" || p == ".") {
            if (stat(p.c_str(), &st) != 0)
                return false;
            dev = st.st_dev;
            return true;
        }
    }
}

bool copyFileData(const std::string& from, const std::string& to, int& err)
{
    int in = open(from.c_str(), O_RDONLY | O_CLOEXEC);
    if (in < 0) {
        err = errno;
        return false;
    }
    struct stat st;
    fstat(in, &st);
    int out = open(to.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, st.st_mode & 07777);
    if (out < 0) {
        err = errno;
        close(in);
        return false;
    }
    char buf[65536];
    bool ok = true;
    for (;;) {
        ssize_t n = read(in, buf, sizeof buf);
        if (n == 0)
            break;
        if (n < 0) {
            if (errno == EINTR)
                continue;
            err = errno;
            ok = false;
            break;
        }
        for (ssize_t done = 0; done < n;) {
            ssize_t w = write(out, buf + done, static_cast<size_t>(n - done));
            if (w < 0) {
                if (errno == EINTR)
                    continue;
                err = errno;
                ok = false;
                break;
            }
            done += w;
        }
        if (!ok)
            break;
    }
    close(in);
    if (close(out) != 0 && ok) {
        err = errno;
        ok = false;
    }
    if (!ok)
        unlink(to.c_str());
    return ok;
}

} // namespace

HANDLE Pim32FileCreate(const char* name, DWORD access, DWORD disposition, DWORD attributes, DWORD shareMode,
                       DWORD* pError, char* pText, DWORD nTextSize)
{
    if (!name || !*name)
        return fail(INVALID_HANDLE_VALUE, name ? ERROR_PATH_NOT_FOUND : ERROR_INVALID_PARAMETER, pError, pText,
                    nTextSize);
    int flags = O_CLOEXEC;
    bool rd = access & GENERIC_READ, wr = access & GENERIC_WRITE;
    flags |= (rd && wr) ? O_RDWR : wr ? O_WRONLY : O_RDONLY;
    switch (disposition) {
    case CREATE_NEW: flags |= O_CREAT | O_EXCL; break;
    case CREATE_ALWAYS: flags |= O_CREAT | O_TRUNC; break;
    case OPEN_EXISTING: break;
    case OPEN_ALWAYS: flags |= O_CREAT; break;
    case TRUNCATE_EXISTING: flags |= O_TRUNC; break;
    default: return fail(INVALID_HANDLE_VALUE, ERROR_INVALID_PARAMETER, pError, pText, nTextSize);
    }
    if ((flags & O_TRUNC) && !wr)
        return fail(INVALID_HANDLE_VALUE, ERROR_INVALID_PARAMETER, pError, pText, nTextSize);
    mode_t mode = (attributes & FILE_ATTRIBUTE_READONLY) ? 0444 : 0666;
    std::string path = osPath(name);
    int fd;
    do
        fd = open(path.c_str(), flags, mode);
    while (fd < 0 && errno == EINTR);
    if (fd < 0) {
        int err = errno;
        DWORD e = err == EEXIST ? ERROR_FILE_EXISTS : ZelWin32ErrorFromErrno(err);
        // Windows tells a missing folder from a missing file.
        size_t slash = path.rfind('/');
        struct stat parent;
        if (err == ENOENT && slash != std::string::npos && slash > 0 &&
            stat(path.substr(0, slash).c_str(), &parent) != 0)
            e = ERROR_PATH_NOT_FOUND;
        return fail(INVALID_HANDLE_VALUE, e, pError, pText, nTextSize);
    }
    struct stat st;
    if (fstat(fd, &st) == 0 && S_ISDIR(st.st_mode)) {
        close(fd);
        return fail(INVALID_HANDLE_VALUE, ERROR_ACCESS_DENIED, pError, pText, nTextSize);
    }
    int lockOp = (shareMode & FILE_SHARE_WRITE) ? 0 : (shareMode & FILE_SHARE_READ) ? LOCK_SH : LOCK_EX;
    if (lockOp && flock(fd, lockOp | LOCK_NB) != 0) {
        int err = errno;
        close(fd);
        DWORD e = (err == EWOULDBLOCK) ? ERROR_SHARING_VIOLATION : ZelWin32ErrorFromErrno(err);
        return fail(INVALID_HANDLE_VALUE, e, pError, pText, nTextSize);
    }
    SetLastError(ERROR_SUCCESS);
    return handleOf(fd);
}

HANDLE Pim32FileOpen(const char* name, DWORD access, DWORD disposition, DWORD attributes, DWORD shareMode,
                     DWORD* pError, char* pText, DWORD nTextSize)
{
    return Pim32FileCreate(name, access, disposition, attributes, shareMode, pError, pText, nTextSize);
}

BOOL Pim32FileClose(HANDLE file, DWORD* pError, char* pText, DWORD nTextSize)
{
    int fd = fdOf(file);
    if (fd < 0 || close(fd) != 0)
        return fail(FALSE, ERROR_INVALID_HANDLE, pError, pText, nTextSize);
    return TRUE;
}

BOOL Pim32FileRead(HANDLE file, void* buffer, DWORD count, DWORD* pError, char* pText, DWORD nTextSize)
{
    int fd = fdOf(file);
    if (fd < 0)
        return fail(FALSE, ERROR_INVALID_HANDLE, pError, pText, nTextSize);
    if (!buffer && count)
        return fail(FALSE, ERROR_INVALID_PARAMETER, pError, pText, nTextSize);
    auto* p = static_cast<char*>(buffer);
    DWORD done = 0;
    while (done < count) {
        ssize_t n = read(fd, p + done, count - done);
        if (n < 0) {
            if (errno == EINTR)
                continue;
            return failErrno(FALSE, pError, pText, nTextSize);
        }
        if (n == 0)
            return fail(FALSE, ERROR_HANDLE_EOF, pError, pText, nTextSize);
        done += static_cast<DWORD>(n);
    }
    return TRUE;
}

BOOL Pim32FileWrite(HANDLE file, const void* buffer, DWORD count, DWORD* pError, char* pText, DWORD nTextSize)
{
    int fd = fdOf(file);
    if (fd < 0)
        return fail(FALSE, ERROR_INVALID_HANDLE, pError, pText, nTextSize);
    if (!buffer && count)
        return fail(FALSE, ERROR_INVALID_PARAMETER, pError, pText, nTextSize);
    auto* p = static_cast<const char*>(buffer);
    DWORD done = 0;
    while (done < count) {
        ssize_t n = write(fd, p + done, count - done);
        if (n < 0) {
            if (errno == EINTR)
                continue;
            return failErrno(FALSE, pError, pText, nTextSize);
        }
        done += static_cast<DWORD>(n);
    }
    return TRUE;
}

BOOL Pim32FileSeekEnd(HANDLE file, DWORD* pError, char* pText, DWORD nTextSize)
{
    int fd = fdOf(file);
    if (fd < 0)
        return fail(FALSE, ERROR_INVALID_HANDLE, pError, pText, nTextSize);
    if (lseek(fd, 0, SEEK_END) < 0)
        return failErrno(FALSE, pError, pText, nTextSize);
    return TRUE;
}

BOOL Pim32FileSeek(HANDLE file, LONG position, DWORD* pError, char* pText, DWORD nTextSize)
{
    int fd = fdOf(file);
    if (fd < 0)
        return fail(FALSE, ERROR_INVALID_HANDLE, pError, pText, nTextSize);
    if (position < 0)
        return fail(FALSE, ERROR_INVALID_PARAMETER, pError, pText, nTextSize);
    if (lseek(fd, position, SEEK_SET) < 0)
        return failErrno(FALSE, pError, pText, nTextSize);
    return TRUE;
}

static LONG sizeFromStat(const struct stat& st, DWORD* pError, char* pText, DWORD nTextSize)
{
    if (st.st_size > INT32_MAX)
        return fail(LONG(-1), ERROR_FILE_TOO_LARGE, pError, pText, nTextSize);
    return static_cast<LONG>(st.st_size);
}

LONG Pim32FileSize(HANDLE file, DWORD* pError, char* pText, DWORD nTextSize)
{
    int fd = fdOf(file);
    struct stat st;
    if (fd < 0 || fstat(fd, &st) != 0)
        return fail(LONG(-1), ERROR_INVALID_HANDLE, pError, pText, nTextSize);
    return sizeFromStat(st, pError, pText, nTextSize);
}

LONG Pim32FileSize(const char* name, DWORD* pError, char* pText, DWORD nTextSize)
{
    struct stat st;
    if (!name || !*name)
        return fail(LONG(-1), ERROR_INVALID_PARAMETER, pError, pText, nTextSize);
    if (stat(osPath(name).c_str(), &st) != 0)
        return failErrno(LONG(-1), pError, pText, nTextSize);
    if (S_ISDIR(st.st_mode))
        return fail(LONG(-1), ERROR_ACCESS_DENIED, pError, pText, nTextSize);
    return sizeFromStat(st, pError, pText, nTextSize);
}

BOOL Pim32FileFind(const char* name, DWORD* pError, char* pText, DWORD nTextSize)
{
    struct stat st;
    if (!name || !*name)
        return fail(FALSE, ERROR_INVALID_PARAMETER, pError, pText, nTextSize);
    if (stat(osPath(name).c_str(), &st) != 0)
        return failErrno(FALSE, pError, pText, nTextSize);
    if (S_ISDIR(st.st_mode))
        return fail(FALSE, ERROR_FILE_NOT_FOUND, pError, pText, nTextSize);
    return TRUE;
}

BOOL Pim32FileHide(const char* name, DWORD* pError, char* pText, DWORD nTextSize)
{
    if (!name || !*name)
        return fail(FALSE, ERROR_INVALID_PARAMETER, pError, pText, nTextSize);
    std::string path = osPath(name);
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    struct stat st;
    if (lstat(path.c_str(), &st) != 0)
        return failErrno(FALSE, pError, pText, nTextSize);
    size_t slash = path.rfind('/');
    std::string dir = slash == std::string::npos ? "." : path.substr(0, slash == 0 ? 1 : slash);
    std::string leaf = slash == std::string::npos ? path : path.substr(slash + 1);
    if (leaf.empty() || leaf[0] == '.')
        return TRUE;
    std::string list = dir + "/.hidden";
    int fd = open(list.c_str(), O_RDWR | O_CREAT | O_APPEND | O_CLOEXEC, 0644);
    if (fd < 0)
        return failErrno(FALSE, pError, pText, nTextSize);
    // Serialise with other writers so two hides can't interleave their lines.
    flock(fd, LOCK_EX);
    std::string content;
    char buf[4096];
    ssize_t n;
    while ((n = pread(fd, buf, sizeof buf, static_cast<off_t>(content.size()))) > 0)
        content.append(buf, static_cast<size_t>(n));
    size_t pos = 0;
    bool listed = false;
    while (pos < content.size() && !listed) {
        size_t end = content.find('\n', pos);
        if (end == std::string::npos)
            end = content.size();
        listed = content.compare(pos, end - pos, leaf) == 0;
        pos = end + 1;
    }
    bool ok = true;
    if (!listed) {
        std::string line = (!content.empty() && content.back() != '\n' ? "\n" : "") + leaf + "\n";
        ok = write(fd, line.data(), line.size()) == static_cast<ssize_t>(line.size());
    }
    int err = errno;
    close(fd);
    if (!ok) {
        errno = err;
        return failErrno(FALSE, pError, pText, nTextSize);
    }
    return TRUE;
}

BOOL Pim32FileMove(const char* oldName, const char* newName, DWORD* pError, char* pText, DWORD nTextSize)
{
    if (!oldName || !newName || !*oldName || !*newName)
        return fail(FALSE, ERROR_INVALID_PARAMETER, pError, pText, nTextSize);
    std::string from = osPath(oldName), to = osPath(newName);
    struct stat st;
    if (lstat(from.c_str(), &st) != 0)
        return failErrno(FALSE, pError, pText, nTextSize);
    struct stat dst;
    if (lstat(to.c_str(), &dst) == 0)
        return fail(FALSE, ERROR_ALREADY_EXISTS, pError, pText, nTextSize);
    if (rename(from.c_str(), to.c_str()) == 0)
        return TRUE;
    if (errno != EXDEV || !S_ISREG(st.st_mode))
        return failErrno(FALSE, pError, pText, nTextSize);
    int err = 0;
    if (!copyFileData(from, to, err)) {
        errno = err;
        return failErrno(FALSE, pError, pText, nTextSize);
    }
    if (unlink(from.c_str()) != 0) {
        err = errno;
        unlink(to.c_str());
        errno = err;
        return failErrno(FALSE, pError, pText, nTextSize);
    }
    return TRUE;
}

HANDLE Pim32DirectoryFind(const char* name, WIN32_FIND_DATA* data, DWORD* pError, char* pText, DWORD nTextSize)
{
    if (!name || !data)
        return fail(INVALID_HANDLE_VALUE, ERROR_INVALID_PARAMETER, pError, pText, nTextSize);
    HANDLE h = FindFirstFile(name, data);
    if (h == INVALID_HANDLE_VALUE)
        return fail(INVALID_HANDLE_VALUE, GetLastError(), pError, pText, nTextSize);
    for (;;) {
        if (data->dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
            return h;
        if (!FindNextFile(h, data)) {
            DWORD e = GetLastError();
            FindClose(h);
            return fail(INVALID_HANDLE_VALUE, e == ERROR_NO_MORE_FILES ? ERROR_FILE_NOT_FOUND : e, pError, pText,
                        nTextSize);
        }
    }
}

BOOL Pim32DirectoryExist(const char* name, DWORD* pError, char* pText, DWORD nTextSize)
{
    struct stat st;
    if (!name || !*name)
        return fail(FALSE, ERROR_INVALID_PARAMETER, pError, pText, nTextSize);
    if (stat(osPath(name).c_str(), &st) != 0)
        return failErrno(FALSE, pError, pText, nTextSize);
    if (!S_ISDIR(st.st_mode))
        return fail(FALSE, ERROR_PATH_NOT_FOUND, pError, pText, nTextSize);
    return TRUE;
}

BOOL Pim32DirectoryCreate(const char* name, DWORD* pError, char* pText, DWORD nTextSize)
{
    if (!name || !*name)
        return fail(FALSE, ERROR_INVALID_PARAMETER, pError, pText, nTextSize);
    std::string path = osPath(name);
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    // Create each missing component from the top down.
    for (size_t pos = 1; pos <= path.size(); ++pos) {
        if (pos != path.size() && path[pos] != '/')
            continue;
        std::string part = path.substr(0, pos);
        if (mkdir(part.c_str(), 0777) != 0 && errno != EEXIST)
            return failErrno(FALSE, pError, pText, nTextSize);
    }
    struct stat st;
    if (stat(path.c_str(), &st) != 0)
        return failErrno(FALSE, pError, pText, nTextSize);
    if (!S_ISDIR(st.st_mode))
        return fail(FALSE, ERROR_ALREADY_EXISTS, pError, pText, nTextSize);
    return TRUE;
}

DWORD Pim32TempDirectory(char* buffer, DWORD size)
{
    const char* env = std::getenv("TMPDIR");
    std::string dir = (env && env[0] == '/') ? env : "/tmp";
    if (dir.back() != '/')
        dir += '/';
    DWORD len = static_cast<DWORD>(dir.size());
    if (buffer && len < size)
        std::memcpy(buffer, dir.c_str(), len + 1);
    return len;
}

DWORD Pim32TempFilename(char* buffer, DWORD size, const char* directory, const char* prefix)
{
    std::string dir;
    if (directory && *directory) {
        dir = osPath(directory);
    } else {
        char tmp[4096];
        if (Pim32TempDirectory(tmp, sizeof tmp) >= sizeof tmp) {
            SetLastError(ERROR_FILENAME_EXCED_RANGE);
            return 0;
        }
        dir = tmp;
    }
    if (dir.back() != '/')
        dir += '/';
    std::string name = dir + (prefix ? osPath(prefix) : std::string("zel")) + "XXXXXX";
    DWORD len = static_cast<DWORD>(name.size());
    if (!buffer || len >= size)
        return len; // the name's length doesn't depend on the suffix, so ask first
    int fd = mkstemp(name.data());
    if (fd < 0) {
        ZelSetLastErrorFromErrno();
        return 0;
    }
    close(fd);
    std::memcpy(buffer, name.c_str(), len + 1);
    return len;
}

BOOL Pim32PathIsValid(const char* path, int, int*)
{
    if (!path || !*path)
        return FALSE;
    size_t len = std::strlen(path);
    if (len > 4095)
        return FALSE;
    const char* p = path;
    if (((p[0] >= 'A' && p[0] <= 'Z') || (p[0] >= 'a' && p[0] <= 'z')) && p[1] == ':')
        p += 2;
    while (*p) {
        size_t n = std::strcspn(p, "/\\");
        bool dotComponent = (n == 1 && p[0] == '.') || (n == 2 && p[0] == '.' && p[1] == '.');
        if (n > 0 && !dotComponent && !validName(p, n))
            return FALSE;
        p += n;
        if (*p)
            ++p;
    }
    return TRUE;
}

BOOL Pim32FilenameIsValid(const char* name) { return name && validName(name, std::strlen(name)) ? TRUE : FALSE; }

unsigned Pim32ReplaceInvalidFilenameCharacters(char* name, char replacement, unsigned mode)
{
    if (!name || std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0)
        return 0;
    unsigned count = 0;
    for (char* p = name; *p; ++p)
        if (invalidChar(static_cast<unsigned char>(*p), mode)) {
            *p = replacement;
            ++count;
        }
    return count;
}

BOOL Pim32DriveIsEqual(const char* path1, const char* path2)
{
    if (!path1 || !path2)
        return FALSE;
    auto drive = [](const char* p) {
        return ((p[0] >= 'A' && p[0] <= 'Z') || (p[0] >= 'a' && p[0] <= 'z')) && p[1] == ':' ? (p[0] | 0x20) : 0;
    };
    int d1 = drive(path1), d2 = drive(path2);
    if (d1 && d2)
        return d1 == d2 ? TRUE : FALSE;
    dev_t a, b;
    if (!deviceOf(osPath(path1), a) || !deviceOf(osPath(path2), b))
        return FALSE;
    return a == b ? TRUE : FALSE;
}

BOOL Pim32GetModulePath(HMODULE module, char* buffer, DWORD size, DWORD* pError, char* pText, DWORD nTextSize)
{
    std::string file;
    if (!module) {
        char exe[4096];
        ssize_t n = readlink("/proc/self/exe", exe, sizeof exe - 1);
        if (n <= 0)
            return failErrno(FALSE, pError, pText, nTextSize);
        file.assign(exe, static_cast<size_t>(n));
    } else if (module == ZelLibraryInstance()) {
        Dl_info info;
        if (!dladdr(reinterpret_cast<void*>(&Pim32GetModulePath), &info) || !info.dli_fname)
            return fail(FALSE, ERROR_INVALID_HANDLE, pError, pText, nTextSize);
        char real[4096];
        file = realpath(info.dli_fname, real) ? real : info.dli_fname;
    } else {
        const char* name = ZelResourceModuleName(module);
        struct stat st;
        if (!name || !std::strchr(name, '/') || stat(name, &st) != 0 || !S_ISREG(st.st_mode))
            return fail(FALSE, ERROR_INVALID_HANDLE, pError, pText, nTextSize);
        char real[4096];
        file = realpath(name, real) ? real : name;
    }
    size_t slash = file.rfind('/');
    std::string dir = slash == std::string::npos ? "./" : file.substr(0, slash + 1);
    if (!buffer || dir.size() >= size)
        return fail(FALSE, ERROR_INSUFFICIENT_BUFFER, pError, pText, nTextSize);
    std::memcpy(buffer, dir.c_str(), dir.size() + 1);
    return TRUE;
}
