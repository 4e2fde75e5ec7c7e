#include "support/MountedFile.h"

#include "fakes/FileSizeLimit.h"
#include "fakes/TestFiles.h"
#include "support/FileDescriptor.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <string_view>
#include <sys/resource.h>

namespace
{

namespace fs = std::filesystem;

class MountedFileTest : public testing::Test
{
protected:
    /// Overwrites the file with `bytes`.
    bool overwrite(std::string_view bytes) const
    {
        TestFiles::write(source, bytes);
        const FileDescriptor file(open(source.c_str(), O_RDONLY | O_CLOEXEC));
        return MountedFile::overwrite(path, file.number());
    }

    QTemporaryDir directory;
    fs::path folder = fs::path(directory.path().toStdString()) / "folder";
    fs::path path = folder / "file";
    fs::path previous = folder / "file.previous";
    fs::path source = fs::path(directory.path().toStdString()) / "source";
};

TEST_F(MountedFileTest, OverwritesTheSameFile)
{
    TestFiles::write(path, "old");
    fs::create_hard_link(path, directory.filePath(QStringLiteral("link")).toStdString());
    const std::string longer(3'000'000, 'x');
    for (const std::string_view bytes : { std::string_view(longer), std::string_view("short"),
                                          std::string_view(), std::string_view("again") }) {
        EXPECT_TRUE(overwrite(bytes));
        EXPECT_EQ(TestFiles::read(path) == bytes, true);
    }
    EXPECT_EQ(fs::hard_link_count(path), 2U);
    EXPECT_EQ(TestFiles::count(folder), 1);
}

TEST_F(MountedFileTest, LeavesTheCopyOfAnEarlierCrash)
{
    TestFiles::write(path, "old");
    TestFiles::write(previous, "of a crash");
    EXPECT_TRUE(overwrite("new"));
    EXPECT_EQ(TestFiles::read(previous), "of a crash");
    EXPECT_EQ(TestFiles::count(folder), 2);
}

TEST_F(MountedFileTest, KeepsTheOldBytesWithoutSpace)
{
    TestFiles::write(path, "old bytes");
    TestFiles::write(source, std::string(2000, 'x'));
    const FileDescriptor file(open(source.c_str(), O_RDONLY | O_CLOEXEC));
    for (const rlim_t room : { 0U, 5U, 1000U }) {
        const FileSizeLimit limit(room);
        EXPECT_FALSE(MountedFile::overwrite(path, file.number()));
        EXPECT_EQ(TestFiles::read(path), "old bytes") << room;
        EXPECT_EQ(TestFiles::count(folder), 1) << room;
    }
}

TEST_F(MountedFileTest, OverwritesOnlyRegularFiles)
{
    EXPECT_FALSE(overwrite("new")) << "missing";
    fs::create_directories(path);
    EXPECT_FALSE(overwrite("new")) << "a folder";
    fs::remove(path);
    fs::create_symlink("target", path);
    EXPECT_FALSE(overwrite("new")) << "a link";
    EXPECT_EQ(TestFiles::count(folder), 1);
}

TEST_F(MountedFileTest, LeavesTheOldBytesBesideTheFileAfterACrash)
{
    const std::string old(1'000'000, 'o');
    TestFiles::write(path, old);
    TestFiles::write(source, std::string(3'000'000, 'n'));
    const auto overwriteUntilKilled = [this] {
        const FileDescriptor file(open(source.c_str(), O_RDONLY | O_CLOEXEC));
        const rlimit limit { .rlim_cur = 2'000'000, .rlim_max = 2'000'000 };
        setrlimit(RLIMIT_FSIZE, &limit);
        MountedFile::overwrite(path, file.number());
    };
    EXPECT_EXIT(overwriteUntilKilled(), testing::KilledBySignal(SIGXFSZ), "");
    EXPECT_EQ(TestFiles::read(previous) == old, true);
    EXPECT_TRUE(overwrite("new"));
    EXPECT_EQ(TestFiles::read(previous) == old, true);
}

} // namespace
