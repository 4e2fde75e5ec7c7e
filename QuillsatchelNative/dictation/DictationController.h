#pragma once

#include "platform/Platform.h"
#include "support/Published.h"

#include <QString>
#include <QUuid>

#include <functional>
#include <memory>
#include <optional>
#include <string>

/// Lets the user fill one node at a time by speaking. What is understood is joined to the text that
/// the node had, and handed on, live, as it grows. Main thread only; what the microphone and the
/// recogniser say on other threads takes its turn there.
class DictationController final : public ObservableObject
{
public:
    /// Receives the node's whole new text (UTF-8).
    using TextHandler = std::function<void(const std::string &)>;

    explicit DictationController(Platform &platform);
    ~DictationController() override;

    /// The node that is being dictated into, once the microphone is open.
    const Published<std::optional<QUuid>> &activeBlockID() const { return m_activeBlockID; }

    /// What the user is to know about the last failure, until the next start.
    const Published<std::optional<QString>> &errorMessage() const { return m_errorMessage; }

    /// Stops the dictation into this node. Otherwise ends any other and begins one for this node,
    /// which holds `currentText`; `onText` gets each new text, and the last one again at the end.
    void toggle(QUuid blockID, std::string currentText, TextHandler onText);

    /// Ends whatever dictation runs, as the user's own stop would.
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
    Published<std::optional<QUuid>> m_activeBlockID { this };
    Published<std::optional<QString>> m_errorMessage { this };
    // Both are made with the first dictation: most runs of the program have none.
    std::unique_ptr<AudioEngine> m_audioEngine;
    std::unique_ptr<SpeechRecognizer> m_recognizer;
    std::shared_ptr<SpeechRecognitionRequest> m_request;
    std::unique_ptr<SpeechRecognitionTask> m_task;
    std::optional<QUuid> m_sessionID; // results of any other session are ignored
    std::optional<std::string> m_latestText;
    TextHandler m_textHandler;
    bool m_inputTapInstalled = false;
};
