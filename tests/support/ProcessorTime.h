#pragma once

#include <ctime>

/// The processor time this process has taken since, in seconds: unlike a clock's, it is the same
/// however much else the machine has to do. For telling what grows with the square of its input.
class ProcessorTime
{
public:
    double seconds() const { return static_cast<double>(std::clock() - m_start) / CLOCKS_PER_SEC; }

private:
    std::clock_t m_start = std::clock();
};
