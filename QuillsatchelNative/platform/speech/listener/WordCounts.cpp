#include "platform/speech/listener/WordCounts.h"

#include "platform/speech/listener/LatinLetter.h"

#include <algorithm>

namespace
{

constexpr std::uint32_t NoWord = WordCounts::Pair::SentenceEnd - 1; // above the limit

constexpr std::size_t MaxSpellings = 8; // of a word

/// Whether only the first letter is a capital, as in any word at the beginning of a sentence.
bool isCapitalized(std::string_view spelling)
{
    const auto first = LatinLetter::first(spelling);
    if (!first || !first->isCapital)
        return false;
    for (std::size_t at = first->size; at < spelling.size();) {
        const auto letter = LatinLetter::first(spelling.substr(at));
        if (letter && letter->isCapital)
            return false;
        at += letter ? letter->size : 1;
    }
    return true;
}

/// "write" for "Write".
std::string withoutCapital(std::string_view spelling)
{
    const auto first = LatinLetter::first(spelling);
    return first ? first->base + std::string(spelling.substr(first->size)) : std::string();
}

/// Null above the limit.
WordCounts::Spelling *findSpelling(WordCounts::Word &word, std::string_view text)
{
    auto &spellings = word.spellings;
    const auto isSame = [text](const auto &spelling) { return spelling.text == text; };
    const auto known = std::find_if(spellings.begin(), spellings.end(), isSame);
    if (known != spellings.end())
        return &*known;
    if (spellings.size() == MaxSpellings)
        return nullptr;
    spellings.push_back({ .text = std::string(text) });
    return &spellings.back();
}

void countSpelling(WordCounts::Word &word, const TextWords::Word &found)
{
    if (!found.isFirst || !isCapitalized(found.spelling)) {
        if (auto *const spelling = findSpelling(word, found.spelling))
            ++spelling->count;
        return;
    }
    word.fallbackSpelling = found.spelling;
    if (auto *const spelling = findSpelling(word, withoutCapital(found.spelling)))
        ++spelling->countAtBeginning;
}

} // namespace

void WordCounts::add(std::string_view text, bool isProminent, bool isTitle)
{
    TextWords::forEachRun(
        text, [this, isProminent, isTitle](const auto &run) { add(run, isProminent, isTitle); });
}

void WordCounts::add(const TextWords::Run &run, bool isProminent, bool isTitle)
{
    auto previous = run.beginsSentence ? Pair::SentenceEnd : NoWord;
    for (const auto &found : run.words) {
        const auto index = indexOf(found);
        if (index != NoWord) {
            auto &word = m_words[index];
            ++word.count;
            word.isProminent = word.isProminent || isProminent;
            if (!isTitle)
                countSpelling(word, found);
            else if (word.fallbackSpelling.empty())
                word.fallbackSpelling = found.spelling;
        }
        countPair(previous, index);
        previous = index;
    }
    if (run.endsSentence)
        countPair(previous, Pair::SentenceEnd);
}

std::uint32_t WordCounts::indexOf(const TextWords::Word &word)
{
    const auto known = m_indices.find(word.key);
    if (known != m_indices.end())
        return known->second;
    if (m_words.size() >= MaxWords)
        return NoWord;
    const auto index = static_cast<std::uint32_t>(m_words.size());
    m_words.emplace_back().key = word.key;
    m_indices.emplace(word.key, index);
    return index;
}

void WordCounts::countPair(std::uint32_t first, std::uint32_t second)
{
    if (first == NoWord || second == NoWord)
        return;
    const auto pair = (std::uint64_t(first) << 32U) | second;
    const auto known = m_pairs.find(pair);
    if (known != m_pairs.end())
        ++known->second;
    else if (m_pairs.size() < MaxPairs)
        m_pairs.emplace(pair, 1);
}

std::vector<WordCounts::Pair> WordCounts::pairs() const
{
    std::vector<Pair> pairs;
    pairs.reserve(m_pairs.size());
    for (const auto &[pair, count] : m_pairs)
        pairs.push_back({ .first = static_cast<std::uint32_t>(pair >> 32U),
                          .second = static_cast<std::uint32_t>(pair),
                          .count = count });
    return pairs;
}
