// Any state that a file can bring in, painted into the pixels of an image.
#include <gtest/gtest.h>

#include <QBuffer>
#include <QPainter>
#include <QSvgGenerator>
#include <QSvgRenderer>

#include "paint/Graphics.h"
#include "paint/ImageCanvas.h"
#include "support/HostileTiming.h"

namespace zu {
namespace {

using test::Random;

QImage Picture(InstrumentState& state, const ViewGeom& size, const ScreenFonts& fonts) {
    QImage image = MakeImage(size.Width, size.Height, fonts.Scale());
    image.fill(Qt::white);
    QPainter painter(&image);
    ImageCanvas canvas(image, painter, fonts, size.Width, size.Height);
    PaintTiming(state, size, canvas);
    return image;
}

TEST(HostilePicture, IsPaintedInsideItsImageAndTheSameEachTime) {
    EnsureGraphics();
    for (const double scale : {0.5, 1.0, 1.25, 1.5, 2.0, 3.0}) {
        const ScreenFonts fonts(Metrics::ForScreen(scale < 2 ? 600 : 1080), scale, true);
        const auto state = test::MakeState(13);
        Random random(static_cast<unsigned>(scale * 100));
        for (int round = 0; round < 60; ++round) {
            test::Scribble(*state, random);
            const ViewGeom size{1 + random.Below(500), 1 + random.Below(300)};
            const QImage once = Picture(*state, size, fonts);
            ASSERT_FALSE(once.isNull());
            ASSERT_EQ(once, Picture(*state, size, fonts)) << "scale " << scale << " round " << round;
        }
    }
}

TEST(HostilePicture, IsAnSvgThatCanBeRead) {
    EnsureGraphics();
    const ScreenFonts fonts(Metrics::ForScreen(1080), 1, false);
    const auto state = test::MakeState(16);
    Random random(77);
    for (int round = 0; round < 25; ++round) {
        test::Scribble(*state, random);
        const ViewGeom size{100 + random.Below(400), 50 + random.Below(200)};
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        {
            QSvgGenerator generator;
            generator.setOutputDevice(&buffer);
            generator.setViewBox(QRect(0, 0, size.Width, size.Height));
            QPainter painter(&generator);
            QtCanvas canvas(painter, fonts, size.Width, size.Height);
            PaintTiming(*state, size, canvas);
        }
        ASSERT_TRUE(QSvgRenderer(buffer.data()).isValid()) << "round " << round;
    }
}

}  // namespace
}  // namespace zu
