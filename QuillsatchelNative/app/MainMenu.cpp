#include "app/MainMenu.h"

#include <QCoreApplication>

namespace
{

QString tr(const char *text)
{
    return QCoreApplication::translate("MainMenu", text);
}

} // namespace

Menu MainMenu::makeApplicationMenu()
{
    using Action = MenuItem::Action;
    return { .title = QStringLiteral("Quillsatchel"),
             .items = {
                 { .action = Action::ShowAbout, .title = tr("About Quillsatchel") },
                 { .action = Action::ShowSettings,
                   .title = tr("Settings…"),
                   .keyEquivalent = Qt::CTRL | Qt::Key_Comma },
                 MenuItem::separator(),
                 { .action = Action::Hide,
                   .title = tr("Hide Quillsatchel"),
                   .keyEquivalent = Qt::CTRL | Qt::Key_H },
                 { .action = Action::Quit,
                   .title = tr("Quit Quillsatchel"),
                   .keyEquivalent = Qt::CTRL | Qt::Key_Q },
             } };
}

Menu MainMenu::makeEditMenu()
{
    using Action = MenuItem::Action;
    return { .title = tr("Edit"),
             .items = {
                 { .action = Action::Undo,
                   .title = tr("Undo"),
                   .keyEquivalent = Qt::CTRL | Qt::Key_Z },
                 { .action = Action::Redo,
                   .title = tr("Redo"),
                   .keyEquivalent = Qt::CTRL | Qt::SHIFT | Qt::Key_Z },
                 MenuItem::separator(),
                 { .action = Action::Cut,
                   .title = tr("Cut"),
                   .keyEquivalent = Qt::CTRL | Qt::Key_X },
                 { .action = Action::Copy,
                   .title = tr("Copy"),
                   .keyEquivalent = Qt::CTRL | Qt::Key_C },
                 { .action = Action::Paste,
                   .title = tr("Paste"),
                   .keyEquivalent = Qt::CTRL | Qt::Key_V },
                 { .action = Action::SelectAll,
                   .title = tr("Select All"),
                   .keyEquivalent = Qt::CTRL | Qt::Key_A },
             } };
}
