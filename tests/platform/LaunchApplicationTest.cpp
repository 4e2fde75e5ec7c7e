#include "fakes/TestFiles.h"
#include "fakes/ThreadlessScope.h"
#include "platform/TestDesktop.h"
#include "platform/desktop/QtMainQueue.h"
#include "platform/gio/GioWorkspace.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

using namespace std::string_literals;
using TestDesktop::addEntry;
using TestDesktop::entryText;
using Texts = std::vector<std::string>;

class LaunchApplicationTest : public testing::Test
{
protected:
    LaunchApplicationTest()
    {
        TestDesktop::addProgram("program");
        TestDesktop::addProgram("last");
    }

    std::optional<TestDesktop::Start> open(const std::string &command, const std::string &more = {})
    {
        workspace.openApplication(addEntry("a.desktop", entryText(command, more)));
        return TestDesktop::waitForStart("program");
    }

    /// Launches "last", waits for all launches, and returns the programs that were started,
    /// including "last".
    Texts startedPrograms()
    {
        workspace.openApplication(addEntry("last.desktop", entryText("last")));
        TestDesktop::waitUntil([] { return has(TestDesktop::startedPrograms(), "last"); });
        auto programs = TestDesktop::startedPrograms();
        for (const auto &program : programs)
            TestDesktop::waitForStart(program);
        return programs;
    }

    static bool has(const Texts &texts, const std::string &text)
    {
        return std::find(texts.begin(), texts.end(), text) != texts.end();
    }

    QtMainQueue mainQueue;
    GioWorkspace workspace { mainQueue };
};

TEST_F(LaunchApplicationTest, StartsTheProgramWithItsArguments)
{
    const auto start = open(R"(program one "two words" "a\\$b\\`c\\"d" --x=%%)");
    ASSERT_TRUE(start);
    EXPECT_EQ(start->arguments, (Texts { "one", "two words", "a$b`c\"d", "--x=%" }));
}

TEST_F(LaunchApplicationTest, ExpandsFieldCodes)
{
    const auto entry = TestDesktop::path("data/applications/a.desktop").string();
    EXPECT_EQ(open("program %f %F %u %U")->arguments, Texts());
    EXPECT_EQ(open("program %c", "Name[de]=Mein Name\n")->arguments, Texts { "Mein Name" });
    EXPECT_EQ(open("program %k")->arguments, Texts { entry });
    EXPECT_EQ(open("program %i", "Icon=my icon\n")->arguments, (Texts { "--icon", "my icon" }));
    EXPECT_EQ(open("program %i -x")->arguments, Texts { "-x" });
}

TEST_F(LaunchApplicationTest, StartsAProgramByItsPath)
{
    EXPECT_TRUE(open(TestDesktop::path("bin/program").string()));
}

TEST_F(LaunchApplicationTest, StartsTheProgramInTheFolderOfTheEntry)
{
    EXPECT_EQ(open("program")->folder, std::filesystem::current_path());
    const auto folder = std::filesystem::canonical(TestDesktop::path("home"));
    EXPECT_EQ(open("program", "Path=" + folder.string() + "\n")->folder, folder);
}

TEST_F(LaunchApplicationTest, StartsTerminalProgramsInATerminal)
{
    // GIO runs one of these, in an order of preference of its own.
    for (const auto *const terminal : { "gnome-terminal", "kgx", "xdg-terminal-exec" })
        TestDesktop::addProgram(terminal);
    workspace.openApplication(addEntry("a.desktop", entryText("program one", "Terminal=true\n")));
    TestDesktop::waitUntil([] { return !TestDesktop::startedPrograms().empty(); });
    const auto programs = startedPrograms();
    EXPECT_EQ(programs.size(), 2U) << "a terminal and \"last\"";
    EXPECT_FALSE(has(programs, "program"));
    for (const auto *const terminal : { "gnome-terminal", "kgx", "xdg-terminal-exec" })
        std::filesystem::remove(TestDesktop::path("bin") / terminal);
}

TEST_F(LaunchApplicationTest, PassesTheEnvironmentWithoutOurTokens)
{
    qputenv("USERS_OWN", "kept");
    qputenv("DESKTOP_STARTUP_ID", "ours");
    qputenv("XDG_ACTIVATION_TOKEN", "ours");
    const auto start = open("program", "StartupNotify=true\n");
    ASSERT_TRUE(start);
    EXPECT_EQ(start->environment.at("USERS_OWN"), "kept");
    EXPECT_EQ(start->environment.count("DESKTOP_STARTUP_ID"), 0U);
    EXPECT_EQ(start->environment.count("XDG_ACTIVATION_TOKEN"), 0U);
    EXPECT_EQ(start->environment.count("QT_QPA_PLATFORM"), 1U) << "set for the whole test run";
    qunsetenv("USERS_OWN");
    qunsetenv("DESKTOP_STARTUP_ID");
    qunsetenv("XDG_ACTIVATION_TOKEN");
}

TEST_F(LaunchApplicationTest, DoesNotPassOurOpenFiles)
{
    const auto ours = TestDesktop::path("ours").string();
    TestFiles::write(ours, "");
    const int file = ::open(ours.c_str(), O_RDONLY); // without O_CLOEXEC
    const auto start = open("program");
    ::close(file);
    ASSERT_TRUE(start);
    ASSERT_FALSE(start->files.empty());
    EXPECT_EQ(start->files.front(), "/dev/null");
    EXPECT_FALSE(has(start->files, ours));
}

TEST_F(LaunchApplicationTest, DetachesTheProgram)
{
    const auto start = open("program");
    ASSERT_TRUE(start);
    EXPECT_NE(start->parent, getpid());
    EXPECT_NE(start->session, getsid(0));
}

TEST_F(LaunchApplicationTest, LeavesNoZombies)
{
    for (int count = 0; count < 5; ++count)
        ASSERT_TRUE(open("program"));
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

TEST_F(LaunchApplicationTest, StartsManyProgramsConcurrently)
{
    // Write all programs before the first launch: a file that is open for writing cannot be
    // executed, and a child that is forked meanwhile briefly inherits the open descriptor.
    Texts programs;
    for (int number = 0; number < 30; ++number) {
        programs.push_back("many" + std::to_string(number));
        TestDesktop::addProgram(programs.back());
    }
    for (const auto &program : programs)
        workspace.openApplication(addEntry(program + ".desktop", entryText(program)));
    for (const auto &program : programs)
        EXPECT_TRUE(TestDesktop::waitForStart(program)) << program;
}

TEST_F(LaunchApplicationTest, FinishesLaunchesOnDestruction)
{
    {
        GioWorkspace ending(mainQueue);
        ending.openApplication(addEntry("a.desktop", entryText("program")));
    }
    EXPECT_TRUE(TestDesktop::waitForStart("program"));
}

TEST_F(LaunchApplicationTest, StartsNothingIfNoThreadCanBeCreated)
{
    const auto entry = addEntry("a.desktop", entryText("program"));
    const QTemporaryDir folder;
    {
        const ThreadlessScope scope(folder.path().toStdString());
        workspace.openApplication(entry);
    }
    EXPECT_EQ(startedPrograms(), Texts { "last" });
}

TEST_F(LaunchApplicationTest, StartsNothingFromABrokenEntry)
{
    int number = 0;
    const auto plain = TestDesktop::path("not-executable").string();
    TestFiles::write(plain, "#!/bin/sh\n");
    for (const auto &text :
         { ""s, "program"s, "\0\xff\x1b"s, "[Desktop Entry]\nExec=program\n"s, entryText(""),
           entryText("no-such-program"), entryText(plain), entryText(TestDesktop::path("home")),
           entryText("program 'unclosed"),
           entryText("program", "Path=" + TestDesktop::path("nothing").string() + "\n"),
           "[Desktop Entry]\nType=Application\nName=Name\n"s,
           "[Desktop Entry]\nType=Link\nName=Name\nURL=https://example.com\nExec=program\n"s }) {
        const auto id = "broken" + std::to_string(number++) + ".desktop";
        workspace.openApplication(addEntry(id, text));
    }
    EXPECT_EQ(startedPrograms(), Texts { "last" });
}

TEST_F(LaunchApplicationTest, AcceptsOnlyAbsolutePathsOfRegularFiles)
{
    const std::string entry = addEntry("a.desktop", entryText("program"));
    const std::string pipe = TestDesktop::path("pipe.desktop");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    for (const auto &path :
         { ""s, "a.desktop"s, "program"s, entry + '\0', pipe, "/"s, "/dev/zero"s,
           TestDesktop::path("home").string(), TestDesktop::path("nothing.desktop").string() })
        workspace.openApplication(path);
    EXPECT_EQ(startedPrograms(), Texts { "last" });
}

TEST_F(LaunchApplicationTest, SpawnsAnActivatableProgramWithoutABus)
{
    workspace.openApplication(
        addEntry("org.example.Program.desktop", entryText("program", "DBusActivatable=true\n")));
    EXPECT_TRUE(TestDesktop::waitForStart("program"));
}

} // namespace
