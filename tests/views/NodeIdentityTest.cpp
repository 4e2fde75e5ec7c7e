#include "views/PanelContentFixture.h"

#include <gtest/gtest.h>

namespace
{

/// Identifiers and texts of hand-written and imported files.
class NodeIdentityTest : public PanelContentFixture
{
};

TEST_F(NodeIdentityTest, UndoDoesNotEmptyANodeWithANullId)
{
    auto tab = tabOf("Prompts", { "written by hand" });
    tab.blocks[0].id = QUuid();
    openView({ tab });
    Input::click(editor(0));
    Input::key(*view, Qt::Key_Z, Qt::ControlModifier);
    settle();
    EXPECT_EQ(blocks()[0].text, "written by hand");
}

TEST_F(NodeIdentityTest, KeepsAByteOrderMarkWhenTypingAndCopying)
{
    openView({ "\uFEFFtext" });
    editEnd(0);
    Input::type(*view, "s");
    settle();
    EXPECT_EQ(blocks()[0].text, "\uFEFFtexts");
    press(card(0), "Copy");
    EXPECT_EQ(machine.pasteboard.contents, "\uFEFFtexts");
}

} // namespace
