#include <Zel260/platform/WindowMessages.h>
#include <Zel260/platform/Win32Error.h>

#include <atomic>
#include <mutex>
#include <string>
#include <unordered_map>

namespace {

std::atomic<ZelWindowBackend*>& backendSlot()
{
    static std::atomic<ZelWindowBackend*> slot{nullptr};
    return slot;
}

// Without a window system nothing is a window; callers see the same failure as for
// a dead handle.
ZelWindowBackend* backendOrFail()
{
    ZelWindowBackend* b = backendSlot().load(std::memory_order_acquire);
    if (!b)
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
    return b;
}

void sendToDescendants(ZelWindowBackend* b, HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam, BOOL deep)
{
    for (HWND child : b->Children(hWnd)) {
        b->Send(child, message, wParam, lParam);
        if (deep)
            sendToDescendants(b, child, message, wParam, lParam, deep);
    }
}

struct MessageTable {
    std::mutex m;
    std::unordered_map<std::string, UINT> numbers;
    UINT next = 0xC000;
};

// Reached from the static initialisers of the message variables, so it must come
// into being on first use and never go away before them.
MessageTable& messageTable()
{
    static MessageTable* t = new MessageTable;
    return *t;
}

} // namespace

UINT RegisterWindowMessage(const char* name)
{
    if (!name || !*name) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    std::string key(name);
    for (char& c : key)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    MessageTable& t = messageTable();
    std::lock_guard lock(t.m);
    if (auto it = t.numbers.find(key); it != t.numbers.end())
        return it->second;
    if (t.next > 0xFFFF) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return 0;
    }
    t.numbers.emplace(std::move(key), t.next);
    return t.next++;
}

ZelWindowBackend* ZelSetWindowBackend(ZelWindowBackend* backend)
{
    return backendSlot().exchange(backend, std::memory_order_acq_rel);
}

ZelWindowBackend* ZelGetWindowBackend() { return backendSlot().load(std::memory_order_acquire); }

LRESULT SendMessage(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    ZelWindowBackend* b = backendOrFail();
    return b ? b->Send(hWnd, message, wParam, lParam) : 0;
}

BOOL PostMessage(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    ZelWindowBackend* b = backendOrFail();
    return b ? b->Post(hWnd, message, wParam, lParam) : FALSE;
}

LRESULT SendMessageTimeout(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam, UINT flags, UINT timeoutMs,
                           DWORD_PTR* result)
{
    if (result)
        *result = 0;
    ZelWindowBackend* b = backendOrFail();
    if (!b)
        return 0;
    LRESULT r = 0;
    if (!b->SendTimeout(hWnd, message, wParam, lParam, flags, timeoutMs, &r))
        return 0;
    if (result)
        *result = static_cast<DWORD_PTR>(r);
    return 1;
}

BOOL IsWindow(HWND hWnd)
{
    ZelWindowBackend* b = ZelGetWindowBackend();
    return b && hWnd ? b->IsWindow(hWnd) : FALSE;
}

void SendMessageToDescendants(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam, BOOL deep)
{
    if (ZelWindowBackend* b = backendOrFail())
        sendToDescendants(b, hWnd, message, wParam, lParam, deep);
}

HWND GetParent(HWND hWnd)
{
    ZelWindowBackend* b = backendOrFail();
    return b ? b->Parent(hWnd) : nullptr;
}

HWND GetDlgItem(HWND hDlg, int id)
{
    ZelWindowBackend* b = backendOrFail();
    if (!b)
        return nullptr;
    for (HWND child : b->Children(hDlg))
        if (b->CtrlId(child) == id)
            return child;
    return nullptr;
}

int GetDlgCtrlID(HWND hWnd)
{
    ZelWindowBackend* b = backendOrFail();
    return b ? b->CtrlId(hWnd) : 0;
}

int ZelSetDlgCtrlID(HWND hWnd, int id)
{
    ZelWindowBackend* b = backendOrFail();
    return b ? b->SetCtrlId(hWnd, id) : 0;
}

int ZelWindowTextWidth(HWND hWnd, const char* text)
{
    ZelWindowBackend* b = backendOrFail();
    return b ? b->TextWidth(hWnd, text) : -1;
}
