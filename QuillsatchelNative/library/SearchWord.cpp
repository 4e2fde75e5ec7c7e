#include "library/SearchWord.h"

#include "support/ByteBlock.h"
#include "support/Utf8.h"

#include <QChar>

#include <algorithm>
#include <array>
#include <utility>

namespace
{

bool isAscii(char c)
{
    return (c & 0x80) == 0;
}

constexpr bool isAsciiLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

char lowerCase(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c;
}

/// Whether words contain the code point with these bytes. Looks its category up only once.
bool isPartOfWord(std::string_view bytes)
{
    switch (QChar::category(decodedCodePoint(bytes))) {
    case QChar::Mark_NonSpacing:
    case QChar::Mark_SpacingCombining:
    case QChar::Mark_Enclosing:
    case QChar::Number_DecimalDigit:
    case QChar::Number_Letter:
    case QChar::Number_Other:
    case QChar::Letter_Uppercase:
    case QChar::Letter_Lowercase:
    case QChar::Letter_Titlecase:
    case QChar::Letter_Modifier:
    case QChar::Letter_Other:
        return true;
    default:
        return false;
    }
}

constexpr std::array<bool, 128> findAsciiPartsOfWords()
{
    std::array<bool, 128> parts {};
    for (std::size_t c = 0; c < parts.size(); ++c)
        parts.at(c) = (c >= '0' && c <= '9') || isAsciiLetter(static_cast<char>(c));
    return parts;
}

// For the usual characters, in which most matches begin and end.
constexpr auto AsciiPartsOfWords = findAsciiPartsOfWords();

bool endsInsideWord(std::string_view text)
{
    return isAscii(text.back()) ? AsciiPartsOfWords[static_cast<uchar>(text.back())]
                                : isPartOfWord(lastCodePoint(text));
}

bool beginsInsideWord(std::string_view text)
{
    return isAscii(text.front()) ? AsciiPartsOfWords[static_cast<uchar>(text.front())]
                                 : isPartOfWord(firstCodePoint(text));
}

/// Whether no word continues across `offset`.
bool isWordBoundary(std::string_view text, std::size_t offset)
{
    return offset == 0 || offset == text.size() || !beginsInsideWord(text.substr(offset)) ||
           !endsInsideWord(text.substr(0, offset));
}

} // namespace

SearchWord::SearchWord(std::string folded)
    : m_text(std::move(folded))
    , m_firstEnd(firstCodePoint(m_text).size() - 1)
    , m_first(m_text[m_firstEnd])
    , m_last(m_text.back())
{
}

std::size_t SearchWord::find(std::string_view text, std::size_t from) const
{
    std::size_t found = std::string_view::npos;
    forEachMatch(text, from, [&found](std::size_t at) {
        found = at;
        return true;
    });
    return found;
}

MatchRank SearchWord::bestRank(std::string_view text) const
{
    auto best = MatchRank::none;
    forEachMatch(text, 0, [this, text, &best](std::size_t at) {
        best = std::max(best, rank(text, at));
        return best == MatchRank::wholeWord;
    });
    return best;
}

/// Calls `visit` with the offset of each match until it returns true.
template <typename Visit>
void SearchWord::forEachMatch(std::string_view text, std::size_t from, Visit &&visit) const
{
    const std::size_t size = m_text.size();
    std::size_t at = from;
    for (; at + size + ByteBlock::Size <= text.size() + 1; at += ByteBlock::Size) {
        const std::uint64_t found = candidates(text, at);
        if (found != 0 && visitMatches(found, text, at, visit))
            return;
    }
    for (; at + size <= text.size(); ++at) {
        if (matches(text, at) && visit(at))
            return;
    }
}

/// The highest bit of each of the eight offsets from `at` on at which the word may match: where two
/// of its bytes are equal.
std::uint64_t SearchWord::candidates(std::string_view text, std::size_t at) const
{
    const char *const first = text.data() + at;
    return m_first.equalBytes(first + m_firstEnd) & m_last.equalBytes(first + m_text.size() - 1);
}

/// Visits the matches among the `candidates` from `at` on; true if `visit` returned true.
template <typename Visit>
bool SearchWord::visitMatches(std::uint64_t candidates, std::string_view text, std::size_t at,
                              Visit &&visit) const
{
    for (; candidates != 0; candidates &= candidates - 1) {
        const std::size_t candidate = at + ByteBlock::firstIndex(candidates);
        if (matches(text, candidate) && visit(candidate))
            return true;
    }
    return false;
}

bool SearchWord::matches(std::string_view text, std::size_t at) const
{
    return std::ranges::equal(m_text, text.substr(at, m_text.size()), {}, {}, lowerCase);
}

MatchRank SearchWord::rank(std::string_view text, std::size_t at) const
{
    if (!isWordBoundary(text, at))
        return MatchRank::inside;
    return isWordBoundary(text, at + m_text.size()) ? MatchRank::wholeWord : MatchRank::wordPrefix;
}
