#include "views/PushButton.h"

#include "views/Painting.h"
#include "views/SatchelTheme.h"

#include <QFontMetrics>
#include <QPainter>

namespace
{

constexpr int HorizontalPadding = 9;
constexpr int Radius = 5;
constexpr double DisabledOpacity = 0.4;

} // namespace

PushButton::PushButton(const QString &title, QWidget *parent)
    : PlainButton(parent)
{
    setText(title);
    setFont(Painting::systemFont(11));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize PushButton::sizeHint() const
{
    return { fontMetrics().horizontalAdvance(text()) + 2 * HorizontalPadding, Height };
}

void PushButton::setDefault(bool isDefault)
{
    m_isDefault = isDefault;
    update();
}

void PushButton::paintContent(QPainter &painter)
{
    if (!isEnabled())
        painter.setOpacity(DisabledOpacity);
    const auto plain = SrgbColor::white(isHovered() ? 0.17 : 0.12);
    const auto accent = SatchelTheme::accent.withOpacity(isHovered() ? 0.95 : 0.85);
    Painting::fillRoundedRect(painter, rect(), Radius, m_isDefault ? accent : plain);
    Painting::strokeRoundedRect(painter, rect(), Radius, SatchelTheme::border);
    painter.setPen(Painting::qColor(SrgbColor::white(m_isDefault ? 1 : 0.92)));
    // At a whole point, so that the text aligns with that of text fields.
    const int top = (height() - fontMetrics().height()) / 2;
    painter.drawText(rect().adjusted(0, top, 0, 0), Qt::AlignHCenter | Qt::AlignTop, text());
}
