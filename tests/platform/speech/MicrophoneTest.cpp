// PulseAudioEngine with the microphone of the script virtual_microphone.

#include "fakes/TestFiles.h"
#include "platform/desktop/QtMainQueue.h"
#include "platform/speech/ListenerRecognizer.h"
#include "platform/speech/ModelInquiry.h"
#include "platform/speech/PulseAudioEngine.h"
#include "platform/speech/Recognition.h"
#include "platform/speech/Voice.h"

#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace
{

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

std::string outputOf(const std::string &command)
{
    std::string output;
    auto *const stream = popen(command.c_str(), "r");
    std::array<char, 4096> bytes {};
    for (std::size_t count = 0; (count = fread(bytes.data(), 1, bytes.size(), stream)) > 0;)
        output.append(bytes.data(), count);
    EXPECT_EQ(pclose(stream), 0) << command;
    return output;
}

bool waitUntil(const std::function<bool()> &isMet, std::chrono::seconds limit = 20s)
{
    return QTest::qWaitFor(isMet, static_cast<int>(std::chrono::milliseconds(limit).count()));
}

constexpr auto ServerTimeout = 30s; // on a busy machine

/// The number of this program's recordings on the server.
int recordingCount()
{
    const auto list = outputOf("pactl list source-outputs");
    int count = 0;
    constexpr std::string_view Ours = "application.name = \"Quillsatchel\"";
    for (auto found = list.find(Ours); found != std::string::npos;
         found = list.find(Ours, found + 1))
        ++count;
    return count;
}

/// Makes `name` the default source.
void choose(const std::string &name)
{
    outputOf("pactl set-default-source " + name);
    EXPECT_TRUE(waitUntil([&name] { return outputOf("pactl get-default-source") == name + '\n'; }));
}

class MicrophoneTest : public testing::Test
{
protected:
    void installTap()
    {
        engine.installTap(1024, { .append =
                                      [this](std::span<const std::int16_t> samples) {
                                          ++buffers;
                                          total += samples.size();
                                          loudest = std::max<int>(
                                              loudest,
                                              *std::max_element(samples.begin(), samples.end()));
                                          isOfOneSize = isOfOneSize && samples.size() == 1024;
                                      },
                                  .fail = [this] { ++failures; } });
    }

    /// Plays the samples through the loudspeaker to their end.
    void play(const std::vector<std::int16_t> &samples) const
    {
        const auto path = folder.filePath(QStringLiteral("sound")).toStdString();
        TestFiles::write(path, { reinterpret_cast<const char *>(samples.data()),
                                 samples.size() * sizeof(std::int16_t) });
        outputOf("pacat --playback --raw --rate=16000 --channels=1 --format=s16le "
                 "--latency-msec=40 " +
                 path);
    }

    QTemporaryDir folder;
    std::atomic<std::size_t> buffers = 0;
    std::atomic<std::size_t> total = 0;
    std::atomic<int> loudest = 0;
    std::atomic<bool> isOfOneSize = true;
    std::atomic<int> failures = 0;
    PulseAudioEngine engine { ServerTimeout };
};

TEST_F(MicrophoneTest, DeliversBuffersOfTheTapsSizeInRealTime)
{
    installTap();
    ASSERT_TRUE(engine.start());
    EXPECT_TRUE(engine.isRunning());
    EXPECT_TRUE(waitUntil([this] { return buffers > 0; }));
    const auto begin = Clock::now();
    const auto before = total.load();
    EXPECT_TRUE(waitUntil([this, before] { return total >= before + 32'000; }));
    const auto seconds = std::chrono::duration<double>(Clock::now() - begin).count();
    EXPECT_GT(seconds, 1.0); // of two
    EXPECT_TRUE(isOfOneSize);
    EXPECT_EQ(failures, 0);
}

TEST_F(MicrophoneTest, CapturesWhatIsPlayed)
{
    installTap();
    ASSERT_TRUE(engine.start());
    std::vector<std::int16_t> beep(16'000);
    for (std::size_t index = 0; index < beep.size(); ++index)
        beep[index] = index % 32 < 16 ? 12'000 : -12'000;
    play(beep);
    EXPECT_TRUE(waitUntil([this] { return loudest > 8'000; }));
}

TEST_F(MicrophoneTest, IsOpenOnlyBetweenStartAndStop)
{
    EXPECT_EQ(recordingCount(), 0);
    for (int round = 0; round < 5; ++round) {
        installTap();
        ASSERT_TRUE(engine.start());
        EXPECT_EQ(recordingCount(), 1);
        EXPECT_TRUE(engine.start()); // is running already
        EXPECT_EQ(recordingCount(), 1);
        engine.stop();
        EXPECT_FALSE(engine.isRunning());
        EXPECT_TRUE(waitUntil([] { return recordingCount() == 0; }));
        engine.removeTap();
    }
    EXPECT_EQ(failures, 0);
}

TEST_F(MicrophoneTest, StopsWhenItIsDestroyed)
{
    {
        PulseAudioEngine other(ServerTimeout);
        ASSERT_TRUE(other.start());
        EXPECT_EQ(recordingCount(), 1);
    }
    EXPECT_TRUE(waitUntil([] { return recordingCount() == 0; }));
}

TEST_F(MicrophoneTest, CallsNoTapThatWasRemoved)
{
    installTap();
    ASSERT_TRUE(engine.start());
    EXPECT_TRUE(waitUntil([this] { return buffers > 2; }));
    engine.removeTap();
    const auto before = buffers.load();
    QTest::qWait(300);
    EXPECT_EQ(buffers, before);
    installTap();
    EXPECT_TRUE(waitUntil([this, before] { return buffers > before; }));
}

TEST_F(MicrophoneTest, ReportsOnceThatTheMicrophoneWasUnplugged)
{
    installTap();
    ASSERT_TRUE(engine.start());
    EXPECT_TRUE(waitUntil([this] { return buffers > 0; }));
    const auto module = outputOf("pactl load-module module-remap-source source_name=other "
                                 "master=speaker.monitor channels=1 master_channel_map=front-left "
                                 "channel_map=mono remix=no");
    choose("other");
    engine.stop();
    ASSERT_TRUE(engine.start());
    outputOf("pactl unload-module " + module);
    EXPECT_TRUE(waitUntil([this] { return failures == 1; }));
    EXPECT_TRUE(engine.isRunning()); // until `stop`
    const auto before = buffers.load();
    QTest::qWait(200);
    EXPECT_EQ(buffers, before);
    EXPECT_EQ(failures, 1);
    engine.stop();
    EXPECT_EQ(failures, 1);
    choose("microphone");
}

TEST_F(MicrophoneTest, DoesNotUseTheLoudspeakersMonitorAsMicrophone)
{
    choose("speaker.monitor");
    installTap();
    EXPECT_FALSE(engine.start());
    EXPECT_EQ(recordingCount(), 0);
    choose("microphone");
    EXPECT_TRUE(engine.start());
}

TEST_F(MicrophoneTest, RecognizesASyntheticVoice)
{
    const auto sentence = Voice::say("summarize the following text");
    if (!sentence)
        GTEST_SKIP() << "flite, the voice synthesizer, is not installed";
    if (!listenerHasModel(LISTENER))
        GTEST_SKIP() << "pocketsphinx-en-us, the model, is not installed";
    constexpr auto Limit = 150s; // includes loading the model on a busy machine
    QtMainQueue mainQueue;
    ListenerRecognizer recognizer({ LISTENER }, mainQueue, { .answer = Limit });
    const Recognition recognition(recognizer);
    engine.installTap(
        1024, { .append = [request = recognition.request](
                              std::span<const std::int16_t> samples) { request->append(samples); },
                .fail = [request = recognition.request] { request->fail(); } });
    ASSERT_TRUE(engine.start());
    constexpr std::string_view End = "following text";
    const auto isUnderstood = [&recognition, End] {
        const auto texts = recognition.texts();
        return !texts.empty() && texts.back().ends_with(End);
    };
    // A busy machine may lose sounds, so the sentence is repeated.
    for (int attempt = 0; attempt < 3 && !isUnderstood(); ++attempt) {
        play(*sentence);
        waitUntil(isUnderstood, Limit);
    }
    EXPECT_TRUE(isUnderstood());
    engine.stop();
    engine.removeTap();
    recognition.request->endAudio();
    EXPECT_TRUE(recognition.waitForEnd());
    // Repeated sentences may have added words.
    EXPECT_NE(recognition.finalText().value_or("").find(End), std::string::npos);
    EXPECT_EQ(recognition.errors(), 0);
}

/// Must be the last test, because it kills the server.
TEST_F(MicrophoneTest, ReportsOnceThatTheServerHasGone)
{
    installTap();
    ASSERT_TRUE(engine.start());
    EXPECT_TRUE(waitUntil([this] { return buffers > 0; }));
    const auto *const server = std::getenv("VIRTUAL_PULSE_PID");
    ASSERT_NE(server, nullptr) << "run this by the script virtual_microphone";
    kill(std::stoi(server), SIGKILL);
    EXPECT_TRUE(waitUntil([this] { return failures == 1; }));
    engine.stop();
    EXPECT_FALSE(engine.start());
    EXPECT_EQ(failures, 1);
}

} // namespace
