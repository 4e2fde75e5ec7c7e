#include "fakes/TestFiles.h"
#include "platform/TestDesktop.h"
#include "platform/desktop/QtMainQueue.h"
#include "platform/gio/GioWorkspace.h"
#include "platform/gio/InstalledApplications.h"

#include <QCoreApplication>
#include <QTest>
#include <QThread>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <sys/stat.h>
#include <vector>

namespace
{

using TestDesktop::entryText;
using Texts = std::vector<std::string>;

class ListApplicationsTest : public testing::Test
{
protected:
    void TearDown() override
    {
        for (const auto *const folder : { "lists", "data/applications", "data/flatpak", "system" })
            std::filesystem::remove_all(TestDesktop::path(folder));
    }

    static std::filesystem::path folder(const std::string &name)
    {
        return TestDesktop::path("lists") / name;
    }

    static void add(const std::string &file, const std::string &name, const std::string &more = {})
    {
        TestFiles::write(folder(file),
                         "[Desktop Entry]\nType=Application\nExec=sh\nName=" + name + "\n" + more);
    }

    static std::vector<Application> list(const Texts &folders)
    {
        std::vector<std::filesystem::path> paths;
        std::transform(folders.begin(), folders.end(), std::back_inserter(paths), &folder);
        return InstalledApplications::list(paths, {});
    }

    static Texts namesOf(const std::vector<Application> &applications)
    {
        Texts names;
        for (const auto &application : applications)
            names.push_back(application.name);
        return names;
    }

    static Texts names(const Texts &folders = { "a" }) { return namesOf(list(folders)); }
};

TEST_F(ListApplicationsTest, ListsPathNameCommentAndKeywords)
{
    add("a/editor.desktop", "Text Editor",
        "Name[de]=Texteditor\nComment=Writes\nComment[de]=Schreibt\nKeywords=text;\n"
        "GenericName=Editor\n");
    const Application expected { .path = folder("a/editor.desktop"),
                                 .name = "Texteditor",
                                 .comment = "Schreibt",
                                 .keywords = "text Editor sh" };
    EXPECT_EQ(list({ "a" }), std::vector { expected });
}

TEST_F(ListApplicationsTest, SortsByNameInTheUsersLanguage)
{
    for (const auto *const name : { "zoo", "Öl", "apfel", "Zebra", "Obst", "Äpfel", "Birne" })
        add(std::string("a/") + name + ".desktop", name);
    EXPECT_EQ(names(), (Texts { "apfel", "Äpfel", "Birne", "Obst", "Öl", "Zebra", "zoo" }));
}

TEST_F(ListApplicationsTest, SortsEqualNamesByPathIgnoringCase)
{
    add("a/2.desktop", "tool");
    add("b/1.desktop", "tool");
    add("b/3.desktop", "TOOL");
    add("b/4.desktop", "tool");
    Texts paths;
    for (const auto &application : list({ "b", "a" }))
        paths.push_back(std::filesystem::relative(application.path, folder("")));
    EXPECT_EQ(paths, (Texts { "a/2.desktop", "b/1.desktop", "b/3.desktop", "b/4.desktop" }));
}

TEST_F(ListApplicationsTest, OmitsEntriesThatMenusDoNotShow)
{
    add("a/shown.desktop", "Shown", "OnlyShowIn=Quill;\n");
    add("a/1.desktop", "1", "NoDisplay=true\n");
    add("a/2.desktop", "2", "Hidden=true\n");
    add("a/3.desktop", "3", "OnlyShowIn=Other;\n");
    add("a/4.desktop", "4", "NotShowIn=Quill;\n");
    EXPECT_EQ(names(), Texts { "Shown" });
}

TEST_F(ListApplicationsTest, OmitsFilesThatAreNotApplicationEntries)
{
    add("a/good.desktop", "Good");
    add("a/no-entry.txt", "Text");
    add("a/.desktop/x", "Hidden folder");
    TestFiles::write(folder("a/empty.desktop"), "");
    TestFiles::write(folder("a/garbage.desktop"), "\x01\xff[");
    TestFiles::write(folder("a/link.desktop"), "[Desktop Entry]\nType=Link\nName=L\nURL=x:y\n");
    add("a/missing.desktop", "Missing", "TryExec=no-such-program\n");
    ASSERT_EQ(mkfifo(folder("a/pipe.desktop").c_str(), 0600), 0);
    EXPECT_EQ(names(), Texts { "Good" });
}

TEST_F(ListApplicationsTest, PrefersTheUsersEntryToTheSystems)
{
    add("own/editor.desktop", "Mine");
    add("system/editor.desktop", "Theirs");
    add("system/other.desktop", "Other");
    EXPECT_EQ(names({ "own", "system" }), (Texts { "Mine", "Other" }));
}

TEST_F(ListApplicationsTest, OmitsEntriesThatTheUserHides)
{
    TestFiles::write(folder("own/a.desktop"), "[Desktop Entry]\nHidden=true\n");
    add("own/b.desktop", "Hidden", "NoDisplay=true\n");
    std::filesystem::create_symlink("/dev/null", folder("own/c.desktop"));
    for (const auto *const file : { "a", "b", "c", "d" })
        add("system/" + std::string(file) + ".desktop", file);
    EXPECT_EQ(names({ "own", "system" }), Texts { "d" });
}

TEST_F(ListApplicationsTest, DerivesTheIdFromTheRelativePath)
{
    add("own/kde-old-editor.desktop", "Mine");
    add("system/kde/old/editor.desktop", "Theirs");
    add("system/kde/editor.desktop", "Other");
    EXPECT_EQ(names({ "own", "system" }), (Texts { "Mine", "Other" }));
}

TEST_F(ListApplicationsTest, TerminatesOnSymlinkCycles)
{
    add("a/b/editor.desktop", "Editor");
    std::filesystem::create_directory_symlink("..", folder("a/b/up"));
    std::filesystem::create_directory_symlink(".", folder("a/b/here"));
    std::filesystem::create_symlink("self.desktop", folder("a/self.desktop"));
    EXPECT_EQ(names(), Texts { "Editor" });
}

TEST_F(ListApplicationsTest, FollowsSymlinksToFoldersAndEntries)
{
    add("b/editor.desktop", "Editor");
    add("c/viewer.desktop", "Viewer");
    std::filesystem::create_directories(folder("a"));
    std::filesystem::create_directory_symlink(folder("b"), folder("a/b"));
    std::filesystem::create_symlink(folder("c/viewer.desktop"), folder("a/viewer.desktop"));
    EXPECT_EQ(names(), (Texts { "Editor", "Viewer" }));
}

TEST_F(ListApplicationsTest, IsEmptyWithoutFolders)
{
    EXPECT_EQ(names({ "missing", "also-missing" }), Texts());
    EXPECT_EQ(names({}), Texts());
}

TEST_F(ListApplicationsTest, UsesTheFileNameForAnEntryWithoutAName)
{
    add("a/org.example.Tool.desktop", "");
    EXPECT_EQ(names(), Texts { "org.example.Tool" });
}

TEST_F(ListApplicationsTest, OmitsPathsThatAreNotUtf8)
{
    add("a/g\xff.desktop", "Not UTF-8");
    add("a/\u00FC.desktop", "UTF-8");
    EXPECT_EQ(names(), Texts { "UTF-8" });
}

TEST_F(ListApplicationsTest, StopsEarlyOnRequest)
{
    add("a/a.desktop", "A");
    std::stop_source stop;
    stop.request_stop();
    EXPECT_TRUE(InstalledApplications::list({ folder("a") }, stop.get_token()).empty());
}

TEST_F(ListApplicationsTest, SearchesTheFoldersOfEntries)
{
    const std::vector<std::filesystem::path> expected {
        TestDesktop::path("data/applications"),
        TestDesktop::path("system/applications"),
        TestDesktop::path("data/flatpak/exports/share/applications"),
        "/var/lib/flatpak/exports/share/applications",
        "/var/lib/snapd/desktop/applications",
    };
    EXPECT_EQ(InstalledApplications::folders(), expected);
}

TEST_F(ListApplicationsTest, DeliversTheListAsynchronouslyOnTheMainThread)
{
    TestDesktop::addEntry("own.desktop", entryText("sh", "GenericName=Own\n"));
    TestFiles::write(TestDesktop::path("system/applications/system.desktop"),
                     entryText("sh", "GenericName=System\n"));
    TestFiles::write(
        TestDesktop::path("data/flatpak/exports/share/applications/org.example.Flat.desktop"),
        entryText("sh", "GenericName=Flatpak\n"));
    QtMainQueue mainQueue;
    GioWorkspace workspace(mainQueue);
    std::vector<Texts> received;
    const auto receive = [&received](const std::vector<Application> &applications) {
        EXPECT_EQ(QThread::currentThread(), QCoreApplication::instance()->thread());
        Texts &comments = received.emplace_back();
        for (const auto &application : applications)
            if (application.path.starts_with(TestDesktop::path("").string()))
                comments.push_back(application.comment);
        std::sort(comments.begin(), comments.end());
    };
    workspace.listApplications(receive);
    workspace.listApplications(receive);
    EXPECT_TRUE(received.empty());
    ASSERT_TRUE(TestDesktop::waitUntil([&received] { return received.size() == 2; }));
    EXPECT_EQ(received[0], (Texts { "Flatpak", "Own", "System" }));
    EXPECT_EQ(received[1], received[0]);
}

TEST_F(ListApplicationsTest, DeliversNothingAfterTheWorkspaceIsDestroyed)
{
    TestDesktop::addEntry("own.desktop", entryText("sh"));
    QtMainQueue mainQueue;
    bool isReceived = false;
    for (int count = 0; count < 20; ++count) {
        GioWorkspace workspace(mainQueue);
        workspace.listApplications([&isReceived](const auto &) { isReceived = true; });
    }
    QTest::qWait(20);
    EXPECT_FALSE(isReceived);
}

} // namespace
