#include "platform/desktop/TextFormat.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

using namespace Qt::StringLiterals;

std::string best(const QStringList &formats)
{
    return TextFormat::best(formats).toStdString();
}

TEST(TextFormatTest, PrefersUnicode)
{
    EXPECT_EQ(best({ u"STRING"_s, u"text/plain;charset=utf-8"_s, u"UTF8_STRING"_s }),
              "UTF8_STRING");
    EXPECT_EQ(best({ u"STRING"_s, u"text/plain"_s, u"text/plain;charset=UTF-8"_s }),
              "text/plain;charset=UTF-8");
    EXPECT_EQ(best({ u"STRING"_s, u"Text/Plain"_s, u"text/uri-list"_s }), "Text/Plain");
    EXPECT_EQ(best({ u"text/uri-list"_s, u"STRING"_s }), "STRING");
}

TEST(TextFormatTest, IgnoresFormatsThatAreNotTextOrUnknown)
{
    EXPECT_EQ(best({}), "");
    EXPECT_EQ(best({ u"image/png"_s, u"text/html"_s, u"text/plainest"_s, u"TARGETS"_s }), "");
    EXPECT_EQ(best({ u"text/plain;charset=unheard-of"_s }), "");
}

TEST(TextFormatTest, DecodesInTheEncodingOfTheFormat)
{
    EXPECT_EQ(TextFormat::decoded("\xC3\xA4", u"text/plain; Charset=\"UTF-8\""_s), "\u00E4");
    EXPECT_EQ(TextFormat::decoded("\xE4", u"text/plain;charset=ISO-8859-1"_s), "\u00E4");
    EXPECT_EQ(TextFormat::decoded("\xE4", u"STRING"_s), "\u00E4");
    EXPECT_EQ(TextFormat::decoded("\xC3\xA4", u"text/plain"_s), "\u00E4");
    EXPECT_EQ(TextFormat::decoded("", u"UTF8_STRING"_s), "");
}

TEST(TextFormatTest, KeepsALeadingByteOrderMark)
{
    EXPECT_EQ(TextFormat::decoded("\xEF\xBB\xBF"
                                  "a",
                                  u"text/plain;charset=utf-8"_s),
              "\uFEFFa");
}

TEST(TextFormatTest, DecodesAUriListToLines)
{
    EXPECT_EQ(TextFormat::decoded("file:///a\r\nfile:///b\r\n", u"text/uri-list"_s),
              "file:///a\nfile:///b\n");
}

} // namespace
