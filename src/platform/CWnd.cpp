#include <Zel260/platform/CWnd.h>

#include <memory>
#include <mutex>
#include <unordered_map>

IMPLEMENT_DYNCREATE(CWnd, CObject)

namespace {

struct HandleMaps {
    std::mutex m;
    std::unordered_map<HWND, CWnd*> permanent;
    std::unordered_map<HWND, std::unique_ptr<CWnd>> temporary;
};

HandleMaps& maps()
{
    static HandleMaps* h = new HandleMaps;
    return *h;
}

void sendToDescendants(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam, BOOL deep, BOOL onlyPerm)
{
    ZelWindowBackend* b = ZelGetWindowBackend();
    if (!b)
        return;
    for (HWND child : b->Children(hWnd)) {
        if (!onlyPerm || CWnd::FromHandlePermanent(child))
            ::SendMessage(child, message, wParam, lParam);
        if (deep)
            sendToDescendants(child, message, wParam, lParam, deep, onlyPerm);
    }
}

} // namespace

CWnd::~CWnd() { Detach(); }

CWnd* CWnd::FromHandle(HWND hWnd)
{
    if (!hWnd)
        return nullptr;
    if (CWnd* w = FromHandlePermanent(hWnd))
        return w;
    if (!::IsWindow(hWnd))
        return nullptr;
    HandleMaps& h = maps();
    std::lock_guard lock(h.m);
    auto& slot = h.temporary[hWnd];
    if (!slot) {
        slot = std::make_unique<CWnd>();
        slot->m_hWnd = hWnd;
    }
    return slot.get();
}

CWnd* CWnd::FromHandlePermanent(HWND hWnd)
{
    HandleMaps& h = maps();
    std::lock_guard lock(h.m);
    auto it = h.permanent.find(hWnd);
    return it == h.permanent.end() ? nullptr : it->second;
}

void CWnd::DeleteTempMap()
{
    std::unordered_map<HWND, std::unique_ptr<CWnd>> doomed;
    {
        HandleMaps& h = maps();
        std::lock_guard lock(h.m);
        doomed.swap(h.temporary);
    }
    // Temporaries were never attached, so their destructors don't touch the maps.
    for (auto& [hWnd, w] : doomed)
        w->m_hWnd = nullptr;
}

BOOL CWnd::Attach(HWND hWnd)
{
    if (!hWnd || m_hWnd || !::IsWindow(hWnd))
        return FALSE;
    HandleMaps& h = maps();
    std::lock_guard lock(h.m);
    if (!h.permanent.emplace(hWnd, this).second)
        return FALSE;
    m_hWnd = hWnd;
    return TRUE;
}

HWND CWnd::Detach()
{
    HWND hWnd = m_hWnd;
    if (!hWnd)
        return nullptr;
    m_hWnd = nullptr;
    HandleMaps& h = maps();
    std::lock_guard lock(h.m);
    auto it = h.permanent.find(hWnd);
    if (it != h.permanent.end() && it->second == this)
        h.permanent.erase(it);
    return hWnd;
}

LRESULT CWnd::SendMessage(UINT message, WPARAM wParam, LPARAM lParam) const
{
    return ::SendMessage(m_hWnd, message, wParam, lParam);
}

BOOL CWnd::PostMessage(UINT message, WPARAM wParam, LPARAM lParam) const
{
    return ::PostMessage(m_hWnd, message, wParam, lParam);
}

void CWnd::SendMessageToDescendants(UINT message, WPARAM wParam, LPARAM lParam, BOOL deep, BOOL onlyPerm) const
{
    if (m_hWnd)
        sendToDescendants(m_hWnd, message, wParam, lParam, deep, onlyPerm);
}

int CWnd::GetDlgCtrlID() const { return ::GetDlgCtrlID(m_hWnd); }

int CWnd::SetDlgCtrlID(int id) { return ::ZelSetDlgCtrlID(m_hWnd, id); }

CWnd* CWnd::GetDlgItem(int id) const { return FromHandle(::GetDlgItem(m_hWnd, id)); }

CWnd* CWnd::GetParent() const { return FromHandle(::GetParent(m_hWnd)); }

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    return DefWindowProc(message, wParam, lParam);
}

LRESULT CWnd::DefWindowProc(UINT, WPARAM, LPARAM) { return 0; }
