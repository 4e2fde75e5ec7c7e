#pragma once

#include <string>
#include <string_view>

/// The tag, such as "de-at", of the language in a locale's name, such as "de_AT.UTF-8"; empty if
/// there is none. Where nothing was chosen ("C", "POSIX", ""), people speak as in "en-us".
std::string languageTag(std::string_view localeName);

/// That of the user's locale, which the environment names.
std::string userLanguageTag();

bool isEnglish(std::string_view tag);
