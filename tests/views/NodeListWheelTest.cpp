#include "views/NodeListFixture.h"

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

    int textScroll(std::size_t row) const { return editor(row).verticalScrollBar()->value(); }
};

TEST_F(NodeListWheelTest, ScrollsTheListOverACard)
{
    Input::wheel(*cardOf(0), -1);
    EXPECT_GT(scrollBar().value(), 0);
    expectToShowTheStore();
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

TEST_F(NodeListWheelTest, StandsStillAtTheEndOfTheFocusedEditorsText)
{
    cardOf(0)->focusEditor();
    editor(0).verticalScrollBar()->setValue(editor(0).verticalScrollBar()->maximum());
    Input::wheel(editor(0), -1);
    EXPECT_EQ(scrollBar().value(), 0);
}

TEST_F(NodeListWheelTest, ScrollsTheListOverAFocusedEditorWithNothingToScroll)
{
    cardOf(1)->focusEditor();
    Input::wheel(editor(1), -1);
    EXPECT_GT(scrollBar().value(), 0);
}

TEST_F(NodeListWheelTest, StopsAtBothEnds)
{
    Input::wheel(*cardOf(0), 3);
    EXPECT_EQ(scrollBar().value(), 0);
    for (int count = 0; count < 200; ++count)
        Input::wheel(*list, -1);
    EXPECT_EQ(scrollBar().value(), scrollBar().maximum());
    expectToShowTheStore();
}

TEST_F(NodeListWheelTest, IsDraggedByItsScrollBar)
{
    auto &bar = scrollBar();
    Input::press(bar, { 3, 10 });
    Input::moveTo(bar, { 3, 250 });
    EXPECT_GT(bar.value(), bar.maximum() / 3);
    Input::release(bar, { 3, 250 });
    expectToShowTheStore();
}

} // namespace
