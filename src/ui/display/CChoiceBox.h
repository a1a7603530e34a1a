#pragma once

#include <QComboBox>

namespace zu {

/// A box whose choice has consequences: keys and wheel do not step through it, they open its list or do
/// nothing.
class CChoiceBox final : public QComboBox {
    Q_OBJECT

  public:
    using QComboBox::QComboBox;

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
};

}  // namespace zu
