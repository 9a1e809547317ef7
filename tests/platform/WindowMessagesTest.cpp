#include <Zel260/platform/WindowMessages.h>
#include <Zel260/platform/Win32Error.h>

#include <gtest/gtest.h>

#include <map>
#include <vector>

namespace {

HWND hw(std::uintptr_t n) { return reinterpret_cast<HWND>(n); }

// A fixed tree of windows: 1 has children 2 and 3; 2 has child 4.
class TreeBackend : public ZelWindowBackend {
public:
    std::map<HWND, std::vector<HWND>> kids{{hw(1), {hw(2), hw(3)}}, {hw(2), {hw(4)}}};
    std::vector<HWND> sent;
    BOOL IsWindow(HWND h) override { return h >= hw(1) && h <= hw(4); }
    LRESULT Send(HWND h, UINT, WPARAM, LPARAM) override
    {
        sent.push_back(h);
        return 42;
    }
    BOOL Post(HWND, UINT, WPARAM, LPARAM) override { return TRUE; }
    BOOL SendTimeout(HWND, UINT, WPARAM, LPARAM, UINT, UINT, LRESULT* r) override
    {
        *r = 7;
        return TRUE;
    }
    std::vector<HWND> Children(HWND h) override { return kids.count(h) ? kids[h] : std::vector<HWND>{}; }
    HWND Parent(HWND) override { return nullptr; }
    int CtrlId(HWND h) override { return static_cast<int>(reinterpret_cast<std::uintptr_t>(h)) * 100; }
    int SetCtrlId(HWND, int) override { return 0; }
    int TextWidth(HWND, const char*) override { return 5; }
};

struct BackendScope {
    explicit BackendScope(ZelWindowBackend* b) : previous(ZelSetWindowBackend(b)) {}
    ~BackendScope() { ZelSetWindowBackend(previous); }
    ZelWindowBackend* previous;
};

} // namespace

TEST(WindowMessages, WithoutABackendEveryCallFailsCleanly)
{
    BackendScope none(nullptr);
    SetLastError(0);
    EXPECT_EQ(SendMessage(hw(1), WM_USER), 0);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_WINDOW_HANDLE);
    EXPECT_FALSE(PostMessage(hw(1), WM_USER));
    DWORD_PTR r = 99;
    EXPECT_EQ(SendMessageTimeout(hw(1), WM_USER, 0, 0, SMTO_NORMAL, 10, &r), 0);
    EXPECT_EQ(r, 0u) << "the result is cleared even on failure";
    EXPECT_FALSE(IsWindow(hw(1)));
    EXPECT_EQ(ZelWindowTextWidth(hw(1), "abc"), -1);
    EXPECT_EQ(GetDlgItem(hw(1), 1), nullptr);
    EXPECT_EQ(GetDlgCtrlID(hw(1)), 0);
    SendMessageToDescendants(hw(1), WM_USER);
}

TEST(WindowMessages, DescendantsFollowEachChildBeforeItsSibling)
{
    TreeBackend tree;
    BackendScope scope(&tree);
    SendMessageToDescendants(hw(1), WM_USER, 0, 0, TRUE);
    EXPECT_EQ(tree.sent, (std::vector<HWND>{hw(2), hw(4), hw(3)}));
    tree.sent.clear();
    SendMessageToDescendants(hw(1), WM_USER, 0, 0, FALSE);
    EXPECT_EQ(tree.sent, (std::vector<HWND>{hw(2), hw(3)}));

    EXPECT_EQ(GetDlgItem(hw(1), 300), hw(3));
    EXPECT_EQ(GetDlgItem(hw(1), 400), nullptr) << "grandchildren are not dialog items";
    DWORD_PTR r = 0;
    EXPECT_EQ(SendMessageTimeout(hw(1), WM_USER, 0, 0, SMTO_BLOCK, 10, &r), 1);
    EXPECT_EQ(r, 7u);
    EXPECT_FALSE(IsWindow(nullptr));
}
