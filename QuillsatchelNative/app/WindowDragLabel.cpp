#include "app/WindowDragLabel.h"

#include <QMouseEvent>

WindowDragLabel::WindowDragLabel(const QString &text, QWidget *parent)
    : QLabel(text, parent)
{
}

void WindowDragLabel::mousePressEvent(QMouseEvent *event)
{
    m_drag.press(*event);
}

void WindowDragLabel::mouseMoveEvent(QMouseEvent *event)
{
    m_drag.move(*event);
}
