#pragma once

#include <array>
#include <functional>

#include <QObject>
#include <QStringList>

#include "core/Commands.h"

class QAction;
class QMenu;
class QMenuBar;

namespace zu {

/// The main menu: one action a command, its look asked for each time a menu opens.
class MainMenu final : public QObject {
    Q_OBJECT

  public:
    /// What the menu needs of the controller.
    struct Source {
        std::function<void()> Prepare;  ///< before a menu opens
        std::function<CommandState(CommandId)> Query;
        std::function<void(CommandId)> Run;
        std::function<void()> GoOrStop;                  ///< the key of Go
        std::function<void(const QString&)> OpenRecent;  ///< a path
        std::function<QStringList()> RecentFiles;        ///< paths, newest first
        std::function<void(QMenu&)> ListWindows;         ///< appends the open windows
    };

    MainMenu(QMenuBar& bar, QWidget& shortcutOwner, Source source);

    [[nodiscard]] QAction* Action(CommandId id) const { return actions_[Index(id)]; }
    /// Texts, checks and enabling of every entry; menus that are left with nothing disappear.
    void Refresh();

  private:
    void MakeActions(QWidget& shortcutOwner);
    void BuildTree(QMenuBar& bar);
    QMenu* OpenMenu(QMenuBar& bar, QMenu* parent, std::string_view text);
    void FillRecent(QMenu& menu);
    void FillWindows(QMenu& menu);
    void RefreshAction(CommandId id);

    Source source_;
    std::array<QAction*, kCommandCount> actions_{};
    QList<QMenu*> menus_;  ///< inner menus before the ones that hold them
    QList<QAction*> recent_;
    QList<QAction*> windows_;
    QAction* recentMark_ = nullptr;
};

/// Keys of a command, in the order of importance; the first is shown in the menu.
QList<QKeySequence> KeysOf(CommandId id);

}  // namespace zu
