// What start-up loads: the files of the preferences and of the command line, and those of the viewer.
#include <gtest/gtest.h>
#include <vector>

#include "StartupBench.h"
#include "core/Commands.h"
#include "files/SettingsWriter.h"
#include "support/Captures.h"

namespace zu {
namespace {

using test::kIsaBoard;
using test::OneBoard;
using test::Program;
using test::SettingsOf;
using Strings = std::vector<std::string>;

TEST(StartFile, IsTheDefaultDataFile) {
    Program program;
    program.Folder.Write("WRoach_0.zu", SettingsOf(15, "DataLogFileName=mine\r\n"));
    program.Run();
    EXPECT_EQ(program.State->Files.DataLogFileName.View(), "mine");
    EXPECT_EQ(program.State->Memory.BufferLen, 131072);
    EXPECT_TRUE(program.Host.Boxes.empty());
    EXPECT_EQ(program.Host.Title, program.Folder.File("WRoach_0.zu"));
}

TEST(StartFile, OfOldProgramsIsTurnedIntoANewOne) {
    Program program;
    program.Folder.Write("WRoach_0.ini", SettingsOf(15, "DataLogFileName=old\r\n"));
    program.Run();
    EXPECT_EQ(program.Texts(),
              Strings{"Note:|Old format default settings file found. A new format file will be created. "});
    EXPECT_EQ(program.State->Files.DataLogFileName.View(), "old");
    const std::string written = program.Folder.Read("WRoach_0.zu");
    EXPECT_EQ(written.rfind("\r\n[File]\r\n", 0), 0U);
    EXPECT_NE(written.find("DataLogFileName=old\r\n"), std::string::npos);
    EXPECT_EQ(written.find("[Comment"), std::string::npos) << "the settings block only";
    EXPECT_EQ(written.find("[Settings]"), std::string::npos);
}

TEST(StartFile, MissingOpensTheTimingWindow) {
    Program program({}, "[Timing DLG]\r\nstat=0\r\n");
    program.Run();
    EXPECT_EQ(program.State->Windows.TimingStat, 1);
    EXPECT_EQ(program.Shell.Count("open Timing"), 1);
}

TEST(StartFile, OfTheSwitchIsFoundInTheProgramsFolderWhateverItsCase) {
    Program program({"-Lspi Run.zu"});
    program.Folder.Write("Spi run.ZU", SettingsOf(15, "DataLogFileName=found\r\n"));
    program.Run();
    EXPECT_EQ(program.State->Files.DataLogFileName.View(), "found");
    EXPECT_EQ(program.Host.Title, program.Folder.File("SPI RUN.ZU"));
    EXPECT_TRUE(program.Host.Boxes.empty());
    EXPECT_EQ(program.Shell.Count("address dialog"), 1) << "the switch starts no viewer";
}

TEST(StartFile, OfTheSwitchNeverComesFromTheWorkingFolder) {
    Program program({"-Lonly-here.zu"});
    const auto before = std::filesystem::current_path();
    const test::TempFolder work;
    work.Write("only-here.zu", SettingsOf(15));
    std::filesystem::current_path(work.Path());
    program.Run();
    std::filesystem::current_path(before);
    EXPECT_EQ(program.Texts(), Strings{"Error: File did not load|" + program.Folder.File("ONLY-HERE.ZU")});
}

TEST(StartFile, OfTheSwitchThatIsMissingIsToldAndStartUpGoesOn) {
    Program program({"-Lnone.zu", "-G"});
    program.Run();
    EXPECT_EQ(program.Texts(), Strings{"Error: File did not load|" + program.Folder.File("NONE.ZU")});
    EXPECT_EQ(program.State->Capture.CaptureState, 1);
    EXPECT_EQ(program.State->Windows.TimingStat, 1);
    EXPECT_EQ(program.Host.Title, program.Folder.File("NONE.ZU")) << "the title is set once more at the end";
}

TEST(StartFile, OfTheSwitchReplacesTheDefaultOne) {
    Program program({"-Lmine.zu"});
    program.Folder.Write("mine.zu", SettingsOf(15, "DataLogFileName=mine\r\n"));
    program.Folder.Write("WRoach_0.zu", SettingsOf(15, "DataLogFileName=default\r\nExportG=5\r\n"));
    program.Run();
    EXPECT_EQ(program.State->Files.DataLogFileName.View(), "mine");
    EXPECT_EQ(program.State->Files.ExportG, 0);
}

TEST(StartFile, OfTheCsvSwitchThatIsMissingIsToldInTheSameWay) {
    Program program({"-Cnone.csv"});
    program.Run();
    EXPECT_EQ(program.Texts(), Strings{"Error: File did not load|" + program.Folder.File("NONE.CSV")});
}

TEST(StartFile, AnyArgumentThatBeginsWithLIsOne) {
    Program program({"-LAYOUT"});
    program.Run();
    EXPECT_EQ(program.Texts(), Strings{"Error: File did not load|" + program.Folder.File("AYOUT")});
}

TEST(StartFile, TypesOfThePreferencesAreReadAndChecked) {
    Program program({}, "[File]\r\nDefSaveType=prn\r\nDefLoadType=CSV\r\n");
    program.Run();
    EXPECT_EQ(program.State->Files.DefSaveType, "PRN");
    EXPECT_EQ(program.State->Files.DefLoadType, "ZU");
}

TEST(AutoGo, PressesGoAtTheEnd) {
    Program program({"-g"});
    program.Run();
    EXPECT_EQ(program.State->Capture.CaptureState, 1);
    EXPECT_EQ(program.Host.TimerLog.back(), "start 2 30");
}

// --- Viewer --------------------------------------------------------------------------------------------

TEST(Viewer, OpensTheNamedFileAtOnceOnItsOwnModel) {
    OneBoard board;
    Program program({"Somewhere.zu"}, kIsaBoard);
    program.Attach(board);
    const std::string name = program.Folder.Write("Somewhere.zu", SettingsOf(13, "DataLogFileName=mine\r\n"));
    program.State->Command.DocumentFile = name;
    program.Run();
    EXPECT_EQ(program.State->Identity.Emulated, 1) << "a viewer asks no instrument";
    EXPECT_EQ(program.State->Identity.HardwareType, 13);
    EXPECT_EQ(program.State->Files.DataLogFileName.View(), "mine");
    EXPECT_EQ(program.State->Memory.BufferLen, 131072);
    EXPECT_EQ(program.Host.Title, name);
    EXPECT_EQ(program.Shell.Count("address dialog"), 0);
    EXPECT_EQ(program.Shell.Count("model dialog"), 0);
    EXPECT_TRUE(program.Host.Boxes.empty());
    EXPECT_EQ(program.State->Files.RecentFiles[0], name);
    EXPECT_EQ(program.State->Files.LastFolder, program.Folder.Path());
}

TEST(Viewer, TellsOfAFileThatIsMissing) {
    Program program({"/no/such/Thing.zu"});
    program.Run();
    EXPECT_EQ(program.Texts(), Strings{"Error: File did not load|/no/such/Thing.zu"});
    EXPECT_EQ(program.State->Identity.HardwareType, 15);
    EXPECT_EQ(program.State->Windows.TimingStat, 1);
    EXPECT_EQ(program.State->Files.RecentFiles[0], "");
}

TEST(Viewer, OpensSettingsAndTranslateTablesToo) {
    Program program;
    program.State->Command.DocumentFile =
        program.Folder.Write("a.INI", SettingsOf(14, "DataLogFileName=ini\r\n"));
    program.Run();
    EXPECT_EQ(program.State->Files.DataLogFileName.View(), "ini");
    Program table;
    table.State->Command.DocumentFile =
        table.Folder.Write("a.zxt", "\r\n[UserDefined]\r\nud0Bit=1\r\nud0Stg=x\r\nud0Skip=0\r\n");
    table.Run();
    EXPECT_EQ(table.State->Translate.TranslateCount, 1);
}

TEST(Viewer, OfAModelNeedsNoFile) {
    Program program({"--model=Roach80L"});
    program.Run();
    EXPECT_EQ(program.State->Identity.HardwareType, 14);
    EXPECT_EQ(program.Shell.Count("address dialog"), 0);
    EXPECT_EQ(program.Shell.Count("model dialog"), 0);
    EXPECT_EQ(program.State->Windows.TimingStat, 1);
}

TEST(Viewer, OpensEveryRealCapture) {
    ZU_NEEDS_CAPTURES();
    for (const char* capture : test::kCaptures) {
        Program program({test::CapturePath(std::string(capture) + ".zu").string()});
        program.Run();
        EXPECT_TRUE(program.Host.Boxes.empty()) << capture;
        EXPECT_EQ(program.State->Windows.TimingStat, 1);
        EXPECT_GT(program.State->Memory.DisplayLen, 0);
    }
}

TEST(LoadSwitch, OpensARealCaptureByItsUpperCasedName) {
    ZU_NEEDS_CAPTURES();
    Program program({"-L" + test::CapturePath("i2c_eeprom_page_write.zu").string()});
    program.Host.Answers = {false};
    program.Run();
    EXPECT_EQ(program.Texts(),
              (Strings{"Warning|The settings file does not match the installed hardware. Abort load?",
                       "Software running in Demo mode|"}))
        << "the model stays that of the emulation";
    EXPECT_NE(program.State->Channels.ChannelName[0].View(), "Pod 1A Ch 0") << "its channels are named";
}

}  // namespace
}  // namespace zu
