#include "views/Hover.h"

#include <QApplication>
#include <QCursor>
#include <QMouseEvent>
#include <QWidget>
#include <QWindow>

void Hover::update(const QWidget &area)
{
    if (!area.underMouse() || QGuiApplication::mouseButtons() != Qt::NoButton ||
        QApplication::activePopupWidget())
        return;
    auto *const window = area.window()->windowHandle();
    const QPointF place = QCursor::pos();
    const QPointF inWindow = window->mapFromGlobal(place);
    QMouseEvent event(QEvent::MouseMove, inWindow, inWindow, place, Qt::NoButton, Qt::NoButton,
                      QGuiApplication::keyboardModifiers());
    QCoreApplication::sendEvent(window, &event);
}
