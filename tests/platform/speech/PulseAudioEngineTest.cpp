// PulseAudioEngine without a microphone. MicrophoneTest has one.

#include "platform/speech/PulseAudioEngine.h"

#include "support/FileDescriptor.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <span>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace
{

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

class PulseAudioEngineTest : public testing::Test
{
protected:
    void SetUp() override { setenv("PULSE_SERVER", ("unix:" + path).c_str(), 1); }

    void TearDown() override
    {
        EXPECT_EQ(calls, 0);
        EXPECT_EQ(failures, 0);
    }

    void installTap()
    {
        engine.installTap(1024, { .append = [this](std::span<const std::int16_t>) { ++calls; },
                                  .fail = [this] { ++failures; } });
    }

    static std::size_t descriptorCount()
    {
        const std::filesystem::directory_iterator files("/proc/self/fd");
        return static_cast<std::size_t>(std::distance(begin(files), end(files)));
    }

    QTemporaryDir folder;
    std::string path = folder.filePath(QStringLiteral("server")).toStdString();
    PulseAudioEngine engine { 300ms };
    int calls = 0;
    int failures = 0;
};

/// Accepts connections and never answers.
class SilentServer
{
public:
    explicit SilentServer(const std::string &path)
    {
        sockaddr_un address {};
        address.sun_family = AF_UNIX;
        std::strncpy(address.sun_path, path.c_str(), sizeof address.sun_path - 1);
        EXPECT_EQ(
            bind(m_socket.number(), reinterpret_cast<const sockaddr *>(&address), sizeof address),
            0);
        EXPECT_EQ(listen(m_socket.number(), 8), 0);
    }

private:
    FileDescriptor m_socket { socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0) };
};

TEST_F(PulseAudioEngineTest, DoesNotStartWithoutAServer)
{
    installTap();
    EXPECT_FALSE(engine.start());
    EXPECT_FALSE(engine.isRunning());
    EXPECT_FALSE(engine.start());
    engine.stop();
    engine.removeTap();
}

TEST_F(PulseAudioEngineTest, DoesNotStartIfTheServerNeverAnswers)
{
    const SilentServer server(path);
    installTap();
    const auto begin = Clock::now();
    EXPECT_FALSE(engine.start());
    const auto took = Clock::now() - begin;
    EXPECT_GE(took, 300ms);
    EXPECT_LT(took, 5s);
    EXPECT_FALSE(engine.isRunning());
}

TEST_F(PulseAudioEngineTest, DoesNotStartWithAnInvalidServer)
{
    std::ofstream(path) << "a file";
    EXPECT_FALSE(engine.start());
    setenv("PULSE_SERVER", "nonsense:///", 1);
    EXPECT_FALSE(engine.start());
    setenv("PULSE_SERVER", "tcp:127.0.0.1:1", 1);
    EXPECT_FALSE(engine.start());
}

TEST_F(PulseAudioEngineTest, ClosesEverythingWhenItCannotStart)
{
    const SilentServer server(path);
    EXPECT_FALSE(engine.start());
    const auto before = descriptorCount();
    for (int round = 0; round < 5; ++round)
        EXPECT_FALSE(engine.start());
    EXPECT_EQ(descriptorCount(), before);
}

TEST_F(PulseAudioEngineTest, AllowsStopAndRemoveTapAtAnyTime)
{
    engine.stop();
    engine.removeTap();
    installTap();
    installTap();
    engine.stop();
    engine.removeTap();
    engine.removeTap();
    EXPECT_FALSE(engine.isRunning());
}

} // namespace
