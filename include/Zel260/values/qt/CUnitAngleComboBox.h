// The angle unit box of CZelUnitSettingsAngle: an editable drop-down list (neither
// sorted nor owner-drawn) whose items carry their unit number.
#pragma once

#include <Zel260/controls/qt/CZelComboBox.h>
#include <Zel260/values/CZelUnitSettingsAngle.h>

class CZelUnitSettingsAngle::CUnitAngleComboBox : public CZelComboBox {
public:
    explicit CUnitAngleComboBox(QWidget* parent = nullptr);
    // The selection's unit when it is one of 11..18, else 11.
    long GetCurrentSelection() const;
};
