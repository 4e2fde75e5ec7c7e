#include "views/ExcerptLayout.h"

#include "views/EmojiRanges.h"
#include "views/Painting.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>

namespace
{

constexpr QChar Ellipsis(0x2026);

QTextLayout::FormatRange emphasis(const TextRange &range, const SrgbColor &color)
{
    QTextCharFormat format;
    format.setFontWeight(QFont::Bold);
    format.setForeground(Painting::qColor(color));
    return { static_cast<int>(range.start), static_cast<int>(range.length), format };
}

} // namespace

ExcerptLayout::ExcerptLayout(const Excerpt &excerpt, const QFont &font,
                             const SrgbColor &emphasisColor, qreal width, int maximumLines)
    : m_font(font)
    , m_width(width)
    , m_direction(excerpt.text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight)
    , m_whole { excerpt.text, EmojiRanges::in(excerpt.text, font) }
{
    for (const auto &range : excerpt.emphasised)
        m_whole.formats.push_back(emphasis(range, emphasisColor));
    qsizetype start = 0;
    for (int line = 1; line <= maximumLines && start < m_whole.text.size(); ++line)
        start = takeLine(start, line == maximumLines);
}

/// Appends the line that begins at `start`, and returns the beginning of the next one.
qsizetype ExcerptLayout::takeLine(qsizetype start, bool isLast)
{
    const Line rest = part(start, m_whole.text.size() - start);
    const qsizetype length =
        fittingLength(rest, m_width, QTextOption::WrapAtWordBoundaryOrAnywhere);
    if (!isLast || length == rest.text.size()) {
        m_lines.push_back(part(start, length));
        return start + length;
    }
    const qreal elidedWidth = m_width - QFontMetricsF(m_font).horizontalAdvance(Ellipsis);
    Line line = part(start, fittingLength(rest, elidedWidth, QTextOption::WrapAnywhere));
    while (!line.text.isEmpty() && (line.text.back().isSpace() || line.text.back() == Ellipsis))
        line.text.chop(1);
    line.text += Ellipsis;
    m_lines.push_back(line);
    return m_whole.text.size();
}

ExcerptLayout::Line ExcerptLayout::part(qsizetype start, qsizetype length) const
{
    Line line { m_whole.text.mid(start, length), {} };
    for (auto range : m_whole.formats) {
        const auto first = std::max<qsizetype>(range.start - start, 0);
        const auto end = std::min(range.start + range.length - start, length);
        if (first >= end)
            continue;
        range.start = static_cast<int>(first);
        range.length = static_cast<int>(end - first);
        line.formats.push_back(range);
    }
    return line;
}

/// At least one character.
qsizetype ExcerptLayout::fittingLength(const Line &line, qreal width,
                                       QTextOption::WrapMode wrapMode) const
{
    QTextLayout layout;
    layOut(layout, line, width, wrapMode);
    return std::max(layout.lineAt(0).textLength(), 1);
}

/// Lays out the first line only.
void ExcerptLayout::layOut(QTextLayout &layout, const Line &line, qreal width,
                           QTextOption::WrapMode wrapMode) const
{
    QTextOption option;
    option.setWrapMode(wrapMode);
    option.setTextDirection(m_direction);
    layout.setFont(m_font);
    layout.setText(line.text);
    layout.setTextOption(option);
    layout.setFormats(line.formats);
    layout.setCacheEnabled(true);
    layout.beginLayout();
    layout.createLine().setLineWidth(width);
    layout.endLayout();
}

qreal ExcerptLayout::height() const
{
    return static_cast<qreal>(m_lines.size()) * QFontMetricsF(m_font).height();
}

void ExcerptLayout::draw(QPainter &painter, const QPointF &position) const
{
    QPointF top = position;
    for (const auto &line : m_lines) {
        QTextLayout layout;
        layOut(layout, line, m_width, QTextOption::NoWrap);
        // Other fonts may be higher, but the baselines have equal distances.
        const qreal offset = QFontMetricsF(m_font).ascent() - layout.lineAt(0).ascent();
        layout.draw(&painter, top + QPointF(0, offset));
        top.ry() += QFontMetricsF(m_font).height();
    }
}
