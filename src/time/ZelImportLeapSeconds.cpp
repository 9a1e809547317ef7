#include <Zel260/time/ZelImportLeapSeconds.h>

#include <Zel260/time/CZelTimeHelper.h>

#include "LeapSecondTable.h"

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

namespace {

constexpr long long NtpEpochMjd = 15020; // 1900-01-01
constexpr int TaiMinusGps = 19;

struct Entry {
    double mjd;
    int gpsMinusUtc;
};

bool parseLine(const std::string& line, long long& ntp, long long& tai)
{
    const char* p = line.c_str();
    char* end = nullptr;
    errno = 0;
    ntp = std::strtoll(p, &end, 10);
    if (end == p || errno)
        return false;
    p = end;
    tai = std::strtoll(p, &end, 10);
    if (end == p || errno)
        return false;
    for (p = end; *p == ' ' || *p == '\t' || *p == '\r'; ++p) {
    }
    return *p == '\0' || *p == '#';
}

} // namespace

int ZelImportLeapSeconds(const char* path)
{
    if (!path)
        return 0;
    std::ifstream in(path);
    if (!in)
        return 0;
    std::vector<Entry> entries;
    bool any = false;
    long long lastNtp = -1, lastTai = -1;
    std::string line;
    while (std::getline(in, line)) {
        const size_t first = line.find_first_not_of(" \t\r");
        if (first == std::string::npos || line[first] == '#')
            continue;
        long long ntp, tai;
        if (!parseLine(line, ntp, tai) || ntp < 0 || ntp % 86400 != 0 || ntp <= lastNtp || tai < lastTai)
            return 0;
        lastNtp = ntp;
        lastTai = tai;
        any = true;
        const double mjd = static_cast<double>(NtpEpochMjd + ntp / 86400);
        if (mjd < 44239.0) // before the GPS era
            continue;
        const long long count = tai - TaiMinusGps;
        if (count < 0 || count > 50)
            return 0;
        entries.push_back({mjd, static_cast<int>(count)});
    }
    if (!any)
        return 0;
    double effective = 0;
    CZelTimeHelper::GetLeapSeconds(0.0, &effective); // loads the table
    const size_t before = zeltime::LeapSecondTable().size();
    for (const auto& e : entries)
        CZelTimeHelper::AddLeapSeconds(e.mjd, static_cast<unsigned char>(e.gpsMinusUtc));
    return static_cast<int>(zeltime::LeapSecondTable().size() - before);
}
