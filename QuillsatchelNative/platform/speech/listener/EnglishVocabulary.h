#pragma once

#include <span>
#include <string_view>

/// Our changes to the vocabulary of the general English model.
namespace EnglishVocabulary
{

struct Word {
    const char *spelling;
    const char *phones; ///< in the model's notation
    const char *like;   ///< a word of the model that occurs in the same places of a sentence
};

/// Words that people dictate to chat assistants and programmers, and that the model lacks.
std::span<const Word> addedWords();

/// Whether this is a vulgar word. The model guesses those too, and another wrong word is better.
bool isExcluded(std::string_view word);

} // namespace EnglishVocabulary
