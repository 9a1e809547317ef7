// A test that starts from the library's own unit settings and a profile of its own.
#pragma once

#include <Zel260/services/ZelProfilePath.h>
#include <Zel260/values/CZelUnitSettingsAngle.h>
#include <Zel260/values/CZelUnitSettingsAngleLatLon.h>
#include <Zel260/values/CZelUnitSettingsDistance.h>

#include <TestSupport.h>
#include <gtest/gtest.h>

namespace valuestest {

// The shared settings and the stored units outlive a test; every test starts clean.
class UnitSettingsFixture : public ::testing::Test {
protected:
    void SetUp() override
    {
        ZelSetProfilePath(m_dir.file("units.ini").c_str());
        CZelUnitSettingsAngle::Default() = CZelUnitSettingsAngle();
        CZelUnitSettingsAngleLatLon::Default() = CZelUnitSettingsAngleLatLon();
        CZelUnitSettingsDistance::Default() = CZelUnitSettingsDistance();
    }
    void TearDown() override { ZelSetProfilePath(m_dir.file("unused.ini").c_str()); }

    zeltest::TempDir m_dir;
};

} // namespace valuestest
