#include "views/NewNodeButton.h"
#include "views/NodeList.h"
#include "views/PanelContentFixture.h"
#include "views/Picture.h"
#include "views/TabStrip.h"

#include <gtest/gtest.h>

namespace
{

class QuillsatchelViewLookTest : public PanelContentFixture
{
protected:
    template <typename Widget>
    QRect frameOf() const
    {
        return Input::frameIn(*view, *view->findChild<Widget *>());
    }
};

TEST_F(QuillsatchelViewLookTest, HasThePanelSizes)
{
    openView(Texts {});
    EXPECT_EQ(view->minimumSize(), QSize(390, 420));
    EXPECT_EQ(view->size(), QSize(430, 650));
    EXPECT_EQ(view->sizeHint(), QSize(430, 650));
    EXPECT_EQ(view->maximumSize(), QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
}

TEST_F(QuillsatchelViewLookTest, StacksStripDividerListAndButton)
{
    openView(Texts { "a" });
    for (const QSize size : { QSize(430, 650), QSize(390, 420), QSize(700, 500) }) {
        view->resize(size);
        settle();
        EXPECT_EQ(frameOf<TabStrip>(), QRect(0, 0, size.width(), 38));
        const int buttonTop = size.height() - 8 - 29;
        EXPECT_EQ(frameOf<NodeList>(), QRect(0, 39, size.width(), buttonTop - 8 - 39));
        EXPECT_EQ(frameOf<NewNodeButton>(), QRect(8, buttonTop, size.width() - 16, 29));
    }
}

TEST_F(QuillsatchelViewLookTest, DimsTheSelectionWithoutFocus)
{
    openView(Texts { "    ", "    " });
    for (const std::size_t index : { 0U, 1U }) {
        Input::click(editor(index));
        Input::key(*view, Qt::Key_A, Qt::ControlModifier);
    }
    const Picture picture(*view, Background);
    const auto colorOfSelection = [this, &picture](std::size_t index) {
        const QRect cursor = editor(index).cursorRect(); // after the last space
        const QPoint position = cursor.center() - QPoint(4, 0);
        const QPoint inView = editor(index).viewport()->mapTo(&*view, position);
        return picture.at(inView.x() + 0.5, inView.y() + 0.5);
    };
    const QColor card = over({ 0.125, 0.12, 0.14 }, Background);
    EXPECT_TRUE(isColor(colorOfSelection(0), over(SrgbColor::white(0.2), card)));
    EXPECT_TRUE(isColor(colorOfSelection(1), over({ 0.91, 0.16, 0.17, 0.75 }, card)));
}

TEST_F(QuillsatchelViewLookTest, DrawsTheDividerBelowTheStrip)
{
    openView(Texts {});
    const Picture picture(*view, Background);
    EXPECT_TRUE(isColor(picture.at(200, 37.5), over(SrgbColor::black(0.08), Background)));
    EXPECT_TRUE(isColor(picture.at(200, 38.5), over(SrgbColor::white(0.1), Background)));
    EXPECT_TRUE(isColor(picture.at(200, 39.5), Background));
}

TEST_F(QuillsatchelViewLookTest, DrawsTheNewNodeButtonAsACapsule)
{
    openView(Texts {});
    const Picture picture(*view, Background);
    const QRect frame = frameOf<NewNodeButton>();
    const Picture shape(view->size(), view->devicePixelRatio(), Background,
                        [&frame](QPainter &painter) {
                            painter.setPen(Qt::NoPen);
                            painter.setBrush(QColor::fromRgbF(1, 1, 1, 0.14F));
                            painter.drawRoundedRect(QRectF(frame), 14.5, 14.5);
                        });
    const QColor fill = over(SrgbColor::white(0.14), Background);
    EXPECT_TRUE(isColor(picture.at(frame.x() + 40, frame.center().y()), fill));
    const QRectF leftEnd(frame.x() - 2, frame.y() - 2, 40, 33);
    EXPECT_EQ(picture.differenceFrom(shape, leftEnd), QRectF());
    const QRectF rightEnd(frame.right() - 38, frame.y() - 2, 40, 33);
    EXPECT_EQ(picture.differenceFrom(shape, rightEnd), QRectF());

    const QRectF label = picture.inkIn(QRectF(frame).adjusted(30, 3, -30, -3), fill);
    EXPECT_NEAR(label.center().x(), QRectF(frame).center().x(), 3);
    EXPECT_NEAR(label.center().y(), QRectF(frame).center().y(), 2);
    EXPECT_TRUE(
        isColor(picture.strongestInkIn(label, fill), over(SrgbColor::white(0.9), fill), 20));
    auto &button = *view->findChild<NewNodeButton *>();
    EXPECT_EQ(button.font().pixelSize(), 12);
    EXPECT_EQ(button.font().weight(), QFont::DemiBold);
    EXPECT_EQ(button.toolTip().toStdString(), "Add a new node");
    EXPECT_EQ(Input::accessibleName(button), "New Node");
}

TEST_F(QuillsatchelViewLookTest, PadsAndSpacesTheCardsBy10Points)
{
    openView(Texts { "a", "b" });
    EXPECT_EQ(card(0).mapTo(&*view, QPoint()), QPoint(10, 49));
    EXPECT_EQ(card(0).width(), 410);
    EXPECT_EQ(card(1).y() - card(0).geometry().bottom(), 11);
}

TEST_F(QuillsatchelViewLookTest, ShowsTheEmptyStateInTheSecondaryColor)
{
    openView(Texts {});
    auto &empty = *view->findChild<EmptyState *>();
    EXPECT_EQ(Input::accessibleName(empty), "No nodes yet");
    EXPECT_EQ(Input::role(empty), QAccessible::StaticText);
    EXPECT_EQ(
        QAccessible::queryAccessibleInterface(&empty)->text(QAccessible::Description).toStdString(),
        "Add a node to store a reusable prompt or link.");

    const Picture picture(empty, Background);
    const QRectF ink = picture.inkIn(picture.rect(), Background);
    EXPECT_GE(ink.top(), 48);
    EXPECT_LE(ink.top(), 54);
    EXPECT_LE(ink.bottom(), empty.height() - 48);
    EXPECT_GE(ink.bottom(), empty.height() - 54);
    EXPECT_NEAR(ink.center().x(), empty.width() / 2.0, 2);
    EXPECT_TRUE(isColor(picture.strongestInkIn(ink, Background),
                        over(SrgbColor::white(0.56), Background), 16));
}

TEST_F(QuillsatchelViewLookTest, SetsTheFontsOfTheEmptyState)
{
    openView(Texts {});
    auto &empty = *view->findChild<EmptyState *>();
    const Picture picture(empty, Background);
    const QFontMetrics heading(Painting::systemFont(20, QFont::DemiBold));
    const QFontMetrics note(Painting::systemFont(11));
    const qreal noteTop = empty.height() - 48 - note.height();
    const qreal headingTop = noteTop - 9 - heading.height();
    const auto widthOf = [&picture, &empty](qreal top, int height) {
        return picture.inkIn(QRectF(0, top, empty.width(), height), Background).width();
    };
    EXPECT_NEAR(widthOf(headingTop, heading.height()),
                heading.horizontalAdvance(QStringLiteral("No nodes yet")), 5);
    EXPECT_NEAR(
        widthOf(noteTop, note.height()),
        note.horizontalAdvance(QStringLiteral("Add a node to store a reusable prompt or link.")),
        5);
}

} // namespace
