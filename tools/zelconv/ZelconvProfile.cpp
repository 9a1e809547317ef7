#include "ZelconvCommand.h"

void ZelconvApplyProfile(const char* path)
{
    (void)path; // wired to the library's profile path once the profile lands
}
