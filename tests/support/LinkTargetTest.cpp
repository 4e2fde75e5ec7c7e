#include "support/LinkTarget.h"

#include "fakes/TestFiles.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>

namespace
{

namespace fs = std::filesystem;

class LinkTargetTest : public testing::Test
{
protected:
    static void link(const fs::path &target, const fs::path &path)
    {
        fs::create_directories(path.parent_path());
        fs::create_symlink(target, path);
    }

    QTemporaryDir directory;
    fs::path folder = fs::canonical(directory.path().toStdString());
};

TEST_F(LinkTargetTest, ReturnsAPathWithoutLinks)
{
    TestFiles::write(folder / "file", "");
    EXPECT_EQ(linkTarget(folder / "file"), folder / "file");
    EXPECT_EQ(linkTarget(folder / "missing"), folder / "missing");
}

TEST_F(LinkTargetTest, FollowsLinksToAMissingFile)
{
    link("between", folder / "link");
    link(folder / "target", folder / "between");
    EXPECT_EQ(linkTarget(folder / "link"), folder / "target");
}

TEST_F(LinkTargetTest, ResolvesParentFoldersFromTheRealFolderOfALink)
{
    fs::create_directories(folder / "real/deep");
    link("real/deep", folder / "linked");
    link("../target", folder / "real/deep/link");
    EXPECT_EQ(linkTarget(folder / "linked/link"), folder / "real/target");
    EXPECT_EQ(linkTarget(folder / "linked/../target"), folder / "real/target");
}

TEST_F(LinkTargetTest, FollowsLinkedFoldersWithinATarget)
{
    fs::create_directories(folder / "real/deep");
    link("real/deep", folder / "linked");
    link("linked/../target", folder / "link");
    EXPECT_EQ(linkTarget(folder / "link"), folder / "real/target");
}

TEST_F(LinkTargetTest, ResolvesRelativePathsFromTheCurrentFolder)
{
    const auto before = fs::current_path();
    fs::current_path(folder);
    link("target", folder / "link");
    EXPECT_EQ(linkTarget("link"), folder / "target");
    EXPECT_EQ(linkTarget("./link"), folder / "target");
    fs::current_path(before);
}

TEST_F(LinkTargetTest, KeepsNamesThatAreNotUtf8)
{
    link("target\xFF", folder / "link");
    EXPECT_EQ(linkTarget(folder / "link"), folder / "target\xFF");
}

TEST_F(LinkTargetTest, FailsInAMissingFolder)
{
    link("missing/target", folder / "link");
    EXPECT_EQ(linkTarget(folder / "link"), std::nullopt);
    EXPECT_EQ(linkTarget(folder / "missing/file"), std::nullopt);
}

TEST_F(LinkTargetTest, FailsForACycle)
{
    link("other", folder / "link");
    link("link", folder / "other");
    link("self/file", folder / "self");
    EXPECT_EQ(linkTarget(folder / "link"), std::nullopt);
    EXPECT_EQ(linkTarget(folder / "self"), std::nullopt);
}

TEST_F(LinkTargetTest, FollowsAsManyLinksAsTheKernel)
{
    constexpr int MaximumLinks = 40;
    for (int number = 0; number <= MaximumLinks; ++number)
        link(std::to_string(number), folder / std::to_string(number + 1));
    TestFiles::write(folder / "0", "");
    EXPECT_EQ(linkTarget(folder / std::to_string(MaximumLinks)), folder / "0");
    EXPECT_EQ(linkTarget(folder / std::to_string(MaximumLinks + 1)), std::nullopt);
    EXPECT_TRUE(fs::exists(folder / std::to_string(MaximumLinks)));
    EXPECT_EQ(TestFiles::read(folder / std::to_string(MaximumLinks + 1)), "");
}

} // namespace
