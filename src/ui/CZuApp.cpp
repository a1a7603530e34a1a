#include "ui/CZuApp.h"

#include <array>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <string_view>
#include <unistd.h>

#include <QApplication>
#include <QTimer>

#include "core/CommandLine.h"
#include "core/Paths.h"
#include "hw/Attachment.h"
#include "ui/CMainFrame.h"
#include "ui/CZuView.h"
#include "ui/HeldKeyFilter.h"
#include "ui/QtHost.h"
#include "ui/QtText.h"
#include "ui/SignalWatch.h"

namespace zu {
namespace {

bool HasDisplay() {
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
        const char* value = std::getenv(name);
        if (value != nullptr && *value != '\0') return true;
    }
    return false;
}

/// Without a display the toolkit's off-screen one stands in, made as large as an ordinary desk's. It reads
/// its size from a file, which lives as long as this object.
class OffscreenDesk {
  public:
    OffscreenDesk() : path_(std::filesystem::temp_directory_path() / "zu-screen-XXXXXX") {
        const int file = mkstemp(path_.data());
        if (file < 0) return;
        constexpr std::string_view kScreen =
            R"({"screens":[{"name":"desk","x":0,"y":0,"width":1480,"height":920,"dpr":1,)"
            R"("logicalDpi":96,"logicalBaseDpi":96}]})";
        const bool written = write(file, kScreen.data(), kScreen.size()) > 0;
        close(file);
        setenv("QT_QPA_PLATFORM", written ? ("offscreen:configfile=" + path_).c_str() : "offscreen", 1);
    }
    ~OffscreenDesk() { std::remove(path_.c_str()); }
    OffscreenDesk(const OffscreenDesk&) = delete;
    OffscreenDesk& operator=(const OffscreenDesk&) = delete;

  private:
    std::string path_;
};

/// The toolkit's platform that the environment names; empty if it names none.
std::string_view NamedPlatform() {
    const char* platform = std::getenv("QT_QPA_PLATFORM");
    return platform == nullptr ? std::string_view() : std::string_view(platform);
}

/// Whether somebody can see and answer a dialog.
bool IsAttended(const CommandOptions& options) {
    return HasDisplay() && !NamedPlatform().starts_with("offscreen") && options.Screenshot.empty();
}

int PrintEnd(const CommandLineEnd& end) {
    std::fputs(end.Text.c_str(), end.OnError ? stderr : stdout);
    return end.ExitCode;
}

/// The toolkit works on a copy of the arguments: it takes its own options out.
struct ToolkitArguments {
    explicit ToolkitArguments(const std::vector<std::string>& arguments)
        : Texts(arguments), Count(static_cast<int>(arguments.size())) {
        for (std::string& text : Texts) Pointers.push_back(text.data());
        Pointers.push_back(nullptr);
    }
    std::vector<std::string> Texts;
    std::vector<char*> Pointers;
    int Count;
};

void NameProgram() {
    QApplication::setApplicationName(QStringLiteral("zu"));
    QApplication::setDesktopFileName(QStringLiteral("zu"));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/zu.svg")));
    // Files and texts are written with a decimal point everywhere.
    std::setlocale(LC_NUMERIC, "C");
}

/// What an instrument shows a moment after the start.
constexpr int kScreenshotMilliseconds = 800;

void TakeScreenshot(CMainFrame& frame, const std::string& path, int& code) {
    QTimer::singleShot(kScreenshotMilliseconds, &frame, [&frame, &code, path] {
        code = frame.grab().save(FromPath(path)) ? 0 : 1;
        if (code != 0) std::fprintf(stderr, "zu: cannot write %s\n", path.c_str());
        frame.close();
    });
}

/// A simulated run says so where it is always seen.
QString TitleFor(const CommandOptions& options) {
    if (options.Simulate.empty()) return QStringLiteral("zu");
    return QStringLiteral("zu - simulated ") + FromState(options.Simulate);
}

int RunWindows(std::unique_ptr<InstrumentState> state, bool attended) {
    QtHost host;
    host.SetUnattended(!attended);
    Attachment attachment(state->Command.Simulate);
    HardwareSession hardware(host);
    attachment.AttachTo(hardware);
    HeldKeyFilter keys;
    CMainFrame frame;
    frame.setWindowTitle(TitleFor(state->Command));
    CZuView view(*state, host, hardware, keys, frame);
    view.TheApp().Simulated = attachment.Simulated();
    SignalWatch watch;
    QObject::connect(&watch, &SignalWatch::endWanted, &frame, [&host, &frame] {
        // Before the main loop runs nothing but this ends the loop of a dialog, and those to come are not
        // shown.
        QApplication::exit();
        host.SetUnattended(true);
        frame.close();
    });
    view.Start();
    int code = 0;
    const std::string& picture = view.State().Command.Screenshot;
    if (!picture.empty()) TakeScreenshot(frame, picture, code);
    if (!host.Quitting()) QApplication::exec();
    view.CloseDown();
    return code;
}

}  // namespace

int RunZu(const std::vector<std::string>& arguments) {
    const std::string program = arguments.empty() ? std::string("zu") : arguments.front();
    auto state = std::make_unique<InstrumentState>();
    state->Files.AppDir = ProgramDirectory(program);
    if (const auto end = ParseCommandLine(arguments, state->Files.AppDir, state->Command))
        return PrintEnd(*end);

    const bool attended = IsAttended(state->Command);
    std::optional<OffscreenDesk> desk;
    if (!HasDisplay() || NamedPlatform() == "offscreen") desk.emplace();
    ToolkitArguments toolkit(arguments);
    QApplication application(toolkit.Count, toolkit.Pointers.data());
    NameProgram();
    return RunWindows(std::move(state), attended);
}

}  // namespace zu
