#include "platform/speech/listener/EnglishSpelling.h"

std::string englishSpelling(std::string word)
{
    if (word == "i" || word.starts_with("i'"))
        word.front() = 'I';
    return word;
}
