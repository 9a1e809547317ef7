// Text of a time span's fields, shared by the two span types.
#pragma once

#include <Zel260/platform/CString.h>

#include <cstdint>

namespace zelplatform {

// Expands %D (days, unpadded), %H, %M, %S (two digits, or unpadded as %#H, %#M,
// %#S) and %% in `format`; null gives "". Throws E_INVALIDARG through AtlThrow on any
// other token and on "%#%".
CString FormatSpanFields(const char* format, std::int64_t days, long hours, long minutes, long seconds);

} // namespace zelplatform
