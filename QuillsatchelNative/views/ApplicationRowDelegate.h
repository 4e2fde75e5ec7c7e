#pragma once

#include <QAbstractItemDelegate>
#include <QFont>

class ApplicationIcons;

/// Paints the rows of an `ApplicationListModel`: icon, name and comment. All rows have the same
/// height.
class ApplicationRowDelegate final : public QAbstractItemDelegate
{
    Q_OBJECT

public:
    ApplicationRowDelegate(ApplicationIcons &icons, QObject *parent);

    /// In points.
    static constexpr int IconSize = 24;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    void paintIcon(QPainter &painter, const QRect &frame, const QModelIndex &index) const;
    void paintTexts(QPainter &painter, const QRect &frame, const QModelIndex &index,
                    bool isSelected) const;

    ApplicationIcons &m_icons;
    QFont m_nameFont;
    QFont m_commentFont;
};
