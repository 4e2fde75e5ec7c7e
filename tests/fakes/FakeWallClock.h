#pragma once

#include "platform/WallClock.h"

/// A wall clock that the test sets. It does not run by itself.
class FakeWallClock final : public WallClock
{
public:
    std::chrono::system_clock::time_point now() const override { return time; }

    void advance(std::chrono::system_clock::duration duration) { time += duration; }

    /// Any date will do; this one is 2026-01-01 12:00 UTC.
    std::chrono::system_clock::time_point time =
        std::chrono::sys_days(std::chrono::year(2026) / 1 / 1) + std::chrono::hours(12);
};
