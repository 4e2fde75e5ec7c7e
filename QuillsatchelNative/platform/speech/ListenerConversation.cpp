#include "platform/speech/ListenerConversation.h"

#include "platform/speech/SentenceStart.h"

#include <QString>

#include <cstddef>
#include <utility>

namespace
{

using Kind = ListenerMessage::Kind;

constexpr std::size_t PieceSize = 1024;   // samples: 64 ms
constexpr std::size_t MaxOwedAnswers = 8; // half a second

/// A model's words may be in another encoding; results are UTF-8.
std::string textOf(const ListenerMessage &answer, bool beginsSentence)
{
    const auto text = QString::fromStdString(answer.payload);
    return (beginsSentence ? SentenceStart::capitalized(text) : text).toStdString();
}

} // namespace

ListenerConversation::ListenerConversation(Listener listener, const ListenerLimits &limits,
                                           VocabularySource *vocabulary)
    : m_listener(std::move(listener))
    , m_limits(limits)
    , m_vocabulary(vocabulary)
{
}

ListenerConversation::~ListenerConversation()
{
    if (m_request)
        m_request->cancel();
}

void ListenerConversation::begin(std::shared_ptr<ListenerRequest> request)
{
    const auto older = std::exchange(m_request, std::move(request));
    ++m_task;
    m_hasSentBegin = false;
    m_hasSentEnd = false;
    // A lesson in progress ends first, because texts are not taken back.
    if (m_vocabulary && !m_lesson && m_taughtRevision != m_vocabulary->revision()) {
        m_taughtRevision = m_vocabulary->revision();
        m_lesson.emplace(*m_vocabulary);
    }
    if (teach())
        startTask();
    if (older)
        older->report(std::nullopt, true);
}

/// Sends the user's texts, one message at a time. True once the listener has learnt them.
bool ListenerConversation::teach()
{
    while (m_lesson && m_owedAnswers.empty()) {
        if (const auto message = m_lesson->next(m_task))
            send(*message);
        else
            m_lesson.reset();
    }
    return !m_lesson;
}

void ListenerConversation::startTask()
{
    if (std::exchange(m_hasSentBegin, true))
        return;
    send({ .kind = Kind::begin, .task = m_task, .payload = {} });
    if (m_owedAnswers.empty())
        restartTimer();
}

bool ListenerConversation::update()
{
    if (m_request && m_request->isOver()) {
        if (m_hasSentBegin)
            send({ .kind = Kind::cancel, .task = m_task, .payload = {} });
        m_request.reset();
        if (m_owedAnswers.empty())
            restartTimer();
    }
    if (m_request && m_request->state() == ListenerRequest::State::overflowed)
        return false;
    if (teach() && m_request)
        sendAudio();
    return true;
}

void ListenerConversation::sendAudio()
{
    startTask();
    while (m_owedAnswers.size() < MaxOwedAnswers && !m_request->isEmpty())
        send(ListenerMessage::audio(m_task, m_request->take(PieceSize)));
    const bool isAll = m_request->state() != ListenerRequest::State::open && m_request->isEmpty();
    if (isAll && !std::exchange(m_hasSentEnd, true))
        send({ .kind = Kind::end, .task = m_task, .payload = {} });
}

bool ListenerConversation::receive(std::string_view bytes)
{
    m_reader.feed(bytes);
    while (const auto message = m_reader.next()) {
        if (!accept(*message))
            return false;
    }
    return !m_reader.isBroken() && update();
}

void ListenerConversation::fail()
{
    if (const auto request = std::exchange(m_request, nullptr))
        request->report(std::nullopt, true);
}

bool ListenerConversation::Answer::accepts(const ListenerMessage &message) const
{
    if (message.task != task)
        return false;
    if (question == Kind::end)
        return message.kind == Kind::final;
    return message.kind == Kind::unchanged ||
           (message.kind == Kind::partial && question == Kind::audio);
}

bool ListenerConversation::accept(const ListenerMessage &message)
{
    if (m_owedAnswers.empty() || !m_owedAnswers.front().accepts(message))
        return false;
    m_owedAnswers.pop_front();
    if (m_request && message.task == m_task)
        report(message);
    restartTimer();
    return true;
}

void ListenerConversation::report(const ListenerMessage &answer)
{
    if (answer.kind == Kind::unchanged)
        return;
    const bool isFinal = answer.kind == Kind::final;
    const bool isError = isFinal && m_request->state() == ListenerRequest::State::failed;
    const auto request = isFinal ? std::exchange(m_request, nullptr) : m_request;
    request->report(
        SpeechRecognitionResult { .formattedString = textOf(answer, request->beginsSentence()),
                                  .isFinal = isFinal },
        isError);
}

void ListenerConversation::send(const ListenerMessage &message)
{
    std::string bytes;
    message.appendTo(bytes);
    m_listener.send(bytes);
    if (message.kind == Kind::begin || message.kind == Kind::cancel)
        return;
    m_owedAnswers.push_back({ .task = message.task, .question = message.kind });
    if (m_owedAnswers.size() == 1)
        restartTimer();
}

void ListenerConversation::restartTimer()
{
    if (!m_owedAnswers.empty())
        m_listener.restartTimer(m_limits.answer);
    else if (!m_request)
        m_listener.restartTimer(m_limits.idle);
    else
        m_listener.restartTimer(std::nullopt);
}
