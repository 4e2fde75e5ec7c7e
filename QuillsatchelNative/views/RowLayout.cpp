#include "views/RowLayout.h"

#include <algorithm>
#include <limits>

RowLayout::RowLayout(std::size_t count, int rowHeight, int height, int offset)
    : m_count(static_cast<Row>(count))
    , m_rowHeight(rowHeight)
    , m_height(height)
    , m_offset(offset)
{
}

int RowLayout::scrollRange() const
{
    const Row contentHeight = 2 * Padding - Spacing + m_count * pitch();
    return static_cast<int>(
        std::clamp<Row>(contentHeight - m_height, 0, std::numeric_limits<int>::max()));
}

RowLayout::Rows RowLayout::visibleRows() const
{
    const Row top = m_offset - Padding;
    const Row first = std::clamp<Row>((top + Spacing) / pitch(), 0, m_count);
    const Row end = std::clamp<Row>((top + m_height) / pitch() + 1, first, m_count);
    return { first, end };
}

RowLayout::Rows RowLayout::nearbyRows() const
{
    const Rows rows = visibleRows();
    const Row screen = std::max<Row>(rows.end - rows.first, 1);
    return { std::max<Row>(rows.first - screen, 0), std::min(rows.end + screen, m_count) };
}

int RowLayout::topOf(Row row) const
{
    constexpr Row Far = 100'000;
    return static_cast<int>(std::clamp(Padding + row * pitch() - m_offset, -Far, Far));
}

int RowLayout::offsetToReveal(Row row) const
{
    const Row top = row * pitch();
    const Row bottom = top + m_rowHeight + 2 * Padding;
    if (m_offset > top)
        return static_cast<int>(top);
    if (m_offset + m_height < bottom)
        return static_cast<int>(bottom - m_height);
    return m_offset;
}
