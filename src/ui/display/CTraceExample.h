#pragma once

#include <QWidget>

#include "state/Geometry.h"

namespace zu {

/// A small trace as the views draw it: in a channel's colour on their background.
class CTraceExample final : public QWidget {
    Q_OBJECT

  public:
    explicit CTraceExample(QWidget* parent);
    void Show(Rgb trace, Rgb background, bool inverted);
    [[nodiscard]] QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    Rgb trace_ = 0;
    Rgb background_ = 0;
    bool inverted_ = false;
};

}  // namespace zu
