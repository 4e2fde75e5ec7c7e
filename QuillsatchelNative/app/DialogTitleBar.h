#pragma once

#include "app/WindowDrag.h"

#include <QWidget>

class QLabel;
class TrafficLight;

/// The title bar of a dialog: a close button on the left, the window title in the middle. Dragging
/// it anywhere but at the button moves the window.
class DialogTitleBar final : public QWidget
{
    Q_OBJECT

public:
    explicit DialogTitleBar(QWidget *dialog);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;

private:
    WindowDrag m_drag { *this };
    TrafficLight *m_close;
    QLabel *m_title;
};
