#include "paint/ScreenFonts.h"

#include <algorithm>
#include <cmath>

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QGlyphRun>
#include <QPainter>

namespace zu {
namespace {

constexpr std::array<const char*, 5> kFamilies{"Courier", "DejaVu Sans Mono", "Liberation Mono",
                                               "Noto Sans Mono", "FreeMono"};
constexpr FontId kIds[] = {FontId::Text,  FontId::Small,   FontId::Large,
                           FontId::Label, FontId::Printer, FontId::PrinterBold};

QFont MakeFont(FontId id, int pixels, bool hinted) {
    QFont font(ScreenFonts::Family());
    font.setPixelSize(std::max(1, pixels));
    font.setFixedPitch(true);
    font.setStyleHint(QFont::Monospace);
    font.setWeight(id == FontId::PrinterBold ? QFont::Bold : QFont::Normal);
    font.setStyleStrategy(
        static_cast<QFont::StyleStrategy>(QFont::PreferAntialias | QFont::NoSubpixelAntialias));
    font.setHintingPreference(hinted ? QFont::PreferFullHinting : QFont::PreferNoHinting);
    return font;
}

/// Narrows or widens the face until its characters fill the advance.
void StretchTo(QFont& font, double advance) {
    const double natural = QFontMetricsF(font).horizontalAdvance(QLatin1Char('0'));
    if (natural > 0) font.setStretch(std::clamp(static_cast<int>(100 * advance / natural), 50, 200));
}

QString Latin1(char c) {
    return QString(QLatin1Char(c));
}

}  // namespace

QString ScreenFonts::Family() {
    static const QString family = [] {
        for (const char* name : kFamilies) {
            QString wanted = QString::fromLatin1(name);
            if (QFontDatabase::hasFamily(wanted) && QFontDatabase::isSmoothlyScalable(wanted)) return wanted;
        }
        return QFontDatabase::systemFont(QFontDatabase::FixedFont).family();
    }();
    return family;
}

int ScreenFonts::FacePixels(FontId font, const Metrics& metrics) {
    // The cell is fixed; the face is the largest one that still reads well at six pixels a character.
    switch (font) {
        case FontId::Small:
            return 7;
        case FontId::Large:
            return metrics.LargeScreen ? 15 : 14;
        default:
            return metrics.LargeScreen ? 12 : 10;
    }
}

ScreenFonts::ScreenFonts(const Metrics& metrics, double scale, bool hinted)
    : metrics_(metrics), scale_(scale) {
    for (const FontId id : kIds) faces_[static_cast<std::size_t>(id)] = MakeFace(id, hinted);
}

std::int32_t ScreenFonts::Height(FontId font) const {
    if (font == FontId::Small) return metrics_.SmallHeight;
    if (font == FontId::Large) return metrics_.LargeHeight;
    return metrics_.TextHeight;
}

ScreenFonts::Face ScreenFonts::MakeFace(FontId font, bool hinted) const {
    const double cell = metrics_.Advance * scale_;
    QFont wanted = MakeFont(font, static_cast<int>(std::lround(FacePixels(font, metrics_) * scale_)), hinted);
    StretchTo(wanted, cell);

    Face face;
    face.Font = QRawFont::fromFont(wanted);
    for (int c = 0x20; c < 0x100; ++c) {
        const auto at = static_cast<std::size_t>(c);
        const QList<quint32> glyphs = face.Font.glyphIndexesForString(Latin1(static_cast<char>(c)));
        if (glyphs.isEmpty()) continue;
        face.Glyph[at] = glyphs.first();
        const QList<QPointF> advances = face.Font.advancesForGlyphIndexes(glyphs);
        if (!advances.isEmpty()) face.Inset[at] = (cell - advances.first().x()) / 2;
    }
    const double capitals = face.Font.capHeight();
    const double room = Height(font) * scale_ - capitals - face.Font.descent();
    face.Baseline = std::round(capitals + std::max(0.0, room / 2));
    return face;
}

void ScreenFonts::Draw(QPainter& painter, FontId font, double x, double y, std::string_view text) const {
    const Face& face = FaceOf(font);
    QList<quint32> glyphs;
    QList<QPointF> places;
    glyphs.reserve(static_cast<qsizetype>(text.size()));
    places.reserve(static_cast<qsizetype>(text.size()));
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto code = static_cast<unsigned char>(text[i]);
        if (face.Glyph[code] == 0 || code == ' ') continue;
        const double left = static_cast<double>(i) * metrics_.Advance * scale_ + face.Inset[code];
        glyphs.append(face.Glyph[code]);
        places.append(QPointF(std::floor(x + left + 0.5), y + face.Baseline));
    }
    if (glyphs.isEmpty()) return;
    QGlyphRun run;
    run.setRawFont(face.Font);
    run.setGlyphIndexes(glyphs);
    run.setPositions(places);
    painter.drawGlyphRun(QPointF(0, 0), run);
}

}  // namespace zu
