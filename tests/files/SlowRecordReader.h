#pragma once

#include <cctype>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "state/Catalogue.h"
#include "support/ScriptedHost.h"

namespace zu::test {

/// The records of a data file read in the plainest way: the whole file in memory, one index, one byte after
/// the other. It shares no code with the reader that it is compared with.
class SlowRecordReader {
  public:
    int HardwareType = 0;
    int Emulated = 1;
    int FileVersion = 192;
    int Buffers = 0;
    int DirectionLength = 0;
    std::vector<int> PodModes = std::vector<int>(20);
    std::vector<std::string> Samples = std::vector<std::string>(20);
    std::vector<std::string> Patterns = std::vector<std::string>(20);
    std::string Direction;
    std::vector<ScriptedHost::Box> Boxes;
    std::vector<std::pair<int, int>> Modes;

    void Run(const std::string& file) {
        bytes_ = file;
        bool on = true;
        while (on) {
            const int c = Take();
            if (c < 0) return;
            if (c == '[') on = Header();
        }
    }

  private:
    int Take() { return at_ < bytes_.size() ? static_cast<unsigned char>(bytes_[at_++]) : -1; }

    bool Header() {
        std::string word;
        int end = 0;
        for (int taken = 0; taken < 81 && end == 0; ++taken) {
            const int c = Take();
            if (c < 0) return false;
            if (c == ' ' || c == ']') {
                end = c;
            } else {
                word += static_cast<char>(c < 128 ? std::toupper(c) : c);
            }
        }
        if (end == ']') EndOfText();
        if (word == "SETTINGS") return false;
        if (word == "COMMENT" && end == ' ') Comment();
        if (word == "MODEL") return ModelLine(end == ' ');
        if (word == "DATA") return Data(end == ' ');
        return true;
    }

    void EndOfText() {
        const int c = Take();
        if (c == '\r' || c == '\n') Take();
    }

    void Comment() {
        for (int taken = 0; taken < 80; ++taken) {
            const int c = Take();
            if (c < 0 || c == ']') return;
        }
    }

    /// False at the end of the file.
    bool Words(std::vector<std::string>& words, bool& closed) {
        std::string line;
        closed = false;
        for (int taken = 0; taken < 81 && !closed; ++taken) {
            const int c = Take();
            if (c < 0) return false;
            if (c == ']') {
                closed = true;
            } else {
                line += static_cast<char>(c);
            }
        }
        words = {""};
        for (std::size_t i = 0; i < line.size();) {
            std::size_t to = i;
            while (to < line.size() && line[to] != ' ') ++to;
            if (to > i) words.push_back(line.substr(i, to - i).substr(0, 25));
            i = to + 1;
        }
        words.resize(std::max<std::size_t>(words.size(), 5));
        for (auto& word : words) word = word.substr(0, word.find('\0'));
        return true;
    }

    static long long Number(const std::string& text) {
        std::size_t i = 0;
        while (i < text.size() && (text[i] == ' ' || text[i] == '\t')) ++i;
        bool minus = false;
        if (i < text.size() && (text[i] == '-' || text[i] == '+')) minus = text[i++] == '-';
        long double value = 0;
        while (i < text.size() && text[i] >= '0' && text[i] <= '9') value = value * 10 + (text[i++] - '0');
        if (minus) value = -value;
        if (value > 9.2e18L) return INT64_MAX;
        if (value < -9.2e18L) return INT64_MIN;
        return static_cast<long long>(value);
    }
    static int Clamped(const std::string& text) {
        const long long value = Number(text);
        if (value > INT32_MAX) return INT32_MAX;
        if (value < INT32_MIN) return INT32_MIN;
        return static_cast<int>(value);
    }

    bool ModelLine(bool blank) {
        if (!blank) {
            Boxes.push_back({"", "File Load Error(1)"});
            return false;
        }
        std::vector<std::string> words;
        bool closed = false;
        if (!Words(words, closed)) return false;
        if (closed) EndOfText();
        int row = 0;
        for (int i = 27; i >= 0; --i) {
            if (kModels[static_cast<std::size_t>(i)].FileLabel == words[1]) row = i;
        }
        if (row == HardwareType) {
            Modes.emplace_back(static_cast<std::int8_t>(Number(words[3])),
                               static_cast<std::int8_t>(Number(words[2])));
        } else if (HardwareType == 0 || Emulated == 1) {
            Boxes.push_back({"", "Software running in Demo mode"});
            Emulated = 1;
        }
        return true;
    }

    bool Data(bool blank) {
        std::vector<std::string> words(5);
        bool closed = false;
        if (!blank) Boxes.push_back({"", "File Load Error(4)"});
        if (blank && !Words(words, closed)) return false;
        if (closed && Take() == '\r' && Take() == '\r') Take();
        return Record(words) && blank;
    }

    bool Record(const std::vector<std::string>& words) {
        char kind = 0;
        int index = 0;
        for (int i = 0; i < 20; ++i) {
            if (words[1] == "D" + std::to_string(i)) kind = 'D', index = i;
            if (words[1] == "PG" + std::to_string(i)) kind = 'P', index = i;
        }
        if (words[1] == "IO") kind = 'I';
        if (kind == 0) {
            Boxes.push_back({"Bad data record header.", "File Load Error(3)"});
            return false;
        }
        const auto slot = static_cast<std::size_t>(index);
        if (kind == 'D' && FileVersion < 190 && (PodModes[slot] == 1 || PodModes[slot] == 2)) kind = 'P';
        if (index >= Buffers) {
            Boxes.push_back({"Data buffer not available with this hardware.", "File Load Error(10)"});
            return false;
        }
        const long long first = Clamped(words[2]);
        const long long count = Clamped(words[3]);
        if (kind == 'I') {
            if (first >= 0 && count >= 0 && first + count <= DirectionLength)
                Payload(Direction, first, count);
            return true;
        }
        std::string& buffer = kind == 'D' ? Samples[slot] : Patterns[slot];
        if (first >= 0 && count >= 0 && first + count <= static_cast<long long>(buffer.size())) {
            Payload(buffer, first, count);
        } else {
            TooLong(first, count, index);
        }
        return true;
    }

    void TooLong(long long first, long long count, int index) {
        if (!told_) {
            Boxes.push_back({"Address range[" + std::to_string(first) + ".." + std::to_string(first + count) +
                                 "] to long for buffer[" + std::to_string(index) + "]",
                             "File Load Error(2)"});
        }
        told_ = true;
        for (long long i = 0; i < count && at_ < bytes_.size(); ++i) Take();
    }

    void Payload(std::string& buffer, long long first, long long count) {
        for (long long i = 0; i < count; ++i) {
            const int c = Take();
            if (c < 0) return;
            const auto at = static_cast<std::size_t>(first + i);
            if (at < buffer.size()) buffer[at] = static_cast<char>(c);
        }
    }

    std::string bytes_;
    std::size_t at_ = 0;
    bool told_ = false;
};

}  // namespace zu::test
