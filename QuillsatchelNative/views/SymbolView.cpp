#include "views/SymbolView.h"

#include "views/Symbol.h"

#include <QPainter>

#include <utility>

SymbolView::SymbolView(QString symbol, const QSize &size, const SrgbColor &tint, QWidget *parent)
    : QWidget(parent)
    , m_symbol(std::move(symbol))
    , m_tint(tint)
{
    setFixedSize(size);
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void SymbolView::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    Symbol::paint(painter, m_symbol, contentsRect(), m_tint);
}
