// The services' texts from the library's string table. Loading goes through this
// one helper so that switching to the library's resource handle is a single change.
#pragma once

#include <Zel260/platform/CString.h>
#include <Zel260/platform/ResourceModule.h>

namespace zelservices {

inline CString LoadServicesString(UINT id)
{
    return CString(ZelFindResourceString(ZelLibraryInstance(), id));
}

} // namespace zelservices
