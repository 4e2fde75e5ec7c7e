#include "views/DragHandle.h"
#include "views/PanelContentFixture.h"

#include <QCursor>
#include <gtest/gtest.h>

namespace
{

/// User actions reach the store, and the view shows the content of the store.
using QuillsatchelViewTest = PanelContentFixture;

TEST_F(QuillsatchelViewTest, ShowsTheNodesOfTheActiveTab)
{
    openView({ tabOf("One", { "a", "b" }), tabOf("Two", { "c" }) });
    ASSERT_EQ(cards().size(), 2U);
    EXPECT_EQ(shownText(0), "a");
    EXPECT_EQ(shownText(1), "b");
    store().selectTab(tabID(1));
    settle();
    ASSERT_EQ(cards().size(), 1U);
    EXPECT_EQ(shownText(0), "c");
}

TEST_F(QuillsatchelViewTest, StoresTypedText)
{
    openView(Texts { "a", "b" });
    editEnd(1);
    Input::type(*view, "x");
    EXPECT_EQ(blocks()[1].text, "bx");
    EXPECT_EQ(blocks()[0].text, "a");
    Input::type(*view, "y");
    settle();
    EXPECT_EQ(blocks()[1].text, "bxy");
    EXPECT_EQ(shownText(1), "bxy");
}

TEST_F(QuillsatchelViewTest, ColorsANode)
{
    openView(Texts { "a", "b" });
    Input::withMenu([this] { press(card(1), "Node color"); },
                    [](QMenu &menu) { Input::choose(menu, menu.actions()[5]); });
    EXPECT_EQ(blocks()[1].color, BlockColor::blue);
    EXPECT_EQ(blocks()[0].color, BlockColor::none);
}

TEST_F(QuillsatchelViewTest, MarksACopiedNodeFor1400Milliseconds)
{
    openView(Texts { "a", "b" });
    press(card(1), "Copy");
    EXPECT_EQ(machine.pasteboard.contents, "b");
    EXPECT_TRUE(Input::button(card(1), "Copied"));
    EXPECT_FALSE(Input::button(card(0), "Copied"));
    advance(Milliseconds(1399));
    EXPECT_TRUE(Input::button(card(1), "Copied"));
    advance(Milliseconds(1));
    EXPECT_FALSE(Input::button(card(1), "Copied"));
    EXPECT_TRUE(Input::button(card(1), "Copy"));
}

TEST_F(QuillsatchelViewTest, PasteReplacesTheWholeText)
{
    openView(Texts { "" });
    machine.pasteboard.contents = "from elsewhere";
    press(card(0), "Paste");
    EXPECT_EQ(blocks()[0].text, "from elsewhere");
    EXPECT_EQ(shownText(0), "from elsewhere");
    EXPECT_FALSE(Input::button(card(0), "Paste"));
    store().pasteIntoBlock(blocks()[0].id);
    EXPECT_EQ(blocks()[0].text, "from elsewhere");
}

TEST_F(QuillsatchelViewTest, PastesNothingWithoutTextOnTheClipboard)
{
    openView(Texts { "" });
    machine.pasteboard.contents.reset();
    press(card(0), "Paste");
    EXPECT_EQ(blocks()[0].text, "");
}

TEST_F(QuillsatchelViewTest, LaunchesAnAddress)
{
    openView(Texts { "text", " https://example.com/a\n" });
    press(card(1), "Launch");
    EXPECT_EQ(machine.workspace.opened, Texts({ "https://example.com/a" }));
    EXPECT_EQ(blocks()[1].text, " https://example.com/a\n");
}

TEST_F(QuillsatchelViewTest, DeletesANodeImmediately)
{
    openView(Texts { "a", "b" });
    press(card(0), "Delete node");
    ASSERT_EQ(blocks().size(), 1U);
    EXPECT_EQ(blocks()[0].text, "b");
    ASSERT_EQ(cards().size(), 1U);
    EXPECT_EQ(shownText(0), "b");
}

TEST_F(QuillsatchelViewTest, ADoubleClickDeletesOnlyOneNode)
{
    openView(Texts { "a", "b", "c" });
    Input::doubleClick(*Input::button(card(0), "Delete node"), [this] { settle(); });
    settle();
    ASSERT_EQ(blocks().size(), 2U);
    EXPECT_EQ(blocks()[0].text, "b");
    press(card(0), "Delete node");
    ASSERT_EQ(blocks().size(), 1U);
    EXPECT_EQ(blocks()[0].text, "c");
}

TEST_F(QuillsatchelViewTest, ADoubleClickBeforeRenderingDeletesOnlyOneNode)
{
    openView(Texts { "a", "b" });
    Input::doubleClick(*Input::button(card(0), "Delete node"), [] {});
    settle();
    ASSERT_EQ(blocks().size(), 1U);
    EXPECT_EQ(blocks()[0].text, "b");
}

TEST_F(QuillsatchelViewTest, HighlightsADeleteButtonMovedUnderThePointer)
{
    openView(Texts { "a", "b" });
    const auto &trash = *Input::button(card(0), "Delete node");
    QCursor::setPos(trash.mapToGlobal(trash.rect().center()));
    settle();
    ASSERT_TRUE(trash.underMouse());
    store().deleteBlock(blocks()[0].id);
    settle();
    EXPECT_TRUE(Input::button(card(0), "Delete node")->underMouse());
}

TEST_F(QuillsatchelViewTest, ConvertsLineEndingsOnceTheNodeIsEdited)
{
    const std::string text = "a\r\nb\rc\u2029d";
    openView(Texts { text });
    press(card(0), "Copy");
    EXPECT_EQ(machine.pasteboard.contents, text);
    store().setBlockColor(blocks()[0].id, BlockColor::blue);
    advance(SaveDelay);
    EXPECT_EQ(savedDocument()->tabs[0].blocks[0].text, text);
    editEnd(0);
    EXPECT_EQ(blocks()[0].text, text) << "moving the cursor is no edit";
    Input::type(*view, "!");
    advance(SaveDelay);
    EXPECT_EQ(savedDocument()->tabs[0].blocks[0].text, "a\nb\nc\nd!");
}

TEST_F(QuillsatchelViewTest, ADoubleClickOnPasteDoesNotDictate)
{
    openView(Texts { "" });
    machine.pasteboard.contents = "clip";
    Input::doubleClick(*Input::button(card(0), "Paste"), [this] { settle(); });
    EXPECT_EQ(blocks()[0].text, "clip");
    EXPECT_TRUE(machine.speech.authorizationRequests.empty());
}

TEST_F(QuillsatchelViewTest, ADoubleClickOnNewNodeAddsTwo)
{
    openView(Texts {});
    Input::doubleClick(*Input::button(*view, "New Node"), [this] { settle(); });
    EXPECT_EQ(blocks().size(), 2U);
}

TEST_F(QuillsatchelViewTest, MovesANodeByDragging)
{
    openView(Texts { "a", "b", "c" });
    auto &handle = *card(0).findChild<DragHandle *>();
    Input::press(handle, { 10, 12 });
    Input::moveTo(handle, { 10, 100 });
    Input::moveTo(handle, { 10, 12 + 250 });
    Input::release(handle, { 10, 12 + 250 });
    settle();
    ASSERT_EQ(blocks().size(), 3U);
    EXPECT_EQ(blocks()[0].text, "b");
    EXPECT_EQ(blocks()[2].text, "a");
    EXPECT_EQ(shownText(0), "b");
}

TEST_F(QuillsatchelViewTest, MovesANodeByKeys)
{
    openView(Texts { "a", "b" });
    card(0).findChild<DragHandle *>()->setFocus(Qt::TabFocusReason);
    Input::key(*view, Qt::Key_Down);
    settle();
    EXPECT_EQ(blocks()[1].text, "a");
    Input::key(*view, Qt::Key_Up);
    settle();
    EXPECT_EQ(blocks()[0].text, "a");
}

TEST_F(QuillsatchelViewTest, ShowsTheEmptyStateUntilThereIsANode)
{
    openView(Texts {});
    EXPECT_TRUE(isEmptyStateShown());
    EXPECT_EQ(cards().size(), 0U);
    press("New Node");
    EXPECT_FALSE(isEmptyStateShown());
    ASSERT_EQ(cards().size(), 1U);
    EXPECT_EQ(shownText(0), "");
    ASSERT_EQ(blocks().size(), 1U);
    EXPECT_EQ(blocks()[0].color, BlockColor::none);
    press(card(0), "Delete node");
    EXPECT_TRUE(isEmptyStateShown());
}

TEST_F(QuillsatchelViewTest, FocusesANewNode)
{
    openView(numberedTexts(30));
    press("New Node");
    ASSERT_EQ(blocks().size(), 31U);
    Input::type(*view, "new");
    EXPECT_EQ(blocks()[30].text, "new");
    settle();
    EXPECT_EQ(cards().back()->blockID(), blocks()[30].id);
    EXPECT_TRUE(view->rect().contains(Input::frameIn(*view, *cards().back())));
}

TEST_F(QuillsatchelViewTest, AddsANodeByKeyboard)
{
    openView(Texts {});
    Input::button(*view, "New Node")->setFocus(Qt::TabFocusReason);
    Input::key(*view, Qt::Key_Space);
    settle();
    EXPECT_EQ(blocks().size(), 1U);
}

TEST_F(QuillsatchelViewTest, ShowsNothingWithoutATab)
{
    const PromptTab twin = tabOf("Twin", { "a" });
    openView({ twin, twin });
    store().deleteTab(twin.id);
    settle();
    ASSERT_FALSE(store().activeTab());
    EXPECT_EQ(cards().size(), 0U);
    EXPECT_FALSE(isEmptyStateShown());
    EXPECT_FALSE(saves([this] { press("New Node"); }));
    EXPECT_FALSE(store().activeTab());
    press("New tab");
    EXPECT_TRUE(isEmptyStateShown());
}

TEST_F(QuillsatchelViewTest, ChangesTheDocumentOncePerEdit)
{
    openView(Texts { "a" });
    int changes = 0;
    const auto counting = store().tabs().sink([&changes](const auto &) { ++changes; });
    changes = 0;
    press("New Node");
    EXPECT_EQ(changes, 1);
    press(card(1), "Delete node");
    EXPECT_EQ(changes, 2);
}

TEST_F(QuillsatchelViewTest, SavesAfterEachEdit)
{
    openView(Texts { "a" });
    EXPECT_TRUE(saves([this] { press("New Node"); }));
    EXPECT_TRUE(saves([this] { Input::type(*view, "x"); }));
    EXPECT_TRUE(saves([this] { press(card(0), "Delete node"); }));
    EXPECT_FALSE(saves([this] { press(card(0), "Copy"); }));
    EXPECT_EQ(savedDocument(), std::nullopt);
}

TEST_F(QuillsatchelViewTest, SavesValidTextAfterHalfASurrogatePair)
{
    openView(Texts { "" });
    Input::click(editor(0));
    Input::commit(QString(QChar(0xDC00)) + QStringLiteral("a") + QChar(0xD800));
    advance(SaveDelay);
    EXPECT_EQ(savedDocument(), documentOf(store()));
    EXPECT_NE(savedDocument()->tabs[0].blocks[0].text.find('a'), std::string::npos);
}

} // namespace
