#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

/// A message between this program and its listener. The listener answers each `audio` with
/// `unchanged` or `partial`, each `end` with `final`, and each `texts` and `learn` with
/// `unchanged`, in their order, and nothing else.
struct ListenerMessage {
    enum class Kind : std::uint8_t {
        begin,     ///< a task begins and replaces the current one
        audio,     ///< the next samples
        end,       ///< no more audio follows
        cancel,    ///< the result is not needed any more
        unchanged, ///< the samples did not change the text
        partial,   ///< the text so far, UTF-8
        final,     ///< the whole text, UTF-8
        texts,     ///< texts of the user, UTF-8, each with a TextEnd after it
        learn,     ///< learn the words of the texts since the last `learn`, for the next task
    };

    /// Ends a text: the sum of its marks. Texts that contain such a character are cut there.
    struct TextEnd {
        static constexpr char Ordinary = '\0';
        static constexpr char Prominent = '\1'; ///< VocabularySource::Text::isProminent
        static constexpr char Title = '\2';     ///< VocabularySource::Text::isTitle
        static constexpr char ProminentTitle = Prominent + Title;
    };

    Kind kind = Kind::begin;
    std::uint32_t task = 0;
    std::string payload; ///< of `audio`, `partial`, `final` and `texts`

    static ListenerMessage audio(std::uint32_t task, std::span<const std::int16_t> samples);

    bool operator==(const ListenerMessage &) const = default;
    std::vector<std::int16_t> samples() const;
    /// Appends the encoded message to `stream`.
    void appendTo(std::string &stream) const;

    /// In bytes: enough for the words of many hours.
    static constexpr std::size_t MaxPayload = 1 << 20;
};
