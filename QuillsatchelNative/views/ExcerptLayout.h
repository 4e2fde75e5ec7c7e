#pragma once

#include "library/Excerpt.h"
#include "support/SrgbColor.h"

#include <QFont>
#include <QString>
#include <QTextLayout>

#include <vector>

class QPainter;

/// An excerpt laid out on a limited number of lines, the last of which is elided. Emphasised parts
/// are bolder and in their own colour.
class ExcerptLayout
{
public:
    /// `width` is in points.
    ExcerptLayout(const Excerpt &excerpt, const QFont &font, const SrgbColor &emphasisColor,
                  qreal width, int maximumLines);

    /// In points.
    qreal height() const;

    /// Draws the excerpt with the painter's pen, from the top left corner `position`.
    void draw(QPainter &painter, const QPointF &position) const;

private:
    using Formats = QList<QTextLayout::FormatRange>;

    struct Line {
        QString text;
        Formats formats;
    };

    qsizetype takeLine(qsizetype start, bool isLast);
    Line part(qsizetype start, qsizetype length) const;
    qsizetype fittingLength(const Line &line, qreal width, QTextOption::WrapMode wrapMode) const;
    void layOut(QTextLayout &layout, const Line &line, qreal width,
                QTextOption::WrapMode wrapMode) const;

    QFont m_font;
    qreal m_width;
    Qt::LayoutDirection m_direction;
    Line m_whole;
    std::vector<Line> m_lines;
};
