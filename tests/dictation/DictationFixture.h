#pragma once

#include "dictation/DictationController.h"
#include "fakes/FakePlatform.h"
#include "fakes/FakeVocabulary.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

/// A controller on a fake machine, and nodes that record the texts they receive.
class DictationFixture : public testing::Test
{
protected:
    using Texts = std::vector<std::string>;
    using Status = Speech::AuthorizationStatus;

    /// A node and all texts that dictation gave it.
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

    /// The user answers the last authorization request.
    void answer(Status status = Status::authorized)
    {
        speech.answer(speech.authorizationRequests.size() - 1, status);
        settle();
    }

    /// Starts dictation into this node. Does not check that it succeeds.
    void start(Node &node)
    {
        toggle(node);
        answer();
    }

    /// The latest recognition delivers this result.
    void recognize(const std::string &words, bool isFinal = false)
    {
        deliver(speech.recognitions.size() - 1, words, isFinal);
    }

    void deliver(std::size_t recognition, const std::string &words, bool isFinal = false,
                 bool isError = false)
    {
        speech.deliver(recognition, SpeechRecognitionResult { words, isFinal }, isError);
        settle();
    }

    /// The latest recognition fails.
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
    FakeVocabulary vocabulary;
    std::optional<DictationController> controller { std::in_place, machine.platform, vocabulary };
};
