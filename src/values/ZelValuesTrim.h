// Stand-in for the frame's ZelTrimTrailingZeros until the frame's string functions
// are in the tree; same rules.
#pragma once

#include <Zel260/platform/CString.h>

namespace zelvalues {

// Removes trailing zeros behind the locale's decimal separator, keeping one digit
// behind it; knows nothing of exponents ("1.5e+020" loses its last zero).
void TrimTrailingZeros(CString& text);

} // namespace zelvalues
