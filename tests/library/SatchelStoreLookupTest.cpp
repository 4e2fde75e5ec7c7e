#include "library/SatchelStore.h"
#include "library/SatchelStoreFixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace
{

/// A simple implementation for comparison, which searches for every node from the start.
class ReferenceLibrary
{
public:
    explicit ReferenceLibrary(SatchelDocument document)
        : m_document(std::move(document))
    {
    }

    const SatchelDocument &document() const { return m_document; }

    void selectTab(const QUuid &id) { m_document.activeTabID = id; }

    void deleteTab(const QUuid &id)
    {
        if (m_document.tabs.size() < 2)
            return;
        std::erase_if(m_document.tabs, [&](const auto &tab) { return tab.id == id; });
        if (m_document.activeTabID != id)
            return;
        m_document.activeTabID.reset();
        if (!m_document.tabs.empty())
            m_document.activeTabID = m_document.tabs.front().id;
    }

    void deleteBlock(const QUuid &id)
    {
        if (auto *const blocks = activeBlocks())
            std::erase_if(*blocks, [&](const auto &block) { return block.id == id; });
    }

    void updateBlock(const QUuid &id, const std::string &text)
    {
        auto *const blocks = activeBlocks();
        for (std::size_t i = 0; blocks && i < blocks->size(); ++i) {
            if ((*blocks)[i].id == id) {
                (*blocks)[i].text = text;
                return;
            }
        }
    }

    void moveBlock(const QUuid &id, std::ptrdiff_t offset)
    {
        auto *const blocks = activeBlocks();
        if (!blocks)
            return;
        const auto found = std::ranges::find(*blocks, id, &PromptBlock::id);
        if (found == blocks->end())
            return;
        const auto block = *found;
        const auto from = found - blocks->begin();
        blocks->erase(found);
        const auto last = static_cast<std::ptrdiff_t>(blocks->size());
        blocks->insert(blocks->begin() + std::clamp<std::ptrdiff_t>(from + offset, 0, last), block);
    }

private:
    std::vector<PromptBlock> *activeBlocks()
    {
        for (auto &tab : m_document.tabs) {
            if (tab.id == m_document.activeTabID)
                return &tab.blocks;
        }
        return m_document.tabs.empty() ? nullptr : &m_document.tabs.front().blocks;
    }

    SatchelDocument m_document;
};

/// The store caches where it found the last node. The cache must have no visible effect.
class SatchelStoreLookupTest : public SatchelStoreFixture
{
protected:
    static PromptTab tabOf(const std::vector<QUuid> &ids)
    {
        PromptTab tab;
        for (const auto &id : ids)
            tab.blocks.push_back({ .id = id, .text = "-", .color = {} });
        return tab;
    }

    static std::string texts(const SatchelStore &store, std::size_t tab)
    {
        std::string texts;
        for (const auto &block : store.tabs().get()[tab].blocks)
            texts += block.text;
        return texts;
    }

    QUuid a = QUuid::createUuid();
    QUuid b = QUuid::createUuid();
    QUuid c = QUuid::createUuid();
};

TEST_F(SatchelStoreLookupTest, FindsANodeAfterOneBeforeItIsDeleted)
{
    writeFile({ tabOf({ a, b, c }) });
    SatchelStore store(machine.platform);
    store.updateBlock(c, "1");
    store.deleteBlock(a);
    store.updateBlock(c, "2");
    EXPECT_EQ(texts(store, 0), "-2");
}

TEST_F(SatchelStoreLookupTest, DoesNotFindADeletedNode)
{
    writeFile({ tabOf({ a, b, c }) });
    SatchelStore store(machine.platform);
    store.updateBlock(b, "1");
    store.deleteBlock(b);
    store.updateBlock(b, "2");
    store.moveBlock(b, 1);
    EXPECT_EQ(texts(store, 0), "--");
}

TEST_F(SatchelStoreLookupTest, FindsANodeAfterItOrAnotherMoved)
{
    writeFile({ tabOf({ a, b, c }) });
    SatchelStore store(machine.platform);
    store.updateBlock(a, "1");
    store.moveBlock(a, 2);
    store.updateBlock(a, "2");
    EXPECT_EQ(texts(store, 0), "--2");
    store.moveBlock(b, 2);
    store.updateBlock(a, "3");
    EXPECT_EQ(texts(store, 0), "-3-");
}

TEST_F(SatchelStoreLookupTest, FindsTheFirstOfNodesWithEqualIdsAfterAMove)
{
    writeFile({ tabOf({ a, a, b }) });
    SatchelStore store(machine.platform);
    store.updateBlock(a, "1");
    store.moveBlock(a, 1);
    store.updateBlock(a, "2");
    EXPECT_EQ(texts(store, 0), "21-");
}

TEST_F(SatchelStoreLookupTest, FindsTheNodeOfTheSelectedTabIfTabsShareIds)
{
    const auto first = tabOf({ a, b });
    const auto second = tabOf({ b, a });
    writeFile({ first, second });
    SatchelStore store(machine.platform);
    store.updateBlock(b, "1");
    store.selectTab(second.id);
    store.updateBlock(b, "2");
    store.selectTab(first.id);
    store.updateBlock(b, "3");
    EXPECT_EQ(texts(store, 0), "-3");
    EXPECT_EQ(texts(store, 1), "2-");
}

TEST_F(SatchelStoreLookupTest, FindsANodeInATabWhoseIndexChanged)
{
    const auto zeroth = tabOf({});
    const auto first = tabOf({ a, b });
    const auto second = tabOf({ b, a });
    writeFile({ zeroth, first, second }, first.id);
    SatchelStore store(machine.platform);
    store.updateBlock(b, "1");
    store.deleteTab(zeroth.id);
    store.selectTab(second.id);
    store.updateBlock(b, "2");
    EXPECT_EQ(texts(store, 0), "-1");
    EXPECT_EQ(texts(store, 1), "2-");
}

TEST_F(SatchelStoreLookupTest, FindsANodeInTheFirstTabAfterTheActiveOneIsDeleted)
{
    const auto first = tabOf({ c, b, a });
    const auto second = tabOf({ a, b });
    writeFile({ second, first }, second.id);
    SatchelStore store(machine.platform);
    store.updateBlock(a, "1");
    store.deleteTab(second.id);
    store.updateBlock(a, "2");
    EXPECT_EQ(texts(store, 0), "--2");
}

TEST_F(SatchelStoreLookupTest, FindsNodesThatObserversLookedUpBeforeAChange)
{
    const auto first = tabOf({});
    const auto second = tabOf({ a, b, c });
    writeFile({ first, second }, second.id);
    SatchelStore store(machine.platform);
    const Cancellable looking(QObject::connect(&store, &ObservableObject::objectWillChange,
                                               [&] { store.openBlockURL(c); }));

    store.deleteBlock(a);
    store.updateBlock(c, "1");
    EXPECT_EQ(texts(store, 1), "-1");

    store.moveBlock(b, 1);
    store.updateBlock(c, "2");
    EXPECT_EQ(texts(store, 1), "2-");

    store.deleteTab(first.id);
    store.updateBlock(c, "3");
    EXPECT_EQ(texts(store, 0), "3-");
}

TEST_F(SatchelStoreLookupTest, LetsASinkEditWhileAChangeIsDelivered)
{
    writeFile({ tabOf({ a, b, c }) });
    SatchelStore store(machine.platform);
    bool isEditing = false;
    const auto editing = store.tabs().sink([&](const auto &) {
        if (!std::exchange(isEditing, true)) {
            store.updateBlock(c, "x");
            isEditing = false;
        }
    });

    store.moveBlock(c, -2);
    EXPECT_EQ(texts(store, 0), "x--");
    store.deleteBlock(a);
    EXPECT_EQ(texts(store, 0), "x-");
}

TEST_F(SatchelStoreLookupTest, ReturnsANodeOfAnyTab)
{
    const auto first = tabOf({ a });
    const auto second = tabOf({ b, a, a });
    writeFile({ first, second });
    const SatchelStore store(machine.platform);
    const auto &tabs = store.tabs().get();
    EXPECT_EQ(store.block(first.id, a), &tabs[0].blocks[0]);
    EXPECT_EQ(store.block(second.id, b), &tabs[1].blocks[0]);
    EXPECT_EQ(store.block(second.id, a), &tabs[1].blocks[1]);
    EXPECT_EQ(store.block(first.id, b), nullptr);
    EXPECT_EQ(store.block(QUuid::createUuid(), a), nullptr);
}

TEST_F(SatchelStoreLookupTest, ReturnsTheFirstTabWithAnId)
{
    const auto tab = tabOf({ a });
    writeFile({ tabOf({}), tab, tab });
    const SatchelStore store(machine.platform);
    EXPECT_EQ(store.tab(tab.id), &store.tabs().get()[1]);
    EXPECT_EQ(store.tab(QUuid::createUuid()), nullptr);
}

TEST_F(SatchelStoreLookupTest, IgnoresOperationsOnNodesOfOtherTabs)
{
    writeFile({ tabOf({ a }), tabOf({ b }) });
    SatchelStore store(machine.platform);
    EXPECT_EQ(store.activeBlock(b), nullptr);
    store.updateBlock(b, "1");
    store.copyBlock(b);
    EXPECT_EQ(texts(store, 1), "-");
    EXPECT_EQ(store.copiedBlockID().get(), std::nullopt);
}

TEST_F(SatchelStoreLookupTest, FindsNoBlockWithoutTabs)
{
    const PromptTab tab;
    writeFile({ tab, tab });
    SatchelStore store(machine.platform);
    store.deleteTab(tab.id);
    ASSERT_TRUE(store.tabs().get().empty());
    EXPECT_EQ(store.block(tab.id, a), nullptr);
    EXPECT_EQ(store.activeBlock(a), nullptr);
}

TEST_F(SatchelStoreLookupTest, AgreesWithAReferenceLibraryAfterRandomOperations)
{
    std::mt19937 engine(7);
    const auto below = [&engine](std::size_t end) {
        return std::uniform_int_distribution<std::size_t>(0, end - 1)(engine);
    };
    const std::array ids { a, b, c, QUuid::createUuid() };
    for (int round = 0; round < 60; ++round) {
        std::vector<PromptTab> tabs(4);
        for (auto &tab : tabs) {
            while (below(6) > 0)
                tab.blocks.push_back({ .id = ids.at(below(4)), .text = "", .color = {} });
        }
        tabs[3].id = tabs[1].id;
        writeFile(tabs, tabs[below(4)].id);
        SatchelStore store(machine.platform);
        ReferenceLibrary reference(documentOf(store));
        for (int step = 0; step < 40; ++step) {
            const auto id = ids.at(below(4));
            const auto tab = tabs[below(4)].id;
            const auto offset = static_cast<std::ptrdiff_t>(below(7)) - 3;
            const auto text = std::to_string(step);
            const auto operation = below(20);
            const auto apply = [&](auto &library) {
                if (operation == 0)
                    library.deleteTab(tab);
                else if (operation == 1)
                    library.deleteBlock(id);
                else if (operation < 5)
                    library.selectTab(tab);
                else if (operation < 10)
                    library.moveBlock(id, offset);
                else
                    library.updateBlock(id, text);
            };
            apply(store);
            apply(reference);
            ASSERT_EQ(documentOf(store), reference.document())
                << "round " << round << " step " << step;
        }
    }
}

} // namespace
