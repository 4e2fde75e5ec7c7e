#include "app/PanelApplication.h"

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
