#include "support/VersionThinning.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <set>
#include <tuple>

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

using Versions = std::set<EarlierVersion>;

/// Sorts from the oldest to the newest.
class Order
{
public:
    Order(const std::vector<EarlierVersion> &recent, local_seconds now)
        : m_recent(recent)
        , m_latestTime(now + days(2))
    {
    }

    bool operator()(const File &left, const File &right) const { return key(left) < key(right); }

private:
    std::tuple<bool, std::ptrdiff_t, EarlierVersion> key(const File &file) const
    {
        const auto found = std::ranges::find(m_recent, file.version);
        const bool isRecent = found != m_recent.end();
        return { isRecent || file.version.time <= m_latestTime,
                 isRecent ? found - m_recent.begin() : -1, file.version };
    }

    const std::vector<EarlierVersion> &m_recent;
    local_seconds m_latestTime;
};

Versions latestForeign(const std::vector<File> &files)
{
    Versions latest;
    for (auto file = files.rbegin(); file != files.rend() && latest.size() < ForeignCount; ++file) {
        if (file->version.isForeign)
            latest.insert(file->version);
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
Versions keptByAge(const Versions &versions, local_seconds now)
{
    Versions kept;
    for (auto version = versions.begin(); version != versions.end(); ++version) {
        const auto period = periodAt(now - version->time);
        const auto next = std::next(version);
        const bool isNewest = next == versions.end() || !isSame(period, version->time, next->time);
        if (isNewest && period != Period::always)
            kept.insert(*version);
    }
    return kept;
}

/// `files` begins with the oldest.
Versions keptByRules(const std::vector<File> &files, const std::vector<EarlierVersion> &recent,
                     local_seconds now)
{
    auto kept = latestForeign(files);
    Versions others;
    for (const auto &file : files) {
        if (!kept.contains(file.version))
            others.insert(file.version);
    }
    kept.merge(keptByAge(others, now));
    kept.insert(recent.begin(), recent.end());
    const auto newestCount = std::min(files.size(), NewestCount);
    std::for_each_n(files.rbegin(), newestCount,
                    [&kept](const File &file) { kept.insert(file.version); });
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

std::vector<EarlierVersion> superfluous(std::vector<File> files,
                                        const std::vector<EarlierVersion> &recent,
                                        local_seconds now, std::uint64_t documentSize)
{
    std::ranges::sort(files, Order(recent, now));
    const auto kept = keptByRules(files, recent, now);
    std::vector<EarlierVersion> removed;
    std::erase_if(files, [&](const File &file) {
        const bool isKept = kept.contains(file.version);
        if (!isKept)
            removed.push_back(file.version);
        return !isKept;
    });
    std::for_each_n(files.begin(), countBeyondLimits(files, documentSize),
                    [&removed](const File &file) { removed.push_back(file.version); });
    return removed;
}

} // namespace VersionThinning
