#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/CommandLine.h"
#include "core/Frame.h"
#include "core/Startup.h"
#include "files/Ini.h"
#include "support/Bench.h"

namespace zu::test {

/// A one-board instrument of 32K at an ISA address: it echoes what presence asks and names its family.
class OneBoard : public PortIo {
  public:
    std::uint16_t Base = 0x210;
    int Writes = 0;
    bool Present = true;

    void Out8(std::uint16_t port, std::uint8_t value) override {
        ++Writes;
        if (port == Base + 1) echo_ = value & 1;
    }
    std::uint8_t In8(std::uint16_t port) override {
        if (!Present) return 0xFF;
        if (port == Base + 1) return static_cast<std::uint8_t>(0x20 | (echo_ << 7));  // class 1
        if (port == Base + 2) return 0;                                               // the later family
        return 0xFF;
    }
    void InString(std::uint16_t, PortUnit, std::span<std::uint8_t>) override {}

  private:
    unsigned echo_ = 0;
};

/// A start of the program from its command line and its preferences.
struct Program : Bench {
    explicit Program(std::vector<std::string> args = {}, const std::string& preferences = {}) {
        args.insert(args.begin(), "zu");
        End = ParseCommandLine(args, State->Files.AppDir, State->Command);
        if (!preferences.empty()) Folder.Write("WRoach.ini", preferences);
    }

    /// A board behind direct port access.
    void Attach(OneBoard& board) {
        App.Platform.PlatformId = 1;
        Hardware.Seams.Ports = &board;
    }
    void Run() {
        CreateFrame(App);
        RunStartupSequence(App);
    }
    /// Exit code of a start that ends the process.
    int RunToTheEnd() {
        try {
            Run();
        } catch (const ProcessEnded& end) {
            return end.Code;
        }
        return -1;
    }
    [[nodiscard]] std::string Stored(std::string_view section, std::string_view key) const {
        const IniFile ini = IniFile::Load(State->Files.PreferencesFile);
        return std::string(ini.Find(section, key).value_or("(absent)"));
    }

    std::optional<CommandLineEnd> End;
};

inline constexpr const char* kIsaBoard = "[Hardware]\r\nAddress=0\r\nComMode=8\r\n";

inline std::string SettingsOf(int row, const std::string& more = {}) {
    return "\r\n[File]\r\nFileVersion=192\r\n" + more + "\r\n[Hardware]\r\nType=" + std::to_string(row) +
           "\r\nMode=1\r\n";
}

}  // namespace zu::test
