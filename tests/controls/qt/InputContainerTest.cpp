// The validation protocol between input controls and their container, driven by
// real key presses and clicks.
#include <Zel260/controls/qt/CZelInputControl.h>
#include <Zel260/controls/qt/CZelInputControlContainer.h>
#include <Zel260/platform/qt/QtWindowBackend.h>
#include <Zel260/platform/qt/ZelMessageTarget.h>

#include <QApplication>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

// A line edit that is invalid while it reads "bad", and empty when it has no text.
class Field : public QLineEdit, public CWnd, public CZelInputControl {
public:
    Field(QWidget* parent, int id) : QLineEdit(parent)
    {
        Attach(ZelHwndFromWidget(this));
        SetDlgCtrlID(id);
        // As an edit does, the control tells its parent of every change by the user.
        connect(this, &QLineEdit::textEdited, [this] {
            ::SendMessage(::GetParent(m_hWnd), WM_COMMAND, MAKEWPARAM(static_cast<WORD>(GetDlgCtrlID()), 0x300),
                          reinterpret_cast<LPARAM>(m_hWnd));
        });
    }
    int IsEmpty() const override { return text().isEmpty(); }
    eState OnValidate(CString* reason) override
    {
        ++validations;
        if (text() == "bad") {
            if (reason)
                *reason = "bad value";
            return eStateInvalid;
        }
        return IsEmpty() && !GetEmptyAllowed() ? eStateEmpty : eStateValid;
    }
    void OnEmptyChanged() override
    {
        ++emptyChanges;
        CZelInputControl::OnEmptyChanged();
    }
    void setTextGuarded(const char* t)
    {
        CZelNotifyEmptyChanged outer(this);
        {
            CZelNotifyEmptyChanged inner(this);
            setText(t);
        }
        setText(t);
    }
    int validations = 0;
    int emptyChanges = 0;

private:
    CWnd* GetSafeWnd() const override { return const_cast<Field*>(this); }
};

class Host : public QWidget, public CWnd, public ZelMessageTarget, public CZelInputControlContainer {
public:
    Host() : CZelInputControlContainer(this)
    {
        Attach(ZelHwndFromWidget(this));
        auto* layout = new QVBoxLayout(this);
        number = new Field(this, 100);
        name = new Field(this, 101);
        required = new Field(this, 102);
        other = new QPushButton("Other", this);
        ok = new QPushButton("OK", this);
        cancel = new QPushButton("Cancel", this);
        ZelSetDlgCtrlID(ZelHwndFromWidget(other), 200);
        ZelSetDlgCtrlID(ZelHwndFromWidget(ok), 1);
        ZelSetDlgCtrlID(ZelHwndFromWidget(cancel), 2);
        number->SetEmptyAllowed(1);
        name->SetEmptyAllowed(1);
        for (QWidget* w : std::initializer_list<QWidget*>{number, name, required, other, ok, cancel})
            layout->addWidget(w);
        number->HookControl();
        name->HookControl();
        required->HookControl();
    }
    ~Host() override { UnhookAllDlgCtrls(); }

    void start()
    {
        show();
        QApplication::setActiveWindow(this);
        ASSERT_TRUE(QTest::qWaitForWindowActive(this));
        number->setFocus();
        HookContainer();
        HookAllDlgCtrls();
    }

    LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM) override
    {
        if (msg == WM_COMMAND && HIWORD(wp) == 0)
            commands.push_back(LOWORD(wp));
        return 0;
    }
    int OnShowValidationText(HWND h, unsigned int, unsigned long, CString* text) override
    {
        shown.push_back(text ? std::string(text->GetString()) : std::string());
        shownOn = h;
        return 0;
    }
    int OnHideValidationText() override
    {
        ++hides;
        return 0;
    }
    int OnFocusBlockedChanged(int b) override
    {
        blockedChanges.push_back(b);
        return 0;
    }
    int OnEmptyFieldsChanged(int e) override
    {
        emptyFieldChanges.push_back(e);
        return 0;
    }

    Field* number;
    Field* name;
    Field* required;
    QPushButton* other;
    QPushButton* ok;
    QPushButton* cancel;
    std::vector<std::string> shown;
    HWND shownOn = nullptr;
    int hides = 0;
    std::vector<int> blockedChanges;
    std::vector<int> emptyFieldChanges;
    std::vector<int> commands;
};

HWND hwnd(QWidget* w) { return ZelHwndFromWidget(w); }

} // namespace

TEST(InputContainer, InvalidControlHoldsTheFocusUntilCorrected)
{
    Host host;
    host.start();
    QTest::keyClicks(host.number, "bad");
    QTest::keyClick(host.number, Qt::Key_Tab);
    EXPECT_TRUE(host.number->hasFocus()) << "TAB must not leave an invalid control";
    EXPECT_EQ(host.shown, std::vector<std::string>{"bad value"});
    EXPECT_EQ(host.shownOn, hwnd(host.number));
    EXPECT_TRUE(host.FocusIsBlocked());
    EXPECT_EQ(host.blockedChanges, std::vector<int>{1});
    EXPECT_EQ(host.number->text(), "bad") << "what the user typed stays";

    // The next key typed hides the reason.
    const int hidesBefore = host.hides;
    QTest::keyClick(host.number, Qt::Key_Backspace);
    EXPECT_GT(host.hides, hidesBefore);

    QTest::keyClick(host.number, Qt::Key_Tab);
    EXPECT_TRUE(host.name->hasFocus());
    EXPECT_FALSE(host.FocusIsBlocked());
    EXPECT_EQ(host.blockedChanges, (std::vector<int>{1, 0}));
    EXPECT_EQ(host.GetWndTopmostFocus(), hwnd(host.name));
}

TEST(InputContainer, ClickOnAnotherControlIsCheckedBeforeItActs)
{
    Host host;
    host.start();
    int clicks = 0;
    QObject::connect(host.other, &QPushButton::clicked, [&] { ++clicks; });
    QTest::keyClicks(host.number, "bad");
    QTest::mouseClick(host.name, Qt::LeftButton);
    EXPECT_TRUE(host.number->hasFocus());
    QTest::mouseClick(host.other, Qt::LeftButton);
    EXPECT_TRUE(host.number->hasFocus());
    EXPECT_EQ(clicks, 0) << "the click on a button must be swallowed while blocked";
    EXPECT_EQ(host.shown.size(), 2u) << "one reason per refused click";

    host.number->clear();
    QTest::mouseClick(host.other, Qt::LeftButton);
    EXPECT_EQ(clicks, 1);
}

TEST(InputContainer, CancelIsReachableWhileBlocked)
{
    Host host;
    host.start();
    QTest::keyClicks(host.number, "bad");
    QTest::keyClick(host.number, Qt::Key_Tab);
    ASSERT_TRUE(host.FocusIsBlocked());
    const int hidesBefore = host.hides;
    QTest::mouseClick(host.cancel, Qt::LeftButton);
    EXPECT_GT(host.hides, hidesBefore) << "focus on Cancel hides the reason";
    EXPECT_EQ(host.commands, std::vector<int>{2});
}

TEST(InputContainer, HiddenAndReadOnlyControlsAreNeverValidated)
{
    Host host;
    host.number->setText("bad");
    host.name->setText("bad");
    host.number->hide();
    host.name->SetReadOnlyMode(1);
    host.required->setText("x");
    host.start();
    host.name->validations = 0;
    host.number->validations = 0;

    unsigned long detail = 0;
    CString text;
    EXPECT_EQ(host.ValidateAllDlgCtrls(0, 1, detail, text), nullptr);
    QTest::keyClick(host.name, Qt::Key_Tab);
    EXPECT_EQ(host.name->validations + host.number->validations, 0);
    EXPECT_TRUE(host.shown.empty());

    // Only the control's own hidden state counts, not its parent's.
    QWidget parentHidden;
    Field inner(&parentHidden, 5);
    inner.setText("bad");
    EXPECT_EQ(inner.Validate(nullptr), CZelInputControl::eStateInvalid);
    inner.setEnabled(false);
    EXPECT_EQ(inner.Validate(nullptr), CZelInputControl::eStateInvalid) << "disabled controls are validated";

    // Made after its window was shown and never shown itself: hidden on itself.
    Field late(&host, 6);
    late.setText("bad");
    EXPECT_EQ(late.Validate(nullptr), CZelInputControl::eStateValid);
    late.show();
    EXPECT_EQ(late.Validate(nullptr), CZelInputControl::eStateInvalid);
    host.hide();
    EXPECT_EQ(late.Validate(nullptr), CZelInputControl::eStateInvalid) << "a hidden parent doesn't count";
}

TEST(InputContainer, EmptyRequiredFieldPassesOnLeavingButFailsOnOk)
{
    Host host;
    host.start();
    host.required->setFocus();
    QTest::keyClick(host.required, Qt::Key_Tab);
    EXPECT_FALSE(host.required->hasFocus()) << "an empty control lets the focus go";

    QTest::mouseClick(host.ok, Qt::LeftButton);
    EXPECT_TRUE(host.required->hasFocus());
    EXPECT_EQ(host.shown, std::vector<std::string>{"Field must not be empty"});
    EXPECT_TRUE(host.commands.empty()) << "OK must be swallowed";

    QTest::keyClicks(host.required, "x");
    QTest::mouseClick(host.ok, Qt::LeftButton);
    EXPECT_EQ(host.commands, std::vector<int>{1});
}

TEST(InputContainer, StrictFocusHoldsAnEmptyControl)
{
    Host host;
    host.SetStrictFocus(1);
    host.start();
    host.required->setFocus();
    QTest::keyClick(host.required, Qt::Key_Tab);
    EXPECT_TRUE(host.required->hasFocus());
    EXPECT_EQ(host.shown, std::vector<std::string>{"Field must not be empty"});
}

TEST(InputContainer, EmptyFieldsFollowTheRequiredControl)
{
    Host host;
    host.start();
    host.required->setTextGuarded("x");
    host.required->setTextGuarded("");
    EXPECT_EQ(host.emptyFieldChanges, std::vector<int>{1}) << "the container starts without empty fields";
    host.required->setTextGuarded("y");
    EXPECT_EQ(host.emptyFieldChanges, (std::vector<int>{1, 0}));
    host.SetEmptyTrackingOff(1);
    host.required->setTextGuarded("");
    EXPECT_EQ(host.emptyFieldChanges.size(), 2u);
}

TEST(InputContainer, NestedEmptyGuardsReportOnce)
{
    Host host;
    host.start();
    HWND h = hwnd(host.required);
    host.required->emptyChanges = 0;
    {
        CZelInputControl::CZelNotifyEmptyChanged outer(host.required);
        {
            CZelInputControl::CZelNotifyEmptyChanged inner(host.required);
            EXPECT_EQ(CZelInputControl::CZelNotifyEmptyChanged::GetNestingCount(h), 2);
            host.required->setText("x");
        }
        EXPECT_EQ(host.required->emptyChanges, 0) << "the inner guard must not report";
    }
    EXPECT_EQ(host.required->emptyChanges, 1);
    EXPECT_EQ(CZelInputControl::CZelNotifyEmptyChanged::GetNestingCount(h), 0);
    // A change back and forth inside one guard is no change.
    {
        CZelInputControl::CZelNotifyEmptyChanged guard(host.required);
        host.required->setText("");
        host.required->setText("z");
    }
    EXPECT_EQ(host.required->emptyChanges, 1);
}

TEST(InputContainer, HookingMakesOtherPushButtonsPushlike)
{
    Host host;
    host.ok->setAutoDefault(true);
    host.other->setAutoDefault(true);
    host.start();
    EXPECT_FALSE(host.other->autoDefault());
    EXPECT_TRUE(host.ok->autoDefault()) << "OK keeps its default role";
    EXPECT_EQ(CZelInputControlContainer::MakePushlikeIfNotStandardButton(hwnd(host.other)), 0) << "only once";
    EXPECT_EQ(host.number->ResetAttributes(), 0) << "hooked controls keep their attributes";
    CZelInputControl::CZelKeepChangedByUserStatus* keep = nullptr;
    host.number->SetChangedByUser(1);
    keep = new CZelInputControl::CZelKeepChangedByUserStatus(host.number);
    host.number->SetChangedByUser(0);
    delete keep;
    EXPECT_EQ(host.number->GetChangedByUser(), 1);
}

TEST(InputControl, InlineGeometryHelpers)
{
    QWidget parent;
    Field f(&parent, 1);
    EXPECT_EQ(f.GetInlineMoveUp(20, 10), 0);
    EXPECT_EQ(f.GetInlineMoveUp(10, 10), 0);
    EXPECT_EQ(f.GetInlineMoveUp(10, 15), 3);
    EXPECT_EQ(f.GetInlineMoveUp(10, 14), 2);
    long a = 0, b = 0, c = 0;
    f.GetInlineDimensions(a, b, c, nullptr, "Wide text");
    EXPECT_EQ(a, c);
    EXPECT_GT(a, 4);
    EXPECT_GT(b, 0);
}

TEST(InputContainer, ChildrenAddedBeforeAndAfterHookingFollowTheirControl)
{
    Host host;
    // A companion placed beside `number` before hooking counts as part of it.
    auto* companion = new QPushButton("...", &host);
    host.layout()->addWidget(companion);
    host.AddDlgCtrlChild(hwnd(host.number), hwnd(companion));
    int companionClicks = 0;
    QObject::connect(companion, &QPushButton::clicked, [&] { ++companionClicks; });
    host.start();
    QTest::keyClick(host.number, Qt::Key_Tab); // the container becomes the active one
    QTest::keyClick(host.name, Qt::Key_Backtab);

    // After hooking: a child given to `name` and a control new to the host.
    auto* nameChild = new QPushButton("v", host.name);
    nameChild->setGeometry(0, 0, 10, 10);
    nameChild->show();
    host.name->OnDlgCtrlChildAdded(hwnd(nameChild));
    auto* late = new QPushButton("Late", &host);
    host.layout()->addWidget(late);
    late->show();
    host.name->OnHookDlgCtrl(hwnd(late));
    int childClicks = 0, lateClicks = 0;
    QObject::connect(nameChild, &QPushButton::clicked, [&] { ++childClicks; });
    QObject::connect(late, &QPushButton::clicked, [&] { ++lateClicks; });

    QTest::keyClicks(host.number, "bad");
    QTest::mouseClick(companion, Qt::LeftButton);
    EXPECT_EQ(companionClicks, 1) << "the control's own companion is no change of control";
    EXPECT_TRUE(host.shown.empty());

    host.number->setFocus();
    QTest::mouseClick(nameChild, Qt::LeftButton);
    QTest::mouseClick(late, Qt::LeftButton);
    EXPECT_EQ(childClicks, 0);
    EXPECT_EQ(lateClicks, 0);
    EXPECT_TRUE(host.number->hasFocus());
    EXPECT_EQ(host.shown.size(), 2u);
}

TEST(InputContainer, ControlInsideAGroupBoxSpeaksToTheHost)
{
    Host host;
    auto* group = new QGroupBox("Group", &host);
    host.layout()->addWidget(group);
    auto* inner = new Field(group, 103);
    inner->SetEmptyAllowed(1);
    (new QVBoxLayout(group))->addWidget(inner);
    inner->HookControl();
    host.start();
    EXPECT_EQ(inner->GetContainer(), static_cast<CWnd*>(&host)) << "a group box is no container";
    inner->SetEmptyAllowed(0);
    EXPECT_EQ(host.emptyFieldChanges, std::vector<int>{1}) << "the empty inner field reaches the host";
}
