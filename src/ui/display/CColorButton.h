#pragma once

#include <QPushButton>

#include "state/Geometry.h"

namespace zu {

class ColorChooser;

/// A button that shows a colour and lets the user choose another one.
class CColorButton final : public QPushButton {
    Q_OBJECT

  public:
    CColorButton(ColorChooser& colors, const QString& text, QWidget* parent);
    void SetColor(Rgb color);
    [[nodiscard]] Rgb Color() const { return color_; }

  signals:
    void chosen(zu::Rgb color);

  private:
    void Choose();

    ColorChooser& colors_;
    Rgb color_ = 0;
};

}  // namespace zu
