#include "platform/speech/ListenerMessageReader.h"

#include "platform/speech/ListenerMessageHeader.h"

#include <cstdint>
#include <cstring>
#include <utility>

namespace
{

using Kind = ListenerMessage::Kind;

bool fits(Kind kind, std::size_t payloadSize)
{
    switch (kind) {
    case Kind::audio:
        return payloadSize <= ListenerMessage::MaxPayload &&
               payloadSize % sizeof(std::int16_t) == 0;
    case Kind::partial:
    case Kind::final:
    case Kind::texts:
        return payloadSize <= ListenerMessage::MaxPayload;
    case Kind::begin:
    case Kind::end:
    case Kind::cancel:
    case Kind::unchanged:
    case Kind::learn:
        return payloadSize == 0;
    }
    return false;
}

bool isValid(const ListenerMessageHeader &header)
{
    return header.version == ListenerMessageHeader::Version && header.reserved == 0 &&
           header.kind <= static_cast<std::uint8_t>(Kind::learn) &&
           fits(static_cast<Kind>(header.kind), header.payloadSize);
}

} // namespace

void ListenerMessageReader::feed(std::string_view bytes)
{
    m_bytes.erase(0, std::exchange(m_position, 0));
    if (!m_isBroken)
        m_bytes += bytes;
}

std::optional<ListenerMessage> ListenerMessageReader::next()
{
    ListenerMessageHeader header;
    const auto rest = std::string_view(m_bytes).substr(m_position);
    if (m_isBroken || rest.size() < sizeof header)
        return std::nullopt;
    std::memcpy(&header, rest.data(), sizeof header);
    m_isBroken = !isValid(header);
    if (m_isBroken || rest.size() - sizeof header < header.payloadSize)
        return std::nullopt;
    m_position += sizeof header + header.payloadSize;
    return ListenerMessage { .kind = static_cast<Kind>(header.kind),
                             .task = header.task,
                             .payload =
                                 std::string(rest.substr(sizeof header, header.payloadSize)) };
}
