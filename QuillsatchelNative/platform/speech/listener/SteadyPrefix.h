#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <vector>

/// Hides words that an engine may still change: passes on the words at the beginning that the
/// latest hypotheses agree on.
class SteadyPrefix
{
public:
    using Words = std::vector<std::string>;

    /// Hypotheses in a row that must agree: 320 ms, with one hypothesis every 64 ms.
    static constexpr std::size_t Agreement = 5;

    Words update(Words hypothesis);
    void clear();

private:
    std::deque<Words> m_latest;
};
