#include "core/CommandLine.h"

#include <algorithm>
#include <array>

#include "core/Paths.h"
#include "files/Decimal.h"
#include "files/Paths.h"
#include "hw/sim/SimScenes.h"
#include "hw/sim/SimSpec.h"
#include "state/Catalogue.h"

namespace zu {
namespace {

enum class Effect : std::uint8_t { IoModel, Pid, Timer, Number, AutoGo, ExitAfterCapture, ReturnZuStat };

struct SwitchRow {
    std::string_view Text;
    Effect What;
    int Value;    ///< product id, milliseconds, number
    int Io = -1;  ///< I/O model flag that is set; NoIoSwitch falls with it
};

// "-TIMER500" gives 200, not 500: scripts rely on the faster poll.
constexpr std::array kSwitches{
    SwitchRow{"-PERCHSMALLA", Effect::IoModel, 0, 0},
    SwitchRow{"-PERCHWIDEA", Effect::IoModel, 0, 1},
    SwitchRow{"-PERCHWIDEB", Effect::IoModel, 0, 2},
    SwitchRow{"-PID_0025", Effect::Pid, 0x0025, 0},
    SwitchRow{"-PID_0125", Effect::Pid, 0x0125, 0},
    SwitchRow{"-PID_0225", Effect::Pid, 0x0225, 0},
    SwitchRow{"-PID_0325", Effect::Pid, 0x0325, 0},
    SwitchRow{"-PID_0425", Effect::Pid, 0x0425, 0},
    SwitchRow{"-PID_0525", Effect::Pid, 0x0525, 0},
    SwitchRow{"-PID_0625", Effect::Pid, 0x0625, 0},
    SwitchRow{"-PID_0725", Effect::Pid, 0x0725, 0},
    SwitchRow{"-PID_0825", Effect::Pid, 0x0825, 0},
    SwitchRow{"-PID_0026", Effect::Pid, 0x0026, 1},
    SwitchRow{"-PID_0126", Effect::Pid, 0x0126, 1},
    SwitchRow{"-PID_0226", Effect::Pid, 0x0226, 1},
    SwitchRow{"-PID_0326", Effect::Pid, 0x0326, 1},
    SwitchRow{"-PID_0426", Effect::Pid, 0x0426, 1},
    SwitchRow{"-PID_0526", Effect::Pid, 0x0526, 1},
    SwitchRow{"-PID_0626", Effect::Pid, 0x0626, 1},
    SwitchRow{"-PID_0726", Effect::Pid, 0x0726, 1},
    SwitchRow{"-PID_0826", Effect::Pid, 0x0826, 1},
    SwitchRow{"-PID_0027", Effect::Pid, 0x0027, 2},
    SwitchRow{"-PID_0127", Effect::Pid, 0x0127, 2},
    SwitchRow{"-PID_0227", Effect::Pid, 0x0227, 2},
    SwitchRow{"-PID_0327", Effect::Pid, 0x0327, 2},
    SwitchRow{"-PID_0427", Effect::Pid, 0x0427, 2},
    SwitchRow{"-PID_0527", Effect::Pid, 0x0527, 2},
    SwitchRow{"-PID_0627", Effect::Pid, 0x0627, 2},
    SwitchRow{"-PID_0727", Effect::Pid, 0x0727, 2},
    SwitchRow{"-PID_0827", Effect::Pid, 0x0827, 2},
    SwitchRow{"-TIMER100", Effect::Timer, 100},
    SwitchRow{"-TIMER200", Effect::Timer, 200},
    SwitchRow{"-TIMER500", Effect::Timer, 200},
    SwitchRow{"-1", Effect::Number, 1},
    SwitchRow{"-2", Effect::Number, 2},
    SwitchRow{"-3", Effect::Number, 3},
    SwitchRow{"-4", Effect::Number, 4},
    SwitchRow{"-5", Effect::Number, 5},
    SwitchRow{"-6", Effect::Number, 6},
    SwitchRow{"-7", Effect::Number, 7},
    SwitchRow{"-8", Effect::Number, 8},
    SwitchRow{"-9", Effect::Number, 9},
    SwitchRow{"-10", Effect::Number, 10},
    SwitchRow{"-G", Effect::AutoGo, 1},
    SwitchRow{"-EXITAFTERCAPTURE", Effect::ExitAfterCapture, 1},
    SwitchRow{"-RETURNZUSTAT", Effect::ReturnZuStat, 1},
};

// Options of the window toolkit that take their value from the next argument, which is then no file name.
constexpr std::array<std::string_view, 16> kToolkitOptions{"-platform",
                                                           "-platformpluginpath",
                                                           "-platformtheme",
                                                           "-plugin",
                                                           "-qwindowgeometry",
                                                           "-geometry",
                                                           "-qwindowicon",
                                                           "-icon",
                                                           "-qwindowtitle",
                                                           "-title",
                                                           "-display",
                                                           "-session",
                                                           "-style",
                                                           "-stylesheet",
                                                           "-name",
                                                           "-fontengine"};

void Apply(const SwitchRow& row, CommandOptions& options) {
    if (row.Io >= 0) {
        options.IoModelFlag[static_cast<std::size_t>(row.Io)] = 1;
        options.NoIoSwitch = 0;
    }
    switch (row.What) {
        case Effect::IoModel:
            break;
        case Effect::Pid:
            options.CmdPid = static_cast<std::uint16_t>(row.Value);
            break;
        case Effect::Timer:
            options.CmdTimerPeriod = row.Value;
            break;
        case Effect::Number:
            options.CmdNumber = static_cast<std::uint8_t>(row.Value);
            break;
        case Effect::AutoGo:
            options.CmdAutoGo = 1;
            break;
        case Effect::ExitAfterCapture:
            options.CmdExitAfterCapture = 1;
            break;
        case Effect::ReturnZuStat:
            options.CmdReturnZuStat = 1;
            break;
    }
}

/// What follows "-L" or "-C": completed to the program's directory when it holds none of its own.
std::string FileArgument(std::string_view upper, std::string_view appDir) {
    const std::string_view name = upper.substr(2);
    return FolderOf(name).empty() ? JoinPath(appDir, name) : std::string(name);
}

void CompareWithSwitches(std::string_view argument, std::string_view appDir, CommandOptions& options) {
    const std::string upper = UpperCase(argument);
    for (const SwitchRow& row : kSwitches) {
        if (upper == row.Text) Apply(row, options);
    }
    if (upper.starts_with("-L")) options.CmdLoadFile = FileArgument(upper, appDir);
    if (upper.starts_with("-C")) options.CmdCsvFile = FileArgument(upper, appDir);
}

CommandLineEnd Misuse(const std::string& what) {
    return {2, "zu: " + what + "\n\n" + UsageText(), true};
}

constexpr std::array<std::string_view, 4> kValued{"--model", "--simulate", "--scene", "--screenshot"};

/// Shows scenes where no other instrument is named.
constexpr std::string_view kSceneInstrument = "Roach40L";

std::string SceneNames() {
    std::string names;
    for (const SimScene& scene : kSimScenes) names += " " + std::string(scene.Name);
    return names;
}

/// The arguments behind the program's name, read from the front.
class Reader {
  public:
    Reader(std::span<const std::string> args, std::string_view appDir, CommandOptions& options)
        : args_(args), appDir_(appDir), options_(options) {}

    std::optional<CommandLineEnd> Run() {
        if (!args_.empty()) CompareWithSwitches(args_[0], appDir_, options_);
        for (next_ = 1; next_ < args_.size();) {
            const std::string& argument = args_[next_++];
            if (auto end = Take(argument)) return end;
        }
        if (!options_.Scene.empty() && options_.Simulate.empty()) options_.Simulate = kSceneInstrument;
        return std::nullopt;
    }

  private:
    std::optional<CommandLineEnd> Take(const std::string& argument) {
        if (onlyNames_ || argument.empty() || argument[0] != '-') {
            TakeName(argument);
        } else if (argument == "--") {
            onlyNames_ = true;
        } else if (argument.starts_with("--")) {
            return TakeLong(argument);
        } else {
            CompareWithSwitches(argument, appDir_, options_);
            SkipToolkitValue(argument);
        }
        return std::nullopt;
    }

    void TakeName(const std::string& name) {
        if (options_.DocumentFile.empty()) options_.DocumentFile = name;
    }

    void SkipToolkitValue(std::string_view argument) {
        for (const std::string_view option : kToolkitOptions) {
            if (argument == option && next_ < args_.size()) ++next_;
        }
    }

    std::optional<CommandLineEnd> TakeLong(const std::string& argument) {
        const std::size_t equals = argument.find('=');
        const std::string name = argument.substr(0, equals);
        if (name == "--help") return CommandLineEnd{0, UsageText(), false};
        if (name == "--version") return CommandLineEnd{0, VersionLine("zu"), false};
        if (argument == "--hardware") {
            options_.Simulate.clear();
            options_.Scene.clear();
            return std::nullopt;
        }
        if (std::find(kValued.begin(), kValued.end(), name) == kValued.end())
            return Misuse("unknown option " + argument);
        std::string value;
        if (equals != std::string::npos) {
            value = argument.substr(equals + 1);
        } else if (next_ < args_.size()) {
            value = args_[next_++];
        }
        if (value.empty()) return Misuse("option " + name + " needs a value");
        if (name == "--model") return TakeModel(value);
        if (name == "--simulate") return TakeSimulate(value);
        if (name == "--scene") return TakeScene(value);
        options_.Screenshot = value;
        return std::nullopt;
    }

    std::optional<CommandLineEnd> TakeModel(const std::string& value) {
        const std::optional<int> row = RowOfUserText(value);
        if (!row) return Misuse("no model " + value);
        options_.ModelRow = *row;
        return std::nullopt;
    }

    std::optional<CommandLineEnd> TakeSimulate(const std::string& value) {
        if (!ParseSimulate(value))
            return Misuse("no instrument to simulate " + value + ": " + SimulateChoices());
        options_.Simulate = value;
        return std::nullopt;
    }

    std::optional<CommandLineEnd> TakeScene(const std::string& value) {
        if (FindSimScene(value) == nullptr) return Misuse("no scene " + value + "; there are" + SceneNames());
        options_.Scene = value;
        return std::nullopt;
    }

    std::span<const std::string> args_;
    std::string_view appDir_;
    CommandOptions& options_;
    std::size_t next_ = 1;
    bool onlyNames_ = false;
};

}  // namespace

std::optional<CommandLineEnd> ParseCommandLine(std::span<const std::string> args, std::string_view appDir,
                                               CommandOptions& options) {
    return Reader(args, appDir, options).Run();
}

std::string UsageText() {
    return "Usage: zu [OPTION...] [FILE]\n"
           "\n"
           "Opens the logic analyzer's window. With FILE it opens that file in a viewer of the file's "
           "model.\n"
           "\n"
           "  --model=ROW        view as this model, by catalogue row or name, without asking\n"
           "  --simulate=MODEL[@CABLE]\n"
           "                     attach the simulated instrument behind a cable: isa, byte, epp, epp16,\n"
           "                     epp32 or usb; nothing is simulated without this option or the next\n"
           "  --scene=NAME       show signals of the simulated instrument live, a Roach40L if --simulate\n"
           "                     names no other: bench, counters, clocks, i2c, spi, microwire, glitches\n"
           "                     or noise\n"
           "  --hardware         look for a real instrument, as without any option\n"
           "  --screenshot=FILE  write a picture of the window, without asking anything, and end\n"
           "  --help             print this text and end\n"
           "  --version          print the version and end\n"
           "\n"
           "Switches, in upper or lower case:\n"
           "  -LNAME             load the data file NAME, taken as upper case, from the program's directory\n"
           "                     if NAME holds no directory\n"
           "  -CNAME             load the CSV file NAME in the same way\n"
           "  -G                 press Go at the end of start-up\n"
           "  -EXITAFTERCAPTURE  end the program after the first capture\n"
           "  -RETURNZUSTAT      print whether an instrument was found; end with code 1 if so, else 0\n"
           "  -TIMER100, -TIMER200, -TIMER500\n"
           "                     poll the instrument every 100, 200 or 200 ms\n"
           "  -PID_0025 to -PID_0827\n"
           "                     connect by USB, whatever connection was used last\n"
           "  -PERCHSMALLA, -PERCHWIDEA, -PERCHWIDEB\n"
           "                     keep the entry that identifies the analyzer in the Help menu\n"
           "  -1 to -10          accepted, without effect\n";
}

std::string VersionLine(std::string_view programName) {
    return std::string(programName) + " " ZU_VERSION "\n";
}

}  // namespace zu
