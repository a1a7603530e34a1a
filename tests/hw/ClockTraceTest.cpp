#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include "TraceBench.h"
#include "hw/Clock.h"
#include "hw/Qualifier.h"
#include "hw/SerialBus.h"

namespace zu::test {
namespace {

struct RateSetting {
    std::uint32_t Word = 0;
    int Counter0 = 0;
    int Counter1 = 0;
};

/// By rate code: the setting of modes 0 to 2 and that of mode 3. Codes that are not listed are all zero.
std::map<int, std::array<RateSetting, 2>> ReadRates() {
    std::map<int, std::array<RateSetting, 2>> rates;
    std::ifstream file(std::string(ZU_TEST_DATA) + "/hw/clock_words.txt");
    std::string line;
    while (std::getline(file, line)) {
        if (line.empty() || line[0] == '#') continue;
        std::array<RateSetting, 2> settings;
        std::istringstream columns(line.substr(line.find('|')));
        for (RateSetting& s : settings) {
            char bar = 0;
            columns >> bar >> std::hex >> s.Word >> std::dec >> s.Counter0 >> s.Counter1;
        }
        std::istringstream codes(line.substr(0, line.find('|')));
        for (int code = 0; codes >> code;) rates[code] = settings;
    }
    return rates;
}

void SerialTimer(Script& s, int value) {
    const std::pair<int, std::array<int, 3>> steps[] = {
        {0xB6, {0xFF, 0xBF, 0xFF}}, {value % 256, {0xEF, 0xAF, 0xEF}}, {value / 256, {0xEF, 0xAF, 0xEF}}};
    for (const auto& [data, controls] : steps) {
        s.ShiftByte(0, data);
        s.Do(0, "S4-20 R4 S4|20 R4 S4-20 R4");
        for (const int control : controls) {
            s.ShiftByte(0, control);
            s.Do(0, "S2-01 R2 S2|01 R2 S2-01 R2");
        }
    }
}

void Qualifier(Script& s, int edge, const std::vector<std::string>& words) {
    s.Do(0, "S8|04 W8");
    const int held = Hold(s);
    s.Do(0, "W9|f8 R1|04");
    const int plain = s.S(4, 0) & 0xFA;
    const auto strobe = [&](int address, int c, int a) {
        s.Write(14, 0, address);
        s.Read(0, 0);
        s.Write(4, 0, c);
        s.Write(4, 0, a);
        s.Write(4, 0, c);
    };
    s.Write(4, 0, (plain | 0x0B) & 0xF7);
    for (int a = 0; a < 256; ++a) strobe(a, (plain | 0x0B) & 0xF7, (plain | 0x0A) & 0xF7);
    s.Write(4, 0, plain | 0x0F);
    for (const std::string& word : words) {
        int value = 0;
        int mask = 0xFF;
        for (int i = 0; i < 8; ++i) {
            const char c = i < static_cast<int>(word.size()) ? word[static_cast<std::size_t>(i)] : 'X';
            if (c == '1') value += 128 >> i;
            if (c != '0' && c != '1') mask -= 128 >> i;
        }
        if (mask == 0) continue;
        for (int a = 0; a < 256; ++a) {
            const bool equal = (a & mask) == value;
            if ((equal && edge == 0) || (!equal && edge == 1)) strobe(a, plain | 0x0B, plain | 0x0A);
        }
        s.Write(4, 0, plain | 0x0F);
    }
    s.Do(0, "W9 R4 S1-04 R1 S8-04 W8");
    Selector(s, held);
}

struct ClockCase {
    int Rate = 5;
    int Mode = 0;
    int ClockType = 0;
    int Edge = 0;
    std::vector<std::string> Words;
};

void InternalSelector(Script& s, const ClockCase& c) {
    if (c.Rate >= 1 && c.Rate <= 8) Selector(s, 1);
    const bool listed = (c.Rate >= 9 && c.Rate <= 12) || c.Rate == 14 || c.Rate == 16 || c.Rate == 18 ||
                        c.Rate == 20 || (c.Rate >= 22 && c.Rate <= 27);
    if (listed) Selector(s, 3);
    if (c.Rate >= 28 && c.Rate <= 34) Selector(s, 5);
    if (c.Mode == 3 && c.Rate == 27) Selector(s, 5);
}

void ClockSource(Script& s, const ClockCase& c, std::uint32_t word) {
    if (c.ClockType == 0) InternalSelector(s, c);
    if (c.ClockType == 1) Selector(s, 0);
    if (c.ClockType == 2) Selector(s, 2);
    if (c.ClockType == 3 || c.ClockType == 4 || c.ClockType == 6) {
        Qualifier(s, c.Edge, c.Words);
        Selector(s, c.ClockType == 3 ? 6 : 4);
        s.Do(0, "S4-01");
    }
    if (c.ClockType == 5) {
        s.Do(0, "S6-04 R6");
        s.Bits(0, word, 22, true, "S4|08 R4", "S4-08 R4", "S8-02 W8 S8|02 W8");
    }
    if (c.ClockType == 7) Selector(s, 7);
    if (c.ClockType == 4) s.Do(0, "S3|02 S2-24 R3 R2");
    if (c.ClockType == 5) s.Do(0, "S3|02 S2|20 R3 R2");
    if (c.ClockType == 6) s.Do(0, "S3-02 S2|20 R3 R2");
}

void ClockUpToTheQuestion(Script& s, const ClockCase& c, const RateSetting& setting) {
    const bool later = s.Type >= 6 && s.Type <= 15;
    for (int b = 0; b < 4; ++b) s.Do(b, "S3|01 R3");
    s.Bits(0, 0x14EF08, 22, true, "S4|08 R4", "S4-08 R4", "S8|02 W8 S8-02 W8");
    s.Do(0, "R11=36");
    s.Write(8, 0, setting.Counter0 % 256);
    s.Write(8, 0, setting.Counter0 / 256);
    const bool slow = c.Rate >= 28 && c.Rate <= 34;
    if ((c.Mode == 3 && c.Rate == 27) || (slow && later)) {
        s.Do(0, "R11=76");
        s.Write(9, 0, setting.Counter1 % 256);
        s.Write(9, 0, setting.Counter1 / 256);
    } else if (slow) {
        SerialTimer(s, setting.Counter1);
    }
    if (later) s.Do(0, c.Rate < 9 && c.ClockType == 0 ? "S10|10" : "S10-10");
    s.Do(0, "S11-03 WX S6-04 R6");
    s.Bits(0, setting.Word, 22, true, "S4|08 R4", "S4-08 R4", "S6|04 R6 S6-04 R6");
    s.Do(0, "! S4|01");
}

RateSetting SettingOf(const ClockCase& c) {
    static const auto rates = ReadRates();
    const auto found = rates.find(c.Rate);
    if (c.ClockType != 0 || found == rates.end()) return {};
    return found->second[c.Mode == 3 ? 1 : 0];
}

void ExpectClock(Script& s, const ClockCase& c) {
    const RateSetting setting = SettingOf(c);
    ClockUpToTheQuestion(s, c, setting);
    ClockSource(s, c, setting.Word);
    s.Do(0, "R4");
}

void Program(TraceBench& bench, const ClockCase& c) {
    bench.State.Clock.ClockRate = static_cast<std::uint8_t>(c.Rate);
    bench.State.Clock.ClockType = static_cast<std::uint8_t>(c.ClockType);
    bench.State.Clock.ClockEdge = static_cast<std::uint8_t>(c.Edge);
    bench.State.Memory.HardwareMode = static_cast<std::int8_t>(c.Mode);
    for (std::size_t i = 0; i < c.Words.size(); ++i) bench.State.Clock.ClockExt[i].Assign(c.Words[i]);
}

void CheckClock(int type, bool direct, const ClockCase& c) {
    SCOPED_TRACE(testing::Message() << "type " << type << " direct " << direct << " rate " << c.Rate
                                    << " mode " << c.Mode << " clock " << c.ClockType << " edge " << c.Edge);
    TraceBench bench(type, direct, static_cast<unsigned>(c.Rate * 7 + c.Mode));
    Program(bench, c);
    ExpectClock(bench.Expected, c);
    EXPECT_TRUE(SetClock(bench.Hardware, bench.State));
    bench.Compare();
}

constexpr int kTypes[] = {1, 3, 5, 11, 13, 15};

TEST(ClockTrace, TableIsComplete) {
    const auto rates = ReadRates();
    EXPECT_EQ(rates.size(), 29U);
    for (const int code : {13, 15, 17, 19, 21}) EXPECT_EQ(rates.count(code), 0U);
    EXPECT_EQ(rates.at(28)[1].Counter1, 4);
    EXPECT_EQ(rates.at(5)[1].Word, 0x08B408U);
}

class ClockByType : public testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(Types, ClockByType, testing::ValuesIn(kTypes));

TEST_P(ClockByType, EveryRateInEveryMode) {
    for (int rate = 0; rate <= 36 && !HasFailure(); ++rate) {
        for (int mode = 0; mode < 4; ++mode) {
            for (const bool direct : {false, true}) CheckClock(GetParam(), direct, {rate, mode, 0, 0, {}});
        }
    }
    CheckClock(GetParam(), false, {255, 0, 0, 0, {}});
}

TEST_P(ClockByType, EveryClockType) {
    const std::vector<std::string> words{"1XXXXXXX", "01010101", "XXXXXXXX", "", "xx0xx1xx", "00000000"};
    for (int clockType = 1; clockType <= 15 && !HasFailure(); ++clockType) {
        for (const int rate : {5, 8, 9, 13, 27, 28, 34}) {
            for (const int mode : {0, 1, 3}) {
                CheckClock(GetParam(), rate % 2 == 0, {rate, mode, clockType, rate % 2, words});
            }
        }
    }
}

TEST(ClockTrace, OtherModesProgramAsModeZero) {
    for (const int mode : {4, 7, -1}) CheckClock(15, false, {27, mode, 0, 0, {}});
}

TEST(ClockTrace, Mode3Rate27SelectsThreeThenFive) {
    for (const int type : {5, 15}) {
        TraceBench bench(type, true);
        Program(bench, {27, 3, 0, 0, {}});
        SetClock(bench.Hardware, bench.State);
        EXPECT_NE(bench.Ops.Text.find("W 023f 76\nW 023d 02\nW 023d 00\n"), std::string::npos)
            << "counter 1 is written on both families";
        EXPECT_EQ(bench.Hardware.Shadows.At(8, 0) >> 5, 5);
    }
}

TEST(ClockTrace, RateAboveTheTableLeavesTheSelector) {
    TraceBench bench(15, true);
    Program(bench, {35, 0, 0, 0, {}});
    const int before = bench.Hardware.Shadows.At(8, 0) >> 5;
    SetClock(bench.Hardware, bench.State);
    EXPECT_EQ(bench.Hardware.Shadows.At(8, 0) >> 5, before);
    EXPECT_NE(bench.Ops.Text.find("W 023f 36\nW 023c 00\nW 023c 00\n"), std::string::npos);
}

TEST(ClockTrace, EmulationTouchesNothing) {
    for (const std::uint8_t emulated : {std::uint8_t{1}, std::uint8_t{2}}) {
        TraceBench bench(15, true);
        bench.State.Identity.Emulated = emulated;
        EXPECT_TRUE(SetClock(bench.Hardware, bench.State));
        bench.Compare();
    }
}

TEST(ClockTrace, PortsAreThoseOfTheUsedBase) {
    // The first argument of every operation is the state's parallel port.
    struct BaseOps : RecordingOps {
        std::set<int> Bases;
        void RegWrite(std::uint16_t base, std::uint16_t, std::uint8_t) override { Bases.insert(base); }
    } ops;
    TraceBench bench(15, true);
    bench.Hardware.Ops = &ops;
    bench.State.Identity.HwPort = 0x278;
    SetClock(bench.Hardware, bench.State);
    EXPECT_EQ(ops.Bases, std::set<int>{0x278});
}

// ---- the pattern question ----

struct QuestionCase {
    int OutputMode;
    int Latch;
    int PodMode;
    bool Asked;
};

TEST(ClockQuestion, StandsOnceForPatternsThatGoOutOnce) {
    const QuestionCase cases[] = {{0, 1, 1, true},  {0, 1, 2, true},  {0, 0, 1, false}, {1, 1, 1, false},
                                  {2, 1, 1, false}, {0, 1, 0, false}, {0, 1, 3, false}};
    for (const QuestionCase& c : cases) {
        for (const bool goesOn : {true, false}) {
            SCOPED_TRACE(testing::Message() << c.OutputMode << c.Latch << c.PodMode << goesOn);
            TraceBench bench(15, true);
            const ClockCase clock{5, 0, 0, 0, {}};
            Program(bench, clock);
            bench.State.Pattern.PatternOutputMode = static_cast<std::int8_t>(c.OutputMode);
            bench.State.Pods.HardwarePod[19] = static_cast<std::int8_t>(c.PodMode);
            bench.Hardware.FirstRun = static_cast<std::uint8_t>(c.Latch);
            bench.Host.Answers = {goesOn};
            const bool stopped = c.Asked && !goesOn;
            if (stopped) {
                ClockUpToTheQuestion(bench.Expected, clock, SettingOf(clock));
            } else {
                ExpectClock(bench.Expected, clock);
            }
            EXPECT_EQ(SetClock(bench.Hardware, bench.State), !stopped);
            bench.Compare();
            ASSERT_EQ(bench.Host.Boxes.size(), c.Asked ? 1U : 0U);
            if (!c.Asked) continue;
            EXPECT_EQ(bench.Host.Boxes[0].Text, "Click Yes to output data once or cancel to stop.");
            EXPECT_EQ(bench.Host.Boxes[0].Caption, "NRZ Pattern Generator");
            EXPECT_EQ(bench.Hardware.FirstRun, 0) << "the latch clears either way";
        }
    }
}

TEST(ClockQuestion, PodsThatTheModelLacksDoNotCount) {
    TraceBench bench(11, true);
    bench.State.Shape.PodCount = 5;
    bench.State.Pattern.PatternOutputMode = 0;
    bench.State.Pods.HardwarePod[5] = 1;
    bench.Hardware.FirstRun = 1;
    SetClock(bench.Hardware, bench.State);
    EXPECT_TRUE(bench.Host.Boxes.empty());
}

// ---- parts of the clock ----

TEST(ClockParts, HoldAndSelect) {
    for (const int type : {1, 5, 6, 10, 11, 15, 16}) {
        for (int selector = 0; selector < 8; ++selector) {
            TraceBench bench(type, false, static_cast<unsigned>(type + 31 * selector));
            Registers registers(bench.Hardware, 0, static_cast<std::uint8_t>(type));
            const int held = Hold(bench.Expected);
            EXPECT_EQ(registers.ClockHold(), held);
            Selector(bench.Expected, selector);
            registers.ClockSelect(selector);
            bench.Compare();
        }
    }
}

TEST(ClockParts, LoadClockWordLeavesTheShadows) {
    for (const int type : {3, 13}) {
        for (const bool direct : {false, true}) {
            for (int column = 0; column < 4; ++column) {
                TraceBench bench(type, direct, 5);
                Script& s = bench.Expected;
                s.PodPair(0, s.S(10, 0), s.S(11, 0) & 0xFC);
                const int r4 = 0x51;
                const int s2 = 0x86;
                for (int i = 0; i < 22; ++i) {
                    s.Write(4, column, (0x2D7C08 >> i & 1) != 0 ? r4 | 8 : r4 & 0xF7);
                    for (const int clock : {s.S(8, column) & 0xFD, s.S(8, column) | 2}) {
                        s.Write(0, column, clock);
                        s.Write(2, column, s2 & 0xFD);
                        s.Write(2, column, s2 | 2);
                    }
                }
                Registers registers(bench.Hardware, 0, static_cast<std::uint8_t>(type));
                LoadClockWord(registers, column, r4, s2, 0x2D7C08);
                bench.Compare();
            }
        }
    }
}

TEST(ClockParts, SerialCounterEndsItsPulsesLow) {
    for (const int value : {0, 2, 200, 0x1234, 0xFFFF}) {
        TraceBench bench(3, false, 9);
        Registers registers(bench.Hardware, 0, 3);
        SerialTimer(bench.Expected, value);
        SerialCounter(registers, static_cast<std::uint16_t>(value));
        bench.Compare();
        EXPECT_EQ(bench.Hardware.Shadows.At(4, 0) & 0x20, 0);
        EXPECT_EQ(bench.Hardware.Shadows.At(2, 0) & 0x01, 0);
    }
}

TEST(ControlBytes, EveryWayOut) {
    for (int type = 0; type <= 17; ++type) {
        for (const bool direct : {false, true}) {
            for (int board = 0; board < 4; ++board) {
                TraceBench bench(type, direct, static_cast<unsigned>(type));
                Registers registers(bench.Hardware, 0, static_cast<std::uint8_t>(type));
                bench.Expected.Control8(board, 0x9A);
                registers.WriteS8(board, 0x9A);
                bench.Expected.Control9(board, 0x65);
                registers.WriteS9(board, 0x65);
                bench.Expected.PodPair(board, 0xA5, 0x3C);
                registers.WriteS10S11(board, 0xA5, 0x3C);
                bench.Compare();
            }
        }
    }
}

TEST(ControlBytes, PodRegistersByPortNumber) {
    TraceBench bench(15, true);
    Registers registers(bench.Hardware, 0, 15);
    for (int board = 0; board < 5; ++board) registers.WriteS10S11(board, 0x10 + board, 0x20 + board);
    EXPECT_EQ(bench.Ops.Text,
              "W 00e1 10\nW 00e0 20\nW 00d1 11\nW 00d0 21\nW 00c1 12\nW 00c0 22\nW 00b1 13\nW 00b0 23\n")
        << "one past the last board has no pair";
}

TEST(ControlBytes, SerialWayNeverSetsBit4OfR6Back) {
    TraceBench bench(15, false);
    bench.Hardware.Shadows.At(6, 0) = 0x10;
    Registers(bench.Hardware, 0, 15).WriteS10S11(0, 0, 0);
    EXPECT_EQ(bench.Hardware.Shadows.At(6, 0), 0x85);
}

// ---- the qualifier table ----

TEST(QualifierTrace, WordsAndEdges) {
    const std::vector<std::vector<std::string>> tables{
        {},
        {"XXXXXXXX", "xxxxxxxx", "", "QQQQQQQQ"},
        {"1XXXXXXX"},
        {"00000000", "11111111"},
        {"0110X10X", "1", "X1", "10101010Z"},
    };
    for (const int type : {3, 15}) {
        for (const auto& words : tables) {
            for (const int edge : {0, 1, 2}) {
                TraceBench bench(type, true, static_cast<unsigned>(edge + 3));
                Qualifier(bench.Expected, edge, words);
                std::vector<Text<kQualifierText>> texts;
                for (const std::string& word : words) texts.emplace_back(word);
                Registers registers(bench.Hardware, 0, static_cast<std::uint8_t>(type));
                LoadQualifier(registers, static_cast<std::uint8_t>(edge), texts);
                bench.Compare();
            }
        }
    }
}

TEST(QualifierTrace, ARecordOfAllXIsSkipped) {
    TraceBench some(15, true);
    TraceBench none(15, true);
    const std::array<Text<kQualifierText>, 2> words{Text<kQualifierText>("XXXXXXXX"),
                                                    Text<kQualifierText>("XXXXXXXXX")};
    Registers a(some.Hardware, 0, 15);
    LoadQualifier(a, 0, words);
    Registers b(none.Hardware, 0, 15);
    LoadQualifier(b, 0, {});
    EXPECT_EQ(some.Ops.Text, none.Ops.Text);
}

}  // namespace
}  // namespace zu::test
