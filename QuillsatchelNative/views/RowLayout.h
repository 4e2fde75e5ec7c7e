#pragma once

#include <cstddef>

/// Where the rows of a list that scrolls stand. All have one height, so every position is
/// arithmetic, however many there are. In points, from the top of the list's window.
class RowLayout
{
public:
    using Row = std::ptrdiff_t;

    /// What is around the rows, and between one and the next.
    static constexpr int Padding = 10;
    static constexpr int Spacing = 10;

    /// Rows from `first` up to, not including, `end`.
    struct Rows {
        Row first = 0;
        Row end = 0;

        bool contains(Row row) const { return row >= first && row < end; }

        bool operator==(const Rows &) const = default;
    };

    /// `count` rows of `rowHeight` in a window of `height`, scrolled down by `offset`.
    RowLayout(std::size_t count, int rowHeight, int height, int offset);

    /// How far the rows can be scrolled.
    int scrollRange() const;

    /// The rows that show at least a point, or the space below them.
    Rows inSight() const;

    /// Those in sight and one screen of rows around.
    Rows nearby() const;

    /// The row's upper edge. A row that is far out of sight stands just far enough away: widgets
    /// have no room for more.
    int topOf(Row row) const;

    /// The offset nearest to the present one at which the row is in sight with the space around it;
    /// the window has room for that.
    int offsetToReveal(Row row) const;

private:
    int pitch() const { return m_rowHeight + Spacing; }

    Row m_count;
    int m_rowHeight;
    int m_height;
    int m_offset;
};
