#include "platform/speech/listener/Transcript.h"

#include <algorithm>
#include <sstream>
#include <utility>

Transcript::Transcript(const Spelling *spelling)
    : m_spelling(spelling)
{
}

SteadyPrefix::Words Transcript::wordsIn(const std::string &text) const
{
    if (!m_spelling)
        return { text };
    SteadyPrefix::Words words;
    std::istringstream stream(text);
    for (std::string word; stream >> word;)
        words.push_back(' ' + m_spelling->spell(word));
    return words;
}

void Transcript::update(const Hypothesis &hypothesis, bool isPause)
{
    if (hypothesis.isUtteranceOver)
        finish(hypothesis.words);
    else
        updateCurrent(wordsIn(hypothesis.words), isPause || !m_spelling); // a text is steady
}

/// A pause shows all words at once, because the dictation may be stopped there. They stay while the
/// hypothesis begins with them.
void Transcript::updateCurrent(const SteadyPrefix::Words &words, bool isPause)
{
    auto steady = m_steady.update(words);
    const auto difference =
        std::mismatch(m_current.begin(), m_current.end(), words.begin(), words.end());
    const bool isStillRight = difference.first == m_current.end();
    if (isPause)
        m_current = words;
    else if (!isStillRight || steady.size() > m_current.size())
        m_current = std::move(steady);
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
            text += word;
    }
    return text.substr(std::min(text.find_first_not_of(' '), text.size()));
}
