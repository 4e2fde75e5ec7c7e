#include "platform/speech/listener/WordCounts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace
{

class WordCountsTest : public testing::Test
{
protected:
    const WordCounts::Word &word(const std::string &key) const
    {
        const auto &words = counts.words();
        return *std::find_if(words.begin(), words.end(),
                             [&key](const auto &candidate) { return candidate.key == key; });
    }

    std::string keyAt(std::uint32_t index) const
    {
        return index == WordCounts::Pair::SentenceEnd ? "." : counts.words().at(index).key;
    }

    /// How often the words follow each other; "." is the end of a sentence.
    std::uint32_t countOf(const std::string &first, const std::string &second) const
    {
        for (const auto &pair : counts.pairs()) {
            if (keyAt(pair.first) == first && keyAt(pair.second) == second)
                return pair.count;
        }
        return 0;
    }

    /// "SPELLING COUNT" for each spelling, and "+COUNT" for the beginning of sentences.
    std::string spellingsOf(const std::string &key) const
    {
        std::string text;
        for (const auto &[spelling, count, countAtBeginning] : word(key).spellings) {
            text += spelling + ' ' + std::to_string(count) + ' ';
            if (countAtBeginning > 0)
                text += '+' + std::to_string(countAtBeginning) + ' ';
        }
        return text;
    }

    WordCounts counts;
};

TEST_F(WordCountsTest, CountsWordsOfAllTexts)
{
    counts.add("red Red wine", false);
    counts.add("RED", false);
    EXPECT_EQ(counts.words().size(), 2U);
    EXPECT_EQ(word("red").count, 3U);
    EXPECT_EQ(word("wine").count, 1U);
}

TEST_F(WordCountsTest, CountsPairsWithinSentences)
{
    counts.add("red wine. red wine, red 7 wine", false);
    EXPECT_EQ(countOf("red", "wine"), 2U);
    EXPECT_EQ(countOf("wine", "red"), 1U) << "after the comma";
    EXPECT_EQ(countOf(".", "red"), 2U);
    EXPECT_EQ(countOf("wine", "."), 2U);
    EXPECT_EQ(countOf("red", "."), 0U) << "a number follows";
}

TEST_F(WordCountsTest, MarksWordsOfProminentTexts)
{
    counts.add("red wine", false);
    counts.add("white wine", true);
    EXPECT_FALSE(word("red").isProminent);
    EXPECT_TRUE(word("white").isProminent);
    EXPECT_TRUE(word("wine").isProminent);
}

TEST_F(WordCountsTest, CountsSpellings)
{
    counts.add("valid JSON, more Json, still JSON", false);
    EXPECT_EQ(spellingsOf("json"), "JSON 2 Json 1 ");
}

TEST_F(WordCountsTest, DistrustsCapitalsAtTheBeginningOfSentences)
{
    counts.add("Refactor this. JSON is text. kotlin rocks", false);
    EXPECT_EQ(spellingsOf("refactor"), "refactor 0 +1 ");
    EXPECT_EQ(word("refactor").fallbackSpelling, "Refactor");
    EXPECT_EQ(spellingsOf("json"), "JSON 1 ");
    EXPECT_EQ(spellingsOf("kotlin"), "kotlin 1 ");
}

TEST_F(WordCountsTest, CountsNoSpellingsOfTitles)
{
    counts.add("Sales Report", true, true);
    counts.add("Report it", false);
    counts.add("REPORT", false, true);
    EXPECT_EQ(spellingsOf("sales"), "");
    EXPECT_EQ(word("sales").fallbackSpelling, "Sales");
    EXPECT_EQ(spellingsOf("report"), "report 0 +1 ");
    EXPECT_EQ(word("report").fallbackSpelling, "Report");
    EXPECT_EQ(word("report").count, 3U);
    EXPECT_EQ(countOf("sales", "report"), 1U);
}

TEST_F(WordCountsTest, LimitsWordsAndPairs)
{
    const auto letter = [](std::size_t number) { return static_cast<char>('a' + number % 26); };
    std::string text;
    for (std::size_t number = 0; number < WordCounts::MaxWords + 10; ++number) {
        for (auto rest = number + 26 * 26 * 26; rest > 0; rest /= 26)
            text += letter(rest);
        text += ' ';
    }
    counts.add(text, false);
    EXPECT_EQ(counts.words().size(), WordCounts::MaxWords);
    counts.add(text, false);
    EXPECT_EQ(counts.words().front().count, 2U) << "known words are counted";
    for (int round = 0; round < 3; ++round) {
        std::string pairs;
        for (std::size_t index = 0; index + 7 < WordCounts::MaxWords; ++index)
            pairs += counts.words()[index].key + ' ' +
                     counts.words()[index + 2 + static_cast<std::size_t>(round)].key + '\n';
        counts.add(pairs, false);
    }
    EXPECT_EQ(counts.pairs().size(), WordCounts::MaxPairs);
}

} // namespace
