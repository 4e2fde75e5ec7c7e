#include "support/Utf8.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace
{

TEST(Utf8Test, KeepsAByteOrderMark)
{
    for (const std::string text : { "\uFEFF", "\uFEFFtext", "\uFEFF\uFEFFtext" })
        EXPECT_EQ(stringFromUtf8(text).toStdString(), text);
}

TEST(Utf8Test, KeepsOtherCharacters)
{
    const std::string nul("a\0b", 3);
    for (const std::string &text : { std::string(), std::string("text"), std::string("a\uFEFFb"),
                                     std::string("\U0001F600"), nul })
        EXPECT_EQ(stringFromUtf8(text).toStdString(), text);
}

TEST(Utf8Test, ReplacesInvalidBytes)
{
    EXPECT_EQ(stringFromUtf8("a\xFF"), QStringLiteral("a\uFFFD"));
}

TEST(Utf8Test, CutsBetweenCodePoints)
{
    const std::string_view text = "aé漢😀"; // of one, two, three and four bytes
    const auto beginning = [text](std::size_t size) { return utf8Beginning(text, size); };
    EXPECT_EQ(beginning(0), "");
    EXPECT_EQ(beginning(1), "a");
    EXPECT_EQ(beginning(2), "a");
    EXPECT_EQ(beginning(3), "aé");
    EXPECT_EQ(beginning(5), "aé");
    EXPECT_EQ(beginning(9), "aé漢");
    EXPECT_EQ(beginning(10), text);
    EXPECT_EQ(beginning(11), text);
    const auto end = [text](std::size_t size) { return utf8End(text, size); };
    EXPECT_EQ(end(0), "");
    EXPECT_EQ(end(3), "");
    EXPECT_EQ(end(4), "😀");
    EXPECT_EQ(end(8), "漢😀");
    EXPECT_EQ(end(9), "é漢😀");
    EXPECT_EQ(end(10), text);
    EXPECT_EQ(end(11), text);
}

TEST(Utf8Test, CutsInvalidUtf8)
{
    const std::string continuations(100, '\x80');
    EXPECT_EQ(utf8Beginning(continuations, 50), "");
    EXPECT_EQ(utf8End(continuations, 50), "");
    EXPECT_EQ(utf8Beginning("", 5), "");
    EXPECT_EQ(utf8End("", 5), "");
}

TEST(Utf8Test, TakesTheFirstAndTheLastCodePoint)
{
    EXPECT_EQ(firstCodePoint("aé漢😀"), "a");
    EXPECT_EQ(firstCodePoint("é漢😀a"), "é");
    EXPECT_EQ(firstCodePoint("漢😀aé"), "漢");
    EXPECT_EQ(firstCodePoint("😀aé漢"), "😀");
    EXPECT_EQ(lastCodePoint("é漢😀a"), "a");
    EXPECT_EQ(lastCodePoint("漢😀aé"), "é");
    EXPECT_EQ(lastCodePoint("😀aé漢"), "漢");
    EXPECT_EQ(lastCodePoint("aé漢😀"), "😀");
    EXPECT_EQ(lastCodePoint(""), "");
}

TEST(Utf8Test, DecodesCodePoints)
{
    EXPECT_EQ(decodedCodePoint("a"), U'a');
    EXPECT_EQ(decodedCodePoint("é"), U'é');
    EXPECT_EQ(decodedCodePoint("漢"), U'漢');
    EXPECT_EQ(decodedCodePoint("😀"), U'😀');
    EXPECT_LE(decodedCodePoint("\xFF\xFF\xFF\xFF"), U'\U0010FFFF');
}

} // namespace
