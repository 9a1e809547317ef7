#include <Zel260/platform/CObject.h>

#include <cstring>
#include <mutex>
#include <new>
#include <string>
#include <unordered_map>

namespace {

struct ClassRegistry {
    std::mutex m;
    std::unordered_map<std::string, CRuntimeClass*> byName;
};

// Filled by static initialisers of every module, so it comes into being on first
// use and is never destroyed.
ClassRegistry& classRegistry()
{
    static ClassRegistry* r = new ClassRegistry;
    return *r;
}

} // namespace

const CRuntimeClass CObject::classCObject = {"CObject", static_cast<int>(sizeof(CObject)), 0xFFFF, nullptr,
                                             nullptr};
static const ZelClassRegistration zelClassRegistration_CObject(RUNTIME_CLASS(CObject));

CRuntimeClass* CObject::GetRuntimeClass() const { return RUNTIME_CLASS(CObject); }

BOOL CObject::IsKindOf(const CRuntimeClass* cls) const { return GetRuntimeClass()->IsDerivedFrom(cls); }

CObject* CRuntimeClass::CreateObject() const
{
    if (!m_pfnCreateObject)
        return nullptr;
    try {
        return m_pfnCreateObject();
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

BOOL CRuntimeClass::IsDerivedFrom(const CRuntimeClass* base) const
{
    if (!base)
        return FALSE;
    for (const CRuntimeClass* c = this; c; c = c->m_pBaseClass)
        if (c == base)
            return TRUE;
    return FALSE;
}

CRuntimeClass* CRuntimeClass::FromName(LPCSTR className)
{
    if (!className)
        return nullptr;
    ClassRegistry& r = classRegistry();
    std::lock_guard lock(r.m);
    auto it = r.byName.find(className);
    return it == r.byName.end() ? nullptr : it->second;
}

CObject* CRuntimeClass::CreateObject(LPCSTR className)
{
    CRuntimeClass* cls = FromName(className);
    return cls ? cls->CreateObject() : nullptr;
}

ZelClassRegistration::ZelClassRegistration(CRuntimeClass* cls)
{
    if (!cls || !cls->m_lpszClassName)
        return;
    ClassRegistry& r = classRegistry();
    std::lock_guard lock(r.m);
    r.byName.emplace(cls->m_lpszClassName, cls);
}
