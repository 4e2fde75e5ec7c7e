#include "app/MainMenu.h"

#include <QCoreApplication>

namespace
{

QString tr(const char *text)
{
    return QCoreApplication::translate("MainMenu", text);
}

} // namespace

std::vector<MenuItem> MainMenu::makeApplicationMenu()
{
    using Action = MenuItem::Action;
    return {
        { .action = Action::showAbout, .title = tr("About Quillsatchel") },
        { .action = Action::showSettings,
          .title = tr("Settings…"),
          .keyEquivalent = Qt::CTRL | Qt::Key_Comma },
        MenuItem::separator(),
        { .action = Action::hide,
          .title = tr("Hide Quillsatchel"),
          .keyEquivalent = Qt::CTRL | Qt::Key_H },
        { .action = Action::quitApp,
          .title = tr("Quit Quillsatchel"),
          .keyEquivalent = Qt::CTRL | Qt::Key_Q },
    };
}
