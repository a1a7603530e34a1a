#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <span>

#include <QAbstractScrollArea>
#include <QImage>

#include "display/Canvas.h"
#include "display/Events.h"
#include "display/Menus.h"
#include "paint/ScreenFonts.h"

class QHelpEvent;

namespace zu {

class CZuView;
class ImageCanvas;

/// What the windows that draw samples share: a picture of the screen's size that is copied in one step,
/// scroll bars whose actions are scroll codes, mouse events in the views' own terms.
class CViewWnd : public QAbstractScrollArea {
    Q_OBJECT

  public:
    ~CViewWnd() override;

    /// Makes the picture for the screen; without memory for it the program ends with a message.
    void MakePicture();
    /// Paints and copies at the next turn of the message loop.
    void Redraw();
    /// The picture as last painted.
    [[nodiscard]] const QImage& Picture() const { return picture_; }
    /// Drops picture and fonts; the next paint makes them again.
    void ForgetPicture();

    /// Make images and fonts; tests put some here that fail. No fonts means that the small one failed.
    std::function<QImage(std::int32_t, std::int32_t, double)> ImageMaker;
    std::function<std::unique_ptr<ScreenFonts>(const Metrics&, double)> FontMaker;

  protected:
    explicit CViewWnd(CZuView& controller);

    /// Paints the view and applies what the paint tells.
    virtual void PaintView(ImageCanvas& canvas) = 0;
    virtual void Resized(std::int32_t width, std::int32_t height) = 0;
    virtual void Scroll(const ScrollEvent& event) = 0;
    [[nodiscard]] virtual ScrollRange RangeOf(ScrollAxis axis) const = 0;
    /// Text for the pointer resting at a point of the view; empty for none.
    [[nodiscard]] virtual QString Hover() const = 0;

    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void scrollContentsBy(int /*dx*/, int /*dy*/) override {}

    [[nodiscard]] MouseEvent ToEvent(const QMouseEvent& event, MouseButton button) const;
    static MouseButton ButtonOf(Qt::MouseButton button);
    static MouseButton FirstButton(Qt::MouseButtons buttons);
    void ShowTitle(std::string_view title);
    /// Shows range and place of a view; that is no scroll of the user.
    void SetBar(ScrollAxis axis, const ScrollRange& range, int page);
    void ScrollBy(ScrollAxis axis, ScrollCode code, int times = 1);
    /// A key that scrolls.
    struct ScrollKey {
        int Key;
        bool Ctrl;
        ScrollAxis Axis;
        ScrollCode Code;
    };
    /// Scrolls as the table tells of the key; false for a key that is not in it.
    bool ScrollByKey(const QKeyEvent& event, std::span<const ScrollKey> keys);
    /// Whole notches of the wheel, kept from turn to turn; above 0 away from the user.
    int Notches(const QWheelEvent& event);
    void ShowPointer(PointerShape shape);
    /// Id of the entry taken, 0 for none.
    int RunPopup(const MenuSpec& menu, std::int32_t x, std::int32_t y);
    [[nodiscard]] CZuView& Controller() const { return controller_; }
    [[nodiscard]] const Metrics& FontMetrics() const { return metrics_; }

  private:
    [[nodiscard]] QScrollBar* BarOf(ScrollAxis axis) const;
    void ConnectBar(ScrollAxis axis);
    void OnBarAction(ScrollAxis axis, int action);
    void Paint();
    void MakeFonts(double scale);
    /// Shows a message and ends the program.
    void Fail(std::string_view text, std::string_view caption, int code);
    void ShowHover(const QHelpEvent& help);

    CZuView& controller_;
    Metrics metrics_;
    std::unique_ptr<ScreenFonts> fonts_;
    QImage picture_;
    QSize room_;  ///< layout pixels that the picture has room for
    bool dirty_ = true;
    bool painting_ = false;
    int wheelRest_ = 0;
};

}  // namespace zu
