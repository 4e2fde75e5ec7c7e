// The listener does not outlive its program.

#include "platform/speech/ModelInquiry.h"

#include <QProcess>
#include <QTest>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <sys/resource.h>
#include <sys/types.h>

namespace
{

/// The child process of `process`, or 0 without a child.
pid_t childOf(pid_t process)
{
    const auto threads = "/proc/" + std::to_string(process) + "/task";
    for (const auto &thread : std::filesystem::directory_iterator(threads)) {
        pid_t child = 0;
        if (std::ifstream(thread.path() / "children") >> child)
            return child;
    }
    return 0;
}

/// False for zombies too.
bool isRunning(pid_t process)
{
    std::ifstream file("/proc/" + std::to_string(process) + "/stat");
    std::string number;
    std::string name;
    char state = 0;
    return file >> number >> name >> state && state != 'Z';
}

rlim_t limitOf(pid_t process, __rlimit_resource resource)
{
    rlimit limit { .rlim_cur = RLIM_INFINITY, .rlim_max = RLIM_INFINITY };
    prlimit(process, resource, nullptr, &limit);
    return limit.rlim_cur;
}

template <typename Condition>
bool waitUntil(Condition isMet)
{
    return QTest::qWaitFor(isMet, 30'000);
}

class ListenerLifeTest : public testing::TestWithParam<const char *>
{
protected:
    void SetUp() override
    {
        if (!listenerHasModel(LISTENER))
            GTEST_SKIP() << "pocketsphinx-en-us, the model, is not installed";
    }
};

TEST_P(ListenerLifeTest, EndsWhenItsProgramIsKilled)
{
    QProcess program;
    program.start(QStringLiteral(DICTATING_PROGRAM),
                  { QStringLiteral(LISTENER), QString::fromLatin1(GetParam()) });
    ASSERT_TRUE(program.waitForReadyRead(-1));
    const auto process = static_cast<pid_t>(program.processId());
    ASSERT_TRUE(waitUntil([process] { return childOf(process) > 0; }));
    const auto listener = childOf(process);
    EXPECT_TRUE(isRunning(listener));
    EXPECT_TRUE(waitUntil([listener] { return limitOf(listener, RLIMIT_AS) != RLIM_INFINITY; }));
    EXPECT_EQ(limitOf(listener, RLIMIT_CORE), 1U) << "no core dumps";
    program.kill();
    EXPECT_TRUE(waitUntil([listener] { return !isRunning(listener); }));
    EXPECT_TRUE(waitUntil([&program] { return program.state() == QProcess::NotRunning; }));
}

INSTANTIATE_TEST_SUITE_P(Activities, ListenerLifeTest, testing::Values("busy", "idle"));

} // namespace
