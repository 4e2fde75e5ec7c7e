#pragma once

#include <QPointer>
#include <QWidget>

#include <functional>
#include <optional>

/// The handle by which a card is dragged up and down its list. Its lines follow the pointer, over
/// the neighbouring cards too, also while the list scrolls. The arrow keys move the card by one
/// place.
class DragHandle final : public QWidget
{
    Q_OBJECT

public:
    explicit DragHandle(QWidget *parent);
    ~DragHandle() override;

    /// The drag began or moved: the vertical distance of the pointer from the place on the handle
    /// where it was pressed, in points, down if positive; 0 once it ended or was cancelled. When
    /// the list scrolls, the distance grows by as much.
    std::function<void(qreal)> onTranslation = [](qreal) {};
    /// The drag ended, not cancelled, at this vertical distance.
    std::function<void(qreal)> onDrop = [](qreal) {};
    /// An arrow key, or an assistive program, asks for one place up (-1) or down (+1).
    std::function<void(int)> onStep = [](int) {};

    /// Call when the card has moved in the window, so that a drag stays at the pointer.
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

    /// All in the window, in points. Global places would be rounded by Qt to whole points.
    struct Press {
        QPointF place;
        QPointF pointer; // now
        int top;         // of the handle, when it was pressed
    };

    std::optional<Press> m_press; // while the button is down
    bool m_isDragging = false;
    QPointer<QWidget> m_glyph; // what follows the pointer; a sibling of the card, so not cut off
};
