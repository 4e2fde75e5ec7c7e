#include "platform/speech/listener/LanguageTag.h"

#include <algorithm>
#include <cstdlib>

namespace
{

bool isPartOfTag(char character)
{
    return character == '-' || (character >= 'a' && character <= 'z') ||
           (character >= '0' && character <= '9');
}

char tagCharacter(char character)
{
    if (character == '_')
        return '-';
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                                : character;
}

} // namespace

std::string languageTag(std::string_view localeName)
{
    std::string tag(localeName.substr(0, localeName.find_first_of(".@")));
    if (tag.empty() || tag == "C" || tag == "POSIX")
        return "en-us";
    std::transform(tag.begin(), tag.end(), tag.begin(), tagCharacter);
    const bool isTag = tag.front() != '-' && std::all_of(tag.begin(), tag.end(), isPartOfTag);
    return isTag ? tag : std::string();
}

std::string userLanguageTag()
{
    for (const auto *const variable : { "LC_ALL", "LC_MESSAGES", "LANG" }) {
        const auto *const name = std::getenv(variable);
        if (name && *name)
            return languageTag(name);
    }
    return languageTag({});
}

std::string_view languageOf(std::string_view tag)
{
    return tag.substr(0, tag.find('-'));
}

bool isEnglish(std::string_view tag)
{
    return languageOf(tag) == "en";
}
