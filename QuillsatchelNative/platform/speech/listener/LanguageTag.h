#pragma once

#include <string>
#include <string_view>

/// The language tag, such as "de-at", of a locale name, such as "de_AT.UTF-8"; empty if the name is
/// invalid. "en-us" for the locales "C", "POSIX" and "".
std::string languageTag(std::string_view localeName);

/// The language tag of the user's locale, from LC_ALL, LC_MESSAGES or LANG.
std::string userLanguageTag();

/// The language of a tag: "de" of "de-at".
std::string_view languageOf(std::string_view tag);

bool isEnglish(std::string_view tag);
