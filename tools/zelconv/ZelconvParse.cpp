#include "ZelconvCommand.h"

#include <cerrno>
#include <climits>
#include <cstdlib>

bool ZelconvParseInt(const std::string& text, long& out)
{
    char* end = nullptr;
    errno = 0;
    out = std::strtol(text.c_str(), &end, 10);
    return !text.empty() && end && *end == '\0' && errno == 0 && out >= INT_MIN && out <= INT_MAX;
}

bool ZelconvParseUnit(const std::string& text, long& unit)
{
    static const struct {
        const char* name;
        long unit;
    } names[] = {{"decdeg", 11}, {"dms", 12}, {"decdms", 13}, {"grad", 14}, {"gon", 15}, {"decgon", 16},
                 {"rev", 17},    {"rad", 18}, {"m", 21},      {"fts", 22},  {"fti", 23}};
    for (const auto& n : names)
        if (text == n.name) {
            unit = n.unit;
            return true;
        }
    return ZelconvParseInt(text, unit);
}
