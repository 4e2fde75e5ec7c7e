#include "platform/desktop/TerminationSignals.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>

namespace
{

using namespace std::chrono_literals;

constexpr int TimedOut = 99;

void (*handlerOf(int signal))(int)
{
    struct sigaction action {
    };

    sigaction(signal, nullptr, &action);
    return action.sa_handler;
}

/// Runs the application and returns its exit code.
int run()
{
    QTimer timeout;
    timeout.callOnTimeout([] { QCoreApplication::exit(TimedOut); });
    timeout.start(10s);
    return QCoreApplication::exec();
}

class TerminationSignalsTest : public testing::TestWithParam<int>
{
};

TEST_P(TerminationSignalsTest, EndTheApplication)
{
    const TerminationSignals signals;
    QTimer::singleShot(0, [] { raise(GetParam()); });
    EXPECT_EQ(run(), 0);
}

TEST_P(TerminationSignalsTest, EndAnApplicationThatRunsLater)
{
    const TerminationSignals signals;
    raise(GetParam());
    raise(GetParam());
    EXPECT_EQ(run(), 0);
}

TEST_P(TerminationSignalsTest, EndANestedEventLoop)
{
    const TerminationSignals signals;
    QTimer::singleShot(0, [] {
        raise(GetParam());
        QEventLoop().exec();
    });
    EXPECT_EQ(run(), 0);
}

TEST_P(TerminationSignalsTest, RegainTheirDefaultAction)
{
    {
        const TerminationSignals signals;
        EXPECT_NE(handlerOf(GetParam()), SIG_DFL);
    }
    EXPECT_EQ(handlerOf(GetParam()), SIG_DFL);
}

TEST_P(TerminationSignalsTest, StayIgnored)
{
    const auto previous = std::signal(GetParam(), SIG_IGN);
    {
        const TerminationSignals signals;
        EXPECT_EQ(handlerOf(GetParam()), SIG_IGN);
    }
    EXPECT_EQ(handlerOf(GetParam()), SIG_IGN);
    std::signal(GetParam(), previous);
}

INSTANTIATE_TEST_SUITE_P(Signals, TerminationSignalsTest, testing::Values(SIGTERM, SIGINT));

} // namespace
