#include "support/ReadFile.h"

#include "fakes/TestFiles.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string>
#include <sys/stat.h>

namespace
{

namespace fs = std::filesystem;

class ReadFileTest : public testing::Test
{
protected:
    static constexpr qint64 MaximumSize = 1024;

    static std::optional<std::string> read(const fs::path &path)
    {
        const auto bytes = readFile(QString::fromStdString(path), MaximumSize);
        return bytes ? std::optional(bytes->toStdString()) : std::nullopt;
    }

    QTemporaryDir directory;
    fs::path folder = directory.path().toStdString();
    fs::path file = folder / "file";
};

TEST_F(ReadFileTest, ReadsAllBytes)
{
    std::string bytes(256, '\0');
    std::generate(bytes.begin(), bytes.end(),
                  [next = 0]() mutable { return static_cast<char>(next++); });
    TestFiles::write(file, bytes);
    EXPECT_EQ(read(file), bytes);
}

TEST_F(ReadFileTest, ReadsAnEmptyFile)
{
    TestFiles::write(file, "");
    EXPECT_EQ(read(file), "");
}

TEST_F(ReadFileTest, ReadsThroughALink)
{
    TestFiles::write(folder / "target", "text");
    fs::create_symlink("target", file);
    EXPECT_EQ(read(file), "text");
}

TEST_F(ReadFileTest, LeavesRoomBehindTheBytes)
{
    TestFiles::write(file, "text");
    const auto bytes = readFile(QString::fromStdString(file), MaximumSize);
    ASSERT_TRUE(bytes);
    EXPECT_GE(bytes->capacity(), bytes->size() + 64);
}

TEST_F(ReadFileTest, ReadsOnlyRegularFiles)
{
    EXPECT_FALSE(read(file)) << "missing";
    EXPECT_FALSE(read(folder)) << "a folder";
    fs::create_symlink("nowhere", folder / "dangling");
    EXPECT_FALSE(read(folder / "dangling"));
    ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
    EXPECT_FALSE(read(file)) << "a pipe";
}

TEST_F(ReadFileTest, ReadsUpToTheMaximumSize)
{
    TestFiles::write(file, std::string(MaximumSize, 'x'));
    EXPECT_EQ(read(file), std::string(MaximumSize, 'x'));
    TestFiles::write(file, std::string(MaximumSize + 1, 'x'));
    EXPECT_FALSE(read(file));
}

} // namespace
