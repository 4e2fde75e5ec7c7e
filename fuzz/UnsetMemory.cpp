#include "UnsetMemory.h"

#include "Expect.h"

#include <atomic>
#include <cstddef>
#include <cstring>
#include <sanitizer/allocator_interface.h>

namespace
{

// Larger ones may come straight from the system, and are then relied on to be zeros.
constexpr std::size_t LargestBlock = 64 * 1024; // bytes

void fill(const volatile void *memory, std::size_t size)
{
    static std::atomic<unsigned char> filling = 0;
    if (size <= LargestBlock)
        std::memset(const_cast<void *>(memory), filling += 37, size); // prime to 256: all occur
}

void leave(const volatile void * /*memory*/) {}

} // namespace

namespace UnsetMemory
{

void keepChanging()
{
    expect(__sanitizer_install_malloc_and_free_hooks(&fill, &leave) != 0,
           "the sanitizer tells of allocations");
}

} // namespace UnsetMemory
