// Every switch, in any case, and what the program adds to them.
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

#include "core/CommandLine.h"

namespace zu {
namespace {

constexpr const char* kAppDir = "/opt/zu";

struct Parsed {
    CommandOptions Options;
    std::optional<CommandLineEnd> End;
};

Parsed Parse(std::vector<std::string> args) {
    args.insert(args.begin(), "zu");
    Parsed parsed;
    parsed.End = ParseCommandLine(args, kAppDir, parsed.Options);
    return parsed;
}

TEST(CommandLine, WithoutArgumentsLeavesTheDefaults) {
    const CommandOptions options = Parse({}).Options;
    EXPECT_EQ(options.NoIoSwitch, 1);
    EXPECT_EQ(options.CmdNumber, 1);
    EXPECT_EQ(options.IoModelFlag, (std::array<std::uint8_t, 3>{0, 0, 0}));
    EXPECT_EQ(options.CmdAutoGo, 0);
    EXPECT_EQ(options.CmdTimerPeriod, 0);
    EXPECT_EQ(options.CmdPid, 0);
    EXPECT_EQ(options.CmdExitAfterCapture, 0);
    EXPECT_EQ(options.CmdReturnZuStat, 0);
    EXPECT_TRUE(options.CmdLoadFile.empty());
    EXPECT_TRUE(options.CmdCsvFile.empty());
    EXPECT_TRUE(options.DocumentFile.empty());
    EXPECT_EQ(options.ModelRow, -1);
}

class PidSwitch : public testing::TestWithParam<std::tuple<int, int>> {};

TEST_P(PidSwitch, SetsProductAndIoModel) {
    const auto [family, model] = GetParam();
    const std::string digits = "0" + std::to_string(family) + "2" + std::to_string(5 + model);
    const CommandOptions options = Parse({"-pid_" + digits}).Options;
    EXPECT_EQ(options.CmdPid, std::stoul(digits, nullptr, 16));
    EXPECT_EQ(options.NoIoSwitch, 0);
    for (int flag = 0; flag < 3; ++flag) {
        EXPECT_EQ(options.IoModelFlag[static_cast<std::size_t>(flag)], flag == model ? 1 : 0);
    }
}

INSTANTIATE_TEST_SUITE_P(All, PidSwitch, testing::Combine(testing::Range(0, 9), testing::Range(0, 3)));

TEST(CommandLine, OtherProductIdsAreNoSwitches) {
    for (const char* argument : {"-PID_0925", "-PID_0028", "-PID_0024", "-PID_25"}) {
        EXPECT_EQ(Parse({argument}).Options.CmdPid, 0) << argument;
    }
}

TEST(CommandLine, NamesTheThreeIoModels) {
    constexpr const char* kNames[] = {"-PERCHSMALLA", "-PerchWideA", "-perchwideb"};
    for (std::size_t model = 0; model < 3; ++model) {
        const CommandOptions options = Parse({kNames[model]}).Options;
        EXPECT_EQ(options.IoModelFlag[model], 1);
        EXPECT_EQ(options.NoIoSwitch, 0);
        EXPECT_EQ(options.CmdPid, 0);
    }
}

TEST(CommandLine, Timer500Gives200) {
    EXPECT_EQ(Parse({"-TIMER100"}).Options.CmdTimerPeriod, 100);
    EXPECT_EQ(Parse({"-TIMER200"}).Options.CmdTimerPeriod, 200);
    for (const char* argument : {"-TIMER500", "-timer500", "-TiMeR500"}) {
        EXPECT_EQ(Parse({argument}).Options.CmdTimerPeriod, 200) << argument;
    }
}

TEST(CommandLine, NumbersAreStoredAndNothingElse) {
    for (int number = 1; number <= 10; ++number) {
        const CommandOptions options = Parse({"-" + std::to_string(number)}).Options;
        EXPECT_EQ(options.CmdNumber, number);
        EXPECT_EQ(options.NoIoSwitch, 1);
    }
    EXPECT_EQ(Parse({"-11"}).Options.CmdNumber, 1);
    EXPECT_EQ(Parse({"-0"}).Options.CmdNumber, 1);
}

TEST(CommandLine, SetsItsThreeFlags) {
    EXPECT_EQ(Parse({"-g"}).Options.CmdAutoGo, 1);
    EXPECT_EQ(Parse({"-exitAfterCapture"}).Options.CmdExitAfterCapture, 1);
    EXPECT_EQ(Parse({"-ReturnZuStat"}).Options.CmdReturnZuStat, 1);
}

TEST(CommandLine, AllSwitchesCountAndTheLastOfAKindWins) {
    const CommandOptions options = Parse({"-G", "-TIMER100", "-PID_0325", "-TIMER200", "-7"}).Options;
    EXPECT_EQ(options.CmdAutoGo, 1);
    EXPECT_EQ(options.CmdTimerPeriod, 200);
    EXPECT_EQ(options.CmdPid, 0x0325);
    EXPECT_EQ(options.CmdNumber, 7);
}

TEST(CommandLine, ComparesTheProgramsOwnNameToo) {
    CommandOptions options;
    const std::vector<std::string> args{"-g"};
    ParseCommandLine(args, kAppDir, options);
    EXPECT_EQ(options.CmdAutoGo, 1);
    EXPECT_TRUE(options.DocumentFile.empty());
}

TEST(LoadFileSwitch, UpperCasesTheNameAndCompletesABareOne) {
    EXPECT_EQ(Parse({"-Ldemo.zu"}).Options.CmdLoadFile, "/opt/zu/DEMO.ZU");
    EXPECT_EQ(Parse({"-ldemo.zu"}).Options.CmdLoadFile, "/opt/zu/DEMO.ZU");
    EXPECT_EQ(Parse({"-Ldir/demo.zu"}).Options.CmdLoadFile, "DIR/DEMO.ZU");
    EXPECT_EQ(Parse({"-L./demo.zu"}).Options.CmdLoadFile, "./DEMO.ZU");
    EXPECT_EQ(Parse({"-L/demo.zu"}).Options.CmdLoadFile, "/DEMO.ZU");
    EXPECT_EQ(Parse({"-Lc:\\data\\demo.zu"}).Options.CmdLoadFile, "C:\\DATA\\DEMO.ZU");
    EXPECT_EQ(Parse({"-Cdemo.csv"}).Options.CmdCsvFile, "/opt/zu/DEMO.CSV");
    EXPECT_EQ(Parse({"-cout/demo.csv"}).Options.CmdCsvFile, "OUT/DEMO.CSV");
}

TEST(LoadFileSwitch, TakesWhateverFollowsItsLetter) {
    const CommandOptions options = Parse({"-list", "-color"}).Options;
    EXPECT_EQ(options.CmdLoadFile, "/opt/zu/IST");
    EXPECT_EQ(options.CmdCsvFile, "/opt/zu/OLOR");
}

TEST(PositionalName, IsKeptAsTyped) {
    EXPECT_EQ(Parse({"Captures/Spi Flash.zu"}).Options.DocumentFile, "Captures/Spi Flash.zu");
    EXPECT_EQ(Parse({"-G", "a.zu", "b.zu"}).Options.DocumentFile, "a.zu") << "the first one opens";
    EXPECT_EQ(Parse({"--", "-odd.zu"}).Options.DocumentFile, "-odd.zu");
    EXPECT_TRUE(Parse({"--", "-Lodd.zu"}).Options.CmdLoadFile.empty());
}

TEST(PositionalName, IsNotTheValueOfAToolkitOption) {
    EXPECT_EQ(Parse({"-platform", "offscreen", "a.zu"}).Options.DocumentFile, "a.zu");
    EXPECT_EQ(Parse({"-style", "fusion"}).Options.DocumentFile, "");
    EXPECT_EQ(Parse({"-platform"}).Options.DocumentFile, "");
}

TEST(ModelOption, TakesARowOrAName) {
    EXPECT_EQ(Parse({"--model=13"}).Options.ModelRow, 13);
    EXPECT_EQ(Parse({"--model=Roach80L"}).Options.ModelRow, 14);
    EXPECT_EQ(Parse({"--model", "dace_128"}).Options.ModelRow, 17);
}

TEST(ModelOption, RefusesAModelThatIsNot) {
    for (const char* argument : {"--model=99", "--model=21", "--model=Toaster", "--model=", "--model"}) {
        const Parsed parsed = Parse({argument});
        ASSERT_TRUE(parsed.End) << argument;
        EXPECT_EQ(parsed.End->ExitCode, 2);
        EXPECT_TRUE(parsed.End->OnError);
        EXPECT_NE(parsed.End->Text.find("Usage: zu"), std::string::npos);
    }
}

TEST(SimulateOption, KeepsItsText) {
    EXPECT_EQ(Parse({"--simulate=Roach160L@usb"}).Options.Simulate, "Roach160L@usb");
    EXPECT_EQ(Parse({"--simulate"}).End->ExitCode, 2);
}

TEST(LongOption, HelpAndVersionPrintAndEnd) {
    const auto help = Parse({"--help"}).End;
    ASSERT_TRUE(help);
    EXPECT_EQ(help->ExitCode, 0);
    EXPECT_FALSE(help->OnError);
    EXPECT_EQ(help->Text, UsageText());
    const auto version = Parse({"a.zu", "--version"}).End;
    ASSERT_TRUE(version);
    EXPECT_EQ(version->ExitCode, 0);
    EXPECT_EQ(version->Text, VersionLine("zu"));
    EXPECT_EQ(version->Text.rfind("zu ", 0), 0U);
    EXPECT_EQ(version->Text.back(), '\n');
}

TEST(LongOption, AnUnknownOneEndsWithUsage) {
    const auto end = Parse({"--colour"}).End;
    ASSERT_TRUE(end);
    EXPECT_EQ(end->ExitCode, 2);
    EXPECT_TRUE(end->OnError);
    EXPECT_EQ(end->Text, "zu: unknown option --colour\n\n" + UsageText());
}

TEST(LongOption, HelpNamesEverySwitch) {
    for (const char* name :
         {"--model", "--simulate", "--screenshot", "--help", "--version", "-LNAME", "-CNAME", "-G ",
          "-EXITAFTERCAPTURE", "-RETURNZUSTAT", "-TIMER100, -TIMER200, -TIMER500", "-PID_0025 to -PID_0827",
          "-PERCHSMALLA, -PERCHWIDEA, -PERCHWIDEB", "-1 to -10"}) {
        EXPECT_NE(UsageText().find(name), std::string::npos) << name;
    }
}

// --- Hostile arguments ---------------------------------------------------------------------------------

std::string Upper(std::string text) {
    for (char& c : text) {
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    }
    return text;
}

/// What one argument with a single dash does, found by spelling every switch out.
void ApplySlowly(const std::string& argument, CommandOptions& options) {
    const std::string text = Upper(argument);
    for (std::size_t model = 0; model < 3; ++model) {
        bool named = text == std::vector<std::string>{"-PERCHSMALLA", "-PERCHWIDEA", "-PERCHWIDEB"}[model];
        for (unsigned family = 0; family < 9; ++family) {
            const std::string digits = "0" + std::to_string(family) + "2" + std::to_string(5 + model);
            if (text != "-PID_" + digits) continue;
            options.CmdPid = static_cast<std::uint16_t>(std::stoul(digits, nullptr, 16));
            named = true;
        }
        if (!named) continue;
        options.IoModelFlag[model] = 1;
        options.NoIoSwitch = 0;
    }
    if (text == "-TIMER100") options.CmdTimerPeriod = 100;
    if (text == "-TIMER200" || text == "-TIMER500") options.CmdTimerPeriod = 200;
    for (std::uint8_t number = 1; number <= 10; ++number) {
        if (text == "-" + std::to_string(number)) options.CmdNumber = number;
    }
    if (text == "-G") options.CmdAutoGo = 1;
    if (text == "-EXITAFTERCAPTURE") options.CmdExitAfterCapture = 1;
    if (text == "-RETURNZUSTAT") options.CmdReturnZuStat = 1;
    if (text.size() < 2 || (text[1] != 'L' && text[1] != 'C')) return;
    std::string name = text.substr(2);
    if (name.find_first_of("/\\") == std::string::npos) name = std::string(kAppDir) + "/" + name;
    (text[1] == 'L' ? options.CmdLoadFile : options.CmdCsvFile) = name;
}

std::string Told(const CommandOptions& options) {
    std::string text = options.CmdLoadFile + "|" + options.CmdCsvFile + "|" + options.DocumentFile;
    for (const int number : {int{options.NoIoSwitch}, int{options.CmdNumber}, int{options.IoModelFlag[0]},
                             int{options.IoModelFlag[1]}, int{options.IoModelFlag[2]}, int{options.CmdAutoGo},
                             int{options.CmdTimerPeriod}, int{options.CmdPid},
                             int{options.CmdExitAfterCapture}, int{options.CmdReturnZuStat}}) {
        text += "|" + std::to_string(number);
    }
    return text;
}

/// A switch, half a switch, or bytes that are none.
std::string AnyArgument(std::mt19937& random) {
    const std::vector<std::string> pieces{"PERCHSMALLA",
                                          "perchwideb",
                                          "PID_",
                                          "0025",
                                          "0827",
                                          "0928",
                                          "timer",
                                          "100",
                                          "500",
                                          "1",
                                          "10",
                                          "11",
                                          "g",
                                          "exitaftercapture",
                                          "ReturnZuStat",
                                          "L",
                                          "c",
                                          "/",
                                          "\\",
                                          "..",
                                          "a b",
                                          "%s%n",
                                          "\xff\x80",
                                          std::string(5000, 'x'),
                                          std::string(1, '\0')};
    std::string text = "-";
    const auto count = random() % 4;
    for (unsigned i = 0; i < count; ++i) text += pieces[random() % pieces.size()];
    return text;
}

TEST(CommandLine, AnyMixOfArgumentsDoesWhatEachDoesAlone) {
    std::mt19937 random(7);
    for (int round = 0; round < 20000; ++round) {
        std::vector<std::string> args;
        CommandOptions expected;
        const auto count = random() % 5;
        for (unsigned i = 0; i < count; ++i) {
            args.push_back(AnyArgument(random));
            ApplySlowly(args.back(), expected);
        }
        const Parsed parsed = Parse(args);
        ASSERT_FALSE(parsed.End);
        ASSERT_EQ(Told(parsed.Options), Told(expected)) << testing::PrintToString(args);
    }
}

TEST(LoadFileSwitch, WithoutANameNamesTheProgramsFolder) {
    EXPECT_EQ(Parse({"-L"}).Options.CmdLoadFile, "/opt/zu/");
    EXPECT_EQ(Parse({"-c"}).Options.CmdCsvFile, "/opt/zu/");
}

TEST(CommandLine, UnknownSwitchesArePassedOver) {
    const Parsed parsed = Parse({"-X", "-", "-TIMER300", ""});
    EXPECT_FALSE(parsed.End);
    EXPECT_EQ(parsed.Options.CmdTimerPeriod, 0);
}

TEST(CommandLine, NoArgumentsAtAllAreNoFailure) {
    CommandOptions options;
    EXPECT_FALSE(ParseCommandLine({}, kAppDir, options));
}

}  // namespace
}  // namespace zu
