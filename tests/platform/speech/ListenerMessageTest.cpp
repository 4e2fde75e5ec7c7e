#include "platform/speech/ListenerMessage.h"

#include "platform/speech/ListenerMessageHeader.h"
#include "platform/speech/ListenerMessageReader.h"

#include <gtest/gtest.h>

#include <cstring>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace
{

using Kind = ListenerMessage::Kind;
using Messages = std::vector<ListenerMessage>;

const Messages OneOfEach {
    { .kind = Kind::begin, .task = 1, .payload = {} },
    ListenerMessage::audio(1, std::vector<std::int16_t> { 0, 1, -1, 32'767, -32'768 }),
    { .kind = Kind::unchanged, .task = 1, .payload = {} },
    ListenerMessage::audio(1, {}),
    { .kind = Kind::partial, .task = 1, .payload = "buy" },
    { .kind = Kind::end, .task = 1, .payload = {} },
    { .kind = Kind::final, .task = 1, .payload = "buy milk – \U0001F95B" },
    { .kind = Kind::texts, .task = 1, .payload = std::string("a text\0another\1", 15) },
    { .kind = Kind::learn, .task = 1, .payload = {} },
    { .kind = Kind::cancel, .task = 4'294'967'295, .payload = {} },
};

std::string streamOf(const Messages &messages)
{
    std::string stream;
    for (const auto &message : messages)
        message.appendTo(stream);
    return stream;
}

std::string streamOfHeader(const ListenerMessageHeader &header, const std::string &payload = {})
{
    std::string stream(sizeof header, '\0');
    std::memcpy(stream.data(), &header, sizeof header);
    return stream + payload;
}

Messages takeAll(ListenerMessageReader &reader)
{
    Messages messages;
    while (auto message = reader.next())
        messages.push_back(std::move(*message));
    return messages;
}

class InvalidStreamTest : public testing::TestWithParam<std::string>
{
};

TEST(ListenerMessageTest, SurvivesEncodingAndDecoding)
{
    ListenerMessageReader reader;
    reader.feed(streamOf(OneOfEach));
    EXPECT_EQ(takeAll(reader), OneOfEach);
    EXPECT_FALSE(reader.isBroken());
}

TEST(ListenerMessageTest, IsDecodedFromPiecesOfAnySize)
{
    const auto stream = streamOf(OneOfEach);
    for (std::size_t size = 1; size <= 40; ++size) {
        ListenerMessageReader reader;
        Messages messages;
        for (std::size_t begin = 0; begin < stream.size(); begin += size) {
            reader.feed(std::string_view(stream).substr(begin, size));
            for (auto &message : takeAll(reader))
                messages.push_back(std::move(message));
        }
        EXPECT_EQ(messages, OneOfEach) << size;
    }
}

TEST(ListenerMessageTest, IsNotDecodedBeforeItIsComplete)
{
    const auto stream = streamOf({ OneOfEach.back(), OneOfEach[6] });
    for (std::size_t size = 0; size < stream.size(); ++size) {
        ListenerMessageReader reader;
        reader.feed(std::string_view(stream).substr(0, size));
        EXPECT_EQ(takeAll(reader).size(), size < sizeof(ListenerMessageHeader) ? 0U : 1U);
        EXPECT_FALSE(reader.isBroken());
    }
}

TEST(ListenerMessageTest, KeepsItsSamples)
{
    const std::vector<std::int16_t> samples { 3, -4, 32'767, -32'768 };
    EXPECT_EQ(ListenerMessage::audio(7, samples).samples(), samples);
}

TEST(ListenerMessageTest, MayHaveAPayloadOfTheMaximumSize)
{
    const ListenerMessage longest { .kind = Kind::final,
                                    .task = 1,
                                    .payload = std::string(ListenerMessage::MaxPayload, 'a') };
    ListenerMessageReader reader;
    reader.feed(streamOf({ longest }));
    EXPECT_EQ(takeAll(reader), Messages { longest });
}

TEST_P(InvalidStreamTest, YieldsTheMessagesBeforeTheFaultOnly)
{
    ListenerMessageReader reader;
    reader.feed(streamOf(OneOfEach) + GetParam() + streamOf(OneOfEach));
    EXPECT_EQ(takeAll(reader), OneOfEach);
    EXPECT_TRUE(reader.isBroken());
    reader.feed(streamOf(OneOfEach));
    EXPECT_EQ(reader.next(), std::nullopt);
    EXPECT_TRUE(reader.isBroken());
}

constexpr auto kind(Kind kind)
{
    return static_cast<std::uint8_t>(kind);
}

INSTANTIATE_TEST_SUITE_P(
    Faults, InvalidStreamTest,
    testing::Values("a line that a library printed\n", std::string(64, '\xFF'),
                    streamOfHeader({ .payloadSize = 0xFFFFFFFF, .kind = kind(Kind::final) }),
                    streamOfHeader({ .payloadSize = ListenerMessage::MaxPayload + 1,
                                     .kind = kind(Kind::final) }),
                    streamOfHeader({ .payloadSize = ListenerMessage::MaxPayload + 2,
                                     .kind = kind(Kind::audio) }),
                    streamOfHeader({ .payloadSize = 3, .kind = kind(Kind::audio) }, "abc"),
                    streamOfHeader({ .payloadSize = 2, .kind = kind(Kind::begin) }, "ab"),
                    streamOfHeader({ .payloadSize = 2, .kind = kind(Kind::end) }, "ab"),
                    streamOfHeader({ .payloadSize = 2, .kind = kind(Kind::cancel) }, "ab"),
                    streamOfHeader({ .payloadSize = 2, .kind = kind(Kind::unchanged) }, "ab"),
                    streamOfHeader({ .payloadSize = 2, .kind = kind(Kind::learn) }, "ab"),
                    streamOfHeader({ .payloadSize = ListenerMessage::MaxPayload + 1,
                                     .kind = kind(Kind::texts) }),
                    streamOfHeader({ .kind = 9 }), streamOfHeader({ .kind = 255 }),
                    streamOfHeader({ .version = 0 }),
                    streamOfHeader({ .version = ListenerMessageHeader::Version + 1 }),
                    streamOfHeader({ .reserved = 1 })));

TEST(ListenerMessageTest, SurvivesRandomBytes)
{
    std::mt19937 random(1);
    for (int round = 0; round < 20'000; ++round) {
        auto stream = streamOf(OneOfEach);
        for (auto changes = random() % 4; changes > 0; --changes)
            stream[random() % stream.size()] = static_cast<char>(random());
        ListenerMessageReader reader;
        reader.feed(stream);
        for (const auto &message : takeAll(reader))
            EXPECT_LE(message.payload.size(), stream.size());
    }
}

} // namespace
