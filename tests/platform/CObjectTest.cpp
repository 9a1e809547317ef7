#include <Zel260/platform/CObject.h>
#include <Zel260/platform/CWnd.h>

#include <gtest/gtest.h>

#include <memory>
#include <set>

namespace {

class CAnimal : public CObject {
    DECLARE_DYNAMIC(CAnimal)
};
class CDog : public CAnimal {
    DECLARE_DYNCREATE(CDog)

public:
    int legs = 4;
};
class CStone : public CObject {
    DECLARE_DYNCREATE(CStone)
};

} // namespace

IMPLEMENT_DYNAMIC(CAnimal, CObject)
IMPLEMENT_DYNCREATE(CDog, CAnimal)
IMPLEMENT_DYNCREATE(CStone, CObject)

TEST(CRuntimeClass, RecordsNameBaseAndDerivation)
{
    EXPECT_STREQ(RUNTIME_CLASS(CDog)->m_lpszClassName, "CDog");
    EXPECT_EQ(RUNTIME_CLASS(CDog)->m_pBaseClass, RUNTIME_CLASS(CAnimal));
    EXPECT_EQ(RUNTIME_CLASS(CObject)->m_pBaseClass, nullptr);
    EXPECT_TRUE(RUNTIME_CLASS(CDog)->IsDerivedFrom(RUNTIME_CLASS(CObject)));
    EXPECT_TRUE(RUNTIME_CLASS(CDog)->IsDerivedFrom(RUNTIME_CLASS(CDog)));
    EXPECT_FALSE(RUNTIME_CLASS(CAnimal)->IsDerivedFrom(RUNTIME_CLASS(CDog)));
    EXPECT_FALSE(RUNTIME_CLASS(CStone)->IsDerivedFrom(RUNTIME_CLASS(CAnimal)));
    EXPECT_FALSE(RUNTIME_CLASS(CDog)->IsDerivedFrom(nullptr));

    CDog dog;
    const CObject& o = dog;
    EXPECT_EQ(o.GetRuntimeClass(), RUNTIME_CLASS(CDog));
    EXPECT_TRUE(o.IsKindOf(RUNTIME_CLASS(CAnimal)));
    EXPECT_FALSE(o.IsKindOf(RUNTIME_CLASS(CStone)));
}

TEST(CRuntimeClass, CreatesOnlyDynCreateClassesAndFindsThemByName)
{
    std::unique_ptr<CObject> made(RUNTIME_CLASS(CDog)->CreateObject());
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->GetRuntimeClass(), RUNTIME_CLASS(CDog));
    EXPECT_EQ(static_cast<CDog*>(made.get())->legs, 4);
    EXPECT_EQ(RUNTIME_CLASS(CAnimal)->CreateObject(), nullptr) << "DYNAMIC only";
    EXPECT_EQ(RUNTIME_CLASS(CObject)->CreateObject(), nullptr);

    EXPECT_EQ(CRuntimeClass::FromName("CDog"), RUNTIME_CLASS(CDog));
    EXPECT_EQ(CRuntimeClass::FromName("CObject"), RUNTIME_CLASS(CObject));
    EXPECT_EQ(CRuntimeClass::FromName("CWnd"), RUNTIME_CLASS(CWnd)) << "library classes register at load";
    EXPECT_EQ(CRuntimeClass::FromName("cdog"), nullptr) << "names are case-sensitive";
    EXPECT_EQ(CRuntimeClass::FromName(nullptr), nullptr);
    std::unique_ptr<CObject> byName(CRuntimeClass::CreateObject("CStone"));
    ASSERT_NE(byName, nullptr);
    EXPECT_TRUE(byName->IsKindOf(RUNTIME_CLASS(CStone)));
    EXPECT_EQ(CRuntimeClass::CreateObject("CAnimal"), nullptr);
    EXPECT_EQ(CRuntimeClass::CreateObject("NoSuchClass"), nullptr);
}

namespace {

// Windows 1..3 are live; 1 is the parent of 2 and 3.
class SmallBackend : public ZelWindowBackend {
public:
    std::set<HWND> live{hw(1), hw(2), hw(3)};
    int ids[4] = {0, 0, 5, 6};
    static HWND hw(std::uintptr_t n) { return reinterpret_cast<HWND>(n); }
    static int n(HWND h) { return static_cast<int>(reinterpret_cast<std::uintptr_t>(h)); }
    BOOL IsWindow(HWND h) override { return live.count(h) ? TRUE : FALSE; }
    LRESULT Send(HWND h, UINT m, WPARAM w, LPARAM) override { return live.count(h) ? n(h) * 1000 + m + w : 0; }
    BOOL Post(HWND h, UINT, WPARAM, LPARAM) override { return IsWindow(h); }
    BOOL SendTimeout(HWND, UINT, WPARAM, LPARAM, UINT, UINT, LRESULT*) override { return FALSE; }
    std::vector<HWND> Children(HWND h) override
    {
        return h == hw(1) ? std::vector<HWND>{hw(2), hw(3)} : std::vector<HWND>{};
    }
    HWND Parent(HWND h) override { return h == hw(2) || h == hw(3) ? hw(1) : nullptr; }
    int CtrlId(HWND h) override { return live.count(h) ? ids[n(h)] : 0; }
    int SetCtrlId(HWND h, int id) override { return live.count(h) ? std::exchange(ids[n(h)], id) : 0; }
    int TextWidth(HWND, const char*) override { return 0; }
};

} // namespace

TEST(CWnd, AttachFromHandleAndMessagesThroughTheLayer)
{
    SmallBackend backend;
    ZelWindowBackend* previous = ZelSetWindowBackend(&backend);
    {
        CWnd parent;
        EXPECT_FALSE(parent.Attach(SmallBackend::hw(9))) << "not a window";
        ASSERT_TRUE(parent.Attach(SmallBackend::hw(1)));
        EXPECT_FALSE(parent.Attach(SmallBackend::hw(2))) << "already bound";
        CWnd other;
        EXPECT_FALSE(other.Attach(SmallBackend::hw(1))) << "handle already has an object";

        EXPECT_EQ(CWnd::FromHandle(SmallBackend::hw(1)), &parent);
        EXPECT_EQ(CWnd::FromHandlePermanent(SmallBackend::hw(2)), nullptr);
        CWnd* temp = CWnd::FromHandle(SmallBackend::hw(2));
        ASSERT_NE(temp, nullptr);
        EXPECT_EQ(temp->GetSafeHwnd(), SmallBackend::hw(2));
        EXPECT_EQ(CWnd::FromHandle(SmallBackend::hw(2)), temp) << "one temporary per handle";
        EXPECT_EQ(CWnd::FromHandle(SmallBackend::hw(9)), nullptr);

        EXPECT_EQ(parent.SendMessage(WM_USER, 2), 1000 + WM_USER + 2);
        EXPECT_TRUE(parent.PostMessage(WM_USER));
        EXPECT_EQ(parent.GetDlgItem(6)->GetSafeHwnd(), SmallBackend::hw(3));
        EXPECT_EQ(parent.GetDlgItem(7), nullptr);
        EXPECT_EQ(temp->GetParent(), &parent);
        EXPECT_EQ(temp->SetDlgCtrlID(50), 5);
        EXPECT_EQ(temp->GetDlgCtrlID(), 50);
        CWnd::DeleteTempMap();
        EXPECT_EQ(CWnd::FromHandlePermanent(SmallBackend::hw(2)), nullptr);

        EXPECT_EQ(parent.Detach(), SmallBackend::hw(1));
        EXPECT_EQ(CWnd::FromHandlePermanent(SmallBackend::hw(1)), nullptr);
        EXPECT_TRUE(other.Attach(SmallBackend::hw(1)));
    } // `other` detaches in its destructor
    EXPECT_EQ(CWnd::FromHandlePermanent(SmallBackend::hw(1)), nullptr);
    CWnd::DeleteTempMap();
    ZelSetWindowBackend(previous);

    CWnd unbound;
    EXPECT_EQ(unbound.SendMessage(WM_USER), 0);
    EXPECT_EQ(unbound.Detach(), nullptr);
}
