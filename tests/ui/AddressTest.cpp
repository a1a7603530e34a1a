// The address dialog: what it offers, how it searches, and what follows when it is left.
#include <gtest/gtest.h>

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>

#include "core/Capture.h"
#include "core/Commands.h"
#include "hw/BackEnds.h"
#include "ui/Desk.h"
#include "ui/core/CHWAddress.h"

namespace zu::test {
namespace {

QPushButton* Button(const QDialog& dialog, const char* name) {
    return dialog.findChild<QPushButton*>(QString::fromLatin1(name));
}

QString StatusOf(const QDialog& dialog) {
    return dialog.findChild<QLabel*>(QStringLiteral("Status"))->text();
}

QString HintOf(const QDialog& dialog) {
    return dialog.findChild<QLabel*>(QStringLiteral("Hint"))->text();
}

QPushButton* TextButton(const QDialog& dialog, const QString& text) {
    for (QPushButton* button : dialog.findChildren<QPushButton*>()) {
        if (button->text().remove(u'&') == text) return button;
    }
    return nullptr;
}

/// An instrument behind the dialog alone.
struct Bench {
    QtHost Host;
    Attachment TheAttachment;
    HardwareSession Hardware{Host};
    InstrumentState State;
    Boxes Box;

    explicit Bench(const char* simulate) : TheAttachment(simulate) {
        TheAttachment.AttachTo(Hardware);
        SetupOSFunctions(Hardware, 0);
    }
};

class EveryCableDialog : public testing::TestWithParam<const char*> {};
INSTANTIATE_TEST_SUITE_P(Cables, EveryCableDialog, testing::Values("usb", "isa", "byte", "epp"),
                         [](const auto& cable) { return std::string(cable.param); });

TEST_P(EveryCableDialog, AutoDetectFindsTheInstrument) {
    const std::string cable = GetParam();
    Bench bench(("Roach160L@" + cable).c_str());
    CHWAddress dialog(bench.Hardware, bench.State);
    dialog.show();
    const char* search = cable == "usb" ? "UsbSearch" : cable == "isa" ? "IsaSearch" : "ParallelSearch";
    ASSERT_TRUE(Button(dialog, search)->isVisible());
    EXPECT_FALSE(TextButton(dialog, "OK")->isEnabled());
    Button(dialog, search)->click();
    const QString found = cable == "usb"   ? "Model= Roach160LB (USB)"
                          : cable == "isa" ? "Address=0x210 Model=Roach160LB"
                                           : "Address=0x378 Model=Roach160LB";
    EXPECT_EQ(StatusOf(dialog), found);
    EXPECT_TRUE(TextButton(dialog, "OK")->isEnabled());
    EXPECT_TRUE(bench.Box.Seen.isEmpty());
    EXPECT_EQ(bench.State.Identity.Emulated, 0);
    EXPECT_EQ(bench.State.Identity.HardwareType, 15);
    const int mode = cable == "usb" ? 9 : cable == "isa" ? 8 : cable == "byte" ? 2 : 4;
    EXPECT_EQ(bench.State.Identity.ComMode, mode);
    SaveShot(dialog, QStringLiteral("address-found-") + QString::fromStdString(cable));
}

TEST_P(EveryCableDialog, OffersWhatIsThere) {
    const std::string cable = GetParam();
    Bench bench(("Roach40L@" + cable).c_str());
    CHWAddress dialog(bench.Hardware, bench.State);
    dialog.show();
    const bool ports = cable != "usb";
    const bool parallel = cable == "byte" || cable == "epp";
    EXPECT_EQ(Button(dialog, "Isa0")->isVisible(), ports);
    EXPECT_EQ(Button(dialog, "Port1")->isVisible(), parallel);
    EXPECT_FALSE(Button(dialog, "Port0")->isVisible());
    EXPECT_FALSE(Button(dialog, "Port2")->isVisible());
    EXPECT_EQ(Button(dialog, "Mode64")->isVisible(), parallel);
    EXPECT_TRUE(Button(dialog, "UsbSearch")->isVisible());
    EXPECT_TRUE(Button(dialog, "Demo")->isVisible());
    SaveShot(dialog, QStringLiteral("address-offers-") + QString::fromStdString(cable));
}

TEST(AddressDialog, ButtonsCarryTheirLabels) {
    Bench bench("Roach160L@epp");
    CHWAddress dialog(bench.Hardware, bench.State);
    const std::pair<const char*, const char*> labels[] = {{"Isa0", "0x210 (default)"},
                                                          {"Isa1", "0x230"},
                                                          {"Isa2", "0x280"},
                                                          {"Isa3", "0x2A0"},
                                                          {"Isa4", "0x300"},
                                                          {"Isa5", "0x320"},
                                                          {"Isa6", "0x380"},
                                                          {"Port0", "0x3BC"},
                                                          {"Port1", "0x378"},
                                                          {"Port2", "0x278"},
                                                          {"Mode1", "4 bit"},
                                                          {"Mode2", "8 bit"},
                                                          {"Mode4", "EPP (byte mode)"},
                                                          {"Mode32", "EPP (word mode)"},
                                                          {"Mode64", "EPP(dbl word mode)"},
                                                          {"UsbSearch", "USB \nAuto detect"},
                                                          {"Demo", "Demo (no Logic Analyzer)"}};
    for (const auto& [name, label] : labels) EXPECT_EQ(Button(dialog, name)->text(), label);
    EXPECT_EQ(dialog.windowTitle(), "Hardware address");
}

TEST(AddressDialog, OneIsaAddressIsTriedByItsButton) {
    Bench bench("Roach80S@isa");
    CHWAddress dialog(bench.Hardware, bench.State);
    dialog.show();
    Button(dialog, "Isa5")->click();
    EXPECT_EQ(StatusOf(dialog), "No Logic Analyzer found at address=0x320");
    EXPECT_TRUE(Button(dialog, "Isa5")->icon().isNull());
    EXPECT_FALSE(TextButton(dialog, "OK")->isEnabled());
    Button(dialog, "Isa0")->click();
    EXPECT_EQ(StatusOf(dialog), "Address=0x210 Model=Roach80SB");
    EXPECT_FALSE(Button(dialog, "Isa0")->icon().isNull()) << "marked as found";
    EXPECT_EQ(Button(dialog, "Isa0")->toolTip(), "Roach80SB");
    EXPECT_TRUE(Button(dialog, "Isa0")->isChecked());
    EXPECT_FALSE(Button(dialog, "Isa5")->isChecked());
    EXPECT_TRUE(TextButton(dialog, "OK")->isEnabled());
    Button(dialog, "Isa5")->click();
    EXPECT_FALSE(TextButton(dialog, "OK")->isEnabled()) << "the last try counts";
}

TEST(AddressDialog, APortNeedsAMode) {
    Bench bench("Roach40L@epp");
    CHWAddress dialog(bench.Hardware, bench.State);
    dialog.show();
    Button(dialog, "Port1")->click();
    EXPECT_EQ(HintOf(dialog), "Choose a mode as well.");
    EXPECT_EQ(StatusOf(dialog), "");
    for (const char* mode : {"Mode1", "Mode2", "Mode4", "Mode32", "Mode64"}) {
        Button(dialog, mode)->click();
        EXPECT_EQ(StatusOf(dialog), "Address=0x378 Model=Roach40LB") << mode;
        EXPECT_EQ(HintOf(dialog), "");
        EXPECT_EQ("Mode" + std::to_string(bench.State.Identity.ComMode), mode);
    }
    Bench other("Roach40L@epp");
    CHWAddress second(other.Hardware, other.State);
    second.show();
    Button(second, "Mode4")->click();
    EXPECT_EQ(HintOf(second), "Choose a port as well.");
    Button(second, "Port1")->click();
    EXPECT_EQ(StatusOf(second), "Address=0x378 Model=Roach40LB");
}

TEST(AddressDialog, SaysWhatIsWrongWithUsb) {
    Bench bench("Roach160L@isa");
    CHWAddress dialog(bench.Hardware, bench.State);
    dialog.show();
    Button(dialog, "UsbSearch")->click();
    EXPECT_EQ(bench.Box.Seen, (QList<Boxes::Box>{{"Ostrand Labs USB device not connected", "Error:"}}));
    EXPECT_EQ(StatusOf(dialog), "USB error: Logic Analyzer not found");
    EXPECT_FALSE(TextButton(dialog, "OK")->isEnabled());
    SaveShot(dialog, "address-notfound");
}

/// A parallel port with nothing behind it.
class LonelyPort final : public PortIo {
  public:
    void Out8(std::uint16_t port, std::uint8_t value) override {
        if (port == 0x378) latch_ = value;
    }
    std::uint8_t In8(std::uint16_t port) override { return port == 0x378 ? latch_ : std::uint8_t{0xFF}; }
    void InString(std::uint16_t, PortUnit, std::span<std::uint8_t>) override {}

  private:
    std::uint8_t latch_ = 0;
};

class OpenGate final : public PortGate {
  public:
    bool Available() override { return true; }
    bool Allow(const CardRange&) override { return true; }
};

TEST(AddressDialog, AParallelSearchInVainClearsTheButtons) {
    LonelyPort port;
    OpenGate gate;
    PortKernelDriver driver(port, gate);
    QtHost host;
    HardwareSession hardware(host);
    hardware.Seams.Driver = &driver;
    SetupOSFunctions(hardware, 0);
    InstrumentState state;
    CHWAddress dialog(hardware, state);
    dialog.show();
    Button(dialog, "Port1")->click();
    Button(dialog, "Mode2")->click();
    EXPECT_EQ(StatusOf(dialog), "No Logic Analyzer found at address=0x378");
    EXPECT_TRUE(Button(dialog, "Port1")->isChecked());
    Button(dialog, "ParallelSearch")->click();
    EXPECT_EQ(StatusOf(dialog), "Logic Analyzer not found");
    EXPECT_FALSE(Button(dialog, "Port1")->isChecked());
    EXPECT_FALSE(Button(dialog, "Mode2")->isChecked());
    SaveShot(dialog, "address-notfound-parallel");
    Button(dialog, "IsaSearch")->click();
    EXPECT_EQ(StatusOf(dialog), "");
    EXPECT_EQ(HintOf(dialog), "All 7 addresses were tried.");
}

TEST(AddressDialog, ASearchShowsItsProgressAndCanBeStopped) {
    Bench bench("Roach160L@epp");
    CHWAddress dialog(bench.Hardware, bench.State);
    dialog.show();
    QStringList texts;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &dialog, [&] {
        if (!dialog.Searching()) return;
        texts.append(StatusOf(dialog));
        EXPECT_TRUE(dialog.findChild<QProgressBar*>()->isVisible());
        EXPECT_FALSE(Button(dialog, "UsbSearch")->isEnabled());
        EXPECT_FALSE(Button(dialog, "Isa0")->isEnabled());
        if (texts.size() < 6) return;
        if (texts.size() == 6) SaveShot(dialog, "address-searching");
        TextButton(dialog, "Stop")->click();
    });
    watch.start(0);
    Button(dialog, "ParallelSearch")->click();
    watch.stop();
    ASSERT_GE(texts.size(), 6);
    EXPECT_EQ(texts.front(), "Searching");
    EXPECT_TRUE(texts.at(5).startsWith("Searching...")) << texts.at(5).toStdString();
    EXPECT_TRUE(dialog.isVisible()) << "Stop ends the search, not the dialog";
    EXPECT_EQ(StatusOf(dialog), "Logic Analyzer not found");
    EXPECT_EQ(HintOf(dialog), "The search was stopped.");
    EXPECT_FALSE(dialog.findChild<QProgressBar*>()->isVisible());
    EXPECT_TRUE(Button(dialog, "UsbSearch")->isEnabled());
    EXPECT_NE(TextButton(dialog, "Cancel"), nullptr);
    EXPECT_FALSE(TextButton(dialog, "OK")->isEnabled());
    Button(dialog, "ParallelSearch")->click();
    EXPECT_EQ(StatusOf(dialog), "Address=0x378 Model=Roach160LB");
    EXPECT_TRUE(Button(dialog, "Port1")->isChecked());
    EXPECT_TRUE(Button(dialog, "Mode4")->isChecked());
}

TEST(AddressDialog, ShowsTheConnectionInUse) {
    Bench bench("Roach160L@isa");
    bench.State.Identity.ComMode = 8;
    bench.State.Identity.AddressIndex = 2;
    bench.State.Identity.Emulated = 0;
    const CHWAddress inUse(bench.Hardware, bench.State);
    EXPECT_TRUE(Button(inUse, "Isa2")->isChecked());
    bench.State.Identity.Emulated = 1;
    const CHWAddress demo(bench.Hardware, bench.State);
    EXPECT_FALSE(Button(demo, "Isa2")->isChecked());
}

// ---- the way from the menu and back ----

class EveryCableDesk : public testing::TestWithParam<const char*> {};
INSTANTIATE_TEST_SUITE_P(Cables, EveryCableDesk,
                         testing::Values("usb", "isa", "byte", "epp", "epp16", "epp32"),
                         [](const auto& cable) { return std::string(cable.param); });

TEST_P(EveryCableDesk, TheMainWindowOpensOnTheInstrument) {
    Desk desk({std::string("--simulate=Roach160L@") + GetParam()});
    desk.Start();
    EXPECT_TRUE(desk.Box.Titles.isEmpty()) << "no dialog";
    EXPECT_TRUE(desk.Box.Seen.isEmpty()) << "no box";
    EXPECT_EQ(desk.State().Identity.Emulated, 0);
    EXPECT_EQ(desk.State().Identity.HardwareType, 15);
    EXPECT_TRUE(desk.Frame().isVisible());
    EXPECT_TRUE(desk.Timing().isVisible());
    SaveShot(desk.Frame(), QStringLiteral("main-") + QString::fromLatin1(GetParam()));
}

TEST(AddressFromTheMenu, FoundTellsToRestart) {
    Desk desk({"--simulate=Roach160L@epp"});
    desk.Start();
    desk.Box.Dialogs.emplace_back([](QDialog& dialog) {
        EXPECT_TRUE(Button(dialog, "Port1")->isChecked());
        EXPECT_TRUE(Button(dialog, "Mode4")->isChecked());
        EXPECT_FALSE(Button(dialog, "Port1")->icon().isNull()) << "marked as found";
        Button(dialog, "Mode2")->click();
        TextButton(dialog, "OK")->click();
    });
    QAction* entry = desk.Entry("Setup", "&Hardware address...");
    ASSERT_NE(entry, nullptr);
    EXPECT_TRUE(entry->isEnabled());
    entry->trigger();
    EXPECT_EQ(desk.Box.Seen, (QList<Boxes::Box>{{"Restart software now.", "Note:"}}));
    EXPECT_EQ(desk.State().Identity.ComMode, 2);
    EXPECT_EQ(desk.State().Identity.Emulated, 0);
}

TEST(AddressFromTheMenu, CancelTakesTheInstrumentUpAgain) {
    Desk desk({"--simulate=Roach80L@usb"});
    desk.Start();
    HardwareSession& hardware = desk.View().TheApp().Hardware;
    desk.Box.Dialogs.emplace_back([](QDialog& dialog) {
        Button(dialog, "Demo")->click();
        EXPECT_EQ(StatusOf(dialog), "Demo mode");
        TextButton(dialog, "Cancel")->click();
    });
    desk.View().Execute(CommandId::HardwareAddress);
    EXPECT_EQ(desk.State().Identity.Emulated, 0);
    EXPECT_EQ(desk.State().Identity.HardwareType, 14);
    EXPECT_EQ(desk.State().Identity.ComMode, 9);
    EXPECT_TRUE(UsbInForce(hardware));
    EXPECT_EQ(desk.State().Shape.TotalChannels, 80);
}

TEST(AddressFromTheMenu, DemoEndsTheUseOfTheInstrument) {
    Desk desk({"--simulate=Roach80L@usb"});
    desk.Start();
    desk.Box.Dialogs.emplace_back([](QDialog& dialog) {
        Button(dialog, "Demo")->click();
        TextButton(dialog, "OK")->click();
    });
    desk.View().Execute(CommandId::HardwareAddress);
    EXPECT_TRUE(desk.Box.Seen.isEmpty()) << "no hardware in use";
    EXPECT_EQ(desk.State().Identity.Emulated, 1);
    EXPECT_EQ(desk.State().Identity.HardwareType, 15);
    EXPECT_EQ(desk.State().Shape.TotalChannels, 160) << "the model follows";
    EXPECT_EQ(desk.View().TheApp().Hardware.Ops, &NullRegisterOps());
}

TEST(AddressFromTheMenu, IsClosedWhileACaptureRuns) {
    StartedDesk desk;
    desk.View().Execute(CommandId::Go);
    EXPECT_FALSE(QueryCommand(desk.View().TheApp(), CommandId::HardwareAddress).Enabled);
    desk.View().Execute(CommandId::Stop);
    EXPECT_TRUE(QueryCommand(desk.View().TheApp(), CommandId::HardwareAddress).Enabled);
}

}  // namespace
}  // namespace zu::test
