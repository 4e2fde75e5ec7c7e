#include "platform/speech/listener/AdaptedDictionary.h"

#include "platform/speech/listener/EnglishVocabulary.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <string_view>
#include <system_error>
#include <unordered_set>

namespace
{

/// The word of a line "WORD PHONES", or "WORD(2) PHONES" for another pronunciation.
std::string_view wordOf(std::string_view line)
{
    return line.substr(0, line.find_first_of("( \t"));
}

using Words = std::unordered_set<std::string_view>;

Words addedWords()
{
    Words words;
    for (const auto &word : EnglishVocabulary::addedWords())
        words.insert(word.spelling);
    return words;
}

/// Added words replace dictionary entries: the dictionary has some that the language model lacks.
bool isKept(std::string_view word, const Words &added)
{
    return !EnglishVocabulary::isExcluded(word) && !added.contains(word);
}

std::string textOf(const std::filesystem::path &path)
{
    constexpr std::uintmax_t MaxDictionarySize = 64 * 1024 * 1024; // bytes
    std::error_code error;
    // Opening a FIFO would block until another program writes to it.
    if (!std::filesystem::is_regular_file(path, error))
        return {};
    const auto size = std::filesystem::file_size(path, error);
    if (error || size > MaxDictionarySize)
        return {};
    std::string text(size, '\0');
    std::ifstream file(path, std::ios::binary);
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(file.gcount()));
    return text;
}

} // namespace

std::string adaptedDictionary(const std::filesystem::path &path)
{
    const auto text = textOf(path);
    const auto added = addedWords();
    std::string adapted;
    adapted.reserve(text.size());
    for (std::size_t begin = 0; begin < text.size();) {
        const auto end = std::min(text.find('\n', begin), text.size() - 1) + 1;
        const auto line = std::string_view(text).substr(begin, end - begin);
        if (isKept(wordOf(line), added))
            adapted += line;
        begin = end;
    }
    for (const auto &word : EnglishVocabulary::addedWords())
        (((adapted += '\n') += word.spelling) += ' ') += word.phones;
    return adapted;
}
