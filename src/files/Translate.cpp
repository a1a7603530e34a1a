#include "files/Translate.h"

#include "files/AtomicFile.h"

namespace zu {
namespace {

constexpr const char* kSection = "UserDefined";

std::string KeyOf(std::size_t index, const char* part) {
    return "ud" + std::to_string(index) + part;
}

/// Value and care mask of a pattern, its last character being bit 0; anything but "0" and "1" does not
/// matter.
void Compile(TranslateEntry& entry) {
    entry.Value = entry.Care = 0;
    for (const char c : entry.Bit.View()) {
        entry.Value = (entry.Value << 1U) | (c == '1' ? 1U : 0U);
        entry.Care = (entry.Care << 1U) | (c == '1' || c == '0' ? 1U : 0U);
    }
}

}  // namespace

std::string TranslateText(const TranslateRecord& table) {
    std::string text = "\r\n[UserDefined]\r\n";
    for (std::size_t i = 0; i < table.Entry.size(); ++i) {
        const TranslateEntry& entry = table.Entry[i];
        if (entry.Bit.Empty()) continue;
        text.append(KeyOf(i, "Bit=")).append(entry.Bit.View()).append("\r\n");
        text.append(KeyOf(i, "Stg=")).append(entry.Stg.View()).append("\r\n");
        text.append(KeyOf(i, "Skip=")).append(std::to_string(entry.Skip)).append("\r\n");
    }
    return text;
}

void ReadTranslate(TranslateRecord& table, const IniText& ini) {
    table = {};
    for (std::size_t i = 0; i < table.Entry.size(); ++i) {
        const auto bit = ini.Find(kSection, KeyOf(i, "Bit"));
        if (!bit) break;
        TranslateEntry& entry = table.Entry[i];
        entry.Bit = *bit;
        entry.Stg = ini.Find(kSection, KeyOf(i, "Stg")).value_or("");
        // Without the key, as with a stored -1, the entry is not in force.
        entry.Skip = ini.Int32(kSection, KeyOf(i, "Skip")).value_or(-1);
    }
    CompileTranslate(table);
}

void CompileTranslate(TranslateRecord& table) {
    table.TranslateCount = 0;
    for (TranslateEntry& entry : table.Entry) {
        entry.Value = entry.Care = 0;
        if (entry.Bit.Empty() || entry.Skip < 0) continue;
        ++table.TranslateCount;
        Compile(entry);
    }
}

bool LoadTranslateFile(TranslateRecord& table, const std::string& path) {
    const auto ini = IniText::Load(path);
    if (ini) ReadTranslate(table, *ini);
    return ini.has_value();
}

bool SaveTranslateFile(const TranslateRecord& table, Host& host, const std::string& path) {
    AtomicFile file(path);
    const std::string text = TranslateText(table);
    file.Append(text);
    return FinishSave(file, host);
}

}  // namespace zu
