#include "platform/desktop/SingleInstance.h"

#include "platform/desktop/StartupRequest.h"

#include <iostream>
#include <poll.h>
#include <utility>

namespace
{

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

// Between checks whether the first instance has ended or published its socket name.
constexpr auto Turn = 5ms;

/// The request of a later start to the first instance.
class Inquiry
{
public:
    explicit Inquiry(const StartupToken &token)
        : m_request(StartupRequest::encode(token))
    {
    }

    /// Sends the request to the socket `name`, once, and waits one interval for the answer.
    bool isAnsweredBy(const std::string &name)
    {
        if (name != m_asked && m_socket.connectTo(name) && m_socket.send(m_request))
            m_asked = name;
        pollfd answer { .fd = m_socket.descriptor(), .events = POLLIN, .revents = 0 };
        poll(&answer, 1, static_cast<int>(Turn.count()));
        const auto message = m_socket.receive();
        return message && message->text == StartupRequest::Answer;
    }

private:
    std::string m_request;
    std::string m_asked; // the socket that has the request
    InstanceSocket m_socket;
};

} // namespace

SingleInstance::SingleInstance(const std::string &folder, std::chrono::milliseconds patience)
    : m_patience(patience)
    , m_folder(folder)
    , m_lock(folder)
    , m_beacon(folder)
{
}

SingleInstance::Outcome SingleInstance::start(const StartupToken &token)
{
    const auto end = Clock::now() + m_patience;
    std::optional<Inquiry> inquiry;
    for (m_state = takeLock(); m_state == InstanceLock::State::heldByAnother;
         m_state = takeLock()) {
        if (Clock::now() >= end) {
            std::cerr << "Quillsatchel is running already, but does not answer.\n";
            return Outcome::noAnswer;
        }
        if (!inquiry)
            inquiry.emplace(token);
        if (inquiry->isAnsweredBy(nameOfFirst()))
            return Outcome::handedOver;
    }
    if (m_state == InstanceLock::State::held)
        own();
    else
        std::cerr << "Quillsatchel cannot lock " << m_folder << " (" << m_lock.problem()
                  << "). It starts, but does not know whether it is running already.\n";
    return Outcome::first;
}

bool SingleInstance::mayWrite()
{
    if (!m_ownsFolder || m_lock.isInPlace())
        return true;
    InstanceLock replacement(m_folder);
    const auto state = replacement.take();
    if (state == InstanceLock::State::held) {
        m_lock = std::move(replacement);
        m_lock.write(m_socket->name());
    }
    return state != InstanceLock::State::heldByAnother;
}

// A free lock file may replace a deleted one that the first instance still holds. It stays free
// then: the first instance must be able to lock it when it saves.
InstanceLock::State SingleInstance::takeLock()
{
    return m_beacon.isLit() ? InstanceLock::State::heldByAnother : m_lock.take();
}

std::string SingleInstance::nameOfFirst() const
{
    return m_beacon.isLit() ? m_beacon.requestName() : m_lock.read();
}

// The beacon implies its request name, so it stays off if another socket has that name.
void SingleInstance::own()
{
    m_ownsFolder = true;
    m_socket.emplace(m_beacon.requestName());
    if (m_socket->name() == m_beacon.requestName())
        m_beacon.light();
    m_lock.write(m_socket->name());
}
