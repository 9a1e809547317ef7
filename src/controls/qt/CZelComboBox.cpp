#include <Zel260/controls/qt/CZelComboBox.h>

namespace {
constexpr int kCbErr = -1;
}

CZelComboBox::CZelComboBox(QWidget* parent) : QComboBox(parent) {}

int CZelComboBox::AddString(const char* text)
{
    addItem(QString::fromUtf8(text ? text : ""));
    return count() - 1;
}

int CZelComboBox::SetItemData(int index, DWORD_PTR data)
{
    if (index < 0 || index >= count())
        return kCbErr;
    setItemData(index, QVariant::fromValue<qulonglong>(data));
    return 0;
}

DWORD_PTR CZelComboBox::GetItemData(int index) const
{
    if (index < 0 || index >= count())
        return static_cast<DWORD_PTR>(kCbErr);
    return static_cast<DWORD_PTR>(itemData(index).toULongLong());
}

int CZelComboBox::GetCurSel() const { return currentIndex(); }

int CZelComboBox::SetCurSel(int index)
{
    if (index < 0 || index >= count()) {
        setCurrentIndex(-1);
        return kCbErr;
    }
    setCurrentIndex(index);
    return index;
}

QByteArray CZelComboBox::GetLBText(int index) const
{
    if (index < 0 || index >= count())
        return {};
    return itemText(index).toUtf8();
}
