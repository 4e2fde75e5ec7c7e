#include "views/PopupMenu.h"

PopupMenu::PopupMenu(QWidget *owner)
    : QMenu(owner)
{
    // Qt leaves the menu open when an entry is activated through the accessibility tree.
    connect(this, &QMenu::triggered, this, &QWidget::close);
}

void PopupMenu::open(const QPoint &place, QContextMenuEvent::Reason reason)
{
    popup(place);
    if (reason == QContextMenuEvent::Keyboard)
        setActiveAction(actions().value(0));
}
