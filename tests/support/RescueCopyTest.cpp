#include "support/RescueCopy.h"

#include "fakes/TestFiles.h"
#include "fakes/UnprivilegedScope.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <sys/stat.h>

namespace
{

namespace fs = std::filesystem;
using namespace std::string_view_literals;
using RescueCopy::Outcome;

constexpr auto Bytes = "\0\x01\xFF bytes\n"sv;

class RescueCopyTest : public testing::Test
{
protected:
    Outcome keep() const { return RescueCopy::keep(file, kept); }

    fs::path numbered(int number) const { return fs::path(kept) += "-" + std::to_string(number); }

    QTemporaryDir directory;
    fs::path folder = fs::canonical(directory.path().toStdString());
    fs::path file = folder / "file";
    fs::path kept = folder / "file.kept";
};

TEST_F(RescueCopyTest, KeepsAFileByteForByte)
{
    TestFiles::write(file, Bytes);
    EXPECT_EQ(keep(), Outcome::kept);
    EXPECT_EQ(TestFiles::read(kept), Bytes);
    EXPECT_EQ(TestFiles::read(file), Bytes);
    EXPECT_EQ(TestFiles::count(folder), 2);
}

TEST_F(RescueCopyTest, KeepsAFileOnlyOnce)
{
    TestFiles::write(kept, "an earlier file");
    TestFiles::write(file, Bytes);
    EXPECT_EQ(keep(), Outcome::kept);
    EXPECT_EQ(keep(), Outcome::kept);
    EXPECT_EQ(TestFiles::read(numbered(2)), Bytes);
    EXPECT_EQ(TestFiles::count(folder), 3);
}

TEST_F(RescueCopyTest, KeepsTheTargetOfALink)
{
    TestFiles::write(folder / "target", Bytes);
    fs::create_symlink("target", file);
    EXPECT_EQ(keep(), Outcome::kept);
    EXPECT_FALSE(fs::is_symlink(kept));
    fs::remove(folder / "target");
    EXPECT_EQ(TestFiles::read(kept), Bytes);
}

TEST_F(RescueCopyTest, CopiesALinkTargetOnAnotherFileSystem)
{
    const QTemporaryDir elsewhere(QStringLiteral("/dev/shm/kept-XXXXXX"));

    struct stat here {
    };

    struct stat there {
    };

    const auto target = fs::path(elsewhere.path().toStdString()) / "target";
    if (!elsewhere.isValid() || stat(folder.c_str(), &here) != 0 ||
        stat(target.parent_path().c_str(), &there) != 0 || here.st_dev == there.st_dev)
        GTEST_SKIP() << "Needs a second file system.";
    TestFiles::write(kept, "an earlier file");
    TestFiles::write(target, Bytes);
    fs::create_symlink(target, file);

    EXPECT_EQ(keep(), Outcome::kept);
    EXPECT_EQ(TestFiles::read(kept), "an earlier file");
    EXPECT_EQ(TestFiles::read(numbered(2)), Bytes);
    EXPECT_EQ(TestFiles::mode(numbered(2)), 0600U);
    EXPECT_EQ(TestFiles::count(folder), 3);
}

TEST_F(RescueCopyTest, RenamesAnUnreadableLinkTarget)
{
    TestFiles::write(folder / "target", Bytes);
    TestFiles::setMode(folder / "target", 0);
    fs::create_symlink("target", file);
    {
        const UnprivilegedScope scope(folder);
        EXPECT_EQ(keep(), Outcome::kept);
    }
    EXPECT_TRUE(fs::is_symlink(file));
    EXPECT_FALSE(fs::exists(folder / "target"));
    TestFiles::setMode(kept, 0600);
    EXPECT_EQ(TestFiles::read(kept), Bytes);
}

TEST_F(RescueCopyTest, ReportsAMissingFile)
{
    EXPECT_EQ(keep(), Outcome::noFile);
    fs::create_symlink("missing/target", file);
    EXPECT_EQ(keep(), Outcome::noFile);
    EXPECT_EQ(TestFiles::count(folder), 1);
}

TEST_F(RescueCopyTest, KeepsOnlyRegularFiles)
{
    fs::create_directory(file);
    EXPECT_EQ(keep(), Outcome::failed);
    fs::remove(file);
    ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
    EXPECT_EQ(keep(), Outcome::failed);
    EXPECT_EQ(TestFiles::count(folder), 1);
}

TEST_F(RescueCopyTest, ReportsFailure)
{
    TestFiles::write(file, Bytes);
    const UnprivilegedScope scope(folder);
    TestFiles::setMode(folder, 0500);
    EXPECT_EQ(keep(), Outcome::failed);
    TestFiles::setMode(folder, 0700);
    EXPECT_EQ(TestFiles::read(file), Bytes);
    EXPECT_EQ(TestFiles::count(folder), 1);
}

TEST_F(RescueCopyTest, FailsIfTheNameIsTooLong)
{
    TestFiles::write(file, Bytes);
    EXPECT_EQ(RescueCopy::keep(file, folder / std::string(1000, 'x')), Outcome::failed);
    EXPECT_EQ(RescueCopy::copy(file, folder / std::string(1000, 'x')), std::nullopt);
}

TEST_F(RescueCopyTest, CopiesToTheFirstFreeName)
{
    TestFiles::write(file, Bytes);
    fs::create_hard_link(file, kept);
    EXPECT_EQ(RescueCopy::copy(file, kept), numbered(2));
    TestFiles::write(file, "changed");
    EXPECT_EQ(TestFiles::read(numbered(2)), Bytes);
    EXPECT_EQ(TestFiles::mode(numbered(2)), 0600U);
}

} // namespace
