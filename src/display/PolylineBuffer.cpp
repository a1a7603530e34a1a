#include "display/PolylineBuffer.h"

namespace zu {

void PolylineBuffer::Draw(Canvas& canvas) {
    if (count_ > 1) canvas.Polyline({points_.data(), count_});
    count_ = 0;
}

void PolylineBuffer::Continue(Canvas& canvas) {
    const Point last = points_[count_ - 1];
    Draw(canvas);
    points_[count_++] = last;
}

}  // namespace zu
