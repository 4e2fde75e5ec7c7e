#include "HeapPeak.h"

#include <algorithm>
#include <atomic>
#include <sanitizer/allocator_interface.h>

namespace
{

std::atomic<bool> isCounting = false;
std::atomic<std::ptrdiff_t> growth = 0;
std::atomic<std::ptrdiff_t> peak = 0;

void addAllocation(const volatile void * /*memory*/, std::size_t size)
{
    if (!isCounting)
        return;
    const auto now = growth += static_cast<std::ptrdiff_t>(size);
    peak = std::max(peak.load(), now);
}

void subtractAllocation(const volatile void *memory)
{
    if (isCounting)
        growth -= static_cast<std::ptrdiff_t>(
            __sanitizer_get_allocated_size(const_cast<const void *>(memory)));
}

} // namespace

HeapPeak::HeapPeak()
{
    static const bool isHooked =
        __sanitizer_install_malloc_and_free_hooks(&addAllocation, &subtractAllocation) != 0;
    growth = 0;
    peak = 0;
    isCounting = isHooked;
}

HeapPeak::~HeapPeak()
{
    isCounting = false;
}

std::size_t HeapPeak::bytes() const
{
    return static_cast<std::size_t>(peak.load());
}
