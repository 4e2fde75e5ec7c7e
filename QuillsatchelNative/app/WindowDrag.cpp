#include "app/WindowDrag.h"

#include <QMouseEvent>
#include <QWidget>
#include <QWindow>

void WindowDrag::press(const QMouseEvent &event)
{
    m_pressedAt.reset();
    if (event.button() == Qt::LeftButton)
        m_pressedAt = event.globalPosition();
}

void WindowDrag::move(const QMouseEvent &event)
{
    if (!m_pressedAt || !event.buttons().testFlag(Qt::LeftButton))
        return;
    const auto distance = (event.globalPosition() - *m_pressedAt).manhattanLength();
    if (distance < m_distance)
        return;
    m_pressedAt.reset();
    m_widget.window()->windowHandle()->startSystemMove(); // until the button is released
}
