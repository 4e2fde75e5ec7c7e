#include "platform/desktop/BusText.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

using namespace std::string_literals;

TEST(BusTextTest, KeepsTexts)
{
    EXPECT_EQ(BusText::make(""), QString());
    EXPECT_EQ(BusText::make("\uFEFFa\n\U0001F600\uFFFE"),
              QStringLiteral(u"\uFEFFa\n\U0001F600\uFFFE"));
    const std::string longest(1024 * 1024, 'x');
    EXPECT_EQ(BusText::make(longest), QString::fromStdString(longest));
}

TEST(BusTextTest, RefusesTextsThatWouldNotArriveWhole)
{
    EXPECT_FALSE(BusText::make("a\0b"s));
    EXPECT_FALSE(BusText::make("a\0"s));
    EXPECT_FALSE(BusText::make(std::string(1024 * 1024 + 1, 'x')));
}

} // namespace
