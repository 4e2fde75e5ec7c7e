#pragma once

#include "platform/VocabularySource.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

/// Texts that the test sets. The first `prominentCount` of them are prominent.
class FakeVocabulary final : public VocabularySource
{
public:
    std::uint64_t revision() override { return number; }

    void rewind() override { m_next = 0; }

    std::optional<Text> next() override
    {
        if (m_next == texts.size())
            return std::nullopt;
        const auto index = m_next++;
        return Text { .text = texts[index],
                      .isProminent = index < prominentCount,
                      .isTitle = titles.contains(texts[index]) };
    }

    std::vector<std::string> texts;
    std::size_t prominentCount = 0;
    std::set<std::string> titles; ///< texts that are titles
    std::uint64_t number = 1;     ///< the revision

private:
    std::size_t m_next = 0;
};
