#pragma once

#include "platform/speech/listener/TextWords.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// Counts the words of texts, the pairs of words that follow each other, and how the words are
/// spelled. Ignores new words and new pairs above a limit, so that memory stays limited.
class WordCounts
{
public:
    static constexpr std::size_t MaxWords = 20'000;
    static constexpr std::size_t MaxPairs = 50'000;

    struct Spelling {
        std::string text;
        std::uint32_t count = 0; ///< within sentences
        /// At the beginning of sentences, where only its first letter is a capital.
        std::uint32_t countAtBeginning = 0;
    };

    struct Word {
        std::string key; ///< TextWords::Word::key
        std::uint32_t count = 0;
        bool isProminent = false; ///< is in a prominent text
        std::vector<Spelling> spellings;
        /// At the beginning of a sentence, where every word has a capital, or else in a title.
        /// Empty if the word is only within sentences.
        std::string fallbackSpelling;
    };

    /// Indices into the words. The ends of a sentence count as a word too.
    struct Pair {
        static constexpr std::uint32_t SentenceEnd = 0xFFFF'FFFF;

        std::uint32_t first = SentenceEnd;
        std::uint32_t second = SentenceEnd;
        std::uint32_t count = 0;
    };

    /// The spellings of a title are only fallbacks.
    void add(std::string_view text, bool isProminent, bool isTitle = false);

    const std::vector<Word> &words() const { return m_words; }

    std::vector<Pair> pairs() const;

private:
    void add(const TextWords::Run &run, bool isProminent, bool isTitle);
    std::uint32_t indexOf(const TextWords::Word &word);
    void countPair(std::uint32_t first, std::uint32_t second);

    std::vector<Word> m_words;
    std::unordered_map<std::string, std::uint32_t> m_indices; // by key
    std::unordered_map<std::uint64_t, std::uint32_t> m_pairs; // counts by both indices
};
