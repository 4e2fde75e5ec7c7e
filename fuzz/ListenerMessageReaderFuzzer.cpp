// Messages are the same however the stream is cut, and are just what the stream holds.
#include "Expect.h"
#include "platform/speech/ListenerMessageReader.h"

#include <cstddef>
#include <cstdint>
#include <fuzzer/FuzzedDataProvider.h>
#include <string>
#include <string_view>
#include <vector>

namespace
{

/// All messages of the reader, taken as they come.
class Listener
{
public:
    void hear(std::string_view piece)
    {
        m_reader.feed(piece);
        while (auto message = m_reader.next())
            m_messages.push_back(std::move(*message));
    }

    bool isBroken() const { return m_reader.isBroken(); }

    const std::vector<ListenerMessage> &messages() const { return m_messages; }

    /// The messages as a stream again.
    std::string stream() const
    {
        std::string stream;
        for (const auto &message : m_messages)
            message.appendTo(stream);
        return stream;
    }

private:
    ListenerMessageReader m_reader;
    std::vector<ListenerMessage> m_messages;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    constexpr std::size_t LongestPiece = 64;
    const std::string_view stream(reinterpret_cast<const char *>(bytes), size);
    Listener whole;
    whole.hear(stream);
    expect(stream.starts_with(whole.stream()), "messages are what the stream holds");

    Listener inPieces;
    FuzzedDataProvider cuts(bytes, size);
    for (std::size_t place = 0; place < stream.size();) {
        const auto piece =
            stream.substr(place, cuts.ConsumeIntegralInRange(std::size_t(1), LongestPiece));
        inPieces.hear(piece);
        place += piece.size();
    }
    expect(inPieces.messages() == whole.messages(), "messages do not depend on the pieces");
    expect(inPieces.isBroken() == whole.isBroken(), "nor does where a stream breaks");
    for (const auto &message : whole.messages())
        expect(ListenerMessage::audio(message.task, message.samples()).payload.size() / 2 ==
                   message.payload.size() / 2,
               "no sample is lost");
    return 0;
}
