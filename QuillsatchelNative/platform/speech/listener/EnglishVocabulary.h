#pragma once

#include <span>
#include <string_view>

/// What the general English model gets from us.
namespace EnglishVocabulary
{

struct Word {
    const char *spelling;
    const char *phones; ///< in the model's own notation
    const char *like;   ///< a word of the model that stands in sentences as this one does
};

/// Words that people say to chat assistants and to programmers, and that the model does not have.
std::span<const Word> addedWords();

/// Whether we would rather misunderstand than write this: coarse words, which a model that has to
/// guess also guesses.
bool isLeftOut(std::string_view word);

} // namespace EnglishVocabulary
