// Messages do not depend on how the stream is split, and encode to the stream.
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

/// Collects the messages of a reader.
class Receiver
{
public:
    void receive(std::string_view piece)
    {
        m_reader.feed(piece);
        while (auto message = m_reader.next())
            m_messages.push_back(std::move(*message));
    }

    bool isBroken() const { return m_reader.isBroken(); }

    const std::vector<ListenerMessage> &messages() const { return m_messages; }

    /// The messages, encoded again.
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
    constexpr std::size_t MaximumPieceSize = 64;
    const std::string_view stream(reinterpret_cast<const char *>(bytes), size);
    Receiver whole;
    whole.receive(stream);
    expect(stream.starts_with(whole.stream()), "messages encode to the beginning of the stream");

    Receiver inPieces;
    FuzzedDataProvider cuts(bytes, size);
    for (std::size_t offset = 0; offset < stream.size();) {
        const auto piece =
            stream.substr(offset, cuts.ConsumeIntegralInRange(std::size_t(1), MaximumPieceSize));
        inPieces.receive(piece);
        offset += piece.size();
    }
    expect(inPieces.messages() == whole.messages(), "messages do not depend on the pieces");
    expect(inPieces.isBroken() == whole.isBroken(), "errors do not depend on the pieces");
    for (const auto &message : whole.messages())
        expect(ListenerMessage::audio(message.task, message.samples()).payload.size() / 2 ==
                   message.payload.size() / 2,
               "no sample is lost");
    return 0;
}
