// Which navigation keys an edit keeps, and how showing and hiding reach validation.
#include <Zel260/controls/qt/CZelEdit.h>
#include <Zel260/controls/qt/CZelInlineControlContainer.h>

#include <QDialog>
#include <QTest>
#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace {

class Watched : public CZelEdit {
public:
    using CZelEdit::CZelEdit;
    void OnShowWindow(BOOL show, UINT status) override
    {
        shows.emplace_back(show, status);
        CZelEdit::OnShowWindow(show, status);
    }
    void OnEmptyChanged() override
    {
        ++emptyChanges;
        CZelEdit::OnEmptyChanged();
    }
    std::vector<std::pair<BOOL, UINT>> shows;
    int emptyChanges = 0;
};

} // namespace

TEST(EditDlgCode, ByWhereTheEditLives)
{
    QDialog dialog;
    QWidget form;
    form.setProperty("zelFormView", true);
    QWidget plain;
    CZelEdit outer(&dialog);
    struct Row {
        const char* name;
        QWidget* parent;
        UINT code;
    };
    const Row rows[] = {
        {"in a dialog", &dialog, 0},
        {"in a form view", &form, 0},
        {"in a plain window", &plain, 0},
        {"inside another edit", &outer, DLGC_WANTTAB},
    };
    for (const Row& r : rows) {
        CZelEdit e(r.parent);
        EXPECT_EQ(e.OnGetDlgCode(), r.code) << r.name;
    }
    CZelInlineControlContainer container(&dialog);
    auto* inlineEdit = new CZelEdit;
    ASSERT_TRUE(inlineEdit->CreateInline(0, CRect(0, 0, 10, 10), &container, 500, nullptr));
    EXPECT_EQ(inlineEdit->OnGetDlgCode(), static_cast<UINT>(DLGC_WANTTAB)) << "inline, in its container (a dialog)";
}

namespace {

// An inline edit as a grid would make it, without a container around.
class InlineEdit : public CZelEdit {
public:
    explicit InlineEdit(QWidget* parent) : CZelEdit(parent) { m_inline = 1; }
};

} // namespace

TEST(EditDlgCode, KeptKeysDontLeaveTheEdit)
{
    QDialog dialog;
    auto* outer = new CZelEdit(&dialog);
    outer->setGeometry(0, 0, 200, 24);
    auto* inner = new CZelEdit(outer);
    inner->setGeometry(0, 0, 60, 20);
    auto* grid = new QWidget(&dialog);
    grid->setGeometry(0, 30, 200, 30);
    auto* cell = new InlineEdit(grid);
    cell->setGeometry(0, 0, 60, 20);
    auto* next = new CZelEdit(&dialog);
    next->setGeometry(0, 70, 80, 20);
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
    dialog.activateWindow();

    inner->setFocus();
    QTest::keyClick(inner, Qt::Key_Tab);
    EXPECT_TRUE(inner->hasFocus()) << "Tab stays in an edit inside an edit";

    cell->setFocus();
    QTest::keyClick(cell, Qt::Key_Tab);
    EXPECT_TRUE(cell->hasFocus()) << "Tab stays in an inline edit";
    QTest::keyClick(cell, Qt::Key_Escape);
    EXPECT_TRUE(dialog.isVisible()) << "an inline edit keeps Escape from the dialog";

    next->setFocus();
    QTest::keyClick(next, Qt::Key_Tab);
    EXPECT_FALSE(next->hasFocus()) << "a dialog's own edit leaves Tab to the dialog";
    inner->setFocus();
    QTest::keyClick(inner, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible()) << "an edit that keeps only Tab leaves Escape to the dialog";
}

TEST(EditShowWindow, OwnShowChangesValidityParentsDoesNot)
{
    QWidget parent;
    auto* e = new Watched(&parent);
    e->SetEmptyAllowed(0);
    parent.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&parent));
    e->shows.clear();
    e->emptyChanges = 0;

    e->hide();
    EXPECT_EQ(e->emptyChanges, 1) << "a hidden required edit no longer counts as empty";
    e->show();
    EXPECT_EQ(e->emptyChanges, 2);
    ASSERT_EQ(e->shows.size(), 2u);
    EXPECT_EQ(e->shows[0], std::make_pair(BOOL(FALSE), UINT(0)));
    EXPECT_EQ(e->shows[1], std::make_pair(BOOL(TRUE), UINT(0)));

    e->shows.clear();
    parent.hide();
    parent.show();
    EXPECT_EQ(e->emptyChanges, 2) << "the parent closing and opening changes nothing";
    ASSERT_EQ(e->shows.size(), 2u);
    EXPECT_EQ(e->shows[0], std::make_pair(BOOL(FALSE), SW_PARENTCLOSING));
    EXPECT_EQ(e->shows[1], std::make_pair(BOOL(TRUE), SW_PARENTOPENING));
}
