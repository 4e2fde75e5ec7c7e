#include "support/CopyFile.h"

#include "fakes/FileSizeLimit.h"
#include "fakes/TestFiles.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <sys/stat.h>

namespace
{

namespace fs = std::filesystem;

class CopyFileTest : public testing::Test
{
protected:
    QTemporaryDir directory;
    fs::path folder = directory.path().toStdString();
    fs::path source = folder / "source";
    fs::path target = folder / "target";
};

TEST_F(CopyFileTest, CopiesAllBytesForTheOwnerOnly)
{
    std::string bytes(3'000'000, 'x');
    bytes[5] = '\0';
    TestFiles::write(source, bytes);
    TestFiles::setMode(source, 0644);
    EXPECT_TRUE(copyFile(source, target));
    EXPECT_EQ(TestFiles::read(target) == bytes, true);
    EXPECT_EQ(TestFiles::mode(target), 0600U);
    EXPECT_EQ(TestFiles::count(folder), 2);
}

TEST_F(CopyFileTest, ReplacesTheTarget)
{
    TestFiles::write(source, "new");
    TestFiles::write(target, "old bytes");
    EXPECT_TRUE(copyFile(source, target));
    EXPECT_EQ(TestFiles::read(target), "new");
}

TEST_F(CopyFileTest, ChangesNothingWithoutSpace)
{
    TestFiles::write(source, std::string(2000, 'x'));
    TestFiles::write(target, "old");
    const FileSizeLimit limit(1000);
    EXPECT_FALSE(copyFile(source, target));
    EXPECT_EQ(TestFiles::read(target), "old");
    EXPECT_EQ(TestFiles::count(folder), 2);
}

TEST_F(CopyFileTest, CopiesOnlyReadableFiles)
{
    EXPECT_FALSE(copyFile(source, target));
    fs::create_directory(source);
    EXPECT_FALSE(copyFile(source, target));
    fs::remove(source);
    TestFiles::write(source, "bytes");
    EXPECT_FALSE(copyFile(source, folder / "missing" / "target"));
    EXPECT_EQ(TestFiles::count(folder), 1);
}

} // namespace
