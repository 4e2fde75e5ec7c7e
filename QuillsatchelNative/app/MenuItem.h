#pragma once

#include "launchers/LauncherIcon.h"

#include <QKeySequence>
#include <QString>

#include <optional>

/// An entry of a menu, apart from how a desktop shows it.
struct MenuItem {
    /// What choosing the entry asks the program to do.
    enum class Action {
        None,
        ShowPanel,
        ToggleFloating,
        ShowAbout,
        ShowSettings,
        Hide,
        LaunchConfiguredItem,
        Quit,
        Undo,
        Redo,
        Cut,
        Copy,
        Paste,
        SelectAll,
    };

    Action action = Action::None; ///< a separator has none
    QString title = {};           ///< as people read it, without marks for mnemonics
    QKeySequence keyEquivalent = {};
    std::optional<bool> state = {}; ///< of the check mark, where the entry has one
    std::optional<LauncherIcon> image = {};
    std::optional<int> representedSlot = {}; ///< the launcher slot that the entry stands for

    static MenuItem separator() { return {}; }

    bool isSeparator() const { return action == Action::None; }
};
