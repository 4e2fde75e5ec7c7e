#include "platform/PrivateBus.h"
#include "platform/TestDesktop.h"
#include "platform/VirtualDisplay.h"
#include "platform/desktop/QtMainQueue.h"
#include "platform/gio/GioWorkspace.h"

#include <gtest/gtest.h>

#include <set>

namespace
{

using TestDesktop::addEntry;
using TestDesktop::entryText;
using Texts = std::vector<std::string>;

class StartupNotificationTest : public testing::Test
{
protected:
    static void SetUpTestSuite() { TestDesktop::addProgram("program"); }

    std::optional<TestDesktop::Start> open(const std::string &more)
    {
        workspace.openApplication(addEntry("tool.desktop", entryText("program", more)));
        return TestDesktop::waitForStart("program");
    }

    static std::string idOf(const TestDesktop::Start &start)
    {
        const auto id = start.environment.find("DESKTOP_STARTUP_ID");
        return id == start.environment.end() ? "" : id->second;
    }

    Texts waitForMessages(std::size_t count)
    {
        TestDesktop::waitUntil([&] { return display.startupMessages().size() >= count; });
        return display.startupMessages();
    }

    VirtualDisplay display;
    QtMainQueue mainQueue;
    GioWorkspace workspace { mainQueue };
};

TEST_F(StartupNotificationTest, DescribesTheProgram)
{
    const auto start = open("StartupNotify=true\nName[de]=Mein \"Werkzeug\"\nIcon=tool\n"
                            "StartupWMClass=Tool\n");
    ASSERT_TRUE(start);
    const auto messages = waitForMessages(1);
    ASSERT_EQ(messages.size(), 1U);
    const auto has = [&](const std::string &part) {
        return messages[0].find(part) != std::string::npos;
    };
    EXPECT_TRUE(messages[0].starts_with("new:")) << messages[0];
    EXPECT_FALSE(idOf(*start).empty());
    EXPECT_TRUE(has(" ID=" + idOf(*start) + " ") || has(" ID=\"" + idOf(*start) + "\""))
        << messages[0];
    EXPECT_TRUE(has("Mein")) << messages[0];
    EXPECT_TRUE(has("ICON=tool")) << messages[0];
    EXPECT_TRUE(has("BIN=program")) << messages[0];
    EXPECT_TRUE(has("WMCLASS=Tool")) << messages[0];
    EXPECT_TRUE(has("SCREEN=0")) << messages[0];
}

TEST_F(StartupNotificationTest, HasTheTimeInTheId)
{
    const auto start = open("StartupNotify=true\n");
    ASSERT_TRUE(start);
    const auto id = idOf(*start);
    const auto time = id.find("_TIME");
    ASSERT_NE(time, std::string::npos) << id;
    EXPECT_GT(std::stoul(id.substr(time + 5)), 0U) << id;
}

TEST_F(StartupNotificationTest, LeavesCompletionToTheProgram)
{
    ASSERT_TRUE(open("StartupNotify=true\n"));
    ASSERT_TRUE(open("StartupNotify=true\n"));
    const auto messages = waitForMessages(2);
    ASSERT_EQ(messages.size(), 2U) << messages.front();
    EXPECT_TRUE(messages[1].starts_with("new:"));
}

TEST_F(StartupNotificationTest, SkipsProgramsWithoutStartupNotify)
{
    for (const auto *const line : { "", "StartupNotify=false\n" }) {
        const auto start = open(line);
        ASSERT_TRUE(start);
        EXPECT_EQ(idOf(*start), "");
    }
    EXPECT_EQ(display.startupMessages(), Texts());
}

TEST_F(StartupNotificationTest, CompletesAFailedLaunch)
{
    workspace.openApplication(addEntry(
        "tool.desktop", entryText("program", "StartupNotify=true\nPath=" +
                                                 TestDesktop::path("nothing").string() + "\n")));
    const auto messages = waitForMessages(2);
    ASSERT_EQ(messages.size(), 2U) << messages.front();
    EXPECT_TRUE(messages[0].starts_with("new:")) << messages[0];
    ASSERT_TRUE(messages[1].starts_with("remove:")) << messages[1];
    const auto id = messages[1].substr(messages[1].find("ID="));
    EXPECT_NE(messages[0].find(id), std::string::npos) << messages[0] << messages[1];
}

TEST_F(StartupNotificationTest, GivesEachLaunchAUniqueId)
{
    Texts programs;
    for (int number = 0; number < 20; ++number) {
        programs.push_back("many" + std::to_string(number));
        TestDesktop::addProgram(programs.back());
    }
    for (const auto &program : programs)
        workspace.openApplication(
            addEntry(program + ".desktop", entryText(program, "StartupNotify=true\n")));
    std::set<std::string> ids;
    for (const auto &program : programs) {
        const auto start = TestDesktop::waitForStart(program);
        ASSERT_TRUE(start);
        ids.insert(idOf(*start));
    }
    EXPECT_EQ(ids.size(), 20U);
    EXPECT_EQ(ids.count(""), 0U);
}

TEST_F(StartupNotificationTest, OmitsWhatTheEntryLacks)
{
    ASSERT_TRUE(open("StartupNotify=true\n"));
    const auto messages = waitForMessages(1);
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_EQ(messages[0].find("ICON"), std::string::npos) << messages[0];
    EXPECT_EQ(messages[0].find("WMCLASS"), std::string::npos) << messages[0];
}

TEST_F(StartupNotificationTest, IsSkippedWithoutADisplay)
{
    const auto name = qgetenv("DISPLAY");
    qputenv("DISPLAY", ":54321");
    const auto start = open("StartupNotify=true\n");
    qputenv("DISPLAY", name);
    ASSERT_TRUE(start);
    EXPECT_EQ(idOf(*start), "");
}

TEST_F(StartupNotificationTest, PassesTheIdWithTheActivation)
{
    const PrivateBus bus;
    const BusApplication application("org.example.Tool");
    workspace.openApplication(
        addEntry("org.example.Tool.desktop",
                 entryText("program", "DBusActivatable=true\nStartupNotify=true\n")));
    ASSERT_TRUE(TestDesktop::waitUntil([&] { return !application.calls().empty(); }));
    const auto call = application.calls().front();
    const auto value = call.find("'desktop-startup-id': <'");
    ASSERT_NE(value, std::string::npos) << call;
    const auto begin = value + std::string("'desktop-startup-id': <'").size();
    const auto id = call.substr(begin, call.find('\'', begin) - begin);
    const auto messages = waitForMessages(1);
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_NE(messages[0].find(id), std::string::npos) << messages[0] << id;
}

TEST_F(StartupNotificationTest, NotifiesForAnEntryWithoutACommand)
{
    const PrivateBus bus;
    const BusApplication application("org.example.Tool");
    workspace.openApplication(addEntry("org.example.Tool.desktop",
                                       "[Desktop Entry]\nType=Application\n"
                                       "DBusActivatable=true\nStartupNotify=true\n"));
    ASSERT_TRUE(TestDesktop::waitUntil([&] { return !application.calls().empty(); }));
    EXPECT_EQ(waitForMessages(1).size(), 1U);
}

TEST_F(StartupNotificationTest, CompletesAFailedActivation)
{
    const PrivateBus bus;
    workspace.openApplication(
        addEntry("org.example.Missing.desktop",
                 entryText("program", "DBusActivatable=true\nStartupNotify=true\n")));
    const auto messages = waitForMessages(2);
    ASSERT_EQ(messages.size(), 2U) << messages.front();
    EXPECT_TRUE(messages[1].starts_with("remove:")) << messages[1];
}

} // namespace
