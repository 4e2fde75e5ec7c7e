#pragma once

#include <filesystem>
#include <string>

/// The dictionary file `path` of an English model, without the excluded and with the added words of
/// EnglishVocabulary. A file that is missing, unreadable, larger than 64 MiB or not a regular file
/// counts as empty.
std::string adaptedDictionary(const std::filesystem::path &path);
