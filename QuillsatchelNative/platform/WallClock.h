#pragma once

#include <chrono>

/// The system's date and time, which the user or the network may set back. May be called from any
/// thread.
class WallClock
{
public:
    virtual ~WallClock() = default;

    virtual std::chrono::system_clock::time_point now() const = 0;
};
