#include "platform/speech/AudioTap.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <numeric>
#include <span>
#include <thread>
#include <vector>

namespace
{

using Samples = std::vector<std::int16_t>;

class AudioTapTest : public testing::Test
{
protected:
    void install(std::size_t bufferSize)
    {
        tap.install(bufferSize, { .append =
                                      [this](std::span<const std::int16_t> samples) {
                                          buffers.emplace_back(samples.begin(), samples.end());
                                      },
                                  .fail = [this] { ++failures; } });
    }

    static Samples range(std::int16_t first, std::size_t count)
    {
        Samples samples(count);
        std::iota(samples.begin(), samples.end(), first);
        return samples;
    }

    AudioTap tap;
    std::vector<Samples> buffers;
    int failures = 0;
};

TEST_F(AudioTapTest, CutsAudioIntoBuffersOfOneSize)
{
    install(4);
    tap.append(range(0, 3));
    EXPECT_TRUE(buffers.empty());
    tap.append(range(3, 1));
    tap.append(range(4, 9));
    tap.append({});
    tap.append(range(13, 3));
    EXPECT_EQ(buffers, (std::vector { range(0, 4), range(4, 4), range(8, 4), range(12, 4) }));
}

TEST_F(AudioTapTest, FillsGapsWithSilence)
{
    install(4);
    tap.append(range(7, 1));
    tap.appendSilence(2);
    tap.append(range(9, 1));
    EXPECT_EQ(buffers, (std::vector<Samples> { { 7, 0, 0, 9 } }));
}

TEST_F(AudioTapTest, StartsAnEmptyBufferForAnotherTap)
{
    install(4);
    tap.append(range(0, 3));
    tap.remove();
    tap.append(range(50, 9));
    install(2);
    tap.append(range(3, 2));
    EXPECT_EQ(buffers, std::vector<Samples> { range(3, 2) });
}

TEST_F(AudioTapTest, ReportsAFailureOnce)
{
    install(4);
    tap.fail();
    tap.fail();
    EXPECT_EQ(failures, 1);
}

TEST_F(AudioTapTest, DoesNothingWithoutATap)
{
    tap.fail();
    tap.append(range(0, 9));
    install(4);
    tap.remove();
    tap.fail();
    EXPECT_EQ(failures, 0);
    EXPECT_TRUE(buffers.empty());
}

TEST_F(AudioTapTest, DestroysARemovedTap)
{
    const auto held = std::make_shared<int>();
    tap.install(4, { .append = [held](std::span<const std::int16_t>) {}, .fail = {} });
    EXPECT_EQ(held.use_count(), 2);
    tap.remove();
    EXPECT_EQ(held.use_count(), 1);
}

TEST_F(AudioTapTest, NeverCallsATapAfterItsRemoval)
{
    std::atomic ends = false;
    std::thread audio([this, &ends] {
        const auto samples = range(0, 64);
        while (!ends)
            tap.append(samples);
    });
    for (int round = 0; round < 200; ++round) {
        auto isWanted = std::make_unique<std::atomic<bool>>(true);
        std::atomic calls = 0;
        tap.install(16, { .append =
                              [&calls, wanted = isWanted.get()](std::span<const std::int16_t>) {
                                  EXPECT_TRUE(*wanted);
                                  ++calls;
                              },
                          .fail = {} });
        while (calls == 0)
            std::this_thread::yield();
        tap.remove();
        *isWanted = false;
        isWanted.reset(); // a late call would read freed memory
    }
    ends = true;
    audio.join();
}

} // namespace
