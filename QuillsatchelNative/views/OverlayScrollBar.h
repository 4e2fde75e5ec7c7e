#pragma once

#include <QScrollBar>

/// A slim translucent scroll bar. It is hidden while there is nothing to scroll.
class OverlayScrollBar final : public QScrollBar
{
    Q_OBJECT

public:
    explicit OverlayScrollBar(Qt::Orientation orientation, QWidget *parent);

    /// In points.
    static constexpr int Thickness = 6;
    /// The points that a list or card scrolls per arrow key or wheel line; Qt scrolls three lines a
    /// notch.
    static constexpr int LineStep = 24;

    QSize sizeHint() const override;

protected:
    void sliderChange(SliderChange change) override;
    void paintEvent(QPaintEvent *event) override;
};
