#pragma once

#include "display/StateListView.h"
#include "ui/display/CViewWnd.h"

namespace zu {

/// The Statelist window: hands events to the list's logic.
class CStateList final : public CViewWnd, private StateListHost {
    Q_OBJECT

  public:
    explicit CStateList(CZuView& controller);
    [[nodiscard]] StateListView& View() { return view_; }
    /// Puts the selected rows, or those on the screen, on the clipboard as text.
    void Copy();

  protected:
    bool viewportEvent(QEvent* event) override;
    void PaintView(ImageCanvas& canvas) override;
    void Resized(std::int32_t width, std::int32_t height) override { view_.Resize(width, height); }
    void Scroll(const ScrollEvent& event) override { view_.Scroll(event); }
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
    void SetPointer(PointerShape shape) override { ShowPointer(shape); }
    int Popup(const MenuSpec& menu, std::int32_t x, std::int32_t y) override { return RunPopup(menu, x, y); }
    void OpenSetup() override;
    std::optional<Rgb> ChooseColor(Rgb start) override;

    StateListView view_;
};

}  // namespace zu
