// Pictures of the Timing view in files.
#include <gtest/gtest.h>

#include <QFile>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include "display/Lines.h"
#include "paint/Graphics.h"
#include "paint/RenderFile.h"
#include "support/StartState.h"
#include "support/TempFolder.h"

namespace zu {
namespace {

class Render : public testing::Test {
  protected:
    Render() : State(test::StartState(15)) {
        for (std::int32_t i = 0; i < 5000; ++i) State->Buffer.Pod[0][i] = static_cast<std::uint8_t>(i / 10);
        State->Identity.Emulated = 0;
    }
    bool Write(const std::string& name, const PictureSize& size = {}) {
        return RenderTimingToFile(*State, size, Folder.File(name), Error);
    }
    QImage Picture(const std::string& name) { return QImage(QString::fromStdString(Folder.File(name))); }

    std::unique_ptr<InstrumentState> State;
    test::TempFolder Folder;
    std::string Error;
};

TEST_F(Render, PngHasTheSizeAskedForAtEachScale) {
    for (const double scale : {1.0, 1.5, 2.0}) {
        ASSERT_TRUE(Write("view.png", {640, 480, scale})) << Error;
        const QImage image = Picture("view.png");
        EXPECT_EQ(image.size(), QSize(static_cast<int>(640 * scale), static_cast<int>(480 * scale)));
        EXPECT_EQ(image.pixelColor(image.width() - 2, image.height() - 2), QColor(Qt::white));
    }
}

TEST_F(Render, PngIsTheSameEachTime) {
    ASSERT_TRUE(Write("a.png"));
    ASSERT_TRUE(Write("b.png"));
    EXPECT_EQ(test::ReadBytes(Folder.File("a.png")), test::ReadBytes(Folder.File("b.png")));
}

TEST_F(Render, SvgShowsWhatPngShows) {
    ASSERT_TRUE(Write("view.svg", {640, 480, 1})) << Error;
    ASSERT_TRUE(Write("view.png", {640, 480, 1})) << Error;
    EnsureGraphics();
    QSvgRenderer renderer(QString::fromStdString(Folder.File("view.svg")));
    ASSERT_TRUE(renderer.isValid());
    EXPECT_EQ(renderer.viewBox(), QRect(0, 0, 640, 480));
    QImage drawn(640, 480, QImage::Format_RGB32);
    drawn.fill(Qt::white);
    QPainter painter(&drawn);
    renderer.render(&painter);
    painter.end();
    const QImage exact = Picture("view.png").convertToFormat(QImage::Format_RGB32);
    // Lines coincide but for their rims; texts differ in hinting. Most pixels are equal.
    int differing = 0;
    for (int y = 0; y < 480; ++y) {
        for (int x = 0; x < 640; ++x) {
            const QColor a = drawn.pixelColor(x, y);
            const QColor b = exact.pixelColor(x, y);
            const int distance =
                std::abs(a.red() - b.red()) + std::abs(a.green() - b.green()) + std::abs(a.blue() - b.blue());
            differing += distance > 200 ? 1 : 0;
        }
    }
    EXPECT_LT(differing, 640 * 480 / 50);
}

TEST_F(Render, ExtensionsAreTakenInAnyCase) {
    EXPECT_TRUE(Write("VIEW.PNG"));
    EXPECT_TRUE(Write("View.Svg"));
}

TEST_F(Render, RefusesOtherNamesAndSizes) {
    EXPECT_FALSE(Write("view.gif"));
    EXPECT_EQ(Error, "the name of a picture must end in .png or .svg");
    EXPECT_FALSE(Write("view"));
    for (const PictureSize& size : {PictureSize{0, 10, 1}, PictureSize{10, -1, 1}, PictureSize{20000, 10, 1},
                                    PictureSize{10, 10, 0}, PictureSize{10, 10, 1e9}}) {
        EXPECT_FALSE(Write("view.png", size));
        EXPECT_EQ(Error, "no picture of this size can be made");
    }
    EXPECT_EQ(Folder.Count(), 0);
}

TEST_F(Render, AFileThatCannotBeWrittenGivesAReasonAndLeavesNothing) {
    std::string error;
    EXPECT_FALSE(RenderTimingToFile(*State, {}, Folder.File("no/such/folder.png"), error));
    EXPECT_FALSE(error.empty());
    EXPECT_EQ(Folder.Count(), 0);
}

TEST_F(Render, WindowsNarrowerThanTheirColumnsPaint) {
    for (const std::int32_t width : {1, 20, 100}) EXPECT_TRUE(Write("narrow.png", {width, 300, 1})) << Error;
}

}  // namespace
}  // namespace zu
