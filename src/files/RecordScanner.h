#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "files/ByteSource.h"
#include "state/Text.h"

namespace zu {

/// Words of a header line; the keyword is word 0. Runs of blanks part them; what does not fit is dropped.
using HeaderWords = std::array<Text<26>, 5>;

/// What may stand behind "[" in a data file, keyword in upper case.
struct HeaderKeyword {
    std::string Word;
    bool EndedByBlank = false;
};

/// Takes bytes behind a "[" up to a blank, a "]" and the line end behind it, or 81 of them; nothing at the
/// end of the file. The scanner knows no lines: an opening bracket anywhere, inside a name too, is looked at.
std::optional<HeaderKeyword> TakeKeyword(ByteSource& source);

/// How a header line ends once its "]" has been taken.
enum class HeaderEnd : std::uint8_t {
    Text,    ///< as a keyword: one byte, a second one if the first is CR or LF
    Payload  ///< LF, CR LF or CR CR LF; of other ends the byte taken last is lost
};
/// Takes the rest of a header line, at most 81 bytes, and its end; nothing at the end of the file.
std::optional<HeaderWords> TakeWords(ByteSource& source, HeaderEnd end);

/// Passes over a comment: up to its "]", at most 80 bytes.
void SkipComment(ByteSource& source);

}  // namespace zu
