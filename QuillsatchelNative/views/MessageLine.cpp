#include "views/MessageLine.h"

#include "views/AccessibleRole.h"
#include "views/Announcement.h"
#include "views/Painting.h"

#include <QFontMetrics>
#include <QPainter>

namespace
{

constexpr int HorizontalPadding = 10;
constexpr int TopPadding = 6;

} // namespace

MessageLine::MessageLine(const SrgbColor &color, QWidget *parent)
    : QWidget(parent)
    , m_color(color)
{
    setAccessibleRole(*this, QAccessible::AlertMessage);
    setFont(Painting::systemFont(11));
    hide();
}

void MessageLine::render(const QString &message)
{
    if (message == m_message)
        return;
    m_message = message;
    setAccessibleName(message);
    update();
    if (message.isEmpty())
        hide();
    else
        announce(*this);
}

QSize MessageLine::sizeHint() const
{
    return { 0, fontMetrics().height() + TopPadding };
}

void MessageLine::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    painter.setPen(Painting::qColor(m_color));
    const QRect line = rect().adjusted(HorizontalPadding, TopPadding, -HorizontalPadding, 0);
    Painting::drawLine(painter, line, Qt::AlignHCenter, m_message);
}
