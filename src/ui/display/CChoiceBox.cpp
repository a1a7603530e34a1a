#include "ui/display/CChoiceBox.h"

#include <QKeyEvent>

namespace zu {

void CChoiceBox::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
        case Qt::Key_Escape:
            return QComboBox::keyPressEvent(event);
        default:
            break;
    }
    const bool plain = !(event->modifiers() & (Qt::ControlModifier | Qt::MetaModifier));
    if (!plain || event->text().isEmpty()) {
        const bool step =
            event->key() == Qt::Key_Up || event->key() == Qt::Key_Down || event->key() == Qt::Key_F4;
        if (!step) return QComboBox::keyPressEvent(event);
    }
    showPopup();
}

void CChoiceBox::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

}  // namespace zu
