#include "support/WholeFile.h"

#include "fakes/FileSizeLimit.h"
#include "fakes/TestFiles.h"
#include "fakes/UnprivilegedScope.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <string>
#include <sys/stat.h>
#include <vector>

namespace
{

namespace fs = std::filesystem;

const std::string AllBytes = [] {
    std::string bytes(256, '\0');
    std::generate(bytes.begin(), bytes.end(),
                  [next = 0]() mutable { return static_cast<char>(next++); });
    return bytes;
}();

class WholeFileTest : public testing::Test
{
protected:
    static std::optional<std::string> read(const fs::path &path)
    {
        const auto bytes = WholeFile::read(QString::fromStdString(path));
        return bytes ? std::optional(bytes->toStdString()) : std::nullopt;
    }

    static bool replace(const fs::path &path, std::string_view bytes)
    {
        return replaceInPieces(path, { bytes });
    }

    static bool replaceInPieces(const fs::path &path, const std::vector<std::string_view> &pieces)
    {
        return WholeFile::replace(QString::fromStdString(path), [&pieces](const ByteSink &sink) {
            std::ranges::for_each(pieces, sink);
        });
    }

    /// How many entries there are, so that temporary files show.
    std::ptrdiff_t entries() const
    {
        return std::distance(fs::directory_iterator(folder), fs::directory_iterator());
    }

    QTemporaryDir directory;
    fs::path folder = directory.path().toStdString();
    fs::path file = folder / "file";
};

TEST_F(WholeFileTest, ReadsAllBytes)
{
    TestFiles::write(file, AllBytes);
    EXPECT_EQ(read(file), AllBytes);
}

TEST_F(WholeFileTest, ReadsAnEmptyFile)
{
    TestFiles::write(file, "");
    EXPECT_EQ(read(file), "");
}

TEST_F(WholeFileTest, ReadsThroughALink)
{
    TestFiles::write(folder / "target", "text");
    fs::create_symlink("target", file);
    EXPECT_EQ(read(file), "text");
}

TEST_F(WholeFileTest, LeavesRoomBehindTheBytes)
{
    TestFiles::write(file, "text");
    const auto bytes = WholeFile::read(QString::fromStdString(file));
    ASSERT_TRUE(bytes);
    EXPECT_GE(bytes->capacity(), bytes->size() + 64);
}

TEST_F(WholeFileTest, ReadsNothingButFiles)
{
    EXPECT_FALSE(read(file)) << "missing";
    EXPECT_FALSE(read(folder)) << "a folder";
    fs::create_symlink("nowhere", folder / "dangling");
    EXPECT_FALSE(read(folder / "dangling"));
}

TEST_F(WholeFileTest, ReadsNothingWithoutPermission)
{
    TestFiles::write(file, "text");
    TestFiles::setMode(file, 0200);
    const UnprivilegedScope scope(folder);
    EXPECT_FALSE(read(file));
}

TEST_F(WholeFileTest, MakesANewFileForItsOwnerOnly)
{
    EXPECT_TRUE(replace(file, AllBytes));
    EXPECT_EQ(TestFiles::read(file), AllBytes);
    EXPECT_EQ(TestFiles::mode(file), 0600U);
    EXPECT_EQ(entries(), 1);
}

TEST_F(WholeFileTest, ReplacesLongerAndShorterText)
{
    EXPECT_TRUE(replace(file, "some text"));
    EXPECT_TRUE(replace(file, ""));
    EXPECT_EQ(TestFiles::read(file), "");
    EXPECT_TRUE(replace(file, "text"));
    EXPECT_EQ(TestFiles::read(file), "text");
    EXPECT_EQ(entries(), 1);
}

TEST_F(WholeFileTest, KeepsThePermissionsOfAnOldFile)
{
    for (const unsigned mode : { 0644U, 0660U, 0600U, 0640U }) {
        TestFiles::write(file, "old");
        TestFiles::setMode(file, mode);
        EXPECT_TRUE(replace(file, "new"));
        EXPECT_EQ(TestFiles::mode(file), mode);
        fs::remove(file);
    }
}

TEST_F(WholeFileTest, PutsAnotherFileInPlaceOfTheOldOne)
{
    TestFiles::write(file, "old");
    fs::create_hard_link(file, folder / "former");
    EXPECT_TRUE(replace(file, "new"));
    EXPECT_EQ(TestFiles::read(file), "new");
    EXPECT_EQ(TestFiles::read(folder / "former"), "old") << "nothing was written into the old file";
}

TEST_F(WholeFileTest, LeavesALinkALinkAndReplacesItsTarget)
{
    TestFiles::write(folder / "elsewhere" / "target", "old");
    fs::create_symlink("elsewhere/target", folder / "between");
    fs::create_symlink(folder / "between", file);
    EXPECT_TRUE(replace(file, "new"));
    EXPECT_TRUE(fs::is_symlink(file));
    EXPECT_TRUE(fs::is_symlink(folder / "between"));
    EXPECT_EQ(TestFiles::read(folder / "elsewhere" / "target"), "new");
}

TEST_F(WholeFileTest, MakesTheMissingTargetOfALink)
{
    fs::create_symlink("target", file);
    EXPECT_TRUE(replace(file, "new"));
    EXPECT_TRUE(fs::is_symlink(file));
    EXPECT_EQ(TestFiles::read(folder / "target"), "new");
    EXPECT_EQ(TestFiles::mode(folder / "target"), 0600U);
}

TEST_F(WholeFileTest, ReplacesNothingWhereThereIsNoFolderOrAFolder)
{
    EXPECT_FALSE(replace(folder / "missing" / "file", "new"));
    EXPECT_FALSE(replace(folder, "new"));
    EXPECT_EQ(entries(), 0);
}

TEST_F(WholeFileTest, LeavesTheOldFileWhereItMayNotBeReplaced)
{
    TestFiles::write(file, "old");
    const UnprivilegedScope scope(folder);

    TestFiles::setMode(file, 0400);
    EXPECT_FALSE(replace(file, "new"));
    TestFiles::setMode(file, 0600);
    TestFiles::setMode(folder, 0500);
    EXPECT_FALSE(replace(file, "new"));
    TestFiles::setMode(folder, 0700);

    EXPECT_EQ(TestFiles::read(file), "old");
    EXPECT_EQ(entries(), 1);
}

TEST_F(WholeFileTest, LeavesTheOldFileWhereTheNewOneFindsNoRoom)
{
    TestFiles::write(file, "old");
    const FileSizeLimit limit(1000);
    EXPECT_FALSE(replace(file, std::string(2000, 'x')));
    EXPECT_EQ(TestFiles::read(file), "old");
    EXPECT_EQ(entries(), 1);
    EXPECT_TRUE(replace(file, std::string(1000, 'x')));
}

TEST_F(WholeFileTest, JoinsThePieces)
{
    EXPECT_TRUE(replaceInPieces(file, { "so", "", "me", " text" }));
    EXPECT_EQ(TestFiles::read(file), "some text");
    EXPECT_TRUE(replaceInPieces(file, {}));
    EXPECT_EQ(TestFiles::read(file), "");
}

TEST_F(WholeFileTest, LeavesTheOldFileWhereOnePieceFindsNoRoom)
{
    TestFiles::write(file, "old");
    const FileSizeLimit limit(1000);
    const std::string half(600, 'x');
    EXPECT_FALSE(replaceInPieces(file, { half, half }));
    EXPECT_FALSE(replaceInPieces(file, { half, half, half }));
    EXPECT_EQ(TestFiles::read(file), "old");
    EXPECT_EQ(entries(), 1);
}

TEST_F(WholeFileTest, GivesUpOnLinksThatLeadRoundInACircle)
{
    fs::create_symlink("other", file);
    fs::create_symlink("file", folder / "other");
    EXPECT_FALSE(replace(file, "new"));
    EXPECT_TRUE(fs::is_symlink(file));
    EXPECT_EQ(entries(), 2);
}

TEST_F(WholeFileTest, ReadsAndReplacesNoPipe)
{
    ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
    EXPECT_FALSE(read(file));
    EXPECT_FALSE(replace(file, "new"));
    EXPECT_TRUE(fs::is_fifo(file));
    EXPECT_EQ(entries(), 1);
}

TEST_F(WholeFileTest, ReadsNoMoreThanHalfAGibibyte)
{
    TestFiles::write(file, "text");
    fs::resize_file(file, 512 * 1024 * 1024 + 1);
    EXPECT_FALSE(read(file));
}

} // namespace
