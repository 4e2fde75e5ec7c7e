#include "dictation/DictationFixture.h"

#include <algorithm>
#include <array>
#include <random>
#include <set>
#include <string>

namespace
{

constexpr int Sequences = 10'000;
constexpr int StepsPerSequence = 24;

/// Runs random sequences of events and checks invariants after each step.
class DictationSequencesTest : public DictationFixture
{
protected:
    void step()
    {
        switch (pick(10)) {
        case 0:
        case 1:
            toggle(nodes.at(pick(nodes.size())));
            break;
        case 2:
        case 3:
            answerOne(Speech::AuthorizationStatus::authorized);
            break;
        case 4:
            answerOne(static_cast<Speech::AuthorizationStatus>(pick(4)));
            break;
        case 5:
            deliverOne(pick(3) == 0 ? "" : "words", false, false);
            break;
        case 6:
            deliverOne("last words", true, pick(4) == 0);
            break;
        case 7:
            deliverNothing(pick(2) == 0);
            break;
        case 8:
            speech.startsEngine = pick(4) != 0;
            speech.isAvailable = pick(6) != 0;
            break;
        default:
            settle();
        }
    }

    void toggle(Node &node)
    {
        const bool isListening = controller->activeBlockID().get() == node.id;
        const auto before = node.received.size();
        known.insert(node.text);
        controller->toggle(node.id, node.text,
                           [this, &node](const std::string &text) { receive(node, text); });
        ASSERT_EQ(node.received.size(), before + (isListening ? 1 : 0));
        ASSERT_TRUE(isIdle());
    }

    /// Expects a text that the node had before or one that ends with the latest recognition's
    /// words.
    void receive(Node &node, const std::string &text)
    {
        const bool isKnown = !known.insert(text).second;
        EXPECT_TRUE(isKnown || text.ends_with(suffixOf(speech.recognitions.size() - 1))) << text;
        node.text = text;
        node.received.push_back(text);
    }

    /// A suffix that identifies the recognition that delivered the words.
    static std::string suffixOf(std::size_t recognition)
    {
        return " by " + std::to_string(recognition);
    }

    /// Answers any request, even one that was answered before.
    void answerOne(Speech::AuthorizationStatus status)
    {
        if (!speech.authorizationRequests.empty())
            speech.authorizationRequests.at(pick(speech.authorizationRequests.size()))(status);
    }

    /// Delivers a result of any recognition, even one that has ended.
    void deliverOne(const std::string &words, bool isFinal, bool isError)
    {
        if (speech.recognitions.empty())
            return;
        const auto index = pick(speech.recognitions.size());
        const auto text = words.empty() ? words : words + suffixOf(index);
        speech.recognitions.at(index)->handler(SpeechRecognitionResult { text, isFinal }, isError);
    }

    void deliverNothing(bool isError)
    {
        if (!speech.recognitions.empty())
            speech.recognitions.at(pick(speech.recognitions.size()))
                ->handler(std::nullopt, isError);
    }

    void check()
    {
        const bool isListening = controller->activeBlockID().get().has_value();
        ASSERT_EQ(speech.tap.has_value(), speech.isEngineRunning);
        ASSERT_EQ(isListening, speech.isEngineRunning);
        const auto live = std::ranges::count_if(speech.recognitions, [](const auto &recognition) {
            return !recognition->hasEnded && recognition->cancellations == 0;
        });
        ASSERT_EQ(live, isListening ? 1 : 0);
        ASSERT_TRUE(std::ranges::all_of(speech.recognitions, [](const auto &recognition) {
            return recognition->cancellations <= 1;
        }));
    }

    /// The number of texts received by nodes that are not being dictated into.
    std::size_t receivedByInactiveNodes() const
    {
        std::size_t count = 0;
        for (const auto &node : nodes) {
            if (controller->activeBlockID().get() != node.id)
                count += node.received.size();
        }
        return count;
    }

    std::size_t pick(std::size_t count)
    {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(random);
    }

    // Seeded with a fixed number, so that failures are reproducible.
    // NOLINTNEXTLINE(cert-msc32-c,cert-msc51-cpp)
    std::mt19937 random { 20'26 };
    std::array<Node, 3> nodes;
    std::set<std::string> known; // texts of the current sequence
};

TEST_F(DictationSequencesTest, KeepAtMostOneMicrophoneOpen)
{
    for (int sequence = 0; sequence < Sequences; ++sequence) {
        settle();
        controller->stop();
        speech.authorizationRequests.clear();
        speech.recognitions.clear();
        nodes = {};
        known.clear();
        for (int count = 0; count < StepsPerSequence; ++count) {
            step();
            check();
            if (HasFailure())
                FAIL() << "in sequence " << sequence << ", step " << count;
        }
    }
}

TEST_F(DictationSequencesTest, NeverCallAHandlerAfterItsSession)
{
    for (int sequence = 0; sequence < Sequences; ++sequence) {
        Node &node = nodes.at(pick(nodes.size()));
        start(node);
        for (std::size_t count = pick(4); count > 0; --count)
            deliverOne("words", false, false);
        controller->stop();
        settle();
        ASSERT_TRUE(isIdle());
        const auto before = receivedByInactiveNodes();
        for (std::size_t count = 3; count > 0; --count) {
            deliverOne("late", pick(2) == 0, pick(2) == 0);
            settle();
        }
        ASSERT_EQ(receivedByInactiveNodes(), before) << "in sequence " << sequence;
        speech.startsEngine = true;
    }
}

} // namespace
