#include "views/NewNodeButton.h"

#include "views/Painting.h"
#include "views/Symbol.h"

#include <QPainter>

namespace
{

using namespace Qt::StringLiterals;

constexpr int SymbolSize = 14;
constexpr int SymbolSpacing = 5;
constexpr auto Tint = SrgbColor::white(0.9);

} // namespace

NewNodeButton::NewNodeButton(QWidget *parent)
    : PlainButton(parent)
{
    setText(tr("New Node"));
    setToolTip(tr("Add a new node"));
    setFont(Painting::systemFont(12, QFont::DemiBold));
}

void NewNodeButton::paintContent(QPainter &painter)
{
    Painting::fillCapsule(painter, rect(), SrgbColor::white(isHovered() ? 0.19 : 0.14));
    const int textWidth = fontMetrics().horizontalAdvance(text());
    const int left = (width() - SymbolSize - SymbolSpacing - textWidth) / 2;
    const QRect symbol(left, (height() - SymbolSize) / 2, SymbolSize, SymbolSize);
    Symbol::paint(painter, u"plus"_s, symbol, Tint);
    painter.setPen(Painting::qColor(Tint));
    painter.drawText(QRect(left + SymbolSize + SymbolSpacing, 0, textWidth + 1, height()),
                     Qt::AlignVCenter | Qt::AlignLeft, text());
}
