// Random states through a save and a load.
#include <gtest/gtest.h>

#include "LoadSupport.h"
#include "RandomState.h"
#include "files/SettingsWriter.h"
#include "support/MemoryFile.h"
#include "support/TempFolder.h"

namespace zu {
namespace {

using test::RandomState;
using test::StartState;

constexpr unsigned kRounds = 10;  // of some thousand values each

struct Model {
    int Row;
    int Series;
};
constexpr Model kRows[] = {{13, 2}, {15, 2}, {16, 0}, {27, 5}};

std::string Written(InstrumentState& state) {
    test::ScriptedHost host;
    host.Clock = {2024, 2, 29, 3, 4, 5};
    return SettingsText(state, host);
}

std::unique_ptr<InstrumentState> ReadBack(const std::string& text, const Model& model) {
    auto state = StartState(model.Row, model.Series);
    test::ScriptedHost host;
    ReadSettings(*state, host, IniText::Parse(text));
    return state;
}

/// Where two texts part, for a message that can be read.
std::string Difference(const std::string& a, const std::string& b) {
    const auto [at, other] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    if (at == a.end() && other == b.end()) return {};
    const auto line = [](const std::string& text, std::ptrdiff_t from) {
        const std::size_t start = text.rfind('\n', static_cast<std::size_t>(from));
        const std::size_t first = start == std::string::npos ? 0 : start + 1;
        return testing::PrintToString(text.substr(first, text.find('\n', first) - first));
    };
    return line(a, at - a.begin()) + " became " + line(b, other - b.begin());
}

TEST(RoundTrip, BringsBackEveryByteOfWhatTheFormatKeeps) {
    for (const Model& model : kRows) {
        for (unsigned seed = 0; seed < kRounds; ++seed) {
            const auto state = RandomState(seed, RandomState::Values::Kept).Make(model.Row, model.Series);
            const std::string text = Written(*state);
            const auto back = ReadBack(text, model);
            ASSERT_EQ(Difference(text, Written(*back)), "") << "row " << model.Row << ", seed " << seed;
        }
    }
}

TEST(RoundTrip, SettlesWithTheFirstLoadWhateverTheStateHolds) {
    for (const Model& model : kRows) {
        for (unsigned seed = 0; seed < kRounds; ++seed) {
            const auto state = RandomState(seed, RandomState::Values::Any).Make(model.Row, model.Series);
            const auto once = ReadBack(Written(*state), model);
            const std::string text = Written(*once);
            const auto twice = ReadBack(text, model);
            ASSERT_EQ(Difference(text, Written(*twice)), "") << "row " << model.Row << ", seed " << seed;
        }
    }
}

/// Loads a data file as the controller does, but for the windows.
std::unique_ptr<InstrumentState> Loaded(const std::string& path, std::int32_t length) {
    auto state = StartState(17);
    test::SetLengths(*state, length);
    test::ScriptedHost host;
    EXPECT_TRUE(ReadSettings(*state, host, path));
    EXPECT_EQ(ReadDataFile(*state, host, path, "ZU", false, {}), LoadStatus::Loaded);
    EXPECT_TRUE(host.Boxes.empty());
    return state;
}

TEST(RoundTrip, BringsBackEveryByteOfADataFile) {
    const test::TempFolder folder;
    for (unsigned seed = 0; seed < 40; ++seed) {
        const auto state = RandomState(seed, RandomState::Values::Kept).Make(17, 2);
        state->Identity.HardwareType = 17;
        const auto length = static_cast<std::int32_t>(1 + (seed * 7919) % 70000);
        test::SetLengths(*state, length);
        std::mt19937 random(seed);
        for (int pod = 0; pod < 3; ++pod) {
            for (std::uint8_t& byte : state->Buffer.Samples(pod)) byte = static_cast<std::uint8_t>(random());
            for (std::uint8_t& byte : state->Buffer.Pattern(pod)) byte = static_cast<std::uint8_t>(random());
        }
        // A name with a header in it would be taken for one: the scanner knows no lines.
        for (auto& name : state->Channels.ChannelName) name = "channel";
        test::ScriptedHost host;
        ASSERT_TRUE(WriteDataFile(*state, host, folder.File("x.zu")));
        const auto back = Loaded(folder.File("x.zu"), length);
        ASSERT_TRUE(WriteDataFile(*back, host, folder.File("y.zu")));
        ASSERT_EQ(Difference(test::ReadBytes(folder.File("x.zu")), test::ReadBytes(folder.File("y.zu"))), "")
            << "seed " << seed;
    }
}

}  // namespace
}  // namespace zu
