#include "views/FindCardFixture.h"
#include "views/Picture.h"

#include <gtest/gtest.h>

namespace
{

class FindCardLookTest : public FindCardFixture
{
protected:
    FindCardLookTest()
    {
        PromptTab tab = tabOf("Tab", { "plain", "green", "last" });
        tab.blocks[1].color = BlockColor::green;
        openView({ tab });
        openCard();
    }

    QRect row(int number) const { return list().visualRect(list().model()->index(number, 0)); }

    Picture picture() const { return Picture(*list().viewport(), Qt::black); }

    /// The centre of a row's dot.
    QColor dotColor(int number) const
    {
        return picture().at(row(number).left() + 13, row(number).center().y() + 0.5);
    }
};

TEST_F(FindCardLookTest, ShowsTheColorOfANodeAsADot)
{
    key(Qt::Key_PageDown); // selects another row
    const auto green = *BlockColor(BlockColor::green).swiftUIColor();
    EXPECT_NEAR(dotColor(1).greenF(), green.green, 0.03);
    EXPECT_NEAR(dotColor(1).redF(), green.red, 0.03);
    EXPECT_LT(dotColor(0).lightness(), 60);
}

TEST_F(FindCardLookTest, MarksTheSelectedRow)
{
    const auto color = [this](int number) {
        return picture().at(row(number).right() - 4, row(number).center().y());
    };
    EXPECT_GT(color(0).red(), 100);
    EXPECT_LT(color(1).red(), 60);
    key(Qt::Key_Down);
    EXPECT_LT(color(0).red(), 60);
    EXPECT_GT(color(1).red(), 100);
}

TEST_F(FindCardLookTest, AlignsTheFieldWithTheCloseButton)
{
    const QRect close = Input::frameIn(*view, *Input::button(*findCard(), "Close"));
    const QRect text = Input::frameIn(*view, field());
    EXPECT_EQ(close.center().y(), text.center().y());
    EXPECT_GT(close.left(), text.right());
    EXPECT_EQ(text.left(), Input::frameIn(*view, list()).left());
}

TEST_F(FindCardLookTest, KeepsItsSizeWhileTheNumberOfHitsChanges)
{
    const QRect before = findCard()->cardGeometry();
    type("nothing like that");
    EXPECT_EQ(findCard()->cardGeometry(), before);
    EXPECT_EQ(count(), "No nodes found");
}

} // namespace
