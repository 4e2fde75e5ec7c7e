#include "dictation/DictationFixture.h"

namespace
{

using DictationControllerTest = DictationFixture;

TEST_F(DictationControllerTest, IsIdleAndMakesNoCallsAtFirst)
{
    EXPECT_TRUE(isIdle());
    EXPECT_EQ(message(), "");
    EXPECT_TRUE(speech.events.empty());
}

TEST_F(DictationControllerTest, GivesTheRecognizerTheVocabulary)
{
    Node node;
    start(node);
    EXPECT_EQ(speech.vocabulary, &vocabulary);
}

TEST_F(DictationControllerTest, TellsTheRecognizerTheTextBeforeTheWords)
{
    Node node { .text = "Notes." };
    start(node);
    EXPECT_EQ(speech.textBefore, "Notes.");
    recognize("Buy milk");
    EXPECT_EQ(node.text, "Notes. Buy milk");
}

TEST_F(DictationControllerTest, FillsAnEmptyNodeWithoutALeadingSpace)
{
    Node node;
    start(node);
    recognize("buy milk");
    EXPECT_EQ(node.received, Texts({ "buy milk" }));
}

TEST_F(DictationControllerTest, PutsOneSpaceBetweenTheTextAndTheWords)
{
    const std::vector<std::pair<std::string, std::string>> rows {
        { "Notes", "Notes buy milk" },
        { "Notes ", "Notes  buy milk" },
        { "Notes\n", "Notes\n buy milk" },
        { " ", "  buy milk" },
    };
    for (const auto &[text, expected] : rows) {
        Node node { .text = text };
        start(node);
        recognize("buy milk");
        EXPECT_EQ(node.text, expected);
        toggle(node);
    }
}

TEST_F(DictationControllerTest, ReplacesEarlierWordsWithEachResult)
{
    Node node { .text = "Hello" };
    start(node);
    recognize("how");
    recognize("how are");
    recognize("how are you");
    EXPECT_EQ(node.received, Texts({ "Hello how", "Hello how are", "Hello how are you" }));
}

TEST_F(DictationControllerTest, AppendsToTheTextThatTheNodeHadWhenToggled)
{
    Node node { .text = "before" };
    toggle(node);
    node.text = "typed while authorization was requested";
    answer();
    recognize("words");
    EXPECT_EQ(node.text, "before words");
}

TEST_F(DictationControllerTest, IgnoresAnEmptyTranscription)
{
    Node node { .text = "Notes" };
    start(node);
    recognize("");
    EXPECT_TRUE(node.received.empty());
    EXPECT_EQ(controller->activeBlockID().get(), node.id);
}

TEST_F(DictationControllerTest, IgnoresACallWithNeitherResultNorError)
{
    Node node;
    start(node);
    speech.deliver(0, std::nullopt);
    settle();
    EXPECT_TRUE(node.received.empty());
    EXPECT_EQ(controller->activeBlockID().get(), node.id);
}

TEST_F(DictationControllerTest, CommitsTheUnchangedTextIfStoppedBeforeSpeech)
{
    Node node { .text = "as it was" };
    start(node);
    toggle(node);
    EXPECT_EQ(node.received, Texts({ "as it was" }));
    EXPECT_TRUE(isIdle());
    EXPECT_EQ(speech.authorizationRequests.size(), 1U) << "stopping needs no authorization";
}

TEST_F(DictationControllerTest, CommitsTheLatestTextAgainWhenStopped)
{
    Node node { .text = "a" };
    start(node);
    recognize("b");
    toggle(node);
    EXPECT_EQ(node.received, Texts({ "a b", "a b" }));
    EXPECT_TRUE(isIdle());
}

TEST_F(DictationControllerTest, StopsOneNodeBeforeStartingAnother)
{
    Node first { .text = "1" };
    Node second { .text = "2" };
    start(first);
    recognize("one");
    speech.events.clear();

    toggle(second);
    EXPECT_EQ(first.received, Texts({ "1 one", "1 one" }));
    EXPECT_TRUE(isIdle());
    EXPECT_EQ(speech.events, Texts({ "stop engine", "remove tap", "end audio", "cancel task",
                                     "request authorization" }));

    answer();
    EXPECT_EQ(controller->activeBlockID().get(), second.id);
    deliver(0, "late words", true);
    EXPECT_EQ(first.received.size(), 2U);
    EXPECT_TRUE(second.received.empty());
    deliver(1, "two");
    EXPECT_EQ(second.text, "2 two");
    EXPECT_EQ(first.received.size(), 2U);
}

TEST_F(DictationControllerTest, IgnoresResultsAfterTheStop)
{
    Node node { .text = "a" };
    start(node);
    recognize("b");
    toggle(node);
    deliver(0, "b c");
    deliver(0, "b c d", true);
    deliver(0, "x", false, true);
    EXPECT_EQ(node.received, Texts({ "a b", "a b" }));
    EXPECT_TRUE(isIdle());
}

TEST_F(DictationControllerTest, IgnoresAResultInFlightAtTheStop)
{
    Node node { .text = "a" };
    start(node);
    speech.deliver(0, SpeechRecognitionResult { "b", false });
    toggle(node);
    settle();
    EXPECT_EQ(node.received, Texts({ "a" }));
}

TEST_F(DictationControllerTest, IgnoresResultsOfAnOlderSessionInTheSameNode)
{
    Node node { .text = "a" };
    start(node);
    toggle(node);
    start(node);
    deliver(0, "stale", true);
    EXPECT_EQ(controller->activeBlockID().get(), node.id);
    EXPECT_EQ(node.text, "a");
}

TEST_F(DictationControllerTest, StopsAfterAFinalResult)
{
    Node node { .text = "a" };
    start(node);
    recognize("b c", true);
    EXPECT_EQ(node.received, Texts({ "a b c", "a b c" }));
    EXPECT_TRUE(isIdle());
    EXPECT_EQ(message(), "");
}

TEST_F(DictationControllerTest, CommitsTheLastWordsIfTheFinalResultIsEmpty)
{
    Node node { .text = "a" };
    start(node);
    recognize("b");
    recognize("", true);
    EXPECT_EQ(node.received, Texts({ "a b", "a b" }));

    Node silent { .text = "as it was" };
    start(silent);
    recognize("", true);
    EXPECT_EQ(silent.received, Texts({ "as it was" }));
    EXPECT_TRUE(isIdle());
}

TEST_F(DictationControllerTest, StopsSilentlyAfterAnError)
{
    Node node { .text = "a" };
    start(node);
    recognize("b");
    fail();
    EXPECT_EQ(node.received, Texts({ "a b", "a b" }));
    EXPECT_TRUE(isIdle());
    EXPECT_EQ(message(), "");
}

TEST_F(DictationControllerTest, KeepsWordsDeliveredWithAnError)
{
    Node node;
    start(node);
    deliver(0, "last words", false, true);
    EXPECT_EQ(node.received, Texts({ "last words", "last words" }));
    EXPECT_TRUE(isIdle());
}

TEST_F(DictationControllerTest, KeepsTheTextIfTheMicrophoneDoesNotStart)
{
    speech.startsEngine = false;
    Node node { .text = "a" };
    start(node);
    EXPECT_EQ(message(), "The microphone could not be started.");
    EXPECT_TRUE(node.received.empty());
    EXPECT_TRUE(isIdle());
    ASSERT_EQ(speech.recognitions.size(), 1U);
    EXPECT_TRUE(speech.recognitions[0]->hasEnded);
    EXPECT_EQ(speech.recognitions[0]->cancellations, 1);
    deliver(0, "words", true);
    EXPECT_TRUE(node.received.empty());
}

TEST_F(DictationControllerTest, ReportsMissingPermission)
{
    for (const auto status : { Status::notDetermined, Status::denied, Status::restricted }) {
        controller.emplace(machine.platform, vocabulary);
        Node node;
        toggle(node);
        answer(status);
        EXPECT_EQ(message(), "Speech recognition permission is required.");
        EXPECT_TRUE(isIdle());
        EXPECT_TRUE(node.received.empty());
    }
    EXPECT_TRUE(speech.recognitions.empty());
}

TEST_F(DictationControllerTest, ReportsAMissingRecognizer)
{
    speech.hasRecognizer = false;
    Node node;
    start(node);
    EXPECT_EQ(message(), "Speech recognition is temporarily unavailable.");
    EXPECT_EQ(speech.events, Texts({ "request authorization" }));
    EXPECT_TRUE(isIdle());
}

TEST_F(DictationControllerTest, ReportsAnUnavailableRecognizer)
{
    speech.isAvailable = false;
    Node node;
    start(node);
    EXPECT_EQ(message(), "Speech recognition is temporarily unavailable.");
    EXPECT_EQ(speech.events, Texts({ "request authorization" }));

    speech.isAvailable = true;
    start(node);
    EXPECT_EQ(message(), "");
    EXPECT_EQ(controller->activeBlockID().get(), node.id);
}

TEST_F(DictationControllerTest, FindsARecognizerInstalledMeanwhile)
{
    speech.hasRecognizer = false;
    Node node;
    start(node);
    speech.hasRecognizer = true;
    start(node);
    EXPECT_EQ(controller->activeBlockID().get(), node.id);
}

TEST_F(DictationControllerTest, KeepsTheMessageUntilTheNextStart)
{
    Node node;
    toggle(node);
    answer(Status::denied);
    const std::string denied = "Speech recognition permission is required.";
    controller->stop();
    EXPECT_EQ(message(), denied);
    toggle(node);
    EXPECT_EQ(message(), denied) << "only a start clears it";
    answer();
    EXPECT_EQ(message(), "");
    toggle(node);
    EXPECT_EQ(message(), "");
}

TEST_F(DictationControllerTest, StartsInOrder)
{
    Node node;
    start(node);
    EXPECT_EQ(speech.events, Texts({ "request authorization", "make request", "install tap",
                                     "start task", "start engine" }));
    EXPECT_EQ(speech.tapBufferSize, 1024);
}

TEST_F(DictationControllerTest, IsActiveOnlyWhileTheMicrophoneIsOpen)
{
    Node node;
    std::vector<bool> wasRunning;
    const auto subscription = controller->activeBlockID().sink([&](const auto &active) {
        if (active)
            wasRunning.push_back(speech.isEngineRunning);
    });
    toggle(node);
    EXPECT_FALSE(controller->activeBlockID().get());
    answer();
    EXPECT_EQ(wasRunning, std::vector<bool>({ true }));
}

TEST_F(DictationControllerTest, EndsTheSessionBeforeItCommits)
{
    Node node { .text = "a" };
    bool wasIdle = false;
    controller->toggle(node.id, node.text, [&](const std::string &) { wasIdle = isIdle(); });
    answer();
    controller->toggle(node.id, node.text, [](const std::string &) {});
    EXPECT_TRUE(wasIdle);
}

TEST_F(DictationControllerTest, PassesCapturedAudioToTheRequest)
{
    Node node;
    start(node);
    speech.capture({ 1, 2, 3 });
    speech.capture({ 4 });
    EXPECT_EQ(speech.recognitions[0]->samples, std::vector<std::int16_t>({ 1, 2, 3, 4 }));
    EXPECT_FALSE(speech.recognitions[0]->hasEnded);
    toggle(node);
    EXPECT_TRUE(speech.recognitions[0]->hasEnded);
    EXPECT_EQ(speech.recognitions[0]->cancellations, 1);
}

TEST_F(DictationControllerTest, FailsTheRequestWhenTheMicrophoneIsUnplugged)
{
    Node node { .text = "a" };
    start(node);
    std::thread([this] { speech.tap->fail(); }).join();
    EXPECT_TRUE(speech.recognitions[0]->hasFailed);
    fail(); // as a real recogniser does then
    EXPECT_TRUE(isIdle());
    EXPECT_EQ(node.received, Texts({ "a" }));
}

TEST_F(DictationControllerTest, StartsTwiceIfToggledTwiceBeforeAuthorization)
{
    Node node { .text = "a" };
    toggle(node);
    toggle(node);
    EXPECT_EQ(speech.authorizationRequests.size(), 2U);
    EXPECT_TRUE(node.received.empty());
    speech.answer(0);
    settle();
    speech.answer(1);
    settle();
    EXPECT_EQ(controller->activeBlockID().get(), node.id);
    deliver(0, "from the first");
    EXPECT_TRUE(node.received.empty());
    deliver(1, "from the second");
    EXPECT_EQ(node.text, "a from the second");
    toggle(node);
    EXPECT_TRUE(isIdle());
}

TEST_F(DictationControllerTest, IgnoresASecondStop)
{
    Node node { .text = "a" };
    start(node);
    controller->stop();
    speech.events.clear();
    controller->stop();
    EXPECT_TRUE(speech.events.empty());
    EXPECT_EQ(node.received, Texts({ "a" }));
}

TEST_F(DictationControllerTest, IgnoresCallbacksAfterItsDestruction)
{
    Node node { .text = "a" };
    toggle(node);
    controller.reset();
    answer();
    EXPECT_EQ(speech.events, Texts({ "request authorization" }));

    controller.emplace(machine.platform, vocabulary);
    start(node);
    speech.deliver(0, SpeechRecognitionResult { "words", true });
    controller.reset();
    settle();
    EXPECT_TRUE(node.received.empty());
}

TEST_F(DictationControllerTest, LetsTheHandlerStopTheDictation)
{
    Node node;
    Texts received;
    controller->toggle(node.id, "", [&](const std::string &text) {
        received.push_back(text);
        controller->stop();
    });
    answer();
    recognize("words", true);
    EXPECT_EQ(received, Texts({ "words", "words" }));
    EXPECT_TRUE(isIdle());
}

} // namespace
