#include "platform/desktop/SystemWallClock.h"

std::chrono::system_clock::time_point SystemWallClock::now() const
{
    return std::chrono::system_clock::now();
}
