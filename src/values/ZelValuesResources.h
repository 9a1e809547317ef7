// The values folder's one way into the string table, so that the switch to the
// frame's resource handle pair later is one line.
#pragma once

#include <Zel260/platform/CString.h>

namespace zelvalues {

// The text of `id` from the library's string table, empty when it has none.
CString LoadString(UINT id);
// The same without a copy; never null. Valid until the entry is replaced.
const char* FindString(UINT id);

} // namespace zelvalues
