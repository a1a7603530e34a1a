#include "files/SettingsTrigger.h"

#include <algorithm>

#include "files/Decimal.h"
#include "files/SettingsInput.h"
#include "state/Model.h"

namespace zu {
namespace {

// What changed with which file version.
constexpr std::int32_t kOldestSequence = 1;  // a file without a version has no sequence at all
constexpr std::int32_t kLevelListsStored = 186;
constexpr std::int32_t kNamedLevels = 187;
constexpr std::int32_t kCountedNamedLevels = 188;
constexpr std::int32_t kNamedWords = 189;
constexpr std::int32_t kMatchModeStored = 192;

constexpr std::size_t kSliceRead = 44;  // five groups of eight and the blanks between them
constexpr std::size_t kNameRead = 14;   // what the dialogs take
constexpr std::uint8_t kSeriesDace = 1;
constexpr std::uint8_t kSeriesPerch = 5;
constexpr std::uint16_t kPerchLowestVoltage = 14;
constexpr std::uint16_t kPerchHighestVoltage = 101;

template <typename Array>
auto& Slot(Array& array, int index) {
    return array[static_cast<std::size_t>(index)];
}

/// How many more keys a list may hold; a list without its count has no limit.
class Countdown {
  public:
    explicit Countdown(std::optional<std::int32_t> total) : left_(total) {}
    [[nodiscard]] bool Done() const { return left_ && *left_ <= 0; }
    void Found() {
        if (left_) --*left_;
    }

  private:
    std::optional<std::int32_t> left_;
};

std::optional<std::int32_t> Total(const SettingsInput& in, std::string_view key) {
    std::int32_t total = 0;
    return in.Number(key, total) ? std::optional(total) : std::nullopt;
}

void ReadAlignment(InstrumentState& state, const SettingsInput& in) {
    // The oldest files hold one value for all pods under one key.
    for (std::int32_t& adjust : state.Pods.AdjAddr) {
        in.Number("adj", adjust);
        if (static_cast<std::int8_t>(adjust) <= 0) break;
    }
    for (int i = 0; i < kMaxPods; ++i) in.Number(keys::Indexed("AdjAddr", i), Slot(state.Pods.AdjAddr, i));
}

void ReadSlices(InstrumentState& state, const SettingsInput& in) {
    Countdown slices(Total(in, "TotTrigWords"));
    for (int word = 0; word < kTrigWords; ++word) {
        for (int board = 0; board < kMaxBoards && !slices.Done(); ++board) {
            auto& entry = Slot(Slot(state.Trigger.TrigWord.Board, board), word);
            if (in.Entry(keys::SliceName(board, word), entry, kSliceRead)) slices.Found();
        }
    }
}

void SetName(TriggerRecord& trigger, int word, std::string_view name) {
    Slot(trigger.TrigWordName, word) = name.substr(0, kNameRead);
}

/// The sequence with its names in two keys a level.
void ReadOldestLevels(TriggerRecord& trigger, const SettingsInput& in) {
    for (int i = 0; i < kTrigWords; ++i) {
        in.Number(keys::Indexed("seq", i), Slot(trigger.SeqList, i));
        if (const auto name = in.Find(keys::Indexed("seqName", i))) SetName(trigger, i, *name);
    }
}

/// The sequence as "number,name".
void ReadNamedLevels(TriggerRecord& trigger, const SettingsInput& in, Countdown levels) {
    for (int i = 0; i < kTrigWords && !levels.Done(); ++i) {
        const auto level = in.Find(keys::Indexed("seqN", i));
        if (!level) continue;
        levels.Found();
        Slot(trigger.SeqList, i) = static_cast<std::int32_t>(ParseDecimal(*level));
        const std::size_t comma = level->find(',');
        if (comma != std::string_view::npos) SetName(trigger, i, level->substr(comma + 1));
    }
}

void ReadWordNames(TriggerRecord& trigger, const SettingsInput& in) {
    Countdown names(Total(in, "TotTrigWords"));
    for (int i = 0; i < kTrigWords && !names.Done(); ++i) {
        const auto name = in.Find(keys::Indexed("N", i));
        if (!name) continue;
        names.Found();
        SetName(trigger, i, *name);
    }
}

void ReadComments(TriggerRecord& trigger, const SettingsInput& in) {
    Countdown comments(Total(in, "TotTrigComments"));
    for (int i = 0; i < kTrigWords && !comments.Done(); ++i) {
        if (in.Text(keys::Indexed("C", i), Slot(trigger.TrigComment, i))) comments.Found();
    }
}

/// Every entry that is no flag becomes `fallback`.
void KeepFlags(std::array<std::uint8_t, kTrigListSlots>& list, std::uint8_t fallback) {
    for (std::uint8_t& flag : list) flag = flag > 1 ? fallback : flag;
}

void ReadSequence(TriggerRecord& trigger, const SettingsInput& in, std::int32_t version) {
    if (version >= kNamedWords) {
        ReadWordNames(trigger, in);
        in.List(keys::kSeqList.Name, trigger.*keys::kSeqList.List);
        if (version >= kMatchModeStored) {
            in.Bytes("TrigMatchMode", trigger.TrigMatchMode);
            KeepFlags(trigger.TrigMatchMode, 1);
        }
        ReadComments(trigger, in);
    } else if (version >= kNamedLevels) {
        const bool counted = version >= kCountedNamedLevels;
        ReadNamedLevels(trigger, in, Countdown(counted ? Total(in, "TotTrigWords") : std::nullopt));
    } else if (version >= kOldestSequence) {
        ReadOldestLevels(trigger, in);
    }
}

void ReadLevelLists(TriggerRecord& trigger, const SettingsInput& in) {
    in.Bytes("EdgeList16", trigger.EdgeList16);
    KeepFlags(trigger.EdgeList16, 0);
    for (const keys::ListKey& key : keys::kLevelLists) in.List(key.Name, trigger.*key.List);
}

void ReadVoltages(InstrumentState& state, const SettingsInput& in) {
    PodRecord& pods = state.Pods;
    for (int i = 0; i < kThresholds; ++i) {
        in.Number(keys::Indexed("ThrHd", i), Slot(pods.ThrHd, i));
        in.Number(keys::Indexed("PatGenV", i), Slot(pods.PatGenV, i));
        // Element 0 each time, whichever pair was read.
        if (state.Identity.ModelSeries != kSeriesPerch) continue;
        pods.PatGenV[0] = std::clamp(pods.PatGenV[0], kPerchLowestVoltage, kPerchHighestVoltage);
    }
}

}  // namespace

void ReadTrigger(InstrumentState& state, const IniText& ini) {
    const SettingsInput in(ini, "Trigger");
    TriggerRecord& trigger = state.Trigger;
    in.Numbers(state, keys::kTrigger);
    ResetTrigWords(state);
    ReadAlignment(state, in);
    ReadSlices(state, in);
    ReadSequence(trigger, in, state.Files.FileVersion);
    if (state.Files.FileVersion >= kLevelListsStored) ReadLevelLists(trigger, in);
    in.Numbers(state, keys::kTriggerCount);
    ReadVoltages(state, in);
    const auto end = trigger.SeqList.begin() + kTrigWords;
    const auto used = std::count_if(trigger.SeqList.begin(), end, [](std::int32_t word) { return word > 0; });
    trigger.LevelCount = static_cast<std::int32_t>(used);
    if (state.Identity.ModelSeries == kSeriesDace) trigger.SeqList[0] = 1;
}

}  // namespace zu
