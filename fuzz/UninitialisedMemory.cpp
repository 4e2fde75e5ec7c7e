#include "UninitialisedMemory.h"

#include "Expect.h"

#include <atomic>
#include <cstddef>
#include <cstring>
#include <sanitizer/allocator_interface.h>

namespace
{

// Larger blocks may come directly from the system, and callers then rely on zeros.
constexpr std::size_t MaximumBlockSize = 64 * 1024;

void fill(const volatile void *memory, std::size_t size)
{
    static std::atomic<unsigned char> filling = 0;
    if (size <= MaximumBlockSize)
        std::memset(const_cast<void *>(memory), filling += 37,
                    size); // odd, so that all bytes occur
}

void ignore(const volatile void * /*memory*/) {}

} // namespace

namespace UninitialisedMemory
{

void vary()
{
    expect(__sanitizer_install_malloc_and_free_hooks(&fill, &ignore) != 0,
           "the sanitizer reports allocations");
}

} // namespace UninitialisedMemory
