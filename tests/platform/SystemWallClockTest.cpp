#include "platform/desktop/SystemWallClock.h"

#include <gtest/gtest.h>

#include <chrono>

namespace
{

TEST(SystemWallClockTest, ReturnsTheSystemTime)
{
    const SystemWallClock clock;
    const auto before = std::chrono::system_clock::now();
    const auto now = clock.now();
    EXPECT_GE(now, before);
    EXPECT_LE(now, std::chrono::system_clock::now());
}

} // namespace
