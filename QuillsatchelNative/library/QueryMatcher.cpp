#include "library/QueryMatcher.h"

#include "library/BytePattern.h"
#include "support/ByteBlock.h"
#include "support/TextFolding.h"
#include "support/Utf8.h"

#include <QStringList>
#include <QTextBoundaryFinder>

#include <algorithm>
#include <functional>
#include <string>
#include <utility>

namespace
{

/// Folding a text in pieces folds only a part of it if that has all words, and needs little memory.
constexpr std::size_t FirstPieceSize = 128; // bytes; the next ones double
constexpr std::size_t MaximumPieceSize = 4096;

/// Enough for all words that users type.
constexpr std::size_t BytesAroundMatch = 1024;

/// Longest first, each once.
std::vector<SearchWord> wordsOf(std::string_view folded)
{
    const auto size = static_cast<qsizetype>(folded.size());
    QStringList texts =
        QString::fromUtf8(folded.data(), size).simplified().split(u' ', Qt::SkipEmptyParts);
    texts.removeDuplicates();
    std::ranges::stable_sort(texts, std::ranges::greater {}, &QString::size);
    std::vector<SearchWord> words;
    words.reserve(static_cast<std::size_t>(texts.size()));
    for (const QString &text : texts)
        words.emplace_back(text.toStdString());
    return words;
}

/// The beginning of a text that is not ASCII, up to the first white space after `size` bytes. Words
/// contain no white space, so the pieces of a text have the same matches as the text.
std::string_view firstPiece(std::string_view text, std::size_t size)
{
    const BytePattern space(' ');
    const BytePattern lineEnd('\n');
    for (; size + ByteBlock::Size <= text.size(); size += ByteBlock::Size) {
        const char *const block = text.data() + size;
        if (const auto found = space.equalBytes(block) | lineEnd.equalBytes(block); found != 0)
            return text.substr(0, size + ByteBlock::firstIndex(found));
    }
    return text;
}

std::size_t nextPieceSize(std::size_t size)
{
    return std::min(2 * size, MaximumPieceSize);
}

/// Text offsets are in code units; graphemes are what the user sees as characters.
TextRange wholeGraphemes(QTextBoundaryFinder &finder, const TextRange &range)
{
    finder.setPosition(range.start);
    const qsizetype start = finder.isAtBoundary() ? range.start : finder.toPreviousBoundary();
    finder.setPosition(range.start + range.length);
    const qsizetype end =
        finder.isAtBoundary() ? range.start + range.length : finder.toNextBoundary();
    return { start, end - start };
}

void appendJoined(std::vector<TextRange> &ranges, const TextRange &next)
{
    if (ranges.empty() || ranges.back().start + ranges.back().length < next.start) {
        ranges.push_back(next);
        return;
    }
    TextRange &last = ranges.back();
    last.length = std::max(last.length, next.start + next.length - last.start);
}

} // namespace

QueryMatcher::QueryMatcher(TextFolding &folding, std::string_view query)
    : m_folding(folding)
    , m_words(wordsOf(folding.fold(query)))
{
}

bool QueryMatcher::isNarrowerThan(const QueryMatcher &earlier) const
{
    return std::ranges::all_of(earlier.m_words, [this](const SearchWord &word) {
        return std::ranges::any_of(m_words, [&word](const SearchWord &longer) {
            return longer.text().find(word.text()) != std::string::npos;
        });
    });
}

void QueryMatcher::raiseRanks(std::string_view text, std::vector<MatchRank> &ranks) const
{
    if (TextFolding::isAscii(text)) {
        raiseRanksFolded(text, ranks);
        return;
    }
    bool areBest = false;
    for (std::size_t size = FirstPieceSize; !text.empty() && !areBest; size = nextPieceSize(size)) {
        const std::string_view piece = firstPiece(text, size);
        text.remove_prefix(piece.size());
        areBest =
            raiseRanksFolded(TextFolding::isAscii(piece) ? piece : m_folding.fold(piece), ranks);
    }
}

/// Returns whether all ranks are the best.
bool QueryMatcher::raiseRanksFolded(std::string_view folded, std::vector<MatchRank> &ranks) const
{
    bool areBest = true;
    for (std::size_t word = 0; word < m_words.size(); ++word) {
        if (ranks[word] != MatchRank::wholeWord)
            ranks[word] = std::max(ranks[word], m_words[word].bestRank(folded));
        areBest = areBest && ranks[word] == MatchRank::wholeWord;
    }
    return areBest;
}

std::optional<std::size_t> QueryMatcher::firstMatch(std::string_view text) const
{
    if (TextFolding::isAscii(text))
        return firstMatchFolded(text);
    std::vector<std::size_t> sources;
    for (std::size_t offset = 0; offset < text.size();) {
        const std::string_view piece = firstPiece(text.substr(offset), MaximumPieceSize);
        if (const auto first = firstMatchFolded(m_folding.fold(piece, sources)))
            return offset + sources[*first];
        offset += piece.size();
    }
    return std::nullopt;
}

std::optional<std::size_t> QueryMatcher::firstMatchFolded(std::string_view folded) const
{
    std::size_t first = std::string_view::npos;
    for (const auto &word : m_words)
        first = std::min(first, word.find(folded));
    return first == std::string_view::npos ? std::nullopt : std::optional(first);
}

std::optional<TextRange> QueryMatcher::firstRange(std::string_view text) const
{
    const auto first = firstMatch(text);
    if (!first)
        return std::nullopt;
    const std::string_view before = utf8End(text.substr(0, *first), BytesAroundMatch);
    const std::size_t start = *first - before.size();
    const auto ranges =
        matches(stringFromUtf8(utf8Beginning(text.substr(start), 2 * BytesAroundMatch)));
    const qsizetype offset = stringFromUtf8(text.substr(0, start)).size();
    if (ranges.empty())
        return TextRange { offset + stringFromUtf8(before).size(), 0 };
    return TextRange { offset + ranges.front().start, ranges.front().length };
}

std::vector<TextRange> QueryMatcher::matches(const QString &text) const
{
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    std::vector<TextRange> ranges = codePointRanges(text.toStdString());
    std::ranges::sort(ranges, {}, &TextRange::start);
    std::vector<TextRange> joined;
    for (const auto &range : ranges)
        appendJoined(joined, wholeGraphemes(finder, range));
    return joined;
}

/// The matches in `text` (UTF-8), as ranges of the UTF-16 text.
std::vector<TextRange> QueryMatcher::codePointRanges(std::string_view text) const
{
    std::vector<std::size_t> sources;
    const std::string_view folded = m_folding.fold(text, sources);
    const auto utf16Offset = [text](std::size_t offset) {
        return stringFromUtf8(text.substr(0, offset)).size();
    };
    std::vector<TextRange> ranges;
    for (const auto &word : m_words) {
        for (auto at = word.find(folded); at != std::string_view::npos;
             at = word.find(folded, at + 1)) {
            const std::size_t last = sources[at + word.text().size() - 1];
            const qsizetype start = utf16Offset(sources[at]);
            const std::size_t end = last + firstCodePoint(text.substr(last)).size();
            ranges.push_back({ start, utf16Offset(end) - start });
        }
    }
    return ranges;
}
