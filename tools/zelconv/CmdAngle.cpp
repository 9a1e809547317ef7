// zelconv angle: text in one angle unit to the library's text (or number) in another.
#include "ZelconvCommand.h"
#include "ZelconvValue.h"

#include <Zel260/values/CZelValueAngleLat.h>
#include <Zel260/values/CZelValueAngleLon.h>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

int run(ZelconvArgs& args)
{
    const auto from = args.Value("--from");
    const auto to = args.Value("--to");
    const auto precisionText = args.Value("--precision");
    const bool limit = args.Flag("--limit");
    const bool lat = args.Flag("--lat");
    const bool lon = args.Flag("--lon");
    const bool number = args.Flag("--number");
    const auto positionals = args.Positionals();
    std::string error;
    if (!args.Finish(error))
        return ZelconvUsageError(error);
    if (positionals.size() != 1)
        return ZelconvUsageError("angle takes one TEXT");
    if (lat && lon)
        return ZelconvUsageError("--lat and --lon exclude each other");
    long fromUnit = 0, toUnit = 0;
    if (!from || !ZelconvParseUnit(*from, fromUnit))
        return ZelconvUsageError("angle needs --from UNIT (11..18 or a unit name)");
    if (!to || !ZelconvParseUnit(*to, toUnit))
        return ZelconvUsageError("angle needs --to UNIT (11..18 or a unit name)");
    int precision = -1;
    if (precisionText) {
        char* end = nullptr;
        const long p = std::strtol(precisionText->c_str(), &end, 10);
        if (precisionText->empty() || *end != '\0' || p < -1 || p > 30)
            return ZelconvUsageError("not a precision (-1..30): " + *precisionText);
        precision = static_cast<int>(p);
    }

    // The output's settings: its unit, and a format precision that shows the digits
    // the conversion rounded to (for units 12 and 15 the precision counts decimals of
    // the seconds, which the format writes at precision + 5).
    std::unique_ptr<CZelUnitSettingsAngle> settings;
    if (lat || lon)
        settings = std::make_unique<CZelUnitSettingsAngleLatLon>(toUnit, nullptr);
    else
        settings = std::make_unique<CZelUnitSettingsAngle>(toUnit, nullptr);
    if (precision >= 0)
        settings->Precision(toUnit == 12 || toUnit == 15 ? precision + 5 : precision);
    settings->LimitToCircle(limit ? 1 : 0);

    std::unique_ptr<CZelValueAngle> value;
    if (lat)
        value = std::make_unique<CZelValueAngleLat>(static_cast<CZelUnitSettingsAngleLatLon*>(settings.get()));
    else if (lon)
        value = std::make_unique<CZelValueAngleLon>(static_cast<CZelUnitSettingsAngleLatLon*>(settings.get()));
    else
        value = std::make_unique<CZelValueAngle>(settings.get());

    return ZelconvPrintConverted(*value, positionals[0].c_str(), fromUnit, toUnit, precision, limit ? 1 : 0,
                                 number);
}

const ZelconvRegistration registration({
    "angle",
    "angle TEXT --from UNIT --to UNIT [--precision P] [--limit] [--lat|--lon] [--number]",
    "Reads TEXT as an angle in the first unit, by the library's rules, and writes it in\n"
    "the second unit. An unknown unit prints 0 and exits with status 1.\n"
    "  --from UNIT      unit of TEXT: a number 11..18 or decdeg (11), dms (12),\n"
    "                   decdms (13), grad (14), gon (15), decgon (16), rev (17), rad (18)\n"
    "  --to UNIT        unit of the output, the same names\n"
    "  --precision P    rounding: decimals (of the seconds or cc for dms and gon;\n"
    "                   0 gives five, as the library never writes whole seconds);\n"
    "                   -1 (default) no rounding, text at the format's default\n"
    "  --limit          keep the output within one full circle\n"
    "  --lat            a latitude: wrapped into -pi..pi, written with N or S\n"
    "  --lon            a longitude: wrapped into -pi..pi, written with E or W\n"
    "  --number         the converted number (%.17g) instead of the text",
    run,
});

} // namespace
