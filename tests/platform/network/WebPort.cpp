#include "platform/network/WebPort.h"

#include "platform/network/HttpServer.h"

#include <cstring>
#include <net/if.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace WebPort
{

namespace
{

bool isAvailable()
{
    try {
        const HttpServer server([](auto &) {}, Number);
        return true;
    } catch (const std::system_error &) {
        return false;
    }
}

bool bringUpLoopback()
{
    const int socket = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    ifreq request {};
    std::strcpy(request.ifr_name, "lo");
    request.ifr_flags = IFF_UP;
    const bool isUp = ioctl(socket, SIOCSIFFLAGS, &request) == 0;
    close(socket);
    return isUp;
}

bool enter(int namespaces)
{
    return unshare(namespaces) == 0 && bringUpLoopback();
}

/// A process cannot leave a namespace, so a child process tries first.
bool isUsable(int namespaces)
{
    const pid_t child = fork();
    if (child == 0)
        _exit(enter(namespaces) && isAvailable() ? 0 : 1);
    int status = 1;
    waitpid(child, &status, 0);
    return status == 0;
}

} // namespace

void prepare()
{
    // Root needs no user namespace, which a process in a chroot cannot create.
    for (const int namespaces : { CLONE_NEWNET, CLONE_NEWUSER | CLONE_NEWNET })
        if (isUsable(namespaces)) {
            enter(namespaces);
            prctl(PR_SET_DUMPABLE, 1); // for leak checkers, which trace the process
            return;
        }
}

} // namespace WebPort
