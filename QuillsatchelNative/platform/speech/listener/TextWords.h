#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// Finds the words that a person may say in a text. Numbers, addresses, file names, identifiers,
/// hashes, code, other scripts and long words are not words.
namespace TextWords
{

constexpr std::size_t MaxLetters = 24;
constexpr std::size_t MaxSize = 4 * MaxLetters; ///< bytes, with accents and apostrophes

struct Word {
    std::string key;           ///< in lower case, without accents, as the model spells words
    std::string_view spelling; ///< as in the text, with apostrophes and accents
    bool isFirst = false;      ///< begins a sentence, a line or a quotation
};

/// Words with nothing but spaces and commas between them.
struct Run {
    std::vector<Word> words; ///< never empty
    bool beginsSentence = false;
    bool endsSentence = false;
};

/// The words of a text (UTF-8; other bytes are not words). `receive` gets views into `text`.
void forEachRun(std::string_view text, const std::function<void(const Run &)> &receive);

/// The key of a word; empty if it is not a word.
std::string keyOf(std::string_view word);

} // namespace TextWords
