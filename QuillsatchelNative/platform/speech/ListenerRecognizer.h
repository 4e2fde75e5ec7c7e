#pragma once

#include "platform/SpeechRecognizer.h"
#include "platform/speech/ListenerConversation.h"
#include "platform/speech/ListenerProcess.h"

#include <QTimer>

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// Recognises speech in a separate process, the listener, because a damaged model can crash the
/// process that loads it. The listener starts with the first task, whose audio is queued meanwhile.
/// It serves later tasks as well and is stopped after a long idle time. One task at a time: a new
/// one ends an older one with an error. Handlers are called on the main thread and must not delete
/// the recogniser.
class ListenerRecognizer final : public QObject, public SpeechRecognizer
{
public:
    /// `command` is the path of the listener and its arguments. The listener learns the words of
    /// `vocabulary`, null for none, which must outlive the recogniser.
    ListenerRecognizer(std::vector<std::string> command, MainQueue &mainQueue,
                       const ListenerLimits &limits = {}, VocabularySource *vocabulary = nullptr);

    /// Whether there is a listener to start.
    bool isAvailable() const override;
    std::shared_ptr<SpeechRecognitionRequest> makeRequest(std::string_view textBefore) override;
    std::unique_ptr<SpeechRecognitionTask>
    recognitionTask(std::shared_ptr<SpeechRecognitionRequest> request,
                    ResultHandler handler) override;

private:
    void startListener();
    void stopListener();
    void stopUnless(bool isGood);

    const std::vector<std::string> m_command;
    MainQueue &m_mainQueue;
    const ListenerLimits m_limits;
    VocabularySource *const m_vocabulary;
    const std::function<void()> m_update; // does nothing after the end of the recogniser
    QTimer m_timer;
    ListenerProcess *m_listener = nullptr; // a child; stopped ones are too, until they have ended
    std::unique_ptr<ListenerConversation> m_conversation; // lasts as long as m_listener
};
