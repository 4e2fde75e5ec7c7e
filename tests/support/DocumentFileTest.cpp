#include "support/DocumentFile.h"

#include "fakes/TestFiles.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace
{

namespace fs = std::filesystem;
using namespace std::string_view_literals;

class DocumentFileTest : public testing::Test
{
protected:
    /// Valid documents begin with "good".
    static std::optional<std::string> decode(const QByteArray &bytes)
    {
        return bytes.startsWith("good") ? std::optional(bytes.toStdString()) : std::nullopt;
    }

    static void save(DocumentFile &file, std::string_view text)
    {
        file.save([text](const ByteSink &sink) { sink(text); });
    }

    DocumentFile open() const
    {
        return DocumentFile(
            QString::fromStdString(path),
            EarlierVersions(folder / "versions", "file.json", &std::chrono::system_clock::now));
    }

    QTemporaryDir directory;
    fs::path folder = directory.path().toStdString();
    fs::path path = folder / "file.json";
    fs::path kept = folder / "file.json.unreadable";
};

TEST_F(DocumentFileTest, LoadsTheDecodedBytes)
{
    TestFiles::write(path, "good\0text"sv);
    EXPECT_EQ(open().load(&decode), std::string("good\0text"sv));
    TestFiles::write(path, "bad");
    EXPECT_EQ(open().load(&decode), std::nullopt);
}

TEST_F(DocumentFileTest, DoesNotDecodeAMissingFile)
{
    bool isDecoded = false;
    const auto document = open().load([&isDecoded](const QByteArray &) {
        isDecoded = true;
        return std::optional(1);
    });
    EXPECT_FALSE(document);
    EXPECT_FALSE(isDecoded);
}

TEST_F(DocumentFileTest, WritesNothingWhileLoading)
{
    open().load(&decode);
    EXPECT_FALSE(fs::exists(path));
    TestFiles::write(path, "bad");
    open().load(&decode);
    EXPECT_EQ(TestFiles::read(path), "bad");
    EXPECT_FALSE(fs::exists(kept));
}

TEST_F(DocumentFileTest, ReplacesTheLoadedFile)
{
    TestFiles::write(path, "good");
    auto file = open();
    file.load(&decode);
    save(file, "better");
    EXPECT_EQ(TestFiles::read(path), "better");
    EXPECT_FALSE(fs::exists(kept));
}

TEST_F(DocumentFileTest, KeepsAnUnreadableFile)
{
    TestFiles::write(path, "bad");
    auto file = open();
    file.load(&decode);
    save(file, "good");
    EXPECT_EQ(TestFiles::read(path), "good");
    EXPECT_EQ(TestFiles::read(kept), "bad");
}

TEST_F(DocumentFileTest, KeepsAnUnreadableFileOnce)
{
    TestFiles::write(path, "bad");
    auto file = open();
    file.load(&decode);
    save(file, "first");
    save(file, "second");
    EXPECT_EQ(TestFiles::read(kept), "bad");
    EXPECT_FALSE(fs::exists(fs::path(kept) += "-2"));
}

TEST_F(DocumentFileTest, SavesAfterAnUnreadableFileVanished)
{
    TestFiles::write(path, "bad");
    auto file = open();
    file.load(&decode);
    fs::remove(path);
    save(file, "good");
    EXPECT_EQ(TestFiles::read(path), "good");
    EXPECT_FALSE(fs::exists(kept));
}

TEST_F(DocumentFileTest, KeepsNothingAfterReadingTheFile)
{
    TestFiles::write(path, "bad");
    auto file = open();
    file.load(&decode);
    TestFiles::write(path, "good");
    file.load(&decode);
    save(file, "better");
    EXPECT_FALSE(fs::exists(kept));
}

TEST_F(DocumentFileTest, KeepsNothingWithoutLoading)
{
    TestFiles::write(path, "bad");
    auto file = open();
    save(file, "good");
    EXPECT_EQ(TestFiles::read(path), "good");
    EXPECT_FALSE(fs::exists(kept));
}

} // namespace
