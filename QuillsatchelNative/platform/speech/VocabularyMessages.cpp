#include "platform/speech/VocabularyMessages.h"

#include <string>
#include <utility>

namespace
{

using Kind = ListenerMessage::Kind;
using TextEnd = ListenerMessage::TextEnd;

constexpr std::size_t PayloadSize = 1 << 16; // bytes; the last text may exceed it

char endOf(const VocabularySource::Text &text)
{
    if (text.isTitle)
        return text.isProminent ? TextEnd::ProminentTitle : TextEnd::Title;
    return text.isProminent ? TextEnd::Prominent : TextEnd::Ordinary;
}

} // namespace

VocabularyMessages::VocabularyMessages(VocabularySource &source)
    : m_source(source)
{
    m_source.rewind();
}

std::optional<ListenerMessage> VocabularyMessages::next(std::uint32_t task)
{
    std::string payload;
    while (!m_isAtEnd && payload.size() < PayloadSize) {
        const auto text = m_source.next();
        m_isAtEnd = !text || m_sent + payload.size() >= MaxTexts;
        if (m_isAtEnd)
            break;
        payload += text->text.substr(0, MaxText);
        payload += endOf(*text);
    }
    m_sent += payload.size();
    if (!payload.empty())
        return ListenerMessage { .kind = Kind::texts, .task = task, .payload = std::move(payload) };
    if (std::exchange(m_isComplete, true))
        return std::nullopt;
    return ListenerMessage { .kind = Kind::learn, .task = task, .payload = {} };
}
