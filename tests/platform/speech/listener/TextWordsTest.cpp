#include "platform/speech/listener/TextWords.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>

namespace
{

/// The words, with "<" and ">" at the ends of sentences and "|" between runs.
std::string runsIn(std::string_view text)
{
    std::string runs;
    TextWords::forEachRun(text, [&runs](const TextWords::Run &run) {
        runs += runs.empty() ? "" : " | ";
        runs += run.beginsSentence ? "<" : "";
        for (std::size_t index = 0; index < run.words.size(); ++index)
            (runs += index > 0 ? " " : "") += run.words[index].key;
        runs += run.endsSentence ? ">" : "";
    });
    return runs;
}

/// The spellings of the words at the beginning of a sentence, a line or a quotation.
std::string firstWordsIn(std::string_view text)
{
    std::string words;
    TextWords::forEachRun(text, [&words](const TextWords::Run &run) {
        for (const auto &word : run.words) {
            if (word.isFirst)
                (words += words.empty() ? "" : " ") += word.spelling;
        }
    });
    return words;
}

TEST(TextWordsTest, FindsWordsInLowerCase)
{
    EXPECT_EQ(runsIn("Return valid JSON"), "<return valid json>");
    EXPECT_EQ(runsIn(""), "");
    EXPECT_EQ(runsIn(" \n\t\n "), "");
}

TEST(TextWordsTest, SeparatesSentencesAndLines)
{
    EXPECT_EQ(runsIn("Buy milk. Buy bread!\nCall Anna"), "<buy milk> | <buy bread> | <call anna>");
    EXPECT_EQ(runsIn("Answer: yes, of course"), "<answer> | <yes of course>");
    EXPECT_EQ(runsIn("red 7. Wine"), "<red | <wine>") << "the number ends the sentence";
}

TEST(TextWordsTest, RemovesMarksAroundWords)
{
    EXPECT_EQ(runsIn("a (very) \"good\" **idea**, “really”"), "<a very good idea really>");
    EXPECT_EQ(runsIn("the users' choice"), "<the users choice>");
}

TEST(TextWordsTest, KeepsApostrophesInsideWords)
{
    EXPECT_EQ(runsIn("don't use Priya’s"), "<don't use priya's>");
    EXPECT_EQ(TextWords::keyOf("don’t"), "don't");
    EXPECT_EQ(TextWords::keyOf("'tis"), "");
}

TEST(TextWordsTest, IgnoresAccents)
{
    EXPECT_EQ(runsIn("a naïve résumé"), "<a naive resume>");
}

TEST(TextWordsTest, SeparatesWordsAtHyphens)
{
    EXPECT_EQ(runsIn("a follow-up e‑mail"), "<a follow up e mail>");
    EXPECT_EQ(runsIn("use --force here"), "<use | here>");
    EXPECT_EQ(runsIn("wait - now"), "<wait | now>");
}

TEST(TextWordsTest, LeavesOutNumbersAddressesAndHashes)
{
    for (const auto *const text : { "42",
                                    "3.14",
                                    "1st",
                                    "utf8",
                                    "https://example.org/a",
                                    "www.example.org",
                                    "example.org",
                                    "me@example.org",
                                    "/usr/bin",
                                    "~/notes",
                                    "C:\\Temp",
                                    "report.pdf",
                                    ".json",
                                    "#topic",
                                    "@anna",
                                    "$HOME",
                                    "a1b2c3d4e5f6",
                                    "d41d8cd98f00b204e9800998ecf8427e",
                                    "dGhpc0lzQmFzZTY0VGV4dA=",
                                    "555-1234",
                                    "2026-11-22" })
        EXPECT_EQ(runsIn(std::string("see ") + text + " now"), "<see | now>") << text;
}

TEST(TextWordsTest, LeavesOutOtherScripts)
{
    EXPECT_EQ(runsIn("слово λόγος 漢字 😀 word"), "<word>");
    EXPECT_EQ(runsIn("mixed словоword"), "<mixed");
}

TEST(TextWordsTest, LeavesOutIdentifiersButKeepsNames)
{
    EXPECT_EQ(runsIn("userName getUserName MyClassName snake_case a.b f(x)"), "");
    EXPECT_EQ(runsIn("JavaScript GitHub iPhone eBay macOS LaTeX APIs"),
              "<javascript github iphone ebay macos latex apis>");
}

TEST(TextWordsTest, LeavesOutCode)
{
    EXPECT_EQ(runsIn("before\n```cpp\nreturn value\n```\nafter"), "<before> | <after>");
    EXPECT_EQ(runsIn("run `git status` here"), "<run | here>");
    EXPECT_EQ(runsIn("return value;\nif x {\n$ make install\n<b>bold</b>\nprose"), "<prose>");
    EXPECT_EQ(runsIn("an unfinished ` mark"), "<an unfinished");
}

TEST(TextWordsTest, LeavesOutLongWords)
{
    const std::string longest(TextWords::MaxLetters, 'a');
    EXPECT_EQ(TextWords::keyOf(longest), longest);
    EXPECT_EQ(TextWords::keyOf(longest + 'a'), "");
}

TEST(TextWordsTest, LeavesOutHeapsOfMarks)
{
    std::string accents = "a";
    std::string apostrophes = "a";
    for (std::size_t count = 0; count < TextWords::MaxSize; ++count) {
        accents += "\u0301";
        apostrophes += '\'';
    }
    EXPECT_EQ(TextWords::keyOf(accents), "");
    EXPECT_EQ(TextWords::keyOf(apostrophes + 'b'), "");
    EXPECT_EQ(TextWords::keyOf("a\u0302\u0301"), "a");
}

TEST(TextWordsTest, KnowsWhichWordsAreFirst)
{
    EXPECT_EQ(firstWordsIn("Return JSON. Then stop\nBye"), "Return Then Bye");
    EXPECT_EQ(firstWordsIn("- Return it\n2. Then stop\n* Bye"), "Return Then Bye");
    EXPECT_EQ(firstWordsIn("he said \"Stop it\" (Really)"), "he Stop Really");
    EXPECT_EQ(firstWordsIn("use 42 Widgets"), "use");
}

TEST(TextWordsTest, SurvivesRandomBytes)
{
    std::mt19937 random(1);
    const std::string_view pieces = "aZ'-`.\n \xC3\xA9\xE2\x80\x99\xFF{;1";
    for (int round = 0; round < 20'000; ++round) {
        std::string text;
        for (auto size = random() % 30; size > 0; --size)
            text += pieces[random() % pieces.size()];
        TextWords::forEachRun(text, [](const TextWords::Run &run) {
            ASSERT_FALSE(run.words.empty());
            for (const auto &word : run.words)
                EXPECT_EQ(TextWords::keyOf(word.spelling), word.key);
        });
    }
}

} // namespace
