#include "platform/speech/listener/RecognitionEngines.h"

#include <gtest/gtest.h>

#include <array>

namespace
{

std::optional<SpeechModel> findEnglish(const SpeechModels & /*models*/, std::string_view tag)
{
    if (!tag.starts_with("en"))
        return std::nullopt;
    return SpeechModel { .path = "english", .tag = "en-us" };
}

std::optional<SpeechModel> findAny(const SpeechModels & /*models*/, std::string_view tag)
{
    return SpeechModel { .path = "any", .tag = std::string(tag) };
}

std::string loadedTag;

std::unique_ptr<RecognitionEngine> load(const SpeechModel &model)
{
    loadedTag = model.tag;
    return nullptr;
}

class RecognitionEnginesTest : public testing::Test
{
protected:
    std::vector<std::string> choose(std::string_view tag) const
    {
        std::vector<std::string> models;
        for (const auto &choice : chooseRecognitionEngines(kinds, SpeechModels({}), tag))
            models.push_back(choice.model.path.string() + ' ' + choice.model.tag);
        return models;
    }

    const std::array<RecognitionEngineKind, 2> kinds { { { findEnglish, load },
                                                         { findAny, load } } };
};

TEST_F(RecognitionEnginesTest, OffersEveryEngineThatHasAModelInTheOrderOfTheTable)
{
    EXPECT_EQ(choose("en-gb"), (std::vector<std::string> { "english en-us", "any en-gb" }));
    EXPECT_EQ(choose("de-de"), (std::vector<std::string> { "any de-de" }));
}

TEST_F(RecognitionEnginesTest, LoadsTheModelThatItFound)
{
    const auto choices = chooseRecognitionEngines(kinds, SpeechModels({}), "en-gb");
    EXPECT_EQ(choices.front().load(), nullptr);
    EXPECT_EQ(loadedTag, "en-us");
}

TEST_F(RecognitionEnginesTest, HasNoEngineWithoutAModel)
{
    EXPECT_FALSE(recognitionEngineKinds().empty());
    EXPECT_TRUE(
        chooseRecognitionEngines(recognitionEngineKinds(), SpeechModels({}), "en-us").empty());
}

} // namespace
