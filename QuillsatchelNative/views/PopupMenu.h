#pragma once

#include <QContextMenuEvent>
#include <QMenu>

/// A context menu. It closes when an entry is chosen, even through the accessibility tree. It never
/// blocks, so its owner may be deleted while it is open.
class PopupMenu : public QMenu
{
    Q_OBJECT

public:
    /// `owner` owns the menu.
    explicit PopupMenu(QWidget *owner);

    /// Opens the menu at `place` on the screen. The reason `Keyboard` selects the first entry.
    void open(const QPoint &place, QContextMenuEvent::Reason reason = QContextMenuEvent::Other);
};
