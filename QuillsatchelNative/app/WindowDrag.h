#pragma once

#include <QPointF>

#include <optional>

class QMouseEvent;
class QWidget;

/// Moves the window of a widget that also reacts to a double click. The drag starts when the
/// pointer has moved a little, because once the window manager has the pointer there is no second
/// click.
class WindowDrag
{
public:
    /// `widget` is where the events come from; it must outlive this.
    explicit WindowDrag(QWidget &widget)
        : m_widget(widget)
    {
    }

    /// Hands the pointer over to the window manager, which moves the widget's window until the
    /// button is released.
    static void begin(const QWidget &widget);

    /// To be told of the widget's presses and of its moves while a button is down.
    void press(const QMouseEvent &event);
    void move(const QMouseEvent &event);

private:
    QWidget &m_widget;
    std::optional<QPointF> m_pressedAt; // global, until the window manager takes over
};
