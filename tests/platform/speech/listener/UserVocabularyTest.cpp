#include "platform/speech/listener/UserVocabulary.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <set>
#include <string>

namespace
{

class UserVocabularyTest : public testing::Test
{
protected:
    UserVocabulary choose() const
    {
        return UserVocabulary::choose(
            counts, [this](const std::string &key) { return known.contains(key); });
    }

    /// The keys, new words marked by "+".
    static std::string keysOf(const UserVocabulary &vocabulary)
    {
        std::string keys;
        for (const auto &word : vocabulary.words)
            keys += (word.isNew ? "+" : "") + word.key + ' ';
        return keys;
    }

    std::string spellingOf(const std::string &key) const
    {
        for (const auto &word : choose().words) {
            if (word.key == key)
                return word.spelling;
        }
        return {};
    }

    WordCounts counts;
    std::set<std::string> known;
};

TEST_F(UserVocabularyTest, PutsProminentAndFrequentWordsFirst)
{
    known = { "use" };
    counts.add("kotlin kotlin use use use svelte", false);
    counts.add("figma priya priya", true);
    EXPECT_EQ(keysOf(choose()), "+priya +figma use +kotlin +svelte ");
}

TEST_F(UserVocabularyTest, LeavesOutNewWordsOfOneLetter)
{
    known = { "a" };
    counts.add("a q figma", false);
    EXPECT_EQ(keysOf(choose()), "a +figma ");
}

TEST_F(UserVocabularyTest, KeepsPairsOfTheChosenWords)
{
    known = { "a" };
    counts.add("a figma q", false);
    const auto vocabulary = choose();
    ASSERT_EQ(vocabulary.pairs.size(), 2U);
    EXPECT_EQ(vocabulary.words[vocabulary.pairs[0].first].key, "a");
    EXPECT_EQ(vocabulary.words[vocabulary.pairs[0].second].key, "figma");
    EXPECT_EQ(vocabulary.pairs[1].first, WordCounts::Pair::SentenceEnd);
}

TEST_F(UserVocabularyTest, LimitsNewWords)
{
    std::string rare;
    for (std::size_t number = 0; number < UserVocabulary::MaxNewWords + 100; ++number) {
        for (auto rest = number + 26 * 26 * 26; rest > 0; rest /= 26)
            rare += static_cast<char>('a' + rest % 26);
        rare += ' ';
    }
    counts.add(rare, false);
    counts.add("frequent, frequent", false);
    counts.add("prominent", true);
    const auto vocabulary = choose();
    EXPECT_EQ(vocabulary.words.size(), UserVocabulary::MaxNewWords);
    EXPECT_EQ(vocabulary.words[0].key, "prominent");
    EXPECT_EQ(vocabulary.words[1].key, "frequent");
}

TEST_F(UserVocabularyTest, SpellsWordsAsTheUserDoesMostOften)
{
    known = { "naive" };
    counts.add("a json file, JSON here, JSON there, a naïve plan", false);
    EXPECT_EQ(spellingOf("json"), "JSON");
    EXPECT_EQ(spellingOf("naive"), "naïve");
}

TEST_F(UserVocabularyTest, SpellsOnlyNewWordsAsAtTheBeginningOfSentences)
{
    known = { "write" };
    counts.add("Write it. Kubernetes runs it", false);
    EXPECT_EQ(spellingOf("write"), "write");
    EXPECT_EQ(spellingOf("kubernetes"), "Kubernetes");
}

TEST_F(UserVocabularyTest, SpellsKnownWordsInLowerCaseIfTheyMostlyBeginSentences)
{
    known = { "write", "tests", "anna" };
    counts.add("Write one. Write two. Write three. Ask Anna, not anna. Call Anna", false);
    counts.add("DO NOT WRITE TESTS", false);
    EXPECT_EQ(spellingOf("write"), "write");
    EXPECT_EQ(spellingOf("tests"), "TESTS");
    EXPECT_EQ(spellingOf("anna"), "Anna");
}

TEST_F(UserVocabularyTest, KeepsAccentsOfWordsThatBeginSentences)
{
    known = { "naive" };
    counts.add("a naïve plan. Naïve code. Naïve tests. NAIVE", false);
    EXPECT_EQ(spellingOf("naive"), "naïve");
}

TEST_F(UserVocabularyTest, IgnoresTheBeginningOfSentencesIfNewWordsAreElsewhere)
{
    counts.add("Svelte is fast. Svelte is small. Use SVELTE", false);
    EXPECT_EQ(spellingOf("svelte"), "SVELTE");
}

TEST_F(UserVocabularyTest, IsEmptyWithoutWords)
{
    EXPECT_TRUE(choose().words.empty());
    EXPECT_TRUE(choose().pairs.empty());
}

} // namespace
