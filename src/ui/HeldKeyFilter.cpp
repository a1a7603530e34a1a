#include "ui/HeldKeyFilter.h"

#include <QCoreApplication>
#include <QKeyEvent>

namespace zu {

HeldKeyFilter::HeldKeyFilter(QObject* parent) : QObject(parent) {
    QCoreApplication::instance()->installEventFilter(this);
}

bool HeldKeyFilter::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        // A key that is also a shortcut arrives as an override and may never become a press.
        case QEvent::ShortcutOverride:
        case QEvent::KeyPress:
        case QEvent::KeyRelease: {
            const auto* key = static_cast<QKeyEvent*>(event);
            if (!key->isAutoRepeat()) Set(key->key(), event->type() != QEvent::KeyRelease);
            break;
        }
        case QEvent::ApplicationDeactivate:
        case QEvent::WindowDeactivate:
            Clear();
            break;
        default:
            break;
    }
    return QObject::eventFilter(watched, event);
}

void HeldKeyFilter::Set(int key, bool down) {
    switch (key) {
        case Qt::Key_A:
            held_.A = down;
            break;
        case Qt::Key_B:
            held_.B = down;
            break;
        case Qt::Key_C:
            held_.C = down;
            break;
        case Qt::Key_D:
            held_.D = down;
            break;
        case Qt::Key_T:
            held_.T = down;
            break;
        case Qt::Key_2:
            held_.Two = down;
            break;
        case Qt::Key_3:
            held_.Three = down;
            break;
        case Qt::Key_4:
            held_.Four = down;
            break;
        case Qt::Key_5:
            held_.Five = down;
            break;
        default:
            break;
    }
}

}  // namespace zu
