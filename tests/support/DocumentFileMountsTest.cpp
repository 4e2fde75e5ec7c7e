// Mount points at and around the files of both stores. Runs as a separate process: see
// PrivateMounts.

#include "fakes/FileSizeLimit.h"
#include "fakes/PrivateMounts.h"
#include "support/DocumentFileFixture.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace
{

namespace fs = std::filesystem;
using namespace std::string_literals;

class DocumentFileMountsTest : public DocumentFileFixture
{
protected:
    void SetUp() override
    {
        if (!PrivateMounts::arePossible())
            GTEST_SKIP() << "This user may neither mount nor create a user namespace.";
        fs::create_directories(favicons);
    }

    /// Mounts a file that is elsewhere and holds `bytes` at the file.
    PrivateMount mountFile(std::string_view bytes) const
    {
        TestFiles::write(elsewhere, bytes);
        writeFile("below");
        return PrivateMount::of(elsewhere, file);
    }

    fs::path elsewhere = scratch / "elsewhere";
};

INSTANTIATE_TEST_SUITE_P(Both, DocumentFileMountsTest, bothFiles(), &nameOfFile);

TEST_P(DocumentFileMountsTest, SavesToAMountPoint)
{
    const auto mount = mountFile(GetParam().example);
    ASSERT_TRUE(mount.isMounted());
    TestFiles::setMode(elsewhere, 0640);
    auto &store = start();
    EXPECT_EQ(store.contents(), GetParam().example);
    expectSaves(store);
    EXPECT_EQ(keptVersions(), std::vector { std::string(GetParam().example) });
    EXPECT_EQ(TestFiles::read(elsewhere), start().contents());
    EXPECT_EQ(TestFiles::mode(elsewhere), 0640U);
    EXPECT_EQ(entries(), std::vector { GetParam().name });
}

TEST_P(DocumentFileMountsTest, SavesFewerBytesToAMountPoint)
{
    const auto mount = mountFile(std::string(GetParam().example).append(100'000, ' '));
    ASSERT_TRUE(mount.isMounted());
    expectSaves(start());
}

TEST_P(DocumentFileMountsTest, KeepsUnreadableBytesOfAMountPoint)
{
    const auto mount = mountFile("unreadable");
    ASSERT_TRUE(mount.isMounted());
    auto &store = start();
    EXPECT_TRUE(store.hasDefaults());
    expectSaves(store);
    expectSaves(start());
    EXPECT_EQ(TestFiles::read(kept), "unreadable");
    EXPECT_EQ(entries(), (std::vector { GetParam().name, GetParam().name + ".unreadable" }));
}

TEST_P(DocumentFileMountsTest, SavesToAMountPointBehindALink)
{
    const auto target = scratch / "target";
    TestFiles::write(target, "below");
    TestFiles::write(elsewhere, GetParam().example);
    fs::create_symlink("../target", file);
    const auto mount = PrivateMount::of(elsewhere, target);
    ASSERT_TRUE(mount.isMounted());
    expectSaves(start());
    EXPECT_EQ(TestFiles::read(elsewhere), start().contents());
}

TEST_P(DocumentFileMountsTest, KeepsTheBytesOfAMountPointWithoutRoomBesideIt)
{
    const auto mount = mountFile(GetParam().example);
    ASSERT_TRUE(mount.isMounted());
    auto &store = start();
    {
        const FileSizeLimit limit(10);
        changeInMemory(store);
    }
    EXPECT_EQ(fileText(), GetParam().example);
    EXPECT_EQ(entries(), std::vector { GetParam().name });
    expectSaves(store);
}

TEST_P(DocumentFileMountsTest, KeepsTheOldFileOnAFullFileSystem)
{
    const auto mount = PrivateMount::ofPages(folder);
    ASSERT_TRUE(mount.isMounted());
    auto &store = startFromExample();
    TestFiles::write(folder / "filling", std::string(65536, 'x'));
    changeInMemory(store);
    EXPECT_EQ(fileText(), GetParam().example);
    EXPECT_EQ(entries(), (std::vector { "filling"s, GetParam().name }));

    fs::remove(folder / "filling");
    expectSaves(store);
}

TEST_P(DocumentFileMountsTest, KeepsTheBytesOfAMountPointOnAFullDisk)
{
    const auto disk = scratch / "disk";
    fs::create_directory(disk);
    const auto fileSystem = PrivateMount::ofPages(disk);
    elsewhere = disk / "file";
    const auto mount = mountFile("");
    ASSERT_TRUE(fileSystem.isMounted() && mount.isMounted());
    auto &store = start();
    TestFiles::write(disk / "filling", std::string(65536, 'x'));
    changeInMemory(store);
    EXPECT_EQ(fileText(), "");
    EXPECT_EQ(entries(), (std::vector { GetParam().name, GetParam().name + ".unreadable" }));

    fs::remove(disk / "filling");
    expectSaves(store);
}

TEST_P(DocumentFileMountsTest, CopiesEarlierVersionsToAnotherFileSystem)
{
    fs::create_directories(state);
    const auto mount = PrivateMount::ofPages(state);
    ASSERT_TRUE(mount.isMounted());
    expectSaves(startFromExample());
    EXPECT_EQ(keptVersions(), std::vector { std::string(GetParam().example) });

    writeFile(GetParam().with("foreign"));
    auto &store = start();
    TestFiles::write(state / "filling", std::string(65536, 'x'));
    expectSaves(store);
    EXPECT_EQ(keptVersions().size(), 1U) << "the file system is full";
}

} // namespace
