#include "fakes/UnprivilegedScope.h"
#include "library/ExampleLibrary.h"
#include "library/SatchelStore.h"
#include "library/SatchelStoreFixture.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace
{

namespace fs = std::filesystem;
using namespace std::string_view_literals;

/// What becomes of the bytes in a file that could not be read as a library.
class SatchelStoreUnreadableFileTest : public SatchelStoreFixture
{
protected:
    static constexpr auto Unreadable = "{\"tabs\" : [ \0\xFF half a library"sv;

    void changeAndSave(SatchelStore &store)
    {
        store.addTab();
        advance(SaveDelay);
    }

    fs::path copy = folder / "prompts.json.unreadable";
};

TEST_F(SatchelStoreUnreadableFileTest, IsKeptByteForByteWhenTheFirstSaveOverwritesIt)
{
    writeFile(Unreadable);
    SatchelStore store(machine.platform);
    advance(Long);
    EXPECT_FALSE(fs::exists(copy)) << "nothing is written before something changes";

    changeAndSave(store);
    EXPECT_EQ(TestFiles::read(copy), Unreadable);
    EXPECT_EQ(savedDocument(), documentOf(store));
}

TEST_F(SatchelStoreUnreadableFileTest, IsKeptWithOneFaultInALibrary)
{
    const auto text = ExampleLibrary::with("\"none\"", "\"grey\"");
    writeFile(text);
    SatchelStore store(machine.platform);
    changeAndSave(store);
    EXPECT_EQ(TestFiles::read(copy), text);
}

TEST_F(SatchelStoreUnreadableFileTest, IsKeptBesideAnOlderCopy)
{
    TestFiles::write(copy, "an older copy");
    writeFile(Unreadable);
    SatchelStore store(machine.platform);
    changeAndSave(store);
    EXPECT_EQ(TestFiles::read(copy), "an older copy");
    EXPECT_EQ(TestFiles::read(folder / "prompts.json.unreadable-2"), Unreadable);
}

TEST_F(SatchelStoreUnreadableFileTest, IsKeptOnlyOnce)
{
    writeFile(Unreadable);
    SatchelStore store(machine.platform);
    changeAndSave(store);
    changeAndSave(store);
    EXPECT_EQ(TestFiles::read(copy), Unreadable);

    fs::remove(copy);
    changeAndSave(store);
    EXPECT_FALSE(fs::exists(copy));
    EXPECT_EQ(savedDocument(), documentOf(store));
}

TEST_F(SatchelStoreUnreadableFileTest, StaysKeptThroughTheNextStart)
{
    writeFile(Unreadable);
    {
        SatchelStore store(machine.platform);
        changeAndSave(store);
    }
    SatchelStore store(machine.platform);
    changeAndSave(store);
    EXPECT_EQ(TestFiles::read(copy), Unreadable);
}

TEST_F(SatchelStoreUnreadableFileTest, IsNotWhatAValidOrMissingFileIs)
{
    for (const auto text : { ExampleLibrary::json, R"({"tabs" : []})"sv }) {
        writeFile(text);
        SatchelStore store(machine.platform);
        changeAndSave(store);
        EXPECT_FALSE(fs::exists(copy)) << text;
    }
    fs::remove(file);
    SatchelStore store(machine.platform);
    changeAndSave(store);
    EXPECT_FALSE(fs::exists(copy)) << "no file";
}

TEST_F(SatchelStoreUnreadableFileTest, LeavesAnOlderCopyAloneWhereTheFileIsValid)
{
    TestFiles::write(copy, "an older copy");
    writeFile(ExampleLibrary::json);
    SatchelStore store(machine.platform);
    changeAndSave(store);
    EXPECT_EQ(TestFiles::read(copy), "an older copy");
}

TEST_F(SatchelStoreUnreadableFileTest, IsKeptFromBehindALink)
{
    const auto target = fs::path(machine.directory.path().toStdString()) / "synced" / "library";
    TestFiles::write(target, Unreadable);
    fs::create_directory(folder);
    fs::create_symlink("../synced/library", file);
    SatchelStore store(machine.platform);
    changeAndSave(store);

    EXPECT_FALSE(fs::is_symlink(copy));
    EXPECT_EQ(TestFiles::read(copy), Unreadable);
    EXPECT_TRUE(fs::is_symlink(file));
    EXPECT_EQ(TestFiles::read(target), documentOf(store).encode());
}

TEST_F(SatchelStoreUnreadableFileTest, IsKeptWithoutPermissionToReadIt)
{
    writeFile(ExampleLibrary::json);
    TestFiles::setMode(file, 0200);
    SatchelDocument saved;
    {
        const UnprivilegedScope scope(machine.directory.path().toStdString());
        SatchelStore store(machine.platform);
        EXPECT_NE(documentOf(store), ExampleLibrary::document());
        changeAndSave(store);
        saved = documentOf(store);
    }
    TestFiles::setMode(copy, 0600);
    TestFiles::setMode(file, 0600);
    EXPECT_EQ(TestFiles::read(copy), ExampleLibrary::json);
    EXPECT_EQ(savedDocument(), saved);
}

TEST_F(SatchelStoreUnreadableFileTest, IsNotOverwrittenUntilItCanBeKept)
{
    writeFile(Unreadable);
    const UnprivilegedScope scope(machine.directory.path().toStdString());
    SatchelStore store(machine.platform);
    TestFiles::setMode(folder, 0500);
    changeAndSave(store);
    changeAndSave(store);
    EXPECT_EQ(fileText(), Unreadable);
    EXPECT_EQ(store.tabs().get().size(), 3U);

    TestFiles::setMode(folder, 0700);
    changeAndSave(store);
    EXPECT_EQ(TestFiles::read(copy), Unreadable);
    EXPECT_EQ(savedDocument(), documentOf(store));
}

TEST_F(SatchelStoreUnreadableFileTest, StaysKeptWhereTheSaveFailedAfterKeepingIt)
{
    writeFile(Unreadable);
    const UnprivilegedScope scope(machine.directory.path().toStdString());
    TestFiles::setMode(file, 0400);
    SatchelStore store(machine.platform);
    changeAndSave(store);
    EXPECT_EQ(fileText(), Unreadable);

    TestFiles::setMode(file, 0600);
    changeAndSave(store);
    EXPECT_EQ(TestFiles::read(copy), Unreadable);
    EXPECT_EQ(savedDocument(), documentOf(store));
}

TEST_F(SatchelStoreUnreadableFileTest, IsSimplyReplacedWhereItVanishedMeanwhile)
{
    writeFile(Unreadable);
    SatchelStore store(machine.platform);
    fs::remove(file);
    changeAndSave(store);
    EXPECT_FALSE(fs::exists(copy));
    EXPECT_EQ(savedDocument(), documentOf(store));
}

} // namespace
