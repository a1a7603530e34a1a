#include "ui/CZuApp.h"

#include <array>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include <QApplication>

#include "core/CommandLine.h"
#include "core/Paths.h"
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

int PrintEnd(const CommandLineEnd& end) {
    std::fputs(end.Text.c_str(), end.OnError ? stderr : stdout);
    return end.ExitCode;
}

/// The toolkit gets arguments of its own: the program's switches are none of its business.
struct ToolkitArguments {
    explicit ToolkitArguments(std::string program) : Program(std::move(program)) {
        Pointers = {Program.data(), nullptr};
    }
    std::string Program;
    int Count = 1;
    std::array<char*, 2> Pointers{};
};

void NameProgram() {
    QApplication::setApplicationName(QStringLiteral("zu"));
    QApplication::setDesktopFileName(QStringLiteral("zu"));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/zu.svg")));
    // Files and texts are written with a decimal point everywhere.
    std::setlocale(LC_NUMERIC, "C");
}

int RunWindows(std::unique_ptr<InstrumentState> state, bool attended) {
    QtHost host;
    host.SetUnattended(!attended);
    HardwareSession hardware(host);
    HeldKeyFilter keys;
    CMainFrame frame;
    frame.setWindowTitle(QStringLiteral("zu"));
    CZuView view(*state, host, hardware, keys, frame);
    SignalWatch watch;
    QObject::connect(&watch, &SignalWatch::endWanted, &frame, &QWidget::close);
    view.Start();
    const int code = host.Quitting() ? 0 : QApplication::exec();
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

    const bool attended = HasDisplay();
    if (!attended) setenv("QT_QPA_PLATFORM", "offscreen", 1);
    ToolkitArguments toolkit(program);
    QApplication application(toolkit.Count, toolkit.Pointers.data());
    NameProgram();
    return RunWindows(std::move(state), attended);
}

}  // namespace zu
