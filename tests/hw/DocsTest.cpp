#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <vector>

#include "hw/ClockTable.h"
#include "hw/RegisterTables.h"
#include "hw/UsbLink.h"

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

}  // namespace
}  // namespace zu::test
