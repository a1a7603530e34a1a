#pragma once

#include <memory>
#include <string>
#include <vector>

#include <QPalette>

#include "hw/Attachment.h"
#include "support/TempFolder.h"
#include "ui/Boxes.h"
#include "ui/CChildFrame.h"
#include "ui/CMainFrame.h"
#include "ui/CZuView.h"
#include "ui/HeldKeyFilter.h"
#include "ui/MainMenu.h"
#include "ui/QtHost.h"
#include "ui/display/CTimingWnd.h"

class QAction;
class QMenu;

namespace zu::test {

/// The whole program with its windows, started as from the command line, its files in a folder of its own.
class Desk {
  public:
    inline static const std::vector<std::string> kNoArguments{};

    /// Arguments behind the program's name; `home` lets several runs share their files.
    explicit Desk(std::vector<std::string> arguments = {"--model=15"},
                  std::shared_ptr<TempFolder> home = std::make_shared<TempFolder>());
    ~Desk();
    Desk(const Desk&) = delete;
    Desk& operator=(const Desk&) = delete;

    /// Runs the start-up sequence. Boxes and dialogs that open meanwhile go to `Box`.
    void Start();
    /// Closes the main window and takes the exit path.
    void End();

    [[nodiscard]] InstrumentState& State() { return *state_; }
    [[nodiscard]] CZuView& View() { return *view_; }
    [[nodiscard]] CMainFrame& Frame() { return *frame_; }
    [[nodiscard]] QtHost& Host() { return *host_; }
    [[nodiscard]] CTimingWnd& Timing() { return *view_->Timing(); }
    [[nodiscard]] QWidget& TimingArea() { return *view_->Timing()->viewport(); }
    [[nodiscard]] const TempFolder& Home() const { return *home_; }

    /// Opens a top menu as a user would, and answers its entries that are shown, by their texts.
    QStringList EntriesOf(const QString& menu);
    /// The entry of an open or closed menu, by the menu's and its own text; null if there is none.
    QAction* Entry(const QString& menu, const QString& text);
    /// Text of a box or pane by its name.
    QString Shown(const QString& name);
    /// Lets everything that waits happen.
    static void Settle();

    Boxes Box;

  private:
    QMenu* OpenMenu(const QString& title);

    std::shared_ptr<TempFolder> home_;
    std::unique_ptr<InstrumentState> state_;
    std::unique_ptr<QtHost> host_;
    std::unique_ptr<Attachment> attachment_;  ///< of the simulated instrument; else nothing is attached
    std::unique_ptr<HardwareSession> hardware_;
    std::unique_ptr<HeldKeyFilter> keys_;
    std::unique_ptr<CMainFrame> frame_;
    std::unique_ptr<CZuView> view_;
    bool ended_ = false;
};

/// Saves a picture of a window where ZU_SHOTS names a folder, for the eye.
void SaveShot(QWidget& window, const QString& name);

/// Dark colours of the desktop for the length of a test.
class DarkDesktop {
  public:
    DarkDesktop();
    ~DarkDesktop();
    DarkDesktop(const DarkDesktop&) = delete;
    DarkDesktop& operator=(const DarkDesktop&) = delete;

  private:
    QPalette before_;
};

/// A desk that is started.
class StartedDesk : public Desk {
  public:
    explicit StartedDesk(std::vector<std::string> arguments = {"--model=15"}) : Desk(std::move(arguments)) {
        Start();
    }
};

}  // namespace zu::test
