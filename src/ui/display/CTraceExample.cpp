#include "ui/display/CTraceExample.h"

#include <QPainter>

#include "display/ChannelEdits.h"
#include "paint/QtCanvas.h"

namespace zu {

CTraceExample::CTraceExample(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    setMinimumWidth(48);
}

void CTraceExample::Show(Rgb trace, Rgb background, bool inverted) {
    trace_ = trace;
    background_ = background;
    inverted_ = inverted;
    update();
}

QSize CTraceExample::sizeHint() const {
    return {96, fontMetrics().height() + 6};
}

void CTraceExample::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(rect(), ToQColor(background_));
    const QRect inner = rect().adjusted(3, 1, -3, -1);
    QPolygon line;
    for (const Point& point : TraceExample(inner.width() - 1, inner.height() - 1, inverted_)) {
        line.append(inner.topLeft() + QPoint(point.X, point.Y));
    }
    painter.setPen(ToQColor(trace_));
    painter.drawPolyline(line);
}

}  // namespace zu
