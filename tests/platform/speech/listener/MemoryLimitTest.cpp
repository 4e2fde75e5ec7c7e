#include "platform/speech/listener/MemoryLimit.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <sys/mman.h>
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

TEST(MemoryLimitTest, LeavesHalfOfTheMemoryToOtherPrograms)
{
    EXPECT_EXIT(checkLimit(), testing::ExitedWithCode(EXIT_SUCCESS), "");
}

} // namespace
