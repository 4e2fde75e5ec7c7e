#include "library/BlockColor.h"

#include <algorithm>

namespace
{

struct Row {
    BlockColor::Case color;
    std::string_view rawValue;
    std::optional<SrgbColor> swiftUIColor;
};

// Red and green are the program's own; the others are the usual palette of dark desktops.
constexpr auto Table = std::to_array<Row>({
    { BlockColor::none, "none", std::nullopt },
    { BlockColor::red, "red", SrgbColor { 0.91, 0.16, 0.17 } },
    { BlockColor::orange, "orange", SrgbColor::fromHex(0xFF9F0A) },
    { BlockColor::yellow, "yellow", SrgbColor::fromHex(0xFFD60A) },
    { BlockColor::green, "green", SrgbColor { 0.31, 0.71, 0.39 } },
    { BlockColor::blue, "blue", SrgbColor::fromHex(0x0A84FF) },
    { BlockColor::purple, "purple", SrgbColor::fromHex(0xBF5AF2) },
    { BlockColor::pink, "pink", SrgbColor::fromHex(0xFF375F) },
});

constexpr bool isIndexedByCase()
{
    std::size_t index = 0;
    return std::ranges::all_of(Table, [&index](const Row &row) { return row.color == index++; });
}

static_assert(isIndexedByCase());
static_assert(std::ranges::equal(Table, BlockColor::allCases, {}, &Row::color));

} // namespace

std::optional<BlockColor> BlockColor::fromRawValue(std::string_view text)
{
    const auto *const found = std::ranges::find(Table, text, &Row::rawValue);
    return found == Table.end() ? std::nullopt : std::optional<BlockColor>(found->color);
}

std::string_view BlockColor::rawValue() const
{
    return Table.at(m_case).rawValue;
}

std::string BlockColor::title() const
{
    std::string title(rawValue());
    title.front() = static_cast<char>(title.front() - 'a' + 'A');
    return title;
}

std::optional<SrgbColor> BlockColor::swiftUIColor() const
{
    return Table.at(m_case).swiftUIColor;
}
