// The edit base driven by real keys: filtering, clipboard, undo and redo, last items.
#include <Zel260/controls/qt/CZelEdit.h>
#include <Zel260/controls/qt/CZelInputControlContainer.h>
#include <Zel260/controls/qt/CZelMenuPopUpEdit.h>
#include <Zel260/frame/ZelMessages.h>
#include <Zel260/platform/SysColors.h>
#include <Zel260/platform/qt/QtWindowBackend.h>

#include "TestSupport.h"

#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

class Edit : public CZelEdit {
public:
    using CZelEdit::CZelEdit;
    void Beep() override { ++beeps; }
    void DispatchSpinDeltapos(int up, int delta) override
    {
        dispatched.push_back(up ? delta : -1000 + delta);
        CZelEdit::DispatchSpinDeltapos(up, delta);
    }
    void OnSpinDeltapos(int, int delta) override { spinDeltas.push_back(delta); }
    int beeps = 0;
    std::vector<int> dispatched;
    std::vector<int> spinDeltas;
};

class EditTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ini = CString((dir.path() + "/edit.ini").c_str());
        auto* layout = new QVBoxLayout(&dialog);
        edit = new Edit(&dialog);
        other = new Edit(&dialog);
        ZelSetDlgCtrlID(ZelHwndFromWidget(edit), 1001);
        ZelSetDlgCtrlID(ZelHwndFromWidget(other), 1002);
        layout->addWidget(edit);
        layout->addWidget(other);
        for (Edit* e : {edit, other}) {
            e->SetLastItemsIniFile(ini);
            e->SetEmptyAllowed(1);
        }
        dialog.show();
        QApplication::setActiveWindow(&dialog);
        ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
        edit->setFocus();
        QApplication::clipboard()->clear();
    }
    std::string value(const Edit* e) const { return e->GetRawString().GetString(); }
    void leave() { QTest::keyClick(edit, Qt::Key_Tab); }

    zeltest::TempDir dir;
    CString ini;
    QDialog dialog;
    Edit* edit = nullptr;
    Edit* other = nullptr;
};

} // namespace

TEST_F(EditTest, TypedCharactersAreConvertedAndFiltered)
{
    edit->SetConversion(CZelEdit::eConversionUpper);
    edit->SetNotAllowedChars("x");
    QTest::keyClicks(edit, "abx1");
    EXPECT_EQ(value(edit), "ABX1");
    EXPECT_EQ(edit->beeps, 0) << "x is converted to X before the test";

    edit->clear();
    edit->SetConversion(CZelEdit::eConversionNone);
    edit->SetAllowedChars(CZelEdit::eAllowedCharsAlpha);
    QTest::keyClicks(edit, "ax1b");
    EXPECT_EQ(value(edit), "ab") << "not-allowed beats allowed, digits aren't letters";
    EXPECT_EQ(edit->beeps, 2);

    CString custom("+-");
    edit->clear();
    edit->SetAllowedChars(CZelEdit::eAllowedCharsCustom, &custom);
    edit->SetNotAllowedChars("");
    QTest::keyClicks(edit, "+a-");
    EXPECT_EQ(value(edit), "+-");
}

TEST_F(EditTest, PasteFiltersButKeepsBlanksUntilLeaving)
{
    edit->SetConversion(CZelEdit::eConversionUpper);
    QApplication::clipboard()->setText("  abc");
    QTest::keyClick(edit, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(value(edit), "  ABC");
    leave();
    EXPECT_EQ(value(edit), "ABC");
}

TEST_F(EditTest, PasteIntoAFullControlBeepsAndChangesNothing)
{
    edit->SetMaxChars(4);
    QTest::keyClicks(edit, "abcd");
    QApplication::clipboard()->setText("xy");
    QTest::keyClick(edit, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(value(edit), "abcd");
    EXPECT_EQ(edit->beeps, 1);

    // Room for part of it: the tail is cut.
    edit->setCursorPosition(0);
    QTest::keyClick(edit, Qt::Key_Delete);
    QTest::keyClick(edit, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(value(edit), "xbcd");
    EXPECT_EQ(edit->cursorPosition(), 1);

    // Read-only and empty clipboards beep too.
    QApplication::clipboard()->clear();
    edit->setSelection(0, 4);
    QTest::keyClick(edit, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(edit->beeps, 2);
}

TEST_F(EditTest, PasteCountsAndCutsWholeCharacters)
{
    // Lengths count characters, so a character outside the basic plane is one and
    // is never cut in half.
    edit->SetMaxChars(2);
    QApplication::clipboard()->setText(QString::fromUtf8("a\xF0\x9F\x98\x80" "b"));
    QTest::keyClick(edit, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(value(edit), "a\xF0\x9F\x98\x80");
    EXPECT_EQ(edit->beeps, 0);

    QTest::keyClick(edit, Qt::Key_Backspace);
    EXPECT_EQ(value(edit), "a") << "Backspace takes the whole character";
    edit->SetString(QString::fromUtf8("\xF0\x9F\x98\x80" "b").toUtf8().constData());
    edit->setCursorPosition(0);
    QTest::keyClick(edit, Qt::Key_Delete);
    EXPECT_EQ(value(edit), "b") << "Delete takes the whole character";
}

TEST_F(EditTest, UndoAndRedoFollowTheStackRules)
{
    QTest::keyClicks(edit, "ab");
    EXPECT_EQ(edit->GetUndoRedo().GetUndoCount(), 2u);
    QTest::keyClick(edit, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(value(edit), "a");
    EXPECT_EQ(edit->GetUndoRedo().GetUndoCount(), 1u) << "a restored text pushes no further undo step";
    QTest::keyClick(edit, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(value(edit), "");
    QTest::keyClick(edit, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(edit->beeps, 1) << "nothing left to undo";
    QTest::keyClick(edit, Qt::Key_Y, Qt::ControlModifier);
    QTest::keyClick(edit, Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(value(edit), "ab");
    QTest::keyClick(edit, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(edit->CanRedo());
    QTest::keyClicks(edit, "c");
    EXPECT_FALSE(edit->CanRedo()) << "a change after an undo forgets the redo steps";
    EXPECT_EQ(value(edit), "ac");
}

TEST_F(EditTest, ClipboardCommandsAndDeleteKeys)
{
    QTest::keyClicks(edit, "hello");
    QTest::keyClick(edit, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(edit->beeps, 1) << "copy without a selection";
    edit->setSelection(1, 3);
    QTest::keyClick(edit, Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(value(edit), "ho");
    EXPECT_EQ(QApplication::clipboard()->text(), "ell");
    edit->setCursorPosition(1);
    QTest::keyClick(edit, Qt::Key_Backspace);
    EXPECT_EQ(value(edit), "o");
    EXPECT_EQ(edit->cursorPosition(), 0);
    QTest::keyClick(edit, Qt::Key_Delete);
    EXPECT_EQ(value(edit), "");
    edit->setEchoMode(QLineEdit::Password);
    edit->InitializeEdit();
    QTest::keyClicks(edit, "secret");
    QTest::keyClick(edit, Qt::Key_A, Qt::ControlModifier);
    const int beeps = edit->beeps;
    QTest::keyClick(edit, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(edit->beeps, beeps + 1) << "a password is never copied";
}

TEST_F(EditTest, EmptyIsNotTheUsersChange)
{
    QTest::keyClicks(edit, "abc");
    EXPECT_EQ(edit->GetChangedByUser(), 1);
    edit->Empty();
    EXPECT_EQ(edit->GetChangedByUser(), 0);
    EXPECT_TRUE(edit->IsEmpty());
    edit->SetString("program");
    EXPECT_EQ(edit->GetChangedByUser(), 0);
    EXPECT_EQ(edit->text(), "program");
}

TEST_F(EditTest, LastItemsKeepOnlyValidEntriesAndNeverPasswords)
{
    edit->SetMinChars(3);
    QTest::keyClicks(edit, "ab");
    leave();
    EXPECT_TRUE(edit->GetAllLastItems().empty()) << "too short: invalid, not remembered";
    edit->setFocus();
    QTest::keyClicks(edit, "c");
    leave();
    ASSERT_EQ(edit->GetAllLastItems().size(), 1u);
    EXPECT_EQ(edit->GetLastItem(CZelEdit::kFirstLastItemCommand), "abc");
    EXPECT_EQ(edit->GetLastItemsSection(), "QDialog::CZelEdit::1001");

    other->setEchoMode(QLineEdit::Password);
    other->InitializeEdit();
    other->setFocus();
    QTest::keyClicks(other, "secret");
    edit->setFocus();
    EXPECT_TRUE(other->GetAllLastItems().empty());

    // Insert puts a last item in place of the content.
    edit->clear();
    edit->Insert(CZelEdit::kFirstLastItemCommand);
    EXPECT_EQ(value(edit), "abc");
    edit->Insert(CZelEdit::kFirstLastItemCommand + 5);
    EXPECT_EQ(edit->beeps, 1);
}

TEST_F(EditTest, ArrowsGoToTheSpinWhenThereIsOne)
{
    edit->SetSpinDelta(5);
    QTest::keyClick(edit, Qt::Key_Up);
    QTest::keyClick(edit, Qt::Key_Down);
    EXPECT_EQ(edit->dispatched, (std::vector<int>{-5, -1000 + 5}));
    edit->CreateSpinButton();
    edit->dispatched.clear();
    edit->spinDeltas.clear();
    QTest::keyClick(edit, Qt::Key_Up);
    EXPECT_TRUE(edit->dispatched.empty());
    EXPECT_EQ(edit->spinDeltas, std::vector<int>{-5});
    EXPECT_GT(edit->GetMinWidth(), 0);
}

TEST_F(EditTest, LengthLimitsGiveTheirReasons)
{
    edit->SetMinChars(3);
    edit->SetMaxChars(5);
    CString reason;
    EXPECT_EQ(edit->InternalValidate("ab", &reason), CZelInputControl::eStateInvalid);
    EXPECT_EQ(reason, "Field contains 2 characters, minimum is 3 characters");
    EXPECT_EQ(edit->InternalValidate("abcdef", &reason), CZelInputControl::eStateInvalid);
    EXPECT_EQ(reason, "Field contains 6 characters, maximum is 5 characters");
    EXPECT_EQ(edit->InternalValidate("äöü", &reason), CZelInputControl::eStateValid) << "characters, not bytes";
    EXPECT_TRUE(reason.IsEmpty());
    edit->SetEmptyAllowed(0);
    EXPECT_EQ(edit->InternalValidate("", &reason), CZelInputControl::eStateEmpty);
}

TEST_F(EditTest, ContextMenuCommandsAndLastItems)
{
    CZelMenuPopUpEdit plain(edit);
    plain.LoadMenu(CZelMenuPopUpEdit::MenuTemplate(), {});
    const QList<QAction*> a = plain.actions();
    ASSERT_FALSE(a.isEmpty());
    EXPECT_FALSE(a.front()->isSeparator()) << "no separator at the top once Insert is gone";
    EXPECT_EQ(a.front()->text(), "&Undo\tCtrl+Z");
    EXPECT_EQ(CZelMenuPopUpEdit::CommandOf(a.front()), WM_UNDO);
    EXPECT_EQ(a.back()->text(), "&Select All\tCtrl+A");
    EXPECT_EQ(CZelMenuPopUpEdit::CommandOf(a.back()), WM_ZEL_EDIT_SELECT_ALL);

    CZelMenuPopUpEdit withItems(edit);
    withItems.LoadMenu(CZelMenuPopUpEdit::MenuTemplate(), {CString("R&D"), CString("x")});
    QMenu* insert = withItems.actions().front()->menu();
    ASSERT_NE(insert, nullptr);
    EXPECT_EQ(insert->title(), "&Insert");
    ASSERT_EQ(insert->actions().size(), 2);
    EXPECT_EQ(insert->actions()[0]->text(), "R&&D");
    EXPECT_EQ(CZelMenuPopUpEdit::CommandOf(insert->actions()[1]), CZelEdit::kFirstLastItemCommand + 1);

    // A command from the menu reaches the edit through the message layer.
    QTest::keyClicks(edit, "abc");
    edit->SendMessage(WM_COMMAND, WM_ZEL_EDIT_SELECT_ALL);
    EXPECT_EQ(edit->selectedText(), "abc");
}

TEST_F(EditTest, ColoursOfTheThreeStates)
{
    edit->SetColorText(RGB(200, 0, 0));
    EXPECT_EQ(edit->palette().color(QPalette::Active, QPalette::Text), QColor(200, 0, 0));
    const COLORREF window = GetSysColor(5);
    EXPECT_EQ(edit->palette().color(QPalette::Active, QPalette::Base),
              QColor(GetRValue(window), GetGValue(window), GetBValue(window)));
    edit->SetColorBkReadOnly(RGB(1, 2, 3));
    edit->SetReadOnlyMode(1);
    EXPECT_TRUE(edit->isReadOnly());
    EXPECT_EQ(edit->palette().color(QPalette::Active, QPalette::Base), QColor(1, 2, 3));
}

namespace {

class ReasonContainer : public CZelInputControlContainer {
public:
    using CZelInputControlContainer::CZelInputControlContainer;
    int OnShowValidationText(HWND, unsigned int, unsigned long, CString* text) override
    {
        reasons.push_back(text->GetString());
        return 0;
    }
    std::vector<std::string> reasons;
};

} // namespace

TEST_F(EditTest, ContainerHoldsTheFocusOnATooShortEntry)
{
    ReasonContainer container(CWnd::FromHandle(ZelHwndFromWidget(&dialog)));
    container.HookContainer();
    container.HookAllDlgCtrls();
    edit->SetMinChars(3);
    QTest::keyClicks(edit, "ab");
    QTest::keyClick(edit, Qt::Key_Tab);
    EXPECT_TRUE(edit->hasFocus());
    EXPECT_EQ(container.reasons, std::vector<std::string>{"Field contains 2 characters, minimum is 3 characters"});
    EXPECT_EQ(value(edit), "ab");
    QTest::keyClicks(edit, "c");
    QTest::keyClick(edit, Qt::Key_Tab);
    EXPECT_TRUE(other->hasFocus());
}

#include <Zel260/controls/qt/CZelLastDocQMenu.h>
#include <Zel260/services/CZelLastDocuments.h>

TEST(LastDocQMenu, ShowsTheDocumentsInPlaceOfThePlaceholder)
{
    zeltest::TempDir dir;
    CZelLastDocuments docs(dir.file("docs.ini").c_str(), 3);
    docs.Section("Test");
    QMenu menu;
    menu.addAction("Open");
    CZelLastDocQMenu recent(&menu);
    const UINT ids[] = {501, 502, 503, 0};
    docs.CreateLastDocMenu(recent, 500, ids);
    ASSERT_EQ(menu.actions().size(), 2);
    EXPECT_FALSE(menu.actions()[1]->isEnabled()) << "the placeholder stands alone while the list is empty";
    docs.AddDocument("/data/a.job");
    docs.AddDocument("/data/b.job");
    ASSERT_EQ(menu.actions().size(), 3);
    EXPECT_EQ(menu.actions()[1]->text(), "&1  /data/b.job");
    EXPECT_EQ(menu.actions()[2]->data().toUInt(), 502u);
}

namespace {

class ButtonEdit : public CZelEdit {
public:
    using CZelEdit::CZelEdit;
    void OnButtonClicked() override { ++clicks; }
    int clicks = 0;
};

} // namespace

TEST(EditButton, StandsAtTheRightEndAndFollowsReadOnly)
{
    QDialog dialog;
    auto* edit = new ButtonEdit(&dialog);
    edit->setGeometry(10, 10, 200, 24);
    dialog.show();
    ASSERT_TRUE(edit->CreateEditButton("..."));
    QPushButton* button = edit->GetEditButton();
    ASSERT_NE(button, nullptr);
    EXPECT_EQ(button->geometry().right(), edit->width() - 1);
    EXPECT_GE(button->width(), edit->height()) << "at least as wide as the edit is high";
    EXPECT_EQ(edit->GetMinWidth(), button->width());
    EXPECT_NE(GetDlgCtrlID(ZelHwndFromWidget(button)), 0) << "a free id of its own";
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(edit->clicks, 1);
    edit->SetReadOnlyMode(1);
    EXPECT_FALSE(button->isEnabled());
    edit->DeleteEditButton();
    EXPECT_EQ(edit->GetEditButton(), nullptr);
    EXPECT_EQ(edit->GetMinWidth(), 0);
}
