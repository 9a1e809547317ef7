#include "ZelValuesResources.h"

#include <Zel260/platform/ResourceModule.h>

namespace zelvalues {

CString LoadString(UINT id)
{
    return CString(ZelFindResourceString(ZelLibraryInstance(), id));
}

} // namespace zelvalues
