#pragma once

#include <cstddef>

/// The positions of the rows of a scrolling list. All rows have the same height, so positions are
/// computed in constant time. In points, relative to the top of the viewport.
class RowLayout
{
public:
    using Row = std::ptrdiff_t;

    /// The space around the rows, and the space between two rows.
    static constexpr int Padding = 10;
    static constexpr int Spacing = 10;

    /// The rows from `first` up to, but not including, `end`.
    struct Rows {
        Row first = 0;
        Row end = 0;

        bool contains(Row row) const { return row >= first && row < end; }

        bool operator==(const Rows &) const = default;
    };

    /// `count` rows of `rowHeight` in a viewport of `height`, scrolled down by `offset`.
    RowLayout(std::size_t count, int rowHeight, int height, int offset);

    /// The maximum scroll offset.
    int scrollRange() const;

    /// The rows of which at least a point, or the space below, is visible.
    Rows visibleRows() const;

    /// The visible rows and one screen of rows above and below.
    Rows nearbyRows() const;

    /// The top edge of the row, limited to 100,000 points either way, because widget coordinates
    /// have a limited range.
    int topOf(Row row) const;

    /// The offset nearest to the current one at which the row and the space around it are visible.
    /// Assumes that they fit into the viewport.
    int offsetToReveal(Row row) const;

private:
    int pitch() const { return m_rowHeight + Spacing; }

    Row m_count;
    int m_rowHeight;
    int m_height;
    int m_offset;
};
