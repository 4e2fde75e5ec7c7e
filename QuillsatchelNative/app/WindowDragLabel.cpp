#include "app/WindowDragLabel.h"

#include "app/WindowDrag.h"

#include <QMouseEvent>

WindowDragLabel::WindowDragLabel(const QString &text, QWidget *parent)
    : QLabel(text, parent)
{
}

void WindowDragLabel::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        WindowDrag::begin(*this);
}
