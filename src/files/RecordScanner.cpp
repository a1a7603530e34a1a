#include "files/RecordScanner.h"

namespace zu {
namespace {

constexpr int kHeaderBytes = 81;
constexpr int kCommentBytes = 80;

char Upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c;
}

void TakeTextEnd(ByteSource& source) {
    const auto first = source.Next();
    if (first && (*first == '\r' || *first == '\n')) source.Next();
}

void TakePayloadEnd(ByteSource& source) {
    if (source.Next() != '\r') return;
    // CR CR LF is what newline translation makes of CR LF.
    if (source.Next() == '\r') source.Next();
}

void TakeEnd(ByteSource& source, HeaderEnd end) {
    if (end == HeaderEnd::Text) {
        TakeTextEnd(source);
    } else {
        TakePayloadEnd(source);
    }
}

/// Splits at blanks; runs of blanks count as one.
class WordTable {
  public:
    void Add(char c) {
        if (c == ' ') {
            if (!word_.empty()) Close();
        } else {
            word_.push_back(c);
        }
    }
    HeaderWords Take() {
        if (!word_.empty()) Close();
        return words_;
    }

  private:
    void Close() {
        if (used_ < words_.size()) words_[used_++] = word_;
        word_.clear();
    }

    HeaderWords words_;
    std::size_t used_ = 1;  // the keyword is word 0
    std::string word_;
};

}  // namespace

std::optional<HeaderKeyword> TakeKeyword(ByteSource& source) {
    HeaderKeyword keyword;
    for (int i = 0; i < kHeaderBytes; ++i) {
        const auto c = source.Next();
        if (!c) return std::nullopt;
        keyword.EndedByBlank = c == ' ';
        if (keyword.EndedByBlank) break;
        if (c == ']') {
            TakeTextEnd(source);
            break;
        }
        keyword.Word.push_back(Upper(*c));
    }
    return keyword;
}

std::optional<HeaderWords> TakeWords(ByteSource& source, HeaderEnd end) {
    WordTable table;
    for (int i = 0; i < kHeaderBytes; ++i) {
        const auto c = source.Next();
        if (!c) return std::nullopt;
        if (c == ']') {
            TakeEnd(source, end);
            break;
        }
        table.Add(*c);
    }
    return table.Take();
}

void SkipComment(ByteSource& source) {
    for (int i = 0; i < kCommentBytes; ++i) {
        const auto c = source.Next();
        if (!c || c == ']') return;
    }
}

}  // namespace zu
