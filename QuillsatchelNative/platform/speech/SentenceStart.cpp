#include "platform/speech/SentenceStart.h"

#include <algorithm>
#include <cstddef>

namespace
{

constexpr std::size_t EnoughText = 256; // bytes; no more closing marks and spaces follow a sentence

bool isCloser(QChar character)
{
    return character.category() == QChar::Punctuation_Close ||
           character.category() == QChar::Punctuation_FinalQuote || character == u'"' ||
           character == u'\'' || character == u'*' || character == u'_';
}

bool endsSentence(QChar character)
{
    return QStringView(u".!?\u2026\u3002\uFF01\uFF1F").contains(character);
}

bool isLineBreak(QChar character)
{
    return character == u'\n' || character == u'\r' || character == QChar::ParagraphSeparator ||
           character == QChar::LineSeparator;
}

/// Marks before the first word of a line, such as "- ", "# " and "[ ] ".
bool isOpener(QChar character)
{
    return character.isSpace() || character.isPunct() ||
           character.category() == QChar::Symbol_Math ||
           character.category() == QChar::Symbol_Modifier;
}

bool isLineWithoutWords(const QString &end)
{
    const auto at = std::find_if(end.crbegin(), end.crend(), [](QChar character) {
        return isLineBreak(character) || !isOpener(character);
    });
    return at == end.crend() || isLineBreak(*at);
}

} // namespace

bool SentenceStart::isAfter(std::string_view text)
{
    text.remove_prefix(text.size() - std::min(text.size(), EnoughText));
    const auto end = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    if (isLineWithoutWords(end))
        return true;
    auto at = std::find_if_not(end.crbegin(), end.crend(),
                               [](QChar character) { return character.isSpace(); });
    at = std::find_if_not(at, end.crend(), isCloser);
    return at != end.crend() && endsSentence(*at);
}

QString SentenceStart::capitalized(QString words)
{
    const auto size = words.indexOf(u' ');
    const auto first = words.left(size < 0 ? words.size() : size);
    const auto isCapital = [](QChar character) { return character.isUpper(); };
    if (!first.isEmpty() && std::none_of(first.begin(), first.end(), isCapital))
        words[0] = first.front().toUpper();
    return words;
}
