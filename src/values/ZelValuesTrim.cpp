#include "ZelValuesTrim.h"

#include <cstdio>

namespace zelvalues {

void TrimTrailingZeros(CString& text)
{
    char probe[32];
    std::snprintf(probe, sizeof probe, "%f", 1.1);
    const int separator = text.Find(probe[1]);
    if (separator < 0)
        return;
    int length = text.GetLength();
    while (length > separator + 2 && text[length - 1] == '0')
        --length;
    if (length != text.GetLength())
        text = text.Left(length);
}

} // namespace zelvalues
