#include "dictation/DictationFixture.h"

#include <algorithm>
#include <array>
#include <random>
#include <set>
#include <string>

namespace
{

constexpr int Sequences = 10'000;
constexpr int StepsInASequence = 24;

/// Random sequences of all that can happen, with what must hold after each step.
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

    /// A text is one that the node had before, or brings what the latest recognition understood.
    void receive(Node &node, const std::string &text)
    {
        const bool isKnown = !known.insert(text).second;
        EXPECT_TRUE(isKnown || text.ends_with(by(speech.recognitions.size() - 1))) << text;
        node.text = text;
        node.received.push_back(text);
    }

    /// What words end with, so that one sees who understood them.
    static std::string by(std::size_t recognition) { return " by " + std::to_string(recognition); }

    /// Any question, also one that was answered before.
    void answerOne(Speech::AuthorizationStatus status)
    {
        if (!speech.questions.empty())
            speech.questions.at(pick(speech.questions.size()))(status);
    }

    /// Of any recognition, also one that is long over.
    void deliverOne(const std::string &words, bool isFinal, bool isError)
    {
        if (speech.recognitions.empty())
            return;
        const auto index = pick(speech.recognitions.size());
        const auto text = words.empty() ? words : words + by(index);
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

    /// What was said to nodes that nobody dictates into.
    std::size_t receivedElsewhere() const
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

    // Seeded with a fixed number: a failure comes again.
    // NOLINTNEXTLINE(cert-msc32-c,cert-msc51-cpp)
    std::mt19937 random { 20'26 };
    std::array<Node, 3> nodes;
    std::set<std::string> known; // texts of the sequence under way
};

TEST_F(DictationSequencesTest, KeepOneMicrophoneForOneNode)
{
    for (int sequence = 0; sequence < Sequences; ++sequence) {
        settle();
        controller->stop();
        speech.questions.clear();
        speech.recognitions.clear();
        nodes = {};
        known.clear();
        for (int count = 0; count < StepsInASequence; ++count) {
            step();
            check();
            if (HasFailure())
                FAIL() << "in sequence " << sequence << ", step " << count;
        }
    }
}

TEST_F(DictationSequencesTest, CallNoHandlerAfterItsSessionEnded)
{
    for (int sequence = 0; sequence < Sequences; ++sequence) {
        Node &node = nodes.at(pick(nodes.size()));
        listen(node);
        for (std::size_t count = pick(4); count > 0; --count)
            deliverOne("words", false, false);
        controller->stop();
        settle();
        ASSERT_TRUE(isIdle());
        const auto before = receivedElsewhere();
        for (std::size_t count = 3; count > 0; --count) {
            deliverOne("late", pick(2) == 0, pick(2) == 0);
            settle();
        }
        ASSERT_EQ(receivedElsewhere(), before) << "in sequence " << sequence;
        speech.startsEngine = true;
    }
}

} // namespace
