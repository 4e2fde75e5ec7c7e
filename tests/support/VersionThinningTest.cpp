#include "support/VersionThinning.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <iterator>
#include <random>
#include <ranges>
#include <set>
#include <vector>

namespace
{

using namespace std::chrono;

using Files = std::vector<VersionThinning::File>;
using Versions = std::vector<EarlierVersion>;

constexpr std::uint64_t Megabyte = 1'000'000;
constexpr local_seconds Now = local_days(2026y / 11 / 21) + 12h + 30min;

EarlierVersion ownAt(local_seconds time)
{
    return { .time = time, .isForeign = false };
}

EarlierVersion foreignAt(local_seconds time)
{
    return { .time = time, .isForeign = true };
}

/// Own versions, each `step` before the next, up to and including `last`.
Files series(int count, seconds step, local_seconds last = Now, std::uint64_t size = 0)
{
    Files files;
    for (int index = count - 1; index >= 0; --index)
        files.push_back({ ownAt(last - index * step), size });
    return files;
}

Files joined(Files files, const Files &others)
{
    files.insert(files.end(), others.begin(), others.end());
    return files;
}

/// What remains of `files`, in their order.
Files thinned(Files files, const Versions &recent = {}, local_seconds now = Now,
              std::uint64_t documentSize = 0)
{
    const auto removed = VersionThinning::superfluous(files, recent, now, documentSize);
    std::erase_if(files, [&removed](const auto &file) {
        return std::ranges::find(removed, file.version) != removed.end();
    });
    return files;
}

Versions versionsOf(const Files &files)
{
    Versions versions;
    for (const auto &file : files)
        versions.push_back(file.version);
    std::ranges::sort(versions);
    return versions;
}

std::uint64_t sizeOf(const Files &files)
{
    std::uint64_t size = 0;
    for (const auto &file : files)
        size += file.size;
    return size;
}

TEST(VersionThinningTest, KeepsAllOfTheLastHour)
{
    EXPECT_EQ(thinned(series(61, 1min)).size(), 61U);
    EXPECT_EQ(thinned(series(62, 1min)).size(), 61U) << "11:29 is in the same hour as 11:59";
}

TEST(VersionThinningTest, KeepsTheNewestOfEachHourForADay)
{
    // At 12:30: 7 of the last hour, then the last ones of 23 hours; that of hour 11 is among the 7.
    const auto kept = versionsOf(thinned(series(24 * 6, 10min)));
    ASSERT_EQ(kept.size(), 7U + 23U);
    for (std::size_t index = 0; index < 23; ++index)
        EXPECT_EQ(kept[index].time, local_days(2026y / 11 / 20) + hours(12 + index) + 50min);
}

TEST(VersionThinningTest, KeepsTheNewestOfEachDayForAMonth)
{
    const auto kept = versionsOf(thinned(series(31 * 24, 1h)));
    ASSERT_EQ(kept.size(), 25U + 30U) << "25 of the last day, the newest of yesterday among them";
    for (int index = 0; index < 30; ++index)
        EXPECT_EQ(kept[std::size_t(index)].time,
                  local_days(2026y / 10 / 21) + days(index) + 23h + 30min);
}

TEST(VersionThinningTest, KeepsTheNewestOfEachMonthForAYear)
{
    const auto kept = versionsOf(thinned(series(400, days(1))));
    ASSERT_EQ(kept.size(), 32U + 11U);
    EXPECT_EQ(kept[0].time, local_days(2025y / 11 / 30) + 12h + 30min);
    EXPECT_EQ(kept[1].time, local_days(2025y / 12 / 31) + 12h + 30min);
    EXPECT_EQ(kept[10].time, local_days(2026y / 9 / 30) + 12h + 30min);
    EXPECT_EQ(kept[11].time, local_days(2026y / 10 / 21) + 12h + 30min);
}

TEST(VersionThinningTest, KeepsTheNewestThreeOfAnyAge)
{
    EXPECT_EQ(versionsOf(thinned(series(10, 1min, Now - years(5)))),
              versionsOf(series(3, 1min, Now - years(5))));
}

TEST(VersionThinningTest, KeepsTheLatestTwentyForeignOnes)
{
    Files files = series(3, 1min);
    for (auto &file : series(30, 1min, Now - years(5)))
        files.push_back({ foreignAt(file.version.time) });
    const auto kept = versionsOf(thinned(files));
    ASSERT_EQ(kept.size(), 23U);
    EXPECT_EQ(kept.front().time, Now - years(5) - 19min);
}

TEST(VersionThinningTest, AForeignOneDoesNotReplaceAnOwnOneOfItsHour)
{
    const auto hour = Now - 5h;
    const Files files = joined(series(3, 1min), { { ownAt(hour) }, { foreignAt(hour + 5min) } });
    EXPECT_EQ(versionsOf(thinned(files)), versionsOf(files));
}

TEST(VersionThinningTest, KeepsAtMostAHundred)
{
    const auto kept = versionsOf(thinned(series(150, 10s)));
    EXPECT_EQ(kept, versionsOf(series(100, 10s)));
}

TEST(VersionThinningTest, KeepsAtMostFiftyMegabytes)
{
    EXPECT_EQ(versionsOf(thinned(series(60, 1min, Now, Megabyte))), versionsOf(series(50, 1min)));
    EXPECT_EQ(thinned(series(60, 1min, Now, Megabyte), {}, Now, 5 * Megabyte).size(), 50U);
}

TEST(VersionThinningTest, KeepsAtMostTenTimesALargerDocument)
{
    EXPECT_EQ(versionsOf(thinned(series(20, 1min, Now, 30 * Megabyte), {}, Now, 30 * Megabyte)),
              versionsOf(series(10, 1min)));
}

TEST(VersionThinningTest, KeepsTheNewestThreeOfAnySize)
{
    EXPECT_EQ(versionsOf(thinned(series(10, 1min, Now, 500 * Megabyte))),
              versionsOf(series(3, 1min)));
}

TEST(VersionThinningTest, KeepsVersionsFromTheFuture)
{
    // The clock was wrong, perhaps in 1970, and is set back later, or is wrong now.
    for (const auto difference : { seconds(1h), seconds(25h), seconds(years(60)) }) {
        const auto files = joined(series(90, 1min, Now + difference), series(3, 1min));
        EXPECT_EQ(thinned(files).size(), files.size()) << difference.count();
    }
}

TEST(VersionThinningTest, VersionsFromTheFutureDoNotBlockNewOnes)
{
    const auto future = series(100, 1min, Now + years(4));
    const auto present = series(20, 1min);
    auto kept = versionsOf(thinned(joined(future, present)));
    EXPECT_EQ(kept, versionsOf(joined(series(80, 1min, Now + years(4)), present)));
}

TEST(VersionThinningTest, VersionsFromAnotherTimeZoneAreTheNewest)
{
    const auto ahead = series(30, 1min, Now + 9h);
    const auto kept = versionsOf(thinned(joined(ahead, series(80, 10s))));
    EXPECT_EQ(kept, versionsOf(joined(ahead, series(70, 10s))));
}

TEST(VersionThinningTest, RecentVersionsStayWhateverTheirTime)
{
    // Kept while the clock was wrong, or before a flight to the east.
    for (const auto age : { seconds(9h), seconds(years(56)) }) {
        const auto recent = versionsOf(series(7, 1min, Now - age));
        const auto files = joined(series(7, 1min, Now - age), series(10, 1min, Now - 3 * age));
        const auto kept = versionsOf(thinned(files, recent));
        EXPECT_TRUE(std::ranges::includes(kept, recent)) << age.count();
    }
}

TEST(VersionThinningTest, TheNewestThreeAreTheRecentOnes)
{
    const auto recent = versionsOf(series(3, 1min, Now - years(56)));
    const auto files = joined(series(10, 1min, Now, 60 * Megabyte),
                              series(3, 1min, Now - years(56), 60 * Megabyte));
    EXPECT_EQ(versionsOf(thinned(files, recent)), recent);
}

TEST(VersionThinningTest, NothingIsRemovedFromNothing)
{
    EXPECT_TRUE(thinned({}).empty());
    EXPECT_EQ(thinned(series(1, 1s, Now - years(9))).size(), 1U);
}

/// Random versions of several years, with some clusters, foreign ones and ones from the future.
class RandomVersions
{
public:
    explicit RandomVersions(unsigned seed)
        : m_random(seed)
    {
    }

    Files files(std::size_t maximumCount, std::uint64_t maximumSize, bool hasFuture = true)
    {
        std::set<EarlierVersion> versions;
        for (std::size_t count = number(maximumCount); versions.size() < count;)
            versions.insert({ time(hasFuture), number(4) == 0 });
        Files files;
        for (const auto &version : versions)
            files.push_back({ version, number(maximumSize) });
        std::ranges::shuffle(files, m_random);
        return files;
    }

    /// Some of them, at most seven of each kind.
    Versions recent(const Files &files)
    {
        Versions recent;
        for (const auto &file : files) {
            if (recent.size() < number(7))
                recent.push_back(file.version);
        }
        return recent;
    }

    std::uint64_t number(std::uint64_t maximum)
    {
        return std::uniform_int_distribution<std::uint64_t>(0, maximum)(m_random);
    }

    Files shuffled(Files files)
    {
        std::ranges::shuffle(files, m_random);
        return files;
    }

private:
    local_seconds time(bool hasFuture)
    {
        const seconds ranges[] = { 1h, days(1), days(31), days(366), years(3) };
        const seconds age(static_cast<std::int64_t>(
            number(static_cast<std::uint64_t>(ranges[number(4)].count()))));
        return hasFuture && number(9) == 0 ? Now + age : Now - age;
    }

    std::mt19937 m_random;
};

TEST(VersionThinningTest, ASecondTimeRemovesNothing)
{
    for (unsigned seed = 0; seed < 500; ++seed) {
        RandomVersions random(seed);
        const auto files = random.files(200, 3 * Megabyte);
        const auto recent = random.recent(files);
        const auto size = random.number(20 * Megabyte);
        const auto once = thinned(files, recent, Now, size);
        EXPECT_EQ(versionsOf(thinned(once, recent, Now, size)), versionsOf(once)) << seed;
    }
}

TEST(VersionThinningTest, RespectsTheLimitsAndTheNewestThree)
{
    for (unsigned seed = 0; seed < 500; ++seed) {
        RandomVersions random(seed);
        const auto files = random.files(300, 20 * Megabyte, false);
        const auto size = random.number(20 * Megabyte);
        const auto kept = thinned(files, {}, Now, size);
        EXPECT_LE(kept.size(), 100U) << seed;
        if (kept.size() > 3) {
            EXPECT_LE(sizeOf(kept), std::max(50 * Megabyte, 10 * size)) << seed;
        }
        const auto all = versionsOf(files);
        const Versions newest(all.end() - std::min<std::ptrdiff_t>(3, std::ssize(all)), all.end());
        EXPECT_TRUE(std::ranges::includes(versionsOf(kept), newest)) << seed;
    }
}

TEST(VersionThinningTest, DoesNotDependOnTheOrderOfTheList)
{
    for (unsigned seed = 0; seed < 300; ++seed) {
        RandomVersions random(seed);
        const auto files = random.files(200, 3 * Megabyte);
        const auto recent = random.recent(files);
        EXPECT_EQ(versionsOf(thinned(random.shuffled(files), recent)),
                  versionsOf(thinned(files, recent)))
            << seed;
    }
}

TEST(VersionThinningTest, EarlierCallsDoNotChangeTheResultOfLaterOnes)
{
    for (unsigned seed = 0; seed < 500; ++seed) {
        RandomVersions random(seed);
        const auto files = random.files(80, 0, false);
        const auto added = random.files(20, 0, false);
        const auto between = Now + seconds(static_cast<std::int64_t>(random.number(86'400 * 40)));
        const auto later =
            between + seconds(static_cast<std::int64_t>(random.number(86'400 * 400)));
        Files newer;
        for (const auto &file : added)
            newer.push_back(
                { { file.version.time + (between - Now) + years(4), file.version.isForeign } });
        const auto step = thinned(files, {}, between);
        EXPECT_EQ(versionsOf(thinned(joined(step, newer), {}, later + years(4))),
                  versionsOf(thinned(joined(files, newer), {}, later + years(4))))
            << seed;
        EXPECT_EQ(versionsOf(thinned(step, {}, later)), versionsOf(thinned(files, {}, later)))
            << seed;
    }
}

} // namespace
