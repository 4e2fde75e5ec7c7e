#include "platform/speech/listener/ProcessLimits.h"

#include <algorithm>
#include <fstream>
#include <sys/resource.h>
#include <unistd.h>

namespace
{

rlim_t pagesInUse()
{
    rlim_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    return pages;
}

} // namespace

void forbidCoreDumps()
{
    // Too small for any image. With 0, the kernel would still pass it to a crash handler.
    constexpr rlimit OneByte { .rlim_cur = 1, .rlim_max = 1 };
    setrlimit(RLIMIT_CORE, &OneByte);
}

void limitMemory()
{
    rlimit limit {};
    getrlimit(RLIMIT_AS, &limit);
    // Added to what is in use, because sanitizers reserve terabytes.
    const auto pages = pagesInUse() + static_cast<rlim_t>(sysconf(_SC_PHYS_PAGES)) / 2;
    const auto bytes = pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE));
    limit.rlim_cur = std::min(limit.rlim_cur, bytes);
    setrlimit(RLIMIT_AS, &limit);
}
