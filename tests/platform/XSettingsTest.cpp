#include "platform/desktop/XSettings.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

using namespace std::string_literals;

const auto Header = "\0\0\0\0\7\0\0\0\4\0\0\0"s;
const auto Scale = "\0\0\7\0Gdk/Abc\0\7\0\0\0\2\0\0\0"s;
const auto Theme = "\1\0\5\0Net/T\0\0\0\7\0\0\0\3\0\0\0abc\0"s;
const auto Color = "\2\0\4\0Tint\7\0\0\0\1\0\2\0\3\0\4\0"s;
const auto Below = "\0\0\4\0Down\7\0\0\0\xFE\xFF\xFF\xFF"s;

TEST(XSettingsTest, ReadsIntegersAndSkipsOtherTypes)
{
    const std::map<std::string, std::int32_t> expected { { "Gdk/Abc", 2 }, { "Down", -2 } };
    EXPECT_EQ(XSettings::integersIn(Header + Scale + Theme + Color + Below), expected);
}

TEST(XSettingsTest, ReadsBothByteOrders)
{
    const auto big = "\1\0\0\0\0\0\0\7\0\0\0\1\0\0\0\4Four\0\0\0\7\0\0\1\2"s;
    EXPECT_EQ(XSettings::integersIn(big).at("Four"), 258);
}

TEST(XSettingsTest, KeepsSettingsBeforeDamage)
{
    const auto whole = Header + Scale + Theme + Color + Below;
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const auto integers = XSettings::integersIn(whole.substr(0, length));
        EXPECT_EQ(integers.contains("Gdk/Abc"), length >= (Header + Scale).size()) << length;
        EXPECT_FALSE(integers.contains("Down")) << length;
    }
}

TEST(XSettingsTest, StopsAtAnUnknownType)
{
    const auto unknown = "\x9\0\4\0What\7\0\0\0\2\0\0\0"s;
    EXPECT_TRUE(XSettings::integersIn(Header + unknown + Scale).empty());
}

} // namespace
