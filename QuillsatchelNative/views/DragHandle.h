#pragma once

#include <QPointer>
#include <QWidget>

#include <functional>
#include <optional>

/// The handle by which a card is dragged up and down its list. Its lines follow the pointer, over
/// the neighbouring cards too. The arrow keys move the card by one place.
class DragHandle final : public QWidget
{
    Q_OBJECT

public:
    explicit DragHandle(QWidget *parent);
    ~DragHandle() override;

    /// The drag began or moved: the vertical distance from where it was pressed, in points, down
    /// if positive; 0 once it ended or was cancelled.
    std::function<void(qreal)> onTranslation = [](qreal) {};
    /// The drag ended, not cancelled, at this vertical distance.
    std::function<void(qreal)> onDrop = [](qreal) {};
    /// An arrow key, or an assistive program, asks for one place up (-1) or down (+1).
    std::function<void(int)> onStep = [](int) {};

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void addStep(const QString &name, int step);
    void setTranslation(qreal translation);
    void endDrag();

    // In the window, while the button is down. Qt rounds global places to whole points.
    std::optional<QPointF> m_pressedAt;
    bool m_isDragging = false;
    QPointer<QWidget> m_glyph; // what follows the pointer; a sibling of the card, so not cut off
};
