#pragma once

#include "platform/speech/ListenerRecognizer.h"
#include "platform/speech/Recognition.h"

#include <QTemporaryDir>
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
#include <thread>
#include <vector>

/// Recognisers whose listener is the one made for tests.
class ListenerFixture : public testing::Test
{
protected:
    using Clock = std::chrono::steady_clock;

    /// Soon enough for a test, late enough for a busy machine.
    static constexpr std::chrono::milliseconds AnswerLimit { 1'000 };

    void TearDown() override
    {
        EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "a listener is left behind";
        EXPECT_EQ(errno, ECHILD);
    }

    std::vector<std::string> command(const std::string &behaviour = {}) const
    {
        return { TEST_LISTENER, behaviour };
    }

    /// Only the first process misbehaves.
    std::vector<std::string> commandOnce(const std::string &behaviour) const
    {
        return { TEST_LISTENER, behaviour, file.string() };
    }

    static ListenerLimits limits(ListenerLimits limits = {})
    {
        limits.answer = AnswerLimit;
        return limits;
    }

    /// The numbers of all processes that we have started and that are still there.
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
        const auto end = Clock::now() + std::chrono::seconds(30);
        while (!isMet() && Clock::now() < end)
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        return isMet();
    }

    QTemporaryDir folder;
    std::filesystem::path file = folder.filePath(QStringLiteral("first")).toStdString();
};
