// The values folder's one way into the string table.
#pragma once

#include <Zel260/platform/CString.h>

namespace zelvalues {

// The text of `id` from the library's string table, read while the library's
// module is the current resource module; empty when it has none.
CString LoadString(UINT id);

} // namespace zelvalues
