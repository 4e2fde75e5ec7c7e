// The listener itself, with the model that Debian has, hears synthetic voices.

#include "fakes/FileSizeLimit.h"
#include "platform/speech/ListenerInquiry.h"
#include "platform/speech/ListenerRecognizer.h"
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
#include <thread>
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
            GTEST_SKIP() << "flite, the voice, is not installed";
        if (!listenerHasModel(LISTENER, std::chrono::seconds(30)))
            GTEST_SKIP() << "pocketsphinx-en-us, the model, is not installed";
    }

    std::string hear(const std::vector<std::int16_t> &samples)
    {
        const Recognition recognition(recognizer);
        recognition.request->append(samples);
        recognition.request->endAudio();
        EXPECT_TRUE(recognition.waitForEnd());
        EXPECT_EQ(recognition.errors(), 0);
        texts = recognition.texts();
        return recognition.finalText().value_or("");
    }

    std::string hear(const std::string &sentence) { return hear(*Voice::say(sentence)); }

    // Loading the model counts, and a busy machine takes long for it.
    ListenerRecognizer recognizer { { LISTENER }, { .answer = 60s } };
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

/// Whether at most one word is another: what is understood may change with the voice's version.
testing::AssertionResult isNearly(const std::string &understood, const std::string &said)
{
    auto words = wordsIn(understood);
    std::replace(words.begin(), words.end(), std::string("I"), std::string("i"));
    const auto expected = wordsIn(said);
    std::size_t wrong = 0;
    for (std::size_t index = 0; index < std::min(words.size(), expected.size()); ++index)
        wrong += words[index] != expected[index];
    if (words.size() == expected.size() && wrong <= 1)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << understood;
}

TEST_F(ListenerTest, UnderstandsPlainSentences)
{
    for (const std::string sentence :
         { "summarize the following text", "suggest a better title for this article",
           "how can i learn to play the piano without a teacher" })
        EXPECT_TRUE(isNearly(hear(sentence), sentence)) << sentence;
}

TEST_F(ListenerTest, UnderstandsWhereItMayWriteNoDictionaryOfItsOwn)
{
    const std::string sentence = "summarize the following text";
    const auto samples = *Voice::say(sentence);
    const FileSizeLimit limit(1000);
    EXPECT_TRUE(isNearly(hear(samples), sentence));
}

TEST_F(ListenerTest, TellsTheWordsWhileTheyAreSaid)
{
    hear("tell me a story about a dog who wanted to fly");
    ASSERT_GE(texts.size(), 4U);
    EXPECT_LT(texts[1].size(), texts.back().size() / 2);
    for (const auto &text : texts)
        EXPECT_LE(text.size(), texts.back().size() + 10);
}

TEST_F(ListenerTest, KeepsWhatWasSaidBeforeAPause)
{
    const std::string first = "suggest a better title for this article";
    const std::string second = "summarize the following text";
    auto samples = *Voice::say(first);
    const auto more = *Voice::say(second);
    samples.insert(samples.end(), more.begin(), more.end());
    EXPECT_TRUE(isNearly(hear(samples), first + ' ' + second));
    EXPECT_TRUE(std::any_of(texts.begin(), texts.end(),
                            [&first](const auto &text) { return isNearly(text, first); }));
}

TEST_F(ListenerTest, HearsNothingInSilence)
{
    EXPECT_EQ(hear(Voice::silence(80'000)), "");
    EXPECT_EQ(hear(std::vector<std::int16_t>(80'000)), "");
    EXPECT_EQ(hear(std::vector<std::int16_t> {}), "");
}

TEST_F(ListenerTest, SurvivesNoise)
{
    std::vector<std::int16_t> samples(32'000);
    for (std::size_t index = 0; index < samples.size(); ++index)
        samples[index] = static_cast<std::int16_t>((index * index * 7'919) >> 3);
    hear(samples);
    EXPECT_TRUE(isNearly(hear("summarize the following text"), "summarize the following text"));
}

TEST_F(ListenerTest, UnderstandsAddedWords)
{
    hear("summarize the following text"); // so that the voice is known
    EXPECT_TRUE(hasWord(hear("explain this regecks step by step"), "regex"));
    EXPECT_TRUE(hasWord(hear("write the c s s for this page"), "css"));
    EXPECT_TRUE(hasWord(hear("clean up the h t m l of this page"), "html"));
    EXPECT_TRUE(hasWord(hear("open the u r l in the browser"), "url"));
    EXPECT_TRUE(hasWord(hear("summarize this p d f"), "pdf"));
    EXPECT_TRUE(hasWord(hear("build a simple chat bot"), "chatbot"));
    EXPECT_TRUE(hasWord(hear("use type script"), "typescript"));
}

TEST_F(ListenerTest, CutsASentenceThatNeverEndsWithoutLosingItsWords)
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
    EXPECT_NEAR(static_cast<double>(wordsIn(hear(samples)).size()), 3 * 54, 15);
}

TEST_F(ListenerTest, IsReadyForTheNextTaskSoonAfterACancel)
{
    const auto sentence = *Voice::say("suggest a better title for this article");
    hear(sentence);
    for (int round = 0; round < 3; ++round) {
        const Recognition cancelled(recognizer);
        cancelled.request->append(sentence);
        std::this_thread::sleep_for(20ms);
        cancelled.task->cancel();
    }
    EXPECT_TRUE(isNearly(hear(sentence), "suggest a better title for this article"));
}

TEST(ListenerInquiryTest, IsAnsweredByTheModelsThereAre)
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
    EXPECT_EQ(listenerHasModel(LISTENER, std::chrono::seconds(30)),
              std::filesystem::exists("/usr/share/pocketsphinx/model/en-us/en-us.lm.bin"));
}

TEST(ListenerInquiryTest, WaitsForNoListenerThatDoesNotAnswer)
{
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_FALSE(listenerHasModel("/usr/bin/yes", 200ms)); // a program that says something else
    EXPECT_FALSE(listenerHasModel(TEST_LISTENER, 200ms));
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 5s);
}

} // namespace
