#pragma once

#include <cstddef>

/// Measures the peak growth of the heap since construction. Only one may exist at a time.
class HeapPeak
{
public:
    HeapPeak();
    HeapPeak(const HeapPeak &) = delete;
    HeapPeak &operator=(const HeapPeak &) = delete;
    ~HeapPeak();

    std::size_t bytes() const;
};
