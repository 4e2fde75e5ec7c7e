#include "library/SearchWord.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

namespace
{

TEST(SearchWordTest, FindsAWordAtEveryOffset)
{
    for (std::size_t before = 0; before < 40; ++before) {
        for (std::size_t after = 0; after < 20; ++after) {
            const std::string text = std::string(before, '-') + "Word" + std::string(after, '-');
            EXPECT_EQ(SearchWord("word").find(text), before);
            EXPECT_EQ(SearchWord("word").find(text, before), before);
            EXPECT_EQ(SearchWord("word").find(text, before + 1), std::string::npos);
        }
    }
}

TEST(SearchWordTest, FindsAWordOfAnotherScriptAtEveryOffset)
{
    // Letters that share a byte with one of the word.
    const std::string other = "рбаз";
    for (std::size_t before = 0; before < 20; ++before) {
        const std::string text = std::string(before, '-') + other + "слово" + other;
        EXPECT_EQ(SearchWord("слово").find(text), before + other.size());
        EXPECT_EQ(SearchWord("я").find(text), std::string::npos);
        EXPECT_EQ(SearchWord("日").find(text + "日"), text.size());
    }
}

TEST(SearchWordTest, FindsOverlappingMatches)
{
    const SearchWord word("aa");
    EXPECT_EQ(word.find("aaa"), 0);
    EXPECT_EQ(word.find("aaa", 1), 1);
    EXPECT_EQ(word.find("aaa", 2), std::string::npos);
}

TEST(SearchWordTest, IgnoresTheCaseOfAsciiLettersOnly)
{
    EXPECT_EQ(SearchWord("k").find("K"), 0);
    EXPECT_EQ(SearchWord("[").find("{"), std::string::npos);
    EXPECT_EQ(SearchWord("{").find("["), std::string::npos);
    EXPECT_EQ(SearchWord("@").find("`"), std::string::npos);
    EXPECT_EQ(SearchWord("0").find("\x10"), std::string::npos);
}

TEST(SearchWordTest, FindsNothingInATextThatIsTooShort)
{
    EXPECT_EQ(SearchWord("word").find(""), std::string::npos);
    EXPECT_EQ(SearchWord("word").find("wor"), std::string::npos);
    EXPECT_EQ(SearchWord("word").find("word", 5), std::string::npos);
}

TEST(SearchWordTest, RanksWholeWordsAboveBeginningsAboveOtherMatches)
{
    const SearchWord word("art");
    EXPECT_EQ(word.bestRank("nothing"), MatchRank::none);
    EXPECT_EQ(word.bestRank("a party"), MatchRank::inside);
    EXPECT_EQ(word.bestRank("a part"), MatchRank::inside);
    EXPECT_EQ(word.bestRank("some article"), MatchRank::wordPrefix);
    EXPECT_EQ(word.bestRank("(art)"), MatchRank::wholeWord);
    EXPECT_EQ(word.bestRank("ART"), MatchRank::wholeWord);
}

TEST(SearchWordTest, RanksTheBestMatch)
{
    const SearchWord word("art");
    EXPECT_EQ(word.bestRank("party, article, art"), MatchRank::wholeWord);
    EXPECT_EQ(word.bestRank("party, article, cart"), MatchRank::wordPrefix);
}

TEST(SearchWordTest, LettersDigitsAndMarksOfAllScriptsMakeWords)
{
    EXPECT_EQ(SearchWord("art").bestRank("жart"), MatchRank::inside);
    EXPECT_EQ(SearchWord("art").bestRank("artж"), MatchRank::wordPrefix);
    EXPECT_EQ(SearchWord("art").bestRank("art2"), MatchRank::wordPrefix);
    EXPECT_EQ(SearchWord("art").bestRank("“art”"), MatchRank::wholeWord);
    EXPECT_EQ(SearchWord("ท").bestRank("ที่"), MatchRank::wordPrefix);
    EXPECT_EQ(SearchWord("本").bestRank("日本語"), MatchRank::inside);
    EXPECT_EQ(SearchWord("👍").bestRank("ok👍ok"), MatchRank::wholeWord);
}

TEST(SearchWordTest, SymbolsNeedNoBoundaryOfWords)
{
    EXPECT_EQ(SearchWord("://").bestRank("https://example.org"), MatchRank::wholeWord);
    EXPECT_EQ(SearchWord("c++").bestRank("c++17"), MatchRank::wholeWord);
}

} // namespace
