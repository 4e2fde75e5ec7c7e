#include "platform/speech/listener/OwnDictionary.h"

#include "platform/speech/listener/EnglishVocabulary.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <string_view>
#include <system_error>

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

std::string textOf(const std::filesystem::path &path)
{
    constexpr std::uintmax_t LargestDictionary = 64 * 1024 * 1024; // bytes
    std::error_code error;
    // Opening a pipe would wait until another program writes into it.
    if (!std::filesystem::is_regular_file(path, error))
        return {};
    const auto size = std::filesystem::file_size(path, error);
    if (error || size > LargestDictionary)
        return {};
    std::string text(size, '\0');
    std::ifstream file(path, std::ios::binary);
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(file.gcount()));
    return text;
}

} // namespace

std::string ownDictionary(const std::filesystem::path &path)
{
    const auto text = textOf(path);
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
