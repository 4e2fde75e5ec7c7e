#include "support/FileStamp.h"

#include "fakes/TestFiles.h"
#include "support/FileDescriptor.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>

namespace
{

namespace fs = std::filesystem;

class FileStampTest : public testing::Test
{
protected:
    FileStampTest() { TestFiles::write(file, "bytes"); }

    QTemporaryDir directory;
    fs::path file = fs::path(directory.path().toStdString()) / "file";
    fs::path other = fs::path(directory.path().toStdString()) / "other";
};

TEST_F(FileStampTest, StaysTheSameWithoutAChange)
{
    const auto stamp = FileStamp::of(file);
    ASSERT_TRUE(stamp);
    EXPECT_EQ(stamp->size, 5U);
    EXPECT_EQ(TestFiles::read(file), "bytes");
    TestFiles::setMode(file, 0640);
    fs::rename(file, other);
    EXPECT_EQ(FileStamp::of(other), stamp);
    EXPECT_EQ(FileStamp::of(FileDescriptor(open(other.c_str(), O_RDONLY)).number()), stamp);
}

TEST_F(FileStampTest, DiffersAfterAWrite)
{
    const auto stamp = FileStamp::of(file);
    const auto time = fs::last_write_time(file);
    TestFiles::write(file, "other");
    fs::last_write_time(file, time + std::chrono::nanoseconds(1));
    EXPECT_NE(FileStamp::of(file), stamp) << "the time";
    TestFiles::write(file, "longer");
    fs::last_write_time(file, time);
    EXPECT_NE(FileStamp::of(file), stamp) << "the size";
}

TEST_F(FileStampTest, DiffersForAnotherFileOfTheSameSizeAndTime)
{
    TestFiles::write(other, "other");
    fs::last_write_time(other, fs::last_write_time(file));
    EXPECT_NE(FileStamp::of(other), FileStamp::of(file));
}

TEST_F(FileStampTest, FollowsLinks)
{
    fs::create_symlink(file, other);
    EXPECT_EQ(FileStamp::of(other), FileStamp::of(file));
}

TEST_F(FileStampTest, OnlyRegularFilesHaveOne)
{
    EXPECT_EQ(FileStamp::of(other), std::nullopt);
    EXPECT_EQ(FileStamp::of(file.parent_path()), std::nullopt);
    ASSERT_EQ(mkfifo(other.c_str(), 0600), 0);
    EXPECT_EQ(FileStamp::of(other), std::nullopt);
    EXPECT_EQ(FileStamp::of(-1), std::nullopt);
}

} // namespace
