#include <Zel260/values/CZelUnitSettingsAngleLatLon.h>
#include <Zel260/values/qt/CUnitAngleComboBox.h>
#include <Zel260/values/qt/CUnitDistanceComboBox.h>

#include <Zel260/frame/ZelMessages.h>
#include <Zel260/platform/CWnd.h>
#include <Zel260/platform/qt/QtWindowBackend.h>

#include "values/ZelUnitTables.h"

#include <QWidget>

#include <Zel260/services/ZelProfilePath.h>

#include <TestSupport.h>
#include <gtest/gtest.h>

#include "../UnitSettingsFixture.h"

#include <vector>

namespace {

using namespace zelvalues;

class UnitBoxes : public valuestest::UnitSettingsFixture {};

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
    WriteStoredUnit(SectionAngle(), KeyAngleNumber(), KeyAngleText(), 14, "grad");
    CZelUnitSettingsAngle::CUnitAngleComboBox box4;
    CZelUnitSettingsAngle::Default().InitializeUnitAngleComboBox(box4, noGrad);
    EXPECT_EQ(box4.GetCurSel(), -1);
    EXPECT_EQ(box4.GetCurrentSelection(), 11);
}

// Settings made with a unit have no section of their own; a latitude's box must
// still show the unit that saving it stores, the latitudes' own.
TEST_F(UnitBoxes, LatLonSettingsWithoutSectionReadTheLatLonUnit)
{
    WriteStoredUnit(SectionAngle(), KeyAngleNumber(), KeyAngleText(), 14, "grad");
    WriteStoredUnit(SectionAngleLatLon(), KeyAngleNumber(), KeyAngleText(), 16, "gon");
    CZelUnitSettingsAngleLatLon latLon(12, nullptr);
    CZelUnitSettingsAngleLatLon::CUnitAngleComboBox box;
    latLon.InitializeUnitAngleComboBox(box, nullptr);
    EXPECT_EQ(box.GetCurrentSelection(), 16);
    CZelUnitSettingsAngle angle(12, nullptr);
    CZelUnitSettingsAngle::CUnitAngleComboBox angleBox;
    angle.InitializeUnitAngleComboBox(angleBox, nullptr);
    EXPECT_EQ(angleBox.GetCurrentSelection(), 14);
}

TEST_F(UnitBoxes, SavingWritesTheProfileAndTheSharedObject)
{
    CZelUnitSettingsAngle::CUnitAngleComboBox box;
    CZelUnitSettingsAngle::Default().InitializeUnitAngleComboBox(box, nullptr);
    box.SetCurSel(4);  // gon
    CZelUnitSettingsAngle::Default().SaveCurrentSelection(box, nullptr);
    EXPECT_EQ(CZelUnitSettingsAngle::Default().Unit(), 15);
    EXPECT_EQ(ReadStoredUnit(SectionAngle(), KeyAngleNumber(), -1), 15);
    // Saving the same unit again writes again and changes nothing.
    CZelUnitSettingsAngle::Default().SaveCurrentSelection(box, nullptr);
    EXPECT_EQ(CZelUnitSettingsAngle::Default().Unit(), 15);

    CZelUnitSettingsAngleLatLon::CUnitAngleComboBox latLonBox;
    CZelUnitSettingsAngleLatLon::Default().InitializeUnitAngleComboBox(latLonBox, nullptr);
    latLonBox.SetCurSel(0);
    CZelUnitSettingsAngleLatLon::Default().SaveCurrentSelection(latLonBox, nullptr);
    EXPECT_EQ(CZelUnitSettingsAngleLatLon::Default().Unit(), 11);
    EXPECT_EQ(ReadStoredUnit(SectionAngleLatLon(), KeyAngleNumber(), -1), 11);
    EXPECT_EQ(CZelUnitSettingsAngle::Default().Unit(), 15);

    CZelUnitSettingsDistance::CUnitDistanceComboBox distanceBox;
    WriteStoredUnit(SectionDistance(), KeyDistanceNumber(), KeyDistanceText(), 23, "fti");
    CZelUnitSettingsDistance::Default().InitializeUnitDistanceComboBox(distanceBox);
    EXPECT_EQ(unitsOf(distanceBox), (std::vector<long>{21, 22, 23}));
    EXPECT_EQ(distanceBox.GetCurrentSelection(), 23);
    distanceBox.SetCurSel(1);
    CZelUnitSettingsDistance::Default().SaveCurrentSelection(distanceBox, nullptr);
    EXPECT_EQ(CZelUnitSettingsDistance::Default().Unit(), 22);
    EXPECT_EQ(ReadStoredUnit(SectionDistance(), KeyDistanceNumber(), -1), 22);
}

// A change of unit reaches a grandchild window once, with old and new unit; saving
// the same unit again, or with no window, sends nothing.
TEST_F(UnitBoxes, ChangeReachesEveryDescendantOnce)
{
    QWidget top;
    QWidget child(&top);
    QWidget grandchild(&child);
    struct Seen {
        UINT message;
        WPARAM oldUnit;
        LPARAM newUnit;
    };
    std::vector<Seen> seen;
    ZelAddMessageHandler(&grandchild, [&seen](UINT message, WPARAM w, LPARAM l, LRESULT& result) {
        if (message != WM_ZEL_UNIT_CHANGED_ANGLE && message != WM_ZEL_UNIT_CHANGED_DISTANCE)
            return false;
        seen.push_back({message, w, l});
        result = 0;
        return true;
    });
    CWnd wnd;
    ASSERT_TRUE(wnd.Attach(ZelHwndFromWidget(&top)));

    CZelUnitSettingsAngle::Default().Unit(12);
    CZelUnitSettingsAngle::CUnitAngleComboBox box(&child);
    CZelUnitSettingsAngle::Default().InitializeUnitAngleComboBox(box, nullptr);
    box.SetCurSel(6);  // revolution
    CZelUnitSettingsAngle::Default().SaveCurrentSelection(box, &wnd);
    ASSERT_EQ(seen.size(), 1u);
    EXPECT_EQ(seen[0].message, WM_ZEL_UNIT_CHANGED_ANGLE);
    EXPECT_EQ(seen[0].oldUnit, 12u);
    EXPECT_EQ(seen[0].newUnit, 17);
    CZelUnitSettingsAngle::Default().SaveCurrentSelection(box, &wnd);
    EXPECT_EQ(seen.size(), 1u);
    box.SetCurSel(0);
    CZelUnitSettingsAngle::Default().SaveCurrentSelection(box, nullptr);
    EXPECT_EQ(seen.size(), 1u);
    EXPECT_EQ(ReadStoredUnit(SectionAngle(), KeyAngleNumber(), -1), 11);

    CZelUnitSettingsDistance::Default().Unit(21);
    CZelUnitSettingsDistance::CUnitDistanceComboBox distanceBox(&top);
    CZelUnitSettingsDistance::Default().InitializeUnitDistanceComboBox(distanceBox);
    distanceBox.SetCurSel(2);
    CZelUnitSettingsDistance::Default().SaveCurrentSelection(distanceBox, &wnd);
    ASSERT_EQ(seen.size(), 2u);
    EXPECT_EQ(seen[1].message, WM_ZEL_UNIT_CHANGED_DISTANCE);
    EXPECT_EQ(seen[1].oldUnit, 21u);
    EXPECT_EQ(seen[1].newUnit, 23);
    wnd.Detach();
}

} // namespace
