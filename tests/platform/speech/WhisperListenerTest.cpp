// The real listener with tiny models of whisper.cpp.

#include "fakes/TestFiles.h"
#include "platform/speech/ListenerFixture.h"
#include "platform/speech/ModelInquiry.h"
#include "platform/speech/Voice.h"
#include "platform/speech/listener/ArtificialVoice.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace
{

using namespace std::chrono_literals;
using ArtificialVoice::Second;
using ArtificialVoice::vowel;
using Path = std::filesystem::path;

const Path PocketSphinxModel = "/usr/share/pocketsphinx/model/en-us/en-us.lm.bin";

class WhisperListenerTest : public ListenerFixture
{
protected:
    void install(const std::string &bytes) const { TestFiles::write(modelFile, bytes); }

    /// The final text; empty after an error.
    std::string transcribe(const std::vector<std::int16_t> &samples)
    {
        ListenerRecognizer recognizer(listener, mainQueue, { .answer = 60s });
        const Recognition recognition(recognizer);
        recognition.request->append(samples);
        recognition.request->endAudio();
        EXPECT_TRUE(recognition.waitForEnd());
        texts = recognition.texts();
        return recognition.finalText().value_or("");
    }

    /// Whether PocketSphinx recognises a sentence, although there is a model of whisper.cpp.
    bool usesPocketSphinx()
    {
        const auto text = transcribe(*Voice::say("summarize the following text"));
        return text.find("following") != std::string::npos;
    }

    const std::string model = TestFiles::read(WHISPER_MODELS "/whisper-english.bin");
    const Path data = folder.path().toStdString();
    const Path modelFile = data / "whisper.cpp/models/ggml-tiny.en.bin";
    const std::vector<std::string> listener { "/usr/bin/env", "LC_ALL=C",
                                              "XDG_DATA_HOME=" + data.string(), LISTENER };
    std::vector<std::string> texts;
};

TEST_F(WhisperListenerTest, WritesATextWithCapitalsAndPunctuation)
{
    install(model);
    const auto text = transcribe(vowel(12 * Second));
    EXPECT_TRUE(text.starts_with("One, two, three, four,")) << text;
    EXPECT_GT(texts.size(), 1U) << "partial results";
    for (const auto &partialText : texts)
        EXPECT_TRUE(text.starts_with(partialText)) << partialText;
}

TEST_F(WhisperListenerTest, EndsDuringAPassIfItsProgramNeedsItNoMore)
{
    install(model);
    const auto begin = [this] {
        ListenerRecognizer recognizer(listener, mainQueue, { .answer = 60s });
        const Recognition recognition(recognizer);
        recognition.request->append(vowel(20 * Second));
        EXPECT_TRUE(waitUntil([&recognition] { return !recognition.texts().empty(); }));
        EXPECT_FALSE(children().empty());
        recognition.task->cancel();
        return Clock::now();
    }();
    EXPECT_TRUE(children().empty());
    EXPECT_LT(Clock::now() - begin, 5s);
}

TEST_F(WhisperListenerTest, ServesTheNextTaskAfterACancel)
{
    install(model);
    ListenerRecognizer recognizer(listener, mainQueue, { .answer = 60s });
    const Recognition cancelled(recognizer);
    cancelled.request->append(vowel(10 * Second));
    EXPECT_TRUE(waitUntil([&cancelled] { return !cancelled.texts().empty(); }));
    cancelled.task->cancel();
    const Recognition next(recognizer);
    next.request->append(vowel(Second / 2));
    next.request->endAudio();
    EXPECT_TRUE(next.waitForEnd());
    const auto text = next.finalText().value_or("");
    EXPECT_TRUE(text.starts_with("One,")) << text;
    EXPECT_EQ(text.find("three"), std::string::npos) << "words of the cancelled task";
}

TEST_F(WhisperListenerTest, FallsBackToPocketSphinxWithoutAUsableModel)
{
    if (!std::filesystem::exists(PocketSphinxModel) || !Voice::say("test"))
        GTEST_SKIP() << "pocketsphinx-en-us, the model, or flite is not installed";
    install(model.substr(0, model.size() - 1'000));
    EXPECT_TRUE(usesPocketSphinx()) << "truncated";
    install(std::string(1'000'000, '\xFF'));
    EXPECT_TRUE(usesPocketSphinx()) << "another file";
    auto bytes = model;
    bytes.replace(bytes.find("decoder.ln.weight"), 7, "encoder");
    install(bytes);
    EXPECT_TRUE(usesPocketSphinx()) << "rejected by the library";
}

TEST_F(WhisperListenerTest, EndsTheTaskWithDamagedWeights)
{
    auto bytes = model;
    const auto weights = bytes.find("encoder.conv1.weight") + 100;
    std::fill_n(bytes.begin() + static_cast<std::ptrdiff_t>(weights), 10'000, '\xFF');
    install(bytes);
    transcribe(vowel(3 * Second));
}

TEST_F(WhisperListenerTest, HasAModelForTheLanguagesOfTheFile)
{
    const auto hasModel = [this](const std::string &locale) {
        setenv("XDG_DATA_HOME", data.c_str(), 1);
        setenv("XDG_DATA_DIRS", (data / "nothing").c_str(), 1);
        setenv("LC_ALL", locale.c_str(), 1);
        return listenerHasModel(LISTENER);
    };
    EXPECT_FALSE(hasModel("en_US.UTF-8"));
    install(model);
    EXPECT_TRUE(hasModel("en_US.UTF-8"));
    EXPECT_FALSE(hasModel("de_AT.UTF-8"));
    install(TestFiles::read(WHISPER_MODELS "/whisper-multilingual.bin"));
    EXPECT_TRUE(hasModel("de_AT.UTF-8"));
}

} // namespace
