#include "app/WindowDragLabel.h"

#include <QMouseEvent>
#include <QWindow>

WindowDragLabel::WindowDragLabel(const QString &text, QWidget *parent)
    : QLabel(text, parent)
{
}

void WindowDragLabel::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        window()->windowHandle()->startSystemMove();
}
