#include "platform/desktop/LaunchArguments.h"

#include <QByteArray>
#include <QtGlobal>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using Words = std::vector<std::string>;

class LaunchArgumentsTest : public testing::Test
{
protected:
    void SetUp() override { qunsetenv("QT_QPA_PLATFORM"); }

    void TearDown() override { qputenv("QT_QPA_PLATFORM", QByteArrayLiteral("offscreen")); }

    /// The arguments that the application gets for these.
    static Words seenFor(Words words)
    {
        std::vector<char *> values;
        for (auto &word : words)
            values.push_back(word.data());
        LaunchArguments arguments(static_cast<int>(values.size()), values.data());
        EXPECT_EQ(arguments.values()[arguments.count()], nullptr);
        Words seen;
        for (int index = 0; index < arguments.count(); ++index)
            seen.emplace_back(arguments.values()[index]);
        return seen;
    }
};

TEST_F(LaunchArgumentsTest, AsksForX11WhereItIsThereAndForWaylandElsewhere)
{
    EXPECT_EQ(seenFor({ "program" }), Words({ "program", "-platform", "xcb;wayland" }));
}

TEST_F(LaunchArgumentsTest, LetsTheUsersOwnChoiceComeLaterAndSoCount)
{
    EXPECT_EQ(seenFor({ "program", "-platform", "wayland" }),
              Words({ "program", "-platform", "xcb;wayland", "-platform", "wayland" }));
}

TEST_F(LaunchArgumentsTest, LeavesTheChoiceToTheEnvironmentIfItHasOne)
{
    qputenv("QT_QPA_PLATFORM", QByteArrayLiteral("wayland"));
    EXPECT_EQ(seenFor({ "program", "word" }), Words({ "program", "word" }));
}

TEST_F(LaunchArgumentsTest, PutsNothingIntoTheEnvironmentThatOtherProgramsInherit)
{
    seenFor({ "program" });
    EXPECT_TRUE(qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"));
}

TEST_F(LaunchArgumentsTest, DoesWithoutAnyArgument)
{
    EXPECT_EQ(seenFor({}), Words());
}

} // namespace
