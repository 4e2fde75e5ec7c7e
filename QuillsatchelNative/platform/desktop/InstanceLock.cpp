#include "platform/desktop/InstanceLock.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

InstanceLock::InstanceLock(const std::string &folder)
    : m_path(folder + "/.instance")
    , m_file(open(m_path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NONBLOCK, 0600))
{
    if (!m_file.isOpen())
        unavailable();
}

bool InstanceLock::isInPlace() const
{
    struct stat held {
    };

    struct stat named {
    };

    return fstat(m_file.number(), &held) == 0 && stat(m_path.c_str(), &named) == 0 &&
           held.st_dev == named.st_dev && held.st_ino == named.st_ino;
}

InstanceLock::State InstanceLock::take()
{
    if (!m_file.isOpen())
        return State::unavailable;
    while (flock(m_file.number(), LOCK_EX | LOCK_NB) != 0) {
        if (errno == EWOULDBLOCK)
            return State::heldByAnother;
        if (errno != EINTR)
            return unavailable();
    }
    write({}); // the note of an earlier process
    return State::held;
}

// A concurrent reader sees an empty or truncated name, finds no such socket, and retries.
void InstanceLock::write(const std::string &note)
{
    const auto line = note.empty() ? note : note + '\n';
    if (ftruncate(m_file.number(), 0) == 0 && !line.empty()) [[maybe_unused]]
        const auto count = pwrite(m_file.number(), line.data(), line.size(), 0);
}

std::string InstanceLock::read() const
{
    std::array<char, MaximumNoteSize + 1> bytes {};
    const auto count = pread(m_file.number(), bytes.data(), bytes.size(), 0);
    const std::string text(bytes.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
    const auto end = text.find('\n');
    return end == std::string::npos ? std::string() : text.substr(0, end);
}

InstanceLock::State InstanceLock::unavailable()
{
    m_problem = std::strerror(errno); // NOLINT(concurrency-mt-unsafe)
    return State::unavailable;
}
