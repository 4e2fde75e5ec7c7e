#pragma once

#include "support/EarlierVersion.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <vector>

/// Decides which earlier versions of a document are removed. Kept are
///
/// - all of the last hour, one per hour of the last 24 hours, one per day of the last 31 days and
///   one per month of the last 366 days: the newest in each hour, day or month of the calendar;
/// - the latest twenty by other programs, which do not count for the rule above;
/// - the recent ones (see below).
///
/// Of these, the oldest are removed while there are more than 100, or while they are together
/// larger than 50 MB and than ten times the document. The newest three are never removed.
///
/// Ages are differences of local times. A version with a later time than now stays: the clock or
/// the time zone was changed. If its time is more than two days away, no time zone explains it, and
/// the version counts as the oldest.
namespace VersionThinning
{

/// How many versions of each kind, foreign or not, count as recent. It is the number of states that
/// a process keeps in an hour of continuous changes.
inline constexpr std::ptrdiff_t RecentCount = 7;

struct File {
    EarlierVersion version;
    std::uint64_t size = 0; ///< bytes
};

/// The versions to remove, out of `files`, in no particular order. `recent` are those that this
/// process added last, in this order. They are newer than all others whatever their times say,
/// because the clock may have been changed since.
std::vector<EarlierVersion> superfluous(const std::vector<File> &files,
                                        const std::vector<EarlierVersion> &recent,
                                        std::chrono::local_seconds now, std::uint64_t documentSize);

} // namespace VersionThinning
