#include "support/SingleLine.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

std::string beginning(std::string_view text)
{
    return SingleLine::beginning(text).toStdString();
}

std::string ends(std::string_view text)
{
    return SingleLine::ends(text).toStdString();
}

TEST(SingleLineTest, LeavesASingleLineUnchanged)
{
    for (const auto *const text :
         { "", "a", "Ünïcödé 漢字 👩‍🚀", "עברית", "a <b>b</b> & c" }) {
        EXPECT_EQ(beginning(text), text);
        EXPECT_EQ(ends(text), text);
    }
}

TEST(SingleLineTest, ReplacesLineBreaks)
{
    for (const auto *const text :
         { "a\nb", "a\r\nb", "a\vb", "a\fb", "a\u0085b", "a\u2028b", "a\u2029b", "a\n\n\nb" }) {
        EXPECT_EQ(beginning(text), "a b");
        EXPECT_EQ(ends(text), "a b");
    }
    EXPECT_EQ(beginning("\na\n\nb\n"), " a b ");
}

TEST(SingleLineTest, KeepsOtherWhiteSpace)
{
    for (const auto *const text : { "a  b", " a ", "   ", "a\u00A0\u00A0b", "\u3000a" }) {
        EXPECT_EQ(beginning(text), text);
        EXPECT_EQ(ends(text), text);
    }
}

TEST(SingleLineTest, RecognisesInvisibleLines)
{
    for (const auto *const text : { u"", u"  ", u"\t\n", u"\u00A0\u3000", u"\u200B\u200D\uFEFF",
                                    u"\u2800", u"\u3164", u"\uFE0F", u"\u202E", u"\U000E0020" })
        EXPECT_TRUE(SingleLine::looksEmpty(text)) << QStringView(text).toString().toStdString();
    for (const auto *const text : { u"a", u"  a", u"-", u"\u0301", u"\U0001F600", u"\uFFFD" })
        EXPECT_FALSE(SingleLine::looksEmpty(text)) << QStringView(text).toString().toStdString();
}

TEST(SingleLineTest, ReplacesControlCharacters)
{
    EXPECT_EQ(beginning(std::string_view("a\0b", 3)), "a b");
    EXPECT_EQ(beginning("a\x1b\x07\x7f"
                        "b"),
              "a b");
    EXPECT_EQ(beginning("a\u0090b"), "a b");
    EXPECT_EQ(beginning("\x01"), " ");
}

TEST(SingleLineTest, ReplacesBidirectionalControls)
{
    EXPECT_EQ(beginning("a\u202etxt.exe"), "a txt.exe");
    for (const auto *const text : { "a\u202ab", "a\u202bb", "a\u202cb", "a\u202db", "a\u2066b",
                                    "a\u2067b", "a\u2068b", "a\u2069b" })
        EXPECT_EQ(ends(text), "a b");
}

TEST(SingleLineTest, LimitsTheLengthOfALine)
{
    const std::string filling(1'000'000, 'x');
    EXPECT_TRUE(beginning("begin" + filling).starts_with("beginx"));
    EXPECT_LE(beginning("begin" + filling).size(), 2048U);
    EXPECT_TRUE(ends("begin" + filling + "end").starts_with("beginx"));
    EXPECT_TRUE(ends("begin" + filling + "end").ends_with("xend"));
    EXPECT_NE(ends("begin" + filling + "end").find("…"), std::string::npos);
    EXPECT_LE(ends("begin" + filling + "end").size(), 4096U);
}

TEST(SingleLineTest, KeepsBothEndsOfATextThatFits)
{
    const std::string text = "begin" + std::string(1000, 'x') + "middle" + std::string(900, 'x');
    EXPECT_EQ(ends(text), text);
}

TEST(SingleLineTest, CutsBetweenCodePoints)
{
    std::string text;
    while (text.size() < 10'000)
        text += "漢"; // of three bytes, which do not divide the limit of 1,024
    for (const std::string &each :
         { beginning(text), beginning("a" + text), ends(text), ends("a" + text), ends(text + "a") })
        EXPECT_EQ(each.find("\uFFFD"), std::string::npos);
}

TEST(SingleLineTest, AbridgesLongMenuTexts)
{
    const auto abridged = [](const std::string &text) {
        return SingleLine::abridged(text).toStdString();
    };
    const auto repeated = [](const std::string &character, int count) {
        std::string text;
        for (int i = 0; i < count; ++i)
            text += character;
        return text;
    };
    for (const std::string character : { "x", "漢", "👩‍🚀" }) {
        EXPECT_EQ(abridged(repeated(character, 80)), repeated(character, 80));
        EXPECT_EQ(abridged(repeated(character, 81)), repeated(character, 79) + "…");
    }
    EXPECT_EQ(abridged(""), "");
    EXPECT_EQ(abridged("a\nb"), "a b");
    EXPECT_EQ(abridged(std::string(1'000'000, 'x')), std::string(79, 'x') + "…");
}

} // namespace
