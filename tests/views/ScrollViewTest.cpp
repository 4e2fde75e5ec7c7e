#include "views/ScrollView.h"

#include "views/Input.h"
#include "views/OverlayScrollBar.h"

#include <QCursor>
#include <QVBoxLayout>
#include <gtest/gtest.h>

#include <vector>

namespace
{

constexpr int ButtonHeight = 50;

/// Ten rows, four of them visible.
class ScrollViewTest : public testing::Test
{
protected:
    ScrollViewTest()
    {
        window.resize(200, 200);
        view.setGeometry(window.rect());
        auto *const layout = new QVBoxLayout(view.content());
        layout->setContentsMargins(0, 0, 0, 0);
        layout->setSpacing(0);
        for (int count = 0; count < 10; ++count) {
            rows.push_back(new QWidget);
            rows.back()->setFixedHeight(ButtonHeight);
            rows.back()->setFocusPolicy(Qt::StrongFocus);
            layout->addWidget(rows.back());
        }
        Input::show(window);
    }

    OverlayScrollBar &bar() const { return *view.findChild<OverlayScrollBar *>(); }

    int topOf(std::size_t row) const { return rows[row]->mapTo(&view, QPoint()).y(); }

    QWidget window;
    ScrollView view { &window };
    std::vector<QWidget *> rows;
};

TEST_F(ScrollViewTest, HintsTheHeightOfItsContent)
{
    EXPECT_EQ(view.sizeHint().height(), 10 * ButtonHeight);
    EXPECT_EQ(view.content()->size(), QSize(200, 10 * ButtonHeight));
    EXPECT_EQ(bar().maximum(), 6 * ButtonHeight);
    EXPECT_EQ(bar().pageStep(), 200);
}

TEST_F(ScrollViewTest, UpdatesHoverWhileScrolling)
{
    QCursor::setPos(rows[0]->mapToGlobal(rows[0]->rect().center()));
    QApplication::processEvents();
    ASSERT_TRUE(rows[0]->underMouse());
    Input::wheel(view, -1);
    EXPECT_FALSE(rows[0]->underMouse());
    EXPECT_TRUE(rows[1]->underMouse());
}

TEST_F(ScrollViewTest, ScrollsByTheWheel)
{
    Input::wheel(view, -1);
    EXPECT_EQ(topOf(0), -72);
    Input::wheel(view, 2);
    EXPECT_EQ(topOf(0), 0);
}

TEST_F(ScrollViewTest, ScrollsByScrollKeysOnly)
{
    EXPECT_TRUE(view.scroll(Qt::Key_Down));
    EXPECT_EQ(topOf(0), -24);
    EXPECT_TRUE(view.scroll(Qt::Key_PageDown));
    EXPECT_EQ(topOf(0), -224);
    EXPECT_TRUE(view.scroll(Qt::Key_Up));
    EXPECT_EQ(topOf(0), -200);
    EXPECT_TRUE(view.scroll(Qt::Key_End));
    EXPECT_EQ(topOf(9), 150);
    EXPECT_TRUE(view.scroll(Qt::Key_PageUp));
    EXPECT_EQ(topOf(9), 350);
    EXPECT_TRUE(view.scroll(Qt::Key_Home));
    EXPECT_EQ(topOf(0), 0);
    EXPECT_FALSE(view.scroll(Qt::Key_Space));
    EXPECT_FALSE(view.scroll(Qt::Key_Escape));
}

TEST_F(ScrollViewTest, RevealsARowWithMinimalScrolling)
{
    view.reveal(*rows[3]);
    EXPECT_EQ(topOf(0), 0);
    view.reveal(*rows[5]);
    EXPECT_EQ(topOf(5), 150);
    view.reveal(*rows[3]);
    EXPECT_EQ(topOf(5), 150);
    view.reveal(*rows[1]);
    EXPECT_EQ(topOf(1), 0);
}

TEST_F(ScrollViewTest, RevealsTheFocusedRow)
{
    auto *const part = new QWidget(rows[7]);
    part->setGeometry(10, 10, 5, 5);
    part->setFocusPolicy(Qt::StrongFocus);
    part->show();
    part->setFocus();
    EXPECT_EQ(topOf(7), 150);
}

TEST_F(ScrollViewTest, KeepsTheRevealedRowVisibleWhenSizesChange)
{
    view.reveal(*rows[9]);
    rows[9]->setFixedHeight(80);
    QCoreApplication::processEvents();
    EXPECT_EQ(topOf(9), 120);
    view.resize(200, 150);
    EXPECT_EQ(topOf(9), 70);
}

TEST_F(ScrollViewTest, StopsKeepingARowVisibleOnceTheUserScrolls)
{
    view.reveal(*rows[9]);
    view.scroll(Qt::Key_Home);
    view.resize(200, 150);
    EXPECT_EQ(topOf(0), 0);

    view.reveal(*rows[9]);
    Input::wheel(view, 1);
    const int top = topOf(0);
    view.resize(200, 160);
    EXPECT_EQ(topOf(0), top);
}

TEST_F(ScrollViewTest, StaysInRangeWhenItsContentShrinks)
{
    view.scroll(Qt::Key_End);
    for (std::size_t row = 4; row < 10; ++row)
        rows[row]->hide();
    QCoreApplication::processEvents();
    EXPECT_EQ(topOf(0), 0);
    EXPECT_EQ(bar().maximum(), 0);
}

TEST_F(ScrollViewTest, SurvivesTheDeletionOfARow)
{
    rows[9]->setFocus();
    delete rows[9];
    view.resize(200, 150);
    EXPECT_LE(bar().value(), bar().maximum());
}

} // namespace
