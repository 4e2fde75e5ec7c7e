// Faults of the files of both stores. In every case memory keeps what the user has, and nothing on
// the disk is lost.

#include "fakes/FileSizeLimit.h"
#include "fakes/TestFiles.h"
#include "fakes/UnprivilegedScope.h"
#include "support/DocumentFileFixture.h"
#include "support/FileDescriptor.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>
#include <vector>

namespace
{

namespace fs = std::filesystem;
using namespace std::string_literals;
using namespace std::string_view_literals;

void makeSocket(const fs::path &file)
{
    sockaddr_un address { .sun_family = AF_UNIX, .sun_path = {} };
    file.string().copy(address.sun_path, sizeof address.sun_path - 1);
    const FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM, 0));
    EXPECT_EQ(bind(socket.number(), reinterpret_cast<const sockaddr *>(&address), sizeof address),
              0);
}

class DocumentFileFaultsTest : public DocumentFileFixture
{
protected:
    /// Moves the folder three levels down in "home" and links to it, as managers of dotfiles do.
    void linkFolder() const
    {
        fs::create_directories(scratch / "home" / ".local" / "share" / "Quillsatchel");
        fs::create_directory_symlink("home/.local/share/Quillsatchel", folder);
    }

    /// Has the program keep its folder in `parent`.
    void useFolderIn(const fs::path &parent)
    {
        machine.fileLocations.folder = QString::fromStdString(parent);
        folder = parent / "Quillsatchel";
        file = folder / GetParam().name;
        kept = folder / (GetParam().name + ".unreadable");
    }

    /// A numbered copy of the unreadable file.
    fs::path copy(int number) const { return fs::path(kept) += "-" + std::to_string(number); }
};

INSTANTIATE_TEST_SUITE_P(Both, DocumentFileFaultsTest, bothFiles(), &nameOfFile);

// Disk.

/// File sizes at which the disk may be full: before, within and after each write.
std::vector<std::size_t> sizesAroundWrites(std::size_t size)
{
    constexpr std::size_t Step = 256 * 1024; // a quarter of a write
    std::vector<std::size_t> sizes;
    for (std::size_t middle = 0; middle < size; middle += Step) {
        for (const std::size_t each : { middle - 1, middle, middle + 1 }) {
            if (each < size)
                sizes.push_back(each);
        }
    }
    sizes.push_back(size - 1);
    return sizes;
}

TEST_P(DocumentFileFaultsTest, KeepsTheOldFileWhenTheDiskIsFullAtAnyWrite)
{
    const auto old = GetParam().with(std::string(2'500'000, 'x'));
    writeFile(old);
    auto &store = start();
    for (const auto size : sizesAroundWrites(old.size())) {
        const FileSizeLimit limit(size);
        store.changeAndSave();
        ASSERT_EQ(fileText() == old, true) << "at " << size;
        ASSERT_EQ(entries(), std::vector { GetParam().name }) << "at " << size;
    }
    expectSaves(store);
}

TEST_P(DocumentFileFaultsTest, KeepsAnUnreadableFileWhenTheDiskIsFull)
{
    const auto unreadable = GetParam().with(std::string(2'500'000, 'x')) + "]";
    writeFile(unreadable);
    auto &store = start();
    for (const auto size : { 0U, 1U, 50U }) {
        const FileSizeLimit limit(size);
        store.changeAndSave();
        EXPECT_EQ(fileText() == unreadable, true) << "at " << size;
    }
    expectSaves(store);
    EXPECT_EQ(TestFiles::read(kept) == unreadable, true);
}

// Folders.

TEST_P(DocumentFileFaultsTest, CreatesMissingFoldersForTheOwnerOnly)
{
    const auto previous = umask(0);
    useFolderIn(scratch / "some" / "where");
    auto &store = start();
    EXPECT_TRUE(store.hasDefaults());
    EXPECT_TRUE(fs::is_directory(folder)) << "created at the start";
    expectSaves(store);
    umask(previous);
    EXPECT_EQ(TestFiles::mode(folder), 0700U);
    EXPECT_EQ(TestFiles::mode(file), 0600U);
    EXPECT_FALSE(fs::exists(kept));
}

TEST_P(DocumentFileFaultsTest, KeepsChangesInMemoryWhenAFileHasTheNameOfTheFolder)
{
    TestFiles::write(folder, "in the way");
    auto &store = start();
    EXPECT_TRUE(store.hasDefaults());
    changeInMemory(store);
    EXPECT_EQ(TestFiles::read(folder), "in the way");
}

TEST_P(DocumentFileFaultsTest, KeepsChangesInMemoryWhenAFileHasTheNameOfAParentFolder)
{
    TestFiles::write(scratch / "parent", "in the way");
    useFolderIn(scratch / "parent" / "below");
    auto &store = start();
    EXPECT_TRUE(store.hasDefaults());
    changeInMemory(store);
    EXPECT_EQ(TestFiles::read(scratch / "parent"), "in the way");
}

TEST_P(DocumentFileFaultsTest, KeepsChangesInMemoryWhenTheParentFolderIsReadOnly)
{
    const UnprivilegedScope scope(scratch);
    TestFiles::setMode(scratch, 0500);
    auto &store = start();
    EXPECT_TRUE(store.hasDefaults());
    changeInMemory(store);
    EXPECT_FALSE(fs::exists(folder));
    TestFiles::setMode(scratch, 0700);
}

TEST_P(DocumentFileFaultsTest, KeepsChangesInMemoryWhileTheFolderIsMissing)
{
    auto &store = startFromExample();
    fs::remove_all(folder);
    changeInMemory(store);
    EXPECT_FALSE(fs::exists(folder));

    fs::create_directory(folder);
    expectSaves(store);
}

TEST_P(DocumentFileFaultsTest, KeepsChangesInMemoryWhileTheFolderIsReadOnly)
{
    writeFile(GetParam().example);
    fs::create_directory(favicons);
    const UnprivilegedScope scope(scratch);
    auto &store = start();
    TestFiles::setMode(folder, 0500);
    changeInMemory(store);
    EXPECT_EQ(fileText(), GetParam().example);
    EXPECT_EQ(entries(), std::vector { GetParam().name });

    TestFiles::setMode(folder, 0700);
    expectSaves(store);
}

TEST_P(DocumentFileFaultsTest, LeavesAnUnreadableFileUntilItsFolderIsWritable)
{
    writeFile("unreadable");
    const UnprivilegedScope scope(scratch);
    auto &store = start();
    TestFiles::setMode(folder, 0500);
    changeInMemory(store);
    EXPECT_EQ(fileText(), "unreadable");
    EXPECT_FALSE(fs::exists(kept));

    TestFiles::setMode(folder, 0700);
    expectSaves(store);
    EXPECT_EQ(TestFiles::read(kept), "unreadable");
}

TEST_P(DocumentFileFaultsTest, KeepsAFileWhoseFolderBecomesReadableLater)
{
    writeFile(GetParam().example);
    const UnprivilegedScope scope(scratch);
    TestFiles::setMode(folder, 0);
    auto &store = start();
    TestFiles::setMode(folder, 0700);
    EXPECT_TRUE(store.hasDefaults());
    expectSaves(store);
    EXPECT_EQ(TestFiles::read(kept), GetParam().example);
}

// Other things with the name of the file.

TEST_P(DocumentFileFaultsTest, LeavesAFolderThatHasTheNameOfTheFile)
{
    auto &store = startFromExample();
    fs::remove(file);
    TestFiles::write(file / "own file", "own");
    changeInMemory(store);
    EXPECT_EQ(TestFiles::read(file / "own file"), "own");

    auto &next = start();
    EXPECT_TRUE(next.hasDefaults());
    changeInMemory(next);
    EXPECT_EQ(TestFiles::read(file / "own file"), "own");
    EXPECT_EQ(entries(), std::vector { GetParam().name });

    fs::remove_all(file);
    expectSaves(next);
}

TEST_P(DocumentFileFaultsTest, LeavesAPipeThatHasTheNameOfTheFile)
{
    auto &store = startFromExample();
    fs::remove(file);
    ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
    changeInMemory(store);
    EXPECT_TRUE(fs::is_fifo(file));

    auto &next = start();
    EXPECT_TRUE(next.hasDefaults());
    changeInMemory(next);
    EXPECT_TRUE(fs::is_fifo(file));
    EXPECT_EQ(entries(), std::vector { GetParam().name });

    fs::remove(file);
    expectSaves(next);
}

TEST_P(DocumentFileFaultsTest, LeavesASocketThatHasTheNameOfTheFile)
{
    fs::create_directory(folder);
    makeSocket(file);
    auto &store = start();
    EXPECT_TRUE(store.hasDefaults());
    changeInMemory(store);
    EXPECT_TRUE(fs::is_socket(file));
    EXPECT_EQ(entries(), std::vector { GetParam().name });
}

TEST_P(DocumentFileFaultsTest, LeavesALinkToADevice)
{
    fs::create_directory(folder);
    fs::create_symlink("/dev/null", file);
    const UnprivilegedScope scope(scratch);
    auto &store = start();
    EXPECT_TRUE(store.hasDefaults());
    changeInMemory(store);
    EXPECT_TRUE(fs::is_symlink(file));
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
    EXPECT_EQ(entries(), std::vector { GetParam().name });
}

TEST_P(DocumentFileFaultsTest, SavesToTheTargetOfALink)
{
    const auto target = scratch / "synced" / "file";
    TestFiles::write(target, GetParam().example);
    fs::create_directory(folder);
    fs::create_symlink("../synced/file", file);
    auto &store = start();
    EXPECT_EQ(store.contents(), GetParam().example);
    expectSaves(store);
    EXPECT_TRUE(fs::is_symlink(file));
    EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(target)));
}

TEST_P(DocumentFileFaultsTest, FollowsARelativeLinkInALinkedFolder)
{
    const auto target = scratch / "home" / "dotfiles" / "file";
    linkFolder();
    TestFiles::write(target, GetParam().example);
    fs::create_symlink("../../../dotfiles/file", file);
    auto &store = start();
    EXPECT_EQ(store.contents(), GetParam().example);
    expectSaves(store);
    EXPECT_TRUE(fs::is_symlink(file));
    EXPECT_EQ(TestFiles::read(target), start().contents());
    EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(target)));
}

TEST_P(DocumentFileFaultsTest, FollowsARelativeLinkBelowALinkedFolder)
{
    const auto target = scratch / "home" / "dotfiles" / "file";
    fs::create_directories(scratch / "home" / ".local" / "share" / "Quillsatchel");
    fs::create_directory_symlink("home/.local/share", scratch / "share");
    useFolderIn(scratch / "share");
    TestFiles::write(target, GetParam().example);
    fs::create_symlink("../../../dotfiles/file", file);
    expectSaves(startFromExample());
    EXPECT_EQ(TestFiles::read(target), start().contents());
    EXPECT_TRUE(fs::is_symlink(file));
}

TEST_P(DocumentFileFaultsTest, CreatesTheTargetOfARelativeLinkInALinkedFolder)
{
    linkFolder();
    fs::create_directories(scratch / "home" / "dotfiles");
    fs::create_symlink("../../../dotfiles/file", file);
    expectSaves(start());
    EXPECT_TRUE(fs::is_regular_file(scratch / "home" / "dotfiles" / "file"));
}

TEST_P(DocumentFileFaultsTest, KeepsAnUnreadableTargetOfARelativeLinkInALinkedFolder)
{
    const auto target = scratch / "home" / "dotfiles" / "file";
    linkFolder();
    TestFiles::write(target, "unreadable");
    fs::create_symlink("../../../dotfiles/file", file);
    expectSaves(start());
    EXPECT_EQ(TestFiles::read(kept), "unreadable");
    EXPECT_EQ(TestFiles::read(target), start().contents());
}

TEST_P(DocumentFileFaultsTest, SavesToTheTargetOfALinkCreatedAfterLoading)
{
    auto &store = startFromExample();
    fs::rename(file, scratch / "moved");
    fs::create_symlink("../moved", file);
    expectSaves(store);
    EXPECT_TRUE(fs::is_symlink(file));
}

TEST_P(DocumentFileFaultsTest, CreatesTheTargetOfADanglingLink)
{
    fs::create_directory(folder);
    fs::create_symlink("../target", file);
    auto &store = start();
    EXPECT_TRUE(store.hasDefaults());
    expectSaves(store);
    EXPECT_TRUE(fs::is_symlink(file));
    EXPECT_EQ(TestFiles::mode(scratch / "target"), 0600U);
}

TEST_P(DocumentFileFaultsTest, KeepsChangesInMemoryWhileTheFolderOfALinkIsMissing)
{
    fs::create_directory(folder);
    fs::create_symlink("../missing/target", file);
    auto &store = start();
    EXPECT_TRUE(store.hasDefaults());
    changeInMemory(store);
    EXPECT_TRUE(fs::is_symlink(file));
    EXPECT_FALSE(fs::exists(scratch / "missing"));
}

TEST_P(DocumentFileFaultsTest, KeepsALinkTargetThatAppearsAfterLoading)
{
    const auto target = scratch / "disk" / "file";
    fs::create_directory(folder);
    fs::create_symlink("../disk/file", file);
    auto &store = start();
    TestFiles::write(target, GetParam().example);
    expectSaves(store);
    EXPECT_TRUE(fs::is_symlink(file));
    EXPECT_EQ(TestFiles::read(kept), GetParam().example);
}

TEST_P(DocumentFileFaultsTest, KeepsChangesInMemoryWhenLinksFormACycle)
{
    fs::create_directory(folder);
    fs::create_symlink("other", file);
    fs::create_symlink(GetParam().name, folder / "other");
    auto &store = start();
    EXPECT_TRUE(store.hasDefaults());
    changeInMemory(store);
    EXPECT_TRUE(fs::is_symlink(file));
    EXPECT_TRUE(fs::is_symlink(folder / "other"));
    EXPECT_EQ(std::ssize(entries()), 2);
}

TEST_P(DocumentFileFaultsTest, LeavesTheOldTextInAnotherHardLink)
{
    auto &store = startFromExample();
    fs::create_hard_link(file, scratch / "other");
    expectSaves(store);
    EXPECT_EQ(entries(), std::vector { GetParam().name });
    EXPECT_EQ(TestFiles::read(scratch / "other"), GetParam().example);
}

// Changes by other programs, permissions and owners.

TEST_P(DocumentFileFaultsTest, OverwritesAnEditByAnotherProgram)
{
    auto &store = startFromExample();
    writeFile(GetParam().with("edited"));
    expectSaves(store);
    EXPECT_EQ(fileText().find("edited"), std::string::npos) << "the file is read only once";
    EXPECT_FALSE(fs::exists(kept));
}

TEST_P(DocumentFileFaultsTest, KeepsAFileThatAnotherProgramCreates)
{
    auto &store = start();
    writeFile(GetParam().example);
    expectSaves(store);
    EXPECT_EQ(TestFiles::read(kept), GetParam().example);
}

TEST_P(DocumentFileFaultsTest, IgnoresTheModificationTime)
{
    auto &store = startFromExample();
    fs::last_write_time(file, fs::file_time_type::clock::now() + std::chrono::hours(24 * 3650));
    expectSaves(store);
    fs::last_write_time(file, fs::file_time_type::clock::now() + std::chrono::hours(24 * 3650));
    expectSaves(start());
}

TEST_P(DocumentFileFaultsTest, PreservesThePermissionsOfTheFile)
{
    for (const unsigned mode : { 0600U, 0640U, 0644U, 0660U }) {
        auto &store = startFromExample();
        TestFiles::setMode(file, mode);
        expectSaves(store);
        EXPECT_EQ(TestFiles::mode(file), mode);
    }
}

TEST_P(DocumentFileFaultsTest, KeepsChangesInMemoryWhileTheFileIsReadOnly)
{
    writeFile(GetParam().example);
    TestFiles::setMode(file, 0400);
    const UnprivilegedScope scope(scratch);
    auto &store = start();
    EXPECT_EQ(store.contents(), GetParam().example);
    changeInMemory(store);
    EXPECT_EQ(fileText(), GetParam().example);

    TestFiles::setMode(file, 0600);
    expectSaves(store);
}

TEST_P(DocumentFileFaultsTest, KeepsAFileItMayNotRead)
{
    writeFile(GetParam().example);
    const UnprivilegedScope scope(scratch);
    TestFiles::setMode(file, 0200);
    auto &store = start();
    EXPECT_TRUE(store.hasDefaults());
    store.changeAndSave();
    TestFiles::setMode(file, 0600);
    TestFiles::setMode(kept, 0600);
    EXPECT_EQ(fileText(), store.contents());
    EXPECT_EQ(TestFiles::read(kept), GetParam().example);
}

TEST_P(DocumentFileFaultsTest, KeepsTheFileOfAnotherProcessThatOwnsTheFolder)
{
    auto &store = startFromExample();
    machine.fileLocations.isWritable = false;
    const auto others = GetParam().with(R"("Of another process.")");
    writeFile(others);
    changeInMemory(store);
    EXPECT_EQ(fileText(), others);
    EXPECT_EQ(entries(), std::vector { GetParam().name });

    machine.fileLocations.isWritable = true;
    expectSaves(store);
    EXPECT_EQ(TestFiles::read(kept), others);
}

TEST_P(DocumentFileFaultsTest, KeepsAFileWithoutAnyPermission)
{
    writeFile(GetParam().example);
    const UnprivilegedScope scope(scratch);
    TestFiles::setMode(file, 0);
    expectSaves(start());
    TestFiles::setMode(kept, 0600);
    EXPECT_EQ(TestFiles::read(kept), GetParam().example);
}

TEST_P(DocumentFileFaultsTest, RenamesAnUnreadableFileOfAnotherUser)
{
    writeFile(GetParam().example);
    TestFiles::setMode(file, 0600);
    {
        const UnprivilegedScope scope(scratch);
        if (!scope.giveToAnother(file))
            GTEST_SKIP() << "Only root can give a file to another user.";
        auto &store = start();
        EXPECT_TRUE(store.hasDefaults());
        expectSaves(store);
        EXPECT_EQ(TestFiles::mode(file), 0600U);
        EXPECT_EQ(TestFiles::read(kept), "") << "it still belongs to the other user";
    }
    EXPECT_EQ(TestFiles::read(kept), GetParam().example);
}

TEST_P(DocumentFileFaultsTest, LeavesAnotherUsersUnreadableFileInTheirFolder)
{
    writeFile(GetParam().example);
    TestFiles::setMode(file, 0600);
    fs::create_directory(favicons);
    {
        const UnprivilegedScope scope(scratch);
        TestFiles::setMode(folder, 0777);
        if (!scope.giveToAnother(file) || !scope.giveToAnother(folder))
            GTEST_SKIP() << "Only root can give a file to another user.";
        changeInMemory(start());
        EXPECT_EQ(entries(), std::vector { GetParam().name });
    }
    EXPECT_EQ(fileText(), GetParam().example);
}

TEST_P(DocumentFileFaultsTest, PreservesOwnerAndGroupWhenRootSaves)
{
    constexpr uid_t Owner = 1;
    constexpr gid_t Group = 2;
    if (geteuid() != 0)
        GTEST_SKIP() << "Only root can give a file to another user.";
    writeFile(GetParam().example);
    TestFiles::setMode(file, 0640);
    ASSERT_EQ(chown(file.c_str(), Owner, Group), 0);
    expectSaves(start());

    struct stat status {
    };

    ASSERT_EQ(stat(file.c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, Owner);
    EXPECT_EQ(status.st_gid, Group);
    EXPECT_EQ(TestFiles::mode(file), 0640U);
}

TEST_P(DocumentFileFaultsTest, PreservesAGroupOfTheUser)
{
    constexpr gid_t Group = 2;
    if (geteuid() != 0)
        GTEST_SKIP() << "Only root can be put into a group.";
    writeFile(GetParam().example);
    TestFiles::setMode(file, 0660);
    const UnprivilegedScope scope(scratch, Group);
    ASSERT_EQ(chown(file.c_str(), static_cast<uid_t>(-1), Group), 0);
    expectSaves(start());

    struct stat status {
    };

    ASSERT_EQ(stat(file.c_str(), &status), 0);
    EXPECT_EQ(status.st_gid, Group);
}

// Contents.

TEST_P(DocumentFileFaultsTest, KeepsATruncatedFile)
{
    const auto example = GetParam().example;
    for (std::size_t length = 0; length < example.size(); length += 37)
        expectUnreadableButKept(example.substr(0, length));
    expectUnreadableButKept(example.substr(0, example.size() - 1));
}

TEST_P(DocumentFileFaultsTest, KeepsAFileWithInvalidUtf8)
{
    for (const auto bytes :
         { "\x80"sv, "\xC3"sv, "\xED\xA0\x80"sv, "\xF4\x90\x80\x80"sv, "\xFF"sv })
        expectUnreadableButKept(GetParam().with("text " + std::string(bytes)));
}

TEST_P(DocumentFileFaultsTest, KeepsAFileWithWrongTypes)
{
    for (const auto value : { "null"sv, "true"sv, "1"sv, "1.5"sv, "[]"sv, "{}"sv }) {
        std::string text(GetParam().example);
        expectUnreadableButKept(
            text.replace(text.find(GetParam().text), GetParam().text.size(), value));
    }
    for (const auto text : { "null"sv, "1"sv, R"("text")"sv, "[1]"sv, R"([{}])"sv, "{}"sv })
        expectUnreadableButKept(text);
}

TEST_P(DocumentFileFaultsTest, KeepsABinaryFile)
{
    for (const auto &bytes : { std::string(4096, '\0'), "\xFF\xFE["s, "\x1F\x8B\x08\0gzip"s,
                               std::string(100'000, '['), std::string(100'000, '{') })
        expectUnreadableButKept(bytes);
}

TEST_P(DocumentFileFaultsTest, NumbersTheUnreadableFilesItKeeps)
{
    for (const auto *const bytes : { "first", "second", "third" }) {
        writeFile(bytes);
        expectSaves(start());
    }
    EXPECT_EQ(TestFiles::read(kept), "first");
    EXPECT_EQ(TestFiles::read(copy(2)), "second");
    EXPECT_EQ(TestFiles::read(copy(3)), "third");
}

TEST_P(DocumentFileFaultsTest, SkipsNamesThatAreTaken)
{
    TestFiles::write(kept / "my own", "mine");
    fs::create_symlink("nowhere", copy(2));
    fs::create_symlink(GetParam().name, copy(3));
    ASSERT_EQ(mkfifo(copy(4).c_str(), 0600), 0);
    writeFile("unreadable");
    expectSaves(start());
    EXPECT_EQ(TestFiles::read(copy(5)), "unreadable");
    EXPECT_EQ(TestFiles::read(kept / "my own"), "mine");
    EXPECT_TRUE(fs::is_symlink(copy(2)));
    EXPECT_TRUE(fs::is_symlink(copy(3)));
    EXPECT_TRUE(fs::is_fifo(copy(4)));
}

TEST_P(DocumentFileFaultsTest, KeepsAnUnreadableFileOnceThroughFailingSaves)
{
    writeFile("unreadable");
    TestFiles::setMode(file, 0400);
    fs::create_directory(favicons);
    const UnprivilegedScope scope(scratch);
    changeInMemory(start());
    changeInMemory(start());
    EXPECT_EQ(entries(), (std::vector { GetParam().name, GetParam().name + ".unreadable" }));

    TestFiles::setMode(file, 0600);
    expectSaves(start());
    EXPECT_EQ(TestFiles::read(kept), "unreadable");
    EXPECT_FALSE(fs::exists(copy(2)));
}

TEST_P(DocumentFileFaultsTest, KeepsAFileOfMoreThanHalfAGibibyteUnread)
{
    constexpr std::uintmax_t Size = 512 * 1024 * 1024 + 1;
    writeFile(GetParam().example);
    fs::resize_file(file, Size); // sparse
    rusage before {};
    getrusage(RUSAGE_SELF, &before);
    auto &store = start();
    rusage after {};
    getrusage(RUSAGE_SELF, &after);
    EXPECT_LT(after.ru_maxrss - before.ru_maxrss, 100 * 1024) << "kilobytes";

    EXPECT_TRUE(store.hasDefaults());
    expectSaves(store);
    EXPECT_EQ(fs::file_size(kept), Size);
    std::string beginning(GetParam().example.size(), '\0');
    std::ifstream(kept, std::ios::binary).read(beginning.data(), std::ssize(beginning));
    EXPECT_EQ(beginning, GetParam().example);
}

TEST_P(DocumentFileFaultsTest, PreservesAllCharacters)
{
    for (const auto &text : {
             R"(a\u0000b\u0000)"s,
             R"(\u0001\u001f\b\f\t\n\r)"s,
             "\x7F\u0080\u00A0\uFEFF\uFFFC\uFFFD\uFFFE"s,
             "\u05E9\u05DC\u05D5\u05DD \u202Eoverridden\u202C \u2067isolated\u2069"s,
             "e\u0301\u0301\u0301 \u0301 \u0E33\u200D\u0915\u094D\u0937"s,
             "\U0001F469\u200D\U0001F4BB \U0001F1E9\U0001F1EA \U0010FFFF"s,
             "line\u2028paragraph\u2029"s,
         }) {
        const auto json = GetParam().with(text);
        writeFile(json);
        auto &store = start();
        EXPECT_EQ(store.contents(), json);
        expectSaves(store);
        EXPECT_NE(fileText().find('"' + text + '"'), std::string::npos) << text;
    }
}

TEST_P(DocumentFileFaultsTest, PreservesAMegabyteOfText)
{
    const auto json = GetParam().with(std::string(1'000'000, 'W'));
    writeFile(json);
    auto &store = start();
    EXPECT_EQ(store.contents() == json, true);
    expectSaves(store);
}

// Earlier versions.

TEST_P(DocumentFileFaultsTest, KeepsTheStateBeforeTheFirstSave)
{
    expectSaves(startFromExample());
    EXPECT_EQ(keptVersions(), std::vector { std::string(GetParam().example) });
}

TEST_P(DocumentFileFaultsTest, KeepsAnEditByAnotherProgram)
{
    auto &store = startFromExample();
    store.changeAndSave();
    const auto edit = GetParam().with("of another program");
    writeFile(edit);
    expectSaves(store);
    EXPECT_EQ(keptVersions(), (std::vector { std::string(GetParam().example), edit }));
}

TEST_P(DocumentFileFaultsTest, KeepsAnEditByAnotherProgramBeforeTheFirstSave)
{
    auto &store = startFromExample();
    const auto edit = GetParam().with("of another program");
    writeFile(edit);
    expectSaves(store);
    EXPECT_EQ(keptVersions(), std::vector { edit });
}

TEST_P(DocumentFileFaultsTest, KeepsNoVersionIfTheDiskIsFull)
{
    auto &store = startFromExample();
    {
        const FileSizeLimit limit(10);
        changeInMemory(store);
    }
    EXPECT_EQ(fileText(), GetParam().example);
    EXPECT_EQ(keptVersions().size(), 0U);
    expectSaves(store);
    EXPECT_EQ(keptVersions(), std::vector { std::string(GetParam().example) });
}

TEST_P(DocumentFileFaultsTest, SavesWhenAFileHasTheNameOfTheFolderOfVersions)
{
    TestFiles::write(versions, "a file");
    expectSaves(startFromExample());
    EXPECT_EQ(TestFiles::read(versions), "a file");
}

TEST_P(DocumentFileFaultsTest, SavesWhenTheFolderOfVersionsCannotBeCreated)
{
    fs::create_directories(state);
    auto &store = startFromExample();
    const UnprivilegedScope scope(scratch);
    TestFiles::setMode(state, 0500);
    expectSaves(store);
    EXPECT_TRUE(fs::is_empty(state));
    TestFiles::setMode(state, 0700);
}

TEST_P(DocumentFileFaultsTest, SavesWhenTheFolderOfVersionsIsADanglingLink)
{
    fs::create_directories(versions.parent_path());
    fs::create_directory_symlink(scratch / "missing", versions);
    expectSaves(startFromExample());
    EXPECT_FALSE(fs::exists(scratch / "missing"));
}

TEST_P(DocumentFileFaultsTest, SavesWhenTheFolderOfVersionsIsReadOnly)
{
    fs::create_directories(versions);
    auto &store = startFromExample();
    const UnprivilegedScope scope(scratch);
    TestFiles::setMode(versions, 0500);
    expectSaves(store);
    EXPECT_TRUE(fs::is_empty(versions));
}

} // namespace
