// What a load does around the reading itself, and when.
#include <gtest/gtest.h>
#include <vector>

#include "core/Defaults.h"
#include "core/FileCommands.h"
#include "files/SettingsWriter.h"
#include "support/Bench.h"

namespace zu {
namespace {

using test::Bench;
using Strings = std::vector<std::string>;

/// Windows that write down what the state says at the moment when they are opened or closed.
class WatchingShell : public test::RecordingShell {
  public:
    explicit WatchingShell(InstrumentState& state) : RecordingShell(state), watched_(state) {}

    void Open(WindowId window) override { Note("open ", window), RecordingShell::Open(window); }
    void Close(WindowId window) override { Note("close ", window), RecordingShell::Close(window); }

    Strings Seen;  ///< "open Serial flag 0 pod 1": the window's open flag and the mode of the first pod

  private:
    void Note(const char* what, WindowId window) {
        const WindowRecord& windows = watched_.Windows;
        const std::int32_t flag = window == WindowId::Timing      ? windows.TimingStat
                                  : window == WindowId::StateList ? windows.StateStat
                                                                  : windows.SerialStat;
        Seen.push_back(std::string(what) + test::NameOf(window) + " flag " + std::to_string(flag) + " pod " +
                       std::to_string(watched_.Pods.HardwarePod[0]));
    }

    InstrumentState& watched_;
};

struct Watched : Bench {
    WatchingShell Windows{*State};
    zu::App Program{*State, Host, Windows, Hardware};

    explicit Watched(int row) {
        State->Command.ModelRow = row;
        InitDefaults(Program);
        Forget();
        Windows.Log.clear();
    }
    LoadStatus Load(const std::string& type, const std::string& bytes, bool showErrors = true) {
        return LoadFile(Program, type, Folder.Write("x." + type, bytes), showErrors);
    }
};

std::string Settings(int type, const std::string& more) {
    return "\r\n[File]\r\nFileVersion=192\r\n\r\n[Hardware]\r\nType=" + std::to_string(type) + "\r\n" + more;
}

std::string Stats(const std::string& timing, const std::string& states, const std::string& serial) {
    return "\r\n[TimingWin]\r\nStat=" + timing + "\r\n\r\n[StateWin]\r\nStat=" + states +
           "\r\n\r\n[SerialWin]\r\nStat=" + serial + "\r\n";
}

TEST(LoadOrder, OpensWindowsWithTheirFlagClearedAndDropsPatternPodsInBetween) {
    Watched bench(25);
    bench.Load("INI", Settings(25, "Pod0=1\r\n" + Stats("1", "7", "1")));
    EXPECT_EQ(bench.Windows.Seen, (Strings{"open Serial flag 0 pod 1", "open Timing flag 0 pod 0",
                                           "open StateList flag 0 pod 0"}));
}

TEST(LoadOrder, SendsTheCloseMessageToWindowsThatAreStillOpen) {
    Watched bench(25);
    WindowRecord& windows = bench.State->Windows;
    windows.TimingStat = windows.StateStat = windows.SerialStat = 1;
    bench.Load("INI", Settings(25, "Pod0=2\r\n" + Stats("0", "0", "0")));
    EXPECT_EQ(bench.Windows.Seen, (Strings{"close Serial flag 1 pod 2", "close Timing flag 1 pod 0",
                                           "close StateList flag 1 pod 0"}));
}

TEST(LoadOrder, TakesAStoredMinusOneOfAnOpenFlagAsAbsent) {
    Watched bench(15);
    bench.State->Windows.StateStat = 1;
    bench.Load("INI", Settings(15, Stats("-1", "-1", "-1")));
    EXPECT_TRUE(bench.Windows.Seen.empty());
    EXPECT_EQ(bench.State->Windows.StateStat, 1);
}

TEST(LoadOrder, EndsWithTheSpiWindowAndTheBarsForEveryType) {
    for (const char* type : {"ZU", "INI", "ZXT", "CSV"}) {
        Watched bench(16);
        bench.State->Windows.SpiStat = 1;
        bench.Load(type, "");
        ASSERT_GE(bench.Windows.Log.size(), 2U) << type;
        EXPECT_EQ(*(bench.Windows.Log.end() - 2), "redraw Spi") << type;
        EXPECT_EQ(bench.Windows.Log.back(), "bars") << type;
        bench.Load(type, "", false);
        EXPECT_EQ(bench.Windows.Count("bars"), 1) << type << ": a quiet load leaves the bars";
        EXPECT_EQ(bench.Windows.Log.back(), "redraw Spi") << type;
    }
}

TEST(LoadOrder, SetsTitleAndPatternFlagBeforeTheUserAborts) {
    Watched bench(15);
    bench.State->Windows.SpiStat = 1;
    bench.State->Pattern.PatDirty = 0;
    bench.Host.Answers = {true};
    const std::string before = SettingsText(*bench.State, bench.Host);
    EXPECT_EQ(bench.Load("ZU", Settings(13, "Pod0=1\r\n" + Stats("1", "1", "1")) +
                                   "\r\n[Data D0 0 1]\r\nx\r\n[Settings]\r\n"),
              LoadStatus::Loaded);
    EXPECT_EQ(bench.Host.Title, bench.Folder.File("x.ZU"));
    EXPECT_EQ(bench.State->Pattern.PatDirty, 1);
    EXPECT_EQ(SettingsText(*bench.State, bench.Host), before) << "nothing was read";
    EXPECT_EQ(bench.State->Buffer.Pod[0][0], 0);
    EXPECT_TRUE(bench.Windows.Seen.empty());
    EXPECT_EQ(bench.Windows.Count("bars"), 0);
}

TEST(LoadOrder, AppliesTheModelLineAfterTheSettings) {
    Watched bench(15);
    bench.Load("ZU", Settings(15, "Mode=1\r\nMux=0\r\n") +
                         "\r\n[Model Roach160LB-128K 0 0]\r\n[Data D0 8191 2]\r\nxy");
    EXPECT_EQ(bench.State->Memory.HardwareMode, 0);
    EXPECT_EQ(bench.State->Memory.BufferLen, 8192);
    EXPECT_EQ(bench.Texts(), Strings{"File Load Error(2)|Address range[8191..8193] to long for buffer[0]"});
}

TEST(LoadOrder, LeavesSettingsAndCaptureOfAFileThatCannotBeOpened) {
    Watched bench(15);
    bench.State->Buffer.Pod[3][5] = 'x';
    bench.State->Pattern.PatZoomScale = 0.125;
    const std::string before = SettingsText(*bench.State, bench.Host);
    for (const char* type : {"ZU", "INI", "ZXT", "CSV"}) {
        for (const bool showErrors : {true, false}) {
            EXPECT_EQ(LoadFile(bench.Program, type, bench.Folder.File("none"), showErrors),
                      showErrors ? LoadStatus::Failed : LoadStatus::FailedSilently);
        }
    }
    EXPECT_EQ(SettingsText(*bench.State, bench.Host), before);
    EXPECT_EQ(bench.State->Buffer.Pod[3][5], 'x');
    EXPECT_EQ(bench.State->Pattern.PatZoomScale, 0.125);
}

}  // namespace
}  // namespace zu
