#include <Zel260/platform/CTimeSpan.h>
#include <Zel260/platform/CAtlException.h>

#include <cinttypes>
#include <cstdio>

CTimeSpan::CTimeSpan(LONG days, int hours, int minutes, int seconds) noexcept
{
    // Unsigned arithmetic keeps absurd field values defined; the result is the same
    // two's-complement number the platform computes.
    std::uint64_t s = static_cast<std::uint64_t>(static_cast<std::int64_t>(days)) * 24u;
    s += static_cast<std::uint64_t>(static_cast<std::int64_t>(hours));
    s *= 60u;
    s += static_cast<std::uint64_t>(static_cast<std::int64_t>(minutes));
    s *= 60u;
    s += static_cast<std::uint64_t>(static_cast<std::int64_t>(seconds));
    m_span = static_cast<__time64_t>(s);
}

CString CTimeSpan::Format(const char* format) const
{
    CString out;
    if (!format)
        return out;
    char buf[32];
    for (const char* p = format; *p; ++p) {
        if (*p != '%') {
            out += *p;
            continue;
        }
        ++p;
        bool noPad = false;
        if (*p == '#') {
            noPad = true;
            ++p;
        }
        switch (*p) {
        case '%':
            if (noPad)
                AtlThrow(E_INVALIDARG);
            out += '%';
            break;
        case 'D':
            std::snprintf(buf, sizeof buf, "%" PRId64, static_cast<std::int64_t>(GetDays()));
            out += buf;
            break;
        case 'H':
            std::snprintf(buf, sizeof buf, noPad ? "%ld" : "%02ld", static_cast<long>(GetHours()));
            out += buf;
            break;
        case 'M':
            std::snprintf(buf, sizeof buf, noPad ? "%ld" : "%02ld", static_cast<long>(GetMinutes()));
            out += buf;
            break;
        case 'S':
            std::snprintf(buf, sizeof buf, noPad ? "%ld" : "%02ld", static_cast<long>(GetSeconds()));
            out += buf;
            break;
        default:
            AtlThrow(E_INVALIDARG);
        }
    }
    return out;
}
