// The cursor window.
#include <gtest/gtest.h>

#include <QComboBox>
#include <QLabel>
#include <QRadioButton>
#include <QToolButton>

#include "core/Capture.h"
#include "display/CursorWindow.h"
#include "ui/Desk.h"

namespace zu::test {
namespace {

class CursorDesk : public StartedDesk {
  public:
    template <typename Widget>
    Widget& Find(const QString& name) {
        auto* found = View().Child(WindowId::Cursor)->findChild<Widget*>(name);
        EXPECT_NE(found, nullptr) << name.toStdString();
        return *found;
    }
    QString Place(int item) { return Find<QLabel>(QStringLiteral("Place%1").arg(item)).text(); }
};

TEST(CursorDlg, ShowsPlacesInTime) {
    CursorDesk desk;
    EXPECT_EQ(desk.Place(0), "500.0ns");
    EXPECT_EQ(desk.Place(3), "2.0000us");
    EXPECT_EQ(desk.Place(4), "100.0ns");
    EXPECT_EQ(desk.Find<QComboBox>("Difference0").currentText(), "A-B: -500.0ns");
    EXPECT_EQ(desk.Find<QLabel>("Step3").text(), "10us");
}

TEST(CursorDlg, ShowsPlacesInSamples) {
    CursorDesk desk;
    desk.Find<QRadioButton>("Unit0").click();
    EXPECT_EQ(desk.State().Cursors.CursorDlgMode, 0);
    EXPECT_EQ(desk.Place(0), "50");
    EXPECT_EQ(desk.Find<QComboBox>("Difference0").currentText(), "A-B: -50");
    EXPECT_EQ(desk.Find<QLabel>("Step3").text(), "1,000");
}

TEST(CursorDlg, StepsMoveTheSelectedItem) {
    CursorDesk desk;
    for (std::size_t i = 0; i < kCursorSteps.size(); ++i) {
        desk.State().Cursors.Cur[1] = 200000;
        desk.Find<QRadioButton>("Item1").click();
        desk.Find<QToolButton>(QStringLiteral("Up%1").arg(i)).click();
        EXPECT_EQ(desk.State().Cursors.Cur[1], 200000 + kCursorSteps[i].Samples);
        desk.Find<QToolButton>(QStringLiteral("Down%1").arg(i)).click();
        EXPECT_EQ(desk.State().Cursors.Cur[1], 200000);
        EXPECT_EQ(desk.Find<QToolButton>(QStringLiteral("Up%1").arg(i)).toolTip().toStdString(),
                  kCursorSteps[i].ToolTip);
    }
    desk.Find<QRadioButton>("Item5").click();
    desk.Find<QToolButton>("Up2").click();
    EXPECT_EQ(desk.State().Timing.TimingDataPos, 100);
    EXPECT_EQ(desk.Place(5), "100");
}

TEST(CursorDlg, TheFiveListsKeepTheirChoice) {
    CursorDesk desk;
    const int defaults[] = {0, 3, 6, 8, 9};
    for (int list = 0; list < 5; ++list) {
        auto& box = desk.Find<QComboBox>(QStringLiteral("Difference%1").arg(list));
        EXPECT_EQ(box.count(), 10);
        EXPECT_EQ(box.currentIndex(), defaults[list]);
    }
    auto& box = desk.Find<QComboBox>("Difference2");
    emit box.activated(4);
    EXPECT_EQ(desk.State().Cursors.CursorMath[2], 4);
}

TEST(CursorDlg, ShowsTheStatusOfTheCapture) {
    CursorDesk desk;
    Go(desk.View().TheApp());
    EXPECT_EQ(desk.Find<QLabel>("Status").text(), "Go hit");
    Stop(desk.View().TheApp());
    EXPECT_EQ(desk.Find<QLabel>("Status").text(), "Stop hit (0)");
}

TEST(CursorDlg, SurvivesWhatAFileMayHold) {
    CursorDesk desk;
    desk.State().Cursors.CursorMath = {-1, 99, INT32_MAX, INT32_MIN, 5};
    desk.State().Cursors.Cur.fill(INT32_MIN);
    desk.State().Cursors.CursorDlgMode = -7;
    desk.View().Redraw(WindowId::Cursor);
    EXPECT_EQ(desk.Find<QComboBox>("Difference1").currentIndex(), -1);
    EXPECT_EQ(desk.Find<QComboBox>("Difference4").currentIndex(), 5);
}

}  // namespace
}  // namespace zu::test
