#pragma once

#include <filesystem>
#include <string>

/// What is in the dictionary file `path` of an English model, without the words that we leave out,
/// and with those that we add: see EnglishVocabulary.
std::string ownDictionary(const std::filesystem::path &path);
