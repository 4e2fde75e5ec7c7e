#include "app/PanelApplication.h"

#include <QContextMenuEvent>
#include <QKeyEvent>

namespace
{

bool isShiftF10(const QEvent &event)
{
    if (event.type() != QEvent::KeyPress)
        return false;
    const auto &key = static_cast<const QKeyEvent &>(event);
    return key.key() == Qt::Key_F10 && key.modifiers() == Qt::ShiftModifier;
}

} // namespace

PanelApplication::PanelApplication(int &count, char **values)
    : QApplication(count, values)
{
    setQuitOnLastWindowClosed(false);
}

bool PanelApplication::event(QEvent *event)
{
    if (event->type() != QEvent::Quit)
        return QApplication::event(event);
    exit(0);
    return true;
}

// The window passes the event on to the focused widget, as it does for the Menu key.
bool PanelApplication::notify(QObject *receiver, QEvent *event)
{
    if (!receiver->isWindowType() || !isShiftF10(*event))
        return QApplication::notify(receiver, event);
    QContextMenuEvent request(QContextMenuEvent::Keyboard, QPoint(), QPoint());
    return QApplication::notify(receiver, &request);
}
