#include <algorithm>
#include <optional>
#include <string_view>

#include "FuzzEntries.h"
#include "files/SettingsReader.h"
#include "files/SettingsWriter.h"
#include "support/ScriptedHost.h"
#include "support/StartState.h"

namespace zu::test {
namespace {

std::string Lower(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
    return lower;
}

std::string Trim(const std::string& text) {
    std::size_t first = 0;
    std::size_t end = text.size();
    while (first < end && (text[first] == ' ' || text[first] == '\t')) ++first;
    while (end > first && (text[end - 1] == ' ' || text[end - 1] == '\t')) --end;
    return text.substr(first, end - first);
}

/// The plainest look-up: one pass over the lines for each question.
std::optional<std::string> PlainFind(const std::string& text, const std::string& section,
                                     const std::string& key) {
    bool inside = false;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        std::string line = text.substr(at, end - at);
        at = end + 1;
        if (Lower(line).starts_with("[comment") || Lower(line).starts_with("[model")) return std::nullopt;
        if (line.ends_with('\r')) line.pop_back();
        if (line.starts_with(';')) continue;
        const std::string bare = Trim(line);
        if (bare.starts_with('[')) {
            const std::size_t close = bare.find(']');
            if (close == std::string::npos) continue;
            if (inside) return std::nullopt;
            inside = Lower(Trim(bare.substr(1, close - 1))) == section;
            continue;
        }
        const std::size_t equals = line.find('=');
        if (!inside || equals == std::string::npos) continue;
        if (Lower(Trim(line.substr(0, equals))) == key) return line.substr(equals + 1);
    }
    return std::nullopt;
}

std::string CompareLookUps(const std::string& text) {
    constexpr std::pair<const char*, const char*> kKeys[] = {
        {"file", "fileversion"},
        {"file", "model"},
        {"timingwin", "timinglines"},
        {"timingwin", "lse0"},
        {"trigger", "seqlist"},
        {"trigger", "w0-0"},
        {"group0", "l"},
        {"group", "totgroups"},
        {"hardware", "pod0"},
        {"clock", "type"},
        {"cursor dlg", "mode"},
        {"userdefined", "ud0bit"},
        {"a", "a"},
        {"a", "b"},
        {"", "a"},
        {"b", "a"},
    };
    const IniText ini = IniText::Parse(text);
    for (const auto& [section, key] : kKeys) {
        const auto found = ini.Find(section, key);
        const auto plain = PlainFind(text, section, key);
        if (found.has_value() != plain.has_value() || (found && *found != *plain)) {
            return "look-up of [" + std::string(section) + "] " + key + " differs";
        }
    }
    return {};
}

std::string CheckBounds(const InstrumentState& state) {
    const auto inside = [](std::int64_t value, std::int64_t low, std::int64_t high) {
        return value >= low && value <= high;
    };
    if (!inside(state.Timing.TimingLines, 0, kMaxLines)) return "TimingLines";
    if (!inside(state.Serial.SerialMode, 0, 2)) return "SerialMode";
    if (state.Clock.ClockType == 4) return "ClockType";
    if (!inside(state.Trigger.LevelCount, 0, kTrigWords)) return "LevelCount";
    if (!inside(state.Translate.TranslateCount, 0, kTranslateEntries)) return "TranslateCount";
    for (const GroupRecord& group : state.Groups) {
        if (!inside(group.Size, 0, kGroupSlots)) return "group size";
    }
    for (const auto& board : state.Trigger.TrigWord.Board) {
        for (const auto& entry : board) {
            if (std::find(entry.begin(), entry.end(), '\0') == entry.end()) return "trigger word without end";
        }
    }
    return {};
}

std::string CheckIniFile(const std::string& text) {
    IniFile file(text);
    file.Set("Main", "left", 12);
    file.Set("a", "b", "x\ny");
    const std::string once = file.Text();
    IniFile again(once);
    if (again.Number("Main", "left", 0) != 12 || again.Find("a", "b") != "x y")
        return "IniFile loses what was set";
    return again.Text() == once ? "" : "IniFile changes what it reads";
}

}  // namespace

std::string FuzzSettings(std::span<const std::uint8_t> bytes) {
    static const std::unique_ptr<InstrumentState> kState = StartState(16, 1);
    const std::string text(bytes.begin(), bytes.end());
    if (std::string problem = CompareLookUps(text); !problem.empty()) return problem;
    if (std::string problem = CheckIniFile(text); !problem.empty()) return problem;
    ScriptedHost host;
    ReadSettings(*kState, host, IniText::Parse(text));
    if (host.Boxes.size() > 1) return "more than one message";
    if (std::string problem = CheckBounds(*kState); !problem.empty()) return problem;
    const std::string written = SettingsText(*kState, host);
    ReadSettings(*kState, host, IniText::Parse(written));
    if (kState->Files.FileVersion != 192) return "what was written does not come back";
    return CheckBounds(*kState);
}

}  // namespace zu::test
