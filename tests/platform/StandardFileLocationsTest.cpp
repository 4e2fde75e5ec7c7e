#include "platform/desktop/StandardFileLocations.h"

#include <gtest/gtest.h>

namespace
{

class StandardFileLocationsTest : public testing::Test
{
protected:
    void TearDown() override
    {
        restore("XDG_DATA_HOME", m_dataHome);
        restore("XDG_STATE_HOME", m_stateHome);
        restore("HOME", m_home);
    }

    static std::string folder()
    {
        return StandardFileLocations().applicationSupport().toStdString();
    }

    static std::string stateFolder()
    {
        return StandardFileLocations().applicationState().toStdString();
    }

private:
    static void restore(const char *name, const QByteArray &value)
    {
        if (value.isNull())
            qunsetenv(name);
        else
            qputenv(name, value);
    }

    QByteArray m_dataHome = qgetenv("XDG_DATA_HOME");
    QByteArray m_stateHome = qgetenv("XDG_STATE_HOME");
    QByteArray m_home = qgetenv("HOME");
};

TEST_F(StandardFileLocationsTest, UsesXdgDataHome)
{
    qputenv("XDG_DATA_HOME", "/somewhere/data");
    EXPECT_EQ(folder(), "/somewhere/data");
}

TEST_F(StandardFileLocationsTest, DefaultsToLocalShareInTheHomeFolder)
{
    qputenv("HOME", "/home/someone");
    qunsetenv("XDG_DATA_HOME");
    EXPECT_EQ(folder(), "/home/someone/.local/share");
    qputenv("XDG_DATA_HOME", "");
    EXPECT_EQ(folder(), "/home/someone/.local/share");
}

TEST_F(StandardFileLocationsTest, UsesXdgStateHome)
{
    qputenv("XDG_STATE_HOME", "/somewhere/state");
    EXPECT_EQ(stateFolder(), "/somewhere/state");
}

TEST_F(StandardFileLocationsTest, DefaultsToLocalStateInTheHomeFolder)
{
    qputenv("HOME", "/home/someone");
    qunsetenv("XDG_STATE_HOME");
    EXPECT_EQ(stateFolder(), "/home/someone/.local/state");
    for (const auto *const invalid : { "", "state", "./state", "~/state" }) {
        qputenv("XDG_STATE_HOME", invalid);
        EXPECT_EQ(stateFolder(), "/home/someone/.local/state") << invalid;
    }
}

} // namespace
