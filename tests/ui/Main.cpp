// The windows are tested on an off-screen desk of one size, in one style, whatever the machine has.
#include <clocale>
#include <gtest/gtest.h>

#include <QApplication>
#include <QStandardPaths>
#include <QStyleFactory>
#include <QTemporaryFile>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    QTemporaryFile screen;
    if (screen.open()) {
        screen.write(R"({"screens":[{"name":"desk","x":0,"y":0,"width":1600,"height":1000,)"
                     R"("logicalDpi":96,"logicalBaseDpi":96,"dpr":1}]})");
        screen.close();
        qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + screen.fileName().toLocal8Bit());
    }
    QApplication application(argc, argv);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    std::setlocale(LC_NUMERIC, "C");
    return RUN_ALL_TESTS();
}
