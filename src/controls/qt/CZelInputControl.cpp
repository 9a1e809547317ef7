#include <Zel260/controls/qt/CZelInputControl.h>
#include <Zel260/controls/qt/CZelInlineControlContainer.h>

#include "ZelQtWindows.h"

#include <Zel260/frame/ZelMessages.h>

#include <QFont>
#include <QFontMetrics>

#include <unordered_map>

namespace {

// Open CZelNotifyEmptyChanged guards per window. Only the GUI thread touches it.
std::unordered_map<HWND, int>& guardCounts()
{
    static auto* m = new std::unordered_map<HWND, int>;
    return *m;
}

} // namespace

LRESULT CZelInputControl::CZelSubclassControl::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_ZEL_INPUT_CONTROL_VALIDATE)
        return m_control->Validate(reinterpret_cast<CString*>(wParam));
    if (message == WM_ZEL_INPUT_CONTROL_VALIDATE_EMPTY)
        return m_control->ValidateEmpty();
    return Default();
}

CZelInputControl::CZelKeepChangedByUserStatus::CZelKeepChangedByUserStatus(CZelInputControl* control)
    : m_control(control), m_changedByUser(control->GetChangedByUser())
{
}

CZelInputControl::CZelKeepChangedByUserStatus::~CZelKeepChangedByUserStatus()
{
    m_control->SetChangedByUser(m_changedByUser);
}

CZelInputControl::CZelNotifyEmptyChanged::CZelNotifyEmptyChanged(CZelInputControl* control)
    : m_control(control), m_hWnd(control->safeHwnd()), m_emptyAtEntry(control->ValidateEmpty())
{
    if (::IsWindow(m_hWnd))
        ++guardCounts()[m_hWnd];
}

CZelInputControl::CZelNotifyEmptyChanged::~CZelNotifyEmptyChanged()
{
    if (!::IsWindow(m_hWnd))
        return;
    auto& counts = guardCounts();
    auto it = counts.find(m_hWnd);
    if (it == counts.end())
        return; // the window appeared inside the guard
    if (it->second > 1) {
        --it->second;
        return;
    }
    counts.erase(it);
    if (m_control->ValidateEmpty() != m_emptyAtEntry)
        m_control->OnEmptyChanged();
}

int CZelInputControl::CZelNotifyEmptyChanged::GetNestingCount(HWND hWnd)
{
    auto& counts = guardCounts();
    auto it = counts.find(hWnd);
    return it == counts.end() ? 0 : it->second;
}

CZelInputControl::CZelInputControl() = default;

CZelInputControl::~CZelInputControl() = default;

HWND CZelInputControl::safeHwnd() const
{
    CWnd* w = GetSafeWnd();
    return w ? w->GetSafeHwnd() : nullptr;
}

void CZelInputControl::sendToContainer(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (m_container)
        ::SendMessage(m_container, message, wParam, lParam);
}

int CZelInputControl::ResetAttributes()
{
    if (m_subclass.IsHooked())
        return 0;
    m_emptyAllowed = 0;
    m_readOnlyMode = 0;
    return 1;
}

void CZelInputControl::SetupInlineRect(CRect& container, CRect& control, HFONT, unsigned long) { control = container; }

BOOL CZelInputControl::CreateInline(unsigned long, const CRect&, CWnd*, unsigned int, HFONT) { return FALSE; }

BOOL CZelInputControl::HookControl()
{
    HWND h = safeHwnd();
    if (!m_subclass.HookWindow(h))
        return FALSE;
    m_container = zelcontrols::ContainerOf(h);
    return TRUE;
}

BOOL CZelInputControl::UnhookControl() { return m_subclass.UnhookWindow(); }

CString CZelInputControl::GetRawString() const { return CString(); }
CString CZelInputControl::GetString() const { return CString(); }

CString CZelInputControl::GetStringTrimmed() const
{
    CString s = GetString();
    s.Trim();
    return s;
}

int CZelInputControl::SetString(const char* text) { return SetString(CString(text)); }
int CZelInputControl::SetString(const CString&) { return 0; }
short CZelInputControl::GetShort() const { return 0; }
int CZelInputControl::SetShort(short) { return 0; }
unsigned short CZelInputControl::GetUshort() const { return 0; }
int CZelInputControl::SetUshort(unsigned short) { return 0; }
int CZelInputControl::GetInt() const { return 0; }
int CZelInputControl::SetInt(int) { return 0; }
unsigned int CZelInputControl::GetUint() const { return 0; }
int CZelInputControl::SetUint(unsigned int) { return 0; }
long CZelInputControl::GetLong() const { return 0; }
int CZelInputControl::SetLong(long) { return 0; }
unsigned long CZelInputControl::GetUlong() const { return 0; }
int CZelInputControl::SetUlong(unsigned long) { return 0; }
float CZelInputControl::GetFloat() const { return 0; }
int CZelInputControl::SetFloat(float) { return 0; }
double CZelInputControl::GetDouble() const { return 0; }
int CZelInputControl::SetDouble(double) { return 0; }

int CZelInputControl::GetEmptyAllowed() const { return m_emptyAllowed; }

int CZelInputControl::SetEmptyAllowed(int allowed)
{
    if (allowed == m_emptyAllowed)
        return 1;
    CZelNotifyEmptyChanged guard(this);
    m_emptyAllowed = allowed;
    return 1;
}

int CZelInputControl::GetReadOnlyMode() const { return m_readOnlyMode; }

int CZelInputControl::SetReadOnlyMode(int readOnly)
{
    if (readOnly == m_readOnlyMode)
        return 1;
    CZelNotifyEmptyChanged guard(this);
    m_readOnlyMode = readOnly;
    return 1;
}

int CZelInputControl::GetChangedByUser() const { return m_changedByUser; }
void CZelInputControl::SetChangedByUser(int changed) { m_changedByUser = changed; }

CWnd* CZelInputControl::GetContainer() const { return CWnd::FromHandle(m_container); }

void CZelInputControl::SetContainer(CWnd* container) { m_container = container ? container->GetSafeHwnd() : nullptr; }

int CZelInputControl::GetMinWidth() const { return 0; }

BOOL CZelInputControl::GetWindowBoundingRect(RECT* rect) const
{
    QWidget* w = ZelWidgetFromHwnd(safeHwnd());
    if (!w || !rect)
        return FALSE;
    QPoint tl = w->mapToGlobal(QPoint(0, 0));
    *rect = RECT{tl.x(), tl.y(), tl.x() + w->width(), tl.y() + w->height()};
    return TRUE;
}

int CZelInputControl::OnValidateEmpty() { return IsEmpty() && !GetEmptyAllowed() ? 1 : 0; }

int CZelInputControl::ValidateIgnore()
{
    if (GetReadOnlyMode())
        return 1;
    HWND h = safeHwnd();
    if (!::IsWindow(h))
        return 1;
    return zelcontrols::HasVisibleStyle(h) ? 0 : 1;
}

void CZelInputControl::SetFocusInputControl() { zelcontrols::SetFocus(safeHwnd()); }

void CZelInputControl::OnEmptyChanged()
{
    sendToContainer(WM_ZEL_INPUT_CONTROL_EMPTY_CHANGED, static_cast<WPARAM>(::GetDlgCtrlID(safeHwnd())),
                    ValidateEmpty());
}

void CZelInputControl::OnDlgCtrlChildAdded(HWND child)
{
    sendToContainer(WM_ZEL_INPUT_CONTROL_CHILD_ADDED, reinterpret_cast<WPARAM>(safeHwnd()),
                    reinterpret_cast<LPARAM>(child));
}

void CZelInputControl::OnHookDlgCtrl(HWND hWnd)
{
    sendToContainer(WM_ZEL_INPUT_CONTROL_HOOK_DLG_CTRL, reinterpret_cast<WPARAM>(safeHwnd()),
                    reinterpret_cast<LPARAM>(hWnd));
}

void CZelInputControl::OnUnhookDlgCtrl(HWND hWnd)
{
    sendToContainer(WM_ZEL_INPUT_CONTROL_UNHOOK_DLG_CTRL, reinterpret_cast<WPARAM>(safeHwnd()),
                    reinterpret_cast<LPARAM>(hWnd));
}

void CZelInputControl::GetInlineDimensions(long& height1, long& width, long& height2, HFONT font, const char* text)
{
    const QFont f = font ? *reinterpret_cast<const QFont*>(font) : QApplication::font();
    QFontMetrics fm(f);
    const QString s = QString::fromUtf8(text ? text : "");
    height1 = height2 = fm.height() + 4;
    width = fm.horizontalAdvance(s);
}

long CZelInputControl::GetInlineMoveUp(long x, long y) { return x >= y ? 0 : (y - x + 1) / 2; }

void CZelInputControl::SetInlineControlContainerDialogBoxPending(int pending)
{
    if (!m_inline)
        return;
    if (auto* c = dynamic_cast<CZelInlineControlContainer*>(CWnd::FromHandlePermanent(m_container)))
        c->SetDialogBoxPending(pending);
}

CZelInputControl::eState CZelInputControl::Validate(CString* text)
{
    if (ValidateIgnore())
        return eStateValid;
    return OnValidate(text);
}

int CZelInputControl::ValidateEmpty()
{
    if (ValidateIgnore())
        return 0;
    return OnValidateEmpty();
}
