#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <vector>

#include "hw/ClockTable.h"
#include "hw/PositionCounter.h"
#include "hw/RegisterTables.h"
#include "hw/TriggerCompile.h"
#include "hw/UsbLink.h"
#include "hw/sim/SimScenes.h"

// The tables of the manual say what the code does.

namespace zu::test {
namespace {

using Cells = std::vector<std::string>;

std::string Trim(const std::string& text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

/// Rows of the table whose heading begins with `heading`.
std::vector<Cells> Table(const std::string& heading) {
    std::ifstream file(std::string(ZU_TEST_DATA) + "/../../docs/REGISTERS.md");
    std::vector<Cells> rows;
    bool inside = false;
    for (std::string line; std::getline(file, line);) {
        if (line.rfind("| " + heading, 0) == 0) {
            inside = true;
            continue;
        }
        if (!inside || line.rfind("|---", 0) == 0) continue;
        if (line.empty() || line[0] != '|') break;
        Cells cells;
        std::istringstream in(line.substr(1));
        for (std::string cell; std::getline(in, cell, '|');) cells.push_back(Trim(cell));
        rows.push_back(cells);
    }
    return rows;
}

TEST(Manual, RegisterOffsets) {
    const auto rows = Table("Register | Offset");
    ASSERT_EQ(rows.size(), kRegisterOffset.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(rows[i][0], "R" + std::to_string(i));
        EXPECT_EQ(rows[i][1], "+" + std::to_string(kRegisterOffset[i]));
    }
}

std::string Hex(std::uint32_t value, int digits) {
    std::ostringstream out;
    out << std::uppercase << std::hex;
    out.width(digits);
    out.fill('0');
    out << value;
    return out.str();
}

TEST(Manual, ClockTable) {
    std::map<int, Cells> rows;
    for (const Cells& cells : Table("Rate code")) rows[std::stoi(cells[0])] = cells;
    for (int rate = 0; rate < kRateCodes; ++rate) {
        const ClockRow row = ClockRowOf(rate);
        ASSERT_EQ(rows.count(rate) == 1, row.Selector >= 0) << rate;
        if (row.Selector < 0) continue;
        const Cells expected{std::to_string(rate),
                             std::to_string(row.Selector),
                             Hex(row.Normal.Word, 6),
                             std::to_string(row.Normal.Counter0),
                             std::to_string(row.Normal.Counter1),
                             Hex(row.Mode3.Word, 6),
                             std::to_string(row.Mode3.Counter0),
                             std::to_string(row.Mode3.Counter1)};
        EXPECT_EQ(rows[rate], expected);
    }
}

TEST(Manual, UsbCommands) {
    const std::pair<UsbCommand, const char*> commands[] = {
        {UsbCommand::BulkHeader, "BulkHeader"},     {UsbCommand::Registers, "Registers"},
        {UsbCommand::ReadRegister, "ReadRegister"}, {UsbCommand::ReadStatus, "ReadStatus"},
        {UsbCommand::WriteTest, "WriteTest"},       {UsbCommand::SetUp, "SetUp"},
        {UsbCommand::ReadIdentity, "ReadIdentity"}};
    const auto rows = Table("Command");
    ASSERT_EQ(rows.size(), std::size(commands));
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(rows[i][0], Hex(static_cast<std::uint32_t>(commands[i].first), 2));
        EXPECT_EQ(rows[i][2], commands[i].second);
    }
}

std::vector<int> Numbers(const std::string& text) {
    std::istringstream in(text);
    std::vector<int> numbers;
    for (int number = 0; in >> number;) numbers.push_back(number);
    return numbers;
}

TEST(Manual, BlankedLanes) {
    const auto rows = Table("Types | Rates 1, 2");
    ASSERT_EQ(rows.size(), 2U);
    for (int type = 0; type < 28; ++type) {
        const Cells& row = rows[type >= 11 && type <= 15 ? 0 : 1];
        for (int rate = 0; rate < kRateCodes; ++rate) {
            for (int clockType = 0; clockType < 8; ++clockType) {
                CaptureSetup setup;
                setup.HardwareType = static_cast<std::uint8_t>(type);
                setup.ClockRate = static_cast<std::uint8_t>(rate);
                setup.ClockType = static_cast<std::uint8_t>(clockType);
                const bool fast = rate >= 1 && rate <= 4 && (clockType == 0 || row[3] == "any");
                int lanes = 0;
                for (const int lane : Numbers(fast ? row[rate <= 2 ? 1 : 2] : "")) lanes |= 1 << lane;
                EXPECT_EQ(BlankedLanes(setup), lanes) << type << " " << rate << " " << clockType;
            }
        }
    }
}

TEST(Manual, PositionRanges) {
    for (int type = 0; type < 28; ++type) {
        for (int mode = 0; mode < 12; ++mode) {
            CaptureSetup setup;
            setup.HardwareType = static_cast<std::uint8_t>(type);
            setup.HardwareMode = static_cast<std::uint8_t>(mode);
            setup.ClockRate = 5;
            const int latency = mode == 3 ? 32 : 16;
            std::int64_t limit = INT64_MAX;
            std::int64_t offset = 0;
            for (const Cells& row : Table("Memory mode | Types")) {
                const std::vector<int> types = Numbers(row[1]);
                const bool listed = row[1] == "all" || std::count(types.begin(), types.end(), type) != 0;
                const std::string name = mode <= 1 ? std::to_string(mode) : "others";
                if (row[0] != name || !listed) continue;
                limit = std::stoll(row[2], nullptr, 16);
                offset = std::stoll(row[3], nullptr, 16);
            }
            for (const std::int32_t position : {0, 100, 8170, 8300, 40000, 200000, 600000}) {
                const std::int64_t count = (position + latency) / 2;
                EXPECT_EQ(PositionValue(setup, position), std::min(count, limit) + offset)
                    << type << " " << mode;
            }
        }
    }
}

TEST(Manual, Scenes) {
    const auto rows = Table("Scene | Shows");
    ASSERT_EQ(rows.size(), kSimScenes.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(rows[i][0], kSimScenes[i].Name);
        EXPECT_EQ(rows[i][1], kSimScenes[i].Description);
    }
}

}  // namespace
}  // namespace zu::test
