#pragma once

#include <filesystem>
#include <string>

/// The dictionary file `path` of an English model, without the words that we leave out, and with
/// those that we add: see EnglishVocabulary. A file that is missing, unreadable, larger than 64 MiB
/// or no regular file counts as an empty one.
std::string ownDictionary(const std::filesystem::path &path);
