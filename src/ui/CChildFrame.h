#pragma once

#include <QMdiSubWindow>
#include <QRect>

#include "core/Shell.h"
#include "state/ViewRecords.h"

namespace zu {

/// Where the state keeps a child window's open flag and place. Windows without a kept place have no
/// rectangle.
struct ChildRecord {
    WindowId Window;
    std::int32_t WindowRecord::*Stat;
    WindowRect WindowRecord::*Rect = nullptr;
    std::int32_t WindowRecord::*RectValid = nullptr;
};
const ChildRecord& ChildRecordOf(WindowId window);

/// The part of a rectangle that is shown in an area of this size: moved and cut to it.
QRect FitInto(const WindowRect& rect, const QSize& area);

/// Frame of a modeless child. It is made once, hidden when it is closed, and the state's open flag changes
/// only as it is shown and closed. The state's rectangle follows every move and size of the user.
class CChildFrame final : public QMdiSubWindow {
    Q_OBJECT

  public:
    CChildFrame(WindowRecord& windows, WindowId window, QWidget& content, QWidget* parent = nullptr);

    [[nodiscard]] WindowId Window() const { return record_.Window; }
    [[nodiscard]] bool IsOpen() const { return windows_.*record_.Stat != 0; }
    /// Shows the window at its stored place, or at `fallback` when no place is stored.
    void Open(const QRect& fallback);
    /// Whether the window is open and nothing of it can be seen for the windows in front of it.
    [[nodiscard]] bool IsCovered() const;
    /// Moves the window without touching the stored place.
    void Place(const QRect& place);

  signals:
    void opened();
    void closed();

  protected:
    void closeEvent(QCloseEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void Remember();

    WindowRecord& windows_;
    const ChildRecord& record_;
    bool placing_ = false;
};

}  // namespace zu
