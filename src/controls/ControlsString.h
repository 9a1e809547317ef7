// The controls' texts from the library's string table, through one helper so that
// every text reads the same way.
#pragma once

#include <Zel260/frame/ZelModule.h>
#include <Zel260/platform/CString.h>

namespace zelcontrols {

inline CString LoadControlsString(UINT id) { return ZelLoadLibraryString(id); }

} // namespace zelcontrols
