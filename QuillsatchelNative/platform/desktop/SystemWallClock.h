#pragma once

#include "platform/WallClock.h"

/// The clock of the system.
class SystemWallClock final : public WallClock
{
public:
    std::chrono::system_clock::time_point now() const override;
};
