#include <Zel260/platform/qt/QtWindowBackend.h>
#include <Zel260/platform/qt/ZelMessageEvent.h>
#include <Zel260/platform/qt/ZelMessageTarget.h>
#include <Zel260/platform/WindowMessages.h>
#include <Zel260/platform/Win32Error.h>

#include "WindowMailbox.h"

#include <QCoreApplication>
#include <QFontMetrics>
#include <QPointer>
#include <QThread>
#include <QWidget>

#include <memory>
#include <mutex>
#include <unordered_map>
#include <utility>
#include <vector>

ZelMessageEvent::ZelMessageEvent(UINT message, WPARAM wParam, LPARAM lParam)
    : QEvent(eventType()), m_message(message), m_wParam(wParam), m_lParam(lParam)
{
    ignore();
}

QEvent::Type ZelMessageEvent::eventType()
{
    static const QEvent::Type type = static_cast<QEvent::Type>(QEvent::registerEventType());
    return type;
}

namespace {

using HookList = std::vector<std::pair<int, ZelMessageHandler>>;
using Hooks = std::shared_ptr<const HookList>;

struct Entry {
    QWidget* widget = nullptr;
    QThread* thread = nullptr;
    int ctrlId = 0;
    // Replaced, never changed in place: a message in progress keeps the list it
    // started with, and taking it costs no copy.
    Hooks handlers;
    std::vector<std::weak_ptr<WindowJob>> pending;
};

// Handles are counters, not addresses: a handle of a deleted widget can never
// come back as the handle of a new one that happens to reuse its memory.
struct Registry {
    std::mutex m;
    std::unordered_map<std::uintptr_t, Entry> byHandle;
    std::unordered_map<const QWidget*, std::uintptr_t> byWidget;
    std::uintptr_t next = 0x10000;
    int nextCookie = 1;
    QObject* dispatcher = nullptr;
    std::unique_ptr<WindowMailbox> mailbox; // what other threads send and post
};

// Leaked on purpose: widgets may be destroyed during static destruction.
Registry& registry()
{
    static Registry* r = new Registry;
    return *r;
}

std::uintptr_t key(HWND h) { return reinterpret_cast<std::uintptr_t>(h); }
HWND handle(std::uintptr_t k) { return reinterpret_cast<HWND>(k); }

QEvent::Type drainType()
{
    static const QEvent::Type type = static_cast<QEvent::Type>(QEvent::registerEventType());
    return type;
}

QWidget* liveWidget(std::uintptr_t k)
{
    Registry& r = registry();
    std::lock_guard lock(r.m);
    auto it = r.byHandle.find(k);
    return it == r.byHandle.end() ? nullptr : it->second.widget;
}

// The live widget behind a handle and its hooks as they are now, in one look.
QWidget* lookUp(std::uintptr_t k, Hooks* hooks)
{
    Registry& r = registry();
    std::lock_guard lock(r.m);
    auto it = r.byHandle.find(k);
    if (it == r.byHandle.end())
        return nullptr;
    *hooks = it->second.handlers;
    return it->second.widget;
}

// Runs on the widget's thread.
LRESULT dispatch(QWidget* w, const Hooks& hooks, UINT message, WPARAM wParam, LPARAM lParam)
{
    QPointer<QWidget> guard(w);
    if (hooks) {
        for (auto h = hooks->rbegin(); h != hooks->rend(); ++h) {
            LRESULT result = 0;
            if (h->second(message, wParam, lParam, result))
                return result;
            if (!guard)
                return 0;
        }
    }
    ZelMessageEvent ev(message, wParam, lParam);
    QCoreApplication::sendEvent(w, &ev);
    if (ev.isAccepted())
        return ev.result();
    if (!guard)
        return 0;
    if (auto* target = dynamic_cast<ZelMessageTarget*>(w))
        return target->WindowProc(message, wParam, lParam);
    return 0;
}

// Runs a delivery on the window's thread: a message through dispatch, other work
// as it is; a send only if its sender still waits.
void deliver(WindowDelivery& d)
{
    Hooks hooks;
    QWidget* w = d.work ? liveWidget(d.target) : lookUp(d.target, &hooks);
    if (!w) {
        if (d.job)
            d.job->Finish(WindowJob::Failed);
        return;
    }
    if (d.job && !d.job->Start())
        return;
    LRESULT result = d.work ? d.work(w) : dispatch(w, hooks, d.message, d.wParam, d.lParam);
    if (d.job)
        d.job->Finish(WindowJob::Done, result);
}

class Dispatcher : public QObject {
public:
    bool event(QEvent* e) override
    {
        if (e->type() == drainType()) {
            WindowMailbox* mailbox = nullptr;
            {
                Registry& r = registry();
                std::lock_guard lock(r.m);
                mailbox = r.mailbox.get();
            }
            if (mailbox)
                mailbox->Drain(deliver);
            return true;
        }
        return QObject::event(e);
    }
};

void onDestroyed(std::uintptr_t k)
{
    Registry& r = registry();
    std::vector<std::weak_ptr<WindowJob>> pending;
    {
        std::lock_guard lock(r.m);
        auto it = r.byHandle.find(k);
        if (it == r.byHandle.end())
            return;
        pending = std::move(it->second.pending);
        r.byWidget.erase(it->second.widget);
        r.byHandle.erase(it);
    }
    // Whoever waits for this window is released now rather than when the window's
    // thread gets round to the queued event.
    for (auto& weak : pending)
        if (auto job = weak.lock())
            job->Finish(WindowJob::Failed);
}

// Runs a delivery (a message, or work) on the window's thread: directly when the
// caller is that thread, otherwise through the mailbox, waiting at most
// `timeoutMs` for it to start.
BOOL runOnWindowThread(HWND h, WindowDelivery d, UINT timeoutMs, LRESULT* out)
{
    Registry& r = registry();
    QWidget* direct = nullptr;
    Hooks hooks;
    std::shared_ptr<WindowJob> job;
    {
        std::lock_guard lock(r.m);
        auto it = h ? r.byHandle.find(key(h)) : r.byHandle.end();
        if (it == r.byHandle.end() || (!r.mailbox && it->second.thread != QThread::currentThread())) {
            SetLastError(ERROR_INVALID_WINDOW_HANDLE);
            return FALSE;
        }
        Entry& e = it->second;
        if (e.thread == QThread::currentThread()) {
            direct = e.widget;
            hooks = e.handlers;
        } else {
            std::erase_if(e.pending, [](const std::weak_ptr<WindowJob>& j) { return j.expired(); });
            d.target = key(h);
            d.job = job = std::make_shared<WindowJob>();
            e.pending.push_back(job);
            if (!r.mailbox->Put(std::move(d))) {
                SetLastError(ERROR_INVALID_WINDOW_HANDLE);
                return FALSE;
            }
        }
    }
    if (direct) {
        LRESULT v = d.work ? d.work(direct) : dispatch(direct, hooks, d.message, d.wParam, d.lParam);
        if (out)
            *out = v;
        return TRUE;
    }
    switch (job->Wait(timeoutMs, out)) {
    case WindowJob::Done:
        return TRUE;
    case WindowJob::Cancelled:
        SetLastError(ERROR_TIMEOUT);
        return FALSE;
    default:
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return FALSE;
    }
}

BOOL runOnWindowThread(HWND h, WindowWork work, UINT timeoutMs, LRESULT* out)
{
    WindowDelivery d;
    d.work = std::move(work);
    return runOnWindowThread(h, std::move(d), timeoutMs, out);
}

class QtBackend : public ZelWindowBackend {
public:
    BOOL IsWindow(HWND h) override { return liveWidget(key(h)) ? TRUE : FALSE; }

    LRESULT Send(HWND h, UINT message, WPARAM wParam, LPARAM lParam) override
    {
        LRESULT result = 0;
        SendTimeout(h, message, wParam, lParam, SMTO_NORMAL, INFINITE, &result);
        return result;
    }

    BOOL Post(HWND h, UINT message, WPARAM wParam, LPARAM lParam) override
    {
        Registry& r = registry();
        std::lock_guard lock(r.m);
        if (!h || !r.dispatcher || !r.byHandle.count(key(h))) {
            SetLastError(ERROR_INVALID_WINDOW_HANDLE);
            return FALSE;
        }
        // The window's own thread queues behind the others too: a follow-up that a
        // handler posts must come before what its sender sends once answered.
        if (!r.mailbox->Put({key(h), message, wParam, lParam, {}, nullptr})) {
            SetLastError(ERROR_INVALID_WINDOW_HANDLE);
            return FALSE;
        }
        return TRUE;
    }

    BOOL SendTimeout(HWND h, UINT message, WPARAM wParam, LPARAM lParam, UINT, UINT timeoutMs,
                     LRESULT* result) override
    {
        return runOnWindowThread(h, {0, message, wParam, lParam, {}, nullptr}, timeoutMs, result);
    }

    std::vector<HWND> Children(HWND h) override
    {
        std::vector<HWND> out;
        runOnWindowThread(
            h,
            [&](QWidget* w) {
                for (QObject* c : w->children())
                    if (auto* cw = qobject_cast<QWidget*>(c); cw && !cw->isWindow())
                        out.push_back(ZelHwndFromWidget(cw));
                return LRESULT(0);
            },
            INFINITE, nullptr);
        return out;
    }

    HWND Parent(HWND h) override
    {
        HWND parent = nullptr;
        runOnWindowThread(
            h,
            [&](QWidget* w) {
                parent = ZelHwndFromWidget(w->parentWidget());
                return LRESULT(0);
            },
            INFINITE, nullptr);
        return parent;
    }

    int CtrlId(HWND h) override
    {
        Registry& r = registry();
        std::lock_guard lock(r.m);
        auto it = r.byHandle.find(key(h));
        return it == r.byHandle.end() ? 0 : it->second.ctrlId;
    }

    int SetCtrlId(HWND h, int id) override
    {
        Registry& r = registry();
        std::lock_guard lock(r.m);
        auto it = r.byHandle.find(key(h));
        if (it == r.byHandle.end()) {
            SetLastError(ERROR_INVALID_WINDOW_HANDLE);
            return 0;
        }
        return std::exchange(it->second.ctrlId, id);
    }

    int TextWidth(HWND h, const char* text) override
    {
        LRESULT width = -1;
        if (!runOnWindowThread(
                h,
                [&](QWidget* w) {
                    return LRESULT(text ? QFontMetrics(w->font()).horizontalAdvance(QString::fromUtf8(text)) : 0);
                },
                INFINITE, &width))
            return -1;
        return static_cast<int>(width);
    }
};

QtBackend& qtBackend()
{
    static QtBackend* b = new QtBackend;
    return *b;
}

void uninstallBackend()
{
    Registry& r = registry();
    QObject* dispatcher = nullptr;
    std::unique_ptr<WindowMailbox> mailbox;
    {
        std::lock_guard lock(r.m);
        dispatcher = std::exchange(r.dispatcher, nullptr);
        mailbox = std::move(r.mailbox);
    }
    if (ZelGetWindowBackend() == &qtBackend())
        ZelSetWindowBackend(nullptr);
    // Closing the mailbox releases every thread still waiting for an answer; no
    // drain can run any more, since the event queue is gone with the application.
    if (mailbox)
        mailbox->Close();
    delete dispatcher;
}

void installAtStartup() { ZelInstallQtWindowBackend(); }

} // namespace

Q_COREAPP_STARTUP_FUNCTION(installAtStartup)

bool ZelInstallQtWindowBackend()
{
    QCoreApplication* app = QCoreApplication::instance();
    if (!app || QThread::currentThread() != app->thread())
        return false;
    Registry& r = registry();
    {
        std::lock_guard lock(r.m);
        if (r.dispatcher)
            return true;
        QObject* dispatcher = new Dispatcher;
        r.dispatcher = dispatcher;
        // Put wakes with the registry locked, and Drain from the dispatcher's own
        // event, so the dispatcher lives whenever this runs.
        r.mailbox = std::make_unique<WindowMailbox>(
            [dispatcher] { QCoreApplication::postEvent(dispatcher, new QEvent(drainType())); });
    }
    ZelSetWindowBackend(&qtBackend());
    qAddPostRoutine(uninstallBackend);
    return true;
}

HWND ZelHwndFromWidget(QWidget* widget)
{
    if (!widget)
        return nullptr;
    Registry& r = registry();
    std::uintptr_t k = 0;
    {
        std::lock_guard lock(r.m);
        if (auto it = r.byWidget.find(widget); it != r.byWidget.end())
            return handle(it->second);
        k = r.next;
        r.next += 4;
        r.byWidget[widget] = k;
        Entry& e = r.byHandle[k];
        e.widget = widget;
        e.thread = widget->thread();
    }
    // No context object: the slot runs on the destroying thread, while the widget
    // is still being torn down, so the handle dies before the memory does.
    QObject::connect(widget, &QObject::destroyed, [k] { onDestroyed(k); });
    if (!ZelGetWindowBackend())
        ZelInstallQtWindowBackend();
    return handle(k);
}

QWidget* ZelWidgetFromHwnd(HWND hWnd) { return hWnd ? liveWidget(key(hWnd)) : nullptr; }

int ZelAddMessageHandler(QWidget* widget, ZelMessageHandler handler)
{
    if (!widget || !handler)
        return 0;
    std::uintptr_t k = key(ZelHwndFromWidget(widget));
    Registry& r = registry();
    std::lock_guard lock(r.m);
    auto it = r.byHandle.find(k);
    if (it == r.byHandle.end())
        return 0;
    int cookie = r.nextCookie++;
    auto handlers = it->second.handlers ? std::make_shared<HookList>(*it->second.handlers) : std::make_shared<HookList>();
    handlers->emplace_back(cookie, std::move(handler));
    it->second.handlers = std::move(handlers);
    return cookie;
}

void ZelRemoveMessageHandler(QWidget* widget, int cookie)
{
    Registry& r = registry();
    std::lock_guard lock(r.m);
    auto w = r.byWidget.find(widget);
    if (w == r.byWidget.end())
        return;
    auto& handlers = r.byHandle[w->second].handlers;
    if (!handlers)
        return;
    auto rest = std::make_shared<HookList>(*handlers);
    std::erase_if(*rest, [cookie](const auto& h) { return h.first == cookie; });
    handlers = std::move(rest);
}
