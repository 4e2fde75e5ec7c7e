#include "views/SearchField.h"

#include "views/Input.h"
#include "views/Picture.h"

#include <gtest/gtest.h>

namespace
{

class SearchFieldTest : public testing::Test
{
protected:
    SearchFieldTest()
    {
        window.resize(200, 60);
        field.setGeometry(20, 20, 160, field.height());
        Input::show(window);
        window.setFocus();
    }

    QWidget window;
    SearchField field { &window };
};

TEST_F(SearchFieldTest, ShowsAMagnifyingGlassBeforeTheText)
{
    const QRectF beforeText(4, 4, 20, field.height() - 8);
    const QColor fill = over(SrgbColor::black(0.3), Background);
    const QRectF glass = Picture(field, Background).inkIn(beforeText, fill);
    EXPECT_NEAR(glass.width(), glass.height(), 1);
    EXPECT_NEAR(glass.center().y(), field.height() / 2.0, 1);
    field.setText(QString(100, u'm'));
    EXPECT_EQ(Picture(field, Background).inkIn(beforeText, fill), glass);
}

TEST_F(SearchFieldTest, AppendsLettersTypedElsewhereAndTakesTheFocus)
{
    field.setText(QStringLiteral("dr"));
    field.selectAll();
    field.append(QStringLiteral("aft"));
    EXPECT_EQ(field.text(), QStringLiteral("draft"));
    EXPECT_TRUE(field.hasFocus());
}

TEST_F(SearchFieldTest, TakesLettersButNotTheFocusWhileHidden)
{
    field.hide();
    window.setFocus();
    field.append(QStringLiteral("x"));
    field.show();
    EXPECT_EQ(field.text(), QStringLiteral("x"));
    EXPECT_EQ(window.focusWidget(), &window);
}

} // namespace
