// Entry point of the widget test programs: one QApplication for the whole run,
// headless unless a display is asked for.
#include <QApplication>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>

int main(int argc, char** argv)
{
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    QApplication app(argc, argv);
    ::testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
