#include "platform/speech/listener/ProcessLimits.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

bool canReserve(std::size_t bytes)
{
    auto *const memory =
        mmap(nullptr, bytes, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    return memory != MAP_FAILED && munmap(memory, bytes) == 0;
}

std::size_t machineMemory()
{
    return static_cast<std::size_t>(sysconf(_SC_PHYS_PAGES) * sysconf(_SC_PAGESIZE));
}

/// In another process, which ends with its limit. Exits with 0 if the limit is as promised.
[[noreturn]] void checkLimit()
{
    const auto memory = machineMemory();
    const bool couldReserveAll = canReserve(memory);
    limitMemory();
    const bool isLimited = canReserve(memory / 3) && !canReserve(memory / 5 * 3);
    std::_Exit(couldReserveAll && isLimited ? EXIT_SUCCESS : EXIT_FAILURE);
}

/// In another process, which ends with its limit.
[[noreturn]] void crashWithoutCoreDump()
{
    forbidCoreDumps();
    rlimit limit {};
    getrlimit(RLIMIT_CORE, &limit);
    if (limit.rlim_cur != 1 || limit.rlim_max != 1)
        std::_Exit(EXIT_FAILURE);
    std::abort();
}

/// WCOREDUMP says whether the kernel made an image.
bool diesWithoutCoreDump(int status)
{
    return WIFSIGNALED(status) && WTERMSIG(status) == SIGABRT && !WCOREDUMP(status);
}

TEST(ProcessLimitsTest, LeavesNoImageOfACrash)
{
    EXPECT_EXIT(crashWithoutCoreDump(), diesWithoutCoreDump, "");
}

TEST(ProcessLimitsTest, LeavesHalfOfTheMemoryToOtherPrograms)
{
    EXPECT_EXIT(checkLimit(), testing::ExitedWithCode(EXIT_SUCCESS), "");
}

} // namespace
