#include "platform/speech/listener/WhisperEngine.h"

#include "fakes/TestFiles.h"
#include "platform/speech/listener/ArtificialVoice.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace
{

using ArtificialVoice::PieceSize;
using ArtificialVoice::quietRoom;
using ArtificialVoice::Second;
using ArtificialVoice::vowel;
using Path = std::filesystem::path;
using Samples = ArtificialVoice::Samples;

/// The model of make_whisper_model.py counts the seconds of a voice: "One, two," and so on.
class WhisperEngineTest : public testing::Test
{
protected:
    static std::unique_ptr<RecognitionEngine> load(const std::string &kind)
    {
        return WhisperEngine::load({ .path = modelFile(kind), .tag = "en-us" });
    }

    static Path modelFile(const std::string &kind)
    {
        return WHISPER_MODELS "/whisper-" + kind + ".bin";
    }

    void install(const std::string &name, const std::string &kind) const
    {
        std::filesystem::create_directories(models);
        std::filesystem::copy_file(modelFile(kind), models / name);
    }

    std::optional<SpeechModel> find(const std::string &tag) const
    {
        return WhisperEngine::find(SpeechModels({ data }), tag);
    }

    /// Passes samples to the engine and collects its texts.
    void hear(const Samples &samples)
    {
        for (std::span<const std::int16_t> rest(samples); !rest.empty();) {
            const auto piece = rest.first(std::min(rest.size(), PieceSize));
            const auto hypothesis = engine->process(piece);
            auto &texts = hypothesis.isUtteranceOver ? utterances : partialTexts;
            if (texts.empty() || texts.back() != hypothesis.words || &texts == &utterances)
                texts.push_back(hypothesis.words);
            rest = rest.subspan(piece.size());
        }
    }

    QTemporaryDir folder;
    Path data = folder.path().toStdString();
    Path models = data / "whisper.cpp/models";
    std::unique_ptr<RecognitionEngine> engine = load("english");
    std::vector<std::string> partialTexts;
    std::vector<std::string> utterances;
};

std::size_t wordCount(const std::string &text)
{
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), ' '));
}

TEST_F(WhisperEngineTest, FindsTheUsersModel)
{
    EXPECT_EQ(find("en-us"), std::nullopt);
    install("ggml-tiny.bin", "multilingual");
    EXPECT_EQ(find("en-us"), (SpeechModel { .path = models / "ggml-tiny.bin", .tag = "en-us" }));
    EXPECT_EQ(find("de-at"), (SpeechModel { .path = models / "ggml-tiny.bin", .tag = "de-at" }));
    EXPECT_TRUE(find("nb-no"));
    EXPECT_FALSE(find("yue-hk")) << "a language of later models";
    EXPECT_FALSE(find("xx-xx"));
    EXPECT_FALSE(find(""));
}

TEST_F(WhisperEngineTest, UsesEnglishModelsForEnglishOnly)
{
    install("ggml-tiny.en.bin", "english");
    EXPECT_TRUE(find("en-gb"));
    EXPECT_FALSE(find("de-de"));
}

TEST_F(WhisperEngineTest, IgnoresOtherFiles)
{
    install("tiny.bin", "english");
    install("ggml-tiny.bin.part", "english");
    std::filesystem::create_directory(models / "ggml-folder.bin");
    TestFiles::write(models / "ggml-empty.bin", "");
    EXPECT_FALSE(find("en-us"));
}

TEST_F(WhisperEngineTest, IgnoresADamagedModel)
{
    const auto bytes = TestFiles::read(modelFile("english"));
    TestFiles::write(models / "ggml-a.bin", bytes.substr(0, bytes.size() / 2));
    EXPECT_FALSE(find("en-us"));
    install("ggml-b.bin", "english");
    EXPECT_EQ(find("en-us")->path, models / "ggml-b.bin");
}

TEST_F(WhisperEngineTest, LoadsNothingWithoutTheRightTensors)
{
    auto bytes = TestFiles::read(modelFile("english"));
    bytes.replace(bytes.find("decoder.ln.weight"), 7, "encoder");
    TestFiles::write(models / "ggml-a.bin", bytes);
    ASSERT_TRUE(find("en-us")) << "all sizes are right";
    EXPECT_EQ(WhisperEngine::load(*find("en-us")), nullptr);
}

TEST_F(WhisperEngineTest, LeavesTheWorkingFolderBecauseTheLibraryWouldLoadCodeFromIt)
{
    std::filesystem::current_path(data);
    ASSERT_TRUE(load("english"));
    EXPECT_EQ(std::filesystem::current_path(), "/");
}

TEST_F(WhisperEngineTest, WritesATextWithPunctuation)
{
    ASSERT_TRUE(engine);
    EXPECT_TRUE(engine->writesText());
    engine->begin();
    hear(vowel(4 * Second));
    const auto text = engine->finish();
    EXPECT_TRUE(text.starts_with(" One, two, three,")) << text;
}

TEST_F(WhisperEngineTest, WritesTheSameWithAMultilingualModel)
{
    engine = load("multilingual");
    ASSERT_TRUE(engine);
    engine->begin();
    hear(vowel(4 * Second));
    EXPECT_TRUE(engine->finish().starts_with(" One, two, three,"));
}

TEST_F(WhisperEngineTest, ShowsWordsWhileTheVoiceGoesOn)
{
    engine->begin();
    hear(vowel(14 * Second));
    const auto text = engine->finish();
    EXPECT_GE(partialTexts.size(), 2U);
    for (const auto &partialText : partialTexts) {
        EXPECT_TRUE(text.starts_with(partialText)) << partialText;
    }
    EXPECT_TRUE(std::is_sorted(partialTexts.begin(), partialTexts.end()));
    EXPECT_TRUE(utterances.empty());
}

TEST_F(WhisperEngineTest, ShowsAllWordsInAPause)
{
    engine->begin();
    hear(vowel(Second / 2)); // too short for a pass before the pause
    EXPECT_EQ(partialTexts.back(), "");
    hear(quietRoom(Second / 2));
    EXPECT_TRUE(utterances.empty());
    EXPECT_TRUE(partialTexts.back().starts_with(" One,"));
    EXPECT_EQ(partialTexts.back(), engine->finish());
}

TEST_F(WhisperEngineTest, ContinuesTheUtteranceAfterAShortPause)
{
    engine->begin();
    hear(vowel(2 * Second));
    hear(quietRoom(Second / 2));
    const auto before = wordCount(partialTexts.back());
    hear(vowel(6 * Second));
    EXPECT_TRUE(utterances.empty());
    EXPECT_GT(wordCount(engine->finish()), before);
}

TEST_F(WhisperEngineTest, EndsTheUtteranceInALongPause)
{
    engine->begin();
    hear(vowel(3 * Second));
    hear(quietRoom(2 * Second));
    ASSERT_EQ(utterances.size(), 1U);
    EXPECT_TRUE(utterances.front().starts_with(" One, two,")) << utterances.front();
    EXPECT_EQ(partialTexts.back(), "");
    EXPECT_EQ(engine->finish(), "");
}

TEST_F(WhisperEngineTest, UnderstandsAShortWord)
{
    engine->begin();
    hear(vowel(Second / 5));
    hear(quietRoom(2 * Second));
    EXPECT_EQ(utterances, (std::vector<std::string> { " One," }));
}

TEST_F(WhisperEngineTest, WritesNothingForSilence)
{
    engine->begin();
    hear(quietRoom(10 * Second));
    hear(Samples(10 * Second));
    EXPECT_EQ(partialTexts, (std::vector<std::string> { "" }));
    EXPECT_TRUE(utterances.empty());
    EXPECT_EQ(engine->finish(), "");
}

TEST_F(WhisperEngineTest, SplitsALongUtteranceWhereItIsQuietest)
{
    constexpr std::size_t ShortPause = Second / 10; // does not close the gate
    engine->begin();
    hear(vowel(22 * Second));
    hear(quietRoom(ShortPause));
    hear(vowel(6 * Second));
    ASSERT_EQ(utterances.size(), 1U);
    EXPECT_TRUE(utterances.front().ends_with(" twelve."));
    const auto rest = wordCount(engine->finish());
    EXPECT_GE(rest, 2U);
    EXPECT_LE(rest, 6U) << "six seconds";
}

TEST_F(WhisperEngineTest, ForgetsAnAbandonedDictation)
{
    engine->begin();
    hear(vowel(3 * Second));
    engine->abandon();
    engine->begin();
    EXPECT_EQ(engine->finish(), "");
}

} // namespace
