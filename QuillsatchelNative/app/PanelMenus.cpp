#include "app/PanelMenus.h"

#include "app/EditMenu.h"
#include "app/MainMenu.h"
#include "views/PopupMenu.h"
#include "views/QuillsatchelView.h"

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

PanelMenus::PanelMenus(QWidget &panel, const QuillsatchelView &content,
                       const Pasteboard &pasteboard, MenuMirror::Perform perform)
    : QObject(&panel)
    , m_panel(panel)
    , m_content(content)
    , m_perform(std::move(perform))
    , m_applicationMenu(new QMenu(QStringLiteral("Quillsatchel"), &panel))
    , m_editMenu(new QMenu(tr("Edit"), &panel))
    , m_panelMenu(new PopupMenu(&panel))
{
    fillApplicationMenu();
    EditMenu::fill(
        *m_editMenu, [this] { return focusedText(); }, pasteboard);
}

void PanelMenus::fillApplicationMenu()
{
    // Shortcuts work while a menu is open. It would cover what they show.
    MenuMirror::fill(*m_applicationMenu, MainMenu::makeApplicationMenu(),
                     [this](const MenuItem &item) {
                         closeOpenMenus();
                         m_perform(item);
                     });
    // Shortcuts of a hidden menu never fire, so the panel owns the actions.
    const auto actions = m_applicationMenu->actions();
    for (auto *const action : actions)
        action->setShortcutContext(Qt::ApplicationShortcut);
    m_panel.addActions(actions);
}

void PanelMenus::offerToDesktop()
{
    auto *const bar = new QMenuBar(&m_panel);
    bar->addMenu(m_applicationMenu);
    bar->addMenu(m_editMenu);
    if (!bar->isNativeMenuBar())
        delete bar; // the panel would show it
}

void PanelMenus::popUp(const QPoint &place, QContextMenuEvent::Reason reason)
{
    renderPanelMenu();
    m_panelMenu->open(place, reason);
}

// The launchers go before the separator that follows "Settings…".
void PanelMenus::renderPanelMenu()
{
    m_panelMenu->clear();
    for (auto *const action : m_applicationMenu->actions()) {
        if (action->isSeparator())
            addLaunchers();
        m_panelMenu->addAction(action);
    }
    m_panelMenu->addSeparator();
    m_panelMenu->addMenu(m_editMenu);
}

void PanelMenus::addLaunchers()
{
    const auto items = launcherItems();
    if (!items.empty())
        m_panelMenu->addSeparator();
    for (const auto &item : items)
        MenuMirror::addAction(*m_panelMenu, item, m_perform);
}

// The global menu bar, or a menu in use, takes the keyboard from the panel.
std::optional<TextWidget> PanelMenus::focusedText() const
{
    auto *const focus = QApplication::focusWidget();
    return focus && focus->windowType() != Qt::Popup ? TextWidget::of(focus)
                                                     : m_content.focusedText();
}
