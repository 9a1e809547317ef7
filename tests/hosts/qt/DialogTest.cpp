// Dialogs that validate their controls: OK following required fields, the tool tip
// with its place and time, posted follow-up work, child dialogs and templates.
#include <Zel260/controls/qt/CZelEdit.h>
#include <Zel260/hosts/qt/CZelDialogCV.h>
#include <Zel260/hosts/qt/CZelFormViewCV.h>
#include <Zel260/hosts/qt/CZelWndToolTip.h>
#include <Zel260/hosts/qt/ZelDialogTemplates.h>
#include <Zel260/platform/ResourceModule.h>
#include <Zel260/platform/qt/QtWindowBackend.h>

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

constexpr UINT kTemplate = 30001;
constexpr UINT kChildA = 30002;
constexpr UINT kChildB = 30003;
constexpr int kNumber = 1001;
constexpr int kRequired = 1002;
constexpr int kPlaceholder = 1003;

QWidget* child(QWidget* parent, int id, QWidget* w, QRect r)
{
    ZelSetDlgCtrlID(ZelHwndFromWidget(w), id);
    w->setGeometry(r);
    (void)parent;
    return w;
}

void buildForm(QWidget* dlg)
{
    auto* number = new CZelEdit(dlg);
    number->SetAllowedChars(CZelEdit::eAllowedCharsDigits);
    number->SetMaxChars(6);
    number->SetMinChars(2);
    number->SetEmptyAllowed(1);
    child(dlg, kNumber, number, {10, 10, 120, 24});
    child(dlg, kRequired, new CZelEdit(dlg), {10, 40, 120, 24});
    child(dlg, IDOK, new QPushButton("OK", dlg), {10, 80, 60, 24});
    child(dlg, IDCANCEL, new QPushButton("Cancel", dlg), {80, 80, 60, 24});
}

HINSTANCE module()
{
    static HINSTANCE m = [] {
        HINSTANCE h = ZelCreateResourceModule("DialogTest");
        ZelRegisterDialogTemplate(h, kTemplate, {"Input", 0, 0, buildForm});
        ZelRegisterDialogTemplate(h, kChildA, {"", 0, 0, [](QWidget* d) {
                                                   child(d, 2001, new QLabel("A", d), {0, 0, 20, 20});
                                               }});
        ZelRegisterDialogTemplate(h, kChildB, {"", 0, 0, [](QWidget* d) {
                                                   child(d, 2002, new QLabel("B", d), {0, 0, 20, 20});
                                               }});
        return h;
    }();
    return m;
}

class Form : public CZelDialogCV {
public:
    Form() : CZelDialogCV(kTemplate) { SetAutoDelete(FALSE); }
    BOOL OnInitDialog() override
    {
        events.push_back("init");
        const BOOL r = CZelDialogCV::OnInitDialog();
        events.push_back("init done");
        return r;
    }
    void OnPostInitDialog() override
    {
        CZelDialogCV::OnPostInitDialog();
        events.push_back("post");
    }
    void OnOK() override
    {
        ++oks;
        CZelDialogCV::OnOK();
    }
    CZelEdit* edit(int id) { return dynamic_cast<CZelEdit*>(CWnd::FromHandlePermanent(::GetDlgItem(m_hWnd, id))); }
    QPushButton* button(int id) { return qobject_cast<QPushButton*>(ZelWidgetFromHwnd(::GetDlgItem(m_hWnd, id))); }
    void open()
    {
        ASSERT_TRUE(Create(module(), nullptr));
        QApplication::setActiveWindow(this);
        ASSERT_TRUE(QTest::qWaitForWindowActive(this));
        QCoreApplication::processEvents(); // the posted follow-up
        edit(kNumber)->setFocus();
    }
    std::vector<std::string> events;
    int oks = 0;
};

QPoint bottomLeft(QWidget* w) { return w->mapToGlobal(QPoint(0, w->height())); }

} // namespace

TEST(Dialog, FollowUpWorkRunsAfterInitialisationHasReturned)
{
    Form f;
    ASSERT_TRUE(f.Create(module(), nullptr));
    EXPECT_EQ(f.events, (std::vector<std::string>{"init", "init done"}));
    QCoreApplication::processEvents();
    EXPECT_EQ(f.events, (std::vector<std::string>{"init", "init done", "post"}));
    EXPECT_TRUE(f.IsInitialized());
    EXPECT_TRUE(f.IsModeless());
}

TEST(Dialog, UnknownTemplateFails)
{
    CZelDialog d(39999);
    EXPECT_EQ(d.DoModal(module()), -1);
    EXPECT_FALSE(d.Create(module(), nullptr));
}

TEST(Dialog, OkFollowsTheRequiredField)
{
    Form f;
    f.open();
    QPushButton* ok = f.button(IDOK);
    EXPECT_FALSE(ok->isEnabled()) << "a required field is empty";
    f.edit(kRequired)->setFocus();
    QTest::keyClicks(f.edit(kRequired), "x");
    EXPECT_TRUE(ok->isEnabled());
    QTest::keyClick(f.edit(kRequired), Qt::Key_Backspace);
    EXPECT_FALSE(ok->isEnabled());

    // A click on the disabled OK says why, at the field, for 3 seconds.
    QTest::mouseClick(ok, Qt::LeftButton);
    CZelWndToolTip* tip = f.GetToolTip();
    ASSERT_TRUE(tip->IsShowing());
    EXPECT_EQ(tip->GetText(), "Field must not be empty");
    EXPECT_EQ(tip->GetTime(), 3000u);
    const QPoint at = bottomLeft(f.edit(kRequired));
    EXPECT_EQ(tip->GetAnchorPoint().x, at.x());
    EXPECT_EQ(tip->GetAnchorPoint().y, at.y());
    EXPECT_EQ(f.oks, 0);

    QTest::keyClicks(f.edit(kRequired), "y");
    EXPECT_FALSE(tip->IsShowing()) << "typing hides the tip";
    QTest::mouseClick(ok, Qt::LeftButton);
    EXPECT_EQ(f.oks, 1);
}

TEST(Dialog, InvalidEntryShowsItsReasonBelowTheControlForThreeSeconds)
{
    Form f;
    f.open();
    CZelEdit* number = f.edit(kNumber);
    QTest::keyClicks(number, "7");
    QTest::keyClick(number, Qt::Key_Tab);
    EXPECT_TRUE(number->hasFocus());
    CZelWndToolTip* tip = f.GetToolTip();
    ASSERT_TRUE(tip->IsShowing());
    EXPECT_EQ(tip->GetText(), "Field contains 1 characters, minimum is 2 characters");
    const QPoint at = bottomLeft(number);
    EXPECT_EQ(tip->pos(), at) << "left-aligned below the control";
    EXPECT_FALSE(tip->isActiveWindow());
    QTest::qWait(3300);
    EXPECT_FALSE(tip->IsShowing()) << "the tip goes after its time";

    // Cancel is reachable while blocked.
    QTest::keyClick(number, Qt::Key_Tab);
    ASSERT_TRUE(tip->IsShowing());
    QTest::mouseClick(f.button(IDCANCEL), Qt::LeftButton);
    EXPECT_FALSE(tip->IsShowing());
    EXPECT_FALSE(f.isVisible());
}

TEST(Dialog, ToolTipPlacementsPutTheirPointAtTheGivenPlace)
{
    CZelWndToolTip tip;
    struct Row {
        CZelWndToolTip::eAnchor anchor;
        double fx, fy; // which point of the tip, as fractions of its size
    };
    const Row rows[] = {
        {CZelWndToolTip::eAnchorLeftTop, 0, 0},       {CZelWndToolTip::eAnchorCenterTop, 0.5, 0},
        {CZelWndToolTip::eAnchorRightTop, 1, 0},      {CZelWndToolTip::eAnchorLeftCenter, 0, 0.5},
        {CZelWndToolTip::eAnchorCenterCenter, 0.5, 0.5}, {CZelWndToolTip::eAnchorRightCenter, 1, 0.5},
        {CZelWndToolTip::eAnchorLeftBottom, 0, 1},    {CZelWndToolTip::eAnchorCenterBottom, 0.5, 1},
        {CZelWndToolTip::eAnchorRightBottom, 1, 1},
    };
    for (const Row& r : rows) {
        tip.Show("Some reason", 400, 300, r.anchor, 0);
        const int x = tip.x() + static_cast<int>(tip.width() * r.fx);
        const int y = tip.y() + static_cast<int>(tip.height() * r.fy);
        EXPECT_NEAR(x, 400, 1) << static_cast<int>(r.anchor);
        EXPECT_NEAR(y, 300, 1) << static_cast<int>(r.anchor);
    }
    tip.Show("", 0, 0, CZelWndToolTip::eAnchorLeftTop, 0);
    EXPECT_FALSE(tip.IsShowing()) << "an empty text hides";
}

TEST(Dialog, ChildDialogsShareThePlaceholder)
{
    HINSTANCE m = module();
    ZelRegisterDialogTemplate(m, 30010, {"Pages", 0, 0, [](QWidget* d) {
                                             child(d, kPlaceholder, new QLabel(d), {20, 30, 200, 100});
                                         }});
    CZelDialog host(30010);
    host.SetAutoDelete(FALSE);
    host.SetChildDialogPlaceholder(kPlaceholder);
    host.AddChildDialog(m, kChildA);
    host.AddChildDialog(m, kChildB, TRUE);
    ASSERT_TRUE(host.Create(m, nullptr));
    EXPECT_EQ(::GetDlgItem(host.GetSafeHwnd(), kPlaceholder), nullptr) << "the placeholder gives way";
    ASSERT_EQ(host.GetChildDialogCount(), 2);
    EXPECT_EQ(host.CurrentChildDialogIndex(), 1);
    EXPECT_EQ(host.ChildDialog(0)->geometry(), QRect(20, 30, 200, 100));
    EXPECT_TRUE(host.ChildDialog(1)->isVisible());
    EXPECT_FALSE(host.ChildDialog(0)->isVisible());
    EXPECT_TRUE(host.SwitchChildDialog(kChildA, TRUE));
    EXPECT_TRUE(host.ChildDialog(0)->isVisible());
    EXPECT_FALSE(host.ChildDialog(1)->isVisible());
    EXPECT_FALSE(host.SwitchChildDialog(5));
}

TEST(Dialog, ArrangedControlsFollowTheWindow)
{
    Form f;
    f.open();
    f.resize(300, 200);
    ASSERT_TRUE(f.AddItemToArrange(ZEL_ARRANGE_MOVE_X | ZEL_ARRANGE_MOVE_Y, IDOK));
    ASSERT_TRUE(f.AddItemToArrange(ZEL_ARRANGE_GROW_X, kRequired));
    EXPECT_FALSE(f.AddItemToArrange(ZEL_ARRANGE_GROW_X, 4242));
    f.resize(350, 220);
    EXPECT_EQ(f.button(IDOK)->geometry(), QRect(60, 100, 60, 24));
    EXPECT_EQ(f.edit(kRequired)->geometry(), QRect(10, 40, 170, 24));
}

namespace {

constexpr UINT kParent = 30020;
constexpr UINT kChildCV = 30021;
constexpr int kParentEdit = 1101;
constexpr int kChildEdit = 1102;

class Page : public CZelDialogCV {
    DECLARE_DYNCREATE(Page)

public:
    Page() { SetAutoDelete(FALSE); }
};
IMPLEMENT_DYNCREATE(Page, CZelDialogCV)

} // namespace

TEST(Dialog, FocusIsHeldAcrossParentAndChildDialog)
{
    HINSTANCE m = module();
    ZelRegisterDialogTemplate(m, kParent, {"Parent", 0, 0, [](QWidget* d) {
                                               auto* e = new CZelEdit(d);
                                               e->SetMinChars(3);
                                               e->SetEmptyAllowed(1);
                                               child(d, kParentEdit, e, {10, 10, 120, 24});
                                               child(d, kPlaceholder, new QLabel(d), {10, 40, 200, 60});
                                               child(d, IDOK, new QPushButton("OK", d), {10, 110, 60, 24});
                                               child(d, IDCANCEL, new QPushButton("Cancel", d), {80, 110, 60, 24});
                                           }});
    ZelRegisterDialogTemplate(m, kChildCV, {"", 0, 0, [](QWidget* d) {
                                                auto* e = new CZelEdit(d);
                                                e->SetMinChars(3);
                                                e->SetEmptyAllowed(1);
                                                child(d, kChildEdit, e, {0, 0, 120, 24});
                                            }});
    CZelDialogCV parent(kParent);
    parent.SetAutoDelete(FALSE);
    parent.SetChildDialogPlaceholder(kPlaceholder);
    parent.AddChildDialog(RUNTIME_CLASS(Page), m, kChildCV);
    ASSERT_TRUE(parent.Create(m, nullptr));
    QApplication::setActiveWindow(&parent);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&parent));
    QCoreApplication::processEvents();
    auto* outer = static_cast<CZelEdit*>(ZelWidgetFromHwnd(::GetDlgItem(parent.GetSafeHwnd(), kParentEdit)));
    auto* inner = static_cast<CZelEdit*>(
        ZelWidgetFromHwnd(::GetDlgItem(parent.ChildDialog(0)->GetSafeHwnd(), kChildEdit)));
    ASSERT_NE(inner, nullptr);

    // Invalid in the child: a click on the parent's edit is refused.
    inner->setFocus();
    QTest::keyClicks(inner, "ab");
    QTest::mouseClick(outer, Qt::LeftButton);
    EXPECT_TRUE(inner->hasFocus());
    EXPECT_TRUE(parent.FocusIsBlocked());
    QTest::keyClicks(inner, "c");
    QTest::mouseClick(outer, Qt::LeftButton);
    EXPECT_TRUE(outer->hasFocus());

    // Invalid in the parent: the child's edit is refused.
    QTest::keyClicks(outer, "x");
    QTest::mouseClick(inner, Qt::LeftButton);
    EXPECT_TRUE(outer->hasFocus());
    ASSERT_TRUE(parent.GetToolTip()->IsShowing());
    EXPECT_EQ(parent.GetToolTip()->GetText(), "Field contains 1 characters, minimum is 3 characters");
}

TEST(Dialog, AFormViewInsideTheDialogCountsForEmptyFields)
{
    HINSTANCE m = module();
    constexpr UINT kHost = 30030;
    constexpr UINT kForm = 30031;
    constexpr int kFormEdit = 1201;
    ZelRegisterDialogTemplate(m, kHost, {"Host", 0, 0, [](QWidget* d) {
                                             child(d, IDOK, new QPushButton("OK", d), {10, 110, 60, 24});
                                         }});
    ZelRegisterDialogTemplate(m, kForm, {"", 0, 0, [](QWidget* d) {
                                             auto* e = new CZelEdit(d);
                                             e->SetMinChars(3);
                                             child(d, kFormEdit, e, {0, 0, 120, 24});
                                         }});
    CZelDialogCV host(kHost);
    host.SetAutoDelete(FALSE);
    ASSERT_TRUE(host.Create(m, nullptr));
    auto* form = new CZelFormViewCV(kForm, &host);
    ASSERT_TRUE(form->Create(m, &host));
    form->setGeometry(10, 10, 200, 60);
    form->show();
    QApplication::setActiveWindow(&host);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&host));
    QCoreApplication::processEvents();
    auto* edit = static_cast<CZelEdit*>(ZelWidgetFromHwnd(::GetDlgItem(form->GetSafeHwnd(), kFormEdit)));
    ASSERT_NE(edit, nullptr);

    unsigned long detail = 0;
    CWnd* empty = host.GetFirstEmptyDlgItem(detail);
    ASSERT_NE(empty, nullptr) << "the form's required field is empty";
    EXPECT_EQ(empty->GetSafeHwnd(), edit->GetSafeHwnd());
}
