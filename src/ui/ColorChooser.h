#pragma once

#include <optional>

#include "state/Geometry.h"

class QWidget;

namespace zu {

/// Lets the user choose a colour.
class ColorChooser {
  public:
    virtual ~ColorChooser() = default;
    /// Starts from a colour; nothing when the choice is given up.
    virtual std::optional<Rgb> Choose(QWidget* owner, Rgb start) = 0;
};

/// The desktop's colour dialog.
class DesktopColors final : public ColorChooser {
  public:
    std::optional<Rgb> Choose(QWidget* owner, Rgb start) override;
};

}  // namespace zu
