#pragma once

#include "platform/speech/listener/WordCounts.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

/// The words and pairs of words that an engine should learn from the user's texts.
struct UserVocabulary {
    static constexpr std::size_t MaxNewWords = 5'000;
    static constexpr std::size_t MaxKnownWords = 7'500;
    static constexpr std::size_t MaxPairs = 25'000;

    struct Word {
        std::string key;      ///< TextWords::Word::key
        std::string spelling; ///< as the user spells it most often
        std::uint32_t count = 0;
        bool isNew = false; ///< the model lacks it
    };

    std::vector<Word> words;
    /// Between these words, sorted. Their indices are those of `words`.
    std::vector<WordCounts::Pair> pairs;

    /// Chooses from all words and pairs of the user's texts: words of prominent texts first, then
    /// the most frequent ones. New words have at least two letters. `isKnown` says whether the
    /// model has the word with this key.
    static UserVocabulary choose(const WordCounts &counts,
                                 const std::function<bool(const std::string &key)> &isKnown);
};
