#include "app/PanelMenus.h"

#include "app/EditCommand.h"
#include "app/MainMenu.h"
#include "views/PopupMenu.h"

#include <QApplication>
#include <QMenu>
#include <QMenuBar>

#include <utility>

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

PanelMenus::PanelMenus(QWidget &panel, const Pasteboard &pasteboard, MenuMirror::Perform perform)
    : QObject(&panel)
    , m_panel(panel)
    , m_pasteboard(pasteboard)
    , m_perform(std::move(perform))
    , m_applicationMenu(new QMenu(&panel))
    , m_editMenu(new QMenu(&panel))
    , m_panelMenu(new PopupMenu(&panel))
{
    const auto application = MainMenu::makeApplicationMenu();
    m_applicationMenu->setTitle(application.title);
    // Shortcuts work while a menu is open, which would stay in front of what they change.
    MenuMirror::fill(*m_applicationMenu, application.items, [this](const MenuItem &item) {
        closeOpenMenus();
        m_perform(item);
    });
    const auto edit = MainMenu::makeEditMenu();
    m_editMenu->setTitle(edit.title);
    MenuMirror::fill(*m_editMenu, edit.items, [this](const MenuItem &item) {
        EditCommand::perform(item.action, focus(), m_pasteboard);
    });
    connect(m_editMenu, &QMenu::aboutToShow, this, &PanelMenus::renderEditMenu);

    // Shortcuts of a hidden menu never fire, so the panel owns the actions.
    const auto actions = m_applicationMenu->actions();
    for (auto *const action : actions)
        action->setShortcutContext(Qt::ApplicationShortcut);
    panel.addActions(actions);
}

void PanelMenus::offerToDesktop()
{
    auto *const bar = new QMenuBar(&m_panel);
    bar->addMenu(m_applicationMenu);
    bar->addMenu(m_editMenu);
    if (!bar->isNativeMenuBar())
        delete bar; // it would be drawn into the panel
}

void PanelMenus::popUp(const QPoint &place, QContextMenuEvent::Reason reason)
{
    renderPanelMenu();
    m_panelMenu->open(place, reason);
}

void PanelMenus::renderPanelMenu()
{
    m_panelMenu->clear();
    for (auto *const action : m_applicationMenu->actions()) {
        m_panelMenu->addAction(action);
        if (MenuMirror::actionOf(*action) == MenuItem::Action::ShowSettings)
            addLaunchers();
    }
    m_panelMenu->addSeparator();
    m_panelMenu->addMenu(m_editMenu);
}

// The application menu has a separator after these.
void PanelMenus::addLaunchers()
{
    const auto items = launcherItems();
    if (!items.empty())
        m_panelMenu->addSeparator();
    for (const auto &item : items)
        m_panelMenu->addAction(MenuMirror::makeAction(item, m_perform, m_panelMenu));
}

// The keyboard may be with the desktop's menu bar, or with a menu that is used by keys. The panel
// remembers which of its widgets had it before.
QWidget *PanelMenus::focus() const
{
    auto *const focus = QApplication::focusWidget();
    return focus && focus->windowType() != Qt::Popup ? focus : m_panel.focusWidget();
}

void PanelMenus::renderEditMenu()
{
    for (auto *const action : m_editMenu->actions()) {
        if (!action->isSeparator())
            action->setEnabled(
                EditCommand::isPossible(MenuMirror::actionOf(*action), focus(), m_pasteboard));
    }
}
