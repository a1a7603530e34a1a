#include "display/SearchEdits.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "display/TimeText.h"
#include "trigger/TrigCells.h"

namespace zu {
namespace {

constexpr int kPodBits = 8;
constexpr int kMostValue = 255;
constexpr std::array<std::string_view, 4> kFills{"Reset", "Set all bits to X", "Set all bits to 1",
                                                 "Set all bits to 0"};
constexpr std::array<char, 4> kFillCells{'\0', 'X', '1', '0'};

bool IsHexDigit(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

/// Cell of a bit of a pod in the search word; null where it has none.
template <typename State>
auto* SearchCell(State& state, int pod, int bit) {
    const int channel = pod >= 0 && pod < kMaxPods ? pod * kPodBits + bit : -1;
    const auto cell = CellOfChannel(state, channel);
    return cell ? &state.Search.SearchWd[static_cast<std::size_t>(cell->Board)]
                                        [static_cast<std::size_t>(cell->Position)]
                : nullptr;
}

/// Eight cells of a pod, the most significant first.
std::string CellsOfPod(const InstrumentState& state, int pod) {
    std::string cells;
    for (int bit = kPodBits - 1; bit >= 0; --bit) {
        const char* cell = SearchCell(state, pod, bit);
        // What is no cell asks for a 0, as in the search itself.
        cells += cell == nullptr ? 'X' : IsCell(*cell) ? *cell : '0';
    }
    return cells;
}

int ValueOfPod(const InstrumentState& state, int pod) {
    int value = 0;
    for (const char c : CellsOfPod(state, pod)) value = 2 * value + (c == '1' ? 1 : 0);
    return value;
}

void StoreCells(InstrumentState& state, int pod, std::string_view cells) {
    for (int i = 0; i < kPodBits; ++i) {
        char* cell = SearchCell(state, pod, kPodBits - 1 - i);
        if (cell != nullptr) *cell = cells[static_cast<std::size_t>(i)];
    }
}

int ParseValue(std::string_view text, int radix) {
    int value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value, radix);
    return std::clamp(value, 0, kMostValue);
}

void FillAll(InstrumentState& state, char value) {
    for (int channel = 0; channel < kMaxChannels; ++channel) {
        if (char* cell = SearchCell(state, channel / kPodBits, channel % kPodBits)) *cell = value;
    }
}

void CopyTrigWord(InstrumentState& state, int word) {
    for (std::size_t board = 0; board < state.Search.SearchWd.size(); ++board) {
        state.Search.SearchWd[board] = state.Trigger.TrigWord.Board[board][static_cast<std::size_t>(word)];
    }
}

}  // namespace

int SearchBaseOf(const InstrumentState& state) {
    const int base = state.Search.SearchBase;
    return base >= kSearchHex && base <= kSearchDecimal2 ? base : kSearchBinary;
}

int SearchRows(const InstrumentState& state) {
    return std::clamp(state.Shape.WordsPerTrig, 1, kMaxBoards);
}

std::string SearchRowText(const InstrumentState& state, int row) {
    const int first = row * state.Shape.ChPerSlice;
    return "Ch " + std::to_string(first) + " .. " + std::to_string(first + state.Shape.ChPerSlice - 1);
}

int ShownSearchRow(const InstrumentState& state) {
    return std::clamp<int>(state.Search.SearchLen, 0, SearchRows(state) - 1);
}

std::vector<int> SearchPods(const InstrumentState& state, int row) {
    std::vector<int> pods;
    const int perRow = std::max(state.Shape.ChPerSlice / kPodBits, 0);
    for (int lane = perRow - 1; lane >= 0; --lane) {
        const int pod = row * perRow + lane;
        if (CellOfChannel(state, pod * kPodBits)) pods.push_back(pod);
    }
    return pods;
}

int SearchFieldLimit(int base) {
    switch (base) {
        case kSearchHex:
            return 2;
        case kSearchDecimal:
        case kSearchDecimal2:
            return 4;
        default:
            return kPodBits;
    }
}

bool SearchFieldTakes(int base, char key) {
    switch (base) {
        case kSearchHex:
            return IsHexDigit(key);
        case kSearchDecimal:
        case kSearchDecimal2:
            return key >= '0' && key <= '9';
        default:
            return IsCell(key);
    }
}

std::string SearchFieldText(const InstrumentState& state, int pod) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    const int base = SearchBaseOf(state);
    if (base == kSearchBinary) return CellsOfPod(state, pod);
    const int value = ValueOfPod(state, pod);
    if (base != kSearchHex) return std::to_string(value);
    return {kDigits[static_cast<std::size_t>(value / 16)], kDigits[static_cast<std::size_t>(value % 16)]};
}

void WriteSearchField(InstrumentState& state, int pod, std::string_view text) {
    const int base = SearchBaseOf(state);
    text = text.substr(0, static_cast<std::size_t>(SearchFieldLimit(base)));
    if (!std::all_of(text.begin(), text.end(), [base](char c) { return SearchFieldTakes(base, c); })) return;
    std::string cells(kPodBits, 'X');
    if (base == kSearchBinary) {
        cells.replace(cells.size() - text.size(), text.size(), text);
    } else {
        const int value = ParseValue(text, base == kSearchHex ? 16 : 10);
        for (int i = 0; i < kPodBits; ++i) {
            cells[static_cast<std::size_t>(kPodBits - 1 - i)] = (value >> i & 1) != 0 ? '1' : '0';
        }
    }
    StoreCells(state, pod, cells);
}

bool SearchHoldsDontCare(const InstrumentState& state) {
    for (int channel = 0; channel < kMaxChannels; ++channel) {
        const char* cell = SearchCell(state, channel / kPodBits, channel % kPodBits);
        if (cell != nullptr && NormalCell(*cell) == 'X') return true;
    }
    return false;
}

std::string_view SearchWordEdit::FallBack() {
    if (SearchBaseOf(state_) == kSearchBinary || !SearchHoldsDontCare(state_)) return {};
    state_.Search.SearchBase = kSearchBinary;
    if (told_) return {};
    told_ = true;
    return kModeSetToBinary;
}

std::string_view SearchWordEdit::Open() {
    return FallBack();
}

std::string_view SearchWordEdit::SelectBase(int base) {
    if (base != kSearchBinary && SearchHoldsDontCare(state_)) return kDontCareInBinary;
    state_.Search.SearchBase = static_cast<std::int8_t>(base);
    return {};
}

std::string_view SearchWordEdit::Fill(int entry) {
    constexpr int kFirstWord = static_cast<int>(kFills.size());
    if (entry >= kFirstWord && entry < kFirstWord + kTrigWords) {
        CopyTrigWord(state_, entry - kFirstWord);
    } else if (entry > 0 && entry < kFirstWord) {
        FillAll(state_, kFillCells[static_cast<std::size_t>(entry)]);
    } else {
        return {};
    }
    return FallBack();
}

std::string SearchPlaceText(const InstrumentState& state) {
    const bool timing = state.Windows.ActiveView == 0;
    const std::int32_t sample =
        std::max(timing ? state.Timing.TimingDataPos : state.StateList.StateDataPos, 0);
    std::string text = "From sample " + std::to_string(sample);
    if (RateOf(state) > 0) text += " (" + TimeText(std::int64_t{sample}, RateOf(state), kTimeRateUnit) + ")";
    return text + (timing ? " of the Timing view" : " of the Statelist");
}

std::vector<std::string> SearchFillTexts(const InstrumentState& state) {
    std::vector<std::string> texts(kFills.begin(), kFills.end());
    for (std::size_t word = 0; word < kTrigWords; ++word) {
        texts.push_back("Search for Trigger level " + std::to_string(word) + "  (" +
                        std::string(state.Trigger.TrigWordName[word].View()) + ")");
    }
    return texts;
}

}  // namespace zu
