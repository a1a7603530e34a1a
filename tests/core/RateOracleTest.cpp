// Every row with every rate, clock, memory mode and multiplexing, against rules written down a second time:
// one plain function a row family, all lengths spelled out, nothing shared with the tables of the program.
#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <vector>

#include "core/RateRules.h"
#include "support/Bench.h"

namespace zu {
namespace {

using test::Bench;

const char* const kRateLost =
    "ERROR:|Current memory mode is not available with this sample rate. Memory mode has been reset.";
const char* const kClockLost =
    "ERROR:|Current memory mode is not available with an external clock. Memory mode has been reset.";
const char* const kPatternLost =
    "ERROR:|This mode is not availalbe with the Pattern Generator. Memory mode has been reset.";
const char* const kNeedsInternal =
    "ERROR:|This mode is only available with and internal clock <= 250MHz. Memory mode has been reset.";
const char* const kTooFast =
    "ERROR:|Max sample rate when in pattern generator mode is 100 MHz. Rate has been set to 100MHz";
const char* const kPatternMemory =
    "ERROR:|Current memory mode is not available in pattern generator mode. Memory mode has been reset.";

/// What the rules speak of, and nothing else.
struct Slow {
    int row = 0, type = 0, rate = 5, mode = 0, mux = 0;
    bool pattern = false;  ///< a pod generates
    long length = 0, shown = 0;
    std::vector<long> buffers;
    std::vector<std::string> boxes;

    bool Is(std::initializer_list<int> rows) const {
        return std::find(rows.begin(), rows.end(), row) != rows.end();
    }
    void Reset(const char* box, int newMode) {
        boxes.push_back(box);
        mode = newMode;
    }
    bool Central() const { return Is({0, 13, 14, 15}); }

    void Fill(long factor, std::vector<long> block) {
        shown = length * factor;
        for (std::size_t i = 0; i < buffers.size(); ++i) buffers[i] = length * block[i % block.size()];
    }

    void LayCentral(int given) {
        mux = given;
        if (given == -1 && type != 0) mux = 0;
        if (given == -1 && type == 0 && rate >= 3) mux = 0;
        if (given == -1 && type == 0 && rate == 1) mux = 1;
        if (pattern && mode == 3) Reset(kPatternLost, 1);
        if (pattern && mode == 2) Reset(kPatternLost, 0);
        if (type != 0 && mode == 3) Reset(kNeedsInternal, 1);
        if (type != 0 && mode == 2) Reset(kNeedsInternal, 0);
        const bool top = type == 0 && rate == 1;
        const bool open = type == 0 && (rate == 0 || rate == 2);
        if (!open && mode == 0) length = top ? 32768 : 8192;
        if (!open && mode == 1) length = top ? 524288 : 131072;
        if (!open && mode == 2) length = top ? 65536 : 16384;
        if (!open && mode == 3) length = top ? 524288 : 262144;
        if (mux == 0) Fill(1, {1});
        if (mux == 1 || mux == 2) Fill(4, {1, 0, 1, 0, 1});
    }

    void LayEarly(int given) {
        mux = given;
        if (given == -1) {
            const bool slow = rate >= 5 || type == 3;
            if (slow) mux = 0;
            if (!slow && Is({1, 2, 6, 7}) && rate == 4) mux = 1;
            if (!slow && !Is({1, 2, 6, 7}) && rate == 3) mux = 1;
            if (!slow && !Is({1, 2, 6, 7}) && rate == 1) mux = 2;
        }
        length = Is({1, 2, 6, 7, 11, 12}) ? 32768 : 131072;
        if (mode == 0) length = 8192;
        if (mux == 0) Fill(1, {1});
        if (mux == 1) Fill(2, {2, 2, 0, 0, 2});
        if (mux == 2) Fill(4, {4, 0, 0, 0, 4});
    }

    void LayDace(int given) {
        mux = given == -1 ? 0 : given;
        length = mode == 0 ? 2048 : 131072;
        if (mux >= 0 && mux <= 2) Fill(1, {1});
    }

    void LayTench512(int given) {
        mux = given;
        if (given == -1) {
            if (mode == 0 || mode == 1) mux = 0;
            if (mode == 4 || mode == 5 || mode == 6 || mode == 7) mux = 1;
            if (type == 0 && rate == 1) {
                mux = 1;
                if (mode == 0) mode = 4;
                if (mode == 1) mode = 5;
            }
        }
        length = mode == 0 ? 8192 : 524288;
        if (mux == 0) Fill(1, {1});
        if (mux == 1 || mux == 2) Fill(1, {1, 1, 0, 0});
    }

    void LayTench1024(int given) {
        mux = given;
        if (given == -1) {
            if (mode == 0 || mode == 1) mux = 0;
            if (mode == 4 || mode == 5) mux = 1;
            if (mode == 6 || mode == 7) mux = 2;
            if (type == 0 && rate == 0) {
                mux = 2;
                if (mode == 0 || mode == 4) mode = 6;
                if (mode == 1 || mode == 5) mode = 7;
            }
            if (type == 0 && rate == 1 && mux == 0) {
                mux = 1;
                mode = mode == 0 ? 4 : 5;
            }
        }
        const std::map<int, long> lengths{{0, 8192},    {1, 1048576}, {4, 16384},
                                          {5, 2097152}, {6, 32768},   {7, 4194304}};
        if (lengths.count(mode) != 0) length = lengths.at(mode);
        if (mux == 0) Fill(1, {1});
        if (mux == 1) Fill(1, {1, 1, 0, 0});
        if (mux == 2) Fill(1, {1, 0, 0, 0});
    }

    void LayPerch(int given) {
        if (row == 27) {
            mux = given;
            if (given == -1 && (mode == 0 || mode == 4 || mode == 6 || mode == 8 || mode == 10)) mux = 0;
            if (given == -1 && (mode == 1 || mode == 5 || mode == 7 || mode == 9 || mode == 11)) mux = 1;
            if (given == -1 && type == 0 && rate == 2) mux = 1;
            if (mux == 1 && (mode == 0 || mode == 4 || mode == 6 || mode == 8 || mode == 10)) ++mode;
        } else {
            if (rate < 4) rate = 4;
            mux = 0;
            if (mode == 1) mode = 0;
            if (mode == 5 || mode == 6 || mode == 7 || mode == 10 || mode == 11) mode = 4;
            if (mode == 9) mode = 8;
        }
        const std::map<int, long> lengths{{0, 4096},    {1, 8192},  {4, 262144}, {5, 524288},  {6, 1048576},
                                          {7, 2097152}, {8, 65536}, {9, 131072}, {10, 524288}, {11, 1048576}};
        if (lengths.count(mode) != 0) length = lengths.at(mode);
        if (mux == 0) Fill(1, {1});
        if (mux == 1) Fill(1, {0, 1, 1, 0});
        if (mux == 2) Fill(1, {1, 0, 0, 0});
    }

    void SetMode(int given, int newMode) {
        mode = newMode;
        if (Central()) LayCentral(given);
        if (row >= 1 && row <= 12) LayEarly(given);
        if (row == 16 || row == 17) LayDace(given);
        if (row == 18 || row == 20) LayTench512(given);
        if (row == 19) LayTench1024(given);
        if (row >= 25) LayPerch(given);
    }

    /// The deep modes of rows 13 to 15 do not outlive the top rate.
    void CrossTopRate(int given) {
        if (mode == 3) {
            boxes.push_back(kRateLost);
            SetMode(given, 1);
        } else if (mode == 2) {
            boxes.push_back(kRateLost);
            SetMode(given, 0);
        } else {
            SetMode(given, mode);
        }
    }

    void ChangeRate(int code) {
        const int old = rate;
        rate = code;
        if (Is({0, 3, 4, 5, 8, 9, 10})) {
            if (code == 3) return SetMode(1, mode);
            if (code == 1) return SetMode(2, mode);
            if (old == 3 || old == 1) SetMode(0, mode);
        } else if (Is({1, 2, 6, 7, 11, 12})) {
            if (code == 4) return SetMode(1, mode);
            if (old == 4) SetMode(0, mode);
        } else if (Is({13, 14, 15})) {
            if (type != 0) return SetMode(-1, mode);
            if (code == 1) return CrossTopRate(1);
            if (old == 1) return CrossTopRate(0);
            if (code >= 3) SetMode(-1, mode);
        } else if (row == 19 && code == 0) {
            if (mode == 0 || mode == 4) return SetMode(-1, 6);
            if (mode == 1 || mode == 5) return SetMode(-1, 7);
        } else if (Is({18, 19}) && code == 1) {
            if (mode == 0) return SetMode(-1, 4);
            if (mode == 1) return SetMode(-1, 5);
        } else if (row == 27 && code == 2) {
            SetMode(1, mode);
        }
    }

    void ChooseRate(int code) {
        if (pattern && (code == 0 || code == 1 || code == 3 || code == 4)) {
            boxes.push_back(kTooFast);
            code = 5;
        }
        if (pattern && mode == 3) Reset(kPatternMemory, 1);
        type = 0;
        ChangeRate(code);
        rate = code;
    }

    void ChooseExternal(int newType) {
        ChangeRate(rate);
        type = newType;
        if (mode == 3) Reset(kClockLost, 1);
        SetMode(-1, mode);
    }

    void ChooseInternal() {
        ChangeRate(rate);
        type = 0;
        SetMode(-1, mode);
    }

    [[nodiscard]] std::string Text() const {
        std::ostringstream text;
        text << "type " << type << " rate " << rate << " mode " << mode << " mux " << mux << " length "
             << length << " shown " << shown << " buffers";
        for (const long buffer : buffers) text << ' ' << buffer;
        for (const std::string& box : boxes) text << "\n  " << box;
        return text.str();
    }
};

/// The program and the second set of rules side by side on one row.
class Pair {
  public:
    explicit Pair(int row) {
        bench_.UseRow(row >= 20 && row <= 23 ? 18 : row);  // a row without a shape keeps the one before
        if (row >= 20 && row <= 23) ChangeModel(*bench_.State, row);
        memory_ = bench_.State->Memory;
        lengths_ = bench_.State->Buffer.BufLen;
        slow_.row = row;
    }

    /// Puts both back to the plain memory of the row, then into the setting.
    void Begin(int type, int rate, int mode, bool pattern) {
        InstrumentState& state = *bench_.State;
        state.Memory = memory_;
        state.Buffer.BufLen = lengths_;
        state.Clock = ClockRecord{};
        state.Clock.ClockType = static_cast<std::uint8_t>(type);
        state.Clock.ClockRate = static_cast<std::uint8_t>(rate);
        state.Memory.HardwareMode = static_cast<std::int8_t>(mode);
        state.Pods.HardwarePod[2] = pattern ? 2 : 0;
        bench_.Forget();
        const int row = slow_.row;
        slow_ = Slow{row, type, rate, mode, 0, pattern, memory_.BufferLen, memory_.DisplayLen, {}, {}};
        slow_.buffers.assign(lengths_.begin(), lengths_.begin() + state.Shape.BufCount);
        std::ostringstream text;
        text << "row " << row << " from type " << type << " rate " << rate << " mode " << mode
             << (pattern ? " with a pattern pod" : "");
        from_ = text.str();
    }

    void Rate(int code) {
        SetRate(bench_.App, code);
        slow_.ChooseRate(code);
        Compare("rate " + std::to_string(code));
    }
    void External(int type) {
        SetClockType(bench_.App, type);
        slow_.ChooseExternal(type);
        Compare("external " + std::to_string(type));
    }
    void Internal() {
        SetInternalClock(bench_.App);
        slow_.ChooseInternal();
        Compare("internal");
    }
    void Memory(int mux, int mode) {
        SetMemoryMode(bench_.App, mux, mode);
        slow_.SetMode(mux, mode);
        Compare("mux " + std::to_string(mux) + " mode " + std::to_string(mode));
    }
    [[nodiscard]] bool Agrees() const { return agrees_; }

  private:
    void Compare(const std::string& what) {
        const InstrumentState& state = *bench_.State;
        Slow seen;
        seen.type = state.Clock.ClockType;
        seen.rate = state.Clock.ClockRate;
        seen.mode = state.Memory.HardwareMode;
        seen.mux = state.Memory.HardwareMux;
        seen.length = state.Memory.BufferLen;
        seen.shown = state.Memory.DisplayLen;
        seen.buffers.assign(state.Buffer.BufLen.begin(), state.Buffer.BufLen.begin() + state.Shape.BufCount);
        seen.boxes = bench_.Texts();
        const bool same = seen.type == slow_.type && seen.rate == slow_.rate && seen.mode == slow_.mode &&
                          seen.mux == slow_.mux && seen.length == slow_.length && seen.shown == slow_.shown &&
                          seen.buffers == slow_.buffers && seen.boxes == slow_.boxes;
        if (same) return;
        agrees_ = false;
        ADD_FAILURE() << from_ << ", " << what << "\nprogram: " << seen.Text()
                      << "\nrules:   " << slow_.Text();
    }

    Bench bench_;
    MemoryRecord memory_;
    BufferLengths lengths_{};
    Slow slow_;
    std::string from_;
    bool agrees_ = true;
};

constexpr int kClockTypes[] = {0, 1, 2, 3, 5, 9, 14};

class EveryRow : public testing::TestWithParam<int> {};

TEST_P(EveryRow, ObeysTheRulesFromRateToRate) {
    Pair pair(GetParam());
    for (const bool pattern : {false, true}) {
        for (int mode = 0; mode < 12 && pair.Agrees(); ++mode) {
            for (int from = 0; from < kRateCodes; ++from) {
                for (int to = 0; to < kRateCodes; ++to) {
                    if (from > 6 && to > 6 && from != to) continue;  // no rule tells the slow codes apart
                    pair.Begin(0, from, mode, pattern);
                    pair.Rate(to);
                }
            }
        }
    }
}

TEST_P(EveryRow, ObeysTheRulesFromClockToClock) {
    Pair pair(GetParam());
    for (const bool pattern : {false, true}) {
        for (int mode = 0; mode < 12 && pair.Agrees(); ++mode) {
            for (const int type : kClockTypes) {
                for (const int rate : {0, 1, 2, 3, 4, 5, 6, 34}) {
                    pair.Begin(type, rate, mode, pattern);
                    pair.Internal();
                    for (const int to : kClockTypes) {
                        if (to == 0) continue;
                        pair.Begin(type, rate, mode, pattern);
                        pair.External(to);
                        pair.Rate(3);
                    }
                }
            }
        }
    }
}

TEST_P(EveryRow, LaysOutEveryMemoryMode) {
    Pair pair(GetParam());
    for (const bool pattern : {false, true}) {
        for (const int type : kClockTypes) {
            for (int rate = 0; rate < kRateCodes && pair.Agrees(); ++rate) {
                for (int mode = 0; mode < 12; ++mode) {
                    for (const int mux : {-1, 0, 1, 2}) {
                        pair.Begin(type, rate, 0, pattern);
                        pair.Memory(mux, mode);
                    }
                }
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All, EveryRow, testing::Range(0, 28));

}  // namespace
}  // namespace zu
