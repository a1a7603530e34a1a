#pragma once

#include <cstdlib>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QPalette>
#include <QStyleFactory>
#include <QTabBar>
#include <QTemporaryFile>
#include <QTest>
#include <QTimer>
#include <QWidget>

#include "support/Bench.h"
#include "ui/ColorChooser.h"

namespace zu::test {

/// A dark desktop's colours.
inline QPalette DarkPalette() {
    QPalette palette(QColor(53, 53, 53), QColor(45, 45, 45));
    palette.setColor(QPalette::Base, QColor(35, 35, 35));
    palette.setColor(QPalette::Highlight, QColor(42, 130, 218));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::ToolTipBase, QColor(53, 53, 53));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(role, QColor(230, 230, 230));
        palette.setColor(QPalette::Disabled, role, QColor(127, 127, 127));
    }
    return palette;
}

/// Makes the off-screen desk as large as an ordinary one, at the scale that ZU_SCALE names. Without a
/// platform in the environment the desk is off-screen: cases are listed on machines without a display as
/// well.
inline void SizeScreen() {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    static QTemporaryFile screen;
    if (qgetenv("QT_QPA_PLATFORM") != "offscreen" || !screen.open()) return;
    const int scale = std::max(qEnvironmentVariableIntValue("ZU_SCALE"), 1);
    const QString text = QStringLiteral(
        R"({"screens":[{"name":"desk","x":0,"y":0,"width":%1,"height":%2,"logicalDpi":96,"logicalBaseDpi":96,"dpr":%3}]})");
    screen.write(text.arg(1600).arg(1000).arg(scale).toLatin1());
    screen.close();
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + screen.fileName().toLocal8Bit());
}

/// The style of every test; ZU_DARK in the environment gives it a dark desktop.
inline void Dress() {
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    if (qEnvironmentVariableIsSet("ZU_DARK")) QApplication::setPalette(DarkPalette());
}

/// Leaves a picture of a window in the folder that ZU_PICTURES names, if it names one.
inline void Snap(QWidget& widget, const char* name) {
    const char* folder = std::getenv("ZU_PICTURES");
    if (folder == nullptr) return;
    QApplication::processEvents();
    widget.grab().save(
        QStringLiteral("%1/%2.png").arg(QString::fromLocal8Bit(folder), QString::fromLatin1(name)));
}

/// The named child; the test ends without it.
template <typename Widget>
Widget* Find(QWidget& parent, const char* name) {
    auto* child = parent.findChild<Widget*>(QString::fromLatin1(name));
    if (child == nullptr) throw std::runtime_error(std::string("no widget named ") + name);
    return child;
}

/// Runs something once a modal dialog of this class is up.
template <typename Dialog>
void WhenShown(std::function<void(Dialog&)> act) {
    const auto run = [act = std::move(act)] {
        if (auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget())) act(*dialog);
    };
    QMetaObject::invokeMethod(qApp, run, Qt::QueuedConnection);
}

/// Letters that Alt reaches in a window, in lower case; hidden pages do not count.
inline std::vector<QChar> Mnemonics(QWidget& window) {
    std::vector<QChar> letters;
    const auto add = [&letters](const QString& text) {
        const QKeySequence key = QKeySequence::mnemonic(text);
        if (!key.isEmpty()) letters.push_back(QChar(key[0].key()).toLower());
    };
    for (QAbstractButton* button : window.findChildren<QAbstractButton*>()) {
        if (button->isVisible()) add(button->text());
    }
    for (QLabel* label : window.findChildren<QLabel*>()) {
        if (label->isVisible() && label->buddy() != nullptr) add(label->text());
    }
    for (QTabBar* tabs : window.findChildren<QTabBar*>()) {
        for (int i = 0; i < tabs->count(); ++i) add(tabs->tabText(i));
    }
    std::sort(letters.begin(), letters.end());
    return letters;
}

/// Names of visible texts and fields that have less room than they need, in the least size of the window.
inline std::vector<std::string> ClippedWhenSmall(QWidget& window) {
    window.resize(window.minimumSizeHint());
    QApplication::processEvents();
    std::vector<std::string> clipped;
    for (QWidget* child : window.findChildren<QWidget*>()) {
        const bool shows = qobject_cast<QAbstractButton*>(child) != nullptr ||
                           qobject_cast<QLabel*>(child) != nullptr ||
                           qobject_cast<QComboBox*>(child) != nullptr;
        if (!shows || !child->isVisible()) continue;
        const QSize needed = child->minimumSizeHint();
        if (child->width() >= needed.width() && child->height() >= needed.height()) continue;
        clipped.push_back(child->objectName().toStdString());
    }
    return clipped;
}

/// Names of the widgets that Tab visits from `first` on, until it comes back there.
inline std::vector<std::string> TabOrder(QWidget* first) {
    std::vector<std::string> names;
    QWidget* widget = first;
    do {
        const bool stops = widget->isVisible() && widget->isEnabled() &&
                           (widget->focusPolicy() & Qt::TabFocus) != 0 &&
                           !widget->objectName().startsWith(QStringLiteral("qt_"));
        if (stops && !widget->objectName().isEmpty()) names.push_back(widget->objectName().toStdString());
        widget = widget->nextInFocusChain();
    } while (widget != first);
    return names;
}

/// Gives the colours of a script.
class ScriptedColors final : public ColorChooser {
  public:
    std::optional<Rgb> Answer;
    Rgb Start = 0;
    std::optional<Rgb> Choose(QWidget* /*owner*/, Rgb start) override {
        Start = start;
        return Answer;
    }
};

}  // namespace zu::test
