#include "views/ActionButton.h"

#include "views/Painting.h"
#include "views/SatchelTheme.h"
#include "views/Symbol.h"

#include <QFontMetrics>
#include <QPainter>

#include <utility>

namespace
{

constexpr int HorizontalPadding = 8;
constexpr int VerticalPadding = 5;
constexpr int IconSize = 12;
constexpr int IconSpacing = 4;
constexpr int Radius = 5;

QFont titleFont()
{
    return Painting::systemFont(10, QFont::Medium);
}

} // namespace

ActionButton::ActionButton(std::function<void()> action, QWidget *parent)
    : PlainButton(parent)
{
    setFont(titleFont());
    connect(this, &QAbstractButton::clicked, this, std::move(action));
}

void ActionButton::render(const QString &title, const QString &icon, bool active)
{
    if (title == text() && icon == m_icon && active == m_active)
        return;
    m_icon = icon;
    m_active = active;
    setText(title);
    resize(sizeHint());
    update();
}

QSize ActionButton::sizeHint() const
{
    const int width = fontMetrics().horizontalAdvance(text());
    return { 2 * HorizontalPadding + IconSize + IconSpacing + width, buttonHeight() };
}

int ActionButton::buttonHeight()
{
    // Cached, because every scroll step needs it.
    static const int height = QFontMetrics(titleFont()).height() + 2 * VerticalPadding;
    return height;
}

void ActionButton::paintContent(QPainter &painter)
{
    const auto tint = m_active ? SatchelTheme::accent : SatchelTheme::secondary;
    const auto fill = m_active ? SatchelTheme::accent.withOpacity(0.18)
                               : SrgbColor::white(isHovered() ? 0.09 : 0.045);
    const auto stroke = m_active ? SatchelTheme::accent.withOpacity(0.5) : SatchelTheme::border;
    Painting::fillRoundedRect(painter, rect(), Radius, fill);
    Painting::strokeRoundedRect(painter, rect(), Radius, stroke);

    const int iconTop = (height() - IconSize) / 2;
    Symbol::paint(painter, m_icon, QRectF(HorizontalPadding, iconTop, IconSize, IconSize), tint);
    painter.setPen(Painting::qColor(tint));
    painter.drawText(rect().adjusted(HorizontalPadding + IconSize + IconSpacing, 0, 0, 0),
                     Qt::AlignVCenter | Qt::AlignLeft, text());
}
