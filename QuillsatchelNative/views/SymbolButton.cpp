#include "views/SymbolButton.h"

#include "views/Painting.h"
#include "views/Symbol.h"

#include <QPainter>

#include <utility>

SymbolButton::SymbolButton(QString symbol, int symbolSize, const std::optional<SrgbColor> &tint,
                           QWidget *parent)
    : PlainButton(parent)
    , m_symbol(std::move(symbol))
    , m_symbolSize(symbolSize)
    , m_tint(tint)
{
}

void SymbolButton::paintContent(QPainter &painter)
{
    if (isHovered())
        Painting::fillRoundedRect(painter, rect(), focusRadius(), SrgbColor::white(0.08));
    QRectF frame(0, 0, m_symbolSize, m_symbolSize);
    frame.moveCenter(QRectF(rect()).center());
    Symbol::paint(painter, m_symbol, frame, m_tint);
}
