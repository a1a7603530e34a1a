#pragma once

#include <array>
#include <string>

#include <QMainWindow>

#include "state/Geometry.h"

class QLabel;
class QLineEdit;
class QMdiArea;
class QToolBar;

namespace zu {

class MainMenu;

/// What toolbar boxes and status bar show.
struct BarTexts {
    QString Zoom;
    QString Rate;
    QString Mode;
    QString Memory;
    QString Channels;
};

/// What a capture does, for the left end of the status bar.
struct CaptureTexts {
    enum class Lamp { Idle, Running, Paused };
    Lamp State = Lamp::Idle;
    QString Count;   ///< captures so far
    QString Status;  ///< what the run loop says, on one line
    friend bool operator==(const CaptureTexts&, const CaptureTexts&) = default;
};

/// The main window: menu bar, toolbar with its three boxes, the area of the child windows, status bar.
class CMainFrame final : public QMainWindow {
    Q_OBJECT

  public:
    CMainFrame();

    [[nodiscard]] QMdiArea& Area() const { return *area_; }
    /// Puts the commands of the toolbar beside the boxes they belong to.
    void BuildToolbar(const MainMenu& menu);
    void SetBars(const BarTexts& texts);
    void SetCapture(const CaptureTexts& texts);
    /// A passing text at the left of the status bar.
    void ShowRemark(const QString& text);

    /// Moves the window without reporting that as a move of the user; `rect` is without the desktop's frame.
    void Restore(const WindowRect& rect);
    /// Shows the window and from then on reports where the user puts it.
    void Present();
    [[nodiscard]] bool Presented() const { return presented_; }

  signals:
    /// Place and size without the desktop's frame.
    void userMoved(int x, int y);
    void userSized(int width, int height);
    void fileDropped(const QString& path);
    /// The window was closed: the program ends.
    void closing();

  protected:
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    QLineEdit* MakeBox(int width, const QString& name);
    QLabel* MakePane(const QString& name);
    /// A field for a text that changes with every poll: unlike a label it asks for no new layout.
    QLineEdit* MakeLivePane(const QString& name, const QString& longest);
    void MakeCapturePanes();
    void PaintLamp();
    [[nodiscard]] bool Reports() const;
    void FollowPalette();

    QMdiArea* area_;
    QToolBar* toolbar_;
    QLineEdit* zoomBox_;
    QLineEdit* rateBox_;
    QLineEdit* modeBox_;
    CaptureTexts capture_;
    QLabel* lampPane_ = nullptr;
    QLineEdit* countPane_ = nullptr;
    QLineEdit* statusPane_ = nullptr;
    QLabel* modePane_;
    QLabel* memoryPane_;
    QLabel* channelPane_;
    QLabel* ratePane_;
    QLabel* zoomPane_;
    bool presented_ = false;
};

}  // namespace zu
