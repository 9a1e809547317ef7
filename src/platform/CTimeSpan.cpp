#include <Zel260/platform/CTimeSpan.h>
#include <Zel260/platform/CAtlException.h>

#include "platform/SpanFormat.h"

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
    return zelplatform::FormatSpanFields(format, GetDays(), GetHours(), GetMinutes(), GetSeconds());
}
