#include <Zel260/hosts/qt/CZelViewExtensions.h>

#include <Zel260/platform/qt/QtWindowBackend.h>

#include <QDialog>
#include <QLayout>
#include <QMainWindow>
#include <QMdiSubWindow>
#include <QWidget>

#include <unordered_map>

namespace {

QWidget* widgetOf(const CWnd* w) { return w ? ZelWidgetFromHwnd(w->GetSafeHwnd()) : nullptr; }

CWnd* wndOf(QWidget* w) { return w ? CWnd::FromHandle(ZelHwndFromWidget(w)) : nullptr; }

std::unordered_map<HWND, CObject*>& documents()
{
    static auto* m = new std::unordered_map<HWND, CObject*>;
    return *m;
}

template <class Pred>
CWnd* findParent(const CWnd* host, bool directOnly, Pred pred)
{
    QWidget* w = widgetOf(host);
    for (QWidget* p = w ? w->parentWidget() : nullptr; p; p = p->parentWidget()) {
        if (pred(p))
            return wndOf(p);
        if (directOnly)
            return nullptr;
    }
    return nullptr;
}

bool isDialog(QWidget* w) { return qobject_cast<QDialog*>(w) != nullptr; }
bool isMdiChild(QWidget* w) { return qobject_cast<QMdiSubWindow*>(w) != nullptr; }
bool isSdiFrame(QWidget* w) { return qobject_cast<QMainWindow*>(w) != nullptr; }
bool isFormView(QWidget* w) { return w->property("zelFormView").toBool(); }
bool isView(QWidget* w) { return dynamic_cast<CZelViewExtensions*>(w) != nullptr; }

} // namespace

CZelViewExtensions::CZelViewExtensions(CWnd* host) { SetServicesHost(host); }

CZelViewExtensions::~CZelViewExtensions()
{
    if (m_servicesHost)
        documents().erase(m_servicesHost->GetSafeHwnd());
}

CZelViewExtensions* CZelViewExtensions::CastObjectSafe(CObject* object) { return dynamic_cast<CZelViewExtensions*>(object); }

BOOL CZelViewExtensions::ExchangeDlgItem(CWnd* parent, UINT id)
{
    QWidget* p = widgetOf(parent);
    QWidget* old = p ? ZelWidgetFromHwnd(::GetDlgItem(ZelHwndFromWidget(p), static_cast<int>(id))) : nullptr;
    QWidget* self = widgetOf(m_servicesHost);
    if (!old || !self || old == self)
        return FALSE;
    self->setParent(old->parentWidget());
    self->setGeometry(old->geometry());
    if (old->parentWidget() && old->parentWidget()->layout())
        delete old->parentWidget()->layout()->replaceWidget(old, self);
    ZelSetDlgCtrlID(ZelHwndFromWidget(self), static_cast<int>(id));
    self->setVisible(!old->isHidden());
    delete old;
    return TRUE;
}

CWnd* CZelViewExtensions::GetDirectParentDialog() const { return findParent(m_servicesHost, true, isDialog); }
CWnd* CZelViewExtensions::GetDirectParentMDIChildWnd() const { return findParent(m_servicesHost, true, isMdiChild); }
CWnd* CZelViewExtensions::GetDirectParentSDIFrameWnd() const { return findParent(m_servicesHost, true, isSdiFrame); }
CWnd* CZelViewExtensions::GetDirectParentFormView() const { return findParent(m_servicesHost, true, isFormView); }
CWnd* CZelViewExtensions::GetParentDialog() const { return findParent(m_servicesHost, false, isDialog); }
CWnd* CZelViewExtensions::GetParentMDIChildWnd() const { return findParent(m_servicesHost, false, isMdiChild); }
CWnd* CZelViewExtensions::GetParentSDIFrameWnd() const { return findParent(m_servicesHost, false, isSdiFrame); }
CWnd* CZelViewExtensions::GetParentNestedView() const { return findParent(m_servicesHost, false, isView); }
CWnd* CZelViewExtensions::GetParentFormView() const { return findParent(m_servicesHost, false, isFormView); }

CWnd* CZelViewExtensions::GetTopmostView() const
{
    QWidget* top = widgetOf(m_servicesHost);
    for (QWidget* p = top ? top->parentWidget() : nullptr; p; p = p->parentWidget())
        if (isView(p))
            top = p;
    return wndOf(top);
}

void CZelViewExtensions::SetViewDocument(CObject* document)
{
    m_document = document;
    SetWndViewDocument(m_servicesHost, document);
}

void CZelViewExtensions::UnsetViewDocument() { SetViewDocument(nullptr); }

void CZelViewExtensions::SetWndViewDocument(CWnd* wnd, CObject* document)
{
    if (!wnd || !wnd->GetSafeHwnd())
        return;
    if (document)
        documents()[wnd->GetSafeHwnd()] = document;
    else
        documents().erase(wnd->GetSafeHwnd());
}

CObject* CZelViewExtensions::GetWndViewDocument(CWnd* wnd)
{
    if (!wnd)
        return nullptr;
    auto it = documents().find(wnd->GetSafeHwnd());
    return it == documents().end() ? nullptr : it->second;
}

CWnd* CZelViewExtensions::HidePopupWnd()
{
    QWidget* self = widgetOf(m_servicesHost);
    QWidget* top = self ? self->window() : nullptr;
    if (!top || top == self || !(top->windowFlags() & (Qt::Tool | Qt::Dialog)) || !top->parentWidget())
        return nullptr;
    top->hide();
    return wndOf(top);
}

void CZelViewExtensions::RestorePopupWnd(CWnd* wnd, BOOL focus)
{
    QWidget* w = widgetOf(wnd);
    if (!w)
        return;
    w->show();
    if (focus) {
        w->activateWindow();
        w->setFocus();
    }
}

void CZelViewExtensions::StopWindowUpdate(BOOL stop)
{
    m_stopped = stop;
    if (QWidget* w = widgetOf(m_servicesHost))
        w->setUpdatesEnabled(!stop);
}
