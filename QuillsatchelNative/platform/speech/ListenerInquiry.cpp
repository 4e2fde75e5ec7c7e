#include "platform/speech/ListenerInquiry.h"

#include "platform/speech/Subprocess.h"

#include <algorithm>
#include <cerrno>
#include <poll.h>
#include <sys/socket.h>

namespace
{

using Clock = std::chrono::steady_clock;

bool isReadable(int file, Clock::time_point end)
{
    pollfd answer { .fd = file, .events = POLLIN, .revents = 0 };
    int count = 0;
    do {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
        count =
            poll(&answer, 1, static_cast<int>(std::max(left.count(), decltype(left.count()) {})));
    } while (count < 0 && errno == EINTR);
    return count == 1;
}

} // namespace

bool listenerHasModel(const std::string &program, std::chrono::milliseconds limit)
{
    const auto end = Clock::now() + limit;
    const auto listener = Subprocess::start({ program, "--has-model" });
    char letter = 0;
    return listener && isReadable(listener->stream(), end) &&
           recv(listener->stream(), &letter, 1, MSG_DONTWAIT) == 1 && letter == 'y';
}
