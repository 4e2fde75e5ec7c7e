#pragma once

#include <QAbstractItemDelegate>
#include <QFont>

class QPainter;
struct NodeHit;

/// Paints the rows of a `NodeHitModel`: the node's colour as a dot, up to two lines of excerpt, and
/// the name of its tab. All rows have the same height.
class NodeHitDelegate final : public QAbstractItemDelegate
{
    Q_OBJECT

public:
    explicit NodeHitDelegate(QObject *parent);

    /// In points.
    static constexpr int RowHeight = 49;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    void paintTexts(QPainter &painter, const QRectF &frame, const NodeHit &hit,
                    bool isSelected) const;

    QFont m_excerptFont;
    QFont m_tabFont;
};
