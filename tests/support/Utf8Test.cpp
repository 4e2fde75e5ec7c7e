#include "support/Utf8.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

TEST(Utf8Test, KeepsAMarkAtTheBeginning)
{
    for (const std::string text : { "\uFEFF", "\uFEFFtext", "\uFEFF\uFEFFtext" })
        EXPECT_EQ(stringFromUtf8(text).toStdString(), text);
}

TEST(Utf8Test, ReadsEverythingElseAsItIs)
{
    const std::string nul("a\0b", 3);
    for (const std::string &text : { std::string(), std::string("text"), std::string("a\uFEFFb"),
                                     std::string("\U0001F600"), nul })
        EXPECT_EQ(stringFromUtf8(text).toStdString(), text);
}

TEST(Utf8Test, ReplacesWhatIsNoUtf8)
{
    EXPECT_EQ(stringFromUtf8("a\xFF"), QStringLiteral("a\uFFFD"));
}

} // namespace
