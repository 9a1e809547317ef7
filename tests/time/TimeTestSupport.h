// Shared set-up of the time tests: a clean leap-second table and format per test,
// and the zone the test program runs in.
#pragma once

#include <Zel260/time/CZelTime.h>

#include <Zel260/services/ZelProfilePath.h>

#include "time/LeapSecondTable.h"
#include "time/TimeProfile.h"

#include <TestSupport.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace zeltimetest {

inline std::string Zone()
{
    const char* tz = std::getenv("TZ");
    return tz ? tz : "";
}

// Each test gets a settings file of its own and forgets the loaded table, as a
// fresh process with an empty profile would; the current format is index 17.
class TimeTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ZelSetProfilePath(m_dir.file("Zel260.INI").c_str());
        zeltime::ResetLeapSecondTable();
        CZelTime::StoreCurrentTimeFormat(17); // "%d.%m.%Y %H:%M:%S"
    }
    void TearDown() override { ZelSetProfilePath(""); }

    zeltest::TempDir m_dir;
};

} // namespace zeltimetest
