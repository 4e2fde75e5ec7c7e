#pragma once

#include <functional>

/// Times two functions alternately, so that a slow phase of the machine affects both.
struct PairedRuns {
    double firstMilliseconds = 0;  ///< median
    double secondMilliseconds = 0; ///< median
    double ratio = 0;              ///< median of first / second of each pair

    /// Runs each once as a warm-up, then `count` times.
    static PairedRuns measure(int count, const std::function<void()> &first,
                              const std::function<void()> &second);
};
