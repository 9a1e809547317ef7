#include "mail/MailServices.h"

#include <Zel260/frame/ZelModule.h>

#include <cerrno>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zelmail {

CString DateNowUtc()
{
    // Names of days and months must be English whatever the process locale is,
    // so they are not left to strftime.
    static const char* const days[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    static const char* const months[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                         "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    std::time_t now = std::time(nullptr);
    std::tm t{};
    gmtime_r(&now, &t);
    CString s;
    s.Format("%s, %02d %s %02d %02d:%02d:%02d GMT", days[t.tm_wday % 7], t.tm_mday, months[t.tm_mon % 12],
             t.tm_year % 100, t.tm_hour, t.tm_min, t.tm_sec);
    return s;
}

FileContent::~FileContent()
{
    if (m_map)
        ::munmap(m_map, m_mapSize);
}

unsigned char* FileContent::data()
{
    return m_map ? static_cast<unsigned char*>(m_map) : reinterpret_cast<unsigned char*>(m_copy.data());
}

std::size_t FileContent::size() const { return m_map ? m_mapSize : m_copy.size(); }

bool FileContent::Load(const CString& path)
{
    int fd = ::open(path.GetString(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return false;
    struct stat st {};
    if (::fstat(fd, &st) != 0 || S_ISDIR(st.st_mode)) {
        ::close(fd);
        return false;
    }
    if (S_ISREG(st.st_mode) && st.st_size > 0) {
        // Private and writable, so that an encoder taking a non-const buffer may
        // scribble without touching the file.
        void* p = ::mmap(nullptr, static_cast<std::size_t>(st.st_size), PROT_READ | PROT_WRITE,
                         MAP_PRIVATE, fd, 0);
        if (p != MAP_FAILED) {
            ::close(fd);
            m_map = p;
            m_mapSize = static_cast<std::size_t>(st.st_size);
            return true;
        }
    }
    // Pipes, devices and the like: read until the end.
    char buf[65536];
    for (;;) {
        ssize_t n = ::read(fd, buf, sizeof buf);
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0) {
            ::close(fd);
            m_copy.clear();
            return false;
        }
        if (n == 0)
            break;
        m_copy.append(buf, static_cast<std::size_t>(n));
    }
    ::close(fd);
    return true;
}

void SplitFileName(const CString& path, CString& baseName, CString& extension)
{
    const std::string& p = path.str();
    std::size_t slash = p.find_last_of("/\\");
    std::string name = slash == std::string::npos ? p : p.substr(slash + 1);
    std::size_t dot = name.rfind('.');
    if (dot == std::string::npos) {
        baseName = CString(name);
        extension.Empty();
    } else {
        baseName = CString(name.substr(0, dot));
        extension = CString(name.substr(dot));
    }
}

CString LoadLibraryString(unsigned int id) { return ZelLoadLibraryString(id); }

WaitCursor::WaitCursor() = default;
WaitCursor::~WaitCursor() = default;

} // namespace zelmail
