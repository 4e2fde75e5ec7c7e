#include "platform/speech/listener/OwnDictionary.h"

#include "platform/speech/listener/EnglishVocabulary.h"

#include <algorithm>
#include <cstddef>
#include <fstream>
#include <iterator>
#include <string_view>

namespace
{

/// The word of a line "WORD PHONES" or, for its further pronunciations, "WORD(2) PHONES".
std::string_view wordOf(std::string_view line)
{
    return line.substr(0, line.find_first_of("( \t"));
}

/// Some added words are in the dictionary, though not in the language model; ours replace them.
bool isKept(std::string_view word)
{
    const auto added = EnglishVocabulary::addedWords();
    const auto isWord = [word](const EnglishVocabulary::Word &other) {
        return other.spelling == word;
    };
    return !EnglishVocabulary::isLeftOut(word) && std::none_of(added.begin(), added.end(), isWord);
}

} // namespace

std::string ownDictionary(const std::filesystem::path &path)
{
    std::ifstream file(path, std::ios::binary);
    const std::string text { std::istreambuf_iterator(file), {} };
    std::string own;
    own.reserve(text.size());
    for (std::size_t begin = 0; begin < text.size();) {
        const auto end = std::min(text.find('\n', begin), text.size() - 1) + 1;
        const auto line = std::string_view(text).substr(begin, end - begin);
        if (isKept(wordOf(line)))
            own += line;
        begin = end;
    }
    for (const auto &word : EnglishVocabulary::addedWords())
        (((own += '\n') += word.spelling) += ' ') += word.phones;
    return own;
}
