#include "platform/desktop/QtPasteboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>
#include <gtest/gtest.h>

#include <string>

namespace
{

using namespace Qt::StringLiterals;
using namespace std::string_literals;

class QtPasteboardTest : public testing::Test
{
protected:
    static QClipboard &clipboard() { return *QGuiApplication::clipboard(); }

    QtPasteboard pasteboard;
};

TEST_F(QtPasteboardTest, PutsPlainTextOnTheClipboard)
{
    pasteboard.setText("plain \u00E4 \U0001F600");
    EXPECT_EQ(clipboard().text().toStdString(), "plain \u00E4 \U0001F600");
    EXPECT_TRUE(clipboard().mimeData()->hasText());
    EXPECT_FALSE(clipboard().mimeData()->hasHtml());
}

TEST_F(QtPasteboardTest, ReturnsTheTextUnchanged)
{
    for (const std::string &text :
         { "text"s, " blanks \t"s, "a\u00A0b"s, "a\u2028b"s, "one\ntwo\r\nthree"s, "a\0b"s,
           "\U0001F469\u200D\U0001F4BB"s, std::string(2'000'000, 'x') }) {
        pasteboard.setText(text);
        EXPECT_TRUE(pasteboard.text() == text) << text.substr(0, 40);
    }
}

TEST_F(QtPasteboardTest, TreatsAnEmptyTextAsText)
{
    pasteboard.setText("before");
    pasteboard.setText("");
    EXPECT_EQ(pasteboard.text(), "");
}

TEST_F(QtPasteboardTest, ReplacesOtherContents)
{
    clipboard().setImage(QImage(4, 4, QImage::Format_RGB32));
    pasteboard.setText("text");
    EXPECT_EQ(pasteboard.text(), "text");
    EXPECT_FALSE(clipboard().mimeData()->hasImage());
}

TEST_F(QtPasteboardTest, HasNoTextForAnImage)
{
    pasteboard.setText("text");
    clipboard().setImage(QImage(4, 4, QImage::Format_RGB32));
    EXPECT_EQ(pasteboard.text(), std::nullopt);
}

TEST_F(QtPasteboardTest, HasNoTextWhenEmpty)
{
    clipboard().clear();
    EXPECT_EQ(pasteboard.text(), std::nullopt);
}

TEST_F(QtPasteboardTest, ReadsThePlainTextOfRichText)
{
    auto *const rich = new QMimeData;
    rich->setHtml(u"<b>bold</b>"_s);
    rich->setText(u"bold"_s);
    clipboard().setMimeData(rich);
    EXPECT_EQ(pasteboard.text(), "bold");
}

TEST_F(QtPasteboardTest, ReturnsValidTextForAnUnpairedSurrogate)
{
    clipboard().setText(u"a"_s + QChar(0xD83D));
    const auto text = pasteboard.text();
    ASSERT_TRUE(text);
    EXPECT_EQ(QString::fromStdString(*text).toStdString(), *text);
    EXPECT_TRUE(text->starts_with("a"));
}

} // namespace
