#include "app/WindowDrag.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QStyleHints>
#include <QWidget>
#include <QWindow>

void WindowDrag::begin(const QWidget &widget)
{
    widget.window()->windowHandle()->startSystemMove();
}

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
    if (distance < QGuiApplication::styleHints()->startDragDistance())
        return;
    m_pressedAt.reset();
    begin(m_widget);
}
