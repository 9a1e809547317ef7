// A combo box that holds strings, each with a number as its item data, addressed by
// index as the library's boxes were. Minimal: the unit boxes of the values folder
// are built on it.
#pragma once

#include <Zel260/platform/Win32Types.h>

#include <QComboBox>

class CZelComboBox : public QComboBox {
public:
    explicit CZelComboBox(QWidget* parent = nullptr);

    // Appends `text` (null is empty); returns its index.
    int AddString(const char* text);
    // Item data of `index`; returns 0 on success and -1 (CB_ERR) for a bad index.
    int SetItemData(int index, DWORD_PTR data);
    // Item data of `index`, or -1 (CB_ERR, as a DWORD_PTR) for a bad index.
    DWORD_PTR GetItemData(int index) const;
    // The selected index, or -1 when nothing is selected.
    int GetCurSel() const;
    // Selects `index`; -1 clears the selection. Returns the index, or -1 when it is
    // out of range (and the selection is cleared).
    int SetCurSel(int index);
    int GetCount() const { return count(); }
    void ResetContent() { clear(); }
    // Text of `index` (empty for a bad index) as UTF-8.
    QByteArray GetLBText(int index) const;
};
