#include "views/Announcement.h"

#include <QAccessible>
#include <QWidget>

// Qt does not forward alert events to the accessibility bus, but it forwards show events, and
// screen readers speak the name of an alert that is shown.
void announce(QWidget &alert)
{
    if (alert.isHidden()) {
        alert.show();
        return;
    }
    QAccessibleEvent shown(&alert, QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&shown);
}
