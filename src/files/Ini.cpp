#include "files/Ini.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <span>

#include "files/Decimal.h"
#include "files/ReadableFile.h"

namespace zu {
namespace {

constexpr std::size_t kReadBlock = 65536;
/// Lines that begin so end the keyed text: what follows is binary.
constexpr std::array<std::string_view, 2> kEndOfText{"[Comment", "[Model"};

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return text.substr(text.size());
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

int CompareIgnoringCase(std::string_view a, std::string_view b) {
    const std::size_t common = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < common; ++i) {
        if (Lower(a[i]) != Lower(b[i])) return Lower(a[i]) < Lower(b[i]) ? -1 : 1;
    }
    return a.size() == b.size() ? 0 : (a.size() < b.size() ? -1 : 1);
}

bool BeginsBinary(std::string_view line) {
    return std::any_of(kEndOfText.begin(), kEndOfText.end(), [line](std::string_view mark) {
        return EqualIgnoringCase(line.substr(0, mark.size()), mark);
    });
}

/// Takes one line off the front of `rest`: up to LF, without it and one CR before it.
std::string_view TakeLine(std::string_view& rest) {
    const std::size_t end = rest.find('\n');
    std::string_view line = rest.substr(0, end);
    rest = end == std::string_view::npos ? rest.substr(rest.size()) : rest.substr(end + 1);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    return line;
}

/// Name of the section that a line opens; nothing for any other line.
std::optional<std::string_view> SectionOf(std::string_view line) {
    line = Trimmed(line);
    const std::size_t end = line.find(']');
    if (line.empty() || line.front() != '[' || end == std::string_view::npos) return std::nullopt;
    return Trimmed(line.substr(1, end - 1));
}

/// Key of a "key=value" line; nothing for any other line.
std::optional<std::string_view> KeyOf(std::string_view line) {
    const std::size_t equals = line.find('=');
    if (line.empty() || line.front() == ';' || equals == std::string_view::npos) return std::nullopt;
    const std::string_view key = Trimmed(line.substr(0, equals));
    return key.empty() || key.front() == '[' ? std::nullopt : std::optional(key);
}

/// Whether `text` has reached its end or a line from `from` on, the start of a line, that begins the binary
/// part. Moves `from` to the last line start seen.
bool EndOfTextSeen(std::string_view text, std::size_t& from) {
    for (;;) {
        const std::string_view line = text.substr(from);
        if (BeginsBinary(line)) return true;
        const std::size_t end = line.find('\n');
        if (end == std::string_view::npos) return false;
        from += end + 1;
    }
}

}  // namespace

std::optional<IniText> IniText::Load(const std::string& path) {
    const std::optional<ReadableFile> file = ReadableFile::Open(path);
    if (!file) return std::nullopt;
    std::string text;
    std::size_t from = 0;
    while (text.size() < kLargestText && !EndOfTextSeen(text, from)) {
        const std::size_t before = text.size();
        text.resize(before + kReadBlock);
        const std::span<char> block(text.data() + before, kReadBlock);
        const std::size_t got = file->ReadAt(static_cast<std::int64_t>(before),
                                             {reinterpret_cast<std::uint8_t*>(block.data()), block.size()});
        text.resize(before + got);
        if (got < kReadBlock) break;
    }
    return Parse(std::move(text));
}

IniText IniText::Parse(std::string text) {
    IniText ini;
    ini.text_ = std::move(text);
    std::string_view rest = std::string_view(ini.text_).substr(0, kLargestText);
    std::optional<std::uint32_t> section;
    while (!rest.empty() && !BeginsBinary(rest)) ini.AddLine(TakeLine(rest), section);
    ini.Sort();
    return ini;
}

void IniText::AddLine(std::string_view line, std::optional<std::uint32_t>& section) {
    if (!line.empty() && line.front() == ';') return;
    if (const auto name = SectionOf(line)) {
        section = static_cast<std::uint32_t>(sections_.size());
        sections_.push_back(SliceOf(*name));
        return;
    }
    const auto key = KeyOf(line);
    if (!key || !section) return;
    entries_.push_back({*section, SliceOf(*key), SliceOf(line.substr(line.find('=') + 1))});
}

void IniText::Sort() {
    sectionOrder_.resize(sections_.size());
    std::iota(sectionOrder_.begin(), sectionOrder_.end(), 0U);
    std::stable_sort(sectionOrder_.begin(), sectionOrder_.end(), [this](std::uint32_t a, std::uint32_t b) {
        return CompareIgnoringCase(View(sections_[a]), View(sections_[b])) < 0;
    });
    std::stable_sort(entries_.begin(), entries_.end(), [this](const Entry& a, const Entry& b) {
        if (a.Section != b.Section) return a.Section < b.Section;
        return CompareIgnoringCase(View(a.Key), View(b.Key)) < 0;
    });
}

std::string_view IniText::View(Slice slice) const {
    return std::string_view(text_).substr(slice.Begin, slice.Size);
}

IniText::Slice IniText::SliceOf(std::string_view part) const {
    return {static_cast<std::uint32_t>(part.data() - text_.data()), static_cast<std::uint32_t>(part.size())};
}

std::optional<std::uint32_t> IniText::SectionIndex(std::string_view section) const {
    section = Trimmed(section);
    const auto at = std::lower_bound(sectionOrder_.begin(), sectionOrder_.end(), section,
                                     [this](std::uint32_t index, std::string_view name) {
                                         return CompareIgnoringCase(View(sections_[index]), name) < 0;
                                     });
    if (at == sectionOrder_.end() || CompareIgnoringCase(View(sections_[*at]), section) != 0) {
        return std::nullopt;
    }
    return *at;
}

bool IniText::HasSection(std::string_view section) const {
    return SectionIndex(section).has_value();
}

std::optional<std::string_view> IniText::Find(std::string_view section, std::string_view key) const& {
    const std::optional<std::uint32_t> index = SectionIndex(section);
    if (!index) return std::nullopt;
    key = Trimmed(key);
    const auto at = std::lower_bound(entries_.begin(), entries_.end(), key,
                                     [this, &index](const Entry& entry, std::string_view name) {
                                         if (entry.Section != *index) return entry.Section < *index;
                                         return CompareIgnoringCase(View(entry.Key), name) < 0;
                                     });
    if (at == entries_.end() || at->Section != *index || CompareIgnoringCase(View(at->Key), key) != 0) {
        return std::nullopt;
    }
    return View(at->Value);
}

std::optional<std::int64_t> IniText::Number(std::string_view section, std::string_view key) const {
    const auto value = Find(section, key);
    return value ? std::optional(ParseDecimal(*value)) : std::nullopt;
}

std::optional<std::int32_t> IniText::Int32(std::string_view section, std::string_view key) const {
    const auto number = Number(section, key);
    if (!number) return std::nullopt;
    // The lookup that the format was made with answers -1 for an absent key, so a stored -1 never counts.
    const auto value = static_cast<std::int32_t>(*number);
    return value == -1 ? std::nullopt : std::optional(value);
}

IniFile::IniFile(std::string_view text) {
    while (!text.empty()) lines_.emplace_back(TakeLine(text));
}

IniFile IniFile::Load(const std::string& path) {
    const std::optional<ReadableFile> file = ReadableFile::Open(path);
    if (!file) return {};
    std::string text(IniText::kLargestText, '\0');
    text.resize(file->ReadAt(0, {reinterpret_cast<std::uint8_t*>(text.data()), text.size()}));
    return IniFile(text);
}

IniFile::Range IniFile::LinesOf(std::string_view section) const {
    const auto isHead = [section](const std::string& line) {
        const auto name = SectionOf(line);
        return name && EqualIgnoringCase(*name, Trimmed(section));
    };
    const auto head = std::find_if(lines_.begin(), lines_.end(), isHead);
    if (head == lines_.end()) return {lines_.size(), lines_.size(), false};
    const auto end = std::find_if(head + 1, lines_.end(),
                                  [](const std::string& line) { return SectionOf(line).has_value(); });
    return {static_cast<std::size_t>(head + 1 - lines_.begin()),
            static_cast<std::size_t>(end - lines_.begin()), true};
}

std::optional<std::size_t> IniFile::LineOf(const Range& lines, std::string_view key) const {
    for (std::size_t i = lines.First; i < lines.End; ++i) {
        const auto name = KeyOf(lines_[i]);
        if (name && EqualIgnoringCase(*name, Trimmed(key))) return i;
    }
    return std::nullopt;
}

std::optional<std::string_view> IniFile::Find(std::string_view section, std::string_view key) const& {
    const auto line = LineOf(LinesOf(section), key);
    if (!line) return std::nullopt;
    const std::string_view text = lines_[*line];
    return text.substr(text.find('=') + 1);
}

std::int32_t IniFile::Number(std::string_view section, std::string_view key, std::int32_t absent) const {
    const auto value = Find(section, key);
    return value ? static_cast<std::int32_t>(ParseDecimal(*value)) : absent;
}

void IniFile::Set(std::string_view section, std::string_view key, std::string_view value) {
    std::string text(key);
    text.append("=").append(value);
    std::replace(text.begin(), text.end(), '\r', ' ');
    std::replace(text.begin(), text.end(), '\n', ' ');
    Range lines = LinesOf(section);
    if (const auto line = LineOf(lines, key)) {
        lines_[*line] = std::move(text);
        return;
    }
    if (!lines.Found) {
        lines_.push_back("[" + std::string(section) + "]");
        lines.End = lines.First = lines_.size();
    }
    while (lines.End > lines.First && Trimmed(lines_[lines.End - 1]).empty()) --lines.End;
    lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(lines.End), std::move(text));
}

void IniFile::Set(std::string_view section, std::string_view key, std::int32_t value) {
    Set(section, key, std::to_string(value));
}

std::string IniFile::Text() const {
    std::string text;
    for (const std::string& line : lines_) text.append(line).append("\r\n");
    return text;
}

}  // namespace zu
