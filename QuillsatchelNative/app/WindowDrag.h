#pragma once

#include <QPointF>

#include <optional>

class QMouseEvent;
class QWidget;

/// Moves the window of a widget with the pointer. The drag starts with a movement, not with the
/// press: if a window manager took over the pointer after the release of a quick click, the window
/// would follow the pointer until the next click.
class WindowDrag
{
public:
    /// `widget` receives the events and must outlive this object. The drag starts after `distance`
    /// points; use more than 1 if `widget` handles double clicks, because once the window manager
    /// has the pointer, there is no second click.
    explicit WindowDrag(QWidget &widget, int distance = 1)
        : m_widget(widget)
        , m_distance(distance)
    {
    }

    /// Call for the mouse presses of the widget and for its mouse moves with a button down.
    void press(const QMouseEvent &event);
    void move(const QMouseEvent &event);

private:
    QWidget &m_widget;
    int m_distance;
    std::optional<QPointF> m_pressedAt; // on the screen; until the window manager takes over
};
