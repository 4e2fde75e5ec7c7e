#pragma once

#include "platform/Platform.h"
#include "support/Published.h"

#include <QString>
#include <QUuid>

#include <functional>
#include <memory>
#include <optional>
#include <string>

/// Dictates into one node at a time. Appends the recognised words to the node's text and reports
/// each new text while the user speaks. Main thread only; calls from the microphone and the
/// recogniser on other threads are queued to it.
class DictationController final : public ObservableObject
{
public:
    /// Receives the node's whole new text (UTF-8).
    using TextHandler = std::function<void(const std::string &)>;

    /// Both must outlive the controller; words of `vocabulary` are recognised too.
    DictationController(Platform &platform, VocabularySource &vocabulary);
    ~DictationController() override;

    /// The node being dictated into while the microphone is open.
    const Published<std::optional<QUuid>> &activeBlockID() const { return m_activeBlockID; }

    /// The message about the last failure, until the next start.
    const Published<std::optional<QString>> &errorMessage() const { return m_errorMessage; }

    /// Stops a dictation into this node. Otherwise stops any other and starts one for this node,
    /// whose text is `currentText`. `onText` gets each new text, and the last one again at the end.
    void toggle(QUuid blockID, std::string currentText, TextHandler onText);

    /// Stops the running dictation, if any, as `toggle` does.
    void stop() { finishSession(true); }

private:
    struct Session;

    void start(QUuid blockID, const std::string &currentText, const TextHandler &onText);
    void finishSession(bool commitLatestText);
    void handle(const Session &session, const std::optional<SpeechRecognitionResult> &result,
                bool isError);
    void installTap();
    void startTask(const std::string &currentText, const TextHandler &onText);
    bool hasRecognizer();

    Platform &m_platform;
    VocabularySource &m_vocabulary;
    Published<std::optional<QUuid>> m_activeBlockID { this };
    Published<std::optional<QString>> m_errorMessage { this };
    // Both are created by the first dictation, because most runs of the program have none.
    std::unique_ptr<AudioEngine> m_audioEngine;
    std::unique_ptr<SpeechRecognizer> m_recognizer;
    std::shared_ptr<SpeechRecognitionRequest> m_request;
    std::unique_ptr<SpeechRecognitionTask> m_task;
    std::optional<QUuid> m_sessionID; // results of other sessions are ignored
    std::optional<std::string> m_latestText;
    TextHandler m_textHandler;
    bool m_inputTapInstalled = false;
};
