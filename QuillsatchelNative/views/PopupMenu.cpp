#include "views/PopupMenu.h"

PopupMenu::PopupMenu(QWidget *owner)
    : QMenu(owner)
{
    // An entry that is activated through the accessibility tree does not close its menu.
    connect(this, &QMenu::triggered, this, &QWidget::close);
}

void PopupMenu::open(const QPoint &place, QContextMenuEvent::Reason reason)
{
    popup(place);
    if (reason == QContextMenuEvent::Keyboard)
        setActiveAction(actions().value(0));
}
