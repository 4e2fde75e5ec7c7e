#include "library/SatchelStore.h"
#include "library/SatchelStoreFixture.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace
{

class SatchelStoreBlocksTest : public SatchelStoreFixture
{
protected:
    SatchelStoreBlocksTest() { start(); }

    /// Restarts with the tabs `first`, which is active, and `second`.
    void start()
    {
        writeFile({ first, second }, first.id);
        m_store.emplace(machine.platform);
    }

    SatchelStore &store() { return *m_store; }

    /// The concatenated texts of the active tab's nodes.
    std::string texts() const
    {
        std::string texts;
        for (const auto &block : m_store->activeTab()->blocks)
            texts += block.text;
        return texts;
    }

    /// All operations on the node with this id.
    std::vector<std::pair<std::string, std::function<void()>>> operations(const QUuid &id)
    {
        return { { "updateBlock", [this, id] { store().updateBlock(id, "new"); } },
                 { "setBlockColor", [this, id] { store().setBlockColor(id, BlockColor::red); } },
                 { "moveBlock", [this, id] { store().moveBlock(id, 1); } },
                 { "copyBlock", [this, id] { store().copyBlock(id); } },
                 { "pasteIntoBlock", [this, id] { store().pasteIntoBlock(id); } },
                 { "openBlockURL", [this, id] { store().openBlockURL(id); } } };
    }

    PromptTab first { .blocks = { { .text = "a", .color = {} },
                                  { .text = "b", .color = {} },
                                  { .text = "c", .color = {} } } };
    PromptTab second { .blocks = { { .text = "https://example.com", .color = {} },
                                   { .text = "e", .color = {} } } };
    QUuid a = first.blocks[0].id;
    QUuid b = first.blocks[1].id;
    QUuid c = first.blocks[2].id;
    QUuid unknown = QUuid::createUuid();

private:
    std::optional<SatchelStore> m_store;
};

TEST_F(SatchelStoreBlocksTest, AddsAnEmptyUncoloredNodeAtTheEnd)
{
    EXPECT_TRUE(saves([&] { store().addBlock(); }));
    const auto &blocks = store().activeTab()->blocks;
    ASSERT_EQ(blocks.size(), 4U);
    EXPECT_EQ(blocks.back().text, "");
    EXPECT_EQ(blocks.back().color, BlockColor::none);
    EXPECT_EQ(blocks.back().id.version(), QUuid::Random);
    EXPECT_EQ(blocks.front(), first.blocks.front());
    EXPECT_EQ(savedDocument(), documentOf(store()));
}

TEST_F(SatchelStoreBlocksTest, AddsToTheActiveTabOnly)
{
    store().selectTab(second.id);
    store().addBlock();
    EXPECT_EQ(store().tabs().get()[0], first);
    EXPECT_EQ(store().tabs().get()[1].blocks.size(), 3U);
}

TEST_F(SatchelStoreBlocksTest, AddsToTheFirstTabIfTheActiveIdIsStale)
{
    store().selectTab(unknown);
    store().addBlock();
    EXPECT_EQ(store().tabs().get()[0].blocks.size(), 4U);
    EXPECT_EQ(store().activeTabID().get(), unknown);
}

TEST_F(SatchelStoreBlocksTest, DeletesANodeAndKeepsTheOrderOfTheRest)
{
    EXPECT_TRUE(saves([&] { store().deleteBlock(b); }));
    EXPECT_EQ(texts(), "ac");
    EXPECT_EQ(savedDocument(), documentOf(store()));
}

TEST_F(SatchelStoreBlocksTest, DeletesTheLastNode)
{
    store().deleteBlock(a);
    store().deleteBlock(b);
    store().deleteBlock(c);
    EXPECT_TRUE(store().activeTab()->blocks.empty());
    EXPECT_EQ(store().tabs().get().size(), 2U);
}

TEST_F(SatchelStoreBlocksTest, SavesEvenIfTheDeletedNodeIsUnknownOrInAnotherTab)
{
    for (const auto &id : { unknown, second.blocks[0].id }) {
        EXPECT_TRUE(saves([&] { store().deleteBlock(id); }));
        EXPECT_EQ(store().tabs().get(), std::vector({ first, second }));
    }
}

TEST_F(SatchelStoreBlocksTest, DeletesEveryNodeWithTheIdFromTheActiveTabOnly)
{
    first.blocks[2].id = a;
    second.blocks[0].id = a;
    start();
    store().deleteBlock(a);
    EXPECT_EQ(texts(), "b");
    EXPECT_EQ(store().tabs().get()[1], second);
}

TEST_F(SatchelStoreBlocksTest, DeletesByAReferenceToTheNodesOwnId)
{
    first.blocks[2].id = a;
    first.blocks.push_back({ .text = "d", .color = {} });
    start();
    store().deleteBlock(store().activeTab()->blocks.front().id);
    EXPECT_EQ(texts(), "bd");
}

TEST_F(SatchelStoreBlocksTest, StoresTheNewTextUnchanged)
{
    for (const auto *const text : { "", "  ", " two\nlines\n", "\u00E9\U0001F600/\"\\" }) {
        EXPECT_TRUE(saves([&] { store().updateBlock(b, text); }));
        EXPECT_EQ(store().activeTab()->blocks[1].text, text);
        EXPECT_EQ(savedDocument(), documentOf(store()));
    }
    EXPECT_EQ(store().activeTab()->blocks[0], first.blocks[0]);
    EXPECT_EQ(store().activeTab()->blocks[2], first.blocks[2]);
}

TEST_F(SatchelStoreBlocksTest, SavesAnUpdateToTheSameText)
{
    EXPECT_TRUE(saves([&] { store().updateBlock(b, "b"); }));
}

TEST_F(SatchelStoreBlocksTest, SetsEveryColor)
{
    for (const BlockColor color : BlockColor::allCases) {
        EXPECT_TRUE(saves([&] { store().setBlockColor(b, color); }));
        EXPECT_EQ(store().activeTab()->blocks[1].color, color);
        EXPECT_EQ(savedDocument(), documentOf(store()));
    }
    EXPECT_EQ(texts(), "abc");
}

TEST_F(SatchelStoreBlocksTest, ChangesOnlyTheFirstOfNodesWithEqualIds)
{
    first.blocks[2].id = b;
    start();
    store().updateBlock(b, "x");
    store().setBlockColor(b, BlockColor::red);
    EXPECT_EQ(texts(), "axc");
    EXPECT_EQ(store().activeTab()->blocks[2], first.blocks[2]);
}

TEST_F(SatchelStoreBlocksTest, IgnoresUnknownNodesAndNodesOfOtherTabs)
{
    machine.pasteboard.contents = "clipboard";
    for (const auto &id : { unknown, second.blocks[0].id, first.id, QUuid() }) {
        for (const auto &[name, operation] : operations(id)) {
            SCOPED_TRACE(name);
            EXPECT_FALSE(saves(operation));
            EXPECT_EQ(store().tabs().get(), std::vector({ first, second }));
            EXPECT_FALSE(store().copiedBlockID().get());
            EXPECT_EQ(machine.pasteboard.contents, "clipboard");
            EXPECT_TRUE(machine.workspace.opened.empty());
        }
    }
}

TEST_F(SatchelStoreBlocksTest, MovesANodeByAnOffsetWithinTheList)
{
    struct Row {
        QUuid block;
        std::ptrdiff_t offset;
        std::string order;
    };

    const std::vector<Row> rows {
        { a, 1, "bac" },           { a, 2, "bca" },           { a, 3, "bca" },
        { a, 5, "bca" },           { b, 1, "acb" },           { b, -1, "bac" },
        { b, 9, "acb" },           { b, -9, "bac" },          { c, -1, "acb" },
        { c, -2, "cab" },          { c, -9, "cab" },          { a, PTRDIFF_MAX, "bca" },
        { c, PTRDIFF_MIN, "cab" }, { b, PTRDIFF_MIN, "bac" }, { b, PTRDIFF_MAX - 1, "acb" },
    };
    for (const auto &row : rows) {
        start();
        EXPECT_TRUE(saves([&] { store().moveBlock(row.block, row.offset); }));
        EXPECT_EQ(texts(), row.order) << "by " << row.offset;
        EXPECT_EQ(savedDocument(), documentOf(store()));
    }
}

TEST_F(SatchelStoreBlocksTest, DoesNotSaveAMoveThatChangesNothing)
{
    const std::vector<std::pair<QUuid, std::ptrdiff_t>> moves {
        { a, 0 }, { a, -1 }, { a, PTRDIFF_MIN }, { b, 0 }, { c, 0 }, { c, 1 }, { c, 100 },
    };
    for (const auto &[block, offset] : moves) {
        EXPECT_FALSE(saves([&, id = block, by = offset] { store().moveBlock(id, by); }));
        EXPECT_EQ(texts(), "abc") << "by " << offset;
    }
}

TEST_F(SatchelStoreBlocksTest, MovesTheFirstOfNodesWithEqualIds)
{
    first.blocks[1].id = a;
    start();
    store().moveBlock(a, 2);
    EXPECT_EQ(texts(), "bca");
}

TEST_F(SatchelStoreBlocksTest, MovesByAReferenceToTheNodesOwnId)
{
    store().moveBlock(store().activeTab()->blocks.front().id, 2);
    EXPECT_EQ(texts(), "bca");
}

TEST_F(SatchelStoreBlocksTest, IgnoresAnOverflowingMoveOfAnUnknownNode)
{
    EXPECT_FALSE(saves([&] { store().moveBlock(unknown, PTRDIFF_MAX); }));
    EXPECT_EQ(texts(), "abc");
}

TEST_F(SatchelStoreBlocksTest, AnnouncesAMoveOnceWithTheOldOrder)
{
    std::vector<std::string> announced;
    const Cancellable subscription(QObject::connect(&store(), &ObservableObject::objectWillChange,
                                                    [&] { announced.push_back(texts()); }));
    store().moveBlock(a, 2);
    EXPECT_EQ(announced, std::vector<std::string>({ "abc" }));
}

using SatchelStoreBlocksDeathTest = SatchelStoreBlocksTest;

TEST_F(SatchelStoreBlocksDeathTest, StopsTheProcessWhenAMoveOverflows)
{
    EXPECT_EXIT(store().moveBlock(b, PTRDIFF_MAX), testing::KilledBySignal(SIGABRT), "");
}

} // namespace
