#include "views/DragHandle.h"
#include "views/NodeListFixture.h"

#include <QCursor>
#include <gtest/gtest.h>

namespace
{

class NodeListWheelTest : public NodeListFixture
{
protected:
    NodeListWheelTest()
    {
        Texts texts = numberedTexts(30);
        texts[0] = "long";
        for (int line = 0; line < 50; ++line)
            texts[0] += "\nline";
        openList(texts);
    }

    NodeEditor &editor(std::size_t row) const { return editorOf(*cardOf(row)); }

    /// The vertical centre of a dragged handle's lines in the window; -1 if none is dragged.
    int middleOfLines() const
    {
        for (auto *const child :
             list->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
            if (child->size() == QSize(24, 9))
                return child->mapTo(&window, child->rect().center()).y();
        }
        return -1;
    }

    int textScroll(std::size_t row) const { return editor(row).verticalScrollBar()->value(); }
};

TEST_F(NodeListWheelTest, ScrollsTheListOverACard)
{
    Input::wheel(*cardOf(0), -1);
    EXPECT_GT(scrollBar().value(), 0);
    expectStoreShown();
    Input::wheel(*cardOf(1), 1);
    EXPECT_EQ(scrollBar().value(), 0);
}

TEST_F(NodeListWheelTest, ScrollsTheListOverTheGapBetweenCards)
{
    QWheelEvent event(QPointF(2, 2), list->mapToGlobal(QPointF(2, 2)), {}, { 0, -120 },
                      Qt::NoButton, {}, Qt::NoScrollPhase, false);
    QApplication::sendEvent(list, &event);
    EXPECT_GT(scrollBar().value(), 0);
}

TEST_F(NodeListWheelTest, ScrollsTheListOverAnUnfocusedEditor)
{
    Input::wheel(editor(0), -1);
    EXPECT_GT(scrollBar().value(), 0);
    EXPECT_EQ(textScroll(0), 0);
}

TEST_F(NodeListWheelTest, ScrollsTheTextOfTheFocusedEditor)
{
    cardOf(0)->focusEditor();
    Input::wheel(editor(0), -1);
    EXPECT_GT(textScroll(0), 0);
    EXPECT_EQ(scrollBar().value(), 0);
}

TEST_F(NodeListWheelTest, DoesNotScrollTheListAtTheEndOfAFocusedText)
{
    cardOf(0)->focusEditor();
    editor(0).verticalScrollBar()->setValue(editor(0).verticalScrollBar()->maximum());
    Input::wheel(editor(0), -1);
    EXPECT_EQ(scrollBar().value(), 0);
}

TEST_F(NodeListWheelTest, ScrollsTheListOverAFocusedShortText)
{
    cardOf(1)->focusEditor();
    Input::wheel(editor(1), -1);
    EXPECT_GT(scrollBar().value(), 0);
}

TEST_F(NodeListWheelTest, KeepsADraggedHandleAtThePointer)
{
    auto &card = *cardOf(1);
    int steps = 0;
    card.onReorder = [&steps](const QUuid &, int asked) { steps = asked; };
    auto &handle = *card.findChild<DragHandle *>();
    const QPoint start = Input::toWindow(handle, handle.rect().center());
    Input::press(window, start);
    Input::moveTo(window, start + QPoint(0, 50));
    ASSERT_NEAR(middleOfLines(), start.y() + 50, 1);
    Input::wheel(*list, -4);
    ASSERT_EQ(scrollBar().value(), 4 * 72);
    EXPECT_EQ(card.dragTranslation(), 50 + 4 * 72);
    EXPECT_NEAR(middleOfLines(), start.y() + 50, 1);
    Input::moveTo(window, start + QPoint(0, 51));
    EXPECT_EQ(card.dragTranslation(), 51 + 4 * 72);
    EXPECT_NEAR(middleOfLines(), start.y() + 51, 1);
    Input::release(window, start + QPoint(0, 51));
    EXPECT_EQ(steps, 2);
    EXPECT_EQ(middleOfLines(), -1);
}

TEST_F(NodeListWheelTest, ScrollingStartsNoDrag)
{
    auto &card = *cardOf(1);
    auto &handle = *card.findChild<DragHandle *>();
    const QPoint start = Input::toWindow(handle, handle.rect().center());
    Input::press(window, start);
    Input::wheel(*list, -1);
    Input::moveTo(window, start + QPoint(0, 3));
    EXPECT_EQ(card.dragTranslation(), 0);
    Input::release(window, start + QPoint(0, 3));
}

TEST_F(NodeListWheelTest, UpdatesHoverWhileScrolling)
{
    const auto &trash = *Input::button(*cardOf(1), "Delete node");
    QCursor::setPos(trash.mapToGlobal(trash.rect().center()));
    settle();
    ASSERT_TRUE(trash.underMouse());
    Input::wheel(*list, -1);
    EXPECT_FALSE(trash.underMouse());
    EXPECT_TRUE(window.childAt(window.mapFromGlobal(QCursor::pos()))->underMouse());
    Input::wheel(*list, 1);
    EXPECT_TRUE(trash.underMouse());
}

TEST_F(NodeListWheelTest, StopsAtBothEnds)
{
    Input::wheel(*cardOf(0), 3);
    EXPECT_EQ(scrollBar().value(), 0);
    for (int count = 0; count < 200; ++count)
        Input::wheel(*list, -1);
    EXPECT_EQ(scrollBar().value(), scrollBar().maximum());
    expectStoreShown();
}

TEST_F(NodeListWheelTest, ScrollsByDraggingTheScrollBar)
{
    auto &bar = scrollBar();
    Input::press(bar, { 3, 10 });
    Input::moveTo(bar, { 3, 250 });
    EXPECT_GT(bar.value(), bar.maximum() / 3);
    Input::release(bar, { 3, 250 });
    expectStoreShown();
}

} // namespace
