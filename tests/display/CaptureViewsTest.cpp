// Recordings of real buses on the screen: chosen views, and columns against what others count in them.
#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <nlohmann/json.hpp>
#include <numeric>

#include "display/Cells.h"
#include "display/Measure.h"
#include "display/SerialPainter.h"
#include "display/SpiPainter.h"
#include "files/LoadSupport.h"
#include "serial/I2cDecoder.h"
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

/// What the columns must say of some edges, worked out one edge at a time.
class Expected {
  public:
    /// Edges of [from, to) of a channel; `period` in ns, 0 for samples.
    Expected(const std::vector<bool>& levels, std::int64_t from, std::int64_t to, double period)
        : period_(period) {
        for (const std::int64_t edge : EdgesOf(levels)) {
            if (edge <= from || edge >= to) continue;
            if (!edges_.empty()) widths_[high_ ? 1 : 0].push_back(edge - edges_.back());
            edges_.push_back(edge);
            high_ = levels[static_cast<std::size_t>(edge)];
        }
    }
    [[nodiscard]] std::vector<std::string> Widths() const {
        std::vector<std::string> texts{std::to_string(Count()), Period()};
        for (const auto& widths : widths_) {
            const auto sum = std::accumulate(widths.begin(), widths.end(), std::int64_t{0});
            const auto count = static_cast<double>(widths.size());
            texts.push_back(Width(widths.empty() ? 0 : static_cast<double>(sum) / count));
        }
        for (const auto& widths : widths_)
            texts.push_back(Width(
                widths.empty() ? 0 : static_cast<double>(*std::min_element(widths.begin(), widths.end()))));
        for (const auto& widths : widths_)
            texts.push_back(Width(
                widths.empty() ? 0 : static_cast<double>(*std::max_element(widths.begin(), widths.end()))));
        return texts;
    }
    [[nodiscard]] std::vector<std::string> Ratios() const {
        std::int64_t low = 0;
        std::int64_t high = 0;
        for (std::size_t i = 0; i < Count(); ++i) {
            low += widths_[0][i];
            high += widths_[1][i];
        }
        if (Count() == 0) return {"-", "-", "-N/A-"};
        const auto all = static_cast<double>(low + high);
        const double hertz = static_cast<double>(Count()) / (all * period_ / 1e9);
        std::string frequency = hertz > 1e6   ? Say("%5.3fMHz", hertz / 1e6)
                                : hertz > 1e3 ? Say("%5.3fKHz", hertz / 1e3)
                                              : Say("%5.3fHz", hertz);
        if (period_ == 0) frequency = "-N/A-";
        return {Say("%.2f%%", 100.0 * static_cast<double>(low) / all),
                Say("%.2f%%", 100.0 * static_cast<double>(high) / all), frequency};
    }

  private:
    [[nodiscard]] std::size_t Count() const { return edges_.empty() ? 0 : (edges_.size() - 1) / 2; }
    [[nodiscard]] std::string Period() const {
        if (Count() == 0) return "0";
        const std::int64_t span = edges_[2 * Count()] - edges_[0];
        const auto count = static_cast<std::int64_t>(Count());
        return Width(period_ > 0 ? static_cast<double>(span / count)
                                 : static_cast<double>(span) / static_cast<double>(count));
    }
    [[nodiscard]] std::string Width(double samples) const {
        if (samples <= 0) return "-";
        if (period_ == 0) return Say("%.2fSa", samples);
        const double unit = period_ < 1e3 ? 1 : 1e3;
        std::string digits = std::to_string(static_cast<std::int64_t>(samples * period_ / unit));
        for (std::size_t at = digits.size(); at > 3; at -= 3) digits.insert(at - 3, ",");
        return digits + (unit == 1 ? "ns" : "us");
    }
    static std::string Say(const char* format, double value) {
        std::array<char, 64> text{};
        std::snprintf(text.data(), text.size(), format, value);
        return text.data();
    }

    double period_;
    bool high_ = false;
    std::vector<std::int64_t> edges_;
    std::array<std::vector<std::int64_t>, 2> widths_;  ///< by level
};

TEST_P(CaptureViews, TheCellsSayWhatTheEdgesGive) {
    constexpr std::uint8_t kBuffer = 0;
    constexpr std::uint8_t kAToB = 1;
    auto& state = *state_;
    const auto cells = [&](int channel, std::initializer_list<ColumnType> types, std::uint8_t range) {
        state.Timing.TimingDisp.fill({});
        std::size_t at = 0;
        for (const ColumnType type : types) {
            state.Timing.TimingDisp[at++] = {static_cast<std::uint8_t>(type), range, 0};
        }
        test::ShowLines(state, {{channel}});
        return test::Paint(state, 1000, 60).Canvas.TextsAt(kHeaderHeight);
    };
    state.Timing.TimingGrid = 0;
    using enum ColumnType;
    const auto text = ReadText(GetParam());
    const auto samples = static_cast<std::int64_t>(text.begin()->second.size());
    state.Cursors.Cur[0] = static_cast<std::int32_t>(samples * 3 / 4);  // crossed
    state.Cursors.Cur[1] = static_cast<std::int32_t>(samples / 4);
    for (const std::int8_t unit : {std::int8_t{1}, std::int8_t{0}}) {
        state.Cursors.CursorDlgMode = unit;
        const double period = unit == 0 ? 0 : oracle_["file_period_ns"].get<double>();
        for (const auto& [channel, levels] : text) {
            SCOPED_TRACE(channel);
            for (const std::uint8_t range : {kBuffer, kAToB}) {
                const Expected expected(levels, range == kBuffer ? 0 : samples / 4,
                                        range == kBuffer ? INT32_MAX : samples * 3 / 4, period);
                EXPECT_EQ(
                    cells(channel,
                          {Count, Period, AvgWidth0, AvgWidth1, MinWidth0, MinWidth1, MaxWidth0, MaxWidth1},
                          range),
                    expected.Widths());
                EXPECT_EQ(cells(channel, {DutyFalling, DutyRising, Frequency}, range), expected.Ratios());
            }
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

class I2cList : public testing::TestWithParam<const char*> {};
INSTANTIATE_TEST_SUITE_P(, I2cList, testing::Values("i2c_eeprom_page_write", "i2c_rtc_ds3231"),
                         [](const auto& capture) { return std::string(capture.param); });

/// Rows of the list as others read the bus: starts, stops, and acknowledges with the byte before them.
std::vector<std::vector<std::string>> ExpectedRows(const json& events) {
    std::vector<std::vector<std::string>> rows;
    std::string value;
    for (const json& found : events) {
        const std::string kind = found["kind"];
        if (kind == "address" || kind == "data") {
            std::array<char, 16> text{};
            const unsigned long byte = std::stoul(found["byte"].get<std::string>(), nullptr, 16);
            std::snprintf(text.data(), text.size(), "(Val=0x%lX)", byte);
            value = text.data();
        }
        if (kind == "start" || kind == "repeat-start") {
            rows.push_back({std::to_string(found["sample"].get<int>()), "START"});
        }
        if (kind == "stop") rows.push_back({std::to_string(found["sample"].get<int>()), "STOP"});
        if (kind == "ack") rows.push_back({std::to_string(found["clock_fall"].get<int>()), "ACK" + value});
        if (kind == "nack") rows.push_back({std::to_string(found["clock_fall"].get<int>()), "NACK" + value});
    }
    return rows;
}

TEST_P(I2cList, ListsWhatOthersReadAtItsSamples) {
    ZU_NEEDS_CAPTURES();
    const auto state = LoadCapture(GetParam());
    ResizeDecodeBuffers(*state);
    ASSERT_TRUE(DecodeI2C(*state));
    state->Serial.SerialMode = 1;
    state->Cursors.Cur.fill(-1);
    state->Cursors.CursorDlgMode = 0;
    state->Serial.SerialFilter = {1, 1, 0, 0, 0, 1, 1, 0, 0, 0, 0};
    const json oracle =
        json::parse(std::ifstream(test::CapturePath(std::string(GetParam()) + ".oracle.json")));
    const auto expected = ExpectedRows(oracle["decodes"][0]["events"]);
    const auto height = static_cast<std::int32_t>(12 * (expected.size() + 5));
    RecorderCanvas canvas(400, height);
    PaintSerial(*state, {400, height}, canvas);
    std::int32_t row = 0;
    for (const auto& texts : expected) EXPECT_EQ(canvas.TextsAt(12 * ++row), texts);
    EXPECT_TRUE(canvas.TextsAt(12 * ++row).empty());
    EXPECT_GT(row, 20);
}

class SpiList : public testing::TestWithParam<const char*> {};
INSTANTIATE_TEST_SUITE_P(, SpiList, testing::Values("spi_flash_read64", "spi_accel_mode3", "microwire_93c66"),
                         [](const auto& capture) { return std::string(capture.param); });

TEST_P(SpiList, ListsTheBytesThatOthersReadAtTheirSamples) {
    ZU_NEEDS_CAPTURES();
    const auto state = LoadCapture(GetParam());
    ResizeDecodeBuffers(*state);
    ASSERT_TRUE(DecodeSPI(*state));
    state->Cursors.Cur.fill(-1);
    state->Cursors.CursorDlgMode = 0;
    const json oracle =
        json::parse(std::ifstream(test::CapturePath(std::string(GetParam()) + ".oracle.json")));
    const json& bytes = oracle["decodes"][0]["bytes"];
    const auto height = static_cast<std::int32_t>(12 * (bytes.size() + 5));
    RecorderCanvas canvas(600, height);
    PaintSpi(*state, {600, height}, canvas);
    std::int32_t row = 0;
    for (const json& byte : bytes) {
        std::array<char, 16> place{};
        std::snprintf(place.data(), place.size(), "%07d", byte["first_edge"].get<int>() - 1);
        EXPECT_EQ(canvas.TextsAt(12 * ++row),
                  (std::vector<std::string>{place.data(), byte["si"], byte["so"]}));
    }
    EXPECT_TRUE(canvas.TextsAt(12 * ++row).empty());
    EXPECT_GT(row, 10);
}

}  // namespace
}  // namespace zu
