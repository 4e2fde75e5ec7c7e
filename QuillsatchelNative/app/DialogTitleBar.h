#pragma once

#include "app/WindowDrag.h"

#include <QWidget>

class QLabel;
class TrafficLight;

/// The title bar of a dialog, drawn as the panel's: a close button at the left and the window's
/// title in the middle. The window is moved by all but the button.
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
