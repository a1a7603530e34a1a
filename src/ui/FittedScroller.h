#pragma once

#include <QScrollArea>

namespace zu {

/// Holds a form: asks for the room that the form wants, and scrolls it where it gets less.
class FittedScroller final : public QScrollArea {
    Q_OBJECT

  public:
    explicit FittedScroller(QWidget& form);
    [[nodiscard]] QSize sizeHint() const override;
};

}  // namespace zu
