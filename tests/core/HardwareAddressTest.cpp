// What follows the address dialog, at the start and from the menu.
#include <gtest/gtest.h>

#include "core/Capture.h"
#include "core/CommandLine.h"
#include "core/Commands.h"
#include "core/Frame.h"
#include "core/HardwareAddress.h"
#include "core/Preferences.h"
#include "core/Startup.h"
#include "hw/AddressSearch.h"
#include "hw/Attachment.h"
#include "support/Bench.h"

namespace zu {
namespace {

using test::Bench;

/// A base of its own, so that it outlives the session.
struct Attached {
    Attachment Instrument;
};

/// A program that was started on the simulated instrument, and a dialog that works by script.
struct Program : Attached, Bench {
    explicit Program(const std::string& simulate, const std::string& option = "--simulate=")
        : Attached{Attachment(simulate)} {
        Instrument.AttachTo(Hardware);
        const std::string value = option == "--simulate=" ? simulate : "15";
        ParseCommandLine(std::vector<std::string>{"zu", option + value}, State->Files.AppDir, State->Command);
        CreateFrame(App);
        RunStartupSequence(App);
        Forget();
    }
    IdentityRecord& Identity() { return State->Identity; }
    void Dialog(bool chosen, std::function<void(AddressSearch&)> work) {
        Shell.AddressChosen = chosen;
        Shell.OnAddressDialog = [this, work = std::move(work)] {
            AddressSearch search(Hardware, *State);
            OfferedAddresses(Hardware, *State);
            work(search);
        };
    }
};

TEST(HardwareAddress, TheInstrumentFoundFromTheMenuIsInUseAndTheUserToldToRestart) {
    Program program("Roach160L@epp", "--model=");
    EXPECT_EQ(program.Identity().Emulated, 1);
    program.State->Buffer.Pod[0][5] = 0x5A;
    program.Dialog(true, [](AddressSearch& search) { search.SearchParallel(); });
    EXPECT_TRUE(RunCommand(program.App, CommandId::HardwareAddress));
    EXPECT_EQ(program.Identity().Emulated, 0);
    EXPECT_EQ(program.Identity().HardwareType, 15);
    EXPECT_EQ(program.Identity().ComMode, 4);
    EXPECT_EQ(program.Identity().AddressIndex, 8);
    EXPECT_EQ(program.Texts(), std::vector<std::string>{"Note:|Restart software now."});
    EXPECT_EQ(program.State->Buffer.Pod[0][5], 0x5A) << "the same model keeps its samples";
    EXPECT_EQ(program.State->Memory.BufferLen, 8192) << "the depth that the board has in its mode";
    EXPECT_NE(program.Hardware.Ops, &NullRegisterOps());
    Shutdown(program.App);
    const StoredConnection stored = ReadStoredConnection(*program.State);
    EXPECT_EQ(stored.ComMode, 4) << "for the next start";
    EXPECT_EQ(stored.Address, 8);
}

TEST(HardwareAddress, AnotherModelIsRebuiltWhole) {
    Program program("Roach40L@isa", "--model=");
    EXPECT_EQ(program.State->Shape.TotalChannels, 160);
    program.Dialog(true, [](AddressSearch& search) { search.SearchIsa(); });
    ChangeHardwareAddress(program.App);
    EXPECT_EQ(program.Identity().HardwareType, 13);
    EXPECT_EQ(program.Identity().BoardPortAddress, 0x210);
    EXPECT_EQ(program.State->Shape.TotalChannels, 40);
    EXPECT_EQ(program.State->Shape.PodCount, 5);
    EXPECT_EQ(program.State->Timing.TimingLines, 40);
    EXPECT_EQ(program.Shell.Count("menus"), 1);
}

TEST(HardwareAddress, LeavingWithoutAChoiceTakesTheInstrumentUpAgain) {
    for (const char* cable : {"usb", "isa", "byte", "epp", "epp16", "epp32"}) {
        SCOPED_TRACE(cable);
        Program program(std::string("Roach80L@") + cable);
        const IdentityRecord before = program.Identity();
        program.Dialog(false, [](AddressSearch& search) {
            search.TryUsb();
            search.TryIsa(4);
            search.TryParallel(2, 1);
        });
        ChangeHardwareAddress(program.App);
        EXPECT_EQ(program.Identity().Emulated, 0);
        EXPECT_EQ(program.Identity().HardwareType, 14);
        EXPECT_EQ(program.Identity().ComMode, before.ComMode);
        EXPECT_EQ(program.Identity().AddressIndex, before.AddressIndex);
        EXPECT_EQ(program.Identity().HwPort, before.HwPort);
        EXPECT_EQ(program.Hardware.HwPort, before.HwPort);
        EXPECT_EQ(GetTrigStat(program.Hardware), 2);
        EXPECT_EQ(program.Hardware.Ports.At(0, 0), program.Identity().BoardPortAddress);
        EXPECT_EQ(program.Texts(), std::vector<std::string>{"Note:|Restart software now."})
            << "hardware is in use";
    }
}

TEST(HardwareAddress, AnInstrumentThatWentMeanwhileLeavesItsModelAsAnEmulation) {
    Program program("Roach80L@usb");
    program.Dialog(false, [&](AddressSearch&) {
        program.Hardware.Seams = {};
        SetupOSFunctions(program.Hardware, 0);
    });
    ChangeHardwareAddress(program.App);
    EXPECT_EQ(program.Identity().Emulated, 1);
    EXPECT_EQ(program.Identity().HardwareType, 14) << "the row that the buffers are made for";
    EXPECT_EQ(program.Identity().ComMode, 9);
    EXPECT_EQ(program.Hardware.Ops, &NullRegisterOps());
    EXPECT_TRUE(program.Texts().empty());
}

TEST(HardwareAddress, WithoutInstrumentAndChoiceEverythingStays) {
    Program program("Roach80L@usb", "--model=");
    const IdentityRecord before = program.Identity();
    program.Dialog(false, [](AddressSearch& search) {
        search.TryIsa(4);
        search.TryUsb();
    });
    ChangeHardwareAddress(program.App);
    EXPECT_EQ(program.Identity().Emulated, 1);
    EXPECT_EQ(program.Identity().HardwareType, 15);
    EXPECT_EQ(program.Identity().ComMode, before.ComMode);
    EXPECT_EQ(program.Hardware.Ops, &NullRegisterOps());
    EXPECT_TRUE(program.Texts().empty());
}

TEST(HardwareAddress, DemoTakesTheModelOfTheSeries) {
    Program program("Roach40S@usb");
    EXPECT_EQ(program.State->Shape.TotalChannels, 40);
    program.Dialog(true, [](AddressSearch& search) { search.ChooseDemo(); });
    ChangeHardwareAddress(program.App);
    EXPECT_EQ(program.Identity().Emulated, 1);
    EXPECT_EQ(program.Identity().HardwareType, 15);
    EXPECT_EQ(program.State->Shape.TotalChannels, 160);
    EXPECT_EQ(program.Hardware.Ops, &NullRegisterOps());
    EXPECT_TRUE(program.Texts().empty());
}

TEST(HardwareAddress, IsOfferedOnlyToAnIdleInstrument) {
    Bench bench;
    bench.UseRow(15);
    for (const int state : {0, 1, 2}) {
        bench.State->Capture.CaptureState = static_cast<std::uint8_t>(state);
        EXPECT_EQ(QueryCommand(bench.App, CommandId::HardwareAddress).Enabled, state == 0);
        EXPECT_EQ(RunCommand(bench.App, CommandId::HardwareAddress), state == 0);
    }
    EXPECT_EQ(bench.Shell.Count("address dialog"), 1);
}

TEST(AddressAtTheStart, WithoutAChoiceTheStoredConnectionStays) {
    Bench bench;
    bench.Folder.Write("WRoach.ini", "[Hardware]\r\nComMode=4\r\nAddress=9\r\n");
    bench.Shell.AddressChosen = false;
    bench.Shell.OnAddressDialog = [&] {
        AddressSearch search(bench.Hardware, *bench.State);
        search.TryIsa(3);
        search.TryUsb();
    };
    CreateFrame(bench.App);
    RunStartupSequence(bench.App);
    EXPECT_EQ(bench.Shell.Count("address dialog"), 1);
    EXPECT_EQ(bench.State->Identity.AddressIndex, 9);
    EXPECT_EQ(bench.State->Identity.HwPort, 0x278);
    EXPECT_EQ(bench.State->Identity.Emulated, 1);
    EXPECT_EQ(bench.State->Identity.HardwareType, 15);
    EXPECT_EQ(bench.Hardware.Ops, &NullRegisterOps());
}

TEST(AddressAtTheStart, TheInstrumentThatTheUserFindsIsTheModel) {
    Attachment instrument("Roach80S@byte");
    Bench bench;
    instrument.AttachTo(bench.Hardware);
    bench.Shell.OnAddressDialog = [&] {
        AddressSearch search(bench.Hardware, *bench.State);
        search.SearchParallel();
    };
    CreateFrame(bench.App);
    RunStartupSequence(bench.App);
    EXPECT_EQ(bench.Shell.Count("model dialog"), 0);
    EXPECT_EQ(bench.State->Identity.Emulated, 0);
    EXPECT_EQ(bench.State->Identity.HardwareType, 12);
    EXPECT_EQ(bench.State->Shape.TotalChannels, 80);
    EXPECT_NE(bench.Hardware.Ops, &NullRegisterOps());
}

}  // namespace
}  // namespace zu
