#include "platform/speech/SentenceStart.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

std::string capitalized(const char *words)
{
    return SentenceStart::capitalized(QString::fromUtf8(words)).toStdString();
}

TEST(SentenceStartTest, IsAfterNoText)
{
    EXPECT_TRUE(SentenceStart::isAfter(""));
    EXPECT_TRUE(SentenceStart::isAfter("  "));
}

TEST(SentenceStartTest, IsAfterTheEndOfASentence)
{
    for (const auto *const text : { "Done.", "Done!", "Done?", "Done\u2026", "Done.  ", "(Done.)",
                                    "\"Done.\"", "\u201CDone!\u201D ", "**Done.**" })
        EXPECT_TRUE(SentenceStart::isAfter(text)) << text;
}

TEST(SentenceStartTest, IsAfterALineBreak)
{
    EXPECT_TRUE(SentenceStart::isAfter("Notes\n"));
    EXPECT_TRUE(SentenceStart::isAfter("Notes,\n  "));
}

TEST(SentenceStartTest, IsAfterTheMarksThatBeginALine)
{
    for (const auto *const text : { "- ", "# ", "- [ ] ", "> ", "\"", "\u201E", "Notes:\n* " })
        EXPECT_TRUE(SentenceStart::isAfter(text)) << text;
}

TEST(SentenceStartTest, IsNotWithinASentence)
{
    for (const auto *const text :
         { "Notes", "Notes:", "Notes,", "Notes;", "(Notes)", "Notes -", "1" })
        EXPECT_FALSE(SentenceStart::isAfter(text)) << text;
}

TEST(SentenceStartTest, LooksAtTheEndOfLongTextsOnly)
{
    EXPECT_TRUE(SentenceStart::isAfter(std::string(1'000'000, 'a') + "."));
    EXPECT_TRUE(SentenceStart::isAfter("a" + std::string(1'000'000, ' ')));
    EXPECT_FALSE(SentenceStart::isAfter("\xFF"));
}

TEST(SentenceStartTest, CapitalizesTheFirstLetter)
{
    EXPECT_EQ(capitalized("buy milk"), "Buy milk");
    EXPECT_EQ(capitalized("buy"), "Buy");
    EXPECT_EQ(capitalized("\u00FCber uns"), "\u00DCber uns");
    EXPECT_EQ(capitalized(""), "");
}

TEST(SentenceStartTest, KeepsNames)
{
    EXPECT_EQ(capitalized("iPhone cases"), "iPhone cases");
    EXPECT_EQ(capitalized("JSON files"), "JSON files");
}

} // namespace
