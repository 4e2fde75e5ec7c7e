#include "platform/desktop/StartupEnvironment.h"

#include <QByteArray>
#include <gtest/gtest.h>

namespace
{

class StartupEnvironmentTest : public testing::Test
{
protected:
    void TearDown() override { StartupEnvironment::clear(); }
};

TEST_F(StartupEnvironmentTest, HasNoTokenByDefault)
{
    StartupEnvironment::clear();
    EXPECT_EQ(StartupEnvironment::token(), StartupToken());
}

TEST_F(StartupEnvironmentTest, ReadsTheTokens)
{
    qputenv("XDG_ACTIVATION_TOKEN", "token");
    qputenv("DESKTOP_STARTUP_ID", "id_TIME1");
    EXPECT_EQ(StartupEnvironment::token(), (StartupToken { "token", "id_TIME1" }));
}

TEST_F(StartupEnvironmentTest, ClearsTheTokens)
{
    qputenv("XDG_ACTIVATION_TOKEN", "token");
    qputenv("DESKTOP_STARTUP_ID", "id_TIME1");
    StartupEnvironment::clear();
    EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
    EXPECT_FALSE(qEnvironmentVariableIsSet("DESKTOP_STARTUP_ID"));
}

TEST_F(StartupEnvironmentTest, RemovesARelativeDataHome)
{
    const auto before = qgetenv("XDG_DATA_HOME");
    for (const auto *const folder : { "data", "./data", "../data", "~/data", "" }) {
        qputenv("XDG_DATA_HOME", folder);
        StartupEnvironment::removeRelativeDataHome();
        EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_DATA_HOME")) << folder;
    }
    qputenv("XDG_DATA_HOME", "/data/../other");
    StartupEnvironment::removeRelativeDataHome();
    EXPECT_EQ(qgetenv("XDG_DATA_HOME"), "/data/../other");
    qputenv("XDG_DATA_HOME", before);
}

} // namespace
