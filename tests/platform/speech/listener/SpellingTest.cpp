#include "platform/speech/listener/Spelling.h"

#include <gtest/gtest.h>

namespace
{

UserVocabulary vocabularyOf(const std::string &key, const std::string &spelling)
{
    UserVocabulary vocabulary;
    vocabulary.words.push_back({ .key = key, .spelling = spelling, .count = 1 });
    return vocabulary;
}

TEST(SpellingTest, CapitalizesTheEnglishI)
{
    const Spelling spelling("en-gb");
    EXPECT_EQ(spelling.spell("i"), "I");
    EXPECT_EQ(spelling.spell("i'm"), "I'm");
    EXPECT_EQ(spelling.spell("it"), "it");
}

TEST(SpellingTest, KeepsTheWordsOfOtherLanguages)
{
    for (const auto *const tag : { "it-it", "pl", "enm", "" })
        EXPECT_EQ(Spelling(tag).spell("i"), "i") << tag;
}

TEST(SpellingTest, SpellsWordsAsTheUserDoes)
{
    Spelling spelling("en-us");
    spelling.learn(vocabularyOf("json", "JSON"));
    EXPECT_EQ(spelling.spell("json"), "JSON");
    EXPECT_EQ(spelling.spell("jason"), "jason");
}

TEST(SpellingTest, ForgetsEarlierVocabularies)
{
    Spelling spelling("en-us");
    spelling.learn(vocabularyOf("json", "JSON"));
    spelling.learn(vocabularyOf("naive", "naïve"));
    EXPECT_EQ(spelling.spell("json"), "json");
    EXPECT_EQ(spelling.spell("naive"), "naïve");
}

} // namespace
