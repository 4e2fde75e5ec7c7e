#include "platform/speech/ListenerConversation.h"

#include <QString>

#include <cstddef>
#include <utility>

namespace
{

using Kind = ListenerMessage::Kind;

constexpr std::size_t PieceSize = 1024;   // samples: 64 ms
constexpr std::size_t MaxOwedAnswers = 8; // half a second

/// A model's words may be in another encoding; results are UTF-8.
std::string textOf(const ListenerMessage &answer)
{
    return QString::fromStdString(answer.payload).toStdString();
}

} // namespace

ListenerConversation::ListenerConversation(Listener listener, const ListenerLimits &limits)
    : m_listener(std::move(listener))
    , m_limits(limits)
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
    m_hasSentEnd = false;
    send({ .kind = Kind::begin, .task = m_task, .payload = {} });
    if (m_owedAnswers.empty())
        restartTimer();
    if (older)
        older->report(std::nullopt, true);
}

bool ListenerConversation::update()
{
    if (m_request && m_request->isOver()) {
        send({ .kind = Kind::cancel, .task = m_task, .payload = {} });
        m_request.reset();
        if (m_owedAnswers.empty())
            restartTimer();
    }
    if (!m_request)
        return true;
    if (m_request->state() == ListenerRequest::State::overflowed)
        return false;
    while (m_owedAnswers.size() < MaxOwedAnswers && !m_request->isEmpty())
        send(ListenerMessage::audio(m_task, m_request->take(PieceSize)));
    const bool isAll = m_request->state() != ListenerRequest::State::open && m_request->isEmpty();
    if (isAll && !std::exchange(m_hasSentEnd, true))
        send({ .kind = Kind::end, .task = m_task, .payload = {} });
    return true;
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

bool ListenerConversation::accept(const ListenerMessage &message)
{
    const bool isFinal = message.kind == Kind::final;
    const bool isAnswer =
        isFinal || message.kind == Kind::partial || message.kind == Kind::unchanged;
    if (!isAnswer || m_owedAnswers.empty())
        return false;
    const auto owed = m_owedAnswers.front();
    m_owedAnswers.pop_front();
    if (message.task != owed.task || isFinal != owed.isFinal)
        return false;
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
        SpeechRecognitionResult { .formattedString = textOf(answer), .isFinal = isFinal }, isError);
}

void ListenerConversation::send(const ListenerMessage &message)
{
    std::string bytes;
    message.appendTo(bytes);
    m_listener.send(bytes);
    if (message.kind != Kind::audio && message.kind != Kind::end)
        return;
    m_owedAnswers.push_back({ .task = message.task, .isFinal = message.kind == Kind::end });
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
