// Which pixels a drawing touches, at every scale of a desktop.
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include <QImage>
#include <QPainter>

#include "paint/Graphics.h"
#include "paint/ImageCanvas.h"
#include "support/TimingFixture.h"

namespace zu {
namespace {

constexpr QRgb kWhite = 0xFFFFFFFF;
constexpr QRgb kRed = 0xFFFF0000;
constexpr Rgb kStateRed = 0x0000FF;

/// An image with a canvas open on it.
class Sheet {
  public:
    explicit Sheet(double scale, std::int32_t width = 60, std::int32_t height = 40,
                   const Metrics& metrics = Metrics::ForScreen(1080))
        : fonts_((EnsureGraphics(), metrics), scale, true), image_(MakeImage(width, height, scale)) {
        image_.fill(kWhite);
        painter_ = std::make_unique<QPainter>(&image_);
        canvas_ = std::make_unique<ImageCanvas>(image_, *painter_, fonts_, width, height);
        canvas_->SetPen(kStateRed);
    }
    ImageCanvas& Draw() { return *canvas_; }
    [[nodiscard]] const QImage& Image() const { return image_; }
    [[nodiscard]] QRgb At(int x, int y) const { return image_.pixel(x, y); }
    /// Smallest rectangle of device pixels that are not white.
    [[nodiscard]] QRect Ink() const {
        QRect ink;
        for (int y = 0; y < image_.height(); ++y) {
            for (int x = 0; x < image_.width(); ++x) {
                if (image_.pixel(x, y) != kWhite) ink |= QRect(x, y, 1, 1);
            }
        }
        return ink;
    }

  private:
    ScreenFonts fonts_;
    QImage image_;
    std::unique_ptr<QPainter> painter_;
    std::unique_ptr<ImageCanvas> canvas_;
};

TEST(ImageCanvas, LinesCoverWholePixelsAtEveryScale) {
    for (const double scale : {1.0, 1.25, 1.5, 2.0, 3.0}) {
        Sheet sheet(scale);
        sheet.Draw().MoveTo(7, 3);
        sheet.Draw().LineTo(7, 21);
        const int thick = std::max(1, static_cast<int>(scale));
        const QRect ink = sheet.Ink();
        EXPECT_EQ(ink.left(), static_cast<int>(7 * scale)) << scale;
        EXPECT_EQ(ink.width(), thick) << scale;
        EXPECT_EQ(ink.top(), static_cast<int>(3 * scale)) << scale;
        EXPECT_EQ(ink.bottom() + 1, static_cast<int>(21 * scale) + thick) << scale;
        for (int x = ink.left(); x <= ink.right(); ++x) EXPECT_EQ(sheet.At(x, ink.top()), kRed) << scale;
    }
}

TEST(ImageCanvas, APolylineIsTheSameAsItsLines) {
    const Point points[] = {{2, 10}, {9, 10}, {9, 4}, {20, 4}, {25, 12}};
    Sheet whole(2);
    Sheet single(2);
    whole.Draw().Polyline(points);
    single.Draw().MoveTo(2, 10);
    for (const Point& p : points) single.Draw().LineTo(p.X, p.Y);
    for (int y = 0; y < 80; ++y) {
        for (int x = 0; x < 120; ++x) ASSERT_EQ(whole.At(x, y), single.At(x, y)) << x << "," << y;
    }
    EXPECT_EQ(whole.At(40, 8), kRed);
    EXPECT_EQ(whole.At(50, 24), kRed) << "the slanted end";
}

TEST(ImageCanvas, ManyStrokesSideBySideAreTheSameAsTheirLines) {
    test::Random random(3);
    for (int round = 0; round < 300; ++round) {
        const double scale = 1 + round % 3;
        std::vector<Point> points{{random.Below(10), 5 + random.Below(20)}};
        for (int i = 0; i < 120; ++i) {
            Point next = points.back();
            // Mostly a column to the right, up or down between two levels; at times anything.
            if (i % 2 == 0) next.X += random.OneIn(6) ? random.Below(8) - 3 : random.Below(2);
            if (i % 2 == 1) next.Y = random.OneIn(9) ? random.Below(40) : random.OneIn(3) ? 6 : 26;
            if (random.OneIn(40)) next = {random.Below(60), random.Below(40)};
            points.push_back(next);
        }
        Sheet whole(scale);
        Sheet single(scale);
        whole.Draw().Polyline(points);
        single.Draw().MoveTo(points[0].X, points[0].Y);
        for (const Point& p : points) single.Draw().LineTo(p.X, p.Y);
        ASSERT_EQ(whole.Image(), single.Image()) << "round " << round;
    }
}

TEST(ImageCanvas, ABusyTraceIsSolidAtEveryScale) {
    for (const double scale : {0.5, 1.0, 1.25, 1.5, 1.75, 2.0, 2.5, 3.0}) {
        std::vector<Point> points;
        for (std::int32_t x = 10; x < 30; ++x) {
            points.push_back({x, x % 2 == 0 ? 5 : 25});
            points.push_back({x, x % 2 == 0 ? 25 : 5});
        }
        points.push_back({31, points.back().Y});  // flat over column 30
        points.push_back({31, 5});
        points.push_back({31, 25});
        Sheet sheet(scale);
        sheet.Draw().Polyline(points);
        const int middle = static_cast<int>(15 * scale);
        for (int x = static_cast<int>(10 * scale); x <= static_cast<int>(29 * scale); ++x)
            ASSERT_EQ(sheet.At(x, middle), kRed) << "scale " << scale << " x " << x;
        if (scale < 1) continue;
        EXPECT_EQ(sheet.At(static_cast<int>(30 * scale), middle), kWhite) << scale;
        EXPECT_EQ(sheet.At(static_cast<int>(31 * scale), middle), kRed) << scale;
    }
}

TEST(ImageCanvas, AFillLeavesOutItsRightAndLowerEdge) {
    Sheet sheet(1);
    sheet.Draw().FillRect({5, 6, 9, 8}, kStateRed);
    EXPECT_EQ(sheet.Ink(), QRect(5, 6, 4, 2));
    Sheet empty(1);
    empty.Draw().FillRect({9, 6, 5, 8}, kStateRed);
    EXPECT_TRUE(empty.Ink().isEmpty());
}

TEST(ImageCanvas, ClipsNestAndEnd) {
    Sheet sheet(2);
    sheet.Draw().PushClip({10, 10, 30, 30});
    sheet.Draw().PushClip({0, 0, 20, 20});
    sheet.Draw().FillRect({0, 0, 60, 40}, kStateRed);
    sheet.Draw().TextOut(0, 10, "MMMMMMMMMM");
    EXPECT_EQ(sheet.Ink(), QRect(20, 20, 20, 20));
    sheet.Draw().PopClip();
    sheet.Draw().PopClip();
    sheet.Draw().PopClip();
    sheet.Draw().FillRect({0, 0, 60, 40}, kStateRed);
    EXPECT_EQ(sheet.Ink(), QRect(0, 0, 120, 80));
}

TEST(ImageCanvas, AnEmptyClipLetsNothingThrough) {
    Sheet sheet(1);
    sheet.Draw().PushClip({20, 20, 20, 30});
    sheet.Draw().FillRect({0, 0, 60, 40}, kStateRed);
    sheet.Draw().MoveTo(0, 0);
    sheet.Draw().LineTo(50, 30);
    sheet.Draw().TextOut(0, 20, "WWWWWWWW");
    EXPECT_TRUE(sheet.Ink().isEmpty());
}

TEST(ImageCanvas, CoordinatesBeyondAllScreensAreHarmless) {
    Sheet sheet(2);
    constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();
    constexpr std::int32_t kMin = std::numeric_limits<std::int32_t>::min();
    sheet.Draw().MoveTo(kMin, 5);
    sheet.Draw().LineTo(kMax, 5);
    const Point far[] = {{kMin, kMin}, {kMax, kMax}, {kMax, 7}, {kMin, 7}};
    sheet.Draw().Polyline(far);
    sheet.Draw().FillRect({kMin, 20, kMax, 21}, kStateRed);
    sheet.Draw().TextOut(kMax, kMin, "far");
    sheet.Draw().PushClip({kMin, kMin, kMax, kMax});
    sheet.Draw().PopClip();
    EXPECT_EQ(sheet.At(0, 10), kRed);
    EXPECT_EQ(sheet.At(119, 10), kRed);
    EXPECT_EQ(sheet.At(60, 40), kRed);
}

TEST(ImageCanvas, EveryFontAdvancesSixPixelsACharacter) {
    for (const double scale : {1.0, 1.5, 2.0, 3.0}) {
        for (const FontId font : {FontId::Text, FontId::Small, FontId::Large, FontId::Label}) {
            Sheet one(scale, 200);
            one.Draw().SetFont(font);
            one.Draw().TextOut(12, 4, "H");
            Sheet two(scale, 200);
            two.Draw().SetFont(font);
            two.Draw().TextOut(12, 4, "               H");
            EXPECT_EQ(two.Ink().left() - one.Ink().left(), static_cast<int>(90 * scale)) << scale;
            EXPECT_EQ(one.Draw().TextWidth(font, "Pod 1A"), 36);
        }
    }
}

TEST(ImageCanvas, CapitalsStayInTheirCell) {
    for (const std::int32_t screen : {600, 1080}) {
        for (const FontId font : {FontId::Text, FontId::Small, FontId::Large}) {
            Sheet sheet(2, 60, 40, Metrics::ForScreen(screen));
            sheet.Draw().SetFont(font);
            sheet.Draw().TextOut(6, 10, "HE10");
            const QRect ink = sheet.Ink();
            const int cell = sheet.Draw().TextHeight(font);
            EXPECT_GE(ink.top(), 20);
            EXPECT_LE(ink.bottom() + 1, 20 + 2 * cell);
            EXPECT_GE(ink.left(), 12);
            EXPECT_LE(ink.right() + 1, 12 + 2 * 24);
            EXPECT_GE(ink.height(), 2 * 5) << "five pixels is what can be read";
        }
    }
}

TEST(ImageCanvas, TextIsLatin1) {
    Sheet sheet(2);
    sheet.Draw().TextOut(6, 4, "\xB5");
    EXPECT_FALSE(sheet.Ink().isEmpty()) << "the micro sign";
    Sheet blank(2);
    blank.Draw().TextOut(6, 4, std::string_view("\0\x01\n ", 4));
    EXPECT_TRUE(blank.Ink().isEmpty()) << "control characters take their place and show nothing";
}

TEST(ImageCanvas, MonochromeTurnsPensAndTextBlack) {
    Sheet sheet(1);
    sheet.Draw().SetMono(true);
    sheet.Draw().MoveTo(0, 0);
    sheet.Draw().LineTo(10, 0);
    EXPECT_EQ(sheet.At(5, 0), 0xFF000000);
}

TEST(Color, StateAndToolkitAgreeBothWays) {
    EXPECT_EQ(ToQColor(0x402010).rgb(), 0xFF102040U);
    EXPECT_EQ(FromQColor(ToQColor(0x402010)), 0x402010U);
}

}  // namespace
}  // namespace zu
