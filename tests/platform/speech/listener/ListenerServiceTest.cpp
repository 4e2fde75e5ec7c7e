#include "platform/speech/listener/ListenerService.h"

#include "platform/speech/ListenerMessageReader.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <unistd.h>
#include <vector>

namespace
{

using Kind = ListenerMessage::Kind;

/// Says the words it is given, and writes down what it is asked for.
class ScriptedEngine final : public RecognitionEngine
{
public:
    void begin() override { log += "begin "; }

    Hypothesis hear(std::span<const std::int16_t> samples) override
    {
        log += std::to_string(samples.size()) + ' ';
        return next;
    }

    std::string finish() override
    {
        log += "finish ";
        return last;
    }

    std::string log;
    Hypothesis next;
    std::string last;
};

class ListenerServiceTest : public testing::Test
{
protected:
    std::optional<ListenerMessage> say(Kind kind, std::uint32_t task)
    {
        return service.answer({ .kind = kind, .task = task, .payload = {} });
    }

    std::optional<ListenerMessage> sayAudio(std::uint32_t task, std::size_t count = 1024)
    {
        return service.answer(ListenerMessage::audio(task, std::vector<std::int16_t>(count)));
    }

    static ListenerMessage message(Kind kind, std::uint32_t task, const std::string &text = {})
    {
        return { .kind = kind, .task = task, .payload = text };
    }

    ScriptedEngine engine;
    ListenerService service { engine, "en-us" };
};

TEST_F(ListenerServiceTest, AnswersAudioWithTheTextWhenThatHasChanged)
{
    EXPECT_EQ(say(Kind::begin, 1), std::nullopt);
    EXPECT_EQ(sayAudio(1), message(Kind::heard, 1));
    engine.next = { .words = "buy milk", .isUtteranceOver = true };
    EXPECT_EQ(sayAudio(1), message(Kind::partial, 1, "buy milk"));
    engine.next = {};
    EXPECT_EQ(sayAudio(1), message(Kind::heard, 1));
    engine.next = { .words = "i think", .isUtteranceOver = true };
    EXPECT_EQ(sayAudio(1), message(Kind::partial, 1, "buy milk I think"));
}

TEST_F(ListenerServiceTest, AnswersTheEndWithAllThatWasSaid)
{
    say(Kind::begin, 1);
    engine.next = { .words = "buy milk", .isUtteranceOver = true };
    sayAudio(1);
    engine.last = "and bread";
    EXPECT_EQ(say(Kind::end, 1), message(Kind::final, 1, "buy milk and bread"));
    EXPECT_EQ(engine.log, "begin 1024 finish ");
}

TEST_F(ListenerServiceTest, HearsInPiecesOfOneSize)
{
    say(Kind::begin, 1);
    sayAudio(1, 2500);
    sayAudio(1, 0);
    EXPECT_EQ(engine.log, "begin 1024 1024 452 ");
}

TEST_F(ListenerServiceTest, ForgetsATaskWithTheNext)
{
    say(Kind::begin, 1);
    engine.next = { .words = "buy milk", .isUtteranceOver = true };
    sayAudio(1);
    EXPECT_EQ(say(Kind::begin, 2), std::nullopt);
    engine.next = {};
    EXPECT_EQ(sayAudio(2), message(Kind::heard, 2));
    EXPECT_EQ(say(Kind::end, 2), message(Kind::final, 2));
    EXPECT_EQ(engine.log, "begin 1024 finish begin 1024 finish ");
}

TEST_F(ListenerServiceTest, StopsHearingACancelledTask)
{
    say(Kind::begin, 1);
    EXPECT_EQ(say(Kind::cancel, 1), std::nullopt);
    engine.next = { .words = "late", .isUtteranceOver = true };
    EXPECT_EQ(sayAudio(1), message(Kind::heard, 1));
    EXPECT_EQ(say(Kind::end, 1), message(Kind::final, 1));
    EXPECT_EQ(say(Kind::cancel, 1), std::nullopt);
    EXPECT_EQ(engine.log, "begin finish ");
}

TEST_F(ListenerServiceTest, LeavesTheTaskAloneWhenAnotherIsCancelled)
{
    say(Kind::begin, 2);
    say(Kind::cancel, 1);
    sayAudio(2);
    EXPECT_EQ(engine.log, "begin 1024 ");
}

TEST_F(ListenerServiceTest, AnswersWhateverTaskItIsAskedFor)
{
    EXPECT_EQ(sayAudio(7), message(Kind::heard, 7));
    EXPECT_EQ(say(Kind::end, 7), message(Kind::final, 7));
    EXPECT_EQ(say(Kind::heard, 7), std::nullopt);
    EXPECT_EQ(engine.log, "");
}

TEST_F(ListenerServiceTest, ServesAStreamUntilItEnds)
{
    std::array<int, 2> in {};
    std::array<int, 2> out {};
    ASSERT_EQ(pipe(in.data()) + pipe(out.data()), 0);
    std::string stream;
    message(Kind::begin, 1).appendTo(stream);
    ListenerMessage::audio(1, std::vector<std::int16_t>(8)).appendTo(stream);
    message(Kind::end, 1).appendTo(stream);
    stream += "what is no message and ends the service, whatever follows";
    ASSERT_EQ(write(in[1], stream.data(), stream.size()), static_cast<ssize_t>(stream.size()));
    engine.last = "buy milk";
    service.serve(in[0], out[1]);
    std::array<char, 4096> bytes {};
    const auto count = read(out[0], bytes.data(), bytes.size());
    ListenerMessageReader reader;
    reader.feed(std::string_view(bytes.data(), static_cast<std::size_t>(count)));
    EXPECT_EQ(reader.next(), message(Kind::heard, 1));
    EXPECT_EQ(reader.next(), message(Kind::final, 1, "buy milk"));
    EXPECT_EQ(reader.next(), std::nullopt);
    close(in[1]);
    service.serve(in[0], out[1]); // the end of the stream ends it too
    for (const int file : { in[0], out[0], out[1] })
        close(file);
}

} // namespace
