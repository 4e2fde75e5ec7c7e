#include "fakes/TestFiles.h"
#include "platform/PrivateBus.h"
#include "platform/TestDesktop.h"
#include "platform/desktop/QtMainQueue.h"
#include "platform/gio/GioWorkspace.h"
#include "support/WebAddress.h"

#include <QElapsedTimer>
#include <gtest/gtest.h>

#include <optional>
#include <unistd.h>

namespace
{

using TestDesktop::addEntry;
using TestDesktop::entryText;
using Texts = std::vector<std::string>;

class BusActivationTest : public testing::Test
{
protected:
    static constexpr auto Name = "org.example.My-App";

    static void SetUpTestSuite()
    {
        TestDesktop::addProgram("program");
        addEntry("org.example.Browser.desktop", "[Desktop Entry]\nType=Application\nName=Name\n"
                                                "DBusActivatable=true\n");
        TestFiles::write(TestDesktop::path("config/mimeapps.list"),
                         "[Default Applications]\n"
                         "x-scheme-handler/https=org.example.Browser.desktop\n");
    }

    static std::string addActivatable(const std::string &id, const std::string &more = {})
    {
        return addEntry(id, entryText("program", "DBusActivatable=true\n" + more));
    }

    PrivateBus bus;
    QtMainQueue mainQueue;
    GioWorkspace workspace { mainQueue };
};

TEST_F(BusActivationTest, ActivatesOverTheBusInsteadOfSpawning)
{
    const BusApplication application(Name);
    workspace.openApplication(addActivatable("org.example.My-App.desktop"));
    ASSERT_TRUE(TestDesktop::waitUntil([&] { return !application.calls().empty(); }));
    EXPECT_EQ(application.calls(),
              Texts { "/org/example/My_App org.freedesktop.Application.Activate({},)" });
    EXPECT_EQ(TestDesktop::startedPrograms(), Texts());
}

TEST_F(BusActivationTest, ActivatesOnEveryLaunch)
{
    const BusApplication application(Name);
    const auto entry = addActivatable("org.example.My-App.desktop");
    for (int count = 0; count < 20; ++count)
        workspace.openApplication(entry);
    EXPECT_TRUE(TestDesktop::waitUntil([&] { return application.calls().size() == 20; }));
}

TEST_F(BusActivationTest, PassesTheAddressUnchangedOverTheBus)
{
    const BusApplication browser("org.example.Browser");
    workspace.open(*WebAddress::parse("HTTPS://Example.COM/%7e?a=$(x)"));
    ASSERT_TRUE(TestDesktop::waitUntil([&] { return !browser.calls().empty(); }));
    EXPECT_EQ(browser.calls(), Texts { "/org/example/Browser org.freedesktop.Application.Open"
                                       "(['HTTPS://Example.COM/%7e?a=$(x)'], {})" });
}

TEST_F(BusActivationTest, SpawnsAProgramThatIsNotActivatable)
{
    const BusApplication application(Name);
    workspace.openApplication(addEntry("org.example.My-App.desktop", entryText("program")));
    EXPECT_TRUE(TestDesktop::waitForStart("program"));
    EXPECT_EQ(application.calls(), Texts());
}

TEST_F(BusActivationTest, SpawnsAProgramWhoseIdIsNoBusName)
{
    workspace.openApplication(addActivatable("plain.desktop"));
    const auto start = TestDesktop::waitForStart("program");
    ASSERT_TRUE(start);
    EXPECT_NE(start->session, getsid(0));
}

TEST_F(BusActivationTest, IsSilentAboutFailedActivations)
{
    workspace.openApplication(addActivatable("org.example.Missing.desktop"));
    workspace.openApplication(
        addActivatable("org.example.Missing2.desktop", "StartupNotify=true\n"));
    const BusApplication application(Name);
    workspace.openApplication(addActivatable("org.example.My-App.desktop"));
    EXPECT_TRUE(TestDesktop::waitUntil([&] { return !application.calls().empty(); }));
}

TEST_F(BusActivationTest, LaunchesOthersWhileAnActivationIsPending)
{
    const BusApplication silent(Name, BusApplication::Answers::never);
    workspace.openApplication(addActivatable("org.example.My-App.desktop"));
    ASSERT_TRUE(TestDesktop::waitUntil([&] { return !silent.calls().empty(); }));
    workspace.openApplication(addEntry("plain.desktop", entryText("program")));
    EXPECT_TRUE(TestDesktop::waitForStart("program"));
}

TEST_F(BusActivationTest, LimitsTheWaitOnDestruction)
{
    const BusApplication silent(Name, BusApplication::Answers::never);
    QElapsedTimer timer;
    {
        GioWorkspace ending(mainQueue);
        ending.openApplication(addActivatable("org.example.My-App.desktop"));
        timer.start();
    }
    EXPECT_EQ(silent.calls().size(), 1U);
    EXPECT_LT(timer.elapsed(), 15'000) << "the bus would time out after 25 seconds";
}

TEST_F(BusActivationTest, SurvivesTheEndOfTheBus)
{
    std::optional<PrivateBus> ending(std::in_place);
    const BusApplication silent(Name, BusApplication::Answers::never);
    workspace.openApplication(addActivatable("org.example.My-App.desktop"));
    ASSERT_TRUE(TestDesktop::waitUntil([&] { return !silent.calls().empty(); }));
    ending.reset();
    workspace.openApplication(addEntry("plain.desktop", entryText("program")));
    EXPECT_TRUE(TestDesktop::waitForStart("program"));
}

} // namespace
