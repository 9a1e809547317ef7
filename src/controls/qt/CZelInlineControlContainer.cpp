#include <Zel260/controls/qt/CZelInlineControlContainer.h>
#include <Zel260/controls/qt/CZelInputControl.h>

#include "ZelQtWindows.h"

#include <Zel260/frame/ZelMessages.h>

#include <QComboBox>
#include <QEvent>
#include <QPalette>

CZelInlineControlContainer::CZelInlineControlContainer(QWidget* parent)
    : QDialog(parent, Qt::FramelessWindowHint | Qt::Tool), CZelInputControlContainer(this)
{
    Attach(ZelHwndFromWidget(this));
    m_tabHandled = 1;
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Base); // the window background, as list cells have
}

CZelInlineControlContainer::~CZelInlineControlContainer()
{
    UnhookAllDlgCtrls();
    m_containerHook.UnhookWindow();
}

void CZelInlineControlContainer::InitializeContainer(CWnd* owner, int data)
{
    m_closed = 0;
    m_dialogBoxPending = 0;
    m_owner = owner ? owner->GetSafeHwnd() : nullptr;
    m_ownerData = data;
    if (!m_containerHook.IsHooked())
        HookContainer();
    m_hooked = 0;
}

void CZelInlineControlContainer::InitializeControl(const RECT& cell, CZelInputControl* control, HFONT font, int flags,
                                                   unsigned long align)
{
    CRect containerRect(cell);
    CRect controlRect(cell);
    if (control)
        control->SetupInlineRect(containerRect, controlRect, font, static_cast<unsigned long>(flags));
    const int cellWidth = cell.right - cell.left;
    if (containerRect.Width() != cellWidth && align != 0) {
        const int shift = align == 2 ? cellWidth - containerRect.Width() : (cellWidth - containerRect.Width()) / 2;
        containerRect.OffsetRect(shift, 0);
    }
    setGeometry(containerRect.left, containerRect.top, containerRect.Width(), containerRect.Height());
    if (auto* w = dynamic_cast<QWidget*>(control)) {
        if (w->parentWidget() != this)
            w->setParent(this);
        // The control's rectangle is relative to the container's.
        w->setGeometry(controlRect.left, controlRect.top, controlRect.Width(), controlRect.Height());
        w->show();
    }
    show();
    HookAllDlgCtrls(nullptr);
    unsigned long detail = 0;
    m_emptyFields = GetFirstEmptyDlgItem(detail) ? 1 : 0;
    for (HWND h : GetDlgCtrls())
        if (auto* combo = qobject_cast<QComboBox*>(ZelWidgetFromHwnd(h)))
            combo->showPopup();
}

void CZelInlineControlContainer::OnSaveValue(int a, int b)
{
    ::PostMessage(m_owner, WM_ZEL_INPUT_CONTROL_SAVE_VALUE_INLINE, static_cast<WPARAM>(a), b);
}

void CZelInlineControlContainer::OnOK()
{
    m_closed = 1;
    OnSaveValue(0, 0);
    QDialog::accept();
}

void CZelInlineControlContainer::OnCancel()
{
    m_closed = 1;
    ::SendMessage(m_owner, WM_ZEL_INPUT_CONTROL_CANCEL_INLINE, 0, 0);
    QDialog::reject();
}

int CZelInlineControlContainer::OnNextDlgCtl(int previous)
{
    if (!m_tabHandled)
        return 0;
    std::vector<HWND> tabItems;
    for (HWND h : GetDlgCtrls())
        if (QWidget* w = ZelWidgetFromHwnd(h); w && (w->focusPolicy() & Qt::TabFocus) && w->isEnabled())
            tabItems.push_back(h);
    QWidget* focus = QApplication::focusWidget();
    int at = -1;
    for (std::size_t i = 0; i < tabItems.size(); ++i) {
        QWidget* w = ZelWidgetFromHwnd(tabItems[i]);
        if (focus && (w == focus || w->isAncestorOf(focus)))
            at = static_cast<int>(i);
    }
    const int n = static_cast<int>(tabItems.size());
    if (n >= 2 && at >= 0 && (previous ? at > 0 : at < n - 1)) {
        zelcontrols::SetFocus(tabItems[static_cast<std::size_t>(previous ? at - 1 : at + 1)]);
        return 0;
    }
    unsigned long detail = 0;
    CString text;
    if (CWnd* failing = ValidateAllDlgCtrls(0, 0, detail, text)) {
        const HWND h = failing->GetSafeHwnd();
        const unsigned int id = static_cast<unsigned int>(::GetDlgCtrlID(h));
        OnShowValidationText(h, id, detail, &text);
        zelcontrols::SetFocus(h);
        return 1;
    }
    m_closed = 1;
    OnSaveValue(previous ? 0 : 1, previous);
    if (!tabItems.empty())
        ::PostMessage(::GetParent(tabItems.front()), WM_COMMAND, kNextCellCommand, 0);
    QDialog::accept();
    return 1;
}

LRESULT CZelInlineControlContainer::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_COMMAND && lParam == 0) {
        if (LOWORD(wParam) == 1) {
            OnOK();
            return 0;
        }
        if (LOWORD(wParam) == 2) {
            OnCancel();
            return 0;
        }
    }
    return 0;
}

void CZelInlineControlContainer::changeEvent(QEvent* event)
{
    QDialog::changeEvent(event);
    if (event->type() != QEvent::ActivationChange || isActiveWindow() || m_closed || m_dialogBoxPending)
        return;
    QWidget* taker = QApplication::activeWindow();
    if (taker && ((taker->windowFlags() & Qt::ToolTip) == Qt::ToolTip || isAncestorOf(taker)))
        return;
    unsigned long detail = 0;
    CString text;
    if (ValidateAllDlgCtrls(0, 0, detail, text)) {
        QApplication::beep();
        ::PostMessage(m_hWnd, WM_COMMAND, 2, 0);
    } else {
        ::PostMessage(m_hWnd, WM_COMMAND, 1, 0);
    }
}
