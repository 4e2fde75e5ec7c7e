#pragma once

#include "app/MenuMirror.h"

#include <QContextMenuEvent>
#include <QObject>

#include <functional>
#include <vector>

class Pasteboard;
class PopupMenu;
class QMenu;
class QPoint;
class QWidget;

/// The application menu and the Edit menu of the panel: in the desktop's menu bar if it has one for
/// all programs, and as one menu that pops up over the panel. The application menu's keys work in
/// every window of the program; those of the Edit menu are the text's own.
class PanelMenus final : public QObject
{
    Q_OBJECT

public:
    /// The menus of `panel`, which becomes their parent. `perform` is called with what is chosen
    /// from the application menu and from the launchers. `pasteboard` must outlive the menus.
    PanelMenus(QWidget &panel, const Pasteboard &pasteboard, MenuMirror::Perform perform);

    /// The launchers to list in the menu that pops up; asked each time it opens.
    std::function<std::vector<MenuItem>()> launcherItems = [] { return std::vector<MenuItem>(); };

    /// Offers the menus to the desktop's menu bar. Asks the desktop over D-Bus.
    void offerToDesktop();

    /// Shows all entries in one menu, at a place on the screen.
    void popUp(const QPoint &place, QContextMenuEvent::Reason reason);

private:
    void renderPanelMenu();
    void addLaunchers();
    QWidget *focus() const;
    void renderEditMenu();

    QWidget &m_panel;
    const Pasteboard &m_pasteboard;
    MenuMirror::Perform m_perform;
    QMenu *m_applicationMenu;
    QMenu *m_editMenu;
    PopupMenu *m_panelMenu; // both in one
};
