#include <Zel260/values/CZelUnitSettingsAngleLatLon.h>
#include <Zel260/values/CZelUnitSettingsDistance.h>

#include "values/ZelUnitTables.h"

#include <Zel260/services/ZelProfilePath.h>

#include <TestSupport.h>
#include <gtest/gtest.h>

#include "UnitSettingsFixture.h"

namespace {

using namespace zelvalues;

class UnitSettings : public valuestest::UnitSettingsFixture {};

TEST_F(UnitSettings, ConstructionAndForwarding)
{
    CZelUnitSettings plain;
    EXPECT_EQ(plain.Unit(), 2);
    EXPECT_EQ(plain.Precision(), 6);
    EXPECT_EQ(CZelUnitSettingsAngle().Precision(), 5);
    EXPECT_EQ(CZelUnitSettingsAngle().Section(), "CZelUnitSettingsAngle");
    EXPECT_EQ(CZelUnitSettingsAngleLatLon().Precision(), 9);
    EXPECT_EQ(CZelUnitSettingsAngleLatLon().Section(), "CZelUnitSettingsAngleLatLon");
    EXPECT_EQ(CZelUnitSettingsAngle(12, nullptr).Section(), "");
    EXPECT_EQ(CZelUnitSettingsDistance().Precision(), 6);

    CZelUnitSettingsAngle angle(11, "%.*f %U");
    EXPECT_EQ(angle.Format()->Format(), "%.*f dec");
    angle.Unit(14);
    EXPECT_EQ(angle.Format()->Format(), "%.*f grad");
    angle.Format("%.*f[%U]");
    EXPECT_EQ(angle.Format()->Format(), "%.*f[grad]");
    angle.UseSecOnly(1);
    CString abbreviation;
    angle.GetUnitAbbreviation(abbreviation);
    EXPECT_EQ(abbreviation, "cc");

    // Copies own a copy of the format.
    CZelUnitSettingsAngle copy(angle);
    copy.Precision(2);
    EXPECT_NE(copy.Format(), angle.Format());
    EXPECT_EQ(angle.Precision(), 6);
    EXPECT_EQ(copy.Format()->Format(), "%.*f[grad]");
}

TEST_F(UnitSettings, DefaultSettingsOfAngles)
{
    CZelUnitSettingsAngle::DefaultSettings(12, nullptr);
    EXPECT_EQ(ReadStoredUnit(SectionAngle(), KeyAngleNumber(), -1), 12);
    EXPECT_EQ(CZelUnitSettingsAngle::Default().Unit(), 12);
    // The stored unit wins over a later default.
    CZelUnitSettingsAngle::DefaultSettings(14, nullptr);
    EXPECT_EQ(ReadStoredUnit(SectionAngle(), KeyAngleNumber(), -1), 12);
    EXPECT_EQ(CZelUnitSettingsAngle::Default().Unit(), 12);
    // An application that now excludes it gets its own default written.
    const int excluded[] = {12, 0};
    CZelUnitSettingsAngle::DefaultSettings(14, excluded);
    EXPECT_EQ(ReadStoredUnit(SectionAngle(), KeyAngleNumber(), -1), 14);
    EXPECT_EQ(CZelUnitSettingsAngle::Default().Unit(), 14);
    // No-ops: 2, 10, excluded, not an angle unit.
    const int noGrad[] = {14, 11, -5};
    for (long unit : {2L, 10L, 21L, 99L}) {
        CZelUnitSettingsAngle::DefaultSettings(unit, nullptr);
        EXPECT_EQ(CZelUnitSettingsAngle::Default().Unit(), 14) << unit;
    }
    CZelUnitSettingsAngle::DefaultSettings(11, noGrad);
    EXPECT_EQ(CZelUnitSettingsAngle::Default().Unit(), 14);

    // Lat/lon writes its own section and leaves the shared object alone.
    CZelUnitSettingsAngleLatLon::DefaultSettings(13, nullptr);
    EXPECT_EQ(ReadStoredUnit(SectionAngleLatLon(), KeyAngleNumber(), -1), 13);
    EXPECT_EQ(CZelUnitSettingsAngleLatLon::Default().Unit(), 2);
}

TEST_F(UnitSettings, DefaultSettingsOfDistances)
{
    for (long unit : {2L, 20L, 11L})
        CZelUnitSettingsDistance::DefaultSettings(unit);
    EXPECT_EQ(ReadStoredUnit(SectionDistance(), KeyDistanceNumber(), -1), -1);
    CZelUnitSettingsDistance::DefaultSettings(22);
    EXPECT_EQ(CZelUnitSettingsDistance::Default().Unit(), 22);
    CZelUnitSettingsDistance::DefaultSettings(23);
    EXPECT_EQ(ReadStoredUnit(SectionDistance(), KeyDistanceNumber(), -1), 22);
    EXPECT_EQ(CZelUnitSettingsDistance::Default().Unit(), 22);
}

} // namespace
