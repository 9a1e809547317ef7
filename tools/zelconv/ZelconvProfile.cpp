#include "ZelconvCommand.h"

#include <Zel260/services/ZelProfilePath.h>

#include <string>

#include <unistd.h>

void ZelconvApplyProfile(const char* path)
{
    // A path on the command line means the working directory; the library would
    // take a bare name from the configuration folder.
    std::string full = path ? path : "";
    if (!full.empty() && full[0] != '/') {
        char cwd[4096];
        if (::getcwd(cwd, sizeof cwd))
            full = std::string(cwd) + "/" + full;
    }
    ZelSetProfilePath(full.c_str());
}
