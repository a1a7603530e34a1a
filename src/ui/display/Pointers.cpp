#include "ui/display/Pointers.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPixmap>

#include "paint/QtCanvas.h"

namespace zu {
namespace {

constexpr int kSide = 32;
constexpr char kLetters[] = {'A', 'B', 'C', 'D', 'T'};

/// A double arrow across an upright line, with the cursor's letter beside it.
QCursor CursorPointer(int cursor, const QColor& color) {
    const qreal ratio = qGuiApp->devicePixelRatio();
    QPixmap pixmap(QSize(kSide, kSide) * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    // A white rim keeps the pointer visible over traces of its own colour.
    for (const auto& [ink, width] : {std::pair(QColor(Qt::white), 5.0), std::pair(color, 2.0)}) {
        painter.setPen(QPen(ink, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawLine(QPointF(16, 9), QPointF(16, 23));
        painter.drawPolyline(QPolygonF({{11, 13}, {8, 16}, {11, 19}}));
        painter.drawPolyline(QPolygonF({{21, 13}, {24, 16}, {21, 19}}));
    }
    QFont font;
    font.setPixelSize(11);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(color);
    painter.drawText(QRectF(20, 19, 12, 13), Qt::AlignCenter,
                     QString(QLatin1Char(kLetters[static_cast<std::size_t>(cursor)])));
    painter.end();
    return QCursor(pixmap, kSide / 2, kSide / 2);
}

}  // namespace

QCursor MakePointer(PointerShape shape, const CursorRecord& cursors) {
    switch (shape) {
        case PointerShape::Arrow:
            return Qt::ArrowCursor;
        case PointerShape::SizeHorizontal:
            return Qt::SizeHorCursor;
        case PointerShape::SizeVertical:
            return Qt::SizeVerCursor;
        default: {
            const int cursor = static_cast<int>(shape) - static_cast<int>(PointerShape::CursorA);
            return CursorPointer(cursor, ToQColor(cursors.CursorColor[static_cast<std::size_t>(cursor)]));
        }
    }
}

}  // namespace zu
