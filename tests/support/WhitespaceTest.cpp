#include "support/Whitespace.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <string_view>

namespace
{

using namespace std::string_literals;
using namespace std::string_view_literals;

// Unicode's White_Space property.
constexpr std::array WhiteSpace {
    "\u0009"sv, "\u000A"sv, "\u000B"sv, "\u000C"sv, "\u000D"sv, "\u0020"sv, "\u0085"sv,
    "\u00A0"sv, "\u1680"sv, "\u2000"sv, "\u2001"sv, "\u2002"sv, "\u2003"sv, "\u2004"sv,
    "\u2005"sv, "\u2006"sv, "\u2007"sv, "\u2008"sv, "\u2009"sv, "\u200A"sv, "\u2028"sv,
    "\u2029"sv, "\u202F"sv, "\u205F"sv, "\u3000"sv,
};

// Similar characters that are not white space: zero-width characters, a byte order mark, NUL, a
// Braille blank, and incomplete UTF-8 sequences of white space.
constexpr std::array NotWhiteSpace {
    "\u180E"sv, "\u200B"sv, "\u200C"sv, "\u200D"sv, "\u200E"sv,     "\u2060"sv,
    "\uFEFF"sv, "\u2800"sv, "\0"sv,     "\x1C"sv,   "\x7F"sv,       "\x85"sv,
    "\xA0"sv,   "\x80"sv,   "\xC2"sv,   "\xE2"sv,   "\xE2\x80"sv,   "\x80\xA8"sv,
    "\u00C5"sv, "\u0105"sv, "\u00E0"sv, "\u2030"sv, "\U00012000"sv,
};

TEST(WhitespaceTest, TrimsEveryWhiteSpaceCharacter)
{
    for (const auto space : WhiteSpace) {
        SCOPED_TRACE(testing::PrintToString(space));
        EXPECT_EQ(trimmed(std::string(space) + "text" + std::string(space)), "text");
        EXPECT_EQ(trimmed(space), "");
    }
}

TEST(WhitespaceTest, TrimsMixedRuns)
{
    std::string all;
    for (const auto space : WhiteSpace)
        all += space;
    EXPECT_EQ(trimmed(all + "a b" + all), "a b");
    EXPECT_EQ(trimmed(all), "");
}

TEST(WhitespaceTest, KeepsOtherCharactersAtTheEnds)
{
    for (const auto text : NotWhiteSpace) {
        SCOPED_TRACE(testing::PrintToString(text));
        const std::string framed = std::string(text) + "text" + std::string(text);
        EXPECT_EQ(trimmed(framed), framed);
        EXPECT_EQ(trimmed(text), text);
        EXPECT_EQ(trimmed(" " + std::string(text) + " "), text);
    }
}

TEST(WhitespaceTest, KeepsWhiteSpaceWithinTheText)
{
    EXPECT_EQ(trimmed("  two\u00A0 words\nhere\t"), "two\u00A0 words\nhere");
}

TEST(WhitespaceTest, TrimsAnEmptyText)
{
    EXPECT_EQ(trimmed(""), "");
    EXPECT_EQ(trimmed({}), "");
}

TEST(WhitespaceTest, TrimsALongRunQuickly)
{
    const std::string blanks(1'000'000, ' ');
    EXPECT_EQ(trimmed(blanks + "x" + blanks), "x");
}

TEST(WhitespaceTest, FindsEveryWhiteSpaceCharacter)
{
    for (const auto space : WhiteSpace) {
        SCOPED_TRACE(testing::PrintToString(space));
        EXPECT_TRUE(containsWhitespace(space));
        EXPECT_TRUE(containsWhitespace(std::string(space) + "text"));
        EXPECT_TRUE(containsWhitespace("te" + std::string(space) + "xt"));
        EXPECT_TRUE(containsWhitespace("\u00E9\U0001F600" + std::string(space)));
    }
}

TEST(WhitespaceTest, FindsNoOtherCharacters)
{
    EXPECT_FALSE(containsWhitespace(""));
    EXPECT_FALSE(containsWhitespace("https://example.com/\u00E9\U0001F600"));
    for (const auto text : NotWhiteSpace) {
        SCOPED_TRACE(testing::PrintToString(text));
        EXPECT_FALSE(containsWhitespace(text));
        EXPECT_FALSE(containsWhitespace("a" + std::string(text) + "b"));
    }
}

} // namespace
