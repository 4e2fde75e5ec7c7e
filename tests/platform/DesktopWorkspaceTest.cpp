#include "platform/desktop/DesktopWorkspace.h"

#include "platform/TestDesktop.h"
#include "platform/desktop/QtMainQueue.h"
#include "support/WebAddress.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using TestDesktop::addEntry;
using TestDesktop::entryText;

class DesktopWorkspaceTest : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        for (const auto *const program : { "program", "xdg-open" })
            TestDesktop::addProgram(program);
    }

    QtMainQueue mainQueue;
    DesktopWorkspace workspace { mainQueue };
};

TEST_F(DesktopWorkspaceTest, UsesTheModule)
{
    const auto entry = addEntry("a.desktop", entryText("program", "Name[de]=Programm\n"));
    const auto names = workspace.applicationNames(entry);
    ASSERT_TRUE(names);
    EXPECT_EQ(names->displayName, "Programm");
    EXPECT_TRUE(workspace.applicationIcon(entry, 16, 1).isNull());
    std::vector<Application> received;
    workspace.listApplications([&received](const auto &applications) { received = applications; });
    EXPECT_TRUE(TestDesktop::waitUntil([&received] { return !received.empty(); }));
}

TEST_F(DesktopWorkspaceTest, StartsThroughTheModule)
{
    workspace.openApplication(addEntry("a.desktop", entryText("program")));
    EXPECT_TRUE(TestDesktop::waitForStart("program"));
    workspace.open(*WebAddress::parse("https://example.com"));
    EXPECT_TRUE(TestDesktop::waitForStart("xdg-open"));
}

} // namespace
