#pragma once

#include <functional>

/// How long two ways to do a thing take, each run followed by one of the other, so that a machine
/// that is slow for a while is slow for both.
struct PairedRuns {
    double firstMilliseconds = 0;  ///< median
    double secondMilliseconds = 0; ///< median
    double ratio = 0;              ///< median of first to second, pair by pair

    /// Runs both once without counting, then `count` times.
    static PairedRuns measure(int count, const std::function<void()> &first,
                              const std::function<void()> &second);
};
