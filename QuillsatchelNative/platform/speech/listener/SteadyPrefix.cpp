#include "platform/speech/listener/SteadyPrefix.h"

#include <algorithm>
#include <utility>

SteadyPrefix::Words SteadyPrefix::update(Words hypothesis)
{
    m_latest.push_back(std::move(hypothesis));
    if (m_latest.size() < Agreement)
        return {};
    if (m_latest.size() > Agreement)
        m_latest.pop_front();
    auto prefix = m_latest.front();
    for (const auto &words : m_latest) {
        const auto difference =
            std::mismatch(prefix.begin(), prefix.end(), words.begin(), words.end());
        prefix.erase(difference.first, prefix.end());
    }
    return prefix;
}

void SteadyPrefix::clear()
{
    m_latest.clear();
}
