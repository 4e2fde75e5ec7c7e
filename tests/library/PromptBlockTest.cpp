#include "library/PromptBlock.h"

#include <gtest/gtest.h>

namespace
{

TEST(PromptBlockTest, IsEmptyAndUncoloredByDefault)
{
    const PromptBlock block;
    EXPECT_EQ(block.text, "");
    EXPECT_EQ(block.color, BlockColor::none);
}

TEST(PromptBlockTest, HasARandomId)
{
    const PromptBlock first;
    const PromptBlock second;
    EXPECT_EQ(first.id.version(), QUuid::Random);
    EXPECT_NE(first.id, second.id);
}

TEST(PromptBlockTest, EqualsItsCopy)
{
    const PromptBlock block { .text = "text", .color = BlockColor::pink };
    const PromptBlock copy = block;
    EXPECT_EQ(copy, block);
}

TEST(PromptBlockTest, DiffersInEveryField)
{
    const PromptBlock block { .text = "text", .color = BlockColor::pink };
    PromptBlock other = block;
    other.id = QUuid::createUuid();
    EXPECT_NE(other, block);
    other = block;
    other.text += '\n';
    EXPECT_NE(other, block);
    other = block;
    other.color = BlockColor::none;
    EXPECT_NE(other, block);
}

} // namespace
