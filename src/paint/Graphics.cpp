#include "paint/Graphics.h"

#include <array>

#include <QGuiApplication>

namespace zu {

void EnsureGraphics() {
    if (QCoreApplication::instance() != nullptr) return;
    static std::array<char, 4> program{"zu"};
    static std::array<char, 10> option{"-platform"};
    static std::array<char, 10> platform{"offscreen"};
    static std::array<char*, 4> arguments{program.data(), option.data(), platform.data(), nullptr};
    static int count = 3;
    static QGuiApplication application(count, arguments.data());
}

}  // namespace zu
