// zelconv demo: one angle and one distance shown in every unit the library knows.
#include "ZelconvCommand.h"

#include <Zel260/pim32/Pim32Angle.h>
#include <Zel260/values/CZelFormat.h>

#include <cstdio>

namespace {

constexpr double kPi = 3.141592653589793;

struct Unit {
    long number;
    const char* name;
    int precision;
};

const Unit kAngleUnits[] = {
    {11, "decimal degree", 6}, {12, "DMS", 9},        {13, "packed DMS", 9},  {14, "grad", 6},
    {15, "gon, c, cc", 8},     {16, "packed gon", 8}, {17, "revolution", 8}, {18, "radian", 8},
};
const Unit kDistanceUnits[] = {
    {21, "metre", 4},
    {22, "US survey foot", 4},
    {23, "international foot", 4},
};

// The number of `unit` that stands for `standard` (radians or metres).
double fromStandard(double standard, long unit, int precision)
{
    switch (unit) {
    case 11: return standard / (kPi / 180);
    case 12:
    case 13: return Pim32Rad2DMS(standard, precision, 0);
    case 14: return standard / (kPi / 200);
    case 15:
    case 16: return Pim32Rad2GCCC(standard, precision, 0);
    case 17: return standard / (2 * kPi);
    case 22: return standard / 0.3048006096012192;
    case 23: return standard / 0.3048;
    default: return standard;
    }
}

CString show(double standard, const Unit& u, int secOnly)
{
    CZelFormat format(u.number, secOnly, 0, nullptr);
    format.Precision(u.precision);
    format.TrimTrailingZeros(1);
    CString text, abbreviation;
    format.ConvertToString(fromStandard(standard, u.number, u.precision), u.number, text);
    format.GetUnitAbbreviation(abbreviation);
    if (!abbreviation.IsEmpty())
        text += " " + abbreviation;
    return text;
}

void table(const char* title, double standard, const Unit* units, size_t count, bool withSeconds)
{
    std::printf("%s\n\n  unit  %-20s %s\n", title, "name", withSeconds ? "text                       seconds only" : "text");
    std::printf("  ----  %-20s %s\n", "--------------------",
                withSeconds ? "-------------------------  -----------------" : "-------------------------");
    for (size_t i = 0; i < count; ++i) {
        const Unit& u = units[i];
        const CString text = show(standard, u, 0);
        // The text may hold the two-byte degree sign: pad by characters, not bytes.
        int chars = 0;
        for (const char* p = text.GetString(); *p; ++p)
            chars += (static_cast<unsigned char>(*p) & 0xC0) != 0x80;
        std::printf("  %4ld  %-20s %s", u.number, u.name, text.GetString());
        if (withSeconds && u.number != 17 && u.number != 18)
            std::printf("%*s%s", chars < 27 ? 27 - chars : 1, "", show(standard, u, 1).GetString());
        std::printf("\n");
    }
    std::printf("\n");
}

int run(ZelconvArgs& args)
{
    std::string error;
    if (!args.Finish(error))
        return ZelconvUsageError(error);
    const double angle = (123 + 27.0 / 60 + 24.4408 / 3600) * kPi / 180;
    const double distance = 1234.5678;
    std::printf("Zel260 values: the same angle and the same distance in every unit\n\n");
    table("Angle of 2.1547 rad (123 deg 27' 24.4408\")", angle, kAngleUnits, std::size(kAngleUnits), true);
    table("Distance of 1234.5678 m", distance, kDistanceUnits, std::size(kDistanceUnits), false);
    std::printf("Try: zelconv format 45.3015 --unit 12 --precision 7\n");
    return 0;
}

const ZelconvRegistration registration({
    "demo",
    "demo",
    "Shows one angle and one distance in every unit of the library, with trailing\n"
    "zeros trimmed and, for angles, in seconds (cc) only.",
    run,
});

} // namespace
