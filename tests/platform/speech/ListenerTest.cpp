// The real listener with Debian's model and synthetic voices.

#include "fakes/FakeVocabulary.h"
#include "fakes/FileSizeLimit.h"
#include "fakes/TestFiles.h"
#include "platform/desktop/QtMainQueue.h"
#include "platform/speech/ListenerRecognizer.h"
#include "platform/speech/ModelInquiry.h"
#include "platform/speech/Recognition.h"
#include "platform/speech/Voice.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace
{

using namespace std::chrono_literals;
using Words = std::vector<std::string>;

class ListenerTest : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        unsetenv("LC_ALL");
        unsetenv("LC_MESSAGES");
        setenv("LANG", "en_US.UTF-8", 1);
    }

    void SetUp() override
    {
        if (!Voice::say("test"))
            GTEST_SKIP() << "flite, the voice synthesizer, is not installed";
        if (!listenerHasModel(LISTENER))
            GTEST_SKIP() << "pocketsphinx-en-us, the model, is not installed";
    }

    std::string transcribe(const std::vector<std::int16_t> &samples)
    {
        const Recognition recognition(recognizer);
        recognition.request->append(samples);
        recognition.request->endAudio();
        EXPECT_TRUE(recognition.waitForEnd());
        EXPECT_EQ(recognition.errors(), 0);
        texts = recognition.texts();
        return recognition.finalText().value_or("");
    }

    std::string transcribe(const std::string &sentence)
    {
        return transcribe(*Voice::say(sentence));
    }

    QtMainQueue mainQueue;
    // Includes loading the model on a busy machine.
    FakeVocabulary vocabulary;
    ListenerRecognizer recognizer { { LISTENER }, mainQueue, { .answer = 60s }, &vocabulary };
    std::vector<std::string> texts; // of the latest task
};

Words wordsIn(const std::string &text)
{
    std::istringstream stream(text);
    return { std::istream_iterator<std::string>(stream), {} };
}

bool hasWord(const std::string &text, const std::string &word)
{
    const auto words = wordsIn(text);
    return std::find(words.begin(), words.end(), word) != words.end();
}

/// The words may change with the version of the voice.
testing::AssertionResult differsByAtMostOneWord(const std::string &actual,
                                                const std::string &sentence)
{
    auto words = wordsIn(actual);
    std::replace(words.begin(), words.end(), std::string("I"), std::string("i"));
    const auto expected = wordsIn(sentence);
    std::size_t wrong = 0;
    for (std::size_t index = 0; index < std::min(words.size(), expected.size()); ++index)
        wrong += words[index] != expected[index];
    if (words.size() == expected.size() && wrong <= 1)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << actual;
}

TEST_F(ListenerTest, UnderstandsPlainSentences)
{
    for (const std::string sentence : { "compare these two offers and tell me which one is better",
                                        "suggest a better title for this article",
                                        "how can i learn to play the piano without a teacher" })
        EXPECT_TRUE(differsByAtMostOneWord(transcribe(sentence), sentence)) << sentence;
}

TEST_F(ListenerTest, UnderstandsWithoutItsAdaptedDictionary)
{
    const std::string sentence = "suggest a better title for this article";
    const auto samples = *Voice::say(sentence);
    const FileSizeLimit limit(1000);
    EXPECT_TRUE(differsByAtMostOneWord(transcribe(samples), sentence));
}

TEST_F(ListenerTest, ReportsWordsWhileTheyAreSpoken)
{
    transcribe("tell me a story about a dog who wanted to fly");
    ASSERT_GE(texts.size(), 4U);
    EXPECT_LT(texts[1].size(), texts.back().size() / 2);
    for (const auto &text : texts)
        EXPECT_LE(text.size(), texts.back().size() + 10);
}

TEST_F(ListenerTest, KeepsTheWordsBeforeAPause)
{
    const std::string first = "suggest a better title for this article";
    const std::string second = "compare these two offers and tell me which one is better";
    auto samples = *Voice::say(first);
    const auto more = *Voice::say(second);
    samples.insert(samples.end(), more.begin(), more.end());
    EXPECT_TRUE(differsByAtMostOneWord(transcribe(samples), first + ' ' + second));
    EXPECT_TRUE(std::any_of(texts.begin(), texts.end(), [&first](const auto &text) {
        return differsByAtMostOneWord(text, first);
    }));
}

TEST_F(ListenerTest, ReportsNothingForSilence)
{
    EXPECT_EQ(transcribe(Voice::silence(80'000)), "");
    EXPECT_EQ(transcribe(std::vector<std::int16_t>(80'000)), "");
    EXPECT_EQ(transcribe(std::vector<std::int16_t> {}), "");
}

TEST_F(ListenerTest, SurvivesNoise)
{
    std::vector<std::int16_t> samples(32'000);
    for (std::size_t index = 0; index < samples.size(); ++index)
        samples[index] = static_cast<std::int16_t>((index * index * 7'919) >> 3);
    transcribe(samples);
    EXPECT_TRUE(differsByAtMostOneWord(transcribe("summarize the following text"),
                                       "summarize the following text"));
}

TEST_F(ListenerTest, UnderstandsAddedWords)
{
    transcribe("summarize the following text"); // adapts to the voice
    EXPECT_TRUE(hasWord(transcribe("explain this regecks step by step"), "regex"));
    EXPECT_TRUE(hasWord(transcribe("write the c s s for this page"), "css"));
    EXPECT_TRUE(hasWord(transcribe("clean up the h t m l of this page"), "html"));
    EXPECT_TRUE(hasWord(transcribe("open the u r l in the browser"), "url"));
    EXPECT_TRUE(hasWord(transcribe("summarize this p d f"), "pdf"));
    EXPECT_TRUE(hasWord(transcribe("build a simple chat bot"), "chatbot"));
    EXPECT_TRUE(hasWord(transcribe("use type script"), "typescript"));
}

TEST_F(ListenerTest, LearnsTheUsersWords)
{
    if (!std::filesystem::exists("/usr/lib/x86_64-linux-gnu/libespeak-ng.so.1") &&
        !std::filesystem::exists("/usr/lib/aarch64-linux-gnu/libespeak-ng.so.1"))
        GTEST_SKIP() << "libespeak-ng1 is not installed";
    const auto sentence = *Voice::say("add a tool tip to the web hook");
    EXPECT_FALSE(hasWord(transcribe(sentence), "WebHook"));
    vocabulary.texts = { "Explain what the WebHook receives.",
                         "Show a tooltip below the WebHook." };
    ++vocabulary.number;
    transcribe(sentence);
    EXPECT_TRUE(hasWord(texts.back(), "WebHook")) << texts.back();
    EXPECT_TRUE(hasWord(texts.back(), "tooltip")) << texts.back();
    vocabulary.texts.clear();
    ++vocabulary.number;
    EXPECT_FALSE(hasWord(transcribe(sentence), "WebHook")) << "learnt words are forgotten";
}

TEST_F(ListenerTest, LearnsOnlyKnownWordsWithoutPronunciations)
{
    const QTemporaryDir folder; // hides the library behind a file that cannot be loaded
    TestFiles::write(folder.filePath(QStringLiteral("libespeak-ng.so.1")).toStdString(), "");
    setenv("LD_LIBRARY_PATH", folder.path().toStdString().c_str(), 1);
    vocabulary.texts = { "Explain what the WebHook receives.", "summarize the following Text" };
    testing::internal::CaptureStderr();
    const auto withNewWord = transcribe("explain the web hook");
    const auto withKnownWord = transcribe("summarize the following text");
    unsetenv("LD_LIBRARY_PATH");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_FALSE(hasWord(withNewWord, "WebHook")) << withNewWord;
    EXPECT_TRUE(hasWord(withKnownWord, "Text")) << withKnownWord;
}

TEST_F(ListenerTest, PrefersTheUsersPairsOfWords)
{
    const std::string sentence = "comb the mane of the horse"; // "main" sounds the same
    const auto samples = *Voice::say(sentence);
    transcribe(samples); // adapts to the voice
    const auto before = transcribe(samples);
    EXPECT_FALSE(hasWord(before, "mane")) << before;
    vocabulary.texts = { sentence };
    ++vocabulary.number;
    const auto after = transcribe(samples);
    EXPECT_TRUE(hasWord(after, "mane")) << after;
    EXPECT_TRUE(differsByAtMostOneWord(after, sentence));
}

TEST_F(ListenerTest, LearnsLargeLibraries)
{
    std::string text;
    for (std::size_t number = 0; number < 300'000; ++number) {
        for (auto rest = number * 7'919 % 500'000 + 26 * 26; rest > 0; rest /= 26)
            text += static_cast<char>('a' + rest % 26);
        text += number % 10 == 9 ? ".\n" : " ";
    }
    vocabulary.texts.assign(20, text);
    EXPECT_TRUE(differsByAtMostOneWord(transcribe("write a short answer to this email"),
                                       "write a short answer to this email"));
}

TEST_F(ListenerTest, SplitsALongUtteranceWithoutLosingWords)
{
    constexpr auto Sentence = "tell me a story about a dog who wanted to fly and about a cat who "
                              "was afraid of the water and about a bird who lived in the forest "
                              "and about an old man who read the newspaper every morning and "
                              "about a young woman who opened a small shop in the city";
    const auto spoken = *Voice::say(Sentence);
    std::vector<std::int16_t> samples;
    for (int round = 0; round < 3; ++round) // without a pause between them
        samples.insert(samples.end(), spoken.begin() + 8'000, spoken.end() - 16'000);
    ASSERT_GT(samples.size(), 40U * 16'000);
    EXPECT_NEAR(static_cast<double>(wordsIn(transcribe(samples)).size()), 3 * 54, 15);
}

TEST_F(ListenerTest, UnderstandsTheNextTaskAfterCancels)
{
    const auto sentence = *Voice::say("suggest a better title for this article");
    transcribe(sentence);
    for (int round = 0; round < 3; ++round) {
        const Recognition cancelled(recognizer);
        cancelled.request->append(sentence);
        QTest::qWait(20);
        cancelled.task->cancel();
    }
    EXPECT_TRUE(
        differsByAtMostOneWord(transcribe(sentence), "suggest a better title for this article"));
}

TEST(ListenerInquiryTest, FindsAModelForTheLanguage)
{
    const QTemporaryDir folder;
    const auto nothing = folder.filePath(QStringLiteral("nothing")).toStdString();
    setenv("XDG_DATA_HOME", nothing.c_str(), 1);
    setenv("XDG_DATA_DIRS", nothing.c_str(), 1);
    EXPECT_FALSE(listenerHasModel(LISTENER));
    EXPECT_FALSE(listenerHasModel(nothing));
    unsetenv("XDG_DATA_HOME");
    unsetenv("XDG_DATA_DIRS");
    setenv("LANG", "xx_XX", 1);
    EXPECT_FALSE(listenerHasModel(LISTENER));
    setenv("LANG", "en_GB.UTF-8", 1);
    EXPECT_EQ(listenerHasModel(LISTENER),
              std::filesystem::exists("/usr/share/pocketsphinx/model/en-us/en-us.lm.bin"));
}

TEST(ListenerInquiryTest, GivesUpAfterTheTimeout)
{
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_FALSE(listenerHasModel("/usr/bin/yes", 200ms)) << "another program";
    EXPECT_FALSE(listenerHasModel(TEST_LISTENER, 200ms));
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 5s);
}

} // namespace
