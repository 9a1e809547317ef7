#include <Zel260/platform/FindFile.h>
#include <Zel260/platform/Win32Error.h>

#include <cerrno>
#include <cstring>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_set>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <unistd.h>
#include <time.h>

namespace {

struct FindState {
    int dirFd = -1;                    // open for reading the entries
    std::unique_ptr<char[]> buffer;    // a batch of entries as the kernel gave them
    size_t bufferPos = 0;
    size_t bufferEnd = 0;
    std::string pattern;
    bool matchAll = false;
    bool exactOnly = false; // a name without wildcards that was found by lstat
    std::string stem; // "X" of a pattern "X.*", which also matches the bare name
    bool starSuffix = false; // a "*.ext" pattern, matched by its tail (see isStarSuffix)
    FINDEX_SEARCH_OPS op = FindExSearchNameMatch;
    ZelDirectoryListing* capture = nullptr; // the walk keeps what it leaves out here
    const ZelDirectoryListing* listed = nullptr; // names come from here, not the directory
    size_t cursor = 0;                           // next name in `listed`
    size_t typeCursor = 0;
    int pathFd = -1;                             // the listed directory, for stat only
    bool ownsPathFd = true;                      // false: the open folders' parent
    std::string below;                           // "child/" before each listed name
    std::string lookupName;                      // below + name, reused
};

// Live handles, so that a stale or foreign handle is refused instead of followed.
std::mutex& handlesMutex()
{
    static std::mutex m;
    return m;
}
std::unordered_set<FindState*>& handles()
{
    static std::unordered_set<FindState*> h;
    return h;
}

FindState* lookup(HANDLE h)
{
    auto* s = static_cast<FindState*>(h);
    std::lock_guard<std::mutex> lock(handlesMutex());
    return handles().count(s) ? s : nullptr;
}

unsigned char lowerAscii(unsigned char c) { return (c >= 'A' && c <= 'Z') ? static_cast<unsigned char>(c + 32) : c; }

// Length of the UTF-8 sequence that starts at `s` (1 for stray or ASCII bytes).
size_t seqLength(const unsigned char* s)
{
    size_t n = 1;
    if (*s >= 0xC0)
        while (s[n] && (s[n] & 0xC0) == 0x80 && n < 4)
            ++n;
    return n;
}

// Greedy match with one backtrack point per star: linear in practice, never
// exponential on patterns like "*a*a*a*b".
bool matchPlain(const unsigned char* p, const unsigned char* n)
{
    const unsigned char* starP = nullptr;
    const unsigned char* starN = nullptr;
    while (*n) {
        if (*p == '*') {
            while (*p == '*')
                ++p;
            if (!*p)
                return true;
            starP = p;
            starN = n;
        } else if (*p == '?') {
            ++p;
            n += seqLength(n);
        } else if (*p && lowerAscii(*p) == lowerAscii(*n)) {
            ++p;
            ++n;
        } else if (starP) {
            p = starP;
            starN += seqLength(starN);
            n = starN;
        } else {
            return false;
        }
    }
    while (*p == '*')
        ++p;
    return !*p;
}

bool hasWildcard(const std::string& s) { return s.find_first_of("*?") != std::string::npos; }

// Whether the pattern is "*" and a tail without wildcards that starts with an ASCII
// byte (the usual "*.ext"). The general match then comes down to: does the name end
// with the tail. An ASCII byte never lies inside a multi-byte sequence, so the one
// place where the tail could start is always a place the general match would try.
bool isStarSuffix(const unsigned char* p)
{
    if (p[0] != '*' || p[1] == 0 || p[1] >= 0x80)
        return false;
    for (const unsigned char* q = p + 1; *q; ++q)
        if (*q == '*' || *q == '?')
            return false;
    return true;
}

bool matchSuffix(const unsigned char* tail, size_t tailLength, const unsigned char* n)
{
    size_t length = std::strlen(reinterpret_cast<const char*>(n));
    if (length < tailLength)
        return false;
    n += length - tailLength;
    for (size_t i = 0; i < tailLength; ++i)
        if (lowerAscii(tail[i]) != lowerAscii(n[i]))
            return false;
    return true;
}

void fill(WIN32_FIND_DATA* data, const char* name, const struct statx& st, bool isLink)
{
    std::memset(data, 0, sizeof *data);
    DWORD attr = 0;
    bool isDir = S_ISDIR(st.stx_mode);
    if (isDir)
        attr |= FILE_ATTRIBUTE_DIRECTORY;
    if (!(st.stx_mode & S_IWUSR))
        attr |= FILE_ATTRIBUTE_READONLY;
    if (name[0] == '.' && std::strcmp(name, ".") != 0 && std::strcmp(name, "..") != 0)
        attr |= FILE_ATTRIBUTE_HIDDEN;
    if (S_ISREG(st.stx_mode))
        attr |= FILE_ATTRIBUTE_ARCHIVE;
    if (isLink)
        attr |= FILE_ATTRIBUTE_REPARSE_POINT;
    if (attr == 0)
        attr = FILE_ATTRIBUTE_NORMAL;
    data->dwFileAttributes = attr;
    if (st.stx_mask & STATX_BTIME)
        data->ftCreationTime = ZelFileTimeFromUnix(st.stx_btime.tv_sec, st.stx_btime.tv_nsec);
    else
        data->ftCreationTime = ZelFileTimeFromUnix(st.stx_ctime.tv_sec, st.stx_ctime.tv_nsec);
    data->ftLastAccessTime = ZelFileTimeFromUnix(st.stx_atime.tv_sec, st.stx_atime.tv_nsec);
    data->ftLastWriteTime = ZelFileTimeFromUnix(st.stx_mtime.tv_sec, st.stx_mtime.tv_nsec);
    if (!isDir) {
        data->nFileSizeHigh = static_cast<DWORD>(st.stx_size >> 32);
        data->nFileSizeLow = static_cast<DWORD>(st.stx_size & 0xFFFFFFFFu);
    }
    // The record was cleared above, so the name needs no padding.
    std::memcpy(data->cFileName, name, strnlen(name, MAX_PATH - 1));
}

// Resolves one entry, found under `lookup` from dirFd (the name itself unless
// given); false when it can't be (dangling, looping, gone).
bool statEntry(int dirFd, const char* name, unsigned char dtype, WIN32_FIND_DATA* data, const char* lookup = nullptr)
{
    struct statx st;
    const unsigned mask = STATX_TYPE | STATX_MODE | STATX_SIZE | STATX_ATIME | STATX_MTIME | STATX_CTIME | STATX_BTIME;
    if (!lookup)
        lookup = name;
    if (statx(dirFd, lookup, 0, mask, &st) != 0)
        return false;
    bool isLink = dtype == DT_LNK;
    if (dtype == DT_UNKNOWN) {
        struct stat lst;
        isLink = fstatat(dirFd, lookup, &lst, AT_SYMLINK_NOFOLLOW) == 0 && S_ISLNK(lst.st_mode);
    }
    fill(data, name, st, isLink);
    return true;
}

void keep(ZelDirectoryListing* listing, const char* name, unsigned char type)
{
    listing->names.append(name, std::strlen(name) + 1);
    listing->types.push_back(static_cast<char>(type));
}

bool matches(const FindState* s, const char* name)
{
    auto* n = reinterpret_cast<const unsigned char*>(name);
    if (s->starSuffix)
        return matchSuffix(reinterpret_cast<const unsigned char*>(s->pattern.c_str()) + 1, s->pattern.size() - 1, n);
    return s->matchAll || matchPlain(reinterpret_cast<const unsigned char*>(s->pattern.c_str()), n) ||
           (!s->stem.empty() && matchPlain(reinterpret_cast<const unsigned char*>(s->stem.c_str()), n));
}

// Next matching entry of a listing; sets errno 0 at the end like readNext.
bool readNextListed(FindState* s, WIN32_FIND_DATA* data)
{
    const std::string& names = s->listed->names;
    while (s->cursor < names.size()) {
        const char* name = names.c_str() + s->cursor;
        s->cursor += std::strlen(name) + 1;
        unsigned char type = static_cast<unsigned char>(s->listed->types[s->typeCursor++]);
        if (!matches(s, name))
            continue;
        const char* lookup = name;
        if (!s->below.empty()) {
            s->lookupName.assign(s->below).append(name);
            lookup = s->lookupName.c_str();
        }
        if (statEntry(s->pathFd, name, type, data, lookup))
            return true;
    }
    errno = 0;
    return false;
}

// Large batches: most directories come in one call (and the one that finds the end).
constexpr size_t kEntryBuffer = 32768;

// The next raw entry, or null with errno 0 at the end or the error otherwise.
dirent64* nextEntry(FindState* s)
{
    for (;;) {
        if (s->bufferPos >= s->bufferEnd) {
            if (!s->buffer)
                s->buffer.reset(new char[kEntryBuffer]);
            ssize_t n = getdents64(s->dirFd, s->buffer.get(), kEntryBuffer);
            if (n <= 0) {
                if (n == 0)
                    errno = 0;
                return nullptr;
            }
            s->bufferPos = 0;
            s->bufferEnd = static_cast<size_t>(n);
        }
        auto* e = reinterpret_cast<dirent64*>(s->buffer.get() + s->bufferPos);
        s->bufferPos += e->d_reclen;
        // A slot without an inode is a deleted entry that some file systems still
        // hand out; readdir never showed those.
        if (e->d_ino != 0)
            return e;
    }
}

// Next entry of the open directory that matches; sets errno 0 at the end.
bool readNext(FindState* s, WIN32_FIND_DATA* data)
{
    if (s->listed)
        return readNextListed(s, data);
    int fd = s->dirFd;
    for (;;) {
        errno = 0;
        dirent64* e = nextEntry(s);
        if (!e) {
            if (s->capture && errno == 0)
                s->capture->complete = true;
            return false;
        }
        if (!matches(s, e->d_name))
            continue;
        if (s->op == FindExSearchLimitToDirectories) {
            if (e->d_type == DT_DIR) {
                // The directory type is known without a stat; the walk that asked
                // only needs names and attributes.
                std::memset(data, 0, sizeof *data);
                data->dwFileAttributes = FILE_ATTRIBUTE_DIRECTORY;
                if (e->d_name[0] == '.' && std::strcmp(e->d_name, ".") != 0 && std::strcmp(e->d_name, "..") != 0)
                    data->dwFileAttributes |= FILE_ATTRIBUTE_HIDDEN;
                std::memcpy(data->cFileName, e->d_name, strnlen(e->d_name, MAX_PATH - 1));
                return true;
            }
            if (e->d_type != DT_UNKNOWN) {
                if (s->capture)
                    keep(s->capture, e->d_name, e->d_type);
                continue;
            }
        }
        if (statEntry(fd, e->d_name, e->d_type, data)) {
            if (s->capture && !(data->dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY))
                keep(s->capture, e->d_name, e->d_type);
            return true;
        }
        if (s->capture)
            keep(s->capture, e->d_name, e->d_type);
    }
}

void splitSearch(const char* fileName, std::string& dir, std::string& pattern)
{
    std::string path(fileName);
    for (char& c : path)
        if (c == '\\')
            c = '/';
    size_t slash = path.rfind('/');
    if (slash == std::string::npos) {
        dir = ".";
        pattern = path;
    } else {
        pattern.assign(path, slash + 1, std::string::npos);
        path.resize(slash == 0 ? 1 : slash);
        dir = std::move(path);
    }
}

void destroy(FindState* s)
{
    if (s->dirFd >= 0)
        close(s->dirFd);
    if (s->pathFd >= 0 && s->ownsPathFd)
        close(s->pathFd);
    delete s;
}

void setPattern(FindState* s, const std::string& pattern, FINDEX_SEARCH_OPS op)
{
    s->pattern = pattern;
    s->matchAll = pattern == "*" || pattern == "*.*";
    s->op = op;
    if (pattern.size() > 2 && pattern.compare(pattern.size() - 2, 2, ".*") == 0)
        s->stem = pattern.substr(0, pattern.size() - 2);
    s->starSuffix = !s->matchAll && isStarSuffix(reinterpret_cast<const unsigned char*>(pattern.c_str()));
}

HANDLE publish(FindState* s)
{
    {
        std::lock_guard<std::mutex> lock(handlesMutex());
        handles().insert(s);
    }
    SetLastError(ERROR_SUCCESS);
    return static_cast<HANDLE>(s);
}

bool sameAsListed(const struct stat& st, const ZelDirectoryListing& listing)
{
    return static_cast<unsigned long long>(st.st_dev) == listing.device &&
           static_cast<unsigned long long>(st.st_ino) == listing.inode &&
           static_cast<long long>(st.st_ctim.tv_sec) == listing.changeSeconds &&
           static_cast<long>(st.st_ctim.tv_nsec) == listing.changeNanoseconds;
}

// Network and user-space file systems may cache attributes or take their times from
// another machine's clock, so a folder there can change without its time moving on
// our side. Only file systems whose times this kernel sets itself qualify.
bool typeSetsLocalTimes(unsigned long type)
{
    switch (type) {
    case 0xEF53UL:     // ext2, ext3, ext4
    case 0x58465342UL: // xfs
    case 0x9123683EUL: // btrfs
    case 0x01021994UL: // tmpfs
    case 0xF2F52010UL: // f2fs
    case 0x2FC12FC1UL: // zfs
    case 0x794C7630UL: // overlayfs
        return true;
    default:
        return false;
    }
}

// A walk asks this for every folder, nearly always of one file system, so the
// answer for the last device is kept for a moment. A device number can come back
// for another file system only after an unmount and a mount, which the short
// life of the answer covers.
bool timesAreLocal(int fd, unsigned long long device)
{
    struct Known {
        unsigned long long device = 0;
        bool local = false;
        long long until = 0; // CLOCK_MONOTONIC_COARSE, nanoseconds
    };
    thread_local Known known;
    constexpr long long kKeepNs = 250'000'000;
    timespec now{0, 0};
    clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
    const long long t = static_cast<long long>(now.tv_sec) * 1'000'000'000LL + now.tv_nsec;
    if (known.until > t && known.device == device)
        return known.local;
    struct statfs fs;
    if (fstatfs(fd, &fs) != 0)
        return false;
    known = {device, typeSetsLocalTimes(static_cast<unsigned long>(fs.f_type)), t + kKeepNs};
    return known.local;
}

// Notes who the directory is and when it last changed, before any entry is read.
// A later change shows as another status-change time only if it falls into another
// step of the file system's clock. Those steps are the kernel's coarse tick, or the
// file system's own resolution (10 ms on some, whole seconds on others, where the
// nanoseconds always read 0). So the listing vouches for the directory only if its
// time has a sub-second part and lies well before the reading began.
void stampListing(ZelDirectoryListing* listing, int fd, const timespec& before)
{
    constexpr long long kSettledNs = 20'000'000;
    struct stat st;
    if (fstat(fd, &st) != 0)
        return;
    listing->device = static_cast<unsigned long long>(st.st_dev);
    listing->inode = static_cast<unsigned long long>(st.st_ino);
    listing->changeSeconds = static_cast<long long>(st.st_ctim.tv_sec);
    listing->changeNanoseconds = static_cast<long>(st.st_ctim.tv_nsec);
    const long long changed = static_cast<long long>(st.st_ctim.tv_sec) * 1'000'000'000LL + st.st_ctim.tv_nsec;
    const long long start = static_cast<long long>(before.tv_sec) * 1'000'000'000LL + before.tv_nsec;
    listing->trustworthy = st.st_ctim.tv_nsec != 0 && changed + kSettledNs < start &&
                          timesAreLocal(fd, static_cast<unsigned long long>(st.st_dev));
}

// "dir" as its parent and its last name, for a lookup one step below the parent;
// false where there is no such split ("/", or a name without a separator).
bool splitParent(const std::string& dir, std::string& parent, std::string& child)
{
    size_t slash = dir.rfind('/');
    if (slash == std::string::npos || slash + 1 >= dir.size())
        return false;
    parent.assign(dir, 0, slash == 0 ? 1 : slash);
    child.assign(dir, slash + 1, std::string::npos);
    return true;
}

// Opens the directory, below its parent when the open folders hold that.
int openDirectory(const std::string& dir, ZelOpenFolders* folders)
{
    std::string parent, child;
    if (folders && splitParent(dir, parent, child)) {
        int parentFd = folders->Open(parent);
        if (parentFd >= 0)
            return openat(parentFd, child.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    }
    return open(dir.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
}

HANDLE openSearch(const char* fileName, WIN32_FIND_DATA* data, FINDEX_SEARCH_OPS op, ZelDirectoryListing* capture,
                  ZelOpenFolders* folders = nullptr)
{
    if (capture)
        *capture = ZelDirectoryListing();
    if (!fileName || !data || !*fileName) {
        SetLastError(fileName && !*fileName ? ERROR_PATH_NOT_FOUND : ERROR_INVALID_PARAMETER);
        return INVALID_HANDLE_VALUE;
    }
    std::string dir, pattern;
    splitSearch(fileName, dir, pattern);

    auto* s = new FindState;
    setPattern(s, pattern, op);
    timespec before{0, 0};
    if (capture)
        clock_gettime(CLOCK_REALTIME_COARSE, &before);
    s->dirFd = openDirectory(dir, folders);
    if (s->dirFd < 0) {
        int err = errno;
        destroy(s);
        SetLastError(err == ENOENT ? ERROR_PATH_NOT_FOUND : ZelWin32ErrorFromErrno(err));
        return INVALID_HANDLE_VALUE;
    }
    if (pattern.empty()) {
        destroy(s);
        SetLastError(ERROR_FILE_NOT_FOUND);
        return INVALID_HANDLE_VALUE;
    }
    // Only a walk that sees every name can stand in for a later pattern search.
    if (capture && s->matchAll && op == FindExSearchLimitToDirectories) {
        stampListing(capture, s->dirFd, before);
        s->capture = capture;
    }

    // A plain name is looked up directly, which is exact and doesn't read a large
    // directory; only when that fails does the case-insensitive scan run.
    bool found = false;
    if (!hasWildcard(pattern)) {
        if (statEntry(s->dirFd, pattern.c_str(), DT_UNKNOWN, data)) {
            s->exactOnly = true;
            found = true;
        }
    }
    if (!found) {
        found = readNext(s, data);
        if (!found) {
            int err = errno;
            destroy(s);
            SetLastError(err == 0 ? ERROR_FILE_NOT_FOUND : ZelWin32ErrorFromErrno(err));
            return INVALID_HANDLE_VALUE;
        }
    }
    return publish(s);
}

} // namespace

FILETIME ZelFileTimeFromUnix(long long seconds, long nanoseconds)
{
    constexpr long long kEpochDiff = 11644473600LL; // 1601-01-01 to 1970-01-01 in seconds
    FILETIME ft{0, 0};
    if (seconds < -kEpochDiff)
        return ft;
    unsigned long long t = static_cast<unsigned long long>(seconds + kEpochDiff) * 10000000ULL +
                           static_cast<unsigned long long>(nanoseconds < 0 ? 0 : nanoseconds) / 100ULL;
    ft.dwLowDateTime = static_cast<DWORD>(t & 0xFFFFFFFFu);
    ft.dwHighDateTime = static_cast<DWORD>(t >> 32);
    return ft;
}

BOOL ZelWildcardMatch(const char* pattern, const char* name)
{
    if (!pattern || !name)
        return FALSE;
    if (std::strcmp(pattern, "*.*") == 0)
        return TRUE;
    auto* p = reinterpret_cast<const unsigned char*>(pattern);
    auto* n = reinterpret_cast<const unsigned char*>(name);
    if (isStarSuffix(p))
        return matchSuffix(p + 1, std::strlen(pattern) - 1, n) ? TRUE : FALSE;
    if (matchPlain(p, n))
        return TRUE;
    size_t len = std::strlen(pattern);
    if (len >= 2 && std::strcmp(pattern + len - 2, ".*") == 0) {
        std::string stem(pattern, len - 2);
        return matchPlain(reinterpret_cast<const unsigned char*>(stem.c_str()), n) ? TRUE : FALSE;
    }
    return FALSE;
}

HANDLE FindFirstFile(const char* fileName, WIN32_FIND_DATA* data)
{
    return FindFirstFileEx(fileName, data, FindExSearchNameMatch);
}

HANDLE FindFirstFileEx(const char* fileName, WIN32_FIND_DATA* data, FINDEX_SEARCH_OPS op)
{
    return openSearch(fileName, data, op, nullptr);
}

HANDLE ZelFindFirstDirectories(const char* fileName, WIN32_FIND_DATA* data, ZelDirectoryListing* listing,
                               ZelOpenFolders* folders)
{
    return openSearch(fileName, data, FindExSearchLimitToDirectories, listing, folders);
}

ZelOpenFolders::~ZelOpenFolders()
{
    if (m_fd >= 0)
        close(m_fd);
}

int ZelOpenFolders::Open(const std::string& folder)
{
    if (m_fd >= 0 && folder == m_folder)
        return m_fd;
    if (m_fd >= 0)
        close(m_fd);
    m_fd = open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
    m_folder = m_fd >= 0 ? folder : std::string();
    return m_fd;
}

HANDLE ZelFindFirstListed(const char* fileName, const ZelDirectoryListing& listing, WIN32_FIND_DATA* data,
                          ZelOpenFolders* folders)
{
    if (!fileName || !data || !*fileName || !listing.complete || !listing.trustworthy)
        return FindFirstFile(fileName, data);
    std::string dir, pattern;
    splitSearch(fileName, dir, pattern);
    if (!hasWildcard(pattern))
        return FindFirstFile(fileName, data);
    auto* s = new FindState;
    setPattern(s, pattern, FindExSearchNameMatch);
    s->listed = &listing;
    // Where nothing is listed that could match, a look at the directory itself is
    // enough to know that it still holds nothing; opening it would cost more.
    bool anyMatch = false;
    while (s->cursor < listing.names.size() && !anyMatch) {
        const char* name = listing.names.c_str() + s->cursor;
        if (matches(s, name)) {
            anyMatch = true;
        } else {
            s->cursor += std::strlen(name) + 1;
            ++s->typeCursor;
        }
    }
    // Anything unexpected here (the directory gone, replaced or changed) is left to
    // the real enumeration, which then reports exactly what it finds.
    // With the parent open, the directory and its entries are looked up one step
    // below it, and nothing needs opening or closing for this directory.
    std::string parent, child;
    int parentFd = folders && splitParent(dir, parent, child) ? folders->Open(parent) : -1;
    struct stat st;
    if (!anyMatch) {
        bool unchanged = (parentFd >= 0 ? fstatat(parentFd, child.c_str(), &st, 0) : stat(dir.c_str(), &st)) == 0 &&
                         sameAsListed(st, listing);
        destroy(s);
        if (!unchanged)
            return FindFirstFile(fileName, data);
        SetLastError(ERROR_FILE_NOT_FOUND);
        return INVALID_HANDLE_VALUE;
    }
    if (parentFd >= 0) {
        if (fstatat(parentFd, child.c_str(), &st, 0) != 0 || !S_ISDIR(st.st_mode) || !sameAsListed(st, listing)) {
            destroy(s);
            return FindFirstFile(fileName, data);
        }
        s->pathFd = parentFd;
        s->ownsPathFd = false;
        s->below = child + "/";
    } else {
        s->pathFd = open(dir.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
        if (s->pathFd < 0 || fstat(s->pathFd, &st) != 0 || !sameAsListed(st, listing)) {
            destroy(s);
            return FindFirstFile(fileName, data);
        }
    }
    if (!readNext(s, data)) {
        destroy(s);
        SetLastError(ERROR_FILE_NOT_FOUND);
        return INVALID_HANDLE_VALUE;
    }
    return publish(s);
}

BOOL FindNextFile(HANDLE find, WIN32_FIND_DATA* data)
{
    FindState* s = lookup(find);
    if (!s) {
        SetLastError(ERROR_INVALID_HANDLE);
        return FALSE;
    }
    if (!data) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    if (s->exactOnly) {
        SetLastError(ERROR_NO_MORE_FILES);
        return FALSE;
    }
    if (readNext(s, data))
        return TRUE;
    SetLastError(errno == 0 ? ERROR_NO_MORE_FILES : ZelWin32ErrorFromErrno(errno));
    return FALSE;
}

BOOL FindClose(HANDLE find)
{
    auto* s = static_cast<FindState*>(find);
    {
        std::lock_guard<std::mutex> lock(handlesMutex());
        if (!handles().erase(s)) {
            SetLastError(ERROR_INVALID_HANDLE);
            return FALSE;
        }
    }
    destroy(s);
    return TRUE;
}
