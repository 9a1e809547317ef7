#include <Zel260/controls/qt/CZelSubclassWnd.h>

#include "ZelQtKeys.h"

#include <Zel260/controls/ZelVirtualKeys.h>
#include <Zel260/platform/qt/QtWindowBackend.h>
#include <Zel260/platform/qt/ZelMessageEvent.h>
#include <Zel260/platform/qt/ZelMessageTarget.h>

#include <QApplication>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QResizeEvent>
#include <QWidget>

#include <algorithm>
#include <unordered_map>
#include <vector>

namespace {

// Hooks per window, oldest first. Only the GUI thread touches it.
std::unordered_map<HWND, std::vector<CZelSubclassWnd*>>& hookMap()
{
    static auto* m = new std::unordered_map<HWND, std::vector<CZelSubclassWnd*>>;
    return *m;
}

UINT mouseMessage(const QMouseEvent* e)
{
    const bool right = e->button() == Qt::RightButton;
    switch (e->type()) {
    case QEvent::MouseButtonPress:
        return right ? WM_RBUTTONDOWN : WM_LBUTTONDOWN;
    case QEvent::MouseButtonRelease:
        return right ? WM_RBUTTONUP : WM_LBUTTONUP;
    default:
        return right ? WM_RBUTTONDBLCLK : WM_LBUTTONDBLCLK;
    }
}

// The key event in hand, for ShiftDownNow.
const QKeyEvent* g_keyInHand = nullptr;

} // namespace

bool zelcontrols::ShiftDownNow()
{
    if (g_keyInHand)
        return g_keyInHand->key() == Qt::Key_Backtab || (g_keyInHand->modifiers() & Qt::ShiftModifier);
    return QGuiApplication::keyboardModifiers() & Qt::ShiftModifier;
}

// What the filter knows about the event in hand while WindowProc runs. Frames nest
// when WindowProc causes further events on the same window (SetFocus from a focus
// handler).
struct CallFrame {
    QEvent* event = nullptr;
    ZelMessageEvent* message = nullptr;
    UINT msg = 0;
    bool passOn = false;
};

class ZelHookFilter : public QObject {
public:
    explicit ZelHookFilter(CZelSubclassWnd* hook) : m_hook(hook) {}
    bool eventFilter(QObject* watched, QEvent* event) override;
    CZelSubclassWnd* m_hook;
};

struct CZelSubclassWnd::Impl {
    HWND hWnd = nullptr;
    QPointer<QWidget> widget;
    std::unique_ptr<ZelHookFilter> filter;
    QMetaObject::Connection destroyed;
    CallFrame* frame = nullptr;
    bool delivering = false; // Default() is re-sending a message through the chain
    // Cleared by the destructor: a WindowProc may delete its own hook.
    std::shared_ptr<bool> alive = std::make_shared<bool>(true);

    static LRESULT call(CZelSubclassWnd* hook, CallFrame& f, WPARAM wParam, LPARAM lParam)
    {
        std::shared_ptr<bool> alive = hook->d->alive;
        CallFrame* saved = hook->d->frame;
        hook->d->frame = &f;
        LRESULT r = hook->WindowProc(f.msg, wParam, lParam);
        if (*alive)
            hook->d->frame = saved;
        return r;
    }
};

bool ZelHookFilter::eventFilter(QObject* watched, QEvent* event)
{
    CZelSubclassWnd* hook = m_hook;
    auto* d = hook->d.get();
    if (watched != d->widget || d->delivering)
        return false;
    QPointer<QWidget> w = d->widget;

    if (event->type() == ZelMessageEvent::eventType()) {
        auto* m = static_cast<ZelMessageEvent*>(event);
        CallFrame f{event, m, m->message(), false};
        LRESULT r = CZelSubclassWnd::Impl::call(hook, f, m->wParam(), m->lParam());
        if (!f.passOn) {
            m->setResult(r);
            return true;
        }
        // Default() already delivered it; its answer may have been replaced.
        m->setResult(r);
        return true;
    }

    CallFrame f{event, nullptr, 0, false};
    WPARAM wParam = 0;
    LPARAM lParam = 0;
    switch (event->type()) {
    case QEvent::FocusIn:
    case QEvent::FocusOut: {
        f.msg = event->type() == QEvent::FocusIn ? WM_SETFOCUS : WM_KILLFOCUS;
        QWidget* other = nullptr;
        if (event->type() == QEvent::FocusOut)
            other = QApplication::focusWidget();
        if (other && other != w)
            wParam = reinterpret_cast<WPARAM>(ZelHwndFromWidget(other));
        break;
    }
    case QEvent::KeyPress:
    case QEvent::KeyRelease: {
        auto* k = static_cast<QKeyEvent*>(event);
        f.msg = event->type() == QEvent::KeyPress ? WM_KEYDOWN : WM_KEYUP;
        wParam = zelcontrols::VirtualKeyFromQt(k->key());
        lParam = k->isAutoRepeat() ? (LPARAM(1) << 30) : 0;
        break;
    }
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick: {
        auto* me = static_cast<QMouseEvent*>(event);
        QPoint p = me->position().toPoint();
        lParam = MAKELPARAM(static_cast<WORD>(p.x()), static_cast<WORD>(p.y()));
        if (event->type() == QEvent::MouseButtonPress && w && !w->hasFocus() &&
            (w->focusPolicy() & Qt::ClickFocus) && w->isEnabled()) {
            CallFrame a{event, nullptr, WM_MOUSEACTIVATE, false};
            HWND top = ZelHwndFromWidget(w->window());
            LRESULT r = CZelSubclassWnd::Impl::call(
                hook, a, reinterpret_cast<WPARAM>(top), MAKELPARAM(1, static_cast<WORD>(mouseMessage(me))));
            if (!a.passOn || r == MA_ACTIVATEANDEAT || r == MA_NOACTIVATEANDEAT) {
                event->accept();
                return true;
            }
            if (!w)
                return true;
        }
        f.msg = mouseMessage(me);
        break;
    }
    case QEvent::Paint:
        f.msg = WM_PAINT;
        break;
    case QEvent::Resize: {
        auto* r = static_cast<QResizeEvent*>(event);
        f.msg = WM_SIZE;
        lParam = MAKELPARAM(static_cast<WORD>(r->size().width()), static_cast<WORD>(r->size().height()));
        break;
    }
    case QEvent::PaletteChange:
        f.msg = 0x0015; // WM_SYSCOLORCHANGE
        break;
    default:
        return false;
    }
    const QKeyEvent* savedKey = g_keyInHand;
    if (f.msg == WM_KEYDOWN || f.msg == WM_KEYUP)
        g_keyInHand = static_cast<QKeyEvent*>(event);
    CZelSubclassWnd::Impl::call(hook, f, wParam, lParam);
    g_keyInHand = savedKey;
    if (f.passOn)
        return false;
    event->accept();
    return true;
}

CZelSubclassWnd::CZelSubclassWnd() : d(std::make_unique<Impl>()) {}

CZelSubclassWnd::~CZelSubclassWnd()
{
    *d->alive = false;
    UnhookWindow();
}

BOOL CZelSubclassWnd::HookWindow(CWnd* wnd) { return HookWindow(wnd ? wnd->GetSafeHwnd() : nullptr); }

BOOL CZelSubclassWnd::HookWindow(HWND hWnd)
{
    if (d->hWnd)
        return FALSE;
    QWidget* w = ZelWidgetFromHwnd(hWnd);
    if (!w)
        return FALSE;
    d->hWnd = hWnd;
    d->widget = w;
    d->delivering = false;
    d->filter = std::make_unique<ZelHookFilter>(this);
    w->installEventFilter(d->filter.get());
    d->destroyed = QObject::connect(w, &QObject::destroyed, [this] {
        HWND h = d->hWnd;
        auto& m = hookMap();
        if (auto it = m.find(h); it != m.end()) {
            std::erase(it->second, this);
            if (it->second.empty())
                m.erase(it);
        }
        QObject::disconnect(d->destroyed);
        d->hWnd = nullptr;
        d->widget = nullptr;
        // The widget may be going away from inside this filter's own call.
        d->filter.release()->deleteLater();
        OnDestroyWindow(); // may delete this
    });
    hookMap()[hWnd].push_back(this);
    return TRUE;
}

BOOL CZelSubclassWnd::UnhookWindow()
{
    if (!d->hWnd)
        return FALSE;
    auto& m = hookMap();
    if (auto it = m.find(d->hWnd); it != m.end()) {
        std::erase(it->second, this);
        if (it->second.empty())
            m.erase(it);
    }
    QObject::disconnect(d->destroyed);
    if (d->widget)
        d->widget->removeEventFilter(d->filter.get());
    d->filter.reset();
    d->hWnd = nullptr;
    d->widget = nullptr;
    return TRUE;
}

BOOL CZelSubclassWnd::IsHooked() const { return d->hWnd != nullptr; }

HWND CZelSubclassWnd::GetHookedWindow() const { return d->hWnd; }

CZelSubclassWnd* CZelSubclassWnd::FromHandle(HWND hWnd)
{
    auto& m = hookMap();
    auto it = m.find(hWnd);
    return it == m.end() || it->second.empty() ? nullptr : it->second.back();
}

LRESULT CZelSubclassWnd::WindowProc(UINT, WPARAM, LPARAM) { return Default(); }

void CZelSubclassWnd::OnDestroyWindow() {}

LRESULT CZelSubclassWnd::Default()
{
    CallFrame* f = d->frame;
    if (!f || f->passOn)
        return 0;
    f->passOn = true;
    if (f->msg == WM_MOUSEACTIVATE)
        return MA_ACTIVATE;
    if (!f->message || !d->widget)
        return 0;
    // Older hooks and the widget's own handlers get the message now, so that the
    // caller sees their answer.
    QPointer<QWidget> w = d->widget;
    std::shared_ptr<bool> alive = d->alive;
    d->delivering = true;
    QCoreApplication::sendEvent(w, f->message);
    if (!*alive)
        return f->message->result();
    d->delivering = false;
    ZelMessageEvent* m = f->message;
    if (m->isAccepted())
        return m->result();
    if (auto* target = dynamic_cast<ZelMessageTarget*>(w.data()))
        return target->WindowProc(m->message(), m->wParam(), m->lParam());
    return 0;
}
