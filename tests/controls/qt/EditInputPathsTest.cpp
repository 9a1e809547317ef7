// Every road by which text enters an edit keeps the edit's rules: the length limit
// binds the user and not the program, read-only takes nothing, and Qt's own editing
// paths (its key bindings, drops, composed input) go through the library's filter.
#include <Zel260/controls/qt/CZelEdit.h>
#include <Zel260/platform/qt/QtWindowBackend.h>

#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QGroupBox>
#include <QInputMethodEvent>
#include <QMimeData>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>

#include <string>

namespace {

class Edit : public CZelEdit {
public:
    using CZelEdit::CZelEdit;
    void Beep() override { ++beeps; }
    // A display form longer than the input form, as the numeric edits make.
    void ShowDisplayValue() override
    {
        if (!decorate) {
            CZelEdit::ShowDisplayValue();
            return;
        }
        CZelIgnoreEditChange ignore(this);
        setText(QString("value: ") + QString::fromUtf8(GetRawString().GetString()));
    }
    bool decorate = false;
    int beeps = 0;
};

class EditInputPaths : public ::testing::Test {
protected:
    void SetUp() override
    {
        auto* layout = new QVBoxLayout(&dialog);
        edit = new Edit(&dialog);
        other = new Edit(&dialog);
        ZelSetDlgCtrlID(ZelHwndFromWidget(edit), 1001);
        ZelSetDlgCtrlID(ZelHwndFromWidget(other), 1002);
        layout->addWidget(edit);
        layout->addWidget(other);
        for (Edit* e : {edit, other})
            e->SetEmptyAllowed(1);
        dialog.show();
        QApplication::setActiveWindow(&dialog);
        ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
        edit->setFocus();
        QApplication::clipboard()->clear();
    }
    std::string raw() const { return edit->GetRawString().GetString(); }
    std::string shown() const { return edit->text().toStdString(); }

    QDialog dialog;
    Edit* edit = nullptr;
    Edit* other = nullptr;
};

} // namespace

TEST_F(EditInputPaths, MaxCharsLimitsTypingButNotTheProgramsText)
{
    edit->SetMaxChars(3);
    edit->SetString("abcdef");
    EXPECT_EQ(shown(), "abcdef") << "the program's text is shown whole";
    CString reason;
    EXPECT_EQ(edit->Validate(&reason), CZelInputControl::eStateInvalid);
    EXPECT_STREQ(reason.GetString(), "Field contains 6 characters, maximum is 3 characters");

    edit->SetString("");
    QTest::keyClicks(edit, "abcd");
    EXPECT_EQ(raw(), "abc") << "typing stops at the limit";
    EXPECT_GE(edit->beeps, 1);
}

TEST_F(EditInputPaths, LongDisplayFormSurvivesTheReturnOfTheFocus)
{
    edit->decorate = true;
    edit->SetMaxChars(3);
    edit->SetDisplayFormat(CString("%s"));
    edit->SetString("abc");
    other->setFocus();
    ASSERT_EQ(shown(), "value: abc");
    QTest::keyClick(other, Qt::Key_Backtab);
    ASSERT_TRUE(edit->hasFocus());
    EXPECT_EQ(shown(), "abc");
    EXPECT_EQ(raw(), "abc");
    EXPECT_EQ(edit->GetChangedByUser(), 0) << "showing a form is no change by the user";
}

TEST_F(EditInputPaths, ReadOnlyTakesNoTypedCharacters)
{
    edit->SetString("abc");
    edit->SetReadOnlyMode(1);
    edit->setCursorPosition(3);
    QTest::keyClicks(edit, "xy");
    EXPECT_EQ(raw(), "abc");
    EXPECT_EQ(shown(), "abc");
}

TEST_F(EditInputPaths, QtsOwnEditingKeysUseTheLibrarysCommands)
{
    edit->SetConversion(CZelEdit::eConversionUpper);
    QApplication::clipboard()->setText("pq");
    QTest::keyClicks(edit, "ab");
    // Qt binds further keys to undo, redo, cut, copy and paste; each must take the
    // library's road (its stack, its filter, its beeps), not the line edit's own.
    for (const QKeySequence& k : QKeySequence::keyBindings(QKeySequence::Paste)) {
        if (k == QKeySequence(Qt::CTRL | Qt::Key_V) || k == QKeySequence(Qt::SHIFT | Qt::Key_Insert))
            continue;
        const QKeyCombination combo = k[0];
        QTest::keyClick(edit, combo.key(), combo.keyboardModifiers());
        EXPECT_EQ(raw().substr(raw().size() - 2), "PQ") << k.toString().toStdString() << " pastes converted";
    }
    for (const QKeySequence& k : QKeySequence::keyBindings(QKeySequence::Undo)) {
        if (k == QKeySequence(Qt::CTRL | Qt::Key_Z))
            continue;
        edit->SetString("");
        QTest::keyClicks(edit, "ab");
        const QKeyCombination combo = k[0];
        QTest::keyClick(edit, combo.key(), combo.keyboardModifiers());
        EXPECT_EQ(raw(), "A") << k.toString().toStdString() << " undoes one library step";
    }
    edit->SetString("");
    edit->beeps = 0;
    for (const QKeySequence& k : QKeySequence::keyBindings(QKeySequence::Cut)) {
        if (k == QKeySequence(Qt::CTRL | Qt::Key_X))
            continue;
        const QKeyCombination combo = k[0];
        QTest::keyClick(edit, combo.key(), combo.keyboardModifiers());
    }
    const int extraCuts = static_cast<int>(QKeySequence::keyBindings(QKeySequence::Cut).size()) - 1;
    EXPECT_EQ(edit->beeps, extraCuts) << "cutting nothing beeps on every binding";
}

TEST_F(EditInputPaths, DroppedAndComposedTextIsFiltered)
{
    edit->SetConversion(CZelEdit::eConversionUpper);
    edit->SetAllowedChars(CZelEdit::eAllowedCharsAlpha, nullptr);

    QMimeData data;
    data.setText("a1b");
    QDragEnterEvent enter(QPoint(2, 2), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(edit, &enter);
    QDropEvent drop(QPointF(2, 2), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(edit, &drop);
    EXPECT_EQ(raw(), "") << "an edit is no drop target";

    QInputMethodEvent composed(QString(), {});
    composed.setCommitString(QString::fromUtf8("\xc3\xa9" "1"));
    QApplication::sendEvent(edit, &composed);
    EXPECT_EQ(raw(), "\xc3\x89") << "a composed letter is converted, the digit refused";
    EXPECT_EQ(edit->beeps, 1);
}

TEST(EditInGroup, ADialogBehindAGroupBoxIsStillTheParent)
{
    QDialog dialog;
    auto* group = new QGroupBox("Group", &dialog);
    (new QVBoxLayout(&dialog))->addWidget(group);
    auto* first = new Edit(group);
    auto* second = new Edit(group);
    auto* layout = new QVBoxLayout(group);
    layout->addWidget(first);
    layout->addWidget(second);
    ZelSetDlgCtrlID(ZelHwndFromWidget(second), 1002);
    dialog.show();
    QApplication::setActiveWindow(&dialog);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    second->SetString("abc");
    first->setFocus();
    QTest::keyClick(first, Qt::Key_Tab);
    ASSERT_TRUE(second->hasFocus());
    EXPECT_EQ(second->selectedText(), "abc") << "TAB into an edit of a dialog selects its text";
    EXPECT_STREQ(second->GetLastItemsSection().GetString(), "QDialog::CZelEdit::1002");
}
