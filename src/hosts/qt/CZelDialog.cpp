#include <Zel260/hosts/qt/CZelDialog.h>
#include <Zel260/hosts/qt/ZelDialogTemplates.h>

#include <Zel260/controls/ZelVirtualKeys.h>
#include <Zel260/frame/ZelMessages.h>
#include <Zel260/frame/ZelModule.h>
#include <Zel260/resources/ZelControlsResourceIds.h>
#include <Zel260/platform/ResourceModule.h>
#include <Zel260/platform/qt/QtWindowBackend.h>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QMainWindow>
#include <QCloseEvent>
#include <QComboBox>
#include <QListWidget>
#include <QMouseEvent>

IMPLEMENT_DYNAMIC(CZelDialog, CWnd)

namespace {

constexpr WORD CBN_SELCHANGE = 1;
constexpr WORD CBN_EDITCHANGE = 5;
constexpr WORD LBN_SELCHANGE = 1;

void sendCommand(HWND to, HWND from, WORD code)
{
    ::SendMessage(to, WM_COMMAND, MAKEWPARAM(static_cast<WORD>(::GetDlgCtrlID(from)), code),
                  reinterpret_cast<LPARAM>(from));
}

// The application's main window: the dialog's owner window if it is one, else
// the first main window among the top-level windows.
QMainWindow* mainWindowOf(QWidget* dialog)
{
    for (QWidget* p = dialog->parentWidget(); p; p = p->parentWidget())
        if (auto* m = qobject_cast<QMainWindow*>(p->window()))
            return m;
    for (QWidget* w : QApplication::topLevelWidgets())
        if (auto* m = qobject_cast<QMainWindow*>(w))
            return m;
    return nullptr;
}

} // namespace

CZelDialog::CZelDialog(UINT templateId, QWidget* parent)
    : QDialog(parent), CZelDialogExtensions(this), m_templateId(templateId)
{
    Attach(ZelHwndFromWidget(this));
}

CZelDialog::~CZelDialog() = default;

BOOL CZelDialog::build(const ZelDialogTemplate* tmpl)
{
    if (!tmpl)
        return FALSE;
    if (!tmpl->caption.IsEmpty())
        setWindowTitle(QString::fromUtf8(tmpl->caption.GetString()));
    tmpl->build(this);
    if (tmpl->width > 0 && tmpl->height > 0) {
        RECT r{0, 0, tmpl->width, tmpl->height};
        ZelMapDialogRect(this, &r);
        resize(r.right, r.bottom);
    }
    routeCommands();
    return TRUE;
}

// Buttons, combo boxes and list boxes speak to the dialog as their Windows
// counterparts do, through WM_COMMAND, so that hooks on the dialog hear them.
void CZelDialog::routeCommands()
{
    const HWND self = m_hWnd;
    for (QWidget* w : findChildren<QWidget*>()) {
        if (w->property("zelRoutesCommand").toBool() || w->window() != this)
            continue;
        const HWND h = ZelHwndFromWidget(w);
        if (auto* b = qobject_cast<QAbstractButton*>(w)) {
            if (::GetDlgCtrlID(h) == 0)
                continue;
            b->setProperty("zelRoutesCommand", true);
            const int id = ::GetDlgCtrlID(h);
            if (id == IDOK || id == ID_APPLY_NOW)
                b->installEventFilter(this);
            QObject::connect(b, &QAbstractButton::clicked, this, [self, h] { sendCommand(self, h, BN_CLICKED); });
        } else if (auto* c = qobject_cast<QComboBox*>(w)) {
            c->setProperty("zelRoutesCommand", true);
            QObject::connect(c, &QComboBox::currentIndexChanged, this, [self, h] { sendCommand(self, h, CBN_SELCHANGE); });
            QObject::connect(c, &QComboBox::editTextChanged, this, [self, h] { sendCommand(self, h, CBN_EDITCHANGE); });
        } else if (auto* l = qobject_cast<QListWidget*>(w)) {
            l->setProperty("zelRoutesCommand", true);
            QObject::connect(l, &QListWidget::currentRowChanged, this, [self, h] { sendCommand(self, h, LBN_SELCHANGE); });
        }
    }
}

INT_PTR CZelDialog::DoModal(HINSTANCE instance)
{
    const ZelDialogTemplate* tmpl = ZelFindDialogTemplate(instance ? instance : AfxGetResourceHandle(), m_templateId);
    if (!tmpl)
        return -1;
    m_modeless = FALSE;
    build(tmpl);
    OnInitDialog();
    return exec();
}

BOOL CZelDialog::Create(HINSTANCE instance, CWnd* parent)
{
    const ZelDialogTemplate* tmpl = ZelFindDialogTemplate(instance ? instance : AfxGetResourceHandle(), m_templateId);
    if (!tmpl)
        return FALSE;
    m_modeless = TRUE;
    if (QWidget* p = parent ? ZelWidgetFromHwnd(parent->GetSafeHwnd()) : nullptr)
        setParent(p, windowFlags());
    build(tmpl);
    OnInitDialog();
    show();
    return TRUE;
}

BOOL CZelDialog::Create(HINSTANCE instance, const char* name, CWnd* parent)
{
    const ZelDialogTemplate* tmpl = ZelFindDialogTemplate(instance ? instance : AfxGetResourceHandle(), name);
    if (!tmpl)
        return FALSE;
    m_modeless = TRUE;
    if (QWidget* p = parent ? ZelWidgetFromHwnd(parent->GetSafeHwnd()) : nullptr)
        setParent(p, windowFlags());
    build(tmpl);
    OnInitDialog();
    show();
    return TRUE;
}

BOOL CZelDialog::CreateChild(HINSTANCE instance, QWidget* parent)
{
    const ZelDialogTemplate* tmpl = ZelFindDialogTemplate(instance ? instance : AfxGetResourceHandle(), m_templateId);
    if (!tmpl)
        return FALSE;
    m_modeless = TRUE;
    m_autoDelete = FALSE;
    setParent(parent, Qt::Widget);
    build(tmpl);
    OnInitDialog();
    return TRUE;
}

BOOL CZelDialog::OnInitDialog()
{
    if (m_toolbarEnabled)
        CreateToolbar();
    // Qt runs an action's shortcut in every window the action is added to.
    if (m_acceleratorsActive && !m_childInDialog)
        if (QMainWindow* main = mainWindowOf(this))
            for (QAction* a : main->findChildren<QAction*>())
                if (!a->shortcut().isEmpty() && !actions().contains(a)) {
                    addAction(a);
                    ++m_accelerators;
                }
    // The title bar's help button (context help) where the window manager has one.
    if (!m_childInDialog)
        setWindowFlag(Qt::WindowContextHelpButtonHint, true);
    GetToolTip();
    InitChildDialogs(TRUE);
    m_initialized = TRUE;
    ::PostMessage(m_hWnd, WM_ZEL_POST_INITDIALOG, 0, 0);
    return TRUE;
}

void CZelDialog::OnPostInitDialog() {}

// A child dialog stays for its parent to close; a modeless one only hides, having no
// result for anyone to read.
void CZelDialog::finish(bool accepted)
{
    HideTooltip();
    if (m_childInDialog)
        return;
    if (m_modeless) {
        hide();
        if (m_autoDelete)
            deleteLater();
        return;
    }
    // Qualified: accept() and reject() of this class lead back to OnOK and OnCancel.
    if (accepted)
        QDialog::accept();
    else
        QDialog::reject();
}

void CZelDialog::OnOK() { finish(true); }

void CZelDialog::OnCancel() { finish(false); }

void CZelDialog::EndDialog(int result)
{
    HideTooltip();
    done(result);
}

void CZelDialog::OnComboBoxSelChange(UINT) {}
void CZelDialog::OnComboBoxEditChange(UINT) {}
void CZelDialog::OnListBoxSelChange(UINT) {}

HWND CZelDialog::GetLastControl() const { return ZelHwndFromWidget(focusWidget()); }

void CZelDialog::OnDisabledOkButtonClicked(UINT)
{
    const HWND last = GetLastControl();
    const LRESULT empty = ::SendMessage(last, WM_ZEL_INPUT_CONTROL_VALIDATE_EMPTY, 0, 0);
    if (!empty) {
        OnEnableOkButton(FALSE);
        return;
    }
    CString text;
    if (empty == 1)
        text = ZelLoadLibraryString(IDS_ZEL_FIELD_MUST_NOT_BE_EMPTY);
    else
        ::SendMessage(last, WM_ZEL_INPUT_CONTROL_VALIDATE, reinterpret_cast<WPARAM>(&text), 0);
    if (QWidget* w = ZelWidgetFromHwnd(last)) {
        const QPoint bottomLeft = w->mapToGlobal(QPoint(0, w->height()));
        ShowToolTipLeftTop(text, bottomLeft.x(), bottomLeft.y(), 3000);
    }
}

BOOL CZelDialog::OnEnableOkButton(BOOL) { return TRUE; }

void CZelDialog::EnableDisable() {}

void CZelDialog::EnableOkButton()
{
    if (m_childInDialog) {
        EnableParentDialogOkButton();
        return;
    }
    const BOOL enable = OnEnableOkButton(FALSE);
    for (int id : {IDOK, ID_APPLY_NOW})
        if (QWidget* w = ZelWidgetFromHwnd(::GetDlgItem(m_hWnd, id)))
            w->setEnabled(enable != 0);
}

void CZelDialog::EnableParentDialogOkButton()
{
    for (QWidget* p = parentWidget(); p; p = p->parentWidget())
        if (auto* d = dynamic_cast<CZelDialog*>(p)) {
            d->EnableOkButton();
            return;
        }
}

BOOL CZelDialog::OnCommand(WPARAM wParam, LPARAM lParam)
{
    const UINT id = LOWORD(wParam);
    const WORD code = HIWORD(wParam);
    const HWND from = reinterpret_cast<HWND>(lParam);
    if (QWidget* w = ZelWidgetFromHwnd(from)) {
        if (qobject_cast<QComboBox*>(w)) {
            if (code == CBN_SELCHANGE)
                OnComboBoxSelChange(id);
            else if (code == CBN_EDITCHANGE)
                OnComboBoxEditChange(id);
            return TRUE;
        }
        if (qobject_cast<QListWidget*>(w)) {
            if (code == LBN_SELCHANGE)
                OnListBoxSelChange(id);
            return TRUE;
        }
    }
    if (code != BN_CLICKED)
        return FALSE;
    if (id == IDOK) {
        OnOK();
        return TRUE;
    }
    if (id == IDCANCEL) {
        OnCancel();
        return TRUE;
    }
    return FALSE;
}

LRESULT CZelDialog::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_ZEL_POST_INITDIALOG) {
        OnPostInitDialog();
        return 0;
    }
    if (message == WM_COMMAND)
        return OnCommand(wParam, lParam);
    return 0;
}

void CZelDialog::accept() { ::SendMessage(m_hWnd, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0); }

void CZelDialog::reject() { ::SendMessage(m_hWnd, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), 0); }

void CZelDialog::mousePressEvent(QMouseEvent* event)
{
    QWidget* child = childAt(event->position().toPoint());
    const int id = child ? ::GetDlgCtrlID(ZelHwndFromWidget(child)) : 0;
    if (child && !child->isEnabled() && (id == IDOK || id == ID_APPLY_NOW)) {
        OnDisabledOkButtonClicked(static_cast<UINT>(id));
        return;
    }
    QDialog::mousePressEvent(event);
}

bool CZelDialog::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonPress && watched->isWidgetType()) {
        auto* w = static_cast<QWidget*>(watched);
        const int id = ::GetDlgCtrlID(ZelHwndFromWidget(w));
        if (!w->isEnabled() && (id == IDOK || id == ID_APPLY_NOW)) {
            OnDisabledOkButtonClicked(static_cast<UINT>(id));
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void CZelDialog::moveEvent(QMoveEvent* event)
{
    HideTooltip();
    QDialog::moveEvent(event);
}

void CZelDialog::resizeEvent(QResizeEvent* event)
{
    QDialog::resizeEvent(event);
    ArrangeItems();
}

BOOL CZelDialog::OnHelpInfo(UINT controlId)
{
    if (m_childInDialog) {
        for (QWidget* p = parentWidget(); p; p = p->parentWidget())
            if (auto* d = dynamic_cast<CZelDialog*>(p))
                return d->OnHelpInfo(controlId);
        return FALSE;
    }
    QMainWindow* main = mainWindowOf(this);
    if (!main)
        return FALSE;
    ::SendMessage(ZelHwndFromWidget(main), WM_HELP, controlId, 0);
    return TRUE;
}

void CZelDialog::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_F1 && event->modifiers() == Qt::NoModifier) {
        // The dialog's own record of its focus child: it holds also while the
        // window isn't the active one.
        QWidget* focus = focusWidget();
        const UINT id = focus && isAncestorOf(focus) ? static_cast<UINT>(::GetDlgCtrlID(ZelHwndFromWidget(focus))) : 0;
        const BOOL before = m_helpKey;
        m_helpKey = TRUE;
        OnHelpInfo(id);
        m_helpKey = before;
        event->accept();
        return;
    }
    QDialog::keyPressEvent(event);
}

void CZelDialog::closeEvent(QCloseEvent* event)
{
    // The window's close box is Cancel.
    event->ignore();
    reject();
}
