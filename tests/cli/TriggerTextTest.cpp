// What --trigger makes of its texts.
#include <gtest/gtest.h>
#include <memory>

#include "cli/TriggerText.h"
#include "state/Model.h"
#include "trigger/TrigCells.h"

namespace zu {
namespace {

using Texts = std::vector<std::string>;

struct TriggerTextTest : testing::Test {
    TriggerTextTest() {
        ChangeModel(*State, 12);
        State->Channels.ChannelName[8] = "CLK 5M";
        State->Channels.ChannelName[9] = "DATA";
        State->Channels.ChannelName[20] = "TWICE";
        State->Channels.ChannelName[21] = "TWICE";
        State->Groups[3].Name = "BUS";
        State->Groups[3].Size = 3;
        State->Groups[3].Channels = {12, 11, 10};
        State->Groups[4].Name = "DATA";
        State->Groups[4].Size = 1;
    }
    std::string Apply(const Texts& levels) { return ApplyTriggerTexts(*State, levels).value_or(""); }
    /// Cells of channels `last` down to `first`.
    std::string Cells(int last, int first, int word = 0) {
        std::string cells;
        for (int channel = last; channel >= first; --channel) cells += CharOfChannel(*State, channel, word);
        return cells;
    }

    std::unique_ptr<InstrumentState> State = std::make_unique<InstrumentState>();
};

TEST_F(TriggerTextTest, TakesValuesInThreeBases) {
    struct Row {
        const char* Text;
        const char* Cells;
    };
    for (const Row& row :
         {Row{"0-7=0x40", "01000000"}, Row{"0-7=64", "01000000"}, Row{"0-7=0b1000000", "01000000"},
          Row{"7-0=0x40", "01000000"}, Row{"0-7=0xX4", "XXXX0100"}, Row{"0-7=0b1X0x", "00001X0X"},
          Row{"0-7=X", "XXXXXXXX"}, Row{"0-7=0x0FF", "11111111"}, Row{"0-7=0", "00000000"},
          Row{" 0 - 7 = 0Xa5 ", "10100101"}, Row{"3=1", "XXXX1XXX"}, Row{"3=1,1=0", "XXXX1X0X"}}) {
        EXPECT_EQ(Apply({row.Text}), "") << row.Text;
        EXPECT_EQ(Cells(7, 0), row.Cells) << row.Text;
        EXPECT_EQ(Cells(79, 8), std::string(72, 'X')) << row.Text;
    }
}

TEST_F(TriggerTextTest, FindsChannelsAndGroupsByName) {
    EXPECT_EQ(Apply({"CLK 5M=1,DATA=0,BUS=0b110"}), "");
    EXPECT_EQ(Cells(9, 8), "01");
    EXPECT_EQ(Cells(12, 10), "011") << "the first channel of a group is its lowest bit";
}

TEST_F(TriggerTextTest, MakesALevelOfEachText) {
    EXPECT_EQ(Apply({"0=1", "40-47=0xFF", "79=0"}), "");
    EXPECT_EQ(State->Trigger.LevelCount, 3);
    for (std::size_t level = 0; level < 3; ++level) {
        EXPECT_EQ(State->Trigger.SeqList[level], static_cast<int>(level) + 1);
    }
    EXPECT_EQ(State->Trigger.SeqList[3], 0);
    EXPECT_EQ(Cells(47, 40, 1), "11111111");
    EXPECT_EQ(Cells(79, 79, 2), "0");
    EXPECT_EQ(Cells(79, 79, 1), "X");
}

TEST_F(TriggerTextTest, SetsEdgeMatchAndCount) {
    EXPECT_EQ(Apply({"0=1"}), "");
    EXPECT_EQ(State->Trigger.EdgeList16[0], 0);
    EXPECT_EQ(State->Trigger.TrigMatchMode[0], 1);
    EXPECT_EQ(State->Trigger.TrigCntMd, 3);
    EXPECT_EQ(Apply({"0=1,falling,any,count=255"}), "");
    EXPECT_EQ(State->Trigger.EdgeList16[0], 1);
    EXPECT_EQ(State->Trigger.TrigMatchMode[0], 0);
    EXPECT_EQ(State->Trigger.TrigCntMd, 2);
    EXPECT_EQ(State->Trigger.TrigCnt, 255);
    EXPECT_EQ(Apply({"0=1,lasts=5"}), "");
    EXPECT_EQ(State->Trigger.TrigCntMd, 0);
    EXPECT_EQ(State->Trigger.TrigCnt, 5);
    EXPECT_EQ(Apply({"0=1,within=7", "1=1,within=7,all,rising"}), "");
    EXPECT_EQ(State->Trigger.TrigCntMd, 1);
}

TEST_F(TriggerTextTest, SaysExactlyWhatIsWrongAndChangesNothing) {
    struct Row {
        Texts Levels;
        std::string Error;
    };
    const std::string none = "\"\"";
    const std::string unknown = "no channel or group is named ";
    const std::string kinds = ": channels are a number, a range as 0-7, or a name";
    const std::string terms =
        "\"foo\" is no term: CHANNELS=VALUE, rising, falling, all, any, count=N, lasts=N or within=N";
    for (const Row& row : {
             Row{{"foo"}, terms},
             Row{{""}, (none + terms.substr(5))},
             Row{{"0=1,"}, (none + terms.substr(5))},
             Row{{"foo=1"}, (unknown + "\"foo\"" + kinds)},
             Row{{"0..7=1"}, (unknown + "\"0..7\"" + kinds)},
             Row{{"=1"}, (unknown + "\"\"" + kinds)},
             Row{{"rising"}, "\"rising\" asks for no channel: CHANNELS=VALUE is missing"},
             Row{{"0=1", "count=5,any"}, "\"count=5,any\" asks for no channel: CHANNELS=VALUE is missing"},
             Row{{"TWICE=1"}, "2 channels are named \"TWICE\": name one by its number"},
             Row{{"80=1"}, "\"80\": the instrument has channels 0 to 79"},
             Row{{"70-80=1"}, "\"70-80\": the instrument has channels 0 to 79"},
             Row{{"0-2000000000=1"}, "\"0-2000000000\": the instrument has channels 0 to 79"},
             Row{{"0-7=0x1FF"}, "\"0x1FF\" takes 9 channels, there are 8"},
             Row{{"0-1=4"}, "\"4\" takes 3 channels, there are 2"},
             Row{{"0=0xG"}, "\"0xG\": \"G\" is no hex digit"},
             Row{{"0=0b2"}, "\"0b2\": \"2\" is no binary digit"},
             Row{{"0="}, "\"\" is no value: a number, 0x and hex digits, or 0b and binary digits"},
             Row{{"0=0x"}, "\"0x\" is no value: a number, 0x and hex digits, or 0b and binary digits"},
             Row{{"0=-1"}, "\"-1\" is no value: a number, 0x and hex digits, or 0b and binary digits"},
             Row{{"0=99999999999999999999"},
                 "\"99999999999999999999\" is no value: a number, 0x and hex digits, or 0b and binary "
                 "digits"},
             Row{{"0=1,0-3=2"}, "channel 0 is asked for twice in a level"},
             Row{{"0=1,count=0"}, "\"count=0\": a count is 1 to 255"},
             Row{{"0=1,count=256"}, "\"count=256\": a count is 1 to 255"},
             Row{{"0=1,lasts=x"}, "\"lasts=x\": a count is 1 to 255"},
             Row{{"0=1,rising", "1=1,falling"},
                 "\"falling\" contradicts \"rising\": it holds for the whole trigger"},
             Row{{"0=1,count=2,lasts=2"},
                 "\"lasts=2\" contradicts \"count=2\": it holds for the whole trigger"},
             Row{{"0=1", "1=X"}, "every level must ask for a channel, or none"},
             Row{Texts(17, "0=1"), "a trigger has at most 16 levels"},
         }) {
        State->Trigger.TrigCnt = 77;
        const auto words = State->Trigger.TrigWord.Board;
        EXPECT_EQ(Apply(row.Levels), row.Error);
        EXPECT_EQ(State->Trigger.TrigCnt, 77);
        EXPECT_EQ(State->Trigger.TrigWord.Board, words);
    }
}

TEST_F(TriggerTextTest, RefusesChannelsThatTakeNoSamples) {
    State->Clock.ClockRate = 1;  // lanes 1 and 3 of each board hold the samples of their neighbours
    EXPECT_EQ(Apply({"0-7=1,16=1,32=0,40=1,72=1"}), "");
    EXPECT_EQ(Apply({"8-15=X"}), "") << "nothing is asked for";
    for (const int channel : {8, 15, 24, 31, 48, 64}) {
        const std::string name = std::to_string(channel);
        EXPECT_EQ(Apply({name + "=1"}), "channel " + name + " takes no samples at this rate and memory mode");
    }
    State->Clock.ClockRate = 5;
    EXPECT_EQ(Apply({"8-15=1"}), "");
    State->Buffer.BufLen[1] = 0;
    EXPECT_EQ(Apply({"9=1"}), "channel 9 takes no samples at this rate and memory mode");
    State->Pods.HardwarePod[2] = 1;
    EXPECT_EQ(Apply({"23=1"}), "channel 23 is no input: its pod is set otherwise");
}

TEST_F(TriggerTextTest, BearsChannelsThatNoGroupShouldHold) {
    State->Groups[5].Name = "WILD";
    State->Groups[5].Size = 100000;
    State->Groups[5].Channels.fill(-5);
    State->Groups[5].Channels[0] = 1 << 30;
    EXPECT_EQ(Apply({"WILD=1"}), "\"WILD\": the instrument has channels 0 to 79");
}

}  // namespace
}  // namespace zu
