// The application is gone before the process ends: Qt does not outlive the end of main.
#include <gtest/gtest.h>

#include <QApplication>

#include "ui/display/DialogBench.h"

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    zu::test::SizeScreen();
    const QApplication application(argc, argv);
    zu::test::Dress();
    return RUN_ALL_TESTS();
}
