#include "views/DragHandle.h"
#include "views/Picture.h"
#include "views/PromptCardFixture.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{

class PromptCardDragTest : public PromptCardFixture
{
protected:
    PromptCardDragTest() { show(); }

    DragHandle &handle() const { return *card.findChild<DragHandle *>(); }

    void send(QEvent::Type type, const QPointF &distance, Qt::MouseButton button,
              Qt::MouseButtons buttons)
    {
        Input::sendMouse(handle(), type, start + distance, button, buttons);
    }

    QPointF start { 10, 12 };

    void press() { send(QEvent::MouseButtonPress, {}, Qt::LeftButton, Qt::LeftButton); }

    void moveBy(const QPointF &distance)
    {
        send(QEvent::MouseMove, distance, Qt::NoButton, Qt::LeftButton);
    }

    void release(const QPointF &distance)
    {
        send(QEvent::MouseButtonRelease, distance, Qt::LeftButton, Qt::NoButton);
    }

    void drag(const QPointF &distance)
    {
        press();
        moveBy(distance / 2);
        moveBy(distance);
        release(distance);
    }
};

struct Drag {
    double distance;
    int steps;
};

TEST_F(PromptCardDragTest, ConvertsDragDistanceToSteps)
{
    for (const auto &[distance, steps] :
         { Drag { 0, 0 }, Drag { 23.9, 0 }, Drag { -23.9, 0 }, Drag { 23.999, 0 }, Drag { 24, 1 },
           Drag { -24, -1 }, Drag { 119.9, 1 }, Drag { 120, 1 }, Drag { 239, 1 },
           Drag { 239.99, 1 }, Drag { 240, 2 }, Drag { -240, -2 }, Drag { -250, -2 },
           Drag { 359, 2 }, Drag { 359.99, 2 }, Drag { 360, 3 }, Drag { -360, -3 },
           Drag { 1200, 10 }, Drag { -1199.9, -9 } })
        EXPECT_EQ(PromptCard::reorderSteps(distance), steps) << distance;
}

TEST_F(PromptCardDragTest, ReportsADragWhenItEnds)
{
    press();
    moveBy({ 0, 130 });
    moveBy({ 0, 250 });
    EXPECT_EQ(reports, Reports());
    release({ 0, 250 });
    EXPECT_EQ(reports, Reports({ "reorder 2" }));
}

TEST_F(PromptCardDragTest, ReportsVerticalDragsFrom24Points)
{
    for (const double y : { 23.9, -23.9 })
        drag({ 0, y });
    for (const QPointF sideways : { QPointF(300, 0), QPointF(-300, 20) })
        drag(sideways);
    EXPECT_EQ(reports, Reports());
    for (const double y : { -250.0, 24.0, -24.0 })
        drag({ 0, y });
    EXPECT_EQ(reports, Reports({ "reorder -2", "reorder 1", "reorder -1" }));
}

TEST_F(PromptCardDragTest, MeasuresFractionsOfPointsFromAnyStart)
{
    for (int eighth = 0; eighth < 8; ++eighth) {
        start = { 10, 8 + eighth / 8.0 };
        reports.clear();
        drag({ 0, 23.5 });
        drag({ 0, -23.5 });
        EXPECT_EQ(reports, Reports()) << eighth;
        drag({ 0, 24 });
        drag({ 0, -24 });
        EXPECT_EQ(reports, Reports({ "reorder 1", "reorder -1" })) << eighth;
    }
}

// X11 reports whole pixels.
TEST_F(PromptCardDragTest, Needs24PointsAtEveryScale)
{
    for (const double scale : { 1.0, 1.25, 1.5, 1.75, 2.0, 2.5, 3.0 }) {
        const int enough = static_cast<int>(std::ceil(24 * scale));
        for (int pixel = 0; pixel < 12; ++pixel) {
            start = { 10, (10 * scale + pixel) / scale };
            reports.clear();
            drag({ 0, (enough - 1) / scale });
            EXPECT_EQ(reports, Reports()) << scale << ", pixel " << pixel;
            drag({ 0, enough / scale });
            EXPECT_EQ(reports, Reports({ "reorder 1" })) << scale << ", pixel " << pixel;
        }
    }
}

TEST_F(PromptCardDragTest, UsesTheVerticalPartOfADiagonalDrag)
{
    press();
    moveBy({ 200, 30.5 });
    EXPECT_EQ(card.dragTranslation(), 30.5);
    release({ 200, 30.5 });
    EXPECT_EQ(reports, Reports({ "reorder 1" }));
}

TEST_F(PromptCardDragTest, StartsADragAfter4Points)
{
    press();
    moveBy({ 0, 3.9 });
    EXPECT_EQ(card.dragTranslation(), 0);
    moveBy({ 2.9, 2.7 });
    EXPECT_EQ(card.dragTranslation(), 0);
    moveBy({ 0, 4 });
    EXPECT_EQ(card.dragTranslation(), 4);
    moveBy({ 0, 1 }); // a started drag continues
    EXPECT_EQ(card.dragTranslation(), 1);
    release({ 0, 1 });
}

TEST_F(PromptCardDragTest, ResetsWhenTheDragEnds)
{
    const Picture before(card, Background);
    press();
    moveBy({ 0, -60 });
    EXPECT_EQ(card.dragTranslation(), -60);
    release({ 0, -60 });
    EXPECT_EQ(card.dragTranslation(), 0);
    EXPECT_EQ(Picture(card, Background).differenceFrom(before), QRectF());
}

TEST_F(PromptCardDragTest, CancelsADragWhenTheCardIsHidden)
{
    press();
    moveBy({ 0, 100 });
    card.hide();
    EXPECT_EQ(card.dragTranslation(), 0);
    release({ 0, 100 });
    EXPECT_EQ(reports, Reports());
}

TEST_F(PromptCardDragTest, FollowsThePointerOutsideTheCard)
{
    Input::press(handle(), { 10, 12 });
    Input::moveTo(handle(), { 15, 150 });
    EXPECT_EQ(card.dragTranslation(), 138);
    Input::moveTo(handle(), { 15, 260 });
    Input::release(handle(), { 15, 260 });
    EXPECT_EQ(reports, Reports({ "reorder 2" }));
}

TEST_F(PromptCardDragTest, IgnoresOtherButtons)
{
    send(QEvent::MouseButtonPress, {}, Qt::RightButton, Qt::RightButton);
    send(QEvent::MouseMove, { 0, 100 }, Qt::NoButton, Qt::RightButton);
    send(QEvent::MouseButtonRelease, { 0, 100 }, Qt::RightButton, Qt::NoButton);
    EXPECT_EQ(reports, Reports());
    EXPECT_EQ(card.dragTranslation(), 0);
}

TEST_F(PromptCardDragTest, HasA2PointAccentBorderWhileDragged)
{
    block.color = BlockColor::blue;
    render();
    press();
    moveBy({ 0, 30 });
    const Picture picture(card, Background);
    const QColor fill =
        over(BlockColor(BlockColor::blue).swiftUIColor()->withOpacity(0.09), Background);
    for (const qreal inset : { 0.25, 0.75, 1.25, 1.75 }) {
        EXPECT_TRUE(isColor(picture.at(200, inset), Painting::qColor(Accent))) << inset;
        EXPECT_TRUE(isColor(picture.at(inset, 90), Painting::qColor(Accent))) << inset;
        EXPECT_TRUE(isColor(picture.at(200, card.height() - inset), Painting::qColor(Accent)))
            << inset;
    }
    EXPECT_TRUE(isColor(picture.at(200, 2.25), fill));
    EXPECT_TRUE(isColor(picture.at(2.25, 90), fill));
    release({});
}

TEST_F(PromptCardDragTest, DrawsTheDraggedLinesOverTheNeighbours)
{
    const QRectF column(10, 0, 24, 100);
    ASSERT_TRUE(Picture(list, Background).inkIn(column, Background).isEmpty());
    press();
    moveBy({ 0, -80 });
    const QRectF lines = Picture(list, Background).inkIn(column, Background);
    // At rest the lines are 22 points below the top of the card, which is at 100 in the list.
    EXPECT_NEAR(lines.center().y(), 122 - 80, 1);
    const QColor fill = over({ 0.125, 0.12, 0.14 }, Background);
    EXPECT_EQ(Picture(card, Background).inkIn({ 12, 12, 40, 20 }, fill), QRectF());
    release({ 0, -80 });
    EXPECT_TRUE(Picture(list, Background).inkIn(column, Background).isEmpty());
}

TEST_F(PromptCardDragTest, ArrowKeysMoveByOneRow)
{
    handle().setFocus(Qt::TabFocusReason);
    Input::key(card, Qt::Key_Down);
    Input::key(card, Qt::Key_Up);
    EXPECT_EQ(reports, Reports({ "reorder 1", "reorder -1" }));
}

TEST_F(PromptCardDragTest, CancelsADragOnEscape)
{
    handle().setFocus(Qt::TabFocusReason);
    press();
    moveBy({ 0, 100 });
    Input::key(card, Qt::Key_Escape);
    EXPECT_EQ(card.dragTranslation(), 0);
    release({ 0, 100 });
    EXPECT_EQ(reports, Reports());
}

TEST_F(PromptCardDragTest, ContinuesADragAcrossRenders)
{
    press();
    moveBy({ 0, 50 });
    render(true, false);
    renderText("other");
    EXPECT_EQ(card.dragTranslation(), 50);
    release({ 0, 50 });
    EXPECT_EQ(reports, Reports({ "reorder 1" }));
}

TEST_F(PromptCardDragTest, NamesTheHandle)
{
    EXPECT_EQ(Input::accessibleName(handle()), "Drag node to reorder");
    EXPECT_EQ(handle().toolTip().toStdString(), "Drag to reorder this node");
    EXPECT_EQ(Input::role(handle()), QAccessible::Button);
}

} // namespace
