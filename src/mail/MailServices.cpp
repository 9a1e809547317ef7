#include "mail/MailServices.h"

#include <Zel260/platform/ResourceModule.h>

#include <cerrno>
#include <ctime>
#include <fcntl.h>
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

bool ReadWholeFile(const CString& path, std::string& content)
{
    content.clear();
    int fd = ::open(path.GetString(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return false;
    struct stat st {};
    if (::fstat(fd, &st) == 0 && S_ISDIR(st.st_mode)) {
        ::close(fd);
        return false;
    }
    if (st.st_size > 0)
        content.reserve(static_cast<std::size_t>(st.st_size));
    char buf[65536];
    for (;;) {
        ssize_t n = ::read(fd, buf, sizeof buf);
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0) {
            ::close(fd);
            content.clear();
            return false;
        }
        if (n == 0)
            break;
        content.append(buf, static_cast<std::size_t>(n));
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

CString EncodeBase64(const unsigned char* data, std::size_t size, unsigned int lineLength)
{
    static const char alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    if (!data)
        return CString();
    std::string out;
    out.reserve(size * 4 / 3 + 4 + (lineLength ? 2 * (size * 4 / 3 + 4) / lineLength : 0));
    unsigned int column = 0;
    auto put = [&](char c) {
        out += c;
        if (lineLength && ++column == lineLength) {
            out += "\r\n";
            column = 0;
        }
    };
    std::size_t i = 0;
    for (; i + 3 <= size; i += 3) {
        unsigned v = (data[i] << 16) | (data[i + 1] << 8) | data[i + 2];
        put(alphabet[(v >> 18) & 63]);
        put(alphabet[(v >> 12) & 63]);
        put(alphabet[(v >> 6) & 63]);
        put(alphabet[v & 63]);
    }
    if (i < size) {
        unsigned v = data[i] << 16;
        if (i + 1 < size)
            v |= data[i + 1] << 8;
        put(alphabet[(v >> 18) & 63]);
        put(alphabet[(v >> 12) & 63]);
        if (i + 1 < size)
            put(alphabet[(v >> 6) & 63]);
    }
    // Padding counts every character written, line breaks included.
    while (out.size() % 4)
        out += '=';
    return CString(std::move(out));
}

CString LoadLibraryString(unsigned int id)
{
    return CString(ZelFindResourceString(ZelLibraryInstance(), id));
}

WaitCursor::WaitCursor() = default;
WaitCursor::~WaitCursor() = default;

} // namespace zelmail
