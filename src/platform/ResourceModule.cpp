#include <Zel260/platform/ResourceModule.h>
#include <Zel260/platform/Win32Error.h>

#include <atomic>
#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <string_view>
#include <map>
#include <memory>
#include <mutex>
#include <string>

struct HINSTANCE__ {
    std::string name;
    std::map<UINT, std::string> strings;
    std::map<std::pair<UINT, UINT>, std::vector<unsigned char>> data;
};

namespace {

// Modules are created rarely and read often; one lock keeps creation, loading and
// lookup safe from any thread without making the hot path costly.
std::mutex& tableLock()
{
    static std::mutex m;
    return m;
}

std::atomic<HINSTANCE>& currentHandle()
{
    static std::atomic<HINSTANCE> h{ZelLibraryInstance()};
    return h;
}

std::string unescape(const std::string& s)
{
    std::string out;
    for (size_t i = 0; i < s.size(); ++i) {
        if (s[i] != '\\' || i + 1 == s.size()) {
            out += s[i];
            continue;
        }
        switch (s[++i]) {
        case 'n': out += '\n'; break;
        case 'r': out += '\r'; break;
        case 't': out += '\t'; break;
        default: out += s[i]; break;
        }
    }
    return out;
}

} // namespace

HINSTANCE ZelCreateResourceModule(const char* name)
{
    auto* m = new HINSTANCE__;
    m->name = name ? name : "";
    return m;
}

void ZelDestroyResourceModule(HINSTANCE module)
{
    if (!module || module == ZelLibraryInstance())
        return;
    if (AfxGetResourceHandle() == module)
        AfxSetResourceHandle(ZelLibraryInstance());
    delete module;
}

HINSTANCE ZelLoadResourceModule(const char* path)
{
    std::ifstream in(path ? path : "");
    if (!in) {
        SetLastError(ERROR_FILE_NOT_FOUND);
        return nullptr;
    }
    HINSTANCE m = ZelCreateResourceModule(path);
    std::string line;
    while (std::getline(in, line)) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        if (line.empty() || line[0] == ';' || line[0] == '#')
            continue;
        auto eq = line.find('=');
        if (eq == std::string::npos)
            continue;
        char* end = nullptr;
        unsigned long id = std::strtoul(line.c_str(), &end, 10);
        if (end != line.c_str() + eq)
            continue;
        m->strings[static_cast<UINT>(id)] = unescape(line.substr(eq + 1));
    }
    return m;
}

HINSTANCE ZelLibraryInstance()
{
    static HINSTANCE__ library{"Zel260", {}, {}};
    return &library;
}

const char* ZelResourceModuleName(HINSTANCE module) { return module ? module->name.c_str() : ""; }

BOOL ZelSetResourceString(HINSTANCE module, UINT id, const char* text)
{
    if (!module)
        return FALSE;
    std::lock_guard lock(tableLock());
    module->strings[id] = text ? text : "";
    return TRUE;
}

const char* ZelFindResourceString(HINSTANCE module, UINT id)
{
    if (!module)
        return nullptr;
    std::lock_guard lock(tableLock());
    auto it = module->strings.find(id);
    return it == module->strings.end() ? nullptr : it->second.c_str();
}

int LoadString(HINSTANCE module, UINT id, char* buffer, int bufferMax)
{
    if (!buffer || bufferMax <= 0)
        return 0;
    buffer[0] = '\0';
    const char* text = ZelFindResourceString(module, id);
    if (!text) {
        SetLastError(ERROR_RESOURCE_NAME_NOT_FOUND);
        return 0;
    }
    std::string_view v(text);
    size_t n = std::min(v.size(), static_cast<size_t>(bufferMax - 1));
    v.copy(buffer, n);
    buffer[n] = '\0';
    return static_cast<int>(n);
}

BOOL ZelSetResourceData(HINSTANCE module, UINT type, UINT id, const void* data, std::size_t size)
{
    if (!module || (!data && size))
        return FALSE;
    std::lock_guard lock(tableLock());
    auto bytes = static_cast<const unsigned char*>(data);
    module->data[{type, id}] = std::vector<unsigned char>(bytes, bytes + size);
    return TRUE;
}

const std::vector<unsigned char>* ZelFindResourceData(HINSTANCE module, UINT type, UINT id)
{
    if (!module)
        return nullptr;
    std::lock_guard lock(tableLock());
    auto it = module->data.find({type, id});
    return it == module->data.end() ? nullptr : &it->second;
}

HINSTANCE AfxGetResourceHandle() { return currentHandle().load(); }

void AfxSetResourceHandle(HINSTANCE module) { currentHandle().store(module); }

CZelStringTableRegistrar::CZelStringTableRegistrar(std::initializer_list<ZelStringTableEntry> entries)
{
    for (const auto& e : entries)
        ZelSetResourceString(ZelLibraryInstance(), e.id, e.text);
}
