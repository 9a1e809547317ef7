// Views: posted follow-up work, activation, form views that validate, metrics.
#include <Zel260/controls/qt/CZelEdit.h>
#include <Zel260/frame/ZelMessages.h>
#include <Zel260/hosts/qt/CZelDialogMetrics.h>
#include <Zel260/hosts/qt/CZelFormViewCV.h>
#include <Zel260/hosts/qt/CZelWndToolTip.h>
#include <Zel260/hosts/qt/ZelDialogTemplates.h>
#include <Zel260/platform/ResourceModule.h>
#include <Zel260/platform/qt/QtWindowBackend.h>

#include <QApplication>
#include <QLineEdit>
#include <QMainWindow>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

class View : public CZelView {
public:
    using CZelView::CZelView;
    void OnInitialUpdate() override
    {
        log.push_back("initial");
        CZelView::OnInitialUpdate();
        log.push_back("initial done");
    }
    void OnPostInitialUpdate() override { log.push_back("post initial"); }
    void OnPostSetFocus() override { log.push_back("post focus"); }
    void OnPostActivateView(BOOL a) override { log.push_back(a ? "active" : "inactive"); }
    std::vector<std::string> log;
};

} // namespace

TEST(View, FollowUpWorkIsPostedAndActivationReportedOncePerChange)
{
    QWidget window;
    auto* layout = new QVBoxLayout(&window);
    auto* other = new QLineEdit(&window);
    auto* view = new View(&window);
    layout->addWidget(other);
    layout->addWidget(view);
    window.show();
    EXPECT_EQ(view->log, (std::vector<std::string>{"initial", "initial done"}));
    QApplication::setActiveWindow(&window);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    other->setFocus();
    QCoreApplication::processEvents();
    EXPECT_EQ(view->log, (std::vector<std::string>{"initial", "initial done", "post initial"}));

    view->log.clear();
    view->setFocus();
    view->OnActivateView(TRUE, view, nullptr); // same state again: no second post
    QCoreApplication::processEvents();
    EXPECT_EQ(view->log, (std::vector<std::string>{"post focus", "active"}));
    view->log.clear();
    other->setFocus();
    QCoreApplication::processEvents();
    EXPECT_EQ(view->log, std::vector<std::string>{"inactive"});
    EXPECT_EQ(view->GetParentDialog(), nullptr);
    EXPECT_EQ(view->GetTopmostView()->GetSafeHwnd(), view->GetSafeHwnd());
}

TEST(View, FormViewHoldsTheFocusOnInvalidContent)
{
    HINSTANCE m = ZelCreateResourceModule("ViewTest");
    ZelRegisterDialogTemplate(m, 100, {"", 0, 0, [](QWidget* d) {
                                           auto* layout = new QVBoxLayout(d);
                                           auto* a = new CZelEdit(d);
                                           a->SetMinChars(3);
                                           a->SetEmptyAllowed(1);
                                           ZelSetDlgCtrlID(ZelHwndFromWidget(a), 10);
                                           auto* b = new CZelEdit(d);
                                           b->SetEmptyAllowed(1);
                                           ZelSetDlgCtrlID(ZelHwndFromWidget(b), 11);
                                           layout->addWidget(a);
                                           layout->addWidget(b);
                                       }});
    QMainWindow frame;
    auto* form = new CZelFormViewCV(100);
    ASSERT_TRUE(form->Create(m, nullptr));
    frame.setCentralWidget(form);
    frame.show();
    QApplication::setActiveWindow(&frame);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&frame));
    QCoreApplication::processEvents();
    EXPECT_NE(form->GetParentSDIFrameWnd(), nullptr);

    auto* a = static_cast<CZelEdit*>(ZelWidgetFromHwnd(::GetDlgItem(form->GetSafeHwnd(), 10)));
    a->setFocus();
    QTest::keyClicks(a, "ab");
    QTest::keyClick(a, Qt::Key_Tab);
    EXPECT_TRUE(a->hasFocus());
    ASSERT_TRUE(form->GetToolTip()->IsShowing());
    EXPECT_EQ(form->GetToolTip()->GetText(), "Field contains 2 characters, minimum is 3 characters");
    ZelDestroyResourceModule(m);
}

TEST(DialogMetrics, ControlsHaveRealSizes)
{
    EXPECT_GT(CZelDialogMetrics::Edit().cy, 0);
    EXPECT_GT(CZelDialogMetrics::Checkbox().cx, 0);
    EXPECT_GT(CZelDialogMetrics::ListCtrlHeaderHeight(), 0);
    EXPECT_GT(CZelDialogMetrics::ListCtrlRVItemHeight(), 0);
    EXPECT_GT(CZelDialogMetrics::GetSize("Wide text").cx, CZelDialogMetrics::GetSize("W").cx);
    EXPECT_EQ(CZelDialogMetrics::GetSize(nullptr).cx, 0);
}

TEST(View, PaintPreparesTheDeviceContextBeforeDrawing)
{
    // A view that scrolls sets its origin in OnPrepareDC: the screen paint must run
    // it before OnDraw, on the same device context, without a print job.
    struct Prepared : CZelView {
        void OnPrepareDC(CDC* dc, CPrintInfo* info) override
        {
            order += info ? 'p' : 'P';
            prepared = dc;
        }
        void OnDraw(CDC* dc) override
        {
            order += 'D';
            drawn = dc;
        }
        std::string order;
        CDC* prepared = nullptr;
        CDC* drawn = nullptr;
    } v;
    v.resize(30, 30);
    v.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&v));
    v.order.clear();
    v.repaint();
    EXPECT_EQ(v.order, "PD");
    EXPECT_EQ(v.prepared, v.drawn);
}
