// The window that shows what goes to the instrument and comes from it.
#include <gtest/gtest.h>

#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QTest>

#include "core/RateRules.h"
#include "hw/BackEnds.h"
#include "ui/Desk.h"
#include "ui/core/CRegisterTrace.h"

namespace zu::test {
namespace {

CRegisterTrace* OpenTrace(Desk& desk) {
    QAction* entry = desk.Entry("Setup", "Register trac&e...");
    if (entry == nullptr) return nullptr;
    entry->trigger();
    Desk::Settle();
    return desk.Frame().findChild<CRegisterTrace*>();
}

QPushButton* Button(const CRegisterTrace& window, const char* name) {
    return window.findChild<QPushButton*>(QString::fromLatin1(name));
}

QString StateOf(const CRegisterTrace& window) {
    return window.findChild<QLabel*>(QStringLiteral("State"))->text();
}

TEST(RegisterTrace, RecordsBetweenStartAndStop) {
    Desk desk({"--simulate=Roach160L@isa"});
    desk.Start();
    CRegisterTrace* window = OpenTrace(desk);
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(window->isVisible());
    EXPECT_FALSE(window->isModal());
    HardwareSession& hardware = desk.View().TheApp().Hardware;
    EXPECT_EQ(hardware.Ops, hardware.Slots->Selected) << "nothing in between while it is off";
    EXPECT_FALSE(Button(*window, "Save")->isEnabled());

    Button(*window, "Record")->click();
    EXPECT_NE(hardware.Ops, hardware.Slots->Selected);
    hardware.Ops->RegWrite(0, 0x0614, 0x1F);
    hardware.Ops->RegWrite(0, 0xE1, 0x05);
    hardware.Ops->RegRead(0, 0x0211);
    Button(*window, "Record")->click();
    EXPECT_EQ(hardware.Ops, hardware.Slots->Selected);
    hardware.Ops->RegWrite(0, 0x0614, 0x20);

    const auto* list = window->findChild<QTableView*>(QStringLiteral("Lines"));
    const QAbstractItemModel& model = *list->model();
    ASSERT_EQ(model.rowCount(), 3);
    EXPECT_EQ(model.index(0, 0).data().toString(), "W 0614 1f");
    EXPECT_EQ(model.index(0, 1).data().toString(), "R4[1]");
    EXPECT_EQ(model.index(1, 0).data().toString(), "W 00e1 05");
    EXPECT_EQ(model.index(1, 1).data().toString(), "S10[0]");
    EXPECT_TRUE(model.index(2, 0).data().toString().startsWith("R 0211 "));
    EXPECT_EQ(model.headerData(2, Qt::Vertical, Qt::DisplayRole).toString(), "3");
    EXPECT_EQ(StateOf(*window), "3 lines");
    Button(*window, "Clear")->click();
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_FALSE(Button(*window, "Save")->isEnabled());
}

TEST(RegisterTrace, ShowsWhatARateWrites) {
    Desk desk({"--simulate=Roach160L@usb"});
    desk.Start();
    CRegisterTrace* window = OpenTrace(desk);
    Button(*window, "Record")->click();
    SetRate(desk.View().TheApp(), 9);
    UsbFlushQueue(desk.View().TheApp().Hardware);
    window->Refresh();
    EXPECT_GT(window->Recorder().Total(), 100U);
    EXPECT_TRUE(StateOf(*window).endsWith("; recording")) << StateOf(*window).toStdString();
    Desk::Settle();
    SaveShot(*window, "trace");
    window->close();
    EXPECT_FALSE(window->Recorder().Recording()) << "closing ends the recording";
    EXPECT_GT(window->Recorder().Total(), 100U) << "the lines stay";
    EXPECT_EQ(OpenTrace(desk), window);
    EXPECT_FALSE(Button(*window, "Record")->isChecked());
}

TEST(RegisterTrace, EndsWithTheProgram) {
    Desk desk({"--simulate=Roach160L@usb"});
    desk.Start();
    CRegisterTrace* window = OpenTrace(desk);
    Button(*window, "Record")->click();
    desk.End();
    EXPECT_EQ(desk.View().TheApp().Hardware.Trace, nullptr);
}

}  // namespace
}  // namespace zu::test
