#pragma once

#include "platform/WallClock.h"

class SystemWallClock final : public WallClock
{
public:
    std::chrono::system_clock::time_point now() const override;
};
