#pragma once

#include <QFont>
#include <QSyntaxHighlighter>

/// Draws the emoji of a document in color where its font has monochrome ones. The document's
/// owner makes it only if `EmojiRanges::areNeeded`: it looks at each paragraph that changes.
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
