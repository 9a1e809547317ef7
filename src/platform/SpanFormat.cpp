#include "platform/SpanFormat.h"

#include <Zel260/platform/CAtlException.h>

#include <cinttypes>
#include <cstdio>

namespace zelplatform {

CString FormatSpanFields(const char* format, std::int64_t days, long hours, long minutes, long seconds)
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
        long v = 0;
        switch (*p) {
        case '%':
            if (noPad)
                AtlThrow(E_INVALIDARG);
            out += '%';
            continue;
        case 'D':
            std::snprintf(buf, sizeof buf, "%" PRId64, days);
            out += buf;
            continue;
        case 'H': v = hours; break;
        case 'M': v = minutes; break;
        case 'S': v = seconds; break;
        default: AtlThrow(E_INVALIDARG);
        }
        std::snprintf(buf, sizeof buf, noPad ? "%ld" : "%02ld", v);
        out += buf;
    }
    return out;
}

} // namespace zelplatform
