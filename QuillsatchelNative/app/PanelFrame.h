#pragma once

#include <QWidget>

/// The rim of the panel, on top of everything in it: it draws the edge, cuts the corners round,
/// and is where the pointer takes hold to resize the window. The rest of the panel is untouched.
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
