#include "app/EditCommand.h"

#include "views/Input.h"
#include "views/NodeEditor.h"

#include <QClipboard>
#include <QLineEdit>
#include <QPushButton>
#include <gtest/gtest.h>

#include <array>
#include <vector>

namespace
{

using Action = MenuItem::Action;

constexpr std::array AllActions { Action::Undo, Action::Redo,  Action::Cut,
                                  Action::Copy, Action::Paste, Action::SelectAll };

std::vector<Action> possibleIn(QWidget *focus)
{
    std::vector<Action> possible;
    for (const auto action : AllActions) {
        if (EditCommand::isPossible(action, focus))
            possible.push_back(action);
    }
    return possible;
}

class EditCommandTest : public testing::Test
{
protected:
    EditCommandTest() { QGuiApplication::clipboard()->clear(); }

    static QString clipboard() { return QGuiApplication::clipboard()->text(); }

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
        EditCommand::perform(action, nullptr);
    EXPECT_EQ(clipboard().toStdString(), "a");
}

TEST_F(EditCommandTest, PastesWhereThereIsAClipboard)
{
    QGuiApplication::clipboard()->setText(QStringLiteral("a"));
    EXPECT_EQ(possibleIn(&editor), std::vector({ Action::Paste }));
    EXPECT_EQ(possibleIn(&field), std::vector({ Action::Paste }));
    EditCommand::perform(Action::Paste, &editor);
    EditCommand::perform(Action::Paste, &field);
    EXPECT_EQ(editor.toPlainText().toStdString(), "a");
    EXPECT_EQ(field.text().toStdString(), "a");
}

TEST_F(EditCommandTest, TakesBackAndRepeatsWhatWasTyped)
{
    editor.insertPlainText(QStringLiteral("a"));
    field.insert(QStringLiteral("a"));
    EXPECT_EQ(possibleIn(&editor), std::vector({ Action::Undo, Action::SelectAll }));
    EXPECT_EQ(possibleIn(&field), std::vector({ Action::Undo, Action::SelectAll }));
    EditCommand::perform(Action::Undo, &editor);
    EditCommand::perform(Action::Undo, &field);
    EXPECT_TRUE(editor.toPlainText().isEmpty());
    EXPECT_TRUE(field.text().isEmpty());
    EXPECT_EQ(possibleIn(&editor), std::vector({ Action::Redo }));
    EXPECT_EQ(possibleIn(&field), std::vector({ Action::Redo }));
    EditCommand::perform(Action::Redo, &editor);
    EditCommand::perform(Action::Redo, &field);
    EXPECT_EQ(editor.toPlainText().toStdString(), "a");
    EXPECT_EQ(field.text().toStdString(), "a");
}

TEST_F(EditCommandTest, CutsAndCopiesWhatIsSelected)
{
    editor.showText("abc");
    EXPECT_EQ(possibleIn(&editor), std::vector({ Action::SelectAll }));
    EditCommand::perform(Action::SelectAll, &editor);
    EXPECT_EQ(possibleIn(&editor), std::vector({ Action::Cut, Action::Copy, Action::SelectAll }));
    EditCommand::perform(Action::Copy, &editor);
    EXPECT_EQ(clipboard().toStdString(), "abc");
    EditCommand::perform(Action::Cut, &editor);
    EXPECT_TRUE(editor.toPlainText().isEmpty());

    field.setText(QStringLiteral("def"));
    EditCommand::perform(Action::SelectAll, &field);
    EditCommand::perform(Action::Cut, &field);
    EXPECT_TRUE(field.text().isEmpty());
    EXPECT_EQ(clipboard().toStdString(), "def");
}

TEST_F(EditCommandTest, OnlyReadsWhatIsReadOnly)
{
    QGuiApplication::clipboard()->setText(QStringLiteral("x"));
    field.setText(QStringLiteral("abc"));
    field.setReadOnly(true);
    field.selectAll();
    EXPECT_EQ(possibleIn(&field), std::vector({ Action::Copy, Action::SelectAll }));
    editor.showText("abc");
    editor.setReadOnly(true);
    editor.selectAll();
    EXPECT_EQ(possibleIn(&editor), std::vector({ Action::Copy, Action::SelectAll }));
}

TEST_F(EditCommandTest, KnowsNothingOfOtherEntries)
{
    editor.showText("abc");
    for (const auto action : { Action::None, Action::Quit, Action::Hide, Action::ShowPanel })
        EXPECT_FALSE(EditCommand::isPossible(action, &editor));
    EditCommand::perform(Action::Quit, &editor);
    EXPECT_EQ(editor.toPlainText().toStdString(), "abc");
}

} // namespace
