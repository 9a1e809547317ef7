#include <Zel260/values/CZelUnitSettingsAngleLatLon.h>
#include <Zel260/values/qt/CUnitAngleComboBox.h>
#include <Zel260/values/qt/CUnitDistanceComboBox.h>

#include "values/ZelUnitTables.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using namespace zelvalues;

class UnitBoxes : public ::testing::Test {
protected:
    void SetUp() override
    {
        ForgetStoredUnits();
        CZelUnitSettingsAngle::Default() = CZelUnitSettingsAngle();
        CZelUnitSettingsAngleLatLon::Default() = CZelUnitSettingsAngleLatLon();
        CZelUnitSettingsDistance::Default() = CZelUnitSettingsDistance();
    }
};

std::vector<long> unitsOf(const CZelComboBox& box)
{
    std::vector<long> units;
    for (int i = 0; i < box.GetCount(); ++i)
        units.push_back(static_cast<long>(box.GetItemData(i)));
    return units;
}

TEST_F(UnitBoxes, AngleBoxDefaultsAndExclusions)
{
    CZelUnitSettingsAngle::CUnitAngleComboBox box;
    EXPECT_TRUE(box.isEditable());
    CZelUnitSettingsAngle::Default().InitializeUnitAngleComboBox(box, nullptr);
    EXPECT_EQ(unitsOf(box), (std::vector<long>{11, 12, 13, 14, 15, 16, 17, 18}));
    EXPECT_EQ(box.GetLBText(box.GetCurSel()), "Grad [ grad ]");
    EXPECT_EQ(box.GetCurrentSelection(), 14);

    // Grad excluded: the first unit of the list is the default.
    const int noGrad[] = {14, 17, 0};
    CZelUnitSettingsAngle::CUnitAngleComboBox box2;
    CZelUnitSettingsAngle::Default().InitializeUnitAngleComboBox(box2, noGrad);
    EXPECT_EQ(unitsOf(box2), (std::vector<long>{11, 12, 13, 15, 16, 18}));
    EXPECT_EQ(CZelUnitSettingsAngle::Default().GetCurrentSelection(box2), 11);

    // Lat/lon defaults to DMS; a stored unit wins even when excluded (nothing shows).
    CZelUnitSettingsAngleLatLon::CUnitAngleComboBox box3;
    CZelUnitSettingsAngleLatLon::Default().InitializeUnitAngleComboBox(box3, nullptr);
    EXPECT_EQ(box3.GetCurrentSelection(), 12);
    WriteStoredUnit(kSectionAngle, kKeyAngleNumber, kKeyAngleText, 14, "grad");
    CZelUnitSettingsAngle::CUnitAngleComboBox box4;
    CZelUnitSettingsAngle::Default().InitializeUnitAngleComboBox(box4, noGrad);
    EXPECT_EQ(box4.GetCurSel(), -1);
    EXPECT_EQ(box4.GetCurrentSelection(), 11);
}

TEST_F(UnitBoxes, SavingWritesTheProfileAndTheSharedObject)
{
    CZelUnitSettingsAngle::CUnitAngleComboBox box;
    CZelUnitSettingsAngle::Default().InitializeUnitAngleComboBox(box, nullptr);
    box.SetCurSel(4);  // gon
    CZelUnitSettingsAngle::Default().SaveCurrentSelection(box, nullptr);
    EXPECT_EQ(CZelUnitSettingsAngle::Default().Unit(), 15);
    EXPECT_EQ(ReadStoredUnit(kSectionAngle, kKeyAngleNumber, -1), 15);
    // Saving the same unit again writes again and changes nothing.
    CZelUnitSettingsAngle::Default().SaveCurrentSelection(box, nullptr);
    EXPECT_EQ(CZelUnitSettingsAngle::Default().Unit(), 15);

    CZelUnitSettingsAngleLatLon::CUnitAngleComboBox latLonBox;
    CZelUnitSettingsAngleLatLon::Default().InitializeUnitAngleComboBox(latLonBox, nullptr);
    latLonBox.SetCurSel(0);
    CZelUnitSettingsAngleLatLon::Default().SaveCurrentSelection(latLonBox, nullptr);
    EXPECT_EQ(CZelUnitSettingsAngleLatLon::Default().Unit(), 11);
    EXPECT_EQ(ReadStoredUnit(kSectionAngleLatLon, kKeyAngleNumber, -1), 11);
    EXPECT_EQ(CZelUnitSettingsAngle::Default().Unit(), 15);

    CZelUnitSettingsDistance::CUnitDistanceComboBox distanceBox;
    WriteStoredUnit(kSectionDistance, kKeyDistanceNumber, kKeyDistanceText, 23, "fti");
    CZelUnitSettingsDistance::Default().InitializeUnitDistanceComboBox(distanceBox);
    EXPECT_EQ(unitsOf(distanceBox), (std::vector<long>{21, 22, 23}));
    EXPECT_EQ(distanceBox.GetCurrentSelection(), 23);
    distanceBox.SetCurSel(1);
    CZelUnitSettingsDistance::Default().SaveCurrentSelection(distanceBox, nullptr);
    EXPECT_EQ(CZelUnitSettingsDistance::Default().Unit(), 22);
    EXPECT_EQ(ReadStoredUnit(kSectionDistance, kKeyDistanceNumber, -1), 22);
}

} // namespace
