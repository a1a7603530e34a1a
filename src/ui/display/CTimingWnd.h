#pragma once

#include <functional>
#include <memory>

#include <QAbstractScrollArea>
#include <QImage>

#include "display/TimingView.h"
#include "paint/ScreenFonts.h"

namespace zu {

class CZuView;

/// The Timing window: hands events to the view's logic and copies its picture to the screen in one step.
class CTimingWnd final : public QAbstractScrollArea, private TimingViewHost {
    Q_OBJECT

  public:
    explicit CTimingWnd(CZuView& controller);
    ~CTimingWnd() override;

    /// Makes the picture for the screen; without memory for it the program ends with a message.
    void MakePicture();
    /// Paints and copies at the next turn of the message loop.
    void Redraw();
    /// Samples, rates, pods or lines changed: measurements are taken anew.
    void DataChanged();
    [[nodiscard]] TimingView& View() { return view_; }
    /// The picture as last painted.
    [[nodiscard]] const QImage& Picture() const { return picture_; }

    /// Drops picture and fonts; the next paint makes them again.
    void ForgetPicture();

    /// Make images and fonts; tests put some here that fail. No fonts means that the small one failed.
    std::function<QImage(std::int32_t, std::int32_t, double)> ImageMaker;
    std::function<std::unique_ptr<ScreenFonts>(const Metrics&, double)> FontMaker;

  protected:
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void scrollContentsBy(int /*dx*/, int /*dy*/) override {}

  private:
    void Invalidate() override { Redraw(); }
    void RefreshAll() override;
    void RedrawFollowers() override;
    void SetPointer(PointerShape shape) override;
    void CaptureMouse(bool capture) override;
    int Popup(const MenuSpec& menu, std::int32_t x, std::int32_t y) override;
    void OpenDialog(const DialogRequest& request) override;
    std::optional<Rgb> ChooseColor(Rgb start) override;
    void Beep() override;

    [[nodiscard]] MouseEvent ToEvent(const QMouseEvent& event, MouseButton button) const;
    void ConnectBar(ScrollAxis axis);
    void OnBarAction(ScrollAxis axis, int action);
    void ScrollBy(ScrollAxis axis, ScrollCode code, int times = 1);
    bool HandleGesture(QEvent* event);
    void ShowHover(const QPoint& at, const QPoint& global);
    void Paint();
    void Apply(const PaintResult& result);
    void MakeFonts(double scale);
    /// Shows a message and ends the program.
    void Fail(std::string_view text, std::string_view caption, int code);

    CZuView& controller_;
    Metrics metrics_;
    TimingView view_;
    std::unique_ptr<ScreenFonts> fonts_;
    QImage picture_;
    QSize room_;  ///< layout pixels that the picture has room for
    bool dirty_ = true;
    bool painting_ = false;
    int wheelRest_ = 0;
    double pinchRest_ = 0;
};

}  // namespace zu
