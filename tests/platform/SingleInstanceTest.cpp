#include "platform/desktop/SingleInstance.h"

#include "fakes/TestFiles.h"
#include "platform/desktop/InstanceBeacon.h"
#include "platform/desktop/InstanceLock.h"
#include "platform/desktop/StartupRequest.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <functional>
#include <poll.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace
{

using namespace std::chrono_literals;
using Outcome = SingleInstance::Outcome;
using Clock = std::chrono::steady_clock;

/// A process that becomes the first instance and runs `work` until it is killed.
class OtherProcess
{
public:
    OtherProcess(const std::string &folder, const std::function<void(SingleInstance &)> &work)
    {
        int ends[2]; // NOLINT(*-avoid-c-arrays)
        if (pipe(ends) != 0)
            return;
        m_id = fork();
        if (m_id == 0) {
            SingleInstance instance(folder);
            if (instance.start({}) == Outcome::first && write(ends[1], "x", 1) == 1)
                work(instance);
            _exit(0);
        }
        close(ends[1]);
        char byte = 0;
        m_isFirst = read(ends[0], &byte, 1) == 1;
        close(ends[0]);
    }

    OtherProcess(const OtherProcess &) = delete;
    OtherProcess &operator=(const OtherProcess &) = delete;

    ~OtherProcess() { end(SIGKILL); }

    bool isFirst() const { return m_isFirst; }

    void end(int signal)
    {
        if (m_id <= 0)
            return;
        kill(m_id, signal);
        waitpid(m_id, nullptr, 0);
        m_id = 0;
    }

private:
    pid_t m_id = 0;
    bool m_isFirst = false;
};

void doNothing(const SingleInstance & /*instance*/)
{
    while (true)
        pause();
}

/// Answers requests as a running instance does.
void answer(const SingleInstance &instance)
{
    pollfd request { .fd = instance.socket()->descriptor(), .events = POLLIN, .revents = 0 };
    while (poll(&request, 1, -1) >= 0) {
        const auto message = instance.socket()->receive();
        if (message && StartupRequest::decode(message->text))
            instance.socket()->answer(message->sender, std::string(StartupRequest::Answer));
    }
}

class SingleInstanceTest : public testing::Test
{
protected:
    QTemporaryDir directory;
    std::string folder = directory.path().toStdString();
};

TEST_F(SingleInstanceTest, IsFirstWithoutAnotherProcess)
{
    SingleInstance instance(folder);
    EXPECT_EQ(instance.start({}), Outcome::first);
    EXPECT_TRUE(instance.ownsFolder());
    ASSERT_TRUE(instance.socket());
    EXPECT_EQ(TestFiles::read(folder + "/.instance"), instance.socket()->name() + "\n");
    EXPECT_EQ(TestFiles::mode(folder + "/.instance"), 0600U);
}

TEST_F(SingleInstanceTest, HandsItsTokenToTheFirst)
{
    const StartupToken token { "token", "id_TIME1" };
    SingleInstance first(folder);
    ASSERT_EQ(first.start({}), Outcome::first);
    std::optional<StartupToken> received;
    std::jthread listener([&] {
        pollfd request { .fd = first.socket()->descriptor(), .events = POLLIN, .revents = 0 };
        poll(&request, 1, 5000);
        const auto message = first.socket()->receive();
        ASSERT_TRUE(message);
        received = StartupRequest::decode(message->text);
        first.socket()->answer(message->sender, std::string(StartupRequest::Answer));
    });
    SingleInstance second(folder);
    EXPECT_EQ(second.start(token), Outcome::handedOver);
    EXPECT_FALSE(second.ownsFolder());
    EXPECT_FALSE(second.socket());
    listener.join();
    EXPECT_EQ(received, token);
}

TEST_F(SingleInstanceTest, HandsOverToAnotherProcess)
{
    const OtherProcess first(folder, answer);
    ASSERT_TRUE(first.isFirst());
    for (int start = 0; start < 20; ++start)
        EXPECT_EQ(SingleInstance(folder).start({}), Outcome::handedOver);
}

TEST_F(SingleInstanceTest, DoesNotStartIfTheFirstDoesNotAnswer)
{
    const OtherProcess first(folder, doNothing);
    ASSERT_TRUE(first.isFirst());
    const auto before = Clock::now();
    EXPECT_EQ(SingleInstance(folder, 200ms).start({}), Outcome::noAnswer);
    EXPECT_GE(Clock::now() - before, 200ms);
    EXPECT_LT(Clock::now() - before, 5s);
}

TEST_F(SingleInstanceTest, WaitsForAFirstThatIsStarting)
{
    const OtherProcess first(folder, [](const SingleInstance &instance) {
        std::this_thread::sleep_for(300ms);
        answer(instance);
    });
    ASSERT_TRUE(first.isFirst());
    EXPECT_EQ(SingleInstance(folder).start({}), Outcome::handedOver);
}

TEST_F(SingleInstanceTest, ReplacesAFirstThatEndsMeanwhile)
{
    const OtherProcess first(folder,
                             [](const SingleInstance &) { std::this_thread::sleep_for(300ms); });
    ASSERT_TRUE(first.isFirst());
    SingleInstance second(folder);
    EXPECT_EQ(second.start({}), Outcome::first);

    std::jthread listener([&] {
        pollfd request { .fd = second.socket()->descriptor(), .events = POLLIN, .revents = 0 };
        poll(&request, 1, 5000);
        if (const auto message = second.socket()->receive())
            second.socket()->answer(message->sender, std::string(StartupRequest::Answer));
    });
    EXPECT_EQ(SingleInstance(folder).start({}), Outcome::handedOver) << "it receives requests now";
}

TEST_F(SingleInstanceTest, StartsAfterTheFirstWasKilled)
{
    OtherProcess killed(folder, answer);
    ASSERT_TRUE(killed.isFirst());
    killed.end(SIGKILL);
    EXPECT_FALSE(TestFiles::read(folder + "/.instance").empty());
    EXPECT_EQ(SingleInstance(folder).start({}), Outcome::first);
}

TEST_F(SingleInstanceTest, StartsWithAnyLeftoverLockFile)
{
    for (const auto &left : { std::string(), std::string("00000\n"), std::string(5000, 'x') }) {
        TestFiles::write(folder + "/.instance", left);
        SingleInstance instance(folder);
        EXPECT_EQ(instance.start({}), Outcome::first);
        EXPECT_EQ(TestFiles::read(folder + "/.instance"), instance.socket()->name() + "\n");
    }
}

TEST_F(SingleInstanceTest, IgnoresInvalidAnswers)
{
    const OtherProcess first(folder, [](const SingleInstance &instance) {
        pollfd request { .fd = instance.socket()->descriptor(), .events = POLLIN, .revents = 0 };
        poll(&request, 1, -1);
        if (const auto message = instance.socket()->receive())
            instance.socket()->answer(message->sender, "something else");
        doNothing(instance);
    });
    ASSERT_TRUE(first.isFirst());
    EXPECT_EQ(SingleInstance(folder, 200ms).start({}), Outcome::noAnswer);
}

TEST_F(SingleInstanceTest, SeparatesFolders)
{
    const QTemporaryDir elsewhere;
    SingleInstance here(folder);
    SingleInstance there(elsewhere.path().toStdString());
    EXPECT_EQ(here.start({}), Outcome::first);
    EXPECT_EQ(there.start({}), Outcome::first);
}

TEST_F(SingleInstanceTest, IdentifiesAFolderByAnyPath)
{
    const QTemporaryDir elsewhere;
    const auto link = elsewhere.path().toStdString() + "/link";
    std::filesystem::create_directory_symlink(folder, link);
    SingleInstance here(folder);
    EXPECT_EQ(here.start({}), Outcome::first);
    EXPECT_EQ(SingleInstance(link, 50ms).start({}), Outcome::noAnswer);
}

TEST_F(SingleInstanceTest, FindsTheFirstAfterItsLockFileWasDeleted)
{
    const OtherProcess first(folder, answer);
    ASSERT_TRUE(first.isFirst());
    std::filesystem::remove(folder + "/.instance");
    for (int start = 0; start < 3; ++start)
        EXPECT_EQ(SingleInstance(folder).start({}), Outcome::handedOver);
}

TEST_F(SingleInstanceTest, FindsTheFirstAfterItsFolderWasReplaced)
{
    const auto data = folder + "/data";
    std::filesystem::create_directory(data);
    const OtherProcess first(data, answer);
    ASSERT_TRUE(first.isFirst());
    std::filesystem::rename(data, folder + "/aside");
    std::filesystem::create_directory(data);
    EXPECT_EQ(SingleInstance(data).start({}), Outcome::handedOver);
    EXPECT_EQ(SingleInstance(folder + "/aside").start({}), Outcome::handedOver);
}

TEST_F(SingleInstanceTest, DoesNotStartBesideASilentFirstWithoutItsLockFile)
{
    const OtherProcess first(folder, doNothing);
    ASSERT_TRUE(first.isFirst());
    std::filesystem::remove(folder + "/.instance");
    EXPECT_EQ(SingleInstance(folder, 200ms).start({}), Outcome::noAnswer);
}

TEST_F(SingleInstanceTest, StartsAfterAKilledFirstWithoutItsLockFile)
{
    OtherProcess killed(folder, answer);
    ASSERT_TRUE(killed.isFirst());
    std::filesystem::remove(folder + "/.instance");
    killed.end(SIGKILL);
    EXPECT_EQ(SingleInstance(folder).start({}), Outcome::first);
}

TEST_F(SingleInstanceTest, IgnoresSocketsOfOtherUsers)
{
    if (getuid() != 0)
        GTEST_SKIP() << "Only root can be another user.";
    const OtherProcess first(folder, answer);
    ASSERT_TRUE(first.isFirst());
    const auto elsewhere = folder + "/elsewhere";
    std::filesystem::create_directory(elsewhere);
    int ready[2]; // NOLINT(*-avoid-c-arrays)
    ASSERT_EQ(pipe(ready), 0);
    const auto other = fork();
    if (other == 0) {
        InstanceBeacon beacon(elsewhere); // the name is root's
        const bool isReady = setuid(65534) == 0 && (beacon.turnOn(), write(ready[1], "x", 1) == 1);
        if (isReady)
            pause();
        _exit(1);
    }
    char byte = 0;
    ASSERT_EQ(read(ready[0], &byte, 1), 1);
    EXPECT_FALSE(InstanceBeacon(elsewhere).isOn());
    EXPECT_TRUE(InstanceBeacon(folder).isOn());
    EXPECT_EQ(SingleInstance(elsewhere).start({}), Outcome::first);
    kill(other, SIGKILL);
    waitpid(other, nullptr, 0);
}

TEST_F(SingleInstanceTest, LocksAReplacedFileBeforeItWrites)
{
    SingleInstance first(folder);
    ASSERT_EQ(first.start({}), Outcome::first);
    EXPECT_TRUE(first.mayWrite());
    for (const auto &left : { std::string(), std::string("left by another") }) {
        std::filesystem::remove(folder + "/.instance");
        if (!left.empty())
            TestFiles::write(folder + "/.instance", left);
        EXPECT_TRUE(first.mayWrite());
        EXPECT_EQ(TestFiles::read(folder + "/.instance"), first.socket()->name() + "\n");
        EXPECT_EQ(InstanceLock(folder).take(), InstanceLock::State::heldByAnother);
    }
}

TEST_F(SingleInstanceTest, MayNotWriteWhileAnotherLocksTheReplacedFile)
{
    SingleInstance first(folder);
    ASSERT_EQ(first.start({}), Outcome::first);
    std::filesystem::remove(folder + "/.instance");
    {
        InstanceLock another(folder);
        ASSERT_EQ(another.take(), InstanceLock::State::held);
        EXPECT_FALSE(first.mayWrite());
        EXPECT_FALSE(first.mayWrite());
    }
    EXPECT_TRUE(first.mayWrite());
}

TEST_F(SingleInstanceTest, StartsIfLockingFails)
{
    for (const auto &path : { folder + "/missing", std::string("/proc/self") }) {
        SingleInstance instance(path);
        testing::internal::CaptureStderr();
        EXPECT_EQ(instance.start({}), Outcome::first);
        EXPECT_NE(testing::internal::GetCapturedStderr().find(path), std::string::npos);
        EXPECT_FALSE(instance.ownsFolder());
        EXPECT_FALSE(instance.socket());
    }
}

TEST_F(SingleInstanceTest, OnlyOneOfManyConcurrentStartsIsFirst)
{
    std::vector<pid_t> starts;
    for (int count = 0; count < 20; ++count) {
        const auto child = fork();
        if (child == 0) {
            SingleInstance instance(folder, 20s);
            const auto outcome = instance.start({});
            if (outcome == Outcome::first)
                std::jthread(answer, std::cref(instance)).detach(), std::this_thread::sleep_for(2s);
            _exit(static_cast<int>(outcome));
        }
        starts.push_back(child);
    }
    std::vector<int> outcomes(3);
    for (const auto start : starts) {
        int status = 0;
        waitpid(start, &status, 0);
        ASSERT_TRUE(WIFEXITED(status));
        ++outcomes.at(static_cast<std::size_t>(WEXITSTATUS(status)));
    }
    EXPECT_EQ(outcomes, (std::vector { 1, 19, 0 }));
}

} // namespace
