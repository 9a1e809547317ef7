// The name a program goes by when nothing more specific names it.
#pragma once

#include <Zel260/platform/CString.h>

#include <string>

#include <unistd.h>

namespace zelplatform {

// The file name of the running executable, without its folder; "Application" when
// it can't be read.
inline CString ProgramName()
{
    char path[4096];
    ssize_t n = ::readlink("/proc/self/exe", path, sizeof path - 1);
    if (n <= 0)
        return CString("Application");
    std::string p(path, static_cast<size_t>(n));
    return CString(p.substr(p.rfind('/') + 1));
}

} // namespace zelplatform
