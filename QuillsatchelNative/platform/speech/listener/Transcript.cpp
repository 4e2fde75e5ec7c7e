#include "platform/speech/listener/Transcript.h"

#include <sstream>

Transcript::Transcript(const Spelling &spelling)
    : m_spelling(&spelling)
{
}

SteadyPrefix::Words Transcript::wordsIn(const std::string &text) const
{
    SteadyPrefix::Words words;
    std::istringstream stream(text);
    for (std::string word; stream >> word;)
        words.push_back(m_spelling->spell(word));
    return words;
}

void Transcript::update(const Hypothesis &hypothesis)
{
    if (hypothesis.isUtteranceOver)
        finish(hypothesis.words);
    else
        m_current = m_steady.update(wordsIn(hypothesis.words));
}

void Transcript::finish(const std::string &words)
{
    const auto all = wordsIn(words);
    m_finished.insert(m_finished.end(), all.begin(), all.end());
    m_current.clear();
    m_steady.clear();
}

std::string Transcript::text() const
{
    std::string text;
    for (const auto *const part : { &m_finished, &m_current }) {
        for (const auto &word : *part)
            (text += text.empty() ? "" : " ") += word;
    }
    return text;
}
