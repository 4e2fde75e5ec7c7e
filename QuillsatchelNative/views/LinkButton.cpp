#include "views/LinkButton.h"

#include "views/AccessibleRole.h"
#include "views/Painting.h"
#include "views/SatchelTheme.h"
#include "views/Symbol.h"

#include <QFontMetrics>
#include <QPainter>

namespace
{

QFont textFont()
{
    return Painting::systemFont(11, QFont::DemiBold);
}

} // namespace

LinkButton::LinkButton(const QSize &size, QWidget *parent)
    : PlainButton(parent)
    , m_size(size)
{
    setFixedSize(size);
    setCursor(Qt::PointingHandCursor);
    setAccessibleRole(*this, QAccessible::Link);
}

LinkButton *LinkButton::withArtwork(const QString &name, const QSize &size, QWidget *parent)
{
    auto *const link = new LinkButton(size, parent);
    link->m_artwork = name;
    return link;
}

LinkButton *LinkButton::withText(const QString &text, QWidget *parent)
{
    const QFontMetrics metrics(textFont());
    const QSize size(metrics.horizontalAdvance(text) + 2 * Painting::FocusMargin, metrics.height());
    auto *const link = new LinkButton(size, parent);
    link->setText(text);
    link->setAccessibleName(text);
    return link;
}

void LinkButton::paintContent(QPainter &painter)
{
    if (!m_artwork.isEmpty()) {
        Symbol::paint(painter, m_artwork, rect(), std::nullopt);
        return;
    }
    QFont font = textFont();
    font.setUnderline(isHovered());
    painter.setFont(font);
    painter.setPen(Painting::qColor(SatchelTheme::accent));
    painter.drawText(rect(), Qt::AlignCenter, text());
}
