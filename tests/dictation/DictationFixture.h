#pragma once

#include "dictation/DictationController.h"
#include "fakes/FakePlatform.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

/// A controller on a machine of the test's own, and nodes that note the texts they are given.
class DictationFixture : public testing::Test
{
protected:
    using Texts = std::vector<std::string>;
    using Status = Speech::AuthorizationStatus;

    /// A node, with all the texts that dictation gave it.
    struct Node {
        QUuid id = QUuid::createUuid();
        std::string text {};
        Texts received {};
    };

    void toggle(Node &node)
    {
        controller->toggle(node.id, node.text, [&node](const std::string &text) {
            node.text = text;
            node.received.push_back(text);
        });
    }

    /// The user gives or refuses the leave that was asked for last.
    void answer(Status status = Status::authorized)
    {
        speech.answer(speech.questions.size() - 1, status);
        settle();
    }

    /// The microphone is open for this node on return, unless something is in the way.
    void listen(Node &node)
    {
        toggle(node);
        answer();
    }

    /// The latest recognition has understood this.
    void understand(const std::string &words, bool isFinal = false)
    {
        deliver(speech.recognitions.size() - 1, words, isFinal);
    }

    void deliver(std::size_t recognition, const std::string &words, bool isFinal = false,
                 bool isError = false)
    {
        speech.deliver(recognition, SpeechRecognitionResult { words, isFinal }, isError);
        settle();
    }

    /// The latest recognition has failed.
    void fail()
    {
        speech.deliver(speech.recognitions.size() - 1, std::nullopt, true);
        settle();
    }

    void settle() { machine.mainQueue.runPending(); }

    bool isIdle() const
    {
        return !controller->activeBlockID().get() && !speech.isEngineRunning && !speech.tap;
    }

    std::string message() const
    {
        return controller->errorMessage().get().value_or(QString()).toStdString();
    }

    FakePlatform machine;
    FakeSpeech &speech = machine.speech;
    std::optional<DictationController> controller { std::in_place, machine.platform };
};
