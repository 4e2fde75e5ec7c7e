#include "app/PanelFixture.h"
#include "views/DragHandle.h"
#include "views/NodeList.h"
#include "views/OverlayScrollBar.h"

#include <gtest/gtest.h>

namespace
{

/// The list scrolls to the focus.
class PanelFollowsFocusTest : public PanelFixture
{
protected:
    PanelFollowsFocusTest() { start({ tabOf("Prompts", numberedTexts(40)) }); }

    PromptCard *cardWithFocus()
    {
        for (QWidget *widget = panel().focusWidget(); widget; widget = widget->parentWidget()) {
            if (auto *const card = qobject_cast<PromptCard *>(widget))
                return card;
        }
        return nullptr;
    }

    bool isFullyVisible(const PromptCard &card)
    {
        const auto *const list = panel().findChild<NodeList *>();
        return list->rect().contains(card.geometry());
    }

    OverlayScrollBar &scrollBar()
    {
        return *panel().findChild<NodeList *>()->findChild<OverlayScrollBar *>(
            QString(), Qt::FindDirectChildrenOnly);
    }

    template <typename Control>
    Control &firstInList()
    {
        return *panel().findChild<PromptCard *>()->findChild<Control *>();
    }
};

TEST_F(PanelFollowsFocusTest, KeepsANodeInSightThatIsMovedByKeys)
{
    firstInList<DragHandle>().setFocus(Qt::TabFocusReason);
    for (int step = 0; step < 8; ++step) {
        Input::key(panel(), Qt::Key_Down);
        ASSERT_TRUE(cardWithFocus());
        EXPECT_TRUE(isFullyVisible(*cardWithFocus()));
    }
    EXPECT_EQ(panel().findChild<NodeList *>(), cardWithFocus()->parentWidget());
}

TEST_F(PanelFollowsFocusTest, ScrollsBackToTheNodeThatIsTypedInto)
{
    auto &editor = firstInList<NodeEditor>();
    editor.setFocus();
    scrollBar().setValue(4000);
    settle();
    Input::type(panel(), "x");
    EXPECT_TRUE(isFullyVisible(*cardWithFocus()));
}

TEST_F(PanelFollowsFocusTest, MovesByShiftTabFromACardThatWasScrolledAway)
{
    scrollBar().setValue(10 * (PromptCard::cardHeight() + 10));
    draw();
    auto *const handle = panel().childAt(30, 90);
    ASSERT_TRUE(qobject_cast<DragHandle *>(handle));
    handle->setFocus(Qt::TabFocusReason);
    scrollBar().setValue(30 * (PromptCard::cardHeight() + 10));
    settle();
    Input::key(panel(), Qt::Key_Backtab, Qt::ShiftModifier);
    ASSERT_TRUE(cardWithFocus());
    EXPECT_EQ(cardWithFocus()->findChild<NodeEditor *>()->toPlainText(), QStringLiteral("text 9"));
    EXPECT_TRUE(isFullyVisible(*cardWithFocus()));
}

TEST_F(PanelFollowsFocusTest, CancelsADragByEscape)
{
    auto &handle = firstInList<DragHandle>();
    Input::press(handle, { 10, 10 });
    Input::moveTo(handle, { 10, 140 });
    auto *const card = qobject_cast<PromptCard *>(handle.parentWidget());
    EXPECT_NE(card->dragTranslation(), 0);
    Input::key(panel(), Qt::Key_Escape);
    EXPECT_EQ(card->dragTranslation(), 0);
    Input::release(handle, { 10, 140 });
    settle();
    EXPECT_EQ(card->findChild<NodeEditor *>()->toPlainText(), QStringLiteral("text 0"));
    EXPECT_EQ(card->y(), 10);
}

TEST_F(PanelFollowsFocusTest, KeepsTheScrollBarClearOfTheFrame)
{
    auto &bar = scrollBar();
    for (int x = 0; x < bar.width(); ++x) {
        const QPoint place = bar.mapTo(&panel(), QPoint(x, bar.height() / 2));
        EXPECT_EQ(panel().childAt(place), &bar) << x;
    }
}

} // namespace
