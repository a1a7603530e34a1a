#include "ui/DrawnIcon.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>

namespace zu {
namespace {

/// All drawings are made on a square of this many units.
constexpr double kUnits = 24;

const QColor kGo(0x2E, 0xA0, 0x43);
const QColor kStop(0xD0, 0x3B, 0x33);
const QColor kEnd(0xD8, 0x8A, 0x1D);

void SetStroke(QPainter& p, const QColor& ink, double width = 1.8) {
    p.setPen(QPen(ink, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(Qt::NoBrush);
}

void Solid(QPainter& p, const QColor& color, const QPolygonF& shape) {
    p.setPen(QPen(color, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(color);
    p.drawPolygon(shape);
}

void DrawOpen(QPainter& p, const QColor& ink) {
    SetStroke(p, ink);
    p.drawPolyline(QPolygonF({{19, 9}, {19, 7}, {11, 7}, {9, 5}, {3, 5}, {3, 19}, {4, 19}}));
    p.drawPolygon(QPolygonF({{4, 19}, {7.5, 11}, {22, 11}, {18.5, 19}}));
}

void DrawSave(QPainter& p, const QColor& ink) {
    SetStroke(p, ink);
    p.drawPolygon(QPolygonF({{4, 4}, {17, 4}, {20, 7}, {20, 20}, {4, 20}}));
    p.drawRect(QRectF(8, 4, 7, 5));
    p.drawRect(QRectF(7, 13, 10, 7));
}

void DrawMode(QPainter& p, const QColor& ink) {
    SetStroke(p, ink);
    p.drawPolyline(QPolygonF({{2, 18}, {8, 18}, {8, 7}, {16, 7}, {16, 18}, {22, 18}}));
    Solid(p, kEnd, QPolygonF({{8, 9}, {5.6, 13}, {10.4, 13}}));
}

void DrawGlass(QPainter& p, const QColor& ink, bool in) {
    SetStroke(p, ink);
    p.drawEllipse(QPointF(10, 10), 7, 7);
    p.drawLine(QPointF(7, 10), QPointF(13, 10));
    if (in) p.drawLine(QPointF(10, 7), QPointF(10, 13));
    SetStroke(p, ink, 2.6);
    p.drawLine(QPointF(15.5, 15.5), QPointF(21, 21));
}

/// A wave whose pulses grow denser to the right, or wider.
void DrawRate(QPainter& p, const QColor& ink, bool up) {
    SetStroke(p, ink);
    if (up) {
        p.drawPolyline(QPolygonF({{2, 20},
                                  {2, 12},
                                  {6, 12},
                                  {6, 20},
                                  {10, 20},
                                  {10, 12},
                                  {13, 12},
                                  {13, 20},
                                  {16, 20},
                                  {16, 12},
                                  {19, 12},
                                  {19, 20},
                                  {22, 20}}));
    } else {
        p.drawPolyline(
            QPolygonF({{2, 20}, {2, 12}, {8, 12}, {8, 20}, {15, 20}, {15, 12}, {22, 12}, {22, 20}}));
    }
    const QPolygonF arrow =
        up ? QPolygonF({{12, 2}, {8.5, 7}, {15.5, 7}}) : QPolygonF({{12, 7}, {8.5, 2}, {15.5, 2}});
    Solid(p, up ? kGo : kEnd, arrow);
}

void DrawEnd(QPainter& p) {
    Solid(p, kEnd, QPolygonF({{5, 5}, {15, 12}, {5, 19}}));
    Solid(p, kEnd, QPolygonF({{17.5, 5}, {19.5, 5}, {19.5, 19}, {17.5, 19}}));
}

void DrawUnits(QPainter& p, Drawing drawing, const QColor& ink) {
    switch (drawing) {
        case Drawing::Open:
            return DrawOpen(p, ink);
        case Drawing::Save:
            return DrawSave(p, ink);
        case Drawing::Go:
            return Solid(p, kGo, QPolygonF({{7, 4.5}, {19, 12}, {7, 19.5}}));
        case Drawing::Stop:
            return Solid(p, kStop, QPolygonF({{6, 6}, {18, 6}, {18, 18}, {6, 18}}));
        case Drawing::End:
            return DrawEnd(p);
        case Drawing::Mode:
            return DrawMode(p, ink);
        case Drawing::ZoomIn:
        case Drawing::ZoomOut:
            return DrawGlass(p, ink, drawing == Drawing::ZoomIn);
        case Drawing::RateUp:
        case Drawing::RateDown:
            return DrawRate(p, ink, drawing == Drawing::RateUp);
    }
}

class Engine final : public QIconEngine {
  public:
    explicit Engine(Drawing drawing) : drawing_(drawing) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State /*state*/) override {
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        const QColor ink = QApplication::palette().color(group, QPalette::ButtonText);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        if (mode == QIcon::Disabled) painter->setOpacity(0.45);
        painter->translate(rect.topLeft());
        painter->scale(rect.width() / kUnits, rect.height() / kUnits);
        DrawUnits(*painter, drawing_, ink);
        painter->restore();
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return pixmap;
    }
    [[nodiscard]] QIconEngine* clone() const override { return new Engine(drawing_); }

  private:
    Drawing drawing_;
};

}  // namespace

QIcon MakeIcon(Drawing drawing) {
    return QIcon(new Engine(drawing));
}

}  // namespace zu
