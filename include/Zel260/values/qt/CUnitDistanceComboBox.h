// The distance unit box of CZelUnitSettingsDistance: an editable drop-down list
// whose items carry their unit number.
#pragma once

#include <Zel260/controls/qt/CZelComboBox.h>
#include <Zel260/values/CZelUnitSettingsDistance.h>

class CZelUnitSettingsDistance::CUnitDistanceComboBox : public CZelComboBox {
public:
    explicit CUnitDistanceComboBox(QWidget* parent = nullptr);
    // The selection's unit when it is one of 21..23, else 21.
    long GetCurrentSelection() const;
};
