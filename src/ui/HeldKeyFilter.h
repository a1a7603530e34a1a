#pragma once

#include <QObject>

#include "display/Events.h"

namespace zu {

/// Follows which of the letter and digit keys of the views are down, for the whole application.
class HeldKeyFilter final : public QObject {
    Q_OBJECT

  public:
    explicit HeldKeyFilter(QObject* parent = nullptr);
    [[nodiscard]] const HeldKeys& Held() const { return held_; }
    void Clear() { held_ = {}; }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Set(int key, bool down);
    HeldKeys held_;
};

}  // namespace zu
