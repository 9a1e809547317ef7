// The undo and redo stacks: order, ownership, and the rule that a new change
// forgets what could be redone.
#include <Zel260/controls/CZelEditUndoRedoItem.h>
#include <Zel260/controls/CZelUndoRedo.h>

#include <gtest/gtest.h>

#include <memory>

namespace {

CZelEditUndoRedoItem* item(const char* text) { return new CZelEditUndoRedoItem(text, 0, 0); }

CString take(CObject* o)
{
    std::unique_ptr<CObject> owned(o);
    auto* i = dynamic_cast<CZelEditUndoRedoItem*>(o);
    return i ? i->m_text : CString("<null>");
}

} // namespace

TEST(UndoRedo, UndoThenRedoWalksBackAndForth)
{
    CZelUndoRedo u;
    EXPECT_FALSE(u.CanUndo());
    u.AddPrevious(item("a"));
    u.AddPrevious(item("ab"));
    // Current is "abc".
    EXPECT_EQ(take(u.Undo(item("abc"))), "ab");
    EXPECT_EQ(take(u.Undo(item("ab"))), "a");
    EXPECT_FALSE(u.CanUndo());
    EXPECT_EQ(u.GetRedoCount(), 2u);
    EXPECT_EQ(take(u.Redo(item("a"))), "ab");
    EXPECT_EQ(take(u.Redo(item("ab"))), "abc");
    EXPECT_FALSE(u.CanRedo());
    EXPECT_EQ(u.GetUndoCount(), 2u);
}

TEST(UndoRedo, ANewChangeForgetsTheRedoSteps)
{
    CZelUndoRedo u;
    u.AddPrevious(item("a"));
    delete u.Undo(item("ab"));
    ASSERT_TRUE(u.CanRedo());
    u.AddPrevious(item("a"));
    EXPECT_FALSE(u.CanRedo());
}

TEST(UndoRedo, EmptyStacksAnswerNull)
{
    CZelUndoRedo u;
    EXPECT_EQ(u.Undo(item("x")), nullptr);
    EXPECT_EQ(u.Redo(item("x")), nullptr);
    EXPECT_FALSE(u.CanRedo()) << "a failed undo must not leave a redo step";
    u.AddPrevious(nullptr);
    EXPECT_FALSE(u.CanUndo());
    u.AddPrevious(item("a"));
    u.Empty();
    EXPECT_FALSE(u.CanUndo());
    CZelEditUndoRedoItem fresh;
    EXPECT_EQ(fresh.m_start, CZelEditUndoRedoItem::NoSelection);
    EXPECT_EQ(fresh.m_end, CZelEditUndoRedoItem::NoSelection);
}
