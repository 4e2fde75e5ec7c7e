#include "platform/speech/listener/LanguageTag.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace
{

TEST(LanguageTagTest, IsTheLocalesLanguageAndRegion)
{
    EXPECT_EQ(languageTag("en_US.UTF-8"), "en-us");
    EXPECT_EQ(languageTag("en_GB"), "en-gb");
    EXPECT_EQ(languageTag("de"), "de");
    EXPECT_EQ(languageTag("de_AT@euro"), "de-at");
    EXPECT_EQ(languageTag("ca_ES.UTF-8@valencia"), "ca-es");
    EXPECT_EQ(languageTag("zh_Hant_TW"), "zh-hant-tw");
}

TEST(LanguageTagTest, IsAmericanEnglishForTheDefaultLocale)
{
    for (const auto *const name : { "", "C", "POSIX", "C.UTF-8", "C.utf8" })
        EXPECT_EQ(languageTag(name), "en-us") << name;
}

TEST(LanguageTagTest, IsEmptyForInvalidNames)
{
    for (const auto *const name : { "/", "a/../b", "en/us", "_US", "d e", "\xC3\xA9", "en:de" })
        EXPECT_EQ(languageTag(name), "") << name;
}

TEST(LanguageTagTest, RecognizesEnglish)
{
    EXPECT_TRUE(isEnglish("en"));
    EXPECT_TRUE(isEnglish("en-us"));
    EXPECT_FALSE(isEnglish("enm"));
    EXPECT_FALSE(isEnglish("de-de"));
    EXPECT_FALSE(isEnglish(""));
}

class UserLanguageTagTest : public testing::Test
{
protected:
    void SetUp() override
    {
        for (const auto *const variable : { "LC_ALL", "LC_MESSAGES", "LANG" })
            unsetenv(variable);
    }
};

TEST_F(UserLanguageTagTest, TakesTheVariableOfHighestPriority)
{
    EXPECT_EQ(userLanguageTag(), "en-us");
    setenv("LANG", "de_DE.UTF-8", 1);
    EXPECT_EQ(userLanguageTag(), "de-de");
    setenv("LC_MESSAGES", "fr_FR.UTF-8", 1);
    EXPECT_EQ(userLanguageTag(), "fr-fr");
    setenv("LC_ALL", "es_ES.UTF-8", 1);
    EXPECT_EQ(userLanguageTag(), "es-es");
}

TEST_F(UserLanguageTagTest, SkipsEmptyVariables)
{
    setenv("LC_ALL", "", 1);
    setenv("LANG", "de_DE.UTF-8", 1);
    EXPECT_EQ(userLanguageTag(), "de-de");
}

} // namespace
