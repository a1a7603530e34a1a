// Reading the records of a data file: every header form, every message.
#include <gtest/gtest.h>

#include "LoadSupport.h"
#include "support/TempFolder.h"

namespace zu {
namespace {

using test::ScriptedHost;
using test::StartState;
using test::TempFolder;
using Box = ScriptedHost::Box;
using namespace std::string_literals;

/// A model with three buffers of 16 samples that hold ".", their patterns "-".
class DataReader : public testing::Test {
  protected:
    void SetUp() override {
        test::SetLengths(*State, 16);
        for (std::size_t pod = 0; pod < 3; ++pod) {
            std::fill_n(State->Buffer.Pod[pod], 64, std::uint8_t{'.'});
            std::fill_n(State->Buffer.PatPod[pod], 64, std::uint8_t{'-'});
        }
        State->Files.FileVersion = 192;
    }

    LoadStatus Read(const std::string& bytes, const std::string& extension = "ZU") {
        const std::string path = test::WriteBytes(folder_.File("x.zu"), bytes);
        return ReadDataFile(*State, Host, path, extension, false, Hooks.Hooks());
    }
    /// First 16 bytes of a buffer, and what stands behind them.
    std::string Samples(std::size_t pod, std::size_t count = 16) const {
        return {reinterpret_cast<const char*>(State->Buffer.Pod[pod]), count};
    }
    std::string Pattern(std::size_t pod) const {
        return {reinterpret_cast<const char*>(State->Buffer.PatPod[pod]), 16};
    }
    void ExpectBoxes(const std::vector<Box>& boxes) const { EXPECT_EQ(Host.Boxes, boxes); }

    std::unique_ptr<InstrumentState> State = StartState(16, 1);
    ScriptedHost Host;
    test::Loader Hooks{*State, Host};

  private:
    TempFolder folder_;
};

const Box kBadHeader{"Bad data record header.", "File Load Error(3)"};
const Box kNoBlank{"", "File Load Error(4)"};
const Box kNotAvailable{"Data buffer not available with this hardware.", "File Load Error(10)"};

Box TooLong(const std::string& range, int buffer) {
    return {"Address range[" + range + "] to long for buffer[" + std::to_string(buffer) + "]",
            "File Load Error(2)"};
}

TEST_F(DataReader, PutsRecordsWhereTheyBelong) {
    EXPECT_EQ(
        Read("\r\n[Data D0 0 3]\r\nabc\r\n[Data PG0 2 4]\r\nefgh\r\n[Data D2 15 1]\r\nz\r\n[Settings]\r\n"),
        LoadStatus::Loaded);
    ExpectBoxes({});
    EXPECT_EQ(Samples(0), "abc.............");
    EXPECT_EQ(Pattern(0), "--efgh----------");
    EXPECT_EQ(Samples(1), "................");
    EXPECT_EQ(Samples(2), "...............z");
}

TEST_F(DataReader, KeepsWhatNoRecordCovers) {
    Read("[Data D1 4 2]\nxy[Data D1 0 0]\n[Data D1 8 1]\nq");
    EXPECT_EQ(Samples(1), "....xy..q.......");
    ExpectBoxes({});
}

TEST_F(DataReader, TakesPayloadsOfAnyBytes) {
    Read("[Data D0 0 16]\n[Settings]\r\n\0\xFF]["s + "[Data D1 0 1]\nk");
    EXPECT_EQ(Samples(0), "[Settings]\r\n\0\xFF]["s);
    EXPECT_EQ(Samples(1).substr(0, 1), "k");
}

TEST_F(DataReader, AcceptsThreeLineEnds) {
    Read("[Data D0 0 2]\nab[Data D1 0 2]\r\ncd[Data D2 0 2]\r\r\nef");
    EXPECT_EQ(Samples(0).substr(0, 3), "ab.");
    EXPECT_EQ(Samples(1).substr(0, 3), "cd.");
    EXPECT_EQ(Samples(2).substr(0, 3), "ef.");
    ExpectBoxes({});
}

TEST_F(DataReader, DropsTheByteTakenLastAtAnyOtherLineEnd) {
    Read("[Data D0 0 2]xab[Data D1 0 2]\rxcd[Data D2 0 2]\r\rxef");
    EXPECT_EQ(Samples(0).substr(0, 3), "ab.");
    EXPECT_EQ(Samples(1).substr(0, 3), "cd.");
    EXPECT_EQ(Samples(2).substr(0, 3), "ef.");
}

TEST_F(DataReader, ReadsTheKeywordInAnyCaseAndTheWordsAsTheyStand) {
    Read("[data D1 0 2]\nab[dAtA PG1 0 2]\ncd");
    EXPECT_EQ(Samples(1).substr(0, 3), "ab.");
    EXPECT_EQ(Pattern(1).substr(0, 3), "cd-");
    ExpectBoxes({});
    Read("[Data d1 0 2]\nxy");
    EXPECT_EQ(Samples(1).substr(0, 3), "ab.");
    ExpectBoxes({kBadHeader});
}

TEST_F(DataReader, StopsAtABadTarget) {
    for (const char* word : {"D20", "D00", "D-1", "D", "PG20", "PG", "IO1", "io", "X0", "D0x", "d0", ""}) {
        Host.Boxes.clear();
        EXPECT_EQ(Read("[Data "s + word + " 0 1]\nx[Data D0 0 1]\ny"), LoadStatus::Loaded);
        ExpectBoxes({kBadHeader});
        EXPECT_EQ(Samples(0), "................") << word;
    }
}

TEST_F(DataReader, TellsAHeaderWithoutABlankTwice) {
    EXPECT_EQ(Read("[Data]\n[Data D0 0 1]\nx"), LoadStatus::Loaded);
    ExpectBoxes({kNoBlank, kBadHeader});
    EXPECT_EQ(Samples(0), "................");
}

TEST_F(DataReader, ReadsEveryIndexThatTheModelHas) {
    auto large = StartState(15);
    test::SetLengths(*large, 4);
    std::string bytes;
    for (int i = 0; i < 20; ++i) {
        bytes += "[Data D" + std::to_string(i) + " 0 1]\n" + static_cast<char>('A' + i);
        bytes += "[Data PG" + std::to_string(i) + " 1 1]\n" + static_cast<char>('a' + i);
    }
    const TempFolder folder;
    const std::string path = test::WriteBytes(folder.File("x.zu"), bytes);
    EXPECT_EQ(ReadDataFile(*large, Host, path, "ZU", false, {}), LoadStatus::Loaded);
    for (std::size_t i = 0; i < 20; ++i) {
        EXPECT_EQ(large->Buffer.Pod[i][0], 'A' + i);
        EXPECT_EQ(large->Buffer.PatPod[i][1], 'a' + i);
    }
    ExpectBoxes({});
}

TEST_F(DataReader, StopsAtTheFirstBufferThatTheModelLacks) {
    Read("[Data D2 0 1]\na[Data D3 0 1]\nb[Data D0 0 1]\nc");
    ExpectBoxes({kNotAvailable});
    EXPECT_EQ(Samples(2).substr(0, 1), "a");
    EXPECT_EQ(Samples(0).substr(0, 1), ".") << "later records are not read even if they would fit";
    Host.Boxes.clear();
    Read("[Data PG19 -5 99999999999]\n");
    ExpectBoxes({kNotAvailable});
}

TEST_F(DataReader, AcceptsARangeUpToTheEndAndSkipsOneByteMore) {
    Read("[Data D0 0 16]\n0123456789abcdef[Data D1 1 16]\n0123456789abcdef[Data D2 0 1]\nx");
    EXPECT_EQ(Samples(0), "0123456789abcdef");
    EXPECT_EQ(Samples(1, 20), "....................");
    EXPECT_EQ(Samples(2).substr(0, 2), "x.");
    ExpectBoxes({TooLong("1..17", 1)});
}

TEST_F(DataReader, ReportsARangeOnceALoad) {
    Read("[Data D0 16 1]\na[Data PG1 17 1]\nb[Data D2 0 1]\nx");
    ExpectBoxes({TooLong("16..17", 0)});
    EXPECT_EQ(Samples(2).substr(0, 1), "x");
    Read("[Data PG1 17 1]\nb");
    ExpectBoxes({TooLong("16..17", 0), TooLong("17..18", 1)});
}

TEST_F(DataReader, TreatsNegativeNumbersAsARangeTooLong) {
    Read("[Data D0 -1 2]\nab[Data D1 0 1]\nx[Data D0 1 -5]\n[Data D2 0 1]\ny");
    ExpectBoxes({TooLong("-1..1", 0)});
    EXPECT_EQ(Samples(0, 20), "....................");
    EXPECT_EQ(Samples(1).substr(0, 1), "x");
    EXPECT_EQ(Samples(2).substr(0, 1), "y") << "a negative count skips nothing";
}

TEST_F(DataReader, TakesNumbersBeyond32BitsAsTheirEnds) {
    Read("[Data D0 2147483647 2147483647]\n[Data D1 0 1]\nx");
    ExpectBoxes({TooLong("2147483647..4294967294", 0)});
    EXPECT_EQ(Samples(1).substr(0, 1), ".") << "the skip leads beyond the end of the file";
    Host.Boxes.clear();
    Read("[Data D0 99999999999999999999 1]\nq[Data D1 0 1]\nx");
    ExpectBoxes({TooLong("2147483647..2147483648", 0)});
    EXPECT_EQ(Samples(1).substr(0, 1), "x");
    Host.Boxes.clear();
    Read("[Data D0 -99999999999999999999 -99999999999999999999]\n[Data D1 0 1]\ny");
    ExpectBoxes({TooLong("-2147483648..-4294967296", 0)});
    EXPECT_EQ(Samples(1).substr(0, 1), "y");
}

TEST_F(DataReader, TakesMissingAndStrayNumbersAs0) {
    Read("[Data D0]\n[Data D0 x 2]\nab[Data D1 3]\n[Data D2 2z 1y]\nq");
    EXPECT_EQ(Samples(0).substr(0, 3), "ab.");
    EXPECT_EQ(Samples(2).substr(0, 4), "..q.");
    ExpectBoxes({});
}

TEST_F(DataReader, TakesRunsOfBlanksAsOneAndDropsMoreWords) {
    Read("[Data   D0  1   2  99 98 97 96]\nab");
    EXPECT_EQ(Samples(0).substr(0, 4), ".ab.");
    ExpectBoxes({});
}

TEST_F(DataReader, CutsAWordAt25Characters) {
    Read("[Data D0 " + std::string(24, '0') + "34 1]\nq");
    EXPECT_EQ(Samples(0).substr(0, 5), "...q.");
    ExpectBoxes({});
}

TEST_F(DataReader, LooksAt81BytesOfAHeader) {
    // Behind the keyword's blank: "D0 0 2" and blanks, 80 bytes and the bracket.
    Read("[Data D0 0 2" + std::string(74, ' ') + "]\nab");
    EXPECT_EQ(Samples(0).substr(0, 3), "ab.");
    // One blank more, and the payload begins with the bracket.
    Read("[Data D1 0 2" + std::string(75, ' ') + "]\nab");
    EXPECT_EQ(Samples(1).substr(0, 3), "]\n.");
    ExpectBoxes({});
}

TEST_F(DataReader, PutsOldSamplesOfPatternPodsIntoThePattern) {
    State->Pods.HardwarePod = {1, 2, 3};
    State->Files.FileVersion = 189;
    Read("[Data D0 0 1]\na[Data D1 0 1]\nb[Data D2 0 1]\nc[Data PG2 0 1]\nd");
    EXPECT_EQ(Pattern(0).substr(0, 2), "a-");
    EXPECT_EQ(Pattern(1).substr(0, 2), "b-");
    EXPECT_EQ(Samples(2).substr(0, 2), "c.");
    EXPECT_EQ(Pattern(2).substr(0, 2), "d-");
    EXPECT_EQ(Samples(0).substr(0, 1), ".");
    State->Files.FileVersion = 190;
    Read("[Data D0 1 1]\ne");
    EXPECT_EQ(Samples(0).substr(0, 3), ".e.");
}

TEST_F(DataReader, EndsAtASettingsHeaderAnywhere) {
    for (const char* mark : {"[Settings]", "[SETTINGS]", "[settings x]", "\r\nN0=[Settings]"}) {
        Read(mark + "\r\n[Data D0 0 1]\nx"s);
        EXPECT_EQ(Samples(0).substr(0, 1), ".") << mark;
    }
    ExpectBoxes({});
}

TEST_F(DataReader, SeesHeadersInsideTheSettingsText) {
    Read("\r\n[ChannelData]\r\nN0=[Data D0 0 2]\r\nab\r\n");
    EXPECT_EQ(Samples(0).substr(0, 3), "ab.") << "the scanner knows no lines";
}

TEST_F(DataReader, IgnoresEveryOtherHeader) {
    Read("\r\n[File]\r\nx=1\r\n[Timing Win]\r\n[DATABASE x]\r\n[Data D0 0 1]\nq");
    EXPECT_EQ(Samples(0).substr(0, 1), "q");
    ExpectBoxes({});
}

TEST_F(DataReader, LosesTheByteBehindAClosingBracket) {
    Read("[a][Data D0 0 1]\nx");
    EXPECT_EQ(Samples(0).substr(0, 1), ".");
    Read("[a]\n[Data D0 0 1]\nx");
    EXPECT_EQ(Samples(0).substr(0, 1), ".") << "a line end takes one byte more";
    Read("[a]\n\n[Data D0 0 1]\nx");
    EXPECT_EQ(Samples(0).substr(0, 1), "x");
    Read("[a]x[Data D1 0 1]\nx");
    EXPECT_EQ(Samples(1).substr(0, 1), "x");
    ExpectBoxes({});
}

TEST_F(DataReader, DropsABracketWithoutAKeyword) {
    Read("[ Data D0 0 1]\n[]xx[Data D1 0 1]\nx");
    EXPECT_EQ(Samples(0).substr(0, 1), ".");
    EXPECT_EQ(Samples(1).substr(0, 1), "x");
    ExpectBoxes({});
}

TEST_F(DataReader, LooksAt81BytesForAKeyword) {
    Read("[" + std::string(80, 'k') + "[[Data D0 0 1]\nx");
    EXPECT_EQ(Samples(0).substr(0, 1), "x") << "the 81st byte is swallowed, the 82nd opens a header";
    Read("[" + std::string(81, 'k') + "[Data D1 0 1]\nx");
    EXPECT_EQ(Samples(1).substr(0, 1), "x");
    Read("[" + std::string(80, 'k') + "[Data D2 0 1]\nx");
    EXPECT_EQ(Samples(2).substr(0, 1), ".");
    ExpectBoxes({});
}

TEST_F(DataReader, PassesOverACommentUpToItsBracketOr80Bytes) {
    Read("[Comment [Data D0 0 1] x[Data D0 0 1]\na");
    EXPECT_EQ(Samples(0).substr(0, 1), "a");
    Read("[Comment " + std::string(79, 'c') + "[[Data D1 0 1]\nb");
    EXPECT_EQ(Samples(1).substr(0, 1), "b");
    Read("[Comment " + std::string(79, 'c') + "[Data D2 0 1]\nc");
    EXPECT_EQ(Samples(2).substr(0, 1), ".");
    Read("[Comment]\r\n[Data D2 0 1]\nc");
    EXPECT_EQ(Samples(2).substr(0, 1), "c") << "a closed comment has nothing to pass over";
    ExpectBoxes({});
}

TEST_F(DataReader, AppliesTheMemoryModeOfItsOwnModel) {
    Read("\r\n[Model Dace-32K 3 1]\r\n[Model Dace_32 1 -1]\r\n[Data D0 0 1]\nx");
    // The first name is no label of a file and counts as row 0.
    ExpectBoxes({{"", "Software running in Demo mode"}});
    EXPECT_EQ(Hooks.Modes, (std::vector<std::pair<int, int>>{{-1, 1}}));
    EXPECT_EQ(State->Memory.HardwareMode, 1);
    EXPECT_EQ(State->Memory.HardwareMux, -1);
    EXPECT_EQ(Samples(0).substr(0, 1), "x");
}

TEST_F(DataReader, CutsTheModeNumbersToEightBits) {
    Read("[Model Dace_32 257 x]");
    EXPECT_EQ(Hooks.Modes, (std::vector<std::pair<int, int>>{{0, 1}}));
    Hooks.Modes.clear();
    Read("[Model Dace_32]");
    EXPECT_EQ(Hooks.Modes, (std::vector<std::pair<int, int>>{{0, 0}}));
}

TEST_F(DataReader, MatchesEveryModelByItsFirstRow) {
    for (int row = 0; row < kModelRows; ++row) {
        if (!HasShape(row)) continue;
        State->Identity.HardwareType = static_cast<std::uint8_t>(row);
        State->Identity.Emulated = 0;
        Hooks.Modes.clear();
        Read("[Model " + std::string(Model(row).FileLabel) + " 2 1]\r\n");
        EXPECT_EQ(Hooks.Modes, (std::vector<std::pair<int, int>>{{1, 2}})) << row;
    }
    ExpectBoxes({});
}

TEST_F(DataReader, FallsBackToEmulationWithoutAnInstrument) {
    State->Identity.Emulated = 1;
    Read("[Model Roach160LB-128K 3 1]");
    ExpectBoxes({{"", "Software running in Demo mode"}});
    EXPECT_EQ(State->Identity.Emulated, 1);
    EXPECT_TRUE(Hooks.Modes.empty());
    EXPECT_EQ(State->Identity.HardwareType, 16);
}

TEST_F(DataReader, FallsBackToEmulationOnRow0EvenWithABoard) {
    State->Identity.HardwareType = 0;
    State->Identity.Emulated = 0;
    Read("[Model Dace_32 3 1]");
    ExpectBoxes({{"", "Software running in Demo mode"}});
    EXPECT_EQ(State->Identity.Emulated, 1);
}

TEST_F(DataReader, IgnoresTheModeOfAnotherModelWithAnInstrument) {
    State->Identity.Emulated = 0;
    State->Memory.HardwareMode = 1;
    Read("[Model Roach160LB-128K 3 1]");
    ExpectBoxes({});
    EXPECT_EQ(State->Identity.Emulated, 0);
    EXPECT_EQ(State->Memory.HardwareMode, 1);
    EXPECT_TRUE(Hooks.Modes.empty());
}

TEST_F(DataReader, TakesAnUnknownModelForRow0) {
    State->Identity.HardwareType = 0;
    Read("[Model Unheard-of 2 1]\r\n[Model  ]\r\n");
    ExpectBoxes({});
    EXPECT_EQ(Hooks.Modes, (std::vector<std::pair<int, int>>{{1, 2}, {0, 0}}));
}

TEST_F(DataReader, StopsAtAModelWithoutABlank) {
    EXPECT_EQ(Read("[Model]\r\n[Data D0 0 1]\nx"), LoadStatus::Loaded);
    ExpectBoxes({{"", "File Load Error(1)"}});
    EXPECT_EQ(Samples(0).substr(0, 1), ".");
}

TEST_F(DataReader, ReadsTheDirectionIntoItsBuffer) {
    State->Pattern.DirectionBuffer.assign(16, '.');
    Read("[Data IO 2 3]\nabc[Data D0 0 1]\nx");
    const auto& direction = State->Pattern.DirectionBuffer;
    EXPECT_EQ(std::string(direction.begin(), direction.end()), "..abc...........");
    EXPECT_EQ(Samples(0).substr(0, 1), "x");
    ExpectBoxes({});
}

TEST_F(DataReader, DropsTheDirectionWithoutABuffer) {
    State->Pattern.DirectionBuffer.clear();
    Read("[Data IO 0 16]\n[Data D1 0 1]\na.[Data D0 0 1]\nx");
    EXPECT_EQ(Samples(1).substr(0, 1), ".");
    EXPECT_EQ(Samples(0).substr(0, 1), "x");
    State->Pattern.DirectionBuffer.assign(4, '.');
    Read("[Data IO 2 9]\nabcdefghi[Data D2 0 1]\ny");
    EXPECT_EQ(State->Pattern.DirectionBuffer, (std::vector<std::uint8_t>{'.', '.', 'a', 'b'}));
    EXPECT_EQ(Samples(2).substr(0, 1), "y");
    ExpectBoxes({});
}

TEST_F(DataReader, ScansADirectionThatIsTooLongAsText) {
    State->Pattern.DirectionBuffer.assign(16, '.');
    for (const char* range : {"0 17", "16 1", "-1 2", "0 -1"}) {
        State->Buffer.Pod[0][0] = '.';
        Read("[Data IO "s + range + "]\n[Data D0 0 1]\nx");
        EXPECT_EQ(Samples(0).substr(0, 1), "x") << range;
    }
    EXPECT_EQ(State->Pattern.DirectionBuffer, (std::vector<std::uint8_t>(16, '.')));
    ExpectBoxes({});
}

TEST_F(DataReader, TakesWhatATruncatedPayloadStillHas) {
    EXPECT_EQ(Read("[Data D0 0 16]\nabc"), LoadStatus::Loaded);
    EXPECT_EQ(Samples(0), "abc.............");
    ExpectBoxes({});
}

TEST_F(DataReader, EndsQuietlyWhereverTheFileEnds) {
    const std::string whole =
        "\r\n[Comment x]\r\n[Model Dace_32 0 0]\r\n[Data D0 0 2]\r\nab\r\n[Data PG1 0 "
        "1]\r\nc\r\n[Settings]\r\n";
    for (std::size_t size = 0; size <= whole.size(); ++size) {
        EXPECT_EQ(Read(whole.substr(0, size)), LoadStatus::Loaded);
        EXPECT_TRUE(Host.Boxes.empty()) << size;
    }
}

TEST_F(DataReader, NeedsTheFile) {
    EXPECT_EQ(ReadDataFile(*State, Host, "/no such folder/x.zu", "ZU", false, Hooks.Hooks()),
              LoadStatus::Failed);
    ExpectBoxes({{"File could not be opened", "File Error(9):"}});
    EXPECT_EQ(ReadDataFile(*State, Host, "/no such folder/x.zu", "ZU", true, Hooks.Hooks()),
              LoadStatus::FailedSilently);
    EXPECT_EQ(Host.Boxes.size(), 1U);
    EXPECT_EQ(Hooks.Log, (std::vector<std::string>{"redraw", "redraw"}))
        << "the closing steps run on every path";
}

TEST_F(DataReader, DoesNotOpenFoldersAndDevices) {
    for (const char* path : {"/", "/dev/zero", "/dev/null"}) {
        EXPECT_EQ(ReadDataFile(*State, Host, path, "ZU", true, {}), LoadStatus::FailedSilently) << path;
    }
}

TEST_F(DataReader, ScansOnlyDataFiles) {
    EXPECT_EQ(Read("[Data D0 0 1]\nx", "INI"), LoadStatus::Loaded);
    EXPECT_EQ(Samples(0).substr(0, 1), ".");
    EXPECT_EQ(Read("1,2\n", "CSV"), LoadStatus::Loaded);
    EXPECT_EQ(Hooks.Log, (std::vector<std::string>{"redraw", "csv", "redraw"}));
}

TEST_F(DataReader, RunsItsClosingStepsInOrder) {
    Read("[Data bad]");
    EXPECT_EQ(Hooks.Log, (std::vector<std::string>{"redraw"}));
    Hooks.Log.clear();
    State->Serial.SerialMode = 1;
    Read("");
    EXPECT_EQ(Hooks.Log, (std::vector<std::string>{"redraw"})) << "no decoder for a closed window";
    Hooks.Log.clear();
    State->Windows.SerialStat = 1;
    State->StateList.ScreenWidth.fill(-1);
    Read("");
    EXPECT_EQ(Hooks.Log, (std::vector<std::string>{"decode", "redraw"}));
    EXPECT_EQ(State->StateList.ScreenWidth[0], 12) << "the serial group's column";
}

TEST_F(DataReader, NeverWritesWhereThereIsNoMemory) {
    State->Buffer.Free();
    test::SetLengths(*State, 1000000);
    Read("[Data D0 0 5]\nabcde[Data PG1 999999 1]\nx");
    ExpectBoxes({TooLong("0..5", 0)});
    auto small = StartState(16, 1);
    SetBufLenFull(small->Buffer.BufLen, 2, INT32_MAX);
    const TempFolder folder;
    const std::string path = test::WriteBytes(folder.File("x.zu"), "[Data D2 2147483646 1]\nq");
    EXPECT_EQ(ReadDataFile(*small, Host, path, "ZU", false, {}), LoadStatus::Loaded);
    EXPECT_EQ(Host.Boxes.back(), TooLong("2147483646..2147483647", 2));
}

TEST_F(DataReader, ReadsBuffersThatWindowsOfReadingCut) {
    auto state = StartState(17, 1);
    const std::string filler(65536 - 20, ' ');
    std::string payload(131072, '\0');
    for (std::size_t i = 0; i < payload.size(); ++i) payload[i] = static_cast<char>(i % 251);
    for (const std::size_t cut : {0U, 1U, 5U, 13U, 19U, 21U, 40U}) {
        std::fill_n(state->Buffer.Pod[1], payload.size(), std::uint8_t{0});
        const TempFolder folder;
        const std::string path =
            test::WriteBytes(folder.File("x.zu"), filler.substr(cut) + "\r\n[Data D1 0 131072]\r\n" +
                                                      payload + filler + "[Data D0 0 3]\nend");
        EXPECT_EQ(ReadDataFile(*state, Host, path, "ZU", false, {}), LoadStatus::Loaded);
        EXPECT_TRUE(
            std::equal(payload.begin(), payload.end(), reinterpret_cast<char*>(state->Buffer.Pod[1])));
        EXPECT_EQ(state->Buffer.Pod[0][2], 'd');
    }
    ExpectBoxes({});
}

TEST(HardwareTypeOfFile, PrefersTheKeyOverTheModelLine) {
    const TempFolder folder;
    const auto row = [&folder](const std::string& bytes) {
        return HardwareTypeOfFile(test::WriteBytes(folder.File("x.zu"), bytes));
    };
    EXPECT_EQ(row("[Hardware]\r\nType=13\r\n[Model Dace_32 0 0]"), 13);
    EXPECT_EQ(row("[File]\r\n[Comment x]\r\n[Model Dace_32 0 0]"), 16);
    EXPECT_EQ(row("[Hardware]\r\nType=99\r\n[Model Dace_128 0 0]\r\n"), 17);
    EXPECT_EQ(row("[Hardware]\r\nType=27\r\n"), 27);
    EXPECT_EQ(row("[Hardware]\r\nType=0\r\n"), 0);
    EXPECT_EQ(row("[Model Unheard-of 0 0]"), std::nullopt);
    EXPECT_EQ(row("[Model]\r\n[Model Dace_32 0 0]"), std::nullopt);
    EXPECT_EQ(row("[Data D0 0 1]\r\n[Model Dace_32 0 0]"), std::nullopt);
    EXPECT_EQ(row("[Settings]\r\n[Model Dace_32 0 0]"), std::nullopt);
    EXPECT_EQ(row("[Model Dace_32"), std::nullopt);
    EXPECT_EQ(row(""), std::nullopt);
    EXPECT_EQ(HardwareTypeOfFile(folder.File("none.zu")), std::nullopt);
}

}  // namespace
}  // namespace zu
