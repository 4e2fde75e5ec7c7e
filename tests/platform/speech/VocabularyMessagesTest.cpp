#include "platform/speech/VocabularyMessages.h"

#include "fakes/FakeVocabulary.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using Kind = ListenerMessage::Kind;

class VocabularyMessagesTest : public testing::Test
{
protected:
    std::vector<ListenerMessage> messages()
    {
        std::vector<ListenerMessage> messages;
        VocabularyMessages vocabulary(source);
        while (auto message = vocabulary.next(3))
            messages.push_back(std::move(*message));
        EXPECT_EQ(vocabulary.next(3), std::nullopt);
        return messages;
    }

    FakeVocabulary source;
};

const ListenerMessage Learn { .kind = Kind::learn, .task = 3, .payload = {} };

TEST_F(VocabularyMessagesTest, PacksTextsAndThenAsksToLearnThem)
{
    source.texts = { "one", "", "two" };
    source.prominentCount = 1;
    const ListenerMessage texts { .kind = Kind::texts,
                                  .task = 3,
                                  .payload = std::string("one\1\0two\0", 9) };
    EXPECT_EQ(messages(), (std::vector { texts, Learn }));
    EXPECT_EQ(messages(), (std::vector { texts, Learn })) << "the source is rewound";
}

TEST_F(VocabularyMessagesTest, MarkTitles)
{
    source.texts = { "one", "two", "three" };
    source.prominentCount = 2;
    source.titles = { "one", "three" };
    EXPECT_EQ(messages().front().payload, "one\3two\1three\2");
}

TEST_F(VocabularyMessagesTest, AsksToLearnNothing)
{
    EXPECT_EQ(messages(), std::vector { Learn });
}

TEST_F(VocabularyMessagesTest, AreSmallAndAsManyAsNeeded)
{
    source.texts.assign(1'000, std::string(999, 'a'));
    const auto all = messages();
    EXPECT_EQ(all.size(), 17U);
    std::size_t bytes = 0;
    for (const auto &message : all) {
        EXPECT_LE(message.payload.size(), 70'000U);
        bytes += message.payload.size();
    }
    EXPECT_EQ(bytes, 1'000'000U);
}

TEST_F(VocabularyMessagesTest, CutLongTextsAndLargeLibraries)
{
    source.texts.assign(20, std::string(2 * VocabularyMessages::MaxText, 'a'));
    std::size_t bytes = 0;
    for (const auto &message : messages()) {
        EXPECT_LE(message.payload.size(), ListenerMessage::MaxPayload);
        bytes += message.payload.size();
    }
    EXPECT_GE(bytes, VocabularyMessages::MaxTexts);
    EXPECT_LE(bytes, VocabularyMessages::MaxTexts + VocabularyMessages::MaxText + 1);
}

TEST_F(VocabularyMessagesTest, FollowASourceThatChanges)
{
    source.texts.assign(1'000, std::string(999, 'a'));
    VocabularyMessages vocabulary(source);
    EXPECT_EQ(vocabulary.next(1)->kind, Kind::texts);
    source.texts.resize(66);
    EXPECT_EQ(vocabulary.next(2),
              (ListenerMessage { .kind = Kind::learn, .task = 2, .payload = {} }));
}

} // namespace
