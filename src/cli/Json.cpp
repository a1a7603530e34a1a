#include "cli/Json.h"

#include <array>
#include <charconv>

#include "cli/TerminalText.h"

namespace zu {
namespace {

constexpr std::size_t kIndent = 2;

/// The escape of a character inside quotes; empty if it stands for itself.
std::string_view ShortEscape(char c) {
    switch (c) {
        case '"':
            return "\\\"";
        case '\\':
            return "\\\\";
        case '\b':
            return "\\b";
        case '\f':
            return "\\f";
        case '\n':
            return "\\n";
        case '\r':
            return "\\r";
        case '\t':
            return "\\t";
        default:
            return {};
    }
}

}  // namespace

void JsonWriter::Key(std::string_view key) {
    Separate();
    Quoted(key);
    text_ += ": ";
    afterKey_ = true;
}

void JsonWriter::String(std::string_view latin1) {
    Separate();
    Quoted(ToUtf8(latin1));
}

void JsonWriter::Path(std::string_view path) {
    Separate();
    Quoted(IsUtf8(path) ? std::string(path) : ToUtf8(path));
}

void JsonWriter::Integer(std::int64_t value) {
    Separate();
    text_ += std::to_string(value);
}

void JsonWriter::Number(double value) {
    Separate();
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    text_.append(digits.data(), end);
}

void JsonWriter::Boolean(bool value) {
    Separate();
    text_ += value ? "true" : "false";
}

void JsonWriter::Null() {
    Separate();
    text_ += "null";
}

void JsonWriter::Begin(char bracket) {
    Separate();
    text_ += bracket;
    filled_.push_back(false);
}

void JsonWriter::End(char bracket) {
    const bool filled = filled_.back();
    filled_.pop_back();
    if (filled) NewLine();
    text_ += bracket;
}

void JsonWriter::Separate() {
    if (afterKey_ || filled_.empty()) {
        afterKey_ = false;
        return;
    }
    if (filled_.back()) text_ += ',';
    filled_.back() = true;
    NewLine();
}

void JsonWriter::NewLine() {
    text_ += '\n';
    text_.append(kIndent * filled_.size(), ' ');
}

void JsonWriter::Quoted(std::string_view utf8) {
    constexpr std::string_view kHex = "0123456789abcdef";
    text_ += '"';
    for (const char c : utf8) {
        const auto byte = static_cast<unsigned char>(c);
        if (const std::string_view escape = ShortEscape(c); !escape.empty()) {
            text_ += escape;
        } else if (byte < 0x20) {
            text_ += "\\u00";
            text_ += kHex[byte >> 4U];
            text_ += kHex[byte & 0xFU];
        } else {
            text_ += c;
        }
    }
    text_ += '"';
}

}  // namespace zu
