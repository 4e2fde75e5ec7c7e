#include "platform/speech/listener/MemoryLimit.h"

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
