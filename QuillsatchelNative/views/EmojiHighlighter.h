#pragma once

#include <QFont>
#include <QSyntaxHighlighter>

/// Draws the emoji of a document in colour if its font has monochrome ones. Create it only if
/// `EmojiRanges::areNeeded`, because it examines every paragraph that changes.
class EmojiHighlighter final : public QSyntaxHighlighter
{
    Q_OBJECT

public:
    EmojiHighlighter(const QFont &font, QTextDocument *document);

protected:
    void highlightBlock(const QString &text) override;

private:
    QFont m_font;
};
