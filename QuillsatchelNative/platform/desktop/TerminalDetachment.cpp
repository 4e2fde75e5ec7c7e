#include "platform/desktop/TerminalDetachment.h"

#include <fcntl.h>
#include <unistd.h>

namespace
{

void doNothing(int /*signal*/) {}

void openMissingStreams()
{
    // A new file descriptor gets the lowest free number.
    int file = open("/dev/null", O_RDWR); // NOLINT(*-cloexec): launched programs inherit it
    while (file >= 0 && file <= STDERR_FILENO)
        file = dup(file);
    if (file >= 0)
        close(file);
}

} // namespace

TerminalDetachment::TerminalDetachment()
    : m_hangUp(SIGHUP, &doNothing)
    , m_brokenPipe(SIGPIPE, &doNothing)
{
    openMissingStreams();
}
