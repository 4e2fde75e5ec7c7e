#include "platform/speech/Subprocess.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <memory>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <utility>

namespace
{

struct FileActions {
    FileActions() { posix_spawn_file_actions_init(&value); }

    FileActions(const FileActions &) = delete;
    FileActions &operator=(const FileActions &) = delete;

    ~FileActions() { posix_spawn_file_actions_destroy(&value); }

    posix_spawn_file_actions_t value {};
};

struct Attributes {
    Attributes() { posix_spawnattr_init(&value); }

    Attributes(const Attributes &) = delete;
    Attributes &operator=(const Attributes &) = delete;

    ~Attributes() { posix_spawnattr_destroy(&value); }

    posix_spawnattr_t value {};
};

/// Out of the way of the three standard files, which a program started without them lacks.
FileDescriptor movedUp(int number)
{
    const FileDescriptor low(number);
    return FileDescriptor(fcntl(number, F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
}

void connect(FileActions &actions, const FileDescriptor &stream)
{
    posix_spawn_file_actions_adddup2(&actions.value, stream.number(), STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions.value, stream.number(), STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&actions.value, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addclosefrom_np(&actions.value, STDERR_FILENO + 1);
}

/// Whatever the thread that starts it blocks or the program ignores, the helper does not.
void resetSignals(Attributes &attributes)
{
    sigset_t none;
    sigset_t all;
    sigemptyset(&none);
    sigfillset(&all);
    posix_spawnattr_setsigmask(&attributes.value, &none);
    posix_spawnattr_setsigdefault(&attributes.value, &all);
    posix_spawnattr_setflags(&attributes.value, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
}

} // namespace

std::optional<Subprocess> Subprocess::start(const std::vector<std::string> &command)
{
    std::array ends { -1, -1 };
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) < 0)
        return std::nullopt;
    FileDescriptor ours = movedUp(ends[0]);
    const FileDescriptor theirs = movedUp(ends[1]);
    if (!ours.isOpen() || !theirs.isOpen())
        return std::nullopt;

    std::vector<char *> arguments;
    arguments.reserve(command.size() + 1);
    for (const auto &argument : command)
        arguments.push_back(const_cast<char *>(argument.c_str()));
    arguments.push_back(nullptr);

    FileActions actions;
    connect(actions, theirs);
    Attributes attributes;
    resetSignals(attributes);
    pid_t id = 0;
    if (posix_spawn(&id, arguments[0], &actions.value, &attributes.value, arguments.data(),
                    environ) != 0)
        return std::nullopt;
    return Subprocess(id, std::move(ours));
}

Subprocess::Subprocess(pid_t id, FileDescriptor stream)
    : m_id(id)
    , m_stream(std::move(stream))
{
}

Subprocess::Subprocess(Subprocess &&other) noexcept
    : m_id(std::exchange(other.m_id, 0))
    , m_stream(std::move(other.m_stream))
{
}

Subprocess::~Subprocess()
{
    if (m_id == 0)
        return;
    kill(m_id, SIGKILL);
    while (waitpid(m_id, nullptr, 0) < 0 && errno == EINTR) {
    }
}
