#include "launchers/LauncherItem.h"

#include "launchers/ExampleLaunchers.h"

#include <gtest/gtest.h>

namespace
{

TEST(LauncherItemTest, HasARandomId)
{
    const LauncherItem first;
    const LauncherItem second;
    EXPECT_EQ(first.id.version(), QUuid::Random);
    EXPECT_EQ(second.id.version(), QUuid::Random);
    EXPECT_NE(first.id, second.id);
}

TEST(LauncherItemTest, KeepsItsIdWhenCopied)
{
    const LauncherItem item { .name = "name", .target = "target" };
    const auto copy = item;
    EXPECT_EQ(copy.id, item.id);
    EXPECT_EQ(copy, item);
}

TEST(LauncherItemTest, DiffersInEveryField)
{
    const auto item = ExampleLaunchers::website();
    EXPECT_EQ(item, ExampleLaunchers::website());

    auto other = item;
    other.id = QUuid::createUuid();
    EXPECT_NE(other, item);
    other = item;
    other.kind = LauncherKind::application;
    EXPECT_NE(other, item);
    other = item;
    other.name += "x";
    EXPECT_NE(other, item);
    other = item;
    other.target += "/";
    EXPECT_NE(other, item);
}

} // namespace
