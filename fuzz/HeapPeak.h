#pragma once

#include <cstddef>

/// How much the heap has grown at most since this was made, whatever was freed again meanwhile.
/// One at a time.
class HeapPeak
{
public:
    HeapPeak();
    HeapPeak(const HeapPeak &) = delete;
    HeapPeak &operator=(const HeapPeak &) = delete;
    ~HeapPeak();

    std::size_t bytes() const;
};
