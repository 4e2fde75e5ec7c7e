#pragma once

#include <QLabel>

/// A label by which the whole window is dragged. The drag starts with the press.
class WindowDragLabel final : public QLabel
{
    Q_OBJECT

public:
    explicit WindowDragLabel(const QString &text, QWidget *parent);

protected:
    void mousePressEvent(QMouseEvent *event) override;
};
