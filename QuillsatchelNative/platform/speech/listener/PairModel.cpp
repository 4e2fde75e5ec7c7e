#include "platform/speech/listener/PairModel.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace
{

using Pair = WordCounts::Pair;

constexpr double Discount = 0.5;     // taken from each count, for pairs that do not occur
constexpr double Impossible = -99.0; // a logarithm
constexpr double MinShare = 1e-6;    // of words that do not follow; not 0, despite rounding

/// Appends the logarithm in a form that does not depend on the locale.
void appendLogarithm(std::string &text, double logarithm)
{
    std::array<char, 32> digits {};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), logarithm,
                                   std::chars_format::fixed, 4);
    text.append(digits.data(), end.ptr);
}

double logarithm(double probability)
{
    return probability > 0 ? std::log10(probability) : Impossible;
}

/// The probabilities of single words, which need the number of sentences.
class Singles
{
public:
    explicit Singles(const UserVocabulary &vocabulary)
        : m_vocabulary(vocabulary)
    {
        for (const auto &pair : vocabulary.pairs)
            m_sentenceEnds += pair.second == Pair::SentenceEnd ? pair.count : 0;
        m_total = m_sentenceEnds = std::max(m_sentenceEnds, 1U);
        for (const auto &word : vocabulary.words)
            m_total += word.count;
    }

    double probability(std::uint32_t index) const
    {
        return static_cast<double>(count(index)) / static_cast<double>(m_total);
    }

    std::uint32_t count(std::uint32_t index) const
    {
        return index == Pair::SentenceEnd ? m_sentenceEnds : m_vocabulary.words[index].count;
    }

private:
    const UserVocabulary &m_vocabulary;
    std::uint32_t m_sentenceEnds = 0;
    std::uint64_t m_total = 0;
};

class Writer
{
public:
    explicit Writer(const UserVocabulary &vocabulary)
        : m_vocabulary(vocabulary)
        , m_singles(vocabulary)
        , m_backoffs(vocabulary.words.size() + 1, 0.0)
    {
        const auto &pairs = m_vocabulary.pairs;
        for (auto begin = pairs.begin(); begin != pairs.end();) {
            const auto isOther = [begin](const Pair &pair) { return pair.first != begin->first; };
            const auto end = std::find_if(begin, pairs.end(), isOther);
            writePairs(begin, end);
            begin = end;
        }
    }

    std::string text() const
    {
        const auto singleCount = m_vocabulary.words.size() + 2;
        std::string text = "\\data\\\nngram 1=" + std::to_string(singleCount) + '\n';
        if (!m_pairs.empty())
            text += "ngram 2=" + std::to_string(m_vocabulary.pairs.size()) + '\n';
        text += "\n\\1-grams:\n";
        appendSingle(text, Impossible, "<s>", m_backoffs.back());
        appendSingle(text, logarithm(m_singles.probability(Pair::SentenceEnd)), "</s>", 0.0);
        for (std::uint32_t index = 0; index < m_vocabulary.words.size(); ++index)
            appendSingle(text, logarithm(m_singles.probability(index)),
                         m_vocabulary.words[index].key, m_backoffs[index]);
        if (!m_pairs.empty())
            text += "\n\\2-grams:\n" + m_pairs;
        return text + "\n\\end\\\n";
    }

private:
    using Pairs = std::vector<Pair>::const_iterator;

    /// Of one first word.
    void writePairs(Pairs begin, Pairs end)
    {
        const bool isBeginning = begin->first == Pair::SentenceEnd;
        std::uint64_t total = 0;
        for (auto pair = begin; pair != end; ++pair)
            total += pair->count;
        if (!isBeginning)
            total = std::max<std::uint64_t>(total, m_singles.count(begin->first));
        double left = 1;
        double leftSingles = 1;
        for (auto pair = begin; pair != end; ++pair) {
            const auto probability = (pair->count - Discount) / static_cast<double>(total);
            left -= probability;
            leftSingles -= m_singles.probability(pair->second);
            appendPair(*pair, logarithm(probability));
        }
        const auto index = isBeginning ? m_backoffs.size() - 1 : begin->first;
        m_backoffs[index] = logarithm(left / std::max(leftSingles, MinShare));
    }

    void appendPair(const Pair &pair, double probability)
    {
        appendLogarithm(m_pairs, probability);
        (m_pairs += ' ') +=
            pair.first == Pair::SentenceEnd ? "<s>" : m_vocabulary.words[pair.first].key;
        (m_pairs += ' ') +=
            pair.second == Pair::SentenceEnd ? "</s>" : m_vocabulary.words[pair.second].key;
        m_pairs += '\n';
    }

    static void appendSingle(std::string &text, double probability, const std::string &word,
                             double backoff)
    {
        appendLogarithm(text, probability);
        ((text += ' ') += word) += ' ';
        appendLogarithm(text, backoff);
        text += '\n';
    }

    const UserVocabulary &m_vocabulary;
    const Singles m_singles;
    std::vector<double> m_backoffs; // logarithms; the last one is that of the beginning
    std::string m_pairs;
};

} // namespace

std::string pairModel(const UserVocabulary &vocabulary)
{
    return vocabulary.words.empty() ? std::string() : Writer(vocabulary).text();
}
