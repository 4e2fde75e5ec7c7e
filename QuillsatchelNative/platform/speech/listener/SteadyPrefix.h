#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <vector>

/// Keeps first guesses from flickering by: of hypotheses that follow each other, it lets through
/// the words at the beginning that the latest few agree on.
class SteadyPrefix
{
public:
    using Words = std::vector<std::string>;

    /// How many hypotheses in a row must have a word: 256 ms worth, with one for each 64 ms.
    static constexpr std::size_t Agreement = 4;

    Words update(Words hypothesis);
    void clear();

private:
    std::deque<Words> m_latest;
};
