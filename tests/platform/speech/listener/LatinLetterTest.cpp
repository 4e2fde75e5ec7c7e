#include "platform/speech/listener/LatinLetter.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace
{

/// The letters without accents, capitals marked by "^"; "?" for other characters.
std::string basesOf(std::string_view text)
{
    std::string bases;
    while (!text.empty()) {
        const auto letter = LatinLetter::first(text);
        if (letter && letter->isCapital)
            bases += '^';
        if (!letter)
            bases += '?';
        else if (letter->base != 0)
            bases += letter->base;
        text.remove_prefix(letter ? letter->size : 1);
    }
    return bases;
}

TEST(LatinLetterTest, RemovesCaseAndAccents)
{
    EXPECT_EQ(basesOf("azAZ"), "az^a^z");
    EXPECT_EQ(basesOf("naïve Café Ångström"), "naive?^cafe?^angstrom");
    EXPECT_EQ(basesOf("ÀÖØÞßàöøþÿ"), "^a^o^o^tsaooty");
    EXPECT_EQ(basesOf("ĀāŁłŃńŊŌőŒœŘřŚšŸźŽžſ"), "^aa^ll^nn^n^oo^oo^rr^ss^yz^zzs");
}

TEST(LatinLetterTest, SkipsCombiningAccents)
{
    EXPECT_EQ(basesOf("cafe\u0301"), "cafe");
}

TEST(LatinLetterTest, IsNoneForOtherCharacters)
{
    EXPECT_EQ(basesOf("1-×÷"), "??????");
    EXPECT_EQ(LatinLetter::first(""), std::nullopt);
    for (const auto *const other : { "я", "λ", "漢", "😀", "ƀ", "\xC3", "\xC3z", "\xFF", "\x80" })
        EXPECT_EQ(LatinLetter::first(other), std::nullopt) << other;
}

} // namespace
