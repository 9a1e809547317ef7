// zelconv time: converts a time point between its text, MJD, GPS and stamp forms.
#include "ZelconvCommand.h"

#include <Zel260/platform/CAtlException.h>
#include <Zel260/time/CZelTime.h>
#include <Zel260/time/CZelTimeHelper.h>

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

const char* const Forms[] = {"text", "mjd", "mjdutc", "gps", "stamp"};

bool knownForm(const std::string& f)
{
    for (const char* k : Forms)
        if (f == k)
            return true;
    return false;
}

bool parseNumber(const std::string& s, double& out)
{
    const char* p = s.c_str();
    char* end = nullptr;
    errno = 0;
    out = std::strtod(p, &end);
    return end != p && *end == '\0' && errno == 0 && std::isfinite(out);
}

int fail(const std::string& message)
{
    std::fprintf(stderr, "zelconv: %s\n", message.c_str());
    return 1;
}

bool inRange(double mjd)
{
    double lo, hi;
    CZelTimeHelper::GetPhysicalRange(CZelTimeHelper::eRangeCTime, lo, hi);
    return mjd >= lo && mjd <= hi;
}

int run(ZelconvArgs& args)
{
    const auto from = args.Value("--from");
    const auto to = args.Value("--to");
    const auto templ = args.Value("--template");
    const auto format = args.Value("--format");
    const auto round = args.Value("--round");
    const auto values = args.Positionals();
    std::string error;
    if (!args.Finish(error))
        return ZelconvUsageError(error);
    if (!from || !to)
        return ZelconvUsageError("time needs --from and --to");
    if (!knownForm(*from) || !knownForm(*to))
        return ZelconvUsageError("a form is one of text, mjd, mjdutc, gps, stamp");
    if (templ && format)
        return ZelconvUsageError("give --template or --format, not both");
    if (values.empty())
        return ZelconvUsageError("time needs a VALUE");
    std::string value;
    for (const auto& v : values)
        value += (value.empty() ? "" : " ") + v;

    long roundFlag = 0;
    if (round && !ZelconvParseInt(*round, roundFlag))
        return ZelconvUsageError("--round takes a number (0..5, plus 128 to cut the text)");
    CString pattern;
    if (templ) {
        long index;
        if (!ZelconvParseInt(*templ, index) || index < 0 || index > 31)
            return ZelconvUsageError("--template takes an index 0..31");
        pattern = CZelTime::TimeFormatTemplate(static_cast<unsigned>(index));
    } else if (format) {
        pattern = format->c_str();
    } else {
        pattern = CZelTime::CurrentTimeFormat();
    }

    CZelTime t;
    try {
        if (*from == "text") {
            CString text = value.c_str();
            CString fmt = pattern;
            t.ScanTime(text, fmt);
        } else if (*from == "gps") {
            long week;
            double seconds;
            const size_t space = value.find(' ');
            if (space == std::string::npos || !ZelconvParseInt(value.substr(0, space), week) ||
                !parseNumber(value.substr(space + 1), seconds))
                return ZelconvUsageError("a gps value is WEEK SECONDS");
            const double mjd = CZelTime::GpsTime(static_cast<int>(week), seconds);
            if (!inRange(mjd))
                return fail("time out of range (1970-01-02 to 2030-01-18)");
            t.SetGpsTime(static_cast<int>(week), seconds);
        } else {
            double number;
            if (!parseNumber(value, number))
                return ZelconvUsageError("not a number: " + value);
            double mjd = number;
            if (*from == "mjdutc")
                mjd = number - t.Timezone() / 24.0;
            else if (*from == "stamp")
                mjd = CZelTime(std::int64_t(0)).SetCduFilestamp(number);
            if (!inRange(mjd))
                return fail("time out of range (1970-01-02 to 2030-01-18)");
            t.Mjd(mjd);
        }
    } catch (const CAtlException& e) {
        return fail(e.m_hr == E_FAIL ? "a field of the time is missing or out of range"
                                     : "the calendar can't represent that time");
    }

    if (*to == "text") {
        const CString out = t.Format(pattern, static_cast<int>(roundFlag));
        std::printf("%s\n", out.GetString());
        return 0;
    }
    if (round)
        t.Round(static_cast<int>(roundFlag));
    if (*to == "mjd") {
        std::printf("%.17g\n", t.Mjd());
    } else if (*to == "mjdutc") {
        std::printf("%.17g\n", t.MjdUTC());
    } else if (*to == "gps") {
        int week;
        double seconds;
        if (!t.GetGpsTime(week, seconds))
            return fail("time before the GPS epoch (1980-01-06)");
        std::printf("%d %.17g\n", week, seconds);
    } else {
        // The stamp's fields, YYMMDD.hhmmss, written out rather than as a number so
        // that the digits stay exact.
        std::printf("%02d%02d%02d.%02d%02d%02d\n", t.GetYear() % 100, t.GetMonth(), t.GetDay(), t.GetHour(),
                    t.GetMinute(), t.GetSecond());
    }
    return 0;
}

const ZelconvRegistration registration{{
    "time",
    "time VALUE --from FORM --to FORM [--template N | --format STRFTIME] [--round N]",
    "Converts a local time point. FORM is one of\n"
    "  text     parsed by the template or format, printed the same way\n"
    "  mjd      Modified Julian Date of the local clock, in days\n"
    "  mjdutc   MJD moved by the system zone (MJD + zone / 24)\n"
    "  gps      two numbers: GPS week and seconds of the week\n"
    "  stamp    a file stamp YYMMDD.hhmmss\n"
    "Times must lie between 1970-01-02 and 2030-01-18. Numbers print with %.17g.\n"
    "  --from FORM        form of VALUE\n"
    "  --to FORM          form of the result\n"
    "  --template N       one of the 32 time formats (0..31); default the current one\n"
    "  --format STRFTIME  a strftime template instead (\"%#\" drops leading zeros)\n"
    "  --round N          0 second, 1 minute, 2 hour, 3 millisecond, 4 tenth,\n"
    "                     5 hundredth; add 128 to cut a text at that unit",
    run,
}};

} // namespace
