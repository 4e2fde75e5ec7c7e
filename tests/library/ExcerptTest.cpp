#include "library/Excerpt.h"

#include "library/QueryMatcher.h"
#include "support/TextFolding.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace
{

class ExcerptTest : public testing::Test
{
protected:
    Excerpt excerpt(std::string_view text, std::string_view query)
    {
        const QueryMatcher matcher(folding, query);
        return Excerpt::around(text, matcher.firstMatch(text).value_or(0), matcher);
    }

    std::string text(std::string_view text, std::string_view query)
    {
        return excerpt(text, query).text.toStdString();
    }

    /// The text with brackets around the emphasised parts.
    std::string marked(std::string_view text, std::string_view query)
    {
        Excerpt found = excerpt(text, query);
        for (auto range = found.emphasised.rbegin(); range != found.emphasised.rend(); ++range) {
            found.text.insert(range->start + range->length, u']');
            found.text.insert(range->start, u'[');
        }
        return found.text.toStdString();
    }

    TextFolding folding;
};

TEST_F(ExcerptTest, ShowsAShortTextCompletely)
{
    EXPECT_EQ(marked("Reply in plain words", "plain"), "Reply in [plain] words");
    EXPECT_EQ(marked("plain", "plain"), "[plain]");
    EXPECT_EQ(marked("", ""), "");
}

TEST_F(ExcerptTest, IsASingleLineWithSingleSpaces)
{
    EXPECT_EQ(text("  one\r\n\r\n\ttwo \n", ""), "one two");
    EXPECT_EQ(marked("one\n\n  two\u2028three", "two"), "one [two] three");
    EXPECT_EQ(text(" \n ", ""), "");
}

TEST_F(ExcerptTest, EmphasisesEveryMatchOfEveryWord)
{
    EXPECT_EQ(marked("a draft, the Draft", "draft the"), "a [draft], [the] [Draft]");
    EXPECT_EQ(marked("banana", "ana"), "b[anana]");
    EXPECT_EQ(marked("ab", "a b"), "[ab]");
}

TEST_F(ExcerptTest, EmphasisesWholeGraphemes)
{
    EXPECT_EQ(marked("Re\u0301sume\u0301.", "resume"), "[Re\u0301sume\u0301].");
    EXPECT_EQ(marked("Straße", "s"), "[S]tra[ß]e");
    EXPECT_EQ(marked("the 👩‍💻 works", "💻"), "the [👩‍💻] works");
    EXPECT_EQ(marked("oﬃce", "fi"), "o[ﬃ]ce");
}

TEST_F(ExcerptTest, StartsAtAWordShortlyBeforeTheFirstMatch)
{
    const std::string words = "one two three four five six seven eight nine ten ";
    EXPECT_EQ(marked(words + "eleven twelve", "eleven"),
              "\u2026seven eight nine ten [eleven] twelve");
    EXPECT_EQ(marked(std::string(100, 'x') + "word", "word"),
              "\u2026" + std::string(24, 'x') + "[word]");
}

TEST_F(ExcerptTest, EndsAfterTwoLines)
{
    const Excerpt found = excerpt(std::string(1000, 'x'), "");
    EXPECT_EQ(found.text, QString(200, u'x') + u'\u2026');
    EXPECT_EQ(excerpt(std::string(200, 'x'), "").text, QString(200, u'x'));
}

TEST_F(ExcerptTest, DoesNotEmphasiseItsEllipses)
{
    EXPECT_EQ(excerpt(std::string(1000, 'x'), "xx .").emphasised,
              (std::vector<TextRange> { { 0, 200 } }));
}

TEST_F(ExcerptTest, IsCutBetweenGraphemes)
{
    const std::string family = "👨‍👩‍👧‍👦";
    std::string text;
    for (int i = 0; i < 300; ++i)
        text += family;
    const Excerpt found = excerpt(text + "x" + text, "x");
    const QString whole = QString::fromStdString(family);
    EXPECT_TRUE(found.text.startsWith(u'\u2026' + whole));
    EXPECT_TRUE(found.text.endsWith(whole + u'\u2026'));
    EXPECT_EQ(found.text.count(u'x'), 1);
}

TEST_F(ExcerptTest, OmitsGraphemesThatAreLongerThanALine)
{
    std::string accents;
    for (int i = 0; i < 5000; ++i)
        accents += "\u0301";
    const Excerpt found = excerpt("a" + accents + "x" + accents + "b", "x");
    EXPECT_LT(found.text.size(), 2000);
}

TEST_F(ExcerptTest, ReadsOnlyThePartAroundTheMatchOfALongLine)
{
    const std::string half(500'000, 'y');
    EXPECT_EQ(excerpt(half + " word " + half, "word").text.size(), 1 + 5 + 195 + 1);
}

} // namespace
