#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "cli/Cli.h"

namespace zu::test {

/// What a run of zu-cli left behind.
struct CliRun {
    int Code = -1;
    std::string Out;
    std::string Err;
};

inline CliRun RunZuCli(const std::vector<std::string>& arguments) {
    std::vector<const char*> argv{"zu-cli"};
    for (const std::string& argument : arguments) argv.push_back(argument.c_str());
    std::ostringstream out;
    std::ostringstream err;
    CliRun run;
    run.Code = RunCli(static_cast<int>(argv.size()), argv.data(), out, err);
    run.Out = out.str();
    run.Err = err.str();
    return run;
}

/// A settings block of the 40-channel board with 8192 samples a channel; `more` is put in as it stands.
inline std::string SettingsBlock(const std::string& more = {}) {
    return "\r\n[File]\r\nDateTime=2/29/2024 at 23:59:1\r\nFileVersion=192\r\n"
           "\r\n[Clock]\r\nRateStg=20 MSa  (50 ns)\r\nType=0\r\n"
           "\r\n[Hardware]\r\nType=13\r\nMode=0\r\nMux=0\r\n" +
           more;
}

inline std::string Record(const std::string& target, int first, const std::string& bytes) {
    return "\r\n[Data " + target + " " + std::to_string(first) + " " + std::to_string(bytes.size()) +
           "]\r\n" + bytes;
}

/// A data file of that board.
inline std::string DataFile(const std::string& records, const std::string& moreSettings = {}) {
    return SettingsBlock(moreSettings) + "\r\n[Comment File saved 2/29/2024 at 23:59:1]" +
           "\r\n[Model Roach40LB-128K 0 0]" + records + "\r\n[Settings]\r\n";
}

}  // namespace zu::test
