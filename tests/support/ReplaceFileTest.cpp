#include "support/ReplaceFile.h"

#include "fakes/FileSizeLimit.h"
#include "fakes/TestFiles.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <vector>

namespace
{

namespace fs = std::filesystem;

class ReplaceFileTest : public testing::Test
{
protected:
    static bool replace(const fs::path &path, std::string_view bytes)
    {
        return replaceInPieces(path, { bytes });
    }

    static bool replaceInPieces(const fs::path &path, const std::vector<std::string_view> &pieces)
    {
        const auto write = [&pieces](const ByteSink &sink) { std::ranges::for_each(pieces, sink); };
        return replaceFile(QString::fromStdString(path), write).has_value();
    }

    QTemporaryDir directory;
    fs::path folder = directory.path().toStdString();
    fs::path file = folder / "file";
};

TEST_F(ReplaceFileTest, CreatesANewFileForTheOwnerOnly)
{
    std::string bytes(256, '\0');
    std::generate(bytes.begin(), bytes.end(),
                  [next = 0]() mutable { return static_cast<char>(next++); });
    EXPECT_TRUE(replace(file, bytes));
    EXPECT_EQ(TestFiles::read(file), bytes);
    EXPECT_EQ(TestFiles::mode(file), 0600U);
    EXPECT_EQ(TestFiles::count(folder), 1);
}

TEST_F(ReplaceFileTest, ReplacesLongerAndShorterText)
{
    EXPECT_TRUE(replace(file, "some text"));
    EXPECT_TRUE(replace(file, ""));
    EXPECT_EQ(TestFiles::read(file), "");
    EXPECT_TRUE(replace(file, "text"));
    EXPECT_EQ(TestFiles::read(file), "text");
    EXPECT_EQ(TestFiles::count(folder), 1);
}

TEST_F(ReplaceFileTest, JoinsThePieces)
{
    EXPECT_TRUE(replaceInPieces(file, { "so", "", "me", " text" }));
    EXPECT_EQ(TestFiles::read(file), "some text");
    EXPECT_TRUE(replaceInPieces(file, {}));
    EXPECT_EQ(TestFiles::read(file), "");
}

TEST_F(ReplaceFileTest, ReplacesNothingButRegularFiles)
{
    EXPECT_FALSE(replace(folder / "missing" / "file", "new"));
    EXPECT_FALSE(replace(folder, "new"));
    EXPECT_EQ(TestFiles::count(folder), 0);
    ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
    EXPECT_FALSE(replace(file, "new"));
    EXPECT_TRUE(fs::is_fifo(file));
    EXPECT_EQ(TestFiles::count(folder), 1);
}

TEST_F(ReplaceFileTest, ReturnsTheStampOfTheNewFile)
{
    const auto stamp =
        replaceFile(QString::fromStdString(file), [](const ByteSink &sink) { sink("text"); });
    ASSERT_TRUE(stamp);
    EXPECT_EQ(stamp, FileStamp::of(file));
}

TEST_F(ReplaceFileTest, AnnouncesTheLastStep)
{
    TestFiles::write(folder / "target", "old");
    fs::create_symlink("target", file);
    std::string before;
    const auto read = [&before](const fs::path &path) {
        before = path.filename().string() + ' ' + TestFiles::read(path);
    };
    const auto write = [](const ByteSink &sink) { sink("new"); };
    EXPECT_TRUE(replaceFile(QString::fromStdString(file), write, read));
    EXPECT_EQ(before, "target old");
    EXPECT_EQ(TestFiles::read(file), "new");
}

TEST_F(ReplaceFileTest, AnnouncesNothingIfTheBytesDoNotFit)
{
    const FileSizeLimit limit(1);
    const auto fail = [](const fs::path & /*file*/) { ADD_FAILURE(); };
    EXPECT_FALSE(replaceFile(
        QString::fromStdString(file), [](const ByteSink &sink) { sink("new"); }, fail));
}

TEST_F(ReplaceFileTest, LeavesTheOldFileWhenAPieceDoesNotFit)
{
    TestFiles::write(file, "old");
    const FileSizeLimit limit(1000);
    const std::string half(600, 'x');
    EXPECT_FALSE(replaceInPieces(file, { half, half }));
    EXPECT_FALSE(replaceInPieces(file, { half, half, half }));
    EXPECT_EQ(TestFiles::read(file), "old");
    EXPECT_EQ(TestFiles::count(folder), 1);
    EXPECT_TRUE(replace(file, std::string(1000, 'x')));
}

} // namespace
