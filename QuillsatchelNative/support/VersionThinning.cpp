#include "support/VersionThinning.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <tuple>
#include <utility>

namespace VersionThinning
{

namespace
{

using namespace std::chrono;

constexpr std::size_t ForeignCount = 20;
constexpr std::size_t NewestCount = 3;
constexpr std::size_t MaximumCount = 100;
constexpr std::uint64_t MaximumSize = 50'000'000;
constexpr std::uint64_t MaximumSizePerDocument = 10;

using Versions = std::vector<EarlierVersion>;

/// Versions with a higher rank are newer.
using Rank = std::tuple<bool, std::ptrdiff_t, EarlierVersion>;

Rank rankOf(const EarlierVersion &version, const std::vector<EarlierVersion> &recent,
            local_seconds now)
{
    const auto found = std::ranges::find(recent, version);
    const bool isRecent = found != recent.end();
    return { isRecent || version.time <= now + days(2), isRecent ? found - recent.begin() : -1,
             version };
}

std::vector<File> fromOldestToNewest(const std::vector<File> &files,
                                     const std::vector<EarlierVersion> &recent, local_seconds now)
{
    std::vector<std::pair<Rank, std::uint64_t>> ranked;
    ranked.reserve(files.size());
    for (const auto &[version, size] : files)
        ranked.emplace_back(rankOf(version, recent, now), size);
    std::ranges::sort(ranked);
    std::vector<File> sorted;
    sorted.reserve(files.size());
    for (const auto &[rank, size] : ranked)
        sorted.push_back({ std::get<EarlierVersion>(rank), size });
    return sorted;
}

Versions latestForeign(const std::vector<File> &files)
{
    Versions latest;
    for (auto file = files.rbegin(); file != files.rend() && latest.size() < ForeignCount; ++file) {
        if (file->version.isForeign)
            latest.push_back(file->version);
    }
    return latest;
}

/// The part of the calendar of which only the newest version is kept.
enum class Period {
    none,
    hour,
    day,
    month,
    always
};

Period periodAt(seconds age)
{
    if (age <= hours(1))
        return Period::none;
    if (age <= days(1))
        return Period::hour;
    if (age <= days(31))
        return Period::day;
    return age <= days(366) ? Period::month : Period::always;
}

bool isSame(Period period, local_seconds left, local_seconds right)
{
    const year_month_day leftDate(floor<days>(left));
    const year_month_day rightDate(floor<days>(right));
    switch (period) {
    case Period::none:
        return false;
    case Period::hour:
        return floor<hours>(left) == floor<hours>(right);
    case Period::day:
        return leftDate == rightDate;
    case Period::month:
        return leftDate.year() / leftDate.month() == rightDate.year() / rightDate.month();
    case Period::always:
        break;
    }
    return true;
}

/// The versions that their age keeps.
Versions keptByAge(Versions versions, local_seconds now)
{
    std::ranges::sort(versions);
    Versions kept;
    for (auto version = versions.begin(); version != versions.end(); ++version) {
        const auto period = periodAt(now - version->time);
        const auto next = std::next(version);
        const bool isNewest = next == versions.end() || !isSame(period, version->time, next->time);
        if (isNewest && period != Period::always)
            kept.push_back(*version);
    }
    return kept;
}

/// In ascending order; some may occur repeatedly. `files` begins with the oldest.
Versions keptByRules(const std::vector<File> &files, const std::vector<EarlierVersion> &recent,
                     local_seconds now)
{
    auto kept = latestForeign(files);
    Versions others;
    for (const auto &file : files) {
        if (std::ranges::find(kept, file.version) == kept.end())
            others.push_back(file.version);
    }
    std::ranges::copy(keptByAge(std::move(others), now), std::back_inserter(kept));
    std::ranges::copy(recent, std::back_inserter(kept));
    const auto newestCount = std::min(files.size(), NewestCount);
    std::for_each_n(files.rbegin(), newestCount,
                    [&kept](const File &file) { kept.push_back(file.version); });
    std::ranges::sort(kept);
    return kept;
}

/// How many at the start of `files`, which begins with the oldest, exceed the limits.
std::size_t countBeyondLimits(const std::vector<File> &files, std::uint64_t documentSize)
{
    const auto maximumSize = std::max(MaximumSize, MaximumSizePerDocument * documentSize);
    std::uint64_t size = 0;
    std::size_t kept = 0;
    for (auto file = files.rbegin(); file != files.rend() && kept < MaximumCount; ++file, ++kept) {
        size += file->size;
        if (kept >= NewestCount && size > maximumSize)
            break;
    }
    return files.size() - kept;
}

} // namespace

std::vector<EarlierVersion> superfluous(const std::vector<File> &files,
                                        const std::vector<EarlierVersion> &recent,
                                        local_seconds now, std::uint64_t documentSize)
{
    auto remaining = fromOldestToNewest(files, recent, now);
    const auto kept = keptByRules(remaining, recent, now);
    std::vector<EarlierVersion> removed;
    std::erase_if(remaining, [&](const File &file) {
        const bool isKept = std::ranges::binary_search(kept, file.version);
        if (!isKept)
            removed.push_back(file.version);
        return !isKept;
    });
    std::for_each_n(remaining.begin(), countBeyondLimits(remaining, documentSize),
                    [&removed](const File &file) { removed.push_back(file.version); });
    return removed;
}

} // namespace VersionThinning
