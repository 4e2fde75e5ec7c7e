#pragma once

#include <QPointer>
#include <QWidget>

#include <functional>
#include <optional>

/// The handle that drags a card up and down its list. While it is dragged its glyph follows the
/// pointer across neighbouring cards, even while the list scrolls. The arrow keys move the card by
/// one place.
class DragHandle final : public QWidget
{
    Q_OBJECT

public:
    explicit DragHandle(QWidget *parent);
    ~DragHandle() override;

    /// The drag started or moved. Receives the vertical distance in points between the pointer and
    /// the spot on the handle that was pressed, positive downwards; 0 when the drag ends or is
    /// cancelled. Scrolling the list changes the distance too.
    std::function<void(qreal)> onTranslation = [](qreal) {};
    /// The handle was dropped at this vertical distance; not called for a cancelled drag.
    std::function<void(qreal)> onDrop = [](qreal) {};
    /// The user asks to move the card one place up (-1) or down (+1), by an arrow key or through
    /// the accessibility tree.
    std::function<void(int)> onStep = [](int) {};

    /// Call after the card moved in the window, so that the glyph stays at the pointer.
    void followCard();

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void addStep(const QString &name, int step);
    int topInWindow() const;
    qreal translation() const;
    void showTranslation();
    void endDrag();

    /// Window coordinates in points: Qt would round global ones to whole points.
    struct Press {
        QPointF start;
        QPointF pointer; // current position
        int top;         // of the handle when it was pressed
    };

    std::optional<Press> m_press; // while the mouse button is down
    bool m_isDragging = false;
    QPointer<QWidget> m_glyph; // follows the pointer; a sibling of the card, so it is not clipped
};
