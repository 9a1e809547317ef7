// A worker that sends to a window and waits for each answer, as a file search
// reports its folders: our message layer against Qt's own blocking call into the
// GUI thread (QMetaObject::invokeMethod with Qt::BlockingQueuedConnection), in one
// run. Posts, which need no answer, against QCoreApplication::postEvent.
#include "BenchSupport.h"

#include <Zel260/platform/WindowMessages.h>
#include <Zel260/platform/qt/QtWindowBackend.h>

#include <QApplication>
#include <QEvent>
#include <QEventLoop>
#include <QMetaObject>
#include <QWidget>

#include <benchmark/benchmark.h>

#include <atomic>
#include <functional>
#include <string>
#include <thread>

#include <sys/stat.h>

namespace {

constexpr UINT kText = WM_APP + 1;
constexpr int kMessages = 5000;
const char* const kFolder = "/home/surveyor/projects/2026/levelling/day 3/";

// Some work between two messages, as a search examines a folder's files.
void betweenMessages(int files)
{
    struct stat st;
    for (int i = 0; i < files; ++i)
        stat("/", &st);
}

// The GUI thread (the benchmark's own) turns its event loop while `worker` runs on
// a thread of its own, and leaves it when the worker is done.
void runAgainstWindow(const std::function<void()>& worker)
{
    QEventLoop loop;
    std::atomic<bool> done{false};
    std::thread t([&] {
        worker();
        done = true;
        QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
    });
    loop.exec();
    t.join();
}

class CountingWidget : public QWidget {
public:
    std::string lastText;
    size_t events = 0;
    bool event(QEvent* e) override
    {
        if (e->type() == QEvent::User) {
            ++events;
            return true;
        }
        return QWidget::event(e);
    }
};

// The work between the messages alone, to be taken off the two below.
void BM_WorkAlone(benchmark::State& state)
{
    const int files = static_cast<int>(state.range(0));
    for (auto _ : state)
        runAgainstWindow([&] {
            for (int i = 0; i < kMessages; ++i)
                betweenMessages(files);
        });
    state.SetItemsProcessed(state.iterations() * kMessages);
}

void BM_SendMessageTimeout(benchmark::State& state)
{
    const int files = static_cast<int>(state.range(0));
    CountingWidget window;
    int cookie = ZelAddMessageHandler(&window, [&](UINT m, WPARAM, LPARAM l, LRESULT&) {
        if (m != kText)
            return false;
        window.lastText.assign(reinterpret_cast<const char*>(l));
        return true;
    });
    const HWND h = ZelHwndFromWidget(&window);
    for (auto _ : state)
        runAgainstWindow([&] {
            for (int i = 0; i < kMessages; ++i) {
                betweenMessages(files);
                DWORD_PTR r = 0;
                SendMessageTimeout(h, kText, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(kFolder), SMTO_NORMAL,
                                   100, &r);
            }
        });
    ZelRemoveMessageHandler(&window, cookie);
    state.SetItemsProcessed(state.iterations() * kMessages);
}

void BM_QtBlockingQueuedCall(benchmark::State& state)
{
    const int files = static_cast<int>(state.range(0));
    CountingWidget window;
    for (auto _ : state)
        runAgainstWindow([&] {
            for (int i = 0; i < kMessages; ++i) {
                betweenMessages(files);
                const char* text = kFolder;
                QMetaObject::invokeMethod(
                    &window, [&] { window.lastText.assign(text); }, Qt::BlockingQueuedConnection);
            }
        });
    state.SetItemsProcessed(state.iterations() * kMessages);
}

void BM_PostMessage(benchmark::State& state)
{
    CountingWidget window;
    size_t handled = 0;
    int cookie = ZelAddMessageHandler(&window, [&](UINT m, WPARAM, LPARAM, LRESULT&) {
        handled += m == kText;
        return m == kText;
    });
    const HWND h = ZelHwndFromWidget(&window);
    for (auto _ : state)
        runAgainstWindow([&] {
            for (int i = 0; i < kMessages; ++i)
                PostMessage(h, kText, static_cast<WPARAM>(i), 0);
            // A send queues behind the posts, so when it returns all were handled.
            SendMessage(h, WM_NULL, 0, 0);
        });
    ZelRemoveMessageHandler(&window, cookie);
    state.SetItemsProcessed(state.iterations() * kMessages);
}

void BM_QtPostEvent(benchmark::State& state)
{
    CountingWidget window;
    for (auto _ : state)
        runAgainstWindow([&] {
            for (int i = 0; i < kMessages; ++i)
                QCoreApplication::postEvent(&window, new QEvent(QEvent::User));
        });
    state.SetItemsProcessed(state.iterations() * kMessages);
}

} // namespace

// The argument is the number of stat calls between two messages: none (messages
// back to back) and five (a folder of a search).
BENCHMARK(BM_WorkAlone)->Arg(5)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_SendMessageTimeout)->Arg(0)->Arg(5)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_QtBlockingQueuedCall)->Arg(0)->Arg(5)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_PostMessage)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_QtPostEvent)->Unit(benchmark::kMillisecond)->UseRealTime();

int main(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    return zelbench::runBenchmarks(argc, argv);
}
