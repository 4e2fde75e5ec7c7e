#pragma once

#include <QWidget>

/// The border of a window, on top of its content: draws the edge, rounds the corners, and resizes
/// the window when dragged.
class PanelFrame final : public QWidget
{
    Q_OBJECT

public:
    explicit PanelFrame(QWidget *parent);

    /// In points; 0 for square corners.
    void setRadius(int radius);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

private:
    Qt::Edges edgesAt(const QPoint &place) const;

    int m_radius = 0;
};
