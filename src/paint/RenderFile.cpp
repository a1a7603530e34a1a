#include "paint/RenderFile.h"

#include <cmath>

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QPainter>
#include <QSaveFile>
#include <QSvgGenerator>

#include "display/TimingPainter.h"
#include "paint/Graphics.h"
#include "paint/ImageCanvas.h"

namespace zu {
namespace {

constexpr double kDotsPerMeter = 96 / 0.0254;
/// Pictures are laid out as on a screen of ordinary size, whatever their own height.
constexpr Metrics kPictureMetrics = Metrics::ForScreen(1080);

bool PaintPng(InstrumentState& state, const PictureSize& size, QByteArray& bytes) {
    QImage image = MakeImage(size.Width, size.Height, size.Scale);
    if (image.isNull()) return false;
    image.setDotsPerMeterX(static_cast<int>(std::lround(kDotsPerMeter * size.Scale)));
    image.setDotsPerMeterY(image.dotsPerMeterX());
    {
        const ScreenFonts fonts(kPictureMetrics, size.Scale, true);
        QPainter painter(&image);
        ImageCanvas canvas(image, painter, fonts, size.Width, size.Height);
        PaintTiming(state, {size.Width, size.Height}, canvas);
    }
    QBuffer buffer(&bytes);
    return buffer.open(QIODevice::WriteOnly) && image.save(&buffer, "PNG");
}

bool PaintSvg(InstrumentState& state, const PictureSize& size, QByteArray& bytes) {
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::WriteOnly)) return false;
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setResolution(96);
    generator.setSize({size.Width, size.Height});
    generator.setViewBox(QRect(0, 0, size.Width, size.Height));
    generator.setTitle(QStringLiteral("Timing view"));
    const ScreenFonts fonts(kPictureMetrics, 1, false);
    QPainter painter(&generator);
    painter.setClipRect(0, 0, size.Width, size.Height);
    QtCanvas canvas(painter, fonts, size.Width, size.Height);
    PaintTiming(state, {size.Width, size.Height}, canvas);
    return painter.end();
}

bool IsPossible(const PictureSize& size) {
    return size.Width >= 1 && size.Width <= kMaxPictureSide && size.Height >= 1 &&
           size.Height <= kMaxPictureSide && size.Scale >= 0.1 && size.Scale <= kMaxPictureScale;
}

bool WriteWhole(const QString& path, const QByteArray& bytes, std::string& error) {
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit()) return true;
    error = file.errorString().toStdString();
    return false;
}

}  // namespace

bool RenderTimingToFile(InstrumentState& state, const PictureSize& size, const std::string& path,
                        std::string& error) {
    const QString name = QFile::decodeName(QByteArray::fromStdString(path));
    const QString kind = QFileInfo(name).suffix().toLower();
    if (kind != QStringLiteral("png") && kind != QStringLiteral("svg")) {
        error = "the name of a picture must end in .png or .svg";
        return false;
    }
    if (!IsPossible(size)) {
        error = "no picture of this size can be made";
        return false;
    }
    EnsureGraphics();
    QByteArray bytes;
    const bool painted =
        kind == QStringLiteral("png") ? PaintPng(state, size, bytes) : PaintSvg(state, size, bytes);
    if (!painted) {
        error = "no memory for a picture of this size";
        return false;
    }
    return WriteWhole(name, bytes, error);
}

}  // namespace zu
