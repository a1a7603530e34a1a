// Recordings of real buses in the real window.
#include <algorithm>
#include <cctype>
#include <gtest/gtest.h>

#include <QMdiArea>

#include "display/Lines.h"
#include "paint/QtCanvas.h"
#include "state/SampleView.h"
#include "support/Captures.h"
#include "ui/Desk.h"

namespace zu::test {
namespace {

/// Levels of the first channel line on the screen, read from the picture at zoom 1, against the samples.
void ExpectTraceOfSamples(Desk& desk, std::int32_t line) {
    const InstrumentState& state = desk.State();
    const Metrics metrics = Metrics::ForScreen(state.Screen.ScreenH);
    std::int32_t top = kHeaderHeight;
    for (std::int32_t i = 0; i < line; ++i) top += RowHeight(state, i, metrics);
    const std::int32_t low = top + RowHeight(state, line, metrics) - kTraceFoot;
    const std::int32_t channel = state.Timing.LineSource[static_cast<std::size_t>(line)];
    const SampleView view = BindChannel(state, channel);
    const QRgb pen = ToQColor(state.Channels.ChannelColor[static_cast<std::size_t>(channel)]).rgb();
    const QImage& picture = desk.Timing().Picture();
    const int left = desk.Timing().View().Axis().Left;
    int compared = 0;
    for (int x = 1; x < 400; ++x) {
        const bool one = (view.At(x) >> (channel % 8) & 1) != 0;
        const bool before = (view.At(x - 1) >> (channel % 8) & 1) != 0;
        if (one != before) continue;  // a stroke covers both levels
        if (picture.pixel(left + x, one ? low : top) == pen) ADD_FAILURE() << "wrong level at " << x;
        compared += picture.pixel(left + x, one ? top : low) == pen ? 1 : 0;
    }
    EXPECT_GT(compared, 300) << "cursors and grid cover a few";
}

std::int32_t FirstChannelLine(const InstrumentState& state) {
    for (std::int32_t line = 0; line < LineCount(state); ++line) {
        if (LineAt(state, line).Kind == LineKind::Channel) return line;
    }
    return -1;
}

TEST(Capture, AFileNameOpensItInAViewerOfItsModelAtOnce) {
    ZU_NEEDS_CAPTURES();
    const std::string file = CapturePath("z80_bus_20mhz.zu").string();
    Desk desk({file});
    desk.Start();
    EXPECT_TRUE(desk.Box.Titles.isEmpty()) << "no dialog";
    EXPECT_TRUE(desk.Box.Seen.isEmpty()) << "no box";
    EXPECT_EQ(desk.State().Identity.HardwareType, 13);
    EXPECT_EQ(desk.Frame().windowTitle().toStdString(), file);
    EXPECT_EQ(desk.State().Channels.ChannelName[24].View(), "/M1");
    EXPECT_EQ(desk.Shown("RatePane"), " 20 MSa  (50 ns)");
    EXPECT_EQ(desk.EntriesOf("File").filter("z80_bus_20mhz.zu").size(), 1) << "it is a recent file now";
}

TEST(Capture, TheSwitchOpensItByItsUpperCasedName) {
    ZU_NEEDS_CAPTURES();
    const std::string file = CapturePath("z80_bus_20mhz.zu").string();
    Desk desk({"--model=13", "-l" + file});
    desk.Start();
    EXPECT_TRUE(desk.Box.Seen.isEmpty());
    std::string upper = file;
    std::transform(upper.begin(), upper.end(), upper.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    EXPECT_EQ(desk.Frame().windowTitle().toStdString(), upper);
    EXPECT_EQ(desk.State().Channels.ChannelName[32].View(), "CLK");
}

TEST(Capture, AMissingFileIsNamedInABox) {
    Desk desk({"--model=15", "-L/nowhere/at/all.zu"});
    desk.Start();
    ASSERT_EQ(desk.Box.Seen.size(), 1);
    EXPECT_EQ(desk.Box.Seen.first(), (Boxes::Box{"/NOWHERE/AT/ALL.ZU", "Error: File did not load"}));
    EXPECT_TRUE(desk.Frame().isVisible()) << "start-up goes on with defaults";
}

TEST(Capture, OnAnotherModelTheUserIsAsked) {
    ZU_NEEDS_CAPTURES();
    Desk desk({"--model=15"});
    desk.Start();
    desk.Box.Answers = {true};
    desk.View().OpenFile(QString::fromStdString(CapturePath("z80_bus_20mhz.zu").string()));
    ASSERT_EQ(desk.Box.Seen.size(), 1);
    EXPECT_EQ(desk.Box.Seen.first().Caption, "Warning");
    EXPECT_EQ(desk.State().Identity.HardwareType, 15) << "Yes aborts the load";
}

TEST(Capture, EachRecordingIsDrawnAsItsSamplesAre) {
    ZU_NEEDS_CAPTURES();
    for (const char* name : kCaptures) {
        Desk desk({CapturePath(std::string(name) + ".zu").string()});
        desk.Start();
        desk.Frame().Area().activeSubWindow();
        desk.State().Timing.ScreenZoom = 1;
        desk.State().Timing.TimingDataPos = 0;
        desk.State().Timing.TimingChPos = 0;
        desk.State().Cursors.Cur = {-1, -1, -1, -1, -1, -1};
        desk.Timing().DataChanged();
        Desk::Settle();
        const std::int32_t line = FirstChannelLine(desk.State());
        ASSERT_GE(line, 0) << name;
        SCOPED_TRACE(name);
        ExpectTraceOfSamples(desk, line);
    }
}

TEST(Capture, EveryZoomPaintsEveryRecording) {
    ZU_NEEDS_CAPTURES();
    for (const char* name : kCaptures) {
        Desk desk({CapturePath(std::string(name) + ".zu").string()});
        desk.Start();
        for (const ZoomStep& step : kZoomTable) {
            desk.View().Execute(ZoomCommand(static_cast<int>(&step - kZoomTable.data())));
            Desk::Settle();
            const QImage& picture = desk.Timing().Picture();
            const int left = desk.Timing().View().Axis().Left;
            const QImage data = picture.copy(left, kHeaderHeight, 400, 300);
            bool drawn = false;
            for (int y = 0; y < data.height() && !drawn; ++y) {
                for (int x = 0; x < data.width() && !drawn; ++x) drawn = data.pixel(x, y) != 0xFFFFFFFF;
            }
            EXPECT_TRUE(drawn) << name << " " << step.MenuText;
        }
    }
}

}  // namespace
}  // namespace zu::test
