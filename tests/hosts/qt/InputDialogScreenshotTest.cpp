// The example dialog in its states, checked and saved as pictures for a person to
// look at (build/screenshots/*.png).
#include "../../../examples/qt/InputDialog/InputDialogForm.h"

#include <Zel260/hosts/qt/CZelWndToolTip.h>

#include <QApplication>
#include <QDir>
#include <QPainter>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

namespace {

using namespace inputdialog;

// The dialog with its tool tip painted where it stands on the screen.
QImage picture(CInputDialog& d)
{
    QImage shot = d.grab().toImage();
    CZelWndToolTip* tip = d.GetToolTip();
    if (tip->IsShowing()) {
        const QPoint at = d.mapFromGlobal(tip->pos());
        QImage bigger(std::max(shot.width(), at.x() + tip->width()), std::max(shot.height(), at.y() + tip->height()),
                      QImage::Format_ARGB32);
        bigger.fill(Qt::transparent);
        QPainter p(&bigger);
        p.drawImage(0, 0, shot);
        p.drawImage(at, tip->grab().toImage());
        return bigger;
    }
    return shot;
}

void save(const QImage& image, const char* name)
{
    const QString dir = QCoreApplication::applicationDirPath() + "/../screenshots";
    QDir().mkpath(dir);
    ASSERT_TRUE(image.save(dir + "/" + name));
}

} // namespace

TEST(InputDialogExample, StatesAsPictures)
{
    CInputDialog d;
    d.SetAutoDelete(FALSE);
    ASSERT_TRUE(d.Create(Resources(), nullptr));
    QApplication::setActiveWindow(&d);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&d));
    QCoreApplication::processEvents();
    auto* ok = qobject_cast<QPushButton*>(ZelWidgetFromHwnd(::GetDlgItem(d.GetSafeHwnd(), IDOK)));
    CZelEdit* count = d.Edit(IDC_COUNT);
    CZelEdit* name = d.Edit(IDC_NAME);
    CZelEdit* station = d.Edit(IDC_STATION);

    // Empty required field: OK off, and a click on it says why.
    EXPECT_FALSE(ok->isEnabled());
    station->setFocus();
    QTest::mouseClick(ok, Qt::LeftButton);
    EXPECT_EQ(d.GetToolTip()->GetText(), "Field must not be empty");
    save(picture(d), "input-dialog-empty-required.png");

    // Invalid number: the focus stays and the reason stands below the field.
    count->setFocus();
    QTest::keyClicks(count, "5000");
    QTest::keyClick(count, Qt::Key_Tab);
    EXPECT_TRUE(count->hasFocus());
    EXPECT_EQ(d.GetToolTip()->GetText(), "Enter a whole number from 1 to 1000");
    save(picture(d), "input-dialog-invalid.png");

    // Valid: the name shows its display form once left, OK is on.
    count->selectAll();
    QTest::keyClicks(count, "12");
    QTest::keyClick(count, Qt::Key_Tab);
    EXPECT_TRUE(name->hasFocus());
    QTest::keyClicks(name, "Meier");
    QTest::keyClick(name, Qt::Key_Tab);
    EXPECT_EQ(name->text(), "Surveyor: Meier");
    EXPECT_EQ(name->GetString(), "Meier");
    QTest::keyClicks(station, "pt7");
    EXPECT_EQ(station->GetString(), "PT7");
    EXPECT_TRUE(ok->isEnabled());
    EXPECT_EQ(count->GetInt(), 12);
    save(picture(d), "input-dialog-valid.png");
}
