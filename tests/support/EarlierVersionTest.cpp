#include "support/EarlierVersion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace
{

using namespace std::chrono;

constexpr std::string_view Prompts = "prompts.json";

constexpr local_seconds Evening = local_days(2026y / 11 / 21) + 23h + 17min + 5s;

TEST(EarlierVersionTest, IsNamedByLocalTime)
{
    EXPECT_EQ((EarlierVersion { Evening, false }.fileName(Prompts)),
              "prompts 2026-11-21 23.17.05.json");
    EXPECT_EQ((EarlierVersion { Evening, true }.fileName(Prompts)),
              "prompts 2026-11-21 23.17.05 by another program.json");
    EXPECT_EQ((EarlierVersion { local_days(1970y / 1 / 2), false }.fileName("launchers.json")),
              "launchers 1970-01-02 00.00.00.json");
}

TEST(EarlierVersionTest, ReadsItsNames)
{
    EXPECT_EQ(EarlierVersion::fromFileName("prompts 2026-11-21 23.17.05.json", Prompts),
              (EarlierVersion { Evening, false }));
    EXPECT_EQ(EarlierVersion::fromFileName("launchers 2026-11-21 23.17.05 by another program.json",
                                           "launchers.json"),
              (EarlierVersion { Evening, true }));
}

TEST(EarlierVersionTest, ReadsNoOtherNames)
{
    for (const std::string_view name :
         { "",
           "prompts",
           "prompts ",
           "prompts.json",
           "prompts 2026-11-21.json",
           "launchers 2026-11-21 23.17.05.json",
           "Prompts 2026-11-21 23.17.05.json",
           "prompts 2026-11-21 23.17.05",
           "prompts 2026-11-21 23.17.05.json ",
           "prompts 2026-11-21 23.17.05.json.saving-abcdef",
           "prompts 2026-11-21 23.17.05.jso",
           "prompts 2026-11-21 23.17.5.json",
           "prompts 2026-11-21 23:17:05.json",
           "prompts 2026-11-21  3.17.05.json",
           "prompts 2026-11-21 -3.17.05.json",
           "prompts 2026-11-21 24.17.05.json",
           "prompts 2026-11-21 23.60.05.json",
           "prompts 2026-11-21 23.17.60.json",
           "prompts 2026-13-21 23.17.05.json",
           "prompts 2026-02-29 23.17.05.json",
           "prompts 2026-00-00 00.00.00.json",
           "prompts 2026-11-21 23.17.05 copy.json",
           "my prompts 2026-11-21 23.17.05.json",
           "prompts 2026-11-21 23.17.05by another program.json",
           "prompts by another program 2026-11-21 23.17.05.json",
           "prompts 2026-11-21 23.17.05 by another program by another program.json",
           "prompts \xFF\xFF\xFF\xFF-11-21 23.17.05.json" })
        EXPECT_EQ(EarlierVersion::fromFileName(name, Prompts), std::nullopt) << name;
    EXPECT_EQ(EarlierVersion::fromFileName(
                  std::string_view("prompts 2026-11-21 23.17.05.json\0", 33), Prompts),
              std::nullopt);
}

TEST(EarlierVersionTest, NamesSortByTimeAndCanBeReadBack)
{
    std::mt19937 random(14);
    std::uniform_int_distribution<std::int64_t> anySecond(0, seconds(days(100 * 365)).count());
    std::vector<EarlierVersion> versions;
    for (int count = 0; count < 1000; ++count)
        versions.push_back({ local_seconds(seconds(anySecond(random))), count % 3 == 0 });
    std::ranges::sort(versions);
    std::vector<std::string> names;
    for (const auto &version : versions) {
        names.push_back(version.fileName(Prompts));
        EXPECT_EQ(EarlierVersion::fromFileName(names.back(), Prompts), version);
    }
    EXPECT_TRUE(std::ranges::is_sorted(names));
}

} // namespace
