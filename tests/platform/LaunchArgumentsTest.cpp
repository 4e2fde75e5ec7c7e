#include "platform/desktop/LaunchArguments.h"

#include <QByteArray>
#include <QtGlobal>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using Arguments = std::vector<std::string>;

class LaunchArgumentsTest : public testing::Test
{
protected:
    void SetUp() override { qunsetenv("QT_QPA_PLATFORM"); }

    void TearDown() override { qputenv("QT_QPA_PLATFORM", QByteArrayLiteral("offscreen")); }

    /// The arguments that the application gets for these.
    static Arguments argumentsFor(Arguments texts)
    {
        std::vector<char *> values;
        for (auto &text : texts)
            values.push_back(text.data());
        LaunchArguments arguments(static_cast<int>(values.size()), values.data());
        EXPECT_EQ(arguments.values()[arguments.count()], nullptr);
        Arguments result;
        for (int index = 0; index < arguments.count(); ++index)
            result.emplace_back(arguments.values()[index]);
        return result;
    }
};

TEST_F(LaunchArgumentsTest, PrefersX11ToWayland)
{
    EXPECT_EQ(argumentsFor({ "program" }), Arguments({ "program", "-platform", "xcb;wayland" }));
}

TEST_F(LaunchArgumentsTest, PutsTheUsersArgumentLast)
{
    EXPECT_EQ(argumentsFor({ "program", "-platform", "wayland" }),
              Arguments({ "program", "-platform", "xcb;wayland", "-platform", "wayland" }));
}

TEST_F(LaunchArgumentsTest, AddsNothingIfTheEnvironmentChooses)
{
    qputenv("QT_QPA_PLATFORM", QByteArrayLiteral("wayland"));
    EXPECT_EQ(argumentsFor({ "program", "word" }), Arguments({ "program", "word" }));
}

TEST_F(LaunchArgumentsTest, LeavesTheEnvironmentUnchanged)
{
    argumentsFor({ "program" });
    EXPECT_TRUE(qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"));
}

TEST_F(LaunchArgumentsTest, AcceptsAnEmptyArgumentList)
{
    EXPECT_EQ(argumentsFor({}), Arguments());
}

} // namespace
