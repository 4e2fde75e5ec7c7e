#include "views/Announcement.h"

#include <QAccessible>
#include <QWidget>

// Qt keeps alerts as such to itself. What reaches a screen reader is that something is shown, and
// of an alert it then says the name.
void announce(QWidget &alert)
{
    if (alert.isHidden()) {
        alert.show();
        return;
    }
    QAccessibleEvent shown(&alert, QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&shown);
}
