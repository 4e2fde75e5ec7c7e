#include "views/NodeListFixture.h"

#include <gtest/gtest.h>

namespace
{

/// The store changes while the panel is hidden.
class NodeListVisibilityTest : public NodeListFixture
{
protected:
    void hideAndDraw(const std::function<void()> &change)
    {
        window.hide();
        change();
        draw();
    }

    void showAgain()
    {
        Input::show(window);
        draw();
    }
};

TEST_F(NodeListVisibilityTest, CreatesOnlyTheVisibleCardsBeforeTheFirstPaint)
{
    open({ tabOf("Prompts", numberedTexts(20)) });
    makeList();
    window.show();
    draw();
    EXPECT_EQ(cardCount(), visibleCards().size());

    Input::show(window);
    list->repaint();
    draw();
    EXPECT_GT(cardCount(), visibleCards().size());
}

TEST_F(NodeListVisibilityTest, ShowsTheEmptyStateAfterDeletionsWhileHidden)
{
    openList(numberedTexts(3));
    hideAndDraw([this] {
        while (!blocks().empty())
            store().deleteBlock(blocks().back().id);
    });
    showAgain();
    EXPECT_TRUE(visibleCards().empty());
    EXPECT_TRUE(list->findChild<EmptyState *>()->isVisible());
}

TEST_F(NodeListVisibilityTest, ShowsChangesMadeWhileHidden)
{
    openList(numberedTexts(3));
    hideAndDraw([this] {
        store().updateBlock(blocks()[0].id, "changed");
        store().moveBlock(blocks()[0].id, 1);
    });
    showAgain();
    EXPECT_EQ(textOf(*cardOf(0)), "text 1");
    EXPECT_EQ(textOf(*cardOf(1)), "changed");
}

TEST_F(NodeListVisibilityTest, ShowsATabSelectedWhileHidden)
{
    openList({ tabOf("Full", numberedTexts(5)), tabOf("Empty") });
    hideAndDraw([this] { store().selectTab(tabID(1)); });
    showAgain();
    EXPECT_TRUE(visibleCards().empty());
}

} // namespace
