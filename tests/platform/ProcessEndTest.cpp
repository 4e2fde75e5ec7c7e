#include "platform/desktop/ProcessEnd.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>
#include <thread>

namespace
{

void speak()
{
    std::cerr << "the end" << std::endl;
}

TEST(ProcessEndTest, WorksWhenItGoes)
{
    int count = 0;
    {
        const ProcessEnd end([&count] { ++count; });
        EXPECT_EQ(count, 0);
    }
    EXPECT_EQ(count, 1);
}

TEST(ProcessEndTest, WorksWhenALibraryEndsTheProcess)
{
    const auto exit = [] {
        const ProcessEnd end(&speak);
        std::exit(1); // NOLINT(concurrency-mt-unsafe)
    };
    EXPECT_EXIT(exit(), testing::ExitedWithCode(1), "^the end\n$");
}

TEST(ProcessEndTest, WorksOnceOnly)
{
    const auto exit = [] {
        {
            const ProcessEnd end(&speak);
        }
        std::exit(1); // NOLINT(concurrency-mt-unsafe)
    };
    EXPECT_EXIT(exit(), testing::ExitedWithCode(1), "^the end\n$");
}

TEST(ProcessEndTest, DoesNotWorkOnAnotherThread)
{
    const auto exit = [] {
        const ProcessEnd end(&speak);
        std::thread([] { std::exit(1); }).join(); // NOLINT(concurrency-mt-unsafe)
    };
    EXPECT_EXIT(exit(), testing::ExitedWithCode(1), "^$");
}

} // namespace
