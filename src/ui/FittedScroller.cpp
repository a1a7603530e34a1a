#include "ui/FittedScroller.h"

namespace zu {

FittedScroller::FittedScroller(QWidget& form) {
    setWidget(&form);
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
}

QSize FittedScroller::sizeHint() const {
    return widget()->sizeHint();
}

}  // namespace zu
