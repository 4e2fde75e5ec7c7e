#pragma once

#include "app/MenuMirror.h"
#include "views/TextWidget.h"

#include <QContextMenuEvent>
#include <QObject>

#include <functional>
#include <optional>
#include <vector>

class Pasteboard;
class PopupMenu;
class QMenu;
class QPoint;
class QuillsatchelView;
class QWidget;

/// The application menu and the Edit menu of the panel. Shows them in the desktop's global menu bar
/// if it has one, and as one context menu of the panel. The shortcuts of the application menu work
/// in every window of the program; text widgets handle those of the Edit menu themselves.
class PanelMenus final : public QObject
{
    Q_OBJECT

public:
    /// `panel` becomes the parent. `perform` receives the chosen entries of the application menu
    /// and the launchers. The Edit menu acts on the focused text of `content`, or of a dialog in
    /// front of it. `content` and `pasteboard` must outlive the menus.
    PanelMenus(QWidget &panel, const QuillsatchelView &content, const Pasteboard &pasteboard,
               MenuMirror::Perform perform);

    /// The launchers to list in the context menu; called each time it opens.
    std::function<std::vector<MenuItem>()> launcherItems = [] { return std::vector<MenuItem>(); };

    /// Offers the menus to the global menu bar. Makes D-Bus calls.
    void offerToDesktop();

    /// Opens the context menu at a position on the screen.
    void popUp(const QPoint &place, QContextMenuEvent::Reason reason);

private:
    void fillApplicationMenu();
    void renderPanelMenu();
    void addLaunchers();
    std::optional<TextWidget> focusedText() const;

    QWidget &m_panel;
    const QuillsatchelView &m_content;
    MenuMirror::Perform m_perform;
    QMenu *m_applicationMenu;
    QMenu *m_editMenu;
    PopupMenu *m_panelMenu; // has the entries of the other two
};
