#include <Zel260/platform/PrivateProfile.h>
#include <Zel260/platform/Win32Error.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\v' || c == '\f'; }

std::string_view trim(std::string_view s)
{
    while (!s.empty() && isBlank(s.front()))
        s.remove_prefix(1);
    while (!s.empty() && isBlank(s.back()))
        s.remove_suffix(1);
    return s;
}

char foldCase(char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c; }

bool sameName(std::string_view a, std::string_view b)
{
    if (a.size() != b.size())
        return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (foldCase(a[i]) != foldCase(b[i]))
            return false;
    return true;
}

std::string configFolder()
{
    const char* xdg = std::getenv("XDG_CONFIG_HOME");
    if (xdg && xdg[0] == '/') {
        // Users often write the folder with a trailing "/"; callers join names with
        // their own separator and compare folders as text, so it goes.
        std::string folder(xdg);
        while (folder.size() > 1 && folder.back() == '/')
            folder.pop_back();
        return folder;
    }
    std::string home;
    if (const char* h = std::getenv("HOME"); h && h[0])
        home = h;
    else {
        struct passwd pw;
        struct passwd* found = nullptr;
        std::vector<char> buf(16384);
        if (getpwuid_r(getuid(), &pw, buf.data(), buf.size(), &found) == 0 && found && found->pw_dir)
            home = found->pw_dir;
    }
    if (home.empty())
        home = "/tmp";
    while (home.size() > 1 && home.back() == '/')
        home.pop_back();
    return (home == "/" ? std::string() : home) + "/.config";
}

std::string resolveName(const char* fileName)
{
    if (std::strchr(fileName, '/') || std::strchr(fileName, '\\'))
        return fileName;
    return configFolder() + "/" + fileName;
}

// The bytes of a file, without the zero-fill a std::string would cost on every read.
struct FileBytes {
    std::unique_ptr<char[]> data;
    size_t size = 0;
    size_t skip = 0; // a UTF-8 byte order mark in front
    std::string_view view() const { return {data.get() + skip, size - skip}; }
};

// An open descriptor of `path` with its size in `st`, or -1 when it isn't a readable
// regular file. O_NONBLOCK keeps a FIFO from blocking the open; the S_ISREG test then
// refuses it.
int openRegularFile(const std::string& path, struct stat& st)
{
    int fd = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0)
        return -1;
    if (::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode)) {
        ::close(fd);
        return -1;
    }
    return fd;
}

// The whole file, or false when it isn't a readable regular file.
bool readWholeFile(const std::string& path, FileBytes& out)
{
    struct stat st;
    int fd = openRegularFile(path, st);
    if (fd < 0)
        return false;
    size_t capacity = static_cast<size_t>(st.st_size) + 1; // +1 sees growth at once
    out.data.reset(new char[capacity]);
    size_t got = 0;
    for (;;) {
        if (got == capacity) { // the file grew since fstat
            std::unique_ptr<char[]> bigger(new char[capacity * 2]);
            std::memcpy(bigger.get(), out.data.get(), got);
            out.data = std::move(bigger);
            capacity *= 2;
        }
        ssize_t n = ::read(fd, out.data.get() + got, capacity - got);
        if (n < 0) {
            if (errno == EINTR)
                continue;
            ::close(fd);
            return false;
        }
        if (n == 0)
            break;
        got += static_cast<size_t>(n);
    }
    ::close(fd);
    out.size = got;
    out.skip = (got >= 3 && std::memcmp(out.data.get(), "\xEF\xBB\xBF", 3) == 0) ? 3 : 0;
    return true;
}

enum class Kind { Other, Blank, Comment, Section, Key };

struct Parsed {
    Kind kind = Kind::Other;
    std::string_view name;  // section or key name
    std::string_view value; // key value, trimmed
};

Parsed classify(std::string_view line)
{
    Parsed p;
    std::string_view t = trim(line);
    if (t.empty()) {
        p.kind = Kind::Blank;
    } else if (t.front() == ';') {
        p.kind = Kind::Comment;
    } else if (t.front() == '[') {
        size_t close = t.find(']');
        if (close != std::string_view::npos) {
            p.kind = Kind::Section;
            p.name = trim(t.substr(1, close - 1));
        }
    } else if (size_t eq = t.find('='); eq != std::string_view::npos) {
        p.kind = Kind::Key;
        p.name = trim(t.substr(0, eq));
        p.value = trim(t.substr(eq + 1));
    }
    return p;
}

// Calls f(line) for each line of `text` without its line end, stopping when f
// returns false.
template <class F>
void forEachLine(std::string_view text, F&& f)
{
    size_t pos = 0;
    while (pos < text.size()) {
        const char* nl = static_cast<const char*>(std::memchr(text.data() + pos, '\n', text.size() - pos));
        size_t end = nl ? static_cast<size_t>(nl - text.data()) : text.size();
        if (!f(text.substr(pos, end - pos)))
            return;
        pos = end + 1;
    }
}

std::string_view unquote(std::string_view v)
{
    if (v.size() >= 2 && (v.front() == '"' || v.front() == '\'') && v.back() == v.front())
        return v.substr(1, v.size() - 2);
    return v;
}

// The common read: the value of one key. It is fed the file as it arrives and
// stops as soon as the key or the end of its section is seen, so a key near the top
// of a long file costs only the first block. Only lines that could be a header are
// classified fully until the section is found.
class KeyScanner {
public:
    KeyScanner(std::string_view section, std::string_view key) : m_section(section), m_key(key) {}

    // `text` is everything read so far (it only grows); true when the search is over.
    bool Feed(std::string_view text, bool atEnd)
    {
        while (m_pos < text.size()) {
            if (!m_inSection && !SkipToHeader(text, atEnd))
                return atEnd;
            const char* nl = static_cast<const char*>(std::memchr(text.data() + m_pos, '\n', text.size() - m_pos));
            if (!nl && !atEnd)
                return false; // the line isn't complete yet
            size_t end = nl ? static_cast<size_t>(nl - text.data()) : text.size();
            std::string_view line = text.substr(m_pos, end - m_pos);
            m_pos = end + 1;
            if (Line(line))
                return true;
        }
        return atEnd;
    }
    bool Found() const { return m_found; }
    std::string_view Value() const { return m_value; }

private:
    // Outside the wanted section only headers matter: jump from "[" to "[" instead of
    // from line to line. Leaves m_pos at the start of a line that starts with
    // blanks and "["; false when no such line is in `text` yet (m_pos then stands at
    // the last line start seen).
    bool SkipToHeader(std::string_view text, bool atEnd)
    {
        while (m_pos < text.size()) {
            const char* base = text.data();
            const char* open = static_cast<const char*>(std::memchr(base + m_pos, '[', text.size() - m_pos));
            if (!open) {
                if (!atEnd)
                    if (const char* nl = static_cast<const char*>(memrchr(base + m_pos, '\n', text.size() - m_pos)))
                        m_pos = static_cast<size_t>(nl - base) + 1;
                return false;
            }
            size_t q = static_cast<size_t>(open - base);
            const char* nl = static_cast<const char*>(memrchr(base + m_pos, '\n', q - m_pos));
            size_t lineStart = nl ? static_cast<size_t>(nl - base) + 1 : m_pos;
            size_t i = lineStart;
            while (i < q && isBlank(base[i]))
                ++i;
            if (i == q) {
                m_pos = lineStart;
                return true;
            }
            // A "[" inside a line: go on behind that line.
            const char* next = static_cast<const char*>(std::memchr(open, '\n', text.size() - q));
            if (!next) {
                m_pos = lineStart;
                return false;
            }
            m_pos = static_cast<size_t>(next - base) + 1;
        }
        return false;
    }

    bool Line(std::string_view line)
    {
        size_t i = 0;
        while (i < line.size() && isBlank(line[i]))
            ++i;
        if (i < line.size() && line[i] == '[') {
            Parsed p = classify(line);
            if (p.kind == Kind::Section) {
                if (m_inSection)
                    return true;
                m_inSection = sameName(p.name, m_section);
            }
            return false;
        }
        if (!m_inSection)
            return false;
        Parsed p = classify(line);
        if (p.kind == Kind::Key && sameName(p.name, m_key)) {
            m_value = unquote(p.value);
            m_found = true;
            return true;
        }
        return false;
    }

    std::string_view m_section;
    std::string_view m_key;
    size_t m_pos = 0;
    bool m_inSection = false;
    bool m_found = false;
    std::string_view m_value;
};

// Reads `path` block by block into `file` until the scanner is done. The value
// points into file's bytes. False when the key isn't there or the file can't be read.
bool readValue(const char* fileName, std::string_view section, std::string_view key, FileBytes& file,
               std::string_view& value)
{
    struct stat st;
    int fd = openRegularFile(resolveName(fileName), st);
    if (fd < 0)
        return false;
    constexpr size_t kBlock = 16384;
    size_t capacity = static_cast<size_t>(st.st_size) + 1;
    file.data.reset(new char[capacity]);
    KeyScanner scanner(section, key);
    size_t got = 0;
    bool bomChecked = false;
    for (;;) {
        if (got == capacity) { // the file grew since fstat; no view into the old block is kept
            std::unique_ptr<char[]> bigger(new char[capacity * 2]);
            std::memcpy(bigger.get(), file.data.get(), got);
            file.data = std::move(bigger);
            capacity *= 2;
        }
        ssize_t n = ::read(fd, file.data.get() + got, std::min(kBlock, capacity - got));
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0) {
            ::close(fd);
            return false;
        }
        got += static_cast<size_t>(n);
        file.size = got;
        if (!bomChecked && (got >= 3 || n == 0)) {
            file.skip = (got >= 3 && std::memcmp(file.data.get(), "\xEF\xBB\xBF", 3) == 0) ? 3 : 0;
            bomChecked = true;
        }
        if (bomChecked && scanner.Feed(file.view(), n == 0))
            break;
    }
    ::close(fd);
    value = scanner.Value();
    return scanner.Found();
}

// Copies a double-zero-ended list with Win32's truncation rule.
DWORD copyList(const std::vector<std::string_view>& names, char* buffer, DWORD size)
{
    if (size == 1) {
        buffer[0] = 0;
        return 0;
    }
    DWORD used = 0;
    for (auto name : names) {
        if (static_cast<size_t>(used) + name.size() + 1 > size - 1u) {
            // Cut: as much as fits, then two zero bytes. After an exact fit `used`
            // already stands on the last byte, and nothing more fits.
            size_t room = used < size - 2u ? (size - 2u) - used : 0;
            std::memcpy(buffer + used, name.data(), std::min(room, name.size()));
            buffer[size - 2] = 0;
            buffer[size - 1] = 0;
            return size - 2;
        }
        std::memcpy(buffer + used, name.data(), name.size());
        used += static_cast<DWORD>(name.size());
        buffer[used++] = 0;
    }
    buffer[used] = 0;
    if (used == 0)
        buffer[1] = 0; // size >= 2 here
    return used;
}

DWORD copyText(std::string_view text, char* buffer, DWORD size)
{
    size_t n = std::min<size_t>(text.size(), size - 1u);
    std::memcpy(buffer, text.data(), n);
    buffer[n] = 0;
    return static_cast<DWORD>(n);
}

// ---- writing ---------------------------------------------------------------

struct FileLine {
    std::string_view raw; // without its line end
    Parsed parsed;
};

std::vector<FileLine> splitLines(std::string_view text)
{
    std::vector<FileLine> lines;
    forEachLine(text, [&](std::string_view line) {
        std::string_view body = line;
        if (!body.empty() && body.back() == '\r')
            body.remove_suffix(1);
        lines.push_back({body, classify(body)});
        return true;
    });
    return lines;
}

std::string parentFolder(const std::string& path)
{
    size_t slash = path.rfind('/');
    if (slash == std::string::npos)
        return ".";
    if (slash == 0)
        return "/";
    return path.substr(0, slash);
}

DWORD failWith(DWORD error)
{
    SetLastError(error);
    return FALSE;
}

// Creates a file beside `target` that nobody else uses. Opening with mode 0666
// lets the umask decide the permissions of a new profile, as for any new file.
int createTemp(const std::string& target, std::string& tempPath)
{
    static std::atomic<unsigned> counter{0};
    std::string folder = parentFolder(target);
    std::string base = target.substr(target.rfind('/') == std::string::npos ? 0 : target.rfind('/') + 1);
    for (int attempt = 0; attempt < 100; ++attempt) {
        tempPath = folder + "/." + base + "." + std::to_string(::getpid()) + "." +
                   std::to_string(counter.fetch_add(1)) + ".tmp";
        int fd = ::open(tempPath.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (fd >= 0 || errno != EEXIST)
            return fd;
    }
    errno = EEXIST;
    return -1;
}

BOOL replaceFile(const std::string& target, const std::string& content, bool exists, mode_t mode)
{
    std::string tempPath;
    int fd = createTemp(target, tempPath);
    if (fd < 0) {
        int err = errno;
        return failWith(err == ENOENT || err == ENOTDIR ? ERROR_PATH_NOT_FOUND : ZelWin32ErrorFromErrno(err));
    }
    const char* p = content.data();
    size_t left = content.size();
    int err = 0;
    while (left > 0) {
        ssize_t n = ::write(fd, p, left);
        if (n < 0) {
            if (errno == EINTR)
                continue;
            err = errno;
            break;
        }
        p += n;
        left -= static_cast<size_t>(n);
    }
    if (!err && exists && ::fchmod(fd, mode & 07777) != 0)
        err = errno;
    if (!err && ::fsync(fd) != 0)
        err = errno;
    if (::close(fd) != 0 && !err)
        err = errno;
    if (!err && ::rename(tempPath.c_str(), target.c_str()) != 0)
        err = errno;
    if (err) {
        ::unlink(tempPath.c_str());
        return failWith(ZelWin32ErrorFromErrno(err));
    }
    return TRUE;
}

} // namespace

UINT GetWindowsDirectory(char* buffer, UINT size)
{
    std::string folder = configFolder();
    UINT needed = static_cast<UINT>(folder.size() + 1);
    if (!buffer || size < needed) {
        if (buffer && size > 0)
            buffer[0] = 0;
        return needed;
    }
    std::memcpy(buffer, folder.c_str(), needed);
    return needed - 1;
}

DWORD GetPrivateProfileString(const char* section, const char* key, const char* defaultValue, char* buffer,
                              DWORD size, const char* fileName)
{
    if (!buffer || size == 0)
        return 0;
    FileBytes file;
    if (!section || !key) {
        std::vector<std::string_view> names;
        if (fileName && readWholeFile(resolveName(fileName), file)) {
            std::string_view text = file.view();
            bool inSection = false;
            forEachLine(text, [&](std::string_view line) {
                if (!line.empty() && line.back() == '\r')
                    line.remove_suffix(1);
                Parsed p = classify(line);
                if (!section) {
                    if (p.kind == Kind::Section &&
                        std::none_of(names.begin(), names.end(), [&](auto n) { return sameName(n, p.name); }))
                        names.push_back(p.name);
                } else if (p.kind == Kind::Section) {
                    // Only the first section of that name counts, as for reading a value.
                    if (inSection)
                        return false;
                    inSection = sameName(p.name, trim(section));
                } else if (inSection && p.kind == Kind::Key) {
                    names.push_back(p.name);
                }
                return true;
            });
        }
        return copyList(names, buffer, size);
    }

    std::string_view value;
    if (fileName && readValue(fileName, trim(section), trim(key), file, value))
        return copyText(value, buffer, size);
    std::string_view def = defaultValue ? defaultValue : "";
    while (!def.empty() && (def.back() == ' ' || def.back() == '\t'))
        def.remove_suffix(1);
    return copyText(def, buffer, size);
}

UINT GetPrivateProfileInt(const char* section, const char* key, int defaultValue, const char* fileName)
{
    const UINT fallback = static_cast<UINT>(defaultValue);
    if (!section || !key || !fileName)
        return fallback;
    FileBytes file;
    std::string_view value;
    if (!readValue(fileName, trim(section), trim(key), file, value) || value.empty())
        return fallback;
    size_t i = 0;
    while (i < value.size() && (isBlank(value[i]) || value[i] == '\n'))
        ++i;
    bool negative = false;
    if (i < value.size() && (value[i] == '+' || value[i] == '-'))
        negative = value[i++] == '-';
    std::uint32_t n = 0;
    for (; i < value.size() && value[i] >= '0' && value[i] <= '9'; ++i)
        n = n * 10u + static_cast<std::uint32_t>(value[i] - '0');
    return negative ? 0u - n : n;
}

BOOL WritePrivateProfileString(const char* section, const char* key, const char* value, const char* fileName)
{
    if (!section && !key && !value)
        return TRUE;
    if (!section || !fileName || !fileName[0])
        return failWith(ERROR_INVALID_PARAMETER);

    std::string target = resolveName(fileName);
    struct stat lst;
    if (::lstat(target.c_str(), &lst) == 0 && S_ISLNK(lst.st_mode)) {
        if (char* real = ::realpath(target.c_str(), nullptr)) {
            target = real;
            std::free(real);
        }
    }

    struct stat st;
    bool exists = ::stat(target.c_str(), &st) == 0;
    if (exists && !S_ISREG(st.st_mode))
        return failWith(ERROR_ACCESS_DENIED);
    std::string folder = parentFolder(target);
    struct stat dst;
    if (::stat(folder.c_str(), &dst) != 0 || !S_ISDIR(dst.st_mode))
        return failWith(ERROR_PATH_NOT_FOUND);
    if (exists && ::access(target.c_str(), W_OK) != 0)
        return failWith(ERROR_ACCESS_DENIED);

    FileBytes file;
    if (exists && !readWholeFile(target, file))
        return failWith(ERROR_ACCESS_DENIED);
    std::string_view text = file.view();

    const bool deleting = !key || !value;
    std::vector<FileLine> lines = splitLines(text);
    const char* eol = "\n";
    if (size_t nl = text.find('\n'); nl != std::string_view::npos && nl > 0 && text[nl - 1] == '\r')
        eol = "\r\n";

    // Where each line of the result comes from: an original line, or a new text.
    struct Out {
        std::string_view raw;
        std::string fresh;
        bool isFresh = false;
    };
    std::vector<Out> out;
    out.reserve(lines.size() + 3);
    bool changed = false;

    if (!key) {
        bool skipping = false;
        for (const auto& l : lines) {
            if (l.parsed.kind == Kind::Section)
                skipping = sameName(l.parsed.name, trim(section));
            if (skipping)
                changed = true;
            else
                out.push_back({l.raw, {}, false});
        }
    } else {
        std::string_view keyName = trim(key);
        // The first matching section is the one readers see.
        size_t first = lines.size();
        for (size_t i = 0; i < lines.size(); ++i)
            if (lines[i].parsed.kind == Kind::Section && sameName(lines[i].parsed.name, trim(section))) {
                first = i;
                break;
            }
        size_t end = lines.size();
        size_t lastKey = first;
        size_t match = lines.size();
        if (first < lines.size()) {
            for (size_t i = first + 1; i < lines.size(); ++i) {
                if (lines[i].parsed.kind == Kind::Section) {
                    end = i;
                    break;
                }
                if (lines[i].parsed.kind == Kind::Key) {
                    lastKey = i;
                    if (match == lines.size() && sameName(lines[i].parsed.name, keyName))
                        match = i;
                }
            }
        }
        for (size_t i = 0; i < lines.size(); ++i) {
            const auto& l = lines[i];
            bool inside = first < lines.size() && i > first && i < end;
            if (inside && l.parsed.kind == Kind::Key && sameName(l.parsed.name, keyName)) {
                if (deleting) {
                    changed = true;
                    continue;
                }
                if (i == match) {
                    std::string fresh = std::string(l.parsed.name) + "=" + value;
                    if (fresh != l.raw) {
                        out.push_back({{}, std::move(fresh), true});
                        changed = true;
                    } else {
                        out.push_back({l.raw, {}, false});
                    }
                    continue;
                }
            }
            out.push_back({l.raw, {}, false});
            if (!deleting && match == lines.size() && first < lines.size() && i == lastKey) {
                out.push_back({{}, std::string(keyName) + "=" + value, true});
                changed = true;
            }
        }
        if (!deleting && first == lines.size()) {
            if (!out.empty() && trim(out.back().isFresh ? out.back().fresh : out.back().raw).size() > 0)
                out.push_back({{}, std::string(), true});
            out.push_back({{}, "[" + std::string(section) + "]", true});
            out.push_back({{}, std::string(keyName) + "=" + value, true});
            changed = true;
        }
    }

    if (!changed)
        return TRUE; // nothing to do; a delete never creates the file

    std::string content;
    content.reserve(text.size() + 64);
    for (const auto& o : out) {
        content += o.isFresh ? std::string_view(o.fresh) : o.raw;
        content += eol;
    }
    return replaceFile(target, content, exists, exists ? st.st_mode : 0);
}
