#include "app/StatusMenu.h"

#include "launchers/LauncherStore.h"
#include "support/SingleLine.h"

#include <QCoreApplication>

namespace
{

QString tr(const char *text)
{
    return QCoreApplication::translate("StatusMenu", text);
}

MenuItem makeLauncherItem(const LauncherStore::ConfiguredItem &configured,
                          const LauncherStore &launchers, double scale)
{
    return { .action = MenuItem::Action::LaunchConfiguredItem,
             .title = SingleLine::abridged(configured.item.name),
             .image = launchers.icon(configured.item, StatusMenu::LauncherIconSize, scale),
             .representedSlot = configured.slot };
}

} // namespace

Menu StatusMenu::make(bool isAlwaysOnTop, const LauncherStore &launchers, double scale)
{
    using Action = MenuItem::Action;
    Menu menu { .items = {
                    { .action = Action::ShowPanel, .title = tr("Show Quillsatchel") },
                    { .action = Action::ToggleFloating,
                      .title = tr("Always on Top"),
                      .state = isAlwaysOnTop },
                    { .action = Action::ShowSettings,
                      .title = tr("Settings…"),
                      .keyEquivalent = Qt::CTRL | Qt::Key_Comma,
                      .image = LauncherIcon { {}, "gearshape", "Settings" } },
                } };
    const auto launcherItems = makeLauncherItems(launchers, scale);
    if (!launcherItems.empty())
        menu.items.push_back(MenuItem::separator());
    menu.items.insert(menu.items.end(), launcherItems.begin(), launcherItems.end());
    menu.items.push_back(MenuItem::separator());
    menu.items.push_back({ .action = Action::Quit,
                           .title = tr("Quit Quillsatchel"),
                           .keyEquivalent = Qt::CTRL | Qt::Key_Q });
    return menu;
}

std::vector<MenuItem> StatusMenu::makeLauncherItems(const LauncherStore &launchers, double scale)
{
    std::vector<MenuItem> items;
    for (const auto &configured : launchers.configuredItems())
        items.push_back(makeLauncherItem(configured, launchers, scale));
    return items;
}
