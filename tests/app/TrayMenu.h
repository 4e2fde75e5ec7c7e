#pragma once

#include <QAction>
#include <QApplication>
#include <QMenu>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

/// The menu of the tray icon: the program's only menu without a parent.
namespace TrayMenu
{

inline QMenu &menu()
{
    for (auto *const widget : QApplication::topLevelWidgets()) {
        auto *const menu = qobject_cast<QMenu *>(widget);
        if (menu && !menu->parentWidget())
            return *menu;
    }
    throw std::runtime_error("no tray menu");
}

inline std::vector<std::string> titles()
{
    std::vector<std::string> titles;
    for (const auto *const action : menu().actions())
        titles.push_back(action->isSeparator() ? "-" : action->text().toStdString());
    return titles;
}

inline QAction &entry(const std::string &title)
{
    const auto actions = menu().actions();
    const auto found = std::ranges::find(actions, QString::fromStdString(title), &QAction::text);
    if (found == actions.end())
        throw std::runtime_error("no entry " + title);
    return **found;
}

} // namespace TrayMenu
