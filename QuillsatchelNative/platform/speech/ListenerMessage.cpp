#include "platform/speech/ListenerMessage.h"

#include "platform/speech/ListenerMessageHeader.h"

#include <cstring>

ListenerMessage ListenerMessage::audio(std::uint32_t task, std::span<const std::int16_t> samples)
{
    ListenerMessage message { .kind = Kind::audio, .task = task, .payload = {} };
    message.payload.resize(samples.size_bytes());
    if (!samples.empty())
        std::memcpy(message.payload.data(), samples.data(), samples.size_bytes());
    return message;
}

std::vector<std::int16_t> ListenerMessage::samples() const
{
    std::vector<std::int16_t> samples(payload.size() / sizeof(std::int16_t));
    if (!samples.empty())
        std::memcpy(samples.data(), payload.data(), samples.size() * sizeof(std::int16_t));
    return samples;
}

void ListenerMessage::appendTo(std::string &stream) const
{
    const ListenerMessageHeader header { .payloadSize = static_cast<std::uint32_t>(payload.size()),
                                         .task = task,
                                         .kind = static_cast<std::uint8_t>(kind) };
    stream.append(reinterpret_cast<const char *>(&header), sizeof header);
    stream += payload;
}
