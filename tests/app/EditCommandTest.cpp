#include "app/EditCommand.h"

#include "fakes/FakePasteboard.h"
#include "views/Input.h"
#include "views/NodeEditor.h"

#include <QClipboard>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTextCursor>
#include <gtest/gtest.h>

#include <array>
#include <vector>

namespace
{

using Action = MenuItem::Action;

constexpr std::array AllActions { Action::Undo, Action::Redo,  Action::Cut,
                                  Action::Copy, Action::Paste, Action::SelectAll };

class EditCommandTest : public testing::Test
{
protected:
    EditCommandTest() { QGuiApplication::clipboard()->clear(); }

    static QString clipboard() { return QGuiApplication::clipboard()->text(); }

    std::vector<Action> possibleIn(QWidget *focus) const
    {
        std::vector<Action> possible;
        for (const auto action : AllActions) {
            if (EditCommand::isPossible(action, focus, pasteboard))
                possible.push_back(action);
        }
        return possible;
    }

    void perform(Action action, QWidget *focus) const
    {
        EditCommand::perform(action, focus, pasteboard);
    }

    FakePasteboard pasteboard;
    NodeEditor editor { nullptr };
    QLineEdit field;
};

TEST_F(EditCommandTest, CanDoNothingToAnEmptyText)
{
    EXPECT_EQ(possibleIn(&editor), std::vector<Action>());
    EXPECT_EQ(possibleIn(&field), std::vector<Action>());
}

TEST_F(EditCommandTest, CanDoNothingToWhatIsNoText)
{
    QGuiApplication::clipboard()->setText(QStringLiteral("a"));
    QPushButton button;
    EXPECT_EQ(possibleIn(&button), std::vector<Action>());
    EXPECT_EQ(possibleIn(nullptr), std::vector<Action>());
    for (const auto action : AllActions)
        perform(action, nullptr);
    EXPECT_EQ(clipboard().toStdString(), "a");
}

TEST_F(EditCommandTest, PastesTheTextOfThePasteboard)
{
    pasteboard.contents = "a";
    EXPECT_EQ(possibleIn(&editor), std::vector({ Action::Paste }));
    EXPECT_EQ(possibleIn(&field), std::vector({ Action::Paste }));
    perform(Action::Paste, &editor);
    perform(Action::Paste, &field);
    EXPECT_EQ(editor.toPlainText().toStdString(), "a");
    EXPECT_EQ(field.text().toStdString(), "a");
}

TEST_F(EditCommandTest, PastesInPlaceOfTheSelection)
{
    pasteboard.contents = "new";
    editor.showText("an old text");
    field.setText(QStringLiteral("an old text"));
    auto cursor = editor.textCursor();
    cursor.setPosition(3);
    cursor.setPosition(6, QTextCursor::KeepAnchor);
    editor.setTextCursor(cursor);
    field.setSelection(3, 3);
    perform(Action::Paste, &editor);
    perform(Action::Paste, &field);
    EXPECT_EQ(editor.toPlainText().toStdString(), "an new text");
    EXPECT_EQ(field.text().toStdString(), "an new text");
}

TEST_F(EditCommandTest, UndoesAPasteIntoAFieldWithoutTheTypingBeforeIt)
{
    pasteboard.contents = "pasted";
    QTest::keyClicks(&field, QStringLiteral("typed "));
    perform(Action::Paste, &field);
    EXPECT_EQ(field.text().toStdString(), "typed pasted");
    perform(Action::Undo, &field);
    EXPECT_EQ(field.text().toStdString(), "typed ");
}

TEST_F(EditCommandTest, PastesNothingWithoutText)
{
    editor.showText("abc");
    editor.selectAll();
    field.setText(QStringLiteral("abc"));
    field.selectAll();
    perform(Action::Paste, &editor);
    perform(Action::Paste, &field);
    EXPECT_EQ(editor.toPlainText().toStdString(), "abc");
    EXPECT_EQ(field.text().toStdString(), "abc");
}

TEST_F(EditCommandTest, TakesBackAndRepeatsWhatWasTyped)
{
    editor.insertPlainText(QStringLiteral("a"));
    field.insert(QStringLiteral("a"));
    EXPECT_EQ(possibleIn(&editor), std::vector({ Action::Undo, Action::SelectAll }));
    EXPECT_EQ(possibleIn(&field), std::vector({ Action::Undo, Action::SelectAll }));
    perform(Action::Undo, &editor);
    perform(Action::Undo, &field);
    EXPECT_TRUE(editor.toPlainText().isEmpty());
    EXPECT_TRUE(field.text().isEmpty());
    EXPECT_EQ(possibleIn(&editor), std::vector({ Action::Redo }));
    EXPECT_EQ(possibleIn(&field), std::vector({ Action::Redo }));
    perform(Action::Redo, &editor);
    perform(Action::Redo, &field);
    EXPECT_EQ(editor.toPlainText().toStdString(), "a");
    EXPECT_EQ(field.text().toStdString(), "a");
}

TEST_F(EditCommandTest, CutsAndCopiesWhatIsSelected)
{
    editor.showText("abc");
    EXPECT_EQ(possibleIn(&editor), std::vector({ Action::SelectAll }));
    perform(Action::SelectAll, &editor);
    EXPECT_EQ(possibleIn(&editor), std::vector({ Action::Cut, Action::Copy, Action::SelectAll }));
    perform(Action::Copy, &editor);
    EXPECT_EQ(clipboard().toStdString(), "abc");
    perform(Action::Cut, &editor);
    EXPECT_TRUE(editor.toPlainText().isEmpty());

    field.setText(QStringLiteral("def"));
    perform(Action::SelectAll, &field);
    perform(Action::Cut, &field);
    EXPECT_TRUE(field.text().isEmpty());
    EXPECT_EQ(clipboard().toStdString(), "def");
}

TEST_F(EditCommandTest, OnlyReadsWhatIsReadOnly)
{
    pasteboard.contents = "x";
    field.setText(QStringLiteral("abc"));
    field.setReadOnly(true);
    field.selectAll();
    EXPECT_EQ(possibleIn(&field), std::vector({ Action::Copy, Action::SelectAll }));
    editor.showText("abc");
    editor.setReadOnly(true);
    editor.selectAll();
    EXPECT_EQ(possibleIn(&editor), std::vector({ Action::Copy, Action::SelectAll }));
    perform(Action::Paste, &field);
    perform(Action::Paste, &editor);
    EXPECT_EQ(field.text().toStdString(), "abc");
    EXPECT_EQ(editor.toPlainText().toStdString(), "abc");
}

TEST_F(EditCommandTest, KnowsNothingOfOtherEntries)
{
    editor.showText("abc");
    for (const auto action : { Action::None, Action::Quit, Action::Hide, Action::ShowPanel })
        EXPECT_FALSE(EditCommand::isPossible(action, &editor, pasteboard));
    perform(Action::Quit, &editor);
    EXPECT_EQ(editor.toPlainText().toStdString(), "abc");
}

} // namespace
