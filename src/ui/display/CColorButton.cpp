#include "ui/display/CColorButton.h"

#include <QIconEngine>
#include <QPainter>

#include "paint/QtCanvas.h"
#include "ui/ColorChooser.h"

namespace zu {
namespace {

/// A swatch with a frame that is seen on any desktop, sharp at every scale.
class SwatchEngine final : public QIconEngine {
  public:
    SwatchEngine(Rgb color, const QColor& frame) : color_(color), frame_(frame) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode /*mode*/, QIcon::State /*state*/) override {
        painter->fillRect(rect, frame_);
        painter->fillRect(rect.adjusted(1, 1, -1, -1), ToQColor(color_));
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return pixmap;
    }
    [[nodiscard]] QIconEngine* clone() const override { return new SwatchEngine(color_, frame_); }

  private:
    Rgb color_;
    QColor frame_;
};

}  // namespace

CColorButton::CColorButton(ColorChooser& colors, const QString& text, QWidget* parent)
    : QPushButton(text, parent), colors_(colors) {
    setAutoDefault(false);
    const int side = fontMetrics().height();
    setIconSize({text.isEmpty() ? 2 * side : side, side});
    connect(this, &QPushButton::clicked, this, &CColorButton::Choose);
}

void CColorButton::SetColor(Rgb color) {
    color_ = color;
    setIcon(QIcon(new SwatchEngine(color, palette().color(QPalette::ButtonText))));
    setToolTip(
        QStringLiteral("Red %1, green %2, blue %3").arg(Red(color)).arg(Green(color)).arg(Blue(color)));
}

void CColorButton::Choose() {
    if (const auto color = colors_.Choose(window(), color_)) emit chosen(*color);
}

}  // namespace zu
