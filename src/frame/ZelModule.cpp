#include <Zel260/frame/ZelModule.h>
#include <Zel260/platform/ResourceModule.h>

#include <atomic>
#include <ctime>
#include <mutex>

namespace {

// First use may come from another library's static initialiser, before the module
// start below has run; starting from the library's module keeps that case right.
std::atomic<HINSTANCE>& libraryResourceHandle()
{
    static std::atomic<HINSTANCE> h{ZelLibraryInstance()};
    return h;
}

std::atomic<HINSTANCE>& savedResourceHandle()
{
    static std::atomic<HINSTANCE> h{nullptr};
    return h;
}

std::mutex& loadStringLock()
{
    static std::mutex m;
    return m;
}

// The process-attach step of the library: the instance becomes the resource
// handle and the run-time learns the time zone. Detach has nothing to do.
struct ModuleStart {
    ModuleStart()
    {
        ZelSetZelResourceHandle(ZelLibraryInstance());
        tzset();
    }
};
const ModuleStart g_moduleStart;

} // namespace

HINSTANCE ZelGetZelResourceHandle() { return libraryResourceHandle().load(); }

void ZelSetZelResourceHandle(HINSTANCE module) { libraryResourceHandle().store(module); }

void ZelSetResourceHandle(HINSTANCE module)
{
    savedResourceHandle().store(AfxGetResourceHandle());
    AfxSetResourceHandle(module);
}

void ZelRestoreResourceHandle()
{
    if (HINSTANCE saved = savedResourceHandle().exchange(nullptr))
        AfxSetResourceHandle(saved);
}

CString ZelLoadLibraryString(UINT id)
{
    std::lock_guard lock(loadStringLock());
    CString text;
    ZelSetResourceHandle(ZelGetZelResourceHandle());
    text.LoadString(id);
    ZelRestoreResourceHandle();
    return text;
}
