#include "platform/network/WebPort.h"

#include "platform/network/HttpServer.h"

#include <cstring>
#include <net/if.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <system_error>
#include <unistd.h>

namespace WebPort
{

namespace
{

bool canBeHad()
{
    try {
        const HttpServer server([](auto &) {}, Number);
        return true;
    } catch (const std::system_error &) {
        return false;
    }
}

void bringUpLoopback()
{
    const int socket = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    ifreq request {};
    std::strcpy(request.ifr_name, "lo");
    request.ifr_flags = IFF_UP;
    ioctl(socket, SIOCSIFFLAGS, &request);
    close(socket);
}

} // namespace

void prepare()
{
    if (canBeHad() || unshare(CLONE_NEWUSER | CLONE_NEWNET) != 0)
        return;
    bringUpLoopback();
    prctl(PR_SET_DUMPABLE, 1); // or checkers of leaks may not look into the process any more
}

} // namespace WebPort
