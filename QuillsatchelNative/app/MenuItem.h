#pragma once

#include "launchers/LauncherIcon.h"

#include <QKeySequence>
#include <QString>

#include <optional>

/// A menu entry for a command of the application, independent of how a desktop shows it.
struct MenuItem {
    enum class Action {
        none, ///< a separator
        showPanel,
        toggleFloating,
        showAbout,
        showSettings,
        hide,
        launchConfiguredItem,
        quitApp,
    };

    Action action = Action::none;
    QString title = {}; ///< without mnemonics
    QKeySequence keyEquivalent = {};
    std::optional<bool> state = {}; ///< of the check mark; none for an entry without one
    std::optional<LauncherIcon> image = {};
    std::optional<int> representedSlot = {}; ///< the launcher slot to open

    static MenuItem separator() { return {}; }

    bool isSeparator() const { return action == Action::none; }
};
