#include "views/SymbolIconEngine.h"

#include <QPainter>

#include <utility>

namespace
{

constexpr double MenuIconSize = 16; // points
constexpr double OutlineScale = 4.0 / 3;

/// A square in the centre of `rect`.
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
    , m_relativeSide(side / MenuIconSize)
    , m_whenSelected(whenSelected)
{
}

// Styles request the mode `Active` for the selected entry.
void SymbolIconEngine::paint(QPainter *painter, const QRect &rect, QIcon::Mode mode,
                             QIcon::State /*state*/)
{
    const bool isSelected = mode == QIcon::Active;
    const bool isOutlined = isSelected && m_whenSelected == Symbol::WhenSelected::outlined;
    const double side = m_relativeSide * rect.width();
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
