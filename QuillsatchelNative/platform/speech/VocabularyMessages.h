#pragma once

#include "platform/VocabularySource.h"
#include "platform/speech/ListenerMessage.h"

#include <cstddef>
#include <cstdint>
#include <optional>

/// Packs the texts of a source into messages that teach their words to the listener. Texts are read
/// from the source only as messages are needed, so memory does not grow with the library.
class VocabularyMessages
{
public:
    /// Long texts and large libraries are cut, so that dictation starts soon. In bytes.
    static constexpr std::size_t MaxText = 1 << 18;
    static constexpr std::size_t MaxTexts = 1 << 20; ///< in total; the next text may exceed it

    /// Rewinds the source, which must outlive this object.
    explicit VocabularyMessages(VocabularySource &source);

    /// Messages `texts` and then one `learn`; none after that.
    std::optional<ListenerMessage> next(std::uint32_t task);

private:
    VocabularySource &m_source;
    std::size_t m_sent = 0; // bytes
    bool m_isAtEnd = false;
    bool m_isComplete = false;
};
