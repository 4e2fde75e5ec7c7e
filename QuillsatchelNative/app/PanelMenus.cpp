#include "app/PanelMenus.h"

#include "app/EditCommand.h"
#include "app/MainMenu.h"

#include <QApplication>
#include <QMenu>
#include <QMenuBar>

namespace
{

void closeOpenMenus()
{
    while (auto *const menu = QApplication::activePopupWidget()) {
        if (!menu->close())
            return;
    }
}

} // namespace

PanelMenus::PanelMenus(QWidget &panel, const MenuMirror::Perform &perform)
    : QObject(&panel)
    , m_panel(panel)
    , m_applicationMenu(new QMenu(&panel))
    , m_editMenu(new QMenu(&panel))
    , m_panelMenu(new QMenu(&panel))
{
    const auto application = MainMenu::makeApplicationMenu();
    m_applicationMenu->setTitle(application.title);
    // A key is heard while a menu is open, too, which would stay over what the key changes.
    MenuMirror::fill(*m_applicationMenu, application.items, [perform](const MenuItem &item) {
        closeOpenMenus();
        perform(item);
    });
    const auto edit = MainMenu::makeEditMenu();
    m_editMenu->setTitle(edit.title);
    MenuMirror::fill(*m_editMenu, edit.items,
                     [this](const MenuItem &item) { EditCommand::perform(item.action, focus()); });
    connect(m_editMenu, &QMenu::aboutToShow, this, &PanelMenus::renderEditMenu);

    // A menu that nobody sees has keys that nobody hears: they are the panel's.
    const auto actions = m_applicationMenu->actions();
    for (auto *const action : actions)
        action->setShortcutContext(Qt::ApplicationShortcut);
    panel.addActions(actions);

    m_panelMenu->addActions(actions);
    m_panelMenu->addSeparator();
    m_panelMenu->addMenu(m_editMenu);
}

void PanelMenus::offerToDesktop()
{
    auto *const bar = new QMenuBar(&m_panel);
    bar->addMenu(m_applicationMenu);
    bar->addMenu(m_editMenu);
    if (!bar->isNativeMenuBar())
        delete bar; // it would be drawn into the panel
}

void PanelMenus::popUp(const QPoint &place)
{
    m_panelMenu->popup(place);
}

// A desktop's menu bar may have taken the keyboard from the panel.
QWidget *PanelMenus::focus() const
{
    auto *const focus = QApplication::focusWidget();
    return focus ? focus : m_panel.focusWidget();
}

void PanelMenus::renderEditMenu()
{
    for (auto *const action : m_editMenu->actions()) {
        if (!action->isSeparator())
            action->setEnabled(EditCommand::isPossible(MenuMirror::actionOf(*action), focus()));
    }
}
