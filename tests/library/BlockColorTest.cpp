#include "library/BlockColor.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace
{

using namespace std::string_view_literals;

TEST(BlockColorTest, ListsCasesInMenuOrder)
{
    std::vector<std::string_view> rawValues;
    for (const BlockColor color : BlockColor::allCases)
        rawValues.push_back(color.rawValue());
    const std::vector expected { "none"sv,  "red"sv,  "orange"sv, "yellow"sv,
                                 "green"sv, "blue"sv, "purple"sv, "pink"sv };
    EXPECT_EQ(rawValues, expected);
}

TEST(BlockColorTest, IsNoneByDefault)
{
    EXPECT_EQ(BlockColor(), BlockColor::none);
}

TEST(BlockColorTest, IsReadFromItsRawValue)
{
    for (const BlockColor color : BlockColor::allCases)
        EXPECT_EQ(BlockColor::fromRawValue(color.rawValue()), color);
}

TEST(BlockColorTest, IsReadFromNoOtherText)
{
    constexpr std::array Texts { ""sv,      "Red"sv,   "RED"sv,   "grey"sv,     "None"sv, "null"sv,
                                 " red"sv,  "red "sv,  "re"sv,    "reds"sv,     "0"sv,    "1"sv,
                                 "red\0"sv, "\0red"sv, "black"sv, "red\u200B"sv };
    for (const auto text : Texts)
        EXPECT_FALSE(BlockColor::fromRawValue(text)) << text;
}

TEST(BlockColorTest, HasItsRawValueAsId)
{
    for (const BlockColor color : BlockColor::allCases) {
        EXPECT_EQ(color.id(), color.rawValue());
        for (const BlockColor other : BlockColor::allCases)
            EXPECT_EQ(color == other, color.id() == other.id());
    }
}

TEST(BlockColorTest, HasItsCapitalisedRawValueAsTitle)
{
    std::vector<std::string> titles;
    for (const BlockColor color : BlockColor::allCases)
        titles.push_back(color.title());
    EXPECT_EQ(titles, std::vector<std::string>({ "None", "Red", "Orange", "Yellow", "Green", "Blue",
                                                 "Purple", "Pink" }));
}

TEST(BlockColorTest, HasNoDisplayColorForNone)
{
    EXPECT_FALSE(BlockColor(BlockColor::none).swiftUIColor());
}

TEST(BlockColorTest, HasCustomRedAndGreen)
{
    EXPECT_EQ(BlockColor(BlockColor::red).swiftUIColor(), (SrgbColor { 0.91, 0.16, 0.17, 1 }));
    EXPECT_EQ(BlockColor(BlockColor::green).swiftUIColor(), (SrgbColor { 0.31, 0.71, 0.39, 1 }));
}

TEST(BlockColorTest, HasPaletteColorsOtherwise)
{
    EXPECT_EQ(BlockColor(BlockColor::orange).swiftUIColor(), SrgbColor::fromHex(0xFF9F0A));
    EXPECT_EQ(BlockColor(BlockColor::yellow).swiftUIColor(), SrgbColor::fromHex(0xFFD60A));
    EXPECT_EQ(BlockColor(BlockColor::blue).swiftUIColor(), SrgbColor::fromHex(0x0A84FF));
    EXPECT_EQ(BlockColor(BlockColor::purple).swiftUIColor(), SrgbColor::fromHex(0xBF5AF2));
    EXPECT_EQ(BlockColor(BlockColor::pink).swiftUIColor(), SrgbColor::fromHex(0xFF375F));
}

} // namespace
