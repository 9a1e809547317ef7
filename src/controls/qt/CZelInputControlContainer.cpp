#include <Zel260/controls/qt/CZelInputControlContainer.h>
#include <Zel260/controls/qt/CZelInputControl.h>

#include "../ControlsString.h"
#include "ZelQtKeys.h"
#include "ZelQtWindows.h"

#include <Zel260/controls/ZelVirtualKeys.h>
#include <Zel260/frame/ZelMessages.h>
#include <Zel260/resources/ZelControlsResourceIds.h>

#include <QAbstractButton>
#include <QFrame>
#include <QGroupBox>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>

#include <algorithm>

namespace {

constexpr UINT kCdnFileOk = static_cast<UINT>(-606);
constexpr UINT kIdOk = 1;
constexpr UINT kIdCancel = 2;
constexpr UINT kIdApply = 12321;
constexpr UINT kIdWizBack = 12323;
constexpr UINT kIdWizNext = 12324;
constexpr UINT kIdWizFinish = 12325;

void collect(QWidget* parent, std::vector<HWND>& out)
{
    for (QObject* o : parent->children()) {
        auto* w = qobject_cast<QWidget*>(o);
        if (!w || w->isWindow())
            continue;
        if (zelcontrols::IsLookedThrough(w))
            collect(w, out);
        else
            out.push_back(ZelHwndFromWidget(w));
    }
}

bool isButtonCommand(UINT id) { return id == kIdOk || id == kIdApply || id == kIdWizNext || id == kIdWizFinish; }

} // namespace

// Signals of plain Qt controls that stand for their WM_COMMAND notifications.
struct CZelInputControlContainer::CZelSubclassDlgItem::Links {
    std::vector<QMetaObject::Connection> connections;
};

// ---------------------------------------------------------------------------------
// The hook on a control

CZelInputControlContainer::CZelSubclassDlgItem::CZelSubclassDlgItem(CZelInputControlContainer* container, HWND owner)
    : m_owner(owner), m_container(container)
{
}

CZelInputControlContainer::CZelSubclassDlgItem::~CZelSubclassDlgItem()
{
    if (m_links) {
        for (auto& c : m_links->connections)
            QObject::disconnect(c);
        delete m_links;
    }
}

BOOL CZelInputControlContainer::CZelSubclassDlgItem::HookItem(HWND hWnd)
{
    if (!HookWindow(hWnd))
        return FALSE;
    QWidget* w = ZelWidgetFromHwnd(hWnd);
    m_class = zelcontrols::WindowClassName(w);
    m_ownerClass = zelcontrols::WindowClassName(ZelWidgetFromHwnd(m_owner));
    if (hWnd != m_owner || !w)
        return TRUE;
    HWND host = m_container->m_host ? m_container->m_host->GetSafeHwnd() : nullptr;
    // Library controls notify by themselves; plain Qt controls are given a voice.
    if (dynamic_cast<CZelInputControl*>(w))
        return TRUE;
    m_links = new Links;
    if (auto* b = qobject_cast<QAbstractButton*>(w); b && !b->property("zelRoutesCommand").toBool()) {
        m_links->connections.push_back(QObject::connect(b, &QAbstractButton::clicked, [hWnd, host] {
            ::SendMessage(host, WM_COMMAND, MAKEWPARAM(static_cast<WORD>(::GetDlgCtrlID(hWnd)), BN_CLICKED),
                          reinterpret_cast<LPARAM>(hWnd));
        }));
    } else if (auto* e = qobject_cast<QLineEdit*>(w)) {
        m_links->connections.push_back(QObject::connect(e, &QLineEdit::textEdited, [hWnd, host] {
            ::SendMessage(host, WM_COMMAND, MAKEWPARAM(static_cast<WORD>(::GetDlgCtrlID(hWnd)), EN_CHANGE),
                          reinterpret_cast<LPARAM>(hWnd));
        }));
    }
    return TRUE;
}

void CZelInputControlContainer::CZelSubclassDlgItem::OnDestroyWindow()
{
    m_container->removeItem(this);
    delete this;
}

LRESULT CZelInputControlContainer::CZelSubclassDlgItem::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    CZelInputControlContainer* c = m_container;
    if (m_ownerId == -1)
        m_ownerId = ::GetDlgCtrlID(m_owner);

    // Cancel must always be reachable: it validates nothing.
    if (m_ownerId == static_cast<int>(kIdCancel)) {
        if (message == WM_SETFOCUS) {
            if (CZelInputControlContainer* active = c->GetActiveContainer())
                active->OnHideValidationText();
            c->SetActiveContainer(c);
        }
        return Default();
    }

    if (c->m_tabHandled && message == WM_KEYDOWN && wParam == VK_TAB &&
        !(GetHookedWindow() != m_owner && m_class == "Edit" && m_ownerClass != "ComboBox")) {
        if (c->OnNextDlgCtl(zelcontrols::ShiftDownNow() ? 1 : 0))
            return 0;
    }

    const HWND current = c->m_topmostFocus;
    if (c->GetActiveContainer() == c && m_owner == current)
        return Default();

    if (message == WM_SETFOCUS) {
        if (m_owner == current && c->GetActiveContainer() == c) {
            m_lastFocusCheck = 1;
        } else {
            m_lastFocusCheck = c->OnDlgItemGainFocus(m_owner);
            if (!m_lastFocusCheck) {
                m_focusRefused = true;
                return 0;
            }
        }
        m_focusRefused = false;
        c->SetActiveContainer(c);
        c->m_topmostFocus = m_owner;
        return Default();
    }
    if (message == WM_MOUSEACTIVATE) {
        // Qt gives the focus before the press arrives; a click whose focus was
        // just refused has been checked already and must not show the text twice.
        if (m_focusRefused && c->FocusIsBlocked()) {
            m_focusRefused = false;
            m_lastFocusCheck = 0;
            return MA_NOACTIVATEANDEAT;
        }
        m_lastFocusCheck = c->OnDlgItemGainFocus(m_owner);
        if (!m_lastFocusCheck)
            return MA_NOACTIVATEANDEAT;
        return Default();
    }
    if (message == WM_KILLFOCUS || (message >= WM_LBUTTONDOWN && message <= WM_RBUTTONDBLCLK)) {
        if (!m_lastFocusCheck)
            return 0;
        return Default();
    }
    if (message == WM_NOTIFY && lParam) {
        auto* hdr = reinterpret_cast<const NMHDR*>(lParam);
        if (hdr->code == kCdnFileOk) {
            unsigned long detail = 0;
            CString text;
            if (CWnd* w = c->ValidateAllDlgCtrls(0, 1, detail, text)) {
                c->ReportFailure(w->GetSafeHwnd(), detail, text);
                return 0;
            }
        }
    }
    return Default();
}

// ---------------------------------------------------------------------------------
// The hook on the host

LRESULT CZelInputControlContainer::CZelSubclassContainer::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    CZelInputControlContainer* c = m_container;
    if (message == WM_ZEL_INPUT_CONTROL_EMPTY_CHANGED) {
        c->OnDlgCtrlEmptyChanged(static_cast<unsigned int>(wParam), static_cast<int>(lParam));
        return 0;
    }
    if (message == WM_ZEL_INPUT_CONTROL_CHILD_ADDED) {
        c->AddDlgCtrlChild(reinterpret_cast<HWND>(wParam), reinterpret_cast<HWND>(lParam));
        return 0;
    }
    if (message == WM_ZEL_INPUT_CONTROL_HOOK_DLG_CTRL) {
        c->HookDlgCtrl(reinterpret_cast<HWND>(lParam));
        return 0;
    }
    if (message == WM_ZEL_INPUT_CONTROL_UNHOOK_DLG_CTRL) {
        c->DeleteDlgCtrlInternal(reinterpret_cast<HWND>(lParam));
        return 0;
    }
    if (message == WM_COMMAND) {
        const WORD code = HIWORD(wParam);
        const HWND from = reinterpret_cast<HWND>(lParam);
        // The reason goes away as soon as the user types.
        if ((code == EN_CHANGE || code == 1) && from && from == zelcontrols::FocusHwnd())
            c->OnHideValidationText();
        const UINT id = LOWORD(wParam);
        if (isButtonCommand(id) && !c->m_hostIsFileDialog) {
            unsigned long detail = 0;
            CString text;
            if (CWnd* w = c->ValidateAllDlgCtrls(0, id, detail, text)) {
                c->ReportFailure(w->GetSafeHwnd(), detail, text);
                return 0;
            }
        }
        return Default();
    }
    if (message == WM_NEXTDLGCTL) {
        if (c->OnNextDlgCtl(static_cast<int>(wParam)))
            return 0;
    }
    return Default();
}

// ---------------------------------------------------------------------------------
// The container

CZelInputControlContainer::CZelInputControlContainer(CWnd* host) : m_host(host) {}

CZelInputControlContainer::~CZelInputControlContainer()
{
    UnhookAllDlgCtrls();
    m_containerHook.UnhookWindow();
}

int CZelInputControlContainer::FocusIsBlocked() { return m_focusBlocked; }

std::vector<HWND> CZelInputControlContainer::GetDlgCtrls() const
{
    std::vector<HWND> out;
    if (QWidget* host = ZelWidgetFromHwnd(m_host ? m_host->GetSafeHwnd() : nullptr))
        collect(host, out);
    return out;
}

CWnd* CZelInputControlContainer::ValidateAllDlgCtrls(int ignoreEmpty, int, unsigned long& detail, CString& text)
{
    detail = 0;
    text.Empty();
    std::vector<HWND> order;
    if (m_topmostFocus)
        order.push_back(m_topmostFocus);
    for (HWND h : GetDlgCtrls())
        order.push_back(h);
    for (HWND h : order) {
        if (!OnValidateDlgItem(ignoreEmpty, h, static_cast<unsigned int>(::GetDlgCtrlID(h)), detail, &text))
            return CWnd::FromHandle(h);
    }
    return nullptr;
}

CWnd* CZelInputControlContainer::GetFirstEmptyDlgItem(unsigned long& detail)
{
    detail = 0;
    for (HWND h : GetDlgCtrls())
        if (OnValidateEmptyDlgItem(h, static_cast<unsigned int>(::GetDlgCtrlID(h)), detail))
            return CWnd::FromHandle(h);
    return nullptr;
}

void CZelInputControlContainer::OnDlgCtrlEmptyChanged(unsigned int, int empty)
{
    if (!m_hooked || m_emptyTrackingOff)
        return;
    const int before = m_emptyFields;
    if (empty) {
        if (m_emptyFields)
            return;
        m_emptyFields = 1;
    } else {
        if (!m_emptyFields)
            return;
        unsigned long detail = 0;
        m_emptyFields = GetFirstEmptyDlgItem(detail) ? 1 : 0;
    }
    if (m_emptyFields != before)
        OnEmptyFieldsChanged(m_emptyFields);
}

int CZelInputControlContainer::OnDlgItemGainFocus(HWND)
{
    const int blockedAtEntry = m_focusBlocked;
    if (m_topmostFocus) {
        unsigned long detail = 0;
        CString text;
        const HWND h = m_topmostFocus;
        const unsigned int id = static_cast<unsigned int>(::GetDlgCtrlID(h));
        if (!OnValidateDlgItem(!m_strictFocus, h, id, detail, &text)) {
            SetActiveContainer(this);
            OnPrepareShowValidationText(h, id, detail, &text);
            m_focusBlocked = 1;
            zelcontrols::SetFocus(h);
            OnShowValidationText(h, id, detail, &text);
            if (m_focusBlocked != blockedAtEntry)
                OnFocusBlockedChanged(1);
            return 0;
        }
    }
    m_focusBlocked = 0;
    if (blockedAtEntry)
        OnFocusBlockedChanged(0);
    return 1;
}

int CZelInputControlContainer::OnValidateDlgItem(int ignoreEmpty, HWND hWnd, unsigned int, unsigned long& detail,
                                                 CString* text)
{
    detail = 0;
    const LRESULT state = ::SendMessage(hWnd, WM_ZEL_INPUT_CONTROL_VALIDATE, reinterpret_cast<WPARAM>(text), 0);
    if (state == CZelInputControl::eStateInvalid)
        return 0;
    if (state == CZelInputControl::eStateEmpty) {
        if (ignoreEmpty)
            return 1;
        if (text)
            *text = zelcontrols::LoadControlsString(IDS_ZEL_FIELD_MUST_NOT_BE_EMPTY);
        return 0;
    }
    return 1;
}

int CZelInputControlContainer::OnValidateEmptyDlgItem(HWND hWnd, unsigned int, unsigned long&)
{
    return ::SendMessage(hWnd, WM_ZEL_INPUT_CONTROL_VALIDATE_EMPTY, 0, 0) ? 1 : 0;
}

int CZelInputControlContainer::OnPrepareShowValidationText(HWND, unsigned int, unsigned long, CString*) { return 0; }
int CZelInputControlContainer::OnShowValidationText(HWND, unsigned int, unsigned long, CString*) { return 0; }
int CZelInputControlContainer::OnHideValidationText() { return 0; }
int CZelInputControlContainer::OnFocusBlockedChanged(int) { return 0; }
int CZelInputControlContainer::OnEmptyFieldsChanged(int) { return 0; }
int CZelInputControlContainer::OnNextDlgCtl(int) { return 0; }

CZelInputControlContainer* CZelInputControlContainer::GetActiveContainer() { return m_activeContainer; }

void CZelInputControlContainer::SetActiveContainer(CZelInputControlContainer* container)
{
    m_activeContainer = container;
}

BOOL CZelInputControlContainer::HookContainer() { return m_containerHook.HookWindow(m_host); }

void CZelInputControlContainer::HookAllDlgCtrls(CRuntimeClass* skip)
{
    m_hooked = 1;
    QWidget* focus = QApplication::focusWidget();
    const std::size_t hookedBefore = m_items.size();
    for (HWND h : GetDlgCtrls()) {
        QWidget* w = ZelWidgetFromHwnd(h);
        if (focus && w && (w == focus || w->isAncestorOf(focus)))
            m_topmostFocus = h;
        if (skip) {
            CWnd* obj = CWnd::FromHandlePermanent(h);
            if (obj && obj->IsKindOf(skip))
                continue;
        }
        auto pending = std::find_if(m_childrenToAdd.begin(), m_childrenToAdd.end(),
                                    [h](const auto& p) { return p.second == h; });
        if (pending != m_childrenToAdd.end()) {
            const HWND control = pending->first;
            m_childrenToAdd.erase(pending);
            AddDlgCtrlChild(control, h);
            continue;
        }
        const bool known = std::any_of(m_items.begin(), m_items.begin() + static_cast<long>(hookedBefore),
                                       [h](const CZelSubclassDlgItem* i) { return i->m_owner == h; });
        if (!known)
            HookDlgCtrlInternal(h);
    }
}

void CZelInputControlContainer::UnhookAllDlgCtrls()
{
    while (!m_items.empty()) {
        CZelSubclassDlgItem* item = m_items.back();
        m_items.pop_back();
        delete item;
    }
    m_hooked = 0;
}

void CZelInputControlContainer::hookTree(HWND hWnd, HWND owner)
{
    auto* item = new CZelSubclassDlgItem(this, owner);
    if (!item->HookItem(hWnd)) {
        delete item;
        return;
    }
    m_items.push_back(item);
    if (QWidget* w = ZelWidgetFromHwnd(hWnd))
        for (QObject* o : w->children())
            if (auto* cw = qobject_cast<QWidget*>(o); cw && !cw->isWindow())
                hookTree(ZelHwndFromWidget(cw), owner);
}

void CZelInputControlContainer::HookDlgCtrlInternal(HWND hWnd)
{
    MakePushlikeIfNotStandardButton(hWnd);
    hookTree(hWnd, hWnd);
}

void CZelInputControlContainer::removeItem(CZelSubclassDlgItem* item) { std::erase(m_items, item); }

void CZelInputControlContainer::UnhookDlgCtrl(HWND hWnd)
{
    std::vector<CZelSubclassDlgItem*> doomed;
    std::erase_if(m_items, [&](CZelSubclassDlgItem* i) {
        if (i->m_owner != hWnd)
            return false;
        doomed.push_back(i);
        return true;
    });
    for (auto it = doomed.rbegin(); it != doomed.rend(); ++it)
        delete *it;
}

void CZelInputControlContainer::DeleteDlgCtrlInternal(HWND hWnd)
{
    std::vector<CZelSubclassDlgItem*> doomed;
    std::erase_if(m_items, [&](CZelSubclassDlgItem* i) {
        if (i->m_owner != hWnd && i->GetHookedWindow() != hWnd)
            return false;
        doomed.push_back(i);
        return true;
    });
    for (auto it = doomed.rbegin(); it != doomed.rend(); ++it)
        delete *it;
}

void CZelInputControlContainer::HookDlgCtrl(HWND hWnd)
{
    if (!m_hooked)
        return;
    UnhookDlgCtrl(hWnd);
    HookDlgCtrlInternal(hWnd);
}

void CZelInputControlContainer::AddDlgCtrlChild(HWND control, HWND child)
{
    if (!m_hooked) {
        const std::pair<HWND, HWND> pair{control, child};
        if (std::find(m_childrenToAdd.begin(), m_childrenToAdd.end(), pair) == m_childrenToAdd.end())
            m_childrenToAdd.push_back(pair);
        return;
    }
    std::vector<CZelSubclassDlgItem*> doomed;
    std::erase_if(m_items, [&](CZelSubclassDlgItem* i) {
        if (i->GetHookedWindow() != child)
            return false;
        doomed.push_back(i);
        return true;
    });
    for (CZelSubclassDlgItem* i : doomed)
        delete i;
    const bool controlHooked = std::any_of(m_items.begin(), m_items.end(),
                                           [control](const CZelSubclassDlgItem* i) {
                                               return i->GetHookedWindow() == control;
                                           });
    if (controlHooked)
        hookTree(child, control);
}

int CZelInputControlContainer::MakePushlikeIfNotStandardButton(HWND hWnd)
{
    const int id = ::GetDlgCtrlID(hWnd);
    if (id == static_cast<int>(kIdOk) || id == static_cast<int>(kIdCancel) || id == static_cast<int>(kIdApply) ||
        id == static_cast<int>(kIdWizBack) || id == static_cast<int>(kIdWizNext) ||
        id == static_cast<int>(kIdWizFinish))
        return 0;
    auto* b = qobject_cast<QPushButton*>(ZelWidgetFromHwnd(hWnd));
    if (!b || b->isCheckable() || b->menu() || b->property("zelPushlike").toBool())
        return 0;
    // Looks and acts as before, but never takes the default from OK when focused.
    b->setDefault(false);
    b->setAutoDefault(false);
    b->setProperty("zelPushlike", true);
    return 1;
}

void CZelInputControlContainer::ReportFailure(HWND hWnd, unsigned long detail, CString& text)
{
    const unsigned int id = static_cast<unsigned int>(::GetDlgCtrlID(hWnd));
    OnPrepareShowValidationText(hWnd, id, detail, &text);
    zelcontrols::SetFocus(hWnd);
    OnShowValidationText(hWnd, id, detail, &text);
}
