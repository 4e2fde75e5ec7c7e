#pragma once

#include <QContextMenuEvent>
#include <QMenu>

/// A context menu. It closes when an entry is chosen, also by assistive technology. It never
/// blocks, so its owner may be deleted while it is open.
class PopupMenu : public QMenu
{
    Q_OBJECT

public:
    /// `owner` deletes the menu with itself.
    explicit PopupMenu(QWidget *owner);

    /// Opens at a place on the screen. Opened by keyboard, it starts with the first entry selected.
    void open(const QPoint &place, QContextMenuEvent::Reason reason = QContextMenuEvent::Other);
};
