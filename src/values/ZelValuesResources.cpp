#include "ZelValuesResources.h"

#include <Zel260/platform/ResourceModule.h>

namespace zelvalues {

const char* FindString(UINT id)
{
    const char* text = ZelFindResourceString(ZelLibraryInstance(), id);
    return text ? text : "";
}

CString LoadString(UINT id) { return CString(FindString(id)); }

} // namespace zelvalues
