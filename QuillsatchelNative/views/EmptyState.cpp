#include "views/EmptyState.h"

#include "views/AccessibleRole.h"
#include "views/Painting.h"
#include "views/SatchelTheme.h"
#include "views/Symbol.h"

#include <QFontMetrics>
#include <QPainter>

namespace
{

using namespace Qt::StringLiterals;

constexpr int Padding = 48;
constexpr int Spacing = 9;
constexpr int SymbolSize = 30;

QString heading()
{
    return EmptyState::tr("No nodes yet");
}

QString note()
{
    return EmptyState::tr("Add a node to store a reusable prompt or link.");
}

} // namespace

EmptyState::EmptyState(QWidget *parent)
    : QWidget(parent)
    , m_headingFont(Painting::systemFont(20, QFont::DemiBold))
    , m_noteFont(Painting::systemFont(11))
{
    setAccessibleRole(*this, QAccessible::StaticText);
    setAccessibleName(heading());
    setAccessibleDescription(note());
}

QSize EmptyState::sizeHint() const
{
    const int texts = QFontMetrics(m_headingFont).height() + QFontMetrics(m_noteFont).height();
    return { 0, 2 * Padding + SymbolSize + 2 * Spacing + texts };
}

void EmptyState::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    QRect row(0, Padding, width(), SymbolSize);
    Symbol::paint(painter, u"square.stack.3d.up"_s, row, SatchelTheme::secondary);
    painter.setPen(Painting::qColor(SatchelTheme::secondary));

    row = { 0, row.y() + row.height() + Spacing, width(), QFontMetrics(m_headingFont).height() };
    painter.setFont(m_headingFont);
    painter.drawText(row, Qt::AlignCenter, heading());

    row = { 0, row.y() + row.height() + Spacing, width(), QFontMetrics(m_noteFont).height() };
    painter.setFont(m_noteFont);
    painter.drawText(row, Qt::AlignCenter, note());
}
