#include "views/PlainButton.h"

#include "views/Painting.h"

#include <QKeyEvent>
#include <QPainter>

namespace
{

constexpr qreal PressedOpacity = 0.7;

bool isReturn(const QKeyEvent &event)
{
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

} // namespace

PlainButton::PlainButton(QWidget *parent)
    : QAbstractButton(parent)
{
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
}

void PlainButton::setLabel(const QString &label)
{
    setToolTip(label);
    setAccessibleName(label);
}

void PlainButton::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    painter.save();
    if (isDown())
        painter.setOpacity(PressedOpacity);
    paintContent(painter);
    painter.restore();
    if (hasFocus())
        Painting::focusRing(painter, rect(), focusRadius());
}

void PlainButton::keyPressEvent(QKeyEvent *event)
{
    if (isReturn(*event) && !event->isAutoRepeat())
        click();
    else
        QAbstractButton::keyPressEvent(event);
}

void PlainButton::keyReleaseEvent(QKeyEvent *event)
{
    if (!isReturn(*event))
        QAbstractButton::keyReleaseEvent(event);
}
