#include "platform/speech/ListenerConversation.h"

#include <QString>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <poll.h>
#include <string_view>
#include <sys/socket.h>
#include <utility>

namespace
{

using Kind = ListenerMessage::Kind;

constexpr std::size_t PieceSize = 1024; // samples: 64 ms
constexpr std::size_t MaxQuestions = 8; // half a second

int millisecondsUntil(std::chrono::steady_clock::time_point time)
{
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(time - std::chrono::steady_clock::now());
    return static_cast<int>(std::max<std::chrono::milliseconds::rep>(left.count(), 0));
}

/// A model's words may be in another encoding; what leaves here is UTF-8.
std::string textOf(const ListenerMessage &answer)
{
    return QString::fromStdString(answer.payload).toStdString();
}

bool mayComeLater(int error)
{
    return error == EAGAIN || error == EINTR;
}

} // namespace

ListenerConversation::ListenerConversation(Subprocess listener, ListenerMailbox &mailbox,
                                           const ListenerLimits &limits)
    : m_listener(std::move(listener))
    , m_mailbox(mailbox)
    , m_patience(limits, Clock::now())
{
}

ListenerConversation::~ListenerConversation() = default;

void ListenerConversation::run()
{
    while (takeJobs() && send() && wait() && receive()) {
    }
    if (const auto job = std::exchange(m_job, nullptr))
        m_mailbox.isClosed() ? job->cancel() : job->fail();
}

bool ListenerConversation::takeJobs()
{
    m_mailbox.wakeup()->clear();
    if (m_mailbox.isClosed())
        return false;
    if (auto job = m_mailbox.take())
        begin(std::move(job));
    if (m_job && m_job->isOver()) {
        say({ .kind = Kind::cancel, .task = m_task, .payload = {} });
        dropJob();
    }
    return !m_job || passAudio();
}

void ListenerConversation::begin(std::shared_ptr<ListenerJob> job)
{
    if (const auto older = std::exchange(m_job, std::move(job)))
        older->fail();
    ++m_task;
    m_hasSaidEnd = false;
    m_patience.beginTask();
    say({ .kind = Kind::begin, .task = m_task, .payload = {} });
}

bool ListenerConversation::passAudio()
{
    auto &request = m_job->request();
    const auto state = request.state(); // before the audio is looked at: none comes after its end
    if (state == ListenerRequest::State::overflowed)
        return false;
    while (m_questions.size() < MaxQuestions && !request.isEmpty())
        say(ListenerMessage::audio(m_task, request.take(PieceSize)));
    const bool isAll = state != ListenerRequest::State::open && request.isEmpty();
    if (isAll && !std::exchange(m_hasSaidEnd, true))
        say({ .kind = Kind::end, .task = m_task, .payload = {} });
    return true;
}

void ListenerConversation::say(const ListenerMessage &message)
{
    message.appendTo(m_outgoing);
    if (message.kind != Kind::audio && message.kind != Kind::end)
        return;
    m_patience.ask(Clock::now());
    m_questions.push_back({ .task = message.task, .kind = message.kind });
}

void ListenerConversation::dropJob()
{
    m_job.reset();
    m_patience.endTask(Clock::now());
}

bool ListenerConversation::send()
{
    while (!m_outgoing.empty()) {
        const auto sent = ::send(m_listener.stream(), m_outgoing.data(), m_outgoing.size(),
                                 MSG_DONTWAIT | MSG_NOSIGNAL);
        if (sent < 0)
            return mayComeLater(errno);
        m_outgoing.erase(0, static_cast<std::size_t>(sent));
    }
    return true;
}

bool ListenerConversation::wait()
{
    const auto end = m_patience.deadline();
    std::array<pollfd, 2> files {};
    files[0] = { .fd = m_mailbox.wakeup()->descriptor(), .events = POLLIN, .revents = 0 };
    files[1] = { .fd = m_listener.stream(), .events = POLLIN, .revents = 0 };
    if (!m_outgoing.empty())
        files[1].events |= POLLOUT;
    if (poll(files.data(), files.size(), end ? millisecondsUntil(*end) : -1) < 0)
        return errno == EINTR;
    return !end || Clock::now() < *end || files[1].revents != 0;
}

bool ListenerConversation::receive()
{
    std::array<char, 65'536> bytes;
    const auto count = recv(m_listener.stream(), bytes.data(), bytes.size(), MSG_DONTWAIT);
    if (count <= 0)
        return count < 0 && mayComeLater(errno);
    m_reader.feed(std::string_view(bytes.data(), static_cast<std::size_t>(count)));
    while (const auto answer = m_reader.next()) {
        if (!accept(*answer))
            return false;
    }
    return !m_reader.isBroken();
}

bool ListenerConversation::accept(const ListenerMessage &answer)
{
    const bool isFinal = answer.kind == Kind::final;
    const bool isAnswer = isFinal || answer.kind == Kind::partial || answer.kind == Kind::heard;
    if (!isAnswer || m_questions.empty())
        return false;
    const auto question = m_questions.front();
    m_questions.pop_front();
    if (answer.task != question.task || isFinal != (question.kind == Kind::end))
        return false;
    m_patience.receiveAnswer(Clock::now());
    if (m_job && answer.task == m_task)
        tell(answer);
    return true;
}

void ListenerConversation::tell(const ListenerMessage &answer)
{
    if (answer.kind == Kind::partial)
        m_job->tell(textOf(answer));
    if (answer.kind != Kind::final)
        return;
    const bool hasFailed = m_job->request().state() == ListenerRequest::State::failed;
    m_job->finish(textOf(answer), hasFailed);
    dropJob();
}
