// zelconv demo: one angle and one distance shown in every unit the library knows.
#include "ZelconvCommand.h"

#include <Zel260/values/CZelFormat.h>
#include <Zel260/values/CZelValueAngleLat.h>
#include <Zel260/values/CZelValueAngleLon.h>

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
    double out = 0.0;
    CZelValue::Convert(standard, unit >= 21 ? 21 : 18, out, unit, precision, 0);
    return out;
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
    // Latitudes and longitudes carry their hemisphere as a letter.
    CZelUnitSettingsAngleLatLon latLon(12, nullptr);
    latLon.Precision(8);
    CZelValueAngleLat lat(&latLon);
    CZelValueAngleLon lon(&latLon);
    lat.SetString("47 22 36.12 N");
    lon.SetString("-122 20 56.5");
    CString latText, lonText;
    lat.GetString(latText);
    lon.GetString(lonText);
    std::printf("Latitude and longitude\n\n  %s\n  %s\n\n", latText.GetString(), lonText.GetString());
    std::printf("Try: zelconv format 45.3015 --unit 12 --precision 7\n"
                "     zelconv angle \"12 30 15.5\" --from dms --to gon --precision 3\n");
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
