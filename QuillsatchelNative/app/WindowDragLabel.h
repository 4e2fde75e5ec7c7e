#pragma once

#include "app/WindowDrag.h"

#include <QLabel>

/// A label that moves the window when dragged, from the first point on.
class WindowDragLabel final : public QLabel
{
    Q_OBJECT

public:
    explicit WindowDragLabel(const QString &text, QWidget *parent);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;

private:
    WindowDrag m_drag { *this };
};
