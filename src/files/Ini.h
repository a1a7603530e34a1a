#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zu {

/// Keyed text of the form "[Section]", "Key=value", parsed once. Lines end at LF, one CR before it is
/// dropped; lines that begin with ";" are skipped. Section and key are matched without regard to ASCII case
/// and surrounding blanks; the first section of a name and the first key in it count. A value is every byte
/// after
/// "=". The text ends at the first line that begins "[Comment" or "[Model", where the binary part of a data
/// file starts.
class IniText {
  public:
    IniText() = default;
    /// Parses bytes; anything behind kLargestText is not looked at.
    static IniText Parse(std::string text);
    /// Reads a file, of a data file only its settings block; nothing if it is no readable ordinary file.
    static std::optional<IniText> Load(const std::string& path);

    [[nodiscard]] bool HasSection(std::string_view section) const;
    /// The value, which may be empty; nothing if the key is absent. Valid as long as this object.
    [[nodiscard]] std::optional<std::string_view> Find(std::string_view section, std::string_view key) const&;
    std::optional<std::string_view> Find(std::string_view section, std::string_view key) const&& = delete;
    /// The value's decimal number, 0 for a text without digits.
    [[nodiscard]] std::optional<std::int64_t> Number(std::string_view section, std::string_view key) const;
    /// The value's number cut to 32 bits; a key that holds -1 counts as absent.
    [[nodiscard]] std::optional<std::int32_t> Int32(std::string_view section, std::string_view key) const;

    /// Many times what the largest state writes; more is no settings text.
    static constexpr std::size_t kLargestText = std::size_t{1} << 20U;

  private:
    struct Slice {
        std::uint32_t Begin = 0;
        std::uint32_t Size = 0;
    };
    struct Entry {
        std::uint32_t Section;
        Slice Key;
        Slice Value;
    };

    [[nodiscard]] std::string_view View(Slice slice) const;
    [[nodiscard]] Slice SliceOf(std::string_view part) const;
    [[nodiscard]] std::optional<std::uint32_t> SectionIndex(std::string_view section) const;
    void AddLine(std::string_view line, std::optional<std::uint32_t>& section);
    void Sort();

    std::string text_;
    std::vector<Slice> sections_;              ///< in order of first appearance
    std::vector<Entry> entries_;               ///< sorted by section and key, the first of equals first
    std::vector<std::uint32_t> sectionOrder_;  ///< indexes of sections_, sorted by name
};

/// A keyed text that can be changed and written back. Unknown lines, their order and comments stay.
class IniFile {
  public:
    IniFile() = default;
    explicit IniFile(std::string_view text);
    /// Reads a file; a file that cannot be read is empty.
    static IniFile Load(const std::string& path);

    [[nodiscard]] std::optional<std::string_view> Find(std::string_view section, std::string_view key) const&;
    std::optional<std::string_view> Find(std::string_view section, std::string_view key) const&& = delete;
    /// The value's decimal number cut to 32 bits; `absent` without the key.
    [[nodiscard]] std::int32_t Number(std::string_view section, std::string_view key,
                                      std::int32_t absent) const;
    /// Replaces the value of the key, or adds the key at the end of its section, or adds the section. CR and
    /// LF in the value become blanks.
    void Set(std::string_view section, std::string_view key, std::string_view value);
    void Set(std::string_view section, std::string_view key, std::int32_t value);
    /// The whole text, every line ended by CR LF.
    [[nodiscard]] std::string Text() const;

  private:
    struct Range {
        std::size_t First;  ///< the line behind the section's head
        std::size_t End;
        bool Found;
    };
    [[nodiscard]] Range LinesOf(std::string_view section) const;
    [[nodiscard]] std::optional<std::size_t> LineOf(const Range& lines, std::string_view key) const;

    std::vector<std::string> lines_;
};

}  // namespace zu
