// Records shared by the mail classes.
#pragma once

#include <Zel260/platform/CString.h>

namespace ZelMailHelper {

// One mail address: the display name (may be empty) and the address proper
// ("user@host", without angle brackets).
struct MAIL_ADDRESS {
    CString name;
    CString address;
};

} // namespace ZelMailHelper
