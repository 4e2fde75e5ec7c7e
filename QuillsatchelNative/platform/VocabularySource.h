#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

/// The user's own texts, from which a recogniser learns words. Main thread only.
class VocabularySource
{
public:
    struct Text {
        std::string_view text;    ///< UTF-8; valid until the source changes
        bool isProminent = false; ///< its words come first if there are too many
        bool isTitle = false;     ///< its capitals say little about the spelling of ordinary words

        bool operator==(const Text &) const = default;
    };

    virtual ~VocabularySource() = default;

    /// Another number after every change of the texts.
    virtual std::uint64_t revision() = 0;

    /// Lets `next` begin with the first text again.
    virtual void rewind() = 0;
    /// The next text; none after the last one. A change between two calls may omit or repeat texts.
    virtual std::optional<Text> next() = 0;
};
