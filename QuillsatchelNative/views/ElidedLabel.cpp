#include "views/ElidedLabel.h"

#include "views/AccessibleRole.h"
#include "views/Painting.h"

#include <QFontMetrics>
#include <QPainter>

ElidedLabel::ElidedLabel(Qt::TextElideMode mode, const QFont &font, const SrgbColor &color,
                         QWidget *parent)
    : QWidget(parent)
    , m_mode(mode)
    , m_color(color)
{
    setAccessibleRole(*this, QAccessible::StaticText);
    setFont(font);
}

void ElidedLabel::setText(const QString &text)
{
    if (text == m_text)
        return;
    m_text = text;
    setAccessibleName(text);
    update();
}

QSize ElidedLabel::sizeHint() const
{
    return { fontMetrics().horizontalAdvance(m_text), fontMetrics().height() };
}

void ElidedLabel::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    painter.setPen(Painting::qColor(m_color));
    Painting::drawLine(painter, rect(), Qt::AlignLeft, m_text, m_mode);
}
