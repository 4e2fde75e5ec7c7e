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
constexpr auto PollInterval = 5ms;

/// The request of a later start to the first instance.
class HandoverRequest
{
public:
    explicit HandoverRequest(const StartupToken &token)
        : m_request(StartupRequest::encode(token))
    {
    }

    /// Sends the request to the socket `name`, once, and waits one interval for the answer.
    bool isAnsweredBy(const std::string &name)
    {
        if (name != m_recipient && m_socket.connectTo(name) && m_socket.send(m_request))
            m_recipient = name;
        pollfd answer { .fd = m_socket.descriptor(), .events = POLLIN, .revents = 0 };
        poll(&answer, 1, static_cast<int>(PollInterval.count()));
        const auto message = m_socket.receive();
        return message && message->text == StartupRequest::Answer;
    }

private:
    std::string m_request;
    std::string m_recipient; // the socket that has the request
    InstanceSocket m_socket;
};

} // namespace

SingleInstance::SingleInstance(const std::string &folder, std::chrono::milliseconds timeout)
    : m_timeout(timeout)
    , m_folder(folder)
    , m_lock(folder)
    , m_beacon(folder)
{
}

SingleInstance::Outcome SingleInstance::start(const StartupToken &token)
{
    const auto end = Clock::now() + m_timeout;
    std::optional<HandoverRequest> request;
    for (m_state = takeLock(); m_state == InstanceLock::State::heldByAnother;
         m_state = takeLock()) {
        if (Clock::now() >= end) {
            std::cerr << "Quillsatchel is running already, but does not answer.\n";
            return Outcome::noAnswer;
        }
        if (!request)
            request.emplace(token);
        if (request->isAnsweredBy(requestNameOfFirst()))
            return Outcome::handedOver;
    }
    if (m_state == InstanceLock::State::held)
        becomeFirst();
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
    return m_beacon.isOn() ? InstanceLock::State::heldByAnother : m_lock.take();
}

std::string SingleInstance::requestNameOfFirst() const
{
    return m_beacon.isOn() ? m_beacon.requestName() : m_lock.read();
}

// The beacon implies its request name, so it stays off if another socket has that name.
void SingleInstance::becomeFirst()
{
    m_ownsFolder = true;
    m_socket.emplace(m_beacon.requestName());
    if (m_socket->name() == m_beacon.requestName())
        m_beacon.turnOn();
    m_lock.write(m_socket->name());
}
