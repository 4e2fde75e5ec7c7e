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

/// Returns the words that the test sets, and logs the calls.
class ScriptedEngine final : public RecognitionEngine
{
public:
    bool writesText() const override { return isWriter; }

    bool knows(const std::string &key) const override { return key != "kubernetes"; }

    void learn(const UserVocabulary &vocabulary) override
    {
        log += "learn ";
        for (const auto &word : vocabulary.words)
            log += (word.isNew ? "new " : "") + word.key + ' ';
    }

    void begin() override { log += "begin "; }

    Hypothesis process(std::span<const std::int16_t> samples) override
    {
        log += std::to_string(samples.size()) + ' ';
        return next;
    }

    std::string finish() override
    {
        log += "finish ";
        return last;
    }

    void abandon() override { log += "abandon "; }

    bool isWriter = false;
    std::string log;
    Hypothesis next;
    std::string last;
};

class ListenerServiceTest : public testing::Test
{
protected:
    std::optional<ListenerMessage> send(Kind kind, std::uint32_t task)
    {
        return service.answer({ .kind = kind, .task = task, .payload = {} });
    }

    std::optional<ListenerMessage> sendTexts(const std::string &texts)
    {
        return service.answer({ .kind = Kind::texts, .task = 1, .payload = texts });
    }

    std::optional<ListenerMessage> sendAudio(std::uint32_t task, std::size_t count = 1024)
    {
        return service.answer(ListenerMessage::audio(task, std::vector<std::int16_t>(count)));
    }

    /// A piece of 64 ms as loud as a voice.
    std::optional<ListenerMessage> sendVoice(std::uint32_t task)
    {
        return service.answer(ListenerMessage::audio(task, std::vector<std::int16_t>(1024, 2'000)));
    }

    static ListenerMessage message(Kind kind, std::uint32_t task, const std::string &text = {})
    {
        return { .kind = kind, .task = task, .payload = text };
    }

    ScriptedEngine engine;
    ListenerService service { engine, "en-us" };
};

TEST_F(ListenerServiceTest, AnswersAudioWithTheTextIfItChanged)
{
    EXPECT_EQ(send(Kind::begin, 1), std::nullopt);
    EXPECT_EQ(sendAudio(1), message(Kind::unchanged, 1));
    engine.next = { .words = "buy milk", .isUtteranceOver = true };
    EXPECT_EQ(sendAudio(1), message(Kind::partial, 1, "buy milk"));
    engine.next = {};
    EXPECT_EQ(sendAudio(1), message(Kind::unchanged, 1));
    engine.next = { .words = "i think", .isUtteranceOver = true };
    EXPECT_EQ(sendAudio(1), message(Kind::partial, 1, "buy milk I think"));
}

TEST_F(ListenerServiceTest, ShowsTheLastWordAsSoonAsTheVoicePauses)
{
    send(Kind::begin, 1);
    engine.next = { .words = "buy milk" };
    EXPECT_EQ(sendVoice(1), message(Kind::unchanged, 1));
    EXPECT_EQ(sendAudio(1), message(Kind::partial, 1, "buy milk"));
}

TEST_F(ListenerServiceTest, NeedsSteadyWordsWhileTheVoiceContinues)
{
    send(Kind::begin, 1);
    engine.next = { .words = "buy milk" };
    for (int piece = 0; piece < 4; ++piece)
        EXPECT_EQ(sendVoice(1), message(Kind::unchanged, 1));
    EXPECT_EQ(sendVoice(1), message(Kind::partial, 1, "buy milk"));
}

TEST_F(ListenerServiceTest, AnswersTheEndWithTheWholeText)
{
    send(Kind::begin, 1);
    engine.next = { .words = "buy milk", .isUtteranceOver = true };
    sendAudio(1);
    engine.last = "and bread";
    EXPECT_EQ(send(Kind::end, 1), message(Kind::final, 1, "buy milk and bread"));
    EXPECT_EQ(engine.log, "begin 1024 finish ");
}

TEST_F(ListenerServiceTest, PassesAudioInPiecesOfOneSize)
{
    send(Kind::begin, 1);
    sendAudio(1, 2500);
    sendAudio(1, 0);
    EXPECT_EQ(engine.log, "begin 1024 1024 452 ");
}

TEST_F(ListenerServiceTest, AbandonsATaskWhenAnotherBegins)
{
    send(Kind::begin, 1);
    engine.next = { .words = "buy milk", .isUtteranceOver = true };
    sendAudio(1);
    EXPECT_EQ(send(Kind::begin, 2), std::nullopt);
    engine.next = {};
    EXPECT_EQ(sendAudio(2), message(Kind::unchanged, 2));
    EXPECT_EQ(send(Kind::end, 2), message(Kind::final, 2));
    EXPECT_EQ(engine.log, "begin 1024 abandon begin 1024 finish ");
}

TEST_F(ListenerServiceTest, IgnoresAudioOfACancelledTask)
{
    send(Kind::begin, 1);
    EXPECT_EQ(send(Kind::cancel, 1), std::nullopt);
    engine.next = { .words = "late", .isUtteranceOver = true };
    EXPECT_EQ(sendAudio(1), message(Kind::unchanged, 1));
    EXPECT_EQ(send(Kind::end, 1), message(Kind::final, 1));
    EXPECT_EQ(send(Kind::cancel, 1), std::nullopt);
    EXPECT_EQ(engine.log, "begin abandon ");
}

TEST_F(ListenerServiceTest, IgnoresACancelOfAnotherTask)
{
    send(Kind::begin, 2);
    send(Kind::cancel, 1);
    sendAudio(2);
    EXPECT_EQ(engine.log, "begin 1024 ");
}

TEST_F(ListenerServiceTest, AnswersForUnknownTasks)
{
    EXPECT_EQ(sendAudio(7), message(Kind::unchanged, 7));
    EXPECT_EQ(send(Kind::end, 7), message(Kind::final, 7));
    EXPECT_EQ(send(Kind::unchanged, 7), std::nullopt);
    EXPECT_EQ(engine.log, "");
}

TEST_F(ListenerServiceTest, LearnsTheWordsOfTexts)
{
    EXPECT_EQ(sendTexts(std::string("use kubernetes\0kubernetes pods\1", 31)),
              message(Kind::unchanged, 1));
    EXPECT_EQ(engine.log, "");
    EXPECT_EQ(send(Kind::learn, 1), message(Kind::unchanged, 1));
    EXPECT_EQ(engine.log, "learn new kubernetes pods use ") << "prominent ones first";
}

TEST_F(ListenerServiceTest, LearnsEachTextOnce)
{
    sendTexts("one");
    send(Kind::learn, 1);
    sendTexts("two");
    send(Kind::learn, 1);
    send(Kind::learn, 1);
    EXPECT_EQ(engine.log, "learn one learn two learn ");
}

TEST_F(ListenerServiceTest, AbandonsATaskToLearn)
{
    send(Kind::begin, 1);
    sendTexts("one");
    send(Kind::learn, 1);
    EXPECT_EQ(sendAudio(1), message(Kind::unchanged, 1));
    EXPECT_EQ(engine.log, "begin abandon learn one ");
}

TEST_F(ListenerServiceTest, DoesNotCountWordsForAnEngineThatLearnsNone)
{
    engine.isWriter = true;
    EXPECT_EQ(sendTexts("one"), message(Kind::unchanged, 1));
    EXPECT_EQ(send(Kind::learn, 1), message(Kind::unchanged, 1));
    EXPECT_EQ(engine.log, "");
    engine.isWriter = false;
    send(Kind::learn, 1);
    EXPECT_EQ(engine.log, "learn ");
}

TEST_F(ListenerServiceTest, SpellsWordsAsInTheTexts)
{
    sendTexts("deploy to Kubernetes");
    send(Kind::learn, 1);
    send(Kind::begin, 1);
    engine.next = { .words = "use kubernetes", .isUtteranceOver = true };
    EXPECT_EQ(sendAudio(1), message(Kind::partial, 1, "use Kubernetes"));
    sendTexts("another text");
    send(Kind::learn, 1);
    send(Kind::begin, 2);
    EXPECT_EQ(sendAudio(2), message(Kind::partial, 2, "use kubernetes"));
}

TEST_F(ListenerServiceTest, LearnsNoWordsOfOtherLanguages)
{
    ListenerService french(engine, "fr-fr");
    french.answer(message(Kind::texts, 1, "Il va à Paris"));
    EXPECT_EQ(french.answer(message(Kind::learn, 1)), message(Kind::unchanged, 1));
    EXPECT_EQ(engine.log, "");
    french.answer(message(Kind::begin, 1));
    engine.last = "il a fini";
    EXPECT_EQ(french.answer(message(Kind::end, 1)), message(Kind::final, 1, "il a fini"));
}

TEST_F(ListenerServiceTest, SurvivesTextsThatAreNoTexts)
{
    for (const std::string &texts :
         { std::string(), std::string(1000, '\0'), std::string(1000, '\1'), std::string(1000, '\3'),
           std::string("\xFF\xC3\0\xE2\x80", 5), std::string("unfinished \xC3") }) {
        EXPECT_EQ(sendTexts(texts), message(Kind::unchanged, 1));
        EXPECT_EQ(send(Kind::learn, 1), message(Kind::unchanged, 1));
    }
    EXPECT_EQ(engine.log, "learn learn learn learn learn learn unfinished ");
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
    stream += "an invalid message, which ends the service";
    ASSERT_EQ(write(in[1], stream.data(), stream.size()), static_cast<ssize_t>(stream.size()));
    engine.last = "buy milk";
    service.serve(in[0], out[1]);
    std::array<char, 4096> bytes {};
    const auto count = read(out[0], bytes.data(), bytes.size());
    ListenerMessageReader reader;
    reader.feed(std::string_view(bytes.data(), static_cast<std::size_t>(count)));
    EXPECT_EQ(reader.next(), message(Kind::unchanged, 1));
    EXPECT_EQ(reader.next(), message(Kind::final, 1, "buy milk"));
    EXPECT_EQ(reader.next(), std::nullopt);
    close(in[1]);
    service.serve(in[0], out[1]); // returns at the end of the stream too
    for (const int file : { in[0], out[0], out[1] })
        close(file);
}

} // namespace
