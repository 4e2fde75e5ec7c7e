#include "views/PlainButton.h"

#include "views/Painting.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleHints>

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

Qt::FocusReason PlainButton::focusReason() const
{
    return m_showsFocus ? Qt::OtherFocusReason : Qt::MouseFocusReason;
}

void PlainButton::setShowsFocus(bool showsFocus)
{
    m_showsFocus = showsFocus;
    update();
}

bool PlainButton::event(QEvent *event)
{
    if (event->type() == QEvent::KeyPress)
        setShowsFocus(true);
    return QAbstractButton::event(event);
}

// When a menu or another window closes, the ring stays as it was before.
void PlainButton::focusInEvent(QFocusEvent *event)
{
    const auto reason = event->reason();
    if (reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason)
        setShowsFocus(reason != Qt::MouseFocusReason);
    QAbstractButton::focusInEvent(event);
}

void PlainButton::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    painter.save();
    if (isDown())
        painter.setOpacity(PressedOpacity);
    paintContent(painter);
    painter.restore();
    if (hasFocus() && m_showsFocus)
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

void PlainButton::mousePressEvent(QMouseEvent *event)
{
    m_pressedAt = event->timestamp();
    QAbstractButton::mousePressEvent(event);
}

// Cards are reused: for another node the button has not been pressed yet.
void PlainButton::hideEvent(QHideEvent *event)
{
    m_pressedAt.reset();
    QAbstractButton::hideEvent(event);
}

void PlainButton::mouseDoubleClickEvent(QMouseEvent *event)
{
    const auto interval =
        static_cast<quint64>(QGuiApplication::styleHints()->mouseDoubleClickInterval());
    if (m_pressedAt && event->timestamp() - *m_pressedAt <= interval)
        QAbstractButton::mouseDoubleClickEvent(event);
}
