#include "platform/speech/listener/UserVocabulary.h"

#include <algorithm>
#include <numeric>
#include <tuple>
#include <utility>

namespace
{

constexpr auto NotChosen = WordCounts::Pair::SentenceEnd - 1;

/// Words that the model knows are mostly ordinary ones, whose capital at the beginning of a
/// sentence or in a title means nothing. Words that the model lacks are probably names there.
std::string spellingOf(const WordCounts::Word &word, bool isNew)
{
    const auto rank = [isNew](const auto &spelling) {
        return std::pair(spelling.count + (isNew ? 0 : spelling.countAtBeginning), spelling.count);
    };
    const auto isRarer = [&rank](const auto &spelling, const auto &other) {
        return rank(spelling) < rank(other);
    };
    const auto most = std::max_element(word.spellings.begin(), word.spellings.end(), isRarer);
    if (most != word.spellings.end() && rank(*most).first > 0)
        return most->text;
    return isNew ? word.fallbackSpelling : word.key;
}

/// The indices of the words, the most important ones first.
std::vector<std::uint32_t> ranking(const std::vector<WordCounts::Word> &words)
{
    std::vector<std::uint32_t> order(words.size());
    std::iota(order.begin(), order.end(), 0U);
    const auto rank = [&words](std::uint32_t index) {
        const auto &word = words[index];
        return std::tuple(word.isProminent, word.count);
    };
    std::stable_sort(order.begin(), order.end(),
                     [&rank](auto one, auto other) { return rank(one) > rank(other); });
    return order;
}

/// The pairs whose words are chosen, with the new indices; the most frequent ones.
std::vector<WordCounts::Pair> choosePairs(std::vector<WordCounts::Pair> pairs,
                                          const std::vector<std::uint32_t> &newIndices)
{
    const auto renumber = [&newIndices](std::uint32_t &index) {
        if (index != WordCounts::Pair::SentenceEnd)
            index = newIndices[index];
        return index != NotChosen;
    };
    std::erase_if(pairs, [&renumber](auto &pair) {
        return !(renumber(pair.first) && renumber(pair.second));
    });
    const auto isBefore = [](const auto &one, const auto &other) {
        return std::tie(other.count, one.first, one.second) <
               std::tie(one.count, other.first, other.second);
    };
    std::sort(pairs.begin(), pairs.end(), isBefore);
    pairs.resize(std::min(pairs.size(), UserVocabulary::MaxPairs));
    std::sort(pairs.begin(), pairs.end(), [](const auto &one, const auto &other) {
        return std::tie(one.first, one.second) < std::tie(other.first, other.second);
    });
    return pairs;
}

} // namespace

UserVocabulary UserVocabulary::choose(const WordCounts &counts,
                                      const std::function<bool(const std::string &)> &isKnown)
{
    UserVocabulary vocabulary;
    std::vector<std::uint32_t> newIndices(counts.words().size(), NotChosen);
    std::size_t newCount = 0;
    std::size_t knownCount = 0;
    for (const auto index : ranking(counts.words())) {
        const auto &word = counts.words()[index];
        const bool isNew = !isKnown(word.key);
        if (isNew ? word.key.size() < 2 || newCount == MaxNewWords : knownCount == MaxKnownWords)
            continue;
        ++(isNew ? newCount : knownCount);
        newIndices[index] = static_cast<std::uint32_t>(vocabulary.words.size());
        vocabulary.words.push_back({ .key = word.key,
                                     .spelling = spellingOf(word, isNew),
                                     .count = word.count,
                                     .isNew = isNew });
    }
    vocabulary.pairs = choosePairs(counts.pairs(), newIndices);
    return vocabulary;
}
