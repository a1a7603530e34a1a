#pragma once

#include "display/TimingView.h"
#include "ui/display/CViewWnd.h"

namespace zu {

/// The Timing window: hands events to the view's logic.
class CTimingWnd final : public CViewWnd, private TimingViewHost {
    Q_OBJECT

  public:
    explicit CTimingWnd(CZuView& controller);
    /// Samples, rates, pods or lines changed: measurements are taken anew.
    void DataChanged();
    [[nodiscard]] TimingView& View() { return view_; }

  protected:
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void PaintView(ImageCanvas& canvas) override;
    void Resized(std::int32_t width, std::int32_t height) override { view_.Resize(width, height); }
    void Scroll(const ScrollEvent& event) override { view_.Scroll(event); }
    [[nodiscard]] ScrollRange RangeOf(ScrollAxis axis) const override;
    [[nodiscard]] QString Hover() const override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    void Invalidate() override { Redraw(); }
    void RefreshAll() override;
    void RedrawFollowers() override;
    void SetPointer(PointerShape shape) override { ShowPointer(shape); }
    void CaptureMouse(bool capture) override;
    int Popup(const MenuSpec& menu, std::int32_t x, std::int32_t y) override { return RunPopup(menu, x, y); }
    void OpenDialog(const DialogRequest& request) override;
    std::optional<Rgb> ChooseColor(Rgb start) override;
    void Beep() override;

    bool HandleGesture(QEvent* event);
    int SidewaysPixels(const QWheelEvent& event);
    void Apply(const PaintResult& result);

    TimingView view_;
    std::int32_t shownPosition_ = 0;  ///< first sample of the last paint
    int panRest_ = 0;
    double pinchRest_ = 0;
};

}  // namespace zu
