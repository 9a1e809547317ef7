// zelconv format: one number in one unit through CZelFormat.
#include "ZelconvCommand.h"

#include <Zel260/values/CZelFormat.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>

namespace {

bool parseDouble(const std::string& text, double& out)
{
    char* end = nullptr;
    errno = 0;
    out = std::strtod(text.c_str(), &end);
    return !text.empty() && end && *end == '\0';
}

int run(ZelconvArgs& args)
{
    const auto unitText = args.Value("--unit");
    const auto precisionText = args.Value("--precision");
    const auto templ = args.Value("--template");
    const bool trimTrailing = args.Flag("--trim-trailing");
    const bool trimLeading = args.Flag("--trim-leading");
    const bool noSymbols = args.Flag("--no-symbols");
    const bool secOnly = args.Flag("--sec-only");
    const auto positionals = args.Positionals();
    std::string error;
    if (!args.Finish(error))
        return ZelconvUsageError(error);
    if (positionals.size() != 1)
        return ZelconvUsageError("format takes one VALUE");
    double value = 0;
    if (!parseDouble(positionals[0], value))
        return ZelconvUsageError("not a number: " + positionals[0]);
    long unit = 0;
    if (!unitText)
        return ZelconvUsageError("format needs --unit N");
    if (!ZelconvParseInt(*unitText, unit))
        return ZelconvUsageError("not a unit number: " + *unitText);
    long precision = 6;
    if (precisionText && !ZelconvParseInt(*precisionText, precision))
        return ZelconvUsageError("not a precision: " + *precisionText);

    CZelFormat format(unit, secOnly ? 1 : 0, 0, templ ? templ->c_str() : nullptr);
    format.Precision(static_cast<int>(precision));
    format.TrimTrailingZeros(trimTrailing ? 1 : 0);
    format.TrimLeadingZeros(trimLeading ? 1 : 0);
    format.UseDmsSymbols(noSymbols ? 0 : 1);
    CString text;
    format.ConvertToString(value, unit, text);
    std::printf("%s\n", text.GetString());
    return 0;
}

const ZelconvRegistration registration({
    "format",
    "format VALUE --unit N [--precision P] [--trim-trailing] [--trim-leading] [--no-symbols] "
    "[--sec-only] [--template T]",
    "Writes VALUE, a number in unit N, as the library's number formatting does.\n"
    "Units 12 and 15 take packed numbers (ddd.mmss, ggg.ccCC).\n"
    "  --unit N         11 decimal degree, 12 DMS, 13 packed DMS, 14 grad, 15 gon,\n"
    "                   16 packed gon, 17 revolution, 18 radian, 21 metre,\n"
    "                   22 US survey foot, 23 international foot\n"
    "  --precision P    decimals (default 6; below 1 means 6); for units 12 and 15\n"
    "                   the seconds get P-5 decimals (5 when P is below 6)\n"
    "  --trim-trailing  cut trailing zeros, keeping one digit behind the '.'\n"
    "  --trim-leading   leave out zero degrees and minutes (units 12 and 15)\n"
    "  --no-symbols     no degree, minute and second symbols (units 12 and 15)\n"
    "  --sec-only       write angles in seconds (cc)\n"
    "  --template T     a format template (%U unit, %DegOrG %MinOrC %SecOrCC ...)",
    run,
});

} // namespace
