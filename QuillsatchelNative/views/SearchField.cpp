#include "views/SearchField.h"

#include "views/Painting.h"
#include "views/SatchelTheme.h"
#include "views/Symbol.h"

#include <QPainter>

namespace
{

using namespace Qt::StringLiterals;

constexpr int Height = 28;
constexpr int Padding = 8;
constexpr int SymbolSize = 13;
constexpr int TextLeft = 2 * Padding + SymbolSize - 3; // QLineEdit adds the rest

} // namespace

SearchField::SearchField(QWidget *parent)
    : TextField(parent)
{
    setFont(Painting::systemFont(13));
    setFixedHeight(Height);
    setTextMargins(TextLeft, 0, Padding, 0);
}

void SearchField::append(const QString &letters)
{
    if (isVisible())
        setFocus();
    end(false);
    insert(letters);
}

void SearchField::paintEvent(QPaintEvent *event)
{
    TextField::paintEvent(event);
    QPainter painter(this);
    Symbol::paint(painter, u"magnifyingglass"_s, QRectF(Padding, 0, SymbolSize, height()),
                  SatchelTheme::secondary);
}
