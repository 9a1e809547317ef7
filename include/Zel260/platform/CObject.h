// MFC's run-time class records: CObject, CRuntimeClass and the DYNAMIC/DYNCREATE
// macros, with a process-wide registry so a class can be found and created by name.
//
//   // header                      // source
//   class CFoo : public CObject {   IMPLEMENT_DYNCREATE(CFoo, CObject)
//       DECLARE_DYNCREATE(CFoo)
//   };
//
//   CObject* p = RUNTIME_CLASS(CFoo)->CreateObject();
//   p->IsKindOf(RUNTIME_CLASS(CObject));                   // TRUE
//   CRuntimeClass::FromName("CFoo") == RUNTIME_CLASS(CFoo); // registered at load
#pragma once

#include <Zel260/platform/Win32Types.h>

class CObject;

struct CRuntimeClass {
    LPCSTR m_lpszClassName;
    int m_nObjectSize;
    UINT m_wSchema;                  // 0xFFFF for classes that are not serialisable
    CObject* (*m_pfnCreateObject)(); // null for classes that are only DYNAMIC
    CRuntimeClass* m_pBaseClass;     // null for CObject

    // A new object of this class (operator new), or null when the class can't be
    // created dynamically or allocation fails.
    CObject* CreateObject() const;
    // TRUE when this class is `base` or derives from it; FALSE for null.
    BOOL IsDerivedFrom(const CRuntimeClass* base) const;

    // The registered class of that name (exact, case-sensitive); null when none or
    // for a null name. Every class with IMPLEMENT_DYNAMIC/DYNCREATE is registered
    // when its module is loaded; where two share a name the first one stays.
    static CRuntimeClass* FromName(LPCSTR className);
    // FromName(className)->CreateObject(), null when either step fails.
    static CObject* CreateObject(LPCSTR className);
};

class CObject {
public:
    virtual ~CObject() = default;
    virtual CRuntimeClass* GetRuntimeClass() const;
    // TRUE when the object's class is `cls` or derives from it.
    BOOL IsKindOf(const CRuntimeClass* cls) const;

    static const CRuntimeClass classCObject;

protected:
    CObject() = default;
    CObject(const CObject&) = default;
    CObject& operator=(const CObject&) = default;
};

// Adds a class to the registry; used by the IMPLEMENT macros.
struct ZelClassRegistration {
    explicit ZelClassRegistration(CRuntimeClass* cls);
};

#define RUNTIME_CLASS(class_name) (const_cast<CRuntimeClass*>(&class_name::class##class_name))

#define DECLARE_DYNAMIC(class_name)                                                                                \
public:                                                                                                            \
    static const CRuntimeClass class##class_name;                                                                  \
    CRuntimeClass* GetRuntimeClass() const override;

#define DECLARE_DYNCREATE(class_name)                                                                              \
    DECLARE_DYNAMIC(class_name)                                                                                    \
    static CObject* CreateObject();

#define ZEL_IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, schema, pfnNew)                                    \
    const CRuntimeClass class_name::class##class_name = {#class_name, static_cast<int>(sizeof(class_name)),       \
                                                         schema, pfnNew, RUNTIME_CLASS(base_class_name)};          \
    CRuntimeClass* class_name::GetRuntimeClass() const { return RUNTIME_CLASS(class_name); }                      \
    static const ZelClassRegistration zelClassRegistration_##class_name(RUNTIME_CLASS(class_name));

#define IMPLEMENT_DYNAMIC(class_name, base_class_name)                                                             \
    ZEL_IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, 0xFFFF, nullptr)

#define IMPLEMENT_DYNCREATE(class_name, base_class_name)                                                           \
    CObject* class_name::CreateObject() { return new class_name; }                                                 \
    ZEL_IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, 0xFFFF, class_name::CreateObject)
