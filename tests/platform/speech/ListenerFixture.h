#pragma once

#include "platform/desktop/QtMainQueue.h"
#include "platform/speech/ListenerRecognizer.h"
#include "platform/speech/Recognition.h"

#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <sys/types.h>
#include <sys/wait.h>
#include <vector>

/// For recognisers that start TestListener.
class ListenerFixture : public testing::Test
{
protected:
    using Clock = std::chrono::steady_clock;

    /// Short for a test, long enough on a busy machine.
    static constexpr std::chrono::milliseconds AnswerLimit { 1'000 };

    void TearDown() override
    {
        EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "a listener is still running";
        EXPECT_EQ(errno, ECHILD);
    }

    std::vector<std::string> command(const std::string &behaviour = {}) const
    {
        return { TEST_LISTENER, behaviour };
    }

    /// A listener that misbehaves only when first started.
    std::vector<std::string> commandOnce(const std::string &behaviour) const
    {
        return { TEST_LISTENER, behaviour, file.string() };
    }

    static ListenerLimits limits(ListenerLimits limits = {})
    {
        limits.answer = AnswerLimit;
        return limits;
    }

    /// The process IDs of all children, zombies included.
    static std::vector<pid_t> children()
    {
        std::vector<pid_t> children;
        for (const auto &thread : std::filesystem::directory_iterator("/proc/self/task")) {
            std::ifstream list(thread.path() / "children");
            children.insert(children.end(), std::istream_iterator<pid_t>(list), {});
        }
        return children;
    }

    static std::size_t threadCount()
    {
        const std::filesystem::directory_iterator threads("/proc/self/task");
        return static_cast<std::size_t>(std::distance(begin(threads), end(threads)));
    }

    template <typename Condition>
    static bool waitUntil(Condition isMet)
    {
        return QTest::qWaitFor(isMet, 30'000);
    }

    QtMainQueue mainQueue;
    QTemporaryDir folder;
    std::filesystem::path file = folder.filePath(QStringLiteral("first")).toStdString();
};
