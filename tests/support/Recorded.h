#pragma once

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

namespace zu::test {

inline std::vector<std::string> LinesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

/// The first places where two texts differ, a few lines each.
inline std::string DiffOf(const std::string& expected, const std::string& actual) {
    constexpr int kMost = 12;
    const auto want = LinesOf(expected);
    const auto got = LinesOf(actual);
    std::ostringstream out;
    int told = 0;
    for (std::size_t i = 0; i < std::max(want.size(), got.size()) && told < kMost; ++i) {
        const std::string w = i < want.size() ? want[i] : "(end)";
        const std::string g = i < got.size() ? got[i] : "(end)";
        if (w == g) continue;
        ++told;
        out << "line " << i + 1 << "\n  - " << w.substr(0, 200) << "\n  + " << g.substr(0, 200) << "\n";
    }
    out << want.size() << " lines recorded, " << got.size() << " drawn\n";
    return out.str();
}

/// Names whose recordings are to be rewritten: ZU_REBASELINE, separated by blanks.
inline bool Rebaselining(const std::string& name) {
    const char* names = std::getenv("ZU_REBASELINE");
    if (names == nullptr) return false;
    std::istringstream in(names);
    for (std::string each; in >> each;) {
        if (each == name) return true;
    }
    return false;
}

/// Compares a drawing with the recording tests/data/draw/<name>.txt. A mismatch leaves <name>.txt.actual
/// beside it; scripts/rebaseline rewrites named recordings.
inline void ExpectRecorded(const std::string& name, const std::string& actual) {
    const std::filesystem::path file = std::filesystem::path(ZU_TEST_DATA) / "draw" / (name + ".txt");
    const std::filesystem::path left = file.string() + ".actual";
    if (Rebaselining(name)) {
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << actual;
        std::filesystem::remove(left);
        return;
    }
    std::ifstream in(file, std::ios::binary);
    const std::string expected{std::istreambuf_iterator<char>(in), {}};
    if (in.is_open() && expected == actual) return;
    std::ofstream(left, std::ios::binary) << actual;
    ADD_FAILURE() << "drawing " << name << (in.is_open() ? " differs:\n" : " has no recording:\n")
                  << DiffOf(expected, actual) << "drawn: " << left;
}

}  // namespace zu::test
