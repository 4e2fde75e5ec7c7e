#pragma once

#include "app/MenuMirror.h"

#include <QObject>

class QMenu;
class QPoint;
class QWidget;

/// The application menu and the Edit menu of the panel: in the desktop's menu bar if it has one for
/// all programs, and wherever they are popped up. The application menu's keys work in every window
/// of the program; those of the Edit menu are the text's own.
class PanelMenus final : public QObject
{
    Q_OBJECT

public:
    /// The menus of `panel`, which becomes their parent. `perform` is called with what is chosen
    /// from the application menu.
    PanelMenus(QWidget &panel, const MenuMirror::Perform &perform);

    /// Offers the menus to the desktop's menu bar. Asks the desktop over D-Bus.
    void offerToDesktop();

    /// Shows all entries in one menu, at a place on the screen.
    void popUp(const QPoint &place);

private:
    QWidget *focus() const;
    void renderEditMenu();

    QWidget &m_panel;
    QMenu *m_applicationMenu;
    QMenu *m_editMenu;
    QMenu *m_panelMenu; // both in one
};
