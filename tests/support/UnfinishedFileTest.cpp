#include "support/UnfinishedFile.h"

#include "fakes/FileSizeLimit.h"
#include "fakes/TestFiles.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <iterator>
#include <string>
#include <vector>

namespace
{

namespace fs = std::filesystem;

class UnfinishedFileTest : public testing::Test
{
protected:
    void removeLeftovers() const { UnfinishedFile::removeLeftovers(folder); }

    QTemporaryDir directory;
    fs::path folder = directory.path().toStdString();
    fs::path target = folder / "file";
};

TEST_F(UnfinishedFileTest, ReplacesItsTarget)
{
    TestFiles::write(target, "old");
    UnfinishedFile file(target);
    ASSERT_TRUE(file.isOpen());
    file.write("new ");
    file.write("bytes");
    EXPECT_TRUE(file.flush());
    EXPECT_EQ(TestFiles::read(target), "old");
    EXPECT_TRUE(file.replaceTarget());
    EXPECT_EQ(TestFiles::read(target), "new bytes");
    EXPECT_EQ(TestFiles::mode(target), 0600U);
    EXPECT_EQ(TestFiles::count(folder), 1);
}

TEST_F(UnfinishedFileTest, RemovesItselfUnlessItReplacesItsTarget)
{
    UnfinishedFile(target).write("new");
    EXPECT_EQ(TestFiles::count(folder), 0);
    fs::create_directory(target);
    {
        UnfinishedFile file(target);
        EXPECT_FALSE(file.replaceTarget());
        EXPECT_EQ(errno, EISDIR);
    }
    EXPECT_EQ(TestFiles::count(folder), 1);
}

TEST_F(UnfinishedFileTest, ReportsAPieceThatDidNotFit)
{
    const FileSizeLimit limit(4);
    UnfinishedFile file(target);
    file.write("four");
    file.write("more");
    file.write("");
    EXPECT_FALSE(file.flush());
}

TEST_F(UnfinishedFileTest, FailsInAMissingFolder)
{
    UnfinishedFile file(folder / "missing" / "file");
    EXPECT_FALSE(file.isOpen());
    file.write("bytes");
    EXPECT_FALSE(file.flush());
    EXPECT_FALSE(file.replaceTarget());
}

TEST_F(UnfinishedFileTest, RemovesLeftovers)
{
    TestFiles::write(folder / "prompts.json.saving-aBcXyZ", "half");
    TestFiles::write(folder / "prompts.json.unreadable.saving-AAAAAA", "");
    removeLeftovers();
    EXPECT_EQ(TestFiles::count(folder), 0);
}

TEST_F(UnfinishedFileTest, RemovesLeftoversBesideTheTargetOfALink)
{
    TestFiles::write(folder / "own" / "elsewhere", "");
    TestFiles::write(folder / "target.saving-abcdef", "half");
    TestFiles::write(folder / "bystander.saving-abcdef", "another program's");
    fs::create_symlink("../target", folder / "own" / "link");
    UnfinishedFile::removeLeftovers(folder / "own");
    EXPECT_FALSE(fs::exists(folder / "target.saving-abcdef"));
    EXPECT_TRUE(fs::exists(folder / "bystander.saving-abcdef"));
    EXPECT_TRUE(fs::is_symlink(folder / "own" / "link"));
}

TEST_F(UnfinishedFileTest, RemovesLeftoversOfARelativeLinkInALinkedFolder)
{
    fs::create_directories(folder / "real" / "own");
    fs::create_directory_symlink("real/own", folder / "own");
    fs::create_symlink("../target", folder / "own" / "link");
    TestFiles::write(folder / "real" / "target.saving-abcdef", "half");
    TestFiles::write(folder / "target.saving-abcdef", "another program's");
    UnfinishedFile::removeLeftovers(folder / "own");
    EXPECT_FALSE(fs::exists(folder / "real" / "target.saving-abcdef"));
    EXPECT_TRUE(fs::exists(folder / "target.saving-abcdef"));
}

TEST_F(UnfinishedFileTest, KeepsFilesThatAUserMayHaveCreated)
{
    const std::vector<std::string> names {
        "prompts.json",
        "prompts.json.backup",
        "prompts.json.aBcXyZ",
        "prompts.json.saving",
        "prompts.json.saving-",
        "prompts.json.saving-abcde",
        "prompts.json.saving-abcdefg",
        "prompts.json.saving-abcde1",
        "prompts.json.saving-abc.ef",
        "prompts.json.saving-abcdef.txt",
        ".saving-abcdef",
    };
    for (const auto &name : names)
        TestFiles::write(folder / name, "mine");
    fs::create_directory(folder / "folder.saving-abcdef");
    fs::create_symlink("prompts.json", folder / "link.saving-abcdef");
    removeLeftovers();
    EXPECT_EQ(TestFiles::count(folder), std::ssize(names) + 2);
}

TEST_F(UnfinishedFileTest, RemovesNothingFromAMissingFolder)
{
    UnfinishedFile::removeLeftovers(folder / "missing");
    EXPECT_EQ(TestFiles::count(folder), 0);
}

} // namespace
