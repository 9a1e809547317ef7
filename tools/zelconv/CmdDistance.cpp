// zelconv distance: text in one distance unit to the library's text (or number) in another.
#include "ZelconvCommand.h"
#include "ZelconvValue.h"

#include <Zel260/values/CZelValueDistance.h>

#include <cerrno>
#include <climits>
#include <cstdlib>

namespace {

int run(ZelconvArgs& args)
{
    const auto from = args.Value("--from");
    const auto to = args.Value("--to");
    const bool number = args.Flag("--number");
    const auto positionals = args.Positionals();
    std::string error;
    if (!args.Finish(error))
        return ZelconvUsageError(error);
    if (positionals.size() != 1)
        return ZelconvUsageError("distance takes one TEXT");
    long fromUnit = 0, toUnit = 0;
    if (!from || !ZelconvParseUnit(*from, fromUnit))
        return ZelconvUsageError("distance needs --from UNIT (21..23 or m, fts, fti)");
    if (!to || !ZelconvParseUnit(*to, toUnit))
        return ZelconvUsageError("distance needs --to UNIT (21..23 or m, fts, fti)");

    CZelUnitSettingsDistance settings(toUnit, nullptr);
    CZelValueDistance value(&settings);
    return ZelconvPrintConverted(value, positionals[0].c_str(), fromUnit, toUnit, -1, 0, number);
}

const ZelconvRegistration registration({
    "distance",
    "distance TEXT --from UNIT --to UNIT [--number]",
    "Reads TEXT as a distance in the first unit (strtod: what doesn't scan is 0) and\n"
    "writes it in the second unit. An unknown unit prints 0 and exits with status 1.\n"
    "  --from UNIT      unit of TEXT: 21 or m (metre), 22 or fts (US survey foot),\n"
    "                   23 or fti (international foot); angle units convert as if\n"
    "                   radians were metres\n"
    "  --to UNIT        unit of the output, the same names\n"
    "  --number         the converted number (%.17g) instead of the text",
    run,
});

} // namespace
