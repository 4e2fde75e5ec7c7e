#pragma once

#include <ctime>

/// Measures the processor time of this process, which does not depend on the load of the machine.
/// For finding operations that take quadratic time.
class ProcessorTime
{
public:
    double seconds() const { return static_cast<double>(std::clock() - m_start) / CLOCKS_PER_SEC; }

private:
    std::clock_t m_start = std::clock();
};
