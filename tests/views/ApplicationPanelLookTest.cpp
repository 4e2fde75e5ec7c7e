#include "views/ApplicationPanelFixture.h"
#include "views/Contrast.h"
#include "views/Picture.h"

#include <QScrollBar>
#include <gtest/gtest.h>

namespace
{

const SrgbColor SelectedRow = Accent.withOpacity(0.75);
constexpr int IconSize = 24;

class ApplicationPanelLookTest : public ApplicationPanelFixture
{
protected:
    QColor background() const { return panel->palette().color(QPalette::Window); }

    QColor listFill() const { return over(SrgbColor::black(0.3), background()); }

    /// The panel with all icons loaded.
    Picture takePicture()
    {
        settle();
        settle();
        return Picture(*panel, background());
    }

    QRect rowFrame(int row) const
    {
        const QRect frame = list().visualRect(list().model()->index(row, 0));
        return frame.translated(list().viewport()->mapTo(panel.data(), QPoint()));
    }

    /// The area of the row's texts.
    QRectF textFrame(int row) const { return rowFrame(row).adjusted(9 + IconSize + 4, 3, -3, -3); }

    /// The area of the name in a row with a comment.
    QRectF nameFrame(int row) const
    {
        QRectF frame = textFrame(row);
        frame.setHeight(frame.height() / 2);
        return frame;
    }

    QRectF commentFrame(int row) const
    {
        return nameFrame(row).translated(0, nameFrame(row).height());
    }

    static double contrast(const Picture &picture, const QRectF &area, const QColor &fill)
    {
        return Contrast::ratio(picture.strongestInkIn(area, fill).rgb(), fill.rgb());
    }
};

TEST_F(ApplicationPanelLookTest, ShowsIconNameAndComment)
{
    open();
    const Picture picture = takePicture();
    const QRect frame = rowFrame(1);
    const QRectF icon = picture.inkIn(
        QRectF(frame.topLeft(), QSizeF(9 + IconSize + 3, frame.height())), listFill());
    EXPECT_EQ(icon.size(), QSizeF(IconSize, IconSize));
    EXPECT_NEAR(icon.left(), frame.left() + 9, 0.5);
    EXPECT_NEAR(icon.center().y(), QRectF(frame).center().y(), 0.5);
    EXPECT_TRUE(isColor(picture.at(icon.center().x(), icon.center().y()), Qt::green));
    const QRectF name = picture.inkIn(nameFrame(1), listFill());
    const QRectF comment = picture.inkIn(commentFrame(1), listFill());
    EXPECT_NEAR(name.left(), comment.left(), 1.5);
    EXPECT_GT(name.left(), icon.right() + 8);
    EXPECT_GT(picture.strongestInkIn(name, listFill()).lightness(),
              picture.strongestInkIn(comment, listFill()).lightness() + 50);
}

TEST_F(ApplicationPanelLookTest, CentersANameWithoutComment)
{
    open();
    const QRectF name = takePicture().inkIn(textFrame(4), listFill());
    EXPECT_NEAR(name.center().y(), QRectF(rowFrame(4)).center().y(), 2);
}

TEST_F(ApplicationPanelLookTest, KeepsLongTextsOnOneLine)
{
    const std::string longText = "A long text that does not fit\ninto a row of any list at all, "
                                 "however wide its window may be made by those who like that";
    workspace.applications = { { "/a", longText, longText, "" }, { "/b", "Short", "Short", "" } };
    open();
    const Picture picture = takePicture();
    EXPECT_LE(picture.inkIn(rowFrame(0), listFill()).right(), rowFrame(0).right() - 8);
    EXPECT_NEAR(picture.inkIn(nameFrame(0), listFill()).top() - rowFrame(0).top(),
                picture.inkIn(nameFrame(1), listFill()).top() - rowFrame(1).top(), 2);
    EXPECT_NEAR(picture.inkIn(commentFrame(0), listFill()).bottom() - rowFrame(0).bottom(),
                picture.inkIn(commentFrame(1), listFill()).bottom() - rowFrame(1).bottom(), 3);
}

TEST_F(ApplicationPanelLookTest, ElidesLongTextsWithDots)
{
    const std::string tall(200, 'l');
    workspace.applications = { { "/a", tall, tall, "" } };
    open();
    const Picture picture = takePicture();
    for (const QRectF &line : { nameFrame(0), commentFrame(0) }) {
        const QRectF ink = picture.inkIn(line, listFill());
        const QRectF end(ink.right() - 4, ink.top(), 4, ink.height());
        EXPECT_GT(picture.inkIn(end, listFill()).top(), ink.center().y());
    }
}

TEST_F(ApplicationPanelLookTest, GivesAllRowsTheSameHeight)
{
    install(100);
    open();
    for (int row = 1; row < 6; ++row) {
        EXPECT_EQ(rowFrame(row).top() - rowFrame(row - 1).top(), rowFrame(0).height());
        EXPECT_EQ(rowFrame(row).width(), rowFrame(0).width());
    }
}

TEST_F(ApplicationPanelLookTest, ShowsTheSelectedRowInTheAccentColor)
{
    open();
    press(Qt::Key_Down);
    const Picture picture = takePicture();
    const QRect selected = rowFrame(0);
    EXPECT_TRUE(isColor(picture.at(selected.left() + 4, selected.center().y()),
                        over(SelectedRow, listFill())));
    EXPECT_TRUE(isColor(picture.at(selected.right() - 4, selected.center().y()),
                        over(SelectedRow, listFill())));
    EXPECT_TRUE(isColor(picture.at(rowFrame(1).left() + 4, rowFrame(1).center().y()), listFill()));
}

TEST_F(ApplicationPanelLookTest, HighlightsTheHoveredRow)
{
    open();
    Input::moveTo(*panel, rowCenter(2));
    const Picture picture = takePicture();
    const auto edge = [this, &picture](int row) {
        return picture.at(rowFrame(row).left() + 4, rowFrame(row).center().y());
    };
    EXPECT_GT(edge(2).lightness(), listFill().lightness() + 8);
    EXPECT_TRUE(isGrey(edge(2)));
    EXPECT_TRUE(isColor(edge(1), listFill()));
}

TEST_F(ApplicationPanelLookTest, HasReadableContrast)
{
    open();
    press(Qt::Key_Down);
    const Picture picture = takePicture();
    for (const int row : { 0, 1 }) {
        const QColor fill = picture.at(rowFrame(row).left() + 4, rowFrame(row).center().y());
        for (const QRectF &line : { nameFrame(row), commentFrame(row) })
            EXPECT_GT(contrast(picture, line, fill), 4.5) << row;
    }
    type("nothing");
    const QRectF middle = QRectF(list().geometry()).adjusted(20, 20, -20, -20);
    EXPECT_GT(contrast(takePicture(), middle, listFill()), 4.5);
}

TEST_F(ApplicationPanelLookTest, CentersTheNoteInAnEmptyList)
{
    workspace.applications.clear();
    open();
    const QRectF inside = QRectF(list().geometry()).adjusted(4, 4, -4, -4);
    const QRectF note = takePicture().inkIn(inside, listFill());
    EXPECT_NEAR(note.center().x(), inside.center().x(), 2);
    EXPECT_NEAR(note.center().y(), inside.center().y(), 3);
    EXPECT_GT(note.width(), 80);
}

TEST_F(ApplicationPanelLookTest, KeepsRowsClearOfTheScrollBar)
{
    open();
    EXPECT_EQ(list().verticalScrollBar()->maximum(), 0);
    const QRect frame = list().geometry();
    EXPECT_EQ(rowFrame(0).left() - frame.left(), 4);
    EXPECT_EQ(frame.right() - rowFrame(0).right(), 4);
    panel->reject();
    settle();
    install(100);
    open();
    const auto &bar = *list().verticalScrollBar();
    const int barLeft = bar.mapTo(panel.data(), QPoint()).x();
    EXPECT_GT(bar.maximum(), 0);
    EXPECT_LE(rowFrame(0).right(), barLeft);
    EXPECT_LE(barLeft + bar.width(), list().geometry().right());
    const QRectF barFrame(barLeft, list().y() + 3, bar.width(), list().height() - 6);
    EXPECT_LT(takePicture().inkIn(barFrame, listFill()).height(), list().height() / 2.0);
}

TEST_F(ApplicationPanelLookTest, ShowsTheFocus)
{
    open();
    press(Qt::Key_Down);
    const auto changesIn = [this](const QRect &frame, Qt::Key key) {
        const Picture before = takePicture();
        press(key);
        return !takePicture().differenceFrom(before, frame).isEmpty();
    };
    const QRect row = rowFrame(0);
    EXPECT_TRUE(changesIn(row, Qt::Key_Tab));
    const QRect other = button("Other\u2026").geometry();
    EXPECT_TRUE(changesIn(row, Qt::Key_Tab));
    EXPECT_TRUE(changesIn(other, Qt::Key_Tab));
    const QRect edge(list().geometry().left(), list().geometry().top(), list().width(), 2);
    field().setFocus();
    type("nothing");
    EXPECT_TRUE(changesIn(edge, Qt::Key_Tab));
}

TEST_F(ApplicationPanelLookTest, ShowsAMagnifyingGlassInTheField)
{
    open();
    const QRectF before(field().x() + 4, field().y() + 4, 20, field().height() - 8);
    const QColor fill = over(SrgbColor::black(0.3), background());
    const QRectF glass = takePicture().inkIn(before, fill);
    EXPECT_NEAR(glass.width(), glass.height(), 1);
    EXPECT_NEAR(glass.center().y(), QRectF(field().geometry()).center().y(), 1);
    type("mmmm");
    EXPECT_EQ(takePicture().inkIn(before, fill), glass);
}

} // namespace
