// A dialog's tool bar, the edits that take the place of template controls, the
// main window's shortcuts and F1 help.
#include <Zel260/controls/qt/CZelEdit.h>
#include <Zel260/controls/qt/CZelEditSwitched.h>
#include <Zel260/hosts/qt/CZelDialog.h>
#include <Zel260/hosts/qt/CZelDialogCV.h>
#include <Zel260/hosts/qt/CZelDlgToolBar.h>
#include <Zel260/hosts/qt/ZelDialogTemplates.h>
#include <Zel260/platform/ResourceModule.h>
#include <Zel260/platform/qt/QtWindowBackend.h>

#include <QAction>
#include <QApplication>
#include <QMainWindow>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace {

constexpr UINT kTemplate = 30101;
constexpr int kField = 1005;
constexpr UINT kZoom = 40001;

HINSTANCE module()
{
    static HINSTANCE m = [] {
        HINSTANCE h = ZelCreateResourceModule("DialogToolbarTest");
        ZelRegisterDialogTemplate(h, kTemplate, {"Bar", 0, 0, [](QWidget* d) {
                                                     auto* e = new QLineEdit("template text", d);
                                                     e->setGeometry(10, 10, 120, 24);
                                                     ZelSetDlgCtrlID(ZelHwndFromWidget(e), kField);
                                                     auto* ok = new QPushButton("OK", d);
                                                     ok->setGeometry(10, 50, 60, 24);
                                                     ZelSetDlgCtrlID(ZelHwndFromWidget(ok), IDOK);
                                                 }});
        return h;
    }();
    return m;
}

// An edit kind of its own, to see the class switch.
class UpperEdit : public CZelEdit {
    DECLARE_DYNCREATE(UpperEdit)
public:
    UpperEdit() { SetConversion(eConversionUpper); }
};
IMPLEMENT_DYNCREATE(UpperEdit, CZelEdit)

class BarDialog : public CZelDialog {
public:
    BarDialog() : CZelDialog(kTemplate) { SetAutoDelete(FALSE); }
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override
    {
        commands.push_back(LOWORD(wParam));
        return CZelDialog::OnCommand(wParam, lParam);
    }
    std::vector<UINT> commands;
};

QWidget* item(CZelDialog& d, int id) { return ZelWidgetFromHwnd(::GetDlgItem(d.GetSafeHwnd(), id)); }

} // namespace

TEST(DialogToolbar, MadeAtInitOnTopAndSpeaksWmCommand)
{
    BarDialog plain;
    ASSERT_TRUE(plain.Create(module(), nullptr));
    EXPECT_EQ(plain.GetToolbar(), nullptr) << "no bar unless enabled";

    BarDialog d;
    d.EnableToolbar(TRUE);
    ASSERT_TRUE(d.Create(module(), nullptr));
    CZelDlgToolBar* bar = d.GetToolbar();
    ASSERT_NE(bar, nullptr);
    const int h = bar->height();
    EXPECT_GT(h, 0);
    EXPECT_EQ(bar->y(), 0);
    EXPECT_EQ(item(d, kField)->y(), 10 + h) << "the template's controls move below the bar";
    EXPECT_EQ(item(d, IDOK)->y(), 50 + h);
    EXPECT_TRUE(d.CreateToolbar()) << "a second call keeps the one bar";
    EXPECT_EQ(item(d, kField)->y(), 10 + h);

    EXPECT_TRUE(bar->AddButton(kZoom, "Zoom", "Zoom in"));
    EXPECT_FALSE(bar->AddButton(kZoom, "Again")) << "ids are unique";
    EXPECT_FALSE(bar->AddButton(0, "No id"));
    EXPECT_EQ(bar->GetButtonCount(), 1);
    bar->GetButtonAction(kZoom)->trigger();
    ASSERT_EQ(d.commands.size(), 1u);
    EXPECT_EQ(d.commands[0], kZoom);
    EXPECT_TRUE(bar->EnableButton(kZoom, FALSE));
    EXPECT_FALSE(bar->IsButtonEnabled(kZoom));
    EXPECT_FALSE(bar->EnableButton(kZoom + 1, TRUE));
}

TEST(DialogAddEdit, TakesTheControlsPlaceAndSwitchesItsKind)
{
    BarDialog d;
    ASSERT_TRUE(d.Create(module(), nullptr));
    const QRect place = item(d, kField)->geometry();

    EXPECT_EQ(d.AddEdit(9999), nullptr) << "no such control";
    EXPECT_EQ(d.AddEdit(kField, RUNTIME_CLASS(CZelDialog)), nullptr) << "not an edit";
    CZelEditSwitched* f = d.AddEdit(kField);
    ASSERT_NE(f, nullptr);
    EXPECT_EQ(d.GetEditSwitched(kField), f);
    CZelEdit* first = f->GetEdit();
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(item(d, kField), first) << "the id now names the edit";
    EXPECT_EQ(first->geometry(), place);

    f->SetString("abc");
    f->SetEmptyAllowed(0);
    ASSERT_TRUE(f->Switch(RUNTIME_CLASS(UpperEdit)));
    CZelEdit* second = f->GetEdit();
    ASSERT_NE(second, first);
    EXPECT_NE(dynamic_cast<UpperEdit*>(second), nullptr);
    EXPECT_EQ(item(d, kField), second);
    EXPECT_EQ(second->geometry(), place);
    EXPECT_EQ(f->GetString(), CString("abc")) << "the text survives the switch";
    EXPECT_EQ(f->GetEmptyAllowed(), 0);
    EXPECT_FALSE(f->Switch(RUNTIME_CLASS(CZelDialog)));
    EXPECT_EQ(f->GetEdit(), second) << "a failed switch keeps the edit";

    f->SetString("");
    EXPECT_EQ(f->ValidateEmpty(), 1) << "validation reaches the edit held";
    QTest::keyClicks(second, "xy");
    EXPECT_EQ(f->GetString(), CString("XY")) << "typing goes to the new kind";
}

namespace {

class HelpDialog : public BarDialog {
public:
    BOOL OnHelpInfo(UINT id) override
    {
        helps.push_back({id, IsHelpKey()});
        return BarDialog::OnHelpInfo(id);
    }
    std::vector<std::pair<UINT, BOOL>> helps;
};

} // namespace

TEST(DialogKeys, TakesTheMainWindowsShortcuts)
{
    QMainWindow main;
    auto* find = new QAction("Find", &main);
    find->setShortcut(QKeySequence("Ctrl+K"));
    main.addAction(find);
    auto* plain = new QAction("No key", &main);
    main.addAction(plain);

    BarDialog d;
    d.setParent(&main, d.windowFlags());
    ASSERT_TRUE(d.Create(module(), nullptr));
    EXPECT_EQ(d.GetAcceleratorCount(), 1);
    EXPECT_TRUE(d.actions().contains(find)) << "the shortcut works in the dialog's window";
    EXPECT_FALSE(d.actions().contains(plain));

    BarDialog off;
    off.SetAcceleratorsActive(FALSE);
    off.setParent(&main, off.windowFlags());
    ASSERT_TRUE(off.Create(module(), nullptr));
    EXPECT_EQ(off.GetAcceleratorCount(), 0);
}

TEST(DialogKeys, F1GoesUpFromAChildDialog)
{
    HelpDialog d;
    ASSERT_TRUE(d.Create(module(), nullptr));
    QWidget* field = item(d, kField);
    field->setFocus();
    QTest::keyClick(field, Qt::Key_F1);
    ASSERT_EQ(d.helps.size(), 1u);
    EXPECT_EQ(d.helps[0].first, static_cast<UINT>(kField)) << "the control with the focus";
    EXPECT_TRUE(d.helps[0].second) << "the help key flag is up meanwhile";
    EXPECT_FALSE(d.IsHelpKey());
    EXPECT_FALSE(d.OnHelpInfo(0)) << "no main window to ask";

    // A child dialog hands F1 to the dialog it lives in.
    HelpDialog host;
    ASSERT_TRUE(host.Create(module(), nullptr));
    HelpDialog child;
    child.SetChildInDialog(TRUE);
    ASSERT_TRUE(child.CreateChild(module(), &host));
    QWidget* inner = item(child, kField);
    inner->setFocus();
    QTest::keyClick(inner, Qt::Key_F1);
    ASSERT_EQ(host.helps.size(), 1u);
    EXPECT_EQ(host.helps[0].first, static_cast<UINT>(kField));
    EXPECT_EQ(child.helps.size(), 1u);
}

namespace {

class RuledCV : public CZelDialogCV {
public:
    RuledCV() : CZelDialogCV(kTemplate) { SetAutoDelete(FALSE); }
    BOOL OnChildDialogEnableOk(BOOL) override { return childSaysOk; }
    BOOL childSaysOk = TRUE;
};

} // namespace

TEST(DialogChildren, CreateCheckedIndirectAndTheChildRuleForOk)
{
    BarDialog host;
    ASSERT_TRUE(host.Create(module(), nullptr));
    CZelDialog child;
    child.SetAutoDelete(FALSE);
    ASSERT_TRUE(CZelDialogExtensions::CreateCheckedIndirect(module(), kTemplate, &child, &host, TRUE));
    EXPECT_FALSE(child.isWindow()) << "a child has no frame of its own";
    EXPECT_EQ(child.parentWidget(), &host);
    CZelDialog popup;
    popup.SetAutoDelete(FALSE);
    ASSERT_TRUE(CZelDialogExtensions::CreateCheckedIndirect(module(), kTemplate, &popup, &host, FALSE));
    EXPECT_TRUE(popup.isWindow());
    EXPECT_TRUE(popup.isVisible());
    CZelDialog missing;
    EXPECT_FALSE(CZelDialogExtensions::CreateCheckedIndirect(module(), 9999, &missing, &host, TRUE));
    EXPECT_FALSE(CZelDialogExtensions::CreateCheckedIndirect(module(), kTemplate, nullptr, &host, TRUE));

    RuledCV cv;
    ASSERT_TRUE(cv.Create(module(), nullptr));
    QApplication::processEvents();
    cv.childSaysOk = FALSE;
    cv.EnableOkButton();
    EXPECT_FALSE(item(cv, IDOK)->isEnabled()) << "the child rule holds OK back";
    cv.childSaysOk = TRUE;
    cv.EnableOkButton();
    EXPECT_TRUE(item(cv, IDOK)->isEnabled());
}
