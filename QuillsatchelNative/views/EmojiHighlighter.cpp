#include "views/EmojiHighlighter.h"

#include "views/EmojiRanges.h"

EmojiHighlighter::EmojiHighlighter(const QFont &font, QTextDocument *document)
    : QSyntaxHighlighter(document)
    , m_font(font)
{
}

void EmojiHighlighter::highlightBlock(const QString &text)
{
    for (const auto &range : EmojiRanges::in(text, m_font))
        setFormat(range.start, range.length, range.format);
}
