#include "fakes/TestFiles.h"
#include "platform/desktop/QtPasteboard.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace
{

using namespace Qt::StringLiterals;
using namespace std::string_literals;

// The timeout is one second. Leaves a margin for a busy machine, but excludes two timeouts.
constexpr qint64 MaximumWait = 1900;

class X11ClipboardTest : public testing::Test
{
protected:
    using Offers = std::vector<std::pair<QString, std::string>>; // formats and bytes

    /// Starts another program that owns the selection.
    void startOwner(const QString &behaviour, const Offers &offers,
                    const QString &selection = u"CLIPBOARD"_s)
    {
        QStringList arguments { selection, behaviour };
        for (const auto &[format, bytes] : offers) {
            const QString path = folder.filePath(QString::number(arguments.size()));
            TestFiles::write(path.toStdString(), bytes);
            arguments << format << path;
        }
        owner = std::make_unique<QProcess>();
        owner->start(QStringLiteral(SELECTION_OWNER), arguments);
        ASSERT_TRUE(owner->waitForReadyRead());
        QCoreApplication::processEvents();
    }

    void TearDown() override
    {
        if (!owner)
            return;
        owner->kill();
        owner->waitForFinished();
    }

    std::optional<std::string> textOf(const Offers &offers)
    {
        startOwner(u"answers"_s, offers);
        return pasteboard.text();
    }

    /// In milliseconds.
    template <typename Read>
    static qint64 durationOf(Read &&read)
    {
        QElapsedTimer timer;
        timer.start();
        std::forward<Read>(read)();
        return timer.elapsed();
    }

    QTemporaryDir folder;
    std::unique_ptr<QProcess> owner;
    QtPasteboard pasteboard;
};

TEST_F(X11ClipboardTest, ReadsTextOfAnotherProgram)
{
    for (const auto &text :
         { ""s, "text"s, "a\r\nb\nc"s, "\u00A0 \U0001F98A e\u0301"s, std::string(200'000, 'x') }) {
        EXPECT_TRUE(textOf({ { u"UTF8_STRING"_s, text } }) == text) << text.substr(0, 20);
        EXPECT_TRUE(pasteboard.hasText());
    }
}

TEST_F(X11ClipboardTest, ReadsAnIncrTransfer)
{
    std::string text;
    while (text.size() < 3'000'000)
        text += std::to_string(text.size()) + "\u00E4 ";
    startOwner(u"incremental"_s, { { u"UTF8_STRING"_s, text } });
    EXPECT_TRUE(pasteboard.text() == text);
    EXPECT_TRUE(pasteboard.text() == text) << "again";
}

TEST_F(X11ClipboardTest, ReadsPlainTextWithParameters)
{
    for (const auto &format :
         { u"text/plain"_s, u"text/plain;charset=utf-8"_s, u"text/plain;charset=UTF-8"_s,
           u"text/plain; charset=utf-8"_s, u"text/plain;charset=\"utf-8\";format=flowed"_s,
           u"text/plain;format=flowed"_s, u"text/plain;charset=us-ascii"_s })
        EXPECT_EQ(textOf({ { format, "gr\u00FC\u00DFe" } }), "gr\u00FC\u00DFe")
            << format.toStdString();
}

TEST_F(X11ClipboardTest, ReadsOtherEncodings)
{
    EXPECT_EQ(textOf({ { u"text/plain;charset=utf-16le"_s, "\xE4\0b\0"s } }), "\u00E4b");
    EXPECT_EQ(textOf({ { u"text/plain;charset=iso-8859-1"_s, "\xE4"
                                                             "b" } }),
              "\u00E4b");
    EXPECT_EQ(textOf({ { u"STRING"_s, "\xE4"
                                      "b" } }),
              "\u00E4b");
    EXPECT_EQ(textOf({ { u"text/plain;charset=unheard-of"_s, "a" }, { u"STRING"_s, "b" } }), "b");
}

TEST_F(X11ClipboardTest, KeepsALeadingByteOrderMark)
{
    for (const auto &format : { u"UTF8_STRING"_s, u"text/plain;charset=utf-8"_s })
        EXPECT_EQ(textOf({ { format, "\uFEFFtext" } }), "\uFEFFtext");
}

TEST_F(X11ClipboardTest, ReplacesInvalidUtf8)
{
    const auto text = textOf({ { u"UTF8_STRING"_s, "a\xFF"
                                                   "b" } });
    EXPECT_EQ(text, "a\uFFFDb");
}

TEST_F(X11ClipboardTest, PrefersTheFormatThatLosesLeast)
{
    EXPECT_EQ(textOf({ { u"STRING"_s, "?" },
                       { u"text/html"_s, "<b>?</b>" },
                       { u"text/plain"_s, "?" },
                       { u"UTF8_STRING"_s, "best" } }),
              "best");
}

TEST_F(X11ClipboardTest, HasNoTextForAnImage)
{
    EXPECT_EQ(textOf({ { u"image/png"_s, "bytes" } }), std::nullopt);
    EXPECT_FALSE(pasteboard.hasText());
}

TEST_F(X11ClipboardTest, HasNoTextWithoutAnOwner)
{
    startOwner(u"answers"_s, { { u"UTF8_STRING"_s, "gone" } });
    TearDown();
    EXPECT_EQ(pasteboard.text(), std::nullopt);
    EXPECT_FALSE(pasteboard.hasText());
}

TEST_F(X11ClipboardTest, ReadsItsOwnTextWithoutWaiting)
{
    QTest::qWait(50); // until Qt knows the server time, which decides ownership
    pasteboard.setText("\uFEFFown");
    EXPECT_LT(durationOf([this] { EXPECT_EQ(pasteboard.text(), "\uFEFFown"); }), 500);
    EXPECT_TRUE(pasteboard.hasText());
}

TEST_F(X11ClipboardTest, ReadsTheTextOfALaterOwner)
{
    QTest::qWait(50);
    pasteboard.setText("own");
    EXPECT_EQ(textOf({ { u"UTF8_STRING"_s, "of another" } }), "of another");
}

TEST_F(X11ClipboardTest, TimesOutAfterASecond)
{
    for (const auto &behaviour : { u"silent"_s, u"lists"_s, u"slow"_s }) {
        startOwner(behaviour, { { u"UTF8_STRING"_s, std::string(100, 'x') } });
        const auto wait = durationOf([this] { EXPECT_EQ(pasteboard.text(), std::nullopt); });
        EXPECT_GE(wait, 950) << behaviour.toStdString();
        EXPECT_LT(wait, MaximumWait) << behaviour.toStdString();
    }
    EXPECT_TRUE(pasteboard.hasText()) << "the last owner lists its formats";
    startOwner(u"silent"_s, {});
    EXPECT_LT(durationOf([this] { EXPECT_FALSE(pasteboard.hasText()); }), MaximumWait);
}

TEST_F(X11ClipboardTest, ReadsTheSelectionOfAnotherProgram)
{
    startOwner(u"answers"_s, { { u"UTF8_STRING"_s, "selected" } }, u"PRIMARY"_s);
    EXPECT_EQ(pasteboard.selectedText(), "selected");
    startOwner(u"silent"_s, {}, u"PRIMARY"_s);
    EXPECT_LT(durationOf([this] { EXPECT_EQ(pasteboard.selectedText(), std::nullopt); }),
              MaximumWait);
}

} // namespace
