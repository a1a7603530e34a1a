#include "ui/ColorChooser.h"

#include <QColorDialog>

#include "paint/QtCanvas.h"

namespace zu {

std::optional<Rgb> DesktopColors::Choose(QWidget* owner, Rgb start) {
    const QColor color = QColorDialog::getColor(ToQColor(start), owner, QStringLiteral("Color"));
    if (!color.isValid()) return std::nullopt;
    return FromQColor(color);
}

}  // namespace zu
