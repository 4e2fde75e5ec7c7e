#include "app/PanelFrame.h"

#include "views/Input.h"
#include "views/Picture.h"

#include <QMouseEvent>
#include <QPushButton>
#include <gtest/gtest.h>

namespace
{

class PanelFrameTest : public testing::Test
{
protected:
    PanelFrameTest()
    {
        window.resize(200, 150);
        content.setGeometry(0, 0, 200, 150);
        frame.setGeometry(0, 0, 200, 150);
        frame.raise();
        Input::show(window);
    }

    Qt::CursorShape cursorAt(const QPoint &place)
    {
        QMouseEvent move(QEvent::MouseMove, place, frame.mapToGlobal(place), Qt::NoButton,
                         Qt::NoButton, {});
        QApplication::sendEvent(&frame, &move);
        return frame.cursor().shape();
    }

    QWidget window;
    QPushButton content { &window };
    PanelFrame frame { &window };
};

TEST_F(PanelFrameTest, CoversOnlyTheBorder)
{
    for (const QPoint place : { QPoint(0, 75), QPoint(199, 75), QPoint(100, 0), QPoint(100, 149),
                                QPoint(1, 1), QPoint(198, 148) })
        EXPECT_EQ(window.childAt(place), &frame);
    for (const QPoint place : { QPoint(5, 75), QPoint(194, 75), QPoint(100, 5), QPoint(100, 144) })
        EXPECT_EQ(window.childAt(place), &content);
}

TEST_F(PanelFrameTest, FollowsTheBorderOfALargerWindow)
{
    frame.resize(300, 250);
    window.resize(300, 250);
    content.resize(300, 250);
    EXPECT_EQ(window.childAt(299, 100), &frame);
    EXPECT_EQ(window.childAt(199, 75), &content);
}

TEST_F(PanelFrameTest, ShowsTheResizeDirectionInTheCursor)
{
    EXPECT_EQ(cursorAt({ 1, 75 }), Qt::SizeHorCursor);
    EXPECT_EQ(cursorAt({ 198, 75 }), Qt::SizeHorCursor);
    EXPECT_EQ(cursorAt({ 100, 1 }), Qt::SizeVerCursor);
    EXPECT_EQ(cursorAt({ 100, 148 }), Qt::SizeVerCursor);
    EXPECT_EQ(cursorAt({ 1, 1 }), Qt::SizeFDiagCursor);
    EXPECT_EQ(cursorAt({ 198, 148 }), Qt::SizeFDiagCursor);
    EXPECT_EQ(cursorAt({ 198, 1 }), Qt::SizeBDiagCursor);
    EXPECT_EQ(cursorAt({ 1, 148 }), Qt::SizeBDiagCursor);
    EXPECT_EQ(cursorAt({ 10, 1 }), Qt::SizeFDiagCursor);
    EXPECT_EQ(cursorAt({ 1, 138 }), Qt::SizeBDiagCursor);
}

TEST_F(PanelFrameTest, DrawsOnlyTheEdge)
{
    const Picture picture(frame, Background);
    EXPECT_TRUE(isColor(picture.at(100, 0.4), over(SrgbColor::white(0.1), Background)));
    EXPECT_TRUE(isColor(picture.at(0.4, 75), over(SrgbColor::white(0.1), Background)));
    EXPECT_TRUE(isColor(picture.at(100, 2), Background, 0));
    EXPECT_TRUE(isColor(picture.at(100, 75), Background, 0));
}

TEST_F(PanelFrameTest, RoundsTheCorners)
{
    EXPECT_EQ(Picture(frame, Background).at(0.4, 0.4).alpha(), 255);
    frame.render(true);
    EXPECT_EQ(frame.radius(), 10);
    const Picture round(frame, Background);
    for (const QPointF corner :
         { QPointF(0.4, 0.4), QPointF(199.4, 0.4), QPointF(0.4, 149.4), QPointF(199.4, 149.4) })
        EXPECT_EQ(round.at(corner.x(), corner.y()).alpha(), 0);
    EXPECT_EQ(round.at(100, 0.4).alpha(), 255);
}

TEST_F(PanelFrameTest, HasSquareCornersWithoutACompositor)
{
    frame.render(true);
    frame.render(false);
    EXPECT_EQ(frame.radius(), 0);
    EXPECT_EQ(Picture(frame, Background).at(0.4, 0.4).alpha(), 255);
    EXPECT_EQ(window.childAt(1, 1), &frame);
}

TEST_F(PanelFrameTest, DoesNotResizeAMaximizedWindow)
{
    window.setWindowState(Qt::WindowMaximized);
    frame.render(true);
    EXPECT_EQ(frame.radius(), 0);
    EXPECT_EQ(window.childAt(0, 75), &content);
    window.setWindowState(Qt::WindowNoState);
    frame.render(true);
    EXPECT_EQ(frame.radius(), 10);
    EXPECT_EQ(window.childAt(0, 75), &frame);
}

} // namespace
