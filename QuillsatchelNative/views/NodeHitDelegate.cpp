#include "views/NodeHitDelegate.h"

#include "views/ChoiceList.h"
#include "views/ExcerptLayout.h"
#include "views/NodeHitModel.h"
#include "views/Painting.h"
#include "views/SatchelTheme.h"

#include <QFontMetricsF>
#include <QPainter>

namespace
{

constexpr int Padding = 9;
constexpr int DotSize = 8;
constexpr int DotSpacing = 9;
constexpr int RingWidth = 1;
constexpr int LineSpacing = 1;
constexpr int ExcerptLines = 2;

struct Colors {
    SrgbColor text;
    SrgbColor emphasis;
    SrgbColor tab;
};

constexpr Colors Plain { SrgbColor::white(0.76), SrgbColor::white(1), SatchelTheme::secondary };
constexpr Colors Selected { SrgbColor::white(0.92), SrgbColor::white(1), SrgbColor::white(0.8) };

/// A node without a colour has an empty dot. On the accent colour, a ring sets the dot apart.
void paintDot(QPainter &painter, const QRectF &dot, BlockColor color, bool isSelected)
{
    if (const auto fill = color.swiftUIColor())
        Painting::fillCapsule(painter, dot, *fill);
    else
        Painting::strokeRoundedRect(painter, dot, DotSize / 2.0, SatchelTheme::secondary);
    if (isSelected)
        Painting::strokeRoundedRect(painter,
                                    dot.adjusted(-RingWidth, -RingWidth, RingWidth, RingWidth),
                                    DotSize / 2.0 + RingWidth, SrgbColor::white(0.92), RingWidth);
}

} // namespace

NodeHitDelegate::NodeHitDelegate(QObject *parent)
    : QAbstractItemDelegate(parent)
    , m_excerptFont(Painting::systemFont(11))
    , m_tabFont(Painting::systemFont(9))
{
}

QSize NodeHitDelegate::sizeHint(const QStyleOptionViewItem & /*option*/,
                                const QModelIndex & /*index*/) const
{
    return { 0, RowHeight };
}

void NodeHitDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                            const QModelIndex &index) const
{
    const auto hit = index.data(NodeHitModel::hitRole).value<NodeHit>();
    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    painter->save();
    painter->setClipRect(option.rect);
    ChoiceList::paintRowBackground(*painter, option);
    const QRectF frame = QRectF(option.rect).adjusted(Padding, 0, -Padding, 0);
    const QRectF dot(frame.left(), frame.center().y() - DotSize / 2.0, DotSize, DotSize);
    paintDot(*painter, dot, hit.color, isSelected);
    paintTexts(*painter, frame.adjusted(DotSize + DotSpacing, 0, 0, 0), hit, isSelected);
    painter->restore();
}

void NodeHitDelegate::paintTexts(QPainter &painter, const QRectF &frame, const NodeHit &hit,
                                 bool isSelected) const
{
    const Colors &colors = isSelected ? Selected : Plain;
    const ExcerptLayout excerpt(hit.text, m_excerptFont, colors.emphasis, frame.width(),
                                ExcerptLines);
    const ExcerptLayout tabName(hit.tabName, m_tabFont, colors.emphasis, frame.width(), 1);
    const qreal height = excerpt.height() + LineSpacing + tabName.height();
    QPointF top(frame.left(), frame.center().y() - height / 2);
    painter.setPen(Painting::qColor(colors.text));
    excerpt.draw(painter, Painting::onWholePixels(painter, top));
    top.ry() += excerpt.height() + LineSpacing;
    painter.setPen(Painting::qColor(colors.tab));
    tabName.draw(painter, Painting::onWholePixels(painter, top));
}
