#include "support/EarlierVersion.h"

#include <algorithm>
#include <charconv>
#include <cstddef>

namespace
{

using namespace std::chrono;

constexpr std::string_view ForeignMark = " by another program";

/// The name without its extension.
std::string_view stemOf(std::string_view document)
{
    return document.substr(0, document.rfind('.'));
}

std::string padded(long number, std::size_t width)
{
    const auto digits = std::to_string(number);
    return std::string(width - std::min(width, digits.size()), '0') + digits;
}

std::string textOf(local_seconds time)
{
    const auto day = floor<days>(time);
    const year_month_day date(day);
    const hh_mm_ss clock(time - day);
    return padded(int(date.year()), 4) + '-' + padded(unsigned(date.month()), 2) + '-' +
           padded(unsigned(date.day()), 2) + ' ' + padded(clock.hours().count(), 2) + '.' +
           padded(clock.minutes().count(), 2) + '.' + padded(clock.seconds().count(), 2);
}

/// The number at the start of `text`, or 0.
unsigned numberIn(std::string_view text)
{
    unsigned number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

/// The inverse of `textOf`; any time for other texts.
local_seconds timeIn(std::string_view text)
{
    const auto field = [text](std::size_t start, std::size_t length) {
        return numberIn(text.substr(std::min(start, text.size()), length));
    };
    const year_month_day date(year(static_cast<int>(field(0, 4))), month(field(5, 2)),
                              day(field(8, 2)));
    const auto clock = hours(field(11, 2)) + minutes(field(14, 2)) + seconds(field(17, 2));
    return (date.ok() ? local_days(date) : local_days()) + clock;
}

} // namespace

std::string EarlierVersion::fileName(std::string_view document) const
{
    const auto stem = stemOf(document);
    std::string name(stem);
    name += ' ';
    name += textOf(time);
    if (isForeign)
        name += ForeignMark;
    return name += document.substr(stem.size());
}

std::optional<EarlierVersion> EarlierVersion::fromFileName(std::string_view name,
                                                           std::string_view document)
{
    const auto start = stemOf(document).size() + 1;
    if (name.size() <= start)
        return std::nullopt;
    const EarlierVersion version { .time = timeIn(name.substr(start)),
                                   .isForeign = name.find(ForeignMark) != std::string_view::npos };
    return version.fileName(document) == name ? std::optional(version) : std::nullopt;
}
