#include "paint/Graphics.h"

#include <array>

#include <QGuiApplication>

namespace zu {
namespace {

QtMessageHandler shown = nullptr;

/// A script has no session of a desktop, and a picture needs none.
void ShowAllButTheMissingSession(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (!text.startsWith(QStringLiteral("QStandardPaths: XDG_RUNTIME_DIR"))) shown(type, context, text);
}

}  // namespace

void EnsureGraphics() {
    if (QCoreApplication::instance() != nullptr) return;
    shown = qInstallMessageHandler(ShowAllButTheMissingSession);
    static std::array<char, 4> program{"zu"};
    static std::array<char, 10> option{"-platform"};
    static std::array<char, 10> platform{"offscreen"};
    static std::array<char*, 4> arguments{program.data(), option.data(), platform.data(), nullptr};
    static int count = 3;
    static QGuiApplication application(count, arguments.data());
}

}  // namespace zu
