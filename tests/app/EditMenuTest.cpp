#include "app/EditMenu.h"

#include "fakes/FakePasteboard.h"
#include "views/Input.h"
#include "views/NodeEditor.h"

#include <QClipboard>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <QTextCursor>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using Texts = std::vector<std::string>;

class EditMenuTest : public testing::Test
{
protected:
    EditMenuTest() { QGuiApplication::clipboard()->clear(); }

    static QString clipboard() { return QGuiApplication::clipboard()->text(); }

    void fill(QMenu &menu, QWidget *focus) const
    {
        EditMenu::fill(
            menu, [focus] { return TextWidget::of(focus); }, pasteboard);
    }

    /// The titles of the entries that are enabled when the menu opens.
    static Texts enabledIn(QMenu &menu)
    {
        Q_EMIT menu.aboutToShow();
        Texts titles;
        for (const auto *const entry : menu.actions()) {
            if (!entry->isSeparator() && entry->isEnabled())
                titles.push_back(entry->text().toStdString());
        }
        return titles;
    }

    Texts possibleIn(QWidget *focus) const
    {
        QMenu menu;
        fill(menu, focus);
        return enabledIn(menu);
    }

    /// Chooses an entry of a menu that has not disabled it, as a global menu bar may.
    void perform(const std::string &title, QWidget *focus) const
    {
        QMenu menu;
        fill(menu, focus);
        for (auto *const entry : menu.actions()) {
            if (entry->text().toStdString() == title)
                return entry->trigger();
        }
        FAIL() << "no entry " << title;
    }

    FakePasteboard pasteboard;
    NodeEditor editor { nullptr };
    QLineEdit field;
};

TEST_F(EditMenuTest, ListsTheCommandsWithTheirShortcuts)
{
    QMenu menu;
    fill(menu, nullptr);
    Texts entries;
    for (const auto *const entry : menu.actions()) {
        const auto key = entry->shortcut().toString(QKeySequence::PortableText);
        entries.push_back(
            entry->isSeparator() ? "-" : (entry->text() + QLatin1Char(' ') + key).toStdString());
        EXPECT_FALSE(entry->isCheckable()) << entries.back();
        EXPECT_TRUE(entry->icon().isNull()) << entries.back();
    }
    EXPECT_EQ(entries, Texts({ "Undo Ctrl+Z", "Redo Ctrl+Shift+Z", "-", "Cut Ctrl+X", "Copy Ctrl+C",
                               "Paste Ctrl+V", "Select All Ctrl+A" }));
}

TEST_F(EditMenuTest, LooksForTheTextWheneverItOpens)
{
    QMenu menu;
    QWidget *focus = nullptr;
    EditMenu::fill(
        menu, [&focus] { return TextWidget::of(focus); }, pasteboard);
    EXPECT_EQ(enabledIn(menu), Texts());
    field.setText(QStringLiteral("abc"));
    focus = &field;
    EXPECT_EQ(enabledIn(menu), Texts({ "Select All" }));
}

TEST_F(EditMenuTest, OffersNothingForAnEmptyText)
{
    EXPECT_EQ(possibleIn(&editor), Texts());
    EXPECT_EQ(possibleIn(&field), Texts());
}

TEST_F(EditMenuTest, DoesNothingWithoutAText)
{
    QGuiApplication::clipboard()->setText(QStringLiteral("a"));
    QPushButton button;
    EXPECT_EQ(possibleIn(&button), Texts());
    EXPECT_EQ(possibleIn(nullptr), Texts());
    for (const auto *const title : { "Undo", "Redo", "Cut", "Copy", "Paste", "Select All" })
        perform(title, nullptr);
    EXPECT_EQ(clipboard().toStdString(), "a");
}

TEST_F(EditMenuTest, PastesTheTextOfThePasteboard)
{
    pasteboard.contents = "a";
    EXPECT_EQ(possibleIn(&editor), Texts({ "Paste" }));
    EXPECT_EQ(possibleIn(&field), Texts({ "Paste" }));
    perform("Paste", &editor);
    perform("Paste", &field);
    EXPECT_EQ(editor.toPlainText().toStdString(), "a");
    EXPECT_EQ(field.text().toStdString(), "a");
}

TEST_F(EditMenuTest, ReplacesTheSelectionWhenPasting)
{
    pasteboard.contents = "new";
    editor.showText("an old text");
    field.setText(QStringLiteral("an old text"));
    auto cursor = editor.textCursor();
    cursor.setPosition(3);
    cursor.setPosition(6, QTextCursor::KeepAnchor);
    editor.setTextCursor(cursor);
    field.setSelection(3, 3);
    perform("Paste", &editor);
    perform("Paste", &field);
    EXPECT_EQ(editor.toPlainText().toStdString(), "an new text");
    EXPECT_EQ(field.text().toStdString(), "an new text");
}

TEST_F(EditMenuTest, UndoesAPasteWithoutTheTypingBeforeIt)
{
    pasteboard.contents = "pasted";
    QTest::keyClicks(&field, QStringLiteral("typed "));
    perform("Paste", &field);
    EXPECT_EQ(field.text().toStdString(), "typed pasted");
    perform("Undo", &field);
    EXPECT_EQ(field.text().toStdString(), "typed ");
}

TEST_F(EditMenuTest, KeepsTheSelectionWhenThereIsNothingToPaste)
{
    editor.showText("abc");
    editor.selectAll();
    field.setText(QStringLiteral("abc"));
    field.selectAll();
    perform("Paste", &editor);
    perform("Paste", &field);
    EXPECT_EQ(editor.toPlainText().toStdString(), "abc");
    EXPECT_EQ(field.text().toStdString(), "abc");
}

TEST_F(EditMenuTest, UndoesAndRedoesTyping)
{
    editor.insertPlainText(QStringLiteral("a"));
    field.insert(QStringLiteral("a"));
    EXPECT_EQ(possibleIn(&editor), Texts({ "Undo", "Select All" }));
    EXPECT_EQ(possibleIn(&field), Texts({ "Undo", "Select All" }));
    perform("Undo", &editor);
    perform("Undo", &field);
    EXPECT_TRUE(editor.toPlainText().isEmpty());
    EXPECT_TRUE(field.text().isEmpty());
    EXPECT_EQ(possibleIn(&editor), Texts({ "Redo" }));
    EXPECT_EQ(possibleIn(&field), Texts({ "Redo" }));
    perform("Redo", &editor);
    perform("Redo", &field);
    EXPECT_EQ(editor.toPlainText().toStdString(), "a");
    EXPECT_EQ(field.text().toStdString(), "a");
}

TEST_F(EditMenuTest, CutsAndCopiesTheSelection)
{
    editor.showText("abc");
    EXPECT_EQ(possibleIn(&editor), Texts({ "Select All" }));
    perform("Select All", &editor);
    EXPECT_EQ(possibleIn(&editor), Texts({ "Cut", "Copy", "Select All" }));
    perform("Copy", &editor);
    EXPECT_EQ(clipboard().toStdString(), "abc");
    perform("Cut", &editor);
    EXPECT_TRUE(editor.toPlainText().isEmpty());

    field.setText(QStringLiteral("def"));
    perform("Select All", &field);
    perform("Cut", &field);
    EXPECT_TRUE(field.text().isEmpty());
    EXPECT_EQ(clipboard().toStdString(), "def");
}

TEST_F(EditMenuTest, LeavesReadOnlyTextsUnchanged)
{
    pasteboard.contents = "x";
    field.setText(QStringLiteral("abc"));
    field.setReadOnly(true);
    field.selectAll();
    EXPECT_EQ(possibleIn(&field), Texts({ "Copy", "Select All" }));
    editor.showText("abc");
    editor.setReadOnly(true);
    editor.selectAll();
    EXPECT_EQ(possibleIn(&editor), Texts({ "Copy", "Select All" }));
    for (const auto *const title : { "Paste", "Cut" }) {
        perform(title, &field);
        perform(title, &editor);
    }
    EXPECT_EQ(field.text().toStdString(), "abc");
    EXPECT_EQ(editor.toPlainText().toStdString(), "abc");
}

} // namespace
