#include "ui/CaptionRoom.h"

#include <QApplication>
#include <QFontMetrics>

namespace zu {

int CaptionRoom(const QString& caption) {
    // The desktop's own font for captions is unknown; what is told here is what common ones need.
    constexpr int kIconAndButtons = 160;
    return QFontMetrics(QApplication::font("QMdiSubWindowTitleBar")).horizontalAdvance(caption) +
           kIconAndButtons;
}

}  // namespace zu
