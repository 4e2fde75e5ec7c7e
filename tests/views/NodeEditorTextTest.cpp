#include "library/SatchelDocument.h"
#include "views/NodeEditorFixture.h"

#include <QClipboard>
#include <QStringDecoder>
#include <gtest/gtest.h>

namespace
{

using namespace Qt::StringLiterals;
using namespace std::string_literals;

/// The editor loses and changes no character.
class NodeEditorTextTest : public NodeEditorFixture
{
protected:
    /// The reported text after a letter is typed at its end.
    std::string afterTyping(const std::string &text)
    {
        editor.showText(text);
        key(Qt::Key_End, Qt::ControlModifier);
        type("x");
        return lastReport();
    }

    void paste(const QString &text)
    {
        QGuiApplication::clipboard()->setText(text);
        key(Qt::Key_V, Qt::ControlModifier);
    }

    static bool isUtf8(const std::string &bytes)
    {
        QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
        const QString text = decoder(QByteArray::fromStdString(bytes));
        return !decoder.hasError() && text.toStdString() == bytes;
    }

    /// Whether a library with this node can be read again.
    static bool canBeReadAgain(const std::string &text)
    {
        const SatchelDocument document {
            .activeTabID = {}, .tabs = { { .blocks = { { .text = text, .color = {} } } } }
        };
        return SatchelDocument::decode(QByteArray::fromStdString(document.encode())) == document;
    }
};

TEST_F(NodeEditorTextTest, KeepsExistingCharactersWhileTyping)
{
    for (const std::string &text :
         { "no-break\u00A0space \u202F narrow"s, "line\u2028separator"s, "tab\tand\t\ttab"s,
           "emoji \U0001F469\u200D\U0001F4BB \U0001F1E9\U0001F1EA"s, "e\u0301 combined"s,
           "\u05E9\u05DC\u05D5\u05DD \u200Fright to left"s, "lines\n\nand lines\n"s,
           "zero\u200Bwidth\u00ADsoft"s, "\uFFFCobject"s, "trailing blanks   "s,
           "\x01\x02\x1F control"s, "form\ffeed\vtab"s, "a\0b"s }) {
        EXPECT_EQ(afterTyping(text), text + "x");
        EXPECT_TRUE(canBeReadAgain(lastReport()));
    }
}

TEST_F(NodeEditorTextTest, KeepsComposedTextUnchanged)
{
    editor.showText("");
    for (const QString &text : { u"\u00E9"_s, u"\u4F60\u597D"_s, u"\U0001F600"_s, u"\u00A0"_s }) {
        Input::commit(text);
        EXPECT_TRUE(lastReport().ends_with(text.toStdString()));
    }
    EXPECT_EQ(lastReport(), "\u00E9\u4F60\u597D\U0001F600\u00A0");
}

TEST_F(NodeEditorTextTest, PastesTextUnchanged)
{
    editor.showText("");
    paste(u"a\u00A0b\tc\nd \U0001F600"_s);
    EXPECT_EQ(lastReport(), "a\u00A0b\tc\nd \U0001F600");
}

TEST_F(NodeEditorTextTest, ConvertsPastedLineEndings)
{
    editor.showText("");
    paste(u"a\r\nb\rc\u2029d"_s);
    EXPECT_EQ(lastReport(), "a\nb\nc\nd");
}

TEST_F(NodeEditorTextTest, ConvertsLineEndingsOnceANodeIsEdited)
{
    EXPECT_EQ(afterTyping("a\r\nb\rc\u2029d"), "a\nb\nc\ndx");
    EXPECT_EQ(afterTyping("\r\r\n\n\r"), "\n\n\n\nx");
    editor.showText("old");
    editor.replaceText("a\r\nb\rc\u2029d");
    key(Qt::Key_End, Qt::ControlModifier);
    type("x");
    EXPECT_EQ(lastReport(), "a\nb\nc\ndx");
}

TEST_F(NodeEditorTextTest, NeverReportsHalfASurrogatePair)
{
    const QString high(QChar(0xD83D));
    const QString low(QChar(0xDE00));
    for (const QString &text : { high, low, low + high, high + u"x"_s, u"x"_s + low }) {
        editor.showText("");
        Input::commit(text);
        EXPECT_TRUE(isUtf8(lastReport()));
        EXPECT_TRUE(canBeReadAgain(lastReport()));
        editor.showText("");
        paste(text);
        EXPECT_TRUE(isUtf8(lastReport()));
        EXPECT_TRUE(canBeReadAgain(lastReport()));
    }
}

TEST_F(NodeEditorTextTest, JoinsTheHalvesOfASurrogatePair)
{
    editor.showText("");
    Input::commit(QString(QChar(0xD83D)));
    Input::commit(QString(QChar(0xDE00)));
    EXPECT_EQ(lastReport(), "\U0001F600");
}

TEST_F(NodeEditorTextTest, StaysValidWhenTypingAfterHalfAPair)
{
    editor.showText("");
    Input::commit(QString(QChar(0xD83D)));
    const std::string stored = lastReport();
    editor.replaceText(stored); // as rendering does
    type("x");
    EXPECT_TRUE(isUtf8(lastReport()));
    EXPECT_EQ(lastReport(), stored + "x");
}

TEST_F(NodeEditorTextTest, BackspaceDeletesAWholeCharacter)
{
    editor.showText("a\U0001F600");
    key(Qt::Key_End, Qt::ControlModifier);
    key(Qt::Key_Backspace);
    EXPECT_EQ(lastReport(), "a");
}

TEST_F(NodeEditorTextTest, KeepsExternalTextUnchanged)
{
    for (const std::string &text : { "a\u00A0b"s, "a\u2028b"s, "\U0001F600"s, "a\0b"s }) {
        editor.showText("");
        editor.replaceText(text);
        key(Qt::Key_End, Qt::ControlModifier);
        type("x");
        EXPECT_EQ(lastReport(), text + "x");
    }
}

TEST_F(NodeEditorTextTest, TypesIntoAMegabyteOfText)
{
    std::string text;
    while (text.size() < 1'000'000)
        text += "A line of a long prompt, as people paste them.\n";
    EXPECT_EQ(afterTyping(text), text + "x");
}

} // namespace
