#pragma once

#include <QWidget>

/// The border of a window, on top of its content: draws the edge, rounds the corners, and resizes
/// the window when dragged. A maximized window has square corners and is not resized.
class PanelFrame final : public QWidget
{
    Q_OBJECT

public:
    explicit PanelFrame(QWidget *parent);

    /// Call when the window was maximized or restored. Without a compositor the corners are square.
    void render(bool isCompositing);

    /// The radius of the corners in points, as last rendered; 0 for square ones.
    int radius() const { return m_radius; }

    /// Of round corners, in points.
    static constexpr int CornerRadius = 10;

protected:
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

private:
    Qt::Edges edgesAt(const QPoint &place) const;

    int m_radius = 0;
};
