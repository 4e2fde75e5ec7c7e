// The listener does not outlive its program, however that ends.

#include "platform/speech/ListenerInquiry.h"
#include "platform/speech/Subprocess.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <sys/socket.h>
#include <thread>

namespace
{

using namespace std::chrono_literals;

/// The process that the other has started; 0 if there is none.
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

/// What is left of a process that has ended, until init has noticed, counts as gone.
bool isThere(pid_t process)
{
    std::ifstream file("/proc/" + std::to_string(process) + "/stat");
    std::string number;
    std::string name;
    char state = 0;
    return file >> number >> name >> state && state != 'Z';
}

template <typename Condition>
bool waitUntil(Condition isMet)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (!isMet() && std::chrono::steady_clock::now() < end)
        std::this_thread::sleep_for(5ms);
    return isMet();
}

class ListenerLifeTest : public testing::TestWithParam<const char *>
{
protected:
    void SetUp() override
    {
        if (!listenerHasModel(LISTENER, std::chrono::seconds(30)))
            GTEST_SKIP() << "pocketsphinx-en-us, the model, is not installed";
    }
};

TEST_P(ListenerLifeTest, EndsWithAProgramThatIsKilled)
{
    auto program = Subprocess::start({ DICTATING_PROGRAM, LISTENER, GetParam() });
    ASSERT_TRUE(program);
    std::array<char, 64> word {};
    ASSERT_GT(recv(program->stream(), word.data(), word.size(), 0), 0);
    ASSERT_TRUE(waitUntil([&program] { return childOf(program->id()) > 0; }));
    const auto listener = childOf(program->id());
    EXPECT_TRUE(isThere(listener));
    kill(program->id(), SIGKILL);
    EXPECT_TRUE(waitUntil([listener] { return !isThere(listener); }));
}

INSTANTIATE_TEST_SUITE_P(Occupations, ListenerLifeTest, testing::Values("busy", "idle"));

} // namespace
