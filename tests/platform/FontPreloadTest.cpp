#include "platform/desktop/FontPreload.h"

#include "fakes/TestFiles.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fontconfig/fontconfig.h>
#include <string>

namespace
{

/// Uses private font configurations.
class FontPreloadTest : public testing::Test
{
protected:
    ~FontPreloadTest() override
    {
        unsetenv("FONTCONFIG_FILE");
        FcFini();
    }

    /// The family of emoji under a configuration, which stays in effect.
    std::string familyWith(const std::string &rules)
    {
        const auto file = folder.path().toStdString() + "/fonts.conf";
        TestFiles::write(file, "<?xml version=\"1.0\"?><fontconfig>" + rules + "</fontconfig>");
        setenv("FONTCONFIG_FILE", file.c_str(), 1);
        FcFini(); // drops the current configuration
        return FontPreload().colorEmojiFamily().toStdString();
    }

    QTemporaryDir folder;
};

const std::string SystemRules = "<include>/etc/fonts/fonts.conf</include>";

TEST_F(FontPreloadTest, FindsTheColorFontForEmoji)
{
    EXPECT_EQ(familyWith(SystemRules), "Noto Color Emoji");
}

TEST_F(FontPreloadTest, IgnoresMonochromeFonts)
{
    EXPECT_EQ(familyWith(SystemRules + "<selectfont><rejectfont><pattern><patelt name=\"color\">"
                                       "<bool>true</bool></patelt></pattern></rejectfont>"
                                       "</selectfont>"),
              "");
}

TEST_F(FontPreloadTest, FindsNothingWithoutFonts)
{
    EXPECT_EQ(familyWith(""), "");
}

TEST_F(FontPreloadTest, FindsTheFontOfAnAlias)
{
    const std::string alias = "<alias binding=\"same\"><family>Some Alias</family><prefer>"
                              "<family>Noto Serif</family></prefer></alias>";
    familyWith(SystemRules + alias);
    EXPECT_EQ(FontPreload::realFamily({ QStringLiteral("Some Alias"), QStringLiteral("Noto Sans") })
                  .toStdString(),
              "Noto Serif");
    EXPECT_EQ(FontPreload::realFamily({ QStringLiteral("Noto Sans"), QStringLiteral("Some Alias") })
                  .toStdString(),
              "Noto Sans");
}

TEST_F(FontPreloadTest, KeepsTheFamilyWithoutFonts)
{
    familyWith("");
    EXPECT_EQ(FontPreload::realFamily({ QStringLiteral("Sans Serif") }).toStdString(),
              "Sans Serif");
}

} // namespace
