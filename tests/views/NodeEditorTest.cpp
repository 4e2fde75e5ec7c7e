#include "views/NodeEditorFixture.h"

#include <QClipboard>
#include <QMimeData>
#include <QScrollBar>
#include <QTextBlock>
#include <gtest/gtest.h>

namespace
{

using namespace Qt::StringLiterals;

using NodeEditorTest = NodeEditorFixture;

TEST_F(NodeEditorTest, ReportsTheWholeTextAfterEachKey)
{
    editor.showText("one");
    key(Qt::Key_End, Qt::ControlModifier);
    type("!?");
    key(Qt::Key_Return);
    key(Qt::Key_Backspace);
    EXPECT_EQ(reports, Texts({ "one!", "one!?", "one!?\n", "one!?" }));
}

TEST_F(NodeEditorTest, DoesNotReportTextSetByTheProgram)
{
    editor.showText("one");
    editor.replaceText("two");
    editor.showText("");
    EXPECT_EQ(reports, Texts());
}

TEST_F(NodeEditorTest, ClearsTheUndoHistoryForAnotherNode)
{
    editor.showText("one");
    type("x");
    editor.showText("two");
    undo();
    EXPECT_EQ(shown(), "two");
    EXPECT_FALSE(editor.document()->isRedoAvailable());
}

TEST_F(NodeEditorTest, UndoesAnExternalChangeInOneStep)
{
    editor.showText("old text\nof two lines");
    editor.replaceText("new");
    EXPECT_EQ(shown(), "new");
    undo();
    EXPECT_EQ(shown(), "old text\nof two lines");
    EXPECT_EQ(reports, Texts({ "old text\nof two lines" }));
    redo();
    EXPECT_EQ(lastReport(), "new");
}

TEST_F(NodeEditorTest, UndoesTypingAroundAnExternalChange)
{
    editor.showText("");
    type("ab");
    editor.replaceText("outside");
    key(Qt::Key_End);
    type("c");
    EXPECT_EQ(lastReport(), "outsidec");
    undo();
    EXPECT_EQ(lastReport(), "outside");
    undo();
    EXPECT_EQ(lastReport(), "ab");
    undo();
    EXPECT_EQ(lastReport(), "");
}

TEST_F(NodeEditorTest, KeepsTheSelectionWhenTheTextIsUnchanged)
{
    editor.showText("some text");
    select(2, 6);
    editor.replaceText("some text");
    EXPECT_EQ(editor.textCursor().anchor(), 2);
    EXPECT_EQ(editor.textCursor().position(), 6);
    type("x");
    EXPECT_EQ(lastReport(), "soxext");
    editor.replaceText("soxext");
    EXPECT_EQ(editor.textCursor().position(), 3);
    undo();
    EXPECT_EQ(lastReport(), "some text");
}

TEST_F(NodeEditorTest, KeepsTheCursorInsideAShorterText)
{
    editor.showText("a long text");
    select(11, 11);
    editor.replaceText("ab");
    EXPECT_LE(editor.textCursor().position(), 2);
    type("x");
    EXPECT_EQ(lastReport().size(), 3U);
}

TEST_F(NodeEditorTest, KeepsTheSelectionInTheCommonPart)
{
    editor.showText("some text");
    select(2, 6);
    editor.replaceText("some text that goes on");
    EXPECT_EQ(editor.textCursor().anchor(), 2);
    EXPECT_EQ(editor.textCursor().position(), 6);
    editor.replaceText("And some text that goes on");
    EXPECT_EQ(editor.textCursor().selectedText().toStdString(), "me t");
}

TEST_F(NodeEditorTest, ReplacesAnyTextByAnyOther)
{
    const Texts texts { "",        "a",          "aa",         "ba",
                        "ab\nab",  "ab\r\nab",   "ab\n\nab",   "\n",
                        "\n\n",    "\U0001F600", "\U0001F601", "\U0001F600\U0001F601",
                        "e\u0301", "\u00E9",     "x\u2028y",   "x\u00A0y",
                        "tab\t",   "aab",        "aba" };
    for (const auto &earlier : texts) {
        for (const auto &later : texts) {
            editor.showText(earlier);
            const auto original = shown();
            editor.replaceText(later);
            const auto replaced = shown();
            editor.showText(later);
            EXPECT_EQ(replaced, shown()) << "'" << earlier << "' and '" << later << "'";
            editor.showText(earlier);
            editor.replaceText(later);
            undo();
            EXPECT_EQ(shown(), original) << "'" << earlier << "' and '" << later << "'";
        }
    }
}

TEST_F(NodeEditorTest, WrapsAnywhereOnlyForVeryLongWords)
{
    const std::string longest(10'000, 'x');
    const auto wrapsAnywhere = [this](const std::string &text) {
        editor.showText(text);
        return editor.wordWrapMode() == QTextOption::WrapAnywhere;
    };
    EXPECT_FALSE(wrapsAnywhere("some words"));
    EXPECT_FALSE(wrapsAnywhere(longest));
    for (const auto *const between : { " ", "\n", "\t", "\u2028" })
        EXPECT_FALSE(wrapsAnywhere(longest.substr(1) + between + longest)) << between;
    for (const auto *const between : { "", "-", "\u00A0", "\u202F" })
        EXPECT_TRUE(wrapsAnywhere(longest.substr(1) + between + longest)) << between;
    EXPECT_TRUE(wrapsAnywhere("some words " + longest + "x"));
    EXPECT_TRUE(wrapsAnywhere(longest + "x some words"));
    EXPECT_FALSE(wrapsAnywhere("some words")) << "in another node";
}

TEST_F(NodeEditorTest, WrapsALongWordCreatedByTyping)
{
    const std::string half(6000, 'x');
    editor.showText(half + " " + half);
    editor.moveCursor(QTextCursor::End);
    editor.moveCursor(QTextCursor::PreviousWord);
    key(Qt::Key_Backspace);
    EXPECT_EQ(lastReport(), half + half);
    EXPECT_EQ(editor.wordWrapMode(), QTextOption::WrapAnywhere);
}

TEST_F(NodeEditorTest, TypesATab)
{
    editor.showText("");
    type("a");
    key(Qt::Key_Tab);
    type("b");
    EXPECT_EQ(lastReport(), "a\tb");
    EXPECT_TRUE(editor.hasFocus());
}

TEST_F(NodeEditorTest, CtrlTabMovesTheFocusBothWays)
{
    editor.showText("a");
    key(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_TRUE(after.hasFocus());
    editor.setFocus();
    key(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(before.hasFocus());
    EXPECT_EQ(shown(), "a");
}

TEST_F(NodeEditorTest, ShiftReturnInsertsALineBreak)
{
    editor.showText("");
    type("a");
    key(Qt::Key_Return, Qt::ShiftModifier);
    type("b");
    key(Qt::Key_Enter, Qt::ShiftModifier | Qt::KeypadModifier);
    type("c");
    EXPECT_EQ(lastReport(), "a\nb\nc");
}

TEST_F(NodeEditorTest, PastesRichTextAsPlainText)
{
    auto *const rich = new QMimeData;
    rich->setHtml(u"<b>bold</b> <a href='https://example.com'>link</a>"_s);
    rich->setText(u"bold link"_s);
    QGuiApplication::clipboard()->setMimeData(rich);
    editor.showText("()");
    select(1, 1);
    key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(lastReport(), "(bold link)");
    EXPECT_EQ(editor.document()->begin().begin().fragment().charFormat().fontWeight(),
              int(QFont::Normal));
    undo();
    EXPECT_EQ(lastReport(), "()");
}

TEST_F(NodeEditorTest, IgnoresPastedImages)
{
    auto *const picture = new QMimeData;
    picture->setImageData(QImage(4, 4, QImage::Format_RGB32));
    QGuiApplication::clipboard()->setMimeData(picture);
    editor.showText("text");
    key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(shown(), "text");
    EXPECT_EQ(reports, Texts());
}

TEST_F(NodeEditorTest, CutsAsPlainText)
{
    editor.showText("one\ntwo");
    select(0, 7);
    key(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(lastReport(), "");
    EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(), "one\ntwo");
    EXPECT_FALSE(QGuiApplication::clipboard()->mimeData()->hasHtml());
}

TEST_F(NodeEditorTest, CopiesNoBreakSpacesUnchanged)
{
    editor.showText("a\u00A0b\tc");
    select(0, 5);
    key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(), "a\u00A0b\tc");
}

TEST_F(NodeEditorTest, TakesTheFocusOnClick)
{
    editor.showText("some text");
    after.setFocus();
    Input::click(editor);
    EXPECT_TRUE(editor.hasFocus());
    type("x");
    EXPECT_EQ(lastReport().size(), 10U);
}

TEST_F(NodeEditorTest, ScrollsByTheWheelWhileFocused)
{
    editor.showText(std::string(60, '\n'));
    Input::wheel(editor, -1);
    EXPECT_GT(editor.verticalScrollBar()->value(), 0);
}

TEST_F(NodeEditorTest, IgnoresTheWheelWhileUnfocused)
{
    editor.showText(std::string(60, '\n'));
    after.setFocus();
    Input::wheel(editor, -1);
    EXPECT_EQ(editor.verticalScrollBar()->value(), 0);
}

TEST_F(NodeEditorTest, HasAnAccessibleNameAndRole)
{
    EXPECT_EQ(Input::accessibleName(editor), "Node text");
    EXPECT_EQ(Input::role(editor), QAccessible::EditableText);
}

} // namespace
