#include "launchers/LauncherKind.h"

#include <gtest/gtest.h>

#include <array>
#include <string_view>

namespace
{

using namespace std::string_view_literals;

TEST(LauncherKindTest, HasARawValueForEachCase)
{
    EXPECT_EQ(LauncherKind(LauncherKind::application).rawValue(), "application");
    EXPECT_EQ(LauncherKind(LauncherKind::website).rawValue(), "website");
}

TEST(LauncherKindTest, IsReadFromItsRawValue)
{
    for (const LauncherKind kind : { LauncherKind::application, LauncherKind::website })
        EXPECT_EQ(LauncherKind::fromRawValue(kind.rawValue()), kind);
}

TEST(LauncherKindTest, IsReadFromNoOtherText)
{
    constexpr std::array Texts { ""sv,
                                 "folder"sv,
                                 "Application"sv,
                                 "WEBSITE"sv,
                                 "app"sv,
                                 "web"sv,
                                 "websites"sv,
                                 "applicatio"sv,
                                 " website"sv,
                                 "website "sv,
                                 "website\0"sv,
                                 "0"sv,
                                 "null"sv,
                                 "application,website"sv };
    for (const auto text : Texts)
        EXPECT_FALSE(LauncherKind::fromRawValue(text)) << text;
}

TEST(LauncherKindTest, EqualsOnlyItsOwnCase)
{
    const LauncherKind application = LauncherKind::application;
    const LauncherKind website = LauncherKind::website;
    EXPECT_EQ(application, LauncherKind(application));
    EXPECT_EQ(website, LauncherKind(website));
    EXPECT_NE(application, website);
}

} // namespace
