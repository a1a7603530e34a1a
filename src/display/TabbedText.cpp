#include "display/TabbedText.h"

namespace zu {
namespace {

std::string_view Trimmed(std::string_view text) {
    const std::size_t end = text.find_last_not_of(' ');
    return text.substr(0, end == std::string_view::npos ? 0 : end + 1);
}

}  // namespace

void AppendCell(std::string& text, std::string_view cell) {
    for (const char c : Trimmed(cell)) text += c == '\t' || c == '\n' || c == '\r' || c == '\0' ? ' ' : c;
}

}  // namespace zu
