#pragma once

#include <QPointF>

#include <optional>

class QMouseEvent;
class QWidget;

/// Moves the window of a widget with the pointer. The drag starts with a movement, not with the
/// press: a window manager that takes over the pointer only after a quick click was released would
/// have the window follow the pointer until the next click.
class WindowDrag
{
public:
    /// `widget` is where the events come from; it must outlive this. `distance` is how far the
    /// pointer moves before the drag starts, in points: more than 1 where a double click has a
    /// meaning, because once the window manager has the pointer there is no second click.
    explicit WindowDrag(QWidget &widget, int distance = 1)
        : m_widget(widget)
        , m_distance(distance)
    {
    }

    /// To be told of the widget's presses and of its moves while a button is down.
    void press(const QMouseEvent &event);
    void move(const QMouseEvent &event);

private:
    QWidget &m_widget;
    int m_distance;
    std::optional<QPointF> m_pressedAt; // global, until the window manager takes over
};
