// Recordings of real buses on the screen: chosen views, and columns against what others count in them.
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <nlohmann/json.hpp>

#include "display/Cells.h"
#include "display/Measure.h"
#include "files/LoadSupport.h"
#include "serial/SpiDecoder.h"
#include "support/Captures.h"
#include "support/Recorded.h"
#include "support/TimingFixture.h"

namespace zu {
namespace {

using nlohmann::json;

std::unique_ptr<InstrumentState> LoadCapture(const std::string& name) {
    const std::string path = test::CapturePath(name + ".zu").string();
    auto state = test::StartState(HardwareTypeOfFile(path).value_or(13));
    test::ScriptedHost host;
    test::Loader loader{*state, host};
    EXPECT_EQ(loader.Load(path), LoadStatus::Loaded);
    return state;
}

/// The text export beside a capture, read the slow way: the levels of each channel, row by row.
std::map<int, std::vector<bool>> ReadText(const std::string& name) {
    std::ifstream in(test::CapturePath(name + ".csv"));
    const auto split = [](const std::string& line) {
        std::vector<std::string> cells;
        std::stringstream parts(line);
        for (std::string cell; std::getline(parts, cell, ',');) {
            if (!cell.empty() && cell != "\r") cells.push_back(cell);
        }
        return cells;
    };
    std::string line;
    std::getline(in, line);
    const auto head = split(line);
    std::map<int, std::vector<bool>> levels;
    while (std::getline(in, line)) {
        const auto cells = split(line);
        for (std::size_t i = 0; i < cells.size() && i < head.size(); ++i) {
            levels[std::stoi(head[i])].push_back(std::stoi(cells[i]) != 0);
        }
    }
    return levels;
}

std::vector<std::int64_t> EdgesOf(const std::vector<bool>& levels) {
    std::vector<std::int64_t> edges;
    for (std::size_t i = 1; i < levels.size(); ++i) {
        if (levels[i] != levels[i - 1]) edges.push_back(static_cast<std::int64_t>(i));
    }
    return edges;
}

class CaptureViews : public testing::TestWithParam<const char*> {
  protected:
    void SetUp() override {
        ZU_NEEDS_CAPTURES();
        state_ = LoadCapture(GetParam());
        std::ifstream in(test::CapturePath(std::string(GetParam()) + ".oracle.json"));
        oracle_ = json::parse(in);
    }
    [[nodiscard]] ChannelMeasure Measured(int channel) const {
        const SampleRange all = RangeBounds(*state_, -1, channel / 8);
        return MeasureChannel(BindChannel(*state_, channel), static_cast<std::uint8_t>(1 << channel % 8),
                              all);
    }

    std::unique_ptr<InstrumentState> state_;
    json oracle_;
};

INSTANTIATE_TEST_SUITE_P(, CaptureViews, testing::ValuesIn(test::kCaptures),
                         [](const auto& capture) { return std::string(capture.param); });

TEST_P(CaptureViews, CountsAgreeWithTheEdgesThatOthersCount) {
    ASSERT_FALSE(oracle_["channels"].empty());
    for (const auto& [number, facts] : oracle_["channels"].items()) {
        const ChannelMeasure m = Measured(std::stoi(number));
        const int edges = facts["rising"].get<int>() + facts["falling"].get<int>();
        SCOPED_TRACE(number);
        // Whole periods from the first edge on; every phase between two edges has a width.
        EXPECT_EQ(m.Count, edges > 0 ? (edges - 1) / 2 : 0);
        EXPECT_EQ(m.Low.Count + m.High.Count, std::max(edges - 1, 0));
        if (edges == 0) continue;
        EXPECT_EQ(m.FirstEdge, facts["first_change"].get<int>());
        if (edges % 2 == 1) {
            EXPECT_EQ(m.LastEdge, facts["last_change"].get<int>());
        }
        EXPECT_EQ(m.Low.Sum + m.High.Sum, facts["last_change"].get<int>() - facts["first_change"].get<int>());
    }
}

TEST_P(CaptureViews, PeriodsWidthsAndDutyAgreeWithTheTextExport) {
    const auto text = ReadText(GetParam());
    ASSERT_FALSE(text.empty());
    for (const auto& [channel, levels] : text) {
        const auto edges = EdgesOf(levels);
        const ChannelMeasure m = Measured(channel);
        SCOPED_TRACE(channel);
        const std::size_t periods = edges.empty() ? 0 : (edges.size() - 1) / 2;
        ASSERT_EQ(static_cast<std::size_t>(m.Count), periods);
        std::int64_t sum[2] = {};
        std::int64_t least[2] = {};
        std::int64_t most[2] = {};
        std::int64_t paired[2] = {};
        for (std::size_t i = 1; i < edges.size(); ++i) {
            const std::int64_t width = edges[i] - edges[i - 1];
            const int level = levels[static_cast<std::size_t>(edges[i - 1])] ? 1 : 0;
            sum[level] += width;
            least[level] = least[level] == 0 ? width : std::min(least[level], width);
            most[level] = std::max(most[level], width);
            if (i <= 2 * periods) paired[level] += width;
        }
        EXPECT_EQ(m.Low.Sum, sum[0]);
        EXPECT_EQ(m.High.Sum, sum[1]);
        EXPECT_EQ(m.Low.Minimum, least[0]);
        EXPECT_EQ(m.High.Minimum, least[1]);
        EXPECT_EQ(m.Low.Maximum, most[0]);
        EXPECT_EQ(m.High.Maximum, most[1]);
        EXPECT_EQ(m.DutyLow, paired[0]);
        EXPECT_EQ(m.DutyHigh, paired[1]);
        if (periods > 0) {
            EXPECT_EQ(m.LastEdge - m.FirstEdge, edges[2 * periods] - edges[0]);
        }
    }
}

struct ChosenView {
    const char* Capture;
    const char* Name;
    std::int32_t Zoom;
    std::int32_t Position;
};
constexpr ChosenView kViews[] = {
    {"i2c_eeprom_page_write", "capture-i2c-eeprom", -4, 800},
    {"i2c_rtc_ds3231", "capture-i2c-rtc", 1, 40},
    {"microwire_93c66", "capture-microwire", -2, 610},
    {"spi_accel_mode3", "capture-spi-mode3", -1, 46},
    {"spi_flash_read64", "capture-spi-flash", 2, 168},
    {"z80_bus_20mhz", "capture-z80", 2, 1000},
};

class RecordedCapture : public testing::TestWithParam<ChosenView> {};
INSTANTIATE_TEST_SUITE_P(, RecordedCapture, testing::ValuesIn(kViews),
                         [](const auto& view) { return std::string(view.param.Capture); });

TEST_P(RecordedCapture, LooksAsRecorded) {
    ZU_NEEDS_CAPTURES();
    const ChosenView& view = GetParam();
    const auto state = LoadCapture(view.Capture);
    DecodeSPI(*state);
    state->Timing.ScreenZoom = view.Zoom;
    state->Timing.TimingDataPos = view.Position;
    state->Timing.TimingGrid = 0;
    test::ShowColumns(*state, {{2}, {5}, {8}});
    state->Timing.TimingLines = std::min(state->Timing.TimingLines, 6);
    test::ExpectRecorded(view.Name, test::Paint(*state, 520, 300).Canvas.Dump());
}

TEST(CaptureLanes, TheBytesOfTheFlashStandWhereOthersReadThem) {
    ZU_NEEDS_CAPTURES();
    const auto state = LoadCapture("spi_flash_read64");
    DecodeSPI(*state);
    std::ifstream in(test::CapturePath("spi_flash_read64.oracle.json"));
    const json oracle = json::parse(in);
    test::ShowLines(*state, {{160, 0}});
    test::ShowColumns(*state, {});
    state->Timing.ScreenZoom = 1;
    state->Timing.TimingGrid = 0;
    for (const json& byte : oracle["decodes"][0]["bytes"]) {
        const int start = byte["first_edge"].get<int>() - 1;
        const int end = byte["last_edge"].get<int>() - 1;
        state->Timing.TimingDataPos = start;
        const auto painted = test::Paint(*state, end - start + 1, 200);
        // The screen holds exactly this byte: SI's above its lane, SO's above its own.
        EXPECT_EQ(painted.Canvas.TextsAt(63), (std::vector<std::string>{byte["si"].get<std::string>()}));
        EXPECT_EQ(painted.Canvas.TextsAt(101), (std::vector<std::string>{byte["so"].get<std::string>()}));
    }
}

}  // namespace
}  // namespace zu
