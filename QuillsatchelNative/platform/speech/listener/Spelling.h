#pragma once

#include "platform/speech/listener/UserVocabulary.h"

#include <string>
#include <string_view>
#include <unordered_map>

/// How words are written. Models write lower case only.
class Spelling
{
public:
    /// `tag` is the tag of the language.
    explicit Spelling(std::string_view tag);

    /// Writes these words as the user does, and no others.
    void learn(const UserVocabulary &vocabulary);

    /// In English, "I" and words such as "I'm" have a capital.
    std::string spell(const std::string &word) const;

private:
    bool m_isEnglish;
    std::unordered_map<std::string, std::string> m_spellings; // by key, if different from it
};
