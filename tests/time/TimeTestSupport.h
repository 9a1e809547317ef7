// Shared set-up of the time tests: a clean leap-second table and format per test,
// and the zone the test program runs in.
#pragma once

#include <Zel260/time/CZelTime.h>

#include "time/LeapSecondTable.h"
#include "time/TimeProfile.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace zeltimetest {

inline std::string Zone()
{
    const char* tz = std::getenv("TZ");
    return tz ? tz : "";
}

// Forgets the stored settings and the loaded table, as in a fresh process with an
// empty profile.
class TimeTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        zeltime::WriteProfileString("LeapSeconds", "KnownLeapSeconds", "");
        zeltime::WriteProfileString("CZelTime", "Time Format (###)", "");
        zeltime::ResetLeapSecondTable();
        CZelTime::StoreCurrentTimeFormat(17); // "%d.%m.%Y %H:%M:%S"
    }
};

} // namespace zeltimetest
