#include "views/NodeListFixture.h"

#include <gtest/gtest.h>

#include <random>

namespace
{

/// The most cards that the list creates for any number of nodes.
constexpr std::size_t CardLimit = 20;

class NodeListTest : public NodeListFixture
{
protected:
    std::size_t randomRow() { return randomBelow(blocks().size()); }

    std::size_t randomBelow(std::size_t count)
    {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(random);
    }

    void changeSomething()
    {
        const auto id = blocks().empty() ? QUuid() : blocks()[randomRow()].id;
        const auto tab = store().tabs().get()[randomBelow(store().tabs().get().size())].id;
        switch (randomBelow(9)) {
        case 0:
            return store().addBlock();
        case 1:
            return store().deleteBlock(id);
        case 2:
            return store().moveBlock(id, static_cast<int>(randomBelow(41)) - 20);
        case 3:
            return store().moveBlock(id, randomBelow(2) == 0 ? -1 : 1);
        case 4:
            return store().updateBlock(id, "changed " + std::to_string(randomBelow(1000)));
        case 5:
            return store().selectTab(tab);
        case 6:
            return scrollTo(
                static_cast<int>(randomBelow(static_cast<std::size_t>(scrollBar().maximum()) + 1)));
        case 7:
            return scrollTo(scrollBar().value() + static_cast<int>(randomBelow(401)) - 200);
        default:
            if (auto *const card = cardOf(randomBelow(50)))
                card->focusEditor();
        }
    }

    std::mt19937 random { 20261121 }; // NOLINT(*-msc51-cpp): the same sequence each time
};

TEST_F(NodeListTest, ShowsTheNodesOfTheActiveTabInOrder)
{
    openList(numberedTexts(2));
    expectStoreShown();
    EXPECT_EQ(visibleCards().size(), 2U);
    EXPECT_EQ(visibleCards().front()->y(), 10);
    EXPECT_EQ(visibleCards().back()->y(), 10 + PromptCard::cardHeight() + 10);
}

TEST_F(NodeListTest, CreatesFewCardsForAHundredThousandNodes)
{
    openList(numberedTexts(100'000));
    EXPECT_LE(cardCount(), CardLimit);
    expectStoreShown();
    scrollTo(scrollBar().maximum());
    expectStoreShown();
    EXPECT_EQ(textOf(*visibleCards().back()), "text 99999");
    EXPECT_LE(visibleCards().back()->geometry().bottom(), Height - 10);
    for (int step = 1; step <= 20; ++step) {
        scrollTo(scrollBar().maximum() / 20 * (20 - step));
        draw();
        expectStoreShown();
    }
    EXPECT_EQ(textOf(*visibleCards().front()), "text 0");
    EXPECT_LE(cardCount(), CardLimit);
}

TEST_F(NodeListTest, ShowsTheRightNodesAtEveryScrollPosition)
{
    openList(numberedTexts(60));
    for (int offset = 0; offset <= scrollBar().maximum(); offset += 7) {
        scrollTo(offset);
        ASSERT_NO_FATAL_FAILURE(expectStoreShown()) << offset;
    }
    EXPECT_LE(cardCount(), CardLimit);
}

TEST_F(NodeListTest, ShowsTheRightNodesAfterRandomChanges)
{
    openList({ tabOf("One", numberedTexts(40)), tabOf("Two", numberedTexts(3)),
               tabOf("Three", numberedTexts(200)), tabOf("Four") });
    for (int step = 0; step < 600 && !HasFailure(); ++step) {
        changeSomething();
        if (randomBelow(3) == 0)
            draw();
        else
            list->render();
        ASSERT_NO_FATAL_FAILURE(expectStoreShown()) << "step " << step;
    }
    EXPECT_LE(cardCount(), CardLimit);
}

TEST_F(NodeListTest, FillsAnEnlargedWindow)
{
    openList(numberedTexts(60));
    scrollTo(scrollBar().maximum());
    list->resize(430, 300);
    list->resize(430, Height);
    expectStoreShown();
}

TEST_F(NodeListTest, ResizesTheCardsToItsWidth)
{
    openList(numberedTexts(3));
    list->resize(600, Height);
    for (const auto *const card : visibleCards())
        EXPECT_EQ(card->width(), 580);
}

TEST_F(NodeListTest, KeepsTheCardOfAMovedNode)
{
    openList(numberedTexts(3));
    const auto *const second = cardOf(1);
    store().moveBlock(blocks()[0].id, 2);
    draw();
    EXPECT_EQ(cardOf(0), second);
}

TEST_F(NodeListTest, ScrollRangeEndsAtTheLastNode)
{
    openList(numberedTexts(60));
    const int all = 10 + 60 * (PromptCard::cardHeight() + 10);
    EXPECT_EQ(scrollBar().maximum(), all - Height);
    openList(numberedTexts(1));
    EXPECT_EQ(scrollBar().maximum(), 0);
}

TEST_F(NodeListTest, ScrollsToTheTopOfAnotherTab)
{
    openList({ tabOf("One", numberedTexts(60)), tabOf("Two", numberedTexts(50)) });
    scrollTo(3000);
    store().selectTab(tabID(1));
    draw();
    EXPECT_EQ(scrollBar().value(), 0);
    expectStoreShown();
}

TEST_F(NodeListTest, KeepsTheScrollPositionWhenANodeChanges)
{
    openList(numberedTexts(60));
    scrollTo(3000);
    store().updateBlock(blocks()[0].id, "other");
    store().copyBlock(blocks()[17].id);
    draw();
    EXPECT_EQ(scrollBar().value(), 3000);
}

TEST_F(NodeListTest, ShowsTheEmptyStateForAnEmptyTab)
{
    openList(Texts {});
    const auto *const empty = list->findChild<EmptyState *>();
    ASSERT_TRUE(empty);
    EXPECT_TRUE(empty->isVisible());
    EXPECT_EQ(empty->geometry(), QRect(10, 10, 410, empty->sizeHint().height()));
    EXPECT_EQ(visibleCards().size(), 0U);
    store().addBlock();
    draw();
    EXPECT_FALSE(empty->isVisible());
    EXPECT_EQ(visibleCards().size(), 1U);
    store().deleteBlock(blocks()[0].id);
    draw();
    EXPECT_TRUE(empty->isVisible());
    EXPECT_EQ(visibleCards().size(), 0U);
}

TEST_F(NodeListTest, ShowsNothingWithoutTabs)
{
    const PromptTab twin = tabOf("Twin", numberedTexts(3));
    openList({ twin, twin });
    store().deleteTab(twin.id);
    draw();
    EXPECT_EQ(visibleCards().size(), 0U);
    const auto *const empty = list->findChild<EmptyState *>();
    EXPECT_TRUE(!empty || !empty->isVisible());
}

TEST_F(NodeListTest, ShowsNodesWithEqualIds)
{
    PromptTab tab = tabOf("Prompts", numberedTexts(8));
    tab.blocks[1].id = tab.blocks[0].id;
    tab.blocks[7].id = tab.blocks[0].id;
    openList({ tab });
    expectStoreShown();
    scrollTo(scrollBar().maximum());
    expectStoreShown();
    scrollTo(0);
    expectStoreShown();
    store().deleteBlock(tab.blocks[0].id);
    draw();
    expectStoreShown();
    EXPECT_EQ(blocks().size(), 5U);
}

TEST_F(NodeListTest, MarksTheCopiedNode)
{
    openList(numberedTexts(2));
    store().copyBlock(blocks()[1].id);
    list->render();
    EXPECT_FALSE(Input::button(*cardOf(0), "Copied"));
    EXPECT_TRUE(Input::button(*cardOf(1), "Copied"));
    advance(Milliseconds(1400));
    list->render();
    EXPECT_FALSE(Input::button(*cardOf(1), "Copied"));
}

TEST_F(NodeListTest, EditLastNodeScrollsToTheEndAndFocuses)
{
    openList(numberedTexts(60));
    list->editLastNode();
    EXPECT_EQ(scrollBar().value(), scrollBar().maximum());
    EXPECT_TRUE(editorOf(*cardOf(59)).hasFocus());
}

} // namespace
