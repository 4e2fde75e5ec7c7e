#pragma once

#include <QPointF>

#include <optional>

class QMouseEvent;
class QWidget;

/// Moves the window of a widget along with the pointer. It begins with the first real movement,
/// not with the press: a window manager that is asked during a very short click misses its end
/// and leaves the window stuck to the pointer.
class WindowDrag
{
public:
    /// `widget` is where the events come from; it must outlive this.
    explicit WindowDrag(QWidget &widget)
        : m_widget(widget)
    {
    }

    /// To be told of the widget's presses and of its moves while a button is down.
    void press(const QMouseEvent &event);
    void move(const QMouseEvent &event);

private:
    QWidget &m_widget;
    std::optional<QPointF> m_pressedAt; // global, until the window manager takes over
};
