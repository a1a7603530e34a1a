// What a group must be for SPI commands to be generated on it.
#include <gtest/gtest.h>

#include "BusState.h"
#include "serial/SpiGenerator.h"
#include "support/ScriptedHost.h"

namespace zu {
namespace {

using test::BusState;
using test::ScriptedHost;
using Box = ScriptedHost::Box;

class SpiGenerator : public testing::Test {
  protected:
    SpiGenerator() : bus(16) {
        // Clock, SI and CS on pods 0, 1 and 3, SO on pod 2.
        bus.SetGroup(7, 3, {0, 8, 16, 24});
        bus->Pods.HardwarePod = {1, 2, 0, 1};
    }
    bool Check(int group = 7) { return SpiGroupCanGenerate(*bus, host, group); }
    BusState bus;
    ScriptedHost host;
};

TEST_F(SpiGenerator, AGoodGroupPassesSilently) {
    EXPECT_TRUE(Check());
    EXPECT_TRUE(host.Boxes.empty());
}

TEST_F(SpiGenerator, NoGroupEndsTheCheck) {
    for (const int group : {-1, 30}) EXPECT_FALSE(Check(group));
    const Box box{"SPI group not defined. Click on 'Edit Groups' and create one.", "Error"};
    EXPECT_EQ(host.Boxes, (std::vector<Box>{box, box}));
}

TEST_F(SpiGenerator, EachPodIsToldByItself) {
    const std::vector<std::pair<std::size_t, const char*>> texts{
        {2, "The Pod with the SO Channel must be configured as Logic Analyzer."},
        {1, "The Pod with the SI Channel must be configured as Pattern Generator."},
        {3, "The Pod with the CS Channel must be configured as Pattern Generator."},
        {0, "The Pod with the Clock Channel must be configured as Pattern Generator."}};
    for (const auto& [pod, text] : texts) {
        const auto before = bus->Pods.HardwarePod[pod];
        bus->Pods.HardwarePod[pod] = 3;
        host.Boxes.clear();
        EXPECT_FALSE(Check());
        EXPECT_EQ(host.Boxes, (std::vector<Box>{{text, "SPI Group error"}}));
        bus->Pods.HardwarePod[pod] = before;
    }
}

TEST_F(SpiGenerator, EverythingWrongIsReportedInOrder) {
    bus->Groups[7].Size = 3;
    bus->Groups[7].Channels = {-1, 160, 4000, INT32_MIN};
    EXPECT_FALSE(Check());
    ASSERT_EQ(host.Boxes.size(), 5U);
    EXPECT_EQ(host.Boxes[0],
              (Box{"The SPI group doesn't have 4 channels. Click on 'Edit Groups' and adjust.", "Error"}));
    EXPECT_NE(host.Boxes[1].Text.find("SO Channel"), std::string::npos);
    EXPECT_NE(host.Boxes[2].Text.find("SI Channel"), std::string::npos);
    EXPECT_NE(host.Boxes[3].Text.find("CS Channel"), std::string::npos);
    EXPECT_NE(host.Boxes[4].Text.find("Clock Channel"), std::string::npos);
}

}  // namespace
}  // namespace zu
