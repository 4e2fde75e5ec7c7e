#include "views/FindCardFixture.h"

#include <QInputMethodEvent>
#include <gtest/gtest.h>

namespace
{

class FindCardTest : public FindCardFixture
{
protected:
    FindCardTest()
    {
        openView({ tabOf("Mails", { "reply shortly", "decline politely" }),
                   tabOf("Code", { "review this draft", "draft a reply", "" }), tabOf("Empty") });
    }

    /// Whether the store writes its file in the next second.
    bool isSaved()
    {
        std::filesystem::remove(file);
        advance(Milliseconds(1000));
        return std::filesystem::exists(file);
    }
};

TEST_F(FindCardTest, IsNotCreatedBeforeItIsOpened)
{
    EXPECT_FALSE(findCard());
    openCard();
    EXPECT_TRUE(findCard());
}

TEST_F(FindCardTest, ListsAllNodesBeforeTheUserTypes)
{
    openCard();
    EXPECT_EQ(found(), (Texts { "reply shortly", "decline politely", "review this draft",
                                "draft a reply", "Empty node" }));
    EXPECT_EQ(count(), "5 nodes");
}

TEST_F(FindCardTest, FindsNodesInAllTabsWhileTheUserTypes)
{
    openCard();
    type("reply");
    EXPECT_EQ(found(), (Texts { "reply shortly", "draft a reply" }));
    EXPECT_EQ(count(), "2 nodes");
    type(" draft");
    EXPECT_EQ(found(), Texts { "draft a reply" });
    EXPECT_EQ(count(), "1 node");
    type("x");
    EXPECT_EQ(found(), Texts());
    EXPECT_EQ(count(), "No nodes found");
    key(Qt::Key_Backspace);
    EXPECT_EQ(found(), Texts { "draft a reply" });
}

TEST_F(FindCardTest, FindsNodesByTheNameOfTheirTab)
{
    openCard(QStringLiteral("mails"));
    EXPECT_EQ(found(), (Texts { "reply shortly", "decline politely" }));
}

TEST_F(FindCardTest, StartsWithTheGivenQuery)
{
    openCard(QStringLiteral("draft"));
    EXPECT_EQ(field().text(), QStringLiteral("draft"));
    EXPECT_EQ(count(), "2 nodes");
    type("x"); // appends, because nothing is selected
    EXPECT_EQ(field().text(), QStringLiteral("draftx"));
}

TEST_F(FindCardTest, TakesLettersTypedWhileItFadesIn)
{
    view->find(QStringLiteral("d"));
    type("raft");
    EXPECT_EQ(field().text(), QStringLiteral("draft"));
    EXPECT_EQ(count(), "2 nodes");
}

TEST_F(FindCardTest, CopiesTheNodeChosenWhileItFadesIn)
{
    view->find(QStringLiteral("decline"));
    key(Qt::Key_Return);
    EXPECT_EQ(clipboard(), "decline politely");
    expectClosed();
}

TEST_F(FindCardTest, ArrowAndPageKeysMoveTheSelectionFromTheField)
{
    openCard();
    EXPECT_EQ(selected(), "reply shortly");
    key(Qt::Key_Down);
    EXPECT_EQ(selected(), "decline politely");
    key(Qt::Key_PageDown);
    EXPECT_EQ(selected(), "Empty node");
    key(Qt::Key_Down);
    EXPECT_EQ(selected(), "Empty node");
    key(Qt::Key_Up);
    EXPECT_EQ(selected(), "draft a reply");
    key(Qt::Key_PageUp);
    EXPECT_EQ(selected(), "reply shortly");
    EXPECT_TRUE(field().hasFocus());
}

TEST_F(FindCardTest, ReturnCopiesTheNodeMarksItAndShowsIt)
{
    openCard(QStringLiteral("review"));
    key(Qt::Key_Return);
    EXPECT_EQ(clipboard(), "review this draft");
    EXPECT_EQ(store().activeTab()->name, "Code");
    EXPECT_EQ(store().copiedBlockID().get(), blocks()[0].id);
    EXPECT_TRUE(Input::button(card(0), "Copied"));
    expectClosed();
}

TEST_F(FindCardTest, ReturnScrollsToTheNode)
{
    openView({ tabOf("A"), tabOf("B", numberedTexts(100)) });
    openCard(QStringLiteral("77"));
    key(Qt::Key_Enter);
    expectClosed();
    const auto shown = cards();
    EXPECT_TRUE(std::ranges::any_of(shown, [](PromptCard *card) {
        return Input::button(*card, "Copied") &&
               card->findChild<NodeEditor *>()->toPlainText() == QStringLiteral("text 77");
    }));
}

TEST_F(FindCardTest, CtrlReturnSelectsTheFirstMatchInTheNodesText)
{
    openCard(QStringLiteral("draft"));
    key(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(clipboard(), "");
    EXPECT_EQ(store().activeTab()->name, "Code");
    EXPECT_EQ(QApplication::focusWidget(), &editor(0));
    EXPECT_EQ(editor(0).textCursor().selectedText(), QStringLiteral("draft"));
    EXPECT_EQ(editor(0).textCursor().selectionStart(), 12);
    expectClosed();
    EXPECT_EQ(QApplication::focusWidget(), &editor(0));
}

TEST_F(FindCardTest, CtrlReturnPlacesTheCursorIfOnlyTheTabMatches)
{
    openCard(QStringLiteral("code"));
    key(Qt::Key_Enter, Qt::ControlModifier);
    EXPECT_EQ(QApplication::focusWidget(), &editor(0));
    EXPECT_FALSE(editor(0).textCursor().hasSelection());
}

TEST_F(FindCardTest, CtrlReturnSelectsTheMatchAfterWindowsLineBreaks)
{
    openView({ tabOf("A", { "one\r\ntwo\r\n\xF0\x9F\x98\x80 three" }) });
    openCard(QStringLiteral("three"));
    key(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(editor(0).textCursor().selectedText(), QStringLiteral("three"));
}

TEST_F(FindCardTest, AClickCopiesAndACtrlClickGoesToTheNode)
{
    openCard(QStringLiteral("reply"));
    clickRow(1);
    EXPECT_EQ(clipboard(), "draft a reply");
    expectClosed();
    machine.pasteboard.setText("");
    openCard(QStringLiteral("reply"));
    clickRow(1, Qt::ControlModifier);
    EXPECT_EQ(clipboard(), "");
    EXPECT_EQ(store().activeTab()->name, "Mails");
    EXPECT_EQ(editor(0).textCursor().selectedText(), QStringLiteral("reply"));
    expectClosed();
}

TEST_F(FindCardTest, ReturnWithoutAHitDoesNothing)
{
    openCard(QStringLiteral("nothing like that"));
    key(Qt::Key_Return);
    key(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_TRUE(field().hasFocus());
    EXPECT_EQ(clipboard(), "");
}

TEST_F(FindCardTest, EscapeChangesNothing)
{
    Input::click(editor(1));
    openCard(QStringLiteral("draft"));
    key(Qt::Key_Down);
    key(Qt::Key_Escape);
    expectClosed();
    EXPECT_EQ(clipboard(), "");
    EXPECT_EQ(store().activeTab()->name, "Mails");
    EXPECT_EQ(QApplication::focusWidget(), &editor(1));
    EXPECT_FALSE(isSaved());
}

TEST_F(FindCardTest, AClickOnTheBackdropClosesIt)
{
    openCard();
    Input::click(*findCard(), { 5, 5 });
    expectClosed();
}

TEST_F(FindCardTest, KeepsTheFocus)
{
    openCard();
    for (int count = 0; count < 5; ++count) {
        key(Qt::Key_Tab);
        EXPECT_TRUE(findCard()->isAncestorOf(QApplication::focusWidget()));
    }
}

TEST_F(FindCardTest, LettersTypedInTheListOrOnTheButtonGoToTheField)
{
    openCard();
    list().setFocus();
    type("d");
    EXPECT_TRUE(field().hasFocus());
    Input::button(*findCard(), "Close")->setFocus();
    type("raft");
    EXPECT_TRUE(field().hasFocus());
    EXPECT_EQ(field().text(), QStringLiteral("draft"));
}

TEST_F(FindCardTest, DoesNotSearchForPreeditText)
{
    openCard(QStringLiteral("reply "));
    QInputMethodEvent preedit(QStringLiteral("draft"), {});
    QApplication::sendEvent(&field(), &preedit);
    EXPECT_EQ(count(), "2 nodes");
}

TEST_F(FindCardTest, ReturnCommitsPreeditTextFirst)
{
    openCard(QStringLiteral("reply "));
    QInputMethodEvent preedit(QStringLiteral("draft"), {});
    QApplication::sendEvent(&field(), &preedit);
    key(Qt::Key_Return);
    EXPECT_EQ(clipboard(), "draft a reply");
}

TEST_F(FindCardTest, SearchesAgainIfTheLibraryChanges)
{
    openCard(QStringLiteral("reply"));
    key(Qt::Key_Down);
    store().updateBlock(blocks()[1].id, "no reply");
    settle();
    EXPECT_EQ(found(), (Texts { "reply shortly", "no reply", "draft a reply" }));
    EXPECT_EQ(selected(), "no reply");
    EXPECT_EQ(count(), "3 nodes");
}

TEST_F(FindCardTest, ReturnRightAfterAChangeOfTheLibraryCopiesAHit)
{
    openCard(QStringLiteral("decline"));
    store().updateBlock(blocks()[1].id, "decline firmly");
    Input::key(*view, Qt::Key_Return);
    EXPECT_EQ(clipboard(), "decline firmly");
}

TEST_F(FindCardTest, ReportsItsRolesAndNames)
{
    openCard(QStringLiteral("draft"));
    EXPECT_EQ(Input::role(*findCard()), QAccessible::Dialog);
    EXPECT_EQ(Input::accessibleName(*findCard()), "Find");
    EXPECT_EQ(Input::role(field()), QAccessible::EditableText);
    EXPECT_EQ(Input::accessibleName(field()), "Find in all tabs");
    EXPECT_EQ(field().placeholderText(), QStringLiteral("Find in all tabs"));
    auto *const nodes = QAccessible::queryAccessibleInterface(&list());
    EXPECT_EQ(nodes->role(), QAccessible::List);
    EXPECT_EQ(nodes->text(QAccessible::Name), QStringLiteral("Nodes found"));
    ASSERT_EQ(nodes->childCount(), 2);
    EXPECT_EQ(nodes->child(0)->text(QAccessible::Name), QStringLiteral("review this draft"));
    EXPECT_EQ(nodes->child(0)->text(QAccessible::Description), QStringLiteral("Code"));
}

TEST_F(FindCardTest, ShowsTenHitsInThePanelsUsualSize)
{
    openView({ tabOf("A", numberedTexts(100)) });
    view->window()->resize(QuillsatchelView::IdealSize);
    openCard();
    const QRect last = list().visualRect(list().model()->index(9, 0));
    EXPECT_TRUE(list().viewport()->rect().contains(last));
}

TEST_F(FindCardTest, FitsIntoTheSmallestPanel)
{
    openCard();
    view->resize(QuillsatchelView::MinimumSize);
    settle();
    const auto &card = *list().parentWidget();
    EXPECT_TRUE(view->rect().contains(Input::frameIn(*view, card)));
    for (auto *const child : card.findChildren<QWidget *>(Qt::FindDirectChildrenOnly)) {
        EXPECT_TRUE(card.rect().contains(child->geometry()));
        EXPECT_GE(child->height(), child->minimumSizeHint().height());
    }
    auto &line = *findCard()->findChild<MessageLine *>();
    EXPECT_EQ(line.height(), line.sizeHint().height());
    EXPECT_GT(list().height(), 3 * 49);
}

} // namespace
