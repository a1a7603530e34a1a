#pragma once

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "TraceBench.h"
#include "trigger/CompiledTrigWords.h"

// Arming and read-out written a second time, as scripts of shadows and registers.

namespace zu::test {

inline std::size_t At(std::int64_t index) {
    return static_cast<std::size_t>(index);
}

/// A word that asks for nothing.
inline const std::string kAnyCells = "XXXXXXXX XXXXXXXX XXXXXXXX XXXXXXXX XXXXXXXX";

/// What an arming or a read-out is made from.
struct ArmCase {
    int Type = 15;
    bool Direct = true;
    int Boards = 4;
    int Mode = 0;
    int ClockType = 0;
    int Rate = 5;
    int OutputMode = 1;
    int CountMode = 3;
    int Count = 1;
    int Position = 10;
    int MatchMode = 1;
    int Edge = 1;
    int Reprogram = 0;
    int ComMode = 8;
    bool PatternsDirty = false;
    int Length = 16;  ///< samples of each pod
    std::array<int, 20> Pods{};
    std::vector<int> Sequence{1};
    std::array<std::array<std::string, 4>, 16> Words{};  ///< [word][board], empty: asks for nothing

    /// Board 0 and the last board of word `w` get a text.
    ArmCase& Word(int w, int board, const std::string& cells) {
        Words[static_cast<std::size_t>(w)][static_cast<std::size_t>(board)] = cells;
        return *this;
    }
    [[nodiscard]] std::string Cells(int w, int board) const {
        const std::string& cells = Words[static_cast<std::size_t>(w)][static_cast<std::size_t>(board)];
        return cells.empty() ? kAnyCells : cells;
    }
    [[nodiscard]] bool HasPatterns() const;
    [[nodiscard]] std::string Name() const;
};

/// A bench whose state is that of the case.
struct ArmBench : TraceBench {
    explicit ArmBench(const ArmCase& c, unsigned seed = 7);
    CompiledTrigWords Words;
};

CompiledTrigWords WordsOf(const ArmCase& c);

/// Runs a sequence that has traces of its own and lets its text and its shadows flow into the script.
void Splice(ArmBench& bench, const std::function<void(HardwareSession&, InstrumentState&)>& sequence);

/// The steps, each on the bench's script. Compile answers 1 or 2.
int ScriptCompile(Script& s, const ArmCase& c);
void ScriptPosition(Script& s, const ArmCase& c, int position);
void ScriptThresholds(Script& s, const ArmCase& c, const InstrumentState& state);
void ScriptLaneSelect(Script& s, const ArmCase& c);
void ScriptInputMode(Script& s, const ArmCase& c);
/// All of an arming; the case's edge becomes that after the arming.
void ScriptArming(ArmBench& bench, ArmCase& c);
/// All register accesses of a read-out.
void ScriptReadOut(ArmBench& bench, const ArmCase& c);

}  // namespace zu::test
