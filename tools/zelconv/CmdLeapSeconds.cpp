// zelconv leapseconds: shows the table of leap seconds, optionally brought up to
// date from a leap-second list first.
#include "ZelconvCommand.h"

#include <Zel260/time/CZelTimeHelper.h>
#include <Zel260/time/ZelImportLeapSeconds.h>

#include <cmath>
#include <cstdio>
#include <vector>

namespace {

int run(ZelconvArgs& args)
{
    const auto file = args.Value("--import");
    std::string error;
    if (!args.Finish(error))
        return ZelconvUsageError(error);
    if (file) {
        const int added = ZelImportLeapSeconds(file->c_str());
        std::fprintf(stderr, "imported %d new row(s) from %s\n", added, file->c_str());
    }
    // Walk the table back from its end: each row's first day, one day before it
    // the row ahead of it.
    struct Row {
        double mjd;
        double count;
    };
    std::vector<Row> rows;
    double at = 1e9;
    for (;;) {
        double effective = 0;
        const double days = CZelTimeHelper::GetLeapSeconds(at, &effective);
        if (effective == 0.0 && days == 0.0)
            break;
        rows.push_back({effective, days * 86400.0});
        at = effective - 1.0;
    }
    for (auto it = rows.rbegin(); it != rows.rend(); ++it) {
        long y, mo, d, h, mi, s;
        double frac;
        CZelTimeHelper::Mjd2Ymd(it->mjd, y, mo, d, h, mi, s, frac);
        std::printf("%.17g %04ld-%02ld-%02ld %.17g\n", it->mjd, y, mo, d, std::round(it->count));
    }
    return 0;
}

const ZelconvRegistration registration{{
    "leapseconds",
    "leapseconds [--import FILE]",
    "Prints the table of leap seconds (GPS - UTC), one row per entry:\n"
    "\"MJD YYYY-MM-DD COUNT\", the MJD and date being the first day of the count.\n"
    "  --import FILE   first add the entries of a leap-seconds.list file (IERS/NTP\n"
    "                  format, e.g. /usr/share/zoneinfo/leap-seconds.list); the table\n"
    "                  is kept in the settings file",
    run,
}};

} // namespace
