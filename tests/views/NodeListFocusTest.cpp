#include "views/NodeListFixture.h"

#include <QTextCursor>
#include <gtest/gtest.h>

namespace
{

/// The edited node keeps its editor and the focus while the list changes.
class NodeListFocusTest : public NodeListFixture
{
protected:
    NodeListFocusTest()
    {
        openList({ tabOf("One", numberedTexts(60)), tabOf("Two", numberedTexts(5)) });
    }

    /// Types into the node of this row and selects a part of its text.
    NodeEditor &edit(std::size_t row)
    {
        edited = blocks()[row].id;
        cardOf(row)->focusEditor();
        auto &editor = editorOf(*cardOf(row));
        Input::key(window, Qt::Key_End);
        Input::type(window, "ABC");
        QTextCursor cursor = editor.textCursor();
        cursor.setPosition(2);
        cursor.setPosition(5, QTextCursor::KeepAnchor);
        editor.setTextCursor(cursor);
        return editor;
    }

    std::size_t rowOfEdited() const
    {
        const auto found = std::ranges::find(blocks(), edited, &PromptBlock::id);
        return static_cast<std::size_t>(found - blocks().begin());
    }

    const std::string &editedText() const { return blocks()[rowOfEdited()].text; }

    /// `editor` still shows the edited node, with focus, selection and undo history.
    void expectUnchanged(const NodeEditor &editor)
    {
        ASSERT_TRUE(editor.hasFocus());
        ASSERT_TRUE(cardOf(rowOfEdited()));
        ASSERT_EQ(&editorOf(*cardOf(rowOfEdited())), &editor);
        EXPECT_EQ(editor.textCursor().anchor(), 2);
        EXPECT_EQ(editor.textCursor().position(), 5);
        const std::string before = editedText();
        Input::type(window, "x");
        EXPECT_EQ(editedText(), before.substr(0, 2) + "x" + before.substr(5));
        Input::key(window, Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(editedText(), before);
        Input::key(window, Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(editedText() + "ABC", before);
    }

    QUuid edited;
};

TEST_F(NodeListFocusTest, KeepsAnEditorScrolledAwayAndBack)
{
    const auto &editor = edit(0);
    for (const int offset : { 400, 3000, scrollBar().maximum(), 200 }) {
        scrollTo(offset);
        draw();
        expectStoreShown();
        EXPECT_TRUE(editor.hasFocus());
    }
    scrollTo(0);
    expectStoreShown();
    expectUnchanged(editor);
}

TEST_F(NodeListFocusTest, TypesIntoAnEditorScrolledAway)
{
    edit(0);
    scrollTo(scrollBar().maximum());
    draw();
    Input::type(window, "y");
    EXPECT_EQ(editedText(), "tey0ABC");
}

TEST_F(NodeListFocusTest, KeepsTheEditorOfAMovedNode)
{
    const auto &editor = edit(1);
    store().moveBlock(edited, -1);
    draw();
    expectStoreShown();
    store().moveBlock(edited, 50);
    draw();
    expectStoreShown();
    store().moveBlock(edited, -49);
    draw();
    expectStoreShown();
    expectUnchanged(editor);
}

TEST_F(NodeListFocusTest, KeepsTheEditorWhileNodesAroundItChange)
{
    const auto &editor = edit(2);
    store().deleteBlock(blocks()[0].id);
    draw();
    store().deleteBlock(blocks()[2].id);
    draw();
    store().moveBlock(blocks()[5].id, -5);
    draw();
    store().addBlock();
    store().setBlockColor(edited, BlockColor::blue);
    store().copyBlock(edited);
    draw();
    expectStoreShown();
    expectUnchanged(editor);
}

TEST_F(NodeListFocusTest, KeepsAScrolledAwayEditorWhileNodesAroundItChange)
{
    const auto &editor = edit(1);
    scrollTo(scrollBar().maximum());
    draw();
    store().deleteBlock(blocks()[0].id);
    draw();
    store().moveBlock(edited, 30);
    draw();
    expectStoreShown();
    scrollTo(topOf(rowOfEdited()) + scrollBar().value());
    draw();
    expectUnchanged(editor);
}

TEST_F(NodeListFocusTest, KeepsTheEditorWhileAnotherWindowIsActive)
{
    const auto &editor = edit(0);
    Input::whileInactive(window, [this] {
        scrollTo(scrollBar().maximum());
        draw();
        scrollTo(0);
        draw();
    });
    expectUnchanged(editor);
}

TEST_F(NodeListFocusTest, UndoesAnExternalChangeInOneStep)
{
    edit(0);
    store().updateBlock(edited, "pasted");
    draw();
    EXPECT_EQ(textOf(*cardOf(0)), "pasted");
    Input::key(window, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(editedText(), "text 0ABC");
    draw();
    EXPECT_EQ(textOf(*cardOf(0)), "text 0ABC");
}

TEST_F(NodeListFocusTest, LosesNoLetterWhileRenderingIsPending)
{
    edit(0);
    Input::key(window, Qt::Key_End);
    for (const char letter : std::string("quickly")) {
        store().setBlockColor(edited, BlockColor::red);
        Input::type(window, std::string(1, letter));
        if (letter == 'c')
            draw();
    }
    draw();
    EXPECT_EQ(editedText(), "text 0ABCquickly");
    EXPECT_EQ(textOf(*cardOf(0)), "text 0ABCquickly");
}

TEST_F(NodeListFocusTest, IgnoresTypingOnceTheEditedNodeIsDeleted)
{
    edit(1);
    store().deleteBlock(edited);
    draw();
    const auto before = blocks();
    Input::type(window, "lost");
    EXPECT_EQ(blocks(), before);
    expectStoreShown();
    EXPECT_TRUE(!QApplication::focusWidget() || QApplication::focusWidget()->isVisible());
}

TEST_F(NodeListFocusTest, IgnoresTypingAfterATabSwitch)
{
    edit(1);
    store().selectTab(tabID(1));
    draw();
    const auto before = store().tabs().get();
    Input::type(window, "lost");
    EXPECT_EQ(store().tabs().get(), before);
    store().selectTab(tabID(0));
    draw();
    expectStoreShown();
    EXPECT_EQ(textOf(*cardOf(1)), "text 1ABC");
}

TEST_F(NodeListFocusTest, ReusedCardsHaveNoUndoHistory)
{
    edit(0);
    window.setFocus();
    scrollTo(scrollBar().maximum());
    draw();
    for (auto *const card : visibleCards()) {
        card->focusEditor();
        Input::key(window, Qt::Key_Z, Qt::ControlModifier);
    }
    draw();
    EXPECT_EQ(blocks()[0].text, "text 0ABC");
    for (std::size_t row = 1; row < blocks().size(); ++row)
        EXPECT_EQ(blocks()[row].text, "text " + std::to_string(row));
}

TEST_F(NodeListFocusTest, ScrollsToTheFocusedCard)
{
    const auto &editor = edit(0);
    scrollTo(scrollBar().maximum());
    draw();
    list->revealFocus();
    EXPECT_EQ(scrollBar().value(), 0);
    expectUnchanged(editor);
}

} // namespace
