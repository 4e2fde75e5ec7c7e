#include "platform/speech/listener/Spelling.h"

#include "platform/speech/listener/LanguageTag.h"

Spelling::Spelling(std::string_view tag)
    : m_isEnglish(isEnglish(tag))
{
}

void Spelling::learn(const UserVocabulary &vocabulary)
{
    m_spellings.clear();
    for (const auto &word : vocabulary.words) {
        if (word.spelling != word.key)
            m_spellings.emplace(word.key, word.spelling);
    }
}

std::string Spelling::spell(const std::string &word) const
{
    if (m_isEnglish && (word == "i" || word.starts_with("i'")))
        return 'I' + word.substr(1);
    const auto spelling = m_spellings.find(word);
    return spelling == m_spellings.end() ? word : spelling->second;
}
