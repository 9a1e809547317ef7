#include "ZelValuesResources.h"

#include <Zel260/frame/ZelModule.h>

namespace zelvalues {

CString LoadString(UINT id) { return ZelLoadLibraryString(id); }

} // namespace zelvalues
