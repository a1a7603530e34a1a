#include "cli/TerminalText.h"

#include <cstdint>

namespace zu {
namespace {

bool IsControl(unsigned char c) {
    return c < 0x20 || (c >= 0x7F && c < 0xA0);
}

/// Bytes of the sequence that a first byte announces; 0 for a byte that begins none.
std::size_t SequenceLength(unsigned char first) {
    if (first < 0x80) return 1;
    if (first >= 0xC2 && first < 0xE0) return 2;
    if (first >= 0xE0 && first < 0xF0) return 3;
    return first >= 0xF0 && first < 0xF5 ? 4 : 0;
}

/// Sequences that are longer than need be, surrogates, and what lies beyond the last code point.
bool IsForbidden(unsigned char first, unsigned char second) {
    return (first == 0xE0 && second < 0xA0) || (first == 0xED && second >= 0xA0) ||
           (first == 0xF0 && second < 0x90) || (first == 0xF4 && second >= 0x90);
}

}  // namespace

std::string ToUtf8(std::string_view latin1) {
    std::string text;
    text.reserve(latin1.size());
    for (const char c : latin1) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80) {
            text += c;
        } else {
            text += static_cast<char>(0xC0U | (byte >> 6U));
            text += static_cast<char>(0x80U | (byte & 0x3FU));
        }
    }
    return text;
}

std::string ForTerminal(std::string_view latin1) {
    std::string text(latin1);
    for (char& c : text) {
        if (IsControl(static_cast<unsigned char>(c))) c = '.';
    }
    return ToUtf8(text);
}

bool IsUtf8(std::string_view bytes) {
    for (std::size_t i = 0; i < bytes.size();) {
        const auto first = static_cast<unsigned char>(bytes[i]);
        const std::size_t length = SequenceLength(first);
        if (length == 0 || length > bytes.size() - i) return false;
        for (std::size_t k = 1; k < length; ++k) {
            if ((static_cast<unsigned char>(bytes[i + k]) & 0xC0U) != 0x80U) return false;
        }
        if (length > 2 && IsForbidden(first, static_cast<unsigned char>(bytes[i + 1]))) return false;
        i += length;
    }
    return true;
}

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string_view::npos ? std::string_view{}
                                           : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string Squeezed(std::string_view text) {
    std::string squeezed;
    for (const char c : Trimmed(text)) {
        if (c != ' ' || squeezed.back() != ' ') squeezed += c;
    }
    return squeezed;
}

}  // namespace zu
