#include "library/BlockColor.h"

#include <algorithm>

namespace
{

struct Entry {
    std::string_view rawValue;
    std::optional<SrgbColor> color;
};

// Red and green are the program's own; the others are the usual palette of a dark desktop.
constexpr std::array<Entry, BlockColor::allCases.size()> Entries { {
    { "none", std::nullopt },
    { "red", SrgbColor { 0.91, 0.16, 0.17 } },
    { "orange", SrgbColor::fromHex(0xFF9F0A) },
    { "yellow", SrgbColor::fromHex(0xFFD60A) },
    { "green", SrgbColor { 0.31, 0.71, 0.39 } },
    { "blue", SrgbColor::fromHex(0x0A84FF) },
    { "purple", SrgbColor::fromHex(0xBF5AF2) },
    { "pink", SrgbColor::fromHex(0xFF375F) },
} };

} // namespace

std::optional<BlockColor> BlockColor::fromRawValue(std::string_view text)
{
    const auto *const found = std::ranges::find(Entries, text, &Entry::rawValue);
    if (found == Entries.end())
        return std::nullopt;
    return allCases.at(static_cast<std::size_t>(found - Entries.begin()));
}

std::string_view BlockColor::rawValue() const
{
    return Entries.at(m_case).rawValue;
}

std::string BlockColor::title() const
{
    std::string title(rawValue());
    title.front() = static_cast<char>(title.front() - 'a' + 'A');
    return title;
}

std::optional<SrgbColor> BlockColor::swiftUIColor() const
{
    return Entries.at(m_case).color;
}
