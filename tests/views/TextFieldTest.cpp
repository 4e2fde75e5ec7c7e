#include "views/TextField.h"

#include "views/Input.h"
#include "views/Picture.h"

#include <gtest/gtest.h>

namespace
{

class TextFieldTest : public testing::Test
{
protected:
    TextFieldTest()
    {
        window.resize(200, 60);
        field.setGeometry({ QPoint(20, 20), field.sizeHint() });
        Input::show(window);
    }

    QColor borderColor() { return Picture(field).at(field.width() / 2.0, 0.5); }

    QWidget window;
    TextField field { &window };
};

TEST_F(TextFieldTest, BorderShowsTheFocus)
{
    const QColor background = over(SrgbColor::black(0.3), Qt::black);
    EXPECT_TRUE(isColor(borderColor(), over(SrgbColor::white(0.4), background)));
    Input::click(field);
    EXPECT_TRUE(isColor(borderColor(), over(SrgbColor::white(0.75), background)));
    field.clearFocus();
    EXPECT_TRUE(isColor(borderColor(), over(SrgbColor::white(0.4), background)));
}

TEST_F(TextFieldTest, DarkensItsBackground)
{
    const Picture picture(field, Qt::white);
    EXPECT_TRUE(isColor(picture.at(3, 3), over(SrgbColor::black(0.3), Qt::white)));
    EXPECT_TRUE(isColor(picture.at(0, 0), Qt::white, 40)) << "round corner";
}

TEST_F(TextFieldTest, KeepsItsTextClearOfTheBorder)
{
    field.setText(QString(100, u'\u2588')); // blocks of the full line height
    const Picture picture(field);
    const QRectF inside = QRectF(field.rect()).adjusted(2, 2, -2, -2);
    EXPECT_GE(picture.inkIn(inside, Qt::black).left(), 4);
    EXPECT_LE(picture.inkIn(inside, Qt::black).right(), field.width() - 4);
}

TEST_F(TextFieldTest, AcceptsTextsOfAnyLength)
{
    const QString text(100'000, u'x');
    field.setText(text);
    EXPECT_EQ(field.text(), text);
}

} // namespace
