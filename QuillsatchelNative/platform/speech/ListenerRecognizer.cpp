#include "platform/speech/ListenerRecognizer.h"

#include "platform/speech/SentenceStart.h"

#include <QPointer>

#include <chrono>
#include <cstddef>
#include <optional>
#include <unistd.h>
#include <utility>

namespace
{

class Task final : public SpeechRecognitionTask
{
public:
    explicit Task(std::shared_ptr<ListenerRequest> request)
        : m_request(std::move(request))
    {
    }

    Task(const Task &) = delete;
    Task &operator=(const Task &) = delete;

    ~Task() override { m_request->cancel(); }

    void cancel() override { m_request->cancel(); }

private:
    const std::shared_ptr<ListenerRequest> m_request;
};

} // namespace

ListenerRecognizer::ListenerRecognizer(std::vector<std::string> command, MainQueue &mainQueue,
                                       const ListenerLimits &limits, VocabularySource *vocabulary)
    : m_command(std::move(command))
    , m_mainQueue(mainQueue)
    , m_limits(limits)
    , m_vocabulary(vocabulary)
    , m_update([recognizer = QPointer(this)] {
        if (recognizer && recognizer->m_conversation)
            recognizer->stopUnless(recognizer->m_conversation->update());
    })
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    // After the program was suspended, an answer may already wait to be read. So the timer first
    // lets the event loop read it, and stops the listener only if it fires again.
    connect(&m_timer, &QTimer::timeout, this,
            [this] { m_timer.interval() > 0 ? m_timer.start(0) : stopListener(); });
}

bool ListenerRecognizer::isAvailable() const
{
    return access(m_command.front().c_str(), X_OK) == 0;
}

std::shared_ptr<SpeechRecognitionRequest>
ListenerRecognizer::makeRequest(std::string_view textBefore)
{
    return std::make_shared<ListenerRequest>(m_mainQueue, m_limits.queuedSamples, m_update,
                                             SentenceStart::isAfter(textBefore));
}

std::unique_ptr<SpeechRecognitionTask>
ListenerRecognizer::recognitionTask(std::shared_ptr<SpeechRecognitionRequest> request,
                                    ResultHandler handler)
{
    auto ours = std::static_pointer_cast<ListenerRequest>(std::move(request));
    ours->setHandler(std::move(handler));
    if (!m_conversation)
        startListener();
    m_conversation->begin(ours);
    m_mainQueue.async(m_update);
    return std::make_unique<Task>(std::move(ours));
}

void ListenerRecognizer::startListener()
{
    auto *const listener = new ListenerProcess(m_command, this);
    connect(listener, &QProcess::readyReadStandardOutput, this, [this] {
        const auto bytes = m_listener->readAllStandardOutput();
        stopUnless(
            m_conversation->receive({ bytes.data(), static_cast<std::size_t>(bytes.size()) }));
    });
    connect(listener, &QProcess::finished, this, &ListenerRecognizer::stopListener);
    // Queued, because `start` itself may fail.
    const auto handleError = [this, listener] { stopUnless(m_listener != listener); };
    connect(listener, &QProcess::errorOccurred, listener, handleError, Qt::QueuedConnection);
    const auto send = [listener](const std::string &bytes) {
        listener->write(bytes.data(), static_cast<qint64>(bytes.size()));
    };
    const auto restartTimer = [this](std::optional<std::chrono::milliseconds> timeout) {
        timeout ? m_timer.start(*timeout) : m_timer.stop();
    };
    m_conversation = std::make_unique<ListenerConversation>(
        ListenerConversation::Listener { .send = send, .restartTimer = restartTimer }, m_limits,
        m_vocabulary);
    m_listener = listener;
    listener->start();
}

void ListenerRecognizer::stopListener()
{
    m_timer.stop();
    std::exchange(m_listener, nullptr)->stop();
    const auto conversation = std::exchange(m_conversation, nullptr);
    conversation->fail();
}

void ListenerRecognizer::stopUnless(bool isGood)
{
    if (!isGood)
        stopListener();
}
