#pragma once

#include <map>
#include <memory>

#include <QObject>

#include "core/App.h"
#include "core/CommandTable.h"
#include "display/TimingView.h"
#include "ui/ColorChooser.h"

class QMenu;

namespace zu {

class CChildFrame;
class CCursorDlg;
class CMainFrame;
class CRegisterTrace;
class CSerialWnd;
class CSpiWnd;
class CStateList;
class CTimingWnd;
class HeldKeyFilter;
class MainMenu;
class QtHost;

/// The controller: takes every command of menu, toolbar and keys, opens the windows and dialogs, and stands
/// for the windows before the logic.
class CZuView final : public QObject, public Shell {
    Q_OBJECT

  public:
    CZuView(InstrumentState& state, QtHost& host, HardwareSession& hardware, HeldKeyFilter& keys,
            CMainFrame& frame);
    ~CZuView() override;

    /// Sizes the frame, runs the start-up sequence and leaves the main window on the screen.
    void Start();
    /// The exit path; the main window is closed.
    void CloseDown();

    [[nodiscard]] App& TheApp() { return app_; }
    [[nodiscard]] InstrumentState& State() { return app_.State; }
    [[nodiscard]] HeldKeyFilter& Keys() { return keys_; }
    [[nodiscard]] MainMenu& Menu() { return *menu_; }
    [[nodiscard]] CMainFrame& Frame() { return frame_; }
    [[nodiscard]] ColorChooser& Colors() { return *colors_; }
    /// Colours are chosen by this from now on; it must outlive the controller.
    void SetColors(ColorChooser& colors) { colors_ = &colors; }
    [[nodiscard]] CTimingWnd* Timing() { return timing_; }
    [[nodiscard]] CStateList* StateList() { return stateList_; }
    [[nodiscard]] CSerialWnd* Serial() { return serial_; }
    [[nodiscard]] CSpiWnd* Spi() { return spi_; }
    [[nodiscard]] CChildFrame* Child(WindowId window);

    /// Runs a command as its menu entry would.
    void Execute(CommandId id);
    /// Loads a file that the desktop names: dropped, chosen from the recent ones.
    void OpenFile(const QString& path);
    /// Runs a dialog that the Timing view asks for.
    void OpenTimingDialog(const DialogRequest& request);
    /// Moves the active view to the next or previous match; without one it beeps.
    void RunSearch(bool forward);
    /// Redraws everything for a change that touched no samples.
    void RefreshKeepingMeasures();

    ScreenFacts Screen() override;
    void Open(WindowId window) override;
    void Close(WindowId window) override;
    void Redraw(WindowId window) override;
    void UpdateBars() override;
    void UpdateMenus() override;
    bool RunAddressDialog() override;
    void RunModelDialog() override;
    void SetBusy(bool busy) override;

  private:
    void BuildMenu();
    void ConnectFrame();
    void OnTick(int id);
    void ShowCaptureState();
    void PresentFrame();
    void ExecuteOwn(CommandId id);
    bool Uncover(CommandId id);
    bool ExecuteColor(CommandId id);
    void ExecuteZoom(CommandId id);
    void ShowRegisterTrace();
    CChildFrame* MakeChild(WindowId window);
    QWidget* MakeCursorWindow();
    [[nodiscard]] QRect DefaultPlace(WindowId window);
    /// The first rectangles of the serial windows are the same, and narrower than tools and columns.
    [[nodiscard]] QRect TrafficPlace(WindowId window, QRect place);
    void ListWindows(QMenu& menu);

    QtHost& host_;
    HeldKeyFilter& keys_;
    CMainFrame& frame_;
    App app_;
    std::unique_ptr<MainMenu> menu_;
    std::map<WindowId, CChildFrame*> children_;
    DesktopColors desktopColors_;
    ColorChooser* colors_ = &desktopColors_;
    CTimingWnd* timing_ = nullptr;
    CStateList* stateList_ = nullptr;
    CSerialWnd* serial_ = nullptr;
    CSpiWnd* spi_ = nullptr;
    CCursorDlg* cursors_ = nullptr;
    CRegisterTrace* trace_ = nullptr;
    bool keepMeasures_ = false;
    bool shownRunning_ = false;  ///< whether the menu was last refreshed for a running capture
};

}  // namespace zu
