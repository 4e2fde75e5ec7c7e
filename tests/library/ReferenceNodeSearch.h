#pragma once

#include "library/MatchRank.h"
#include "library/PromptTab.h"

#include <QString>
#include <QStringList>

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

/// A simple implementation of the rules of `NodeSearch`, for comparison. Folds every text as a
/// whole for every query.
namespace ReferenceNodeSearch
{

/// The index of a tab, and of a node in it.
using Position = std::pair<std::size_t, std::size_t>;

inline bool isDropped(uint c)
{
    constexpr std::array Invisible { 0xADU,   0x34FU,  0x61CU,  0x200BU, 0x200CU, 0x200DU,
                                     0x200EU, 0x200FU, 0x202AU, 0x202BU, 0x202CU, 0x202DU,
                                     0x202EU, 0x2060U, 0x2061U, 0x2062U, 0x2063U, 0x2064U,
                                     0x2066U, 0x2067U, 0x2068U, 0x2069U, 0xFEFFU };
    const int combiningClass = QChar::combiningClass(c);
    const bool isAccent = combiningClass != 0 && combiningClass != 8 && combiningClass != 9 &&
                          (combiningClass < 84 || combiningClass > 132);
    const bool isVariation = c >= 0xFE00 && c <= 0xFE0F;
    return isAccent || isVariation || std::ranges::find(Invisible, c) != Invisible.end();
}

inline QString withoutDropped(const QString &text)
{
    QList<uint> codePoints = text.toUcs4();
    codePoints.removeIf(isDropped);
    const std::u32string kept(codePoints.begin(), codePoints.end());
    return QString::fromStdU32String(kept);
}

inline bool joins(QChar c)
{
    return QStringLiteral("\u3099\u309A").contains(c) || (c >= u'\u1161' && c <= u'\u1175') ||
           (c >= u'\u11A8' && c <= u'\u11C2');
}

/// Composes only Japanese and Korean letters.
inline QString joined(const QString &text)
{
    QString result;
    for (const QChar c : text) {
        const QString both = (result.right(1) + c).normalized(QString::NormalizationForm_C);
        if (joins(c) && !result.isEmpty() && both.size() == 1)
            result.back() = both.front();
        else
            result += c;
    }
    return result;
}

inline QString foldedCodePoint(char32_t codePoint)
{
    const QString decomposed =
        QString::fromUcs4(&codePoint, 1).normalized(QString::NormalizationForm_KD);
    QString plain =
        withoutDropped(withoutDropped(decomposed).toCaseFolded().toUpper().toCaseFolded());
    const QString stroked = QStringLiteral("øđħłŧ");
    for (QChar &letter : plain) {
        if (const auto index = stroked.indexOf(letter); index >= 0)
            letter = QStringLiteral("odhlt")[index];
    }
    return plain;
}

inline QString folded(const QString &text)
{
    QString result;
    for (const char32_t codePoint : text.toStdU32String())
        result += foldedCodePoint(codePoint);
    return joined(result);
}

inline bool isPartOfWord(uint c)
{
    return QChar::isLetterOrNumber(c) || QChar::isMark(c);
}

inline bool isBoundary(const QString &text, qsizetype offset)
{
    const auto before = text.left(offset).toUcs4();
    const auto after = text.mid(offset).toUcs4();
    return before.isEmpty() || after.isEmpty() || !isPartOfWord(before.back()) ||
           !isPartOfWord(after.front());
}

inline MatchRank rank(const QString &text, const QString &word)
{
    auto best = MatchRank::none;
    for (auto at = text.indexOf(word); at >= 0; at = text.indexOf(word, at + 1)) {
        auto rank = MatchRank::inside;
        if (isBoundary(text, at))
            rank =
                isBoundary(text, at + word.size()) ? MatchRank::wholeWord : MatchRank::wordPrefix;
        best = std::max(best, rank);
    }
    return best;
}

inline MatchRank rank(const PromptTab &tab, const PromptBlock &block, const QStringList &words)
{
    auto worst = MatchRank::wholeWord;
    for (const auto &word : words) {
        worst = std::min(worst, std::max(rank(folded(QString::fromStdString(tab.name)), word),
                                         rank(folded(QString::fromStdString(block.text)), word)));
    }
    return worst;
}

/// The positions of all hits, best first.
inline std::vector<Position> find(const std::vector<PromptTab> &tabs, std::size_t activeTab,
                                  const QString &query)
{
    const QStringList words = folded(query).simplified().split(u' ', Qt::SkipEmptyParts);
    std::vector<std::pair<MatchRank, Position>> hits;
    for (std::size_t tab = 0; tab < tabs.size(); ++tab) {
        for (std::size_t block = 0; block < tabs[tab].blocks.size(); ++block)
            hits.push_back({ rank(tabs[tab], tabs[tab].blocks[block], words), { tab, block } });
    }
    std::erase_if(hits, [](const auto &hit) { return hit.first == MatchRank::none; });
    std::ranges::stable_sort(hits, [activeTab](const auto &a, const auto &b) {
        const auto isElsewhere = [activeTab](const auto &hit) {
            return hit.second.first != activeTab;
        };
        return std::pair(b.first, isElsewhere(a)) < std::pair(a.first, isElsewhere(b));
    });
    std::vector<Position> positions;
    for (const auto &hit : hits)
        positions.push_back(hit.second);
    return positions;
}

} // namespace ReferenceNodeSearch
