#include "platform/desktop/QtFailures.h"

#include <QLoggingCategory>
#include <QString>
#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <string>
#include <vector>

namespace
{

std::vector<std::string> printed;

class QtFailuresTest : public testing::Test
{
protected:
    QtFailuresTest()
    {
        printed.clear();
        m_previous = qInstallMessageHandler(
            [](QtMsgType /*type*/, const QMessageLogContext & /*context*/, const QString &message) {
                printed.push_back(message.toStdString());
            });
    }

    ~QtFailuresTest() override { qInstallMessageHandler(m_previous); }

private:
    QtMessageHandler m_previous = nullptr;
};

TEST_F(QtFailuresTest, PrintsWhatQtReports)
{
    const QtFailures failures;
    qWarning("Something is wrong.");
    EXPECT_EQ(printed, std::vector<std::string> { "Something is wrong." });
}

TEST_F(QtFailuresTest, PrintsNothingFromPlatformPluginsThatFail)
{
    const QtFailures failures;
    const QLoggingCategory plugins("qt.qpa.plugin");
    qCWarning(plugins, "Could not load the Qt platform plugin \"wayland\".");
    qErrnoWarning(ENOENT, "Failed to create wl_display");
    EXPECT_TRUE(printed.empty());
}

TEST_F(QtFailuresTest, ExitsWithOneLineWithoutADisplay)
{
    const auto fail = [] {
        const QtFailures failures;
        qFatal("no Qt platform plugin could be initialized");
    };
    EXPECT_EXIT(fail(), testing::ExitedWithCode(EXIT_FAILURE),
                "^Quillsatchel ends: there is no display\\. DISPLAY is [^\n]*\n$");
}

TEST_F(QtFailuresTest, ExitsWithOneLineIfAThreadIsRefused)
{
    const auto fail = [] {
        const QtFailures failures;
        qWarning("QThread::start: Thread creation error (Resource temporarily unavailable)");
    };
    EXPECT_EXIT(fail(), testing::ExitedWithCode(EXIT_FAILURE),
                "^Quillsatchel ends: the system allows it no more threads\\.\n$");
}

TEST_F(QtFailuresTest, RestoresTheMessageHandler)
{
    {
        const QtFailures failures;
    }
    const QLoggingCategory plugins("qt.qpa.plugin");
    qCWarning(plugins, "heard");
    EXPECT_EQ(printed, std::vector<std::string> { "heard" });
}

} // namespace
