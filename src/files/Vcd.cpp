#include "files/Vcd.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <unordered_map>
#include <utility>

#include "files/ReadableFile.h"

namespace zu {
namespace {

constexpr std::size_t kLargestFile = std::size_t{256} << 20;
constexpr std::int64_t kLatest = INT64_MAX / 8;  // later stamps count as this

/// Words between white space.
class Words {
  public:
    explicit Words(std::string_view text) : text_(text) {}
    /// The next word; empty at the end.
    std::string_view Next() {
        while (at_ < text_.size() && IsBlank(text_[at_])) ++at_;
        const std::size_t begin = at_;
        while (at_ < text_.size() && !IsBlank(text_[at_])) ++at_;
        return text_.substr(begin, at_ - begin);
    }
    /// Words up to "$end", put together.
    std::string ToEnd() {
        std::string joined;
        for (std::string_view word = Next(); !word.empty() && word != "$end"; word = Next()) joined += word;
        return joined;
    }

  private:
    static bool IsBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

    std::string_view text_;
    std::size_t at_ = 0;
};

std::int64_t NumberOf(std::string_view text) {
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error == std::errc::result_out_of_range) return INT64_MAX;
    return error == std::errc{} ? number : 0;
}

/// Picoseconds of "10us".
double TimescaleOf(const std::string& text) {
    constexpr std::pair<std::string_view, double> kUnits[] = {{"fs", 1e-3}, {"ps", 1},   {"ns", 1e3},
                                                              {"us", 1e6},  {"ms", 1e9}, {"s", 1e12}};
    const std::size_t digits = std::min(text.find_first_not_of("0123456789"), text.size());
    const auto count = static_cast<double>(std::max<std::int64_t>(NumberOf(text.substr(0, digits)), 1));
    for (const auto& [unit, picoseconds] : kUnits) {
        if (text.substr(digits) == unit) return count * picoseconds;
    }
    return 1e3;
}

bool HasNoLevels(std::string_view type) {
    return type == "real" || type == "realtime" || type == "event" || type == "string";
}

class VcdParser {
  public:
    explicit VcdParser(std::string_view text) : words_(text) {}

    std::optional<VcdRecording> Run() {
        for (std::string_view word = words_.Next(); !word.empty(); word = words_.Next()) Take(word);
        if (recording_.Channels.empty()) return std::nullopt;
        recording_.Picoseconds = std::max<std::int64_t>(now_, 1);
        return std::move(recording_);
    }

  private:
    struct Signal {
        int First = 0;  ///< channel of the lowest bit
        int Width = 1;
    };

    void Take(std::string_view word) {
        switch (word.front()) {
            case '$':
                return TakeKeyword(word);
            case '#':
                return TakeTime(word.substr(1));
            case 'b':
            case 'B':
                return SetVector(word.substr(1), words_.Next());
            case 'r':
            case 'R':
            case 's':
            case 'S':
                words_.Next();  // of whom
                return;
            default:
                return SetVector(word.substr(0, 1), word.substr(1));
        }
    }

    void TakeKeyword(std::string_view word) {
        if (word == "$timescale") {
            scale_ = TimescaleOf(words_.ToEnd());
        } else if (word == "$var") {
            TakeVariable();
        } else if (word == "$comment" || word == "$date" || word == "$version" || word == "$scope" ||
                   word == "$upscope" || word == "$enddefinitions") {
            words_.ToEnd();
        }
    }

    /// Type, width, code, name, and for a vector perhaps its range.
    void TakeVariable() {
        const std::string_view type = words_.Next();
        const std::int64_t width = std::clamp<std::int64_t>(NumberOf(words_.Next()), 1, kMaxChannels);
        const std::string code(words_.Next());
        const std::string name(words_.Next());
        if (name != "$end") words_.ToEnd();
        const auto used = static_cast<int>(recording_.Channels.size());
        if (code.empty() || HasNoLevels(type) || signals_.contains(code)) return;
        const int count = std::min(static_cast<int>(width), kMaxChannels - used);
        if (count <= 0) return;
        signals_[code] = {used, count};
        for (int bit = 0; bit < count; ++bit) {
            recording_.Channels.push_back(width == 1 ? name : name + "[" + std::to_string(bit) + "]");
        }
    }

    /// Stamps count from the first one; one that goes back counts as the last, one below 0 as 0.
    void TakeTime(std::string_view digits) {
        const double picoseconds = std::max(static_cast<double>(NumberOf(digits)) * scale_, 0.0);
        const auto time = picoseconds < static_cast<double>(kLatest) ? std::llround(picoseconds) : kLatest;
        if (!started_) start_ = time;
        started_ = true;
        now_ = std::max<std::int64_t>(now_, time - start_);
    }

    /// A text of levels, the highest bit first; missing high bits repeat the first level unless it is 1.
    void SetVector(std::string_view levels, std::string_view code) {
        const auto found = signals_.find(std::string(code));
        if (found == signals_.end() || levels.empty()) return;
        for (int bit = 0; bit < found->second.Width; ++bit) {
            const auto place = static_cast<std::size_t>(bit);
            const char fill = levels.front() == '1' ? '0' : levels.front();
            const char level = place < levels.size() ? levels[levels.size() - 1 - place] : fill;
            SetChannel(found->second.First + bit, level == '1' || level == 'z' || level == 'Z');
        }
    }

    void SetChannel(int channel, bool high) {
        std::vector<VcdChange>& changes = recording_.Pods[static_cast<std::size_t>(channel / 8)];
        const auto mask = static_cast<std::uint8_t>(1U << static_cast<unsigned>(channel % 8));
        const std::uint8_t before = changes.empty() ? std::uint8_t{0} : changes.back().Value;
        const auto value = static_cast<std::uint8_t>(high ? before | mask : before & ~mask);
        if (value == before) return;
        if (!changes.empty() && changes.back().Picoseconds == now_) {
            changes.back().Value = value;
        } else {
            changes.push_back({now_, value});
        }
    }

    Words words_;
    VcdRecording recording_;
    std::unordered_map<std::string, Signal> signals_;
    double scale_ = 1e3;
    std::int64_t start_ = 0;
    std::int64_t now_ = 0;
    bool started_ = false;
};

}  // namespace

std::optional<VcdRecording> ParseVcd(std::string_view text) {
    return VcdParser(text).Run();
}

std::optional<VcdRecording> ReadVcd(const std::string& path) {
    const auto file = ReadableFile::Open(path);
    if (!file) return std::nullopt;
    constexpr std::size_t kPiece = std::size_t{1} << 20;
    std::vector<std::uint8_t> bytes;
    for (std::size_t got = kPiece; got == kPiece && bytes.size() <= kLargestFile;) {
        const std::size_t at = bytes.size();
        bytes.resize(at + kPiece);
        got = file->ReadAt(static_cast<std::int64_t>(at), std::span(bytes).subspan(at));
        bytes.resize(at + got);
    }
    if (bytes.size() > kLargestFile) return std::nullopt;
    return ParseVcd({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
}

}  // namespace zu
