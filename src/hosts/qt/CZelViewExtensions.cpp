#include <Zel260/hosts/qt/CZelViewExtensions.h>

#include <Zel260/frame/ZelModule.h>
#include <Zel260/hosts/qt/CZelView.h>
#include <Zel260/platform/qt/CQtDC.h>
#include <Zel260/platform/qt/QtWindowBackend.h>
#include <Zel260/resources/ZelHostsResourceIds.h>

#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLayout>
#include <QMainWindow>
#include <QMdiSubWindow>
#include <QPageLayout>
#include <QPainter>
#include <QPointer>
#include <QPrintDialog>
#include <QPrinter>
#include <QTimer>
#include <QVBoxLayout>
#include <QWidget>

#include <algorithm>
#include <map>
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

// The job's mode as the library's paper helpers read it.
DEVMODE devModeOf(const QPrinter& printer)
{
    DEVMODE mode;
    const QPageLayout layout = printer.pageLayout();
    mode.dmOrientation = layout.orientation() == QPageLayout::Landscape ? DMORIENT_LANDSCAPE : DMORIENT_PORTRAIT;
    switch (layout.pageSize().id()) {
    case QPageSize::Letter: mode.dmPaperSize = DMPAPER_LETTER; break;
    case QPageSize::Legal: mode.dmPaperSize = DMPAPER_LEGAL; break;
    case QPageSize::A3: mode.dmPaperSize = DMPAPER_A3; break;
    case QPageSize::A4: mode.dmPaperSize = DMPAPER_A4; break;
    case QPageSize::A5: mode.dmPaperSize = DMPAPER_A5; break;
    default: {
        const QSizeF mm = layout.pageSize().size(QPageSize::Millimeter);
        mode.dmPaperSize = 0;
        mode.dmPaperWidth = static_cast<short>(std::clamp(mm.width() * 10, 0.0, 32767.0));
        mode.dmPaperLength = static_cast<short>(std::clamp(mm.height() * 10, 0.0, 32767.0));
    }
    }
    return mode;
}

} // namespace

struct CZelViewExtensions::Impl {
    std::map<UINT_PTR, QPointer<QTimer>> timers;
    QPointer<QDialog> printing;
};

CZelViewExtensions::CZelViewExtensions(CWnd* host) : d(std::make_unique<Impl>()) { SetServicesHost(host); }

CZelViewExtensions::~CZelViewExtensions()
{
    for (auto& [id, timer] : d->timers)
        delete timer.data();
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

BOOL CZelViewExtensions::OnFilePrint(CZelView* view, QPrinter* printer)
{
    if (!view)
        view = dynamic_cast<CZelView*>(m_servicesHost);
    if (!view || d->printing)
        return FALSE;
    QPointer<CZelView> alive = view;
    std::unique_ptr<QPrinter> chosen;
    if (!printer) {
        chosen = std::make_unique<QPrinter>(QPrinter::HighResolution);
        QPrintDialog ask(chosen.get(), view);
        if (ask.exec() != QDialog::Accepted || !alive)
            return FALSE;
        printer = chosen.get();
    }

    CPrintInfo info;
    info.SetDevMode(devModeOf(*printer));
    if (printer->fromPage() > 0)
        info.SetPageRange(static_cast<UINT>(printer->fromPage()), static_cast<UINT>(printer->toPage()));
    if (!view->OnPreparePrinting(&info))
        return FALSE;

    CQtDC dc(printer);
    if (!dc.painter() || !dc.painter()->isActive())
        return FALSE;
    info.m_rectDraw = CRect(0, 0, dc.GetDeviceCaps(HORZRES), dc.GetDeviceCaps(VERTRES));

    // The job's dialog: the pages print one by one with the event loop running in
    // between, so that Cancel (and the rest of the program) is heard.
    bool cancelled = false;
    auto* dialog = new QDialog(view, Qt::Dialog);
    dialog->setAttribute(Qt::WA_DeleteOnClose, false);
    dialog->setWindowTitle(QString::fromUtf8(ZelLoadLibraryString(IDS_ZEL_PRINTING_TITLE).GetString()));
    auto* label = new QLabel(dialog);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, dialog);
    auto* layout = new QVBoxLayout(dialog);
    layout->addWidget(label);
    layout->addWidget(buttons);
    QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, [&cancelled] { cancelled = true; });
    QObject::connect(dialog, &QDialog::rejected, dialog, [&cancelled] { cancelled = true; });
    d->printing = dialog;
    dialog->show();

    view->OnBeginPrinting(&dc, &info);
    const CString pageFormat = ZelLoadLibraryString(IDS_ZEL_PRINTING_PAGE);
    int printed = 0;
    for (UINT page = info.GetFromPage(); page <= info.GetToPage() && info.m_bContinuePrinting && info.GetMaxPage() > 0;
         ++page) {
        info.m_nCurPage = page;
        view->OnPrepareDC(&dc, &info);
        if (!info.m_bContinuePrinting)
            break;
        if (printed > 0 && !dc.NewPage())
            break;
        label->setText(QString::fromUtf8(pageFormat.GetString()).replace("%d", QString::number(page)));
        view->OnPrint(&dc, &info);
        ++printed;
        QCoreApplication::processEvents();
        // A view closed meanwhile took its dialog (and maybe these services) along.
        if (!alive)
            return FALSE;
        if (cancelled)
            break;
        if (page == 0xFFFFFFFFu)
            break;
    }
    view->OnEndPrinting(&dc, &info);
    delete dialog;
    return !cancelled;
}

QWidget* CZelViewExtensions::GetPrintingDialog() const { return d->printing.data(); }

BOOL CZelViewExtensions::OnPrintClient(CDC* dc)
{
    auto* q = dynamic_cast<CQtDC*>(dc);
    QWidget* w = widgetOf(m_servicesHost);
    if (!q || !w || !q->painter() || !q->painter()->isActive())
        return FALSE;
    w->render(q->painter(), QPoint(), QRegion(), QWidget::DrawWindowBackground | QWidget::DrawChildren);
    return TRUE;
}

HBITMAP CZelViewExtensions::GetBitmapFromClientRect()
{
    QWidget* w = widgetOf(m_servicesHost);
    if (!w || w->width() <= 0 || w->height() <= 0)
        return nullptr;
    QImage image(w->size(), QImage::Format_ARGB32);
    image.fill(Qt::white);
    {
        CQtDC dc(&image);
        if (!OnPrintClient(&dc))
            return nullptr;
    }
    // A device bitmap keeps blue, green, red, alpha bytes, top row first: the
    // layout of ARGB32 on this machine's byte order.
    return ::CreateBitmap(image.width(), image.height(), 1, 32, image.constBits());
}

BOOL CZelViewExtensions::HandleCmdMsg(UINT id, int code)
{
    QWidget* self = widgetOf(m_servicesHost);
    if (self) {
        std::vector<CZelViewExtensions*> nested;
        QWidget* focus = QApplication::focusWidget();
        for (QWidget* w : self->findChildren<QWidget*>()) {
            auto* v = dynamic_cast<CZelViewExtensions*>(w);
            if (!v)
                continue;
            // Only the views of the next level; they pass on to theirs.
            QWidget* p = w->parentWidget();
            while (p && p != self && !isView(p))
                p = p->parentWidget();
            if (p != self)
                continue;
            const bool hasFocus = focus && (focus == w || w->isAncestorOf(focus));
            nested.insert(hasFocus ? nested.begin() : nested.end(), v);
        }
        for (CZelViewExtensions* v : nested)
            if (v->HandleCmdMsg(id, code))
                return TRUE;
    }
    return OnCmdMsg(id, code);
}

BOOL CZelViewExtensions::OnCmdMsg(UINT, int) { return FALSE; }

BOOL CZelViewExtensions::SetViewTimer(UINT_PTR id, UINT elapseMs)
{
    QWidget* w = widgetOf(m_servicesHost);
    if (!w || id == 0 || elapseMs == 0)
        return FALSE;
    QPointer<QTimer>& timer = d->timers[id];
    if (!timer) {
        timer = new QTimer(w);
        const HWND h = ZelHwndFromWidget(w);
        QObject::connect(timer, &QTimer::timeout, w, [h, id] { ::SendMessage(h, WM_TIMER, id, 0); });
    }
    timer->start(static_cast<int>(std::min<UINT>(elapseMs, 0x7FFFFFFF)));
    return TRUE;
}

BOOL CZelViewExtensions::KillViewTimer(UINT_PTR id)
{
    auto it = d->timers.find(id);
    if (it == d->timers.end())
        return FALSE;
    delete it->second.data();
    d->timers.erase(it);
    return TRUE;
}
