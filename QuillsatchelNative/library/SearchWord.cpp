#include "library/SearchWord.h"

#include "support/Utf8.h"

#include <QChar>

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <utility>

namespace
{

constexpr std::size_t BlockSize = sizeof(std::uint64_t);
constexpr std::uint64_t EachByte = 0x0101'0101'0101'0101;
constexpr std::uint64_t LowBits = 0x7F * EachByte;

bool isAscii(char c)
{
    return (c & 0x80) == 0;
}

constexpr bool isAsciiLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// The first byte of the text is the lowest one of the result.
std::uint64_t loadBlock(const char *text)
{
    std::uint64_t block = 0;
    std::memcpy(&block, text, BlockSize);
    if constexpr (std::endian::native == std::endian::big)
        block = __builtin_bswap64(block);
    return block;
}

char lowerCase(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c;
}

/// Whether words contain the code point with these bytes.
bool isPartOfWord(std::string_view bytes)
{
    const char32_t codePoint = decodedCodePoint(bytes);
    return QChar::isLetterOrNumber(codePoint) || QChar::isMark(codePoint);
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

SearchWord::Pattern::Pattern(char byte)
    : bytes(EachByte * static_cast<uchar>(byte))
    , caseBits(isAsciiLetter(byte) ? EachByte * 0x20 : 0)
{
}

/// The highest bit of each equal byte.
std::uint64_t SearchWord::Pattern::equalBytes(const char *text) const
{
    const std::uint64_t differences = (loadBlock(text) | caseBits) ^ bytes;
    return ~(((differences & LowBits) + LowBits) | differences | LowBits);
}

SearchWord::SearchWord(std::string folded)
    : m_text(std::move(folded))
    , m_first(m_text.front())
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

/// Calls `visit` with the offset of each match until it returns true. Compares the first and the
/// last byte of the word at eight offsets at a time.
template <typename Visit>
void SearchWord::forEachMatch(std::string_view text, std::size_t from, Visit &&visit) const
{
    const std::size_t size = m_text.size();
    std::size_t at = from;
    for (; at + size + BlockSize <= text.size() + 1; at += BlockSize) {
        const std::uint64_t candidates =
            m_first.equalBytes(text.data() + at) & m_last.equalBytes(text.data() + at + size - 1);
        if (candidates != 0 && visitMatches(candidates, text, at, visit))
            return;
    }
    for (; at + size <= text.size(); ++at) {
        if (matches(text, at) && visit(at))
            return;
    }
}

/// Visits the matches among the eight offsets from `at` on; true if `visit` returned true.
template <typename Visit>
bool SearchWord::visitMatches(std::uint64_t candidates, std::string_view text, std::size_t at,
                              Visit &&visit) const
{
    for (; candidates != 0; candidates &= candidates - 1) {
        const std::size_t candidate =
            at + static_cast<std::size_t>(std::countr_zero(candidates)) / 8;
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
