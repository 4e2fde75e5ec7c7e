#include "library/PromptTab.h"

#include <gtest/gtest.h>

#include <utility>

namespace
{

TEST(PromptTabTest, IsNamedPromptsAndEmptyByDefault)
{
    const PromptTab tab;
    EXPECT_EQ(tab.name, "Prompts");
    EXPECT_TRUE(tab.blocks.empty());
}

TEST(PromptTabTest, HasARandomId)
{
    const PromptTab first;
    const PromptTab second;
    EXPECT_EQ(first.id.version(), QUuid::Random);
    EXPECT_NE(first.id, second.id);
}

TEST(PromptTabTest, CopiesItsBlocks)
{
    PromptTab tab { .name = "Tab", .blocks = { { .text = "text", .color = {} } } };
    const PromptTab copy = tab;
    tab.blocks.front().text = "changed";
    EXPECT_EQ(copy.blocks.front().text, "text");
}

TEST(PromptTabTest, DiffersInEveryFieldAndInTheOrderOfItsBlocks)
{
    const PromptTab tab {
        .name = "Tab", .blocks = { { .text = "a", .color = {} }, { .text = "b", .color = {} } }
    };
    PromptTab other = tab;
    EXPECT_EQ(other, tab);
    other.id = QUuid::createUuid();
    EXPECT_NE(other, tab);
    other = tab;
    other.name = "tab";
    EXPECT_NE(other, tab);
    other = tab;
    std::swap(other.blocks.front(), other.blocks.back());
    EXPECT_NE(other, tab);
    other = tab;
    other.blocks.pop_back();
    EXPECT_NE(other, tab);
}

} // namespace
