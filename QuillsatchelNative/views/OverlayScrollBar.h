#pragma once

#include <QScrollBar>

/// A slim scroll indicator that lets what is under it shine through. It is hidden where there is
/// nothing to scroll.
class OverlayScrollBar final : public QScrollBar
{
    Q_OBJECT

public:
    explicit OverlayScrollBar(Qt::Orientation orientation, QWidget *parent);

    /// In points.
    static constexpr int Thickness = 6;

    QSize sizeHint() const override;

protected:
    void sliderChange(SliderChange change) override;
    void paintEvent(QPaintEvent *event) override;
};
