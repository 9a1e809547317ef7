// The choice of the application's time format: a drop-down of the 32 templates,
// each shown as the current moment in that form, in the order of their indices.
// CZelTime::InitializeTimeFormatComboBox fills it, CZelTime::GetCurrentSelection
// reads it and CZelTime::SaveCurrentSelection makes the choice current, writes it
// to the profile and announces a change with WM_ZEL_FORMAT_CHANGED_TIME.
#pragma once

#include <Zel260/time/CZelTime.h>

#include <Zel260/controls/qt/CZelComboBox.h>

class CZelTime::CTimeFormatComboBox : public CZelComboBox {
public:
    explicit CTimeFormatComboBox(QWidget* parent = nullptr);

    // Combo box style bits of the window class.
    static constexpr UINT CBS_SIMPLE = 0x0001;
    static constexpr UINT CBS_DROPDOWN = 0x0002;
    static constexpr UINT CBS_OWNERDRAWFIXED = 0x0010;
    static constexpr UINT CBS_OWNERDRAWVARIABLE = 0x0020;
    static constexpr UINT CBS_SORT = 0x0100;

    // The style the box is made with: no sorting, no owner drawing, not the simple
    // kind (bits 0x131 cleared), and a drop-down with an edit field. TRUE.
    virtual BOOL PreCreateWindow(UINT& style);
    // The style the widget was made with.
    UINT Style() const { return m_style; }

private:
    UINT m_style = 0;
};
