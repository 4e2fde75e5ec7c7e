#include "app/StatusMenu.h"

#include "launchers/LauncherStore.h"
#include "support/SingleLine.h"

#include <QCoreApplication>

namespace
{

constexpr int LauncherIconSize = 18; // points, square

QString translated(const char *text)
{
    return QCoreApplication::translate("StatusMenu", text);
}

MenuItem makeLauncherItem(const LauncherStore::ConfiguredItem &configured,
                          const LauncherStore &launchers, double scale)
{
    return { .action = MenuItem::Action::launchConfiguredItem,
             .title = SingleLine::abridged(configured.item.name),
             .image = launchers.icon(configured.item, LauncherIconSize, scale),
             .representedSlot = configured.slot };
}

} // namespace

std::vector<MenuItem> StatusMenu::make(bool isAlwaysOnTop, const LauncherStore &launchers,
                                       double scale)
{
    using Action = MenuItem::Action;
    std::vector<MenuItem> items {
        { .action = Action::showPanel, .title = translated("Show Quillsatchel") },
        { .action = Action::toggleFloating,
          .title = translated("Always on Top"),
          .state = isAlwaysOnTop },
        { .action = Action::showSettings,
          .title = translated("Settings…"),
          .keyEquivalent = Qt::CTRL | Qt::Key_Comma,
          .image = LauncherIcon { {}, "gearshape", "Settings" } },
    };
    const auto launcherItems = makeLauncherItems(launchers, scale);
    if (!launcherItems.empty())
        items.push_back(MenuItem::separator());
    items.insert(items.end(), launcherItems.begin(), launcherItems.end());
    items.push_back(MenuItem::separator());
    items.push_back({ .action = Action::quitApp,
                      .title = translated("Quit Quillsatchel"),
                      .keyEquivalent = Qt::CTRL | Qt::Key_Q });
    return items;
}

std::vector<MenuItem> StatusMenu::makeLauncherItems(const LauncherStore &launchers, double scale)
{
    std::vector<MenuItem> items;
    for (const auto &configured : launchers.configuredItems())
        items.push_back(makeLauncherItem(configured, launchers, scale));
    return items;
}
