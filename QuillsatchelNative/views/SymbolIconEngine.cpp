#include "views/SymbolIconEngine.h"

#include <QPainter>

#include <utility>

namespace
{

constexpr double MenuIconSize = 16; // points
constexpr double OutlineScale = 4.0 / 3;

/// In the middle of `rect`.
QRectF square(const QRectF &rect, double side)
{
    QRectF frame(0, 0, side, side);
    frame.moveCenter(rect.center());
    return frame;
}

} // namespace

SymbolIconEngine::SymbolIconEngine(QString symbol, const std::optional<SrgbColor> &tint, int side,
                                   Symbol::WhenSelected whenSelected)
    : m_symbol(std::move(symbol))
    , m_tint(tint)
    , m_share(side / MenuIconSize)
    , m_whenSelected(whenSelected)
{
}

// Styles ask for the icon of the selected entry as the active one.
void SymbolIconEngine::paint(QPainter *painter, const QRect &rect, QIcon::Mode mode,
                             QIcon::State /*state*/)
{
    const bool isSelected = mode == QIcon::Active;
    const bool isOutlined = isSelected && m_whenSelected == Symbol::WhenSelected::Outlined;
    const double side = m_share * rect.width();
    if (isOutlined)
        Symbol::paint(*painter, m_symbol, square(rect, OutlineScale * side), SrgbColor::white());
    const bool isWhite = isSelected && !isOutlined;
    Symbol::paint(*painter, m_symbol, square(rect, side), isWhite ? SrgbColor::white() : m_tint);
}

QPixmap SymbolIconEngine::pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state)
{
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, pixmap.rect(), mode, state);
    return pixmap;
}

QIconEngine *SymbolIconEngine::clone() const
{
    return new SymbolIconEngine(*this);
}
