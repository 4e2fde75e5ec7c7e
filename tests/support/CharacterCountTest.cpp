#include "support/CharacterCount.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

constexpr std::size_t NoLimit = 1000;

TEST(CharacterCountTest, CountsLetters)
{
    EXPECT_EQ(characterCount("", NoLimit), 0U);
    EXPECT_EQ(characterCount("a", NoLimit), 1U);
    EXPECT_EQ(characterCount("New Tab", NoLimit), 7U);
}

TEST(CharacterCountTest, CountsAGraphemeOnce)
{
    EXPECT_EQ(characterCount("\u00E9", NoLimit), 1U);
    EXPECT_EQ(characterCount("e\u0301", NoLimit), 1U) << "a combining accent";
    EXPECT_EQ(characterCount("\U0001F600", NoLimit), 1U);
    EXPECT_EQ(characterCount("\U0001F44D\U0001F3FD", NoLimit), 1U) << "a skin tone";
    EXPECT_EQ(characterCount("\U0001F1F3\U0001F1F4", NoLimit), 1U) << "a flag";
    EXPECT_EQ(characterCount("\U0001F468\u200D\U0001F469\u200D\U0001F467", NoLimit), 1U)
        << "a family";
    EXPECT_EQ(characterCount("\u1112\u1161\u11AB", NoLimit), 1U) << "a Hangul syllable";
    EXPECT_EQ(characterCount("\r\n", NoLimit), 1U);
}

TEST(CharacterCountTest, CountsMixedText)
{
    EXPECT_EQ(characterCount("\u65E5\u672C\u8A9E", NoLimit), 3U);
    EXPECT_EQ(characterCount("cafe\u0301 \U0001F600", NoLimit), 6U);
}

TEST(CharacterCountTest, StopsAtTheLimit)
{
    EXPECT_EQ(characterCount("abc", 0), 0U);
    EXPECT_EQ(characterCount("abc", 2), 2U);
    EXPECT_EQ(characterCount("abc", 3), 3U);
    EXPECT_EQ(characterCount("abc", 4), 3U);
    EXPECT_EQ(characterCount(std::string(1'000'000, 'a'), 11), 11U);
}

TEST(CharacterCountTest, ExaminesOnlyTheBeginningOfAnEndlessGrapheme)
{
    std::string endless = "e";
    for (int i = 0; i < 500'000; ++i)
        endless += "\u0301";
    EXPECT_EQ(characterCount(endless, 11), 1U);
}

} // namespace
