#include "ui/MainMenu.h"

#include <algorithm>
#include <utility>

#include <QAction>
#include <QActionGroup>
#include <QFileInfo>
#include <QFontDatabase>
#include <QMenu>
#include <QMenuBar>

#include "ui/MenuTree.h"
#include "ui/QtText.h"

namespace zu {
namespace {

/// Families of which one member is in force look like radio buttons.
bool IsExclusive(CommandId id) {
    const auto within = [id](CommandId first, CommandId last) { return FamilyIndex(id, first, last) >= 0; };
    return within(CommandId::CaptureMode0, CommandId::CaptureModeLast) ||
           within(CommandId::LoopNormal, CommandId::LoopFaster) ||
           within(CommandId::Rate0, CommandId::RateLast) ||
           within(CommandId::ClockInternal, CommandId::ClockRisingFalling) ||
           within(CommandId::Memory0, CommandId::MemoryLast) ||
           within(CommandId::Scene0, CommandId::SceneLast) || within(CommandId::Zoom0, CommandId::ZoomLast);
}

}  // namespace

QList<QKeySequence> KeysOf(CommandId id) {
    const QString key = FromState(Traits(id).Key);
    // The key of Go stops as well, so it belongs to an action of its own.
    if (key.isEmpty() || id == CommandId::Go) return {};
    QList<QKeySequence> keys{QKeySequence(key)};
    // The plus sign stands on a shifted key of many keyboards.
    if (id == CommandId::ZoomIn) keys << QKeySequence(Qt::Key_Equal) << QKeySequence(QKeySequence::ZoomIn);
    if (id == CommandId::ZoomOut) keys << QKeySequence(QKeySequence::ZoomOut);
    return keys;
}

MainMenu::MainMenu(QMenuBar& bar, QWidget& shortcutOwner, Source source)
    : QObject(&shortcutOwner), source_(std::move(source)) {
    MakeActions(shortcutOwner);
    BuildTree(bar);
}

void MainMenu::MakeActions(QWidget& shortcutOwner) {
    for (std::size_t i = 0; i < kCommandCount; ++i) {
        const auto id = static_cast<CommandId>(i);
        auto* action = new QAction(FromState(Traits(id).Text), this);
        action->setShortcuts(KeysOf(id));
        action->setAutoRepeat(id == CommandId::ZoomIn || id == CommandId::ZoomOut);
        action->setStatusTip(FromState(Traits(id).Hint));
        if (IsTabular(id)) action->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
        if (IsExclusive(id)) {
            // A group of its own draws the round mark; the state decides what is checked.
            auto* group = new QActionGroup(action);
            group->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
            group->addAction(action);
        }
        connect(action, &QAction::triggered, this, [this, id] { source_.Run(id); });
        // Keys work whether or not the entry's menu was ever opened.
        shortcutOwner.addAction(action);
        actions_[i] = action;
    }
    auto* goKey = new QAction(this);
    goKey->setShortcut(QKeySequence(FromState(Traits(CommandId::Go).Key)));
    goKey->setAutoRepeat(false);
    connect(goKey, &QAction::triggered, this, [this] { source_.GoOrStop(); });
    shortcutOwner.addAction(goKey);
}

QMenu* MainMenu::OpenMenu(QMenuBar& bar, QMenu* parent, std::string_view text) {
    QMenu* menu = parent == nullptr ? bar.addMenu(FromState(text)) : parent->addMenu(FromState(text));
    menu->setToolTipsVisible(true);
    if (parent == nullptr) {
        connect(menu, &QMenu::aboutToShow, this, [this] {
            source_.Prepare();
            Refresh();
        });
    }
    return menu;
}

void MainMenu::BuildTree(QMenuBar& bar) {
    QList<QMenu*> open;
    for (const MenuRow& row : MenuTree()) {
        QMenu* menu = open.isEmpty() ? nullptr : open.last();
        switch (row.What) {
            case MenuRow::Kind::Begin:
                open.append(OpenMenu(bar, menu, row.Text));
                break;
            case MenuRow::Kind::End:
                menus_.append(open.takeLast());
                break;
            case MenuRow::Kind::Separator:
                menu->addSeparator();
                break;
            case MenuRow::Kind::Commands:
                for (CommandId id = row.First; id <= row.Last; id = Plus(id, 1)) menu->addAction(Action(id));
                break;
            case MenuRow::Kind::Recent:
                recentMark_ = menu->addSeparator();
                connect(menu, &QMenu::aboutToShow, this, [this, menu] { FillRecent(*menu); });
                break;
            case MenuRow::Kind::Windows:
                connect(menu, &QMenu::aboutToShow, this, [this, menu] { FillWindows(*menu); });
                break;
        }
    }
}

void MainMenu::FillRecent(QMenu& menu) {
    qDeleteAll(std::exchange(recent_, {}));
    int number = 0;
    for (const QString& path : source_.RecentFiles()) {
        QString name = QFileInfo(path).fileName();
        name.replace(u'&', QStringLiteral("&&"));
        auto* action = new QAction(QStringLiteral("&%1 %2").arg(++number).arg(name), this);
        action->setToolTip(path);
        action->setStatusTip(path);
        connect(action, &QAction::triggered, this, [this, path] { source_.OpenRecent(path); });
        menu.insertAction(recentMark_, action);
        recent_.append(action);
    }
}

void MainMenu::FillWindows(QMenu& menu) {
    qDeleteAll(std::exchange(windows_, {}));
    const QList<QAction*> before = menu.actions();
    source_.ListWindows(menu);
    for (QAction* action : menu.actions()) {
        if (!before.contains(action)) windows_.append(action);
    }
}

void MainMenu::RefreshAction(CommandId id) {
    const CommandState state = source_.Query(id);
    QAction* action = Action(id);
    const bool shown = !state.Removed && !state.Text.empty();
    action->setVisible(shown);
    action->setEnabled(state.Enabled && shown);
    action->setCheckable(state.Checkable);
    action->setChecked(state.Checkable && state.Checked);
    const QString key = id == CommandId::Go ? QStringLiteral("\t") + FromState(Traits(id).Key) : QString();
    action->setText(FromState(state.Text) + key);
    action->setStatusTip(FromState(state.WhyNot.empty() ? Traits(id).Hint : state.WhyNot));
    // Most styles pass over grey entries, and with them their status text; a tool tip is shown for these too.
    action->setToolTip(FromState(state.WhyNot));
}

void MainMenu::Refresh() {
    for (std::size_t i = 0; i < kCommandCount; ++i) RefreshAction(static_cast<CommandId>(i));
    for (QMenu* menu : std::as_const(menus_)) {
        const QList<QAction*> entries = menu->actions();
        const bool any = std::any_of(entries.begin(), entries.end(), [](const QAction* entry) {
            return entry->isVisible() && !entry->isSeparator();
        });
        menu->menuAction()->setVisible(any);
    }
}

}  // namespace zu
