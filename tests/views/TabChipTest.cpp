#include "views/TabChip.h"

#include "views/Input.h"
#include "views/Picture.h"

#include <QInputMethodEvent>
#include <QLineEdit>
#include <gtest/gtest.h>

#include <string>

namespace
{

class TabChipTest : public testing::Test
{
protected:
    void render(const std::string &name, bool isActive = false, bool isEditing = false)
    {
        tab.name = name;
        chip.render(tab, isActive, isEditing, true);
    }

    int widthFor(const std::string &name)
    {
        render(name);
        return chip.width();
    }

    /// Counts the samples that are at least half as bright as the name; a bold name has more.
    int strokesOf(const std::string &name, bool isActive)
    {
        render(name, isActive);
        const Picture picture(chip, Background);
        const QColor fill = picture.at(chip.width() / 2.0, 2);
        const QRectF frame(7, 3, chip.width() - 14, chip.height() - 6);
        const int brightest = picture.strongestInkIn(frame, fill).lightness();
        int strokes = 0;
        for (qreal y = frame.top(); y < frame.bottom(); y += 0.5) {
            for (qreal x = frame.left(); x < frame.right(); x += 0.5)
                strokes += 2 * picture.at(x, y).lightness() > brightest + fill.lightness() ? 1 : 0;
        }
        return strokes;
    }

    static QColor activeFill() { return over({ 0.91, 0.16, 0.17, 0.12 }, Background); }

    PromptTab tab { .blocks = {} };
    TabChip chip { nullptr };
};

TEST_F(TabChipTest, WidthFollowsTheNameWithinLimits)
{
    constexpr int Padding = 2 * 7;
    EXPECT_EQ(widthFor(""), 74 + Padding);
    EXPECT_EQ(widthFor("a"), 74 + Padding);
    EXPECT_EQ(widthFor("abcdef"), 74 + Padding);
    EXPECT_EQ(widthFor("abcdefg"), 75 + Padding);
    EXPECT_EQ(widthFor("abcdefgh"), 82 + Padding);
    EXPECT_EQ(widthFor(std::string(16, 'i')), 138 + Padding);
    EXPECT_EQ(widthFor(std::string(17, 'i')), 145 + Padding);
    EXPECT_EQ(widthFor(std::string(30, 'W')), 145 + Padding);
    EXPECT_EQ(widthFor(std::string(1'000'000, 'W')), 145 + Padding);
}

TEST_F(TabChipTest, CountsGraphemes)
{
    EXPECT_EQ(TabChip::textWidth("\u00E4\u00F6\u00FC\u00E4\u00F6\u00FC\u00E4"), 75);
    EXPECT_EQ(TabChip::textWidth("e\u0301e\u0301e\u0301e\u0301e\u0301e\u0301e\u0301"), 75);
    EXPECT_EQ(TabChip::textWidth("\U0001F469\u200D\U0001F4BB"), 74);
    EXPECT_EQ(TabChip::textWidth("          "), 96);
}

TEST_F(TabChipTest, FitsTheHeightOfItsText)
{
    render("Prompts");
    const QFontMetrics metrics(Painting::systemFont(11, QFont::DemiBold));
    EXPECT_EQ(chip.height(), metrics.height() + 12);
    EXPECT_EQ(chip.size(), chip.sizeHint());
}

TEST_F(TabChipTest, HasAnAccentFillOnlyWhileActive)
{
    for (const bool isActive : { false, true }) {
        render("Prompts", isActive);
        const Picture picture(chip, Background);
        const QColor fill = isActive ? activeFill() : Background;
        const int tolerance = isActive ? 2 : 0;
        EXPECT_TRUE(isColor(picture.at(3, chip.height() / 2.0), fill, tolerance));
        EXPECT_TRUE(isColor(picture.at(chip.width() / 2.0, 0.4), fill, tolerance));
    }
}

TEST_F(TabChipTest, HasCornerRadius6)
{
    render("Prompts", true);
    const Picture picture(chip, Background);
    const Picture shape(chip.size(), chip.devicePixelRatio(), Background,
                        [this](QPainter &painter) {
                            painter.setPen(Qt::NoPen);
                            painter.setBrush(QColor::fromRgbF(0.91F, 0.16F, 0.17F, 0.12F));
                            painter.drawRoundedRect(QRectF(chip.rect()), 6, 6);
                        });
    for (const QRectF &corner : cornersOf(chip.rect(), 7))
        EXPECT_EQ(picture.differenceFrom(shape, corner, 1), QRectF());
    EXPECT_TRUE(isColor(picture.at(0.2, 0.2), Background, 0));
}

TEST_F(TabChipTest, ShowsTheActiveNameBolder)
{
    EXPECT_GT(strokesOf("Prompts", true), strokesOf("Prompts", false) * 11 / 10);
}

TEST_F(TabChipTest, ShowsUntitledForAnEmptyName)
{
    render("");
    EXPECT_EQ(chip.text().toStdString(), "Untitled");
    EXPECT_EQ(Input::accessibleName(chip), "Untitled");
    EXPECT_FALSE(Picture(chip, Background).inkIn(chip.rect(), Background).isEmpty());
}

TEST_F(TabChipTest, IsNamedUntitledForABlankName)
{
    for (const auto *const name : { " ", "   ", "\t", "\u00A0", "\u200B", "\n" }) {
        render(name);
        EXPECT_EQ(Input::accessibleName(chip), "Untitled") << name;
        EXPECT_TRUE(Picture(chip, Background).inkIn(chip.rect(), Background).isEmpty()) << name;
    }
}

TEST_F(TabChipTest, KeepsTheSpacesInItsName)
{
    for (const auto *const name : { "a  b", " a ", "a\u00A0b" }) {
        render(name);
        EXPECT_EQ(Input::accessibleName(chip), name);
        EXPECT_EQ(chip.text().toStdString(), name);
    }
    render("a\nb");
    EXPECT_EQ(Input::accessibleName(chip), "a b");
}

TEST_F(TabChipTest, ShowsThePlaceholderWhileEditingAnEmptyName)
{
    render("", true, true);
    const auto *const field = chip.findChild<QLineEdit *>();
    ASSERT_TRUE(field);
    EXPECT_EQ(field->text().toStdString(), "");
    EXPECT_EQ(field->placeholderText().toStdString(), "Untitled");
    EXPECT_EQ(chip.width(), 74 + 14);
}

TEST_F(TabChipTest, HidesThePlaceholderWhileTypingOrComposing)
{
    render("", true, true);
    Input::show(chip);
    chip.focusField();
    const auto isShown = [this] {
        const QRectF besideTheCursor(8, 4, chip.width() / 2.0 - 16, chip.height() - 8.0);
        return !Picture(chip, Background).inkIn(besideTheCursor, activeFill()).isEmpty();
    };
    EXPECT_TRUE(isShown());
    QInputMethodEvent composing(QStringLiteral("n"), {});
    QApplication::sendEvent(QApplication::focusWidget(), &composing);
    EXPECT_FALSE(isShown());
    QInputMethodEvent nothing;
    QApplication::sendEvent(QApplication::focusWidget(), &nothing);
    EXPECT_TRUE(isShown());
    render("i", true, true);
    EXPECT_FALSE(isShown());
}

TEST_F(TabChipTest, AlignsTheFieldWithTheLabel)
{
    render("A longer name", true, true);
    const auto &field = *chip.findChild<QLineEdit *>();
    EXPECT_EQ(field.x(), 7);
    EXPECT_EQ(field.width(), chip.width() - 14);
    EXPECT_EQ(field.font().pixelSize(), 11);
    EXPECT_EQ(field.font().weight(), QFont::DemiBold);
    const Picture picture(chip, Background);
    EXPECT_TRUE(isColor(picture.at(3, chip.height() / 2.0), activeFill()));
}

TEST_F(TabChipTest, KeepsALongNameInsideItsFrame)
{
    for (const std::string &name : { std::string(17, 'W'), std::string(1'000'000, 'W'),
                                     std::string("one\ntwo\nthree\nfour\nfive") }) {
        render(name, true);
        const QRectF ink =
            Picture(chip, Background)
                .inkIn({ 1, 3, chip.width() - 2.0, chip.height() - 6.0 }, activeFill());
        EXPECT_GE(ink.left(), 7);
        EXPECT_LE(ink.right(), chip.width() - 7);
        EXPECT_GE(ink.top(), 6) << "more than one line";
        EXPECT_LE(ink.bottom(), chip.height() - 6) << "more than one line";
    }
}

TEST_F(TabChipTest, HasTheAccessibleRoleOfATab)
{
    render("Prompts", true);
    EXPECT_EQ(Input::role(chip), QAccessible::PageTab);
    EXPECT_EQ(Input::accessibleName(chip), "Prompts");
    EXPECT_EQ(chip.toolTip().toStdString(), "Double-click to rename");
    EXPECT_TRUE(QAccessible::queryAccessibleInterface(&chip)->state().selected);
    render("Links", false);
    EXPECT_EQ(Input::accessibleName(chip), "Links");
    EXPECT_FALSE(QAccessible::queryAccessibleInterface(&chip)->state().selected);
    render("Links", false, true);
    auto &field = *chip.findChild<QLineEdit *>();
    EXPECT_EQ(Input::accessibleName(field), "Tab name");
    EXPECT_EQ(Input::role(field), QAccessible::EditableText);
}

} // namespace
