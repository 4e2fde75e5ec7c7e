#include "dictation/DictationController.h"

#include <QPointer>

#include <utility>

namespace
{

constexpr int TapBufferSize = 1024; // samples

/// The text before the recognised words. A text that ends with a space gets another one.
std::string prefixFor(const std::string &currentText)
{
    return currentText.empty() ? std::string() : currentText + ' ';
}

} // namespace

/// Everything needed to handle the results of one session.
struct DictationController::Session {
    QUuid id;
    std::string prefix;
    TextHandler onText;
};

DictationController::DictationController(Platform &platform, VocabularySource &vocabulary)
    : m_platform(platform)
    , m_vocabulary(vocabulary)
{
}

DictationController::~DictationController() = default;

void DictationController::toggle(QUuid blockID, std::string currentText, TextHandler onText)
{
    const bool isStop = m_activeBlockID.get() == blockID;
    finishSession(true);
    if (isStop)
        return;
    const auto begin = [controller = QPointer(this), blockID, text = std::move(currentText),
                        onText = std::move(onText)](Speech::AuthorizationStatus status) {
        if (!controller)
            return;
        if (status == Speech::AuthorizationStatus::authorized)
            controller->start(blockID, text, onText);
        else
            controller->m_errorMessage.set(tr("Speech recognition permission is required."));
    };
    m_platform.speech.requestAuthorization(
        [&mainQueue = m_platform.mainQueue, begin](Speech::AuthorizationStatus status) {
            mainQueue.async([begin, status] { begin(status); });
        });
}

void DictationController::start(QUuid blockID, const std::string &currentText,
                                const TextHandler &onText)
{
    m_errorMessage.set(std::nullopt);
    if (!hasRecognizer()) {
        m_errorMessage.set(tr("Speech recognition is temporarily unavailable."));
        return;
    }
    m_sessionID = QUuid::createUuid();
    m_latestText = currentText;
    m_textHandler = onText;
    m_request = m_recognizer->makeRequest(currentText);
    installTap();
    startTask(currentText, onText);
    if (m_audioEngine->start()) {
        m_activeBlockID.set(blockID);
        return;
    }
    m_errorMessage.set(tr("The microphone could not be started."));
    finishSession(false);
}

bool DictationController::hasRecognizer()
{
    if (!m_recognizer)
        m_recognizer = m_platform.speech.makeRecognizer(m_vocabulary);
    return m_recognizer && m_recognizer->isAvailable();
}

void DictationController::installTap()
{
    if (!m_audioEngine)
        m_audioEngine = m_platform.speech.makeAudioEngine();
    m_audioEngine->installTap(
        TapBufferSize,
        { .append = [request = m_request](
                        std::span<const std::int16_t> samples) { request->append(samples); },
          .fail = [request = m_request] { request->fail(); } });
    m_inputTapInstalled = true;
}

void DictationController::startTask(const std::string &currentText, const TextHandler &onText)
{
    const auto session = std::make_shared<const Session>(
        Session { .id = *m_sessionID, .prefix = prefixFor(currentText), .onText = onText });
    const auto forward = [controller = QPointer(this), &mainQueue = m_platform.mainQueue, session](
                             const std::optional<SpeechRecognitionResult> &result, bool isError) {
        mainQueue.async([controller, session, result, isError] {
            if (controller)
                controller->handle(*session, result, isError);
        });
    };
    m_task = m_recognizer->recognitionTask(m_request, forward);
}

void DictationController::handle(const Session &session,
                                 const std::optional<SpeechRecognitionResult> &result, bool isError)
{
    if (m_sessionID != session.id)
        return;
    if (result && !result->formattedString.empty()) {
        const auto text = session.prefix + result->formattedString;
        m_latestText = text;
        session.onText(text);
    }
    if (isError || (result && result->isFinal))
        finishSession(true);
}

void DictationController::finishSession(bool commitLatestText)
{
    const auto latestText = std::exchange(m_latestText, std::nullopt);
    const auto textHandler = std::exchange(m_textHandler, nullptr);
    const auto task = std::exchange(m_task, nullptr);
    m_sessionID.reset();
    m_activeBlockID.set(std::nullopt);
    if (m_audioEngine && m_audioEngine->isRunning())
        m_audioEngine->stop();
    if (std::exchange(m_inputTapInstalled, false))
        m_audioEngine->removeTap();
    if (const auto request = std::exchange(m_request, nullptr))
        request->endAudio();
    if (task)
        task->cancel();
    if (commitLatestText && latestText && textHandler)
        textHandler(*latestText);
}
