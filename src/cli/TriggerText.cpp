#include "cli/TriggerText.h"

#include <algorithm>
#include <charconv>
#include <string_view>
#include <vector>

#include "cli/TerminalText.h"
#include "hw/CaptureSetup.h"
#include "hw/TriggerCompile.h"
#include "trigger/CompiledTrigWords.h"
#include "trigger/TrigCells.h"

namespace zu {
namespace {

constexpr int kLargestCount = 255;
constexpr int kPodChannels = 8;

/// What is wrong with a text, thrown where it is found and caught where the texts are applied.
struct Mistake {
    std::string Text;
};

std::string Quoted(std::string_view text) {
    return "\"" + std::string(text) + "\"";
}

std::optional<int> WholeNumber(std::string_view text) {
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (text.empty() || text[0] == '-' || error != std::errc() || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return value;
}

/// Channels of a term, the least significant first.
using Channels = std::vector<int>;
/// Cells in the same order.
using Cells = std::string;

class ChannelFinder {
  public:
    explicit ChannelFinder(const InstrumentState& state) : state_(state) {}

    [[nodiscard]] Channels Find(std::string_view text) const {
        if (const auto one = WholeNumber(text)) return {Checked(*one, text)};
        if (const auto range = Range(text)) return *range;
        return Named(text);
    }

  private:
    [[nodiscard]] int Checked(int channel, std::string_view text) const {
        const int channels = state_.Shape.TotalChannels;
        if (channel >= channels) {
            throw Mistake{Quoted(text) + ": the instrument has channels 0 to " +
                          std::to_string(channels - 1)};
        }
        return channel;
    }

    [[nodiscard]] std::optional<Channels> Range(std::string_view text) const {
        const std::size_t dash = text.find('-');
        if (dash == std::string_view::npos) return std::nullopt;
        const auto first = WholeNumber(Trimmed(text.substr(0, dash)));
        const auto last = WholeNumber(Trimmed(text.substr(dash + 1)));
        if (!first || !last) return std::nullopt;
        Channels channels;
        for (int i = std::min(*first, *last); i <= Checked(std::max(*first, *last), text); ++i) {
            channels.push_back(i);
        }
        return channels;
    }

    [[nodiscard]] Channels Named(std::string_view text) const {
        Channels channels;
        for (int channel = 0; channel < std::min(state_.Shape.TotalChannels, kMaxChannels); ++channel) {
            const auto name = state_.Channels.ChannelName[static_cast<std::size_t>(channel)].View();
            if (!text.empty() && ToUtf8(Trimmed(name)) == text) channels.push_back(channel);
        }
        if (channels.size() > 1) {
            throw Mistake{std::to_string(channels.size()) + " channels are named " + Quoted(text) +
                          ": name one by its number"};
        }
        if (!channels.empty()) return channels;
        for (const GroupRecord& group : state_.Groups) {
            if (!text.empty() && group.Size > 0 && ToUtf8(Trimmed(group.Name.View())) == text)
                return OfGroup(group, text);
        }
        throw Mistake{"no channel or group is named " + Quoted(text) +
                      ": channels are a number, a range as 0-7, or a name"};
    }

    [[nodiscard]] Channels OfGroup(const GroupRecord& group, std::string_view text) const {
        Channels channels;
        const int size = std::clamp(group.Size, 0, kGroupSlots);
        for (int i = 0; i < size; ++i) {
            const int channel = group.Channels[static_cast<std::size_t>(i)];
            if (channel >= 0) channels.push_back(Checked(channel, text));
        }
        return channels;
    }

    const InstrumentState& state_;
};

bool IsDontCare(char digit) {
    return digit == 'X' || digit == 'x';
}

/// Cells of digits of `bits` bits each, the least significant first.
Cells CellsOfDigits(std::string_view digits, unsigned bits, std::string_view text) {
    Cells cells;
    for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit) {
        unsigned value = 0;
        const auto [end, error] = std::from_chars(&*digit, &*digit + 1, value, 1 << bits);
        if (!IsDontCare(*digit) && (error != std::errc() || end == &*digit)) {
            throw Mistake{Quoted(text) + ": " + Quoted(std::string_view(&*digit, 1)) +
                          (bits == 1 ? " is no binary digit" : " is no hex digit")};
        }
        for (unsigned bit = 0; bit < bits; ++bit) {
            const char cell = (value >> bit & 1U) != 0 ? '1' : '0';
            cells += IsDontCare(*digit) ? 'X' : cell;
        }
    }
    return cells;
}

Cells CellsOfDecimal(std::string_view text) {
    std::uint64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) {
        throw Mistake{Quoted(text) + " is no value: a number, 0x and hex digits, or 0b and binary digits"};
    }
    Cells cells;
    for (; value != 0; value >>= 1U) cells += (value & 1U) != 0 ? '1' : '0';
    return cells;
}

Cells ParseCells(std::string_view text, std::size_t channels) {
    if (text.size() == 1 && IsDontCare(text[0])) return Cells(channels, 'X');
    const std::string_view prefix = text.substr(0, 2);
    const bool hex = prefix == "0x" || prefix == "0X";
    const bool binary = prefix == "0b" || prefix == "0B";
    Cells cells;
    if ((hex || binary) && text.size() > 2) {
        cells = CellsOfDigits(text.substr(2), hex ? 4 : 1, text);
    } else {
        cells = CellsOfDecimal(text);
    }
    // What is left out on the left is 0, and what stands there must be as good as left out.
    while (cells.size() > channels && cells.back() != '1') cells.pop_back();
    if (cells.size() > channels) {
        throw Mistake{Quoted(text) + " takes " + std::to_string(cells.size()) + " channels, there are " +
                      std::to_string(channels)};
    }
    cells.resize(channels, '0');
    return cells;
}

/// A setting that the sequence has once, however many levels name it.
class Once {
  public:
    void Set(int value, std::string_view text) {
        if (value_ && *value_ != value) {
            throw Mistake{Quoted(text) + " contradicts " + Quoted(text_) +
                          ": it holds for the whole trigger"};
        }
        value_ = value;
        text_ = text;
    }
    [[nodiscard]] int Or(int otherwise) const { return value_.value_or(otherwise); }

  private:
    std::optional<int> value_;
    std::string text_;
};

class TriggerReader {
  public:
    explicit TriggerReader(InstrumentState& state) : state_(state), finder_(state) {}

    void Read(std::span<const std::string> levels) {
        if (levels.size() > kTrigWords) {
            throw Mistake{"a trigger has at most " + std::to_string(kTrigWords) + " levels"};
        }
        state_.Trigger.SeqList.fill(0);
        state_.Trigger.LevelCount = static_cast<std::int32_t>(levels.size());
        for (std::size_t level = 0; level < levels.size(); ++level)
            ReadLevel(static_cast<int>(level), levels[level]);
        TriggerRecord& trigger = state_.Trigger;
        trigger.EdgeList16[0] = static_cast<std::uint8_t>(edge_.Or(0));
        trigger.TrigMatchMode[0] = static_cast<std::uint8_t>(match_.Or(1));
        trigger.TrigCntMd = static_cast<std::int8_t>(countMode_.Or(3));
        trigger.TrigCnt = static_cast<std::uint8_t>(count_.Or(1));
        if (!TrigWordsConsistent(state_, PrepareTriggerWords(state_))) {
            throw Mistake{"every level must ask for a channel, or none"};
        }
    }

  private:
    void ReadLevel(int level, std::string_view text) {
        SetAllWord(state_, 'X', level);
        state_.Trigger.SeqList[static_cast<std::size_t>(level)] = level + 1;
        taken_.clear();
        std::string_view rest = text;
        for (std::size_t comma = 0; comma != std::string_view::npos;) {
            comma = rest.find(',');
            ReadTerm(level, Trimmed(rest.substr(0, comma)));
            rest.remove_prefix(comma == std::string_view::npos ? rest.size() : comma + 1);
        }
        if (taken_.empty()) throw Mistake{Quoted(text) + " asks for no channel: CHANNELS=VALUE is missing"};
    }

    void ReadTerm(int level, std::string_view term) {
        const std::size_t equals = term.rfind('=');
        if (equals == std::string_view::npos) return ReadWord(term);
        const std::string_view name = Trimmed(term.substr(0, equals));
        const std::string_view value = Trimmed(term.substr(equals + 1));
        if (name == "count") return ReadCount(2, value, term);
        if (name == "lasts") return ReadCount(0, value, term);
        if (name == "within") return ReadCount(1, value, term);
        const Channels channels = finder_.Find(name);
        const Cells cells = ParseCells(value, channels.size());
        for (std::size_t i = 0; i < channels.size(); ++i) SetCell(level, channels[i], cells[i]);
    }

    void ReadWord(std::string_view word) {
        if (word == "rising" || word == "falling") return edge_.Set(word == "falling" ? 1 : 0, word);
        if (word == "all" || word == "any") return match_.Set(word == "all" ? 1 : 0, word);
        throw Mistake{Quoted(word) +
                      " is no term: CHANNELS=VALUE, rising, falling, all, any, count=N, lasts=N or within=N"};
    }

    void ReadCount(int mode, std::string_view value, std::string_view term) {
        const auto count = WholeNumber(value);
        if (!count || *count < 1 || *count > kLargestCount) {
            throw Mistake{Quoted(term) + ": a count is 1 to " + std::to_string(kLargestCount)};
        }
        countMode_.Set(mode, term);
        count_.Set(*count, term);
    }

    void SetCell(int level, int channel, char cell) {
        if (std::find(taken_.begin(), taken_.end(), channel) != taken_.end()) {
            throw Mistake{"channel " + std::to_string(channel) + " is asked for twice in a level"};
        }
        taken_.push_back(channel);
        if (cell != 'X') CheckCaptured(channel);
        SetCharOfChannel(state_, channel, level, cell);
    }

    /// What a lane without samples is asked for, the instrument would leave out without a word.
    void CheckCaptured(int channel) const {
        const CaptureSetup setup = CaptureSetupOf(state_);
        const int pod = channel / kPodChannels;
        const int lane = setup.PodStep > 0 ? pod % setup.PodStep : pod;
        if (PodMode(state_, pod, 0) != 0) {
            throw Mistake{"channel " + std::to_string(channel) + " is no input: its pod is set otherwise"};
        }
        const bool blanked = lane < kBoardLanes && (BlankedLanes(setup) >> lane & 1) != 0;
        if (blanked || GetBufLenFull(state_.Buffer.BufLen, pod) == 0) {
            throw Mistake{"channel " + std::to_string(channel) +
                          " takes no samples at this rate and memory mode"};
        }
    }

    InstrumentState& state_;
    ChannelFinder finder_;
    std::vector<int> taken_;
    Once edge_;
    Once match_;
    Once countMode_;
    Once count_;
};

}  // namespace

std::optional<std::string> ApplyTriggerTexts(InstrumentState& state, std::span<const std::string> levels) {
    const TriggerRecord before = state.Trigger;
    try {
        TriggerReader(state).Read(levels);
    } catch (const Mistake& mistake) {
        state.Trigger = before;
        return mistake.Text;
    }
    return std::nullopt;
}

}  // namespace zu
