#pragma once

#include "display/SerialListView.h"
#include "ui/display/CViewWnd.h"

namespace zu {

/// A list of decoded traffic: hands events to the list's logic. The window around it has its tools.
class CTrafficList : public CViewWnd, protected SerialViewHost {
    Q_OBJECT

  public:
    /// Puts the selected rows, or those on the screen, on the clipboard as text.
    void Copy();
    [[nodiscard]] QSize sizeHint() const override;

  protected:
    explicit CTrafficList(CZuView& controller);

    [[nodiscard]] virtual SerialListView& Logic() = 0;
    [[nodiscard]] virtual const SerialListView& Logic() const = 0;
    [[nodiscard]] virtual SerialResult PaintList(ImageCanvas& canvas) = 0;

    bool viewportEvent(QEvent* event) override;
    void PaintView(ImageCanvas& canvas) override;
    void Resized(std::int32_t width, std::int32_t height) override { Logic().Resize(width, height); }
    void Scroll(const ScrollEvent& event) override { Logic().Scroll(event); }
    [[nodiscard]] ScrollRange RangeOf(ScrollAxis axis) const override;
    [[nodiscard]] QString Hover() const override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    void Invalidate() override { Redraw(); }
    void RefreshAll() override;
    void RedrawFollowers() override;
    void CenterTiming(std::int32_t sample) override;
    int Popup(const MenuSpec& menu, std::int32_t x, std::int32_t y) override { return RunPopup(menu, x, y); }
    void OpenSetup() override;
    void OpenGroupSetup() override;
};

}  // namespace zu
